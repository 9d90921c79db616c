// The Qt application object that fonts and painting need.
#pragma once

namespace tobel {

// Makes sure a QGuiApplication exists; when none exists and QT_QPA_PLATFORM
// is unset, it is made on the offscreen platform so that it runs without a
// display. Safe to call many times.
void ensure_gui_application();

} // namespace tobel
