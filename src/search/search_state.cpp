#include "project/search_state.h"

#include <utility>

namespace tobel {

void clear_search(SearchState& s)
{
    // The panel's place on the picture is the user's and survives a new project.
    // So are the choice of valid results only and the runner of the centres.
    const float left = s.panel_left, top = s.panel_top;
    const bool valid_only = s.valid_only;
    auto runner = s.runner;
    auto exchange = s.exchange;
    s = SearchState{};
    s.runner = std::move(runner);
    s.exchange = std::move(exchange);
    s.panel_left = left;
    s.panel_top = top;
    s.valid_only = valid_only;
}

} // namespace tobel
