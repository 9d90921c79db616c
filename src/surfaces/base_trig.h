// The sine, cosine and tangent of the base's dips that the solvers read at
// every active column. The ellipsoid has them almost for nothing from the
// slopes it rounds to the stored dips, so a trial of a search calls no
// trigonometric function for them; any other surface gets them from the
// library functions of the stored angles.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "project/lanes.h"
#include "project/project.h"

namespace tobel {

// Sine and cosine of the single precision angle `stored` = float(angle), from
// the sine s0 and cosine c0 of the double angle: the angle sum over the
// rounding difference d (exact in double), with d^2 / 2 for cos d and d for
// sin d; d is at most half a float's last bit, so d^3 lies far below a
// double's last bit. Of a double or of every lane of a lane type.
template <class V> struct SinCosOf {
    V s, c;
};
using SinCos = SinCosOf<double>;

template <class V>
[[gnu::always_inline]] inline SinCosOf<V> rounded_angle_of(const V& s0, const V& c0, const V& angle,
                                                           const V& stored)
{
    const V d = stored - angle;
    const V h = 1 - d * d / 2;
    return {s0 * h + c0 * d, c0 * h - s0 * d};
}

inline SinCos rounded_angle(double s0, double c0, double angle, float stored)
{
    return rounded_angle_of<double>(s0, c0, angle, double(stored));
}

// near_float_tie of a value beyond the range of normal floats' binades.
bool near_float_tie_far(double x, double rel);

// True when x lies within rel * |x| of the midpoint of the two floats around
// it: a value that close could round the other way after a change of its last
// bits. Such a value is worked out again as the description gives it.
// Inline: the ellipsoid asks twice at every node it cuts.
inline bool near_float_tie(double x, double rel)
{
    const double ax = std::fabs(x);
    if (ax >= 1e-30 && ax <= 1e30) {
        // Well inside the range of normal floats, a float keeps the top 23 of a
        // double's 52 fraction bits: the midpoint has the 29 bits below them
        // 1000..., and one unit of them is 2^-52 of the binade's start.
        const std::uint64_t b = std::bit_cast<std::uint64_t>(x);
        const std::int64_t off = std::int64_t(b & ((std::uint64_t(1) << 29) - 1)) - (std::int64_t(1) << 28);
        const double binade = std::bit_cast<double>(b & 0x7ff0000000000000u);
        return double(off < 0 ? -off : off) * binade * 0x1p-52 <= rel * ax;
    }
    return near_float_tie_far(x, rel);
}

// atan(k / 8), k = 0..8, rounded to the nearest double (the library's values).
inline constexpr std::array<double, 9> atan_eighths{
    0x0p+0,
    0x1.fd5ba9aac2f6ep-4,
    0x1.f5b75f92c80ddp-3,
    0x1.6f61941e4def1p-2,
    0x1.dac670561bb4fp-2,
    0x1.1e00babdefeb4p-1,
    0x1.4978fa3269ee1p-1,
    0x1.700a7c5784634p-1,
    0x1.921fb54442d18p-1,
};

// The series of atan(y) to y^15 for |y| <= 1 / 16, of a double or of every
// lane of a lane type.
template <class V> [[gnu::always_inline]] inline V atan_series(const V& y)
{
    const V y2 = y * y;
    return y + y * y2 *
                   (-1.0 / 3 +
                    y2 * (1.0 / 5 +
                          y2 * (-1.0 / 7 + y2 * (1.0 / 9 + y2 * (-1.0 / 11 + y2 * (1.0 / 13 - y2 / 15))))));
}

// atan(x) to within a few units of a double's last place, several times
// faster than the library's. Rounded to a float it gives the library's float
// unless near_float_tie(result, 1e-14); such a value is taken from the library.
// Inline, so that the ellipsoid's loops over a row keep it in line.
inline double quick_atan(double x)
{
    const double ax = std::fabs(x);
    if (!(ax < 1e300))
        return std::atan(x);
    // 1. Down to [0, 1] by atan(x) = pi / 2 - atan(1 / x).
    const bool inverted = ax > 1;
    const double z = inverted ? 1 / ax : ax;
    // 2. The nearest tabulated tangent c = k / 8 and the angle beyond it:
    // atan(z) = atan(c) + atan(y), y = (z - c) / (1 + z c), |y| <= 1 / 16.
    const int k = int(z * 8 + 0.5);
    const double c = double(k) * 0.125;
    const double y = (z - c) / (1 + z * c);
    // 3. The series of atan(y) to y^15; the next term is below 1e-20 of y.
    const double series = atan_series(y);
    double r = atan_eighths[std::size_t(k)] + series;
    if (inverted)
        r = 1.5707963267948966 - r;
    return std::copysign(r, x);
}

// quick_atan of every lane, bit for bit: the same operations, a lane type's
// width at a time, for the ellipsoid's rows of dips.
template <class V> [[gnu::always_inline]] inline V quick_atan_lanes(const V& x)
{
    using M = MaskOf<V>;
    constexpr std::size_t w = lane_count<V>;
    constexpr long long sign = std::numeric_limits<long long>::min();
    // The compiler's own bit cast: std::bit_cast is a function, which an
    // unoptimised build calls with four lanes in the wrong registers.
    const M bits = __builtin_bit_cast(M, x);
    const V ax = __builtin_bit_cast(V, bits & ~sign);
    const M small = ax < 1e300;
    bool all_small = true;
    for (std::size_t j = 0; j < w; ++j)
        all_small = all_small && small[j] != 0;
    if (!all_small) {
        V r{};
        for (std::size_t j = 0; j < w; ++j)
            r[j] = quick_atan(x[j]);
        return r;
    }
    const M inverted = ax > 1;
    const V z = inverted ? 1 / ax : ax;
    const V k8 = z * 8 + 0.5;
    V c{}, base{};
    for (std::size_t j = 0; j < w; ++j) {
        const int k = int(k8[j]);
        c[j] = double(k);
        base[j] = atan_eighths[std::size_t(k)];
    }
    c = c * 0.125;
    const V y = (z - c) / (1 + z * c);
    const V series = atan_series(y);
    V r = base + series;
    r = inverted ? 1.5707963267948966 - r : r;
    return __builtin_bit_cast(V, (__builtin_bit_cast(M, r) & ~sign) | (bits & sign));
}

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
