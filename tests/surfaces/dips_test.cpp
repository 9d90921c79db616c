#include <gtest/gtest.h>

#include <cmath>

#include "surface_fixture.h"
#include "surfaces/dips.h"

namespace tobel::test {
namespace {

TEST(DeriveDips, inclined_plane_gives_its_two_slopes_at_every_node)
{
    auto p = make_project({6, 9, 0, 10, 0, 16}); // spacings 2 and 2
    set_ground(*p, [](double, double) { return 100.0; });
    set_surface(*p, p->sliding_index, [](double x, double y) { return 20.0 + 0.5 * x - 0.25 * y; });
    derive_dips(*p);
    for (int row = 1; row <= 6; ++row) {
        for (int col = 1; col <= 9; ++col) {
            EXPECT_FLOAT_EQ(p->surf_dip_x(row, col), float(std::atan(0.5))) << row << "," << col;
            EXPECT_FLOAT_EQ(p->surf_dip_y(row, col), float(std::atan(-0.25))) << row << "," << col;
        }
    }
}

TEST(DeriveDips, ends_use_one_sided_and_inside_central_differences)
{
    // z = y^2 along Y and z = x^3 along X: the differences are told apart.
    auto p = make_project({4, 5, 0, 3, 0, 4});
    set_ground(*p, [](double, double) { return 100.0; });
    set_surface(*p, p->sliding_index, [](double x, double y) { return x * x * x + y * y; });
    derive_dips(*p);
    // Along Y, spacing 1, z = 0, 1, 4, 9, 16.
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 1), float(std::atan(1.0))); // (1 - 0) / 1
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 2), float(std::atan(2.0))); // (4 - 0) / 2
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 4), float(std::atan(6.0))); // (16 - 4) / 2
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 5), float(std::atan(7.0))); // (16 - 9) / 1
    // Along X, spacing 1, z = 0, 1, 8, 27 (plus y^2).
    EXPECT_FLOAT_EQ(p->surf_dip_x(1, 3), float(std::atan(1.0)));  // (1 - 0)
    EXPECT_FLOAT_EQ(p->surf_dip_x(2, 3), float(std::atan(4.0)));  // (8 - 0) / 2
    EXPECT_FLOAT_EQ(p->surf_dip_x(3, 3), float(std::atan(13.0))); // (27 - 1) / 2
    EXPECT_FLOAT_EQ(p->surf_dip_x(4, 3), float(std::atan(19.0))); // (27 - 8)
}

TEST(DeriveDips, spacing_divides_the_difference)
{
    auto p = make_project({3, 3, 0, 8, 0, 1}); // row spacing 4, col spacing 0.5
    set_ground(*p, [](double, double) { return 100.0; });
    set_surface(*p, p->sliding_index, [](double x, double y) { return x + y; });
    derive_dips(*p);
    EXPECT_FLOAT_EQ(p->surf_dip_x(2, 2), float(std::atan(1.0)));
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 2), float(std::atan(1.0)));
}

TEST(DeriveDips, plane_above_ground_is_lowered_before_the_differences)
{
    auto p = make_project({1, 5, 0, 1, 0, 4});
    set_ground(*p, [](double, double) { return 10.0; });
    // 8, 9, 12, 9, 8: the middle node is above the ground and becomes 10.
    const float plane[] = {0, 8, 9, 12, 9, 8};
    for (int col = 1; col <= 5; ++col)
        p->zgrid(1, col, p->sliding_index) = plane[col];
    derive_dips(*p);
    EXPECT_EQ(sliding(*p, 1, 3), 10.0f);
    EXPECT_EQ(sliding(*p, 1, 2), 9.0f);
    // With the lowered value: (10 - 8) / 2 = 1, not (12 - 8) / 2 = 2.
    EXPECT_FLOAT_EQ(p->surf_dip_y(1, 2), float(std::atan(1.0)));
    EXPECT_FLOAT_EQ(p->surf_dip_y(1, 4), float(std::atan(-1.0)));
    EXPECT_EQ(p->surf_dip_y(1, 3), 0.0f); // (9 - 9) / 2
}

TEST(DeriveDips, two_dimensional_problem_has_no_x_dip)
{
    auto p = make_project({1, 5, 0, 1, 0, 4});
    set_ground(*p, [](double, double) { return 100.0; });
    set_surface(*p, p->sliding_index, [](double, double y) { return 2.0 * y; });
    p->surf_dip_x.fill(0.7f);
    derive_dips(*p);
    for (int col = 1; col <= 5; ++col) {
        EXPECT_EQ(p->surf_dip_x(1, col), 0.0f);
        EXPECT_FLOAT_EQ(p->surf_dip_y(1, col), float(std::atan(2.0)));
    }
}

TEST(DeriveDips, nodes_on_the_ground_take_the_slope_of_the_ground)
{
    auto p = make_project({3, 4, 0, 2, 0, 3});
    set_ground(*p, [](double x, double y) { return 10.0 + 0.5 * y + 0.25 * x; });
    set_surface(*p, p->sliding_index, [](double x, double y) { return 10.0 + 0.5 * y + 0.25 * x; });
    derive_dips(*p);
    EXPECT_FLOAT_EQ(p->surf_dip_y(1, 1), float(std::atan(0.5)));
    EXPECT_FLOAT_EQ(p->surf_dip_x(3, 4), float(std::atan(0.25)));
}

TEST(DeriveDips, leaves_discontinuity_codes_as_they_are)
{
    auto p = make_project({3, 4, 0, 2, 0, 3});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double y) { return 5.0 + y; });
    p->disc_code(2, 2) = 3;
    derive_dips(*p);
    EXPECT_EQ(p->disc_code(2, 2), 3);
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 2), float(std::atan(1.0)));
}

} // namespace
} // namespace tobel::test
