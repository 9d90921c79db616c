// The data of one column of the last solution, for a click on the plan of
// active columns.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"

namespace tobel {

// The lines of the text area beside the plan for the point (x, y) clicked,
// in world coordinates. `out` is cleared first; a point off the mesh gives
// the heading alone. The f line is given after a Spencer or Morgenstern-Price
// solution only (solution_method 3 or 4).
void show_single_column(Project& p, float y, float x, std::vector<std::string>& out);

} // namespace tobel
