#include "dialogs/field_form.h"

#include "dialogs/force_form.h"
#include "dialogs/numeric_entry.h"
#include "project/numtext.h"
#include "surfaces/discontinuity_field.h"

namespace tobel {

FieldForm open_field_form(const Project& p)
{
    FieldForm form;
    form.values = {p.field_x_low, p.field_x_high, p.field_y_low, p.field_y_high};
    return form;
}

void field_form_key(const Project& p, FieldForm& form, FieldFormKey key, Port& port)
{
    if (key == FieldFormKey::up) {
        if (form.row > 1)
            --form.row;
        return;
    }
    if (form.row < field_rows) {
        ++form.row;
        return;
    }
    // The grid is the one of the forces form and keeps its limit.
    if (field_rows >= p.max_forces)
        port.message_box(force_limit_message(p.max_forces), Buttons::ok, Icon::none, "");
}

bool field_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

void field_form_enter(FieldForm& form, int r, std::string_view text)
{
    if (r < 1 || r > field_rows)
        return;
    form.value(r) = float(val(text));
}

void continue_field_form(Project& p, const FieldForm& form, Port& port)
{
    p.field_x_low = form.value(1);
    p.field_x_high = form.value(2);
    p.field_y_low = form.value(3);
    p.field_y_high = form.value(4);
    set_discontinuity_field(p);
    port.message_box(field_defined_message, Buttons::ok, Icon::none, "");
}

void cancel_field_form(Project& p)
{
    p.form_mode = 0;
}

} // namespace tobel
