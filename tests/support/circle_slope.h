// Independent reference calculations for circles in a 2-D slope of any
// ground line: Bishop's simplified method on vertical slices, the closed
// form of a purely cohesive rotation, and a minimum over circles. Worked out
// from the textbook formulas and nothing of the program.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "support/bishop_slices.h"

namespace tobel::test {

// A ground line through points (y, z) given in increasing y, level beyond
// its first and last points. The mass slides toward -Y.
struct GroundLine {
    std::vector<std::pair<double, double>> points;
    double at(double y) const;
};

// Whether the circle cuts the ground on its lower half at both ends: the
// only circles that the program's half ellipsoid represents without a
// vertical scarp of no strength at the rim.
bool cuts_lower_half(const GroundLine& g, const Circle& k);

// Bishop's simplified factor over slices centred at `ys`, each `b` wide:
// F = sum((c b + W tan phi) / m_alpha) / sum(W sin alpha),
// m_alpha = cos alpha + sin alpha tan phi / F, iterated to a fixed point.
// A slice whose height is under `min_height` is left out: 0.001 leaves out
// what the program leaves out of its columns. 0 when nothing drives.
double bishop_on_slices(const GroundLine& g, const Circle& k, double c, double phi_rad, double gamma,
                        const std::vector<double>& ys, double b, double min_height = 0.001);

// The same on n equal slices across the circle, every slice of some height
// counted: the continuum value.
double bishop_continuum(const GroundLine& g, const Circle& k, double c, double phi_rad, double gamma,
                        int n = 20000);

// The mesh nodes y0, y0 + dy, ... (count of them) as slice centres.
std::vector<double> mesh_nodes(double y0, double dy, int count);

// Closed form of a purely cohesive circle: F = c L R / (W x), L the arc
// length between the two cuts with the ground (from their angles), W x the
// moment of the mass's weight about the centre (by quadrature on n strips).
// 0 when the circle does not cut the ground twice.
double cohesive_rotation(const GroundLine& g, const Circle& k, double c, double gamma, int n = 100000);

// The same sums as the program's columns make them, on slices centred at
// `ys`, each `b` wide: F = sum(c b R / cos alpha) / sum(W (y - yc)).
double cohesive_rotation_on_slices(const GroundLine& g, const Circle& k, double c, double gamma,
                                   const std::vector<double>& ys, double b);

// The least of `factor`(circle, n) over circles, n the number of strips or
// slices it is to take: the best of a coarse grid of centres (Y from y_lo to
// y_hi, Z from z_lo to z_hi, by `step`) and radii (by `step`, from the one
// that reaches the ground under the centre to one `z_hi` - `z_lo` below the
// lowest ground), each with 400, then a Nelder-Mead simplex from there with
// `n`. A circle not cutting the ground on its lower half is not admissible.
struct CircleMinimum {
    Circle circle;
    double factor;
};
CircleMinimum minimise_over_circles(const GroundLine& g,
                                    const std::function<double(const Circle&, int)>& factor, double y_lo,
                                    double y_hi, double z_lo, double z_hi, double step, int n);

} // namespace tobel::test
