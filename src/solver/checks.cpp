#include "solver/checks.h"

#include "report/messages.h"
#include "surfaces/trial_region.h"

namespace tobel {

void check_surface(Project& p)
{
    p.message_count = 0;
    p.surface_out_flag = 0;
    const int si = p.sliding_index, nl = p.num_layers;
    // Row by row, the way the grids are laid out; beyond the trial's region
    // the plane lies on the ground.
    const NodeBox region = trial_region(p);
    p.zgrid.take_rows(region.r0, region.r1);
    bool cuts = false;
    for (int r = region.r0; r <= region.r1 && !cuts; ++r)
        for (int c = region.c0; c <= region.c1; ++c)
            if (p.zgrid(r, c, si) != p.zgrid(r, c, nl)) {
                cuts = true;
                break;
            }
    if (!cuts) {
        add_message(p, "  SURFACE DOES NOT INTERSECT GEOMETRY");
        p.surface_out_flag = -1;
        p.work.armed = false; // no solve follows
        return;
    }
    // Every row must come back to the ground at both ends.
    // Beyond the region the plane lies on the ground: only its nodes can fail.
    auto on_or_above = [&](int r, int c) {
        return !region.has(r, c) || p.zgrid(r, c, si) >= p.zgrid(r, c, nl);
    };
    for (int r = region.r0; r <= region.r1; ++r) {
        if (!on_or_above(r, 1) || !on_or_above(r, p.num_cols)) {
            p.surface_out_flag = -1;
            p.work.armed = false; // no solve follows
            add_message(p, "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN MOTION DIRECTION");
            break;
        }
    }
    // Across the motion it is only a warning; a single row has no such sides.
    for (int c = region.c0; c <= region.c1; ++c) {
        if (!on_or_above(1, c) || !on_or_above(p.num_rows, c)) {
            if (p.num_rows > 1)
                add_message(p, "SLIDING SURFACE OUTSIDE PROBLEM BOUNDARY IN LATERAL DIRECTION");
            break;
        }
    }
}

void reset_forces(Project& p)
{
    // Every surface command and search set-up starts here, after whatever
    // changed the grids: the next trial sweeps the whole mesh.
    forget_solver_work(p.work);
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
