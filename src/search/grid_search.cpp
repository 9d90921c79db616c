#include "search/grid_search.h"

#include <cstddef>
#include <string>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "search/trial.h"

namespace tobel {

void build_grid_points(SearchState& s, const GridSearchRecord& r)
{
    s.grid_dy = r.grid_ny == 1 ? 0.0f : (r.grid_y2 - r.grid_y1) / (r.grid_ny - 1);
    s.grid_dz = r.grid_nz == 1 ? 0.0f : (r.grid_z_top - r.grid_z_bottom) / (r.grid_nz - 1);
    s.point_last = -1;
    // The counts are singles; the loops run while the index does not pass count - 1.
    long last = -1;
    for (long i = 0; double(i) <= double(r.grid_nz) - 1; ++i)
        for (long j = 0; double(j) <= double(r.grid_ny) - 1; ++j) {
            const long k = cint(double(i) * double(r.grid_ny) + double(j));
            if (k < 0 || k > grid_point_capacity)
                throw RuntimeError(err_subscript, "grid search centre " + std::to_string(k));
            if (std::size_t(k) >= s.point_y.size()) {
                s.point_y.resize(std::size_t(k) + 1, 0.0f);
                s.point_z.resize(std::size_t(k) + 1, 0.0f);
            }
            s.point_y[std::size_t(k)] = r.grid_y1 + float(j) * s.grid_dy;
            s.point_z[std::size_t(k)] = r.grid_z_top - float(i) * s.grid_dz;
            last = k;
        }
    s.point_last = last;
}

bool grid_search(Project& p, Port& port, const GridSearchRecord& r)
{
    SearchState& s = p.search;
    s.trial_count = 0;
    s.summary_count = 0;
    long first = 0;
    for (long k = 0; k <= s.point_last; ++k) {
        evaluate_centre(p, port, s.point_y[std::size_t(k)], s.point_z[std::size_t(k)], r.grid_point_y,
                        r.grid_point_z, r.grid_tangent_z, r.grid_radius_step, s.grid_dy, s.grid_dz);
        if (s.search_abort != 0) {
            s.search_abort = 0;
            return false;
        }
        if (p.surface_out_flag == -1) {
            // The first best is the first centre in bounds.
            if (k == first)
                ++first;
        } else if (k == first || s.trial.fos < s.best.fos) {
            accept_best(p, k);
        }
    }
    if (s.fos_max != 0 && s.fos_min != 0) {
        show_final(p, port, s.grid_dy, s.grid_dz);
        return true;
    }
    return false;
}

} // namespace tobel
