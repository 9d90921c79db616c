#include "support/spencer_slices.h"

#include <cmath>

namespace tobel::test {

SliceSums textbook_spencer(const std::vector<Slice>& slices, double f, double lambda, double k, double yo,
                           double zo)
{
    SliceSums out;
    // Anticlockwise moment about (yo, zo) of the force (fy, fz) acting at (y, z).
    auto moment = [&](double y, double z, double fy, double fz) { return (y - yo) * fz - (z - zo) * fy; };
    double e_in = 0;
    for (const Slice& s : slices) {
        const double sa = std::sin(s.alpha), ca = std::cos(s.alpha), t = std::tan(s.phi);
        const double l = s.b / ca;
        // S = s0 + N t / F.
        const double s0 = (s.c - s.u * t) * l / f;
        const double x_in = lambda * s.f_in * e_in;
        // On the slice, with N along the inward normal (-sin a, cos a), S along
        // the base up the slope (cos a, sin a), E_in pushing +Y and E_out -Y,
        // X_in up and X_out = lambda f_out E_out down:
        //   Y: -N sin a + S cos a - k W + E_in - E_out = 0
        //   Z:  N cos a + S sin a - W + X_in - X_out = 0
        // The first gives E_out = E_in - k W + s0 cos a + N (t cos a / F - sin a);
        // put into the second, it is linear in N.
        const double g = t * ca / f - sa;
        const double lf = lambda * s.f_out;
        const double n =
            (s.w - s0 * sa - x_in + lf * (e_in - k * s.w + s0 * ca)) / (ca + t * sa / f - lf * g);
        const double e_out = e_in - k * s.w + s0 * ca + n * g;
        const double shear = s0 + n * t / f;
        out.normal.push_back(n);

        const double zm = (s.zs + s.zg) / 2;
        const double m_loads = moment(s.y, zm, 0, -s.w) + moment(s.y, zm, -k * s.w, 0);
        out.moment +=
            m_loads + moment(s.y, s.zs, -n * sa, n * ca) + moment(s.y, s.zs, shear * ca, shear * sa);
        out.driving_moment -= m_loads;
        // The weight less its part along the base normal, on -Y.
        const double g_normal = -s.w * ca; // (0, -W) . (-sin a, cos a)
        const double tangential_y = 0 - g_normal * (-sa);
        out.driving_force += -tangential_y + k * s.w;
        e_in = e_out;
    }
    // Over all slices the faces' thrusts cancel but the last: the sum of
    // S cos a - N sin a - k W is that thrust.
    out.force = e_in;
    return out;
}

} // namespace tobel::test
