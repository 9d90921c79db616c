// The part of the mesh a search trial works on. A trial visits its slide's
// box and the box the last trial dirtied; every other node already holds
// what a sweep of the whole mesh would write there, and is left alone.
#pragma once

#include "project/project.h"

namespace tobel {

// The stamp of the project's mesh as it stands.
MeshStamp mesh_stamp(const Project& p);

// The record describes this mesh: outside work.dirty every node holds what a
// trial leaves beside its slide. Never outside a running search.
bool work_record_holds(const Project& p);

// The trials of this project may visit part of the mesh once the record
// holds: ellipsoids, with a method and a crack that reach no further than
// the slide (a crack placed by a negative depth reaches beyond any slide).
bool trials_may_be_bounded(const Project& p);

// An ellipsoid of a search trial, built over a region of the mesh whose other
// nodes hold what a trial leaves beside its slide, is being worked on.
bool trial_bounded(const Project& p);

// The nodes a routine of the trial visits: work.region while a bounded trial
// is armed, otherwise the whole mesh.
NodeBox trial_region(const Project& p);

// The nodes a solver visits: work.visit while a bounded trial is armed,
// otherwise the whole mesh. Within work.region and beyond work.visit every
// node is inactive and holds the results of an inactive node already.
NodeBox solve_region(const Project& p);

// The nodes that may differ from what a trial leaves beside its slide, for
// the readers after a solve: work.dirty when the record holds, otherwise the
// whole mesh.
NodeBox result_region(const Project& p);

} // namespace tobel
