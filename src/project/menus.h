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

} // namespace tobel
