// Bishop's and Janbu's solutions: hand-worked blocks, the iteration and its
// ends, external forces, rotation, messages and the interface calls.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "project/numtext.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

// One row of unit width, columns 1 m apart along 0..(cols - 1); ground 10.
static std::unique_ptr<Project> row_2d(int cols)
{
    SolverMesh m;
    m.rows = 1;
    m.cols = cols;
    m.x_max = 1;
    m.y_max = float(cols - 1);
    auto p = make_solver_project(m);
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    return p;
}

static void solve(Project& p, Port& port, int16 interactive = 0)
{
    p.solve_interactive = interactive;
    solve_bishop_janbu(p, port);
}

static bool has_message(const Project& p, const std::string& text)
{
    for (int i = 1; i <= p.message_count; ++i)
        if (p.message_text[std::size_t(i)] == text)
            return true;
    return false;
}

TEST(bishop, single_cohesive_block_by_hand)
{
    auto p = row_2d(5);
    p->zgrid(1, 3, p->sliding_index) = 6;
    p->surf_dip_y(1, 3) = 0.2f;
    p->centre_y = 0;
    p->centre_z = 20;
    QuietPort port;
    solve(*p, port);
    const double a = double(0.2f), arm = 2, h = 14, w = 80;
    // phi = 0: N = (W - C sin a / F) / cos a, R = C (arm sin a + H cos a) and
    // the driving moment W H tan a + (C sin a / F)(arm - H tan a); F is the
    // fixed point of F = R / Dm(F).
    const double cc = 5 * double(float(1 / std::cos(a)));
    const double r = cc * (arm * std::sin(a) + h * std::cos(a));
    const double b = cc * std::sin(a) * (arm - h * std::tan(a));
    const double exact = (r - b) / (w * h * std::tan(a));
    EXPECT_NEAR(p->factor_of_safety, exact, 0.002);
    EXPECT_EQ(p->active_columns, 1);
    EXPECT_FLOAT_EQ(p->slide_weight, 80);
}

TEST(bishop, single_cohesive_block_with_its_normal_through_the_centre)
{
    auto p = row_2d(5);
    p->zgrid(1, 3, p->sliding_index) = 6;
    p->surf_dip_y(1, 3) = 0.2f;
    // The base normal through (2, 6) reaches the centre 15 further on.
    const double a = double(0.2f);
    p->centre_y = float(2 - 15 * std::sin(a));
    p->centre_z = float(6 + 15 * std::cos(a));
    QuietPort port;
    solve(*p, port);
    // Arm of the normal force 0: F = c A rho / (W (y - yc)).
    const double cc = 5 * double(float(1 / std::cos(a)));
    const double arm = double(p->col_arm(1, 3)), h = double(p->centre_z) - 6;
    const double exact = cc * (arm * std::sin(a) + h * std::cos(a)) / (80 * arm);
    EXPECT_NEAR(p->factor_of_safety, exact, 1e-6);
    EXPECT_NEAR(p->factor_of_safety, cc * 15 / (80 * 15 * std::sin(a)), 1e-5);
}

TEST(bishop, unstable_iteration_hits_the_limit_and_fails)
{
    // With H = -arm tan(2a) the step F -> R / Dm(F) is an involution: F
    // swings between 1 and about 0.19 and never settles.
    auto p = row_2d(5);
    p->zgrid(1, 3, p->sliding_index) = 6;
    p->surf_dip_y(1, 3) = 0.2f;
    p->centre_y = 0;
    p->centre_z = float(6 - 2 * std::tan(2 * double(0.2f)));
    test::ScriptedPort port;
    solve(*p, port, -1);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_EQ(p->iteration_total, 51);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "THIS SOLUTION IS NOT CONVERGING, TRY A DIFFERENT METHOD");
    EXPECT_EQ(port.boxes[0].icon, Icon::critical);
    EXPECT_EQ(port.boxes[0].title, "TOBEL-3");
    EXPECT_EQ(p->solve_interactive, -1);
}

// A planar base parallel to the ground, of constant vertical depth, with
// the centre on the normal through the middle column: Bishop's fixed point
// is the infinite slope factor (c A + W cos a tan phi) / (W sin a).
TEST(bishop, planar_slide_gives_the_infinite_slope_factor)
{
    const int cols = 41;
    auto p = row_2d(cols);
    const double alpha = double(0.35f), depth = 3;
    p->mat_phi[1] = 25;
    for (int c = 1; c <= cols; ++c) {
        const double y = c - 1;
        p->zgrid(1, c, 1) = float(10 + y * std::tan(alpha));
        p->zgrid(1, c, p->sliding_index) = p->zgrid(1, c, 1);
        if (c > 1 && c < cols) {
            p->zgrid(1, c, p->sliding_index) = float(double(p->zgrid(1, c, 1)) - depth);
            p->surf_dip_y(1, c) = float(alpha);
        }
    }
    const double ym = 20, zm = double(p->zgrid(1, 21, p->sliding_index)), rho = 200;
    p->centre_y = float(ym - rho * std::sin(alpha));
    p->centre_z = float(zm + rho * std::cos(alpha));
    QuietPort port;
    solve(*p, port);
    const double w = 20 * depth, area = 1 / std::cos(alpha);
    const double t = std::tan(double(float(3.14 / 180)) * 25);
    const double exact = (5 * area + w * std::cos(alpha) * t) / (w * std::sin(alpha));
    EXPECT_NEAR(p->factor_of_safety, exact, 0.003);
    EXPECT_EQ(p->active_columns, cols - 2);
    EXPECT_TRUE(has_message(*p, "LESS THAN  40 ACTIVE COLUMNS FOR THIS SURFACE"));
}

TEST(janbu, stops_on_its_own_factor_and_replaces_bishops)
{
    auto p = make_sphere_slope(40);
    p->solution_method = 2;
    QuietPort port;
    solve(*p, port);
    const float janbu = p->factor_of_safety;
    EXPECT_EQ(p->factor_of_safety, p->janbu_fos);
    // phi = 0: the damped iteration goes to the fixed point
    // J = sum(C cos a) / sum((W - C sin a / J) tan a) = sum(C / cos a) / sum(W tan a).
    double sj = 0, nj = 0;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            if (p->col_area(r, c) == 0)
                continue;
            const double a = p->surf_dip_y(r, c);
            sj += double(p->col_cohesion(r, c)) * p->col_area(r, c) / std::cos(a);
            nj += double(p->col_weight(r, c)) * std::tan(a);
        }
    EXPECT_NEAR(janbu, sj / nj, 0.006);
    auto q = make_sphere_slope(40);
    solve(*q, port);
    EXPECT_GT(std::abs(q->factor_of_safety - janbu), 0.01);
}

TEST(bishop, force_off_the_mesh_does_nothing_and_has_both_flags)
{
    auto p = make_sphere_slope(21);
    QuietPort port;
    solve(*p, port);
    const float f0 = p->factor_of_safety;
    auto q = make_sphere_slope(21);
    q->num_forces = 1;
    q->force_x[1] = 150;
    q->force_y[1] = 50;
    q->force_z[1] = 20;
    q->force_h[1] = 1000;
    q->force_v[1] = 1000;
    solve(*q, port);
    EXPECT_EQ(q->force_v_ignored[1], 1);
    EXPECT_EQ(q->force_h_ignored[1], 1);
    EXPECT_EQ(q->factor_of_safety, f0);
    EXPECT_EQ(q->ext_vertical_sum, 0.0f);
    EXPECT_EQ(q->ext_horizontal_sum, 0.0f);
}

TEST(bishop, force_above_its_ground_keeps_its_horizontal_part)
{
    auto p = make_sphere_slope(21);
    // Node (11, 11) at x = y = 50: ground 15, surface 9. The force sits at
    // z = 17, above the ground there, yet the mass of row 11 spans 17 further up.
    p->num_forces = 1;
    p->force_x[1] = 50;
    p->force_y[1] = 50;
    p->force_z[1] = 17;
    p->force_h[1] = 100;
    p->force_v[1] = 0;
    QuietPort port;
    solve(*p, port);
    EXPECT_EQ(p->force_h_ignored[1], 0);
    EXPECT_FLOAT_EQ(p->ext_horizontal_sum, -100);
}

TEST(bishop, vertical_force_is_carried_as_column_weight)
{
    auto p = row_2d(5);
    p->zgrid(1, 3, p->sliding_index) = 6;
    p->surf_dip_y(1, 3) = 0.2f;
    p->centre_z = 20;
    p->num_forces = 1;
    p->force_x[1] = 0;
    p->force_y[1] = 2;
    p->force_z[1] = 10;
    p->force_v[1] = 20;
    QuietPort port;
    solve(*p, port);
    EXPECT_EQ(p->force_v_ignored[1], 0);
    EXPECT_EQ(p->col_weight(1, 3), 100.0f);
    EXPECT_EQ(p->ext_vertical_sum, 20.0f);
}

TEST(bishop, rotation_of_zero_leaves_the_dips_bit_for_bit)
{
    auto p = make_sphere_slope(21);
    const auto dx = p->surf_dip_x.v, dy = p->surf_dip_y.v;
    test::ScriptedPort port;
    p->rotation_angle = 0;
    solve(*p, port, -1);
    EXPECT_EQ(std::memcmp(dx.data(), p->surf_dip_x.v.data(), dx.size() * sizeof(float)), 0);
    EXPECT_EQ(std::memcmp(dy.data(), p->surf_dip_y.v.data(), dy.size() * sizeof(float)), 0);
}

TEST(bishop, search_solves_without_rotation)
{
    auto p = make_sphere_slope(21);
    const auto dy = p->surf_dip_y.v;
    p->rotation_angle = 10;
    QuietPort port;
    solve(*p, port, 0);
    EXPECT_EQ(p->rotation_angle, 0.0f);
    EXPECT_TRUE(dy == p->surf_dip_y.v);
}

TEST(bishop, interactive_rotation_turns_the_dips)
{
    auto p = make_sphere_slope(21);
    const double tx = std::tan(double(p->surf_dip_x(8, 12))), ty = std::tan(double(p->surf_dip_y(8, 12)));
    p->rotation_angle = 10;
    test::ScriptedPort port;
    solve(*p, port, -1);
    const double th = double(float(3.14 / 180)) * 10;
    EXPECT_FLOAT_EQ(p->surf_dip_y(8, 12), float(std::atan(tx * std::sin(th) + ty * std::cos(th))));
    EXPECT_FLOAT_EQ(p->surf_dip_x(8, 12),
                    float(std::atan(tx * std::sin(th + 3.1415 / 2) + ty * std::cos(th + 3.1415 / 2))));
    EXPECT_EQ(p->rotation_angle, 10.0f); // the result panel clears it
}

TEST(bishop, fewer_active_columns_than_the_limit_is_a_warning_only)
{
    auto p = make_sphere_slope(21);
    QuietPort port;
    solve(*p, port);
    EXPECT_LT(p->active_columns, 400);
    EXPECT_TRUE(has_message(*p, "LESS THAN  400 ACTIVE COLUMNS FOR THIS SURFACE"));
    EXPECT_GT(p->factor_of_safety, 0.5f);
}

TEST(bishop, empty_mass_leaves_the_factor_at_one)
{
    auto p = row_2d(5);
    QuietPort port;
    solve(*p, port);
    EXPECT_EQ(p->factor_of_safety, 1.0f);
    EXPECT_EQ(p->active_columns, 0);
    EXPECT_EQ(p->iteration_total, 1);
}

TEST(bishop, stop_ends_after_the_iteration_with_the_factor_as_it_stands)
{
    auto p = make_sphere_slope(21, 20);
    test::ScriptedPort port;
    port.stop_after_yields = 0; // Stop pressed during the first row
    solve(*p, port, -1);
    EXPECT_EQ(p->iteration_total, 1);
    EXPECT_EQ(p->solve_abort, 0);
    EXPECT_GT(p->factor_of_safety, 0.0f);
    EXPECT_NE(p->factor_of_safety, 1.0f);
    EXPECT_EQ(p->solve_interactive, -1);
    EXPECT_TRUE(port.progress_lines.empty());
}

TEST(bishop, interactive_solution_reports_progress_and_search_does_not)
{
    auto p = make_sphere_slope(21, 20);
    test::ScriptedPort port;
    solve(*p, port, -1);
    ASSERT_GE(port.progress_lines.size(), 4u);
    EXPECT_EQ(port.progress_lines[0], "    Iteration  1");
    EXPECT_EQ(port.progress_lines[1].rfind("    Interim F. of S. = ", 0), 0u);
    EXPECT_EQ(port.progress_lines.back(),
              "    Interim F. of S. = " + format(p->factor_of_safety, "####0.00"));
    EXPECT_EQ(p->solve_interactive, 0);
    EXPECT_EQ(port.yields, p->iteration_total * 21);
    auto q = make_sphere_slope(21, 20);
    test::ScriptedPort quiet;
    solve(*q, quiet, 0);
    EXPECT_TRUE(quiet.progress_lines.empty());
    EXPECT_TRUE(quiet.boxes.empty());
    EXPECT_EQ(q->factor_of_safety, p->factor_of_safety);
}

TEST(bishop, friction_converges_to_its_own_fixed_point)
{
    auto p = make_sphere_slope(41, 20);
    QuietPort port;
    solve(*p, port);
    const double f = p->factor_of_safety;
    // One more evaluation of the moment ratio at the converged F moves it by
    // no more than the tolerance.
    double r = 0, dm = 0;
    for (int i = 1; i <= p->num_rows; ++i)
        for (int c = 1; c <= p->num_cols; ++c) {
            if (p->col_area(i, c) == 0)
                continue;
            const double sa = std::sin(double(p->surf_dip_y(i, c))),
                         ca = std::cos(double(p->surf_dip_y(i, c)));
            const double cg = p->col_cos_gamma(i, c), t = std::tan(double(p->col_phi(i, c)));
            const double w = p->col_weight(i, c), cc = double(p->col_cohesion(i, c)) * p->col_area(i, c);
            const double arm = p->col_arm(i, c), h = double(p->centre_z) - p->zgrid(i, c, p->sliding_index);
            const double n = (w - cc * sa / f) / (cg * (1 + sa * t / cg / f));
            r += (n * t + cc) * (arm * sa + h * ca);
            dm += w * arm - n * cg / ca * (arm * ca - h * sa);
        }
    EXPECT_NEAR(r / dm, f, 0.003);
    EXPECT_GT(f, 1.5); // friction adds to the cohesive 1.33
}

TEST(bishop, low_m_alpha_is_warned_with_a_beep_in_every_iteration)
{
    auto p = row_2d(7);
    for (int c = 2; c <= 5; ++c) {
        p->zgrid(1, c, p->sliding_index) = 7;
        p->surf_dip_y(1, c) = 0.3f;
    }
    p->surf_dip_y(1, 5) = 1.5f; // near vertical: m-alpha about cos(1.5) = 0.07
    p->mat_phi[1] = 0.001f;
    p->centre_y = -10;
    p->centre_z = 40;
    test::ScriptedPort port;
    solve(*p, port);
    int count = 0;
    std::string text;
    for (int i = 1; i <= p->message_count; ++i)
        if (p->message_text[std::size_t(i)].rfind("M ALPHA = ", 0) == 0) {
            ++count;
            text = p->message_text[std::size_t(i)];
        }
    EXPECT_EQ(count, p->iteration_total);
    EXPECT_GE(count, 2);
    EXPECT_EQ(port.beeps, count);
    EXPECT_EQ(text.substr(text.size() - 29), " IN COLUMN  5 ROW  1 MAT'L  1");
    // The first one is given at F = 1: m-alpha = cos g + sin a tan(phi).
    const double cg = double(float(1 / std::sqrt(std::tan(double(1.5f)) * std::tan(double(1.5f)) + 1)));
    const double t = std::tan(double(float(double(float(3.14 / 180)) * double(0.001f))));
    const double ma = cg * (1 + (std::sin(double(1.5f)) * t / cg) / 1);
    EXPECT_TRUE(has_message(*p, "M ALPHA = " + format(ma, "#0.0000") + " IN COLUMN  5 ROW  1 MAT'L  1"));
}

TEST(bishop, zero_driving_moment_ends_the_solution_with_a_message)
{
    auto p = row_2d(5);
    p->zgrid(1, 3, p->sliding_index) = 6; // level base right under the centre
    p->centre_y = 2;
    p->centre_z = 20;
    QuietPort port;
    solve(*p, port);
    EXPECT_TRUE(has_message(*p, " ERR - ZERO DRIVING FORCE "));
    EXPECT_EQ(p->factor_of_safety, 1.0f);
}

TEST(bishop, arithmetic_failure_at_a_column_is_a_failed_solution)
{
    auto p = make_sphere_slope(21);
    p->mat_type[1] = 3;
    p->mat_coef_a[1] = 0.5f;
    p->mat_coef_b[1] = 0.7f;
    p->mat_uniaxial[1] = 0;
    QuietPort port;
    solve(*p, port);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    ASSERT_GE(p->message_count, 1);
    EXPECT_EQ(p->message_text[std::size_t(p->message_count)].rfind("ARITHMETIC FAILURE IN COLUMN ", 0), 0u);
    EXPECT_NE(p->message_text[std::size_t(p->message_count)].find(" MAT'L  1"), std::string::npos);
}

TEST(bishop, nonlinear_material_is_relinearised_each_iteration)
{
    auto p = make_sphere_slope(31);
    p->mat_type[1] = 3;
    p->mat_coef_a[1] = 0.6f;
    p->mat_coef_b[1] = 0.7f;
    p->mat_uniaxial[1] = 500;
    p->mat_coef_d[1] = 0.05f;
    QuietPort port;
    solve(*p, port);
    EXPECT_GT(p->factor_of_safety, 0.0f);
    // At the end the strength at a column is the tangent at the normal
    // stress of the iteration before the last, which is within the
    // tolerance of the last one: check the tangent relation at that stress.
    const int r = 16, c = 16;
    ASSERT_GT(p->col_area(r, c), 0.0f);
    const double phi = p->col_phi(r, c), coh = p->col_cohesion(r, c);
    const double t = std::tan(phi);
    // tau - sigma tan(phi) = c  with tan(phi) = B A y^(B-1), so y from tan(phi):
    const double y = std::pow(t / (0.7 * double(0.6f)), 1 / (double(0.7f) - 1));
    const double sigma = (y - double(0.05f)) * 500;
    EXPECT_NEAR(coh, double(0.6f) * 500 * std::pow(y, double(0.7f)) - sigma * t, 1e-2);
    EXPECT_NEAR(sigma, p->col_normal(r, c), 0.05 * std::abs(double(p->col_normal(r, c))) + 1);
}

} // namespace
} // namespace tobel::test
