// The form "Input cross-section locations" as logic: the X of every
// cross-section in a scrolled list. The positions and their count are a
// private copy stored on Continue; adding, inserting and deleting a section
// move the section lines of the project at once.
#pragma once

#include <array>
#include <string>

#include "ui/form_key.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* positions_form_caption = "Input cross-section locations";
constexpr const char* positions_column_title = "X-Coordinate";
constexpr const char* positions_add_caption = "&Add Section";
constexpr const char* positions_insert_caption = "&Insert Section";
constexpr const char* positions_delete_caption = "&Delete Section";

struct PositionsForm {
    std::array<float, section_capacity + 1> x{}; // section s at index s
    int count = 0;                               // sections held
    int row = 1;                                 // the selected section
    std::string edit;                            // edit text of the selected line
    int max_sections = 25;                       // the limit in force when the form opened
};

// Opens on a copy of section_x(1..num_sections), the first line selected.
PositionsForm open_positions_form(const Project& p);

// "Mesh extent, X: " + x_min + "  to " + x_max.
std::string positions_note(const Project& p);

// "Only " + the limit in signed form + " sections allowed."
std::string positions_limit_message(int max_sections);

// Up goes to the previous line; Down, Enter and Tab to the next, within the
// lines held. The edit text is stored first.
void positions_form_key(PositionsForm& form, FormKey key);

// A click on line r.
void positions_form_select(PositionsForm& form, int r);

// Types one key into the selected line: digits, one point, a minus sign at
// the start, backspace. Returns whether the key was accepted.
bool positions_form_type(PositionsForm& form, Port& port, char key, int caret = -1);

// "&Add Section": a new last line, selected. Refused at the limit.
void positions_form_add_section(Project& p, PositionsForm& form, Port& port);

// "&Insert Section": the sections from the selected one up move one slot up
// with their lines of surfaces 1..sliding_index; the selected slot is
// cleared. Refused at the limit.
void positions_form_insert_section(Project& p, PositionsForm& form, Port& port);

// "&Delete Section": the sections above the selected one move one slot down
// with their lines; the last slot is cleared.
void positions_form_delete_section(Project& p, PositionsForm& form, Port& port);

enum class PositionsNext { stays_open, closed, to_section_editor };

// Continue: the four checks in order (the form stays open on the first that
// fails), the positions stored, the plan redrawn. In the new project wizard
// view_row = 1 and the section editor follows; otherwise the stack is rebuilt
// and the isometry of surface num_layers drawn.
PositionsNext continue_positions_form(Project& p, PositionsForm& form, Port& port);

// Cancel: form_mode = 0. Section lines already moved stay moved.
void cancel_positions_form(Project& p, PositionsForm& form);

} // namespace tobel
