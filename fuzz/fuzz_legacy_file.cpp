// The legacy .TOD reader on a cleared project, as Open .TOD File runs it.
#include <memory>
#include <new>

#include "commands/open_project.h"
#include "fuzz_support.h"
#include "project/defaults.h"
#include "project/legacy_file.h"
#include "project/runtime_error.h"
#include "ui/port.h"

using namespace tobel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::input_file("input.tod", data, size);
    auto p = std::make_unique<Project>();
    fuzz::load_main_window(*p);
    QuietPort port(Answer::yes);
    reset_project(*p);
    try {
        read_legacy_file(*p, path, port);
    } catch (const RuntimeError&) {
        // The command shows it; the project stays as far as the reader got.
    } catch (const std::bad_alloc&) {
        // The command shows it as "Out of memory".
    }
    return 0;
}
