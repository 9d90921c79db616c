// The centre of moments of a sliding surface and the test that it cuts the ground.
#pragma once

#include "project/project.h"

namespace tobel {

// Sets no_slide, and (except for an ellipsoid, which brings its own) centre_y
// and centre_z as the centre of the circle through the two ends and the lowest
// point at mid-length of the surface.
void find_moment_centre(Project& p);

} // namespace tobel
