#include "solver/validity.h"

#include <cmath>

#include "surfaces/base_trig.h"
#include "surfaces/trial_region.h"

namespace tobel {

// Below this share of the absolute driving weight the slide has no
// direction: a symmetric lens in flat ground gives a meaningless F.
constexpr double no_direction_share = 0.02;

double driving_direction(const Project& p)
{
    // Beyond the region the last trial dirtied every weight is 0.
    const NodeBox b = result_region(p);
    double net = 0, total = 0;
    for (int r = b.r0; r <= b.r1; ++r)
        for (int c = b.c0; c <= b.c1; ++c) {
            const double w = p.col_weight(r, c);
            if (!(w > 0))
                continue;
            // surf_dip_y rises towards +Y where the mass moves towards -Y.
            const float dip_y = p.surf_dip_y(r, c);
            const BaseTrig* e = find_base_trig(p.work, r, c, p.surf_dip_x(r, c), dip_y);
            const double along = w * (e != nullptr ? e->sin_a : std::sin(double(dip_y)));
            if (!std::isfinite(along))
                continue;
            net += along;
            total += std::fabs(along);
        }
    return total > 0 ? net / total : 0.0;
}

// The surface cuts the ground at some node.
static bool cuts_ground(const Project& p)
{
    const NodeBox b = result_region(p);
    for (int r = b.r0; r <= b.r1; ++r)
        for (int c = b.c0; c <= b.c1; ++c)
            if (p.zgrid(r, c, p.sliding_index) != p.zgrid(r, c, p.num_layers))
                return true;
    return false;
}

ResultFlaw result_flaw(const Project& p)
{
    if (p.num_rows < 1 || p.num_cols < 1 || p.sliding_index < 1 || !cuts_ground(p))
        return ResultFlaw::outside_geometry;
    if (p.active_columns <= 0)
        return ResultFlaw::no_active_column;
    const double direction = driving_direction(p);
    if (direction < -no_direction_share)
        return ResultFlaw::moves_towards_plus_y;
    if (direction <= no_direction_share)
        return ResultFlaw::no_driving_force;
    const float f = p.factor_of_safety;
    if (f == 0)
        return ResultFlaw::failed;
    if (!std::isfinite(f))
        return ResultFlaw::not_finite;
    if (f < 0)
        return ResultFlaw::negative;
    return ResultFlaw::none;
}

std::string result_flaw_text(ResultFlaw flaw)
{
    switch (flaw) {
    case ResultFlaw::none: return "valid";
    case ResultFlaw::outside_geometry:
        return "the sliding surface lies outside the geometry (it does not cut the ground)";
    case ResultFlaw::no_active_column: return "the sliding surface has no active column";
    case ResultFlaw::moves_towards_plus_y:
        return "the slide moves towards +Y; the mass must move towards -Y (toe at low Y): use Edit > "
               "Geometry "
               "Options > Mirror";
    case ResultFlaw::no_driving_force:
        return "the slide has no net driving weight along the motion (-Y); its factor of safety means "
               "nothing";
    case ResultFlaw::failed: return "the solution failed (factor of safety 0)";
    case ResultFlaw::not_finite: return "the factor of safety is not a finite number";
    case ResultFlaw::negative: return "the factor of safety is negative";
    }
    return "invalid";
}

} // namespace tobel
