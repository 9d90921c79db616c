// The settings file "tob.cfg": read at start, written at exit.
#include <memory>

#include "fuzz_support.h"
#include "project/runtime_error.h"
#include "project/settings.h"

using namespace tobel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::input_file("tob.cfg", data, size);
    auto p = std::make_unique<Project>();
    fuzz::load_main_window(*p);
    read_settings(*p, path);
    try {
        write_settings(*p, fuzz::work_dir() + "/written.cfg");
    } catch (const RuntimeError&) {
    }
    return 0;
}
