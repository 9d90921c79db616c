// The views the Graphics menu and the surface steps bring up: a section of
// the mesh from its first line, and the picture that follows a load or a
// confirmed sliding surface.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Graphics > Longitudinal Section: tob_pic from row 1, a new window, the
// force peak found, caption "LONGITUDINAL SECTION".
void show_longitudinal_section(Project& p, Port& port);
// Graphics > Lateral Section: tob_pic from column 1, caption "LATERAL SECTION".
void show_lateral_section(Project& p, Port& port);

// After a load or a confirmed surface: the isometry of stack surface k when
// the mesh has more than one row, otherwise the longitudinal section. A
// caption given replaces the picture's own (the composite searches name
// theirs). A port without draw hooks takes no pictures: it is only told
// which view would come up.
void show_surface_view(Project& p, Port& port, int k, const std::string& caption = {});

} // namespace tobel
