#include "dialogs/crack_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "project/numtext.h"
#include "surfaces/crack.h"

namespace tobel {

CrackForm open_crack_form(const Project& p)
{
    CrackForm form;
    // With no crack cell 1 is hidden; it starts from 0.
    if (p.crack_mode == 1)
        form.value(1) = p.crack_y;
    else if (p.crack_mode == 2)
        form.value(1) = p.crack_depth;
    form.value(2) = p.crack_water_pct;
    return form;
}

void crack_form_choose(Project& p, int mode)
{
    if (mode < 0 || mode > 2)
        return;
    p.crack_mode = int16(mode);
}

bool crack_cell_visible(const Project& p, int c)
{
    if (c < 1 || c > crack_cells)
        return false;
    return p.crack_mode == 1 || p.crack_mode == 2;
}

std::string crack_cell_label(const Project& p, int c)
{
    if (!crack_cell_visible(p, c))
        return {};
    if (c == 2)
        return crack_water_label;
    return p.crack_mode == 1 ? crack_y_label : crack_depth_label;
}

void crack_form_key(CrackForm& form, CrackKey key)
{
    if (key == CrackKey::up)
        form.cell = std::max(form.cell - 1, 1);
    else
        form.cell = std::min(form.cell + 1, crack_cells);
}

void crack_form_click_label(CrackForm& form, int c)
{
    if (c >= 1 && c <= crack_cells)
        form.cell = c;
}

bool crack_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

void crack_form_enter(CrackForm& form, int c, std::string_view text)
{
    if (c < 1 || c > crack_cells)
        return;
    form.value(c) = float(val(text));
}

void continue_crack_form(Project& p, const CrackForm& form)
{
    // 1. The values of the mode; the other mode's value stays as it was.
    switch (p.crack_mode) {
    case 0:
        p.crack_y = 0;
        p.crack_depth = 0;
        p.crack_water_pct = 0;
        break;
    case 1:
        p.crack_y = form.value(1);
        p.crack_water_pct = form.value(2);
        break;
    case 2:
        p.crack_depth = form.value(1);
        p.crack_water_pct = form.value(2);
        break;
    default: break;
    }
    // 2. The arrow scale.
    scale_forces(p);
}

void cancel_crack_form(const Project&) {}

} // namespace tobel
