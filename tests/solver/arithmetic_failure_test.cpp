// Floating-point failures of a solution: a bad material, a column of no
// area, a weight beyond the single range, a discontinuity code with no
// material. Each is a failed solution (F = 0) with a message naming the
// column and the material, and no result holds a number that is not finite.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "report/messages.h"
#include "solver/bishop_janbu.h"
#include "solver/column.h"
#include "solver/spencer_mp.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::SolverMesh;

// Three rows of five columns, spacing 1; ground at 10 and an inclined
// sliding plane under columns 2 to 4 of every row, on the ground elsewhere.
// So the first active column in solving order is column 2 of row 1.
std::unique_ptr<Project> trough(int method)
{
    SolverMesh m; // 3 rows over X 0..2, 5 columns over Y 0..4
    auto p = test::make_solver_project(m);
    p->solution_method = int16(method);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 10;
    p->mat_phi[1] = 30;
    test::fill_plane(*p, 1, 10);
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c)
            if (c >= 2 && c <= 4) {
                // A base rising one in two towards +Y, so that the mass drives towards -Y.
                p->zgrid(r, c, p->sliding_index) = float(3 + 0.5 * c);
                p->surf_dip_y(r, c) = float(std::atan(0.5));
            } else {
                p->zgrid(r, c, p->sliding_index) = 10;
            }
    p->centre_y = 2;
    p->centre_z = 20;
    p->solve_interactive = 0;
    return p;
}

void solve(Project& p)
{
    test::ScriptedPort port;
    if (p.solution_method >= 3)
        solve_spencer_mp(p, port);
    else
        solve_bishop_janbu(p, port);
}

bool has_message(const Project& p, const std::string& text)
{
    for (const auto& m : trial_messages(p))
        if (m == text)
            return true;
    return false;
}

template <class G> bool grid_finite(const G& g)
{
    for (const auto x : g.v)
        if (!std::isfinite(double(x)))
            return false;
    return true;
}

// Every column array and every total of the solution is a finite number.
void expect_all_finite(const Project& p)
{
    EXPECT_TRUE(grid_finite(p.col_weight));
    EXPECT_TRUE(grid_finite(p.col_area));
    EXPECT_TRUE(grid_finite(p.col_pore));
    EXPECT_TRUE(grid_finite(p.col_phi));
    EXPECT_TRUE(grid_finite(p.col_cohesion));
    EXPECT_TRUE(grid_finite(p.col_cos_gamma));
    EXPECT_TRUE(grid_finite(p.col_normal));
    EXPECT_TRUE(grid_finite(p.col_fos));
    EXPECT_TRUE(grid_finite(p.col_lat_slope));
    EXPECT_TRUE(grid_finite(p.col_eff_thrust));
    EXPECT_TRUE(grid_finite(p.col_shear_ratio));
    for (float x : {p.factor_of_safety, p.janbu_fos, p.slide_weight, p.slide_area, p.slide_volume,
                    p.lambda_coef, p.neg_normal_sum, p.lateral_unbalance, p.moment_shear, p.moment_other,
                    p.head_water_sum, p.crack_water_sum})
        EXPECT_TRUE(std::isfinite(x));
}

class ArithmeticFailure : public ::testing::TestWithParam<int> {};

TEST_P(ArithmeticFailure, sound_trough_solves_to_a_positive_factor)
{
    // The baseline of the cases below: the same mesh with good data works.
    auto p = trough(GetParam());
    solve(*p);
    EXPECT_GT(p->factor_of_safety, 0.0f);
    for (const auto& m : trial_messages(*p))
        EXPECT_EQ(m.find("ARITHMETIC"), std::string::npos) << m;
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, nonlinear_base_with_uniaxial_strength_zero_fails_naming_column_and_material)
{
    auto p = trough(GetParam());
    p->mat_type[1] = 3;
    p->mat_coef_a[1] = 0.5f;
    p->mat_coef_b[1] = 0.7f;
    p->mat_uniaxial[1] = 0;
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  2 ROW  1 MAT'L  1"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, nonlinear_base_with_negative_power_base_fails)
{
    // y = sigma / sc + D is negative: a fractional power of it is not a number.
    auto p = trough(GetParam());
    p->mat_type[1] = 3;
    p->mat_coef_a[1] = 0.5f;
    p->mat_coef_b[1] = 0.5f;
    p->mat_uniaxial[1] = 100;
    p->mat_coef_d[1] = -1000;
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  2 ROW  1 MAT'L  1"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, column_of_zero_area_fails_naming_column_and_material)
{
    // All rows at one X: the plan area of every column is 0.
    auto p = trough(GetParam());
    p->row_spacing = 0;
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  2 ROW  1 MAT'L  1"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, weight_beyond_single_range_fails_and_leaves_no_infinity)
{
    // 3E+38 times a thickness of 5 does not fit a single.
    auto p = trough(GetParam());
    p->mat_unit_weight[1] = 3e38f;
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  2 ROW  1 MAT'L  1"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, discontinuity_code_beyond_the_material_table_fails_naming_that_material)
{
    auto p = trough(GetParam());
    p->disc_code(1, 2) = 120; // entry 1 + 120 does not exist
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  2 ROW  1 MAT'L  121"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, failure_in_a_later_row_names_that_row)
{
    // Only row 3 has the bad code, at its column 3.
    auto p = trough(GetParam());
    p->disc_code(3, 3) = 200;
    solve(*p);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    EXPECT_TRUE(has_message(*p, "ARITHMETIC FAILURE IN COLUMN  3 ROW  3 MAT'L  201"));
    expect_all_finite(*p);
}

TEST_P(ArithmeticFailure, force_far_off_the_mesh_or_on_a_mesh_of_no_spacing_is_ignored)
{
    auto p = trough(GetParam());
    p->num_forces = 2;
    p->force_x[1] = 3e38f; // beyond any index
    p->force_y[1] = 2;
    p->force_v[1] = 100;
    p->force_x[2] = 1;
    p->force_y[2] = 2;
    p->force_v[2] = 100;
    p->col_spacing = 0; // no column index at all: 0 / 0
    solve(*p);
    if (GetParam() == 4) {
        // The half sine has no span on such a mesh: the solution stops before the forces.
        EXPECT_EQ(p->factor_of_safety, 0.0f);
    } else {
        for (int f = 1; f <= 2; ++f) {
            EXPECT_EQ(p->force_v_ignored[f], 1) << f;
            EXPECT_EQ(p->force_h_ignored[f], 1) << f;
        }
    }
    expect_all_finite(*p);
}

INSTANTIATE_TEST_SUITE_P(methods, ArithmeticFailure, ::testing::Values(1, 2, 3, 4));

TEST(non_finite_results, are_cleared_and_the_first_column_is_named)
{
    auto p = trough(1);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    p->col_normal(3, 1) = nan;
    p->col_fos(2, 4) = -inf;
    p->col_material(2, 4) = 1;
    p->slide_weight = inf;
    p->row_coef[2] = nan;
    const NonFiniteResult bad = clear_non_finite_results(*p);
    EXPECT_TRUE(bad.found);
    EXPECT_EQ(bad.r, 2);
    EXPECT_EQ(bad.c, 4);
    EXPECT_EQ(bad.m, 1);
    EXPECT_EQ(p->col_normal(3, 1), 0.0f);
    EXPECT_EQ(p->col_fos(2, 4), 0.0f);
    EXPECT_EQ(p->slide_weight, 0.0f);
    EXPECT_EQ(p->row_coef[2], 0.0f);
}

TEST(non_finite_results, only_a_total_gives_no_column)
{
    auto p = trough(1);
    p->moment_other = std::numeric_limits<float>::infinity();
    const NonFiniteResult bad = clear_non_finite_results(*p);
    EXPECT_TRUE(bad.found);
    EXPECT_EQ(bad.c, 0);
    EXPECT_EQ(p->moment_other, 0.0f);
}

TEST(non_finite_results, finite_results_are_left_alone)
{
    auto p = trough(1);
    p->col_normal(1, 2) = 12.5f;
    p->factor_of_safety = 1.25f;
    const NonFiniteResult bad = clear_non_finite_results(*p);
    EXPECT_FALSE(bad.found);
    EXPECT_EQ(p->col_normal(1, 2), 12.5f);
    EXPECT_EQ(p->factor_of_safety, 1.25f);
}

} // namespace
} // namespace tobel
