// The one state of an open problem. Every subsystem reads and writes it
// directly; routines take it by reference. Tables are 1-based in meaning and
// index 0 exists unused. Stored numbers are single precision (float); shared
// flags are 16-bit with -1 for true and 0 for false.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "project/grid.h"
#include "project/menus.h"
#include "project/pictures.h"
#include "project/search_state.h"
#include "project/solver_work.h"

namespace tobel {

using int16 = std::int16_t;

constexpr int material_capacity = 100;
constexpr int force_capacity = 100;
constexpr int wedge_capacity = 100;
constexpr int surface_capacity = 100; // per-surface method, depth, file
constexpr int section_capacity = 26;  // section index 0..26
constexpr int section_point_capacity = 301;
constexpr int section_surface_capacity = 51; // section_y/z surface index 0..51
constexpr int section_count_surfaces = 60;   // section_npts surface index 0..60
constexpr int message_capacity = 5000;
constexpr int recent_capacity = 4;
constexpr int colour_entries = 51;

// Cross-section polylines: section_y(s, n, k), section_z(s, n, k), section_npts(s, k).
struct SectionTable {
    std::vector<float> x = std::vector<float>(section_capacity + 1, 0.0f);
    std::vector<int16> npts =
        std::vector<int16>(std::size_t(section_capacity + 1) * (section_count_surfaces + 1), 0);
    std::vector<float> y_v = std::vector<float>(
        std::size_t(section_capacity + 1) * (section_point_capacity + 1) * (section_surface_capacity + 1),
        0.0f);
    std::vector<float> z_v = std::vector<float>(y_v.size(), 0.0f);

    static std::size_t pt(int s, int n, int k)
    {
        return (std::size_t(s) * (section_point_capacity + 1) + std::size_t(n)) *
                   (section_surface_capacity + 1) +
               std::size_t(k);
    }
    int16& n(int s, int k) { return npts[std::size_t(s) * (section_count_surfaces + 1) + std::size_t(k)]; }
    int16 n(int s, int k) const
    {
        return npts[std::size_t(s) * (section_count_surfaces + 1) + std::size_t(k)];
    }
    float& y(int s, int p, int k) { return y_v[pt(s, p, k)]; }
    float y(int s, int p, int k) const { return y_v[pt(s, p, k)]; }
    float& z(int s, int p, int k) { return z_v[pt(s, p, k)]; }
    float z(int s, int p, int k) const { return z_v[pt(s, p, k)]; }
};

template <class T> using MatArray = std::array<T, material_capacity + 1>;

struct Project;
// The type of material m as every routine reads it: 0 is read as Coulomb (1).
inline int material_type(const Project& p, int m);

struct Project {
    // 1. Titles and file identity
    std::string project_title, dataset_title, input_by;
    std::string data_file_path;
    std::string work_drive;
    int16 dirty_flag = 0;

    // 2. Mesh
    int16 num_rows = 0, num_cols = 0;
    float x_min = 0, x_max = 0, y_min = 0, y_max = 0;
    float row_spacing = 0, col_spacing = 0;
    float base_z = 0;
    int16 view_row = 0, view_col = 0;

    // 3. Surface stack
    int16 num_layers = 0, num_piezos = 0, num_discs = 0;
    int16 num_surfaces = 0, sliding_index = 0, num_mat_entries = 0;
    std::array<int16, surface_capacity + 1> surf_method{};
    std::array<float, surface_capacity + 1> surf_depth{};
    std::array<std::string, surface_capacity + 1> surf_grd_file{};
    std::array<int16, surface_capacity + 1> surf_loaded{};
    std::array<int16, surface_capacity + 1> surf_built{};
    Grid3 zgrid;
    int16 surface_defined = 0;
    int16 surface_kind = 0;
    float grid_blank = 0; // blanking value of grid files, set by the stack rebuild

    // 4. Input cross-sections
    int16 num_sections = 0;
    SectionTable sections;

    // 5. Material table
    MatArray<std::string> mat_name{};
    MatArray<float> mat_unit_weight{};
    MatArray<int16> mat_type{};
    MatArray<float> mat_cohesion{}, mat_cohesion_v{}, mat_phi{}, mat_phi_v{};
    MatArray<float> mat_piezo{}, mat_bbar{};
    MatArray<float> mat_coef_a{}, mat_coef_b{}, mat_uniaxial{}, mat_coef_d{};
    int16 max_materials = 0;

    // 6. Water and units
    float unit_weight_water = 0;
    float eq_coef = 0;

    // 7. Interpolation between sections
    int16 interp_method = 0;
    float axis_y = 0, axis_z = 0;
    float cur_x = 0, cur_y = 0; // scratch node coordinates of the builders

    // 8. External forces
    int16 num_forces = 0;
    std::array<float, force_capacity + 1> force_h{}, force_v{}, force_x{}, force_y{}, force_z{};
    std::array<int16, force_capacity + 1> force_v_ignored{}, force_h_ignored{};

    // 9. Wedge planes
    int16 num_wedges = 0;
    std::array<float, wedge_capacity + 1> wedge_x{}, wedge_y{}, wedge_z{}, wedge_dip{}, wedge_dipdir{},
        wedge_code{};

    // 10. Tension crack
    int16 crack_mode = 0;
    float crack_y = 0, crack_depth = 0, crack_water_pct = 0;

    // 11. Ellipsoid and search parameters
    float search_x = 0, single_y = 0, single_z = 0, tangent_z = 0, aspect_in = 0, radius_in = 0;
    float grid_y_ul = 0, grid_z_ul = 0, grid_y_lr = 0, grid_z_lr = 0;
    float grid_n_y = 0, grid_n_z = 0, grid_tan_spacing = 0;
    float common_y = 0, common_z = 0;
    float auto_y = 0, auto_z = 0, auto_spacing = 0, auto_tan_spacing = 0;
    int16 grid_use_common = 0, auto_use_common = 0;
    float ell_x = 0, ell_y = 0, ell_z = 0, ell_radius = 0, ell_aspect = 0;
    std::array<float, 6> single_form_values{}; // private vectors of the three dialogs
    std::array<float, 13> grid_form_values{};
    std::array<float, 10> auto_form_values{};
    float field_x_low = 0, field_x_high = 0, field_y_low = 0, field_y_high = 0;

    // 12. Method and results
    int16 solution_method = 0;
    float rotation_angle = 0;
    float factor_of_safety = 0, janbu_fos = 0;
    float slide_weight = 0, slide_area = 0, slide_volume = 0;
    std::int32_t active_columns = 0;
    float lambda_coef = 0;
    float centre_y = 0, centre_z = 0;
    int16 no_slide = 0;
    int16 surface_out_flag = 0;
    int16 surface_lifted = 0;
    float neg_normal_sum = 0, neg_normal_percent = 0;
    float ext_vertical_sum = 0, ext_horizontal_sum = 0, head_water_sum = 0, crack_water_sum = 0;
    float lateral_unbalance = 0, unbalance_z = 0;
    float balance_lateral = 0;
    float force_peak = 0;
    int16 solve_interactive = 0, solve_abort = 0;
    int16 report_kind = 0;
    int iteration_total = 0; // iterations over all passes, for display
    // Spencer and Morgenstern-Price indices, shown by the solution printout
    int16 iteration_count = 0;
    float moment_shear = 0, moment_other = 0, resisting_sum = 0;
    float thrust_ratio_mean = 0, thrust_ratio_min = 0, thrust_ratio_max = 0;
    float vol_thrust_inside = 0, vol_thrust_middle = 0, vol_tension = 0, vol_overstressed = 0;

    // Lateral balance sums (kept for the printout)
    float weight_flat = 0, weight_positive = 0, weight_negative = 0, thrust_positive = 0;
    double kappa_pos = 0, kappa_neg = 0, ubf0 = 0;

    // Messages of a trial and findings of the input checks
    std::vector<std::string> message_text = std::vector<std::string>(message_capacity + 1);
    int16 message_count = 0;
    std::vector<std::string> check_text;
    int16 check_count = 0, check_fatal = 0;
    int16 error_list_mode = 0;

    // --- Equilibrium residuals of the accepted solution ---------------------
    // Measured after a Spencer or Morgenstern-Price solution by
    // compute_equilibrium_residuals (solver/equilibrium_residuals.h); cleared
    // at the start of every solve, so a Bishop or Janbu solve leaves them 0.
    // Working values: never written to a file.
    double force_residual = 0;  // signed fraction of the driving force
    double moment_residual = 0; // signed fraction of the driving moment
    int16 residuals_valid = 0;  // -1 when the two above hold a measurement
    // --- end of the equilibrium residuals -----------------------------------

    // 13. Per-node work grids
    Grid2<float> col_weight, col_area, col_pore, col_phi, col_cohesion, col_cos_gamma, col_normal, col_fos,
        surf_dip_x, surf_dip_y;
    Grid2<std::int32_t> col_material;
    Grid2<int16> disc_code;
    Grid2<float> col_lat_slope, col_arm, col_lateral_load;
    Grid2<float> col_eff_thrust, col_thrust_height, col_shear_ratio, col_general;
    std::vector<float> head_water_force, head_water_z, head_water_x, head_water_y, crack_water_force,
        crack_water_z, row_coef, row_thrust_arm;

    // 14. Capacity constants
    int16 max_sections = 0, max_points = 0, max_forces = 0, max_wedges = 0;

    // 15. Display state kept with the project
    float vert_exag = 0, iso_angle = 0;
    float deg_to_rad = 0;

    // The section editor's state that outlives one editing: snapping (0 on,
    // -1 off; kept while the program runs, so reset_project leaves it), the
    // drawing of a general sliding surface (only the sliding line is
    // edited), and the world coordinates last entered for the two points
    // that stretch a background image.
    int16 snap_off = 0;
    bool edit_general = false;
    float image_p1_y = 0, image_p1_z = 0, image_p2_y = 0, image_p2_z = 0;

    // Command flags of the main window
    int16 form_mode = 0, view_mode = 0, save_cancelled = 0, open_recent_pending = 0, keep_window = 0;
    std::string main_caption = "TOBEL-3";
    std::array<std::string, 5> method_labels{}; // currentmeth, meth2..meth4 at 1..4
    Menus menus;

    // Program settings: colours, working directory and recent files, kept in
    // the settings file at settings_path; empty means none is read or written.
    std::string settings_path;
    std::array<std::int32_t, colour_entries + 1> layer_colour{}, piezo_colour{};
    std::int32_t selected_colour = 0, sliding_colour = 0;
    int16 recent_count = 0;
    std::array<std::string, recent_capacity + 1> recent_file{};

    // Critical surface search
    SearchState search;

    // Picture windows and the state of the views
    ViewState view;
    Pictures pictures;

    // Scratch of the builders and solvers between search trials (not saved)
    SolverWork work;
};

inline int material_type(const Project& p, int m)
{
    const int type = p.mat_type[std::size_t(m)];
    return type == 0 ? 1 : type;
}

} // namespace tobel
