#include "commands/graphics_commands.h"

#include "graphics/picture.h"
#include "graphics/plan_views.h"
#include "graphics/section_views.h"
#include "graphics/surface_view.h"
#include "graphics/xray.h"

namespace tobel {

void graphics_longitudinal_section(Project& p, Port& port)
{
    show_longitudinal_section(p, port);
}

void graphics_lateral_section(Project& p, Port& port)
{
    show_lateral_section(p, port);
}

void graphics_scroll_to(Project& p, Port& port, int line)
{
    // The program's own setting of the scroll bar is over; this is the user's.
    p.view.skip_scroll_event = false;
    p.pictures.section.scroll.value = int16(line);
    section_scroll_changed(p, port, line);
}

void graphics_plan(Project& p, Port& port)
{
    p.view_mode = 6;
    draw_plan_assembly(p, port);
}

void graphics_xray(Project& p, Port& port)
{
    p.pictures.xray.caption = "X-RAY";
    bring_up(p, p.pictures.xray, port);
    find_force_peak(p);
    start_xray(p, port);
}

} // namespace tobel
