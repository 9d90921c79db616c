#include "surfaces/base_trig.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace tobel {

bool near_float_tie(double x, double rel)
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
    const float f = float(x);
    const double fd = f;
    // A value a float holds exactly moves to another only by half a float's bit.
    if (fd == x || !std::isfinite(f))
        return false;
    const float g = std::nextafter(f, x > fd ? HUGE_VALF : -HUGE_VALF);
    const double mid = (fd + double(g)) / 2; // exact: both are floats
    return std::abs(x - mid) <= rel * ax;
}

namespace {

// atan(k / 8), k = 0..8, from the library.
struct AtanTable {
    std::array<double, 9> v{};
    AtanTable()
    {
        for (int k = 0; k <= 8; ++k)
            v[std::size_t(k)] = std::atan(double(k) / 8);
    }
};

} // namespace

double quick_atan(double x)
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
    const double y2 = y * y;
    const double series =
        y + y * y2 *
                (-1.0 / 3 +
                 y2 * (1.0 / 5 +
                       y2 * (-1.0 / 7 + y2 * (1.0 / 9 + y2 * (-1.0 / 11 + y2 * (1.0 / 13 - y2 / 15))))));
    static const AtanTable table; // made once, read only
    double r = table.v[std::size_t(k)] + series;
    if (inverted)
        r = 1.5707963267948966 - r;
    return std::copysign(r, x);
}

BaseTrig base_trig_of(float dip_x, float dip_y)
{
    BaseTrig e;
    e.dip_x = dip_x;
    e.dip_y = dip_y;
    const double ax = dip_x, ay = dip_y;
    e.sin_a = std::sin(ay);
    e.cos_a = std::cos(ay);
    e.tan_a = std::tan(ay);
    e.sin_b = std::sin(ax);
    e.cos_b = std::cos(ax);
    e.tan_b = std::tan(ax);
    return e;
}

} // namespace tobel
