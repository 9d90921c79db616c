// Wedge sliding surfaces: the upper envelope of planes given by a point, a dip
// and a dip direction, alone or laid over an ellipsoidal or general surface.
#pragma once

#include "project/project.h"

namespace tobel {

// Lays planes 1..num_wedges over the sliding plane. For surface_kind 2 the
// plane starts at -100000000 so that any plane wins; otherwise the surface in
// place is the starting envelope. A node taken by a plane gets the plane's
// apparent dips and code, and is then reduced to the ground if it lies above.
void build_wedges(Project& p);

} // namespace tobel
