// What the layer form and the piezometric surface form share: the rows of
// surfaces with their input method, file and depth, the choice of a method
// (with its file dialog, depth question and immediate plane), the cells a
// row offers and the scroll of the ten rows in view.
#pragma once

#include <array>
#include <string>

#include "ui/form_key.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr int surface_rows_visible = 10;

// The list of input methods; a text's position is surf_method.
constexpr std::array<const char*, 3> surface_method_texts = {
    "Cross-section based ", "Elevation grid .GRD file ", "At constant depth"};
constexpr const char* surface_grid_filter = "Grid Files (*.GRD)|*.GRD";
// The buttons of both forms; the insert caption is this system's own.
constexpr const char* surface_add_caption = "&Add Surface";
constexpr const char* surface_insert_caption = "&Insert Surface";
constexpr const char* surface_delete_caption = "&Delete Surface";
constexpr const char* surface_change_caption = "Change";
constexpr const char* thickness_refused_text = "Thickness cannot be specified for this surface";

// The cells of a row, 1-based as on the forms. The piezometric form has no
// name cell.
enum SurfaceCell : int {
    surface_cell_name = 1,   // "Material Below Surface:" (layers only)
    surface_cell_method = 2, // "Surface Input Method:"
    surface_cell_file = 3,   // "*.GRD File:"
    surface_cell_depth = 4,  // "Depth:" / "Thickness:"
};

// A row as shown. A row beyond the last surface is empty and inactive; in a
// shown row the file field is active (and filled) for method 1 only, the
// depth field for method 2 only, and a field not in use shows nothing.
struct SurfaceRow {
    bool shown = false;
    std::string caption;  // "Layer 3", "Ground", "Piezo 2"
    std::string material; // layers: mat_name of the entry below the surface
    int method = 0;
    std::string method_text;
    bool file_active = false;
    std::string file;
    bool depth_active = false;
    std::string depth;
};

// Stack position k shown with `caption`; `material` is empty for a row
// without a material.
SurfaceRow surface_row(const Project& p, int k, const std::string& caption, bool with_material);

// How a depth is asked for a surface and what its plane hangs from.
struct DepthSource {
    std::string prompt;
    std::string title;
    int reference = 0;            // the stack position the plane hangs from
    bool reference_depth = false; // a constant-depth reference also counts as "not from sections"
};

// The text a cell of row k shows (the edit text when the cell is taken).
std::string surface_cell_text(const Project& p, int k, int cell);

// Whether a cell of row k can be taken: the name and method cells always,
// the file cell for method 1 and the depth cell for method 2.
bool surface_cell_active(const Project& p, int k, int cell, bool with_name);

// The pure key filter of a cell holding `text`: any printable key in the
// name cell, the numeric filter in the depth cell, nothing in the method and
// file cells (chosen from the list and the file dialog). Backspace (8) edits
// the name and depth cells.
bool surface_cell_accepts(int cell, const std::string& text, char key);

// Method 1 for stack position k: a file dialog for "*.GRD"; a chosen name
// becomes surf_grd_file and the plane is read at once. False on a cancel.
bool pick_surface_grid_file(Project& p, int k, Port& port);

// Method 2: the input box of `source`. A non-empty answer becomes
// surf_depth(k) and the result is true; an empty or cancelled one leaves the
// depth as it was.
bool ask_surface_depth(Project& p, int k, const DepthSource& source, Port& port);

// After a depth is entered: when the reference plane does not come from
// sections (method 1, or 2 as well where `source` says so), the plane of k is
// computed at once as reference - surf_depth(k). Returns whether it was.
bool hang_surface_plane(Project& p, int k, const DepthSource& source);

// Choosing method `method` (0, 1 or 2) from the list of row k. Method 2 for
// the ground or the sliding plane is set back to 0 with the message
// "Thickness cannot be specified for this surface". Method 1 with no file
// yet asks for one; method 2 with a depth of 0 asks for the depth. The
// reference of a depth counts only when it comes from a grid file here.
void choose_surface_method(Project& p, int k, int method, const DepthSource& source, Port& port);

// The button beside a row: a method-1 row picks and reads a file at any
// time; a method-2 row asks the depth again, and a reference of method 1 or
// 2 then gives the plane at once. A method-0 row does nothing.
void surface_row_button(Project& p, int k, const DepthSource& source, Port& port);

// A file with no name yet: empty, or the "*.GRD" that a save puts there.
bool surface_has_no_file(const Project& p, int k);

// Where a form stands in its rows: the row taken, the first of the ten rows
// in view, the cell taken and the text being edited in it.
struct SurfaceCursor {
    int row = 1;
    int top_row = 1;
    int cell = surface_cell_method;
    std::string edit_text;
};

// The rows of a form: row r is stack position offset + r, for r = 1..count.
struct SurfaceList {
    int offset = 0;
    int count = 0;
    bool with_name = false;
    int position(int row) const { return offset + row; }
};

// Takes cell `cell` of row `row` (the method cell where that cell is not in
// use), loads its text for editing and scrolls the row into view. A row
// outside 1..count is ignored.
void cursor_take(SurfaceCursor& c, const Project& p, const SurfaceList& list, int row, int cell);

// The edit text again from the project, after a change behind the cursor.
void cursor_refresh(SurfaceCursor& c, const Project& p, const SurfaceList& list);

// Up and Down change rows in the same cell; Right, Tab and Enter go to the
// next cell in use, and from the last to the first of the next row; Left
// goes back within the row. `past_last` means the move went beyond the last
// row: the form asks whether to add a surface.
enum class CursorMove { stayed, moved, past_last };
CursorMove cursor_key(SurfaceCursor& c, const Project& p, const SurfaceList& list, FormKey key);

// One key typed into the cell taken: the filter of the cell, then the edit
// text with the key appended (backspace 8 removes the last character). The
// name goes to mat_name and the depth to surf_depth at once: these forms
// work on the project itself. False when refused or the row is empty.
bool cursor_type(SurfaceCursor& c, Project& p, const SurfaceList& list, char key);

// Whether the scroll bar shows: more surfaces than rows in view.
bool surface_scroll_visible(int count);

// The top row of a scroll bar set to `top`, kept within 1..count - 9.
int surface_scroll_top(int count, int top);

} // namespace tobel
