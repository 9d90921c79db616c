// The menu model: captions and the visible, enabled and checked flags of every
// menu item by control name. Commands change it; a window system binds to it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tobel {

struct MenuItem {
    std::string menu;    // top-level menu control that holds the item
    std::string caption; // as shown, with its & accelerator
    bool visible = true;
    bool enabled = true;
    bool checked = false;
};

struct Menus {
    std::map<std::string, MenuItem> items;
    std::vector<std::string> order; // control names in menu order

    MenuItem& operator[](const std::string& control) { return items[control]; }
    const MenuItem& at(const std::string& control) const { return items.at(control); }
};

// Which commands the project's state makes available: the readers, the
// surface stack and the surface steps switch these flags; the menu model of
// the main window holds the captions and the order.
struct Project;

// Shows or hides the items that need a project.
void set_edit_menus_visible(Project& p, bool visible);

// After Control Parameters are confirmed and at the end of both readers.
void show_project_menus(Project& p);

// The Solve menu and its items after a surface dialog is confirmed.
enum class SolveItems { single_trial, grid_search, auto_search };
void show_solve_menu(Project& p, SolveItems which, bool rotation_visible);
void hide_solve_menu(Project& p);

// The caption of stack surface k in the Graphics menu arrays and the
// findings that name a surface.
std::string surface_item_caption(const Project& p, int k);

// Recent files: add data_file_path and refresh the menu items.
void update_recent_files(Project& p);
void refresh_recent_menu(Project& p);

} // namespace tobel
