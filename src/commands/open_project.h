// Open and Open legacy as far as the project goes: the file's items, then
// what the program builds from them before the user sees the project.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Reads a data file into a project that reset_project has just cleared (see
// read_data_items), then loads the grid files of surfaces of method 1 and
// shows the project menus.
void read_data_file(Project& p, const std::string& path, Port& port);

// Reads a legacy file (see read_legacy_items), interpolates every surface
// from its sections and shows the project menus.
void read_legacy_file(Project& p, const std::string& path, Port& port);

} // namespace tobel
