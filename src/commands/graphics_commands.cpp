#include "commands/graphics_commands.h"

#include "geometry/grid_file.h"
#include "graphics/picture.h"
#include "graphics/plan_views.h"
#include "graphics/section_views.h"
#include "graphics/surface_view.h"
#include "graphics/xray.h"
#include "project/runtime_error.h"

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

std::string default_grid_name(int surface)
{
    return "G" + std::to_string(surface) + ".GRD";
}

void export_grid_item(Project& p, Port& port, int item)
{
    const int surface = item + 1;
    // The overwrite prompt is on, as for the data files.
    const auto path = port.save_file_dialog("Grid Files (*.GRD)|*.GRD", default_grid_name(surface), true);
    if (!path)
        return;
    try {
        write_grid_file(p, surface, *path, port);
    } catch (const RuntimeError& e) {
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
    }
}

} // namespace tobel
