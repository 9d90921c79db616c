// The grid search: the centre of the ellipsoid at each node of a rectangle
// of the Y-Z plane, from the top line down and left to right, keeping the
// best trial.
#pragma once

#include "project/project.h"
#include "search/search_setup.h"
#include "ui/port.h"

namespace tobel {

// The last index of the centre list.
constexpr long grid_point_capacity = 100000;

// Fills search.point_y, point_z (k = i * grid_ny + j runs along the top line
// first, Z falling line by line), grid_dy, grid_dz and point_last (-1 when
// the grid has no node). A list past index 100000 is a subscript error.
void build_grid_points(SearchState& s, const GridSearchRecord& r);

// Runs the trials of the centre list. The first centre in bounds is the
// first best; after it a centre wins only with a strictly lower F. Ends
// with the final surface when fos_max and fos_min are both non-zero. A Stop
// ends it at once, with no final surface. Returns true when the final
// surface was shown.
bool grid_search(Project& p, Port& port, const GridSearchRecord& r);

// True when (y, z) lies on a side of the grid of centres that has width: a
// critical centre there may lie beyond the grid, which should be extended.
bool on_grid_edge(const SearchState& s, float y, float z);

} // namespace tobel
