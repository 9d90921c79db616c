// Cost of a search trial on a 3-D slope: 70 m along the motion (Y), 50 m
// across (X), a 2:1 face 10 m high from the toe at Y = 20 (Z = 10) to the
// crest at Y = 40 (Z = 20), one layer c 10, phi 20, unit weight 20. A grid
// search of ellipsoids on 0.5 m and 0.25 m meshes reports the time per trial
// and per surface solved; the same search per method reports the time per
// active column of a solved surface, set-up included. A small slide on a 3000 by 3000 mesh is set against the
// same slide on a 300 by 300 mesh of the same spacing.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "bench_fixture.h"
#include "project/defaults.h"
#include "project/project.h"
#include "search/grid_search.h"
#include "search/trial.h"
#include "ui/draw_hooks.h"
#include "ui/port.h"

namespace {

using namespace tobel;

// Ground of the slope at Y.
double ground_z(double y)
{
    return y <= 20 ? 10 : y >= 40 ? 20 : 10 + (y - 20) / 2;
}

// The slope on a mesh of the given spacing over X 0..width, Y 0..length.
std::unique_ptr<Project> make_slope(double spacing, double width = 50, double length = 70)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = 1;
    p->num_layers = 1;
    derive_counts(*p);
    p->num_rows = int16(width / spacing + 1.5);
    p->num_cols = int16(length / spacing + 1.5);
    p->x_min = 0;
    p->x_max = float(width);
    p->y_min = 0;
    p->y_max = float(length);
    redim_grids(*p);
    p->row_spacing = float(spacing);
    p->col_spacing = float(spacing);
    p->mat_type[1] = 1;
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = p->mat_cohesion_v[1] = 10;
    p->mat_phi[1] = p->mat_phi_v[1] = 20;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c)
            p->zgrid(r, c, 1) = float(ground_z(double(c - 1) * spacing));
    p->surface_defined = -1;
    p->surface_kind = 1;
    p->view_mode = 9;
    return p;
}

// Ellipsoids across the middle of the slope, narrower across than along:
// 5 by 5 centres over Y 24..32, Z 30..38, tangent to Z = 6, radius step 1.
GridSearchRecord slope_grid(float x)
{
    GridSearchRecord r;
    r.grid_x = x;
    r.grid_y1 = 24;
    r.grid_y2 = 32;
    r.grid_z_top = 38;
    r.grid_z_bottom = 30;
    r.grid_ny = 5;
    r.grid_nz = 5;
    r.grid_tangent_z = 6;
    r.grid_radius_step = 1;
    r.grid_aspect = 0.6f;
    return r;
}

// Counts the failed trials among the recorded ones.
class FailureCount : public DrawHooks {
  public:
    long failed = 0; // recorded trials whose solution failed (F = 0)
    void trial_recorded(Project& p, float, float, bool tentative) override
    {
        if (!tentative && p.search.trial.fos == 0)
            ++failed;
    }
};

class CountingPort : public QuietPort {
  public:
    FailureCount hooks;
    DrawHooks* draw_hooks() override { return &hooks; }
};

// Runs the grid search and reports:
// - the time per trial as the search counts its trials (the recorded ones);
// - the time per surface solved: a centre's radius steps that do not improve
//   on its record are solved but not recorded, so a trial of a stepped
//   search costs more than one solve (on this slope the unrecorded ones are
//   also the bigger slides: some 5,200 active columns against 1,100);
// - the active columns of a solved surface, on the mean, and the time per
//   active column of every surface solved, set-up included.
void run_search(benchmark::State& state, Project& p, const GridSearchRecord& r)
{
    CountingPort port;
    p.ell_x = r.grid_x;
    p.ell_aspect = r.grid_aspect;
    // The first trial of a project sweeps the whole mesh (nothing is known of
    // it yet); one search before the timing leaves the steady state.
    bench::grid_search_as_run(p, port, r);
    double seconds = 0, surfaces = 0, columns = 0;
    long trials = 0;
    for (auto _ : state) {
        port.hooks = FailureCount{};
        const auto t0 = std::chrono::steady_clock::now();
        bench::grid_search_as_run(p, port, r);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        trials += p.search.trial_count;
        surfaces += double(p.search.solved_surfaces);
        columns += p.search.solved_columns;
        benchmark::DoNotOptimize(p.search.best.fos);
    }
    const double iterations = double(state.iterations());
    state.counters["trials"] = double(trials) / iterations;
    state.counters["surfaces"] = surfaces / iterations;
    state.counters["ms_per_trial"] = trials > 0 ? seconds / double(trials) * 1e3 : 0;
    state.counters["ms_per_surface"] = surfaces > 0 ? seconds / surfaces * 1e3 : 0;
    state.counters["active_columns"] = surfaces > 0 ? columns / surfaces : 0;
    state.counters["ns_per_column"] = columns > 0 ? seconds / columns * 1e9 : 0;
    state.counters["nodes"] = double(p.num_rows) * double(p.num_cols);
    state.counters["best_F"] = p.search.best.fos;
    state.counters["failed_trials"] = double(port.hooks.failed);
}

void slope3d_search(benchmark::State& state)
{
    const double spacing = double(state.range(0)) / 100.0;
    auto p = make_slope(spacing);
    p->solution_method = int16(state.range(1));
    run_search(state, *p, slope_grid(25));
}

// A slide of a few hundred columns: the slope put on the corner of a big mesh
// of the 0.25 m spacing, the rest of the mesh flat ground at the crest.
void small_slide(benchmark::State& state)
{
    const int n = int(state.range(0));
    auto p = make_slope(0.25, double(n - 1) * 0.25, double(n - 1) * 0.25);
    GridSearchRecord r = slope_grid(10);
    r.grid_aspect = 0.15f;
    r.grid_ny = 3;
    r.grid_nz = 3;
    run_search(state, *p, r);
}

} // namespace

// Arguments: spacing in cm, method (1 Bishop, 3 Spencer, 4 Morgenstern-Price).
BENCHMARK(slope3d_search)
    ->Args({50, 1})
    ->Args({25, 1})
    ->Args({50, 3})
    ->Args({50, 4})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK(small_slide)->Arg(300)->Arg(3000)->Unit(benchmark::kMillisecond)->Iterations(2);
