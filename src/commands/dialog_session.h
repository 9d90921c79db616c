// The modal form that stands over the main window, and the chain that hands
// the new project from one form to the next. A form is opened by a menu
// command (or by the Continue of the form before it in the chain), takes
// cell selections, keys, list choices, button presses and, in the section
// editor, pointer events, and ends by Continue or Cancel. The command line's
// scripts and the desktop program both drive the forms through here.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "dialogs/colour_form.h"
#include "dialogs/control_form.h"
#include "dialogs/crack_form.h"
#include "dialogs/ellipsoid_form.h"
#include "dialogs/force_form.h"
#include "dialogs/graphics_options_form.h"
#include "dialogs/interpolation_form.h"
#include "dialogs/layer_form.h"
#include "dialogs/material_form.h"
#include "dialogs/piezo_form.h"
#include "dialogs/positions_form.h"
#include "dialogs/rotation_form.h"
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
};

using DialogForm = std::variant<std::monostate, ControlForm, InterpolationForm, MaterialForm, LayerForm,
                                PiezoForm, PositionsForm, SectionEditor, ForceForm, CrackForm, EllipsoidForm,
                                RotationForm, GraphicsOptionsForm, ColourForm>;

struct DialogSession {
    DialogForm form;
    // The forms that keep numbers rather than text get an edit text here:
    // what is typed into their current cell until it is left.
    int row = 1;
    int col = 1;
    std::string edit;
    bool edited = false;
    // A handle of the set-up picture held by the pointer (ellipsoid form).
    SetupDrag drag;
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
// "colours"; none when unknown.
DialogKind parse_dialog_kind(std::string_view name);
// The menu item that opens the form.
const char* dialog_menu_control(DialogKind kind);

// The menu command that opens the form. Opening drops any form still open.
void open_dialog(Project& p, Port& port, DialogSession& s, DialogKind kind);

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
// rotation scroll, the fill style (0 to 2), the blue scroll.
DialogStep dialog_choose(Project& p, Port& port, DialogSession& s, int choice);
// A button by its script name, with a number for the buttons that take one
// (goto-line, goto-section, copy-layer, copy-section).
DialogStep dialog_button(Project& p, Port& port, DialogSession& s, std::string_view button, int arg = 0);

// Pointer events on the section editor's picture, in world units (the
// elevation multiplied by vert_exag), on the set-up picture of the ellipsoid
// form (its handles are dragged) or on the colour sampler (its units).
enum class PointerAction { down, move, up };
DialogStep dialog_pointer(Project& p, Port& port, DialogSession& s, PointerAction action,
                          PointerButton button, bool shift, double y, double e);

void dialog_continue(Project& p, Port& port, DialogSession& s);
void dialog_cancel(Project& p, Port& port, DialogSession& s);

} // namespace tobel
