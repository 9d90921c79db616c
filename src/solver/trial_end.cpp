#include "solver/trial_end.h"

#include "surfaces/trial_region.h"

namespace tobel {

void end_solver_trial(Project& p)
{
    SolverWork& w = p.work;
    if (w.armed && w.swept) {
        w.known = true;
        w.stamp = mesh_stamp(p);
        // Beyond the nodes the ellipsoid cut every node of the region is on
        // the ground, without dips and with the results of an inactive node,
        // unless the plane was lifted out of a hard layer somewhere.
        const bool lifted = p.surface_lifted != 0 || w.outside_dips != 0;
        w.dirty = lifted || p.surface_kind != 1 ? w.box : w.cut;
    } else if (!w.armed) {
        w.known = false;
    }
    // An armed set-up cut short leaves the record as the ellipsoid left it:
    // the region dirtied, or nothing known.
    w.armed = false;
    w.swept = false;
}

} // namespace tobel
