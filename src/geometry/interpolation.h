// Section interpolation: turns the polylines of one surface on the input
// cross-sections into that surface's plane of zgrid, by the method chosen in
// interp_method (1 Orthogonal, 2 Oblique, 3 Axisymmetric).
#pragma once

#include "project/project.h"

namespace tobel {

// The one interpolation primitive: the straight line through (a, va) and
// (b, vb) taken at t, extrapolated outside a..b; va when a = b. Worked in
// double; callers hold the result as a single where the value is kept.
double interp_linear(double t, double a, double b, double va, double vb);

// Section whose X lies at or before p.cur_x: the first section beyond cur_x
// less one, at least 1; num_sections when none lies beyond.
int find_section_bracket(const Project& p);

// Point of the line of `surface` on `section` at or before p.cur_y: the first
// point beyond cur_y less one, at least 1; section_npts when none lies beyond,
// 1 for an empty line.
int find_point_bracket(const Project& p, int section, int surface);

// Fills zgrid(1..num_rows, 1..num_cols, surface) from the section lines by
// interp_method and sets surf_built(surface) to 1. Leaves the last node's
// coordinates, as singles, in p.cur_x and p.cur_y. Reports nothing.
void interpolate_surface(Project& p, int surface);

} // namespace tobel
