// The Graphics Options form: opening, the text boxes and their scrolls, the
// sketch of the axes, the fill style options, Default..., and the repaint of
// Continue by the captions of the pictures.
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/graphics_options_form.h"
#include "graphics/graphics_support.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> sloped(int rows)
{
    auto p = make_project({rows, 6, 0, 10, 0, 50});
    set_ground(*p, [](double, double y) { return 20 - y / 5; });
    return p;
}

TEST(GraphicsOptionsForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(graphics_options_caption, "Graphics Options");
    EXPECT_STREQ(exaggeration_frame, "Vertical Exaggeration");
    EXPECT_STREQ(exaggeration_label, "Vertical exaggeration ratio:");
    EXPECT_STREQ(rotation_frame, "Rotation Angle (for isometry)");
    EXPECT_STREQ(rotation_label, "Angle between y axis and horizontal:");
    EXPECT_STREQ(fill_frame, "Section Drawing (fill style)");
    EXPECT_STREQ(fill_option_captions[0], "   Full Colour");
    EXPECT_STREQ(fill_option_captions[1], "   Vertical Hatching");
    EXPECT_STREQ(fill_option_captions[2], "   Lines Only");
    EXPECT_STREQ(graphics_default_caption, "Default...");
}

TEST(GraphicsOptionsForm, opens_on_the_exaggeration_the_rounded_angle_and_the_fill_style)
{
    auto p = sloped(3);
    p->vert_exag = 1.5f;
    p->iso_angle = 29.6f;
    p->view.fill_style = 2;
    const GraphicsOptionsForm form = open_graphics_options_form(*p);
    EXPECT_EQ(form.text1, "1.5");
    EXPECT_EQ(form.vscroll1, 150); // 1.5 * 100
    EXPECT_EQ(form.text2, "30");   // 29.6 by "####0"
    EXPECT_EQ(form.vscroll2, 30);
    EXPECT_EQ(form.option, 2);
}

TEST(GraphicsOptionsForm, the_exaggeration_scroll_takes_the_value_times_100_rounded)
{
    auto p = sloped(3);
    p->vert_exag = 1.237f;
    const GraphicsOptionsForm form = open_graphics_options_form(*p);
    EXPECT_EQ(form.text1, "1.237");
    EXPECT_EQ(form.vscroll1, 124); // 123.7 rounds to 124
}

// The two arms from the origin, y downward: the Y arm at 30 degrees ends at
// (40 cos 30, -40 sin 30) = (34.641, -20); the X arm at 120 degrees at
// (40 cos 120, -40 sin 120) = (-20, -34.641).
TEST(GraphicsOptionsForm, sketch_draws_the_y_arm_at_the_angle_and_the_x_arm_90_degrees_on)
{
    auto p = sloped(3);
    p->iso_angle = 30;
    const GraphicsOptionsForm form = open_graphics_options_form(*p);
    const auto segs = segments_of(form.sketch);
    ASSERT_EQ(segs.size(), 2u);
    EXPECT_FLOAT_EQ(segs[0].x1, 0);
    EXPECT_FLOAT_EQ(segs[0].y1, 0);
    EXPECT_NEAR(segs[0].x2, 34.641f, 1e-3);
    EXPECT_NEAR(segs[0].y2, -20.0f, 1e-4);
    EXPECT_FLOAT_EQ(segs[1].x1, 0);
    EXPECT_FLOAT_EQ(segs[1].y1, 0);
    EXPECT_NEAR(segs[1].x2, -20.0f, 1e-4);
    EXPECT_NEAR(segs[1].y2, -34.641f, 1e-3);
    // The picture's window: y grows downward, the origin in the middle.
    const auto scales = boxes_of(form.sketch, DrawOp::scale);
    ASSERT_EQ(scales.size(), 1u);
    EXPECT_FLOAT_EQ(scales[0].y1, -50); // top
    EXPECT_FLOAT_EQ(scales[0].y2, 50);  // bottom
}

TEST(GraphicsOptionsForm, pi_of_the_sketch_is_the_ten_digit_value)
{
    EXPECT_EQ(sketch_pi, 3.141592654);
}

TEST(GraphicsOptionsForm, exaggeration_above_the_scroll_top_is_cut_on_enter)
{
    auto p = sloped(3);
    p->vert_exag = 1;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "50";
    graphics_options_form_key(form, FormKey::enter);
    // The top of VScroll1 is 2000: 2000 / 100 = 20.
    EXPECT_EQ(form.text1, "20");
    EXPECT_EQ(form.vscroll1, 2000);
    EXPECT_EQ(form.field, 1); // Enter stays in the box
}

TEST(GraphicsOptionsForm, exaggeration_within_the_scroll_moves_the_scroll_on_leaving)
{
    auto p = sloped(3);
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "2.125";
    graphics_options_form_key(form, FormKey::tab);
    EXPECT_EQ(form.text1, "2.125");
    EXPECT_EQ(form.vscroll1, 212); // 212.5, exact in binary, rounds to the even 212
    EXPECT_EQ(form.field, 2);
}

TEST(GraphicsOptionsForm, angle_above_the_scroll_top_is_cut_and_the_sketch_follows)
{
    auto p = sloped(3);
    ScriptedPort port;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    graphics_options_form_select(form, 2);
    form.text2 = "120";
    EXPECT_FALSE(graphics_options_form_type(form, port, '\r'));
    EXPECT_EQ(form.text2, "90");
    EXPECT_EQ(form.vscroll2, 90);
    // At 90 degrees the Y arm stands straight up, the X arm points left.
    const auto segs = segments_of(form.sketch);
    ASSERT_EQ(segs.size(), 2u);
    EXPECT_NEAR(segs[0].x2, 0.0f, 1e-4);
    EXPECT_NEAR(segs[0].y2, -40.0f, 1e-4);
    EXPECT_NEAR(segs[1].x2, -40.0f, 1e-4);
    EXPECT_NEAR(segs[1].y2, 0.0f, 1e-4);
}

TEST(GraphicsOptionsForm, scrolls_write_their_values_into_the_texts)
{
    auto p = sloped(3);
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    graphics_options_vscroll1(form, 250);
    EXPECT_EQ(form.text1, "2.5"); // 250 / 100
    graphics_options_vscroll2(form, 45);
    EXPECT_EQ(form.text2, "45");
    // 45 degrees: the Y arm ends at (40 cos 45, -40 sin 45) = (28.284, -28.284).
    const auto segs = segments_of(form.sketch);
    ASSERT_FALSE(segs.empty());
    EXPECT_NEAR(segs[0].x2, 28.284f, 1e-3);
    EXPECT_NEAR(segs[0].y2, -28.284f, 1e-3);
}

TEST(GraphicsOptionsForm, only_digits_and_the_point_are_typed)
{
    auto p = sloped(3);
    ScriptedPort port;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1.clear();
    EXPECT_TRUE(graphics_options_form_type(form, port, '1'));
    EXPECT_TRUE(graphics_options_form_type(form, port, '.'));
    EXPECT_TRUE(graphics_options_form_type(form, port, '.'));
    EXPECT_FALSE(graphics_options_form_type(form, port, '-'));
    EXPECT_FALSE(graphics_options_form_type(form, port, 'e'));
    EXPECT_FALSE(graphics_options_form_type(form, port, ' '));
    EXPECT_EQ(form.text1, "1..");
    EXPECT_TRUE(graphics_options_form_type(form, port, 8));
    EXPECT_EQ(form.text1, "1.");
    EXPECT_TRUE(port.boxes.empty());
}

TEST(GraphicsOptionsForm, options_set_the_fill_style_at_once)
{
    auto p = sloped(3);
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    graphics_options_choose(*p, form, 1);
    EXPECT_EQ(p->view.fill_style, 1);
    graphics_options_choose(*p, form, 2);
    EXPECT_EQ(p->view.fill_style, 2);
    EXPECT_EQ(form.option, 2);
}

TEST(GraphicsOptionsForm, lines_only_then_cancel_keeps_lines_only_without_a_repaint)
{
    auto p = sloped(3);
    ScriptedPort port;
    p->pictures.section.caption = "LONGITUDINAL SECTION";
    p->vert_exag = 1;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "3";
    graphics_options_choose(*p, form, 2);
    cancel_graphics_options_form(*p, form);
    EXPECT_EQ(p->view.fill_style, 2);
    EXPECT_EQ(p->vert_exag, 1.0f); // the text is not stored
    EXPECT_TRUE(p->pictures.section.picture.empty());
    EXPECT_TRUE(port.views.empty());
}

TEST(GraphicsOptionsForm, default_asks_and_no_changes_nothing)
{
    auto p = sloped(3);
    p->view.fill_style = 2;
    ScriptedPort port;
    port.answers = {Answer::no};
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "4";
    EXPECT_FALSE(graphics_options_form_default(*p, form, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you want to default all values?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(form.text1, "4");
    EXPECT_EQ(p->view.fill_style, 2);
}

TEST(GraphicsOptionsForm, default_yes_gives_1_30_and_full_colour)
{
    auto p = sloped(3);
    p->view.fill_style = 2;
    p->vert_exag = 3;
    p->iso_angle = 60;
    ScriptedPort port;
    port.answers = {Answer::yes};
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    EXPECT_TRUE(graphics_options_form_default(*p, form, port));
    EXPECT_EQ(form.text1, "1");
    EXPECT_EQ(form.text2, "30");
    EXPECT_EQ(form.vscroll1, 100);
    EXPECT_EQ(form.vscroll2, 30);
    EXPECT_EQ(form.option, 0);
    EXPECT_EQ(p->view.fill_style, 0);
    // The stored values wait for Continue.
    EXPECT_EQ(p->vert_exag, 3.0f);
    // The sketch follows: the Y arm at 30 degrees.
    const auto segs = segments_of(form.sketch);
    ASSERT_FALSE(segs.empty());
    EXPECT_NEAR(segs[0].y2, -20.0f, 1e-4);
}

TEST(GraphicsOptionsForm, continue_stores_the_texts_through_the_number_parser)
{
    auto p = sloped(3);
    ScriptedPort port;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "2.5.1";
    form.text2 = "";
    continue_graphics_options_form(*p, form, port);
    EXPECT_EQ(p->vert_exag, 2.5f); // the leading number
    EXPECT_EQ(p->iso_angle, 0.0f); // no number at all
}

TEST(GraphicsOptionsForm, continue_redraws_a_lateral_section_in_place)
{
    auto p = sloped(3);
    ScriptedPort port;
    p->pictures.section.caption = "LATERAL SECTION";
    p->view_col = 2;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    continue_graphics_options_form(*p, form, port);
    EXPECT_FALSE(p->pictures.section.picture.empty());
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
    EXPECT_EQ(p->pictures.section.caption, "LATERAL SECTION");
    EXPECT_TRUE(port.views.empty()); // redrawn, not brought up
    EXPECT_FALSE(p->view.redraw_only);
}

TEST(GraphicsOptionsForm, continue_redraws_a_longitudinal_section_in_a_new_window)
{
    auto p = sloped(3);
    ScriptedPort port;
    p->pictures.section.caption = "LONGITUDINAL SECTION";
    p->keep_window = -1;
    p->vert_exag = 1;
    p->view.fill_style = 2; // lines only: the ground is drawn as a line
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    form.text1 = "2";
    continue_graphics_options_form(*p, form, port);
    EXPECT_EQ(p->keep_window, 0);
    EXPECT_FALSE(p->pictures.section.picture.empty());
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
    EXPECT_TRUE(port.views.empty());
    // The ground runs from 20 down to 10 over Y 0..50; at exaggeration 2 the
    // first node of the ground line is drawn at 20 * 2 = 40.
    bool found = false;
    for (const auto& s : segments_of(p->pictures.section.picture))
        if (s.x1 == 0.0f && std::abs(s.y1 - 40.0f) < 1e-4f)
            found = true;
    EXPECT_TRUE(found);
}

TEST(GraphicsOptionsForm, continue_redraws_the_isometry_of_the_ground_when_none_was_shown)
{
    auto p = sloped(3);
    ScriptedPort port;
    p->pictures.section.caption = "PLAN VIEW";
    p->pictures.isometry.caption = "TOP SURFACE OF LAYER 1";
    p->view.iso_layer = 0;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    continue_graphics_options_form(*p, form, port);
    EXPECT_EQ(p->view.iso_layer, p->num_layers);
    EXPECT_FALSE(p->pictures.isometry.picture.empty());
    EXPECT_TRUE(p->pictures.section.picture.empty()); // a plan is not repainted
    EXPECT_TRUE(port.views.empty());
}

TEST(GraphicsOptionsForm, continue_in_two_dimensions_draws_the_longitudinal_section_for_the_isometry)
{
    auto p = sloped(1);
    ScriptedPort port;
    p->pictures.isometry.caption = "TOP SURFACE OF LAYER 1";
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    continue_graphics_options_form(*p, form, port);
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
    EXPECT_FALSE(p->pictures.section.picture.empty());
    EXPECT_EQ(p->pictures.section.caption, "LONGITUDINAL SECTION");
}

TEST(GraphicsOptionsForm, continue_without_captions_draws_nothing)
{
    auto p = sloped(3);
    ScriptedPort port;
    GraphicsOptionsForm form = open_graphics_options_form(*p);
    continue_graphics_options_form(*p, form, port);
    EXPECT_TRUE(p->pictures.section.picture.empty());
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
}

} // namespace
} // namespace tobel::test
