// Elevation grids in the "DSAA" text form of SURFER, read into a plane of the
// surface stack and written from one.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Fills zgrid(1.., 1.., surface) from a grid file, whose limits and counts
// then rule the mesh (after asking when they differ from the project's).
// Throws RuntimeError on a file it cannot read; what was read before a
// failure stays. read_grid_file of the surfaces makes a sliding surface read
// this way ready for solving.
void read_grid(Project& p, const std::string& path, int surface, Port& port);

// Writes surface 1..sliding_index of zgrid, sliding_index + 1 for col_normal
// or sliding_index + 2 for col_fos, with enough digits to read back the same
// single values. A file that cannot be written throws
// RuntimeError(err_path_access, path).
void write_grid_file(Project& p, int surface, const std::string& path, Port& port);

// A grid value as written: blank or minus sign, the shortest text that reads
// back as the same single, and a blank.
std::string grid_item(float x);

} // namespace tobel
