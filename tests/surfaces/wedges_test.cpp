// Wedge and composite surfaces: the envelope of planes and the wedge form.
// Expected values come from the plane equations worked out in the tests, with
// the angle conversions of the system (3.14 for degrees, 3.1415 / 2 for the
// quarter turn of the X direction cosine).
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/wedge_form.h"
#include "commands/menu_model.h"
#include "support/scripted_port.h"
#include "surface_fixture.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/wedges.h"

namespace tobel::test {
namespace {

void set_plane(Project& p, int w, float x, float y, float z, float dip, float dipdir, float code)
{
    const std::size_t k = std::size_t(w);
    p.wedge_x[k] = x;
    p.wedge_y[k] = y;
    p.wedge_z[k] = z;
    p.wedge_dip[k] = dip;
    p.wedge_dipdir[k] = dipdir;
    p.wedge_code[k] = code;
}

// Degrees to radians as the builder holds them: 3.14 / 180, kept in single.
double rad(double degrees)
{
    return double(float(degrees * 3.14 / 180.0));
}

TEST(BuildWedges, dip_zero_plane_is_flat_at_its_z_and_reduced_to_lower_ground)
{
    auto p = make_project({3, 5, 0, 10, 0, 20}); // spacings 5 and 5
    // Ground 12 up to y = 10, 3 beyond.
    set_ground(*p, [](double, double y) { return y <= 10.0 ? 12.0 : 3.0; });
    p->surface_kind = 2;
    p->num_wedges = 1;
    set_plane(*p, 1, 4, 7, 5, 0, 0, 2);
    build_wedges(*p);
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 5; ++col) {
            const float expected = col <= 3 ? 5.0f : 3.0f;
            EXPECT_EQ(sliding(*p, row, col), expected) << row << "," << col;
            EXPECT_EQ(p->surf_dip_x(row, col), 0.0f);
            EXPECT_EQ(p->surf_dip_y(row, col), 0.0f);
            // The code stays on the nodes reduced to ground too.
            EXPECT_EQ(p->disc_code(row, col), 2) << row << "," << col;
        }
    }
}

TEST(BuildWedges, no_planes_on_a_wedge_surface_leave_every_node_at_minus_1e8)
{
    auto p = make_project({3, 4, 0, 10, 0, 30});
    set_ground(*p, [](double, double) { return 50.0; });
    p->surface_kind = 2;
    p->num_wedges = 0;
    build_wedges(*p);
    for (int row = 1; row <= 3; ++row)
        for (int col = 1; col <= 4; ++col)
            EXPECT_EQ(sliding(*p, row, col), -100000000.0f);
}

TEST(BuildWedges, composite_plane_below_the_ellipsoid_changes_nothing)
{
    auto p = make_project({5, 11, 0, 20, 0, 50}); // spacings 5 and 5
    set_ground(*p, [](double, double) { return 40.0; });
    p->ell_x = 10;
    p->ell_y = 25;
    p->ell_z = 50;
    p->ell_radius = 20;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    const Grid3 plane_before = p->zgrid;
    const auto dip_x_before = p->surf_dip_x.v;
    const auto dip_y_before = p->surf_dip_y.v;
    // The ellipsoid's lowest point is 30; a flat plane at 29 lies under it.
    p->surface_kind = 3;
    p->num_wedges = 1;
    set_plane(*p, 1, 0, 0, 29, 0, 0, 4);
    build_wedges(*p);
    EXPECT_EQ(p->zgrid.v, plane_before.v);
    EXPECT_EQ(p->surf_dip_x.v, dip_x_before);
    EXPECT_EQ(p->surf_dip_y.v, dip_y_before);
    for (int row = 1; row <= 5; ++row)
        for (int col = 1; col <= 11; ++col)
            EXPECT_EQ(p->disc_code(row, col), 0);
}

TEST(BuildWedges, composite_plane_takes_only_the_nodes_where_it_is_higher)
{
    auto p = make_project({1, 11, 0, 1, 0, 50}); // 2-D, col spacing 5
    set_ground(*p, [](double, double) { return 40.0; });
    p->ell_x = 0;
    p->ell_y = 25;
    p->ell_z = 50;
    p->ell_radius = 20;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    // Circle z = 50 - sqrt(400 - (y - 25)^2): 30 at y = 25, 34 at y = 13 and 37.
    p->surface_kind = 3;
    p->num_wedges = 1;
    set_plane(*p, 1, 0, 0, 33, 0, 0, 1);
    build_wedges(*p);
    // y = 20, 25, 30: the circle is at 50 - sqrt(375) = 30.635, 30 and 30.635.
    for (int col : {5, 6, 7}) {
        EXPECT_EQ(sliding(*p, 1, col), 33.0f) << col;
        EXPECT_EQ(p->disc_code(1, col), 1);
        EXPECT_EQ(p->surf_dip_y(1, col), 0.0f);
    }
    // y = 15: the circle is at 50 - sqrt(300) = 32.679, under the plane too.
    EXPECT_EQ(sliding(*p, 1, 4), 33.0f);
    // y = 10: 50 - sqrt(175) = 36.771 stays, with the circle's own dip and no code.
    EXPECT_NEAR(sliding(*p, 1, 3), 50.0 - std::sqrt(175.0), 1e-5);
    EXPECT_EQ(p->disc_code(1, 3), 0);
    EXPECT_NEAR(p->surf_dip_y(1, 3), std::atan(-15.0 / std::sqrt(175.0)), 1e-6);
}

TEST(BuildWedges, two_d_has_no_x_dip_but_the_x_term_is_applied_at_x_min)
{
    // 2-D mesh at x = 3. A plane dipping 20 degrees toward +X through
    // (0, 0, 10) stands lower at x = 3 by 3 tan(ax).
    auto p = make_project({1, 5, 3, 4, 0, 20});
    set_ground(*p, [](double, double) { return 100.0; });
    p->surface_kind = 2;
    p->num_wedges = 1;
    set_plane(*p, 1, 0, 0, 10, 20, 90, 0);
    build_wedges(*p);
    const double dd = rad(90);
    const double tan_d = std::tan(rad(20));
    const double ax = std::atan(tan_d * std::cos(1.57075 - dd));
    const double ay = std::atan(tan_d * std::cos(dd));
    for (int col = 1; col <= 5; ++col) {
        const double y = (col - 1) * 5.0;
        const double z = 10.0 - 3.0 * std::tan(ax) - (0.0 - y) * std::tan(ay);
        EXPECT_NEAR(sliding(*p, 1, col), z, 1e-5) << col;
        EXPECT_EQ(p->surf_dip_x(1, col), 0.0f);
        EXPECT_FLOAT_EQ(p->surf_dip_y(1, col), float(ay));
    }
    // The X term is about 3 tan 20 = 1.09 and is not lost.
    EXPECT_LT(sliding(*p, 1, 1), 10.0f - 1.0f);
}

TEST(BuildWedges, dip_direction_zero_rises_toward_plus_y_with_the_degree_factor_of_3_14)
{
    auto p = make_project({3, 5, 0, 10, 0, 20}); // spacings 5 and 5
    set_ground(*p, [](double, double) { return 100.0; });
    p->surface_kind = 2;
    p->num_wedges = 1;
    set_plane(*p, 1, 5, 10, 20, 30, 0, 0);
    build_wedges(*p);
    // dip = 30 * 3.14 / 180 = 0.5233333; ay = atan(tan(dip) * cos 0) = dip.
    const double dip = rad(30);
    EXPECT_NEAR(dip, 0.5233333, 1e-7);
    const double ay = std::atan(std::tan(dip) * std::cos(0.0));
    // The X cosine is cos(1.57075) = sin(pi / 2 - 1.57075) = 4.6326795e-5, not 0.
    const double ax = std::atan(std::tan(dip) * 4.6326795e-5);
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 5; ++col) {
            const double x = (row - 1) * 5.0, y = (col - 1) * 5.0;
            const double z = 20.0 - (x - 5.0) * std::tan(ax) - (10.0 - y) * std::tan(ay);
            EXPECT_NEAR(sliding(*p, row, col), z, 2e-5) << row << "," << col;
            EXPECT_FLOAT_EQ(p->surf_dip_y(row, col), float(ay));
            EXPECT_NEAR(p->surf_dip_x(row, col), ax, 1e-9);
        }
    }
    // Rising toward +Y by tan(0.5233333) = 0.576996 per unit, not tan 30 = 0.577350.
    const double rise = (sliding(*p, 2, 5) - sliding(*p, 2, 1)) / 20.0;
    EXPECT_NEAR(rise, 0.576996, 2e-6);
    EXPECT_GT(p->surf_dip_x(1, 1), 0.0f);
}

TEST(BuildWedges, dip_direction_ninety_tilts_along_x)
{
    auto p = make_project({5, 5, 0, 20, 0, 20}); // spacings 5 and 5
    set_ground(*p, [](double, double) { return 100.0; });
    p->surface_kind = 2;
    p->num_wedges = 1;
    set_plane(*p, 1, 10, 10, 20, 45, 90, 0);
    build_wedges(*p);
    const double dip = rad(45);
    const double dd = rad(90);
    // cos(1.57075 - 1.57) is next to 1, cos(1.57) = 7.9633e-4.
    const double ax = std::atan(std::tan(dip) * std::cos(1.57075 - dd));
    const double ay = std::atan(std::tan(dip) * std::cos(dd));
    EXPECT_NEAR(std::cos(dd), 7.9633e-4, 1e-7);
    EXPECT_NEAR(p->surf_dip_x(3, 3), ax, 1e-6);
    EXPECT_NEAR(p->surf_dip_x(3, 3), dip, 1e-6);
    EXPECT_NEAR(p->surf_dip_y(3, 3), ay, 1e-7);
    // Falling toward +X by tan(0.785) = 0.99920 per unit.
    const double fall = (sliding(*p, 1, 3) - sliding(*p, 5, 3)) / 20.0;
    EXPECT_NEAR(fall, std::tan(0.785), 1e-5);
    for (int row = 1; row <= 5; ++row) {
        const double x = (row - 1) * 5.0;
        for (int col = 1; col <= 5; ++col) {
            const double y = (col - 1) * 5.0;
            const double z = 20.0 - (x - 10.0) * std::tan(ax) - (10.0 - y) * std::tan(ay);
            EXPECT_NEAR(sliding(*p, row, col), z, 2e-5) << row << "," << col;
        }
    }
}

TEST(BuildWedges, later_plane_wins_a_tie)
{
    // 2-D at x = 0: plane 1 flat at 5, plane 2 rising along +Y through
    // (0, 10, 5). They meet exactly at y = 10.
    auto p = make_project({1, 5, 0, 1, 0, 20}); // col spacing 5
    set_ground(*p, [](double, double) { return 100.0; });
    p->surface_kind = 2;
    p->num_wedges = 2;
    set_plane(*p, 1, 0, 0, 5, 0, 0, 1);
    set_plane(*p, 2, 0, 10, 5, 45, 0, 2);
    build_wedges(*p);
    EXPECT_EQ(p->disc_code(1, 1), 1);
    EXPECT_EQ(p->disc_code(1, 2), 1);
    EXPECT_EQ(sliding(*p, 1, 3), 5.0f);
    EXPECT_EQ(p->disc_code(1, 3), 2); // the tie
    EXPECT_FLOAT_EQ(p->surf_dip_y(1, 3), float(rad(45)));
    EXPECT_EQ(p->disc_code(1, 4), 2);
    EXPECT_NEAR(sliding(*p, 1, 5), 5.0 + 10.0 * std::tan(rad(45)), 1e-5);

    // Two identical planes: the second takes every node.
    p->num_wedges = 2;
    set_plane(*p, 2, 0, 0, 5, 0, 0, 3);
    build_wedges(*p);
    for (int col = 1; col <= 5; ++col)
        EXPECT_EQ(p->disc_code(1, col), 3);
}

TEST(BuildWedges, plane_above_ground_marks_ground_nodes_and_the_next_plane_meets_the_ground)
{
    auto p = make_project({2, 3, 0, 1, 0, 2});
    set_ground(*p, [](double, double) { return 10.0; });
    p->surface_kind = 2;
    p->num_wedges = 2;
    set_plane(*p, 1, 0, 0, 100, 0, 0, 1);  // all above ground
    set_plane(*p, 2, 0, 0, 9.5f, 0, 0, 2); // under ground, but under the reduced plane too
    build_wedges(*p);
    for (int row = 1; row <= 2; ++row)
        for (int col = 1; col <= 3; ++col) {
            EXPECT_EQ(sliding(*p, row, col), 10.0f);
            EXPECT_EQ(p->disc_code(row, col), 1);
        }
    set_plane(*p, 2, 0, 0, 10, 0, 0, 2); // level with the ground: a tie
    build_wedges(*p);
    for (int row = 1; row <= 2; ++row)
        for (int col = 1; col <= 3; ++col)
            EXPECT_EQ(p->disc_code(row, col), 2);
}

TEST(BuildWedges, code_is_rounded_half_to_even)
{
    auto p = make_project({1, 2, 0, 1, 0, 1});
    set_ground(*p, [](double, double) { return 10.0; });
    p->surface_kind = 2;
    p->num_wedges = 1;
    set_plane(*p, 1, 0, 0, 5, 0, 0, 2.5f);
    build_wedges(*p);
    EXPECT_EQ(p->disc_code(1, 1), 2);
    set_plane(*p, 1, 0, 0, 5, 0, 0, 3.5f);
    build_wedges(*p);
    EXPECT_EQ(p->disc_code(1, 1), 4);
}

// ---- The wedge form ----

std::unique_ptr<Project> form_project(int rows = 3)
{
    auto p = make_project({rows, 5, 0, rows > 1 ? 10.0f : 1.0f, 0, 20});
    set_ground(*p, [](double, double y) { return 10.0 + y; });
    p->unit_weight_water = 9.81f;
    return p;
}

TEST(WedgeForm, opens_on_a_copy_of_the_planes)
{
    auto p = form_project();
    p->num_wedges = 2;
    set_plane(*p, 1, 1, 2, 3, 4, 5, 6);
    set_plane(*p, 2, 7, 8, 9, 10, 11, 12);
    WedgeForm f = open_wedge_form(*p);
    ASSERT_EQ(f.count(), 2);
    EXPECT_EQ(f.rows[0], (WedgeRow{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(f.rows[1], (WedgeRow{7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(f.row, 1);
    EXPECT_EQ(f.col, 1);
    EXPECT_EQ(f.max_wedges, 10);
    f.cell(1, wedge_col_z) = 99;
    EXPECT_EQ(p->wedge_z[1], 3.0f);
}

TEST(WedgeForm, limit_message_has_the_number_in_signed_form)
{
    EXPECT_EQ(wedge_limit_message(10), "Only  10 wedge surfaces allowed.");
}

TEST(WedgeForm, add_appends_a_cleared_row_until_the_limit)
{
    auto p = form_project();
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    for (int i = 1; i <= 10; ++i)
        EXPECT_TRUE(wedge_form_add_row(f, port));
    EXPECT_EQ(f.count(), 10);
    EXPECT_EQ(f.row, 10);
    EXPECT_EQ(f.rows[9], WedgeRow{});
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_FALSE(wedge_form_add_row(f, port));
    EXPECT_EQ(f.count(), 10);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  10 wedge surfaces allowed.");
}

TEST(WedgeForm, delete_removes_the_current_row_and_moves_the_rest_up)
{
    auto p = form_project();
    p->num_wedges = 3;
    set_plane(*p, 1, 1, 0, 0, 0, 0, 0);
    set_plane(*p, 2, 2, 0, 0, 0, 0, 0);
    set_plane(*p, 3, 3, 0, 0, 0, 0, 0);
    WedgeForm f = open_wedge_form(*p);
    f.row = 2;
    wedge_form_delete_row(f);
    ASSERT_EQ(f.count(), 2);
    EXPECT_EQ(f.cell(1, wedge_col_x), 1.0f);
    EXPECT_EQ(f.cell(2, wedge_col_x), 3.0f);
    f.row = 2;
    wedge_form_delete_row(f);
    EXPECT_EQ(f.count(), 1);
    EXPECT_EQ(f.row, 1);
    wedge_form_delete_row(f);
    EXPECT_EQ(f.count(), 0);
    wedge_form_delete_row(f); // nothing left: nothing happens
    EXPECT_EQ(f.count(), 0);
}

TEST(WedgeForm, keys_move_through_the_grid_and_tab_wraps_to_the_next_row)
{
    auto p = form_project();
    p->num_wedges = 2;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_key(f, WedgeKey::left, port);
    wedge_form_key(f, WedgeKey::up, port);
    EXPECT_EQ(f.row, 1);
    EXPECT_EQ(f.col, 1);
    for (int i = 0; i < 7; ++i)
        wedge_form_key(f, WedgeKey::right, port);
    EXPECT_EQ(f.col, 6);
    wedge_form_key(f, WedgeKey::tab, port);
    EXPECT_EQ(f.row, 2);
    EXPECT_EQ(f.col, 1);
    wedge_form_key(f, WedgeKey::enter, port);
    EXPECT_EQ(f.col, 2);
    wedge_form_key(f, WedgeKey::up, port);
    EXPECT_EQ(f.row, 1);
    wedge_form_key(f, WedgeKey::down, port);
    EXPECT_EQ(f.row, 2);
    EXPECT_EQ(f.count(), 2);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(WedgeForm, moving_down_past_the_last_row_adds_one_or_at_the_limit_says_so)
{
    auto p = form_project();
    p->num_wedges = 1;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_key(f, WedgeKey::down, port);
    EXPECT_EQ(f.count(), 2);
    EXPECT_EQ(f.row, 2);

    p->num_wedges = 10;
    WedgeForm full = open_wedge_form(*p);
    full.row = 10;
    full.col = 6;
    wedge_form_key(full, WedgeKey::down, port);
    wedge_form_key(full, WedgeKey::tab, port);
    EXPECT_EQ(full.count(), 10);
    EXPECT_EQ(full.row, 10);
    EXPECT_EQ(full.col, 6);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text, "Only  10 wedge surfaces allowed.");
    EXPECT_EQ(port.boxes[1].text, "Only  10 wedge surfaces allowed.");
    EXPECT_EQ(full.top_row, 3); // eight rows in view, the current one among them
}

TEST(WedgeForm, cells_take_the_leading_number_of_the_text)
{
    auto p = form_project();
    p->num_wedges = 1;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_enter(f, 1, wedge_col_dip, "35.5deg");
    wedge_form_enter(f, 1, wedge_col_dipdir, "-12");
    wedge_form_enter(f, 1, wedge_col_code, "x");
    wedge_form_enter(f, 2, wedge_col_x, "7"); // no such row
    EXPECT_EQ(f.cell(1, wedge_col_dip), 35.5f);
    EXPECT_EQ(f.cell(1, wedge_col_dipdir), -12.0f);
    EXPECT_EQ(f.cell(1, wedge_col_code), 0.0f);
    EXPECT_EQ(f.count(), 1);
    EXPECT_TRUE(wedge_form_accepts("", '-'));
    EXPECT_FALSE(wedge_form_accepts("3", '-'));
    EXPECT_FALSE(wedge_form_accepts("3.1", '.'));
    EXPECT_TRUE(wedge_form_accepts("3", '9'));
}

TEST(WedgeForm, continue_builds_a_wedge_surface_and_shows_single_trial)
{
    auto p = form_project();
    p->surface_kind = 3; // a stale kind: a plain wedge starts over
    p->form_mode = 0;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_add_row(f, port);
    f.rows[0] = WedgeRow{0, 0, 12, 0, 0, 1};
    continue_wedge_form(*p, f, port);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_EQ(p->surface_kind, 2);
    EXPECT_EQ(p->num_wedges, 1);
    EXPECT_EQ(p->wedge_z[1], 12.0f);
    EXPECT_EQ(p->wedge_code[1], 1.0f);
    EXPECT_EQ(p->form_mode, 0);
    // Ground 10 + y: the plane at 12 is under it from y = 5 on.
    EXPECT_EQ(sliding(*p, 2, 1), 10.0f);
    EXPECT_EQ(sliding(*p, 2, 2), 12.0f);
    EXPECT_EQ(sliding(*p, 2, 5), 12.0f);
    EXPECT_EQ(p->disc_code(2, 1), 1);
    EXPECT_TRUE(p->menus.at("Solve").visible);
    EXPECT_TRUE(p->menus.at("Solve_single_trial").visible);
    EXPECT_FALSE(p->menus.at("gridsearchsolv").visible);
    EXPECT_FALSE(p->menus.at("autosearchsolv").visible);
    EXPECT_TRUE(p->menus.at("Rotation_angle").visible);
    EXPECT_EQ(p->no_slide, 0);
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().first, 5);
}

TEST(WedgeForm, continue_in_two_d_keeps_rotation_and_draws_the_section)
{
    auto p = form_project(1);
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_add_row(f, port);
    f.rows[0] = WedgeRow{0, 0, 12, 0, 0, 0};
    continue_wedge_form(*p, f, port);
    EXPECT_TRUE(p->menus.at("Rotation_angle").visible);
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back(), (std::pair<int, std::string>(1, "LONGITUDINAL SECTION")));
}

// Composite: the ellipsoid of the first form survives where the plane is lower.
std::unique_ptr<Project> composite_project()
{
    auto p = make_project({1, 11, 0, 1, 0, 50}); // 2-D, col spacing 5
    set_ground(*p, [](double, double) { return 40.0; });
    p->unit_weight_water = 9.81f;
    p->ell_x = 0;
    p->ell_y = 25;
    p->ell_z = 50;
    p->ell_radius = 20;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    return p;
}

TEST(WedgeForm, single_composite_keeps_the_ellipsoid_under_the_planes)
{
    auto p = composite_project();
    p->surface_kind = 3;
    p->form_mode = 3;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_add_row(f, port);
    f.rows[0] = WedgeRow{0, 0, 33, 0, 0, 1};
    continue_wedge_form(*p, f, port);
    EXPECT_EQ(p->surface_kind, 3);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(sliding(*p, 1, 6), 33.0f);
    EXPECT_NEAR(sliding(*p, 1, 3), 50.0 - std::sqrt(175.0), 1e-5); // the ellipsoid
    EXPECT_TRUE(p->menus.at("Solve_single_trial").visible);
    EXPECT_TRUE(p->menus.at("Rotation_angle").visible);
}

TEST(WedgeForm, composite_general_gives_kind_five)
{
    auto p = composite_project();
    p->surface_kind = 4;
    p->form_mode = 4;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    continue_wedge_form(*p, f, port);
    EXPECT_EQ(p->surface_kind, 5);
    EXPECT_EQ(p->num_wedges, 0);
    EXPECT_NEAR(sliding(*p, 1, 6), 30.0, 1e-6); // untouched, not -1E+8
}

TEST(WedgeForm, composite_searches_show_their_search_item_only)
{
    for (int mode : {5, 6}) {
        auto p = composite_project();
        p->surface_kind = 1;
        p->form_mode = int16(mode);
        ScriptedPort port;
        WedgeForm f = open_wedge_form(*p);
        continue_wedge_form(*p, f, port);
        EXPECT_EQ(p->surface_kind, 3) << mode;
        EXPECT_FALSE(p->menus.at("Solve_single_trial").visible);
        EXPECT_EQ(p->menus.at("gridsearchsolv").visible, mode == 5);
        EXPECT_EQ(p->menus.at("autosearchsolv").visible, mode == 6);
        EXPECT_FALSE(p->menus.at("Rotation_angle").visible);
        EXPECT_EQ(p->form_mode, 0);
        ASSERT_FALSE(port.views.empty());
        EXPECT_EQ(port.views.back().second, mode == 5 ? "COMPOSITE GRID-SEARCH" : "COMPOSITE AUTO-SEARCH");
    }
}

TEST(WedgeForm, continue_runs_the_moment_centre_on_the_wedge)
{
    // A single dipping plane: the centre is built from its ends and middle,
    // so it moves away from the stale value.
    auto p = form_project();
    p->centre_y = -777;
    p->centre_z = -777;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    wedge_form_add_row(f, port);
    f.rows[0] = WedgeRow{0, 10, 12, 10, 0, 0};
    continue_wedge_form(*p, f, port);
    EXPECT_EQ(p->no_slide, 0);
    EXPECT_NE(p->centre_y, -777.0f);
}

TEST(WedgeForm, cancel_clears_form_mode_and_keeps_the_stored_planes)
{
    auto p = form_project();
    p->num_wedges = 1;
    set_plane(*p, 1, 1, 2, 3, 4, 5, 6);
    p->form_mode = 3;
    ScriptedPort port;
    WedgeForm f = open_wedge_form(*p);
    f.cell(1, wedge_col_x) = 50;
    cancel_wedge_form(*p);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->wedge_x[1], 1.0f);
    EXPECT_EQ(p->num_wedges, 1);
}

} // namespace
} // namespace tobel::test
