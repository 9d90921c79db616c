// The isometric views: one surface of the stack as a wire mesh in an oblique
// parallel projection, with the profiles of every surface along the two near
// edges of the mesh. draw_isometry draws any stack surface on tob_pic3;
// draw_result_isometry draws the sliding surface with its factor of safety
// on the result window and then refreshes tob_pic3.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The projection of the mesh. The two axes are turned by angles that add up
// to a right angle but are computed with two different values of pi:
// a = iso_angle * 3.14 / 180 (the Y axis above the horizontal) and
// b = 3.1415 / 2 - a (the X axis), so b is not exactly 90 degrees - a.
// One mesh row moves the drawing by (-ux, vx), one mesh column by (uy, vy).
// The steps are singles like the stored numbers.
struct IsoProjection {
    double a = 0, b = 0; // radians
    float ux = 0, vx = 0, uy = 0, vy = 0;
    float z_low = 0, vert_exag = 1;
};

IsoProjection iso_projection(const Project& p, float z_low);

struct IsoPoint {
    double u = 0, v = 0;
};

// Where node (row, col) at elevation z lies on the drawing:
// u = (col - 1) * uy - (row - 1) * ux,
// v = (col - 1) * vy + (row - 1) * vx + (z - z_low) * vert_exag.
IsoPoint iso_point(const IsoProjection& q, int row, int col, float z);

// The isometry of stack surface k on tob_pic3. The shared world window of
// the sections is left as it was; iso_layer becomes k.
void draw_isometry(Project& p, Port& port, int k);

// The sliding surface on the result window, captioned with critical_fs,
// then the same surface on tob_pic3 without bringing that window up. The
// world window of the result picture stays the shared one.
void draw_result_isometry(Project& p, Port& port);

} // namespace tobel
