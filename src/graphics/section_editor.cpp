#include "graphics/section_editor.h"

#include <algorithm>
#include <cmath>

#include "geometry/interpolation.h"
#include "geometry/section_window.h"
#include "geometry/surface_stack.h"
#include "graphics/drawing.h"
#include "graphics/editor_picture.h"
#include "graphics/image_calibration.h"
#include "graphics/surface_view.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "surfaces/crack.h"
#include "surfaces/dips.h"
#include "surfaces/moment_centre.h"

namespace tobel {

SectionEditor::SectionEditor()
    : y_v(std::size_t(section_point_capacity + 1) * (section_surface_capacity + 1), 0.0f),
      z_v(y_v.size(), 0.0f)
{
}

namespace {

const char* const limit_title = "TOBEL_3"; // the limit box names the program
const char* const caution_title = "Caution";

int method_of(const Project& p, int k)
{
    return k >= 0 && k <= surface_capacity ? p.surf_method[std::size_t(k)] : 0;
}

float exag(const Project& p)
{
    return float(drawn_exaggeration(p));
}

// The stored Z of a drawn elevation.
float true_z(const Project& p, double e)
{
    return float(e / double(exag(p)));
}

int last_line(const Project& p)
{
    return std::min<int>(p.sliding_index, section_surface_capacity);
}

void redraw(Project& p, const SectionEditor& ed)
{
    draw_editor(p, ed);
}

// A world point as fractions of the window in force, across from the left
// and down from the top: how the legend box is placed.
struct Fraction {
    double x = 0, y = 0;
};
Fraction window_fraction(const SectionEditor& ed, double y, double e)
{
    const ZoomWindow& w = ed.window();
    const double across = double(w.win_right) - w.win_left, down = double(w.win_top) - w.win_bottom;
    return {across != 0 ? (y - w.win_left) / across : 0, down != 0 ? (double(w.win_top) - e) / down : 0};
}

bool on_legend(const SectionEditor& ed, double y, double e)
{
    const Fraction f = window_fraction(ed, y, e);
    const LegendBox& l = ed.legend;
    return f.x >= l.left && f.x <= l.left + l.width && f.y >= l.top && f.y <= l.top + l.height;
}

// The legend box follows the pointer, keeping the place it was taken by.
void carry_legend(SectionEditor& ed, double y, double e)
{
    const Fraction f = window_fraction(ed, y, e);
    ed.legend.left = float(f.x) - ed.legend.grab_x;
    ed.legend.top = float(f.y) - ed.legend.grab_y;
}

void take_mark_size(SectionEditor& ed)
{
    const ZoomWindow& w = ed.window();
    ed.mark_size = (w.win_right - w.win_left) / 100;
}

bool at_limit(const Project& p, const SectionEditor& ed, Port& port)
{
    if (ed.npts(ed.edit_line) < p.max_points)
        return false;
    port.message_box(points_limit_message(p.max_points), Buttons::ok, Icon::warning, limit_title);
    return true;
}

std::string line_caption(const Project& p, int k, const char* layer, const char* ground, const char* piezo,
                         const char* sliding)
{
    if (k == p.sliding_index)
        return sliding;
    if (k > p.num_layers)
        return piezo + str(k - p.num_layers);
    if (k == p.num_layers)
        return ground;
    return layer + str(k);
}

// 3. The menus of sections and lines. The first Go To Section item stands in
// the form with its own caption; the others are built with the signed form.
void build_menus(const Project& p, SectionEditor& ed)
{
    ed.goto_section_items.clear();
    ed.copy_section_items.clear();
    for (int n = 1; n <= p.num_sections; ++n) {
        ed.goto_section_items.push_back(
            {n == 1 ? std::string("Go To Section 1") : "Go To Section " + str(n), true, n});
        ed.copy_section_items.push_back({"Section " + str(n), true, n});
    }
    ed.goto_line_items.clear();
    ed.copy_layer_items.clear();
    for (int k = 1; k <= ed.edit_lines; ++k) {
        const bool shown = method_of(p, k) <= 0;
        ed.goto_line_items.push_back(
            {line_caption(p, k, "Go to Layer ", "Go to Ground", "Go to Piezo ", "Go to Sl. Surface "), shown,
             k});
        ed.copy_layer_items.push_back(
            {line_caption(p, k, "Layer ", "Ground", "Piezo ", "Sl. Surface "), shown, k});
    }
}

// 5. Labels of the current line and of the section. Numbers are in the
// signed form, as in the menus.
void set_labels(const Project& p, SectionEditor& ed)
{
    const int k = ed.edit_line;
    if (k == p.sliding_index) {
        ed.line_label = "S.Surf.";
        ed.long_label = "  Sliding Surface";
    } else if (k > p.num_layers) {
        ed.line_label = "  Piezo " + str(k - p.num_layers);
        ed.long_label = "  Piezometric Surface " + str(k - p.num_layers);
    } else {
        ed.line_label = k == p.num_layers ? std::string("Ground") : "  Layer " + str(k);
        ed.long_label = " " + (k >= 1 && k <= material_capacity ? p.mat_name[std::size_t(k)] : std::string());
    }
    const int s = p.view_row;
    const float x = s >= 0 && s <= section_capacity ? p.sections.x[std::size_t(s)] : 0.0f;
    ed.section_label = "Section " + str(s) + " at X = " + format(x, "#####0.00");
}

// The copy commands that fit the current line.
void fit_copy_menus(const Project& p, SectionEditor& ed)
{
    ed.copy_below_offered = ed.edit_line != 1;
    ed.copy_above_offered = ed.edit_line != p.sliding_index && ed.edit_line != ed.edit_lines;
}

void load_cell(SectionEditor& ed)
{
    ed.cell_text = table_cell_text(ed, ed.table_row, ed.table_col);
    ed.cell_typed = false;
}

void table_home(SectionEditor& ed)
{
    ed.table_first = 1;
    ed.table_row = 1;
    ed.table_col = 1;
    ed.table_limit = int16(ed.npts(ed.edit_line) + 10);
    load_cell(ed);
}

int table_point(const SectionEditor& ed)
{
    return ed.table_row + ed.table_first - 1;
}

// The table shows point pt in its row.
void table_show_point(SectionEditor& ed, int pt)
{
    if (pt < 1)
        pt = 1;
    if (pt < ed.table_first)
        ed.table_first = int16(pt);
    if (pt > ed.table_first + ed.table_rows - 1)
        ed.table_first = int16(pt - ed.table_rows + 1);
    ed.table_row = int16(pt - ed.table_first + 1);
    load_cell(ed);
}

void delete_at(SectionEditor& ed, int k, int pt)
{
    const int n = ed.npts(k);
    if (pt < 1 || pt > n)
        return;
    for (int i = pt; i < n; ++i) {
        ed.edit_y(i, k) = ed.edit_y(i + 1, k);
        ed.edit_z(i, k) = ed.edit_z(i + 1, k);
    }
    ed.edit_y(n, k) = ed.edit_z(n, k) = 0;
    ed.npts(k) = int16(n - 1);
    table_show_point(ed, pt);
}

// Opens a gap at pt: points from there up move one place up.
void open_gap(SectionEditor& ed, int k, int pt)
{
    for (int i = ed.npts(k); i >= pt; --i) {
        ed.edit_y(i + 1, k) = ed.edit_y(i, k);
        ed.edit_z(i + 1, k) = ed.edit_z(i, k);
    }
}

void close_editor(Project& p, SectionEditor& ed)
{
    ed.open = false;
    p.pictures.editor.exists = false;
}

// Leaving a section: the last cell goes in, the copy goes back, the Solve
// item is disabled, the new section is loaded.
void leave_section(Project& p, SectionEditor& ed, int next)
{
    table_commit(ed);
    editor_write_back(p, ed);
    p.menus["Solve_single_trial"].enabled = false;
    p.view_row = int16(next);
    editor_load_section(p, ed);
    set_editor_caption(p);
    redraw(p, ed);
}

// The first point of line m within dist of (y, z) in both directions.
int snap_hit(const SectionEditor& ed, int m, float y, float z, float dist)
{
    for (int q = 1; q <= ed.npts(m); ++q)
        if (std::fabs(ed.edit_y(q, m) - y) < dist && std::fabs(ed.edit_z(q, m) - z) < dist)
            return q;
    return 0;
}

// Pointer up, step 4: snapping, order, store, clusters.
void place_point(const Project& p, SectionEditor& ed, float y, float z)
{
    const int k = ed.edit_line, pt = ed.edit_point;
    // a. Snapping; a hit on the line below overrides one on the line above.
    if (p.snap_off == 0) {
        if (k < ed.edit_lines)
            if (int q = snap_hit(ed, k + 1, y, z, ed.snap_dist); q > 0)
                y = ed.edit_y(q, k + 1), z = ed.edit_z(q, k + 1);
        if (k > 1)
            if (int q = snap_hit(ed, k - 1, y, z, ed.snap_dist); q > 0)
                y = ed.edit_y(q, k - 1), z = ed.edit_z(q, k - 1);
    }
    // b. Order: Y never decreases along a line.
    if (pt > 1 && y < ed.edit_y(pt - 1, k))
        y = ed.edit_y(pt - 1, k);
    if (pt < ed.npts(k) && y > ed.edit_y(pt + 1, k))
        y = ed.edit_y(pt + 1, k);
    // c. Keep the old place, store the new.
    const float old_y = ed.edit_y(pt, k), old_z = ed.edit_z(pt, k);
    ed.edit_y(pt, k) = y;
    ed.edit_z(pt, k) = z;
    // d. Clusters: coincident points of other layers move as one; the test
    // is exact equality, so a point that differs in the last bit stays.
    if (ed.clusters_on && k <= p.num_layers && ed.point_picked == 1) {
        for (int m = 1; m <= p.num_layers; ++m) {
            if (m == k)
                continue;
            for (int q = 1; q <= ed.npts(m); ++q) {
                if (ed.edit_y(q, m) == old_y && ed.edit_z(q, m) == old_z) {
                    ed.edit_y(q, m) = y;
                    ed.edit_z(q, m) = z;
                    break;
                }
            }
        }
    }
}

// Copy Above (dir +1) and Copy Below (dir -1): one point of the neighbour.
void copy_neighbour(Project& p, SectionEditor& ed, Port& port, int dir)
{
    if (at_limit(p, ed, port))
        return;
    const int k = ed.edit_line, m = k + dir;
    if (m < 1 || m > ed.edit_lines || ed.npts(m) == 0)
        return;
    const int n = ed.npts(k), nm = ed.npts(m);
    int q = 1;
    if (n > 0) {
        const float last_y = ed.edit_y(n, k), last_z = ed.edit_z(n, k);
        if (!(ed.edit_y(nm, m) > last_y))
            return;
        while (q < nm && ed.edit_y(q, m) < last_y)
            ++q;
        if (ed.edit_y(q, m) == last_y && ed.edit_z(q, m) == last_z)
            ++q;
    }
    ed.edit_point = int16(n + 1);
    ed.edit_y(n + 1, k) = ed.edit_y(q, m);
    ed.edit_z(n + 1, k) = ed.edit_z(q, m);
    ed.npts(k) = int16(n + 1);
    ed.table_limit = int16(ed.npts(k) + 10);
    load_cell(ed);
    redraw(p, ed);
}

void set_line(Project& p, SectionEditor& ed, int k)
{
    table_commit(ed);
    ed.edit_line = int16(k);
    ed.edit_point = 0;
    set_labels(p, ed);
    table_home(ed);
    fit_copy_menus(p, ed);
    redraw(p, ed);
}

// Moves the current cell by one row; false (with the limit message) past max_points.
bool table_step_down(const Project& p, SectionEditor& ed, Port& port)
{
    if (table_point(ed) + 1 > p.max_points) {
        port.message_box(points_limit_message(p.max_points), Buttons::ok, Icon::warning, limit_title);
        return false;
    }
    if (ed.table_row < ed.table_rows)
        ++ed.table_row;
    else
        ++ed.table_first;
    return true;
}

} // namespace

std::string points_limit_message(int max_points)
{
    return "Only " + str(max_points) + " points allowed.";
}

SectionEditor editor_open(Project& p, Port& port)
{
    (void)port;
    SectionEditor ed;
    ed.open = true;
    p.pictures.editor.exists = true;
    // 1. Lines shown; a general surface edits its line alone.
    ed.edit_lines = int16(p.surface_defined != 0 || p.edit_general ? p.sliding_index : p.sliding_index - 1);
    ed.edit_lines = int16(std::min<int>(ed.edit_lines, last_line(p)));
    const bool others = !p.edit_general;
    ed.clusters_on = others;
    ed.clusters_offered = others;
    ed.toggle_line_offered = ed.goto_line_offered = ed.copy_layer_offered = others;
    ed.clusters_caption = ed.clusters_on ? "Cl&usters On" : "Cl&usters Off";
    ed.snap_caption = p.snap_off == 0 ? "S&napping On" : "S&napping Off";
    // 2. Zoom level and the current line: the first cross-section based one.
    ed.zoom_level = 3;
    ed.edit_line = 1;
    if (p.edit_general) {
        ed.edit_line = p.sliding_index;
    } else {
        for (int k = 1; k <= ed.edit_lines; ++k)
            if (method_of(p, k) <= 0) {
                ed.edit_line = int16(k);
                break;
            }
    }
    // 3. Menus.
    build_menus(p, ed);
    // 4. World window of level 3, the other levels are filled as reached.
    FitInputs in = section_fit(p, find_z_range(p), p.view.picture_width, p.view.picture_height);
    const WorldWindow w = fit_window(in);
    ed.windows[3] = {w.win_left, w.win_right, w.win_top, w.win_bottom, true};
    take_mark_size(ed);
    set_editor_caption(p);
    // 5. and the working copy.
    editor_load_section(p, ed);
    fit_copy_menus(p, ed);
    redraw(p, ed);
    return ed;
}

void editor_load_section(Project& p, SectionEditor& ed)
{
    const int s = std::clamp<int>(p.view_row, 0, section_capacity);
    for (int k = 0; k <= section_count_surfaces; ++k)
        ed.npts(k) = p.sections.n(s, k);
    for (int pt = 0; pt <= section_point_capacity; ++pt)
        for (int k = 0; k <= section_surface_capacity; ++k) {
            ed.edit_y(pt, k) = p.sections.y(s, pt, k);
            ed.edit_z(pt, k) = p.sections.z(s, pt, k);
        }
    // Snapping keeps the reach of the level in force at load time.
    const ZoomWindow& w = ed.window();
    ed.snap_dist = (w.win_right - w.win_left) / 100;
    ed.edit_point = 0;
    set_labels(p, ed);
    table_home(ed);
}

void editor_write_back(Project& p, const SectionEditor& ed)
{
    const int s = std::clamp<int>(p.view_row, 0, section_capacity);
    for (int k = 0; k <= section_count_surfaces; ++k)
        p.sections.n(s, k) = ed.npts(k);
    for (int pt = 0; pt <= section_point_capacity; ++pt)
        for (int k = 0; k <= section_surface_capacity; ++k) {
            p.sections.y(s, pt, k) = ed.edit_y(pt, k);
            p.sections.z(s, pt, k) = ed.edit_z(pt, k);
        }
}

void update_slope_label(SectionEditor& ed, double y, double z)
{
    const int pt = ed.edit_point, k = ed.edit_line;
    ed.slope_visible = false;
    ed.slope_y = float(y);
    ed.slope_z = float(z);
    if (pt <= 1)
        return;
    const double run = y - double(ed.edit_y(pt - 1, k));
    const double rise = z - double(ed.edit_z(pt - 1, k));
    if (rise == 0)
        return;
    const double ratio = run / rise;
    if (std::fabs(ratio) < 99) {
        ed.slope_label = "1 : " + format(ratio, "#0.00");
        ed.slope_visible = true;
    }
}

bool legend_hit(const SectionEditor& ed, double y, double e)
{
    return ed.legend.visible && ed.labels_visible && on_legend(ed, y, e);
}

void legend_drag_begin(SectionEditor& ed, double y, double e)
{
    const Fraction f = window_fraction(ed, y, e);
    ed.legend.dragging = true;
    ed.legend.grab_x = float(f.x) - ed.legend.left;
    ed.legend.grab_y = float(f.y) - ed.legend.top;
}

void pointer_down(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                  double e)
{
    // 1. A calibration waiting for its click, or a legend on the move.
    if (ed.image.image_stage != 0 || ed.legend.dragging)
        return;
    ed.placing = false;
    // 2. Shift and the left button start a pan.
    if (button == PointerButton::left && shift) {
        ed.panning = true;
        ed.pan_y = float(y);
        ed.pan_e = float(e);
        ed.pointer = EditorPointer::pan;
        ed.pointer_file = editor_pan_pointer_file;
        ed.labels_visible = false; // the image and the labels wait for the pan to end
        redraw(p, ed);
        return;
    }
    // 3. A pending zoom takes the click.
    if (ed.zoom_pending != 0) {
        const int level = ed.zoom_level;
        if (level >= 7)
            return;
        const ZoomWindow old = ed.window();
        ed.zoom_level = int16(level + 1);
        if (level >= 3) {
            // W and H are the old extents as the window gives them; H is
            // negative in the y-up window, so top lands above the click.
            const double W = double(old.win_right) - old.win_left;
            const double H = double(old.win_bottom) - old.win_top;
            ed.windows[std::size_t(ed.zoom_level)] = {float(y - W / 4), float(y + W / 4), float(e - H / 4),
                                                      float(e + H / 4), true};
        }
        take_mark_size(ed);
        if (ed.zoom_level >= 6)
            ed.zoom_in_enabled = false;
        // A level reached from below can always be left again.
        ed.zoom_out_enabled = true;
        redraw(p, ed);
        return;
    }
    // 4. The right button shows or hides the legend under it.
    if (button == PointerButton::right) {
        if (on_legend(ed, y, e))
            ed.legend.visible = !ed.legend.visible;
        redraw(p, ed);
        return;
    }
    // 5. Lines from a grid file or a constant depth are not edited.
    const int k = ed.edit_line;
    if (method_of(p, k) > 0)
        return;
    // 6. Hit test on the current line.
    const float z = true_z(p, e);
    for (int pt = 1; pt <= ed.npts(k); ++pt) {
        if (std::fabs(ed.edit_y(pt, k) - y) < ed.mark_size / 2 &&
            std::fabs(ed.edit_z(pt, k) - z) < ed.mark_size / 2) {
            ed.edit_point = int16(pt);
            ed.point_picked = 1;
            ed.placing = true;
            ed.pointer = EditorPointer::move;
            update_slope_label(ed, ed.edit_y(pt, k), ed.edit_z(pt, k));
            break;
        }
    }
    // 7. A pending delete takes the point picked.
    if (ed.delete_pending == 1 && ed.point_picked == 1) {
        delete_at(ed, k, ed.edit_point);
        ed.placing = false;
        return;
    }
    // 8. The drag goes on in pointer move.
    if (ed.point_picked == 1)
        return;
    const int n = ed.npts(k);
    if (ed.insert_pending != 1) {
        // 9. Append, only at or right of the last point.
        if (n > 0 && ed.edit_y(n, k) > y)
            return;
        if (at_limit(p, ed, port))
            return;
        ed.edit_point = int16(n + 1);
    } else {
        // 10. Insert before the first point beyond y.
        if (at_limit(p, ed, port))
            return;
        int at = n + 1;
        for (int pt = 1; pt <= n; ++pt)
            if (ed.edit_y(pt, k) > y) {
                at = pt;
                break;
            }
        open_gap(ed, k, at);
        ed.edit_point = int16(at);
    }
    // 11.
    ed.npts(k) = int16(n + 1);
    ed.table_limit = int16(ed.npts(k) + 10);
    ed.edit_y(ed.edit_point, k) = float(y);
    ed.edit_z(ed.edit_point, k) = z;
    ed.placing = true;
}

void pointer_move(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                  double e)
{
    (void)port;
    (void)shift;
    if (ed.panning) {
        // The window follows the pointer: the world point taken stays under it.
        ZoomWindow& w = ed.windows[std::size_t(ed.zoom_level)];
        const float dy = ed.pan_y - float(y), de = ed.pan_e - float(e);
        w.win_left += dy;
        w.win_right += dy;
        w.win_top += de;
        w.win_bottom += de;
        redraw(p, ed);
        return;
    }
    if (ed.legend.dragging) {
        carry_legend(ed, y, e);
        redraw(p, ed);
        return;
    }
    const float z = true_z(p, e);
    ed.y_label = " Y = " + format(y, "###0.0");
    ed.z_label = " Z = " + format(double(z), "###0.0");
    p.pictures.editor.pointer_labels = {ed.y_label, ed.z_label};
    if (button == PointerButton::left && ed.point_picked == 1) {
        // The label beside the pointer tells the slope the point would take.
        update_slope_label(ed, y, z);
        redraw(p, ed);
    }
}

void pointer_up(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                double e)
{
    (void)shift;
    // 1. A pan ends.
    if (ed.panning) {
        ed.panning = false;
        ed.pointer = EditorPointer::cross;
        ed.pointer_file.clear();
        ed.labels_visible = true;
        redraw(p, ed);
        return;
    }
    // The legend box is a control of its own: its release ends its drag
    // whatever else waits for a click on the picture.
    if (ed.legend.dragging) {
        carry_legend(ed, y, e);
        ed.legend.dragging = false;
        redraw(p, ed);
        return;
    }
    // 2. Calibration clicks.
    if (ed.image.image_stage != 0) {
        calibration_click(p, ed, port, y, e);
        return;
    }
    // 3. A zoom click, the right button, a legend drag.
    if (ed.zoom_pending != 0) {
        ed.zoom_pending = 0;
        return;
    }
    if (button == PointerButton::right) {
        redraw(p, ed);
        return;
    }
    // 4. Placing the point taken by the pointer down. A click that neither
    // picked nor added a point places nothing.
    if (ed.delete_pending != 1 && ed.insert_pending != 1 && ed.placing && ed.edit_point >= 1)
        place_point(p, ed, float(y), true_z(p, e));
    // 5. Back to rest.
    ed.pointer = EditorPointer::cross;
    ed.slope_visible = false;
    ed.point_picked = 0;
    ed.insert_pending = 0;
    ed.delete_pending = 0;
    ed.placing = false;
    ed.image.help_visible = false;
    load_cell(ed);
    redraw(p, ed);
}

void toggle_line(Project& p, SectionEditor& ed, Port& port)
{
    (void)port;
    if (!ed.toggle_line_offered || ed.edit_lines < 1)
        return;
    int k = ed.edit_line;
    for (int tries = 0; tries < ed.edit_lines; ++tries) {
        k = k >= ed.edit_lines ? 1 : k + 1;
        if (method_of(p, k) <= 0)
            break;
    }
    set_line(p, ed, k);
}

void goto_line(Project& p, SectionEditor& ed, Port& port, int k)
{
    (void)port;
    if (!ed.goto_line_offered || k < 1 || k > ed.edit_lines)
        return;
    set_line(p, ed, k);
}

void toggle_section(Project& p, SectionEditor& ed, Port& port)
{
    (void)port;
    if (p.num_sections < 1)
        return;
    leave_section(p, ed, p.view_row >= p.num_sections ? 1 : p.view_row + 1);
}

void goto_section(Project& p, SectionEditor& ed, Port& port, int n)
{
    (void)port;
    if (n < 1 || n > p.num_sections)
        return;
    leave_section(p, ed, n);
}

void copy_layer(Project& p, SectionEditor& ed, Port& port, int k)
{
    if (!ed.copy_layer_offered || k < 1 || k > last_line(p))
        return;
    const int line = ed.edit_line;
    if (ed.npts(line) > 0 &&
        port.message_box("Are you sure you want to replace the existing data in this layer?", Buttons::yes_no,
                         Icon::question, caution_title) != Answer::yes)
        return;
    for (int pt = 0; pt <= section_point_capacity; ++pt) {
        ed.edit_y(pt, line) = ed.edit_y(pt, k);
        ed.edit_z(pt, line) = ed.edit_z(pt, k);
    }
    ed.npts(line) = ed.npts(k);
    table_home(ed);
    redraw(p, ed);
}

void copy_section(Project& p, SectionEditor& ed, Port& port, int n)
{
    if (n < 1 || n > p.num_sections)
        return;
    bool any = false;
    for (int k = 1; k <= ed.edit_lines; ++k)
        any = any || ed.npts(k) > 0;
    if (any && port.message_box("Are you sure you want to replace the existing data in this section?",
                                Buttons::yes_no, Icon::question, caution_title) != Answer::yes)
        return;
    const int from = p.edit_general ? p.sliding_index : 1;
    for (int k = from; k <= ed.edit_lines; ++k) {
        ed.npts(k) = p.sections.n(n, k);
        for (int pt = 0; pt <= section_point_capacity; ++pt) {
            ed.edit_y(pt, k) = p.sections.y(n, pt, k);
            ed.edit_z(pt, k) = p.sections.z(n, pt, k);
        }
    }
    table_home(ed);
    redraw(p, ed);
}

void copy_above(Project& p, SectionEditor& ed, Port& port)
{
    copy_neighbour(p, ed, port, +1);
}

void copy_below(Project& p, SectionEditor& ed, Port& port)
{
    copy_neighbour(p, ed, port, -1);
}

void insert_point(SectionEditor& ed)
{
    ed.insert_pending = 1;
    ed.delete_pending = 0;
}

void delete_point(SectionEditor& ed)
{
    ed.delete_pending = 1;
    ed.insert_pending = 0;
}

void zoom_in(SectionEditor& ed)
{
    if (ed.zoom_in_enabled)
        ed.zoom_pending = 1;
}

void zoom_out(Project& p, SectionEditor& ed, Port& port)
{
    (void)port;
    if (ed.zoom_level <= 0) {
        ed.zoom_out_enabled = false;
        return;
    }
    const int level = ed.zoom_level;
    ed.zoom_level = int16(level - 1);
    ZoomWindow& w = ed.windows[std::size_t(ed.zoom_level)];
    if (level <= 3) {
        if (!w.set) {
            // A quarter of the extents wider on every side of the level above.
            const ZoomWindow& up = ed.windows[std::size_t(level)];
            const float W = up.win_right - up.win_left, H = std::fabs(up.win_top - up.win_bottom);
            w = {up.win_left - W / 4, up.win_right + W / 4, up.win_top + H / 4, up.win_bottom - H / 4, true};
        }
    } else {
        ed.zoom_in_enabled = true;
    }
    if (ed.zoom_level == 0)
        ed.zoom_out_enabled = false;
    take_mark_size(ed);
    redraw(p, ed);
}

void fit_to_screen(Project& p, SectionEditor& ed, Port& port)
{
    (void)port;
    ed.zoom_level = 3;
    ed.zoom_pending = 0;
    ed.zoom_in_enabled = ed.zoom_out_enabled = true;
    take_mark_size(ed);
    redraw(p, ed);
}

void toggle_clusters(SectionEditor& ed)
{
    if (!ed.clusters_offered)
        return;
    ed.clusters_on = !ed.clusters_on;
    ed.clusters_caption = ed.clusters_on ? "Cl&usters On" : "Cl&usters Off";
}

void toggle_snap(Project& p, SectionEditor& ed)
{
    p.snap_off = int16(p.snap_off == 0 ? -1 : 0);
    ed.snap_caption = p.snap_off == 0 ? "S&napping On" : "S&napping Off";
}

std::string table_cell_text(const SectionEditor& ed, int row, int col)
{
    const int pt = row + ed.table_first - 1;
    if (pt < 1 || pt > ed.npts(ed.edit_line))
        return {};
    return general_text(col == 1 ? ed.edit_y(pt, ed.edit_line) : ed.edit_z(pt, ed.edit_line));
}

bool table_key_accepted(char key)
{
    return (key >= '0' && key <= '9') || key == '.' || key == '-' || key == 8 || key == 13 || key == 9;
}

void table_commit(SectionEditor& ed)
{
    if (!ed.cell_typed)
        return;
    const int pt = table_point(ed), k = ed.edit_line;
    if (pt < 1 || pt > section_point_capacity)
        return;
    // A cell beyond the line's end is a new point.
    if (pt > ed.npts(k))
        ed.npts(k) = int16(pt);
    const float v = float(val(ed.cell_text));
    if (ed.table_col == 1)
        ed.edit_y(pt, k) = v;
    else
        ed.edit_z(pt, k) = v;
    ed.cell_typed = false;
}

void table_key(Project& p, SectionEditor& ed, Port& port, FormKey key)
{
    table_commit(ed);
    const int before = table_point(ed);
    switch (key) {
    case FormKey::up:
        if (ed.table_row > 1)
            --ed.table_row;
        else if (ed.table_first > 1)
            --ed.table_first;
        break;
    case FormKey::down: table_step_down(p, ed, port); break;
    case FormKey::left:
        if (ed.table_col > 1)
            --ed.table_col;
        break;
    case FormKey::right:
        if (ed.table_col < ed.table_cols)
            ++ed.table_col;
        break;
    case FormKey::tab:
    case FormKey::enter:
        // From the last column both go on to the first of the next row.
        if (ed.table_col < ed.table_cols)
            ++ed.table_col;
        else if (table_step_down(p, ed, port))
            ed.table_col = 1;
        break;
    }
    load_cell(ed);
    if (table_point(ed) != before)
        redraw(p, ed);
}

bool table_type(Project& p, SectionEditor& ed, Port& port, char key)
{
    if (!table_key_accepted(key))
        return false;
    if (key == 13) {
        table_key(p, ed, port, FormKey::enter);
        return true;
    }
    if (key == 9) {
        table_key(p, ed, port, FormKey::tab);
        return true;
    }
    if (key == 8) {
        if (!ed.cell_text.empty())
            ed.cell_text.pop_back();
    } else {
        ed.cell_text.push_back(key);
    }
    ed.cell_typed = true;
    return true;
}

void table_click(Project& p, SectionEditor& ed, Port& port, int row, int col)
{
    if (row < 1 || row > ed.table_rows || col < 1 || col > ed.table_cols)
        return;
    const int k = ed.edit_line;
    const int pt = row + ed.table_first - 1;
    if (ed.insert_pending == 1) {
        ed.insert_pending = 0;
        if (at_limit(p, ed, port))
            return;
        const int at = std::min(pt, ed.npts(k) + 1);
        open_gap(ed, k, at);
        ed.edit_y(at, k) = p.y_min;
        ed.edit_z(at, k) = p.base_z;
        ed.npts(k) = int16(ed.npts(k) + 1);
        ed.table_limit = int16(ed.npts(k) + 10);
        ed.table_row = int16(row);
        ed.table_col = int16(col);
        load_cell(ed);
        redraw(p, ed);
        return;
    }
    if (ed.delete_pending == 1) {
        ed.delete_pending = 0;
        delete_at(ed, k, pt);
        redraw(p, ed);
        return;
    }
    table_commit(ed);
    const int before = table_point(ed);
    ed.table_row = int16(row);
    ed.table_col = int16(col);
    load_cell(ed);
    if (table_point(ed) != before)
        redraw(p, ed);
}

int table_scroll_max(const Project& p, const SectionEditor& ed)
{
    // Rows beyond max_points cannot take a point, so the bar stops where the
    // last row shows point max_points.
    const int last_top = std::max(1, p.max_points - ed.table_rows + 1);
    return std::max(1, std::min<int>(std::max(ed.table_limit, ed.table_first), last_top));
}

void table_scroll(Project& p, SectionEditor& ed, int first)
{
    table_commit(ed);
    const int before = table_point(ed);
    ed.table_first = int16(std::clamp(first, 1, table_scroll_max(p, ed)));
    load_cell(ed);
    if (table_point(ed) != before)
        redraw(p, ed);
}

EditorNext continue_editor(Project& p, SectionEditor& ed, Port& port)
{
    table_commit(ed);
    editor_write_back(p, ed);
    p.edit_general = false;
    if (p.form_mode == 7) {
        close_editor(p, ed);
        interpolate_surface(p, p.sliding_index);
        apply_crack(p);
        scale_forces(p);
        derive_dips(p);
        find_moment_centre(p);
        show_solve_menu(p, SolveItems::single_trial, true);
        show_surface_view(p, port, p.sliding_index);
        p.form_mode = 0;
        return EditorNext::general_done;
    }
    if (p.form_mode == 4) {
        close_editor(p, ed);
        interpolate_surface(p, p.sliding_index);
        derive_dips(p);
        return EditorNext::to_wedge;
    }
    // 2, 0 and any other mode end as the editing of the stack does.
    rebuild_surfaces(p, port);
    close_editor(p, ed);
    p.view_mode = 5;
    p.form_mode = 0;
    return EditorNext::finished;
}

void cancel_editor(Project& p, SectionEditor& ed)
{
    p.edit_general = false;
    p.form_mode = 0;
    close_editor(p, ed);
}

} // namespace tobel
