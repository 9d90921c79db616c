// Slopes of a sliding plane without a formula, by finite differences.
#pragma once

#include "project/project.h"

namespace tobel {

// Lowers the sliding plane to the ground where it rises above it, then sets
// surf_dip_x and surf_dip_y from differences of the plane.
void derive_dips(Project& p);

} // namespace tobel
