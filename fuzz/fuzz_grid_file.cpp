// The elevation grid reader into the ground and into the sliding surface of
// the default project, answering Yes to the mesh questions, then the writer
// of the same plane.
#include <memory>

#include "surfaces/grid_surface.h"
#include "fuzz_support.h"
#include "geometry/grid_file.h"
#include "project/runtime_error.h"
#include "ui/port.h"

using namespace tobel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::input_file("input.grd", data, size);
    auto p = std::make_unique<Project>();
    fuzz::load_main_window(*p);
    QuietPort port(Answer::yes);
    // Odd sizes go to the sliding surface, which also builds its dips, crack
    // and moment centre.
    const int surface = size % 2 == 0 ? p->num_layers : p->sliding_index;
    read_grid_file(*p, path, surface, port);
    try {
        write_grid_file(*p, surface, fuzz::work_dir() + "/output.grd", port);
    } catch (const RuntimeError&) {
    }
    return 0;
}
