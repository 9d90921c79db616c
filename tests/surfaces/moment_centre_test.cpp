#include <gtest/gtest.h>

#include <cmath>

#include "surface_fixture.h"
#include "surfaces/moment_centre.h"

namespace tobel::test {
namespace {

struct Point {
    double y, z;
};

// Centre of the circle through three points, from the two equations of
// equal distance solved by Cramer's rule.
Point circumcentre(Point a, Point b, Point c)
{
    const double a11 = 2 * (b.y - a.y), a12 = 2 * (b.z - a.z);
    const double a21 = 2 * (c.y - a.y), a22 = 2 * (c.z - a.z);
    const double r1 = b.y * b.y + b.z * b.z - a.y * a.y - a.z * a.z;
    const double r2 = c.y * c.y + c.z * c.z - a.y * a.y - a.z * a.z;
    const double det = a11 * a22 - a12 * a21;
    return {(r1 * a22 - a12 * r2) / det, (a11 * r2 - r1 * a21) / det};
}

// A two-dimensional slide whose plane is the circle (yc, zc, r) below the
// ground and the ground elsewhere.
std::unique_ptr<Project> arc(double yc, double zc, double r, double ground_z0, double ground_slope)
{
    auto p = make_project({1, 21, 0, 1, 0, 20});
    set_ground(*p, [&](double, double y) { return ground_z0 + ground_slope * y; });
    set_surface(*p, p->sliding_index, [&](double, double y) {
        const double g = ground_z0 + ground_slope * y;
        const double d = r * r - (y - yc) * (y - yc);
        if (d <= 0)
            return g;
        return std::min(g, zc - std::sqrt(d));
    });
    p->surface_kind = 4;
    return p;
}

TEST(MomentCentre, circular_arc_gives_back_its_centre)
{
    auto p = arc(10, 14, 8, 10, 0);
    find_moment_centre(*p);
    EXPECT_EQ(p->no_slide, 0);
    EXPECT_NEAR(p->centre_y, 10.0, 1e-4);
    EXPECT_NEAR(p->centre_z, 14.0, 1e-4);
}

TEST(MomentCentre, asymmetric_arc_under_sloping_ground_gives_back_its_centre)
{
    // Ground 6 + 0.4 y over the circle centre (8.7, 16.2), radius 11: the
    // slide runs from y = 3 to y = 19 (checked below), an even span.
    auto p = arc(8.7, 16.2, 11, 6, 0.4);
    for (int col = 1; col <= 21; ++col) {
        const bool under = sliding(*p, 1, col) < ground(*p, 1, col);
        EXPECT_EQ(under, col >= 4 && col <= 20) << col;
    }
    find_moment_centre(*p);
    EXPECT_NEAR(p->centre_y, 8.7, 2e-4);
    EXPECT_NEAR(p->centre_z, 16.2, 2e-4);
}

TEST(MomentCentre, three_dimensional_slide_takes_ends_from_first_row_and_lowest_middle)
{
    auto p = make_project({3, 11, 0, 2, 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    auto z = [&](int row, int col) -> float& { return p->zgrid(row, col, p->sliding_index); };
    for (int col = 3; col <= 6; ++col)
        z(1, col) = 6;
    for (int col = 3; col <= 7; ++col)
        z(2, col) = 6;
    z(2, 4) = 4.5f;
    z(2, 5) = 3;
    z(2, 7) = 7;
    for (int col = 2; col <= 7; ++col)
        z(3, col) = 6;
    z(3, 2) = 8;
    z(3, 4) = 5;
    z(3, 5) = 2;
    z(3, 7) = 5;
    p->surface_kind = 4;
    find_moment_centre(*p);
    // Toe col 2 (row 3, z 8); head col 7 reached first by row 2 (z 7);
    // middle 4.5, which is y = 3.5 with z taken at col 4 (half to even):
    // lowest there 4.5.
    const Point c = circumcentre({1, 8}, {3.5, 4.5}, {6, 7});
    EXPECT_NEAR(p->centre_y, c.y, 1e-4);
    EXPECT_NEAR(p->centre_z, c.z, 1e-4);
}

TEST(MomentCentre, level_toe_chord_uses_the_sine_of_the_head_chord)
{
    auto p = make_project({1, 11, 0, 1, 0, 10});
    set_ground(*p, [](double, double) { return 20.0; });
    set_surface(*p, p->sliding_index, [](double, double y) { return y <= 5 ? 2.0 : 2.0 + (y - 5); });
    p->surface_kind = 2;
    find_moment_centre(*p);
    // Circle through (0, 2), (5, 2), (10, 7): centre (2.5, 9.5).
    EXPECT_NEAR(p->centre_y, 2.5, 1e-5);
    EXPECT_NEAR(p->centre_z, 9.5, 1e-5);
}

// A planar surface has parallel chords: the centre goes to the radius limit
// Dmax = num_cols * col_spacing * 50 from the midpoint of the upper chord,
// on its normal.
void expect_planar_limit(double slope)
{
    auto p = make_project({1, 11, 0, 1, 0, 10});
    set_ground(*p, [](double, double) { return 20.0; });
    set_surface(*p, p->sliding_index, [&](double, double y) { return 2.0 + slope * y; });
    p->surface_kind = 2;
    find_moment_centre(*p);
    const double dmax = 11 * 1 * 50;
    const double y2 = 7.5, z2 = 2.0 + slope * 7.5;
    const double len = std::sqrt(1 + slope * slope);
    EXPECT_NEAR(p->centre_y, y2 - dmax * slope / len, 1e-3) << slope;
    EXPECT_NEAR(p->centre_z, z2 + dmax / len, 1e-3) << slope;
}

TEST(MomentCentre, planar_surface_is_limited_by_dmax)
{
    expect_planar_limit(0.5);
}

TEST(MomentCentre, planar_surface_with_vanishing_denominator_takes_dmax)
{
    expect_planar_limit(0.25);
}

TEST(MomentCentre, single_column_slide_has_three_equal_points)
{
    auto p = make_project({1, 11, 0, 1, 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    p->zgrid(1, 6, p->sliding_index) = 7;
    p->surface_kind = 4;
    find_moment_centre(*p);
    EXPECT_EQ(p->no_slide, 0);
    // Both chords are vertical (a quarter turn of 3.14 / 2) and have the
    // same midpoint (5, 7). The numerator of the distance is then exactly
    // 0: the distance is 0 unless q comes out exactly 0, when it is Dmax.
    const double b = 3.14 / 2;
    const double q = std::cos(b) - std::sin(b) / std::tan(b);
    const double s = q == 0 ? 11 * 50.0 : 0.0;
    EXPECT_NEAR(p->centre_y, 5 - s * std::sin(b), 1e-4);
    EXPECT_NEAR(p->centre_z, 7 + s * std::cos(b), 1e-4);
}

TEST(MomentCentre, level_bottom_leaves_the_centre)
{
    auto p = make_project({1, 11, 0, 1, 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double y) { return y >= 2 && y <= 8 ? 5.0 : 10.0; });
    p->surface_kind = 4;
    p->centre_y = -1;
    p->centre_z = 33;
    find_moment_centre(*p);
    EXPECT_EQ(p->no_slide, 0);
    EXPECT_EQ(p->centre_y, -1.0f);
    EXPECT_EQ(p->centre_z, 33.0f);
}

TEST(MomentCentre, surface_on_the_ground_everywhere_is_no_slide)
{
    for (int kind : {1, 4}) {
        auto p = make_project({3, 5, 0, 2, 0, 4});
        set_ground(*p, [](double x, double y) { return 3 + x + y; });
        set_surface(*p, p->sliding_index, [](double x, double y) { return 3 + x + y; });
        p->surface_kind = int16(kind);
        p->centre_y = 4;
        p->centre_z = 9;
        find_moment_centre(*p);
        EXPECT_EQ(p->no_slide, 1);
        EXPECT_EQ(p->centre_y, 4.0f);
        EXPECT_EQ(p->centre_z, 9.0f);
    }
}

TEST(MomentCentre, nodes_above_ground_count_against_the_slide)
{
    auto p = make_project({1, 5, 0, 1, 0, 4});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    p->zgrid(1, 2, p->sliding_index) = 9;  // 1 under
    p->zgrid(1, 4, p->sliding_index) = 12; // 2 over
    p->surface_kind = 4;
    find_moment_centre(*p);
    EXPECT_EQ(p->no_slide, 1);
}

TEST(MomentCentre, ellipsoid_keeps_its_centre_and_clears_no_slide)
{
    auto p = arc(10, 14, 8, 10, 0);
    p->surface_kind = 1;
    p->centre_y = 10.5f;
    p->centre_z = 14.5f;
    p->no_slide = 1;
    find_moment_centre(*p);
    EXPECT_EQ(p->no_slide, 0);
    EXPECT_EQ(p->centre_y, 10.5f);
    EXPECT_EQ(p->centre_z, 14.5f);
}

} // namespace
} // namespace tobel::test
