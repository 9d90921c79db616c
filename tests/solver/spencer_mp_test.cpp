// Spencer's and the Morgenstern-Price solutions: hand-worked columns, the
// interslice functions, the lambda and F searches, their ends, the thrust
// indices and the messages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "solver/bishop_janbu.h"
#include "solver/result_panel.h"
#include "solver/spencer_mp.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

static bool has_message(const Project& p, const std::string& text)
{
    for (int i = 1; i <= p.message_count; ++i)
        if (p.message_text[std::size_t(i)] == text)
            return true;
    return false;
}

static int count_messages(const Project& p, const std::string& prefix)
{
    int n = 0;
    for (int i = 1; i <= p.message_count; ++i)
        if (p.message_text[std::size_t(i)].rfind(prefix, 0) == 0)
            ++n;
    return n;
}

static void solve(Project& p, Port& port, int16 interactive = 0)
{
    p.solve_interactive = interactive;
    solve_spencer_mp(p, port);
}

// One row of unit width, columns 1 apart along 0..(cols - 1), ground at 10.
static std::unique_ptr<Project> row_2d(int cols, int method)
{
    SolverMesh m;
    m.rows = 1;
    m.cols = cols;
    m.x_max = 1;
    m.y_max = float(cols - 1);
    auto p = make_solver_project(m);
    p->solution_method = int16(method);
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    return p;
}

// A frictional 2-D circle, the slope of the closed-form tests.
static std::unique_ptr<Project> circle_2d(int n, int method, float phi = 20)
{
    Slope g;
    auto p = make_cohesive_slope(g, n, true, method);
    p->mat_phi[1] = phi;
    return p;
}

// Rows of the same circular section side by side (an extruded 2-D slide),
// followed by `empty_rows` rows where the surface stays on the ground.
static std::unique_ptr<Project> extruded_circle(int slide_rows, int empty_rows)
{
    Slope g;
    auto one = make_cohesive_slope(g, 120, true, 3);
    SolverMesh m;
    m.rows = slide_rows + empty_rows;
    m.cols = 120;
    m.x_max = float(m.rows - 1);
    m.y_max = one->y_max;
    auto p = make_solver_project(m);
    p->solution_method = 3;
    p->mat_unit_weight[1] = float(g.gamma);
    p->mat_cohesion[1] = float(g.cohesion);
    p->mat_phi[1] = 20;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            p->zgrid(r, c, 1) = one->zgrid(1, c, 1);
            p->zgrid(r, c, p->sliding_index) =
                r <= slide_rows ? one->zgrid(1, c, one->sliding_index) : one->zgrid(1, c, 1);
            p->surf_dip_y(r, c) = one->surf_dip_y(1, c);
        }
    p->centre_y = one->centre_y;
    p->centre_z = one->centre_z;
    return p;
}

// --- the single column, by hand ---------------------------------------------

// One active column (c = 3 of 5) on a base of dip a, dry, k = 0. The row's
// thrust closes when W a1 = C a3 / F, which works out to the factor of a
// block: F = (C + W cos a tan phi) / (W sin a); and then N = W cos a.
TEST(spencer, single_column_closes_at_the_block_factor_by_hand)
{
    auto p = row_2d(5, 5);
    p->mat_phi[1] = 20;
    p->zgrid(1, 3, p->sliding_index) = 6; // h = 4, W = 20 * 4 * 1 * 1 = 80
    p->surf_dip_y(1, 3) = 0.5f;
    p->zgrid(1, 3, p->sliding_index + 1) = 1; // method 5 takes f as it stands
    p->centre_y = 0;
    p->centre_z = 20;
    ScriptedPort port;
    solve(*p, port);
    const double a = double(0.5f), w = 80;
    const double area = double(float(1 / std::cos(a)));
    const double t = std::tan(double(float(double(p->deg_to_rad) * 20)));
    const double c = 5 * area;
    const double f = (c + w * std::cos(a) * t) / (w * std::sin(a));
    EXPECT_NEAR(p->factor_of_safety, f, 1e-4);
    EXPECT_EQ(p->lambda_coef, 1.0f) << "method 5 keeps lambda at 1";
    EXPECT_NEAR(p->col_normal(1, 3) * area, w * std::cos(a), 0.05);
    // Moments: the arm is taken one spacing on, y = c * spacing + y_min = 3.
    const double arm = 3, hc = 20 - 6;
    const double n = w * std::cos(a);
    const double q = arm * std::sin(a) + hc * std::cos(a);
    const double pa = arm * std::cos(a) - hc * std::sin(a);
    const double shear = (n * t + c) / f;
    EXPECT_NEAR(p->moment_shear, shear * q, 0.05);
    EXPECT_NEAR(p->moment_other, -w * arm + n * pa, 0.05);
    EXPECT_GT(std::abs((-w * arm + n * pa) - (-w * (arm - 1) + n * (pa - std::cos(a)))), 5.0)
        << "the two arms must be told apart by the test";
    EXPECT_TRUE(port.boxes.empty());
}

TEST(spencer, fixed_lambda_run_solves_one_round_only)
{
    auto p = circle_2d(100, 5);
    fill_plane(*p, p->sliding_index + 1, 1);
    ScriptedPort port;
    solve(*p, port, -1);
    // One round: the progress shows 1.00 once.
    const auto ones = std::count(port.progress_lines.begin(), port.progress_lines.end(),
                                 std::string("    Interim F. of S. = 1.00"));
    EXPECT_EQ(ones, 1);
    EXPECT_EQ(p->lambda_coef, 1.0f);
    EXPECT_GT(p->factor_of_safety, 0.5f);
}

// --- interslice functions ----------------------------------------------------

TEST(morgenstern_price, interslice_function_is_a_half_sine_over_the_slide_with_3_1415)
{
    auto p = row_2d(7, 4);
    for (int c = 2; c <= 6; ++c) {
        p->zgrid(1, c, p->sliding_index) = 9;
        p->surf_dip_y(1, c) = 0.1f;
    }
    p->mat_phi[1] = 25;
    p->centre_y = 3;
    p->centre_z = 20;
    ScriptedPort port;
    solve(*p, port);
    const int f = p->sliding_index + 1;
    // c_min = 2, c_max = 6, span 4: f = sin((c - 2) * 3.1415 / 4).
    for (int c = 2; c <= 6; ++c)
        EXPECT_EQ(p->zgrid(1, c, f), float(std::sin(double(c - 2) * 3.1415 / 4))) << c;
    EXPECT_NE(p->zgrid(1, 3, f), float(std::sin(M_PI / 4))) << "3.1415 is not pi";
    EXPECT_EQ(p->zgrid(1, 1, f), 0.0f) << "inactive nodes are cleared";
    EXPECT_EQ(p->zgrid(1, 7, f), 0.0f);
}

TEST(spencer, interslice_function_is_one_on_the_slide_and_cleared_outside)
{
    auto p = circle_2d(60, 3);
    fill_plane(*p, p->sliding_index + 1, 7);
    ScriptedPort port;
    solve(*p, port);
    const int f = p->sliding_index + 1, si = p->sliding_index;
    for (int c = 1; c <= p->num_cols; ++c) {
        const bool active = std::abs(p->zgrid(1, c, si) - p->zgrid(1, c, 1)) >= 0.001f;
        EXPECT_EQ(p->zgrid(1, c, f), active ? 1.0f : 0.0f) << c;
    }
}

TEST(morgenstern_price, a_slide_of_one_column_has_no_span_and_fails)
{
    auto p = row_2d(5, 4);
    p->zgrid(1, 3, p->sliding_index) = 6;
    p->surf_dip_y(1, 3) = 0.5f;
    ScriptedPort port;
    solve(*p, port);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN THE INTERSLICE FUNCTION"));
}

// --- the lambda search -------------------------------------------------------

// The lambda of each round can be seen by stopping the solution: a Stop read
// in the first iterations of a round leaves lambda_coef at that round's value.
TEST(spencer, two_dimensional_spencer_starts_with_lambda_0_6_then_0_3)
{
    std::vector<float> seen;
    for (int stop = 0; stop < 40; ++stop) {
        auto p = circle_2d(100, 3);
        ScriptedPort port;
        port.stop_after_yields = stop;
        solve(*p, port);
        if (port.boxes.empty())
            break;
        ASSERT_EQ(port.boxes.size(), 1u);
        EXPECT_EQ(port.boxes[0].text, "This solution has been aborted!");
        EXPECT_EQ(port.boxes[0].title, "TOB");
        EXPECT_EQ(port.boxes[0].icon, Icon::warning);
        EXPECT_EQ(p->factor_of_safety, 0.0f);
        EXPECT_EQ(p->solve_abort, 0);
        if (seen.empty() || seen.back() != p->lambda_coef)
            seen.push_back(p->lambda_coef);
    }
    ASSERT_GE(seen.size(), 3u);
    EXPECT_EQ(seen[0], 0.6f);
    EXPECT_EQ(seen[1], 0.3f);
}

TEST(lambda_search, first_round_goes_to_0_3_over_fmax)
{
    LambdaSearch s;
    s.fmax = 0.5;
    s.lambda = float(0.6 / 0.5);
    s.round = 1;
    EXPECT_FALSE(next_lambda(s, 12.0));
    EXPECT_EQ(s.lambda, float(0.3 / 0.5));
    EXPECT_EQ(s.lambda1, double(float(1.2)));
    EXPECT_EQ(s.r1, 12.0);
}

TEST(lambda_search, secant_landing_on_zero_becomes_0_01)
{
    LambdaSearch s;
    s.round = 2;
    s.since_rescue = 1;
    s.lambda1 = 0.6f;
    s.r1 = 2;
    s.lambda = 0.3f;
    // 0.3 + 1 * (0.3 - 0.6) / (2 - 1) = 0
    EXPECT_FALSE(next_lambda(s, 1.0));
    EXPECT_EQ(s.lambda, 0.01f);
    EXPECT_EQ(s.lambda1, double(0.3f));
    EXPECT_EQ(s.r1, 1.0);
}

TEST(lambda_search, negative_secant_changes_sign)
{
    LambdaSearch s;
    s.round = 2;
    s.since_rescue = 1;
    s.lambda1 = 0.6f;
    s.r1 = 1.25;
    s.lambda = 0.3f;
    // 0.3 + 1 * (-0.3) / 0.25 = -0.9
    EXPECT_FALSE(next_lambda(s, 1.0));
    EXPECT_NEAR(s.lambda, 0.9f, 1e-6);
    EXPECT_GT(s.lambda, 0.0f);
    // Best of (0.6, 1.25) and (0.3, 1): the new one.
    EXPECT_EQ(s.best_lambda, double(0.3f));
    EXPECT_EQ(s.best_r, 1.0);
}

TEST(lambda_search, three_rounds_without_improvement_restart_below_the_best_point)
{
    LambdaSearch s;
    s.round = 4;
    s.since_rescue = 2;
    s.lambda1 = 0.5;
    s.r1 = 0.3;
    s.best_lambda = 0.4;
    s.best_r = 0.1;
    s.lambda = 0.7f;
    EXPECT_FALSE(next_lambda(s, 5.0));
    EXPECT_EQ(s.lambda, float(0.4 - 0.05));
    EXPECT_EQ(s.since_rescue, 0);
    EXPECT_EQ(s.lambda1, 0.4);
    EXPECT_EQ(s.r1, 0.1);
}

TEST(lambda_search, equal_residuals_end_the_search_at_the_last_lambda)
{
    LambdaSearch s;
    s.round = 3;
    s.since_rescue = 2;
    s.lambda1 = 0.6f;
    s.r1 = 3;
    s.best_r = 5;
    s.lambda = 0.3f;
    EXPECT_TRUE(next_lambda(s, 3.0));
    EXPECT_EQ(s.lambda, 0.3f);
}

TEST(lambda_search, a_step_within_0_002_ends_the_search)
{
    LambdaSearch s;
    s.round = 2;
    s.since_rescue = 1;
    s.lambda1 = 0.4;
    s.r1 = 100;
    s.lambda = 0.3f;
    // 0.3 + 0.1 * (-0.1) / 99.9: a step of 1e-4.
    EXPECT_TRUE(next_lambda(s, 0.1));
    EXPECT_NEAR(s.lambda, 0.3 - 0.01 / 99.9, 1e-7);
}

TEST(lambda_search, every_solved_lambda_is_positive)
{
    for (int method : {3, 4}) {
        auto p = circle_2d(150, method, 35);
        ScriptedPort port;
        solve(*p, port);
        EXPECT_GT(p->lambda_coef, 0.0f);
        EXPECT_GT(p->factor_of_safety, 0.0f);
    }
}

// --- the F search ------------------------------------------------------------

TEST(f_search, secant_step_through_two_points)
{
    // Residual linear in F with its root at 1.3.
    EXPECT_NEAR(next_factor(1, -0.3, 1.5, 0.2), 1.3, 1e-12);
}

TEST(f_search, a_step_below_0_18_is_put_at_0_2)
{
    EXPECT_EQ(next_factor(1, 0.9, 1.5, 1.4), 0.2);   // would be 0.1
    EXPECT_EQ(next_factor(1, 0.83, 1.5, 1.33), 0.2); // would be 0.17
    EXPECT_NEAR(next_factor(1, 0.81, 1.5, 1.31), 0.19, 1e-12) << "0.18 and above stand";
}

TEST(f_search, each_round_starts_again_from_1_and_1_5)
{
    auto p = circle_2d(100, 3);
    ScriptedPort port;
    solve(*p, port, -1);
    ASSERT_TRUE(port.boxes.empty());
    std::vector<std::string> interim;
    for (const auto& l : port.progress_lines)
        if (l.rfind("    Interim F. of S. = ", 0) == 0)
            interim.push_back(l.substr(23));
    int rounds = 0;
    for (std::size_t n = 0; n < interim.size(); ++n)
        if (interim[n] == "1.00") {
            ++rounds;
            ASSERT_LT(n + 1, interim.size());
            EXPECT_EQ(interim[n + 1], "1.50");
        }
    EXPECT_GE(rounds, 3);
    EXPECT_EQ(interim.front(), "1.00");
    // The last pass of a round shows no progress: one iteration a round more
    // than the progress lines.
    EXPECT_EQ(int(p->iteration_count), int(interim.size()) + rounds);
    EXPECT_EQ(p->solve_interactive, 0);
}

TEST(f_search, the_last_pass_runs_at_the_accepted_factor_and_leaves_the_thrusts)
{
    auto p = circle_2d(100, 3);
    p->col_eff_thrust.fill(0);
    ScriptedPort port;
    solve(*p, port, -1);
    std::vector<double> interim;
    for (const auto& l : port.progress_lines)
        if (l.rfind("    Interim F. of S. = ", 0) == 0)
            interim.push_back(std::stod(l.substr(23)));
    // The last line shows the F before the step that was accepted, within 0.002
    // and so within 0.01 after the rounding to two decimals.
    EXPECT_NEAR(interim.back(), p->factor_of_safety, 0.0101);
    int with_thrust = 0;
    for (int c = 1; c <= p->num_cols; ++c)
        if (p->col_eff_thrust(1, c) != 0)
            ++with_thrust;
    EXPECT_GT(with_thrust, 10);
}

TEST(f_search, total_failure_to_converge_gives_zero)
{
    auto p = circle_2d(200, 3);
    p->num_forces = 1;
    p->force_h[1] = 1e5f;
    p->force_y[1] = 50;
    p->force_z[1] = 20;
    ScriptedPort port;
    solve(*p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "THIS SOLUTION IS NOT CONVERGING, TRY A DIFFERENT METHOD");
    EXPECT_EQ(p->factor_of_safety, 0.0f);
}

TEST(f_search, a_mass_with_no_driving_force_leaves_f_at_one)
{
    auto p = row_2d(5, 3);
    ScriptedPort port;
    solve(*p, port);
    EXPECT_EQ(p->factor_of_safety, 1.0f);
    EXPECT_EQ(p->active_columns, 0);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p->vol_overstressed, 0.0f) << "no percentage of an empty volume";
}

// --- rows, indices, water, messages -------------------------------------------

TEST(spencer, a_row_with_no_active_column_has_zero_coefficient_and_adds_nothing)
{
    auto three = extruded_circle(3, 0);
    auto five = extruded_circle(3, 2);
    five->row_coef[4] = 7;
    five->row_coef[5] = 7;
    ScriptedPort port;
    solve(*three, port);
    solve(*five, port);
    EXPECT_EQ(five->row_coef[4], 0.0f);
    EXPECT_EQ(five->row_coef[5], 0.0f);
    EXPECT_NE(five->row_coef[2], 0.0f);
    EXPECT_GT(three->factor_of_safety, 0.5f);
    EXPECT_EQ(five->factor_of_safety, three->factor_of_safety);
    EXPECT_EQ(five->lambda_coef, three->lambda_coef);
}

TEST(spencer, three_dimensional_solution_has_no_thrust_ratios)
{
    auto p = make_sphere_slope(21, 20);
    p->solution_method = 3;
    ScriptedPort port;
    solve(*p, port);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    EXPECT_EQ(p->thrust_ratio_mean, 0.0f);
    EXPECT_EQ(p->thrust_ratio_min, 1000000000.0f);
    EXPECT_EQ(p->thrust_ratio_max, -1000000000.0f);
    EXPECT_EQ(p->vol_thrust_inside, 0.0f);
    EXPECT_EQ(p->vol_thrust_middle, 0.0f);
}

TEST(spencer, two_dimensional_indices_are_ratios_and_percentages)
{
    auto p = circle_2d(200, 3);
    ScriptedPort port;
    solve(*p, port);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    EXPECT_GE(p->thrust_ratio_min, 0.0f);
    EXPECT_LE(p->thrust_ratio_max, 1.0f);
    EXPECT_LE(p->thrust_ratio_min, p->thrust_ratio_mean);
    EXPECT_LE(p->thrust_ratio_mean, p->thrust_ratio_max);
    for (float v : {p->vol_thrust_inside, p->vol_thrust_middle, p->vol_tension, p->vol_overstressed}) {
        EXPECT_GE(v, 0.0f);
        EXPECT_LE(v, 100.0f);
    }
    EXPECT_GT(p->vol_thrust_inside, 50.0f);
    EXPECT_GE(p->vol_thrust_inside, p->vol_thrust_middle);
    // Moment equilibrium closed: the two moments nearly cancel.
    EXPECT_LT(std::abs(p->moment_shear + p->moment_other), 0.01 * std::abs(p->moment_shear));
}

template <class V> static bool same_bits(const V& a, const V& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(a[0])) == 0;
}

static bool same_bits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// The iterations and the last pass of a round work the columns' terms out
// several at a time. One at a time, or two lanes at a time, a section with
// pore water and a thrust line leaves the same results bit for bit: the
// factor, lambda, every column's thrust, normal stress and side ratio, the
// indices, the moments and the messages, with those of a near-vertical
// column's small m-alpha among them.
TEST(spencer, terms_worked_out_together_equal_the_terms_one_at_a_time_in_a_section)
{
    for (int method : {3, 4})
        for (bool steep : {false, true}) {
            SCOPED_TRACE("method " + std::to_string(method) + (steep ? ", a near-vertical column" : ""));
            auto run = [&](void (*set)(SolverWork&)) {
                // Without friction m-alpha is cos(gamma) at the near-vertical column.
                auto p = circle_2d(150, method, steep ? 0.0f : 20.0f);
                p->mat_piezo[1] = 0.25f;
                if (steep)
                    for (int c = 1; c <= p->num_cols; ++c)
                        if (p->zgrid(1, c, 1) - p->zgrid(1, c, p->sliding_index) > 1) {
                            p->surf_dip_y(1, c) = 1.5f;
                            break;
                        }
                set(p->work);
                ScriptedPort port;
                solve(*p, port);
                return p;
            };
            const auto lanes = run([](SolverWork&) {});
            ASSERT_GT(lanes->factor_of_safety, 0.0f);
            // What makes the comparison bite: several rounds, water on the
            // columns' sides, thrust ratios, and the messages where asked for.
            EXPECT_GT(lanes->iteration_count, 6);
            EXPECT_GT(*std::max_element(lanes->col_pore.v.begin(), lanes->col_pore.v.end()), 0.0f);
            EXPECT_GT(lanes->thrust_ratio_mean, 0.0f);
            EXPECT_EQ(count_messages(*lanes, "M ALPHA = ") > 0, steep);
            for (void (*set)(SolverWork&) : {+[](SolverWork& w) { w.per_column_terms = true; },
                                             +[](SolverWork& w) { w.two_lanes = true; }}) {
                const auto other = run(set);
                const Project &a = *lanes, &b = *other;
                EXPECT_EQ(a.factor_of_safety, b.factor_of_safety);
                EXPECT_EQ(a.lambda_coef, b.lambda_coef);
                EXPECT_EQ(a.iteration_count, b.iteration_count);
                EXPECT_TRUE(same_bits(a.col_eff_thrust.v, b.col_eff_thrust.v));
                EXPECT_TRUE(same_bits(a.col_thrust_height.v, b.col_thrust_height.v));
                EXPECT_TRUE(same_bits(a.col_shear_ratio.v, b.col_shear_ratio.v));
                EXPECT_TRUE(same_bits(a.col_normal.v, b.col_normal.v));
                EXPECT_TRUE(same_bits(a.col_fos.v, b.col_fos.v));
                EXPECT_TRUE(same_bits(a.row_coef, b.row_coef));
                for (auto f : {&Project::thrust_ratio_mean, &Project::thrust_ratio_min,
                               &Project::thrust_ratio_max, &Project::vol_thrust_inside,
                               &Project::vol_thrust_middle, &Project::vol_tension, &Project::vol_overstressed,
                               &Project::moment_shear, &Project::moment_other, &Project::neg_normal_sum,
                               &Project::lateral_unbalance, &Project::unbalance_z, &Project::resisting_sum})
                    EXPECT_TRUE(same_bits(a.*f, b.*f));
                ASSERT_EQ(a.message_count, b.message_count);
                for (int i = 1; i <= a.message_count; ++i)
                    EXPECT_EQ(a.message_text[std::size_t(i)], b.message_text[std::size_t(i)]);
            }
        }
}

TEST(morgenstern_price, a_shear_ratio_left_from_before_counts_where_no_shear_acts)
{
    // At the first column of the slide f = 0, so no new ratio is worked out
    // there: what the node held decides whether its volume is overstressed.
    double vol[2] = {0, 0};
    double share = 0;
    for (int run = 0; run < 2; ++run) {
        auto p = circle_2d(100, 4);
        const int si = p->sliding_index;
        int first = 1;
        while (p->zgrid(1, first, 1) - p->zgrid(1, first, si) <= 0)
            ++first;
        p->col_shear_ratio(1, first) = run == 0 ? 0.5f : 5.0f;
        ScriptedPort port;
        solve(*p, port);
        ASSERT_GT(p->factor_of_safety, 0.0f);
        EXPECT_EQ(p->zgrid(1, first, si + 1), 0.0f);
        EXPECT_EQ(p->col_shear_ratio(1, first), run == 0 ? 0.5f : 5.0f);
        vol[run] = p->vol_overstressed;
        const double h = double(p->zgrid(1, first, 1)) - double(p->zgrid(1, first, si));
        share = h * double(p->col_spacing) / double(p->slide_volume) * 100;
    }
    EXPECT_GT(share, 0.01);
    EXPECT_NEAR(vol[0] - vol[1], share, 1e-4);
}

TEST(spencer, crack_water_thrust_is_summed_with_the_opposite_sign_of_bishop)
{
    auto sp = circle_2d(100, 3);
    sp->crack_water_force[1] = -40;
    sp->crack_water_z[1] = 30;
    auto bj = circle_2d(100, 1);
    bj->crack_water_force[1] = -40;
    bj->crack_water_z[1] = 30;
    ScriptedPort port;
    solve(*sp, port);
    bj->solve_interactive = 0;
    solve_bishop_janbu(*bj, port);
    EXPECT_EQ(sp->crack_water_sum, -40.0f);
    EXPECT_EQ(bj->crack_water_sum, 40.0f);
}

TEST(spencer, low_m_alpha_is_reported_for_every_material_without_a_beep)
{
    // A purely cohesive slide with one near-vertical column: m-alpha there
    // is cos(gamma) = cos(1.5) = 0.0707 in every iteration. Bishop stays
    // silent on a base without friction; Spencer reports it, every iteration.
    auto p = circle_2d(100, 3, 0);
    int c0 = 0;
    for (int c = 1; c <= p->num_cols && c0 == 0; ++c)
        if (p->zgrid(1, c, 1) - p->zgrid(1, c, p->sliding_index) > 1)
            c0 = c;
    p->surf_dip_y(1, c0) = 1.5f;
    ScriptedPort port;
    solve(*p, port);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "M ALPHA = 0.0707 IN COLUMN  " + std::to_string(c0) + " ROW  1 MAT'L  1"));
    EXPECT_EQ(count_messages(*p, "M ALPHA = "), p->iteration_count);
    EXPECT_EQ(port.beeps, 0);
    auto b = circle_2d(100, 1, 0);
    b->surf_dip_y(1, c0) = 1.5f;
    b->solve_interactive = 0;
    solve_bishop_janbu(*b, port);
    EXPECT_EQ(count_messages(*b, "M ALPHA = "), 0);
}

TEST(spencer, fewer_active_columns_than_the_limit_warn_once)
{
    auto p = circle_2d(30, 3);
    ScriptedPort port;
    solve(*p, port);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    EXPECT_EQ(count_messages(*p, "LESS THAN  40 ACTIVE COLUMNS FOR THIS SURFACE"), 1);
}

TEST(spencer, knows_no_rotation_and_no_lateral_balance)
{
    auto p = make_sphere_slope(15, 20, 0.1f);
    p->solution_method = 4;
    p->rotation_angle = 10;
    p->balance_lateral = 1;
    const auto dips = p->surf_dip_y.v;
    ScriptedPort port;
    solve(*p, port, -1);
    EXPECT_EQ(p->rotation_angle, 0.0f);
    EXPECT_EQ(p->balance_lateral, 0.0f);
    EXPECT_TRUE(dips == p->surf_dip_y.v);
    EXPECT_TRUE(port.boxes.empty()) << "no lateral balance question";
    // The acceptability indices are what the printout window shows next.
    const auto lines = solution_printout_lines(*p);
    EXPECT_EQ(lines.front(), "SOLUTION ACCEPTABILITY INDICES");
    EXPECT_EQ(lines.at(3), "MORGENSTERN - PRICE METHOD");
}

TEST(spencer, a_search_trial_shows_nothing)
{
    auto p = circle_2d(100, 3);
    ScriptedPort port;
    solve(*p, port, 0);
    EXPECT_TRUE(port.progress_lines.empty());
    EXPECT_TRUE(port.texts.empty());
    EXPECT_GT(port.yields, 0);
}

TEST(spencer, a_submerged_head_leaves_the_mass_without_a_warning_and_pushes_the_row)
{
    // The toe side of the slide lies in a layer of no strength: water.
    auto p = circle_2d(100, 3);
    p->num_layers = 2;
    derive_counts(*p);
    redim_grids(*p);
    auto q = circle_2d(100, 3);
    const int si = p->sliding_index;
    for (int c = 1; c <= p->num_cols; ++c) {
        p->zgrid(1, c, 2) = q->zgrid(1, c, 1);
        p->zgrid(1, c, 1) = std::min(q->zgrid(1, c, 1), 14.0f);
        p->zgrid(1, c, si) = q->zgrid(1, c, q->sliding_index);
        p->surf_dip_y(1, c) = q->surf_dip_y(1, c);
    }
    p->centre_y = q->centre_y;
    p->centre_z = q->centre_z;
    p->mat_unit_weight[1] = 10;
    p->mat_cohesion[1] = 0;
    p->mat_phi[1] = 0;
    p->mat_type[1] = 1;
    p->mat_unit_weight[2] = 18;
    p->mat_cohesion[2] = 20;
    p->mat_phi[2] = 20;
    p->mat_type[2] = 1;
    ScriptedPort port;
    solve(*p, port);
    EXPECT_LT(p->head_water_force[1], 0.0f);
    EXPECT_EQ(p->head_water_sum, -p->head_water_force[1]);
    EXPECT_GT(p->row_thrust_arm[1], 0.0f);
    EXPECT_FALSE(has_message(*p, "HEAD OF SLIDE SUBMERGED.  USE SUBMERGED WEIGHTS."));
}

} // namespace
} // namespace tobel::test
