// The shipped 2-D example against Bishop's simplified method worked out
// independently: vertical slices of a circle through the homogeneous slope,
// F = sum((c b + W tan phi) / m_alpha) / sum(W sin alpha), with
// m_alpha = cos alpha + sin alpha tan phi / F, iterated to a fixed point.
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/ellipsoid_form.h"
#include "project/commands.h"
#include "solver/bishop_janbu.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

// The example's ground: toe at 10 up to Y = 30, a 2:1 face up to the crest at
// 30 from Y = 70. The mass slides toward -Y.
double ground(double y)
{
    if (y <= 30) return 10;
    if (y >= 70) return 30;
    return 10 + (y - 30) / 2;
}

struct Circle {
    double yc, zc, r;
};

// Bishop's simplified factor over slices centred at `ys`, each `b` wide.
double textbook_bishop(const Circle& k, double c, double phi_rad, double gamma, const std::vector<double>& ys,
                       double b)
{
    const double t = std::tan(phi_rad);
    double f = 1;
    for (int it = 0; it < 200; ++it) {
        double resisting = 0, driving = 0;
        for (double y : ys) {
            const double dy = y - k.yc;
            if (std::fabs(dy) >= k.r) continue;
            const double zs = k.zc - std::sqrt(k.r * k.r - dy * dy);
            const double h = ground(y) - zs;
            if (h < 0.001) continue;
            const double alpha = std::asin(dy / k.r);
            const double w = gamma * h * b;
            resisting += (c * b + w * t) / (std::cos(alpha) + std::sin(alpha) * t / f);
            driving += w * std::sin(alpha);
        }
        const double next = resisting / driving;
        if (std::fabs(next - f) < 1e-12) return next;
        f = next;
    }
    return f;
}

TEST(example_2d, bishop_matches_independent_slice_calculation)
{
    Project p;
    main_load(p);
    test::ScriptedPort port;
    p.data_file_path = test::example_path("slope2d-homogeneous.tob");
    p.open_recent_pending = -1;
    file_open(p, port);
    ASSERT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
    p.solution_method = 1;
    p.solve_interactive = 0;
    solve_bishop_janbu(p, port);

    const Circle k{45, 50, 40};
    // The program's friction angle passes through 3.14 / 180, on purpose.
    const double phi = 20 * 3.14 / 180;
    // Same slices as the mesh columns: 201 nodes 0.5 apart.
    std::vector<double> nodes;
    for (int j = 0; j < 201; ++j) nodes.push_back(0.5 * j);
    const double same_slices = textbook_bishop(k, 10, phi, 20, nodes, 0.5);
    // The program stops when two iterates are within 0.002.
    EXPECT_NEAR(p.factor_of_safety, same_slices, 0.003);
    // A fine division of the same circle: the continuum value.
    std::vector<double> fine;
    for (int j = 0; j < 100000; ++j) fine.push_back(0.001 * (j + 0.5));
    const double continuum = textbook_bishop(k, 10, phi, 20, fine, 0.001);
    EXPECT_NEAR(p.factor_of_safety / continuum, 1.0, 0.01);
    std::printf("2-D example: program F = %.4f, same slices %.4f, continuum %.4f\n", p.factor_of_safety,
                same_slices, continuum);
}

} // namespace
} // namespace tobel
