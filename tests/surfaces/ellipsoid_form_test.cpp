#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/ellipsoid_form.h"
#include "support/scripted_port.h"
#include "surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> form_project()
{
    auto p = make_project({6, 21, 0, 10, 20, 60}); // row spacing 2, col spacing 2
    set_ground(*p, [](double, double) { return 30.0; });
    p->unit_weight_water = 9.81f;
    return p;
}

TEST(EllipsoidForm, opens_on_a_copy_of_the_input_set)
{
    auto p = form_project();
    p->search_x = 4;
    p->single_y = 31;
    p->single_z = 45;
    p->tangent_z = 22;
    p->aspect_in = 1.5f;
    EllipsoidForm f = open_ellipsoid_form(*p);
    EXPECT_EQ(f.values, (std::array<float, 5>{4, 31, 45, 22, 1.5f}));
    EXPECT_EQ(f.field, 1);
    f.value(field_y) = 99;
    EXPECT_EQ(p->single_y, 31.0f); // the project is untouched until Continue
}

TEST(EllipsoidForm, field_keys_move_within_one_to_five)
{
    auto p = form_project();
    EllipsoidForm f = open_ellipsoid_form(*p);
    ellipsoid_form_key(f, FieldKey::up);
    EXPECT_EQ(f.field, 1);
    ellipsoid_form_key(f, FieldKey::down);
    ellipsoid_form_key(f, FieldKey::enter);
    ellipsoid_form_key(f, FieldKey::tab);
    EXPECT_EQ(f.field, 4);
    ellipsoid_form_key(f, FieldKey::tab);
    ellipsoid_form_key(f, FieldKey::down);
    EXPECT_EQ(f.field, 5);
    ellipsoid_form_key(f, FieldKey::up);
    EXPECT_EQ(f.field, 4);
}

TEST(EllipsoidForm, typed_text_is_read_as_its_leading_number)
{
    auto p = form_project();
    EllipsoidForm f = open_ellipsoid_form(*p);
    ellipsoid_form_enter(f, field_z, "12.5m");
    ellipsoid_form_enter(f, field_tangent, "abc");
    EXPECT_EQ(f.value(field_z), 12.5f);
    EXPECT_EQ(f.value(field_tangent), 0.0f);
    EXPECT_TRUE(ellipsoid_form_accepts("", '-'));
    EXPECT_TRUE(ellipsoid_form_accepts("12", '7'));
    EXPECT_FALSE(ellipsoid_form_accepts("1.2", '.'));
    EXPECT_FALSE(ellipsoid_form_accepts("12", 'x'));
}

TEST(EllipsoidForm, preview_follows_x_with_the_nearest_row_half_to_even)
{
    auto p = form_project();
    EllipsoidForm f = open_ellipsoid_form(*p);
    f.value(field_y) = 1; // no first proposal
    f.value(field_x) = 5; // 5 / 2 = 2.5 rounds to 2
    ellipsoid_form_preview(*p, f, 50, 10, 1);
    EXPECT_EQ(p->view_row, 3);
    f.value(field_x) = 7; // 3.5 rounds to 4
    ellipsoid_form_preview(*p, f, 50, 10, 1);
    EXPECT_EQ(p->view_row, 5);
    f.value(field_x) = -10; // row -4 is kept positive
    ellipsoid_form_preview(*p, f, 50, 10, 1);
    EXPECT_EQ(p->view_row, 1);
}

TEST(EllipsoidForm, first_proposal_uses_half_span_of_y_and_picture_limits)
{
    auto p = form_project(); // y from 20 to 60
    EllipsoidForm f = open_ellipsoid_form(*p);
    ellipsoid_form_preview(*p, f, 50, 10, 2);
    EXPECT_EQ(f.value(field_y), 20.0f);      // (60 - 20) / 2, not the middle 40
    EXPECT_EQ(f.value(field_z), 15.0f);      // (40 / 2 + 10) / 2
    EXPECT_EQ(f.value(field_tangent), 9.0f); // (40 / 5 + 10) / 2
}

TEST(EllipsoidForm, no_proposal_when_y_or_z_is_set)
{
    auto p = form_project();
    EllipsoidForm f = open_ellipsoid_form(*p);
    f.value(field_z) = 3;
    f.value(field_tangent) = 1;
    ellipsoid_form_preview(*p, f, 50, 10, 1);
    EXPECT_EQ(f.value(field_y), 0.0f);
    EXPECT_EQ(f.value(field_z), 3.0f);
    EXPECT_EQ(f.value(field_tangent), 1.0f);
}

EllipsoidForm sphere_form(const Project& p)
{
    EllipsoidForm f = open_ellipsoid_form(p);
    f.values = {4, 40, 34, 26, 1}; // radius 8 under ground at 30
    return f;
}

TEST(EllipsoidForm, continue_stores_both_sets_and_builds_the_ellipsoid)
{
    auto p = form_project();
    ScriptedPort port;
    EllipsoidForm f = sphere_form(*p);
    const auto next = continue_ellipsoid_form(*p, f, port);
    EXPECT_EQ(next, EllipsoidNext::solved_ready);
    EXPECT_EQ(p->search_x, 4.0f);
    EXPECT_EQ(p->single_y, 40.0f);
    EXPECT_EQ(p->single_z, 34.0f);
    EXPECT_EQ(p->tangent_z, 26.0f);
    EXPECT_EQ(p->aspect_in, 1.0f);
    EXPECT_EQ(p->radius_in, 8.0f);
    EXPECT_EQ(p->ell_x, 4.0f);
    EXPECT_EQ(p->ell_y, 40.0f);
    EXPECT_EQ(p->ell_z, 34.0f);
    EXPECT_EQ(p->ell_radius, 8.0f);
    EXPECT_EQ(p->ell_aspect, 1.0f);
    // Row 3 is x = 4, col 11 is y = 40: the bottom of the sphere.
    EXPECT_EQ(sliding(*p, 3, 11), 26.0f);
    // x = 4, y = 46: 34 - sqrt(64 - 36).
    EXPECT_NEAR(sliding(*p, 3, 14), 34 - std::sqrt(28.0), 1e-5);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_EQ(p->surface_kind, 1);
    EXPECT_EQ(p->centre_y, 40.0f);
    EXPECT_EQ(p->centre_z, 34.0f);
    EXPECT_TRUE(p->menus["Solve"].visible);
    EXPECT_TRUE(p->menus["Solve_single_trial"].visible);
    EXPECT_FALSE(p->menus["gridsearchsolv"].visible);
    EXPECT_FALSE(p->menus["autosearchsolv"].visible);
    EXPECT_TRUE(p->menus["Rotation_angle"].visible);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(EllipsoidForm, continue_in_two_dimensions_hides_rotation)
{
    auto p = make_project({1, 21, 0, 1, 20, 60});
    set_ground(*p, [](double, double) { return 30.0; });
    ScriptedPort port;
    EllipsoidForm f = open_ellipsoid_form(*p);
    f.values = {0, 40, 34, 26, 1};
    continue_ellipsoid_form(*p, f, port);
    EXPECT_TRUE(p->menus["Solve_single_trial"].visible);
    EXPECT_FALSE(p->menus["Rotation_angle"].visible);
}

TEST(EllipsoidForm, continue_wipes_the_previous_surface_and_applies_the_crack)
{
    auto p = form_project();
    p->disc_code.fill(4);
    p->crack_mode = 1;
    p->crack_y = 44; // col 12 has its head edge at y = 44
    p->crack_water_pct = 100;
    ScriptedPort port;
    continue_ellipsoid_form(*p, sphere_form(*p), port);
    EXPECT_EQ(p->disc_code(3, 11), 0);
    EXPECT_EQ(sliding(*p, 3, 11), 26.0f);
    EXPECT_EQ(sliding(*p, 3, 12), 30.0f); // cut at the crack
    // Depth at col 11 is 4, full: 16 * 2 * 9.81 / 2.
    EXPECT_FLOAT_EQ(p->crack_water_force[3], 16.0f * 2.0f * 9.81f / 2.0f);
    EXPECT_FLOAT_EQ(p->force_peak, p->crack_water_force[3]);
}

TEST(EllipsoidForm, continue_of_a_composite_goes_to_the_wedge_form)
{
    auto p = form_project();
    p->form_mode = 3;
    p->surface_kind = 0;
    p->surface_defined = 0;
    p->crack_mode = 1;
    p->crack_y = 44;
    ScriptedPort port;
    const auto next = continue_ellipsoid_form(*p, sphere_form(*p), port);
    EXPECT_EQ(next, EllipsoidNext::to_wedge_form);
    EXPECT_EQ(p->radius_in, 8.0f);
    EXPECT_EQ(sliding(*p, 3, 11), 26.0f);
    EXPECT_LT(sliding(*p, 3, 12), 30.0f); // no crack yet
    EXPECT_EQ(p->surface_kind, 0);
    EXPECT_EQ(p->surface_defined, 0);
}

} // namespace
} // namespace tobel::test
