#include "graphics/picture.h"

namespace tobel {

void bring_up(Project& p, PictureWindow& w, Port& port)
{
    w.exists = true;
    if (!p.view.redraw_only)
        port.show_view(p.view_mode, w.caption);
}

RecordingSurface picture_surface(Project& p, PictureWindow& w)
{
    w.picture.device_width = p.view.picture_width;
    w.picture.device_height = p.view.picture_height;
    return RecordingSurface(w.picture);
}

void resume_picture(const Project& p, RecordingSurface& s)
{
    if (!s.resume())
        s.Scale(p.view.win_left, p.view.win_top, p.view.win_right, p.view.win_bottom);
}

void set_main_title(Project& p, const std::string& suffix)
{
    p.main_caption = "TOBEL_3          File " + p.data_file_path + suffix;
}

} // namespace tobel
