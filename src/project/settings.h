// Program settings in "tob.cfg": the colour tables of layer and piezometric
// surfaces, the selected and sliding surface colours, the working drive and
// the recent files. Read at start, written at every exit.
#pragma once

#include <string>

#include "project/project.h"

namespace tobel {

// The shipped colours: both tables, the selected and the sliding colour, with
// the repeats refreshed.
void default_colours(Project& p);

// Entries 1..15 of each colour table repeat at 16..30 and 31..45, and entries
// 1..6 once more at 46..51.
void refresh_colour_repeats(Project& p);

// Reads the settings file. Any failure, a missing file included, gives the
// default colours and work_drive "C:" without a message; the recent files
// read so far stay. The menu is refreshed by the caller (main window Load).
void read_settings(Project& p, const std::string& path);

// Writes the settings file, one item a line, after refreshing the colour
// repeats. Throws RuntimeError(err_path_access, path) when it cannot be written.
void write_settings(Project& p, const std::string& path);

} // namespace tobel
