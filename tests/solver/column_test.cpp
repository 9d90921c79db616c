// The evaluation of one column: active test, weight, material, pore pressure,
// strength models and the submerged head.
#include <gtest/gtest.h>

#include <cmath>

#include "solver/column.h"
#include "solver_fixture.h"

namespace tobel::test {
namespace {

// 3 rows by 5 columns over 0..2 by 0..4: plan area 1 per column.
static std::unique_ptr<Project> small(int layers = 1, int piezos = 0, int discs = 0)
{
    SolverMesh m;
    m.layers = layers;
    m.piezos = piezos;
    m.discs = discs;
    auto p = make_solver_project(m);
    return p;
}

static ColumnOutcome eval(Project& p, int r, int c, ColumnScratch& s, ColumnRow& row, bool bishop = true,
                          double factor = 1)
{
    ColumnSwitches sw;
    sw.setup = true;
    sw.head_test = true;
    sw.bishop_janbu = bishop;
    sw.sigma_factor = factor;
    return evaluate_column(p, r, c, sw, row, s);
}

static ColumnOutcome eval(Project& p, int r, int c)
{
    ColumnScratch s;
    ColumnRow row;
    return eval(p, r, c, s, row);
}

static float d2r()
{
    return float(3.14 / 180);
}

TEST(column, node_within_a_millimetre_of_the_ground_is_inactive_with_zero_results)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    p->zgrid(2, 3, p->sliding_index) = 9.9991f; // 0.0009 under the ground
    for (auto* g : {&p->col_weight, &p->col_area, &p->col_pore, &p->col_phi, &p->col_cohesion,
                    &p->col_cos_gamma, &p->col_normal, &p->col_fos})
        (*g)(2, 3) = 7;
    EXPECT_EQ(eval(*p, 2, 3), ColumnOutcome::inactive);
    EXPECT_EQ(p->active_columns, 0);
    for (auto* g : {&p->col_weight, &p->col_area, &p->col_pore, &p->col_phi, &p->col_cohesion,
                    &p->col_cos_gamma, &p->col_normal, &p->col_fos})
        EXPECT_EQ((*g)(2, 3), 0.0f);
    p->zgrid(2, 4, p->sliding_index) = 9.9988f; // 0.0012 under: active
    EXPECT_EQ(eval(*p, 2, 4), ColumnOutcome::active);
    EXPECT_EQ(p->active_columns, 1);
}

TEST(column, single_block_weight_area_and_coulomb_strength_by_hand)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    p->mat_phi[1] = 30;
    p->zgrid(2, 3, p->sliding_index) = 6;
    p->surf_dip_y(2, 3) = 0.2f;
    p->surf_dip_x(2, 3) = 0.1f;
    ColumnScratch s;
    ColumnRow row;
    ASSERT_EQ(eval(*p, 2, 3, s, row), ColumnOutcome::active);
    const double ay = double(0.2f), ax = double(0.1f);
    // Tangent plane area over a unit plan square: sqrt(1 + tan^2 a + tan^2 b).
    const double area = std::sqrt(1 + std::tan(ay) * std::tan(ay) + std::tan(ax) * std::tan(ax));
    EXPECT_NEAR(p->col_area(2, 3), area, 1e-6);
    EXPECT_NEAR(p->col_cos_gamma(2, 3), 1 / area, 1e-7);
    EXPECT_NEAR(p->col_lat_slope(2, 3), std::tan(ax) / area, 1e-7);
    EXPECT_EQ(p->col_weight(2, 3), 80.0f); // 20 * 4 * 1
    EXPECT_EQ(p->col_material(2, 3), 1);
    EXPECT_EQ(p->col_cohesion(2, 3), 5.0f);
    EXPECT_EQ(p->col_phi(2, 3), float(double(d2r()) * 30));
    EXPECT_FLOAT_EQ(p->slide_weight, 80);
    EXPECT_NEAR(p->slide_area, area, 1e-6);
    EXPECT_FLOAT_EQ(p->slide_volume, 4);
}

TEST(column, base_exactly_on_a_layer_top_belongs_to_that_layer)
{
    auto p = small(2);
    fill_plane(*p, 1, 5);
    fill_plane(*p, 2, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 22;
    p->mat_unit_weight[2] = 18;
    p->mat_cohesion[1] = 40;
    p->mat_cohesion[2] = 3;
    p->zgrid(2, 3, p->sliding_index) = 5;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_material(2, 3), 1);
    EXPECT_EQ(p->col_cohesion(2, 3), 40.0f);
    EXPECT_EQ(p->col_weight(2, 3), 90.0f); // 18 * 5, nothing of layer 1
}

TEST(column, surface_below_the_model_floor_takes_the_whole_stack_and_the_step_again)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 1;
    p->mat_cohesion[1] = 1;
    p->zgrid(2, 3, p->sliding_index) = -10005;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    // The loop runs out: 10 - (-10000) for the layer, then the final term
    // with the layer's top left over: 10 - (-10005).
    EXPECT_EQ(p->col_material(2, 3), 1);
    EXPECT_EQ(p->col_weight(2, 3), 10010.0f + 10015.0f);
}

TEST(column, discontinuity_in_a_layer_without_strength_has_no_effect)
{
    auto p = small(1, 0, 1);
    fill_plane(*p, 1, 10);
    p->mat_cohesion[2] = 50; // the discontinuity's material
    p->disc_code(2, 3) = 1;
    EXPECT_EQ(working_material(*p, 1, 2, 3), 1);
    p->mat_phi[1] = 25;
    EXPECT_EQ(working_material(*p, 1, 2, 3), 2);
    p->disc_code(2, 3) = 0;
    EXPECT_EQ(working_material(*p, 1, 2, 3), 1);
}

TEST(column, discontinuity_material_gives_strength_but_not_unit_weight)
{
    auto p = small(1, 0, 1);
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    p->mat_unit_weight[2] = 0;
    p->mat_cohesion[2] = 50;
    p->disc_code(2, 3) = 1;
    p->zgrid(2, 3, p->sliding_index) = 8;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_cohesion(2, 3), 50.0f);
    EXPECT_EQ(p->col_weight(2, 3), 40.0f);
    EXPECT_EQ(p->col_material(2, 3), 1); // the layer, not the substitution
}

// Layer 1 (strong) up to 5, layer 2 water up to the ground at 10.
static std::unique_ptr<Project> water_over_rock()
{
    auto p = small(2);
    fill_plane(*p, 1, 5);
    fill_plane(*p, 2, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 10;
    p->mat_unit_weight[2] = 9.81f;
    p->mat_type[2] = 5;
    return p;
}

TEST(column, zero_strength_head_after_active_columns_warns_and_leaves_the_mass)
{
    auto p = water_over_rock();
    p->zgrid(2, 2, p->sliding_index) = 4; // in the rock
    p->zgrid(2, 3, p->sliding_index) = 7; // in the water
    ColumnScratch s;
    ColumnRow row;
    EXPECT_EQ(eval(*p, 2, 1, s, row), ColumnOutcome::inactive);
    EXPECT_EQ(eval(*p, 2, 2, s, row), ColumnOutcome::active);
    EXPECT_EQ(eval(*p, 2, 3, s, row), ColumnOutcome::head_removed);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "HEAD OF SLIDE SUBMERGED.  USE SUBMERGED WEIGHTS.");
    EXPECT_EQ(p->zgrid(2, 3, p->sliding_index), 10.0f);
    EXPECT_EQ(p->col_weight(2, 3), 0.0f);
    EXPECT_EQ(row.active, 1);
    // h = 3: -h^2 * 9.81 * 1 / 2, acting h / 3 over the base.
    EXPECT_FLOAT_EQ(p->head_water_force[2], float(-9 * double(9.81f) / 2));
    EXPECT_FLOAT_EQ(p->head_water_z[2], 8);
    EXPECT_FLOAT_EQ(p->head_water_x[2], 2); // r times the row spacing
    EXPECT_FLOAT_EQ(p->head_water_y[2], 2);
    // The head counted as active before it left.
    EXPECT_EQ(p->active_columns, 2);
}

TEST(column, zero_strength_first_node_of_a_row_leaves_without_warning)
{
    auto p = water_over_rock();
    p->zgrid(2, 2, p->sliding_index) = 7;
    ColumnScratch s;
    ColumnRow row;
    EXPECT_EQ(eval(*p, 2, 2, s, row), ColumnOutcome::head_removed);
    EXPECT_EQ(p->message_count, 0);
    EXPECT_EQ(row.active, 0);
}

TEST(column, spencer_side_never_warns_of_a_submerged_head)
{
    auto p = water_over_rock();
    p->zgrid(2, 2, p->sliding_index) = 4;
    p->zgrid(2, 3, p->sliding_index) = 7;
    ColumnScratch s;
    ColumnRow row;
    eval(*p, 2, 2, s, row, false);
    EXPECT_EQ(eval(*p, 2, 3, s, row, false), ColumnOutcome::head_removed);
    EXPECT_EQ(p->message_count, 0);
}

TEST(column, pressure_ratio_zero_and_no_bbar_give_no_pore_pressure)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    p->zgrid(2, 3, p->sliding_index) = 6;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_pore(2, 3), 0.0f);
    p->mat_piezo[1] = 0.25f; // Ru: a quarter of the vertical stress 80
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_FLOAT_EQ(p->col_pore(2, 3), 20);
}

TEST(column, piezometric_surface_below_the_base_gives_zero_yet_bbar_still_adds)
{
    auto p = small(2, 1);
    fill_plane(*p, 1, 6);
    fill_plane(*p, 2, 10);
    fill_plane(*p, 3, 2); // piezometric surface 1
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 22;
    p->mat_unit_weight[2] = 20;
    p->mat_cohesion[1] = 5;
    p->mat_piezo[1] = -1;
    p->mat_bbar[1] = 0.5f;
    p->zgrid(2, 3, p->sliding_index) = 4;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    // (2 - 4) * 9.81 clipped to 0, then (10 - 6) * 20 * 0.5.
    EXPECT_FLOAT_EQ(p->col_pore(2, 3), 40);
    p->zgrid(2, 3, 3) = 9; // above the base: (9 - 4) * 9.81 + 40
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_FLOAT_EQ(p->col_pore(2, 3), float(5 * double(9.81f) + 40));
}

TEST(column, bbar_with_the_base_in_the_top_layer_adds_nothing)
{
    auto p = small(2);
    fill_plane(*p, 1, 6);
    fill_plane(*p, 2, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[2] = 20;
    p->mat_cohesion[2] = 5;
    p->mat_bbar[2] = 0.5f;
    p->zgrid(2, 3, p->sliding_index) = 8;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_material(2, 3), 2);
    EXPECT_EQ(p->col_pore(2, 3), 0.0f);
}

TEST(column, hard_layer_base_keeps_the_strength_left_at_the_node)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_type[1] = 4;
    p->mat_phi[1] = 90;
    p->mat_unit_weight[1] = 20;
    p->zgrid(2, 3, p->sliding_index) = 6;
    p->col_phi(2, 3) = 0.3f;
    p->col_cohesion(2, 3) = 7;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_phi(2, 3), 0.3f);
    EXPECT_EQ(p->col_cohesion(2, 3), 7.0f);
}

// Non-linear base under 4 of soil of 20: W = 80 on a level unit base.
static std::unique_ptr<Project> nonlinear(float a, float b, float sc, float d)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_type[1] = 3;
    p->mat_unit_weight[1] = 20;
    p->mat_coef_a[1] = a;
    p->mat_coef_b[1] = b;
    p->mat_uniaxial[1] = sc;
    p->mat_coef_d[1] = d;
    p->zgrid(2, 3, p->sliding_index) = 6;
    return p;
}

TEST(column, nonlinear_base_is_linearised_at_the_first_stress_estimate)
{
    auto p = nonlinear(0.5f, 0.7f, 100, 0.1f);
    ColumnScratch s;
    ColumnRow row;
    ASSERT_EQ(eval(*p, 2, 3, s, row, true, 1), ColumnOutcome::active);
    const double y = 0.8 + double(0.1f), a = double(0.5f), b = double(0.7f);
    const double tau = a * 100 * std::pow(y, b);
    const double tp = b * a * std::pow(y, b - 1);
    EXPECT_FLOAT_EQ(p->col_phi(2, 3), float(std::atan(tp)));
    EXPECT_FLOAT_EQ(p->col_cohesion(2, 3), float(tau - 80 * tp));
}

TEST(column, nonlinear_first_column_of_bishop_starts_from_zero_stress)
{
    auto p = nonlinear(0.5f, 0.7f, 100, 0.1f);
    ColumnScratch s;
    ColumnRow row;
    ASSERT_EQ(eval(*p, 2, 3, s, row, true, 0), ColumnOutcome::active);
    const double y = double(0.1f), a = double(0.5f), b = double(0.7f);
    EXPECT_FLOAT_EQ(p->col_phi(2, 3), float(std::atan(b * a * std::pow(y, b - 1))));
    EXPECT_FLOAT_EQ(p->col_cohesion(2, 3), float(a * 100 * std::pow(y, b)));
}

TEST(column, nonpositive_power_base_gives_zero_friction_in_bishop_only)
{
    // B = 1, D = -0.5, stress 0: y = -0.5.
    auto p = nonlinear(0.5f, 1, 100, -0.5f);
    ColumnScratch s;
    ColumnRow row;
    ASSERT_EQ(eval(*p, 2, 3, s, row, true, 0), ColumnOutcome::active);
    EXPECT_EQ(p->col_phi(2, 3), 0.0f);
    EXPECT_FLOAT_EQ(p->col_cohesion(2, 3), -25);
    ColumnRow row2;
    ASSERT_EQ(eval(*p, 2, 3, s, row2, false, 0), ColumnOutcome::active);
    EXPECT_FLOAT_EQ(p->col_phi(2, 3), float(std::atan(0.5)));
}

TEST(column, arithmetic_failures_of_a_nonlinear_base_are_reported_as_failed)
{
    auto p = nonlinear(0.5f, 0.7f, 0, 0.1f); // uniaxial strength 0
    ColumnScratch s;
    ColumnRow row;
    EXPECT_EQ(eval(*p, 2, 3, s, row), ColumnOutcome::failed);
    EXPECT_EQ(s.material, 1);
    auto q = nonlinear(0.5f, 0.7f, 100, 0); // y = 0 with B < 1, no guard
    ColumnRow row2;
    EXPECT_EQ(eval(*q, 2, 3, s, row2, false, 0), ColumnOutcome::failed);
    EXPECT_EQ(arithmetic_failure_text(3, 2, 1), "ARITHMETIC FAILURE IN COLUMN  3 ROW  2 MAT'L  1");
}

TEST(column, anisotropic_strength_follows_the_polar_ellipse)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_type[1] = 2;
    p->mat_unit_weight[1] = 20;
    p->mat_phi[1] = 30;
    p->mat_phi_v[1] = 20;
    p->mat_cohesion[1] = 10;
    p->mat_cohesion_v[1] = 5;
    p->zgrid(2, 3, p->sliding_index) = 6;
    p->surf_dip_y(2, 3) = 0.5f;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    const double cg = p->col_cos_gamma(2, 3);
    // 1 / x^2 = cos^2 g / x_h^2 + sin^2 g / x_v^2
    const double phi_h = double(d2r()) * 30, phi_v = double(d2r()) * 20;
    const double phi = 1 / std::sqrt(cg * cg / (phi_h * phi_h) + (1 - cg * cg) / (phi_v * phi_v));
    const double coh = 1 / std::sqrt(cg * cg / 100 + (1 - cg * cg) / 25);
    EXPECT_NEAR(p->col_phi(2, 3), phi, 1e-6);
    EXPECT_NEAR(p->col_cohesion(2, 3), coh, 1e-5);
    p->mat_phi_v[1] = 0;
    ASSERT_EQ(eval(*p, 2, 3), ColumnOutcome::active);
    EXPECT_EQ(p->col_phi(2, 3), 0.0f);
}

TEST(column, gap_in_a_row_gives_the_discontinuity_message)
{
    auto p = small();
    fill_plane(*p, 1, 10);
    fill_plane(*p, p->sliding_index, 10);
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = 5;
    p->zgrid(2, 2, p->sliding_index) = 8;
    p->zgrid(2, 4, p->sliding_index) = 8;
    ColumnScratch s;
    ColumnRow row;
    for (int c = 1; c <= 5; ++c)
        eval(*p, 2, c, s, row);
    ASSERT_EQ(p->message_count, 1);
    EXPECT_EQ(p->message_text[1], "SLIDING MASS IS DISCONTINUOUS IN ROW  2");
    EXPECT_EQ(row.passages, 2);
}

} // namespace
} // namespace tobel::test
