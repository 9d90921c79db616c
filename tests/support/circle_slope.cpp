#include "support/circle_slope.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tobel::test {

double GroundLine::at(double y) const
{
    if (y <= points.front().first)
        return points.front().second;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const auto [y1, z1] = points[i - 1];
        const auto [y2, z2] = points[i];
        if (y <= y2)
            return z1 + (z2 - z1) * (y - y1) / (y2 - y1);
    }
    return points.back().second;
}

bool cuts_lower_half(const GroundLine& g, const Circle& k)
{
    return k.r > 0 && g.at(k.yc - k.r) < k.zc && g.at(k.yc + k.r) < k.zc;
}

double bishop_on_slices(const GroundLine& g, const Circle& k, double c, double phi_rad, double gamma,
                        const std::vector<double>& ys, double b, double min_height)
{
    const double t = std::tan(phi_rad);
    double f = 1;
    for (int it = 0; it < 500; ++it) {
        double resisting = 0, driving = 0;
        for (double y : ys) {
            const double dy = y - k.yc;
            if (std::fabs(dy) >= k.r)
                continue;
            const double h = g.at(y) - (k.zc - std::sqrt(k.r * k.r - dy * dy));
            if (h < min_height || h <= 0)
                continue;
            const double sin_a = dy / k.r;
            const double cos_a = std::sqrt(1 - sin_a * sin_a);
            const double w = gamma * h * b;
            resisting += (c * b + w * t) / (cos_a + sin_a * t / f);
            driving += w * sin_a;
        }
        if (driving <= 0)
            return 0;
        const double next = resisting / driving;
        if (std::fabs(next - f) < 1e-12)
            return next;
        f = next;
    }
    return f;
}

double bishop_continuum(const GroundLine& g, const Circle& k, double c, double phi_rad, double gamma, int n)
{
    const double b = 2 * k.r / n;
    return bishop_on_slices(g, k, c, phi_rad, gamma, mesh_nodes(k.yc - k.r + b / 2, b, n), b, 0);
}

std::vector<double> mesh_nodes(double y0, double dy, int count)
{
    std::vector<double> ys;
    ys.reserve(std::size_t(count));
    for (int j = 0; j < count; ++j)
        ys.push_back(y0 + j * dy);
    return ys;
}

// Height of the ground over the circle's lower half at y.
static double depth(const GroundLine& g, const Circle& k, double y)
{
    const double dy = y - k.yc;
    return g.at(y) - (k.zc - std::sqrt(std::max(0.0, k.r * k.r - dy * dy)));
}

// The cut between a y where the circle is under the ground and one where it
// is not, by bisection.
static double cut(const GroundLine& g, const Circle& k, double inside, double outside)
{
    for (int i = 0; i < 200; ++i) {
        const double mid = (inside + outside) / 2;
        (depth(g, k, mid) > 0 ? inside : outside) = mid;
    }
    return (inside + outside) / 2;
}

double cohesive_rotation(const GroundLine& g, const Circle& k, double c, double gamma, int n)
{
    // The deepest point of the mass is under the centre or at one end of a
    // ground segment; scan for any point under the ground.
    const int scan = 4000;
    double y_in = std::numeric_limits<double>::quiet_NaN();
    double best = 0;
    for (int i = 1; i < scan; ++i) {
        const double y = k.yc - k.r + 2 * k.r * i / scan;
        if (depth(g, k, y) > best) {
            best = depth(g, k, y);
            y_in = y;
        }
    }
    if (!(best > 0))
        return 0;
    const double y1 = cut(g, k, y_in, k.yc - k.r);
    const double y2 = cut(g, k, y_in, k.yc + k.r);
    const double arc = k.r * (std::asin((y2 - k.yc) / k.r) - std::asin((y1 - k.yc) / k.r));
    const double h = (y2 - y1) / n;
    double moment = 0;
    for (int i = 0; i < n; ++i) {
        const double y = y1 + (i + 0.5) * h;
        moment += gamma * std::max(0.0, depth(g, k, y)) * (y - k.yc) * h;
    }
    return moment > 0 ? c * arc * k.r / moment : 0;
}

double cohesive_rotation_on_slices(const GroundLine& g, const Circle& k, double c, double gamma,
                                   const std::vector<double>& ys, double b)
{
    double resisting = 0, driving = 0;
    for (double y : ys) {
        const double dy = y - k.yc;
        if (std::fabs(dy) >= k.r)
            continue;
        const double h = depth(g, k, y);
        if (h < 0.001)
            continue;
        const double cos_a = std::sqrt(k.r * k.r - dy * dy) / k.r;
        resisting += c * b / cos_a * k.r;
        driving += gamma * h * b * dy;
    }
    return driving > 0 ? resisting / driving : 0;
}

using Point = std::array<double, 3>;

// A Nelder-Mead simplex from `start` with edges of `size`, to a simplex whose
// values agree to 1e-10 or 2000 steps.
static std::pair<Point, double> nelder_mead(const std::function<double(const Point&)>& value,
                                            const Point& start, double size)
{
    std::array<Point, 4> s;
    s[0] = start;
    for (std::size_t i = 0; i < 3; ++i) {
        s[i + 1] = start;
        s[i + 1][i] += size;
    }
    std::array<double, 4> v{};
    for (std::size_t i = 0; i < 4; ++i)
        v[i] = value(s[i]);
    for (int it = 0; it < 2000; ++it) {
        std::array<std::size_t, 4> order{0, 1, 2, 3};
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return v[a] < v[b]; });
        const std::array<Point, 4> ps{s[order[0]], s[order[1]], s[order[2]], s[order[3]]};
        const std::array<double, 4> pv{v[order[0]], v[order[1]], v[order[2]], v[order[3]]};
        s = ps;
        v = pv;
        if (v[3] - v[0] < 1e-10)
            break;
        Point centroid{};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t d = 0; d < 3; ++d)
                centroid[d] += s[i][d] / 3;
        auto along = [&](double t) {
            Point x;
            for (std::size_t d = 0; d < 3; ++d)
                x[d] = centroid[d] + t * (s[3][d] - centroid[d]);
            return x;
        };
        const Point reflected = along(-1);
        const double fr = value(reflected);
        if (fr < v[0]) {
            const Point expanded = along(-2);
            const double fe = value(expanded);
            s[3] = fe < fr ? expanded : reflected;
            v[3] = std::min(fe, fr);
        } else if (fr < v[2]) {
            s[3] = reflected;
            v[3] = fr;
        } else {
            const Point contracted = along(0.5);
            const double fc = value(contracted);
            if (fc < v[3]) {
                s[3] = contracted;
                v[3] = fc;
            } else {
                for (std::size_t i = 1; i < 4; ++i) {
                    for (std::size_t d = 0; d < 3; ++d)
                        s[i][d] = s[0][d] + (s[i][d] - s[0][d]) / 2;
                    v[i] = value(s[i]);
                }
            }
        }
    }
    const std::size_t i = std::size_t(std::min_element(v.begin(), v.end()) - v.begin());
    return {s[i], v[i]};
}

CircleMinimum minimise_over_circles(const GroundLine& g,
                                    const std::function<double(const Circle&, int)>& factor, double y_lo,
                                    double y_hi, double z_lo, double z_hi, double step, int n)
{
    const double none = std::numeric_limits<double>::max();
    auto admissible = [&](const Circle& k, int strips) {
        if (!cuts_lower_half(g, k))
            return none;
        const double f = factor(k, strips);
        return f > 0 ? f : none;
    };
    double lowest = g.points.front().second;
    for (const auto& pt : g.points)
        lowest = std::min(lowest, pt.second);
    // 1. A coarse search for a start.
    CircleMinimum best{{0, 0, 0}, none};
    for (int i = 0; y_lo + i * step <= y_hi + 1e-9; ++i)
        for (int j = 0; z_lo + j * step <= z_hi + 1e-9; ++j) {
            const double yc = y_lo + i * step, zc = z_lo + j * step;
            for (int m = 0; zc - g.at(yc) + m * step < zc - lowest + (z_hi - z_lo); ++m) {
                const Circle k{yc, zc, zc - g.at(yc) + m * step};
                const double f = admissible(k, 400);
                if (f < best.factor)
                    best = {k, f};
            }
        }
    if (best.factor == none)
        return best;
    // 2. Nelder-Mead from there, started again from its result until that no
    // longer improves. The simplex works on the centre and the elevation of
    // the circle's lowest point, so that the kink where a circle begins to
    // dip under a level ground lies across one axis: the minimum of a slope
    // with a level toe often lies on it.
    auto value = [&](const Point& x) { return admissible({x[0], x[1], x[1] - x[2]}, n); };
    const Point start{best.circle.yc, best.circle.zc, best.circle.zc - best.circle.r};
    std::pair<Point, double> at{start, value(start)};
    for (int round = 0; round < 20; ++round) {
        const auto next = nelder_mead(value, at.first, step / (2 + round));
        const bool better = next.second < at.second - 1e-10;
        if (next.second < at.second)
            at = next;
        if (!better && round > 1)
            break;
    }
    return {{at.first[0], at.first[1], at.first[1] - at.first[2]}, at.second};
}

} // namespace tobel::test
