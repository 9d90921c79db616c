#include "project/defaults.h"

#include <algorithm>

namespace tobel {

void derive_counts(Project& p)
{
    p.num_surfaces = int16(p.num_layers + p.num_piezos);
    p.sliding_index = int16(p.num_layers + p.num_piezos + 1);
    p.num_mat_entries = int16(p.num_layers + p.num_discs);
}

void redim_grids(Project& p)
{
    const int r = p.num_rows, c = p.num_cols;
    p.zgrid.redim(r, c, p.sliding_index + 1);
    for (auto* g :
         {&p.col_weight, &p.col_area, &p.col_pore, &p.col_phi, &p.col_cohesion, &p.col_cos_gamma,
          &p.col_normal, &p.col_fos, &p.surf_dip_x, &p.surf_dip_y, &p.col_lat_slope, &p.col_arm,
          &p.col_lateral_load, &p.col_eff_thrust, &p.col_thrust_height, &p.col_shear_ratio, &p.col_general})
        g->redim(r, c);
    p.col_material.redim(r, c);
    p.disc_code.redim(r, c);
    const std::size_t n = std::size_t(std::max(r, 0) + 1);
    for (auto* v : {&p.head_water_force, &p.head_water_z, &p.head_water_x, &p.head_water_y,
                    &p.crack_water_force, &p.crack_water_z, &p.row_coef, &p.row_thrust_arm})
        v->assign(n, 0.0f);
}

void set_defaults(Project& p)
{
    // 1. Capacities.
    p.max_sections = 25;
    p.max_points = 50;
    p.max_forces = 100;
    p.max_wedges = 10;
    // 2. Interpolation.
    p.interp_method = 1;
    p.axis_y = 0;
    p.axis_z = 0;
    // 3. First-time branch: a cleared project has no unit weight of water yet.
    if (p.unit_weight_water == 0) {
        p.unit_weight_water = 9.81f;
        p.num_layers = 1;
        p.num_piezos = 0;
        p.num_discs = 0;
    }
    // 4. Mesh.
    p.num_rows = 50;
    p.num_cols = 50;
    derive_counts(p);
    p.x_max = 100;
    p.y_max = 100;
    p.num_sections = 2;
    p.base_z = 0;
    // 5.
    redim_grids(p);
    // 6. Spacings, computed in floating point and stored as single.
    p.view_row = 1;
    p.row_spacing = float((double(p.x_max) - double(p.x_min)) / double(p.num_rows - 1));
    p.col_spacing = float((double(p.y_max) - double(p.y_min)) / double(p.num_cols - 1));
    // 7.
    p.sections.x[1] = 0;
    p.sections.x[std::size_t(p.num_sections)] = p.x_max;
    // 8.
    p.vert_exag = 1;
    p.iso_angle = 30;
    p.mat_type[1] = 1;
    p.surf_method[1] = 0;
    p.mat_name[1] = "Material Name";
    p.project_title = "Project Title";
    p.dataset_title = "Data Set Title";
    p.input_by = "Name";
    // 9. 3.14 and not pi, on purpose: every angle passes through this factor.
    p.max_materials = 50;
    p.rotation_angle = 0;
    p.aspect_in = 1;
    p.deg_to_rad = float(3.14 / 180.0);
}

void reset_project(Project& p)
{
    // 1. Overwritten by set_defaults at the end.
    p.project_title = p.dataset_title = p.input_by = "0";
    // 2.
    p.interp_method = 0;
    p.axis_y = p.axis_z = 0;
    p.iso_angle = 30;
    p.unit_weight_water = 0;
    p.y_min = p.col_spacing = p.row_spacing = 0;
    // 3. Materials over the old count; hard layer and water values stay.
    for (int m = 1; m <= std::min<int>(p.num_mat_entries, material_capacity); ++m) {
        p.mat_name[m] = "0";
        p.mat_unit_weight[m] = 0;
        if (p.mat_type[m] == 1 || p.mat_type[m] == 2) {
            p.mat_cohesion[m] = p.mat_cohesion_v[m] = p.mat_phi[m] = p.mat_phi_v[m] = 0;
            p.mat_piezo[m] = p.mat_bbar[m] = 0;
        }
        if (p.mat_type[m] == 3) {
            p.mat_coef_a[m] = p.mat_coef_b[m] = p.mat_uniaxial[m] = p.mat_coef_d[m] = 0;
            p.mat_piezo[m] = p.mat_bbar[m] = 0;
        }
        p.mat_type[m] = 1;
    }
    // 4. Sections over the old counts.
    const int top = std::min<int>(p.sliding_index, section_surface_capacity);
    for (int s = 1; s <= std::min<int>(p.num_sections, section_capacity); ++s) {
        p.sections.x[std::size_t(s)] = 0;
        for (int k = 1; k <= top; ++k) {
            for (int n = 1; n <= std::min<int>(p.sections.n(s, k), section_point_capacity); ++n)
                p.sections.y(s, n, k) = p.sections.z(s, n, k) = 0;
            p.sections.n(s, k) = 0;
        }
    }
    // 5.
    p.crack_mode = 0;
    p.crack_y = p.crack_depth = p.crack_water_pct = 0;
    p.aspect_in = p.search_x = p.single_y = p.single_z = p.tangent_z = p.radius_in = p.eq_coef = 0;
    // 6.
    for (int f = 1; f <= std::min<int>(p.num_forces, force_capacity); ++f)
        p.force_h[f] = p.force_v[f] = p.force_x[f] = p.force_y[f] = p.force_z[f] = 0;
    for (int w = 1; w <= std::min<int>(p.num_wedges, wedge_capacity); ++w)
        p.wedge_x[w] = p.wedge_y[w] = p.wedge_z[w] = p.wedge_dip[w] = p.wedge_dipdir[w] = p.wedge_code[w] = 0;
    // 7. The planes of the stack (set_defaults resizes the grids anyway).
    std::fill(p.zgrid.v.begin(), p.zgrid.v.end(), 0.0f);
    // 8.
    p.x_min = p.x_max = p.y_min = p.y_max = 0;
    p.menus["Solve"].visible = false;
    for (int k = 1; k <= std::min<int>(p.sliding_index, surface_capacity); ++k) {
        p.surf_method[k] = 0;
        p.surf_depth[k] = 0;
        p.surf_grd_file[k].clear();
        p.surf_loaded[k] = 0;
    }
    // 9.
    p.num_layers = p.num_piezos = p.num_discs = p.num_surfaces = p.sliding_index = 0;
    p.num_mat_entries = p.num_rows = p.num_cols = p.num_sections = p.num_forces = p.num_wedges = 0;
    // 10.
    p.ell_aspect = p.ell_x = p.ell_y = p.ell_z = 0;
    p.factor_of_safety = p.janbu_fos = p.slide_weight = p.slide_area = p.slide_volume = 0;
    p.active_columns = 0;
    p.lambda_coef = 0;
    p.message_count = 0;
    p.check_count = 0;
    p.centre_y = p.centre_z = 0;
    // 11.
    p.grid_y_ul = p.grid_z_ul = p.grid_y_lr = p.grid_z_lr = 0;
    p.grid_n_y = p.grid_n_z = p.grid_tan_spacing = 0;
    p.common_y = p.common_z = 0;
    p.auto_y = p.auto_z = p.auto_spacing = p.auto_tan_spacing = 0;
    p.grid_use_common = p.auto_use_common = 0;
    clear_search(p.search);
    // 12.
    p.single_form_values.fill(0);
    p.grid_form_values.fill(0);
    p.auto_form_values.fill(0);
    // 13.
    p.surface_defined = 0;
    p.edit_general = false;
    p.field_x_low = p.field_x_high = p.field_y_low = p.field_y_high = 0;
    // 14.
    set_defaults(p);
}

} // namespace tobel
