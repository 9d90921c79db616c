// The single column output of a click on the plan of active columns.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "solver/single_column.h"
#include "solver_fixture.h"

namespace tobel::test {
namespace {

// A 3 by 5 mesh at unit spacings with the results of one column (2, 3) set
// by hand.
static std::unique_ptr<Project> solved(int method)
{
    SolverMesh m;
    m.discs = 2;
    auto p = make_solver_project(m);
    p->solution_method = int16(method);
    p->mat_name[1] = "Clay";
    p->mat_name[2] = "Joint A";
    p->mat_name[3] = "Joint B";
    p->surf_dip_y(2, 3) = 0.5f;
    p->surf_dip_x(2, 3) = -0.25f;
    p->col_weight(2, 3) = 100;
    p->col_area(2, 3) = 8;
    p->col_normal(2, 3) = 11.26f;
    p->col_pore(2, 3) = 2.24f;
    p->col_material(2, 3) = 1;
    p->col_phi(2, 3) = 0.3f;
    p->col_cohesion(2, 3) = 15;
    p->col_fos(2, 3) = 1.234f;
    p->zgrid(2, 3, p->sliding_index + 1) = 0.75f;
    return p;
}

static const std::vector<std::string> heading = {"", "   SINGLE COLUMN OUTPUT", "   AT X = 0.9  Y = 2.2", ""};

TEST(single_column, spencer_column_in_full_with_angles_through_3_14)
{
    auto p = solved(3);
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    // 0.5 * 180 / 3.14 = 28.662, -0.25 * 180 / 3.14 = -14.331 (28.65 and
    // -14.32 with pi); 100 / 8 = 12.5; 0.3 * 180 / 3.14 = 17.197.
    const std::vector<std::string> expected = {
        "",
        "   SINGLE COLUMN OUTPUT",
        "   AT X = 0.9  Y = 2.2",
        "",
        "   Angle of Sliding Surface (degrees):",
        "      Longitudinal:  28.66",
        "      Transverse:    -14.33",
        "",
        "   Total Vertical Stress:  12.5",
        "   Normal Stress:           11.3",
        "   Pore Pressure:           2.2",
        "",
        "   Material:         Clay",
        "   Friction Angle:  17.2",
        "   Cohesion:        15.0",
        "",
        "   Local F. of S.:   1.23",
        "   f function:   0.75",
    };
    EXPECT_EQ(out, expected);
}

TEST(single_column, morgenstern_price_shows_the_f_line_too)
{
    auto p = solved(4);
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    EXPECT_EQ(out.back(), "   f function:   0.75");
}

TEST(single_column, after_a_bishop_solution_no_f_line_appears)
{
    for (int method : {1, 2}) {
        auto p = solved(method);
        std::vector<std::string> out;
        show_single_column(*p, 2.2f, 0.9f, out);
        ASSERT_EQ(out.size(), 17u);
        EXPECT_EQ(out.back(), "   Local F. of S.:   1.23");
    }
}

TEST(single_column, a_point_off_the_mesh_gives_the_heading_alone)
{
    auto p = solved(3);
    std::vector<std::string> out;
    show_single_column(*p, 9.0f, 0.9f, out);
    ASSERT_EQ(out.size(), 4u);
    EXPECT_EQ(out[2], "   AT X = 0.9  Y = 9.0");
    show_single_column(*p, 2.2f, -1.0f, out);
    EXPECT_EQ(out.size(), 4u) << "r = CInt(-1) + 1 = 0 lies off the mesh";
}

TEST(single_column, no_vertical_stress_line_without_a_base_area)
{
    auto p = solved(3);
    p->col_area(2, 3) = 0;
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    ASSERT_EQ(out.size(), 17u);
    EXPECT_EQ(out[8], "   Normal Stress:           11.3");
}

TEST(single_column, no_material_and_no_discontinuity_end_after_the_pore_pressure)
{
    auto p = solved(3);
    p->col_material(2, 3) = 0;
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    ASSERT_EQ(out.size(), 12u);
    EXPECT_EQ(out[10], "   Pore Pressure:           2.2");
    EXPECT_EQ(out[11], "");
}

TEST(single_column, a_discontinuity_is_named_instead_of_the_layer)
{
    auto p = solved(3);
    p->disc_code(2, 3) = 2;
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    EXPECT_EQ(out[12], "   Discontinuity: Joint B");
    p->col_material(2, 3) = 0;
    show_single_column(*p, 2.2f, 0.9f, out);
    EXPECT_EQ(out.size(), 18u) << "a discontinuity alone keeps the lower part";
}

TEST(single_column, dragging_prints_each_column_crossed_afresh)
{
    auto p = solved(3);
    p->col_normal(2, 4) = 7;
    p->col_material(2, 4) = 1;
    std::vector<std::string> out;
    show_single_column(*p, 2.2f, 0.9f, out);
    const auto first = out;
    show_single_column(*p, 3.1f, 0.9f, out);
    EXPECT_EQ(out[2], "   AT X = 0.9  Y = 3.1");
    EXPECT_EQ(out[8], "   Normal Stress:           7.0") << "no area, no vertical stress line";
    EXPECT_EQ(std::count(out.begin(), out.end(), "   SINGLE COLUMN OUTPUT"), 1)
        << "the area is cleared first";
    show_single_column(*p, 2.2f, 0.9f, out);
    EXPECT_EQ(out, first);
}

TEST(single_column, node_is_found_by_rounding_half_to_even)
{
    auto p = solved(3);
    std::vector<std::string> out;
    // (2.5 - 0) / 1 rounds to 2: column 3. (1.5 - 0) / 1 rounds to 2: row 3.
    show_single_column(*p, 2.5f, 0.9f, out);
    EXPECT_EQ(out[5], "      Longitudinal:  28.66");
    show_single_column(*p, 2.2f, 1.5f, out);
    EXPECT_EQ(out[5], "      Longitudinal:  0.00") << "row 3 holds nothing";
}

TEST(single_column, two_dimensional_mesh_always_uses_row_one)
{
    SolverMesh m;
    m.rows = 1;
    m.x_max = 1;
    auto p = make_solver_project(m);
    p->solution_method = 3;
    p->surf_dip_y(1, 2) = 0.25f;
    std::vector<std::string> out;
    show_single_column(*p, 1.0f, 57.0f, out);
    ASSERT_GT(out.size(), 5u);
    EXPECT_EQ(out[5], "      Longitudinal:  14.33");
}

} // namespace
} // namespace tobel::test
