// The modal form that stands over the main window, and the chain that hands
// the new project from one form to the next. A form is opened by a menu
// command (or by the Continue of the form before it in the chain), takes
// cell selections, keys, list choices, button presses and, in the section
// editor, pointer events, and ends by Continue or Cancel. The command line's
// scripts and the desktop program both drive the forms through here.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "commands/surface_commands.h"
#include "dialogs/auto_search_form.h"
#include "dialogs/colour_form.h"
#include "dialogs/control_form.h"
#include "dialogs/crack_form.h"
#include "dialogs/ellipsoid_form.h"
#include "dialogs/field_form.h"
#include "dialogs/force_form.h"
#include "dialogs/general_surface_form.h"
#include "dialogs/graphics_options_form.h"
#include "dialogs/grid_search_form.h"
#include "dialogs/interpolation_form.h"
#include "dialogs/layer_form.h"
#include "dialogs/material_form.h"
#include "dialogs/piezo_form.h"
#include "dialogs/positions_form.h"
#include "dialogs/rotation_form.h"
#include "dialogs/wedge_form.h"
#include "graphics/section_editor.h"
#include "graphics/setup_handles.h"
#include "project/project.h"
#include "ui/form_key.h"
#include "ui/port.h"

namespace tobel {

// The forms a command can open.
enum class DialogKind {
    none,
    control,          // Edit > Control Parameters...
    interpolation,    // Edit > Geometry Options > Interpolation...
    materials,        // Edit > Material Properties...
    layers,           // Edit > Stratigraphic Layer Surfaces...
    piezos,           // Edit > Piezometric Surfaces...
    positions,        // Edit > Cross-section Positions...
    sections,         // Edit > Cross-sections (the section editor)
    forces,           // Edit > External Forces...
    crack,            // Edit > Tension Crack...
    ellipsoid,        // Sliding Surface > Ellipsoid > Single Ellipsoidal Surface
    rotation,         // Solve > Set Rotation Angle...
    graphics_options, // Options > Graphics Options...
    colours,          // Options > Colours...
    wedge,            // Sliding Surface > Wedge
    general,          // Sliding Surface > General
    field,            // the Field button of the general surface form
    grid_search,      // Sliding Surface > Ellipsoid > Grid Search
    auto_search,      // Sliding Surface > Ellipsoid > Auto Search
};

using DialogForm = std::variant<std::monostate, ControlForm, InterpolationForm, MaterialForm, LayerForm,
                                PiezoForm, PositionsForm, SectionEditor, ForceForm, CrackForm, EllipsoidForm,
                                RotationForm, GraphicsOptionsForm, ColourForm, WedgeForm, GeneralSurfaceForm,
                                FieldForm, GridSearchForm, AutoSearchForm>;

struct DialogSession {
    DialogForm form;
    // The forms that keep numbers rather than text get an edit text here:
    // what is typed into their current cell until it is left.
    int row = 1;
    int col = 1;
    std::string edit;
    bool edited = false;
    // A handle of the set-up picture held by the pointer (ellipsoid and
    // search forms).
    SetupDrag drag;
    // The general surface form stays open under the discontinuity field
    // form that its Field button brings up, and comes back when that ends.
    std::optional<GeneralSurfaceForm> general_beneath;
    // Today's date as the system writes it, for Control Parameters.
    std::string today;
};

// What a step did with the form: done, or not a step this form takes.
enum class DialogStep { done, not_here };

bool dialog_open(const DialogSession& s);
// The form's caption ("Section Editor" for the editor), "" when none is open.
std::string dialog_caption(const DialogSession& s);

// "control", "interpolation", "materials", "layers", "piezos", "positions",
// "sections", "forces", "crack", "ellipsoid", "rotation", "graphics-options",
// "colours", "wedge", "general", "field", "grid-search", "auto-search"; none
// when unknown.
DialogKind parse_dialog_kind(std::string_view name);
// The menu item that opens the form.
const char* dialog_menu_control(DialogKind kind);

// The menu command that opens the form. Opening drops any form still open.
// The surface forms open as their plain menu items do: the ellipsoid and the
// wedge alone (form_mode 0), the general surface alone (7), the searches
// not composite (0).
void open_dialog(Project& p, Port& port, DialogSession& s, DialogKind kind);

// A Sliding Surface menu item: the surface command begun (water and forces
// cleared, keep_window 0, its form_mode, the set-up window of the ellipsoid
// family) and its first form opened: the ellipsoid form for the ellipsoid and
// the composite (3), the wedge form (0), the general surface form for the
// general surface (7) and the composite general surface (4).
void open_surface_dialog(Project& p, Port& port, DialogSession& s, SurfaceCommand which);

// Sliding Surface > Ellipsoid or Composite > Grid Search or Auto Search: the
// search form over its set-up picture, form_mode 5 or 6 for a composite (the
// wedge form follows its Continue), 0 otherwise.
void open_search_dialog(Project& p, Port& port, DialogSession& s, bool grid, bool composite);

// File > New: the save prompt, the cleared project, and Control Parameters
// as the first step of the new project chain. Nothing opens on a cancel.
void new_project(Project& p, Port& port, DialogSession& s);
// The start form's buttons: 1 "Create a New File" opens Control Parameters
// in the chain, 2 "Open an Existing File" runs Open, 3 "Other" only closes.
void start_form_button(Project& p, Port& port, DialogSession& s, int button);

// A click on a cell: the row and column as the form numbers them (a form of
// one column takes the row only). In the material editor the column is the
// visible slot 1 to 4; in the colour editor a box (row: 1 layer, 2 piezo,
// 3 sliding, 4 selected; column: its number).
DialogStep dialog_select(Project& p, Port& port, DialogSession& s, int row, int col);
// One key typed into the current cell: refused keys are not entered, and the
// form shows what it says about them. Backspace is '\b'.
DialogStep dialog_type(Project& p, Port& port, DialogSession& s, char key);
// Empties the current cell, as selecting its text and deleting it does.
DialogStep dialog_clear(Project& p, Port& port, DialogSession& s);
DialogStep dialog_key(Project& p, Port& port, DialogSession& s, FormKey key);
// An option button, a list entry or a scroll position, numbered as the form
// numbers them: the water list (0, 1), the interpolation method (1 to 3),
// the material type of the selected entry (1 to 5, as mat_type), the input
// method of the current surface row (0 to 2), the crack option (0 to 2), the
// rotation scroll, the fill style (0 to 2), the blue scroll, the wedge
// grid's scroll (its top row), the general surface's input method (0, 1),
// the section editor's point table scroll (the point shown first).
//
// The cells of the forms added last: the wedge grid by plane and column (as
// WedgeColumn); the field form's four rows; the grid search form's cells as
// grid_form_cell numbers them, the auto search form's as auto_form_cell.
DialogStep dialog_choose(Project& p, Port& port, DialogSession& s, int choice);
// A button by its script name, with a number for the buttons that take one
// (goto-line, goto-section, copy-layer, copy-section). Wedge form: add,
// delete. General surface form: file, field (and add-surface,
// delete-surface, change, which do nothing there). Search forms: common (the
// "Change to Common Point" / "Change to Common Tangent" command).
DialogStep dialog_button(Project& p, Port& port, DialogSession& s, std::string_view button, int arg = 0);

// Pointer events on the section editor's picture, in world units (the
// elevation multiplied by vert_exag), on the set-up picture of the ellipsoid
// and search forms (their handles are dragged) or on the colour sampler (its
// units). On the editor a left press on the legend box takes the box, which
// the moves carry and the release drops.
enum class PointerAction { down, move, up };
DialogStep dialog_pointer(Project& p, Port& port, DialogSession& s, PointerAction action,
                          PointerButton button, bool shift, double y, double e);

void dialog_continue(Project& p, Port& port, DialogSession& s);
void dialog_cancel(Project& p, Port& port, DialogSession& s);

} // namespace tobel
