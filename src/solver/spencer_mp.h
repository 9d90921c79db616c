// Spencer's method (solution_method 3) and the Morgenstern-Price method (4):
// force and moment equilibrium together, with interslice forces inclined by
// lambda times the interslice function f. Method 5 is a run at a fixed
// lambda of 1 with f as it stands in the slice after the sliding surface.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Solves the trial surface in the project. On return factor_of_safety,
// lambda_coef, the column arrays (with col_eff_thrust, col_thrust_height,
// col_shear_ratio), row_coef and the acceptability indices hold the result;
// factor_of_safety is 0 after a failure (no convergence, Stop, an arithmetic
// failure named in the message list).
//
// With solve_interactive = -1 the progress lines go to port.progress and the
// acceptability indices to port.show_text at the end; with 0 (a search)
// neither happens. port.yield() is called after each mesh row: true there
// means Stop, read once per F iteration.
void solve_spencer_mp(Project& p, Port& port);

// The search of lambda that closes moment equilibrium, one call per lambda
// round: a secant through the last two rounds, restarted from the better
// point when three rounds in a row have not improved on it.
struct LambdaSearch {
    float lambda = 0; // lambda of the next round (lambda_coef is single)
    double fmax = 1;  // largest interslice function value of the mesh
    int round = 0;    // rounds solved so far, the round just ended included
    int since_rescue = 0;
    double lambda1 = 0, r1 = 0;         // the previous point
    double best_lambda = 0, best_r = 0; // the better of the last two points
};

// After the round `s.round` solved at s.lambda left the moment residual rm:
// moves s.lambda to the next round's value. True when the search is over
// (s.lambda then holds the last value worked out).
bool next_lambda(LambdaSearch& s, double rm);

// One secant step of F through (fp, rp) and (fc, rf); a step that lands
// below 0.18 is put at 0.2.
double next_factor(double fp, double rp, double fc, double rf);

} // namespace tobel
