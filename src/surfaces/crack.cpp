#include "surfaces/crack.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/messages.h"
#include "surfaces/dips.h"
#include "surfaces/moment_centre.h"
#include "surfaces/trial_region.h"

namespace tobel {

// Y of the head-side edge of the column of node col: one spacing past the
// node. The crack is found, tested and cut with this one expression, in single
// precision, so that a crack placed from a node's edge cuts that very node.
static float head_edge_y(const Project& p, int col)
{
    const float offset = float(col) * p.col_spacing;
    return p.y_min + offset;
}

// A friction angle above 80 degrees marks a layer that the slide cannot
// enter: the plane is lifted to run just over its top.
static bool hard_layer(const Project& p, int layer)
{
    return p.mat_phi[std::size_t(layer)] > 80.0f;
}

// A node whose plane lies on the ground is lifted when a hard layer's top
// reaches the ground there.
static bool lifts_on_ground(const Project& p, int row, int col)
{
    const float ground = p.zgrid(row, col, p.num_layers);
    for (int layer = 1; layer <= p.num_layers - 1; ++layer)
        if (hard_layer(p, layer) && ground <= p.zgrid(row, col, layer))
            return true;
    return false;
}

// Lifts the nodes of `region`; true when a node of the mesh is lifted. Beyond
// the region the plane lies on the ground, and a node lifted there comes back
// to it with the dips: only whether there is one counts.
static bool lift_out_of_hard_layers(Project& p, const NodeBox& region, bool whole)
{
    const int s = p.sliding_index;
    bool any_hard = false;
    for (int layer = 1; layer <= p.num_layers - 1; ++layer)
        any_hard = any_hard || hard_layer(p, layer);
    if (!any_hard) {
        p.work.lift_nodes = 0;
        return false;
    }
    long on_ground = 0; // nodes of the region that a plane on the ground would lift
    for (int row = region.r0; row <= region.r1; ++row)
        for (int col = region.c0; col <= region.c1; ++col)
            if (lifts_on_ground(p, row, col))
                ++on_ground;
    bool lifted = false;
    for (int layer = 1; layer <= p.num_layers - 1; ++layer) {
        if (!hard_layer(p, layer))
            continue;
        for (int row = region.r0; row <= region.r1; ++row) {
            for (int col = region.c0; col <= region.c1; ++col) {
                const float top = p.zgrid(row, col, layer);
                if (p.zgrid(row, col, s) <= top) {
                    p.zgrid(row, col, s) = float(double(top) + 0.01);
                    p.disc_code(row, col) = 0;
                    lifted = true;
                }
            }
        }
    }
    if (whole)
        p.work.lift_nodes = on_ground;
    return lifted || (!whole && p.work.lift_nodes > on_ground);
}

// no_slide of a lifted ellipsoid, as find_moment_centre finds it over the
// whole mesh: beyond the region the plane stands where the lift put it.
static void lifted_no_slide(Project& p, const NodeBox& region)
{
    const int ground = p.num_layers, s = p.sliding_index;
    const bool beyond = p.work.lift_nodes > 0;
    const NodeBox scan = beyond ? whole_mesh(p.num_rows, p.num_cols) : region;
    float sum = 0.0f;
    for (int row = scan.r0; row <= scan.r1; ++row)
        for (int col = scan.c0; col <= scan.c1; ++col) {
            const float zg = p.zgrid.read(row, col, ground);
            float zs = p.zgrid.read(row, col, s);
            if (!region.has(row, col))
                for (int layer = 1; layer <= p.num_layers - 1; ++layer)
                    if (hard_layer(p, layer) && zs <= p.zgrid.read(row, col, layer))
                        zs = float(double(p.zgrid.read(row, col, layer)) + 0.01);
            sum = sum + (zg - zs);
        }
    p.no_slide = sum <= 0.0f ? 1 : 0;
}

// Mode 2: the crack lies where, walking from the head down the middle row,
// the slide first gets deeper than the crack. Beyond the region the depth is
// 0, never deeper than a crack of positive depth.
static void place_crack_by_depth(Project& p, const NodeBox& region)
{
    const float span = p.x_max - p.x_min;
    const float rows_across = span / p.row_spacing;
    int m = int(cint(double(rows_across / 2.0f)));
    if (m == 0)
        m = 1;
    if (m < 0 || m > p.zgrid.rows)
        throw RuntimeError(err_subscript, "middle row " + std::to_string(m) + " of the tension crack");
    const int ground = p.num_layers, s = p.sliding_index;
    if (region.has_row(m)) {
        for (int col = region.c1; col >= region.c0; --col) {
            const float depth = p.zgrid(m, col, ground) - p.zgrid(m, col, s);
            if (depth > p.crack_depth) {
                p.crack_y = head_edge_y(p, col);
                return;
            }
        }
    }
    add_message(p, "TENSION CRACK SPECIFIED TOO DEEP");
}

void apply_crack(Project& p)
{
    SolverWork& w = p.work;
    // The ellipsoid of a trial says which nodes it visited; anything else is
    // worked over the whole mesh.
    const bool bounded = trial_bounded(p);
    const NodeBox whole = whole_mesh(p.num_rows, p.num_cols);
    const NodeBox region = bounded ? w.region : whole;

    p.surface_lifted = lift_out_of_hard_layers(p, region, !bounded) ? 1 : 0;
    if (p.surface_lifted == 1) {
        // A lifted node beyond the cut may be active: the solver visits it all.
        w.visit = region;
        if (bounded) {
            lifted_no_slide(p, region);
            // The dips beyond the region are the ground's differences already,
            // unless the last trial left them 0.
            derive_dips_in(p, w.outside_dips == 1 ? region : whole);
        } else {
            find_moment_centre(p);
            derive_dips_in(p, whole);
        }
        w.outside_dips = 1;
    } else {
        if (bounded && w.outside_dips == 1)
            for (int row = 1; row <= p.num_rows; ++row)
                for (int col = 1; col <= p.num_cols; ++col)
                    if (!region.has(row, col)) {
                        p.surf_dip_x(row, col) = 0.0f;
                        p.surf_dip_y(row, col) = 0.0f;
                    }
        w.outside_dips = 0;
    }
    // A plane not built by the ellipsoid has its own dips beyond any slide.
    if (!w.armed)
        forget_solver_work(w);

    if (p.crack_mode == 0) {
        for (int row = 1; row <= p.num_rows; ++row) {
            p.crack_water_force[std::size_t(row)] = 0.0f;
            p.crack_water_z[std::size_t(row)] = 0.0f;
        }
        return;
    }
    if (p.crack_mode == 2)
        place_crack_by_depth(p, region);

    // A crack in front of the third node leaves the slide and the thrusts
    // as they are.
    if (head_edge_y(p, 2) > p.crack_y)
        return;

    // The first column at or past the crack, the same in every row.
    int first = 0;
    for (int col = 1; col <= p.num_cols && first == 0; ++col)
        if (head_edge_y(p, col) >= p.crack_y)
            first = col;
    if (first == 0)
        return;
    const int ground = p.num_layers, s = p.sliding_index;
    for (int row = 1; row <= p.num_rows; ++row) {
        // The slide ends at the crack: no thickness from here on. Beyond the
        // region the plane lies on the ground already.
        if (region.has_row(row))
            for (int col = std::max(first, region.c0); col <= region.c1; ++col)
                if (head_edge_y(p, col) >= p.crack_y)
                    p.zgrid(row, col, s) = p.zgrid(row, col, ground);
        // The thrust of the water in the crack acts on the last column
        // that carries the slide.
        const int col = first;
        const float zs = p.zgrid.read(row, col - 1, s);
        const float depth = p.zgrid.read(row, col - 1, ground) - zs;
        const float h = depth * p.crack_water_pct / 100.0f;
        const float force = h * h * p.row_spacing * p.unit_weight_water / 2.0f;
        p.crack_water_force[std::size_t(row)] = force;
        p.crack_water_z[std::size_t(row)] = zs + h / 3.0f;
    }
}

void scale_forces(Project& p)
{
    // Components are kept with their sign; the test is against the stored
    // signed value, so a negative peak lets any later size through.
    if (p.num_forces >= 1) {
        const float h1 = p.force_h[1], v1 = p.force_v[1];
        p.force_peak = std::fabs(h1) > std::fabs(v1) ? h1 : v1;
        for (int f = 2; f <= p.num_forces; ++f) {
            const float h = p.force_h[std::size_t(f)], v = p.force_v[std::size_t(f)];
            if (std::fabs(h) > p.force_peak)
                p.force_peak = h;
            if (std::fabs(v) > p.force_peak)
                p.force_peak = v;
        }
    }
    for (int row = 1; row <= p.num_rows; ++row) {
        const float head = p.head_water_force[std::size_t(row)];
        if (head != 0.0f && std::fabs(head) > p.force_peak)
            p.force_peak = std::fabs(head);
        const float crack = p.crack_water_force[std::size_t(row)];
        if (crack != 0.0f && std::fabs(crack) > p.force_peak)
            p.force_peak = std::fabs(crack);
    }
}

} // namespace tobel
