// The section editor tob_graphic as logic: one cross-section at a time, every
// line of the stack on it drawn at once, one of them the current line, its
// points added, moved and deleted with the pointer or typed into a table of
// Y and Z. It works on a private copy of one section and writes it back when
// the user leaves the section.
//
// Pointer events come in world units: Y, and E the elevation already
// multiplied by vert_exag (the drawing is exaggerated, the stored Z is not:
// Z = E / vert_exag).
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "project/project.h"
#include "ui/form_key.h"
#include "ui/port.h"

namespace tobel {

enum class PointerButton { left, right };
enum class EditorPointer { cross, move, pan };

// What follows Continue, by form_mode.
enum class EditorNext {
    finished,     // 2 or 0: the stack is rebuilt, view_mode 5; the caller draws the finished load
    general_done, // 7: the general sliding surface is built, the Solve menu shown, the surface drawn
    to_wedge,     // 4: the sliding plane and its dips are in; the wedge dialog follows
};

// One stored world window of the zoom table; `set` false until a level is
// first reached.
struct ZoomWindow {
    float win_left = 0, win_right = 0, win_top = 0, win_bottom = 0;
    bool set = false;
};

// An item of the editor's menus: its caption, whether it shows, and the
// section or line it leads to.
struct EditorMenuItem {
    std::string caption;
    bool visible = true;
    int target = 0;
};

// The legend box of the picture: where it stands, as fractions of the
// picture from its upper left corner, and what it says.
struct LegendBox {
    bool visible = true;
    bool dragging = false;
    float left = 0.02f, top = 0.02f, width = 0.3f, height = 0.12f;
    // Where the pointer took the box, as fractions of the picture from the
    // box's upper left corner, so that the box keeps its place under the
    // pointer while it is dragged.
    float grab_x = 0, grab_y = 0;
    std::string hint = "Press SHIFT and drag cursor to scroll image";
};

// The dialog tob_scale: the world coordinates of the two known points of a
// background image, as text cells in the order image_p1_y, image_p1_z,
// image_p2_y, image_p2_z.
struct ScaleForm {
    bool open = false;
    std::array<std::string, 4> cells{};
    int row = 1, col = 1; // current cell: row 1 point 1, row 2 point 2
};

// A background image laid behind the lines. Its rectangle is in world units
// (left, top, width, height; height is negative in the y-up window, as the
// window's ScaleHeight), so that it moves with every pan and zoom.
struct EditorImage {
    bool loaded = false;
    bool visible = false;
    ImageHandle handle;
    std::string path;
    float left = 0, top = 0, width = 0, height = 0;
    int image_stage = 0; // 0 none, 1 waiting for point 1, 2 for point 2
    float image_c1_y = 0, image_c1_e = 0, image_c2_y = 0, image_c2_e = 0;
    int saved_zoom_level = 3;
    std::string help_text;
    bool help_visible = false;
};

constexpr int editor_table_rows = 5;
constexpr int editor_table_cols = 2;
constexpr const char* editor_pan_pointer_file = "C:\\Program Files\\TOB\\h_move.cur";

struct SectionEditor {
    bool open = false;
    // Working copy of section view_row by line k (stack index) and point.
    std::vector<float> y_v, z_v;
    std::vector<int16> edit_npts = std::vector<int16>(section_count_surfaces + 1, 0);
    int16 edit_lines = 0, edit_line = 0, edit_point = 0;
    int16 point_picked = 0, insert_pending = 0, delete_pending = 0;
    bool placing = false; // a point was picked or added by the last pointer down
    bool clusters_on = true;
    int16 zoom_level = 3, zoom_pending = 0;
    std::array<ZoomWindow, 8> windows{};
    float mark_size = 0, snap_dist = 0;

    // The table of points.
    int16 table_rows = editor_table_rows, table_cols = editor_table_cols;
    int16 table_first = 1, table_row = 1, table_col = 1;
    int16 table_limit = 10;  // the table's scroll limit
    std::string cell_text;   // edit text of the current cell
    bool cell_typed = false; // the current cell's text was typed into

    // Labels.
    std::string line_label, long_label, section_label;
    std::string y_label, z_label, slope_label;
    bool slope_visible = false, labels_visible = true;
    // Where the slope label stands: beside the point it was computed for,
    // which follows the pointer while a point is dragged (Y and true Z).
    float slope_y = 0, slope_z = 0;

    // Menus: item i of an array at index i - 1.
    std::vector<EditorMenuItem> goto_section_items, goto_line_items, copy_section_items, copy_layer_items;
    bool toggle_line_offered = true, goto_line_offered = true, copy_layer_offered = true;
    bool copy_above_offered = true, copy_below_offered = true;
    bool clusters_offered = true;
    std::string clusters_caption = "Cl&usters On", snap_caption = "S&napping On";
    bool zoom_in_enabled = true, zoom_out_enabled = true;
    bool unload_image_enabled = false;

    // Pan.
    bool panning = false;
    float pan_y = 0, pan_e = 0;

    LegendBox legend;
    EditorPointer pointer = EditorPointer::cross;
    std::string pointer_file;
    EditorImage image;
    ScaleForm scale;

    SectionEditor();
    static std::size_t at(int pt, int k)
    {
        return std::size_t(pt) * (section_surface_capacity + 1) + std::size_t(k);
    }
    float& edit_y(int pt, int k) { return y_v[at(pt, k)]; }
    float edit_y(int pt, int k) const { return y_v[at(pt, k)]; }
    float& edit_z(int pt, int k) { return z_v[at(pt, k)]; }
    float edit_z(int pt, int k) const { return z_v[at(pt, k)]; }
    int16& npts(int k) { return edit_npts[std::size_t(k)]; }
    int16 npts(int k) const { return edit_npts[std::size_t(k)]; }
    const ZoomWindow& window() const { return windows[std::size_t(zoom_level)]; }
};

// "Only " + Str(n) + " points allowed."
std::string points_limit_message(int max_points);

// Opens the editor on section view_row: lines, current line, menus, zoom
// table, caption, labels, then the section's working copy.
SectionEditor editor_open(Project& p, Port& port);
// Loads the working copy of section view_row and the labels of it.
void editor_load_section(Project& p, SectionEditor& ed);

void pointer_down(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                  double e);
void pointer_move(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                  double e);
void pointer_up(Project& p, SectionEditor& ed, Port& port, PointerButton button, bool shift, double y,
                double e);
// Whether world (y, e) falls on the legend box as it is drawn (shown, with
// the labels) in the window of the zoom level in force.
bool legend_hit(const SectionEditor& ed, double y, double e);
// The legend box is taken by the pointer at world (y, e); pointer_move
// carries it and pointer_up drops it where the pointer leaves it.
void legend_drag_begin(SectionEditor& ed, double y, double e);

void toggle_line(Project& p, SectionEditor& ed, Port& port);
void goto_line(Project& p, SectionEditor& ed, Port& port, int k);
void toggle_section(Project& p, SectionEditor& ed, Port& port);
void goto_section(Project& p, SectionEditor& ed, Port& port, int n);
void copy_layer(Project& p, SectionEditor& ed, Port& port, int k);
void copy_section(Project& p, SectionEditor& ed, Port& port, int n);
void copy_above(Project& p, SectionEditor& ed, Port& port);
void copy_below(Project& p, SectionEditor& ed, Port& port);
void insert_point(SectionEditor& ed);
void delete_point(SectionEditor& ed);
void zoom_in(SectionEditor& ed);
void zoom_out(Project& p, SectionEditor& ed, Port& port);
void fit_to_screen(Project& p, SectionEditor& ed, Port& port);
void toggle_clusters(SectionEditor& ed);
void toggle_snap(Project& p, SectionEditor& ed);

// The table of points.
// The text a cell shows: the point's Y or Z, empty beyond the line's end.
std::string table_cell_text(const SectionEditor& ed, int row, int col);
// Whether a key is let into a cell: digits, the point, the minus, backspace,
// Enter and Tab; every other key is dropped.
bool table_key_accepted(char key);
void table_key(Project& p, SectionEditor& ed, Port& port, FormKey key);
bool table_type(Project& p, SectionEditor& ed, Port& port, char key);
void table_click(Project& p, SectionEditor& ed, Port& port, int row, int col);
// The table's vertical scroll bar: it runs from point 1 to the scroll limit
// (edit_npts + 10, or further when the keys have gone beyond it), and its
// value is table_first.
int table_scroll_max(const Project& p, const SectionEditor& ed);
// The scroll bar moved: the typed cell goes in and the table shows the
// points from `first`, the current cell staying in its row.
void table_scroll(Project& p, SectionEditor& ed, int first);
// The current cell's text goes into the working copy.
void table_commit(SectionEditor& ed);

EditorNext continue_editor(Project& p, SectionEditor& ed, Port& port);
void cancel_editor(Project& p, SectionEditor& ed);

// Writes the working copy back into section view_row.
void editor_write_back(Project& p, const SectionEditor& ed);
// The slope label of the current point placed at (y, z): "1 : " + run / rise.
void update_slope_label(SectionEditor& ed, double y, double z);

} // namespace tobel
