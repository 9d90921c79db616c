// What the fuzz targets share: the readers take paths, so each input is
// written to a file of this process first, in a folder that is also the
// current directory (relative grid file names in a data file land there).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "project/project.h"

namespace tobel::fuzz {

// The folder of this process, created and made current on the first call.
const std::string& work_dir();

// Writes the bytes to `name` in the work folder and gives its full path.
std::string input_file(const std::string& name, const std::uint8_t* data, std::size_t size);

// A project as the main window's Load leaves it, ready for a reader.
void load_main_window(Project& p);

// Stops the run (as a crash the fuzzer keeps) when a stored number of the
// last solution or of the mesh is not finite.
void require_finite_results(const Project& p, const char* where);

} // namespace tobel::fuzz
