#include <gtest/gtest.h>

#include <cmath>

#include "surface_fixture.h"
#include "surfaces/ellipsoid.h"

namespace tobel::test {
namespace {

// The ellipsoid z = zc - sqrt(R^2 - (x - xc)^2 / a^2 - (y - yc)^2) and its
// slopes from the partial derivatives, worked out in closed form.
struct Shape {
    double xc, yc, zc, r, a;
    double inside(double x, double y) const
    {
        return r * r - (x - xc) * (x - xc) / (a * a) - (y - yc) * (y - yc);
    }
    double z(double x, double y) const { return zc - std::sqrt(inside(x, y)); }
    double dip_x(double x, double y) const { return std::atan((x - xc) / (a * a) / std::sqrt(inside(x, y))); }
    double dip_y(double x, double y) const { return std::atan((y - yc) / std::sqrt(inside(x, y))); }
};

void set_working(Project& p, const Shape& s)
{
    p.ell_x = float(s.xc);
    p.ell_y = float(s.yc);
    p.ell_z = float(s.zc);
    p.ell_radius = float(s.r);
    p.ell_aspect = float(s.a);
}

void expect_outside(const Project& p, int row, int col)
{
    EXPECT_EQ(sliding(p, row, col), ground(p, row, col)) << row << "," << col;
    EXPECT_EQ(p.surf_dip_x(row, col), 0.0f) << row << "," << col;
    EXPECT_EQ(p.surf_dip_y(row, col), 0.0f) << row << "," << col;
    EXPECT_EQ(p.disc_code(row, col), 0) << row << "," << col;
}

TEST(Ellipsoid, sphere_under_flat_ground_follows_closed_form_at_every_node)
{
    auto p = make_project({}); // 11 x 11 nodes, spacing 1
    set_ground(*p, [](double, double) { return 10.0; });
    const Shape s{5, 5, 10, 4, 1};
    set_working(*p, s);
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    int inside_nodes = 0;
    for (int row = 1; row <= 11; ++row) {
        for (int col = 1; col <= 11; ++col) {
            const double x = node_x(*p, row), y = node_y(*p, col);
            if (s.inside(x, y) > 0) {
                ++inside_nodes;
                EXPECT_NEAR(sliding(*p, row, col), s.z(x, y), 2e-6) << row << "," << col;
                EXPECT_NEAR(p->surf_dip_x(row, col), s.dip_x(x, y), 2e-6) << row << "," << col;
                EXPECT_NEAR(p->surf_dip_y(row, col), s.dip_y(x, y), 2e-6) << row << "," << col;
            } else {
                expect_outside(*p, row, col);
            }
        }
    }
    // Lattice points strictly inside a circle of radius 4: 45.
    EXPECT_EQ(inside_nodes, 45);
}

TEST(Ellipsoid, example_node_values_worked_by_hand)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 10.0; });
    set_working(*p, {5, 5, 10, 4, 1});
    build_ellipsoid(*p);
    // Node x = 6, y = 7: dx = 1, dy = 2, R^2 - 1 - 4 = 11.
    EXPECT_NEAR(sliding(*p, 7, 8), 10 - std::sqrt(11.0), 1e-6);
    EXPECT_NEAR(p->surf_dip_y(7, 8), std::atan(2 / std::sqrt(11.0)), 1e-6);
    EXPECT_NEAR(p->surf_dip_x(7, 8), std::atan(1 / std::sqrt(11.0)), 1e-6);
    // Node x = 4, y = 3: slopes point the other way.
    EXPECT_NEAR(p->surf_dip_x(5, 4), -std::atan(1 / std::sqrt(11.0)), 1e-6);
    EXPECT_NEAR(p->surf_dip_y(5, 4), -std::atan(2 / std::sqrt(11.0)), 1e-6);
}

TEST(Ellipsoid, node_below_centre_has_no_dips)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 10.0; });
    set_working(*p, {5, 5, 10, 4, 1});
    build_ellipsoid(*p);
    EXPECT_EQ(sliding(*p, 6, 6), 6.0f);
    EXPECT_EQ(p->surf_dip_x(6, 6), 0.0f);
    EXPECT_EQ(p->surf_dip_y(6, 6), 0.0f);
}

TEST(Ellipsoid, node_exactly_on_rim_is_outside)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 10.0; });
    set_working(*p, {5, 5, 10, 4, 1});
    build_ellipsoid(*p);
    expect_outside(*p, 6, 10); // dy = 4 = R
    expect_outside(*p, 6, 2);  // dy = -4
    expect_outside(*p, 10, 6); // dx = 4 = R * a
    expect_outside(*p, 2, 6);
    // One spacing in from the rim is inside.
    EXPECT_LT(sliding(*p, 6, 9), 10.0f);
}

TEST(Ellipsoid, node_where_ellipsoid_meets_or_rises_above_ground_is_outside)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 6.0; });
    set_working(*p, {5, 5, 10, 5, 1});
    build_ellipsoid(*p);
    // dx = 3, dy = 0: z = 10 - sqrt(25 - 9) = 6, exactly the ground.
    expect_outside(*p, 9, 6);
    // dx = 2, dy = 2: z = 10 - sqrt(17) = 5.877 below the ground.
    EXPECT_NEAR(sliding(*p, 8, 8), 10 - std::sqrt(17.0), 1e-6);
    EXPECT_NE(p->surf_dip_x(8, 8), 0.0f);
    // dx = 3, dy = 1: z = 10 - sqrt(15) = 6.127, above the ground: no dips.
    expect_outside(*p, 9, 7);
}

TEST(Ellipsoid, aspect_two_doubles_only_the_x_semi_axis)
{
    auto p = make_project({11, 11, 0, 20, 0, 10}); // X spacing 2
    set_ground(*p, [](double, double) { return 10.0; });
    const Shape s{10, 5, 10, 3, 2};
    set_working(*p, s);
    build_ellipsoid(*p);
    // x = 14 (row 8): dx = 4 < 2R, z = 10 - sqrt(9 - 4) = 10 - sqrt(5).
    EXPECT_NEAR(sliding(*p, 8, 6), 10 - std::sqrt(5.0), 1e-6);
    // dip_x = atan((dx / a^2) / sqrt(5)) = atan(1 / sqrt(5)).
    EXPECT_NEAR(p->surf_dip_x(8, 6), std::atan(1 / std::sqrt(5.0)), 1e-6);
    // The Y-Z section through the centre (row 6) is the circle of radius R.
    for (int col = 1; col <= 11; ++col) {
        const double dy = node_y(*p, col) - 5;
        if (std::fabs(dy) < 3)
            EXPECT_NEAR(sliding(*p, 6, col), 10 - std::sqrt(9 - dy * dy), 1e-6);
        else
            expect_outside(*p, 6, col);
    }
    // x = 16: dx = 6 = a * R, on the rim.
    expect_outside(*p, 9, 6);
    // x = 12 (dx = 2) with the sphere of the same radius would be at
    // sqrt(9 - 4); with a = 2 it is at sqrt(9 - 1).
    EXPECT_NEAR(sliding(*p, 7, 6), 10 - std::sqrt(8.0), 1e-6);
}

TEST(Ellipsoid, two_dimensional_centre_at_x_min_gives_circle_of_radius_r_whatever_aspect)
{
    for (double aspect : {1.0, 3.0, 0.5}) {
        auto p = make_project({1, 21, 0, 1, 0, 20});
        set_ground(*p, [](double, double) { return 20.0; });
        set_working(*p, {0, 10, 20, 6, aspect});
        build_ellipsoid(*p);
        for (int col = 1; col <= 21; ++col) {
            const double dy = node_y(*p, col) - 10;
            if (std::fabs(dy) < 6) {
                EXPECT_NEAR(sliding(*p, 1, col), 20 - std::sqrt(36 - dy * dy), 2e-6) << aspect;
                EXPECT_NEAR(p->surf_dip_y(1, col), std::atan(dy / std::sqrt(36 - dy * dy)), 2e-6);
            } else {
                expect_outside(*p, 1, col);
            }
            EXPECT_EQ(p->surf_dip_x(1, col), 0.0f);
        }
    }
}

TEST(Ellipsoid, two_dimensional_centre_off_the_section_gives_smaller_circle_same_centre_z)
{
    auto p = make_project({1, 21, 0, 1, 0, 20});
    set_ground(*p, [](double, double) { return 20.0; });
    // dx = 3, R = 5, a = 1: Rl = 4.
    set_working(*p, {3, 10, 20, 5, 1});
    build_ellipsoid(*p);
    for (int col = 1; col <= 21; ++col) {
        const double dy = node_y(*p, col) - 10;
        if (std::fabs(dy) < 4) {
            EXPECT_NEAR(sliding(*p, 1, col), 20 - std::sqrt(16 - dy * dy), 2e-6);
            EXPECT_NEAR(p->surf_dip_y(1, col), std::atan(dy / std::sqrt(16 - dy * dy)), 2e-6);
        } else {
            expect_outside(*p, 1, col);
        }
        EXPECT_EQ(p->surf_dip_x(1, col), 0.0f); // no X slope in two dimensions
    }
    EXPECT_EQ(sliding(*p, 1, 11), 16.0f);
}

TEST(Ellipsoid, zero_or_negative_radius_or_aspect_leaves_the_ground)
{
    for (auto [r, a] : {std::pair{0.0, 1.0}, {-4.0, 1.0}, {4.0, 0.0}, {4.0, -1.0}, {-4.0, -1.0}}) {
        auto p = make_project({});
        set_ground(*p, [](double x, double y) { return 10.0 + 0.1 * x + 0.2 * y; });
        set_working(*p, {5, 5, 10, r, a});
        build_ellipsoid(*p);
        for (int row = 1; row <= 11; ++row)
            for (int col = 1; col <= 11; ++col)
                expect_outside(*p, row, col);
    }
}

TEST(Ellipsoid, sets_centre_and_node_coordinates_but_not_kind_or_defined_flag)
{
    auto p = make_project({11, 11, 2, 12, -3, 7});
    set_ground(*p, [](double, double) { return 10.0; });
    p->surface_kind = 4;
    p->surface_defined = 0;
    set_working(*p, {7, 2, 10.5, 4, 1});
    build_ellipsoid(*p);
    EXPECT_EQ(p->centre_y, 2.0f);
    EXPECT_EQ(p->centre_z, 10.5f);
    EXPECT_EQ(p->surface_kind, 4);
    EXPECT_EQ(p->surface_defined, 0);
    // The scratch coordinates are those of the last node visited.
    EXPECT_EQ(p->cur_x, 12.0f);
    EXPECT_EQ(p->cur_y, 7.0f);
}

TEST(Ellipsoid, clears_discontinuity_codes_inside_and_outside)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 10.0; });
    p->disc_code.fill(3);
    set_working(*p, {5, 5, 10, 4, 1});
    build_ellipsoid(*p);
    EXPECT_EQ(p->disc_code(6, 6), 0);
    EXPECT_EQ(p->disc_code(1, 1), 0);
    EXPECT_EQ(p->disc_code(11, 11), 0);
}

TEST(Ellipsoid, clear_sliding_surface_zeroes_plane_dips_and_codes_only)
{
    auto p = make_project({});
    set_ground(*p, [](double, double) { return 10.0; });
    set_working(*p, {5, 5, 10, 4, 1});
    build_ellipsoid(*p);
    p->disc_code.fill(2);
    clear_sliding_surface(*p);
    for (int row = 1; row <= 11; ++row) {
        for (int col = 1; col <= 11; ++col) {
            EXPECT_EQ(sliding(*p, row, col), 0.0f);
            EXPECT_EQ(p->surf_dip_x(row, col), 0.0f);
            EXPECT_EQ(p->surf_dip_y(row, col), 0.0f);
            EXPECT_EQ(p->disc_code(row, col), 0);
            EXPECT_EQ(ground(*p, row, col), 10.0f);
        }
    }
}

TEST(Ellipsoid, x_slope_uses_cosine_of_stored_single_y_dip)
{
    // Where rounding the Y dip to single changes the stored X dip, the
    // stored value must be the one of the single Y dip.
    auto p = make_project({41, 41, 0, 7, 0, 9});
    set_ground(*p, [](double, double) { return 100.0; });
    const Shape s{3.25, 4.125, 50, 4.75, 1.25}; // exact in single
    set_working(*p, s);
    build_ellipsoid(*p);
    int differing = 0;
    for (int row = 1; row <= 41; ++row) {
        for (int col = 1; col <= 41; ++col) {
            const double x = double(float(node_x(*p, row))), y = double(float(node_y(*p, col)));
            if (!(s.inside(x, y) > 1e-3))
                continue;
            const double slope_x =
                (x - s.xc) / s.a / std::sqrt(s.a * s.a * s.r * s.r - (x - s.xc) * (x - s.xc));
            const double rl = s.r * std::sqrt(1 - (x - s.xc) * (x - s.xc) / (s.a * s.a * s.r * s.r));
            const double dip_y = std::atan((y - s.yc) / std::sqrt(rl * rl - (y - s.yc) * (y - s.yc)));
            const float with_single = float(std::atan(slope_x / std::cos(double(float(dip_y)))));
            const float with_double = float(std::atan(slope_x / std::cos(dip_y)));
            if (with_single != with_double && p->surf_dip_y(row, col) == float(dip_y)) {
                ++differing;
                EXPECT_EQ(p->surf_dip_x(row, col), with_single) << row << "," << col;
            }
        }
    }
    EXPECT_GT(differing, 0) << "no node tells the two cosines apart";
}

// The node loop in the order of the steps, one node at a time, nothing
// hoisted: the builder must agree with it bit for bit.
void reference_build(Project& p)
{
    const double a = p.ell_aspect, r = p.ell_radius, k = a * a * r * r;
    for (int row = 1; row <= p.num_rows; ++row) {
        for (int col = 1; col <= p.num_cols; ++col) {
            p.disc_code(row, col) = 0;
            p.cur_x = float(double(p.x_min) + (row - 1) * double(p.row_spacing));
            p.cur_y = float(double(p.y_min) + (col - 1) * double(p.col_spacing));
            const double dx = double(p.ell_x) - p.cur_x;
            const double dy = double(p.cur_y) - p.ell_y;
            bool outside = true;
            if (!(std::fabs(dx) >= r * a)) {
                const double rl = r * std::sqrt(1 - dx * dx / k);
                if (!(std::fabs(dy) >= rl)) {
                    p.zgrid(row, col, p.sliding_index) = float(p.ell_z - std::sqrt(rl * rl - dy * dy));
                    const double t = dy / rl;
                    p.surf_dip_y(row, col) = float(std::atan(t / std::sqrt(1 - t * t)));
                    p.surf_dip_x(row, col) = p.num_rows == 1
                                                 ? 0.0f
                                                 : float(std::atan(((-dx) / a / std::sqrt(k - dx * dx)) /
                                                                   std::cos(double(p.surf_dip_y(row, col)))));
                    outside = !(p.zgrid(row, col, p.sliding_index) < p.zgrid(row, col, p.num_layers));
                }
            }
            if (outside) {
                p.zgrid(row, col, p.sliding_index) = p.zgrid(row, col, p.num_layers);
                p.surf_dip_x(row, col) = 0;
                p.surf_dip_y(row, col) = 0;
            }
        }
    }
}

TEST(Ellipsoid, agrees_bit_for_bit_with_node_by_node_evaluation)
{
    const MeshSpec m{63, 57, -3.7f, 41.3f, 12.1f, 77.9f};
    auto fast = make_project(m);
    auto slow = make_project(m);
    const auto g = [](double x, double y) { return 30.0 + 0.13 * x - 0.07 * y + std::sin(x * 0.3) * 2.0; };
    set_ground(*fast, g);
    set_ground(*slow, g);
    for (Project* p : {fast.get(), slow.get()}) {
        p->ell_x = 17.3f;
        p->ell_y = 44.2f;
        p->ell_z = 41.9f;
        p->ell_radius = 23.3f;
        p->ell_aspect = 1.7f;
    }
    build_ellipsoid(*fast);
    reference_build(*slow);
    EXPECT_EQ(fast->zgrid.v, slow->zgrid.v);
    EXPECT_EQ(fast->surf_dip_x.v, slow->surf_dip_x.v);
    EXPECT_EQ(fast->surf_dip_y.v, slow->surf_dip_y.v);
    EXPECT_EQ(fast->disc_code.v, slow->disc_code.v);
    EXPECT_EQ(fast->cur_x, slow->cur_x);
    EXPECT_EQ(fast->cur_y, slow->cur_y);
}

} // namespace
} // namespace tobel::test
