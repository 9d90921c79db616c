// The form "Control Parameters" as logic: the titles, the units, the counts of
// the surface stack and the mesh, in 15 text cells plus the water list and the
// 2D/3D button. The cells hold text until Continue stores them.
#pragma once

#include <array>
#include <string>

#include "ui/form_key.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr int control_cells = 15;

// Cell numbers, 1-based as on the form.
enum ControlCell : int {
    control_project = 1,
    control_dataset = 2,
    control_input_by = 3,
    control_date = 4,
    control_eq_coef = 5,
    control_layers = 6,
    control_piezos = 7,
    control_discs = 8,
    control_x_min = 9,
    control_x_max = 10,
    control_rows = 11,
    control_y_min = 12,
    control_y_max = 13,
    control_cols = 14,
    control_base_z = 15,
};

constexpr const char* control_form_caption = "Control Parameters";
constexpr std::array<const char*, control_cells> control_cell_labels = {"Project:   ",
                                                                        "Data Set:   ",
                                                                        "Input By:   ",
                                                                        "Date:   ",
                                                                        "Hor. Earthqake Acceleration:",
                                                                        "No. of Layers:",
                                                                        "No.  Piezo Surfaces:",
                                                                        "No. Discontinuities:",
                                                                        "Min. X (Transverse):",
                                                                        "Max. X (Transverse):",
                                                                        "Number of Rows:",
                                                                        "Min. Y (Longitudinal):   ",
                                                                        "Max. Y (Longitudinal):   ",
                                                                        "Number of Columns:   ",
                                                                        "Base of Z-coordinates (optional):"};
constexpr const char* control_water_label = "Unit Weight of Water:   ";
constexpr std::array<const char*, 2> control_water_entries = {"9.81  (kN/cu.m)", "62.4  (pcf)"};
constexpr const char* control_grid_note = "Grid extent and density:";
constexpr const char* control_column_note = "Each grid intersection represents the centre of a column.";
constexpr const char* control_two_d_note = "Two-dimensional ";
constexpr const char* control_two_d_hint = "For 3D, make Number of Rows > 1";
constexpr const char* control_to_3d_caption = "Change to 3D";
constexpr const char* control_to_2d_caption = "Change to 2D";

struct ControlForm {
    std::array<std::string, control_cells + 1> cells{}; // cell c at index c
    int cell = 1;                                       // the selected cell
    std::string edit;                                   // edit text of the selected cell
    int water_index = 0;                                // list entry: 0 for 9.81, 1 for 62.4
    std::string command1_caption;

    std::string& text(int c) { return cells[std::size_t(c)]; }
    const std::string& text(int c) const { return cells[std::size_t(c)]; }
};

// Opens on the project: the cells in the general text of their fields, cell 4
// holding `today` (the system's date, given by the caller), the list on 62.4
// or 9.81, the button by num_rows, the first cell selected.
ControlForm open_control_form(const Project& p, const std::string& today);

// Up goes to the previous cell; Down, Enter and Tab to the next, within
// 1..15. Left and Right move the caret only. The edit text is stored first.
void control_form_key(ControlForm& form, FormKey key);

// A click on the label of cell c: the edit text is stored and c selected.
void control_form_select(ControlForm& form, int c);

// The refusal message of typing in cell c outside the new project wizard,
// "" when there is none.
std::string control_cell_refusal(const Project& p, int c);

// The key filter of cell c holding `text`, caret at `caret` (< 0: at the end).
// Cells 1 to 3 take any key but carriage return and tab; cell 4 none; cells 5
// on digits, one point, a minus sign typed at the start, and backspace.
bool control_key_accepted(int c, const std::string& text, char key, int caret = -1);

// Types one key into the selected cell: a refused cell 6, 7 or 8 shows its
// message; an accepted key is entered at the caret (backspace removes the
// character before it). Returns whether the key was accepted.
bool control_form_type(ControlForm& form, const Project& p, Port& port, char key, int caret = -1);

// The list: 0 selects 9.81, 1 selects 62.4.
void control_form_choose_water(ControlForm& form, int index);

// Command1: more than 1 row gives a two-dimensional mesh of 300 columns,
// exactly 1 row gives 50 by 50; cell 9 is selected afterwards.
void control_form_command1(ControlForm& form);

// Whether "Two-dimensional " and its hint show: while cell 11 holds 1.
bool control_two_d_note_visible(const ControlForm& form);

enum class ControlNext { stays_open, closed, to_interpolation };

// Continue: the nine checks in order (the form stays open on the first that
// fails), the store, redim_grids, the stack rebuilt, the plan drawn,
// dirty_flag, the project menus. In the new project wizard the Interpolation
// form follows.
ControlNext continue_control_form(Project& p, ControlForm& form, Port& port);

// Cancel stores nothing.
void cancel_control_form(Project& p, ControlForm& form);

} // namespace tobel
