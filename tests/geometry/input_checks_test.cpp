// The data check before a solve: four passes, their texts and their order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "geometry/input_checks.h"
#include "project/defaults.h"

using namespace tobel;

// A straight line of two points on section s for surface k.
static void line(Project& p, int s, int k, float y0, float z0, float y1, float z1)
{
    p.sections.n(s, k) = 2;
    p.sections.y(s, 1, k) = y0;
    p.sections.z(s, 1, k) = z0;
    p.sections.y(s, 2, k) = y1;
    p.sections.z(s, 2, k) = z1;
}

// One Coulomb layer whose ground spans the mesh on both sections: a model
// with nothing to report.
static Project sound_model()
{
    Project p;
    set_defaults(p);
    p.mat_unit_weight[1] = 20;
    p.mat_cohesion[1] = 10;
    p.mat_phi[1] = 30;
    p.mat_cohesion_v[1] = 10;
    p.mat_phi_v[1] = 30;
    line(p, 1, 1, 0, 50, 100, 40);
    line(p, 2, 1, 0, 50, 100, 40);
    return p;
}

static void set_counts(Project& p, int layers, int piezos, int discs)
{
    p.num_layers = int16(layers);
    p.num_piezos = int16(piezos);
    p.num_discs = int16(discs);
    derive_counts(p);
}

static std::vector<std::string> findings(const Project& p)
{
    EXPECT_EQ(int(p.check_text.size()), p.check_count + 1);
    return std::vector<std::string>(p.check_text.begin() + 1, p.check_text.end());
}

static const std::string material_1 = "Material # 1: properties incorrect!";

TEST(input_checks, sound_model_gives_no_finding)
{
    Project p = sound_model();
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
    EXPECT_EQ(p.check_fatal, 0);
    EXPECT_TRUE(findings(p).empty());
}

TEST(input_checks, coulomb_without_cohesion_but_friction_30_is_accepted)
{
    Project p = sound_model();
    p.mat_cohesion[1] = 0;
    p.mat_phi[1] = 30;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, coulomb_with_neither_cohesion_nor_friction_is_fatal)
{
    Project p = sound_model();
    p.mat_cohesion[1] = 0;
    p.mat_phi[1] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, coulomb_with_negative_cohesion_gives_one_finding)
{
    Project p = sound_model();
    p.mat_cohesion[1] = -1;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, coulomb_with_negative_friction_gives_one_finding)
{
    Project p = sound_model();
    p.mat_phi[1] = -5;
    check_input(p);
    EXPECT_EQ(p.check_count, 1);
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, layer_material_without_unit_weight_is_fatal)
{
    Project p = sound_model();
    p.mat_unit_weight[1] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
    p.mat_unit_weight[1] = -3;
    check_input(p);
    EXPECT_EQ(p.check_count, 1);
}

TEST(input_checks, one_material_can_give_several_findings)
{
    Project p = sound_model();
    p.mat_unit_weight[1] = 0; // test 1
    p.mat_cohesion[1] = 0;    // with phi 0: test 3
    p.mat_phi[1] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), (std::vector<std::string>{material_1, material_1}));

    p.mat_cohesion[1] = -2; // tests 1 and 2; test 3 needs cohesion 0
    check_input(p);
    EXPECT_EQ(p.check_count, 2);
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, hard_layer_and_water_need_no_unit_weight)
{
    Project p = sound_model();
    set_counts(p, 3, 0, 0);
    for (int k = 2; k <= 3; ++k) {
        line(p, 1, k, 0, 50, 100, 40);
        line(p, 2, k, 0, 50, 100, 40);
    }
    p.mat_type[2] = 4;
    p.mat_phi[2] = 90;
    p.mat_type[3] = 5;
    p.mat_unit_weight[3] = 0;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, discontinuity_entry_needs_no_unit_weight)
{
    Project p = sound_model();
    set_counts(p, 1, 0, 1);
    p.mat_type[2] = 1;
    p.mat_unit_weight[2] = 0;
    p.mat_cohesion[2] = 0;
    p.mat_phi[2] = 20;
    p.num_wedges = 1;
    p.wedge_code[1] = 1;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, discontinuity_entry_without_strength_is_fatal_with_its_entry_number)
{
    Project p = sound_model();
    set_counts(p, 1, 0, 1);
    p.mat_type[2] = 1;
    p.num_wedges = 1;
    p.wedge_code[1] = 1;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{"Material # 2: properties incorrect!"});
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, anisotropic_with_one_cohesion_and_one_friction_angle_is_finding_5)
{
    Project p = sound_model();
    p.mat_type[1] = 2;
    p.mat_cohesion[1] = 10;
    p.mat_cohesion_v[1] = 0;
    p.mat_phi[1] = 30;
    p.mat_phi_v[1] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, anisotropic_with_both_cohesions_or_both_angles_is_accepted)
{
    Project p = sound_model();
    p.mat_type[1] = 2;
    p.mat_cohesion[1] = 10;
    p.mat_cohesion_v[1] = 5;
    p.mat_phi[1] = 0;
    p.mat_phi_v[1] = 0;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);

    p.mat_cohesion[1] = 0;
    p.mat_cohesion_v[1] = 0;
    p.mat_phi[1] = 30;
    p.mat_phi_v[1] = 25;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, anisotropic_negative_value_is_finding_4)
{
    Project p = sound_model();
    p.mat_type[1] = 2;
    p.mat_cohesion[1] = 10;
    p.mat_cohesion_v[1] = 10;
    p.mat_phi[1] = 20;
    p.mat_phi_v[1] = -1;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, anisotropic_negative_and_one_sided_gives_findings_4_and_5)
{
    Project p = sound_model();
    p.mat_type[1] = 2;
    p.mat_cohesion[1] = -10;
    p.mat_cohesion_v[1] = 0;
    p.mat_phi[1] = 30;
    p.mat_phi_v[1] = 0;
    check_input(p);
    EXPECT_EQ(p.check_count, 2);
}

TEST(input_checks, nonlinear_needs_a_positive_uniaxial_strength)
{
    Project p = sound_model();
    p.mat_type[1] = 3;
    p.mat_cohesion[1] = 0;
    p.mat_phi[1] = 0;
    p.mat_uniaxial[1] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{material_1});
    EXPECT_EQ(p.check_fatal, -1);
    p.mat_uniaxial[1] = 50;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, material_number_is_written_with_a_leading_blank)
{
    Project p = sound_model();
    set_counts(p, 3, 0, 0);
    for (int m = 2; m <= 3; ++m) {
        p.mat_type[m] = 1;
        p.mat_unit_weight[m] = 18;
        p.mat_phi[m] = 25;
        line(p, 1, m, 0, 50, 100, 40);
        line(p, 2, m, 0, 50, 100, 40);
    }
    p.mat_phi[3] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{"Material # 3: properties incorrect!"});
}

TEST(input_checks, section_without_points_is_reported_and_its_boundary_tests_skipped)
{
    Project p = sound_model();
    p.sections.n(2, 1) = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{"No points in section  2, layer  1."});
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, line_short_of_either_boundary_is_reported)
{
    Project p = sound_model();
    line(p, 1, 1, 5, 50, 95, 40);
    check_input(p);
    EXPECT_EQ(findings(p),
              (std::vector<std::string>{"Layer  1 in section  1 does not extend to left boundary.",
                                        "Layer  1 in section  1 does not extend to right boundary."}));
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, boundaries_are_measured_from_the_mesh_limits)
{
    Project p = sound_model();
    p.y_min = -10;
    p.y_max = 120;
    check_input(p);
    EXPECT_EQ(p.check_count, 4); // both ends of both sections fall short
}

TEST(input_checks, line_ending_exactly_at_the_mesh_limits_is_accepted)
{
    Project p = sound_model();
    line(p, 1, 1, 0, 50, 100, 40);   // exactly y_min and y_max
    line(p, 2, 1, -20, 50, 130, 40); // beyond both
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, boundaries_use_the_first_and_last_points_of_the_line)
{
    Project p = sound_model();
    // The middle point lies outside but the ends are short: both reported.
    p.sections.n(1, 1) = 3;
    p.sections.y(1, 1, 1) = 1;
    p.sections.y(1, 2, 1) = 150;
    p.sections.y(1, 3, 1) = 99;
    check_input(p);
    EXPECT_EQ(p.check_count, 2);
}

TEST(input_checks, two_dimensional_problem_examines_only_the_first_section)
{
    Project p = sound_model();
    p.num_rows = 1;
    p.sections.n(2, 1) = 0;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);

    p.sections.n(1, 1) = 0;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{"No points in section  1, layer  1."});
}

TEST(input_checks, surfaces_from_grid_files_or_constant_depth_are_not_examined)
{
    Project p = sound_model();
    set_counts(p, 3, 0, 0);
    for (int m = 2; m <= 3; ++m) {
        p.mat_type[m] = 1;
        p.mat_unit_weight[m] = 18;
        p.mat_phi[m] = 25;
    }
    // Surfaces 1 and 2 have no points anywhere; surface 3 (the ground) spans.
    p.sections.n(1, 1) = 0;
    p.sections.n(2, 1) = 0;
    line(p, 1, 3, 0, 50, 100, 40);
    line(p, 2, 3, 0, 50, 100, 40);
    p.surf_method[1] = 2;
    p.surf_method[2] = 1;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);

    p.surf_method[2] = 0;
    check_input(p);
    EXPECT_EQ(findings(p), (std::vector<std::string>{"No points in section  1, layer  2.",
                                                     "No points in section  2, layer  2."}));
}

TEST(input_checks, sections_are_the_outer_loop_and_surfaces_the_inner)
{
    Project p = sound_model();
    set_counts(p, 2, 0, 0);
    p.mat_type[2] = 1;
    p.mat_unit_weight[2] = 18;
    p.mat_phi[2] = 25;
    check_input(p);
    EXPECT_EQ(findings(p), (std::vector<std::string>{"No points in section  1, layer  2.",
                                                     "No points in section  2, layer  2."}));
    p.sections.n(1, 1) = 0;
    check_input(p);
    EXPECT_EQ(findings(p), (std::vector<std::string>{"No points in section  1, layer  1.",
                                                     "No points in section  1, layer  2.",
                                                     "No points in section  2, layer  2."}));
}

TEST(input_checks, sliding_plane_is_not_examined)
{
    Project p = sound_model();
    // sliding_index 2 has no points on any section
    ASSERT_EQ(p.sections.n(1, p.sliding_index), 0);
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, piezometric_line_is_called_layer_with_its_surface_number)
{
    Project p = sound_model();
    set_counts(p, 1, 1, 0);
    p.mat_piezo[1] = -1;
    line(p, 1, 2, 0, 45, 100, 35);
    line(p, 2, 2, 10, 45, 100, 35);
    check_input(p);
    EXPECT_EQ(findings(p),
              std::vector<std::string>{"Layer  2 in section  2 does not extend to left boundary."});
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, piezometric_surface_without_material_is_reported)
{
    Project p = sound_model();
    set_counts(p, 1, 2, 0);
    for (int k = 2; k <= 3; ++k) {
        line(p, 1, k, 0, 45, 100, 35);
        line(p, 2, k, 0, 45, 100, 35);
    }
    p.mat_piezo[1] = -2;
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{
                               "Piezo Surface # 1 is not associated with any material or discontinuity."});
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, pore_pressure_ratio_does_not_associate_a_piezometric_surface)
{
    Project p = sound_model();
    set_counts(p, 1, 1, 0);
    line(p, 1, 2, 0, 45, 100, 35);
    line(p, 2, 2, 0, 45, 100, 35);
    p.mat_piezo[1] = 1; // Ru = 1, not surface 1
    check_input(p);
    EXPECT_EQ(p.check_count, 1);
}

TEST(input_checks, piezometric_surface_used_by_a_discontinuity_is_associated)
{
    Project p = sound_model();
    set_counts(p, 1, 1, 1);
    line(p, 1, 2, 0, 45, 100, 35);
    line(p, 2, 2, 0, 45, 100, 35);
    p.mat_type[2] = 1;
    p.mat_phi[2] = 20;
    p.mat_piezo[2] = -1;
    p.num_wedges = 1;
    p.wedge_code[1] = 1;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, discontinuity_without_wedge_plane_is_reported)
{
    Project p = sound_model();
    set_counts(p, 1, 0, 2);
    for (int m = 2; m <= 3; ++m) {
        p.mat_type[m] = 1;
        p.mat_phi[m] = 20;
    }
    p.num_wedges = 2;
    p.wedge_code[1] = 0;
    p.wedge_code[2] = 2;
    p.wedge_code[3] = 1; // beyond num_wedges: not looked at
    check_input(p);
    EXPECT_EQ(findings(p), std::vector<std::string>{
                               "Discontinuity # 1 is not associated with any part of the sliding surface."});
    EXPECT_EQ(p.check_fatal, 0);
}

TEST(input_checks, discontinuity_of_a_field_is_found_through_wedge_code_1)
{
    Project p = sound_model();
    set_counts(p, 1, 0, 1);
    p.mat_type[2] = 1;
    p.mat_phi[2] = 20;
    p.surface_kind = 4;
    p.num_wedges = 1;
    p.wedge_code[1] = 1;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
}

TEST(input_checks, passes_run_in_order_and_only_materials_are_fatal)
{
    Project p = sound_model();
    set_counts(p, 1, 1, 1);
    p.mat_type[2] = 1;
    p.mat_phi[2] = 20;
    p.sections.n(1, 2) = 0;
    line(p, 2, 2, 0, 45, 100, 35);
    check_input(p);
    const std::vector<std::string> warnings{
        "No points in section  1, layer  2.",
        "Piezo Surface # 1 is not associated with any material or discontinuity.",
        "Discontinuity # 1 is not associated with any part of the sliding surface."};
    EXPECT_EQ(findings(p), warnings);
    EXPECT_EQ(p.check_fatal, 0);

    p.mat_unit_weight[1] = 0;
    check_input(p);
    std::vector<std::string> all{material_1};
    all.insert(all.end(), warnings.begin(), warnings.end());
    EXPECT_EQ(findings(p), all);
    EXPECT_EQ(p.check_fatal, -1);
}

TEST(input_checks, a_new_check_starts_a_new_list)
{
    Project p = sound_model();
    p.mat_phi[1] = 0;
    p.mat_cohesion[1] = 0;
    check_input(p);
    ASSERT_EQ(p.check_count, 1);
    ASSERT_EQ(p.check_fatal, -1);
    p.mat_phi[1] = 30;
    check_input(p);
    EXPECT_EQ(p.check_count, 0);
    EXPECT_EQ(p.check_fatal, 0);
    EXPECT_TRUE(findings(p).empty());
}

TEST(input_checks, list_holds_one_text_per_finding_without_a_fixed_limit)
{
    Project p = sound_model();
    set_counts(p, 40, 0, 0);
    p.num_sections = 25;
    // 40 layers on 25 sections, all empty: 1000 findings beside the materials.
    for (int m = 1; m <= 40; ++m) {
        p.mat_type[m] = 1;
        p.mat_unit_weight[m] = 18;
        p.mat_phi[m] = 25;
    }
    for (int s = 1; s <= 25; ++s)
        for (int k = 1; k <= 40; ++k)
            p.sections.n(s, k) = 0;
    check_input(p);
    EXPECT_EQ(p.check_count, 1000);
    EXPECT_EQ(p.check_text[1000], "No points in section  25, layer  40.");
}
