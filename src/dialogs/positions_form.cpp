#include "dialogs/positions_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "geometry/surface_stack.h"
#include "graphics/isometry.h"
#include "graphics/plan_views.h"
#include "project/numtext.h"

namespace tobel {

namespace {

void store_edit(PositionsForm& form)
{
    if (form.row >= 1 && form.row <= form.count)
        form.x[std::size_t(form.row)] = float(val(form.edit));
}

void select_row(PositionsForm& form, int r)
{
    form.row = std::clamp(r, 1, std::max(form.count, 1));
    form.edit = general_text(form.x[std::size_t(form.row)]);
}

int last_surface(const Project& p)
{
    return std::min<int>(p.sliding_index, section_surface_capacity);
}

// Section slot `to` takes the lines of every surface of slot `from`.
void move_lines(Project& p, int to, int from)
{
    SectionTable& t = p.sections;
    for (int k = 1; k <= last_surface(p); ++k) {
        t.n(to, k) = t.n(from, k);
        for (int n = 0; n <= section_point_capacity; ++n) {
            t.y(to, n, k) = t.y(from, n, k);
            t.z(to, n, k) = t.z(from, n, k);
        }
    }
}

void clear_lines(Project& p, int s)
{
    SectionTable& t = p.sections;
    for (int k = 1; k <= last_surface(p); ++k) {
        t.n(s, k) = 0;
        for (int n = 0; n <= section_point_capacity; ++n) {
            t.y(s, n, k) = 0;
            t.z(s, n, k) = 0;
        }
    }
}

bool at_limit(PositionsForm& form, Port& port)
{
    if (form.count >= form.max_sections || form.count >= section_capacity) {
        port.message_box(positions_limit_message(form.max_sections), Buttons::ok, Icon::none, "");
        return true;
    }
    return false;
}

// The first of the four checks of Continue that fails, "" when all pass.
std::string first_failed_check(const Project& p, const PositionsForm& form)
{
    const auto x = [&](int s) { return form.x[std::size_t(s)]; };
    // 1.
    if (p.num_rows > 1 && form.count < 2)
        return "Must have at least two sections in 3D configuration.";
    // 2.
    for (int s = 2; s <= form.count; ++s)
        if (!(x(s) > x(s - 1)))
            return "Sections must increase in order.";
    // 3.
    if (form.count > 1 && x(1) > p.x_min)
        return "Section 1 must be on or before the Min. X position.";
    // 4. The number in plain general text, as "Section 1" of check 3.
    if (form.count > 1 && x(form.count) < p.x_max)
        return "Section " + general_text(float(form.count)) + " must be on or beyond the Max. X position.";
    return "";
}

} // namespace

PositionsForm open_positions_form(const Project& p)
{
    PositionsForm form;
    form.max_sections = p.max_sections;
    form.count = std::clamp<int>(p.num_sections, 0, section_capacity);
    for (int s = 1; s <= form.count; ++s)
        form.x[std::size_t(s)] = p.sections.x[std::size_t(s)];
    select_row(form, 1);
    return form;
}

std::string positions_note(const Project& p)
{
    return "Mesh extent, X: " + general_text(p.x_min) + "  to " + general_text(p.x_max);
}

std::string positions_limit_message(int max_sections)
{
    return "Only " + str(max_sections) + " sections allowed.";
}

void positions_form_key(PositionsForm& form, FormKey key)
{
    if (const int step = vertical_step(key); step != 0) {
        store_edit(form);
        select_row(form, form.row + step);
    }
}

void positions_form_select(PositionsForm& form, int r)
{
    if (r < 1 || r > form.count)
        return;
    store_edit(form);
    select_row(form, r);
}

bool positions_form_type(PositionsForm& form, Port& port, char key, int caret)
{
    (void)port;
    if (!numeric_key_accepted(form.edit, key, caret))
        return false;
    edit_at_caret(form.edit, key, caret);
    return true;
}

void positions_form_add_section(Project& p, PositionsForm& form, Port& port)
{
    (void)p;
    store_edit(form);
    if (at_limit(form, port))
        return;
    ++form.count;
    form.x[std::size_t(form.count)] = 0;
    select_row(form, form.count);
}

void positions_form_insert_section(Project& p, PositionsForm& form, Port& port)
{
    store_edit(form);
    if (at_limit(form, port))
        return;
    const int r = std::clamp(form.row, 1, form.count + 1);
    // 1. Sections from the selected one up move one slot up, lines and all.
    for (int s = form.count; s >= r; --s) {
        form.x[std::size_t(s + 1)] = form.x[std::size_t(s)];
        move_lines(p, s + 1, s);
    }
    // 2. The freed slot is cleared.
    form.x[std::size_t(r)] = 0;
    clear_lines(p, r);
    ++form.count;
    select_row(form, r);
}

void positions_form_delete_section(Project& p, PositionsForm& form, Port& port)
{
    (void)port;
    store_edit(form);
    if (form.count < 1)
        return;
    const int r = std::clamp(form.row, 1, form.count);
    // 1. Sections above the selected one move one slot down.
    for (int s = r; s < form.count; ++s) {
        form.x[std::size_t(s)] = form.x[std::size_t(s + 1)];
        move_lines(p, s, s + 1);
    }
    // 2. The last slot is cleared.
    form.x[std::size_t(form.count)] = 0;
    clear_lines(p, form.count);
    --form.count;
    select_row(form, r);
}

PositionsNext continue_positions_form(Project& p, PositionsForm& form, Port& port)
{
    store_edit(form);
    const std::string failure = first_failed_check(p, form);
    if (!failure.empty()) {
        port.message_box(failure, Buttons::ok, Icon::none, "");
        return PositionsNext::stays_open;
    }
    p.num_sections = int16(form.count);
    for (int s = 1; s <= section_capacity; ++s)
        p.sections.x[std::size_t(s)] = form.x[std::size_t(s)];
    draw_plan_assembly(p, port);
    if (p.form_mode == 2) {
        p.view_row = 1;
        return PositionsNext::to_section_editor;
    }
    rebuild_surfaces(p, port);
    draw_isometry(p, port, p.num_layers);
    return PositionsNext::closed;
}

void cancel_positions_form(Project& p, PositionsForm& form)
{
    p.form_mode = 0;
    form = PositionsForm{};
}

} // namespace tobel
