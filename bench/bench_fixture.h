// The trial of the solver benchmarks: a cohesive-frictional slope with pore
// pressure ratio 0.2 on an n by n mesh over 0..100 both ways, cut by a
// sphere whose slide covers about half the plan.
#pragma once

#include <memory>

#include "project/defaults.h"
#include "project/project.h"
#include "search/grid_search.h"
#include "search/search_setup.h"
#include "search/trial.h"
#include "surfaces/ellipsoid.h"
#include "ui/port.h"

namespace tobel::bench {

inline std::unique_ptr<Project> make_trial(int n, int method = 1)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = int16(method);
    p->num_layers = 1;
    derive_counts(*p);
    p->num_rows = int16(n);
    p->num_cols = int16(n);
    p->x_max = 100;
    p->y_max = 100;
    redim_grids(*p);
    p->row_spacing = float(100.0 / (n - 1));
    p->col_spacing = float(100.0 / (n - 1));
    p->mat_type[1] = 1;
    p->mat_unit_weight[1] = 18;
    p->mat_cohesion[1] = 10;
    p->mat_phi[1] = 25;
    p->mat_piezo[1] = 0.2f;
    for (int r = 1; r <= n; ++r)
        for (int c = 1; c <= n; ++c)
            p->zgrid(r, c, 1) = float(0.3 * (c - 1) * double(p->col_spacing));
    // A sphere whose cut with the ground covers about half the plan.
    p->ell_x = 50;
    p->ell_y = 50;
    p->ell_z = 55;
    p->ell_radius = 54;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    return p;
}

// The grid of the search benchmarks over make_trial's slope: 6 by 5 centres
// around the sphere of the trial, radius stepped by 2 from the plane at 5.
inline GridSearchRecord bench_grid()
{
    GridSearchRecord r;
    r.grid_x = 50;
    r.grid_y1 = 45;
    r.grid_y2 = 55;
    r.grid_z_top = 58;
    r.grid_z_bottom = 50;
    r.grid_ny = 6;
    r.grid_nz = 5;
    r.grid_tangent_z = 5;
    r.grid_radius_step = 2;
    r.grid_aspect = 1;
    return r;
}

// The search itself as Solve > Grid Search runs it: the records cleared, the
// centres laid out, and the search marked running, for only then do the
// grids stand still between trials and a trial visits no more than its slide.
inline void grid_search_as_run(Project& p, Port& port, const GridSearchRecord& r)
{
    init_search(p);
    build_grid_points(p.search, r);
    p.search.running = -1;
    grid_search(p, port, r);
    p.search.running = 0;
}

} // namespace tobel::bench
