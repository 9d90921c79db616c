// The form "List of external forces" as logic: a grid of forces, one line per
// force with its two components and its point of application. The form works
// on its own copy of the lines and stores them on Continue.
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
enum ForceColumn : int {
    force_col_h = 1, // "Horiz. Comp.: *"
    force_col_v = 2, // "Vert. Comp.: **"
    force_col_x = 3, // "X - Coord.:"
    force_col_y = 4, // "Y - Coord.:"
    force_col_z = 5, // "Z - Coord.:"
};
constexpr int force_columns = 5;
constexpr int force_visible_rows = 8;

constexpr const char* force_form_caption = "List of external forces";
constexpr const char* force_components_title = "Force Components:";
constexpr const char* force_point_title = "Application Point Coordinates:";
constexpr std::array<const char*, force_columns> force_column_titles = {
    "Horiz. Comp.: *", "Vert. Comp.: **", "X - Coord.:", "Y - Coord.:", "Z - Coord.:"};
constexpr const char* force_footnote =
    "* Positive in the Y-direction                                          ** Positive down";
constexpr const char* force_add_caption = "&Add Force";
constexpr const char* force_delete_caption = "&Delete Force";

using ForceRow = std::array<float, force_columns>;

struct ForceForm {
    std::vector<ForceRow> rows; // force f at index f - 1; its size is the form's count
    int row = 1;                // the selected line
    int top_row = 1;            // first of the eight lines in view
    int max_forces = 100;       // the limit in force when the form opened

    int count() const { return int(rows.size()); }
    float& cell(int r, int c) { return rows[std::size_t(r - 1)][std::size_t(c - 1)]; }
    float cell(int r, int c) const { return rows[std::size_t(r - 1)][std::size_t(c - 1)]; }
};

// "Only " + the limit in signed text form + " forces allowed."
std::string force_limit_message(int max_forces);

// Opens on a copy of forces 1..num_forces, the first line selected. With no
// forces the grid still offers one cleared line to type into.
ForceForm open_force_form(const Project& p);

// Add Force: appends a cleared line and selects it. At the limit shows the
// limit message, adds nothing and returns false.
bool force_form_add(ForceForm& form, Port& port);

// Delete Force: removes the selected line; the lines below move up.
void force_form_delete(ForceForm& form);

// Selects line r (a click on the grid); lines outside the count are ignored.
void force_form_select(ForceForm& form, int r);

// Whether a key typed into a cell holding `text` enters it.
bool force_form_accepts(const std::string& text, char key, int caret = -1);

// A number typed into a cell: the leading number of the text, 0 if none.
// A cell outside the lines held is ignored.
void force_form_enter(ForceForm& form, int row, int col, std::string_view text);

// Continue: the lines go to force_h, force_v, force_x, force_y, force_z and
// their count to num_forces; a lone force 1 with both components 0 counts as
// no force at all.
void continue_force_form(Project& p, const ForceForm& form);

// Cancel drops the copy: the project is not touched.
void cancel_force_form(ForceForm& form);

} // namespace tobel
