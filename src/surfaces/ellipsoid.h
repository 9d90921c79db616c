// The ellipsoidal sliding surface: the lower half of an ellipsoid of
// revolution about an axis parallel to X, cut from the ground.
#pragma once

#include <algorithm>
#include <cmath>
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

// The indices i of first..last whose node, origin + (i - 1) * spacing,
// lies within rl of centre: |d(i)| < rl, d(i) the node's offset from the
// centre as the caller's node test has it. From the closed form, corrected
// with the test itself, so that a node exactly on the rim stays outside as
// the node test has it; d grows with i, so the nodes within form one run.
// Empty for a spacing that is not positive.
template <class Offset>
ColumnSpan span_within(const Offset& d, int first, int last, double origin, double spacing, double centre,
                       double rl)
{
    if (first > last || !(rl > 0) || !(spacing > 0))
        return {};
    auto in = [&](int c) { return std::fabs(d(c)) < rl; };
    // 1. The first index, from the closed form within the range.
    double lo = std::ceil((centre - rl - origin) / spacing) + 1;
    if (!(lo == lo))
        lo = first;
    int c0 = int(std::clamp(lo, double(first), double(last)));
    if (in(c0)) {
        while (c0 > first && in(c0 - 1))
            --c0;
    } else if (d(c0) < 0) {
        while (c0 <= last && !in(c0))
            ++c0;
        if (c0 > last)
            return {};
    } else {
        while (c0 >= first && !in(c0))
            --c0;
        if (c0 < first)
            return {};
        while (c0 > first && in(c0 - 1))
            --c0;
    }
    // 2. The last, likewise, from c0 on.
    double hi = std::floor((centre + rl - origin) / spacing) + 1;
    if (!(hi == hi))
        hi = c0;
    int c1 = int(std::clamp(hi, double(c0), double(last)));
    if (in(c1)) {
        while (c1 < last && in(c1 + 1))
            ++c1;
    } else {
        while (!in(c1))
            --c1;
    }
    return {c0, c1};
}

ColumnSpan rim_columns(const std::vector<double>& dys, int first, int last, double y0, double spacing,
                       double ey, double rl);

} // namespace tobel
