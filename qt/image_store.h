// The picture files a window system loads for the core (the background of
// the section editor), known to the core only by handle.
#pragma once

#include <QImage>
#include <map>
#include <optional>
#include <string>

#include "ui/port.h"

namespace tobel {

class ImageStore {
  public:
    // Reads a BMP, GIF, TIF, JPG or PNG file through Qt's image plugins;
    // empty when it cannot be read.
    std::optional<ImageHandle> load(const std::string& path);
    void unload(const ImageHandle& image);
    // The image of a handle, null when there is none.
    const QImage* find(int id) const;

  private:
    std::map<int, QImage> images_;
    int next_ = 1;
};

} // namespace tobel
