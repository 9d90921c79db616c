// The older .TOD data layout, read only. Values the present model no longer
// holds are read and dropped; the mesh limits come from the spacings.
#pragma once

#include <string>

#include "project/project.h"

namespace tobel {

// Reads a legacy file into a project that reset_project has just cleared,
// copies the ground line to sections without a sliding line, derives the mesh
// limits, hides the Solve menu and marks every surface as drawn by sections
// (Open legacy then interpolates them). Throws RuntimeError on a short or
// malformed file, leaving the project as far as the reading got; counts
// beyond the tables are refused (err_subscript).
void read_legacy_items(Project& p, const std::string& path);

} // namespace tobel
