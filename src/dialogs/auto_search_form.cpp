#include "dialogs/auto_search_form.h"

#include "project/numtext.h"

namespace tobel {

AutoSearchForm open_auto_search_form(Project& p, const WorldWindow& picture)
{
    AutoSearchForm form;
    form.record = load_auto_record(p);
    if (auto_record_blank(form.record))
        apply_auto_defaults(p, form.record, picture);
    form.common_point = p.auto_use_common != 0 ? 1 : 0;
    p.view_mode = 8;
    return form;
}

AutoSearchForm open_auto_search_form(Project& p)
{
    return open_auto_search_form(p, longitudinal_section_window(p));
}

void auto_form_toggle_common(AutoSearchForm& form)
{
    form.common_point = form.common_point != 0 ? 0 : 1;
}

float& auto_form_block(AutoSearchForm& form, int which)
{
    AutoSearchRecord& r = form.record;
    if (form.common_point != 0)
        return which == 1 ? r.auto_point_y : r.auto_point_z;
    return which == 1 ? r.auto_tangent_z : r.auto_radius_step;
}

void auto_form_enter_x(Project& p, AutoSearchForm& form, std::string_view text)
{
    form.record.auto_x = float(val(text));
    p.view_row = section_row_of(p, form.record.auto_x);
}

float& auto_form_cell(AutoSearchForm& form, int cell)
{
    AutoSearchRecord& r = form.record;
    switch (cell) {
    case 2: return r.auto_y;
    case 3: return r.auto_z;
    case 4: return r.auto_step;
    case 5: return auto_form_block(form, 1);
    case 6: return auto_form_block(form, 2);
    case 7: return r.auto_aspect;
    default: return r.auto_x;
    }
}

void auto_form_enter(Project& p, AutoSearchForm& form, int cell, std::string_view text)
{
    if (cell < 1 || cell > auto_form_cells)
        return;
    if (cell == 1)
        auto_form_enter_x(p, form, text);
    else
        auto_form_cell(form, cell) = float(val(text));
}

SearchFormNext continue_auto_search_form(Project& p, const AutoSearchForm& form, Port& port)
{
    p.auto_use_common = int16(form.common_point);
    store_auto_record(p, form.record);
    return finish_search_form(p, port, false);
}

} // namespace tobel
