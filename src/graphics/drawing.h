// What every view shares: the fixed colours, the colour of a stack surface,
// the fit of a window onto a surface, axes with their ticks, the fill of a
// section polygon and the force arrow.
#pragma once

#include <array>
#include <vector>

#include "geometry/section_window.h"
#include "graphics/draw_surface.h"
#include "project/project.h"

namespace tobel {

constexpr Colour axis_grey = 8421504;   // axes, ticks and their labels
constexpr Colour black = 0;             // plan grid and outline
constexpr Colour force_red = 255;       // external forces
constexpr Colour water_blue = 16711680; // water forces
constexpr Colour limit_magenta = 16711935;
constexpr Colour tentative_yellow = rgb(255, 255, 0);

// Entry i (1 to 51) of a colour table; 0 (black) outside it.
using ColourTable = std::array<std::int32_t, colour_entries + 1>;
Colour colour_entry(const ColourTable& table, int i);

// The factor elevations are drawn with; a project without a vertical
// exaggeration yet draws true elevations.
double drawn_exaggeration(const Project& p);

// The colour of stack surface k: its layer colour, a piezometric surface's
// own, the water colour for a layer of water (unless `water_rule` is off, as
// in the isometric views), the sliding colour for the sliding surface.
Colour surface_colour(const Project& p, int k, bool water_rule = true);

// The colour a layer is filled with in a section: its layer colour, or the
// water colour for a layer of water.
Colour layer_fill_colour(const Project& p, int k);

// The window kept as the project's world window, with its pick unit.
void keep_world_window(Project& p, const WorldWindow& w);
// Whether external force i acts on mesh row r: its |X| lies in
// (X(r) - row_spacing / 2, X(r) + row_spacing / 2]. A negative X is taken at
// its size.
bool force_on_row(const Project& p, int i, int r);
// The arrow of force i at a scale; a component flagged 1 is drawn as 0.
void force_arrow_lengths(const Project& p, int i, double scale, double& v_len, double& h_len);

// fit_window, kept as the project's world window, then Scale on the surface.
WorldWindow fit_and_scale(Project& p, DrawSurface& s, const FitInputs& in);

// The tick step of an axis whose window extent is e.
double tick_step(double e);
// The first tick of an axis that starts at `start`, for that step.
double first_tick(double start, double step);

// Axes, ticks and labels in grey on the present window. Labels read true
// elevations whatever vert_exag; the window is left as it was found.
// `show_limits` (the section editor) runs the ticks across the picture when
// the Grid option is checked and marks the mesh limits y_min, y_max.
void draw_axes(const Project& p, DrawSurface& s, bool show_limits);

struct WorldPoint {
    double x = 0, y = 0;
};
// The fill of one layer: each point to a whole pixel (ties to even), the
// last point of the list left out, the closing edge from the one before it.
void draw_section_polygon(DrawSurface& s, const std::vector<WorldPoint>& points, Colour colour);

// Two shafts and up to two heads, tip at (x, y): a positive v_len pushes
// down on the point, a positive h_len towards increasing x.
void draw_force_arrow(DrawSurface& s, double x, double y, double v_len, double h_len, double head_w,
                      double head_l, Colour colour);

} // namespace tobel
