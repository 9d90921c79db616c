// The grid search on several threads: 6 by 5 centres with radius stepping on
// the bench trial's 100 by 100 mesh, on 1, 2, 4 and 8 threads (more threads
// than cores oversubscribe the machine). Reports the time of a search, its
// speed-up and parallel efficiency against one thread, and the best record,
// which must be the same at every count. The memory case searches a
// 1000 by 1000 mesh once and reports the peak resident size of the process:
// run it alone per thread count (--benchmark_filter=grid_search_memory/1$).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <sys/resource.h>

#include "bench_fixture.h"
#include "search/grid_search.h"
#include "search/trial.h"
#include "tbb_runner.h"
#include "ui/port.h"

namespace {

using namespace tobel;

double search_once(Project& p, const GridSearchRecord& r)
{
    QuietPort port;
    p.view_mode = 9;
    p.surface_kind = 1;
    p.ell_x = r.grid_x;
    p.ell_aspect = 1;
    p.search.fos_max = p.search.fos_min = 0;
    p.search.fos_range_set = 0;
    const auto t0 = std::chrono::steady_clock::now();
    bench::grid_search_as_run(p, port, r);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

std::map<int, double> seconds_by_threads; // for the efficiency against one thread

void grid_search_threads(benchmark::State& state)
{
    const int threads = int(state.range(0));
    auto p = bench::make_trial(100);
    if (threads > 1)
        p->search.runner = std::make_shared<TbbRunner>(threads);
    const GridSearchRecord r = bench::bench_grid();
    double seconds = 0;
    for (auto _ : state) {
        seconds += search_once(*p, r);
        benchmark::DoNotOptimize(p->search.best.fos);
    }
    const double per = seconds / double(state.iterations());
    seconds_by_threads[threads] = per;
    state.counters["seconds_per_search"] = per;
    state.counters["trials"] = p->search.trial_count;
    state.counters["best_F"] = p->search.best.fos;
    state.counters["best_trial"] = p->search.best.trial_number;
    state.counters["best_y"] = p->search.best.y;
    state.counters["best_z"] = p->search.best.z;
    state.counters["best_radius"] = p->search.best.radius;
    if (seconds_by_threads.count(1) != 0) {
        const double speed_up = seconds_by_threads[1] / per;
        state.counters["speed_up"] = speed_up;
        // Against the cores that can work at once: at most the machine's.
        const int cores = std::min(threads, all_cores());
        state.counters["efficiency"] = speed_up / cores;
    }
}

void grid_search_memory(benchmark::State& state)
{
    const int threads = int(state.range(0));
    auto p = bench::make_trial(1000);
    if (threads > 1)
        p->search.runner = std::make_shared<TbbRunner>(threads);
    GridSearchRecord r = bench::bench_grid();
    r.grid_ny = 4;
    r.grid_nz = 4;
    double seconds = 0;
    for (auto _ : state)
        seconds += search_once(*p, r);
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    state.counters["peak_rss_MB"] = double(u.ru_maxrss) / 1024.0;
    state.counters["seconds_per_search"] = seconds / double(state.iterations());
    state.counters["trials"] = p->search.trial_count;
    state.counters["best_F"] = p->search.best.fos;
    state.counters["best_trial"] = p->search.best.trial_number;
}

} // namespace

BENCHMARK(grid_search_threads)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(grid_search_memory)->Arg(1)->Arg(16)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
