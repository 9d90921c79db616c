// The grid search on several threads: 6 by 5 centres with radius stepping on
// the bench trial's 100 by 100 mesh, on 1, 2, 4 and 8 threads. A search
// evaluates on no more working projects than the machine has cores
// (working_sets), so 4 and 8 threads on a 2-core machine work as 2 do.
// Reports the time of a search, its speed-up and parallel efficiency
// against one thread (over the cores that can work at once), and the best
// record, which must be the same at every count. The machine is shared:
// compare the counts of one run, and repeat the run
// (--benchmark_repetitions=5 --benchmark_filter='grid_search_threads|machine_cores').
// cores_used of a search against cores_given of machine_cores/2 tells what
// the other loads left; work_ratio, the CPU time of a search against one
// thread's, what the threads themselves add.
//
// The memory case searches a 1000 by 1000 mesh once and reports the peak
// resident size of the process, which is the whole process's: run each
// thread count in a process of its own,
//   tobel_bench --benchmark_filter='grid_search_memory/1/'
//   tobel_bench --benchmark_filter='grid_search_memory/16/'
// and compare peak_rss_MB. grid_search_memory_all_sets/16 lifts the limit
// on working projects to the 16 threads, for what each of them costs. The
// sphere of those trials cuts half the plan; grid_search_memory_small_slides
// searches slides of some 65,000 columns on the same mesh, where a
// working project costs what its slides touch: the pages of the per-node
// grids they write and the rows of elevations they take.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <sys/resource.h>
#include <thread>
#include <vector>

#include "bench_fixture.h"
#include "search/centre_queue.h"
#include "search/grid_search.h"
#include "search/trial.h"
#include "tbb_runner.h"
#include "ui/port.h"

namespace {

using namespace tobel;

// CPU time of the whole process (every thread), in seconds.
double process_cpu_seconds()
{
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return double(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
           double(u.ru_utime.tv_usec + u.ru_stime.tv_usec) * 1e-6;
}

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
std::map<int, double> cpu_by_threads;

void grid_search_threads(benchmark::State& state)
{
    const int threads = int(state.range(0));
    auto p = bench::make_trial(100);
    if (threads > 1)
        p->search.runner = std::make_shared<TbbRunner>(threads);
    const GridSearchRecord r = bench::bench_grid();
    double seconds = 0;
    const double cpu0 = process_cpu_seconds();
    for (auto _ : state) {
        seconds += search_once(*p, r);
        benchmark::DoNotOptimize(p->search.best.fos);
    }
    const double per = seconds / double(state.iterations());
    seconds_by_threads[threads] = per;
    state.counters["seconds_per_search"] = per;
    // The work of a search on all its threads: more than one thread's shows
    // what the threads add (copies, waiting, cache misses), apart from the
    // other loads of a shared machine.
    const double cpu = (process_cpu_seconds() - cpu0) / double(state.iterations());
    cpu_by_threads[threads] = cpu;
    state.counters["cpu_seconds_per_search"] = cpu;
    if (cpu_by_threads.count(1) != 0)
        state.counters["work_ratio"] = cpu / cpu_by_threads[1];
    // The cores the search had on average; compare with machine_cores/2.
    state.counters["cores_used"] = cpu / per;
    state.counters["trials"] = p->search.trial_count;
    state.counters["best_F"] = p->search.best.fos;
    state.counters["best_trial"] = p->search.best.trial_number;
    state.counters["best_y"] = p->search.best.y;
    state.counters["best_z"] = p->search.best.z;
    state.counters["best_radius"] = p->search.best.radius;
    state.counters["working_sets"] = p->search.runner ? p->search.runner->working_sets() : 1;
    if (seconds_by_threads.count(1) != 0) {
        const double speed_up = seconds_by_threads[1] / per;
        state.counters["speed_up"] = speed_up;
        // Against the cores that can work at once: at most the machine's.
        const int cores = std::min(threads, all_cores());
        state.counters["efficiency"] = speed_up / cores;
    }
}

// What the machine gives n threads that never wait: the cores they have on
// average (CPU time over real time). Below n, other loads share the cores,
// and no search on n threads can do better.
void machine_cores(benchmark::State& state)
{
    const int n = int(state.range(0));
    double given = 0;
    for (auto _ : state) {
        const double cpu0 = process_cpu_seconds();
        const auto t0 = std::chrono::steady_clock::now();
        std::vector<std::thread> spin;
        for (int i = 0; i < n; ++i)
            spin.emplace_back([t0] {
                volatile double x = 0;
                while (std::chrono::steady_clock::now() - t0 < std::chrono::milliseconds(300))
                    for (int k = 0; k < 1000; ++k)
                        x = x + 1;
            });
        for (std::thread& t : spin)
            t.join();
        const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        given = (process_cpu_seconds() - cpu0) / wall;
    }
    state.counters["cores_given"] = given;
}

// A search of smaller slides on the same mesh: spheres tangent to Z = 14
// under centres 10 to 12 m above the ground at Y = 50 (Z = 15), their
// radius stepped up as F improves; the slides solved are some 30 m across,
// about 65,000 columns of the million.
GridSearchRecord small_slide_grid()
{
    GridSearchRecord r;
    r.grid_x = 50;
    r.grid_y1 = 48;
    r.grid_y2 = 52;
    r.grid_z_top = 27;
    r.grid_z_bottom = 25;
    r.grid_ny = 4;
    r.grid_nz = 4;
    r.grid_tangent_z = 14;
    r.grid_radius_step = 0.5f;
    r.grid_aspect = 1;
    return r;
}

void search_memory(benchmark::State& state, int sets, bool small_slides = false)
{
    const int threads = int(state.range(0));
    auto p = bench::make_trial(1000);
    if (threads > 1)
        p->search.runner = std::make_shared<TbbRunner>(threads, sets);
    GridSearchRecord r = bench::bench_grid();
    r.grid_ny = 4;
    r.grid_nz = 4;
    if (small_slides)
        r = small_slide_grid();
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
    state.counters["working_sets"] = p->search.runner ? p->search.runner->working_sets() : 1;
}

void grid_search_memory(benchmark::State& state)
{
    search_memory(state, 0);
}

void grid_search_memory_all_sets(benchmark::State& state)
{
    search_memory(state, int(state.range(0)));
}

void grid_search_memory_small_slides(benchmark::State& state)
{
    search_memory(state, 0, true);
}

void grid_search_memory_small_slides_all_sets(benchmark::State& state)
{
    search_memory(state, int(state.range(0)), true);
}

} // namespace

BENCHMARK(grid_search_threads)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(machine_cores)->Arg(2)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(grid_search_memory)->Arg(1)->Arg(16)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(grid_search_memory_all_sets)->Arg(16)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(grid_search_memory_small_slides)
    ->Arg(1)
    ->Arg(16)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(grid_search_memory_small_slides_all_sets)
    ->Arg(16)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
