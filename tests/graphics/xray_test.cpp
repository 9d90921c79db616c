// The x-ray view: set-up, the ticks of the timer, Stop and Continue, forces.
#include <gtest/gtest.h>

#include <cmath>

#include "graphics/recording_surface.h"
#include "graphics/xray.h"
#include "project/settings.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel {
namespace {

using test::MeshSpec;
using test::ScriptedPort;

constexpr Colour red = 255;
constexpr Colour blue = 16711680;
constexpr Colour magenta = 16711935;
constexpr Colour layer1 = 46888;
constexpr Colour piezo13 = 16759178;

// Three rows at X 0, 5, 10 and three columns at Y 0, 5, 10; one layer whose
// top is z = 6 + 0.5 y + 0.1 x, so 6 to 12 over the mesh.
//
// With vert_exag 1: extent height 6, xray_dy = (6 / 3) / 4 = 0.5,
// xray_dz = 2.5; the extent grows to 10 + 0.5 * 4 = 12 by 6 + 2.5 * 4 = 16
// from (0, 6). 16 / 12 > 600 / 800, so s = (16 / 0.8) / 600 = 1 / 30,
// h = 20, w = 26.6667: left = -(26.6667 - 12) / 2 = -7.3333, bottom
// 6 - 0.1 * 20 = 4, right 19.3333, top 24.
std::unique_ptr<Project> make(MeshSpec m = {3, 3, 0, 10, 0, 10, 1}, int piezos = 0)
{
    auto p = test::make_project(m);
    p->num_piezos = int16(piezos);
    derive_counts(*p);
    redim_grids(*p);
    default_colours(*p);
    p->data_file_path = "C:\\SLOPE.TOB";
    test::set_ground(*p, [](double x, double y) { return 6 + 0.5 * y + 0.1 * x; });
    return p;
}

struct Segment {
    float x1, y1, x2, y2;
};

std::vector<Segment> segments(const DisplayList& list, Colour colour)
{
    std::vector<Segment> out;
    for (const auto& it : list.items)
        if (it.op == DrawOp::lines && it.colour == colour) {
            const auto pts = run_points(list, it);
            for (std::size_t i = 1; i < pts.size(); ++i)
                out.push_back({pts[i - 1].x, pts[i - 1].y, pts[i].x, pts[i].y});
        }
    return out;
}

bool has_segment(const std::vector<Segment>& s, float x1, float y1, float x2, float y2)
{
    for (const auto& g : s)
        if (std::abs(g.x1 - x1) < 1e-4f && std::abs(g.y1 - y1) < 1e-4f && std::abs(g.x2 - x2) < 1e-4f &&
            std::abs(g.y2 - y2) < 1e-4f)
            return true;
    return false;
}

std::vector<const DrawItem*> runs(const DisplayList& list, Colour colour)
{
    std::vector<const DrawItem*> out;
    for (const auto& it : list.items)
        if (it.op == DrawOp::lines && it.colour == colour)
            out.push_back(&it);
    return out;
}

void add_force(Project& p, float x, float y, float z, float h, float v)
{
    const std::size_t i = std::size_t(++p.num_forces);
    p.force_x[i] = x, p.force_y[i] = y, p.force_z[i] = z, p.force_h[i] = h, p.force_v[i] = v;
}

TEST(xray, start_sets_shifts_window_timer_and_title)
{
    auto p = make();
    p->pictures.xray.caption = "X-RAY";
    ScriptedPort port;
    start_xray(*p, port);
    const XrayState& x = p->pictures.xray_state;
    EXPECT_FLOAT_EQ(x.xray_dy, 0.5f);
    EXPECT_FLOAT_EQ(x.xray_dz, 2.5f);
    EXPECT_FLOAT_EQ(x.xray_y, -0.5f); // y_min - xray_dy
    EXPECT_FLOAT_EQ(x.xray_z, 7.5f);  // xray_dz * num_rows
    EXPECT_EQ(x.xray_row, 3);
    EXPECT_TRUE(x.timer_on);
    EXPECT_TRUE(x.stop_visible);
    EXPECT_FALSE(x.continue_visible);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\SLOPE.TOB         X-RAY VIEW");
    EXPECT_EQ(p->pictures.xray.caption, "X-RAY");
    const DisplayList& list = p->pictures.xray.picture;
    ASSERT_EQ(list.items.size(), 2u); // cls and the window
    const float* f = &list.coords[list.items[1].first];
    EXPECT_NEAR(f[0], -7.333333f, 1e-4);
    EXPECT_NEAR(f[1], 24.0f, 1e-4);
    EXPECT_NEAR(f[2], 19.333333f, 1e-4);
    EXPECT_NEAR(f[3], 4.0f, 1e-4);
}

TEST(xray, first_tick_draws_the_last_row_raised_by_dz_times_rows_minus_one)
{
    auto p = make();
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    // Row 3 (x = 10): z = 7, 9.5, 12, raised by z0 = 2.5 * 2 = 5, from
    // y0 = y_min = 0.
    const auto r = runs(p->pictures.xray.picture, layer1);
    ASSERT_EQ(r.size(), 1u);
    const auto pts = run_points(p->pictures.xray.picture, *r[0]);
    ASSERT_EQ(pts.size(), 3u);
    EXPECT_FLOAT_EQ(pts[0].x, 0);
    EXPECT_FLOAT_EQ(pts[0].y, 12);
    EXPECT_FLOAT_EQ(pts[1].x, 5);
    EXPECT_FLOAT_EQ(pts[1].y, 14.5f);
    EXPECT_FLOAT_EQ(pts[2].x, 10);
    EXPECT_FLOAT_EQ(pts[2].y, 17);
    const XrayState& x = p->pictures.xray_state;
    EXPECT_EQ(x.xray_row, 2);
    EXPECT_FLOAT_EQ(x.xray_y, 0);
    EXPECT_FLOAT_EQ(x.xray_z, 5);
    EXPECT_TRUE(x.timer_on);
}

TEST(xray, sections_move_right_by_dy_and_down_by_dz_toward_row_one)
{
    auto p = make();
    ScriptedPort port;
    run_xray(*p, port);
    const auto r = runs(p->pictures.xray.picture, layer1);
    ASSERT_EQ(r.size(), 3u);
    // Row 2 (x = 5): z 6.5, 9, 11.5 at y0 = 0.5, z0 = 2.5.
    auto pts = run_points(p->pictures.xray.picture, *r[1]);
    EXPECT_FLOAT_EQ(pts[0].x, 0.5f);
    EXPECT_FLOAT_EQ(pts[0].y, 9);
    EXPECT_FLOAT_EQ(pts[2].x, 10.5f);
    EXPECT_FLOAT_EQ(pts[2].y, 14);
    // Row 1 (x = 0): z 6, 8.5, 11 at y0 = 1, z0 = 0.
    pts = run_points(p->pictures.xray.picture, *r[2]);
    EXPECT_FLOAT_EQ(pts[0].x, 1);
    EXPECT_FLOAT_EQ(pts[0].y, 6);
    EXPECT_FLOAT_EQ(pts[1].x, 6);
    EXPECT_FLOAT_EQ(pts[1].y, 8.5f);
    // Finished: timer off, no button; the picture stays.
    const XrayState& x = p->pictures.xray_state;
    EXPECT_EQ(x.xray_row, 0);
    EXPECT_FALSE(x.timer_on);
    EXPECT_FALSE(x.stop_visible);
    EXPECT_FALSE(x.continue_visible);
    EXPECT_EQ(p->pictures.xray.picture.items[0].op, DrawOp::cls);
}

TEST(xray, single_row_finishes_after_one_tick)
{
    // One row, y 0..10: z 6, 8.5, 11.
    auto p = make({1, 3, 0, 0, 0, 10, 1});
    ScriptedPort port;
    start_xray(*p, port);
    // Height 5: xray_dy = (5 / 3) / 2, xray_dz = 5 times that; xray_z =
    // xray_dz * 1, so the one section has z0 = 0.
    EXPECT_FLOAT_EQ(p->pictures.xray_state.xray_dy, 5.0f / 6.0f);
    xray_step(*p);
    const XrayState& x = p->pictures.xray_state;
    EXPECT_EQ(x.xray_row, 0);
    EXPECT_FALSE(x.timer_on);
    EXPECT_FALSE(x.stop_visible);
    EXPECT_FALSE(x.continue_visible);
    const auto r = runs(p->pictures.xray.picture, layer1);
    ASSERT_EQ(r.size(), 1u);
    const auto pts = run_points(p->pictures.xray.picture, *r[0]);
    EXPECT_NEAR(pts[0].y, 6, 1e-5);
    EXPECT_NEAR(pts[2].y, 11, 1e-5);
    EXPECT_NEAR(pts[0].x, 0, 1e-5);
    // A further tick draws nothing.
    const std::size_t items = p->pictures.xray.picture.items.size();
    xray_step(*p);
    EXPECT_EQ(p->pictures.xray.picture.items.size(), items);
}

TEST(xray, stop_and_continue_keep_the_row_and_the_picture)
{
    auto p = make();
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    const std::size_t items = p->pictures.xray.picture.items.size();
    xray_stop(*p);
    XrayState& x = p->pictures.xray_state;
    EXPECT_FALSE(x.timer_on);
    EXPECT_FALSE(x.stop_visible);
    EXPECT_TRUE(x.continue_visible);
    EXPECT_EQ(x.xray_row, 2);
    EXPECT_EQ(p->pictures.xray.picture.items.size(), items);
    xray_continue(*p);
    EXPECT_TRUE(x.timer_on);
    EXPECT_TRUE(x.stop_visible);
    EXPECT_FALSE(x.continue_visible);
    EXPECT_EQ(x.xray_row, 2);
    xray_step(*p);
    // The first section is still there and row 2 follows it at y0 = 0.5.
    const auto r = runs(p->pictures.xray.picture, layer1);
    ASSERT_EQ(r.size(), 2u);
    EXPECT_FLOAT_EQ(run_points(p->pictures.xray.picture, *r[0])[0].y, 12);
    EXPECT_FLOAT_EQ(run_points(p->pictures.xray.picture, *r[1])[0].x, 0.5f);
}

TEST(xray, piezometric_surfaces_are_skipped_and_water_rule_comes_before_sliding_rule)
{
    auto p = make({3, 3, 0, 10, 0, 10, 1}, 1);
    p->surface_defined = -1;
    test::set_surface(*p, 2, [](double, double) { return 7; });
    test::set_surface(*p, p->sliding_index, [](double, double) { return 6.5; });
    p->mat_type[1] = 5;                             // layer 1 is water
    p->mat_type[std::size_t(p->sliding_index)] = 5; // does not hide the sliding colour
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    std::vector<Colour> colours;
    for (const auto& it : p->pictures.xray.picture.items)
        if (it.op == DrawOp::lines)
            colours.push_back(it.colour);
    // Sliding surface, then layer 1; the piezometric surface is not drawn.
    ASSERT_EQ(colours.size(), 2u);
    EXPECT_EQ(colours[0], magenta);
    EXPECT_EQ(colours[1], piezo13);
}

TEST(xray, force_arrow_takes_a_sixth_of_the_height_and_small_heads)
{
    auto p = make();
    p->force_peak = 100;
    add_force(*p, 10, 4, 8, 30, 60); // row 3
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    // Window 26.6667 by 20: scale 20 / 6 / 100, so v_len 2 and h_len 1;
    // head_w = 26.6667 / 265 = 0.1006289, head_l = 20 / 40 = 0.5. Tip at
    // (4 + 0, 8 + 5): the force's own elevation, shifted.
    const auto s = segments(p->pictures.xray.picture, red);
    ASSERT_EQ(s.size(), 8u);
    EXPECT_TRUE(has_segment(s, 4, 13, 3, 13));
    EXPECT_TRUE(has_segment(s, 4, 13, 4, 15));
    EXPECT_TRUE(has_segment(s, 4, 13, 4 - 0.1006289f, 13.5f));
    EXPECT_TRUE(has_segment(s, 4, 13, 4 + 0.1006289f, 13.5f));
    EXPECT_TRUE(has_segment(s, 4 - 0.1006289f, 13.5f, 4 + 0.1006289f, 13.5f));
    EXPECT_TRUE(has_segment(s, 4, 13, 3.5f, 13 + 0.1006289f));
    EXPECT_TRUE(has_segment(s, 4, 13, 3.5f, 13 - 0.1006289f));
}

TEST(xray, forces_are_drawn_once_for_every_surface_of_the_loop)
{
    // Sliding surface, one piezometric surface (skipped) and the ground:
    // three passes, each drawing the 8 segments of the arrow.
    auto p = make({3, 3, 0, 10, 0, 10, 1}, 1);
    p->surface_defined = -1;
    test::set_surface(*p, 2, [](double, double) { return 7; });
    test::set_surface(*p, p->sliding_index, [](double, double) { return 6.5; });
    p->force_peak = 100;
    add_force(*p, 10, 4, 8, 30, 60);
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    EXPECT_EQ(segments(p->pictures.xray.picture, red).size(), 24u);
}

TEST(xray, force_belongs_to_the_row_whose_upper_half_spacing_it_reaches)
{
    auto p = make();
    p->force_peak = 100;
    add_force(*p, 7.5f, 1, 8, 30, 0); // X(2) + 2.5: row 2, not row 3
    add_force(*p, -10, 2, 8, 30, 0);  // |X| = 10: row 3
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p); // row 3, z0 = 5
    auto s = segments(p->pictures.xray.picture, red);
    EXPECT_TRUE(has_segment(s, 2, 13, 1, 13));
    EXPECT_FALSE(has_segment(s, 1, 13, 0, 13));
    xray_step(*p); // row 2, y0 = 0.5, z0 = 2.5
    s = segments(p->pictures.xray.picture, red);
    EXPECT_TRUE(has_segment(s, 1.5f, 10.5f, 0.5f, 10.5f));
}

TEST(xray, zero_force_peak_gives_arrows_of_no_length)
{
    auto p = make();
    p->force_peak = 0;
    add_force(*p, 10, 4, 8, 30, 60);
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    // Two shafts from the tip to itself, no heads.
    const auto s = segments(p->pictures.xray.picture, red);
    ASSERT_EQ(s.size(), 2u);
    for (const auto& g : s) {
        EXPECT_FLOAT_EQ(g.x1, 4);
        EXPECT_FLOAT_EQ(g.y1, 13);
        EXPECT_FLOAT_EQ(g.x2, 4);
        EXPECT_FLOAT_EQ(g.y2, 13);
    }
}

TEST(xray, flagged_components_are_drawn_as_zero)
{
    auto p = make();
    p->force_peak = 100;
    add_force(*p, 10, 4, 8, 30, 60);
    p->force_v_ignored[1] = 1;
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    // Horizontal shaft and head (4 segments) and a vertical shaft of no length.
    const auto s = segments(p->pictures.xray.picture, red);
    EXPECT_EQ(s.size(), 5u);
    EXPECT_TRUE(has_segment(s, 4, 13, 4, 13));
    EXPECT_FALSE(has_segment(s, 4, 13, 4, 15));
}

TEST(xray, no_forces_and_no_water_draw_no_arrows)
{
    auto p = make();
    p->force_peak = 100;
    ScriptedPort port;
    run_xray(*p, port);
    EXPECT_TRUE(segments(p->pictures.xray.picture, red).empty());
    EXPECT_TRUE(segments(p->pictures.xray.picture, blue).empty());
}

TEST(xray, water_arrows_are_horizontal_blue_and_shifted_with_the_section)
{
    auto p = make();
    p->force_peak = 100;
    p->head_water_force[3] = -50, p->head_water_y[3] = 6, p->head_water_z[3] = 9;
    p->crack_water_force[3] = 20, p->crack_water_z[3] = 10;
    ScriptedPort port;
    start_xray(*p, port);
    xray_step(*p);
    // Scale 1 / 30: the ponded water -50 gives h_len -1.6667 at (6, 9 + 5);
    // its head opens toward +y: base at 6 + 0.5. The crack water 20 gives
    // 0.6667 at (6, 10 + 5), head base at 6 - 0.5.
    const auto s = segments(p->pictures.xray.picture, blue);
    ASSERT_EQ(s.size(), 10u); // each: h shaft, empty v shaft, 3 head lines
    EXPECT_TRUE(has_segment(s, 6, 14, 7.6666667f, 14));
    EXPECT_TRUE(has_segment(s, 6, 14, 6.5f, 14 + 0.1006289f));
    EXPECT_TRUE(has_segment(s, 6, 15, 5.3333333f, 15));
    EXPECT_TRUE(has_segment(s, 6, 15, 5.5f, 15 - 0.1006289f));
}

TEST(xray, elevations_are_exaggerated_but_forces_are_not)
{
    auto p = make();
    p->vert_exag = 2;
    p->force_peak = 100;
    add_force(*p, 10, 4, 8, 30, 0);
    ScriptedPort port;
    start_xray(*p, port);
    // Height 12: xray_dy = (12 / 3) / 4 = 1, xray_dz = 5; z0 of row 3 is 10.
    EXPECT_FLOAT_EQ(p->pictures.xray_state.xray_dz, 5);
    xray_step(*p);
    const auto r = runs(p->pictures.xray.picture, layer1);
    ASSERT_EQ(r.size(), 1u);
    const auto pts = run_points(p->pictures.xray.picture, *r[0]);
    EXPECT_FLOAT_EQ(pts[0].y, 24); // 7 * 2 + 10
    EXPECT_FLOAT_EQ(pts[2].y, 34); // 12 * 2 + 10
    // Tip at 8 + 10, not 8 * 2 + 10.
    const auto s = segments(p->pictures.xray.picture, red);
    ASSERT_FALSE(s.empty());
    EXPECT_FLOAT_EQ(s[0].x1, 4);
    EXPECT_FLOAT_EQ(s[0].y1, 18);
}

} // namespace
} // namespace tobel
