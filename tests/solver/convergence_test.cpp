// Convergence of Bishop's factor to the closed form of a purely cohesive slide.
//
// With phi = 0 every column's normal force is W / cos(gamma), so Bishop's
// driving moment reduces to the sum of W (y - yc) and the resisting moment to
// the sum of c A rho, rho the distance of the base point from the axis of
// rotation (parallel to X through the centre). The exact factor of a rigid
// rotation is therefore
//     F = integral(c rho dA) / integral(gamma (z_g - z_s) (y - yc) dx dy),
// which the tests work out from the geometry alone, strip by strip in X with
// the Y integrals in closed form, and compare with the solver as the mesh is
// refined.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <initializer_list>

#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"
#include "surfaces/ellipsoid.h"

namespace tobel::test {
namespace {

// The program's solution on an n by n mesh (one row of unit width in 2-D).
static double solve_on_mesh(const Slope& g, int n, bool two_d, int method)
{
    auto p = make_cohesive_slope(g, n, two_d, method);
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, 0) << "the slide must stay inside the mesh";
    p->solve_interactive = 0;
    QuietPort port;
    solve_bishop_janbu(*p, port);
    return p->factor_of_safety;
}

static void convergence_table(const char* title, const Slope& g, bool two_d, double exact,
                              std::initializer_list<int> sizes = {25, 50, 100, 200})
{
    std::printf("%s: closed form F = %.6f\n", title, exact);
    std::printf("  %8s %12s %12s %12s\n", "mesh", "Bishop F", "rel. error", "Janbu F");
    double last_err = 1;
    for (int n : sizes) {
        const double f = solve_on_mesh(g, n, two_d, 1);
        const double jf = solve_on_mesh(g, n, two_d, 2);
        const double err = std::abs(f - exact) / exact;
        std::printf("  %8d %12.6f %12.6f %12.6f (Janbu %.1f %% lower)\n", n, f, err, jf, (1 - jf / f) * 100);
        // On the coarsest mesh the few end columns decide; from 50 on the
        // ordering of the two methods is that of the exact solutions.
        if (n >= 50) {
            EXPECT_LT(jf, f) << "Janbu leaves out the interslice shear and comes out lower";
        }
        if (n == 200) {
            EXPECT_LT(err, 0.01);
        }
        if (n == 2000) {
            EXPECT_LT(err, 0.002);
        }
        if (n >= 200) {
            EXPECT_LT(err, last_err * 2 + 0.001) << "refinement does not drift away";
        }
        last_err = err;
    }
}

TEST(bishop_convergence, cohesive_sphere_tends_to_rigid_rotation_closed_form)
{
    Slope g;
    const double exact = closed_form_3d(g);
    ASSERT_GT(exact, 0.5);
    ASSERT_LT(exact, 20.0);
    convergence_table("sphere R 30", g, false, exact);
}

TEST(bishop_convergence, cohesive_ellipsoid_of_aspect_two_tends_to_closed_form)
{
    Slope g;
    g.aspect = 2;
    g.xc = 80; // the X semi-axis is 60: the mesh spans 0 .. 160
    const double exact = closed_form_3d(g);
    convergence_table("ellipsoid aspect 2", g, false, exact);
}

TEST(bishop_convergence, cohesive_circle_per_unit_width_tends_to_closed_form)
{
    Slope g;
    const double exact = closed_form_2d(g);
    convergence_table("circle (2-D)", g, true, exact, {25, 50, 100, 200, 400, 1000, 2000});
}

// The 2-D closed form, checked against a plain numerical quadrature of the
// same integrals, so that the strip formulas above are not taken on trust.
TEST(bishop_convergence, strip_formulas_agree_with_direct_quadrature)
{
    Slope g;
    const double d = g.zc - g.z0 - g.s * g.yc;
    const int n = 2000000;
    const double h = 2 * g.radius / n;
    double res = 0, drv = 0;
    for (int i = 0; i < n; ++i) {
        const double u = -g.radius + (i + 0.5) * h;
        const double zs = g.zc - std::sqrt(g.radius * g.radius - u * u);
        const double zg = g.z0 + g.s * (g.yc + u);
        if (zs >= zg)
            continue;
        const double zy = u / std::sqrt(g.radius * g.radius - u * u);
        res += g.cohesion * g.radius * std::sqrt(1 + zy * zy) * h;
        drv += g.gamma * (zg - zs) * u * h;
    }
    (void)d;
    double r1 = 0, d1 = 0;
    strip(g, 0, r1, d1);
    EXPECT_NEAR(res / r1, 1.0, 1e-4);
    EXPECT_NEAR(drv / d1, 1.0, 1e-4);
}

} // namespace
} // namespace tobel::test
