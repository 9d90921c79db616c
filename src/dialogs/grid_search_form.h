// The grid search form (tob_gridsearch) as logic: the section X, the two
// corners and counts of the grid of centres, the block of common tangent
// planes or common point, and the aspect ratio. The form works on its own
// record and stores it on Continue.
#pragma once

#include <string>
#include <string_view>

#include "geometry/section_window.h"
#include "project/project.h"
#include "search/search_setup.h"
#include "ui/port.h"

namespace tobel {

struct GridSearchForm {
    GridSearchRecord record;
    int common_point = 0; // 0 common tangent planes, 1 common point
};

// The captions that follow the common point option: the command that
// switches it, the heading of the two-field block and its two columns.
struct SearchBlockCaptions {
    std::string command, heading, first, second;
};
SearchBlockCaptions search_block_captions(int common_point);

// "Mesh X = " + Format(x_min, "####0.#") + " to " + Format(x_max, "####0.#").
std::string search_mesh_x_line(const Project& p);

// Opens on the stored record (raised lower Z, 0 across read as 5); a record
// whose corners are all 0 takes the first proposal from the limits of the
// section picture. Sets view_mode 7.
GridSearchForm open_grid_search_form(Project& p, const WorldWindow& picture);
GridSearchForm open_grid_search_form(Project& p);

// "Change to Common Point" / "Change to Common Tangent".
void grid_form_toggle_common(GridSearchForm& form);

// The two fields of the block: tangent elevation and spacing, or the common
// point's Y and Z.
float& grid_form_block(GridSearchForm& form, int which);

// A number typed into the section X: its leading number; view_row follows it.
void grid_form_enter_x(Project& p, GridSearchForm& form, std::string_view text);

// The form's cells, top to bottom: 1 the section X, 2 and 3 the upper left
// centre's Y and Z, 4 and 5 the lower right centre's Y and Z, 6 and 7 the
// counts of centres along Y and Z, 8 and 9 the two fields of the block, 10
// the aspect ratio.
constexpr int grid_form_cells = 10;
float& grid_form_cell(GridSearchForm& form, int cell);
// A number typed into a cell: the leading number of the text, 0 if none; the
// section X moves view_row as grid_form_enter_x does.
void grid_form_enter(Project& p, GridSearchForm& form, int cell, std::string_view text);

// What the form leads to after Continue.
enum class SearchFormNext { search_ready, to_wedge_form };

// Continue: the option flag and the record go to the ellipsoid store; the
// first ellipsoid (upper left centre) is built. In a composite grid search
// (form_mode 5) the wedge form comes next; otherwise the surface is defined,
// the crack and force scale run, Solve > Grid Search is offered and the
// longitudinal section is shown.
SearchFormNext continue_grid_search_form(Project& p, const GridSearchForm& form, Port& port);

// Shared by both search forms: the ellipsoid of a centre over the store's
// tangent plane or through its common point, and what follows Continue.
SearchFormNext finish_search_form(Project& p, Port& port, bool grid);

} // namespace tobel
