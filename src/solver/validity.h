// Whether a solved trial is a result an engineer may use. The methods leave
// F = 0 on failure and may leave a negative or meaningless F on a surface
// that does not describe a slide down the slope; such a result is kept as the
// methods leave it, and this tells why it is not valid.
#pragma once

#include <string>

#include "project/project.h"

namespace tobel {

enum class ResultFlaw {
    none,
    outside_geometry,     // the surface does not cut the ground
    no_active_column,     // nothing slides
    moves_towards_plus_y, // the slide's weight drives it towards +Y
    no_driving_force,     // no net weight along the motion (a lens in flat ground)
    failed,               // F = 0: the method failed
    not_finite,           // F is not a number
    negative,             // F below 0
};

// The first flaw of the last solution, in the order of the enum.
ResultFlaw result_flaw(const Project& p);

// Short text of a flaw, for warnings: "the solution failed (F = 0)" etc.
std::string result_flaw_text(ResultFlaw flaw);

// The net weight component along the motion over the active columns, as a
// fraction of the absolute one: +1 all of it drives towards -Y (as the mesh
// convention wants), -1 all towards +Y; 0 when nothing is active. Uses the
// last solution's col_weight and the sliding surface's surf_dip_y.
double driving_direction(const Project& p);

} // namespace tobel
