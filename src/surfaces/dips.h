// Slopes of a sliding plane without a formula, by finite differences.
#pragma once

#include "project/project.h"

namespace tobel {

// Lowers the sliding plane to the ground where it rises above it, then sets
// surf_dip_x and surf_dip_y from differences of the plane.
void derive_dips(Project& p);

// The same over the nodes of `box` only (both passes), for a trial whose
// other nodes already hold what the whole sweep would write.
void derive_dips_in(Project& p, const NodeBox& box);

} // namespace tobel
