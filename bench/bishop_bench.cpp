// One Bishop trial as a search runs it (solve_interactive 0), on meshes of
// 100, 300 and 1000 columns per side, the slide covering about half the mesh.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "project/defaults.h"
#include "project/project.h"
#include "solver/bishop_janbu.h"
#include "surfaces/ellipsoid.h"
#include "ui/port.h"

namespace {

using namespace tobel;

std::unique_ptr<Project> make_trial(int n)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = 1;
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

void bishop_trial(benchmark::State& state)
{
    const int n = int(state.range(0));
    auto p = make_trial(n);
    QuietPort port;
    double seconds = 0;
    long trials = 0;
    for (auto _ : state) {
        p->solve_interactive = 0;
        const auto t0 = std::chrono::steady_clock::now();
        solve_bishop_janbu(*p, port);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        ++trials;
        benchmark::DoNotOptimize(p->factor_of_safety);
    }
    const double per_trial = seconds / double(trials);
    state.counters["F"] = p->factor_of_safety;
    state.counters["active"] = double(p->active_columns);
    state.counters["cover"] = double(p->active_columns) / (double(n) * n);
    state.counters["iterations"] = p->iteration_total;
    state.counters["ms_per_trial"] = per_trial * 1e3;
    state.counters["ns_per_col_iter"] =
        per_trial * 1e9 / (double(p->active_columns) * double(p->iteration_total));
}

} // namespace

BENCHMARK(bishop_trial)->Arg(100)->Arg(300)->Arg(1000)->Unit(benchmark::kMillisecond);
