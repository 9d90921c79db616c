#include "search/grid_search.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "search/centre_queue.h"
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
    start_counts(s);
    s.summary_count = 0;
    CentreExchange* const exchange = s.exchange.get();
    const bool replays = exchange == nullptr || exchange->replays();
    std::vector<CentreJob> jobs;
    for (long k = 0; k <= s.point_last; ++k)
        if (exchange == nullptr || exchange->evaluates(k))
            jobs.push_back({k, s.point_y[std::size_t(k)], s.point_z[std::size_t(k)], r.grid_point_y,
                            r.grid_point_z, r.grid_tangent_z, r.grid_radius_step, s.grid_dy, s.grid_dz});

    long first = 0;
    // 4. What one centre's outcome does to the search, in the order of k.
    auto replay = [&](const CentreOutcome& o) {
        const long k = o.index;
        replay_centre(p, port, o, s.grid_dy, s.grid_dz);
        if (s.search_abort != 0)
            return;
        if (p.surface_out_flag == -1 || !trial_may_be_best(s)) {
            // The first best is the first centre in bounds (and valid, when
            // only valid results may win).
            if (k == first)
                ++first;
        } else if (k == first || s.trial.fos < s.best.fos) {
            accept_best(p, k);
        }
    };
    // Centres evaluated by other runs come in between, in order.
    long next = 0;
    auto replay_given_until = [&](long k) {
        for (; next < k && s.search_abort == 0; ++next)
            if (exchange != nullptr && !exchange->evaluates(next))
                replay(exchange->given(next));
    };
    CentreQueue queue(p, port);
    const bool ended = queue.run(jobs, [&](const CentreOutcome& o) {
        if (!replays) {
            if (!o.cancelled)
                exchange->evaluated(o);
            return true;
        }
        replay_given_until(o.index);
        if (s.search_abort == 0)
            replay(o);
        next = o.index + 1;
        return s.search_abort == 0;
    });
    if (ended && replays)
        replay_given_until(s.point_last + 1);
    if (s.search_abort != 0) {
        s.search_abort = 0;
        s.stop_reason = "stopped by the user";
        return false;
    }
    if (!replays)
        return false;
    bool shown = false;
    if (!(s.valid_only && s.best.trial_number == 0) && s.fos_max != 0 && s.fos_min != 0) {
        show_final(p, port, s.grid_dy, s.grid_dz);
        shown = true;
    }
    // The contours of F, whether or not there is a final surface.
    if (DrawHooks* const hooks = port.draw_hooks())
        hooks->search_ended(p);
    return shown;
}

// The centres of the grid are exact singles of point_y and point_z, and so
// are the records' centres: equality is the test of a side.
bool on_grid_edge(const SearchState& s, float y, float z)
{
    if (s.point_last < 0)
        return false;
    float y_lo = s.point_y[0], y_hi = y_lo, z_lo = s.point_z[0], z_hi = z_lo;
    for (long k = 1; k <= s.point_last; ++k) {
        y_lo = std::min(y_lo, s.point_y[std::size_t(k)]);
        y_hi = std::max(y_hi, s.point_y[std::size_t(k)]);
        z_lo = std::min(z_lo, s.point_z[std::size_t(k)]);
        z_hi = std::max(z_hi, s.point_z[std::size_t(k)]);
    }
    const bool across_y = y_hi > y_lo, across_z = z_hi > z_lo;
    return (across_y && (y == y_lo || y == y_hi)) || (across_z && (z == z_lo || z == z_hi));
}

} // namespace tobel
