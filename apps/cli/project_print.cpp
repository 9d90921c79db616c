// The project as `tobel info` prints it.
#include <ostream>

#include "cli.h"
#include "project/menu_model.h"
#include "project/numtext.h"

namespace tobel::cli {

static const char* material_type_name(int t)
{
    switch (t) {
    case 2: return "Anisotropic";
    case 3: return "Non-linear";
    case 4: return "Hard Layer";
    case 5: return "Water";
    default: return "Coulomb";
    }
}

static const char* surface_method_name(int m)
{
    switch (m) {
    case 1: return "grid file";
    case 2: return "constant depth";
    default: return "cross-sections";
    }
}

void print_project(const Project& p, std::ostream& out)
{
    out << "Project:   " << p.project_title << "\n"
        << "Data Set:  " << p.dataset_title << "\n"
        << "Input By:  " << p.input_by << "\n"
        << "Unit weight of water: " << general_text(p.unit_weight_water) << "\n"
        << "Mesh: " << p.num_rows << " rows (X " << general_text(p.x_min) << " to " << general_text(p.x_max)
        << ", spacing " << general_text(p.row_spacing) << ") by " << p.num_cols << " columns (Y "
        << general_text(p.y_min) << " to " << general_text(p.y_max) << ", spacing "
        << general_text(p.col_spacing) << ")" << (p.num_rows == 1 ? ", two-dimensional" : "") << "\n"
        << "Base of Z: " << general_text(p.base_z) << "\n"
        << "Interpolation method: " << p.interp_method << "\n";
    out << "Surfaces: " << p.num_layers << " layers, " << p.num_piezos << " piezometric, " << p.num_discs
        << " discontinuities\n";
    for (int k = 1; k <= p.sliding_index; ++k) {
        out << "  " << k << " " << surface_item_caption(p, k) << ": "
            << surface_method_name(p.surf_method[k]);
        if (p.surf_method[k] == 1)
            out << " " << p.surf_grd_file[k];
        if (p.surf_method[k] == 2)
            out << ", depth " << general_text(p.surf_depth[k]);
        out << "\n";
    }
    out << "Materials:\n";
    for (int m = 1; m <= p.num_mat_entries; ++m) {
        out << "  " << m << " " << p.mat_name[m] << " (" << material_type_name(p.mat_type[m])
            << (m > p.num_layers ? ", discontinuity " + std::to_string(m - p.num_layers) : "")
            << "): unit weight " << general_text(p.mat_unit_weight[m]) << ", c "
            << general_text(p.mat_cohesion[m]) << ", phi " << general_text(p.mat_phi[m]);
        if (p.mat_type[m] == 2)
            out << ", c vertical " << general_text(p.mat_cohesion_v[m]) << ", phi vertical "
                << general_text(p.mat_phi_v[m]);
        if (p.mat_type[m] == 3)
            out << ", A " << general_text(p.mat_coef_a[m]) << ", B " << general_text(p.mat_coef_b[m])
                << ", uniaxial " << general_text(p.mat_uniaxial[m]) << ", D "
                << general_text(p.mat_coef_d[m]);
        if (p.mat_piezo[m] < 0)
            out << ", piezo surface " << general_text(-p.mat_piezo[m]);
        if (p.mat_piezo[m] > 0)
            out << ", Ru " << general_text(p.mat_piezo[m]);
        if (p.mat_bbar[m] != 0)
            out << ", B-bar " << general_text(p.mat_bbar[m]);
        out << "\n";
    }
    out << "Sections: " << p.num_sections << "\n";
    for (int s = 1; s <= p.num_sections; ++s) {
        out << "  section " << s << " at X = " << general_text(p.sections.x[std::size_t(s)]) << "\n";
        for (int k = 1; k <= p.sliding_index; ++k) {
            const int n = p.sections.n(s, k);
            if (n == 0)
                continue;
            out << "    " << surface_item_caption(p, k) << ":";
            for (int i = 1; i <= n; ++i)
                out << " (" << general_text(p.sections.y(s, i, k)) << ", "
                    << general_text(p.sections.z(s, i, k)) << ")";
            out << "\n";
        }
    }
    out << "External forces: " << p.num_forces << "\n";
    for (int f = 1; f <= p.num_forces; ++f)
        out << "  " << f << ": H " << general_text(p.force_h[f]) << ", V " << general_text(p.force_v[f])
            << " at (" << general_text(p.force_x[f]) << ", " << general_text(p.force_y[f]) << ", "
            << general_text(p.force_z[f]) << ")\n";
    out << "Wedge planes: " << p.num_wedges << "\n";
    for (int w = 1; w <= p.num_wedges; ++w)
        out << "  " << w << ": point (" << general_text(p.wedge_x[w]) << ", " << general_text(p.wedge_y[w])
            << ", " << general_text(p.wedge_z[w]) << "), dip " << general_text(p.wedge_dip[w])
            << ", dip direction " << general_text(p.wedge_dipdir[w]) << ", code "
            << general_text(p.wedge_code[w]) << "\n";
    out << "Tension crack: ";
    if (p.crack_mode == 0)
        out << "none\n";
    else
        out << (p.crack_mode == 1 ? "at Y = " + general_text(p.crack_y)
                                  : "depth " + general_text(p.crack_depth))
            << ", " << general_text(p.crack_water_pct) << " % filled with water\n";
    out << "Single ellipsoid: centre (" << general_text(p.search_x) << ", " << general_text(p.single_y)
        << ", " << general_text(p.single_z) << "), tangent plane " << general_text(p.tangent_z) << ", aspect "
        << general_text(p.aspect_in) << "\n";
}

} // namespace tobel::cli
