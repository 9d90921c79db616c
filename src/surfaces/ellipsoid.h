// The ellipsoidal sliding surface: the lower half of an ellipsoid of
// revolution about an axis parallel to X, cut from the ground.
#pragma once

#include "project/project.h"

namespace tobel {

// Sets the sliding plane of zgrid, disc_code, surf_dip_x and surf_dip_y to 0 at every node.
void clear_sliding_surface(Project& p);

// Builds the ellipsoid of the working set (ell_x, ell_y, ell_z, ell_radius,
// ell_aspect) on the mesh, then centre_y = ell_y, centre_z = ell_z.
void build_ellipsoid(Project& p);

} // namespace tobel
