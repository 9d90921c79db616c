// The plan of the column assembly: the mesh from above, mesh Y across and
// mesh X upward, with every mesh line and the input cross-sections.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Draws the plan on the picture window tob_pic, captioned "PLAN VIEW". The
// command sets view_mode 6 before calling it.
void draw_plan_assembly(Project& p, Port& port);

} // namespace tobel
