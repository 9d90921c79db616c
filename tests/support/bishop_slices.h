// An independent slice calculation for the shipped 2-D example: Bishop's
// simplified method on vertical slices of a circle, worked out from the
// textbook formula and nothing of the program.
#pragma once

#include <vector>

namespace tobel::test {

// The ground of examples/slope2d-homogeneous.tob: toe at 10 up to Y = 30, a
// 2:1 face up to the crest at 30 from Y = 70. The mass slides toward -Y.
double example_2d_ground(double y);

struct Circle {
    double yc, zc, r;
};

// Bishop's simplified factor over slices centred at `ys`, each `b` wide, of
// the example's ground: F = sum((c b + W tan phi) / m_alpha) / sum(W sin alpha),
// m_alpha = cos alpha + sin alpha tan phi / F, iterated to a fixed point.
double textbook_bishop(const Circle& k, double c, double phi_rad, double gamma, const std::vector<double>& ys,
                       double b);

} // namespace tobel::test
