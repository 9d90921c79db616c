// The grid search and the auto search on the small 2-D slope.
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <utility>

#include "commands/search_commands.h"
#include "project/runtime_error.h"
#include "search/auto_search.h"
#include "search/grid_search.h"
#include "search/trial.h"
#include "search_fixture.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "support/scripted_port.h"
#include "surfaces/ellipsoid.h"

namespace tobel {
namespace {

using test::grid;
using test::make_search_slope;
using test::ScriptedPort;

TEST(grid_search, centres_run_along_the_top_line_first_with_z_falling)
{
    SearchState s;
    build_grid_points(s, grid(10, 30, 50, 40, 3, 2, 0, 0));
    EXPECT_EQ(s.point_last, 5);
    EXPECT_EQ(s.grid_dy, 10.0f);
    EXPECT_EQ(s.grid_dz, 10.0f);
    const float ys[] = {10, 20, 30, 10, 20, 30};
    const float zs[] = {50, 50, 50, 40, 40, 40};
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(s.point_y[std::size_t(k)], ys[k]) << k;
        EXPECT_EQ(s.point_z[std::size_t(k)], zs[k]) << k;
    }
}

TEST(grid_search, one_column_is_a_line_down_in_z_and_one_by_one_is_one_point)
{
    SearchState s;
    build_grid_points(s, grid(10, 30, 50, 40, 1, 3, 0, 0));
    EXPECT_EQ(s.grid_dy, 0.0f);
    EXPECT_EQ(s.point_last, 2);
    EXPECT_EQ(s.point_y[2], 10.0f);
    EXPECT_EQ(s.point_z[2], 40.0f);
    build_grid_points(s, grid(10, 30, 50, 40, 1, 1, 0, 0));
    EXPECT_EQ(s.point_last, 0);
    EXPECT_EQ(s.grid_dz, 0.0f);
}

TEST(grid_search, more_than_100001_centres_is_a_subscript_error)
{
    SearchState s;
    EXPECT_THROW(build_grid_points(s, grid(0, 1, 2, 1, 400, 300, 0, 0)), RuntimeError);
}

TEST(grid_search, trials_are_made_row_by_row_from_the_highest_z)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 3, 2, 10, 0);
    build_grid_points(p->search, r);
    EXPECT_TRUE(grid_search(*p, port, r));
    const SearchState& s = p->search;
    ASSERT_EQ(s.trial_count, 6);
    const float ys[] = {40, 45, 50, 40, 45, 50};
    const float zs[] = {52, 52, 52, 48, 48, 48};
    for (int n = 1; n <= 6; ++n) {
        EXPECT_EQ(s.summary_y[std::size_t(n)], ys[n - 1]);
        EXPECT_EQ(s.summary_z[std::size_t(n)], zs[n - 1]);
        EXPECT_GE(s.summary_fos[std::size_t(n)], s.best.fos);
    }
    EXPECT_EQ(port.progress_lines.size(), 6u);
    // The best is the lowest F; its number and centre point back to the table.
    EXPECT_EQ(s.summary_fos[std::size_t(s.best.trial_number)], s.best.fos);
    EXPECT_EQ(s.point_y[std::size_t(s.best.best_point)], s.best.y);
}

// The surfaces a grid search solves, counted by following the line search of
// the radius by hand: the tangent radius, one step either way, then on in the
// direction that improved while F keeps falling. Out-of-bounds surfaces are
// not solved.
struct HandCount {
    long surfaces = 0;
    double columns = 0;
    long out = 0; // surfaces out of bounds, not solved
};

HandCount count_by_hand(const GridSearchRecord& r)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    build_grid_points(p->search, r);
    HandCount n;
    // Solves the surface; false when it is out of bounds, else F in f.
    auto solve = [&](float y, float z, float radius, float& f) {
        p->ell_y = y;
        p->ell_z = z;
        p->ell_radius = radius;
        build_ellipsoid(*p);
        check_surface(*p);
        if (p->surface_out_flag == -1) {
            ++n.out;
            return false;
        }
        p->solve_interactive = 0;
        solve_bishop_janbu(*p, port);
        ++n.surfaces;
        n.columns += p->active_columns;
        f = p->factor_of_safety;
        return true;
    };
    for (int k = 0; k <= p->search.point_last; ++k) {
        const float y = p->search.point_y[std::size_t(k)], z = p->search.point_z[std::size_t(k)];
        const float t = r.grid_tangent_z, step = r.grid_radius_step;
        auto radius = [&](float steps) { return float(double(z) - double(t) + double(steps * step)); };
        float record = 0, f = 0;
        if (!solve(y, z, radius(0), record) || step == 0)
            continue;
        int direction = 0;
        if (solve(y, z, radius(1), f) && f < record) {
            record = f;
            direction = 1;
        }
        if (solve(y, z, radius(-1), f) && f < record) {
            record = f;
            direction = -1;
        }
        for (int count = 2; direction != 0; ++count) {
            if (!solve(y, z, radius(float(count * direction)), f) || !(f < record))
                break;
            record = f;
        }
    }
    return n;
}

TEST(grid_search, every_solved_surface_and_its_columns_are_counted)
{
    long out = 0;
    // The second grid reaches to Y = 10, where the deeper circles run out of
    // the section beyond the toe.
    for (const auto& [y1, tangent] : {std::pair{35.0f, 10.0f}, std::pair{10.0f, 0.0f}})
        for (const float step : {0.0f, 1.0f, 3.0f}) {
            auto p = make_search_slope();
            ScriptedPort port;
            init_search(*p);
            const auto r = grid(y1, 55, 56, 44, 3, 3, tangent, step);
            build_grid_points(p->search, r);
            grid_search(*p, port, r);
            const HandCount n = count_by_hand(r);
            const SearchState& s = p->search;
            EXPECT_EQ(s.solved_surfaces, n.surfaces) << y1 << " step " << step;
            EXPECT_EQ(s.solved_columns, n.columns) << y1 << " step " << step;
            // Without steps every surface in bounds is a trial; with them
            // some are solved and not recorded.
            if (step == 0)
                EXPECT_EQ(s.solved_surfaces, s.trial_count) << y1;
            else
                EXPECT_GT(s.solved_surfaces, s.trial_count) << y1 << " step " << step;
            EXPECT_GT(s.solved_columns, 0.0);
            out += n.out;
        }
    // Some surfaces fall out of bounds: those are not counted.
    EXPECT_GT(out, 0);
}

TEST(grid_search, equal_f_keeps_the_earlier_best)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    const auto r = grid(45, 45, 50, 50, 3, 1, 10, 0); // three times the same centre
    build_grid_points(p->search, r);
    grid_search(*p, port, r);
    ASSERT_EQ(p->search.trial_count, 3);
    EXPECT_EQ(p->search.summary_fos[1], p->search.summary_fos[3]);
    EXPECT_EQ(p->search.best.trial_number, 1);
    EXPECT_EQ(p->search.best.best_point, 0);
}

TEST(grid_search, the_first_best_is_the_first_centre_in_bounds)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    p->search.best.fos = -5; // not compared with: the first in bounds is taken as it is
    // (10, 50) with radius 50 runs under the toe at Y = 0; (45, 50) comes back up.
    const auto r = grid(10, 45, 50, 50, 2, 1, 0, 0);
    build_grid_points(p->search, r);
    grid_search(*p, port, r);
    ASSERT_EQ(p->search.trial_count, 1);
    EXPECT_EQ(p->search.best.best_point, 1);
    EXPECT_EQ(p->search.best.trial_number, 1);
    EXPECT_EQ(p->search.best.y, 45.0f);
    EXPECT_GT(p->search.best.fos, 0.0f);
}

TEST(grid_search, all_centres_out_of_bounds_leave_no_best_and_no_final_surface)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->menus["Solve"].visible = true;
    p->search.best.fos = 1.5f; // left over from an earlier search
    p->search.best.y = 3;
    p->search.best.z = 4;
    // Tangent plane above the crest: no trial meets the ground.
    p->grid_y_ul = 40;
    p->grid_y_lr = 50;
    p->grid_z_ul = 70;
    p->grid_z_lr = 60;
    p->grid_n_y = 2;
    p->grid_n_z = 2;
    p->tangent_z = 35;
    p->aspect_in = 1;
    EXPECT_FALSE(solve_grid_search(*p, port));
    EXPECT_EQ(p->search.trial_count, 0);
    EXPECT_EQ(p->search.summary_count, 0);
    EXPECT_EQ(p->search.best.fos, 0.0f);
    EXPECT_EQ(p->search.best.y, 0.0f);
    EXPECT_EQ(p->search.best.z, 0.0f);
    EXPECT_EQ(p->search.panel_caption, "Pause");
    EXPECT_EQ(p->search.final_drawing, 0);
    EXPECT_EQ(port.beeps, 1);
    EXPECT_FALSE(p->menus["Solve"].visible);
    EXPECT_FALSE(solve_final_surface(*p, port));
}

TEST(grid_search, all_failed_solutions_give_no_final_surface)
{
    // A unit weight that is not a number makes every solution fail, F = 0.
    auto p = make_search_slope(51, 10, 20, std::numeric_limits<float>::quiet_NaN());
    ScriptedPort port;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 2, 2, 10, 1);
    build_grid_points(p->search, r);
    EXPECT_FALSE(grid_search(*p, port, r));
    ASSERT_GT(p->search.trial_count, 0);
    for (int n = 1; n <= p->search.summary_count; ++n)
        EXPECT_EQ(p->search.summary_fos[std::size_t(n)], 0.0f);
    EXPECT_EQ(p->search.panel_caption, "Pause");
}

TEST(grid_search, stop_ends_the_search_without_a_final_surface)
{
    auto p = make_search_slope();
    ScriptedPort port;
    port.stop_after_yields = 3;
    init_search(*p);
    const auto r = grid(40, 50, 52, 48, 3, 3, 10, 0);
    build_grid_points(p->search, r);
    EXPECT_FALSE(grid_search(*p, port, r));
    EXPECT_LT(p->search.trial_count, 9);
    EXPECT_EQ(p->search.search_abort, 0); // cleared by the search on its way out
    EXPECT_EQ(p->search.final_drawing, 0);
}

TEST(grid_search, solve_command_runs_the_stored_search_and_the_final_solve)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->search_x = 0;
    p->grid_y_ul = 40;
    p->grid_y_lr = 50;
    p->grid_z_ul = 52;
    p->grid_z_lr = 48;
    p->grid_n_y = 3;
    p->grid_n_z = 2;
    p->tangent_z = 10;
    p->grid_tan_spacing = 2;
    p->aspect_in = 1;
    EXPECT_TRUE(solve_grid_search(*p, port));
    EXPECT_EQ(p->view_mode, 9);
    EXPECT_EQ(p->view_row, 1);
    EXPECT_EQ(p->keep_window, 0);
    EXPECT_EQ(p->search.panel_caption, "Tentative Critical Surface");
    EXPECT_EQ(p->search.summary_visible, -1);
    EXPECT_EQ(port.views.front(), (std::pair<int, std::string>(9, "GRID SEARCH RESULT")));
    EXPECT_EQ(port.beeps, 0);
    EXPECT_GT(p->search.fos_max, 0.0f);
    EXPECT_LE(p->search.fos_min, p->search.best.fos);
    const float best = p->search.best.fos;
    EXPECT_TRUE(solve_final_surface(*p, port));
    EXPECT_EQ(p->report_kind, 2);
    EXPECT_EQ(p->factor_of_safety, best);
    EXPECT_EQ(port.views.back(), (std::pair<int, std::string>(6, "PLAN OF ACTIVE COLUMNS")));
}

TEST(auto_search, skip_ranges_follow_the_winning_point)
{
    const int from[9] = {0, 4, 4, 6, 6, 8, 8, 2, 2};
    const int to[9] = {0, 6, 8, 8, 2, 2, 4, 4, 6};
    for (int b = 0; b <= 8; ++b) {
        std::int16_t f = -1, t = -1;
        skip_range(b, f, t);
        EXPECT_EQ(f, from[b]) << b;
        EXPECT_EQ(t, to[b]) << b;
        int skipped = 0;
        for (int pt = 1; pt <= 8; ++pt)
            skipped += point_skipped(pt, f, t) ? 1 : 0;
        EXPECT_EQ(skipped, b == 0 ? 0 : (b % 2 == 1 ? 3 : 5)) << b;
    }
}

TEST(auto_search, skipped_points_are_those_of_the_previous_stencil)
{
    // For each winning point, the new stencil around it shares exactly the
    // skipped points with the old one.
    SearchState old_st, new_st;
    build_stencil(old_st, 0, 0, 1);
    for (int b = 1; b <= 8; ++b) {
        build_stencil(new_st, old_st.stencil_y[std::size_t(b)], old_st.stencil_z[std::size_t(b)], 1);
        std::int16_t f = 0, t = 0;
        skip_range(b, f, t);
        for (int pt = 1; pt <= 8; ++pt) {
            bool shared = false;
            for (int q = 0; q <= 8; ++q)
                shared = shared || (new_st.stencil_y[std::size_t(pt)] == old_st.stencil_y[std::size_t(q)] &&
                                    new_st.stencil_z[std::size_t(pt)] == old_st.stencil_z[std::size_t(q)]);
            EXPECT_EQ(point_skipped(pt, f, t), shared) << "best " << b << " point " << pt;
        }
    }
}

TEST(auto_search, stencil_goes_round_from_the_upper_low_y_corner)
{
    SearchState s;
    build_stencil(s, 10, 20, 2);
    const float ys[] = {10, 8, 8, 8, 10, 12, 12, 12, 10};
    const float zs[] = {20, 22, 20, 18, 18, 18, 20, 22, 22};
    for (int k = 0; k <= 8; ++k) {
        EXPECT_EQ(s.stencil_y[std::size_t(k)], ys[k]);
        EXPECT_EQ(s.stencil_z[std::size_t(k)], zs[k]);
    }
}

AutoSearchRecord autorec(float y, float z, float step, float tangent, float radius_step)
{
    AutoSearchRecord r;
    r.auto_y = y;
    r.auto_z = z;
    r.auto_step = step;
    r.auto_tangent_z = tangent;
    r.auto_radius_step = radius_step;
    r.auto_aspect = 1;
    return r;
}

TEST(auto_search, first_point_out_of_bounds_ends_without_result)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 10;
    init_search(*p);
    EXPECT_FALSE(auto_search(*p, port, autorec(45, 60, 2, 35, 1)));
    EXPECT_EQ(p->search.trial_count, 0);
    EXPECT_EQ(p->search.final_drawing, 0);
    EXPECT_EQ(p->search.panel_caption, "Pause");
}

TEST(auto_search, a_tie_never_moves_the_centre)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 10;
    init_search(*p);
    // A step of 0 makes all nine points the same centre.
    EXPECT_TRUE(auto_search(*p, port, autorec(45, 50, 0, 10, 0)));
    EXPECT_EQ(p->search.trial_count, 9);
    EXPECT_EQ(p->search.round, 0);
    EXPECT_EQ(p->search.best.trial_number, 1);
    EXPECT_EQ(p->search.best.best_point, 0);
}

TEST(auto_search, walk_ends_where_no_neighbour_is_better_and_never_repeats_a_centre)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 10;
    init_search(*p);
    ASSERT_TRUE(auto_search(*p, port, autorec(40, 45, 2, 10, 0)));
    const SearchState& s = p->search;
    EXPECT_GT(s.round, 0);
    std::set<std::pair<float, float>> seen;
    for (int n = 1; n <= s.summary_count; ++n)
        EXPECT_TRUE(seen.insert({s.summary_y[std::size_t(n)], s.summary_z[std::size_t(n)]}).second) << n;
    // Every neighbour of the final centre is out of bounds or no better.
    const float by = s.best.y, bz = s.best.z, bf = s.best.fos;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dz = -1; dz <= 1; ++dz) {
            auto q = make_search_slope();
            q->view_mode = 10;
            init_search(*q);
            const float y = by + float(dy) * 2, z = bz + float(dz) * 2;
            evaluate_trial(*q, port, y, z, z - 10, 1, 1, trial_solve_only);
            if (q->surface_out_flag != -1) {
                EXPECT_GE(q->factor_of_safety, bf) << y << " " << z;
            }
        }
    EXPECT_EQ(p->ell_y, by);
    EXPECT_EQ(s.panel_caption, "Tentative Critical Surface");
}

TEST(auto_search, out_of_bounds_points_later_are_ignored)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 10;
    init_search(*p);
    // With tangent 0 and step 20 the corner (25, 70) runs under the toe at Y = 0.
    EXPECT_TRUE(auto_search(*p, port, autorec(45, 50, 20, 0, 0)));
    const SearchState& s = p->search;
    for (int n = 1; n <= s.summary_count; ++n)
        EXPECT_FALSE(s.summary_y[std::size_t(n)] == 25.0f && s.summary_z[std::size_t(n)] == 70.0f);
    EXPECT_LT(s.summary_count, 9 + 5 * s.round);
}

TEST(auto_search, every_recorded_radius_step_counts_and_best_keeps_the_last)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 10;
    init_search(*p);
    ASSERT_TRUE(auto_search(*p, port, autorec(45, 50, 2, 10, 1)));
    const SearchState& s = p->search;
    EXPECT_EQ(s.summary_count, s.trial_count);
    EXPECT_EQ(s.summary_radius[std::size_t(s.best.trial_number)], s.best.radius);
    EXPECT_EQ(s.summary_fos[std::size_t(s.best.trial_number)], s.best.fos);
    for (int n = 1; n <= s.summary_count; ++n)
        EXPECT_GE(s.summary_fos[std::size_t(n)], s.best.fos);
}

TEST(auto_search, solve_command_clears_old_records_and_offers_the_final_solve)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->search.best.trial_number = 99;
    p->search.plot_count = 77;
    p->auto_y = 45;
    p->auto_z = 50;
    p->auto_spacing = 2;
    p->tangent_z = 10;
    p->auto_tan_spacing = 0;
    p->aspect_in = 1;
    EXPECT_TRUE(solve_auto_search(*p, port));
    EXPECT_EQ(p->view_mode, 10);
    EXPECT_NE(p->search.best.trial_number, 99);
    EXPECT_LT(p->search.plot_count, 77);
    EXPECT_EQ(port.views.front(), (std::pair<int, std::string>(10, "AUTO SEARCH RESULT")));
    EXPECT_TRUE(solve_final_surface(*p, port));
    EXPECT_EQ(p->report_kind, 3);
}

} // namespace
} // namespace tobel
