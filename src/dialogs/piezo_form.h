// The form "Assignment of Piezometric Surface Input Method" as logic: one row
// per piezometric surface with how it is given. Like the layer form it works
// on the project itself. Materials are not touched: a piezometric surface is
// used only when a material or discontinuity names it.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "ui/form_key.h"
#include "dialogs/surface_rows.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* piezo_form_caption = "Assignment of Piezometric Surface Input Method";
constexpr const char* piezo_form_note =
    "Important:  No piezometric surface will be used in the analysis, unless associated with a material or "
    "discontinuity.";
constexpr std::array<const char*, 4> piezo_column_titles = {
    "Surface:", "Surface Input Method:", "*.GRD File:", "Thickness:"};
constexpr const char* piezo_add_question = "Do you wish to add a piezo surface?";
constexpr const char* piezo_delete_question = "Are you sure you wish to delete Piezo ";
constexpr const char* piezo_first_depth_prompt = "Enter value of constant depth beneath the ground surface";
constexpr const char* piezo_depth_prompt =
    "Enter value of constant depth beneath the next higher piezo surface";

// Row n of the form is piezometric surface n, stack position num_layers + n.
struct PiezoForm : SurfaceCursor {};

// "Piezo " + n.
std::string piezo_caption(int n);

// Opens on the project as it stands, at piezometric surface 1.
PiezoForm open_piezo_form(const Project& p);

std::vector<SurfaceRow> piezo_form_rows(const Project& p, const PiezoForm& form);
bool piezo_form_scroll_visible(const Project& p);
void piezo_form_scroll(PiezoForm& form, const Project& p, int top);

void piezo_form_select(PiezoForm& form, const Project& p, int row, int cell);

// Moving past the last row asks "Do you wish to add a piezo surface?" and
// adds one on Yes.
void piezo_form_key(PiezoForm& form, Project& p, Port& port, FormKey key);

bool piezo_form_accepts(int cell, const std::string& text, char key);
bool piezo_form_type(PiezoForm& form, Project& p, Port& port, char key);

// A method chosen from the list of row `row`. The depth question, titled
// "Piezo " + n, asks for the depth beneath the ground for the first surface
// and beneath the previous piezometric surface for the others; a reference
// of method 1 or 2 gives the plane at once.
void piezo_form_choose_method(PiezoForm& form, Project& p, Port& port, int row, int method);

// The button beside the current row.
void piezo_form_change(PiezoForm& form, Project& p, Port& port);

// Add appends a piezometric surface; Insert puts one under the current row;
// Delete asks "Are you sure you wish to delete Piezo " + n.
bool piezo_form_add_surface(PiezoForm& form, Project& p, Port& port);
bool piezo_form_insert_surface(PiezoForm& form, Project& p, Port& port);
bool piezo_form_delete_surface(PiezoForm& form, Project& p, Port& port);

enum class PiezoNext {
    finished,     // the stack is rebuilt; the caller shows the view of a finished load
    to_positions, // the plan is drawn; Cross-section Positions follows
};

// Continue. Outside the new project wizard the stack is rebuilt. In the
// wizard: when a piezometric surface is given by sections, the plan and the
// cross-section positions; else the stack is rebuilt, view_mode 5 and
// form_mode 0. Layers given by sections are not asked about here.
PiezoNext continue_piezo_form(Project& p, PiezoForm& form, Port& port);

// Cancel: form_mode 0.
void cancel_piezo_form(Project& p, PiezoForm& form);

} // namespace tobel
