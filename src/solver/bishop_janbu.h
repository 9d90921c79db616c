// The simplified Bishop (solution_method 1) and simplified Janbu (2) methods
// over the columns of the sliding mass, in 3-D or in one 2-D row.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Solves the trial surface in the project. On return factor_of_safety holds
// the factor of the chosen method, 0 after a failure (no convergence, an
// arithmetic failure at a column, named in the message list). The trial's
// messages are in the message list.
//
// With solve_interactive = -1 the progress lines go to port.progress and the
// lateral balance question may be put; with 0 (a search) neither happens.
// port.yield() is called after each mesh row: true there means Stop, which
// ends the solution after the iteration under way with F as it stands.
void solve_bishop_janbu(Project& p, Port& port);

} // namespace tobel
