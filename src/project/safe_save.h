// Writing a whole text file safely: the text goes to a file beside the target
// first and replaces the target only when complete, so that a failed write
// never leaves a half-written file behind.
#pragma once

#include <string>

namespace tobel {

// Writes `text` (bytes as they are) to `path`. A failure throws
// RuntimeError(err_path_access, path) and leaves an old file as it was.
void write_file_safely(const std::string& path, const std::string& text);

} // namespace tobel
