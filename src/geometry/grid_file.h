// Elevation grids in the "DSAA" text form of SURFER, read into a plane of the
// surface stack and written from one.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Fills zgrid(1.., 1.., surface) from a grid file, whose limits and counts
// then rule the mesh (after asking when they differ from the project's). A
// sliding surface read this way is made ready for solving. Problems are told
// through the port, never thrown; what was read before a failure stays.
void read_grid_file(Project& p, const std::string& path, int surface, Port& port);

// Writes surface 1..sliding_index of zgrid, sliding_index + 1 for col_normal
// or sliding_index + 2 for col_fos, with enough digits to read back the same
// single values. A file that cannot be written throws
// RuntimeError(err_path_access, path).
void write_grid_file(Project& p, int surface, const std::string& path, Port& port);

// A grid value as written: blank or minus sign, the shortest text that reads
// back as the same single, and a blank.
std::string grid_item(float x);

} // namespace tobel
