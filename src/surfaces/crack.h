// Tension crack, hard layers and the water thrust of the crack.
#pragma once

#include "project/project.h"

namespace tobel {

// Lifts the sliding plane out of hard layers and cuts the head of the slide at
// the tension crack; sets crack_water_force and crack_water_z per row.
void apply_crack(Project& p);

// force_peak: the largest force, for scaling arrows.
void scale_forces(Project& p);

} // namespace tobel
