#include "dialogs/layer_form.h"

#include <algorithm>
#include <cstddef>

#include "geometry/layer_stack.h"
#include "geometry/surface_stack.h"
#include "graphics/plan_views.h"

namespace tobel {

static SurfaceList layer_list(const Project& p)
{
    return SurfaceList{0, p.num_layers, true};
}

// A layer hangs from the plane above it; by the list only a grid-file plane
// counts as one not from sections.
static DepthSource layer_depth_source(int layer)
{
    // The title is the row's own name, as the piezometric form's is.
    return DepthSource{layer_depth_prompt, "Layer " + std::to_string(layer), layer + 1, false};
}

std::string layer_caption(const Project& p, int layer)
{
    // The plain number, as a row of the form shows it.
    return layer == p.num_layers ? std::string(layer_ground_caption) : "Layer " + std::to_string(layer);
}

LayerForm open_layer_form(const Project& p)
{
    LayerForm form;
    form.cell = surface_cell_name;
    cursor_take(form, p, layer_list(p), 1, surface_cell_name);
    return form;
}

std::vector<SurfaceRow> layer_form_rows(const Project& p, const LayerForm& form)
{
    std::vector<SurfaceRow> rows(static_cast<std::size_t>(surface_rows_visible));
    for (int r = 0; r < surface_rows_visible; ++r) {
        const int layer = form.top_row + r;
        if (layer >= 1 && layer <= p.num_layers)
            rows[std::size_t(r)] = surface_row(p, layer, layer_caption(p, layer), true);
    }
    return rows;
}

bool layer_form_scroll_visible(const Project& p)
{
    return surface_scroll_visible(p.num_layers);
}

void layer_form_scroll(LayerForm& form, const Project& p, int top)
{
    form.top_row = surface_scroll_top(p.num_layers, top);
}

void layer_form_select(LayerForm& form, const Project& p, int row, int cell)
{
    cursor_take(form, p, layer_list(p), row, cell);
}

void layer_form_key(LayerForm& form, Project& p, Port& port, FormKey key)
{
    if (cursor_key(form, p, layer_list(p), key) != CursorMove::past_last)
        return;
    if (port.message_box(layer_add_question, Buttons::yes_no, Icon::question, "") == Answer::yes)
        layer_form_add_surface(form, p, port);
}

bool layer_form_accepts(int cell, const std::string& text, char key)
{
    return surface_cell_accepts(cell, text, key);
}

bool layer_form_type(LayerForm& form, Project& p, Port& port, char key)
{
    (void)port; // no key of these cells has a message of its own
    return cursor_type(form, p, layer_list(p), key);
}

void layer_form_choose_method(LayerForm& form, Project& p, Port& port, int row, int method)
{
    if (row < 1 || row > p.num_layers)
        return;
    form.row = row;
    choose_surface_method(p, row, method, layer_depth_source(row), port);
    cursor_take(form, p, layer_list(p), row, surface_cell_method);
}

void layer_form_change(LayerForm& form, Project& p, Port& port)
{
    if (form.row < 1 || form.row > p.num_layers)
        return;
    surface_row_button(p, form.row, layer_depth_source(form.row), port);
    cursor_refresh(form, p, layer_list(p));
}

// 6. The new layer's row is taken and kept in view.
static void take_new_row(LayerForm& form, const Project& p, int row)
{
    cursor_take(form, p, layer_list(p), row, surface_cell_name);
}

bool layer_form_add_surface(LayerForm& form, Project& p, Port& port)
{
    if (!add_layer(p, port))
        return false;
    take_new_row(form, p, p.num_layers);
    return true;
}

bool layer_form_insert_surface(LayerForm& form, Project& p, Port& port)
{
    const int row = std::clamp(form.row, 1, std::max<int>(p.num_layers, 1));
    if (!insert_layer(p, row, port))
        return false;
    take_new_row(form, p, row);
    return true;
}

bool layer_form_delete_surface(LayerForm& form, Project& p, Port& port)
{
    if (p.num_layers <= 1 || form.row < 1 || form.row > p.num_layers)
        return false;
    const std::string question = layer_delete_question + std::to_string(form.row);
    if (port.message_box(question, Buttons::yes_no, Icon::question, "") != Answer::yes)
        return false;
    delete_layer(p, form.row);
    cursor_take(form, p, layer_list(p), std::min<int>(form.row, p.num_layers), form.cell);
    return true;
}

LayerNext continue_layer_form(Project& p, LayerForm& form, Port& port)
{
    (void)form;
    // 1. Whether any layer is given by sections.
    bool any_sections = false;
    for (int k = 1; k <= std::min<int>(p.num_layers, surface_capacity); ++k)
        any_sections = any_sections || p.surf_method[std::size_t(k)] == 0;
    // 2. Edited from the menu: the stack is rebuilt and the ground drawn.
    if (p.form_mode != 2) {
        rebuild_surfaces(p, port);
        return LayerNext::finished;
    }
    // 3. The new project wizard goes on.
    if (p.num_piezos > 0)
        return LayerNext::to_piezos;
    if (any_sections) {
        p.view_mode = 6;
        draw_plan_assembly(p, port);
        return LayerNext::to_positions;
    }
    rebuild_surfaces(p, port);
    p.view_mode = 5;
    p.form_mode = 0;
    return LayerNext::finished;
}

void cancel_layer_form(Project& p, LayerForm& form)
{
    (void)form;
    p.form_mode = 0;
}

} // namespace tobel
