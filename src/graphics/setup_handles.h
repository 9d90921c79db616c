// The set-up of a sliding surface or a search on the search window
// tob_picser (view_mode 3 ellipsoid, 7 grid search, 8 auto search): frames
// that show the parameters over the section, and handles that the pointer
// drags to change them. The dialog that owns the parameters passes them as a
// plain array of floats and writes back the texts a drag returns.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "graphics/draw_surface.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The places of the parameters in the arrays, in the order of the dialogs'
// records. Ellipsoid (mode 3): the form's five values.
enum EllipsoidValue : int { ell_value_x, ell_value_y, ell_value_z, ell_value_tangent, ell_value_aspect };
// Grid search (mode 7): the grid search record.
enum GridValue : int {
    grid_value_x,
    grid_value_y1,
    grid_value_z_top,
    grid_value_tangent,
    grid_value_aspect,
    grid_value_y2,
    grid_value_z_bottom,
    grid_value_radius_step,
    grid_value_ny,
    grid_value_nz,
    grid_value_point_y,
    grid_value_point_z,
};
// Auto search (mode 8): the auto search record.
enum AutoValue : int {
    auto_value_x,
    auto_value_y,
    auto_value_z,
    auto_value_step,
    auto_value_tangent,
    auto_value_radius_step,
    auto_value_aspect,
    auto_value_point_y,
    auto_value_point_z,
};
constexpr int ellipsoid_value_count = 5, grid_value_count = 12, auto_value_count = 9;

struct SetupParameters {
    int mode = 3;              // the view_mode of the set-up: 3, 7 or 8
    std::span<float> values;   // the dialog's parameters, laid out as above
    bool common_point = false; // the search's common point option
};

// What a handle moves when it is dragged.
enum class HandleRole {
    centre,       // the ellipsoid's or the auto search's centre: Y and Z
    corner_upper, // the grid's upper left corner: grid_y1, grid_z_top
    corner_lower, // the grid's lower right corner: grid_y2, grid_z_bottom
    step,         // the auto search's step: its distance from the centre in Y
    tangent,      // the tangent plane's elevation only
    common_point, // the common point: Y and Z
};

struct SetupHandle {
    HandleRole role = HandleRole::centre;
    double y = 0, z = 0; // where it stands: Y and true elevation
};

// The handles of a set-up, in the order a hit test tries them:
// ellipsoid: centre (Y, Z), tangent (Y, tangent elevation);
// grid: upper left corner, lower right corner, then the tangent in the
// middle of the grid's Y span, or the common point;
// auto: centre, step (centre Y + step, centre Z), then the tangent under the
// centre, or the common point.
std::vector<SetupHandle> setup_handles(const SetupParameters& set);

// The side of a handle: |ScaleWidth| / 55.
double handle_size(const DrawSurface& s);

// The frames and handles over the section already drawn on `s`. Frames are
// black lines: the lower half of the ellipsoid's circle through its centre
// (in the sliding colour) over a tangent line as wide as the circle; the
// grid's rectangle of centres; the auto search's square of the stencil,
// a step from the centre each way; a search's tangent plane as a line across
// the picture. Handles are filled squares of the handle side in the
// selected colour, centred on their points.
void draw_setup_frames(const Project& p, DrawSurface& s, const SetupParameters& set);

// The search section of view_row on tob_picser, with the frames over it.
void show_setup(Project& p, Port& port, const SetupParameters& set);

// The handle under the pointer at world (y, e), e in drawn units: nearer than
// pick_unit in Y and pick_unit / vert_exag in elevation. -1 for none; the
// first in the order of setup_handles when several are near.
int setup_handle_at(const Project& p, const SetupParameters& set, double y, double e);

// A value changed by a drag, with the text its box shows ("####0.00").
struct SetupEdit {
    int index = 0;
    std::string text;
};

struct SetupDrag {
    int handle = -1; // index into setup_handles while a drag runs
};

// Pointer down: starts a drag when a handle is caught. Returns the handle.
int setup_pointer_down(const Project& p, const SetupParameters& set, SetupDrag& drag, double y, double e);

// Pointer moved with a drag running: the handle goes to the pointer and the
// values it carries change. Returns the changed values with their texts;
// nothing without a drag.
std::vector<SetupEdit> setup_pointer_move(const Project& p, const SetupParameters& set, SetupDrag& drag,
                                          double y, double e);

// Pointer up: the drag ends.
void setup_pointer_up(SetupDrag& drag);

// The dialog a click on the search picture brings up, by view_mode.
enum class SetupDialog { none, ellipsoid, grid_search, auto_search, search_information };
SetupDialog search_picture_click(const Project& p);

// The search window takes the focus: the main title is the file's alone.
void search_picture_activated(Project& p);

} // namespace tobel
