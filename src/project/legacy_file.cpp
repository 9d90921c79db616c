#include "project/legacy_file.h"

#include "project/data_file.h"

#include <algorithm>

#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/menus.h"
#include "project/runtime_error.h"

namespace tobel {

static float single(InputReader& in)
{
    return in.single();
}

static int16 int16_item(InputReader& in)
{
    return int16(in.integer16());
}

static void drop(InputReader& in, int values)
{
    for (int i = 0; i < values; ++i)
        in.number();
}

void read_legacy_items(Project& p, const std::string& path)
{
    InputReader in(path);

    // 1.
    p.project_title = in.line();
    p.dataset_title = in.line();
    p.input_by = in.line();

    // 2. F = -1: every section carries one more line set.
    drop(in, 2);
    const bool extra_lines = int16_item(in) == -1;

    // 3.
    drop(in, 1);
    p.axis_y = single(in);
    p.axis_z = single(in);

    // 4.
    p.unit_weight_water = single(in);
    const int16 layers = int16_item(in);
    const int16 piezos = int16_item(in);
    const int16 discs = int16_item(in);
    in.check_count("num_layers", layers, 0, section_surface_capacity);
    in.check_count("num_piezos", piezos, 0, section_surface_capacity);
    in.check_count("num_discs", discs, 0, material_capacity);
    // The extra line set sits one above the sliding surface.
    in.check_count("sliding_index", long(layers) + piezos + 1 + (extra_lines ? 1 : 0), 1,
                   section_surface_capacity);
    in.check_count("num_mat_entries", long(layers) + discs, 0, material_capacity);
    p.num_layers = layers;
    p.num_piezos = piezos;
    p.num_discs = discs;
    derive_counts(p);

    // 5. The Y maximum of the file is dropped: the spacings make the mesh.
    p.y_min = single(in);
    drop(in, 1);
    p.col_spacing = single(in);
    drop(in, 1);
    p.row_spacing = single(in);

    // 6.
    read_mesh_counts(in, p);

    // 7.
    drop(in, 2);

    // 8. One strength line of six values, by type.
    for (int m = 1; m <= p.num_mat_entries; ++m) {
        p.mat_name[m] = in.line();
        p.mat_unit_weight[m] = single(in);
        p.mat_type[m] = int16_item(in);
        if (p.mat_type[m] == 3) {
            p.mat_coef_a[m] = single(in);
            p.mat_coef_b[m] = single(in);
            p.mat_uniaxial[m] = single(in);
            p.mat_coef_d[m] = single(in);
        } else {
            p.mat_cohesion[m] = single(in);
            p.mat_cohesion_v[m] = single(in);
            p.mat_phi[m] = single(in);
            p.mat_phi_v[m] = single(in);
        }
        p.mat_piezo[m] = single(in);
        p.mat_bbar[m] = single(in);
    }

    // 9.
    const int line_sets = p.sliding_index + (extra_lines ? 1 : 0);
    read_section_lines(in, p, line_sets);

    // 10.
    p.crack_y = single(in);
    p.aspect_in = single(in);
    p.search_x = single(in);
    p.single_y = single(in);
    p.single_z = single(in);
    p.tangent_z = single(in);

    // 11.
    p.eq_coef = single(in);
    const int16 forces = int16_item(in);
    in.check_count("num_forces", forces, 0, force_capacity);
    p.num_forces = forces;
    in.line();
    in.line();
    read_force_table(in, p);

    // 12.
    drop(in, 1);
    const int16 wedges = int16_item(in);
    in.check_count("num_wedges", wedges, 0, wedge_capacity);
    const long records = in.integer16();
    p.num_wedges = wedges;
    read_wedge_table(in, p);
    in.line();
    for (long r = 0; r < records; ++r) {
        drop(in, 4);
        in.integer16();
    }

    // 13. Counts P (0 stands for 2) and Q of dropped value lists.
    drop(in, 7);
    long values_p = in.integer16();
    const long values_q = in.integer16();
    if (values_p == 0)
        values_p = 2;
    for (long i = 0; i < values_p + values_q; ++i)
        in.number();
    drop(in, 5);

    // Sections without a sliding line take the ground line.
    const int ground = p.num_layers, sliding = p.sliding_index;
    for (int s = 1; s <= p.num_sections; ++s) {
        if (p.sections.n(s, sliding) != 0 || ground < 1)
            continue;
        const int n_pts = p.sections.n(s, ground);
        p.sections.n(s, sliding) = int16(n_pts);
        for (int n = 1; n <= n_pts; ++n) {
            p.sections.y(s, n, sliding) = p.sections.y(s, n, ground);
            p.sections.z(s, n, sliding) = p.sections.z(s, n, ground);
        }
    }

    p.x_min = 0;
    p.x_max = float(double(p.num_rows - 1) * double(p.row_spacing));
    p.y_max = float(double(p.num_cols - 1) * double(p.col_spacing) + double(p.y_min));
    if (p.num_rows == 1)
        p.row_spacing = 1;
    hide_solve_menu(p);
    for (int k = 1; k <= p.sliding_index; ++k) {
        p.surf_method[k] = 0;
        p.surf_loaded[k] = 0;
    }
}

} // namespace tobel
