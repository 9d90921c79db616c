// Valid results in searches: the lowest valid trial beside the best record,
// the choice of valid results only, the edge of the grid and the trial limit.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "project/runtime_error.h"
#include "search/grid_search.h"
#include "commands/search_commands.h"
#include "search/trial.h"
#include "search_fixture.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::grid;
using test::make_search_slope;
using test::ScriptedPort;

// The search slope on a soft bed: under elevation 7 lies a material whose
// unit weight is not a number, so every circle that reaches it fails (F = 0)
// while the shallower ones solve.
std::unique_ptr<Project> slope_on_failing_bed()
{
    auto p = make_search_slope();
    p->num_layers = 2;
    derive_counts(*p);
    redim_grids(*p);
    for (int j = 1; j <= p->num_cols; ++j) {
        p->zgrid(1, j, 1) = 7;
        p->zgrid(1, j, 2) = float(test::example_2d_ground(double(j - 1) * p->col_spacing));
    }
    p->mat_type[1] = p->mat_type[2] = 1;
    p->mat_unit_weight[1] = std::numeric_limits<float>::quiet_NaN();
    p->mat_unit_weight[2] = 20;
    p->mat_cohesion[1] = p->mat_cohesion[2] = 10;
    p->mat_phi[1] = p->mat_phi[2] = 20;
    return p;
}

// The least F among the valid records of the summary, by a plain scan.
float lowest_valid(const SearchState& s, int& number)
{
    float best = std::numeric_limits<float>::infinity();
    number = 0;
    for (int n = 1; n <= s.summary_count; ++n)
        if (s.summary_valid[std::size_t(n)] != 0 && s.summary_fos[std::size_t(n)] < best) {
            best = s.summary_fos[std::size_t(n)];
            number = n;
        }
    return best;
}

TEST(search_validity, failed_radius_steps_win_the_classic_grid_and_the_lowest_valid_trial_is_named)
{
    auto p = slope_on_failing_bed();
    ScriptedPort port;
    init_search(*p);
    // Tangent at 8, one above the bed: a step of 2 reaches into it and fails.
    const auto r = grid(40, 50, 52, 48, 3, 3, 8, 2);
    build_grid_points(p->search, r);
    // A failed trial brings fos_min to 0, and the classic search then makes
    // no final surface.
    EXPECT_FALSE(grid_search(*p, port, r));
    const SearchState& s = p->search;
    // The classic rule: F = 0 is lower than anything and wins.
    EXPECT_EQ(s.best.fos, 0.0f);
    EXPECT_EQ(s.best.valid, 0);
    int number = 0;
    const float expected = lowest_valid(s, number);
    ASSERT_GT(number, 0);
    EXPECT_GT(expected, 0.5f);
    EXPECT_EQ(s.best_valid.trial_number, number);
    EXPECT_EQ(s.best_valid.fos, expected);
    EXPECT_NE(s.best_valid.valid, 0);
}

TEST(search_validity, with_valid_results_only_no_failed_trial_becomes_the_best)
{
    auto p = slope_on_failing_bed();
    p->search.valid_only = true;
    ScriptedPort port;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 3, 3, 8, 2);
    build_grid_points(p->search, r);
    EXPECT_TRUE(grid_search(*p, port, r));
    const SearchState& s = p->search;
    EXPECT_NE(s.best.valid, 0);
    EXPECT_GT(s.best.fos, 0.5f);
    int number = 0;
    EXPECT_EQ(s.best.fos, lowest_valid(s, number));
    // No failed radius step was recorded as an improvement.
    for (int n = 1; n <= s.summary_count; ++n)
        EXPECT_GT(s.summary_fos[std::size_t(n)], 0.0f) << n;
    EXPECT_EQ(s.panel_caption, "Tentative Critical Surface");
}

TEST(search_validity, valid_only_with_every_trial_failing_gives_no_best)
{
    auto p = make_search_slope(51, 10, 20, std::numeric_limits<float>::quiet_NaN());
    p->search.valid_only = true;
    ScriptedPort port;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 2, 2, 10, 0);
    build_grid_points(p->search, r);
    EXPECT_FALSE(grid_search(*p, port, r));
    EXPECT_EQ(p->search.best.trial_number, 0);
    EXPECT_EQ(p->search.best_valid.trial_number, 0);
    EXPECT_EQ(p->search.trial_count, 4); // the trials are still recorded
}

TEST(search_validity, the_choice_of_valid_results_survives_a_new_project)
{
    SearchState s;
    s.valid_only = true;
    s.trial_count = 5;
    clear_search(s);
    EXPECT_TRUE(s.valid_only);
    EXPECT_EQ(s.trial_count, 0);
}

TEST(search_validity, grid_edge_is_any_side_with_width)
{
    SearchState s;
    build_grid_points(s, grid(10, 30, 50, 40, 3, 3, 0, 0)); // Y 10, 20, 30; Z 50, 45, 40
    EXPECT_TRUE(on_grid_edge(s, 20, 50));                   // top
    EXPECT_TRUE(on_grid_edge(s, 20, 40));                   // bottom
    EXPECT_TRUE(on_grid_edge(s, 10, 45));                   // low Y side
    EXPECT_TRUE(on_grid_edge(s, 30, 45));                   // high Y side
    EXPECT_FALSE(on_grid_edge(s, 20, 45));                  // the middle
    // A line down in Z has no sides in Y, only its ends.
    build_grid_points(s, grid(10, 30, 50, 40, 1, 3, 0, 0));
    EXPECT_FALSE(on_grid_edge(s, 10, 45));
    EXPECT_TRUE(on_grid_edge(s, 10, 50));
    // One centre has no edge at all.
    build_grid_points(s, grid(10, 30, 50, 40, 1, 1, 0, 0));
    EXPECT_FALSE(on_grid_edge(s, 10, 50));
}

TEST(search_validity, the_trial_limit_stops_the_search_and_says_why)
{
    // 182 by 182 centres packed within a few millimetres: every trial is in
    // bounds and recorded, and the 32768th overflows the 16-bit count.
    auto p = make_search_slope(11);
    ScriptedPort port;
    p->search_x = 0;
    p->grid_y_ul = 45;
    p->grid_y_lr = 45.0181f;
    p->grid_z_ul = 50.0181f;
    p->grid_z_lr = 50;
    p->grid_n_y = 182;
    p->grid_n_z = 182;
    p->tangent_z = 10;
    p->grid_tan_spacing = 0;
    p->aspect_in = 1;
    solve_grid_search(*p, port);
    EXPECT_EQ(p->search.trial_count, 32767);
    EXPECT_NE(p->search.stop_reason.find("trial limit"), std::string::npos) << p->search.stop_reason;
    EXPECT_NE(p->search.stop_reason.find("Error # 6 occured: Overflow"), std::string::npos)
        << p->search.stop_reason;
}

TEST(search_validity, a_search_that_runs_to_its_end_has_no_stop_reason)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->search.stop_reason = "left over";
    p->grid_y_ul = 40;
    p->grid_y_lr = 50;
    p->grid_z_ul = 52;
    p->grid_z_lr = 48;
    p->grid_n_y = 2;
    p->grid_n_z = 2;
    p->tangent_z = 10;
    p->aspect_in = 1;
    EXPECT_TRUE(solve_grid_search(*p, port));
    EXPECT_TRUE(p->search.stop_reason.empty());
}

TEST(search_validity, a_stop_by_the_user_is_named)
{
    auto p = make_search_slope();
    ScriptedPort port;
    port.stop_after_yields = 3;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 3, 3, 10, 0);
    build_grid_points(p->search, r);
    EXPECT_FALSE(grid_search(*p, port, r));
    EXPECT_EQ(p->search.stop_reason, "stopped by the user");
}

} // namespace
} // namespace tobel
