#include "search/across.h"

#include <cmath>
#include <cstddef>

namespace tobel {

namespace {
// More pairs than any engineer would ask for is a typing error, not a study.
constexpr std::size_t max_across_values = 100000;

} // namespace

std::vector<float> across_values(float x0, float x1, float dx)
{
    std::vector<float> xs;
    if (!(x1 >= x0) || !std::isfinite(x0) || !std::isfinite(x1))
        return xs;
    if (x1 == x0) {
        xs.push_back(x0);
        return xs;
    }
    if (!(dx > 0) || !std::isfinite(dx))
        return xs;
    // A last value within a millionth of a step of x1 belongs to the range:
    // 0, 0.1, ... 1 must end at 1 whatever the rounding of 0.1.
    const double end = double(x1) + double(dx) * 1e-6;
    for (std::size_t k = 0;; ++k) {
        const double x = double(x0) + double(k) * double(dx);
        if (x > end || xs.size() == max_across_values)
            break;
        xs.push_back(float(x));
    }
    return xs;
}

long best_across_cell(const std::vector<AcrossCell>& cells)
{
    long best = -1;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const AcrossCell& c = cells[i];
        if (c.best.trial_number <= 0)
            continue;
        if (best < 0 || c.best.fos < cells[std::size_t(best)].best.fos)
            best = long(i);
    }
    return best;
}

void total_across(AcrossResult& r)
{
    r.trial_count = 0;
    r.stopped = false;
    for (const AcrossCell& c : r.cells) {
        r.trial_count += c.trial_count;
        if (!c.stop_reason.empty())
            r.stopped = true;
    }
    r.best = best_across_cell(r.cells);
}

} // namespace tobel
