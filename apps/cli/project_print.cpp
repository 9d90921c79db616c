// The project as `tobel info` prints it: every value under its name in the
// state and with its unit, so that it can be found in the data file and in
// what `tobel check` says.
#include <ostream>

#include "cli.h"
#include "commands/menu_model.h"
#include "project/numtext.h"

namespace tobel::cli {

namespace {

// The unit weight of water is the one units switch: 9.81 is SI, 62.4
// imperial; any other value leaves the units to the user.
struct Units {
    const char* length;
    const char* unit_weight;
    const char* stress;
    const char* force;
};

Units units_of(float water)
{
    if (water == 62.4f)
        return {"ft", "pcf", "psf", "lb"};
    if (water == 9.81f)
        return {"m", "kN/m3", "kPa", "kN"};
    return {"(length)", "(force/length3)", "(force/length2)", "(force)"};
}

const char* material_type_name(int t)
{
    switch (t) {
    case 2: return "Anisotropic";
    case 3: return "Non-linear";
    case 4: return "Hard Layer";
    case 5: return "Water";
    default: return "Coulomb";
    }
}

const char* surface_method_name(int m)
{
    switch (m) {
    case 1: return "grid file";
    case 2: return "constant depth";
    default: return "cross-sections";
    }
}

const char* interp_method_name(int m)
{
    switch (m) {
    case 2: return "oblique";
    case 3: return "axisymmetric";
    default: return "orthogonal";
    }
}

const char* crack_mode_name(int m)
{
    switch (m) {
    case 1: return "by Y-coordinate";
    case 2: return "by depth";
    default: return "none";
    }
}

std::string indexed(const char* base, int i)
{
    return std::string(base) + "(" + std::to_string(i) + ")";
}

// "name = value unit"; no unit for a pure number.
std::string v(const std::string& name, float x, const char* unit = nullptr)
{
    return name + " = " + general_text(x) + (unit ? std::string(" ") + unit : std::string());
}

std::string v(const char* base, int i, float x, const char* unit = nullptr)
{
    return v(indexed(base, i), x, unit);
}

std::string n(const std::string& name, long x)
{
    return name + " = " + std::to_string(x);
}

void print_material(const Project& p, int m, const Units& u, std::ostream& out)
{
    const int type = material_type(p, m);
    out << "  " << m << " " << p.mat_name[m] << " (" << indexed("mat_name", m)
        << "): " << n(indexed("mat_type", m), p.mat_type[m]) << " (" << material_type_name(type) << ")";
    if (m > p.num_layers)
        out << ", discontinuity " << m - p.num_layers;
    out << "\n      " << v("mat_unit_weight", m, p.mat_unit_weight[m], u.unit_weight);
    if (type == 3)
        out << ", " << v("mat_coef_a", m, p.mat_coef_a[m]) << ", " << v("mat_coef_b", m, p.mat_coef_b[m])
            << ", " << v("mat_uniaxial", m, p.mat_uniaxial[m], u.stress) << ", "
            << v("mat_coef_d", m, p.mat_coef_d[m]);
    else if (type != 5)
        out << ", " << v("mat_cohesion", m, p.mat_cohesion[m], u.stress) << ", "
            << v("mat_phi", m, p.mat_phi[m], "degrees");
    if (type == 2)
        out << ", " << v("mat_cohesion_v", m, p.mat_cohesion_v[m], u.stress) << ", "
            << v("mat_phi_v", m, p.mat_phi_v[m], "degrees");
    const float piezo = p.mat_piezo[m];
    out << "\n      " << v("mat_piezo", m, piezo) << " ("
        << (piezo < 0   ? "piezometric surface " + general_text(-piezo)
            : piezo > 0 ? std::string("pore pressure ratio Ru")
                        : std::string("dry"))
        << "), " << v("mat_bbar", m, p.mat_bbar[m]) << "\n";
}

void print_sections(const Project& p, const Units& u, std::ostream& out)
{
    out << "Sections: " << p.num_sections << " (num_sections)\n";
    for (int s = 1; s <= p.num_sections; ++s) {
        out << "  " << v("section_x", s, p.sections.x[std::size_t(s)], u.length) << "\n";
        for (int k = 1; k <= p.sliding_index; ++k) {
            const int count = p.sections.n(s, k);
            if (count == 0)
                continue;
            out << "    " << surface_item_caption(p, k) << ": section_npts(" << s << ", " << k
                << ") = " << count << "; (section_y, section_z) in " << u.length << ":";
            for (int i = 1; i <= count; ++i)
                out << " (" << general_text(p.sections.y(s, i, k)) << ", "
                    << general_text(p.sections.z(s, i, k)) << ")";
            out << "\n";
        }
    }
}

void print_loads(const Project& p, const Units& u, std::ostream& out)
{
    const char* l = u.length;
    out << "External forces: " << p.num_forces << " (num_forces)\n";
    for (int f = 1; f <= p.num_forces; ++f)
        out << "  force " << f << ": " << v("force_h", f, p.force_h[f], u.force) << ", "
            << v("force_v", f, p.force_v[f], u.force) << " at " << v("force_x", f, p.force_x[f], l) << ", "
            << v("force_y", f, p.force_y[f], l) << ", " << v("force_z", f, p.force_z[f], l) << "\n";
    out << "Wedge planes: " << p.num_wedges << " (num_wedges)\n";
    for (int w = 1; w <= p.num_wedges; ++w)
        out << "  wedge " << w << ": " << v("wedge_x", w, p.wedge_x[w], l) << ", "
            << v("wedge_y", w, p.wedge_y[w], l) << ", " << v("wedge_z", w, p.wedge_z[w], l) << ", "
            << v("wedge_dip", w, p.wedge_dip[w], "degrees") << ", "
            << v("wedge_dipdir", w, p.wedge_dipdir[w], "degrees") << ", "
            << v("wedge_code", w, p.wedge_code[w]) << "\n";
    out << "Tension crack: " << n("crack_mode", p.crack_mode) << " (" << crack_mode_name(p.crack_mode) << ")";
    if (p.crack_mode != 0)
        out << ", " << v("crack_y", p.crack_y, l) << ", " << v("crack_depth", p.crack_depth, l) << ", "
            << v("crack_water_pct", p.crack_water_pct, "% filled with water");
    out << "\n";
    out << "Earthquake: " << v("eq_coef", p.eq_coef, "(fraction of g; not kept in the data file)") << "\n";
}

void print_surface_parameters(const Project& p, const Units& u, std::ostream& out)
{
    const char* l = u.length;
    out << "Single ellipsoid: " << v("search_x", p.search_x, l) << ", " << v("single_y", p.single_y, l)
        << ", " << v("single_z", p.single_z, l) << ", " << v("tangent_z", p.tangent_z, l) << ", "
        << v("aspect_in", p.aspect_in) << ", " << v("radius_in", p.radius_in, l) << "\n";
    out << "Grid search: " << v("grid_y_ul", p.grid_y_ul, l) << ", " << v("grid_z_ul", p.grid_z_ul, l) << ", "
        << v("grid_y_lr", p.grid_y_lr, l) << ", " << v("grid_z_lr", p.grid_z_lr, l) << ", "
        << v("grid_n_y", p.grid_n_y) << ", " << v("grid_n_z", p.grid_n_z) << ", "
        << v("grid_tan_spacing", p.grid_tan_spacing, l) << ", " << v("common_y", p.common_y, l) << ", "
        << v("common_z", p.common_z, l) << "\n";
    out << "Auto search: " << v("auto_y", p.auto_y, l) << ", " << v("auto_z", p.auto_z, l) << ", "
        << v("auto_spacing", p.auto_spacing, l) << ", " << v("auto_tan_spacing", p.auto_tan_spacing, l)
        << "\n";
}

} // namespace

void print_project(const Project& p, std::ostream& out)
{
    const Units u = units_of(p.unit_weight_water);
    const char* l = u.length;
    out << "Project:   " << p.project_title << "   (project_title)\n"
        << "Data Set:  " << p.dataset_title << "   (dataset_title)\n"
        << "Input By:  " << p.input_by << "   (input_by)\n"
        << "Units: " << v("unit_weight_water", p.unit_weight_water, u.unit_weight) << "; lengths in " << l
        << ", unit weights in " << u.unit_weight << ", stresses in " << u.stress << ", forces in " << u.force
        << ", angles in degrees\n";
    out << "Mesh: num_rows = " << p.num_rows << " rows along X, num_cols = " << p.num_cols
        << " columns along Y" << (p.num_rows == 1 ? ", two-dimensional" : ", three-dimensional") << "\n"
        << "  " << v("x_min", p.x_min, l) << ", " << v("x_max", p.x_max, l) << ", "
        << v("row_spacing", p.row_spacing, l) << "\n"
        << "  " << v("y_min", p.y_min, l) << ", " << v("y_max", p.y_max, l) << ", "
        << v("col_spacing", p.col_spacing, l) << "\n"
        << "  " << v("base_z", p.base_z, l) << "\n"
        << "Interpolation: " << n("interp_method", p.interp_method) << " ("
        << interp_method_name(p.interp_method) << "), " << v("axis_y", p.axis_y, l) << ", "
        << v("axis_z", p.axis_z, l) << "\n";
    out << "Surfaces: " << n("num_layers", p.num_layers) << ", " << n("num_piezos", p.num_piezos) << ", "
        << n("num_discs", p.num_discs) << ", " << n("sliding_index", p.sliding_index) << "\n";
    for (int k = 1; k <= p.sliding_index; ++k) {
        out << "  " << k << " " << surface_item_caption(p, k) << ": "
            << n(indexed("surf_method", k), p.surf_method[k]) << " (" << surface_method_name(p.surf_method[k])
            << ")";
        if (p.surf_method[k] == 1)
            out << ", " << indexed("surf_grd_file", k) << " = " << p.surf_grd_file[k];
        if (p.surf_method[k] == 2)
            out << ", " << v("surf_depth", k, p.surf_depth[k], l);
        out << "\n";
    }
    out << "Materials: " << p.num_mat_entries << " (num_mat_entries)\n";
    for (int m = 1; m <= p.num_mat_entries; ++m)
        print_material(p, m, u, out);
    print_sections(p, u, out);
    print_loads(p, u, out);
    print_surface_parameters(p, u, out);
}

} // namespace tobel::cli
