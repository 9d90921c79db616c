// The inspection of the model before a solve or a search starts. Its findings
// go to the input list (check_text, check_count, check_fatal), which the
// message list form shows in its input mode; only material errors forbid the
// run. This list is separate from the trial's message list of the solver.
#pragma once

#include "project/project.h"

namespace tobel {

// Four passes, in this order: materials (fatal), section lines, piezometric
// surfaces with no material, discontinuities with no wedge plane (warnings).
// Afterwards check_text[1..check_count] holds the findings in the order made
// (index 0 unused), and check_fatal is -1 when a material finding was made.
void check_input(Project& p);

} // namespace tobel
