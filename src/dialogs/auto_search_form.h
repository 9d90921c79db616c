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

// Continue: the option flag and the record go to the ellipsoid store; the
// first ellipsoid is built. In a composite auto search (form_mode 6) the
// wedge form comes next; otherwise Solve > Auto Search is offered.
SearchFormNext continue_auto_search_form(Project& p, const AutoSearchForm& form, Port& port);

} // namespace tobel
