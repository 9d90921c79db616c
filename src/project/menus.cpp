#include "project/menus.h"

#include <string>

#include "project/numtext.h"
#include "project/project.h"

namespace tobel {

namespace {

// The items that need a project before they can be used.
constexpr const char* edit_group[] = {
    "composite",
    "Edit_control_parameters",
    "Edit_crosssection_positions",
    "Edit_Crosssections",
    "Edit_material_properties",
    "Edit_Sliding_surface_comp_general",
    "Edit_Sliding_surface_general",
    "Edit_Sliding_surface_wedge",
    "ellipsoid",
    "extforces",
    "Graphics_Isometry",
    "Graphics_Lateral_Section",
    "Graphics_Longitudinal_Section",
    "Graphics_plan",
    "grd_layer1(0)",
    "layersurfaces",
    "Edit_GeomOptions",
    "piezometric_surfaces",
    "Rotation_angle",
    "tension_crack",
    "xxray",
};

} // namespace

void set_edit_menus_visible(Project& p, bool visible)
{
    for (const char* control : edit_group)
        p.menus[control].visible = visible;
}

void show_project_menus(Project& p)
{
    set_edit_menus_visible(p, true);
    const bool three_d = p.num_rows >= 2;
    for (const char* control :
         {"Graphics_Lateral_Section", "Graphics_Isometry", "xxray", "Export_Graphics_Lateral_Sections"})
        p.menus[control].visible = three_d;
}

void show_solve_menu(Project& p, SolveItems which, bool rotation_visible)
{
    p.menus["Solve"].visible = true;
    p.menus["Solve_single_trial"].visible = which == SolveItems::single_trial;
    p.menus["gridsearchsolv"].visible = which == SolveItems::grid_search;
    p.menus["autosearchsolv"].visible = which == SolveItems::auto_search;
    p.menus["Rotation_angle"].visible = which == SolveItems::single_trial && rotation_visible;
}

void hide_solve_menu(Project& p)
{
    p.menus["Solve"].visible = false;
}

void refresh_recent_menu(Project& p)
{
    for (int i = 0; i < p.recent_count && i < recent_capacity; ++i) {
        MenuItem& item = p.menus["FileName(" + std::to_string(i) + ")"];
        item.caption = str(long(i + 1)) + " " + p.recent_file[std::size_t(p.recent_count - i)];
        item.visible = item.enabled = true;
    }
}

void update_recent_files(Project& p)
{
    // 1. A file already on the list leaves the list and the menu as they are.
    for (int i = 1; i <= p.recent_count; ++i)
        if (p.recent_file[std::size_t(i)] == p.data_file_path)
            return;
    // 2. The newest file goes last; a full list drops its oldest.
    if (!p.data_file_path.empty()) {
        if (p.recent_count < recent_capacity) {
            ++p.recent_count;
        } else {
            for (int i = 1; i < recent_capacity; ++i)
                p.recent_file[std::size_t(i)] = p.recent_file[std::size_t(i + 1)];
        }
        p.recent_file[std::size_t(p.recent_count)] = p.data_file_path;
    }
    // 3.
    refresh_recent_menu(p);
}
std::string surface_item_caption(const Project& p, int k)
{
    if (k < p.num_layers)
        return "Layer" + str(long(k));
    if (k == p.num_layers)
        return "Ground Surface";
    if (k <= p.num_surfaces)
        return "Piezo Surface" + str(long(k - p.num_layers));
    return "Sliding Surface";
}
} // namespace tobel
