#include "project/data_file.h"

#include <algorithm>

#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/safe_save.h"

namespace tobel {

static void put(std::string& out, const PrintLine& l)
{
    out += l.str();
    out += "\r\n";
}

static void put_text(std::string& out, const std::string& s)
{
    out += s;
    out += "\r\n";
}

std::string data_file_text(Project& p, const SectionCut* cut)
{
    std::string out;
    put_text(out, p.project_title);
    put_text(out, cut ? p.dataset_title + " SECTION " + cut->x_text : p.dataset_title);
    put_text(out, p.input_by);
    put(out, PrintLine()
                 .number(p.unit_weight_water)
                 .integer(p.num_layers)
                 .integer(p.num_piezos)
                 .integer(p.num_discs));
    derive_counts(p);
    // A section cut is one row on one section.
    if (cut) {
        put(out, PrintLine().number(p.y_min).number(p.y_max).integer(1).integer(1));
        put(out, PrintLine().integer(p.num_cols).integer(1).integer(1));
    } else {
        put(out, PrintLine().number(p.y_min).number(p.y_max).number(p.x_min).number(p.x_max));
        put(out, PrintLine().integer(p.num_cols).integer(p.num_rows).integer(p.num_sections));
    }
    put(out, PrintLine().integer(p.interp_method).number(p.axis_y).number(p.axis_z));

    for (int m = 1; m <= std::min<int>(p.num_mat_entries, material_capacity); ++m) {
        if (p.mat_name[m].empty())
            p.mat_name[m] = "Material";
        put_text(out, p.mat_name[m]);
        put(out, PrintLine()
                     .number(p.mat_unit_weight[m])
                     .integer(p.mat_type[m])
                     .number(p.mat_cohesion[m])
                     .number(p.mat_cohesion_v[m])
                     .number(p.mat_phi[m])
                     .number(p.mat_phi_v[m]));
        // The piezo selection and B bar go twice; readers keep the second pair.
        put(out, PrintLine()
                     .number(p.mat_coef_a[m])
                     .number(p.mat_coef_b[m])
                     .number(p.mat_uniaxial[m])
                     .number(p.mat_coef_d[m])
                     .number(p.mat_piezo[m])
                     .number(p.mat_bbar[m])
                     .number(p.mat_piezo[m])
                     .number(p.mat_bbar[m]));
    }

    const int surfaces = std::min<int>(p.sliding_index, surface_capacity);
    for (int k = 1; k <= surfaces; ++k) {
        if (p.surf_grd_file[k].empty())
            p.surf_grd_file[k] = "*.GRD";
        // In a section cut every surface becomes a cross-section line.
        put(out,
            PrintLine().integer(cut ? 0 : p.surf_method[k]).number(p.surf_depth[k]).text(p.surf_grd_file[k]));
    }

    if (cut) {
        // The mesh row itself is the one section, at X = 1, with a point per column.
        put(out, PrintLine().integer(1));
        for (int k = 1; k <= p.sliding_index; ++k) {
            put(out, PrintLine().integer(p.num_cols));
            float y = p.y_min;
            for (int j = 1; j <= p.num_cols; ++j) {
                put(out, PrintLine().number(y).number(p.zgrid(cut->row, j, k)));
                y = y + p.col_spacing;
            }
        }
    }

    const int section_surfaces = std::min<int>(p.sliding_index, section_surface_capacity);
    for (int s = 1; s <= (cut ? 0 : std::min<int>(p.num_sections, section_capacity)); ++s) {
        put(out, PrintLine().number(p.sections.x[std::size_t(s)]));
        for (int k = 1; k <= section_surfaces; ++k) {
            const int n_pts = p.sections.n(s, k);
            put(out, PrintLine().integer(n_pts));
            for (int n = 1; n <= std::min(n_pts, section_point_capacity); ++n)
                put(out, PrintLine().number(p.sections.y(s, n, k)).number(p.sections.z(s, n, k)));
        }
    }

    put(out, PrintLine().number(p.base_z));
    put(out, PrintLine()
                 .number(p.search_x)
                 .number(p.single_y)
                 .number(p.single_z)
                 .number(p.tangent_z)
                 .number(p.aspect_in)
                 .number(p.radius_in));
    put(out, PrintLine()
                 .number(p.grid_y_ul)
                 .number(p.grid_z_ul)
                 .number(p.grid_y_lr)
                 .number(p.grid_z_lr)
                 .number(p.grid_tan_spacing)
                 .number(p.grid_n_y)
                 .number(p.grid_n_z)
                 .number(p.common_y)
                 .number(p.common_z));
    put(out, PrintLine().number(p.auto_y).number(p.auto_z).number(p.auto_spacing).number(p.auto_tan_spacing));

    put(out, PrintLine().integer(p.num_wedges));
    for (int w = 1; w <= std::min<int>(p.num_wedges, wedge_capacity); ++w)
        put(out, PrintLine()
                     .number(p.wedge_x[w])
                     .number(p.wedge_y[w])
                     .number(p.wedge_z[w])
                     .number(p.wedge_code[w])
                     .number(p.wedge_dip[w])
                     .number(p.wedge_dipdir[w]));

    put(out, PrintLine().integer(p.num_forces));
    for (int f = 1; f <= std::min<int>(p.num_forces, force_capacity); ++f)
        put(out, PrintLine()
                     .number(p.force_h[f])
                     .number(p.force_v[f])
                     .number(p.force_x[f])
                     .number(p.force_y[f])
                     .number(p.force_z[f]));

    put(out,
        PrintLine().integer(p.crack_mode).number(p.crack_y).number(p.crack_depth).number(p.crack_water_pct));
    // Only whether there is an earthquake load is kept, as a truth word.
    put_text(out, p.eq_coef == 0 ? "True" : "False");
    return out;
}

void write_data_file(Project& p, const std::string& path)
{
    write_file_safely(path, data_file_text(p));
    update_recent_files(p);
}

// Each item is read under its state's name; the name shows only in the
// record of items that tools can ask the reader to keep.
static float single(InputReader& in, ItemName name)
{
    return in.single(name);
}
static int16 int16_item(InputReader& in, ItemName name)
{
    return int16(in.integer16(name));
}

// Statement labels are those of the .TOB layout: 6, 10a to 10c, 15a, 16a.
void read_mesh_counts(InputReader& in, Project& p)
{
    in.statement("6");
    const int16 cols = int16_item(in, "num_cols");
    in.check_count("num_cols", cols, 1, 3000);
    const int16 rows = int16_item(in, "num_rows");
    in.check_count("num_rows", rows, 1, 3000);
    const int16 sections = int16_item(in, "num_sections");
    in.check_count("num_sections", sections, 0, section_capacity);
    p.num_cols = cols;
    p.num_rows = rows;
    p.num_sections = sections;
    redim_grids(p);
}

void read_wedge_table(InputReader& in, Project& p)
{
    for (int w = 1; w <= p.num_wedges; ++w) {
        in.statement("15a");
        p.wedge_x[w] = single(in, {"wedge_x", w});
        p.wedge_y[w] = single(in, {"wedge_y", w});
        p.wedge_z[w] = single(in, {"wedge_z", w});
        p.wedge_code[w] = single(in, {"wedge_code", w});
        p.wedge_dip[w] = single(in, {"wedge_dip", w});
        p.wedge_dipdir[w] = single(in, {"wedge_dipdir", w});
    }
}

void read_force_table(InputReader& in, Project& p)
{
    for (int f = 1; f <= p.num_forces; ++f) {
        in.statement("16a");
        p.force_h[f] = single(in, {"force_h", f});
        p.force_v[f] = single(in, {"force_v", f});
        p.force_x[f] = single(in, {"force_x", f});
        p.force_y[f] = single(in, {"force_y", f});
        p.force_z[f] = single(in, {"force_z", f});
    }
}

void read_section_lines(InputReader& in, Project& p, int line_sets)
{
    for (int s = 1; s <= p.num_sections; ++s) {
        in.statement("10a");
        p.sections.x[std::size_t(s)] = single(in, {"section_x", s});
        for (int k = 1; k <= line_sets; ++k) {
            in.statement("10b");
            const int16 n_pts = int16_item(in, {"section_npts", s, k});
            in.check_count("section_npts", n_pts, 0, section_point_capacity);
            p.sections.n(s, k) = n_pts;
            for (int n = 1; n <= n_pts; ++n) {
                in.statement("10c");
                p.sections.y(s, n, k) = single(in, {"section_y", s, n, k});
                p.sections.z(s, n, k) = single(in, {"section_z", s, n, k});
            }
        }
    }
}

void read_data_items(Project& p, InputReader& in)
{
    in.statement("1");
    p.project_title = in.line("project_title");
    in.statement("2");
    p.dataset_title = in.line("dataset_title");
    in.statement("3");
    p.input_by = in.line("input_by");

    in.statement("4");
    p.unit_weight_water = single(in, "unit_weight_water");
    const int16 layers = int16_item(in, "num_layers");
    const int16 piezos = int16_item(in, "num_piezos");
    const int16 discs = int16_item(in, "num_discs");
    // The stack and the material table have fixed room.
    in.check_count("num_layers", layers, 0, section_surface_capacity);
    in.check_count("num_piezos", piezos, 0, section_surface_capacity);
    in.check_count("num_discs", discs, 0, material_capacity);
    in.check_count("sliding_index", long(layers) + piezos + 1, 1, section_surface_capacity);
    in.check_count("num_mat_entries", long(layers) + discs, 0, material_capacity);
    p.num_layers = layers;
    p.num_piezos = piezos;
    p.num_discs = discs;
    derive_counts(p);

    in.statement("5");
    p.y_min = single(in, "y_min");
    p.y_max = single(in, "y_max");
    p.x_min = single(in, "x_min");
    p.x_max = single(in, "x_max");

    read_mesh_counts(in, p);
    p.row_spacing =
        p.num_rows > 1 ? float((double(p.x_max) - double(p.x_min)) / double(p.num_rows - 1)) : 1.0f;
    // No guard here: a one-column mesh fails as a division by zero.
    if (p.num_cols == 1)
        throw RuntimeError(err_division_by_zero, in.where());
    p.col_spacing = float((double(p.y_max) - double(p.y_min)) / double(p.num_cols - 1));

    in.statement("7");
    p.interp_method = int16_item(in, "interp_method");
    p.axis_y = single(in, "axis_y");
    p.axis_z = single(in, "axis_z");

    for (int m = 1; m <= p.num_mat_entries; ++m) {
        in.statement("8a");
        p.mat_name[m] = in.line({"mat_name", m});
        in.statement("8b");
        p.mat_unit_weight[m] = single(in, {"mat_unit_weight", m});
        p.mat_type[m] = int16_item(in, {"mat_type", m});
        p.mat_cohesion[m] = single(in, {"mat_cohesion", m});
        p.mat_cohesion_v[m] = single(in, {"mat_cohesion_v", m});
        p.mat_phi[m] = single(in, {"mat_phi", m});
        p.mat_phi_v[m] = single(in, {"mat_phi_v", m});
        in.statement("8c");
        p.mat_coef_a[m] = single(in, {"mat_coef_a", m});
        p.mat_coef_b[m] = single(in, {"mat_coef_b", m});
        p.mat_uniaxial[m] = single(in, {"mat_uniaxial", m});
        p.mat_coef_d[m] = single(in, {"mat_coef_d", m});
        for (int pair = 0; pair < 2; ++pair) {
            p.mat_piezo[m] = single(in, {"mat_piezo", m});
            p.mat_bbar[m] = single(in, {"mat_bbar", m});
        }
    }

    for (int k = 1; k <= p.sliding_index; ++k) {
        in.statement("9");
        p.surf_method[k] = int16_item(in, {"surf_method", k});
        p.surf_depth[k] = single(in, {"surf_depth", k});
        p.surf_grd_file[k] = in.text_item({"surf_grd_file", k});
    }

    read_section_lines(in, p, p.sliding_index);

    in.statement("11");
    p.base_z = single(in, "base_z");

    in.statement("12");
    p.search_x = single(in, "search_x");
    p.single_y = single(in, "single_y");
    p.single_z = single(in, "single_z");
    p.tangent_z = single(in, "tangent_z");
    p.aspect_in = single(in, "aspect_in");
    p.radius_in = single(in, "radius_in");

    in.statement("13");
    p.grid_y_ul = single(in, "grid_y_ul");
    p.grid_z_ul = single(in, "grid_z_ul");
    p.grid_y_lr = single(in, "grid_y_lr");
    p.grid_z_lr = single(in, "grid_z_lr");
    p.grid_tan_spacing = single(in, "grid_tan_spacing");
    p.grid_n_y = single(in, "grid_n_y");
    p.grid_n_z = single(in, "grid_n_z");
    p.common_y = single(in, "common_y");
    p.common_z = single(in, "common_z");

    in.statement("14");
    p.auto_y = single(in, "auto_y");
    p.auto_z = single(in, "auto_z");
    p.auto_spacing = single(in, "auto_spacing");
    p.auto_tan_spacing = single(in, "auto_tan_spacing");

    in.statement("15");
    const int16 wedges = int16_item(in, "num_wedges");
    in.check_count("num_wedges", wedges, 0, wedge_capacity);
    p.num_wedges = wedges;
    read_wedge_table(in, p);

    in.statement("16");
    const int16 forces = int16_item(in, "num_forces");
    in.check_count("num_forces", forces, 0, force_capacity);
    p.num_forces = forces;
    read_force_table(in, p);

    in.statement("17");
    p.crack_mode = int16_item(in, "crack_mode");
    p.crack_y = single(in, "crack_y");
    p.crack_depth = single(in, "crack_depth");
    p.crack_water_pct = single(in, "crack_water_pct");

    // The truth word read as a number: True and False both give 0.
    in.statement("18");
    p.eq_coef = single(in, "eq_coef");
}

} // namespace tobel
