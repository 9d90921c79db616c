// How well the accepted Spencer or Morgenstern-Price solution closes its own
// equilibrium. The lambda search stops on the size of its step, not on the
// moment residual, so it can end with moment equilibrium far from closed
// while F is reported as converged; this measures what is left, after the
// solver, from what the solver leaves in the project.
#pragma once

#include <string>

#include "project/project.h"

namespace tobel {

// The sums of the measurement, forces and moments in the project's units.
struct EquilibriumSums {
    double force = 0;          // resisting minus driving, along the direction of motion
    double driving_force = 0;  // D_F
    double moment = 0;         // resisting minus driving, about the moment centre
    double driving_moment = 0; // D_M
};

// Clears force_residual, moment_residual and residuals_valid; every solver
// calls it first.
void clear_equilibrium_residuals(Project& p);

// The sums over the active columns of the last solution, with the column
// arrays (col_normal included), factor_of_safety, eq_coef, the moment centre,
// the applied external forces and the water thrusts as the Spencer and
// Morgenstern-Price equations take them. Notation of a column: W col_weight,
// A col_area, N = col_normal A, U = col_pore A, C = col_cohesion A,
// T = tan(col_phi), alpha = surf_dip_y, cos(gamma) = col_cos_gamma,
// N' = N cos(gamma) / cos(alpha), S = ((N - U) T + C) / F, k = eq_coef,
// z_s and z_g the sliding surface and the ground.
//
// The mass moves towards -Y; forces are counted positive in that direction.
//   force  = sum(S cos(alpha)) - sum(N' sin(alpha) + k W) - sum(Wh) - H_ext
//   D_F    = sum(W cos^2(gamma) tan(alpha) + k W) + sum(Wh) + H_ext
// D_F is the weight's component along the base, projected on the direction
// of motion, with the earthquake force and the horizontal loads: the head
// water thrust Wh = head_water_force of each row that has an active column
// and H_ext = -sum(force_h) of the forces whose horizontal part applies. The
// crack water thrust is left out because the method's force balance leaves
// it out.
//
// Moments about the axis through (centre_y, centre_z) parallel to X, with the
// lever arm from y = c col_spacing + y_min, one spacing on from the node, as
// the method takes it: arm = y - centre_y, H = centre_z - z_s,
// P = arm cos(alpha) - H sin(alpha), Q = arm sin(alpha) + H cos(alpha),
// E = H - (z_g - z_s) / 2.
//   moment = sum(S Q) + sum(N' P) - sum(W (arm + k E)) - M_ext
//   D_M    = sum(W (arm + k E)) + M_ext
// D_M is the moment of the weights, the earthquake forces and the loads:
// M_ext = sum((force_z - centre_z) force_h) over the applied horizontal parts
// + sum((centre_z - head_water_z) Wh + (centre_z - crack_water_z) Wc) over
// the rows. `moment` is the residual the lambda search drives to 0.
EquilibriumSums equilibrium_sums(const Project& p);

// Measures the last solution: force_residual = force / |D_F| and
// moment_residual = moment / |D_M|, both signed, positive where the shear
// more than balances the loads; residuals_valid = -1. Leaves them cleared
// when either driving sum is 0 or a number is not finite (an empty mass).
void compute_equilibrium_residuals(Project& p);

// Empty when no measurement stands or both residuals are within 1 %;
// otherwise one line for the command line, such as
// "moment equilibrium not closed: residual 21.3 % of the driving moment".
std::string equilibrium_warning(const Project& p);

} // namespace tobel
