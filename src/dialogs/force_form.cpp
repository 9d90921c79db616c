#include "dialogs/force_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "dialogs/table_rows.h"
#include "project/numtext.h"

namespace tobel {

std::string force_limit_message(int max_forces)
{
    return "Only " + str(max_forces) + " forces allowed.";
}

// Keeps the selected line among the eight in view.
static void scroll_to_selected(ForceForm& form)
{
    form.top_row = top_row_showing(form.row, form.top_row, force_visible_rows);
}

ForceForm open_force_form(const Project& p)
{
    ForceForm form;
    form.max_forces = p.max_forces;
    const int n = std::clamp(int(p.num_forces), 0, force_capacity);
    for (int f = 1; f <= n; ++f) {
        const std::size_t k = std::size_t(f);
        form.rows.push_back({p.force_h[k], p.force_v[k], p.force_x[k], p.force_y[k], p.force_z[k]});
    }
    // The grid always shows its first line; left at zero it stores no force.
    if (form.rows.empty())
        form.rows.push_back(ForceRow{});
    return form;
}

bool force_form_add(ForceForm& form, Port& port)
{
    if (form.count() >= std::min(form.max_forces, force_capacity)) {
        port.message_box(force_limit_message(form.max_forces), Buttons::ok, Icon::none, "");
        return false;
    }
    form.rows.push_back(ForceRow{});
    form.row = form.count();
    scroll_to_selected(form);
    return true;
}

void force_form_delete(ForceForm& form)
{
    if (form.row < 1 || form.row > form.count())
        return;
    form.rows.erase(form.rows.begin() + (form.row - 1));
    if (form.row > form.count())
        form.row = std::max(form.count(), 1);
    scroll_to_selected(form);
}

void force_form_select(ForceForm& form, int r)
{
    if (r < 1 || r > form.count())
        return;
    form.row = r;
    scroll_to_selected(form);
}

bool force_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

void force_form_enter(ForceForm& form, int row, int col, std::string_view text)
{
    if (row < 1 || row > form.count() || col < 1 || col > force_columns)
        return;
    form.cell(row, col) = float(val(text));
}

void continue_force_form(Project& p, const ForceForm& form)
{
    // 1. The lines, in order.
    const int n = std::min(form.count(), force_capacity);
    for (int f = 1; f <= n; ++f) {
        const std::size_t k = std::size_t(f);
        p.force_h[k] = form.cell(f, force_col_h);
        p.force_v[k] = form.cell(f, force_col_v);
        p.force_x[k] = form.cell(f, force_col_x);
        p.force_y[k] = form.cell(f, force_col_y);
        p.force_z[k] = form.cell(f, force_col_z);
    }
    // 2. Their count.
    p.num_forces = int16(n);
    // 3. A lone force without components is the empty grid, not a force.
    if (p.num_forces == 1 && p.force_h[1] == 0 && p.force_v[1] == 0)
        p.num_forces = 0;
}

void cancel_force_form(ForceForm& form)
{
    form = ForceForm{};
}

} // namespace tobel
