#include "dialogs/control_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "geometry/surface_stack.h"
#include "graphics/plan_views.h"
#include "project/defaults.h"
#include "project/menus.h"
#include "project/numtext.h"

namespace tobel {

namespace {

constexpr char key_backspace = 8;
constexpr char key_tab = 9;
constexpr char key_return = 13;
// Limits of the counts; tests 6 and 7 compare with 50 itself, whatever
// max_materials holds, while their messages print max_materials.
constexpr int combined_limit = 50;
constexpr int mesh_limit = 3000;

double cell_value(const ControlForm& form, int c)
{
    return val(form.text(c));
}

void store_edit(ControlForm& form)
{
    form.text(form.cell) = form.edit;
}

void select_cell(ControlForm& form, int c)
{
    form.cell = std::clamp(c, 1, control_cells);
    form.edit = form.text(form.cell);
}

// The first of the nine checks of Continue that fails, "" when all pass.
std::string first_failed_check(const Project& p, const ControlForm& form)
{
    const std::string limit = str(int(p.max_materials));
    const double layers = cell_value(form, control_layers);
    const double piezos = cell_value(form, control_piezos);
    const double discs = cell_value(form, control_discs);
    // 1. The project's row count decides, not cell 11.
    if (p.num_rows > 1 && !(cell_value(form, control_x_max) > cell_value(form, control_x_min)))
        return "Min. X must be smaller than Max. X.";
    // 2.
    if (!(cell_value(form, control_y_max) > cell_value(form, control_y_min)))
        return "Min. Y must be smaller than Max. Y.";
    // 3.
    if (!(cell_value(form, control_rows) > 0))
        return "Can't have less than 1 row.";
    // 4.
    if (cell_value(form, control_rows) > mesh_limit)
        return "Can't have more than 3000 rows.";
    // 5.
    if (cell_value(form, control_cols) > mesh_limit)
        return "Can't have more than 3000 columns.";
    // 6.
    if (layers + piezos > combined_limit)
        return "Combined number of materials and piezo surfaces must not exceed " + limit + ".";
    // 7.
    if (layers + discs > combined_limit)
        return "Combined number of materials and discontinuities must not exceed " + limit + ".";
    // 8.
    if (layers > p.max_materials)
        return "Can't have more than " + limit + " material layers.";
    // 9.
    if (layers < 1)
        return "Must have at least one material layer.";
    return "";
}

int16 count_of(const ControlForm& form, int c)
{
    return int16(cint(cell_value(form, c)));
}

void name_empty_entries(Project& p, int first, int last, const char* name)
{
    for (int m = std::max(first, 1); m <= std::min(last, material_capacity); ++m)
        if (p.mat_name[std::size_t(m)].empty())
            p.mat_name[std::size_t(m)] = name;
}

void store_control_form(Project& p, const ControlForm& form)
{
    // 1. Titles, units and the earthquake coefficient.
    p.project_title = form.text(control_project);
    p.dataset_title = form.text(control_dataset);
    p.input_by = form.text(control_input_by);
    p.unit_weight_water = form.water_index == 1 ? 62.4f : 9.81f;
    p.eq_coef = float(cell_value(form, control_eq_coef));

    // 2. Layers, and a name for each unnamed layer material.
    p.num_layers = count_of(form, control_layers);
    name_empty_entries(p, 1, p.num_layers, "Material Name");

    // 3. Piezometric surfaces and discontinuities.
    p.num_piezos = count_of(form, control_piezos);
    p.num_discs = count_of(form, control_discs);
    name_empty_entries(p, p.num_layers + 1, p.num_layers + p.num_discs, "Discontinuity Name");

    // 4. The mesh.
    p.base_z = float(cell_value(form, control_base_z));
    p.x_min = float(cell_value(form, control_x_min));
    p.x_max = float(cell_value(form, control_x_max));
    p.num_rows = count_of(form, control_rows);
    p.y_min = float(cell_value(form, control_y_min));
    p.y_max = float(cell_value(form, control_y_max));
    p.num_cols = count_of(form, control_cols);

    // 5. Spacings; a two-dimensional mesh is one unit wide.
    if (p.num_rows > 1)
        p.row_spacing = float((double(p.x_max) - double(p.x_min)) / double(p.num_rows - 1));
    if (p.num_cols > 1)
        p.col_spacing = float((double(p.y_max) - double(p.y_min)) / double(p.num_cols - 1));
    else
        p.col_spacing = 1.0f;
    if (p.num_rows == 1) {
        p.row_spacing = 1.0f;
        p.x_max = p.x_min + 1.0f;
    }

    // 6. Derived counts; no surface of the old mesh can be solved.
    derive_counts(p);
    hide_solve_menu(p);
}

} // namespace

ControlForm open_control_form(const Project& p, const std::string& today)
{
    ControlForm form;
    form.text(control_project) = p.project_title;
    form.text(control_dataset) = p.dataset_title;
    form.text(control_input_by) = p.input_by;
    form.text(control_date) = today;
    form.text(control_eq_coef) = general_text(p.eq_coef);
    form.text(control_layers) = general_text(float(p.num_layers));
    form.text(control_piezos) = general_text(float(p.num_piezos));
    form.text(control_discs) = general_text(float(p.num_discs));
    form.text(control_x_min) = general_text(p.x_min);
    form.text(control_x_max) = general_text(p.x_max);
    form.text(control_rows) = general_text(float(p.num_rows));
    form.text(control_y_min) = general_text(p.y_min);
    form.text(control_y_max) = general_text(p.y_max);
    form.text(control_cols) = general_text(float(p.num_cols));
    form.text(control_base_z) = general_text(p.base_z);
    form.water_index = p.unit_weight_water == 62.4f ? 1 : 0;
    form.command1_caption = p.num_rows == 1 ? control_to_3d_caption : control_to_2d_caption;
    select_cell(form, 1);
    return form;
}

void control_form_key(ControlForm& form, FormKey key)
{
    if (const int step = vertical_step(key); step != 0) {
        store_edit(form);
        select_cell(form, form.cell + step);
    }
}

void control_form_select(ControlForm& form, int c)
{
    if (c < 1 || c > control_cells)
        return;
    store_edit(form);
    select_cell(form, c);
}

std::string control_cell_refusal(const Project& p, int c)
{
    if (p.form_mode == 2)
        return "";
    switch (c) {
    case control_layers: return "To add or delete a layer, use Stratigraphic Layers screen";
    case control_piezos: return "To add or delete a piezo surface, use Piezometric Surfaces screen";
    case control_discs: return "To add or delete a discontinuity, use Materials Editor screen";
    default: return "";
    }
}

bool control_key_accepted(int c, const std::string& text, char key, int caret)
{
    if (key == key_return || key == key_tab)
        return false;
    if (c == control_date)
        return false;
    if (c < control_date)
        return true;
    if (key == key_backspace)
        return true;
    if (key < 45 || key > 57 || key == 47)
        return false;
    if (key == '.')
        return text.find('.') == std::string::npos;
    if (key == '-')
        return caret_at(text, caret) == 0;
    return true;
}

bool control_form_type(ControlForm& form, const Project& p, Port& port, char key, int caret)
{
    if (key == key_return || key == key_tab || form.cell == control_date)
        return false;
    const std::string refusal = control_cell_refusal(p, form.cell);
    if (!refusal.empty()) {
        port.message_box(refusal, Buttons::ok, Icon::none, "");
        return false;
    }
    if (!control_key_accepted(form.cell, form.edit, key, caret))
        return false;
    edit_at_caret(form.edit, key, caret);
    return true;
}

void control_form_choose_water(ControlForm& form, int index)
{
    form.water_index = index == 1 ? 1 : 0;
}

void control_form_command1(ControlForm& form)
{
    // A click on the button takes the edit text into its cell, as any click
    // away from a cell does.
    store_edit(form);
    const double rows = cell_value(form, control_rows);
    if (rows > 1) {
        form.text(control_cols) = "300";
        form.text(control_rows) = "1";
        form.command1_caption = control_to_3d_caption;
    } else if (rows == 1) {
        form.text(control_cols) = "50";
        form.text(control_rows) = "50";
        form.command1_caption = control_to_2d_caption;
    }
    // Any other row count (0 or less) is left for Continue to refuse.
    select_cell(form, control_x_min);
}

bool control_two_d_note_visible(const ControlForm& form)
{
    const std::string& rows = form.cell == control_rows ? form.edit : form.text(control_rows);
    return val(rows) == 1;
}

ControlNext continue_control_form(Project& p, ControlForm& form, Port& port)
{
    store_edit(form);
    const std::string failure = first_failed_check(p, form);
    if (!failure.empty()) {
        port.message_box(failure, Buttons::ok, Icon::none, "");
        return ControlNext::stays_open;
    }
    store_control_form(p, form);
    // The grids are sized anew even when no count changed: zgrid is wiped.
    redim_grids(p);
    rebuild_surfaces(p, port);
    draw_plan_assembly(p, port);
    p.dirty_flag = -1;
    show_project_menus(p);
    return p.form_mode == 2 ? ControlNext::to_interpolation : ControlNext::closed;
}

void cancel_control_form(Project& p, ControlForm& form)
{
    (void)p;
    form = ControlForm{};
}

} // namespace tobel
