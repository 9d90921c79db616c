#include "solver/trial_end.h"

#include "surfaces/trial_region.h"

namespace tobel {

void end_solver_trial(Project& p)
{
    SolverWork& w = p.work;
    if (w.armed && w.swept) {
        w.known = true;
        w.stamp = mesh_stamp(p);
        w.dirty = w.box;
    } else if (!w.armed) {
        w.known = false;
    }
    // An armed set-up cut short leaves the record as the ellipsoid left it:
    // the region dirtied, or nothing known.
    w.armed = false;
    w.swept = false;
}

} // namespace tobel
