// The pictures that follow a solve and a search through the port's hooks.
#include <gtest/gtest.h>

#include <algorithm>

#include "graphics/drawing.h"
#include "graphics/picture_hooks.h"
#include "graphics_support.h"
#include "project/settings.h"
#include "search/grid_search.h"
#include "search/search_fixture.h"
#include "search/trial.h"
#include "solver/bishop_janbu.h"
#include "solver/solver_fixture.h"
#include "solver/spencer_mp.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

// A scripted port that shows pictures.
struct DrawingPort : ScriptedPort {
    PictureHooks hooks{*this};
    DrawHooks* draw_hooks() override { return &hooks; }
};

// Boxes of the plan beyond the legend band: the columns.
static std::vector<Box> column_boxes(const Project& p)
{
    const auto scales = boxes_of(p.pictures.plan_active.picture, DrawOp::scale);
    const double band_end = scales.back().x1 + 0.23 * (scales.back().x2 - scales.back().x1);
    std::vector<Box> out;
    for (const Box& b : boxes_of(p.pictures.plan_active.picture))
        if (std::min(b.x1, b.x2) > band_end)
            out.push_back(b);
    return out;
}

// Every box stands on an active node of the solution, one per node.
static void expect_one_box_per_active_column(const Project& p)
{
    const auto boxes = column_boxes(p);
    EXPECT_EQ(long(boxes.size()), long(p.active_columns));
    std::vector<std::pair<int, int>> seen;
    for (const Box& b : boxes) {
        const int c = int(std::lround(((b.x1 + b.x2) / 2 - p.y_min) / p.col_spacing)) + 1;
        const int r = int(std::lround(((b.y1 + b.y2) / 2 - p.x_min) / p.row_spacing)) + 1;
        ASSERT_GE(r, 1);
        ASSERT_LE(r, p.num_rows);
        EXPECT_GT(p.col_weight(r, c), 0.0f) << r << "," << c;
        EXPECT_EQ(b.colour, p.layer_colour[1]);
        seen.emplace_back(r, c);
    }
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(std::unique(seen.begin(), seen.end()), seen.end());
}

TEST(picture_hooks, interactive_bishop_solve_draws_one_box_per_active_column)
{
    auto p = make_sphere_slope(21, 20);
    default_colours(*p);
    DrawingPort port;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    ASSERT_GT(p->active_columns, 0);
    EXPECT_TRUE(p->pictures.plan_active.exists);
    expect_one_box_per_active_column(*p);
}

TEST(picture_hooks, interactive_spencer_solve_draws_one_box_per_active_column)
{
    auto p = make_sphere_slope(21, 20);
    default_colours(*p);
    p->solution_method = 3;
    DrawingPort port;
    p->solve_interactive = -1;
    solve_spencer_mp(*p, port);
    ASSERT_GT(p->active_columns, 0);
    expect_one_box_per_active_column(*p);
}

TEST(picture_hooks, batch_solve_draws_nothing)
{
    auto p = make_sphere_slope(21, 20);
    DrawingPort port;
    p->solve_interactive = 0;
    solve_bishop_janbu(*p, port);
    EXPECT_TRUE(p->pictures.plan_active.picture.empty());
    EXPECT_FALSE(p->pictures.plan_active.exists);
    // An interactive solve on a port without pictures draws nothing either.
    auto q = make_sphere_slope(21, 20);
    ScriptedPort plain;
    q->solve_interactive = -1;
    solve_bishop_janbu(*q, plain);
    EXPECT_TRUE(q->pictures.plan_active.picture.empty());
}

TEST(picture_hooks, grid_search_plots_trials_final_surface_contours_and_legend)
{
    auto p = make_search_slope();
    p->vert_exag = 1;
    p->view.win_left = -10;
    p->view.win_right = 110;
    p->view.win_bottom = -20;
    p->view.win_top = 80;
    DrawingPort port;
    p->search.mode = 9;
    p->grid_n_y = 3;
    p->grid_n_z = 3;
    const GridSearchRecord r = grid(40, 50, 52, 48, 3, 3, 10, 0);
    build_grid_points(p->search, r);
    init_search(*p);
    ASSERT_TRUE(grid_search(*p, port, r));
    const SearchState& s = p->search;
    ASSERT_EQ(s.summary_count, 9);
    const DisplayList& list = p->pictures.search.picture;
    const Colour yellow = rgb(255, 255, 0);

    // The last box of the trials is the final one: yellow at the best centre,
    // the spacing of the grid, (50 - 40) / 2 = 5 by (52 - 48) / 2 = 2.
    const auto boxes = boxes_of(list);
    std::vector<Box> plain, tentative;
    for (const Box& b : boxes)
        (b.colour == yellow ? tentative : plain).push_back(b);
    ASSERT_FALSE(tentative.empty());
    const Box& last = tentative.back();
    EXPECT_FLOAT_EQ((last.x1 + last.x2) / 2, s.best.y);
    EXPECT_FLOAT_EQ((last.y1 + last.y2) / 2, s.best.z);
    EXPECT_FLOAT_EQ(last.x2 - last.x1, 5);
    EXPECT_FLOAT_EQ(last.y2 - last.y1, 2);
    // Every trial one box in its class colour, then the legend's rows.
    const int rows = s.fos_max > 0.5f && s.fos_min < 3.0f ? 6 : 3;
    EXPECT_EQ(long(plain.size()), long(s.summary_count) + rows);
    // The first trial is the best so far: drawn again, yellow.
    EXPECT_GE(tentative.size(), 2u);

    // The legend's heading and the drawn window is the section's.
    const auto texts = texts_of(list);
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const Text& t) { return t.text == "FS"; }));
    const auto scales = boxes_of(list, DrawOp::scale);
    ASSERT_FALSE(scales.empty());
    EXPECT_FLOAT_EQ(scales.front().x1, -10);
    EXPECT_FLOAT_EQ(scales.front().y1, 80);
    // Traces: at least one two-pixel yellow one.
    bool wide_yellow = false;
    for (const auto& g : segments_of(list))
        wide_yellow = wide_yellow || (g.colour == yellow && g.width == 2);
    EXPECT_TRUE(wide_yellow);
}

TEST(picture_hooks, search_without_hooks_draws_nothing)
{
    auto p = make_search_slope();
    ScriptedPort port;
    const GridSearchRecord r = grid(40, 50, 52, 48, 2, 2, 10, 0);
    build_grid_points(p->search, r);
    init_search(*p);
    grid_search(*p, port, r);
    EXPECT_TRUE(p->pictures.search.picture.empty());
    EXPECT_GT(p->search.plot_count, 0);
}

} // namespace
} // namespace tobel::test
