// The texts of a solved trial: the result panel beside the plan and the
// solution printout window.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"

namespace tobel {

// The result panel's lines. Sets neg_normal_percent and clears
// rotation_angle, so that a rotation lasts one solution.
std::vector<std::string> result_panel_lines(Project& p);

// The solution printout: its caption first, then its lines. With
// balance_lateral = 1 the totals of the lateral balance, otherwise the
// acceptability indices of Spencer and Morgenstern-Price.
std::vector<std::string> solution_printout_lines(const Project& p);

} // namespace tobel
