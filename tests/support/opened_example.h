// A shipped example opened as File > Open does after the program's start.
#pragma once

#include <string>

#include "commands/commands.h"
#include "project/project.h"
#include "support/paths.h"

namespace tobel::test {

// `port` answers the file dialog with the example: any test port with a list
// of files to hand out.
template <class TestPort> Project opened_example(TestPort& port, const std::string& name)
{
    Project p;
    main_load(p);
    port.files = {example_path(name)};
    file_open(p, port);
    return p;
}

} // namespace tobel::test
