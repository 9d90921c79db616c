// tobel check FILE: what a careful engineer would question in a data file.
#pragma once

#include <iosfwd>
#include <string>

namespace tobel::cli {

// Reads the file as File > Open does and prints each finding as
// "FILE:LINE: ITEM: text", then the notes and a summary line; with `json` a
// JSON array of objects {file, line, item, text, serious} and nothing else.
// Returns 0 when there is nothing to question, 3 with findings, and 1 when
// the file cannot be read (the reader's error, naming file and line, is the
// last finding).
int check_file(const std::string& path, bool json, std::ostream& out);

} // namespace tobel::cli
