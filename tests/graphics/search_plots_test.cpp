// The search progress plots: the colour scale of F, the trial marker and
// trace, the crosses of a grid of centres and the legend.
#include <gtest/gtest.h>

#include "graphics/drawing.h"
#include "graphics/search_plots.h"
#include "graphics_support.h"
#include "project/defaults.h"
#include "solver/solver_fixture.h"

namespace tobel::test {
namespace {

TEST(fs_colour, class_limits_fall_in_the_lower_class)
{
    // 0.5: 390 * 0.5 + 60 = 255 red.
    EXPECT_EQ(fs_colour(0.5f), rgb(255, 0, 0));
    // 1: green 320 - 160 = 160 (the upper class would give 720 - 600 = 120 and blue).
    EXPECT_EQ(fs_colour(1.0f), rgb(255, 160, 0));
    // 1.2: green -720 + 720 = 0, blue 255.
    EXPECT_EQ(fs_colour(1.2f), rgb(255, 0, 255));
    // 1.4: red -1785 + 1785 = 0, blue 255.
    EXPECT_EQ(fs_colour(1.4f), rgb(0, 0, 255));
    // 1.8: blue -697.5 + 797.5 = 100.
    EXPECT_EQ(fs_colour(1.8f), rgb(0, 0, 100));
    // 2.3: green 255, blue -1173 + 1173 = 0.
    EXPECT_EQ(fs_colour(2.3f), rgb(0, 255, 0));
    // 3: green -814.29 + 624.29 + 255 = 65 (the class above is 65 too).
    EXPECT_EQ(fs_colour(3.0f), rgb(0, 65, 0));
}

TEST(fs_colour, ends_of_the_scale_are_fixed_colours)
{
    EXPECT_EQ(fs_colour(-0.1f), rgb(200, 225, 200));
    // 0 is not below 0: red 390 * 0 + 60 = 60.
    EXPECT_EQ(fs_colour(0.0f), rgb(60, 0, 0));
    EXPECT_EQ(fs_colour(3.5f), rgb(0, 65, 0));
    EXPECT_EQ(fs_colour(1000.0f), rgb(0, 65, 0));
}

TEST(fs_colour, components_are_rounded_half_to_even)
{
    // 1.0625 is exact: green -637.5 + 720 = 82.5, to the even 82.
    EXPECT_EQ(fs_colour(1.0625f), rgb(255, 82, 255));
    // 0.25 is exact: red 97.5 + 60 = 157.5, to the even 158.
    EXPECT_EQ(fs_colour(0.25f), rgb(158, 0, 0));
    // 0.125: red 48.75 + 60 = 108.75, to 109.
    EXPECT_EQ(fs_colour(0.125f), rgb(109, 0, 0));
    // 2.65: green -719.29 + 624.29 + 255 = 160.
    EXPECT_EQ(fs_colour(2.65f), rgb(0, 160, 0));
}

// One row of five columns 10 apart, the sliding surface 10, 8, 6, 8, 10.
static std::unique_ptr<Project> trace_project()
{
    SolverMesh m;
    m.rows = 1;
    m.cols = 5;
    m.x_max = 1;
    m.y_max = 40;
    auto p = make_solver_project(m);
    const float zs[] = {10, 8, 6, 8, 10};
    for (int c = 1; c <= 5; ++c)
        p->zgrid(1, c, p->sliding_index) = zs[c - 1];
    p->vert_exag = 2;
    return p;
}

TEST(trial_marker, box_spans_the_spacing_with_elevations_exaggerated)
{
    auto p = trace_project();
    p->search.trial.fos = 1;
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 100, 0);
    draw_trial_marker(*p, s, 50, 20, 4, 3);
    const auto boxes = boxes_of(list);
    ASSERT_EQ(boxes.size(), 1u);
    // y 50 -/+ 2; z 20 * 2 -/+ 1.5 * 2.
    EXPECT_FLOAT_EQ(boxes[0].x1, 48);
    EXPECT_FLOAT_EQ(boxes[0].y1, 37);
    EXPECT_FLOAT_EQ(boxes[0].x2, 52);
    EXPECT_FLOAT_EQ(boxes[0].y2, 43);
    EXPECT_EQ(boxes[0].colour, rgb(255, 160, 0));
    EXPECT_TRUE(items_of(list, DrawOp::lines).empty()); // no outline
}

TEST(trial_marker, tentative_marker_is_yellow_whatever_the_class)
{
    auto p = trace_project();
    p->search.trial.fos = 1;
    p->view.tentative_marker = true;
    DisplayList list;
    RecordingSurface s(list);
    draw_trial_marker(*p, s, 50, 20, 4, 3);
    ASSERT_EQ(boxes_of(list).size(), 1u);
    EXPECT_EQ(boxes_of(list)[0].colour, rgb(255, 255, 0));
}

TEST(trial_trace, follows_the_sliding_surface_of_view_row_in_the_class_colour)
{
    auto p = trace_project();
    p->view_row = 0;
    p->search.trial.fos = 1.5f; // blue -581.25 + 797.5 = 216.25, to 216
    DisplayList list;
    RecordingSurface s(list);
    draw_trial_trace(*p, s);
    EXPECT_EQ(p->view_row, 1);
    const auto runs = items_of(list, DrawOp::lines);
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0]->colour, rgb(0, 0, 216));
    EXPECT_EQ(runs[0]->width, 1);
    const auto pts = run_points(list, *runs[0]);
    ASSERT_EQ(pts.size(), 5u);
    const float ys[] = {0, 10, 20, 30, 40}, zs[] = {20, 16, 12, 16, 20};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_FLOAT_EQ(pts[i].x, ys[i]);
        EXPECT_FLOAT_EQ(pts[i].y, zs[i]);
    }
}

TEST(trial_trace, tentative_trace_is_yellow_two_pixels_and_the_width_goes_back_to_one)
{
    auto p = trace_project();
    p->view_row = 1;
    p->search.trial.fos = 1.5f;
    p->view.tentative_marker = true;
    DisplayList list;
    RecordingSurface s(list);
    draw_trial_trace(*p, s);
    const auto segs = segments_of(list);
    ASSERT_EQ(segs.size(), 4u);
    for (const auto& g : segs) {
        EXPECT_EQ(g.colour, rgb(255, 255, 0));
        EXPECT_EQ(g.width, 2);
    }
    EXPECT_EQ(s.DrawWidth(), 1);
}

static GridSearchRecord grid_5_by_3()
{
    GridSearchRecord r;
    r.grid_y1 = 10;
    r.grid_y2 = 50;
    r.grid_z_top = 40;
    r.grid_z_bottom = 20;
    r.grid_ny = 5;
    r.grid_nz = 3;
    return r;
}

TEST(search_grid, a_cross_at_every_node_with_square_arms)
{
    auto p = trace_project(); // vert_exag 2
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 1000, 0); // a hundredth of the width is 10
    GridSearchRecord r = grid_5_by_3();
    draw_search_grid(*p, s, r);
    const auto segs = segments_of(list);
    ASSERT_EQ(segs.size(), 30u);
    // Arms: 40 / (2 * 5) = 4 across, 20 / (2 * 3) = 3.333 up, both the smaller.
    const float b = 20.0f / 6;
    // First node (10, 40): across at drawn height 80, up from 80 + 3.333 to 80 - 3.333.
    EXPECT_NEAR(segs[0].x1, 10 - b, 1e-4);
    EXPECT_NEAR(segs[0].x2, 10 + b, 1e-4);
    EXPECT_FLOAT_EQ(segs[0].y1, 80);
    EXPECT_FLOAT_EQ(segs[0].y2, 80);
    EXPECT_FLOAT_EQ(segs[1].x1, 10);
    EXPECT_NEAR(segs[1].y1, 80 + b, 1e-4);
    EXPECT_NEAR(segs[1].y2, 80 - b, 1e-4);
    EXPECT_EQ(segs[0].colour, black);
    // Nodes run across first: the second is (20, 40); the last (50, 20).
    EXPECT_FLOAT_EQ(segs[3].x1, 20);
    EXPECT_FLOAT_EQ(segs[29].x1, 50);
    EXPECT_NEAR(segs[29].y1, 40 + b, 1e-4);
}

TEST(search_grid, arms_are_cut_to_a_hundredth_of_the_picture_width)
{
    auto p = trace_project();
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 100, 0); // a hundredth is 1
    GridSearchRecord r = grid_5_by_3();
    draw_search_grid(*p, s, r);
    const auto segs = segments_of(list);
    ASSERT_FALSE(segs.empty());
    EXPECT_FLOAT_EQ(segs[0].x1, 9);
    EXPECT_FLOAT_EQ(segs[0].x2, 11);
    EXPECT_FLOAT_EQ(segs[1].y1, 81);
    EXPECT_FLOAT_EQ(segs[1].y2, 79);
}

TEST(search_grid, a_count_of_zero_becomes_one)
{
    auto p = trace_project();
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 1000, 0);
    GridSearchRecord r = grid_5_by_3();
    r.grid_nz = 0;
    draw_search_grid(*p, s, r);
    EXPECT_EQ(r.grid_nz, 1.0f);
    const auto segs = segments_of(list);
    // One line of 5 nodes at the top, z 40; arms 4 across and 20 / 2 = 10
    // up, both 4.
    ASSERT_EQ(segs.size(), 10u);
    for (std::size_t i = 0; i < 10; i += 2) {
        EXPECT_FLOAT_EQ(segs[i].y1, 80);
        EXPECT_FLOAT_EQ(segs[i].x2 - segs[i].x1, 8);
    }
}

// The legend on a window 760 wide: box side 20, boxes at x = 760 * 17 / 18,
// the first top at 760 - 38 = 722, the texts 26 to the left and 3.6 lower.
struct Legend {
    DisplayList list;
    std::vector<Box> boxes;
    std::vector<Text> texts;
};
static Legend legend(float fs_low, float fs_high)
{
    Legend out;
    Project p;
    set_defaults(p);
    p.search.fos_min = fs_low;
    p.search.fos_max = fs_high;
    RecordingSurface s(out.list);
    s.Scale(0, 760, 760, 0);
    draw_fs_legend(p, s);
    out.boxes = boxes_of(out.list);
    out.texts = texts_of(out.list);
    return out;
}

TEST(fs_legend, six_rows_from_the_lowest_to_the_highest_first_row_red)
{
    const Legend g = legend(2.4f, 2.9f);
    ASSERT_EQ(g.boxes.size(), 6u);
    ASSERT_EQ(g.texts.size(), 7u);
    EXPECT_EQ(g.texts[0].text, "FS");
    EXPECT_NEAR(g.texts[0].x, 760.0 * 17 / 18 - 46, 1e-3);
    EXPECT_NEAR(g.texts[0].y, 718.4, 1e-3);
    // Greens of -271.43 F + 879.29 at 2.4 .. 2.9 by 0.1.
    const int green[] = {228, 201, 174, 146, 119, 92};
    const char* text[] = {"2.40", "2.50", "2.60", "2.70", "2.80", "2.90"};
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(g.boxes[k].colour, rgb(0, green[k], 0)) << k;
        EXPECT_NEAR(g.boxes[k].x1, 760.0 * 17 / 18, 1e-3);
        EXPECT_NEAR(g.boxes[k].x2, 760.0 * 17 / 18 + 20, 1e-3);
        EXPECT_NEAR(g.boxes[k].y1, 722 - 20.0 * double(k), 1e-3);
        EXPECT_NEAR(g.boxes[k].y2, 702 - 20.0 * double(k), 1e-3);
        EXPECT_EQ(g.texts[k + 1].text, text[k]);
        EXPECT_NEAR(g.texts[k + 1].x, 760.0 * 17 / 18 - 26, 1e-3);
        EXPECT_NEAR(g.texts[k + 1].y, 718.4 - 20.0 * double(k), 1e-3);
        EXPECT_EQ(g.texts[k + 1].colour, k == 0 ? rgb(255, 0, 0) : black);
    }
}

TEST(fs_legend, all_trials_equal_give_rows_all_alike)
{
    const Legend g = legend(1.1f, 1.1f);
    ASSERT_EQ(g.boxes.size(), 6u);
    for (std::size_t k = 0; k < 6; ++k) {
        // Green -660 + 720 = 60, blue 255.
        EXPECT_EQ(g.boxes[k].colour, rgb(255, 60, 255));
        EXPECT_EQ(g.texts[k + 1].text, "1.10");
    }
}

TEST(fs_legend, lowest_at_or_above_three_gives_three_rows)
{
    const Legend g = legend(3.2f, 4.0f);
    ASSERT_EQ(g.boxes.size(), 3u);
    EXPECT_EQ(g.texts[1].text, "3.20");
    EXPECT_EQ(g.texts[2].text, "3.60");
    EXPECT_EQ(g.texts[3].text, "4.00");
    for (const auto& b : g.boxes)
        EXPECT_EQ(b.colour, rgb(0, 65, 0));
    EXPECT_EQ(legend(3.0f, 3.5f).boxes.size(), 3u);
}

TEST(fs_legend, highest_at_or_below_one_half_gives_three_rows)
{
    const Legend g = legend(0.1f, 0.4f);
    ASSERT_EQ(g.boxes.size(), 3u);
    // 390 * 0.1 + 60 = 99.
    EXPECT_EQ(g.boxes[0].colour, rgb(99, 0, 0));
    EXPECT_EQ(legend(0.1f, 0.6f).boxes.size(), 6u);
}

} // namespace
} // namespace tobel::test
