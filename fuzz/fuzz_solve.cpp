// A data file opened and solved: the sliding surface stored in the file is
// confirmed in its form and solved by one of the four methods. Meshes of more
// than 400 nodes are only opened, to keep runs short. A solution that leaves
// a number that is not finite in its results stops the run.
#include <memory>

#include "fuzz_support.h"
#include "commands/commands.h"
#include "commands/surface_commands.h"
#include "ui/port.h"

using namespace tobel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::input_file("input.tob", data, size);
    auto p = std::make_unique<Project>();
    fuzz::load_main_window(*p);
    QuietPort port(Answer::no);
    p->data_file_path = path;
    p->open_recent_pending = -1;
    file_open(*p, port);
    if (long(p->num_rows) * long(p->num_cols) > 400 || p->num_rows < 1 || p->num_cols < 1)
        return 0;
    // The surface and the method follow from the input's length, so that a
    // reproducer replays the same trial.
    const auto which = static_cast<SurfaceCommand>(size % 5);
    p->solution_method = int16(1 + (size / 5) % 4);
    if (!confirm_surface(*p, port, which))
        return 0;
    solve_single_trial(*p, port);
    fuzz::require_finite_results(*p, "solve");
    return 0;
}
