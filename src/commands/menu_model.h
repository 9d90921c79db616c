// The main menu as a model: item table, the groups that commands switch, and
// the method box.
#pragma once

#include "project/menus.h"
#include "project/project.h"

namespace tobel {

// Fills p.menus with every item of the main menu, all visible and enabled.
void init_menus(Project& p);

// The Graphics menu on opening: the items of Graphics_Isometry_Layer and
// grd_layer1, one per surface of the stack, the sliding surface only once it
// is defined. `checked_item` is the isometry item last used (-1 for none).
void open_graphics_menu(Project& p, int checked_item);

// The four method labels and a click on label 2, 3 or 4.
void init_method_box(Project& p);
void click_method_label(Project& p, int label);

} // namespace tobel
