// The .TOB data file: the project's one persistent form, written and read
// whole, item by item in a fixed order. The .TOD extension gets the same
// layout.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Writes the project. Empty material names become "Material" and empty grid
// file names "*.GRD" in the project itself on the way. The file is written
// beside the target first and replaces it only when complete; a failure throws
// RuntimeError(err_path_access, path) and leaves an old file as it was. Updates
// the recent files afterwards.
void write_data_file(Project& p, const std::string& path);

// Reads a file into a project that reset_project has just cleared, then loads
// the grid files of surfaces of method 1 and shows the project menus. Throws
// RuntimeError on a short or malformed file, leaving the project as far as the
// reading got; counts beyond the tables are refused (err_subscript) before any
// table is touched.
void read_data_file(Project& p, const std::string& path, Port& port);

} // namespace tobel
