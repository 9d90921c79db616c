// The lateral force balance, the surface check, the force reset and the
// result texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "project/numtext.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/result_panel.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

static const char* question_tail = "\nDO YOU WISH TO BALANCE LATERAL FORCES ?";

static bool has_message(const Project& p, const std::string& text)
{
    for (int i = 1; i <= p.message_count; ++i)
        if (p.message_text[std::size_t(i)] == text)
            return true;
    return false;
}

TEST(lateral, symmetric_slide_never_prompts)
{
    auto p = make_sphere_slope(41, 20);
    ScriptedPort port;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    EXPECT_LE(std::abs(p->lateral_unbalance / p->slide_weight), 0.01f);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p->unbalance_z, -9999999.0f);
}

TEST(lateral, search_never_prompts_even_when_unbalanced)
{
    auto p = make_sphere_slope(41, 20, 0.3f);
    ScriptedPort port;
    p->solve_interactive = 0;
    solve_bishop_janbu(*p, port);
    EXPECT_GT(std::abs(p->lateral_unbalance / p->slide_weight), 0.01f);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p->balance_lateral, 0.0f);
}

TEST(lateral, answering_no_leaves_the_solution_with_its_unbalance)
{
    auto p = make_sphere_slope(41, 20, 0.3f);
    ScriptedPort port;
    port.answers.push_back(Answer::no);
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    const double ratio = double(p->lateral_unbalance) / double(p->slide_weight);
    EXPECT_EQ(port.boxes[0].text, "UBF/WT = " + format(ratio, "#0.00000") + question_tail);
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(port.boxes[0].title, "WARNING");
    EXPECT_EQ(p->balance_lateral, 0.0f);
    const auto lines = result_panel_lines(*p);
    EXPECT_EQ(lines[4], "  Unbalanced Force: " + format(p->lateral_unbalance, "####0.0000"));
}

TEST(lateral, answering_yes_balances_the_mass_over_new_passes)
{
    auto p = make_sphere_slope(41, 20, 0.3f);
    ScriptedPort port;
    port.answers.push_back(Answer::yes);
    port.stop_after_yields = 41 * 2000; // a safety net only
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    EXPECT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(p->balance_lateral, 1.0f);
    EXPECT_LE(std::abs(p->lateral_unbalance / p->slide_weight), 0.001f);
    EXPECT_NE(p->unbalance_z, -9999999.0f);
    EXPECT_GT(p->factor_of_safety, 0.0f);
    // The added vertical loads cancel over the mass.
    double added = 0;
    for (float v : p->col_lateral_load.v)
        added += v;
    EXPECT_NEAR(added / p->slide_weight, 0, 1e-4);
    const auto lines = solution_printout_lines(*p);
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[0], "LATERAL EQUILIBRIUM ESTABLISHED");
    EXPECT_EQ(lines[3], "The Following are Total Forces:");
    EXPECT_EQ(lines[5], "Weight of Sliding Body .................................. = " +
                            format(p->slide_weight, "###0.00"));
    EXPECT_EQ(lines[9], "Total Vertical Shear Force Used to Establish Equilibrium  = " +
                            format(-p->weight_positive, "###0.00"));
    EXPECT_FLOAT_EQ(p->weight_negative, p->slide_weight - p->weight_flat - p->weight_positive);
}

// A 3 by 5 mesh whose every active column leans the same way across.
static std::unique_ptr<Project> one_sided(int rows)
{
    SolverMesh m;
    m.rows = rows;
    m.cols = 7;
    m.x_max = rows > 1 ? 4.0f : 1.0f;
    m.y_max = 6;
    auto p = make_solver_project(m);
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 2; c <= 6; ++c) {
            p->zgrid(r, c, p->sliding_index) = float(10 - (c - 1));
            p->surf_dip_y(r, c) = -0.3f;
            p->surf_dip_x(r, c) = 0.3f;
        }
    p->centre_y = 8;
    p->centre_z = 20;
    return p;
}

TEST(lateral, slide_without_negative_lateral_slope_cannot_be_balanced)
{
    auto p = one_sided(3);
    ScriptedPort port;
    port.answers.push_back(Answer::yes);
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_TRUE(has_message(*p, "LATERAL EQUILIBRIUM CANNOT BE ACHIEVED WITH THIS GEOMETRY"));
    EXPECT_EQ(p->balance_lateral, 0.0f);
    EXPECT_EQ(p->unbalance_z, -9999999.0f);
}

TEST(lateral, single_row_passes_over_the_geometry_test)
{
    auto p = one_sided(1);
    ScriptedPort port;
    port.answers.push_back(Answer::yes);
    port.stop_after_yields = 300;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    ASSERT_GE(port.boxes.size(), 1u);
    EXPECT_FALSE(has_message(*p, "LATERAL EQUILIBRIUM CANNOT BE ACHIEVED WITH THIS GEOMETRY"));
    // A second pass was opened after the first balancing step.
    EXPECT_NE(p->kappa_pos, 0.0);
}

// --- check_surface ---

static std::unique_ptr<Project> flat(int rows)
{
    SolverMesh m;
    m.rows = rows;
    m.cols = 5;
    m.x_max = rows > 1 ? 4.0f : 1.0f;
    auto p = make_solver_project(m);
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    return p;
}

TEST(check_surface, surface_on_the_ground_gives_exactly_one_message)
{
    auto p = flat(3);
    p->message_count = 4;
    check_surface(*p);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "  SURFACE DOES NOT INTERSECT GEOMETRY");
    EXPECT_EQ(p->surface_out_flag, -1);
}

TEST(check_surface, one_row_not_back_to_the_ground_marks_the_trial_out)
{
    auto p = flat(5);
    p->zgrid(3, 3, p->sliding_index) = 8;
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, 0);
    EXPECT_EQ(p->message_count, 0);
    p->zgrid(3, 5, p->sliding_index) = 9; // still under the ground at the row's end
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, -1);
    ASSERT_GE(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN MOTION DIRECTION");
}

TEST(check_surface, lateral_boundary_is_a_warning_that_does_not_stop_the_trial)
{
    auto p = flat(5);
    p->zgrid(1, 3, p->sliding_index) = 8; // under the ground on the first row
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, 0);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN LATERAL DIRECTION");
}

TEST(check_surface, single_row_never_raises_the_lateral_message)
{
    auto p = flat(1);
    p->zgrid(1, 3, p->sliding_index) = 8;
    check_surface(*p);
    EXPECT_EQ(p->surface_out_flag, 0);
    EXPECT_EQ(p->message_count, 0);
}

TEST(reset_forces, clears_flags_and_water_thrusts)
{
    auto p = flat(3);
    p->num_forces = 2;
    p->force_v_ignored[1] = 1;
    p->force_h_ignored[2] = 1;
    p->head_water_force[2] = -5;
    p->crack_water_force[3] = 7;
    reset_forces(*p);
    EXPECT_EQ(p->force_v_ignored[1], 0);
    EXPECT_EQ(p->force_h_ignored[2], 0);
    EXPECT_EQ(p->head_water_force[2], 0.0f);
    EXPECT_EQ(p->crack_water_force[3], 0.0f);
}

// --- result panel ---

TEST(result_panel, lines_of_a_bishop_trial)
{
    auto p = flat(3);
    p->solution_method = 1;
    p->factor_of_safety = 1.2345f;
    p->slide_volume = 1234.5f;
    p->slide_weight = 200;
    p->lateral_unbalance = -0.12345f;
    p->slide_area = 99.125f;
    p->active_columns = 321;
    p->centre_y = 12.5f;
    p->centre_z = -3;
    p->neg_normal_sum = 5;
    const auto lines = result_panel_lines(*p);
    const std::vector<std::string> expected = {
        "  Bishop's Method",
        "  Factor of Safety: 1.23",
        "  Slide Volume: 1234.50",
        "  Slide Weight: 200.00",
        "  Unbalanced Force: -0.1235",
        "  Sliding Surface Area: 99.13",
        "  Number of Active Columns: 321",
        "  Centre Y: 12.50  Z: -3.00",
        "  Negative normal stresses, 3 % weight",
    };
    EXPECT_EQ(lines, expected);
    EXPECT_FLOAT_EQ(p->neg_normal_percent, 2.5f);
}

TEST(result_panel, water_forces_quake_and_lambda_lines)
{
    auto p = flat(3);
    p->solution_method = 4;
    p->lambda_coef = 0.25f;
    p->head_water_sum = 12;
    p->num_forces = 1;
    p->ext_horizontal_sum = -40;
    p->ext_vertical_sum = 10;
    p->eq_coef = 0.1f;
    const auto lines = result_panel_lines(*p);
    EXPECT_EQ(lines[0], "  Morgenstern-Price Method");
    EXPECT_EQ(lines[2], "  Coefficient Lambda = 0.25");
    const std::vector<std::string> tail = {"  Total water thrust",     "       (toe submergence): 12.00",
                                           "  Total external forces:", "       horizontal: 40.00",
                                           "       vertical:   10.00", "  Hor. Earthquake Accel.: 0.10"};
    ASSERT_GE(lines.size(), tail.size());
    EXPECT_EQ(std::vector<std::string>(lines.end() - long(tail.size()), lines.end()), tail);
}

TEST(result_panel, rotation_is_shown_once_and_the_next_solve_is_not_rotated)
{
    auto p = make_sphere_slope(21);
    p->rotation_angle = 5;
    ScriptedPort port;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    const auto lines = result_panel_lines(*p);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "  Rotation angle: 5.0"), lines.end());
    EXPECT_EQ(p->rotation_angle, 0.0f);
    const auto dy = p->surf_dip_y.v;
    p->solve_interactive = -1;
    solve_bishop_janbu(*p, port);
    EXPECT_TRUE(dy == p->surf_dip_y.v);
}

TEST(solution_printout, acceptability_indices_of_a_two_dimensional_spencer_trial)
{
    auto p = flat(1);
    p->solution_method = 3;
    p->iteration_count = 12;
    p->moment_shear = 1500.5f;
    p->moment_other = -1500.25f;
    p->thrust_ratio_mean = 0.4f;
    p->thrust_ratio_min = 0.1f;
    p->thrust_ratio_max = 0.75f;
    p->vol_thrust_inside = 80;
    p->vol_overstressed = 2.5f;
    p->lambda_coef = 0.3f;
    p->factor_of_safety = 1.5f;
    const auto lines = solution_printout_lines(*p);
    ASSERT_EQ(lines.size(), 18u);
    EXPECT_EQ(lines[0], "SOLUTION ACCEPTABILITY INDICES");
    EXPECT_EQ(lines[3], "SPENCER'S METHOD");
    EXPECT_EQ(lines[7], "Number of iterations .......................: 12");
    EXPECT_EQ(lines[8], "Moment of resisting forces .................: 1500.5");
    EXPECT_EQ(lines[11], "          Average: .4 Range: .1 to .75");
    EXPECT_EQ(lines[12], "Thrust line acceptable in ..........:80.00 % of slide volume");
    EXPECT_EQ(lines[15], "Vertical internal strength exceeded in: 2.50 % of volume");
    EXPECT_EQ(lines[17], "FACTOR OF SAFETY   = 1.50");
}

} // namespace
} // namespace tobel::test
