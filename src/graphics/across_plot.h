// The picture of a search across the slope: the best F of each classic
// search against its X, one line for each aspect, the best of all marked.
#pragma once

#include "graphics/draw_surface.h"
#include "search/across.h"

namespace tobel {

// Draws the whole picture on `s` (cleared first). Searches without a best
// record leave a gap in their aspect's line.
void draw_across_plot(DrawSurface& s, const AcrossResult& r);

// A round step for an axis of extent e: 1, 2 or 5 times a power of ten,
// giving four to ten ticks.
double across_axis_step(double e);

} // namespace tobel
