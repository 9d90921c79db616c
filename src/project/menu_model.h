// The main menu as a model: item table, the groups that commands switch, and
// the method box.
#pragma once

#include "project/project.h"

namespace tobel {

// Fills p.menus with every item of the main menu, all visible and enabled.
void init_menus(Project& p);

// Shows or hides the items that need a project.
void set_edit_menus_visible(Project& p, bool visible);

// After Control Parameters are confirmed and at the end of both readers.
void show_project_menus(Project& p);

// The Solve menu and its items after a surface dialog is confirmed.
enum class SolveItems { single_trial, grid_search, auto_search };
void show_solve_menu(Project& p, SolveItems which, bool rotation_visible);
void hide_solve_menu(Project& p);

// The Graphics menu on opening: the items of Graphics_Isometry_Layer and
// grd_layer1, one per surface of the stack, the sliding surface only once it
// is defined. `checked_item` is the isometry item last used (-1 for none).
void open_graphics_menu(Project& p, int checked_item);
// The caption of surface k in those arrays.
std::string surface_item_caption(const Project& p, int k);

// The four method labels and a click on label 2, 3 or 4.
void init_method_box(Project& p);
void click_method_label(Project& p, int label);

// Recent files: add data_file_path and refresh the menu items.
void update_recent_files(Project& p);
void refresh_recent_menu(Project& p);

} // namespace tobel
