// The ellipsoidal sliding surface: the lower half of an ellipsoid of
// revolution about an axis parallel to X, cut from the ground.
#pragma once

#include <vector>

#include "project/project.h"

namespace tobel {

// Sets the sliding plane of zgrid, disc_code, surf_dip_x and surf_dip_y to 0 at every node.
void clear_sliding_surface(Project& p);

// Builds the ellipsoid of the working set (ell_x, ell_y, ell_z, ell_radius,
// ell_aspect) on the mesh, then centre_y = ell_y, centre_z = ell_z.
void build_ellipsoid(Project& p);

// Columns c0..c1; empty when c0 > c1.
struct ColumnSpan {
    int c0 = 1, c1 = 0;
    bool empty() const { return c0 > c1; }
};

// The columns of first..last whose node lies within a circle of radius rl
// about ey on a row: |dys[c]| < rl, dys[c] the node's Y less ey, which grows
// with c, for nodes y0 + (c - 1) * spacing. From the closed form ey - rl <
// y < ey + rl, checked against dys, so that a node exactly on the rim stays
// outside as the node test has it.
ColumnSpan rim_columns(const std::vector<double>& dys, int first, int last, double y0, double spacing,
                       double ey, double rl);

} // namespace tobel
