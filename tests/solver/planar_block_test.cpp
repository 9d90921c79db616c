// Independent checks of the methods against results known in closed form.
//
// A dry frictional slide on a single plane: a slope of 45 degrees from a toe
// at y = 10 up to a crest 20 high at y = 30, flat beyond; the sliding plane
// dips at theta = 20 degrees from the toe and comes out on the flat top.
// The mass is a triangular block of weight W resting on a base of length L.
// All base normals are parallel, so any method that satisfies force
// equilibrium, whatever it assumes of the interslice forces, gives the
// factor of the sliding block
//     F = (c L + W cos(theta) tan(phi)) / (W sin(theta)),
// with phi converted as the program converts every angle, by 3.14 / 180.
// Janbu, Spencer and Morgenstern-Price must all come to it.
//
// A purely cohesive circle: every normal force passes through the centre, so
// moment equilibrium alone fixes F, whatever the interslice forces; Bishop,
// Spencer and Morgenstern-Price must all come to the closed form of the
// rigid rotation. Janbu, a force method without interslice shear, comes out
// lower.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/spencer_mp.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

struct Block {
    double toe = 10, face_deg = 45, height = 20;
    double theta_deg = 20;
    double gamma = 20, cohesion = 10, phi = 30;
};

static float theta_of(const Block& b)
{
    return float(b.theta_deg * M_PI / 180);
}

static double ground(const Block& b, double y)
{
    if (y <= b.toe)
        return 0;
    return std::min(b.height, (y - b.toe) * std::tan(b.face_deg * M_PI / 180));
}

static std::unique_ptr<Project> make_block(const Block& b, int cols, int method)
{
    SolverMesh m;
    m.rows = 1;
    m.cols = cols;
    m.x_max = 1;
    m.y_max = 100;
    auto p = make_solver_project(m);
    p->solution_method = int16(method);
    p->mat_unit_weight[1] = float(b.gamma);
    p->mat_cohesion[1] = float(b.cohesion);
    p->mat_phi[1] = float(b.phi);
    const float theta = theta_of(b);
    for (int c = 1; c <= cols; ++c) {
        const double y = double(p->y_min) + (c - 1) * double(p->col_spacing);
        const double zg = ground(b, y);
        const double zp = (y - b.toe) * std::tan(double(theta));
        p->zgrid(1, c, 1) = float(zg);
        p->zgrid(1, c, p->sliding_index) = float(y > b.toe && zp < zg ? zp : zg);
        p->surf_dip_y(1, c) = theta;
        p->surf_dip_x(1, c) = 0;
    }
    p->centre_y = 40;
    p->centre_z = 60;
    return p;
}

// The sliding block factor from the geometry alone.
static double block_factor(const Block& b)
{
    const double theta = theta_of(b);
    const double exit_y = b.toe + b.height / std::tan(theta);
    const double crest_y = b.toe + b.height / std::tan(b.face_deg * M_PI / 180);
    const double w = b.gamma * (exit_y - crest_y) * b.height / 2;
    const double l = b.height / std::sin(theta);
    const double tan_phi = std::tan(b.phi * 3.14 / 180);
    return (b.cohesion * l + w * std::cos(theta) * tan_phi) / (w * std::sin(theta));
}

static double solve_block(const Block& b, int cols, int method, Project** keep = nullptr)
{
    static std::unique_ptr<Project> last;
    last = make_block(b, cols, method);
    check_surface(*last);
    EXPECT_EQ(last->surface_out_flag, 0);
    last->solve_interactive = 0;
    ScriptedPort port;
    if (method <= 2)
        solve_bishop_janbu(*last, port);
    else
        solve_spencer_mp(*last, port);
    EXPECT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    if (keep)
        *keep = last.get();
    return last->factor_of_safety;
}

TEST(planar_block, geometry_of_the_test_block_is_a_triangle_of_the_stated_weight)
{
    // The columns' weights sum to the triangle's weight: the mesh is fine
    // enough for the comparisons below.
    Block b;
    Project* p = nullptr;
    solve_block(b, 2001, 3, &p);
    const double theta = theta_of(b);
    const double w = b.gamma * (b.toe + b.height / std::tan(theta) - 30) * b.height / 2;
    EXPECT_NEAR(p->slide_weight / w, 1.0, 0.001);
    EXPECT_NEAR(p->slide_area / (b.height / std::sin(theta)), 1.0, 0.003);
}

TEST(planar_block, janbu_spencer_and_morgenstern_price_give_the_sliding_block_factor)
{
    Block b;
    const double exact = block_factor(b);
    ASSERT_GT(exact, 1.2);
    ASSERT_LT(exact, 3.0);
    const double janbu = solve_block(b, 2001, 2);
    const double spencer = solve_block(b, 2001, 3);
    const double mp = solve_block(b, 2001, 4);
    std::printf("sliding block: exact %.5f  Janbu %.5f  Spencer %.5f  M-P %.5f\n", exact, janbu, spencer, mp);
    EXPECT_NEAR(janbu / exact, 1.0, 0.005);
    EXPECT_NEAR(spencer / exact, 1.0, 0.005);
    EXPECT_NEAR(mp / exact, 1.0, 0.005);
}

TEST(planar_block, a_steeper_plane_in_a_weaker_slope_still_gives_the_block_factor)
{
    Block b;
    b.theta_deg = 30;
    b.cohesion = 5;
    b.phi = 25;
    const double exact = block_factor(b);
    const double janbu = solve_block(b, 2001, 2);
    const double spencer = solve_block(b, 2001, 3);
    const double mp = solve_block(b, 2001, 4);
    std::printf("sliding block 30 deg: exact %.5f  Janbu %.5f  Spencer %.5f  M-P %.5f\n", exact, janbu,
                spencer, mp);
    EXPECT_NEAR(janbu / exact, 1.0, 0.005);
    EXPECT_NEAR(spencer / exact, 1.0, 0.005);
    EXPECT_NEAR(mp / exact, 1.0, 0.005);
}

static double solve_circle(const Slope& g, int n, int method)
{
    auto p = make_cohesive_slope(g, n, true, method);
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, 0);
    p->solve_interactive = 0;
    ScriptedPort port;
    if (method <= 2)
        solve_bishop_janbu(*p, port);
    else
        solve_spencer_mp(*p, port);
    EXPECT_TRUE(port.boxes.empty());
    return p->factor_of_safety;
}

TEST(cohesive_circle, bishop_spencer_and_morgenstern_price_agree_with_the_closed_form)
{
    Slope g;
    const double exact = closed_form_2d(g);
    const int n = 2000;
    const double bishop = solve_circle(g, n, 1);
    const double janbu = solve_circle(g, n, 2);
    const double spencer = solve_circle(g, n, 3);
    const double mp = solve_circle(g, n, 4);
    std::printf(
        "cohesive circle: exact %.5f  Bishop %.5f  Spencer %.5f  M-P %.5f  Janbu %.5f (%.1f %% lower)\n",
        exact, bishop, spencer, mp, janbu, (1 - janbu / exact) * 100);
    EXPECT_NEAR(bishop / exact, 1.0, 0.005);
    EXPECT_NEAR(spencer / exact, 1.0, 0.005);
    EXPECT_NEAR(mp / exact, 1.0, 0.005);
    EXPECT_LT(janbu, 0.99 * exact) << "Janbu leaves out the interslice shear";
}

} // namespace
} // namespace tobel::test
