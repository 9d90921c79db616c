// Picture files: a kept picture written as PNG, SVG or PDF.
#pragma once

#include <optional>
#include <string>

#include "project/display_list.h"

namespace tobel {

enum class PictureFormat { png, svg, pdf };

// The format named by the file's extension (any case); none for another one.
std::optional<PictureFormat> picture_format_of(const std::string& path);

// Writes `list` to `path` as a picture of `width` by `height` pixels, in the
// format of its extension. The file appears only when complete: it is
// written under a temporary name in the same folder and then renamed.
// Throws std::runtime_error naming the path and the fault.
void write_picture(const DisplayList& list, const std::string& path, int width, int height);

} // namespace tobel
