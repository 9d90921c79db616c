// Replays a kept picture (a display list) on a Qt painter: the one way a
// picture reaches a file, the screen or the printer.
#pragma once

#include <QPainter>
#include <QSizeF>

#include "project/display_list.h"

namespace tobel {

// Draws `list` on `painter`, its device units (list.device_width by
// device_height) stretched over a `target` of that size in the painter's
// present coordinates, starting at its origin. The painter's state is
// restored afterwards.
// Images are drawn from `images` by their handle; without a store, or for a
// handle it does not hold, the place an image takes is an empty frame.
class ImageStore;
void replay(const DisplayList& list, QPainter& painter, QSizeF target, const ImageStore* images = nullptr);

} // namespace tobel
