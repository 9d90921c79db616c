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

#include "dialogs/crack_form.h"
#include "dialogs/ellipsoid_form.h"
#include "dialogs/force_form.h"
#include "dialogs/form_key.h"
#include "dialogs/interpolation_form.h"
#include "dialogs/rotation_form.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The forms a command can open, by the name a script gives them.
enum class DialogKind {
    none,
    interpolation,
    ellipsoid,
    forces,
    crack,
    rotation,
};

using DialogForm =
    std::variant<std::monostate, InterpolationForm, EllipsoidForm, ForceForm, CrackForm, RotationForm>;

struct DialogSession {
    DialogForm form;
    // The forms that keep numbers rather than text get an edit text here:
    // what is typed into their current cell until it is left.
    int row = 1;
    int col = 1;
    std::string edit;
    bool edited = false;
};

// What a step did with the form: done, or not a step this form takes.
enum class DialogStep { done, not_here };

bool dialog_open(const DialogSession& s);
// The form's caption, "" when none is open.
std::string dialog_caption(const DialogSession& s);

// "interpolation", "ellipsoid", "forces", "crack", "rotation"; none when unknown.
DialogKind parse_dialog_kind(std::string_view name);

// The menu command that opens the form. Opening closes any form still open.
void open_dialog(Project& p, Port& port, DialogSession& s, DialogKind kind);

// A click on a cell: the row and column as the form numbers them (a form of
// one column takes the row only).
DialogStep dialog_select(Project& p, Port& port, DialogSession& s, int row, int col);
// One key typed into the current cell: refused keys are not entered, and the
// form shows what it says about them. Backspace is '\b'.
DialogStep dialog_type(Project& p, Port& port, DialogSession& s, char key);
// Empties the current cell, as selecting its text and deleting it does.
DialogStep dialog_clear(Project& p, Port& port, DialogSession& s);
DialogStep dialog_key(Project& p, Port& port, DialogSession& s, FormKey key);
// An option button or a list entry, numbered as the form numbers them.
DialogStep dialog_choose(Project& p, Port& port, DialogSession& s, int choice);
// A button by its script name, e.g. "add" or "delete".
DialogStep dialog_button(Project& p, Port& port, DialogSession& s, std::string_view button);
void dialog_continue(Project& p, Port& port, DialogSession& s);
void dialog_cancel(Project& p, Port& port, DialogSession& s);

} // namespace tobel
