// The wedge form as logic: a grid of planes, one row per plane with the
// columns X, Y, Z, dip, dip direction and discontinuity code. The form works
// on its own copy of the planes and stores them on Continue; Continue also
// builds the wedge or composite surface.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Grid columns, 1-based as on the form.
enum WedgeColumn : int {
    wedge_col_x = 1,      // "X - Coord.:"
    wedge_col_y = 2,      // "Y - Coord.:"
    wedge_col_z = 3,      // "Z - Coord.:"
    wedge_col_dip = 4,    // "Dip:"
    wedge_col_dipdir = 5, // "Dip Dir.*:"
    wedge_col_code = 6,   // "Disc. Code:"
};
constexpr int wedge_columns = 6;
constexpr int wedge_visible_rows = 8;

constexpr std::array<const char*, wedge_columns> wedge_column_titles = {
    "X - Coord.:", "Y - Coord.:", "Z - Coord.:", "Dip:", "Dip Dir.*:", "Disc. Code:"};
constexpr const char* wedge_row_title = "Plane ";
constexpr const char* wedge_dipdir_note = "* Dip direction, measured from the negative Y-direction (the "
                                          "direction of sliding).  Positive clock-wise.";

using WedgeRow = std::array<float, wedge_columns>;

struct WedgeForm {
    std::vector<WedgeRow> rows; // plane r at index r - 1; its size is the form's count
    int row = 1;                // current cell
    int col = 1;
    int top_row = 1;     // first of the eight rows in view
    int max_wedges = 10; // the limit in force when the form opened

    int count() const { return int(rows.size()); }
    float& cell(int r, int c) { return rows[std::size_t(r - 1)][std::size_t(c - 1)]; }
    float cell(int r, int c) const { return rows[std::size_t(r - 1)][std::size_t(c - 1)]; }
};

// "Only " + the limit in signed text form (so with a leading blank, as in the
// other limit messages of the data-entry forms) + " wedge surfaces allowed."
std::string wedge_limit_message(int max_wedges);

// Opens on a copy of planes 1..num_wedges, at the first cell.
WedgeForm open_wedge_form(const Project& p);

// Add: appends a cleared row after the last and makes it current. At the
// limit shows the limit message, adds nothing and returns false.
bool wedge_form_add_row(WedgeForm& form, Port& port);

// Delete: removes the current row; the rows below move up.
void wedge_form_delete_row(WedgeForm& form);

// Keys that move through the grid. Left and Right stay in the row; Tab and
// Enter go to the next column and from the last column to the first of the
// next row; Up and Down change the row. Moving down past the last row adds a
// row, or at the limit shows the limit message and stays.
enum class WedgeKey { up, down, left, right, tab, enter };
void wedge_form_key(WedgeForm& form, WedgeKey key, Port& port);

// Whether a key typed into a cell holding `text` enters it: digits, one
// point, and a minus sign only as the first character.
bool wedge_form_accepts(const std::string& text, char key, int caret = -1);

// A number typed into a cell: the leading number of the text, 0 if none.
// A cell outside the rows held is ignored.
void wedge_form_enter(WedgeForm& form, int row, int col, std::string_view text);

// Continue: surface_defined; the planes stored; outside a composite
// (form_mode 3 to 6) the sliding plane is cleared and the kind becomes 2;
// build_wedges; surface_kind by form_mode (3, 5, 6 give 3, 4 gives 5); the
// Solve menu of the mode; the crack, the force scale and the moment centre;
// the surface is drawn; form_mode = 0.
void continue_wedge_form(Project& p, const WedgeForm& form, Port& port);

// Cancel: form_mode = 0; planes already stored stay.
void cancel_wedge_form(Project& p);

} // namespace tobel
