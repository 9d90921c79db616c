// The rotation angle form: its texts, the value with its scroll bar, the arrow
// and its own pi, and Continue.
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/rotation_form.h"
#include "graphics/recording_surface.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

TEST(RotationForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(rotation_form_caption, "Rotation Angle");
    EXPECT_STREQ(rotation_limits_text, "(Minimum: -20 deg.  Maximum: 20 deg.)");
    EXPECT_STREQ(rotation_explanation[0], "The equilibrium equations will be solved");
    EXPECT_STREQ(rotation_explanation[1], "in a direction rotated by this angle ");
    EXPECT_STREQ(rotation_explanation[2], "respective to the negative Y-direction.");
    EXPECT_STREQ(rotation_explanation[3], "Will apply to the next single surface only,");
    EXPECT_STREQ(rotation_explanation[4], "then re-set to zero.  ");
    EXPECT_STREQ(rotation_limitations_title, "LIMITATIONS: ");
    EXPECT_STREQ(rotation_limitations_text,
                 "Can be used only with 3D Bishop or Janbu methods. Cannot be used with searches.");
}

TEST(RotationForm, scroll_bar_runs_from_minus_20_to_20)
{
    EXPECT_EQ(rotation_scroll_min, -20);
    EXPECT_EQ(rotation_scroll_max, 20);
    RotationForm form;
    rotation_form_scroll(form, 25);
    EXPECT_EQ(form.scroll, 20);
    EXPECT_EQ(form.text, "20");
    rotation_form_scroll(form, -21);
    EXPECT_EQ(form.scroll, -20);
    EXPECT_EQ(form.text, "-20");
    rotation_form_scroll(form, -3);
    EXPECT_EQ(form.scroll, -3);
    EXPECT_EQ(form.text, "-3");
}

TEST(RotationForm, opens_on_the_angle_held)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->rotation_angle = 7.5f;
    const RotationForm form = open_rotation_form(*p);
    EXPECT_EQ(form.text, "7.5");
    EXPECT_EQ(form.scroll, 8); // 7.5 rounds to the even 8
    EXPECT_EQ(rotation_form_angle(form), 7.5f);
}

TEST(RotationForm, a_new_project_opens_at_zero)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    const RotationForm form = open_rotation_form(*p);
    EXPECT_EQ(form.text, "0");
    EXPECT_EQ(form.scroll, 0);
}

TEST(RotationForm, typed_text_stands_and_the_scroll_bar_follows_within_its_limits)
{
    RotationForm form;
    rotation_form_edit(form, "-12.5");
    EXPECT_EQ(form.text, "-12.5");
    EXPECT_EQ(form.scroll, -12); // -12.5 rounds to the even -12
    rotation_form_edit(form, "35");
    EXPECT_EQ(form.text, "35");
    EXPECT_EQ(form.scroll, 20);
    EXPECT_EQ(rotation_form_angle(form), 35.0f);
    rotation_form_edit(form, "-");
    EXPECT_EQ(form.scroll, 0);
    EXPECT_EQ(rotation_form_angle(form), 0.0f);
    EXPECT_TRUE(rotation_form_accepts("", '-'));
    EXPECT_FALSE(rotation_form_accepts("5", 'x'));
}

TEST(RotationForm, continue_stores_the_angle)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    RotationForm form = open_rotation_form(*p);
    rotation_form_edit(form, "-12.5");
    continue_rotation_form(*p, form);
    EXPECT_EQ(p->rotation_angle, -12.5f);
    rotation_form_scroll(form, 4);
    continue_rotation_form(*p, form);
    EXPECT_EQ(p->rotation_angle, 4.0f);
}

TEST(RotationForm, arrow_at_zero_points_along_negative_y)
{
    const RotationArrow a = rotation_arrow(0);
    EXPECT_DOUBLE_EQ(a.tip.y, -1.0);
    EXPECT_DOUBLE_EQ(a.tip.x, 0.0);
    EXPECT_DOUBLE_EQ(a.tail.y, 1.0);
    EXPECT_DOUBLE_EQ(a.tail.x, 0.0);
    // Barbs 0.3 long at 0.4 rad either side of the shaft, back from the tip:
    // -1 + 0.3 * 0.92106099 = -0.72368170, 0.3 * 0.38941834 = 0.11682550.
    EXPECT_NEAR(a.barb_1.y, -0.72368170, 1e-8);
    EXPECT_NEAR(a.barb_1.x, 0.11682550, 1e-8);
    EXPECT_NEAR(a.barb_2.y, -0.72368170, 1e-8);
    EXPECT_NEAR(a.barb_2.x, -0.11682550, 1e-8);
}

TEST(RotationForm, arrow_at_30_degrees_turns_towards_negative_x)
{
    // (-cos 30, -sin 30) = (-0.86602540, -0.5).
    const RotationArrow a = rotation_arrow(30);
    EXPECT_NEAR(a.tip.y, -0.86602540, 1e-8);
    EXPECT_NEAR(a.tip.x, -0.5, 1e-9);
    EXPECT_NEAR(a.tail.y, 0.86602540, 1e-8);
    EXPECT_NEAR(a.tail.x, 0.5, 1e-9);
}

TEST(RotationForm, arrow_uses_pi_3_141592654)
{
    // At 90 degrees the angle is 3.141592654 / 2, which overshoots the right
    // angle by e = (3.141592654 - 3.14159265358979) / 2 = 2.0510338e-10, so
    // the across part -cos(pi/2 + e) = sin e = +2.0510338e-10. The true pi
    // would give 6e-17 and 3.14 would give -cos(1.57) = -7.96e-4.
    const RotationArrow a = rotation_arrow(90);
    EXPECT_NEAR(a.tip.y, 2.0510338e-10, 1e-15);
    EXPECT_NEAR(a.tip.x, -1.0, 1e-15);
    EXPECT_DOUBLE_EQ(rotation_arrow_pi, 3.141592654);
}

TEST(RotationForm, drawing_shows_the_shaft_of_the_forms_angle)
{
    DisplayList list;
    list.device_width = 100;
    list.device_height = 100;
    RecordingSurface surface(list);
    RotationForm form;
    rotation_form_edit(form, "0");
    draw_rotation_arrow(surface, form);
    EXPECT_EQ(surface.ScaleLeft(), -1.2f);
    EXPECT_EQ(surface.ScaleTop(), 1.2f);
    // The shaft from (1, 0) to (-1, 0), in black.
    bool shaft = false;
    int runs = 0;
    for (const DrawItem& item : list.items) {
        if (item.op != DrawOp::lines)
            continue;
        ++runs;
        EXPECT_EQ(item.colour, 0);
        const auto pts = run_points(list, item);
        if (pts.size() >= 2 && pts[0].x == 1.0f && pts[0].y == 0.0f && pts[1].x == -1.0f && pts[1].y == 0.0f)
            shaft = true;
    }
    EXPECT_TRUE(shaft);
    EXPECT_GE(runs, 1);
}

} // namespace
} // namespace tobel::test
