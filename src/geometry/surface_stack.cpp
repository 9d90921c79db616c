#include "geometry/surface_stack.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "geometry/interpolation.h"
#include "project/menus.h"
#include "project/numtext.h"

namespace tobel {

float grid_blank_value()
{
    return std::bit_cast<float>(std::uint32_t{0x7EFFFFEE});
}

// zgrid(s) = zgrid(from) - depth at every node.
static void hang_plane(Project& p, int s, int from, float depth)
{
    for (int i = 1; i <= p.num_rows; ++i)
        for (int j = 1; j <= p.num_cols; ++j)
            p.zgrid(i, j, s) = p.zgrid(i, j, from) - depth;
}

static bool plane_exists(const Project& p, int s)
{
    return s >= 1 && s <= p.zgrid.planes;
}

static bool mesh_fits(const Project& p)
{
    return p.num_rows <= p.zgrid.rows && p.num_cols <= p.zgrid.cols;
}

static int method_of(const Project& p, int s)
{
    return s >= 0 && s <= surface_capacity ? p.surf_method[std::size_t(s)] : 0;
}

static float depth_of(const Project& p, int s)
{
    return s >= 0 && s <= surface_capacity ? p.surf_depth[std::size_t(s)] : 0.0f;
}

void rebuild_surfaces(Project& p, Port& port)
{
    BusyPointer busy(port);
    const bool fits = mesh_fits(p);
    const int nl = p.num_layers;

    // 1. Planes drawn by sections, the sliding plane included.
    for (int s = 1; s <= p.sliding_index; ++s)
        if (method_of(p, s) == 0)
            interpolate_surface(p, s);

    if (fits) {
        // 2. Constant-depth layers hang from the plane above, as it stands.
        for (int s = nl; s >= 1; --s)
            if (method_of(p, s) == 2 && plane_exists(p, s + 1))
                hang_plane(p, s, s + 1, depth_of(p, s));
        // 3. The first piezometric surface hangs from the ground.
        if (method_of(p, nl + 1) == 2 && plane_exists(p, nl + 1) && plane_exists(p, nl))
            hang_plane(p, nl + 1, nl, depth_of(p, nl + 1));
        // 4. Each further one from the one before it.
        for (int s = nl + 2; s <= p.num_surfaces; ++s)
            if (method_of(p, s) == 2 && plane_exists(p, s))
                hang_plane(p, s, s - 1, depth_of(p, s));
    }

    // 5.
    p.grid_blank = grid_blank_value();
    if (p.surface_defined == 0)
        hide_solve_menu(p);

    if (fits) {
        // 6. Blanked grid-file nodes take the base of Z.
        for (int s = 1; s <= p.sliding_index; ++s) {
            if (method_of(p, s) != 1 || !plane_exists(p, s))
                continue;
            for (int i = 1; i <= p.num_rows; ++i)
                for (int j = 1; j <= p.num_cols; ++j)
                    if (p.zgrid(i, j, s) == p.grid_blank)
                        p.zgrid(i, j, s) = p.base_z;
        }

        // 7, 8. No layer may rise above a layer over it. The lower surface
        // gives way; grid-file planes and the ground never move. Descending,
        // so a layer is compared with layers already corrected.
        for (int s = nl - 1; s >= 1; --s) {
            if (method_of(p, s) == 1 || !plane_exists(p, nl))
                continue;
            bool changed = false;
            for (int i = 1; i <= p.num_rows; ++i)
                for (int j = 1; j <= p.num_cols; ++j) {
                    float& z = p.zgrid(i, j, s);
                    for (int k = s + 1; k <= nl; ++k) {
                        const float above = p.zgrid(i, j, k);
                        if (z > above) {
                            z = above;
                            changed = true;
                        }
                    }
                }
            if (changed && p.sections.n(1, s) > 0)
                port.message_box("Line crossing conflict has been corrected by adjusting surface " + str(s),
                                 Buttons::ok, Icon::information, "TOBEL-3");
        }
    }
}

void mirror_model(Project& p, Port& port)
{
    BusyPointer busy(port);
    const float m = p.y_max;
    p.y_max = p.y_max - p.y_min;
    p.y_min = 0;

    // Lines reversed so that they stay in increasing Y.
    const int last_section = std::min<int>(p.num_sections, section_capacity);
    const int last_surface = std::min<int>(p.sliding_index, section_surface_capacity);
    for (int sec = 1; sec <= last_section; ++sec)
        for (int k = 1; k <= last_surface; ++k) {
            const int n = std::min<int>(p.sections.n(sec, k), section_point_capacity);
            for (int a = 1, b = n; a < b; ++a, --b) {
                std::swap(p.sections.y(sec, a, k), p.sections.y(sec, b, k));
                std::swap(p.sections.z(sec, a, k), p.sections.z(sec, b, k));
            }
            for (int a = 1; a <= n; ++a)
                p.sections.y(sec, a, k) = m - p.sections.y(sec, a, k);
        }

    p.single_y = m - p.single_y;
    // Mirrored and exchanged, so that the lower limit stays the lower.
    p.grid_y_ul = m - p.grid_y_ul;
    p.grid_y_lr = m - p.grid_y_lr;
    std::swap(p.grid_y_ul, p.grid_y_lr);
    p.auto_y = m - p.auto_y;

    const int wedges = std::min<int>(p.num_wedges, wedge_capacity);
    for (int w = 1; w <= wedges; ++w) {
        p.wedge_y[std::size_t(w)] = m - p.wedge_y[std::size_t(w)];
        const float d = p.wedge_dipdir[std::size_t(w)];
        p.wedge_dipdir[std::size_t(w)] = d > 0 ? (90.0f - d) + 90.0f : (-90.0f - d) - 90.0f;
    }

    const int forces = std::min<int>(p.num_forces, force_capacity);
    for (int f = 1; f <= forces; ++f)
        p.force_y[std::size_t(f)] = m - p.force_y[std::size_t(f)];

    p.crack_y = m - p.crack_y;

    rebuild_surfaces(p, port);
}

} // namespace tobel
