#include "dialogs/material_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "project/defaults.h"
#include "project/numtext.h"

namespace tobel {

namespace {

constexpr char key_backspace = 8;
constexpr char key_tab = 9;
constexpr char key_return = 13;
constexpr int last_first_entry = material_scroll_limit - material_slots + 1;
constexpr int type_hard_layer = 3; // list indices
constexpr int type_water = 4;

bool is_layer(const Project& p, int e)
{
    return e >= 1 && e <= p.num_layers;
}

bool is_discontinuity(const Project& p, int e)
{
    return e > p.num_layers && e <= p.num_mat_entries;
}

bool is_entry(const Project& p, int e)
{
    return e >= 1 && e <= std::min<int>(p.num_mat_entries, material_table_entries);
}

// A discontinuity's list is fixed on Coulomb whatever its stored type.
int type_index_of(const Project& p, int e)
{
    return is_discontinuity(p, e) ? 0 : material_type(p, e) - 1;
}

// The selected cell becomes the one being edited.
void take_cell(MaterialForm& form)
{
    form.edit = form.cell(form.row, form.entry());
    form.before = form.edit;
}

void set_rows(MaterialForm& form, int e, int from, int to, const std::string& text)
{
    for (int r = from; r <= to; ++r)
        form.cell(r, e) = text;
}

void copy_entry(Project& p, MaterialForm& form, int to, int from)
{
    for (int r = 1; r <= material_rows; ++r)
        form.cell(r, to) = form.cell(r, from);
    p.mat_type[std::size_t(to)] = p.mat_type[std::size_t(from)];
}

void ask_to_add_on_new_slot(Project& p, MaterialForm& form, Port& port, int old_entry)
{
    if (form.entry() == old_entry || form.entry() != p.num_mat_entries + 1)
        return;
    if (port.message_box(material_add_question, Buttons::yes_no, Icon::none, "") == Answer::yes)
        material_form_add_discontinuity(p, form, port);
}

// Moves the selection to (row, slot), scrolling by one entry when the slot
// lies past either visible edge.
void move_to(Project& p, MaterialForm& form, Port& port, int row, int slot)
{
    material_form_store(p, form, port);
    const int old_entry = form.entry();
    form.row = std::clamp(row, 1, material_rows);
    if (slot < 1) {
        form.first = std::max(form.first - 1, 1);
        form.slot = 1;
    } else if (slot > material_slots) {
        form.first = std::min(form.first + 1, last_first_entry);
        form.slot = material_slots;
    } else {
        form.slot = slot;
    }
    material_form_redraw(p, form);
    take_cell(form);
    ask_to_add_on_new_slot(p, form, port, old_entry);
}

} // namespace

MaterialForm open_material_form(Project& p)
{
    MaterialForm form;
    const int n = std::min<int>(p.num_mat_entries, material_table_entries);
    for (int e = 1; e <= n; ++e) {
        const std::size_t m = std::size_t(e);
        if (p.mat_type[m] == 0)
            p.mat_type[m] = 1;
        form.cell(mrow_name, e) = p.mat_name[m];
        form.cell(mrow_unit_weight, e) = str(p.mat_unit_weight[m]);
        form.cell(mrow_cohesion, e) = str(p.mat_cohesion[m]);
        form.cell(mrow_cohesion_v, e) = str(p.mat_cohesion_v[m]);
        form.cell(mrow_phi, e) = str(p.mat_phi[m]);
        form.cell(mrow_phi_v, e) = str(p.mat_phi_v[m]);
        form.cell(mrow_piezo, e) = str(p.mat_piezo[m] < 0 ? -p.mat_piezo[m] : 0.0f);
        form.cell(mrow_ratio, e) = str(p.mat_piezo[m] > 0 ? p.mat_piezo[m] : 0.0f);
        form.cell(mrow_bbar, e) = str(p.mat_bbar[m]);
        form.cell(mrow_coef_a, e) = str(p.mat_coef_a[m]);
        form.cell(mrow_coef_b, e) = str(p.mat_coef_b[m]);
        form.cell(mrow_uniaxial, e) = str(p.mat_uniaxial[m]);
        form.cell(mrow_coef_d, e) = str(p.mat_coef_d[m]);
    }
    form.scroll_visible = p.num_mat_entries > material_slots;
    material_form_redraw(p, form);
    take_cell(form);
    return form;
}

bool material_cell_locked(bool discontinuity, int t, int row)
{
    if (discontinuity && row == 2)
        return true;
    if ((t == type_hard_layer || t == type_water) && row > 1)
        return true;
    if ((t == 0 || t == 1) && row >= 10 && row <= 13)
        return true;
    if (t == 2 && row >= 3 && row <= 6)
        return true;
    if (t == 0 && (row == 4 || row == 6))
        return true;
    return false;
}

std::int32_t material_cell_colour(const Project& p, const MaterialForm& form, int row, int slot)
{
    const int e = form.entry_at(slot);
    if (!is_entry(p, e))
        return material_text_colour;
    return material_cell_locked(is_discontinuity(p, e), type_index_of(p, e), row) ? material_locked_colour
                                                                                  : material_text_colour;
}

std::string material_slot_heading(const Project& p, const MaterialForm& form, int slot)
{
    const int e = form.entry_at(slot);
    // The numbers in plain general text, without a sign blank.
    if (is_layer(p, e))
        return "Material " + general_text(float(e));
    if (is_discontinuity(p, e))
        return "Disc. " + general_text(float(e - p.num_layers));
    return "";
}

std::optional<std::int32_t> material_slot_colour(const Project& p, const MaterialForm& form, int slot)
{
    const int e = form.entry_at(slot);
    if (!is_layer(p, e))
        return std::nullopt;
    if (material_type(p, e) == 5)
        return p.piezo_colour[13];
    return p.layer_colour[std::size_t(std::min(e, colour_entries))];
}

std::vector<std::string> material_type_list(const Project& p, const MaterialForm& form, int slot)
{
    const int e = form.entry_at(slot);
    if (is_layer(p, e))
        return {material_type_names.begin(), material_type_names.end()};
    if (is_discontinuity(p, e))
        return {material_type_names[0]};
    return {};
}

bool material_type_list_locked(const Project& p, const MaterialForm& form, int slot)
{
    return !is_layer(p, form.entry_at(slot));
}

int material_type_index(const Project& p, const MaterialForm& form, int slot)
{
    return type_index_of(p, form.entry_at(slot));
}

void material_form_redraw(const Project& p, MaterialForm& form)
{
    for (int s = 1; s <= material_slots; ++s) {
        const int e = form.entry_at(s);
        if (!is_entry(p, e))
            continue;
        if (is_discontinuity(p, e))
            form.cell(mrow_unit_weight, e) = "0";
        if (material_type(p, e) != 4)
            for (int r : {int(mrow_phi), int(mrow_phi_v)})
                if (val(form.cell(r, e)) == 90)
                    form.cell(r, e) = "0";
    }
}

void material_form_choose_type(Project& p, MaterialForm& form, int slot, int index)
{
    const int e = form.entry_at(slot);
    if (!is_layer(p, e) || index < 0 || index >= int(material_type_names.size()))
        return;
    // The list takes the focus: the cell being edited keeps what was typed.
    form.cell(form.row, form.entry()) = form.edit;
    p.mat_type[std::size_t(e)] = int16(index + 1);
    if (index == type_water) {
        form.cell(mrow_name, e) = "Water";
        form.cell(mrow_unit_weight, e) = general_text(p.unit_weight_water);
        set_rows(form, e, mrow_cohesion, material_rows, "0");
    } else if (index == type_hard_layer) {
        form.cell(mrow_name, e) = "Hard Surf.";
        set_rows(form, e, mrow_unit_weight, material_rows, "0");
        form.cell(mrow_phi, e) = "90";
    }
    material_form_redraw(p, form);
    take_cell(form);
}

void material_form_key(Project& p, MaterialForm& form, Port& port, FormKey key)
{
    switch (key) {
    case FormKey::up: move_to(p, form, port, form.row - 1, form.slot); break;
    case FormKey::down: move_to(p, form, port, form.row + 1, form.slot); break;
    case FormKey::left: move_to(p, form, port, form.row, form.slot - 1); break;
    case FormKey::right: move_to(p, form, port, form.row, form.slot + 1); break;
    case FormKey::enter:
    case FormKey::tab: material_form_store(p, form, port); break;
    }
}

void material_form_select(Project& p, MaterialForm& form, Port& port, int row, int slot)
{
    if (row < 1 || row > material_rows || slot < 1 || slot > material_slots)
        return;
    move_to(p, form, port, row, slot);
}

void material_form_scroll(Project& p, MaterialForm& form, Port& port, int position)
{
    material_form_store(p, form, port);
    form.first = std::clamp(position, 1, last_first_entry);
    material_form_redraw(p, form);
    take_cell(form);
}

std::string material_piezo_message(const Project& p)
{
    return "Only " + str(int(p.num_piezos)) + " Piezo surfaces exist";
}

void material_form_store(const Project& p, MaterialForm& form, Port& port)
{
    const int e = form.entry();
    std::string& text = form.cell(form.row, e);
    text = form.edit;
    if (form.row == mrow_piezo && val(text) > p.num_piezos) {
        port.message_box(material_piezo_message(p), Buttons::ok, Icon::none, "");
        text = form.before;
        form.edit = form.before;
    }
    // A piezometric surface and a pore pressure ratio exclude each other.
    if (form.row == mrow_piezo && val(text) > 0)
        form.cell(mrow_ratio, e) = "0";
    if (form.row == mrow_ratio && val(text) > 0)
        form.cell(mrow_piezo, e) = "0";
    form.before = text;
}

bool material_key_accepted(int row, const std::string& text, char key, int caret)
{
    if (key == key_return || key == key_tab)
        return false;
    if (row == mrow_name)
        return true;
    if (key == key_backspace || (key >= '0' && key <= '9'))
        return true;
    if (key == '.')
        return row != mrow_piezo && text.find('.') == std::string::npos;
    if (key == '-')
        return row != mrow_piezo && caret_at(text, caret) == 0;
    return false;
}

bool material_form_type(MaterialForm& form, const Project& p, Port& port, char key, int caret)
{
    (void)port;
    const int e = form.entry();
    // A locked cell is shown read-only: it takes no key.
    if (is_entry(p, e) && material_cell_locked(is_discontinuity(p, e), type_index_of(p, e), form.row))
        return false;
    if (!material_key_accepted(form.row, form.edit, key, caret))
        return false;
    edit_at_caret(form.edit, key, caret);
    return true;
}

void material_form_add_discontinuity(Project& p, MaterialForm& form, Port& port)
{
    material_form_store(p, form, port);
    int e = form.entry();
    if (is_layer(p, e)) {
        port.message_box("To add a material layer, use Stratigraphic Layers screen", Buttons::ok, Icon::none,
                         "");
        return;
    }
    if (p.num_layers + p.num_discs + 1 > p.max_materials || p.num_mat_entries + 1 > material_table_entries) {
        port.message_box("Combined number of materials and discontinuities must not exceed " +
                             str(int(p.max_materials)) + ".",
                         Buttons::ok, Icon::none, "");
        return;
    }
    // An empty slot further right adds right after the last entry, so the
    // table keeps no gap.
    e = std::min(e, p.num_mat_entries + 1);
    // 1. The entries from the selected slot up move one to the right.
    for (int k = p.num_mat_entries; k >= e; --k)
        copy_entry(p, form, k + 1, k);
    // 2. The new entry.
    form.cell(mrow_name, e) = "Discontinuity Name";
    set_rows(form, e, mrow_unit_weight, material_rows, "0");
    p.mat_type[std::size_t(e)] = 1;
    // 3. The counts.
    ++p.num_discs;
    derive_counts(p);
    form.scroll_visible = p.num_mat_entries > material_slots;
    material_form_redraw(p, form);
    take_cell(form);
}

void material_form_delete_discontinuity(Project& p, MaterialForm& form, Port& port)
{
    material_form_store(p, form, port);
    const int e = form.entry();
    if (is_layer(p, e)) {
        port.message_box("To delete a material layer, use Control Parameters or Layers screen", Buttons::ok,
                         Icon::none, "");
        return;
    }
    if (!is_discontinuity(p, e))
        return; // an empty slot holds nothing to delete
    const int last = p.num_mat_entries;
    // 1. The entries above move one to the left; the last column empties.
    for (int k = e; k < last; ++k)
        copy_entry(p, form, k, k + 1);
    set_rows(form, last, 1, material_rows, "");
    // 2. The counts.
    --p.num_discs;
    derive_counts(p);
    // 3. Deleting the last entry leaves the selection on the one before.
    if (e == last) {
        if (form.slot > 1)
            --form.slot;
        else
            form.first = std::max(form.first - 1, 1);
    }
    form.scroll_visible = p.num_mat_entries > material_slots;
    material_form_redraw(p, form);
    take_cell(form);
}

MaterialNext continue_material_form(Project& p, MaterialForm& form, Port& port)
{
    material_form_store(p, form, port);
    const int n = std::min<int>(p.num_mat_entries, material_table_entries);
    for (int e = 1; e <= n; ++e) {
        const std::size_t m = std::size_t(e);
        auto number = [&](int r) { return float(val(form.cell(r, e))); };
        p.mat_name[m] = form.cell(mrow_name, e);
        p.mat_unit_weight[m] = number(mrow_unit_weight);
        p.mat_cohesion[m] = number(mrow_cohesion);
        p.mat_cohesion_v[m] = number(mrow_cohesion_v);
        p.mat_phi[m] = number(mrow_phi);
        p.mat_phi_v[m] = number(mrow_phi_v);
        p.mat_bbar[m] = number(mrow_bbar);
        p.mat_coef_a[m] = number(mrow_coef_a);
        p.mat_coef_b[m] = number(mrow_coef_b);
        p.mat_uniaxial[m] = number(mrow_uniaxial);
        p.mat_coef_d[m] = number(mrow_coef_d);
        // The piezo surface number goes through the mask "###", which rounds
        // it to a whole number, and is kept negated.
        p.mat_piezo[m] = number(mrow_ratio);
        if (number(mrow_piezo) > 0)
            p.mat_piezo[m] = -float(val(format(double(val(form.cell(mrow_piezo, e))), "###")));
        if (material_type(p, e) == 1) {
            p.mat_cohesion_v[m] = p.mat_cohesion[m];
            p.mat_phi_v[m] = p.mat_phi[m];
        }
    }
    return p.form_mode == 2 ? MaterialNext::to_layers : MaterialNext::closed;
}

void cancel_material_form(Project& p, MaterialForm& form)
{
    p.form_mode = 0;
    form = MaterialForm{};
}

} // namespace tobel
