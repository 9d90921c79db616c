// The discontinuity field: a rectangle of a built sliding surface given the
// strength of discontinuity 1.
#pragma once

#include "project/project.h"

namespace tobel {

// disc_code = 1 at the nodes with field_x_low < x <= field_x_high and
// field_y_low < y < field_y_high (the X test is dropped when num_rows = 1),
// 0 elsewhere; then num_wedges = 1 and wedge_code(1) = 1, so that the input
// checks see discontinuity 1 in use.
void set_discontinuity_field(Project& p);

} // namespace tobel
