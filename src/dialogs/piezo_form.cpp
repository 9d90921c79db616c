#include "dialogs/piezo_form.h"

#include <algorithm>
#include <cstddef>

#include "geometry/layer_stack.h"
#include "geometry/surface_stack.h"
#include "graphics/plan_views.h"

namespace tobel {

static SurfaceList piezo_list(const Project& p)
{
    return SurfaceList{p.num_layers, p.num_piezos, false};
}

// The first piezometric surface hangs from the ground, each further one from
// the one before; a reference of method 1 or 2 is not from sections.
static DepthSource piezo_depth_source(const Project& p, int n)
{
    const int k = p.num_layers + n;
    return DepthSource{n == 1 ? piezo_first_depth_prompt : piezo_depth_prompt, piezo_caption(n),
                       n == 1 ? int(p.num_layers) : k - 1, true};
}

std::string piezo_caption(int n)
{
    return "Piezo " + std::to_string(n);
}

PiezoForm open_piezo_form(const Project& p)
{
    PiezoForm form;
    cursor_take(form, p, piezo_list(p), 1, surface_cell_method);
    return form;
}

std::vector<SurfaceRow> piezo_form_rows(const Project& p, const PiezoForm& form)
{
    std::vector<SurfaceRow> rows(static_cast<std::size_t>(surface_rows_visible));
    for (int r = 0; r < surface_rows_visible; ++r) {
        const int n = form.top_row + r;
        if (n >= 1 && n <= p.num_piezos)
            rows[std::size_t(r)] = surface_row(p, p.num_layers + n, piezo_caption(n), false);
    }
    return rows;
}

bool piezo_form_scroll_visible(const Project& p)
{
    return surface_scroll_visible(p.num_piezos);
}

void piezo_form_scroll(PiezoForm& form, const Project& p, int top)
{
    form.top_row = surface_scroll_top(p.num_piezos, top);
}

void piezo_form_select(PiezoForm& form, const Project& p, int row, int cell)
{
    cursor_take(form, p, piezo_list(p), row, cell);
}

void piezo_form_key(PiezoForm& form, Project& p, Port& port, FormKey key)
{
    if (cursor_key(form, p, piezo_list(p), key) != CursorMove::past_last)
        return;
    if (port.message_box(piezo_add_question, Buttons::yes_no, Icon::question, "") == Answer::yes)
        piezo_form_add_surface(form, p, port);
}

bool piezo_form_accepts(int cell, const std::string& text, char key)
{
    return cell != surface_cell_name && surface_cell_accepts(cell, text, key);
}

bool piezo_form_type(PiezoForm& form, Project& p, Port& port, char key)
{
    (void)port; // no key of these cells has a message of its own
    return cursor_type(form, p, piezo_list(p), key);
}

void piezo_form_choose_method(PiezoForm& form, Project& p, Port& port, int row, int method)
{
    if (row < 1 || row > p.num_piezos)
        return;
    form.row = row;
    choose_surface_method(p, p.num_layers + row, method, piezo_depth_source(p, row), port);
    cursor_take(form, p, piezo_list(p), row, surface_cell_method);
}

void piezo_form_change(PiezoForm& form, Project& p, Port& port)
{
    if (form.row < 1 || form.row > p.num_piezos)
        return;
    surface_row_button(p, p.num_layers + form.row, piezo_depth_source(p, form.row), port);
    cursor_refresh(form, p, piezo_list(p));
}

bool piezo_form_add_surface(PiezoForm& form, Project& p, Port& port)
{
    if (!add_piezo(p, port))
        return false;
    cursor_take(form, p, piezo_list(p), p.num_piezos, surface_cell_method);
    return true;
}

bool piezo_form_insert_surface(PiezoForm& form, Project& p, Port& port)
{
    const int row = std::clamp(form.row, 1, std::max<int>(p.num_piezos, 1));
    if (!insert_piezo(p, row, port))
        return false;
    cursor_take(form, p, piezo_list(p), row, surface_cell_method);
    return true;
}

bool piezo_form_delete_surface(PiezoForm& form, Project& p, Port& port)
{
    if (p.num_piezos < 1 || form.row < 1 || form.row > p.num_piezos)
        return false;
    const std::string question = piezo_delete_question + std::to_string(form.row);
    if (port.message_box(question, Buttons::yes_no, Icon::question, "") != Answer::yes)
        return false;
    delete_piezo(p, form.row);
    if (p.num_piezos > 0)
        cursor_take(form, p, piezo_list(p), std::min<int>(form.row, p.num_piezos), form.cell);
    else
        form = PiezoForm{};
    return true;
}

PiezoNext continue_piezo_form(Project& p, PiezoForm& form, Port& port)
{
    (void)form;
    // 1. Whether any piezometric surface is given by sections.
    bool any_sections = false;
    for (int k = p.num_layers + 1; k <= std::min<int>(p.num_surfaces, surface_capacity); ++k)
        any_sections = any_sections || p.surf_method[std::size_t(k)] == 0;
    // 2. Edited from the menu: the stack is rebuilt and the ground drawn.
    if (p.form_mode != 2) {
        rebuild_surfaces(p, port);
        return PiezoNext::finished;
    }
    // 3. The wizard goes on to the sections only for a piezometric surface
    // given by them.
    if (any_sections) {
        p.view_mode = 6;
        draw_plan_assembly(p, port);
        return PiezoNext::to_positions;
    }
    rebuild_surfaces(p, port);
    p.view_mode = 5;
    p.form_mode = 0;
    return PiezoNext::finished;
}

void cancel_piezo_form(Project& p, PiezoForm& form)
{
    (void)form;
    p.form_mode = 0;
}

} // namespace tobel
