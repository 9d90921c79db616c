#include "project/search_state.h"

namespace tobel {

void clear_search(SearchState& s)
{
    // The panel's place on the picture is the user's and survives a new project.
    // So is the choice of valid results only.
    const float left = s.panel_left, top = s.panel_top;
    const bool valid_only = s.valid_only;
    s = SearchState{};
    s.panel_left = left;
    s.panel_top = top;
    s.valid_only = valid_only;
}

} // namespace tobel
