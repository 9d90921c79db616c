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

SearchFormNext continue_auto_search_form(Project& p, const AutoSearchForm& form, Port& port)
{
    p.auto_use_common = int16(form.common_point);
    store_auto_record(p, form.record);
    return finish_search_form(p, port, false);
}

} // namespace tobel
