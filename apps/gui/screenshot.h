// tobel-gui --screenshot OUT.png [--view NAME] [FILE]: the main window with
// one view of a data file, grabbed to a PNG without any dialog.
#pragma once

#include <string>

namespace tobel::gui {

class MainWindow;

// The views a screenshot can show.
inline constexpr const char* screenshot_views[] = {"isometry",    "longitudinal", "lateral", "plan",
                                                   "plan-active", "xray",         "search",  "editor"};

// Opens `file` (when given) through the Open command without its dialog,
// brings up `view` (empty: what the Open shows), grabs the window to `out`.
// Returns 0, or 1 with the reason on standard error.
int take_screenshot(MainWindow& w, const std::string& out, const std::string& view, const std::string& file);

} // namespace tobel::gui
