#include "graphics/surface_view.h"

#include "graphics/isometry.h"
#include "graphics/section_views.h"

namespace tobel {

static void start_section(Project& p, const char* caption, int mode)
{
    PictureWindow& w = p.pictures.section;
    w.caption = caption;
    p.view_mode = int16(mode);
    p.view.skip_scroll_event = true;
    w.scroll.value = 1;
}

void show_longitudinal_section(Project& p, Port& port)
{
    p.keep_window = 0;
    p.view_row = 1;
    start_section(p, "LONGITUDINAL SECTION", 1);
    find_force_peak(p);
    draw_longitudinal_section(p, port);
}

void show_lateral_section(Project& p, Port& port)
{
    p.view_col = 1;
    start_section(p, "LATERAL SECTION", 2);
    draw_lateral_section(p, port);
}

void show_surface_view(Project& p, Port& port, int k, const std::string& caption)
{
    // A port that takes no pictures (a batch run) is only told which view
    // would come up: a large mesh is not drawn for nobody.
    if (port.draw_hooks() == nullptr) {
        if (p.num_rows > 1)
            port.show_view(5, caption.empty() ? "ISOMETRIC VIEW" : caption);
        else
            port.show_view(1, caption.empty() ? "LONGITUDINAL SECTION" : caption);
        return;
    }
    if (p.num_rows > 1) {
        p.view_mode = 5;
        draw_isometry(p, port, k);
        if (!caption.empty())
            p.pictures.isometry.caption = caption;
    } else {
        show_longitudinal_section(p, port);
        if (!caption.empty())
            p.pictures.section.caption = caption;
    }
}

} // namespace tobel
