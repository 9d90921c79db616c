// Surface stack maintenance: rebuilding every plane of zgrid after a change of
// geometry, and the Mirror command that reverses the model along Y.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The blanking value of grid files, 1.70141E+38, stored as the bit pattern
// 7EFFFFEE.
float grid_blank_value();

// Interpolates the section-based planes (the sliding plane included), derives
// the constant-depth planes, sets grid_blank, hides the Solve menu while no
// sliding surface is defined, gives blanked grid-file nodes base_z and lowers
// layers that rise above a layer over them, with one message box per
// corrected surface that has a line on section 1. Shows the busy pointer.
void rebuild_surfaces(Project& p, Port& port);

// Reverses the model along Y about the old y_max: mesh limits, section lines,
// ellipsoid and search centres, wedge planes, forces and the crack, then
// rebuilds the stack. Drawing the view afterwards is the caller's part.
void mirror_model(Project& p, Port& port);

} // namespace tobel
