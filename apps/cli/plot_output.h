// Pictures written by the command line: the size option, the checks made
// before any work is done, and the writing of a window's kept picture.
#pragma once

#include <string>

#include "project/display_list.h"
#include "project/project.h"

namespace tobel::cli {

// "WxH" in device pixels, each 1 to 20000. Throws std::runtime_error naming
// what is wrong.
void parse_picture_size(const std::string& text, int& width, int& height);

// The output file can be made: a known extension (.png, .svg, .pdf) and a
// folder that exists and can be written. Throws std::runtime_error naming
// the path and what is wrong.
void check_picture_path(const std::string& path);

// Writes the picture; false, having said why on standard error, when it
// could not be written (no file is left behind then).
bool write_picture_file(const DisplayList& picture, const std::string& path, int width, int height);

// Pictures of the given size for the views that follow.
void use_picture_size(Project& p, int width, int height);

} // namespace tobel::cli
