// The plan of active columns on the solution window (tob_picsol): the frame
// drawn when an interactive solution starts, each column as it is solved,
// and the click that shows one column's data beside the plan.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Brings the window up and draws the frame: the legend band over the left
// 23 per cent (the materials of the model), the outline of the mesh, the
// input cross-sections with their X. The plan's window is kept by the
// picture; the shared world window of the section views is left as it was,
// all but pick_unit, which the fit sets.
void draw_plan_active(Project& p, Port& port);

// Column (row, col) as a filled box centred on its node, half a spacing to
// each side (in 2-D a twentieth of the picture's height up and down), in the
// colour of its working material, or the water colour when its base layer is
// water.
void draw_active_column(Project& p, int row, int col, int material, int layer);

// A click on the plan at (world_y, world_x): the column's data in the text
// area beside the plan, which is made visible.
void plan_click(Project& p, double world_y, double world_x);

} // namespace tobel
