#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "geometry/section_window.h"
#include "graphics/drawing.h"
#include "graphics/recording_surface.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

// A surface that keeps every segment as it was asked for, unjoined, so that
// the parts of an arrow can be counted one by one.
class SegmentLog : public DrawSurface {
  public:
    struct Segment {
        float x1, y1, x2, y2;
        Colour colour;
    };
    std::vector<Segment> segments;
    std::vector<std::vector<DevicePoint>> polygons;
    SegmentLog() : DrawSurface(800, 600) {}

  protected:
    void on_cls() override {}
    void on_scale() override {}
    void on_segment(float x1, float y1, float x2, float y2, Colour c, int) override
    {
        segments.push_back({x1, y1, x2, y2, c});
    }
    void on_dot(float, float, Colour, int) override {}
    void on_polygon(const std::vector<DevicePoint>& pts, Colour, Colour) override { polygons.push_back(pts); }
    void on_fill_box(float, float, float, float, Colour) override {}
    void on_text(float, float, const std::string&, Colour) override {}
    void on_font(const std::string&, float) override {}
    void on_image(int, float, float, float, float) override {}
};

void expect_segment(const SegmentLog::Segment& s, double x1, double y1, double x2, double y2)
{
    EXPECT_FLOAT_EQ(s.x1, float(x1));
    EXPECT_FLOAT_EQ(s.y1, float(y1));
    EXPECT_FLOAT_EQ(s.x2, float(x2));
    EXPECT_FLOAT_EQ(s.y2, float(y2));
}

std::vector<std::string> texts_of(const DisplayList& list)
{
    std::vector<std::string> out;
    for (const auto& item : list.items)
        if (item.op == DrawOp::text)
            out.push_back(list.texts[item.text]);
    std::sort(out.begin(), out.end());
    return out;
}

// ---- fit of a world window -------------------------------------------------

TEST(FitWindow, zero_width_extent_takes_aspect_one_hundredth_and_the_width_branch)
{
    FitInputs in;
    in.extent_left = 3;
    in.extent_bottom = 10;
    in.extent_width = 0;
    in.extent_height = 4;
    in.area_width = 800;
    in.area_height = 600;
    in.margin_ratio = 0.1f;
    const WorldWindow w = fit_window(in);
    // Width branch: s = (0 / 0.8) / 800 = 0, so the window shrinks to the
    // point (3, 10 - (0 - 4) / 2) = (3, 12). The height branch would have
    // given a bottom of 10 - 0.1 * 5 = 9.5 instead.
    EXPECT_FLOAT_EQ(w.win_left, 3.0f);
    EXPECT_FLOAT_EQ(w.win_right, 3.0f);
    EXPECT_FLOAT_EQ(w.win_bottom, 12.0f);
    EXPECT_FLOAT_EQ(w.win_top, 12.0f);
    EXPECT_FLOAT_EQ(w.pick_unit, 0.0f);
}

TEST(FitWindow, every_margin_in_use_keeps_its_ratio_clear_at_both_ends)
{
    for (const float m : {0.10f, 0.17f, 0.11f, 0.05f}) {
        SCOPED_TRACE(m);
        FitInputs in;
        in.extent_left = 0;
        in.extent_bottom = 0;
        in.extent_width = 100;
        in.extent_height = 10;
        in.area_width = 800;
        in.area_height = 600;
        in.margin_ratio = m;
        const WorldWindow w = fit_window(in);
        // Width branch (aspect 0.1 < 0.75): the window is 100 / (1 - 2m) wide,
        // with m of it left clear on each side; the height follows at the
        // same scale, 600 / 800 of the width, centred on the extent.
        const double width = 100.0 / (1.0 - 2.0 * double(m));
        EXPECT_NEAR(w.win_left, -double(m) * width, 1e-4);
        EXPECT_NEAR(w.win_right, 100.0 + double(m) * width, 1e-4);
        EXPECT_NEAR(w.win_top - w.win_bottom, 0.75 * width, 1e-4);
        EXPECT_NEAR((w.win_top + w.win_bottom) / 2, 5.0, 1e-4);
        EXPECT_NEAR(w.pick_unit, width / 100, 1e-5);
    }
}

TEST(FitWindow, tall_extent_fills_the_height_and_is_centred_across)
{
    FitInputs in;
    in.extent_width = 10;
    in.extent_height = 80;
    in.area_width = 800;
    in.area_height = 600;
    in.margin_ratio = 0.1f;
    const WorldWindow w = fit_window(in);
    // s = (80 / 0.8) / 600: 100 high, 800/600 * 100 = 133.33 wide; bottom
    // -0.1 * 100 = -10; left = -(133.33 - 10) / 2.
    EXPECT_NEAR(w.win_bottom, -10.0, 1e-4);
    EXPECT_NEAR(w.win_top, 90.0, 1e-4);
    EXPECT_NEAR(w.win_left, -(400.0 / 3.0 - 10.0) / 2.0, 1e-4);
    EXPECT_NEAR(w.win_right - w.win_left, 400.0 / 3.0, 1e-4);
}

// ---- tick steps and first ticks -------------------------------------------

TEST(TickStep, boundary_values_take_the_smaller_step)
{
    EXPECT_EQ(tick_step(2.99), 0.25);
    EXPECT_EQ(tick_step(3), 0.5); // 3 is not below 3
    EXPECT_EQ(tick_step(5), 0.5);
    EXPECT_EQ(tick_step(5.01), 1);
    EXPECT_EQ(tick_step(10), 1);
    EXPECT_EQ(tick_step(2000), 200);
    EXPECT_EQ(tick_step(1000000), 100000);
    EXPECT_EQ(tick_step(1000001), 500000);
    EXPECT_EQ(tick_step(1200000), 500000);
}

TEST(FirstTick, whole_steps_divide_the_rounded_start_truncating_toward_zero)
{
    EXPECT_EQ(first_tick(12.7, 5), 10);   // 13 \ 5 = 2
    EXPECT_EQ(first_tick(-12.7, 5), -10); // -13 \ 5 = -2, toward zero
    EXPECT_EQ(first_tick(2.5, 1), 2);     // 2.5 rounds to the even 2
    EXPECT_EQ(first_tick(3.5, 1), 4);     // 3.5 rounds to the even 4
    EXPECT_EQ(first_tick(19.6, 20), 20);  // 20 \ 20 = 1
}

TEST(FirstTick, half_and_quarter_steps_work_in_tenths_and_hundredths)
{
    EXPECT_EQ(first_tick(1.26, 0.5), 1.0);   // CInt(12.6) = 13; 13 \ 5 = 2; 2 * 5 / 10
    EXPECT_EQ(first_tick(-1.26, 0.5), -1.0); // -13 \ 5 = -2
    EXPECT_EQ(first_tick(1.26, 0.25), 1.25); // 126 \ 25 = 5; 5 * 25 / 100
    EXPECT_EQ(first_tick(0.9, 0.25), 0.75);  // 90 \ 25 = 3
}

TEST(DrawAxes, extents_of_exactly_ten_and_five_take_steps_one_and_one_half)
{
    auto p = make_project({3, 3, 0, 20, 0, 20, 1});
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 5, 10, 0); // 10 wide, 5 high
    draw_axes(*p, s, false);
    // Across: step 1; a = 0.4, the first tick 0 is moved past a + 10/120 to 1,
    // then 1 to 10. Upward: step 0.5 from ((50 \ 5) * 5) / 10 = 5 down while
    // above b + 5/100 = 5/38 + 0.05: 5, 4.5, ..., .5.
    std::vector<std::string> want = {" 1", " 2",   " 3", " 4",   " 5", " 6",   " 7", " 8",   " 9", " 10",
                                     " 5", " 4.5", " 4", " 3.5", " 3", " 2.5", " 2", " 1.5", " 1", " .5"};
    std::sort(want.begin(), want.end());
    EXPECT_EQ(texts_of(list), want);
}

TEST(DrawAxes, a_window_1200000_high_ticks_every_500000)
{
    auto p = make_project({3, 3, 0, 20, 0, 20, 1});
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 1200000, 10, 0);
    draw_axes(*p, s, false);
    // Upward: 500000 * (1200000 \ 500000) = 1000000, then 500000; 0 is not
    // above b + 12000 = 1200000/38 + 12000.
    std::vector<std::string> want = {" 1", " 2", " 3", " 4",  " 5",       " 6",
                                     " 7", " 8", " 9", " 10", " 1000000", " 500000"};
    std::sort(want.begin(), want.end());
    EXPECT_EQ(texts_of(list), want);
}

TEST(DrawAxes, exaggerated_picture_labels_true_elevations_at_twice_the_height)
{
    auto p = make_project({3, 3, 0, 20, 0, 20, 1});
    p->vert_exag = 2;
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 20, 10, 0); // true elevations 0 to 10 drawn 0 to 20 high
    draw_axes(*p, s, false);
    // The labels are those of a window 10 high: step 1 from 10 down to 1 up
    // the side, as 1 to 10 across. Read from the exaggerated window they
    // would have been 20, 18, ..., 2.
    std::vector<std::string> want;
    for (int i = 1; i <= 10; ++i)
        for (int twice = 0; twice < 2; ++twice)
            want.push_back(" " + std::to_string(i));
    std::sort(want.begin(), want.end());
    EXPECT_EQ(texts_of(list), want);
    // The tick of elevation 5 is drawn in a window of top 10 and bottom 0, at
    // device y 300: where world 10 = 2 * 5 lies in the exaggerated window.
    const DrawItem* window = nullptr;
    bool found = false;
    for (const auto& item : list.items) {
        if (item.op == DrawOp::scale)
            window = &item;
        if (item.op != DrawOp::lines || window == nullptr)
            continue;
        const auto pts = run_points(list, item);
        if (pts.size() == 2 && pts[0].y == 5.0f && pts[1].y == 5.0f && pts[0].x < 1.0f) {
            const float top = list.coords[window->first + 1], bottom = list.coords[window->first + 3];
            EXPECT_FLOAT_EQ(top, 10.0f);
            EXPECT_FLOAT_EQ(bottom, 0.0f);
            EXPECT_FLOAT_EQ((5.0f - top) / (bottom - top) * 600.0f, 300.0f);
            found = true;
        }
    }
    EXPECT_TRUE(found);
    // The window is left as it was found.
    EXPECT_FLOAT_EQ(s.ScaleTop(), 20.0f);
    EXPECT_FLOAT_EQ(s.ScaleHeight(), -20.0f);
}

// ---- elevation range -------------------------------------------------------

TEST(FindZRange, low_end_below_the_floor_is_lifted_to_base_z_and_high_end_is_not)
{
    auto p = make_project({2, 2, 0, 10, 0, 10, 2});
    set_surface(*p, 1, [](double, double) { return -5.0; });
    set_surface(*p, 2, [](double, double) { return 12.0; });
    p->zgrid(2, 2, p->sliding_index) = -30;
    p->surface_defined = -1;
    p->base_z = 1;
    const ZRange z = find_z_range(*p);
    EXPECT_EQ(z.z_low, 1.0f); // -30 and -5 both lie below the floor at 1
    EXPECT_EQ(z.z_high, 12.0f);
}

TEST(FindZRange, high_end_below_the_floor_stays_where_it_is)
{
    auto p = make_project({2, 2, 0, 10, 0, 10, 1});
    set_surface(*p, 1, [](double, double) { return -5.0; });
    p->base_z = 0;
    const ZRange z = find_z_range(*p);
    EXPECT_EQ(z.z_low, 0.0f);
    EXPECT_EQ(z.z_high, -5.0f);
}

// ---- force arrow ---------------------------------------------------------------

TEST(ForceArrow, no_lengths_draw_two_zero_length_lines_and_no_head)
{
    SegmentLog s;
    draw_force_arrow(s, 3, 4, 0, 0, 1, 2, force_red);
    ASSERT_EQ(s.segments.size(), 2u);
    expect_segment(s.segments[0], 3, 4, 3, 4);
    expect_segment(s.segments[1], 3, 4, 3, 4);
    EXPECT_EQ(s.segments[0].colour, force_red);
}

TEST(ForceArrow, positive_vertical_load_has_its_head_above_the_tip)
{
    SegmentLog s;
    draw_force_arrow(s, 3, 4, 5, 0, 1, 2, force_red);
    ASSERT_EQ(s.segments.size(), 5u);
    expect_segment(s.segments[1], 3, 4, 3, 9);
    expect_segment(s.segments[2], 3, 4, 2, 6);
    expect_segment(s.segments[3], 3, 4, 4, 6);
    expect_segment(s.segments[4], 2, 6, 4, 6);
}

TEST(ForceArrow, negative_vertical_load_has_its_head_below_the_tip)
{
    SegmentLog s;
    draw_force_arrow(s, 3, 4, -5, 0, 1, 2, force_red);
    ASSERT_EQ(s.segments.size(), 5u);
    expect_segment(s.segments[1], 3, 4, 3, -1);
    expect_segment(s.segments[2], 3, 4, 2, 2);
    expect_segment(s.segments[3], 3, 4, 4, 2);
    expect_segment(s.segments[4], 2, 2, 4, 2);
}

TEST(ForceArrow, positive_horizontal_push_comes_from_lower_x_with_the_sizes_across)
{
    SegmentLog s;
    draw_force_arrow(s, 3, 4, 0, 5, 1, 2, water_blue);
    ASSERT_EQ(s.segments.size(), 5u);
    expect_segment(s.segments[0], 3, 4, -2, 4);
    // The head is head_l long along x and head_w wide along y.
    expect_segment(s.segments[2], 3, 4, 1, 5);
    expect_segment(s.segments[3], 3, 4, 1, 3);
    expect_segment(s.segments[4], 1, 5, 1, 3);
    EXPECT_EQ(s.segments[4].colour, water_blue);
}

TEST(ForceArrow, negative_horizontal_push_has_its_head_on_the_higher_x_side)
{
    SegmentLog s;
    draw_force_arrow(s, 3, 4, 0, -5, 1, 2, water_blue);
    ASSERT_EQ(s.segments.size(), 5u);
    expect_segment(s.segments[0], 3, 4, 8, 4);
    expect_segment(s.segments[2], 3, 4, 5, 5);
    expect_segment(s.segments[3], 3, 4, 5, 3);
    expect_segment(s.segments[4], 5, 5, 5, 3);
}

TEST(ForceArrow, both_components_give_both_heads_vertical_first)
{
    SegmentLog s;
    draw_force_arrow(s, 0, 0, 1, 1, 0.5, 0.25, force_red);
    ASSERT_EQ(s.segments.size(), 8u);
    expect_segment(s.segments[4], -0.5, 0.25, 0.5, 0.25);   // vertical base
    expect_segment(s.segments[7], -0.25, 0.5, -0.25, -0.5); // horizontal base
}

// ---- section polygon -------------------------------------------------------

TEST(SectionPolygon, last_point_is_left_out_and_half_pixels_round_to_even)
{
    SegmentLog s;
    s.Scale(0, 0, 800, 600); // world units are device pixels
    draw_section_polygon(s, {{0.5, 1.5}, {2.5, 3.5}, {10, 10}, {99, 99}}, 5);
    ASSERT_EQ(s.polygons.size(), 1u);
    const auto& pts = s.polygons[0];
    ASSERT_EQ(pts.size(), 3u); // (99, 99) takes no part
    EXPECT_EQ(pts[0].x, 0);    // 0.5 -> 0
    EXPECT_EQ(pts[0].y, 2);    // 1.5 -> 2
    EXPECT_EQ(pts[1].x, 2);    // 2.5 -> 2
    EXPECT_EQ(pts[1].y, 4);    // 3.5 -> 4
    EXPECT_EQ(pts[2].x, 10);
}

TEST(SectionPolygon, y_up_window_maps_world_to_pixels_from_the_top)
{
    SegmentLog s;
    s.Scale(0, 60, 80, 0); // ten pixels a unit, y up
    draw_section_polygon(s, {{1, 1}, {2, 59}, {8, 30}, {1, 1}}, 5);
    ASSERT_EQ(s.polygons.size(), 1u);
    const auto& pts = s.polygons[0];
    ASSERT_EQ(pts.size(), 3u);
    EXPECT_EQ(pts[0].x, 10);
    EXPECT_EQ(pts[0].y, 590); // (60 - 1) * 10
    EXPECT_EQ(pts[1].y, 10);
    EXPECT_EQ(pts[2].x, 80);
    EXPECT_EQ(pts[2].y, 300);
}

// ---- colour of a stack surface --------------------------------------------

TEST(SurfaceColour, rules_apply_in_order_each_overriding_the_one_before)
{
    auto p = make_project({2, 2, 0, 10, 0, 10, 2});
    p->num_piezos = 1;
    derive_counts(*p); // layers 1, 2; piezo 3; sliding 4
    for (int k = 1; k <= 15; ++k) {
        p->layer_colour[std::size_t(k)] = 100 + k;
        p->piezo_colour[std::size_t(k)] = 200 + k;
    }
    p->sliding_colour = 999;
    EXPECT_EQ(surface_colour(*p, 1), 101);
    EXPECT_EQ(surface_colour(*p, 3), 201); // a piezometric surface: its own colour
    p->mat_type[2] = 5;
    EXPECT_EQ(surface_colour(*p, 2), 213);        // water over the layer colour
    EXPECT_EQ(surface_colour(*p, 2, false), 102); // the isometry's rule
    p->mat_type[3] = 5;
    EXPECT_EQ(surface_colour(*p, 3), 213); // water over the piezometric colour
    p->mat_type[4] = 5;
    EXPECT_EQ(surface_colour(*p, 4), 999); // the sliding colour over all
}

// ---- recording surface -------------------------------------------------------

TEST(RecordingSurface, a_thousand_joined_segments_stay_one_run)
{
    DisplayList list;
    RecordingSurface s(list);
    s.PSet(0, 0);
    for (int i = 1; i <= 1000; ++i)
        s.LineTo(i, i % 2, 7);
    int runs = 0;
    for (const auto& item : list.items)
        if (item.op == DrawOp::lines) {
            ++runs;
            const auto pts = run_points(list, item);
            ASSERT_EQ(pts.size(), 1001u);
            EXPECT_EQ(pts[1000].x, 1000.0f);
            EXPECT_EQ(pts[999].y, 1.0f);
        }
    EXPECT_EQ(runs, 1);
    // A change of colour starts a new run.
    s.LineTo(1001, 0, 8);
    EXPECT_EQ(list.items.back().op, DrawOp::lines);
    EXPECT_EQ(list.items.back().colour, 8);
    EXPECT_EQ(run_points(list, list.items.back()).size(), 2u);
}

} // namespace
} // namespace tobel::test
