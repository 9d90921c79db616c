// One Spencer and one Morgenstern-Price trial as a search runs them
// (solve_interactive 0), on the meshes of the Bishop benchmark.
#include <benchmark/benchmark.h>

#include <chrono>

#include "bench_fixture.h"
#include "solver/spencer_mp.h"
#include "ui/port.h"

namespace {

using namespace tobel;

void spencer_mp_trial(benchmark::State& state, int method)
{
    const int n = int(state.range(0));
    auto p = tobel::bench::make_trial(n, method);
    QuietPort port;
    double seconds = 0;
    long trials = 0;
    for (auto _ : state) {
        p->solve_interactive = 0;
        const auto t0 = std::chrono::steady_clock::now();
        solve_spencer_mp(*p, port);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        ++trials;
        benchmark::DoNotOptimize(p->factor_of_safety);
    }
    const double per_trial = seconds / double(trials);
    state.counters["F"] = p->factor_of_safety;
    state.counters["lambda"] = p->lambda_coef;
    state.counters["active"] = double(p->active_columns);
    state.counters["iterations"] = p->iteration_count;
    state.counters["ms_per_trial"] = per_trial * 1e3;
    state.counters["ns_per_col_iter"] =
        per_trial * 1e9 / (double(p->active_columns) * double(p->iteration_count));
}

void spencer_trial(benchmark::State& state)
{
    spencer_mp_trial(state, 3);
}

void morgenstern_price_trial(benchmark::State& state)
{
    spencer_mp_trial(state, 4);
}

} // namespace

BENCHMARK(spencer_trial)->Arg(100)->Arg(300)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(morgenstern_price_trial)->Arg(100)->Arg(300)->Arg(1000)->Unit(benchmark::kMillisecond);
