#include "commands/dialog_session.h"

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <type_traits>

#include "commands/commands.h"
#include "commands/surface_commands.h"
#include "dialogs/numeric_entry.h"
#include "dialogs/table_rows.h"
#include "graphics/editor_picture.h"
#include "graphics/image_calibration.h"
#include "graphics/picture.h"
#include "graphics/plan_views.h"
#include "project/numtext.h"
#include "solver/checks.h"

namespace tobel {

namespace {

// Each step is a set of overloads, one per form that takes it; the template
// answers for every other form.
struct Ctx {
    Project& p;
    Port& port;
    DialogSession& s;
};

// --- The forms of numbers keep their edit text in the session.

void commit_edit(DialogSession& s)
{
    if (!s.edited)
        return;
    if (auto* f = std::get_if<EllipsoidForm>(&s.form))
        ellipsoid_form_enter(*f, s.row, s.edit);
    else if (auto* c = std::get_if<CrackForm>(&s.form))
        crack_form_enter(*c, s.row, s.edit);
    else if (auto* g = std::get_if<ForceForm>(&s.form))
        force_form_enter(*g, s.row, s.col, s.edit);
    else if (auto* r = std::get_if<RotationForm>(&s.form))
        rotation_form_edit(*r, s.edit);
    else if (auto* w = std::get_if<WedgeForm>(&s.form))
        wedge_form_enter(*w, s.row, s.col, s.edit);
    else if (auto* d = std::get_if<FieldForm>(&s.form))
        field_form_enter(*d, s.row, s.edit);
    s.edited = false;
}

// The search forms move view_row with their section X, so their edits are
// committed with the project at hand.
void commit_edit(Project& p, DialogSession& s)
{
    if (s.edited) {
        if (auto* g = std::get_if<GridSearchForm>(&s.form)) {
            grid_form_enter(p, *g, s.row, s.edit);
            s.edited = false;
        } else if (auto* a = std::get_if<AutoSearchForm>(&s.form)) {
            auto_form_enter(p, *a, s.row, s.edit);
            s.edited = false;
        }
    }
    commit_edit(s);
}

// The edit text a cell starts from: its number as the form shows it.
void load_edit(DialogSession& s)
{
    s.edited = false;
    s.edit.clear();
    if (auto* f = std::get_if<EllipsoidForm>(&s.form))
        s.edit = general_text(f->value(s.row));
    else if (auto* c = std::get_if<CrackForm>(&s.form))
        s.edit = general_text(c->value(s.row));
    else if (auto* g = std::get_if<ForceForm>(&s.form)) {
        if (s.row >= 1 && s.row <= g->count())
            s.edit = general_text(g->cell(s.row, s.col));
    } else if (auto* r = std::get_if<RotationForm>(&s.form)) {
        s.edit = r->text;
    } else if (auto* w = std::get_if<WedgeForm>(&s.form)) {
        if (s.row >= 1 && s.row <= w->count())
            s.edit = general_text(w->cell(s.row, s.col));
    } else if (auto* d = std::get_if<FieldForm>(&s.form)) {
        s.edit = general_text(d->value(s.row));
    } else if (auto* gs = std::get_if<GridSearchForm>(&s.form)) {
        s.edit = general_text(grid_form_cell(*gs, s.row));
    } else if (auto* a = std::get_if<AutoSearchForm>(&s.form)) {
        s.edit = general_text(auto_form_cell(*a, s.row));
    }
}

bool number_form(const DialogSession& s)
{
    return std::holds_alternative<EllipsoidForm>(s.form) || std::holds_alternative<CrackForm>(s.form) ||
           std::holds_alternative<ForceForm>(s.form) || std::holds_alternative<RotationForm>(s.form) ||
           std::holds_alternative<WedgeForm>(s.form) || std::holds_alternative<FieldForm>(s.form) ||
           std::holds_alternative<GridSearchForm>(s.form) || std::holds_alternative<AutoSearchForm>(s.form);
}

bool number_key_accepted(const DialogSession& s, char key)
{
    if (std::holds_alternative<EllipsoidForm>(s.form))
        return ellipsoid_form_accepts(s.edit, key);
    if (std::holds_alternative<CrackForm>(s.form))
        return crack_form_accepts(s.edit, key);
    if (std::holds_alternative<ForceForm>(s.form))
        return force_form_accepts(s.edit, key);
    if (std::holds_alternative<WedgeForm>(s.form))
        return wedge_form_accepts(s.edit, key);
    if (std::holds_alternative<FieldForm>(s.form))
        return field_form_accepts(s.edit, key);
    if (std::holds_alternative<GridSearchForm>(s.form) || std::holds_alternative<AutoSearchForm>(s.form))
        return numeric_key_accepted(s.edit, key);
    return rotation_form_accepts(s.edit, key);
}

void close(DialogSession& s)
{
    s.form = std::monostate{};
    s.row = s.col = 1;
    s.edit.clear();
    s.edited = false;
}

template <class F> void take(DialogSession& s, F form)
{
    close(s);
    s.form = std::move(form);
    load_edit(s);
}

// The ellipsoid of the form's values drawn over the section, after each
// change of a field.
void ellipsoid_preview(Project& p, Port& port, EllipsoidForm& f)
{
    show_setup(p, port, SetupParameters{3, std::span<float>(f.values), false});
}

// The search records laid out as the set-up picture takes them.
std::array<float, grid_value_count> setup_values(const GridSearchRecord& r)
{
    return {r.grid_x,      r.grid_y1, r.grid_z_top,    r.grid_tangent_z,
            r.grid_aspect, r.grid_y2, r.grid_z_bottom, r.grid_radius_step,
            r.grid_ny,     r.grid_nz, r.grid_point_y,  r.grid_point_z};
}
std::array<float, auto_value_count> setup_values(const AutoSearchRecord& r)
{
    return {r.auto_x,           r.auto_y,      r.auto_z,       r.auto_step,   r.auto_tangent_z,
            r.auto_radius_step, r.auto_aspect, r.auto_point_y, r.auto_point_z};
}
void take_values(GridSearchRecord& r, const std::array<float, grid_value_count>& v)
{
    r = {v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]};
}
void take_values(AutoSearchRecord& r, const std::array<float, auto_value_count>& v)
{
    r = {v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]};
}

// The search area drawn again over the section, after each change of a field.
void search_preview(Project& p, Port& port, GridSearchForm& f)
{
    auto v = setup_values(f.record);
    show_setup(p, port, SetupParameters{7, std::span<float>(v), f.common_point != 0});
}
void search_preview(Project& p, Port& port, AutoSearchForm& f)
{
    auto v = setup_values(f.record);
    show_setup(p, port, SetupParameters{8, std::span<float>(v), f.common_point != 0});
}

// A pointer event on the set-up picture of a search form: a handle caught,
// dragged (the record follows it) or dropped.
template <class F>
void search_pointer(Project& p, Port& port, DialogSession& s, F& f, int mode, PointerAction action, double y,
                    double e)
{
    commit_edit(p, s);
    auto v = setup_values(f.record);
    const SetupParameters set{mode, std::span<float>(v), f.common_point != 0};
    if (action == PointerAction::down) {
        setup_pointer_down(p, set, s.drag, y, e);
    } else if (action == PointerAction::move) {
        if (!setup_pointer_move(p, set, s.drag, y, e).empty()) {
            take_values(f.record, v);
            show_setup(p, port, set);
        }
    } else {
        setup_pointer_up(s.drag);
    }
    load_edit(s);
}

// --- select

template <class F> DialogStep on_select(Ctx&, F&, int, int)
{
    return DialogStep::not_here;
}

DialogStep on_select(Ctx&, ControlForm& f, int row, int)
{
    if (row < 1 || row > control_cells)
        return DialogStep::not_here;
    control_form_select(f, row);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, MaterialForm& f, int row, int slot)
{
    if (row < 1 || row > material_rows || slot < 1 || slot > material_slots)
        return DialogStep::not_here;
    material_form_select(c.p, f, c.port, row, slot);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, LayerForm& f, int row, int cell)
{
    layer_form_select(f, c.p, row, cell == 1 && row > 0 ? surface_cell_name : cell);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, PiezoForm& f, int row, int cell)
{
    piezo_form_select(f, c.p, row, cell <= 1 ? surface_cell_method : cell);
    return DialogStep::done;
}

DialogStep on_select(Ctx&, PositionsForm& f, int row, int)
{
    if (row < 1 || row > f.count)
        return DialogStep::not_here;
    positions_form_select(f, row);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, SectionEditor& ed, int row, int col)
{
    if (ed.scale.open) {
        scale_form_select(ed.scale, row, col);
        return DialogStep::done;
    }
    table_click(c.p, ed, c.port, row, col);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, EllipsoidForm& f, int row, int)
{
    if (row < 1 || row > 5)
        return DialogStep::not_here;
    commit_edit(c.s);
    ellipsoid_preview(c.p, c.port, f);
    f.field = c.s.row = row;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, CrackForm& f, int row, int)
{
    if (row < 1 || row > crack_cells)
        return DialogStep::not_here;
    commit_edit(c.s);
    crack_form_click_label(f, row);
    c.s.row = f.cell;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, ForceForm& f, int row, int col)
{
    if (row < 1 || row > f.count() || col < 1 || col > force_columns)
        return DialogStep::not_here;
    commit_edit(c.s);
    force_form_select(f, row);
    c.s.row = row;
    c.s.col = col;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, WedgeForm& f, int row, int col)
{
    if (row < 1 || row > f.count() || col < 1 || col > wedge_columns)
        return DialogStep::not_here;
    commit_edit(c.s);
    f.row = c.s.row = row;
    f.col = c.s.col = col;
    f.top_row = top_row_showing(f.row, f.top_row, wedge_visible_rows);
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, FieldForm& f, int row, int)
{
    if (row < 1 || row > field_rows)
        return DialogStep::not_here;
    commit_edit(c.s);
    f.row = c.s.row = row;
    load_edit(c.s);
    return DialogStep::done;
}

// A cell of either search form: the one left is stored and the set-up
// picture drawn again before the new one is taken.
template <class Form> DialogStep select_search_cell(Ctx& c, Form& f, int row, int cells)
{
    if (row < 1 || row > cells)
        return DialogStep::not_here;
    commit_edit(c.p, c.s);
    search_preview(c.p, c.port, f);
    c.s.row = row;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_select(Ctx& c, GridSearchForm& f, int row, int)
{
    return select_search_cell(c, f, row, grid_form_cells);
}

DialogStep on_select(Ctx& c, AutoSearchForm& f, int row, int)
{
    return select_search_cell(c, f, row, auto_form_cells);
}

DialogStep on_select(Ctx&, GraphicsOptionsForm& f, int row, int)
{
    if (row < 1 || row > 2)
        return DialogStep::not_here;
    graphics_options_form_select(f, row);
    return DialogStep::done;
}

DialogStep on_select(Ctx&, ColourForm& f, int row, int col)
{
    if (row < 1 || row > 4)
        return DialogStep::not_here;
    const ColourBox box = row == 1   ? ColourBox::layer
                          : row == 2 ? ColourBox::piezo
                          : row == 3 ? ColourBox::sliding
                                     : ColourBox::selected;
    if (row <= 2 && (col < 1 || col > colour_boxes))
        return DialogStep::not_here;
    colour_form_box_click(f, box, col);
    return DialogStep::done;
}

// --- type

template <class F> DialogStep on_type(Ctx& c, F&, char key)
{
    if (!number_form(c.s))
        return DialogStep::not_here;
    if (key == '\b') {
        if (!c.s.edit.empty())
            c.s.edit.pop_back();
        c.s.edited = true;
    } else if (number_key_accepted(c.s, key)) {
        c.s.edit += key;
        c.s.edited = true;
    } else {
        c.port.beep();
    }
    return DialogStep::done;
}

// The rotation form's arrow and scroll bar follow the text as it is typed.
DialogStep on_type(Ctx& c, RotationForm& f, char key)
{
    on_type<RotationForm>(c, f, key);
    rotation_form_edit(f, c.s.edit);
    return DialogStep::done;
}

DialogStep on_type(Ctx&, InterpolationForm&, char)
{
    return DialogStep::not_here;
}
DialogStep on_type(Ctx&, ColourForm&, char)
{
    return DialogStep::not_here;
}

DialogStep on_type(Ctx& c, ControlForm& f, char key)
{
    control_form_type(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, MaterialForm& f, char key)
{
    material_form_type(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, LayerForm& f, char key)
{
    layer_form_type(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, PiezoForm& f, char key)
{
    piezo_form_type(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, PositionsForm& f, char key)
{
    positions_form_type(f, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, SectionEditor& ed, char key)
{
    if (ed.scale.open)
        scale_form_type(ed.scale, c.port, key);
    else
        table_type(c.p, ed, c.port, key);
    return DialogStep::done;
}

DialogStep on_type(Ctx& c, GraphicsOptionsForm& f, char key)
{
    graphics_options_form_type(f, c.port, key);
    return DialogStep::done;
}

// The text a form holds in its current cell: what `clear` removes.
template <class F> std::size_t current_text_length(const Ctx&, const F&)
{
    return 0;
}
std::size_t current_text_length(const Ctx&, const ControlForm& f)
{
    return f.edit.size();
}
std::size_t current_text_length(const Ctx&, const MaterialForm& f)
{
    return f.edit.size();
}
std::size_t current_text_length(const Ctx&, const LayerForm& f)
{
    return f.edit_text.size();
}
std::size_t current_text_length(const Ctx&, const PiezoForm& f)
{
    return f.edit_text.size();
}
std::size_t current_text_length(const Ctx&, const PositionsForm& f)
{
    return f.edit.size();
}
std::size_t current_text_length(const Ctx&, const SectionEditor& ed)
{
    if (ed.scale.open)
        return ed.scale.cells[std::size_t((ed.scale.row - 1) * 2 + ed.scale.col - 1)].size();
    return ed.cell_text.size();
}
std::size_t current_text_length(const Ctx&, const GraphicsOptionsForm& f)
{
    return (f.field == 1 ? f.text1 : f.text2).size();
}

// --- keys

template <class F> DialogStep on_key(Ctx&, F&, FormKey)
{
    return DialogStep::not_here;
}

DialogStep on_key(Ctx&, ControlForm& f, FormKey key)
{
    control_form_key(f, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, MaterialForm& f, FormKey key)
{
    material_form_key(c.p, f, c.port, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, LayerForm& f, FormKey key)
{
    layer_form_key(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, PiezoForm& f, FormKey key)
{
    piezo_form_key(f, c.p, c.port, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx&, PositionsForm& f, FormKey key)
{
    positions_form_key(f, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, SectionEditor& ed, FormKey key)
{
    if (ed.scale.open)
        scale_form_key(ed.scale, key);
    else
        table_key(c.p, ed, c.port, key);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, EllipsoidForm& f, FormKey key)
{
    if (key == FormKey::left || key == FormKey::right)
        return DialogStep::not_here;
    commit_edit(c.s);
    ellipsoid_preview(c.p, c.port, f);
    ellipsoid_form_key(f, key == FormKey::up     ? FieldKey::up
                          : key == FormKey::down ? FieldKey::down
                          : key == FormKey::tab  ? FieldKey::tab
                                                 : FieldKey::enter);
    c.s.row = f.field;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, CrackForm& f, FormKey key)
{
    if (key == FormKey::left || key == FormKey::right)
        return DialogStep::not_here;
    commit_edit(c.s);
    crack_form_key(f, key == FormKey::up     ? CrackKey::up
                      : key == FormKey::down ? CrackKey::down
                      : key == FormKey::tab  ? CrackKey::tab
                                             : CrackKey::enter);
    c.s.row = f.cell;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, ForceForm& f, FormKey key)
{
    commit_edit(c.s);
    // The grid moves a cell at a time within the lines held; Enter and Tab
    // go on to the next column.
    if (key == FormKey::up && c.s.row > 1)
        --c.s.row;
    else if (key == FormKey::down && c.s.row < f.count())
        ++c.s.row;
    else if (key == FormKey::left && c.s.col > 1)
        --c.s.col;
    else if ((key == FormKey::right || key == FormKey::tab || key == FormKey::enter) &&
             c.s.col < force_columns)
        ++c.s.col;
    force_form_select(f, c.s.row);
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, WedgeForm& f, FormKey key)
{
    commit_edit(c.s);
    wedge_form_key(f,
                   key == FormKey::up      ? WedgeKey::up
                   : key == FormKey::down  ? WedgeKey::down
                   : key == FormKey::left  ? WedgeKey::left
                   : key == FormKey::right ? WedgeKey::right
                   : key == FormKey::tab   ? WedgeKey::tab
                                           : WedgeKey::enter,
                   c.port);
    c.s.row = f.row;
    c.s.col = f.col;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, FieldForm& f, FormKey key)
{
    if (key == FormKey::left || key == FormKey::right)
        return DialogStep::not_here;
    commit_edit(c.s);
    // The grid of the field takes Up and Down; Enter and Tab go down as well.
    field_form_key(c.p, f, key == FormKey::up ? FieldFormKey::up : FieldFormKey::down, c.port);
    c.s.row = f.row;
    load_edit(c.s);
    return DialogStep::done;
}

// The search forms' fields in a column: Up back, Down, Enter and Tab on,
// within the cells of the form.
template <class F> DialogStep search_key(Ctx& c, F& f, FormKey key, int cells)
{
    const int step = vertical_step(key);
    if (step == 0)
        return DialogStep::not_here;
    commit_edit(c.p, c.s);
    search_preview(c.p, c.port, f);
    c.s.row = std::clamp(c.s.row + step, 1, cells);
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_key(Ctx& c, GridSearchForm& f, FormKey key)
{
    return search_key(c, f, key, grid_form_cells);
}

DialogStep on_key(Ctx& c, AutoSearchForm& f, FormKey key)
{
    return search_key(c, f, key, auto_form_cells);
}

DialogStep on_key(Ctx&, GraphicsOptionsForm& f, FormKey key)
{
    graphics_options_form_key(f, key);
    return DialogStep::done;
}

// --- choices

template <class F> DialogStep on_choose(Ctx&, F&, int)
{
    return DialogStep::not_here;
}

DialogStep on_choose(Ctx&, ControlForm& f, int choice)
{
    if (choice < 0 || choice > 1)
        return DialogStep::not_here;
    control_form_choose_water(f, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, InterpolationForm& f, int choice)
{
    if (choice < 1 || choice > 3)
        return DialogStep::not_here;
    choose_method(c.p, f, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, MaterialForm& f, int choice)
{
    if (choice < 1 || choice > 5)
        return DialogStep::not_here;
    material_form_choose_type(c.p, f, f.slot, choice - 1);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, LayerForm& f, int choice)
{
    if (choice < 0 || choice > 2)
        return DialogStep::not_here;
    layer_form_choose_method(f, c.p, c.port, f.row, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, PiezoForm& f, int choice)
{
    if (choice < 0 || choice > 2)
        return DialogStep::not_here;
    piezo_form_choose_method(f, c.p, c.port, f.row, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, CrackForm&, int choice)
{
    // The three options are numbered from 0, as crack_mode is.
    if (choice < 0 || choice > 2)
        return DialogStep::not_here;
    crack_form_choose(c.p, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, RotationForm& f, int choice)
{
    commit_edit(c.s);
    rotation_form_scroll(f, choice);
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, GraphicsOptionsForm& f, int choice)
{
    if (choice < 0 || choice > 2)
        return DialogStep::not_here;
    graphics_options_choose(c.p, f, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, WedgeForm& f, int choice)
{
    // The scroll bar: the plane shown first of the eight in view.
    commit_edit(c.s);
    f.top_row = std::clamp(choice, 1, std::max(1, f.count() - wedge_visible_rows + 1));
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, GeneralSurfaceForm& f, int choice)
{
    if (choice < 0 || choice > 1)
        return DialogStep::not_here;
    if (choose_general_method(c.p, f, choice, c.port) == GeneralNext::closed)
        close(c.s);
    return DialogStep::done;
}

DialogStep on_choose(Ctx& c, SectionEditor& ed, int choice)
{
    // The point table's vertical scroll bar; the point table of the image
    // has none.
    if (ed.scale.open)
        return DialogStep::not_here;
    table_scroll(c.p, ed, choice);
    return DialogStep::done;
}

DialogStep on_choose(Ctx&, ColourForm& f, int choice)
{
    colour_form_hscroll1(f, choice);
    return DialogStep::done;
}

// --- buttons

template <class F> DialogStep on_button(Ctx&, F&, std::string_view, int)
{
    return DialogStep::not_here;
}

DialogStep on_button(Ctx&, ControlForm& f, std::string_view b, int)
{
    if (b != "2d-3d")
        return DialogStep::not_here;
    control_form_command1(f);
    return DialogStep::done;
}

// A button pressed by name: the action of the first entry of that name, or
// not_here when the form has no such button.
struct ButtonAction {
    std::string_view name;
    std::function<void()> act;
};

DialogStep press(std::string_view b, std::initializer_list<ButtonAction> actions)
{
    for (const ButtonAction& a : actions)
        if (a.name == b) {
            a.act();
            return DialogStep::done;
        }
    return DialogStep::not_here;
}

DialogStep on_button(Ctx& c, MaterialForm& f, std::string_view b, int)
{
    return press(b, {{"add-discontinuity", [&] { material_form_add_discontinuity(c.p, f, c.port); }},
                     {"delete-discontinuity", [&] { material_form_delete_discontinuity(c.p, f, c.port); }}});
}

DialogStep on_button(Ctx& c, LayerForm& f, std::string_view b, int)
{
    return press(b, {{"add", [&] { layer_form_add_surface(f, c.p, c.port); }},
                     {"insert", [&] { layer_form_insert_surface(f, c.p, c.port); }},
                     {"delete", [&] { layer_form_delete_surface(f, c.p, c.port); }},
                     {"change", [&] { layer_form_change(f, c.p, c.port); }}});
}

DialogStep on_button(Ctx& c, PiezoForm& f, std::string_view b, int)
{
    return press(b, {{"add", [&] { piezo_form_add_surface(f, c.p, c.port); }},
                     {"insert", [&] { piezo_form_insert_surface(f, c.p, c.port); }},
                     {"delete", [&] { piezo_form_delete_surface(f, c.p, c.port); }},
                     {"change", [&] { piezo_form_change(f, c.p, c.port); }}});
}

DialogStep on_button(Ctx& c, PositionsForm& f, std::string_view b, int)
{
    return press(b, {{"add-section", [&] { positions_form_add_section(c.p, f, c.port); }},
                     {"insert-section", [&] { positions_form_insert_section(c.p, f, c.port); }},
                     {"delete-section", [&] { positions_form_delete_section(c.p, f, c.port); }}});
}

DialogStep on_button(Ctx& c, SectionEditor& ed, std::string_view b, int arg)
{
    Project& p = c.p;
    Port& port = c.port;
    return press(b, {{"toggle-line", [&] { toggle_line(p, ed, port); }},
                     {"toggle-section", [&] { toggle_section(p, ed, port); }},
                     {"goto-line", [&] { goto_line(p, ed, port, arg); }},
                     {"goto-section", [&] { goto_section(p, ed, port, arg); }},
                     {"copy-layer", [&] { copy_layer(p, ed, port, arg); }},
                     {"copy-section", [&] { copy_section(p, ed, port, arg); }},
                     {"copy-above", [&] { copy_above(p, ed, port); }},
                     {"copy-below", [&] { copy_below(p, ed, port); }},
                     {"insert-point", [&] { insert_point(ed); }},
                     {"delete-point", [&] { delete_point(ed); }},
                     {"zoom-in", [&] { zoom_in(ed); }},
                     {"zoom-out", [&] { zoom_out(p, ed, port); }},
                     {"fit", [&] { fit_to_screen(p, ed, port); }},
                     {"clusters", [&] { toggle_clusters(ed); }},
                     {"snapping", [&] { toggle_snap(p, ed); }},
                     {"load-image", [&] { load_image(p, ed, port); }},
                     {"rescale-image", [&] { rescale_image(p, ed); }},
                     {"unload-image", [&] { unload_image(p, ed, port); }}});
}

DialogStep on_button(Ctx& c, EllipsoidForm& f, std::string_view b, int)
{
    commit_edit(c.s);
    if (b == "zoom-in")
        ellipsoid_form_zoom_in(c.p, f, c.port);
    else if (b == "zoom-out")
        ellipsoid_form_zoom_out(c.p, f, c.port);
    else
        return DialogStep::not_here;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_button(Ctx& c, ForceForm& f, std::string_view b, int)
{
    commit_edit(c.s);
    if (b == "add")
        force_form_add(f, c.port);
    else if (b == "delete")
        force_form_delete(f);
    else
        return DialogStep::not_here;
    c.s.row = f.row;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_button(Ctx& c, WedgeForm& f, std::string_view b, int)
{
    commit_edit(c.s);
    if (b == "add")
        wedge_form_add_row(f, c.port);
    else if (b == "delete")
        wedge_form_delete_row(f);
    else
        return DialogStep::not_here;
    c.s.row = f.row;
    c.s.col = f.col;
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_button(Ctx& c, GeneralSurfaceForm& f, std::string_view b, int)
{
    if (b == "file") {
        if (choose_general_grid_file(c.p, f, c.port) == GeneralNext::closed)
            close(c.s);
        return DialogStep::done;
    }
    if (b == "field") {
        // The field form comes up over this one, which waits beneath it.
        GeneralSurfaceForm beneath = f;
        take(c.s, open_field_form(c.p));
        c.s.general_beneath = std::move(beneath);
        return DialogStep::done;
    }
    // The buttons shared with the layer forms have no action here.
    if (b == "add-surface" || b == "delete-surface" || b == "change")
        return DialogStep::done;
    return DialogStep::not_here;
}

// "Change to Common Point" / "Change to Common Tangent" of both search forms.
template <class Form> DialogStep toggle_common(Ctx& c, Form& f, std::string_view b, void (*toggle)(Form&))
{
    if (b != "common")
        return DialogStep::not_here;
    commit_edit(c.p, c.s);
    toggle(f);
    search_preview(c.p, c.port, f);
    load_edit(c.s);
    return DialogStep::done;
}

DialogStep on_button(Ctx& c, GridSearchForm& f, std::string_view b, int)
{
    return toggle_common(c, f, b, grid_form_toggle_common);
}

DialogStep on_button(Ctx& c, AutoSearchForm& f, std::string_view b, int)
{
    return toggle_common(c, f, b, auto_form_toggle_common);
}

DialogStep on_button(Ctx& c, GraphicsOptionsForm& f, std::string_view b, int)
{
    if (b != "default")
        return DialogStep::not_here;
    graphics_options_form_default(c.p, f, c.port);
    return DialogStep::done;
}

DialogStep on_button(Ctx& c, ColourForm& f, std::string_view b, int)
{
    if (b != "revert")
        return DialogStep::not_here;
    colour_form_revert_to_default_colour_scheme(c.p, f, c.port);
    return DialogStep::done;
}

// --- the chain: what follows each Continue

void open_next_positions(Ctx& c)
{
    take(c.s, open_positions_form(c.p));
}

void finish_load(Ctx& c)
{
    show_finished_load_view(c.p, c.port);
}

void on_continue(Ctx& c, ControlForm& f)
{
    const ControlNext next = continue_control_form(c.p, f, c.port);
    if (next == ControlNext::stays_open)
        return;
    close(c.s);
    if (next == ControlNext::to_interpolation)
        take(c.s, open_interpolation_form(c.p));
}

void on_continue(Ctx& c, InterpolationForm& f)
{
    const InterpolationForm form = f;
    close(c.s);
    if (continue_interpolation_form(c.p, form, c.port) == InterpolationNext::to_materials)
        take(c.s, open_material_form(c.p));
    else
        finish_load(c);
}

void on_continue(Ctx& c, MaterialForm& f)
{
    MaterialForm form = std::move(f);
    close(c.s);
    if (continue_material_form(c.p, form, c.port) == MaterialNext::to_layers)
        take(c.s, open_layer_form(c.p));
}

void on_continue(Ctx& c, LayerForm& f)
{
    LayerForm form = f;
    close(c.s);
    switch (continue_layer_form(c.p, form, c.port)) {
    case LayerNext::to_piezos: take(c.s, open_piezo_form(c.p)); break;
    case LayerNext::to_positions: open_next_positions(c); break;
    case LayerNext::finished: finish_load(c); break;
    }
}

void on_continue(Ctx& c, PiezoForm& f)
{
    PiezoForm form = f;
    close(c.s);
    if (continue_piezo_form(c.p, form, c.port) == PiezoNext::to_positions)
        open_next_positions(c);
    else
        finish_load(c);
}

void on_continue(Ctx& c, PositionsForm& f)
{
    const PositionsNext next = continue_positions_form(c.p, f, c.port);
    if (next == PositionsNext::stays_open)
        return;
    close(c.s);
    if (next == PositionsNext::to_section_editor)
        take(c.s, editor_open(c.p, c.port));
}

void on_continue(Ctx& c, SectionEditor& ed)
{
    if (ed.scale.open) {
        // Continue of the point table over the editor.
        continue_scale_form(c.p, ed, c.port);
        return;
    }
    SectionEditor editor = std::move(ed);
    close(c.s);
    switch (continue_editor(c.p, editor, c.port)) {
    case EditorNext::finished: finish_load(c); break;
    case EditorNext::general_done: break;
    case EditorNext::to_wedge: take(c.s, open_wedge_form(c.p)); break;
    }
}

void on_continue(Ctx& c, ForceForm& f)
{
    continue_force_form(c.p, f);
}
void on_continue(Ctx& c, CrackForm& f)
{
    continue_crack_form(c.p, f);
}
void on_continue(Ctx& c, EllipsoidForm& f)
{
    if (continue_ellipsoid_form(c.p, f, c.port) == EllipsoidNext::to_wedge_form)
        take(c.s, open_wedge_form(c.p));
}
void on_continue(Ctx& c, WedgeForm& f)
{
    continue_wedge_form(c.p, f, c.port);
}

void on_continue(Ctx& c, GeneralSurfaceForm& f)
{
    const GeneralSurfaceForm form = f;
    close(c.s);
    switch (continue_general_surface_form(c.p, form, c.port)) {
    case GeneralNext::section_editor:
        // The editor opens on section 1 with the sliding line the one edited.
        c.p.edit_general = true;
        c.p.view_row = 1;
        take(c.s, editor_open(c.p, c.port));
        break;
    case GeneralNext::to_wedge_form: take(c.s, open_wedge_form(c.p)); break;
    default: break;
    }
}

// The general surface form comes back when the field form over it ends.
void back_to_general(Ctx& c)
{
    if (!c.s.general_beneath)
        return;
    GeneralSurfaceForm form = std::move(*c.s.general_beneath);
    c.s.general_beneath.reset();
    take(c.s, std::move(form));
}

void on_continue(Ctx& c, FieldForm& f)
{
    continue_field_form(c.p, f, c.port);
    back_to_general(c);
}

void on_continue(Ctx& c, GridSearchForm& f)
{
    if (continue_grid_search_form(c.p, f, c.port) == SearchFormNext::to_wedge_form)
        take(c.s, open_wedge_form(c.p));
}

void on_continue(Ctx& c, AutoSearchForm& f)
{
    if (continue_auto_search_form(c.p, f, c.port) == SearchFormNext::to_wedge_form)
        take(c.s, open_wedge_form(c.p));
}
void on_continue(Ctx& c, RotationForm& f)
{
    continue_rotation_form(c.p, f);
}
void on_continue(Ctx& c, GraphicsOptionsForm& f)
{
    continue_graphics_options_form(c.p, f, c.port);
}
void on_continue(Ctx& c, ColourForm& f)
{
    colour_form_save_and_exit(c.p, f, c.port);
}
void on_continue(Ctx&, std::monostate&) {}

template <class F> void on_cancel(Ctx&, F&) {}
void on_cancel(Ctx& c, ControlForm& f)
{
    cancel_control_form(c.p, f);
}
void on_cancel(Ctx& c, MaterialForm& f)
{
    cancel_material_form(c.p, f);
}
void on_cancel(Ctx& c, LayerForm& f)
{
    cancel_layer_form(c.p, f);
}
void on_cancel(Ctx& c, PiezoForm& f)
{
    cancel_piezo_form(c.p, f);
}
void on_cancel(Ctx& c, PositionsForm& f)
{
    cancel_positions_form(c.p, f);
}
void on_cancel(Ctx&, ForceForm& f)
{
    cancel_force_form(f);
}
void on_cancel(Ctx& c, CrackForm&)
{
    cancel_crack_form(c.p);
}
void on_cancel(Ctx& c, GraphicsOptionsForm& f)
{
    cancel_graphics_options_form(c.p, f);
}
void on_cancel(Ctx& c, ColourForm& f)
{
    cancel_colour_form(c.p, f);
}
void on_cancel(Ctx& c, WedgeForm&)
{
    cancel_wedge_form(c.p);
}
void on_cancel(Ctx& c, GeneralSurfaceForm&)
{
    cancel_general_surface_form(c.p);
}
void on_cancel(Ctx& c, FieldForm&)
{
    cancel_field_form(c.p);
}

} // namespace

bool dialog_open(const DialogSession& s)
{
    return !std::holds_alternative<std::monostate>(s.form);
}

std::string dialog_caption(const DialogSession& s)
{
    struct {
        std::string operator()(const std::monostate&) const { return ""; }
        std::string operator()(const ControlForm&) const { return control_form_caption; }
        std::string operator()(const InterpolationForm&) const { return "Interpolation Method"; }
        std::string operator()(const MaterialForm&) const { return material_form_caption; }
        std::string operator()(const LayerForm&) const { return layer_form_caption; }
        std::string operator()(const PiezoForm&) const { return piezo_form_caption; }
        std::string operator()(const PositionsForm&) const { return positions_form_caption; }
        std::string operator()(const SectionEditor& ed) const
        {
            return ed.scale.open ? "Image Scale Point Coordinates" : "Section Editor";
        }
        std::string operator()(const ForceForm&) const { return force_form_caption; }
        std::string operator()(const CrackForm&) const { return crack_form_caption; }
        std::string operator()(const EllipsoidForm&) const { return ellipsoid_form_caption; }
        std::string operator()(const RotationForm&) const { return "Rotation Angle"; }
        std::string operator()(const GraphicsOptionsForm&) const { return graphics_options_caption; }
        std::string operator()(const ColourForm&) const { return colour_form_caption; }
        // The wedge and search forms have no caption of their own in the
        // description; they take the names of their menu items.
        std::string operator()(const WedgeForm&) const { return "Wedge Sliding Surface"; }
        std::string operator()(const GeneralSurfaceForm&) const { return general_form_caption; }
        std::string operator()(const FieldForm&) const { return field_form_caption; }
        std::string operator()(const GridSearchForm&) const { return "Grid Search"; }
        std::string operator()(const AutoSearchForm&) const { return "Auto Search"; }
    } caption;
    return std::visit(caption, s.form);
}

DialogKind parse_dialog_kind(std::string_view name)
{
    static const std::pair<std::string_view, DialogKind> names[] = {
        {"control", DialogKind::control},
        {"interpolation", DialogKind::interpolation},
        {"materials", DialogKind::materials},
        {"layers", DialogKind::layers},
        {"piezos", DialogKind::piezos},
        {"positions", DialogKind::positions},
        {"sections", DialogKind::sections},
        {"forces", DialogKind::forces},
        {"crack", DialogKind::crack},
        {"ellipsoid", DialogKind::ellipsoid},
        {"rotation", DialogKind::rotation},
        {"graphics-options", DialogKind::graphics_options},
        {"colours", DialogKind::colours},
        {"wedge", DialogKind::wedge},
        {"general", DialogKind::general},
        {"field", DialogKind::field},
        {"grid-search", DialogKind::grid_search},
        {"auto-search", DialogKind::auto_search},
    };
    for (const auto& [n, kind] : names)
        if (n == name)
            return kind;
    return DialogKind::none;
}

const char* dialog_menu_control(DialogKind kind)
{
    switch (kind) {
    case DialogKind::none: return "";
    case DialogKind::control: return "Edit_control_parameters";
    case DialogKind::interpolation: return "Edit_GeomOptions";
    case DialogKind::materials: return "Edit_material_properties";
    case DialogKind::layers: return "layersurfaces";
    case DialogKind::piezos: return "piezometric_surfaces";
    case DialogKind::positions: return "Edit_crosssection_positions";
    case DialogKind::sections: return "Edit_Crosssections";
    case DialogKind::forces: return "extforces";
    case DialogKind::crack: return "tension_crack";
    case DialogKind::ellipsoid: return "ellipsoid";
    case DialogKind::rotation: return "Rotation_angle";
    case DialogKind::graphics_options: return "Graphics_Options";
    case DialogKind::colours: return "colors";
    case DialogKind::wedge: return "Edit_Sliding_surface_wedge";
    // The field form is reached from the general surface form.
    case DialogKind::general:
    case DialogKind::field: return "Edit_Sliding_surface_general";
    case DialogKind::grid_search: return "Solve_grid_search";
    case DialogKind::auto_search: return "Solve_auto_search";
    }
    return "";
}

void open_surface_dialog(Project& p, Port& port, DialogSession& s, SurfaceCommand which)
{
    close(s);
    s.general_beneath.reset();
    begin_surface_command(p, port, which);
    switch (which) {
    case SurfaceCommand::ellipsoid:
    case SurfaceCommand::composite:
        take(s, open_ellipsoid_form(p));
        ellipsoid_preview(p, port, std::get<EllipsoidForm>(s.form));
        return;
    case SurfaceCommand::wedge: take(s, open_wedge_form(p)); return;
    case SurfaceCommand::general:
    case SurfaceCommand::general_wedge: take(s, open_general_surface_form(p)); return;
    }
}

void open_search_dialog(Project& p, Port& port, DialogSession& s, bool grid, bool composite)
{
    close(s);
    s.general_beneath.reset();
    // As every surface command: clear water and forces, keep_window 0.
    reset_forces(p);
    p.keep_window = 0;
    p.form_mode = int16(composite ? (grid ? 5 : 6) : 0);
    p.view_mode = int16(grid ? 7 : 8);
    p.pictures.search.caption = search_setup_window_caption();
    bring_up(p, p.pictures.search, port);
    if (grid) {
        take(s, open_grid_search_form(p));
        search_preview(p, port, std::get<GridSearchForm>(s.form));
    } else {
        take(s, open_auto_search_form(p));
        search_preview(p, port, std::get<AutoSearchForm>(s.form));
    }
}

void open_dialog(Project& p, Port& port, DialogSession& s, DialogKind kind)
{
    close(s);
    s.general_beneath.reset();
    switch (kind) {
    case DialogKind::none: return;
    case DialogKind::control:
        p.form_mode = 1;
        take(s, open_control_form(p, s.today));
        return;
    case DialogKind::interpolation: take(s, open_interpolation_form(p)); return;
    case DialogKind::materials: take(s, open_material_form(p)); return;
    case DialogKind::layers: take(s, open_layer_form(p)); return;
    case DialogKind::piezos: take(s, open_piezo_form(p)); return;
    case DialogKind::positions:
        // The plan of the assembly comes up beside the positions.
        p.view_mode = 6;
        draw_plan_assembly(p, port);
        take(s, open_positions_form(p));
        return;
    case DialogKind::sections:
        p.form_mode = 0;
        p.view_row = 1;
        take(s, editor_open(p, port));
        return;
    case DialogKind::forces: take(s, open_force_form(p)); return;
    case DialogKind::crack: take(s, open_crack_form(p)); return;
    case DialogKind::ellipsoid: open_surface_dialog(p, port, s, SurfaceCommand::ellipsoid); return;
    case DialogKind::wedge: open_surface_dialog(p, port, s, SurfaceCommand::wedge); return;
    case DialogKind::general: open_surface_dialog(p, port, s, SurfaceCommand::general); return;
    case DialogKind::field: take(s, open_field_form(p)); return;
    case DialogKind::grid_search: open_search_dialog(p, port, s, true, false); return;
    case DialogKind::auto_search: open_search_dialog(p, port, s, false, false); return;
    case DialogKind::rotation: take(s, open_rotation_form(p)); return;
    case DialogKind::graphics_options: take(s, open_graphics_options_form(p)); return;
    case DialogKind::colours: take(s, open_colour_form(p)); return;
    }
}

void new_project(Project& p, Port& port, DialogSession& s)
{
    close(s);
    if (!file_new(p, port))
        return;
    take(s, open_control_form(p, s.today));
}

void start_form_button(Project& p, Port& port, DialogSession& s, int button)
{
    if (button == 1) {
        p.form_mode = 2;
        take(s, open_control_form(p, s.today));
    } else if (button == 2) {
        close(s);
        file_open(p, port);
    }
}

DialogStep dialog_select(Project& p, Port& port, DialogSession& s, int row, int col)
{
    Ctx c{p, port, s};
    return std::visit([&](auto& f) { return on_select(c, f, row, col); }, s.form);
}

DialogStep dialog_type(Project& p, Port& port, DialogSession& s, char key)
{
    Ctx c{p, port, s};
    return std::visit([&](auto& f) { return on_type(c, f, key); }, s.form);
}

DialogStep dialog_clear(Project& p, Port& port, DialogSession& s)
{
    Ctx c{p, port, s};
    if (number_form(s)) {
        s.edit.clear();
        s.edited = true;
        return DialogStep::done;
    }
    // Backspace through the form's own filter, which always lets it pass.
    std::size_t n = std::visit([&](auto& f) { return current_text_length(c, f); }, s.form);
    while (n-- > 0)
        if (dialog_type(p, port, s, '\b') == DialogStep::not_here)
            return DialogStep::not_here;
    return DialogStep::done;
}

DialogStep dialog_key(Project& p, Port& port, DialogSession& s, FormKey key)
{
    Ctx c{p, port, s};
    return std::visit([&](auto& f) { return on_key(c, f, key); }, s.form);
}

DialogStep dialog_choose(Project& p, Port& port, DialogSession& s, int choice)
{
    Ctx c{p, port, s};
    return std::visit([&](auto& f) { return on_choose(c, f, choice); }, s.form);
}

DialogStep dialog_button(Project& p, Port& port, DialogSession& s, std::string_view button, int arg)
{
    Ctx c{p, port, s};
    return std::visit([&](auto& f) { return on_button(c, f, button, arg); }, s.form);
}

DialogStep dialog_pointer(Project& p, Port& port, DialogSession& s, PointerAction action,
                          PointerButton button, bool shift, double y, double e)
{
    if (auto* ed = std::get_if<SectionEditor>(&s.form)) {
        // The legend box stands over the picture as a control of its own: a
        // left press on it takes the box, not the picture.
        if (action == PointerAction::down && button == PointerButton::left && !shift &&
            !ed->legend.dragging && legend_hit(*ed, y, e))
            legend_drag_begin(*ed, y, e);
        else if (action == PointerAction::down)
            pointer_down(p, *ed, port, button, shift, y, e);
        else if (action == PointerAction::move)
            pointer_move(p, *ed, port, button, shift, y, e);
        else
            pointer_up(p, *ed, port, button, shift, y, e);
        return DialogStep::done;
    }
    if (auto* f = std::get_if<EllipsoidForm>(&s.form)) {
        // The handles of the centre and the tangent plane are dragged; the
        // fields follow.
        commit_edit(s);
        const SetupParameters set{3, std::span<float>(f->values), false};
        if (action == PointerAction::down) {
            setup_pointer_down(p, set, s.drag, y, e);
        } else if (action == PointerAction::move) {
            if (!setup_pointer_move(p, set, s.drag, y, e).empty())
                show_setup(p, port, set);
        } else {
            setup_pointer_up(s.drag);
        }
        load_edit(s);
        return DialogStep::done;
    }
    if (auto* g = std::get_if<GridSearchForm>(&s.form)) {
        search_pointer(p, port, s, *g, 7, action, y, e);
        return DialogStep::done;
    }
    if (auto* a = std::get_if<AutoSearchForm>(&s.form)) {
        search_pointer(p, port, s, *a, 8, action, y, e);
        return DialogStep::done;
    }
    if (auto* f = std::get_if<ColourForm>(&s.form)) {
        if (action == PointerAction::down)
            colour_form_sampler_click(*f, y, e);
        return DialogStep::done;
    }
    return DialogStep::not_here;
}

void dialog_continue(Project& p, Port& port, DialogSession& s)
{
    Ctx c{p, port, s};
    commit_edit(p, s);
    // Forms that end here whatever Continue does are closed first, so that
    // a form opened by the chain replaces them.
    std::visit(
        [&](auto& f) {
            using F = std::decay_t<decltype(f)>;
            if constexpr (std::is_same_v<F, ForceForm> || std::is_same_v<F, CrackForm> ||
                          std::is_same_v<F, EllipsoidForm> || std::is_same_v<F, RotationForm> ||
                          std::is_same_v<F, GraphicsOptionsForm> || std::is_same_v<F, ColourForm> ||
                          std::is_same_v<F, WedgeForm> || std::is_same_v<F, FieldForm> ||
                          std::is_same_v<F, GridSearchForm> || std::is_same_v<F, AutoSearchForm>) {
                F form = std::move(f);
                close(s);
                on_continue(c, form);
            } else {
                on_continue(c, f);
            }
        },
        s.form);
}

void dialog_cancel(Project& p, Port& port, DialogSession& s)
{
    Ctx c{p, port, s};
    if (auto* ed = std::get_if<SectionEditor>(&s.form); ed && ed->scale.open) {
        cancel_scale_form(p, *ed, port);
        return;
    }
    std::visit([&](auto& f) { on_cancel(c, f); }, s.form);
    if (auto* ed = std::get_if<SectionEditor>(&s.form))
        cancel_editor(p, *ed);
    close(s);
    back_to_general(c);
}

} // namespace tobel
