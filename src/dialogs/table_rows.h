// The scrolled tables of the dialogs: which line stands at the top of the
// lines in view.
#pragma once

namespace tobel {

// The top line that keeps `row` among `visible` lines, moving the view no
// more than needed; never above line 1.
inline int top_row_showing(int row, int top_row, int visible)
{
    if (row < top_row)
        top_row = row;
    if (row > top_row + visible - 1)
        top_row = row - visible + 1;
    return top_row < 1 ? 1 : top_row;
}

} // namespace tobel
