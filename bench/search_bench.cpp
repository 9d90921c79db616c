// A grid search of 6 by 5 centres with radius stepping, as Solve > Grid
// Search runs it: on a 100 by 100 mesh (the bench trial's slope) and on a
// 2-D mesh of 300 columns. Reports trials per second.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "bench_fixture.h"
#include "search/grid_search.h"
#include "search/trial.h"
#include "ui/port.h"

namespace {

using namespace tobel;

// The 2-D slope: toe at 10 up to Y = 30, a 2:1 face to the crest at 30 from
// Y = 70, over 0..100 on n columns.
std::unique_ptr<Project> make_2d(int n)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = 1;
    p->num_layers = 1;
    derive_counts(*p);
    p->num_rows = 1;
    p->num_cols = int16(n);
    p->x_max = 1;
    p->y_max = 100;
    redim_grids(*p);
    p->row_spacing = 1;
    p->col_spacing = float(100.0 / (n - 1));
    p->mat_type[1] = 1;
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 10;
    p->mat_phi[1] = 20;
    for (int c = 1; c <= n; ++c) {
        const double y = (c - 1) * double(p->col_spacing);
        p->zgrid(1, c, 1) = float(y <= 30 ? 10 : y >= 70 ? 30 : 10 + (y - 30) / 2);
    }
    return p;
}

void run_grid(benchmark::State& state, Project& p, const GridSearchRecord& r)
{
    QuietPort port;
    p.view_mode = 9;
    p.surface_kind = 1;
    p.ell_x = r.grid_x;
    p.ell_aspect = 1;
    double seconds = 0;
    long trials = 0;
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        bench::grid_search_as_run(p, port, r);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        trials += p.search.trial_count;
        benchmark::DoNotOptimize(p.search.best.fos);
    }
    state.counters["trials_per_search"] = double(trials) / double(state.iterations());
    state.counters["trials_per_second"] = double(trials) / seconds;
    state.counters["best_F"] = p.search.best.fos;
}

void grid_search_3d_100(benchmark::State& state)
{
    auto p = bench::make_trial(100);
    run_grid(state, *p, bench::bench_grid());
}

void grid_search_2d_300(benchmark::State& state)
{
    auto p = make_2d(300);
    GridSearchRecord r;
    r.grid_y1 = 30;
    r.grid_y2 = 40;
    r.grid_z_top = 64;
    r.grid_z_bottom = 56;
    r.grid_ny = 6;
    r.grid_nz = 5;
    r.grid_tangent_z = 10;
    r.grid_radius_step = 1;
    r.grid_aspect = 1;
    run_grid(state, *p, r);
}

} // namespace

BENCHMARK(grid_search_3d_100)->Unit(benchmark::kMillisecond);
BENCHMARK(grid_search_2d_300)->Unit(benchmark::kMillisecond);
