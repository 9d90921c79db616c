// One search trial, the records, the classes of F and the radius line search.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "project/numtext.h"
#include "search/trial.h"
#include "search_fixture.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "support/scripted_port.h"
#include "surfaces/ellipsoid.h"

namespace tobel {
namespace {

using test::make_search_slope;
using test::ScriptedPort;

TEST(search_trial, out_of_bounds_trial_leaves_no_record_and_no_number)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    // The circle's lowest point (40) is above the crest (30): no slide at all.
    evaluate_trial(*p, port, 45, 60, 20, 1, 1, trial_solve_and_record);
    EXPECT_EQ(p->surface_out_flag, -1);
    EXPECT_EQ(p->search.trial_count, 0);
    EXPECT_EQ(p->search.summary_count, 0);
    EXPECT_EQ(p->search.trial.trial_number, 0);
    EXPECT_TRUE(port.progress_lines.empty());
}

TEST(search_trial, recorded_trial_fills_record_summary_and_one_progress_line)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_trial(*p, port, 45, 50, 40, 2.5f, 3, trial_solve_and_record);
    const SearchState& s = p->search;
    ASSERT_EQ(s.trial_count, 1);
    EXPECT_EQ(s.trial.trial_number, 1);
    EXPECT_GT(s.trial.fos, 0.5f);
    EXPECT_EQ(s.trial.fos, p->factor_of_safety);
    EXPECT_EQ(s.trial.y, 45.0f);
    EXPECT_EQ(s.trial.z, 50.0f);
    EXPECT_EQ(s.trial.radius, 40.0f);
    EXPECT_EQ(s.trial.volume, p->slide_volume);
    EXPECT_EQ(s.trial.active, float(p->active_columns));
    EXPECT_EQ(s.trial.third, 2.5f);
    EXPECT_EQ(s.trial.weight, p->slide_weight);
    EXPECT_EQ(p->ell_y, 45.0f);
    EXPECT_EQ(p->ell_radius, 40.0f);
    ASSERT_EQ(s.summary_count, 1);
    EXPECT_EQ(s.summary_fos[1], s.trial.fos);
    EXPECT_EQ(s.summary_radius[1], 40.0f);
    ASSERT_EQ(port.progress_lines.size(), 1u);
    EXPECT_EQ(port.progress_lines[0].rfind("Ellipsoid # 1  F = " + format(s.trial.fos, "###0.000"), 0), 0u);
    ASSERT_FALSE(s.panel_lines.empty());
    EXPECT_EQ(s.panel_lines[0], "   Ellipsoid # 1");
    EXPECT_EQ(s.panel_lines[2], "   Y = 45.00");
    EXPECT_EQ(s.plot_count, 1);
}

TEST(search_trial, solve_only_mode_records_nothing_and_record_only_mode_keeps_last_solve)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_trial(*p, port, 45, 50, 40, 1, 1, trial_solve_only);
    EXPECT_EQ(p->search.trial_count, 0);
    const float f = p->factor_of_safety;
    evaluate_trial(*p, port, 45, 50, 40, 1, 1, trial_record_only);
    EXPECT_EQ(p->search.trial_count, 1);
    EXPECT_EQ(p->search.trial.fos, f);
}

TEST(search_trial, failed_solution_is_recorded_with_zero_and_beats_any_best)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_trial(*p, port, 45, 50, 40, 1, 1, trial_solve_and_record);
    accept_best(*p, 0);
    ASSERT_GT(p->search.best.fos, 0.0f);
    // A solver that failed leaves F = 0, which is recorded as it stands.
    p->factor_of_safety = 0;
    evaluate_trial(*p, port, 45, 51, 41, 1, 1, trial_record_only);
    EXPECT_EQ(p->search.trial_count, 2);
    EXPECT_EQ(p->search.trial.fos, 0.0f);
    EXPECT_TRUE(p->search.trial.fos < p->search.best.fos);
    EXPECT_EQ(p->search.fos_min, 0.0f);
}

TEST(search_trial, classes_of_f_take_the_lower_class_on_each_limit)
{
    EXPECT_EQ(fos_class_of(-0.001f), 0);
    EXPECT_EQ(fos_class_of(0.0f), 1);
    EXPECT_EQ(fos_class_of(0.5f), 1);
    EXPECT_EQ(fos_class_of(0.5001f), 2);
    EXPECT_EQ(fos_class_of(1.0f), 2);
    EXPECT_EQ(fos_class_of(1.2f), 3);
    EXPECT_EQ(fos_class_of(1.4f), 4);
    EXPECT_EQ(fos_class_of(1.8f), 5);
    EXPECT_EQ(fos_class_of(2.3f), 6);
    EXPECT_EQ(fos_class_of(3.0f), 7);
    EXPECT_EQ(fos_class_of(3.0001f), 8);
    // The limit is the single 1.2, which lies above the double 1.2.
    EXPECT_EQ(fos_class_of(float(1.2000000476837158)), 3);
}

TEST(search_trial, exactly_one_class_flag_is_true)
{
    SearchState s;
    classify_trial(s, 1.3f);
    int set = 0;
    for (auto f : s.fos_class)
        set += f == -1 ? 1 : 0;
    EXPECT_EQ(set, 1);
    EXPECT_EQ(s.fos_class[4], -1);
    classify_trial(s, 5.0f);
    EXPECT_EQ(s.fos_class[4], 0);
    EXPECT_EQ(s.fos_class[8], -1);
}

TEST(search_trial, first_trial_sets_both_ends_of_the_range)
{
    SearchState s;
    classify_trial(s, 1.5f);
    EXPECT_EQ(s.fos_max, 1.5f);
    EXPECT_EQ(s.fos_min, 1.5f);
    classify_trial(s, 2.0f);
    classify_trial(s, 1.0f);
    EXPECT_EQ(s.fos_max, 2.0f);
    EXPECT_EQ(s.fos_min, 1.0f);

    SearchState neg;
    classify_trial(neg, -1.0f);
    EXPECT_EQ(neg.fos_min, -1.0f);
    EXPECT_EQ(neg.fos_max, -1.0f);

    // A first F of 0 moves neither end; the range then keeps 0 as its low end.
    SearchState zero;
    classify_trial(zero, 0.0f);
    classify_trial(zero, 1.3f);
    EXPECT_EQ(zero.fos_max, 1.3f);
    EXPECT_EQ(zero.fos_min, 0.0f);
}

TEST(search_trial, radius_step_of_zero_gives_one_trial_per_centre)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_centre(*p, port, 45, 50, 0, 0, 10, 0, 1, 1);
    EXPECT_EQ(p->search.trial_count, 1);
    EXPECT_EQ(p->search.trial.radius, 40.0f);
}

TEST(search_trial, common_point_gives_one_trial_through_the_point)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 9;
    p->grid_use_common = 1;
    init_search(*p);
    evaluate_centre(*p, port, 45, 50, 15, 10, 10, 2, 1, 1);
    EXPECT_EQ(p->search.trial_count, 1);
    EXPECT_EQ(p->search.trial.radius, 50.0f); // 30-40-50 triangle
}

TEST(search_trial, common_point_flag_of_the_other_search_only_stops_the_steps)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->view_mode = 9;       // a grid search...
    p->auto_use_common = 1; // ...with the auto search's option on
    EXPECT_FALSE(common_point_mode(*p));
    init_search(*p);
    evaluate_centre(*p, port, 45, 50, 15, 10, 10, 2, 1, 1);
    EXPECT_EQ(p->search.trial_count, 1);
    EXPECT_EQ(p->search.trial.radius, 40.0f); // tangent to the plane, not through the point
}

// F of the circle (45, 50, r), solved on its own.
static float solve_circle(float r, bool& out)
{
    auto q = make_search_slope();
    ScriptedPort port;
    q->ell_y = 45;
    q->ell_z = 50;
    q->ell_radius = r;
    build_ellipsoid(*q);
    check_surface(*q);
    out = q->surface_out_flag == -1;
    if (out)
        return 0;
    q->solve_interactive = 0;
    solve_bishop_janbu(*q, port);
    return q->factor_of_safety;
}

TEST(search_trial, radius_line_search_follows_the_improving_direction)
{
    // The rule worked out from single solutions: one step either way, the
    // second test seeing the first success, then on while F keeps falling.
    const float step = 3;
    std::vector<float> expect_r{40};
    bool out = false;
    float rec = solve_circle(40, out);
    ASSERT_FALSE(out);
    int dir = 0;
    float f = solve_circle(43, out);
    if (!out && f < rec) {
        rec = f;
        expect_r.push_back(43);
        dir = 1;
    }
    f = solve_circle(37, out);
    if (!out && f < rec) {
        rec = f;
        expect_r.push_back(37);
        dir = -1;
    }
    if (dir != 0) {
        for (int n = 2;; ++n) {
            const float r = 40 + float(n * dir) * step;
            f = solve_circle(r, out);
            if (out || !(f < rec))
                break;
            rec = f;
            expect_r.push_back(r);
        }
    }
    ASSERT_GE(expect_r.size(), 2u) << "the example should improve on the first radius";

    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_centre(*p, port, 45, 50, 0, 0, 10, step, 1, 1);
    const SearchState& s = p->search;
    ASSERT_EQ(std::size_t(s.trial_count), expect_r.size());
    for (std::size_t n = 1; n <= expect_r.size(); ++n)
        EXPECT_EQ(s.summary_radius[n], expect_r[n - 1]) << n;
    EXPECT_EQ(s.trial.fos, rec);
    EXPECT_EQ(s.trial.trial_number, s.trial_count);
    EXPECT_EQ(p->surface_out_flag, 0);
}

TEST(search_trial, accept_best_copies_the_trial_with_its_point)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_trial(*p, port, 45, 50, 40, 2, 2, trial_solve_and_record);
    accept_best(*p, 7);
    const SearchRecord& b = p->search.best;
    EXPECT_EQ(b.fos, p->search.trial.fos);
    EXPECT_EQ(b.trial_number, 1);
    EXPECT_EQ(b.y, 45.0f);
    EXPECT_EQ(b.radius, 40.0f);
    EXPECT_EQ(b.third, 2.0f);
    EXPECT_EQ(b.best_point, 7);
    EXPECT_EQ(p->search.best_trial, 1);
}

TEST(search_trial, show_final_rebuilds_the_best_surface_without_solving)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    evaluate_trial(*p, port, 45, 50, 40, 1, 1, trial_solve_and_record);
    accept_best(*p, 0);
    evaluate_trial(*p, port, 50, 60, 45, 1, 1, trial_solve_and_record);
    const int16 count = p->search.trial_count;
    show_final(*p, port, 1, 1);
    EXPECT_EQ(p->search.trial_count, count);
    EXPECT_EQ(p->ell_y, 45.0f);
    EXPECT_EQ(p->ell_z, 50.0f);
    EXPECT_EQ(p->ell_radius, 40.0f);
    // Node at Y = 46 (column 24) lies on the best circle, under the ground.
    EXPECT_NEAR(p->zgrid(1, 24, p->sliding_index), 50 - std::sqrt(1600.0 - 1.0), 1e-4);
    EXPECT_EQ(p->search.panel_caption, "Tentative Critical Surface");
    EXPECT_EQ(p->search.panel_lines[0], "   Ellipsoid # 1");
    EXPECT_EQ(p->search.final_drawing, -1);
    EXPECT_EQ(p->surface_out_flag, 0);
}

TEST(search_pause, continue_goes_on_after_the_paused_panel)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    search_pause(*p);
    EXPECT_EQ(p->search.pause_flag, -1);
    port.answers.push_back(Answer::ok);
    evaluate_centre(*p, port, 45, 50, 0, 0, 10, 0, 1, 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Search paused");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok_cancel);
    EXPECT_EQ(p->search.pause_flag, 0);
    EXPECT_EQ(p->search.search_abort, 0);
    EXPECT_EQ(p->search.trial_count, 1);
}

TEST(search_pause, exit_gives_up_the_centre_and_sets_the_abort_flag)
{
    auto p = make_search_slope();
    ScriptedPort port;
    init_search(*p);
    p->search.panel_caption = "Other";
    search_pause(*p);
    port.answers.push_back(Answer::cancel);
    evaluate_centre(*p, port, 45, 50, 0, 0, 10, 0, 1, 1);
    EXPECT_EQ(p->search.search_abort, -1);
    EXPECT_EQ(p->search.pause_flag, 0);
    EXPECT_EQ(p->search.panel_caption, "Pause");
    EXPECT_EQ(p->search.trial_count, 0);
}

TEST(search_pause, stop_from_the_port_aborts_before_the_next_centre)
{
    auto p = make_search_slope();
    ScriptedPort port;
    port.stop_after_yields = 0;
    init_search(*p);
    evaluate_centre(*p, port, 45, 50, 0, 0, 10, 1, 1, 1);
    EXPECT_EQ(p->search.search_abort, -1);
    EXPECT_EQ(p->search.trial_count, 0);
}

} // namespace
} // namespace tobel
