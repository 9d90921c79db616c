#include "commands/across_search.h"

#include <memory>

#include "commands/search_commands.h"
#include "commands/surface_commands.h"

namespace tobel {

namespace {

// The port of one search of the set: it shows nothing, answers as told, and
// passes a stop request on at the search's checks between trials.
class AcrossPort : public QuietPort {
  public:
    AcrossPort(Answer answer, const std::function<bool()>& stop) : QuietPort(answer), stop_(stop) {}
    bool yield() override { return stop_ && stop_(); }

  private:
    const std::function<bool()>& stop_;
};

} // namespace

std::vector<std::pair<float, float>> across_pairs(const AcrossPlan& plan)
{
    std::vector<std::pair<float, float>> pairs;
    for (const float x : across_values(plan.x0, plan.x1, plan.dx))
        for (const float a : plan.aspects)
            pairs.emplace_back(x, a);
    return pairs;
}

AcrossCell run_across_cell(const Project& base, const AcrossPlan& plan, float x, float aspect)
{
    AcrossCell cell;
    cell.x = x;
    cell.aspect = aspect;
    // A project is large; it lives on the heap for the length of the search.
    auto p = std::make_unique<Project>(base);
    p->search_x = x;
    p->aspect_in = aspect;
    p->solution_method = int16(plan.method);
    p->search.valid_only = plan.valid_only;
    AcrossPort port(plan.answer, plan.stop_request);
    if (!confirm_search_setup(*p, port, plan.grid, plan.composite))
        return cell;
    if (plan.grid)
        solve_grid_search(*p, port);
    else
        solve_auto_search(*p, port);
    if (p->check_fatal != 0)
        return cell;
    const SearchState& s = p->search;
    cell.set_up = true;
    if (s.best.trial_number > 0)
        cell.best = s.best;
    cell.best_valid = s.best_valid;
    cell.trial_count = s.trial_count;
    cell.fos_min = s.fos_min;
    cell.fos_max = s.fos_max;
    cell.stop_reason = s.stop_reason;
    return cell;
}

AcrossResult across_search(const Project& base, const AcrossPlan& plan, ParallelRunner& run)
{
    const std::vector<std::pair<float, float>> pairs = across_pairs(plan);
    AcrossResult result;
    result.cells.resize(pairs.size());
    // Each task writes its own cell only.
    run.run(int(pairs.size()), [&](int i) {
        const std::size_t k = std::size_t(i);
        result.cells[k] = run_across_cell(base, plan, pairs[k].first, pairs[k].second);
    });
    total_across(result);
    return result;
}

} // namespace tobel
