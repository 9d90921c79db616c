// The zoom of the ellipsoid form: four levels of view limits, Zoom Out
// widening by a quarter of the span at each end, Zoom In going back to the
// stored limits, and the enabled flags of the two buttons.
#include <gtest/gtest.h>

#include "dialogs/ellipsoid_form.h"
#include "graphics/graphics_support.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> with_window()
{
    auto p = make_project({3, 11, 0, 10, 0, 100});
    set_ground(*p, [](double, double y) { return 40 - y / 5; });
    p->view_mode = 3;
    // The window the section was drawn in: 100 wide, 60 high.
    p->view.win_left = 0;
    p->view.win_right = 100;
    p->view.win_bottom = 0;
    p->view.win_top = 60;
    p->view.pick_unit = 1;
    return p;
}

void expect_window(const Project& p, float left, float bottom, float right, float top)
{
    EXPECT_FLOAT_EQ(p.view.win_left, left);
    EXPECT_FLOAT_EQ(p.view.win_bottom, bottom);
    EXPECT_FLOAT_EQ(p.view.win_right, right);
    EXPECT_FLOAT_EQ(p.view.win_top, top);
}

TEST(EllipsoidZoom, opens_at_level_3_with_only_zoom_out_enabled)
{
    auto p = with_window();
    const EllipsoidForm form = open_ellipsoid_form(*p);
    EXPECT_EQ(form.zoom_level, 3);
    EXPECT_FALSE(form.zoom_in_enabled);
    EXPECT_TRUE(form.zoom_out_enabled);
}

TEST(EllipsoidZoom, zoom_out_widens_each_limit_by_a_quarter_of_the_span)
{
    auto p = with_window();
    ScriptedPort port;
    EllipsoidForm form = open_ellipsoid_form(*p);
    ellipsoid_form_zoom_out(*p, form, port);
    // Width 100: 25 more each side; height 60: 15 more each side.
    EXPECT_EQ(form.zoom_level, 2);
    expect_window(*p, -25, -15, 125, 75);
    EXPECT_FLOAT_EQ(p->view.pick_unit, 1.5f); // 150 / 100
    EXPECT_TRUE(form.zoom_in_enabled);
    EXPECT_TRUE(form.zoom_out_enabled);
    // The section was drawn again in the new limits.
    const auto scales = boxes_of(p->pictures.search.picture, DrawOp::scale);
    ASSERT_FALSE(scales.empty());
    EXPECT_FLOAT_EQ(scales[0].x1, -25);
    EXPECT_FLOAT_EQ(scales[0].y1, 75);
    EXPECT_FLOAT_EQ(scales[0].x2, 125);
    EXPECT_FLOAT_EQ(scales[0].y2, -15);
}

TEST(EllipsoidZoom, level_0_disables_zoom_out)
{
    auto p = with_window();
    ScriptedPort port;
    EllipsoidForm form = open_ellipsoid_form(*p);
    ellipsoid_form_zoom_out(*p, form, port);
    ellipsoid_form_zoom_out(*p, form, port);
    // Level 1: width 150 -> 37.5 more each side; height 90 -> 22.5.
    EXPECT_EQ(form.zoom_level, 1);
    expect_window(*p, -62.5f, -37.5f, 162.5f, 97.5f);
    ellipsoid_form_zoom_out(*p, form, port);
    // Level 0: width 225 -> 56.25; height 135 -> 33.75.
    EXPECT_EQ(form.zoom_level, 0);
    expect_window(*p, -118.75f, -71.25f, 218.75f, 131.25f);
    EXPECT_FALSE(form.zoom_out_enabled);
    EXPECT_TRUE(form.zoom_in_enabled);
    // A further Zoom Out does nothing.
    ellipsoid_form_zoom_out(*p, form, port);
    EXPECT_EQ(form.zoom_level, 0);
    expect_window(*p, -118.75f, -71.25f, 218.75f, 131.25f);
}

TEST(EllipsoidZoom, zoom_in_steps_back_through_the_stored_levels)
{
    auto p = with_window();
    ScriptedPort port;
    EllipsoidForm form = open_ellipsoid_form(*p);
    for (int i = 0; i < 3; ++i)
        ellipsoid_form_zoom_out(*p, form, port);
    ellipsoid_form_zoom_in(*p, form, port);
    EXPECT_EQ(form.zoom_level, 1);
    expect_window(*p, -62.5f, -37.5f, 162.5f, 97.5f);
    EXPECT_TRUE(form.zoom_out_enabled);
    EXPECT_TRUE(form.zoom_in_enabled);
    ellipsoid_form_zoom_in(*p, form, port);
    EXPECT_EQ(form.zoom_level, 2);
    expect_window(*p, -25, -15, 125, 75);
    ellipsoid_form_zoom_in(*p, form, port);
    // Back at the window the form started from.
    EXPECT_EQ(form.zoom_level, 3);
    expect_window(*p, 0, 0, 100, 60);
    EXPECT_FLOAT_EQ(p->view.pick_unit, 1);
    EXPECT_FALSE(form.zoom_in_enabled);
    EXPECT_TRUE(form.zoom_out_enabled);
    // At level 3 Zoom In does nothing.
    ellipsoid_form_zoom_in(*p, form, port);
    EXPECT_EQ(form.zoom_level, 3);
}

TEST(EllipsoidZoom, zoom_out_after_zoom_in_widens_the_present_limits_again)
{
    auto p = with_window();
    ScriptedPort port;
    EllipsoidForm form = open_ellipsoid_form(*p);
    ellipsoid_form_zoom_out(*p, form, port);
    ellipsoid_form_zoom_in(*p, form, port);
    ellipsoid_form_zoom_out(*p, form, port);
    EXPECT_EQ(form.zoom_level, 2);
    expect_window(*p, -25, -15, 125, 75);
}

TEST(EllipsoidZoom, zooming_keeps_the_surface_commands_window_setting)
{
    auto p = with_window();
    ScriptedPort port;
    p->keep_window = 0;
    EllipsoidForm form = open_ellipsoid_form(*p);
    ellipsoid_form_zoom_out(*p, form, port);
    EXPECT_EQ(p->keep_window, 0);
}

} // namespace
} // namespace tobel::test
