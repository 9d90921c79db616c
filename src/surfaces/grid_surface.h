// A plane of the surface stack read from a grid file, as Open and the
// surface dialogs load it.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Fills zgrid(1.., 1.., surface) from a grid file (see read_grid). A sliding
// surface read this way is made ready for solving: crack, force scale, dips,
// moment centre and the Solve menu. Problems are told through the port, never
// thrown; what was read before a failure stays.
void read_grid_file(Project& p, const std::string& path, int surface, Port& port);

} // namespace tobel
