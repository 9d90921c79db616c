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
