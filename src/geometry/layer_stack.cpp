#include "geometry/layer_stack.h"

#include <algorithm>
#include <cstddef>

#include "project/defaults.h"
#include "project/numtext.h"

namespace tobel {

namespace {

// The per-surface data of slot `to` becomes that of slot `from`: method,
// depth, file, built flag, the zgrid plane and every section's line.
void copy_surface(Project& p, int to, int from)
{
    const std::size_t t = std::size_t(to), f = std::size_t(from);
    if (t <= std::size_t(surface_capacity) && f <= std::size_t(surface_capacity)) {
        p.surf_grd_file[t] = p.surf_grd_file[f];
        p.surf_depth[t] = p.surf_depth[f];
        p.surf_method[t] = p.surf_method[f];
        p.surf_built[t] = p.surf_built[f];
    }
    if (to <= p.zgrid.planes && from <= p.zgrid.planes)
        for (int i = 0; i <= p.zgrid.rows; ++i)
            for (int j = 0; j <= p.zgrid.cols; ++j)
                p.zgrid(i, j, to) = p.zgrid(i, j, from);
    const int sections = std::min<int>(p.num_sections, section_capacity);
    for (int s = 1; s <= sections; ++s) {
        if (to <= section_count_surfaces && from <= section_count_surfaces)
            p.sections.n(s, to) = p.sections.n(s, from);
        if (to <= section_surface_capacity && from <= section_surface_capacity)
            for (int n = 1; n <= section_point_capacity; ++n) {
                p.sections.y(s, n, to) = p.sections.y(s, n, from);
                p.sections.z(s, n, to) = p.sections.z(s, n, from);
            }
    }
}

// A new surface at `k`: no file, depth 0, method 0, not built, a flat zero
// plane and no line in any section. The points themselves stay; with no
// count they are not part of the line.
void clear_surface(Project& p, int k)
{
    const std::size_t u = std::size_t(k);
    p.surf_grd_file[u].clear();
    p.surf_depth[u] = 0;
    p.surf_method[u] = 0;
    p.surf_built[u] = 0;
    if (k <= p.zgrid.planes)
        for (int i = 0; i <= p.zgrid.rows; ++i)
            for (int j = 0; j <= p.zgrid.cols; ++j)
                p.zgrid(i, j, k) = 0;
    const int sections = std::min<int>(p.num_sections, section_capacity);
    if (k <= section_count_surfaces)
        for (int s = 1; s <= sections; ++s)
            p.sections.n(s, k) = 0;
}

void copy_material(Project& p, int to, int from)
{
    const std::size_t t = std::size_t(to), f = std::size_t(from);
    p.mat_name[t] = p.mat_name[f];
    p.mat_unit_weight[t] = p.mat_unit_weight[f];
    p.mat_type[t] = p.mat_type[f];
    p.mat_cohesion[t] = p.mat_cohesion[f];
    p.mat_cohesion_v[t] = p.mat_cohesion_v[f];
    p.mat_phi[t] = p.mat_phi[f];
    p.mat_phi_v[t] = p.mat_phi_v[f];
    p.mat_piezo[t] = p.mat_piezo[f];
    p.mat_bbar[t] = p.mat_bbar[f];
    p.mat_coef_a[t] = p.mat_coef_a[f];
    p.mat_coef_b[t] = p.mat_coef_b[f];
    p.mat_uniaxial[t] = p.mat_uniaxial[f];
    p.mat_coef_d[t] = p.mat_coef_d[f];
}

void clear_material(Project& p, int m)
{
    const std::size_t u = std::size_t(m);
    p.mat_name[u] = "Material Name";
    p.mat_type[u] = 1;
    p.mat_unit_weight[u] = 0;
    p.mat_cohesion[u] = p.mat_cohesion_v[u] = p.mat_phi[u] = p.mat_phi_v[u] = 0;
    p.mat_piezo[u] = p.mat_bbar[u] = 0;
    p.mat_coef_a[u] = p.mat_coef_b[u] = p.mat_uniaxial[u] = p.mat_coef_d[u] = 0;
}

int last_slot(int count, int capacity)
{
    return std::min(count, capacity);
}

// Steps 1 to 5 of an insertion at stack position `k`, after the counter has
// been raised by the caller; `layer` says whether materials move too.
bool insert_surface(Project& p, int k, bool layer, int16 before, Port& port)
{
    // 1. The limit, counted with the new surface.
    if (p.num_layers + p.num_piezos + 1 > p.max_materials) {
        port.message_box(surface_limit_message(p.max_materials), Buttons::ok, Icon::none, "");
        (layer ? p.num_layers : p.num_piezos) = before;
        return false;
    }
    // 2. Counts, and grids sized anew: every plane is empty from here on.
    derive_counts(p);
    redim_grids(p);
    // 3. The surfaces from k up move one place higher, the sliding slot too.
    for (int s = last_slot(p.sliding_index, surface_capacity); s >= k + 1; --s)
        copy_surface(p, s, s - 1);
    // 4. The material entries, discontinuities included.
    if (layer)
        for (int m = last_slot(p.num_mat_entries, material_capacity); m >= k + 1; --m)
            copy_material(p, m, m - 1);
    // 5. The new position.
    clear_surface(p, k);
    if (layer)
        clear_material(p, k);
    return true;
}

// The surfaces above stack position `k` move one place lower, up to the old
// sliding slot. The vacated top slot keeps its old contents: it lies beyond
// the new stack and the next insertion overwrites it.
void remove_surface(Project& p, int k, bool layer)
{
    for (int s = k; s <= last_slot(p.sliding_index, surface_capacity) - 1; ++s)
        copy_surface(p, s, s + 1);
    // Entries from k to num_mat_entries - 1 only: the last one stays as it
    // was, beyond the new count, where the material editor finds its name.
    if (layer)
        for (int m = k; m <= last_slot(p.num_mat_entries, material_capacity) - 1; ++m)
            copy_material(p, m, m + 1);
    (layer ? p.num_layers : p.num_piezos) -= 1;
    derive_counts(p);
    redim_grids(p);
}

} // namespace

std::string surface_limit_message(int max_materials)
{
    return "Combined number of materials and piezo surfaces must not exceed " + str(max_materials) + ".";
}

bool surface_limit_reached(const Project& p)
{
    return p.num_layers + p.num_piezos + 2 > p.max_materials;
}

bool insert_layer(Project& p, int position, Port& port)
{
    if (position < 1 || position > p.num_layers + 1)
        return false;
    const int16 before = p.num_layers;
    p.num_layers = int16(p.num_layers + 1);
    return insert_surface(p, position, true, before, port);
}

bool add_layer(Project& p, Port& port)
{
    return insert_layer(p, p.num_layers + 1, port);
}

bool delete_layer(Project& p, int position)
{
    if (p.num_layers <= 1 || position < 1 || position > p.num_layers)
        return false;
    remove_surface(p, position, true);
    return true;
}

bool insert_piezo(Project& p, int n, Port& port)
{
    if (n < 1 || n > p.num_piezos + 1)
        return false;
    const int16 before = p.num_piezos;
    p.num_piezos = int16(p.num_piezos + 1);
    // Material references to piezometric surfaces (the negative mat_piezo)
    // are numbers relative to num_layers and are left as they are.
    return insert_surface(p, p.num_layers + n, false, before, port);
}

bool add_piezo(Project& p, Port& port)
{
    return insert_piezo(p, p.num_piezos + 1, port);
}

bool delete_piezo(Project& p, int n)
{
    if (n < 1 || n > p.num_piezos)
        return false;
    remove_surface(p, p.num_layers + n, false);
    return true;
}

} // namespace tobel
