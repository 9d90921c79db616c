#include "dialogs/surface_rows.h"

#include <algorithm>
#include <cstddef>

#include "dialogs/numeric_entry.h"
#include "dialogs/table_rows.h"
#include "project/numtext.h"
#include "surfaces/grid_surface.h"

namespace tobel {

static int method_of(const Project& p, int k)
{
    return p.surf_method[std::size_t(k)];
}

SurfaceRow surface_row(const Project& p, int k, const std::string& caption, bool with_material)
{
    SurfaceRow row;
    row.shown = true;
    row.caption = caption;
    if (with_material)
        row.material = p.mat_name[std::size_t(k)];
    row.method = method_of(p, k);
    if (row.method >= 0 && row.method < int(surface_method_texts.size()))
        row.method_text = surface_method_texts[std::size_t(row.method)];
    row.file_active = row.method == 1;
    row.depth_active = row.method == 2;
    row.file = surface_cell_text(p, k, surface_cell_file);
    row.depth = surface_cell_text(p, k, surface_cell_depth);
    return row;
}

std::string surface_cell_text(const Project& p, int k, int cell)
{
    const std::size_t u = std::size_t(k);
    switch (cell) {
    case surface_cell_name: return p.mat_name[u];
    case surface_cell_method: {
        const int m = method_of(p, k);
        return m >= 0 && m < int(surface_method_texts.size()) ? surface_method_texts[std::size_t(m)] : "";
    }
    case surface_cell_file: return method_of(p, k) == 1 ? p.surf_grd_file[u] : std::string();
    case surface_cell_depth: return method_of(p, k) == 2 ? general_text(p.surf_depth[u]) : std::string();
    default: return {};
    }
}

bool surface_cell_active(const Project& p, int k, int cell, bool with_name)
{
    switch (cell) {
    case surface_cell_name: return with_name;
    case surface_cell_method: return true;
    case surface_cell_file: return method_of(p, k) == 1;
    case surface_cell_depth: return method_of(p, k) == 2;
    default: return false;
    }
}

bool surface_cell_accepts(int cell, const std::string& text, char key)
{
    if (cell == surface_cell_name)
        return key == 8 || static_cast<unsigned char>(key) >= 32;
    if (cell == surface_cell_depth)
        return numeric_key_accepted(text, key);
    return false;
}

bool surface_has_no_file(const Project& p, int k)
{
    const std::string& f = p.surf_grd_file[std::size_t(k)];
    // Saving writes "*.GRD" for a missing name into the project itself.
    return f.empty() || f == "*.GRD";
}

bool pick_surface_grid_file(Project& p, int k, Port& port)
{
    const auto path = port.open_file_dialog(surface_grid_filter, p.surf_grd_file[std::size_t(k)]);
    if (!path)
        return false;
    p.surf_grd_file[std::size_t(k)] = *path;
    read_grid_file(p, *path, k, port);
    return true;
}

bool ask_surface_depth(Project& p, int k, const DepthSource& source, Port& port)
{
    const auto answer = port.input_box(source.prompt, source.title, "");
    if (!answer || answer->empty())
        return false;
    p.surf_depth[std::size_t(k)] = float(val(*answer));
    return true;
}

bool hang_surface_plane(Project& p, int k, const DepthSource& source)
{
    const int ref = source.reference;
    if (ref < 1 || ref > p.zgrid.planes || k > p.zgrid.planes)
        return false;
    const int m = method_of(p, ref);
    if (!(m == 1 || (source.reference_depth && m == 2)))
        return false;
    // The rebuild would be the first to set this plane otherwise.
    const float depth = p.surf_depth[std::size_t(k)];
    for (int i = 1; i <= std::min<int>(p.num_rows, p.zgrid.rows); ++i)
        for (int j = 1; j <= std::min<int>(p.num_cols, p.zgrid.cols); ++j)
            p.zgrid(i, j, k) = p.zgrid(i, j, ref) - depth;
    return true;
}

void choose_surface_method(Project& p, int k, int method, const DepthSource& source, Port& port)
{
    if (method < 0 || method > 2)
        return;
    p.surf_method[std::size_t(k)] = int16(method);
    if (method == 2 && (k == p.num_layers || k == p.sliding_index)) {
        // Nothing lies above to hang from: back to the method of sections,
        // whatever it was before.
        p.surf_method[std::size_t(k)] = 0;
        port.message_box(thickness_refused_text, Buttons::ok, Icon::none, "");
        return;
    }
    if (method == 1 && surface_has_no_file(p, k)) {
        pick_surface_grid_file(p, k, port);
        return;
    }
    if (method == 2 && p.surf_depth[std::size_t(k)] == 0) {
        if (ask_surface_depth(p, k, source, port))
            hang_surface_plane(p, k, source);
    }
}

void surface_row_button(Project& p, int k, const DepthSource& source, Port& port)
{
    const int m = method_of(p, k);
    if (m == 1) {
        pick_surface_grid_file(p, k, port);
    } else if (m == 2) {
        DepthSource by_button = source;
        by_button.reference_depth = true;
        if (ask_surface_depth(p, k, by_button, port))
            hang_surface_plane(p, k, by_button);
    }
}

static int first_cell(const SurfaceList& list)
{
    return list.with_name ? surface_cell_name : surface_cell_method;
}

void cursor_refresh(SurfaceCursor& c, const Project& p, const SurfaceList& list)
{
    c.edit_text = c.row >= 1 && c.row <= list.count ? surface_cell_text(p, list.position(c.row), c.cell)
                                                    : std::string();
}

void cursor_take(SurfaceCursor& c, const Project& p, const SurfaceList& list, int row, int cell)
{
    if (row < 1 || row > list.count)
        return;
    c.row = row;
    c.cell = surface_cell_active(p, list.position(row), cell, list.with_name) ? cell : surface_cell_method;
    c.top_row = top_row_showing(row, c.top_row, surface_rows_visible);
    cursor_refresh(c, p, list);
}

CursorMove cursor_key(SurfaceCursor& c, const Project& p, const SurfaceList& list, FormKey key)
{
    const bool last_row = c.row >= list.count;
    switch (key) {
    case FormKey::up:
        if (c.row <= 1 || list.count == 0)
            return CursorMove::stayed;
        cursor_take(c, p, list, std::min(c.row - 1, list.count), c.cell);
        return CursorMove::moved;
    case FormKey::down:
        if (last_row)
            return CursorMove::past_last;
        cursor_take(c, p, list, c.row + 1, c.cell);
        return CursorMove::moved;
    case FormKey::left:
        if (list.count == 0)
            return CursorMove::stayed;
        for (int cell = c.cell - 1; cell >= first_cell(list); --cell)
            if (surface_cell_active(p, list.position(c.row), cell, list.with_name)) {
                cursor_take(c, p, list, c.row, cell);
                return CursorMove::moved;
            }
        return CursorMove::stayed;
    case FormKey::right:
    case FormKey::tab:
    case FormKey::enter:
        if (list.count > 0)
            for (int cell = c.cell + 1; cell <= surface_cell_depth; ++cell)
                if (surface_cell_active(p, list.position(c.row), cell, list.with_name)) {
                    cursor_take(c, p, list, c.row, cell);
                    return CursorMove::moved;
                }
        if (last_row)
            return CursorMove::past_last;
        cursor_take(c, p, list, c.row + 1, first_cell(list));
        return CursorMove::moved;
    }
    return CursorMove::stayed;
}

bool cursor_type(SurfaceCursor& c, Project& p, const SurfaceList& list, char key)
{
    if (c.row < 1 || c.row > list.count)
        return false;
    const int k = list.position(c.row);
    if (!surface_cell_active(p, k, c.cell, list.with_name) || !surface_cell_accepts(c.cell, c.edit_text, key))
        return false;
    if (key == 8) {
        if (!c.edit_text.empty())
            c.edit_text.pop_back();
    } else {
        c.edit_text.push_back(key);
    }
    if (c.cell == surface_cell_name)
        p.mat_name[std::size_t(k)] = c.edit_text;
    else if (c.cell == surface_cell_depth)
        p.surf_depth[std::size_t(k)] = float(val(c.edit_text));
    return true;
}

bool surface_scroll_visible(int count)
{
    return count > surface_rows_visible;
}

int surface_scroll_top(int count, int top)
{
    const int highest = std::max(1, count - surface_rows_visible + 1);
    return std::clamp(top, 1, highest);
}

} // namespace tobel
