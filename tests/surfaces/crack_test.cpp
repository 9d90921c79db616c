#include <gtest/gtest.h>

#include <cmath>

#include "surface_fixture.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"

namespace tobel::test {
namespace {

// A slide of three rows along Y: ground at 10; the plane 2 deep at col 1,
// 4 deep at cols 2 to 9, on the ground at cols 10 and 11.
std::unique_ptr<Project> trough(int rows = 3)
{
    auto p = make_project({rows, 11, 0, float(rows > 1 ? rows - 1 : 1), 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    for (int row = 1; row <= rows; ++row) {
        p->zgrid(row, 1, p->sliding_index) = 8.0f;
        for (int col = 2; col <= 9; ++col)
            p->zgrid(row, col, p->sliding_index) = 6.0f;
        p->zgrid(row, 10, p->sliding_index) = 10.0f;
        p->zgrid(row, 11, p->sliding_index) = 10.0f;
    }
    p->unit_weight_water = 9.81f;
    return p;
}

TEST(ApplyCrack, no_crack_clears_the_thrusts_and_keeps_the_plane)
{
    auto p = trough();
    p->crack_mode = 0;
    for (int row = 1; row <= 3; ++row) {
        p->crack_water_force[std::size_t(row)] = 7;
        p->crack_water_z[std::size_t(row)] = 8;
    }
    const auto before = p->zgrid.v;
    apply_crack(*p);
    for (int row = 1; row <= 3; ++row) {
        EXPECT_EQ(p->crack_water_force[std::size_t(row)], 0.0f);
        EXPECT_EQ(p->crack_water_z[std::size_t(row)], 0.0f);
    }
    EXPECT_EQ(p->zgrid.v, before);
    EXPECT_EQ(p->surface_lifted, 0);
}

TEST(ApplyCrack, crack_by_y_cuts_from_the_node_whose_column_edge_reaches_it)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = 6.5f; // col 7 has its head edge at y = 7
    p->crack_water_pct = 100;
    apply_crack(*p);
    for (int row = 1; row <= 3; ++row) {
        for (int col = 2; col <= 6; ++col)
            EXPECT_EQ(sliding(*p, row, col), 6.0f);
        for (int col = 7; col <= 11; ++col)
            EXPECT_EQ(sliding(*p, row, col), 10.0f);
        // Depth 4 at col 6, full of water: h = 4, 16 * 1 * 9.81 / 2.
        EXPECT_FLOAT_EQ(p->crack_water_force[std::size_t(row)], 16.0f * 9.81f / 2.0f);
        EXPECT_FLOAT_EQ(p->crack_water_z[std::size_t(row)], 6.0f + 4.0f / 3.0f);
    }
}

TEST(ApplyCrack, crack_on_a_column_edge_cuts_that_column)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = 5; // the edge of col 5 is at y = 5 exactly
    p->crack_water_pct = 50;
    apply_crack(*p);
    EXPECT_EQ(sliding(*p, 2, 4), 6.0f);
    EXPECT_EQ(sliding(*p, 2, 5), 10.0f);
    // h = 2 at col 4: 4 * 9.81 / 2, at 6 + 2/3.
    EXPECT_FLOAT_EQ(p->crack_water_force[2], 4.0f * 9.81f / 2.0f);
    EXPECT_FLOAT_EQ(p->crack_water_z[2], 6.0f + 2.0f / 3.0f);
}

TEST(ApplyCrack, crack_at_third_node_edge_exactly_cuts_from_col_two)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = p->y_min + 2 * p->col_spacing;
    p->crack_water_pct = 50;
    apply_crack(*p);
    for (int row = 1; row <= 3; ++row) {
        EXPECT_EQ(sliding(*p, row, 1), 8.0f);
        for (int col = 2; col <= 11; ++col)
            EXPECT_EQ(sliding(*p, row, col), 10.0f);
        // The water stands in col 1, 2 deep, half full: h = 1.
        EXPECT_FLOAT_EQ(p->crack_water_force[std::size_t(row)], 9.81f / 2.0f);
        EXPECT_FLOAT_EQ(p->crack_water_z[std::size_t(row)], 8.0f + 1.0f / 3.0f);
    }
}

TEST(ApplyCrack, crack_in_front_of_third_node_does_nothing)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = 1.99f;
    p->crack_water_pct = 50;
    p->crack_water_force[1] = 123;
    p->crack_water_z[1] = 4;
    const auto before = p->zgrid.v;
    apply_crack(*p);
    EXPECT_EQ(p->zgrid.v, before);
    EXPECT_EQ(p->crack_water_force[1], 123.0f);
    EXPECT_EQ(p->crack_water_z[1], 4.0f);
}

TEST(ApplyCrack, dry_crack_gives_no_force_but_the_base_of_the_crack)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = 8;
    p->crack_water_pct = 0;
    p->crack_water_force[1] = 55;
    apply_crack(*p);
    EXPECT_EQ(sliding(*p, 1, 8), 10.0f);
    EXPECT_EQ(sliding(*p, 1, 7), 6.0f);
    EXPECT_EQ(p->crack_water_force[1], 0.0f);
    EXPECT_EQ(p->crack_water_z[1], 6.0f);
}

TEST(ApplyCrack, row_without_a_cut_node_keeps_its_thrust)
{
    auto p = trough();
    p->crack_mode = 1;
    p->crack_y = 50; // beyond every column edge
    p->crack_water_pct = 100;
    p->crack_water_force[2] = 9;
    const auto before = p->zgrid.v;
    apply_crack(*p);
    EXPECT_EQ(p->zgrid.v, before);
    EXPECT_EQ(p->crack_water_force[2], 9.0f);
}

TEST(ApplyCrack, crack_by_depth_found_from_the_head_of_the_middle_row)
{
    auto p = trough();
    p->crack_mode = 2;
    p->crack_depth = 3;
    p->crack_water_pct = 100;
    apply_crack(*p);
    // From col 11 down, col 9 is the first deeper than 3: crack at y = 9.
    EXPECT_EQ(p->crack_y, 9.0f);
    EXPECT_EQ(sliding(*p, 1, 8), 6.0f);
    EXPECT_EQ(sliding(*p, 1, 9), 10.0f);
    EXPECT_FLOAT_EQ(p->crack_water_force[1], 16.0f * 9.81f / 2.0f);
    EXPECT_EQ(p->message_count, 0);
}

TEST(ApplyCrack, middle_row_rounds_half_to_even)
{
    // Six rows over x 0..5: (5 / 1) / 2 = 2.5, which rounds to row 2.
    auto p = make_project({6, 11, 0, 5, 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    for (int col = 2; col <= 5; ++col)
        p->zgrid(2, col, p->sliding_index) = 5.0f; // row 2: deeper than 3 up to col 5
    for (int col = 2; col <= 8; ++col)
        p->zgrid(3, col, p->sliding_index) = 5.0f; // row 3: up to col 8
    p->crack_mode = 2;
    p->crack_depth = 3;
    apply_crack(*p);
    EXPECT_EQ(p->crack_y, 5.0f);
}

TEST(ApplyCrack, middle_row_of_five_rows_is_row_two)
{
    // (4 / 1) / 2 = 2 exactly.
    auto p = make_project({5, 11, 0, 4, 0, 10});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    for (int col = 2; col <= 6; ++col)
        p->zgrid(2, col, p->sliding_index) = 5.0f;
    for (int col = 2; col <= 8; ++col)
        p->zgrid(3, col, p->sliding_index) = 5.0f;
    p->crack_mode = 2;
    p->crack_depth = 3;
    apply_crack(*p);
    EXPECT_EQ(p->crack_y, 6.0f);
}

TEST(ApplyCrack, middle_row_of_the_default_mesh_is_row_24)
{
    // 100 / (100 / 49 in single) is 49 in single: 24.5, to even 24.
    auto p = make_project({50, 50, 0, 100, 0, 100});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 10.0; });
    for (int col = 2; col <= 10; ++col)
        p->zgrid(24, col, p->sliding_index) = 5.0f;
    for (int col = 2; col <= 20; ++col)
        p->zgrid(25, col, p->sliding_index) = 5.0f;
    p->crack_mode = 2;
    p->crack_depth = 3;
    apply_crack(*p);
    EXPECT_EQ(p->crack_y, 10.0f * p->col_spacing);
    EXPECT_EQ(sliding(*p, 24, 9), 5.0f);
    EXPECT_EQ(sliding(*p, 24, 10), 10.0f);
}

TEST(ApplyCrack, crack_deeper_than_the_slide_reports_and_keeps_old_crack_y)
{
    auto p = trough();
    p->crack_mode = 2;
    p->crack_depth = 4; // nowhere deeper than 4
    p->crack_y = 6.5f;
    p->crack_water_pct = 100;
    apply_crack(*p);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "TENSION CRACK SPECIFIED TOO DEEP");
    EXPECT_EQ(p->crack_y, 6.5f);
    EXPECT_EQ(sliding(*p, 1, 6), 6.0f);
    EXPECT_EQ(sliding(*p, 1, 7), 10.0f);
}

TEST(ApplyCrack, too_deep_crack_in_a_new_project_ends_after_the_message)
{
    auto p = trough();
    p->crack_mode = 2;
    p->crack_depth = 20;
    p->crack_y = 0;
    p->crack_water_force[1] = 3;
    const auto before = p->zgrid.v;
    apply_crack(*p);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "TENSION CRACK SPECIFIED TOO DEEP");
    EXPECT_EQ(p->zgrid.v, before);
    EXPECT_EQ(p->crack_water_force[1], 3.0f);
}

TEST(ApplyCrack, two_dimensional_crack_uses_row_one_and_unit_width)
{
    auto p = trough(1);
    ASSERT_EQ(p->row_spacing, 1.0f);
    p->crack_mode = 2;
    p->crack_depth = 3;
    p->crack_water_pct = 50;
    p->unit_weight_water = 62.4f;
    apply_crack(*p);
    EXPECT_EQ(p->message_count, 0);
    EXPECT_EQ(p->crack_y, 9.0f);
    EXPECT_EQ(sliding(*p, 1, 9), 10.0f);
    // h = 2: 4 * 1 * 62.4 / 2 per unit width.
    EXPECT_FLOAT_EQ(p->crack_water_force[1], 4.0f * 62.4f / 2.0f);
    EXPECT_FLOAT_EQ(p->crack_water_z[1], 6.0f + 2.0f / 3.0f);
}

TEST(ApplyCrack, force_scales_with_row_spacing)
{
    auto p = make_project({3, 11, 0, 5, 0, 10}); // row spacing 2.5
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, p->sliding_index, [](double, double) { return 6.0; });
    p->unit_weight_water = 9.81f;
    p->crack_mode = 1;
    p->crack_y = 4;
    p->crack_water_pct = 25; // h = 1
    apply_crack(*p);
    EXPECT_FLOAT_EQ(p->crack_water_force[3], 2.5f * 9.81f / 2.0f);
}

// Two layers: the lower one's top at 7 under a slide whose plane is at 6.
std::unique_ptr<Project> over_hard_layer(float phi)
{
    auto p = make_project({3, 11, 0, 2, 0, 10, 2});
    set_ground(*p, [](double, double) { return 10.0; });
    set_surface(*p, 1, [](double, double) { return 7.0; });
    set_surface(*p, p->sliding_index, [](double, double y) { return y >= 2 && y <= 8 ? 6.0 : 10.0; });
    p->zgrid(2, 3, p->sliding_index) = 7.0f; // exactly on the layer top
    p->zgrid(2, 4, p->sliding_index) = 8.0f; // above the layer top
    p->mat_phi[1] = phi;
    p->disc_code.fill(2);
    p->surface_kind = 4;
    return p;
}

TEST(ApplyCrack, friction_above_eighty_lifts_the_plane_over_the_layer)
{
    auto p = over_hard_layer(80.5f);
    apply_crack(*p);
    EXPECT_EQ(p->surface_lifted, 1);
    const float lifted = float(7.0 + 0.01);
    EXPECT_EQ(sliding(*p, 1, 5), lifted);
    EXPECT_EQ(sliding(*p, 2, 3), lifted); // at the top counts as under it
    EXPECT_EQ(sliding(*p, 2, 4), 8.0f);   // above it stays
    EXPECT_EQ(p->disc_code(1, 5), 0);
    EXPECT_EQ(p->disc_code(2, 4), 2);
    // The dips are those of the lifted plane, by differences: at (2, 2),
    // (lifted - 10) / 2 along Y.
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 2), float(std::atan((double(lifted) - 10.0) / 2.0)));
}

TEST(ApplyCrack, friction_of_exactly_eighty_does_not_lift)
{
    auto p = over_hard_layer(80.0f);
    const auto before = p->zgrid.v;
    apply_crack(*p);
    EXPECT_EQ(p->surface_lifted, 0);
    EXPECT_EQ(p->zgrid.v, before);
    EXPECT_EQ(p->disc_code(1, 5), 2);
}

TEST(ApplyCrack, hard_friction_on_the_top_layer_number_has_no_effect)
{
    auto p = over_hard_layer(30.0f);
    p->mat_phi[2] = 85; // the material of the ground surface's number
    const auto before = p->zgrid.v;
    apply_crack(*p);
    EXPECT_EQ(p->surface_lifted, 0);
    EXPECT_EQ(p->zgrid.v, before);
}

TEST(ApplyCrack, lift_keeps_the_centre_of_an_ellipsoid)
{
    auto p = over_hard_layer(89.0f);
    p->surface_kind = 1;
    p->centre_y = 3.5f;
    p->centre_z = 17.25f;
    apply_crack(*p);
    EXPECT_EQ(p->surface_lifted, 1);
    EXPECT_EQ(p->centre_y, 3.5f);
    EXPECT_EQ(p->centre_z, 17.25f);
}

TEST(ApplyCrack, lift_runs_the_moment_centre_pass_only_when_lifted)
{
    auto p = over_hard_layer(89.0f);
    p->no_slide = 7;
    apply_crack(*p);
    EXPECT_EQ(p->no_slide, 0);

    auto q = over_hard_layer(80.0f);
    q->no_slide = 7;
    apply_crack(*q);
    EXPECT_EQ(q->no_slide, 7);
}

TEST(ApplyCrack, lifted_flat_plane_leaves_the_centre_where_it_was)
{
    // The lifted plane is flat from col 3 to col 9 with toe, middle and head
    // on it: both chords are level, and the centre stays.
    auto p = over_hard_layer(89.0f);
    p->centre_y = 3.5f;
    p->centre_z = 17.25f;
    apply_crack(*p);
    EXPECT_EQ(p->centre_y, 3.5f);
    EXPECT_EQ(p->centre_z, 17.25f);
}

TEST(ScaleForces, takes_the_larger_component_of_the_first_force_with_its_sign)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 1;
    p->force_h[1] = 3;
    p->force_v[1] = -5;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, -5.0f);
    p->force_h[1] = -6;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, -6.0f);
    p->force_h[1] = 4;
    p->force_v[1] = -4; // equal sizes: the vertical
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, -4.0f);
}

TEST(ScaleForces, negative_peak_lets_any_later_size_through)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 3;
    p->force_h[1] = 3;
    p->force_v[1] = -5;
    p->force_h[2] = 1; // |1| > -5: replaces
    p->force_v[2] = 0;
    p->force_h[3] = 0.5f;
    p->force_v[3] = -0.75f; // neither beats 1
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 1.0f);
}

TEST(ScaleForces, later_force_tests_horizontal_then_vertical)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 2;
    p->force_h[1] = 2;
    p->force_v[1] = 1;
    p->force_h[2] = -3; // 3 > 2: peak -3
    p->force_v[2] = 2;  // 2 > -3: peak 2
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 2.0f);
}

TEST(ScaleForces, without_forces_the_old_peak_stands)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 0;
    p->force_peak = 42;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 42.0f);
}

TEST(ScaleForces, water_thrusts_count_by_size)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 1;
    p->force_h[1] = 5;
    p->force_v[1] = 0;
    p->head_water_force[2] = -20;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 20.0f);
    p->crack_water_force[3] = 30;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 30.0f);
}

TEST(ScaleForces, zero_water_thrust_never_replaces_a_negative_peak)
{
    auto p = make_project({3, 3, 0, 2, 0, 2});
    p->num_forces = 1;
    p->force_h[1] = 0;
    p->force_v[1] = -5;
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, -5.0f);
    p->head_water_force[1] = 2; // |2| > -5
    scale_forces(*p);
    EXPECT_EQ(p->force_peak, 2.0f);
}

} // namespace
} // namespace tobel::test
