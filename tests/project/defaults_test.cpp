// Clearing a project and laying down a new one.
#include <gtest/gtest.h>

#include "project/defaults.h"

using namespace tobel;

static Project fresh()
{
    Project p;
    set_defaults(p);
    return p;
}

TEST(defaults, new_project_has_one_layer_and_a_sliding_slot)
{
    Project p = fresh();
    EXPECT_EQ(p.num_layers, 1);
    EXPECT_EQ(p.num_piezos, 0);
    EXPECT_EQ(p.num_discs, 0);
    EXPECT_EQ(p.num_surfaces, 1);
    EXPECT_EQ(p.sliding_index, 2);
    EXPECT_EQ(p.num_mat_entries, 1);
    EXPECT_EQ(p.num_rows, 50);
    EXPECT_EQ(p.num_cols, 50);
    EXPECT_EQ(p.num_sections, 2);
    EXPECT_FLOAT_EQ(p.unit_weight_water, 9.81f);
    EXPECT_EQ(p.x_max, 100.0f);
    EXPECT_EQ(p.y_max, 100.0f);
    EXPECT_EQ(p.x_min, 0.0f);
    EXPECT_EQ(p.sections.x[2], 100.0f);
    EXPECT_EQ(p.sections.x[1], 0.0f);
}

TEST(defaults, default_spacings_are_single_100_over_49)
{
    Project p = fresh();
    const float expected = float(100.0 / 49.0);
    EXPECT_EQ(p.row_spacing, expected);
    EXPECT_EQ(p.col_spacing, expected);
    // A single, not the double quotient.
    EXPECT_NE(double(p.row_spacing), 100.0 / 49.0);
}

TEST(defaults, titles_names_and_constants)
{
    Project p = fresh();
    EXPECT_EQ(p.project_title, "Project Title");
    EXPECT_EQ(p.dataset_title, "Data Set Title");
    EXPECT_EQ(p.input_by, "Name");
    EXPECT_EQ(p.mat_name[1], "Material Name");
    EXPECT_EQ(p.mat_type[1], 1);
    EXPECT_EQ(p.max_sections, 25);
    EXPECT_EQ(p.max_points, 50);
    EXPECT_EQ(p.max_forces, 100);
    EXPECT_EQ(p.max_wedges, 10);
    EXPECT_EQ(p.max_materials, 50);
    EXPECT_EQ(p.interp_method, 1);
    EXPECT_EQ(p.vert_exag, 1.0f);
    EXPECT_EQ(p.iso_angle, 30.0f);
    EXPECT_EQ(p.aspect_in, 1.0f);
    EXPECT_EQ(p.view_row, 1);
}

TEST(defaults, deg_to_rad_is_built_from_3_14)
{
    Project p = fresh();
    EXPECT_EQ(p.deg_to_rad, float(3.14 / 180.0));
    EXPECT_NE(p.deg_to_rad, float(3.14159265358979 / 180.0));
}

TEST(defaults, grids_are_sized_from_counts)
{
    Project p = fresh();
    EXPECT_EQ(p.zgrid.rows, 50);
    EXPECT_EQ(p.zgrid.cols, 50);
    EXPECT_EQ(p.zgrid.planes, 3); // sliding_index + 1 holds the interslice function
    EXPECT_EQ(p.col_fos.rows, 50);
    EXPECT_EQ(p.disc_code.cols, 50);
    EXPECT_EQ(p.row_coef.size(), 51u);
}

TEST(defaults, set_defaults_keeps_counts_when_water_is_set)
{
    Project p = fresh();
    p.num_layers = 3;
    p.num_piezos = 1;
    p.unit_weight_water = 62.4f;
    set_defaults(p);
    EXPECT_EQ(p.num_layers, 3);
    EXPECT_EQ(p.num_piezos, 1);
    EXPECT_EQ(p.sliding_index, 5);
    EXPECT_EQ(p.unit_weight_water, 62.4f);
}

TEST(defaults, reset_names_old_entries_zero_and_entry_one_material_name)
{
    Project p = fresh();
    p.num_layers = 5;
    derive_counts(p);
    for (int m = 1; m <= 5; ++m)
        p.mat_name[m] = "Clay " + std::to_string(m);
    reset_project(p);
    EXPECT_EQ(p.mat_name[1], "Material Name");
    for (int m = 2; m <= 5; ++m)
        EXPECT_EQ(p.mat_name[m], "0") << m;
    // Raising the layers again keeps the "0" names; a brand-new entry is empty
    // and so left to the material dialog to name.
    p.num_layers = 6;
    derive_counts(p);
    EXPECT_EQ(p.mat_name[5], "0");
    EXPECT_TRUE(p.mat_name[6].empty());
}

TEST(defaults, reset_keeps_solution_method_and_surface_kind)
{
    Project p = fresh();
    p.solution_method = 3;
    p.surface_kind = 4;
    p.surface_defined = -1;
    reset_project(p);
    EXPECT_EQ(p.solution_method, 3);
    EXPECT_EQ(p.surface_kind, 4);
    EXPECT_EQ(p.surface_defined, 0);
}

TEST(defaults, reset_keeps_hard_layer_values)
{
    Project p = fresh();
    p.num_layers = 2;
    derive_counts(p);
    p.mat_type[2] = 4;
    p.mat_phi[2] = 90;
    p.mat_type[1] = 1;
    p.mat_phi[1] = 30;
    p.mat_cohesion[1] = 5;
    reset_project(p);
    EXPECT_EQ(p.mat_type[2], 1);
    EXPECT_EQ(p.mat_phi[2], 90.0f);
    EXPECT_EQ(p.mat_phi[1], 0.0f);
    EXPECT_EQ(p.mat_cohesion[1], 0.0f);
}

TEST(defaults, reset_clears_non_linear_values_and_keeps_water_values)
{
    Project p = fresh();
    p.num_layers = 2;
    derive_counts(p);
    p.mat_type[1] = 3;
    p.mat_coef_a[1] = 2;
    p.mat_uniaxial[1] = 100;
    p.mat_cohesion[1] = 7; // not a non-linear field: stays
    p.mat_type[2] = 5;
    p.mat_unit_weight[2] = 9.81f;
    p.mat_bbar[2] = 0.5f;
    reset_project(p);
    EXPECT_EQ(p.mat_coef_a[1], 0.0f);
    EXPECT_EQ(p.mat_uniaxial[1], 0.0f);
    EXPECT_EQ(p.mat_cohesion[1], 7.0f);
    EXPECT_EQ(p.mat_unit_weight[2], 0.0f); // cleared for every entry
    EXPECT_EQ(p.mat_bbar[2], 0.5f);
    EXPECT_EQ(p.mat_type[2], 1);
}

TEST(defaults, reset_gives_a_default_project)
{
    Project p = fresh();
    p.num_layers = 4;
    p.num_piezos = 2;
    p.num_discs = 1;
    derive_counts(p);
    p.num_rows = 10;
    p.num_cols = 20;
    p.x_min = -5;
    p.y_min = 3;
    p.x_max = 7;
    p.unit_weight_water = 62.4f;
    p.eq_coef = 0.2f;
    p.crack_mode = 2;
    p.num_forces = 3;
    p.force_h[2] = 10;
    p.num_wedges = 2;
    p.wedge_dip[1] = 45;
    p.surf_method[3] = 1;
    p.surf_grd_file[3] = "a.GRD";
    p.iso_angle = 45;
    p.vert_exag = 3;
    reset_project(p);
    EXPECT_EQ(p.num_layers, 1);
    EXPECT_EQ(p.num_piezos, 0);
    EXPECT_EQ(p.num_discs, 0);
    EXPECT_EQ(p.sliding_index, 2);
    EXPECT_EQ(p.num_rows, 50);
    EXPECT_EQ(p.x_min, 0.0f);
    EXPECT_EQ(p.y_min, 0.0f);
    EXPECT_EQ(p.x_max, 100.0f);
    EXPECT_EQ(p.unit_weight_water, 9.81f);
    EXPECT_EQ(p.eq_coef, 0.0f);
    EXPECT_EQ(p.crack_mode, 0);
    EXPECT_EQ(p.num_forces, 0);
    EXPECT_EQ(p.force_h[2], 0.0f);
    EXPECT_EQ(p.num_wedges, 0);
    EXPECT_EQ(p.wedge_dip[1], 0.0f);
    EXPECT_EQ(p.surf_method[3], 0);
    EXPECT_TRUE(p.surf_grd_file[3].empty());
    EXPECT_EQ(p.iso_angle, 30.0f);
    EXPECT_EQ(p.vert_exag, 1.0f);
    EXPECT_EQ(p.row_spacing, float(100.0 / 49.0));
}

TEST(defaults, reset_leaves_file_identity_alone)
{
    Project p = fresh();
    p.data_file_path = "C:\\A.TOB";
    p.work_drive = "D:";
    p.dirty_flag = -1;
    p.view_col = 7;
    reset_project(p);
    EXPECT_EQ(p.data_file_path, "C:\\A.TOB");
    EXPECT_EQ(p.work_drive, "D:");
    EXPECT_EQ(p.dirty_flag, -1);
    EXPECT_EQ(p.view_col, 7);
}

TEST(defaults, reset_clears_sections_over_old_counts)
{
    Project p = fresh();
    p.sections.n(1, 1) = 2;
    p.sections.y(1, 2, 1) = 40;
    p.sections.z(1, 2, 1) = 12;
    p.sections.x[2] = 50;
    reset_project(p);
    EXPECT_EQ(p.sections.n(1, 1), 0);
    EXPECT_EQ(p.sections.y(1, 2, 1), 0.0f);
    EXPECT_EQ(p.sections.z(1, 2, 1), 0.0f);
    EXPECT_EQ(p.sections.x[2], 100.0f); // set_defaults puts the last section at x_max
}

TEST(defaults, redim_zeroes_zgrid_including_grid_file_planes)
{
    Project p = fresh();
    p.surf_method[1] = 1;
    p.zgrid(3, 4, 1) = 12.5f;
    p.col_fos(2, 2) = 1.3f;
    p.disc_code(1, 1) = 2;
    redim_grids(p);
    EXPECT_EQ(p.zgrid(3, 4, 1), 0.0f);
    EXPECT_EQ(p.col_fos(2, 2), 0.0f);
    EXPECT_EQ(p.disc_code(1, 1), 0);
}

TEST(defaults, redim_follows_changed_counts)
{
    Project p = fresh();
    p.num_rows = 1;
    p.num_cols = 7;
    p.num_layers = 3;
    derive_counts(p);
    redim_grids(p);
    EXPECT_EQ(p.zgrid.rows, 1);
    EXPECT_EQ(p.zgrid.cols, 7);
    EXPECT_EQ(p.zgrid.planes, 5);
    EXPECT_EQ(p.head_water_force.size(), 2u);
    p.zgrid(1, 7, 5) = 1; // last node of the interslice slice is addressable
    EXPECT_EQ(p.zgrid(1, 7, 5), 1.0f);
}

TEST(defaults, derived_counts)
{
    Project p;
    p.num_layers = 3;
    p.num_piezos = 2;
    p.num_discs = 4;
    derive_counts(p);
    EXPECT_EQ(p.num_surfaces, 5);
    EXPECT_EQ(p.sliding_index, 6);
    EXPECT_EQ(p.num_mat_entries, 7);
}

TEST(defaults, negated_piezo_number_indexes_the_stack)
{
    Project p = fresh();
    p.num_layers = 3;
    p.num_piezos = 2;
    derive_counts(p);
    p.mat_piezo[1] = -2.0f; // piezometric surface 2
    const int k = p.num_layers - int(p.mat_piezo[1]);
    EXPECT_EQ(k, 5);
    EXPECT_LE(k, p.num_surfaces);
}
