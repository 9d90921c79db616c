#include "solver/external_forces.h"

#include <cmath>

#include "project/numtext.h"

namespace tobel {

// The mesh index nearest to an offset from the first node; 0 when the offset
// is nowhere near the mesh or the spacing gives no number at all.
static long nearest_node(double offset, float spacing)
{
    const double k = offset / double(spacing);
    if (!(std::abs(k) < 1e6))
        return 0;
    return cint(k) + 1;
}

void place_external_forces(Project& p)
{
    const int si = p.sliding_index, nl = p.num_layers;
    for (int f = 1; f <= p.num_forces; ++f) {
        p.force_v_ignored[f] = 0;
        p.force_h_ignored[f] = 0;
        const long r = nearest_node(double(p.force_x[f]) - double(p.x_min), p.row_spacing);
        const long c = nearest_node(double(p.force_y[f]) - double(p.y_min), p.col_spacing);
        if (r < 1 || r > p.num_rows || c < 1 || c > p.num_cols) {
            p.force_v_ignored[f] = 1;
            p.force_h_ignored[f] = 1;
            continue;
        }
        const int ri = int(r), ci = int(c);
        p.zgrid.take_rows(ri, ri);
        const float fz = p.force_z[f];
        if (!(p.zgrid(ri, ci, nl) > p.zgrid(ri, ci, si)))
            p.force_v_ignored[f] = 1;
        // The horizontal part needs the mass at the force's elevation somewhere in its row.
        bool within = false;
        for (int j = 1; j <= p.num_cols; ++j) {
            if (p.zgrid(ri, j, si) < fz && p.zgrid(ri, j, nl) >= fz) {
                within = true;
                break;
            }
        }
        if (!within)
            p.force_h_ignored[f] = 1;
        if (fz < p.zgrid(ri, ci, si))
            p.force_v_ignored[f] = 1;
        if (p.force_v_ignored[f] == 0) {
            p.col_weight(ri, ci) = float(double(p.col_weight(ri, ci)) + double(p.force_v[f]));
            p.ext_vertical_sum = float(double(p.ext_vertical_sum) + double(p.force_v[f]));
        }
    }
}

} // namespace tobel
