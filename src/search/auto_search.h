// The auto search: a fixed-step pattern walk of the ellipsoid's centre over
// the Y-Z plane. Each round tries the eight neighbours of the centre not
// tried in the round before and moves to the best, until none beats it.
#pragma once

#include "project/project.h"
#include "search/search_setup.h"
#include "ui/port.h"

namespace tobel {

// The stencil around (y, z) with step s: 0 the centre, 1..8 round it
// starting at (y - s, z + s) and going down the low-Y side.
void build_stencil(SearchState& st, float y, float z, float s);

// The points of the new stencil already tried in the previous one, by the
// index of the point that won there: skip_from and skip_to, 0 and 0 for none.
void skip_range(int best_point, std::int16_t& skip_from, std::int16_t& skip_to);
bool point_skipped(int point, int skip_from, int skip_to);

// Runs the walk from the record's centre. Returns true when it ended with the
// final surface; false when stopped, or when its very first trial was out of
// bounds (then nothing is recorded).
bool auto_search(Project& p, Port& port, const AutoSearchRecord& r);

} // namespace tobel
