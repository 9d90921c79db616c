// The form "Assignment of Stratigraphic Layer Name and Top Surface Input
// Method" as logic: one row per layer, numbered from the bottom up, with the
// material below its top surface and how that surface is given. The form
// works on the project itself: methods, files, depths and names change at
// once, and Add, Insert and Delete shift the whole stack.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "ui/form_key.h"
#include "dialogs/surface_rows.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* layer_form_caption =
    "Assignment of Stratigraphic Layer Name and Top Surface Input Method";
constexpr const char* layer_form_note = "* NOTE: Layers are numbered from the bottom up.  ";
constexpr std::array<const char*, 5> layer_column_titles = {
    "Surface*:", "Material Below Surface:", "Surface Input Method:", "*.GRD File:", "Depth:"};
constexpr const char* layer_ground_caption = "Ground";
constexpr const char* layer_add_question = "Do you wish to add a material layer?";
constexpr const char* layer_delete_question = "Are you sure you wish to delete Layer ";
constexpr const char* layer_depth_prompt = "Enter value of constant depth beneath the next higher surface";

// Row r of the form is layer r; the cursor starts on the name of layer 1.
struct LayerForm : SurfaceCursor {};

// "Layer " + n, and "Ground" for layer num_layers.
std::string layer_caption(const Project& p, int layer);

// Opens on the project as it stands, at layer 1.
LayerForm open_layer_form(const Project& p);

// The ten rows in view, from the top row; rows past the last layer are not
// shown.
std::vector<SurfaceRow> layer_form_rows(const Project& p, const LayerForm& form);
bool layer_form_scroll_visible(const Project& p);
// The scroll bar moved to `top`.
void layer_form_scroll(LayerForm& form, const Project& p, int top);

// A click on a cell of row `row`; rows past the last layer are inactive.
void layer_form_select(LayerForm& form, const Project& p, int row, int cell);

// Moving between cells and rows. Moving past the last row asks "Do you wish
// to add a material layer?" and adds one on Yes.
void layer_form_key(LayerForm& form, Project& p, Port& port, FormKey key);

// The key filter of a cell (see surface_cell_accepts).
bool layer_form_accepts(int cell, const std::string& text, char key);

// One key typed into the cell taken: the name and the depth go into the
// project as typed.
bool layer_form_type(LayerForm& form, Project& p, Port& port, char key);

// A method chosen from the list of row `row` (see choose_surface_method);
// the depth question is "Enter value of constant depth beneath the next
// higher surface", and the plane hangs from the layer above.
void layer_form_choose_method(LayerForm& form, Project& p, Port& port, int row, int method);

// The button beside the current row (see surface_row_button).
void layer_form_change(LayerForm& form, Project& p, Port& port);

// Add appends the new ground; Insert puts a layer under the current row.
// Either keeps the new layer's row in view and takes it. False when the
// limit refused it.
bool layer_form_add_surface(LayerForm& form, Project& p, Port& port);
bool layer_form_insert_surface(LayerForm& form, Project& p, Port& port);

// Delete: with a single layer nothing happens; otherwise "Are you sure you
// wish to delete Layer " + n, and the layer goes on Yes.
bool layer_form_delete_surface(LayerForm& form, Project& p, Port& port);

enum class LayerNext {
    finished,     // the stack is rebuilt; the caller shows the view of a finished load
    to_piezos,    // the piezometric surface form follows
    to_positions, // the plan is drawn; Cross-section Positions follows
};

// Continue. Outside the new project wizard the stack is rebuilt. In the
// wizard (form_mode 2): the piezometric form when there are piezometric
// surfaces; else, when a layer is given by sections, the plan and the
// cross-section positions; else the stack is rebuilt, view_mode 5 and
// form_mode 0.
LayerNext continue_layer_form(Project& p, LayerForm& form, Port& port);

// Cancel: form_mode 0. What was done on the project stays done.
void cancel_layer_form(Project& p, LayerForm& form);

} // namespace tobel
