// One Bishop trial as a search runs it (solve_interactive 0), on meshes of
// 100, 300 and 1000 columns per side, the slide covering about half the mesh.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "bench_fixture.h"
#include "solver/bishop_janbu.h"
#include "ui/port.h"

namespace {

using namespace tobel;
using tobel::bench::make_trial;

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
