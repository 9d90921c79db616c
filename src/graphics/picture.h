// The picture windows as the views use them: bring one up, draw on its kept
// picture, set the main window's title.
#pragma once

#include <string>

#include "graphics/recording_surface.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The window exists from now on; unless redraw_only it is shown through the
// port with its caption and the present view_mode.
void bring_up(Project& p, PictureWindow& w, Port& port);

// A surface that draws on the window's kept picture, at the picture size of
// the views (p.view.picture_width by picture_height device units).
RecordingSurface picture_surface(Project& p, PictureWindow& w);

// A surface on a kept picture takes up the window the picture was drawn in,
// so that what is added registers with what is there; the shared world
// window of the views when the picture has none yet.
void resume_picture(const Project& p, RecordingSurface& s);

// "TOBEL_3          File " + data_file_path + suffix.
void set_main_title(Project& p, const std::string& suffix);

} // namespace tobel
