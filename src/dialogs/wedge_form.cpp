#include "dialogs/wedge_form.h"

#include <algorithm>

#include "dialogs/numeric_entry.h"
#include "dialogs/table_rows.h"
#include "graphics/surface_view.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/moment_centre.h"
#include "surfaces/wedges.h"

namespace tobel {

std::string wedge_limit_message(int max_wedges)
{
    return "Only " + str(max_wedges) + " wedge surfaces allowed.";
}

static void limit_reached(const WedgeForm& form, Port& port)
{
    port.message_box(wedge_limit_message(form.max_wedges), Buttons::ok, Icon::none, "");
}

// Keeps the current row among the eight in view.
static void scroll_to_current(WedgeForm& form)
{
    form.top_row = top_row_showing(form.row, form.top_row, wedge_visible_rows);
}

WedgeForm open_wedge_form(const Project& p)
{
    WedgeForm form;
    form.max_wedges = p.max_wedges;
    const int n = std::clamp(int(p.num_wedges), 0, wedge_capacity);
    for (int w = 1; w <= n; ++w) {
        const std::size_t k = std::size_t(w);
        form.rows.push_back(
            {p.wedge_x[k], p.wedge_y[k], p.wedge_z[k], p.wedge_dip[k], p.wedge_dipdir[k], p.wedge_code[k]});
    }
    return form;
}

bool wedge_form_add_row(WedgeForm& form, Port& port)
{
    if (form.count() >= form.max_wedges) {
        limit_reached(form, port);
        return false;
    }
    form.rows.push_back(WedgeRow{});
    form.row = form.count();
    scroll_to_current(form);
    return true;
}

void wedge_form_delete_row(WedgeForm& form)
{
    if (form.row < 1 || form.row > form.count())
        return;
    form.rows.erase(form.rows.begin() + (form.row - 1));
    if (form.row > form.count())
        form.row = std::max(form.count(), 1);
    scroll_to_current(form);
}

// Down from the last row: a new plane, unless the form is full.
static void move_down(WedgeForm& form, Port& port)
{
    if (form.row < form.count()) {
        ++form.row;
        scroll_to_current(form);
        return;
    }
    wedge_form_add_row(form, port);
}

void wedge_form_key(WedgeForm& form, WedgeKey key, Port& port)
{
    switch (key) {
    case WedgeKey::up:
        if (form.row > 1)
            --form.row;
        break;
    case WedgeKey::down: move_down(form, port); break;
    case WedgeKey::left:
        if (form.col > 1)
            --form.col;
        break;
    case WedgeKey::right:
        if (form.col < wedge_columns)
            ++form.col;
        break;
    case WedgeKey::tab:
    case WedgeKey::enter:
        if (form.col < wedge_columns) {
            ++form.col;
            break;
        }
        {
            const int before = form.row;
            move_down(form, port);
            if (form.row != before)
                form.col = 1;
        }
        break;
    }
    scroll_to_current(form);
}

bool wedge_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

void wedge_form_enter(WedgeForm& form, int row, int col, std::string_view text)
{
    if (row < 1 || row > form.count() || col < 1 || col > wedge_columns)
        return;
    form.cell(row, col) = float(val(text));
}

// The drawing of the finished surface: the isometry in 3-D, the longitudinal
// section in 2-D; a composite search names its picture.
static std::string surface_picture_title(const Project& p)
{
    if (p.form_mode == 5)
        return "COMPOSITE GRID-SEARCH";
    if (p.form_mode == 6)
        return "COMPOSITE AUTO-SEARCH";
    return {};
}

static bool composite_mode(int16 mode)
{
    return mode == 3 || mode == 4 || mode == 5 || mode == 6;
}

void continue_wedge_form(Project& p, const WedgeForm& form, Port& port)
{
    // 1. The planes are stored before anything is built.
    p.surface_defined = -1;
    const int n = std::min(form.count(), wedge_capacity);
    for (int w = 1; w <= n; ++w) {
        const std::size_t k = std::size_t(w);
        p.wedge_x[k] = form.cell(w, wedge_col_x);
        p.wedge_y[k] = form.cell(w, wedge_col_y);
        p.wedge_z[k] = form.cell(w, wedge_col_z);
        p.wedge_dip[k] = form.cell(w, wedge_col_dip);
        p.wedge_dipdir[k] = form.cell(w, wedge_col_dipdir);
        p.wedge_code[k] = form.cell(w, wedge_col_code);
    }
    p.num_wedges = int16(n);

    // 2. A composite keeps the surface of its first form, and its kind, for
    // the planes to be laid over.
    if (!composite_mode(p.form_mode)) {
        clear_sliding_surface(p);
        p.surface_kind = 2;
    }

    // 3.
    build_wedges(p);

    // 4.
    SolveItems items = SolveItems::single_trial;
    if (p.form_mode == 3 || p.form_mode == 5 || p.form_mode == 6)
        p.surface_kind = 3;
    else if (p.form_mode == 4)
        p.surface_kind = 5;
    if (p.form_mode == 5)
        items = SolveItems::grid_search;
    else if (p.form_mode == 6)
        items = SolveItems::auto_search;
    show_solve_menu(p, items, true);

    // 5.
    apply_crack(p);
    scale_forces(p);
    find_moment_centre(p);
    show_surface_view(p, port, p.sliding_index, surface_picture_title(p));
    p.form_mode = 0;
}

void cancel_wedge_form(Project& p)
{
    p.form_mode = 0;
}

} // namespace tobel
