// External forces at the start of a solver pass: which node carries each
// force, which components apply, and the vertical parts as column weight.
#pragma once

#include "project/project.h"

namespace tobel {

// Sets force_v_ignored and force_h_ignored of every force, adds the applied
// vertical components to col_weight and ext_vertical_sum. The caller adds the
// moments and horizontal sums of the forces whose horizontal part applies.
void place_external_forces(Project& p);

} // namespace tobel
