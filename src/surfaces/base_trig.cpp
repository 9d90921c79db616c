#include "surfaces/base_trig.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace tobel {

bool near_float_tie_far(double x, double rel)
{
    const double ax = std::fabs(x);
    const float f = float(x);
    const double fd = f;
    // A value a float holds exactly moves to another only by half a float's bit.
    if (fd == x || !std::isfinite(f))
        return false;
    const float g = std::nextafter(f, x > fd ? HUGE_VALF : -HUGE_VALF);
    const double mid = (fd + double(g)) / 2; // exact: both are floats
    return std::abs(x - mid) <= rel * ax;
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
