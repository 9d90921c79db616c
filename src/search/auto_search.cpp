#include "search/auto_search.h"

#include <cstddef>
#include <vector>

#include "search/centre_queue.h"
#include "search/trial.h"

namespace tobel {

void build_stencil(SearchState& st, float y, float z, float s)
{
    const float ym = y - s, yp = y + s, zm = z - s, zp = z + s;
    st.stencil_y = {y, ym, ym, ym, y, yp, yp, yp, y};
    st.stencil_z = {z, zp, z, zm, zm, zm, z, zp, zp};
}

void skip_range(int best_point, std::int16_t& skip_from, std::int16_t& skip_to)
{
    static constexpr std::int16_t from[9] = {0, 4, 4, 6, 6, 8, 8, 2, 2};
    static constexpr std::int16_t to[9] = {0, 6, 8, 8, 2, 2, 4, 4, 6};
    const int b = best_point >= 0 && best_point <= 8 ? best_point : 0;
    skip_from = from[b];
    skip_to = to[b];
}

bool point_skipped(int point, int skip_from, int skip_to)
{
    if (skip_to > skip_from)
        return point >= skip_from && point <= skip_to;
    if (skip_to < skip_from)
        return point >= skip_from || point <= skip_to;
    return false;
}

bool auto_search(Project& p, Port& port, const AutoSearchRecord& r)
{
    SearchState& s = p.search;
    // 1.
    start_counts(s);
    s.summary_count = 0;
    s.skip_from = s.skip_to = 0;
    float cy = r.auto_y, cz = r.auto_z;
    s.best.best_point = 0;
    s.round = 0;
    bool accepted = false;
    const float step = r.auto_step;
    CentreQueue queue(p, port);
    for (;;) {
        // 2.
        build_stencil(s, cy, cz, step);
        skip_range(s.best.best_point, s.skip_from, s.skip_to);
        s.best.best_point = 0;
        // 3. The points of the round are evaluated (at once, on several
        // threads), then taken in order of p as the walk always took them.
        std::vector<CentreJob> jobs;
        for (int pt = 0; pt <= 8; ++pt) {
            if (pt == 0 && s.round > 0)
                continue;
            if (point_skipped(pt, s.skip_from, s.skip_to))
                continue;
            jobs.push_back({pt, s.stencil_y[std::size_t(pt)], s.stencil_z[std::size_t(pt)], r.auto_point_y,
                            r.auto_point_z, r.auto_tangent_z, r.auto_radius_step, step, step});
        }
        bool no_result = false;
        const bool ended = queue.run(jobs, [&](const CentreOutcome& o) {
            const int pt = int(o.index);
            s.current_point = std::int16_t(pt);
            replay_centre(p, port, o, step, step);
            if (s.search_abort != 0)
                return false;
            if (p.surface_out_flag == -1 && s.trial_count == 0) {
                no_result = true;
                return false;
            }
            // An out-of-bounds point leaves the trial record as it was, which
            // never beats the best.
            if (trial_may_be_best(s) && (s.trial.fos < s.best.fos || !accepted)) {
                accept_best(p, pt);
                accepted = true;
            }
            return true;
        });
        if (!ended || s.search_abort != 0) {
            s.search_abort = 0;
            s.stop_reason = "stopped by the user";
            return false;
        }
        if (no_result)
            return false;
        // 4.
        if (s.best.best_point == 0)
            break;
        cy = s.best.y;
        cz = s.best.z;
        ++s.round;
    }
    // With valid results only, a first stencil without one has no result.
    if (!accepted)
        return false;
    // 5.
    show_final(p, port, step, step);
    if (DrawHooks* const hooks = port.draw_hooks())
        hooks->search_ended(p);
    return true;
}

} // namespace tobel
