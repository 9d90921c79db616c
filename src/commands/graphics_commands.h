// The Graphics menu: sections, plan, isometry, x-ray.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Longitudinal Section and Lateral Section from their first line.
void graphics_longitudinal_section(Project& p, Port& port);
void graphics_lateral_section(Project& p, Port& port);
// A section of another line, as the scroll bar of the picture window moves
// to it (a row in the longitudinal view, a column in the lateral one).
void graphics_scroll_to(Project& p, Port& port, int line);
// Plan: the column assembly with its sections.
void graphics_plan(Project& p, Port& port);
// X-ray: the window, the force peak and the first step of its timer. The
// timer (or run_xray headless) draws the sections that follow.
void graphics_xray(Project& p, Port& port);

// The default name of the grid file of stack surface k: "G" + k + ".GRD".
std::string default_grid_name(int surface);
// Export > Isometry .GRD File, item `item` of grd_layer1 (surface item + 1):
// a save dialog on the default name with the filter "Grid Files
// (*.GRD)|*.GRD"; a cancel writes nothing, otherwise the grid file is
// written and "FILE " + path + " WAS CREATED" shown. A file that cannot be
// written shows the error box of the file commands.
void export_grid_item(Project& p, Port& port, int item);

} // namespace tobel
