#include "surfaces/crack.h"

#include <cmath>
#include <cstddef>
#include <string>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/messages.h"
#include "surfaces/dips.h"
#include "surfaces/moment_centre.h"

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
static void lift_out_of_hard_layers(Project& p)
{
    const int s = p.sliding_index;
    p.surface_lifted = 0;
    for (int layer = 1; layer <= p.num_layers - 1; ++layer) {
        if (!(p.mat_phi[std::size_t(layer)] > 80.0f))
            continue;
        for (int row = 1; row <= p.num_rows; ++row) {
            for (int col = 1; col <= p.num_cols; ++col) {
                const float top = p.zgrid(row, col, layer);
                if (p.zgrid(row, col, s) <= top) {
                    p.zgrid(row, col, s) = float(double(top) + 0.01);
                    p.disc_code(row, col) = 0;
                    p.surface_lifted = 1;
                }
            }
        }
    }
}

// Mode 2: the crack lies where, walking from the head down the middle row,
// the slide first gets deeper than the crack.
static void place_crack_by_depth(Project& p)
{
    const float span = p.x_max - p.x_min;
    const float rows_across = span / p.row_spacing;
    int m = int(cint(double(rows_across / 2.0f)));
    if (m == 0)
        m = 1;
    if (m < 0 || m > p.zgrid.rows)
        throw RuntimeError(err_subscript, "middle row " + std::to_string(m) + " of the tension crack");
    const int ground = p.num_layers, s = p.sliding_index;
    for (int col = p.num_cols; col >= 1; --col) {
        const float depth = p.zgrid(m, col, ground) - p.zgrid(m, col, s);
        if (depth > p.crack_depth) {
            p.crack_y = head_edge_y(p, col);
            return;
        }
    }
    add_message(p, "TENSION CRACK SPECIFIED TOO DEEP");
}

void apply_crack(Project& p)
{
    lift_out_of_hard_layers(p);
    if (p.surface_lifted == 1) {
        find_moment_centre(p);
        derive_dips(p);
    }

    if (p.crack_mode == 0) {
        for (int row = 1; row <= p.num_rows; ++row) {
            p.crack_water_force[std::size_t(row)] = 0.0f;
            p.crack_water_z[std::size_t(row)] = 0.0f;
        }
        return;
    }
    if (p.crack_mode == 2)
        place_crack_by_depth(p);

    // A crack in front of the third node leaves the slide and the thrusts
    // as they are.
    if (head_edge_y(p, 2) > p.crack_y)
        return;

    const int ground = p.num_layers, s = p.sliding_index;
    for (int row = 1; row <= p.num_rows; ++row) {
        bool found = false;
        for (int col = 1; col <= p.num_cols; ++col) {
            if (!(head_edge_y(p, col) >= p.crack_y))
                continue;
            // The slide ends at the crack: no thickness from here on.
            p.zgrid(row, col, s) = p.zgrid(row, col, ground);
            if (found)
                continue;
            found = true;
            // The thrust of the water in the crack acts on the last column
            // that carries the slide.
            const float depth = p.zgrid(row, col - 1, ground) - p.zgrid(row, col - 1, s);
            const float h = depth * p.crack_water_pct / 100.0f;
            const float force = h * h * p.row_spacing * p.unit_weight_water / 2.0f;
            p.crack_water_force[std::size_t(row)] = force;
            p.crack_water_z[std::size_t(row)] = p.zgrid(row, col - 1, s) + h / 3.0f;
        }
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
