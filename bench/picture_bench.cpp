// The pictures of a large mesh: the isometry of the sliding surface and the
// plan of active columns of a 1000 by 1000 mesh, to the kept picture (the
// display list) and on to a PNG; and the size of the kept picture of a 3000
// by 3000 isometry beside the size of the project it shows.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

#include "bench_fixture.h"
#include "graphics/isometry.h"
#include "graphics/picture_hooks.h"
#include "qt/picture_files.h"
#include "qt/qt_app.h"
#include "solver/bishop_janbu.h"

namespace {

using namespace tobel;
using tobel::bench::make_trial;

// A port that takes pictures and shows nothing.
class PicturePort : public QuietPort {
  public:
    DrawHooks* draw_hooks() override { return &hooks; }
    PictureHooks hooks{*this};
};

// Bytes the project's grids hold: the stack and the per-node work grids.
double project_bytes(const Project& p)
{
    const double nodes = double(p.zgrid.rows + 1) * double(p.zgrid.cols + 1);
    return nodes * double(p.zgrid.planes + 1) * sizeof(float) + nodes * 22 * sizeof(float);
}

void isometry_to_list(benchmark::State& state)
{
    auto p = make_trial(int(state.range(0)));
    p->surface_defined = -1;
    PicturePort port;
    for (auto _ : state) {
        draw_isometry(*p, port, p->sliding_index);
        benchmark::DoNotOptimize(p->pictures.isometry.picture.coords.data());
    }
    state.counters["list_MB"] = double(p->pictures.isometry.picture.bytes()) / 1e6;
    state.counters["project_MB"] = project_bytes(*p) / 1e6;
}

void isometry_to_png(benchmark::State& state)
{
    auto p = make_trial(int(state.range(0)));
    p->surface_defined = -1;
    PicturePort port;
    draw_isometry(*p, port, p->sliding_index);
    ensure_gui_application();
    const std::string out = "/tmp/tobel_bench_isometry.png";
    for (auto _ : state)
        write_picture(p->pictures.isometry.picture, out, 1200, 900);
    std::remove(out.c_str());
}

void plan_to_list(benchmark::State& state)
{
    auto p = make_trial(int(state.range(0)));
    PicturePort port;
    for (auto _ : state) {
        p->solve_interactive = -1;
        solve_bishop_janbu(*p, port);
    }
    state.counters["list_MB"] = double(p->pictures.plan_active.picture.bytes()) / 1e6;
    state.counters["active"] = double(p->active_columns);
}

void plan_to_png(benchmark::State& state)
{
    auto p = make_trial(int(state.range(0)));
    PicturePort port;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    ensure_gui_application();
    const std::string out = "/tmp/tobel_bench_plan.png";
    for (auto _ : state)
        write_picture(p->pictures.plan_active.picture, out, 1200, 900);
    std::remove(out.c_str());
}

} // namespace

BENCHMARK(isometry_to_list)->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(isometry_to_png)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(plan_to_list)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(plan_to_png)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);
