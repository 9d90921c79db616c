// A small 2-D slope for the search tests, built directly: the ground of the
// shipped example (toe at 10, a 2:1 face from Y = 30 to 70, crest at 30) on
// a mesh of 51 columns over 0..100, one Coulomb material.
#pragma once

#include <memory>

#include "project/defaults.h"
#include "project/project.h"
#include "search/search_setup.h"
#include "support/bishop_slices.h"

namespace tobel::test {

inline std::unique_ptr<Project> make_search_slope(int cols = 51, float c = 10, float phi = 20,
                                                  float gamma = 20)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = 1;
    p->num_layers = 1;
    p->num_piezos = 0;
    p->num_discs = 0;
    derive_counts(*p);
    p->num_rows = 1;
    p->num_cols = int16(cols);
    p->x_min = 0;
    p->x_max = 1;
    p->y_min = 0;
    p->y_max = 100;
    redim_grids(*p);
    p->row_spacing = 1;
    p->col_spacing = float(100.0 / (cols - 1));
    p->mat_type[1] = 1;
    p->mat_unit_weight[1] = gamma;
    p->mat_cohesion[1] = p->mat_cohesion_v[1] = c;
    p->mat_phi[1] = p->mat_phi_v[1] = phi;
    for (int j = 1; j <= cols; ++j)
        p->zgrid(1, j, 1) = float(example_2d_ground(double(j - 1) * p->col_spacing));
    p->surface_defined = -1;
    p->surface_kind = 1;
    p->ell_x = 0;
    p->ell_aspect = 1;
    p->view_mode = 9;
    return p;
}

// A grid search set-up over the given window, aspect 1.
inline GridSearchRecord grid(float y1, float y2, float ztop, float zbot, float ny, float nz, float tangent,
                             float step)
{
    GridSearchRecord r;
    r.grid_y1 = y1;
    r.grid_y2 = y2;
    r.grid_z_top = ztop;
    r.grid_z_bottom = zbot;
    r.grid_ny = ny;
    r.grid_nz = nz;
    r.grid_tangent_z = tangent;
    r.grid_radius_step = step;
    r.grid_aspect = 1;
    return r;
}

} // namespace tobel::test
