// The data file through File > Open: reading, loading the grid files it
// names, rebuilding the stack, then writing the project out again. A refused
// or broken file must end in the command's error box, never in a crash.
#include <memory>

#include "fuzz_support.h"
#include "commands/commands.h"
#include "project/data_file.h"
#include "ui/port.h"

using namespace tobel;

// A grid of the default mesh that a fuzzed data file can name as "G1.GRD".
static const char seed_grid[] = "DSAA\r\n 3  2 \r\n 0  100 \r\n 0  100 \r\n 1  6 \r\n"
                                " 1  2  3 \r\n\r\n 4  5  6 \r\n\r\n";

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::input_file("G1.GRD", reinterpret_cast<const std::uint8_t*>(seed_grid), sizeof seed_grid - 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::input_file("input.tob", data, size);
    auto p = std::make_unique<Project>();
    fuzz::load_main_window(*p);
    QuietPort port(Answer::yes);
    p->data_file_path = path;
    p->open_recent_pending = -1;
    file_open(*p, port);
    // Whatever the reader reached can be written again.
    const std::string text = data_file_text(*p);
    (void)text;
    return 0;
}
