#include "project/search_state.h"

namespace tobel {

void clear_search(SearchState& s)
{
    // The panel's place on the picture is the user's and survives a new project.
    const float left = s.panel_left, top = s.panel_top;
    s = SearchState{};
    s.panel_left = left;
    s.panel_top = top;
}

} // namespace tobel
