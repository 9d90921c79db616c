#include "solver/checks.h"

#include "report/messages.h"

namespace tobel {

void check_surface(Project& p)
{
    p.message_count = 0;
    p.surface_out_flag = 0;
    const int si = p.sliding_index, nl = p.num_layers;
    bool cuts = false;
    for (int c = 1; c <= p.num_cols && !cuts; ++c)
        for (int r = 1; r <= p.num_rows; ++r)
            if (p.zgrid(r, c, si) != p.zgrid(r, c, nl)) {
                cuts = true;
                break;
            }
    if (!cuts) {
        add_message(p, "  SURFACE DOES NOT INTERSECT GEOMETRY");
        p.surface_out_flag = -1;
        return;
    }
    // Every row must come back to the ground at both ends.
    auto on_or_above = [&](int r, int c) { return p.zgrid(r, c, si) >= p.zgrid(r, c, nl); };
    for (int r = 1; r <= p.num_rows; ++r) {
        if (!on_or_above(r, 1) || !on_or_above(r, p.num_cols)) {
            p.surface_out_flag = -1;
            add_message(p, "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN MOTION DIRECTION");
            break;
        }
    }
    // Across the motion it is only a warning; a single row has no such sides.
    for (int c = 1; c <= p.num_cols; ++c) {
        if (!on_or_above(1, c) || !on_or_above(p.num_rows, c)) {
            if (p.num_rows > 1)
                add_message(p, "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN LATERAL DIRECTION");
            break;
        }
    }
}

void reset_forces(Project& p)
{
    for (int f = 0; f <= force_capacity; ++f) {
        p.force_v_ignored[f] = 0;
        p.force_h_ignored[f] = 0;
    }
    for (auto& w : p.head_water_force)
        w = 0;
    for (auto& w : p.crack_water_force)
        w = 0;
}

} // namespace tobel
