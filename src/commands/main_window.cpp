#include "commands/commands.h"
#include "commands/menu_model.h"
#include "graphics/isometry.h"
#include "graphics/surface_view.h"
#include "project/defaults.h"
#include "project/settings.h"

namespace tobel {

void main_load(Project& p)
{
    init_menus(p);
    init_method_box(p);
    // 1. Until a project exists nothing can be edited or viewed.
    set_edit_menus_visible(p, false);
    hide_solve_menu(p);
    // 2.
    p.solution_method = 1;
    // 3.
    if (!p.settings_path.empty())
        read_settings(p, p.settings_path);
    else
        default_colours(p);
    // 4.
    set_defaults(p);
    // 5.
    if (p.recent_count != 0)
        refresh_recent_menu(p);
    p.main_caption = "TOBEL-3";
}

void set_main_caption(Project& p)
{
    p.main_caption = "TOBEL_3          File " + p.data_file_path;
}

// The ground of the project just loaded.
void show_finished_load_view(Project& p, Port& port)
{
    show_surface_view(p, port, p.num_layers);
}

#ifndef TOBEL_BUILD_DATE
#define TOBEL_BUILD_DATE __DATE__
#endif

void help_about(Project&, Port& port)
{
    port.message_box(std::string("TOBEL-3\n                   Version 1, compiled ") + TOBEL_BUILD_DATE,
                     Buttons::ok, Icon::information, "TOBEL_3");
}

void graphics_isometry_item(Project& p, Port& port, int item)
{
    open_graphics_menu(p, item);
    p.view_mode = 5;
    draw_isometry(p, port, item + 1);
}

} // namespace tobel
