// Balancing the lateral force of a 3-D Bishop or Janbu solution: after each
// converged pass of an interactive solution the user may have the unbalance
// taken up by vertical shears proportional to the columns' lateral slopes.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Sums of a pass that the balance needs beside those kept in the project
// (weight_flat, weight_positive, thrust_positive).
struct LateralSums {
    double wt_positive = 0; // sum of W tan(beta) over tan(beta) > 0, first iteration
    double wt_negative = 0; // sum of W tan(beta) over tan(beta) < 0, first iteration
    double wl_positive = 0; // sum of W L over tan(beta) > 0, last iteration
};

// After a converged pass. Puts the question at most once (`asked`), sets
// balance_lateral, moves kappa_pos and kappa_neg. True when a new pass must
// be solved with the new factors.
bool lateral_balance_step(Project& p, Port& port, const LateralSums& sums, bool& asked);

} // namespace tobel
