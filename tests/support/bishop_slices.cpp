#include "support/bishop_slices.h"

#include <cmath>

namespace tobel::test {

double example_2d_ground(double y)
{
    if (y <= 30)
        return 10;
    if (y >= 70)
        return 30;
    return 10 + (y - 30) / 2;
}

double textbook_bishop(const Circle& k, double c, double phi_rad, double gamma, const std::vector<double>& ys,
                       double b)
{
    const double t = std::tan(phi_rad);
    double f = 1;
    for (int it = 0; it < 200; ++it) {
        double resisting = 0, driving = 0;
        for (double y : ys) {
            const double dy = y - k.yc;
            if (std::fabs(dy) >= k.r)
                continue;
            const double zs = k.zc - std::sqrt(k.r * k.r - dy * dy);
            const double h = example_2d_ground(y) - zs;
            if (h < 0.001)
                continue;
            const double alpha = std::asin(dy / k.r);
            const double w = gamma * h * b;
            resisting += (c * b + w * t) / (std::cos(alpha) + std::sin(alpha) * t / f);
            driving += w * std::sin(alpha);
        }
        const double next = resisting / driving;
        if (std::fabs(next - f) < 1e-12)
            return next;
        f = next;
    }
    return f;
}

} // namespace tobel::test
