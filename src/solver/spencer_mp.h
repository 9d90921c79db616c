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

// The column's coefficients of W, W v and (U T - C) / F in its thrust
// increment: with rho = m_alpha / n_alpha and d = lambda f + rho,
// a1 = (1 + k rho) / d, a2 = (tan(alpha) + rho) / d and
// a3 = (sin(alpha) + rho cos(alpha)) / d; when |n_alpha| is not above
// 0.0001, k, 1 and cos(alpha). Worked out with all three multiplied by
// n_alpha over n_alpha, so that a column divides once.
struct ChainTerms {
    double a1 = 0, a2 = 1, a3 = 0;
};
inline ChainTerms chain_terms(double ma, double na, double lambda_f, double k, double sin_a, double cos_a,
                              double tan_a)
{
    if (!(na > 0.0001 || na < -0.0001))
        return {k, 1, cos_a};
    const double inv_d = 1 / (lambda_f * na + ma);
    return {(na + k * ma) * inv_d, (tan_a * na + ma) * inv_d, (sin_a * na + ma * cos_a) * inv_d};
}

// One secant step of F through (fp, rp) and (fc, rf); a step that lands
// below 0.18 is put at 0.2.
double next_factor(double fp, double rp, double fc, double rf);

} // namespace tobel
