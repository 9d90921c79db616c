// The small pieces around the solvers: the test of a trial surface against
// the geometry before it is solved, and the clearing of the force flags and
// water thrusts when earlier ones no longer hold.
#pragma once

#include "project/project.h"

namespace tobel {

// Clears the message list and sets surface_out_flag: -1 when the trial is of
// no use (it never leaves the ground, or a row does not come back to the
// ground at both ends), 0 when it may be solved.
void check_surface(Project& p);

// Clears force_v_ignored and force_h_ignored of every force and the head and
// crack water thrusts of every row.
void reset_forces(Project& p);

} // namespace tobel
