// The sine, cosine and tangent of the base's dips that the solvers read at
// every active column. The ellipsoid has them almost for nothing from the
// slopes it rounds to the stored dips, so a trial of a search calls no
// trigonometric function for them; any other surface gets them from the
// library functions of the stored angles.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "project/project.h"

namespace tobel {

struct SinCos {
    double s = 0, c = 1;
};

// Sine and cosine of the single precision angle `stored` = float(angle), from
// the sine s0 and cosine c0 of the double angle: the angle sum over the
// rounding difference d (exact in double), with d^2 / 2 for cos d and d for
// sin d; d is at most half a float's last bit, so d^3 lies far below a
// double's last bit.
inline SinCos rounded_angle(double s0, double c0, double angle, float stored)
{
    const double d = double(stored) - angle;
    const double h = 1 - d * d / 2;
    return {s0 * h + c0 * d, c0 * h - s0 * d};
}

// True when x lies within rel * |x| of the midpoint of the two floats around
// it: a value that close could round the other way after a change of its last
// bits. Such a value is worked out again as the description gives it.
bool near_float_tie(double x, double rel);

// atan(x) to within a few units of a double's last place, several times
// faster than the library's. Rounded to a float it gives the library's float
// unless near_float_tie(result, 1e-14); such a value is taken from the library.
double quick_atan(double x);

// The entry of a node's stored dips from the library functions of the angles.
BaseTrig base_trig_of(float dip_x, float dip_y);

// The entry the last ellipsoid left for node (r, c), when it is that of the
// given stored dips; otherwise null.
inline const BaseTrig* find_base_trig(const SolverWork& w, int r, int c, float dip_x, float dip_y)
{
    const NodeBox& b = w.trig_box;
    if (!b.has(r, c))
        return nullptr;
    const std::size_t k = std::size_t(r - b.r0) * std::size_t(b.c1 - b.c0 + 1) + std::size_t(c - b.c0);
    if (k >= w.trig.size())
        return nullptr;
    const BaseTrig& e = w.trig[k];
    // Bit for bit, so that a signed zero is a different angle too.
    if (std::bit_cast<std::uint32_t>(e.dip_x) != std::bit_cast<std::uint32_t>(dip_x) ||
        std::bit_cast<std::uint32_t>(e.dip_y) != std::bit_cast<std::uint32_t>(dip_y))
        return nullptr;
    return &e;
}

// The base trigonometry of node (r, c) with the given stored dips.
inline BaseTrig node_base_trig(const SolverWork& w, int r, int c, float dip_x, float dip_y)
{
    if (const BaseTrig* e = find_base_trig(w, r, c, dip_x, dip_y))
        return *e;
    return base_trig_of(dip_x, dip_y);
}

} // namespace tobel
