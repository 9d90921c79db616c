// The auto search form (tob_autosearch) as logic: the section X, the
// starting centre and its step, the block of common tangent planes or common
// point, and the aspect ratio. The form works on its own record and stores
// it on Continue.
#pragma once

#include <string_view>

#include "dialogs/grid_search_form.h"
#include "geometry/section_window.h"
#include "project/project.h"
#include "search/search_setup.h"
#include "ui/port.h"

namespace tobel {

struct AutoSearchForm {
    AutoSearchRecord record;
    int common_point = 0; // 0 common tangent planes, 1 common point
};

// Opens on the stored record; a record whose centre is 0, 0 takes the first
// proposal from the limits of the section picture. Sets view_mode 8.
AutoSearchForm open_auto_search_form(Project& p, const WorldWindow& picture);
AutoSearchForm open_auto_search_form(Project& p);

void auto_form_toggle_common(AutoSearchForm& form);

// The two fields of the block: tangent elevation and spacing, or the common
// point's Y and Z.
float& auto_form_block(AutoSearchForm& form, int which);

void auto_form_enter_x(Project& p, AutoSearchForm& form, std::string_view text);

// The form's cells, top to bottom: 1 the section X, 2 and 3 the starting
// centre's Y and Z, 4 its step, 5 and 6 the two fields of the block, 7 the
// aspect ratio.
constexpr int auto_form_cells = 7;
float& auto_form_cell(AutoSearchForm& form, int cell);
// A number typed into a cell: the leading number of the text, 0 if none; the
// section X moves view_row as auto_form_enter_x does.
void auto_form_enter(Project& p, AutoSearchForm& form, int cell, std::string_view text);

// Continue: the option flag and the record go to the ellipsoid store; the
// first ellipsoid is built. In a composite auto search (form_mode 6) the
// wedge form comes next; otherwise Solve > Auto Search is offered.
SearchFormNext continue_auto_search_form(Project& p, const AutoSearchForm& form, Port& port);

} // namespace tobel
