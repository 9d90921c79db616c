// tobel-gui --screenshot OUT.png [--view NAME] [FILE]: the main window with
// one view of a data file, grabbed to a PNG without any dialog.
#pragma once

#include <string>

namespace tobel::gui {

class MainWindow;

// The views a screenshot can show.
// "search-progress" is a grid search paused part way, with the contours of
// the centres so far and the search information window; "report-preview"
// the print preview of the report of the stored surface solved.
inline constexpr const char* screenshot_views[] = {"isometry",        "longitudinal",  "lateral", "plan",
                                                   "plan-active",     "xray",          "search",  "editor",
                                                   "search-progress", "report-preview"};

// Opens `file` (when given) through the Open command without its dialog,
// brings up `view` (empty: what the Open shows), grabs the window to `out`.
// Returns 0, or 1 with the reason on standard error.
int take_screenshot(MainWindow& w, const std::string& out, const std::string& view, const std::string& file);

} // namespace tobel::gui
