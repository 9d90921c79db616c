// The world window of a picture and the limits of a longitudinal section:
// the fit of an extent to a drawing area, the drawn elevation range, and the
// window that the longitudinal section of view_row gets from them. The
// section views draw in this window; the search set-up takes its defaults
// from it.
#pragma once

#include "project/project.h"

namespace tobel {

// What is to be drawn (world units), the part of the surface to use (device
// units) and the margin kept at each end of the side that fills the area.
struct FitInputs {
    float extent_left = 0, extent_bottom = 0, extent_width = 0, extent_height = 0;
    float area_left = 0, area_bottom = 0, area_width = 0, area_height = 0;
    float margin_ratio = 0;
};

// World coordinates of the window's edges; pick_unit is a hundredth of its width.
struct WorldWindow {
    float win_left = 0, win_bottom = 0, win_right = 0, win_top = 0;
    float pick_unit = 0;
};

// Fits the extent to the area with the same scale on both axes: the side
// that fills the area keeps margin_ratio clear at each end, the other side
// is centred.
WorldWindow fit_window(const FitInputs& in);

// The mesh row that a longitudinal section at x shows: the nearest row, ties
// to even, counted from 1.
int16 section_row_of(const Project& p, float x);

// The elevations drawn: the lowest and highest of surfaces 1 to
// sliding_index (sliding_index - 1 while no sliding surface is defined) over
// the mesh, the low end raised to base_z.
struct ZRange {
    float z_low = 0, z_high = 0;
};
ZRange find_z_range(const Project& p);

// The fit of a section on a surface of the given size: margin 0.1, the mesh
// across (Y along a row, or X along a column when `lateral`) and the
// elevation range times vert_exag upward.
FitInputs section_fit(const Project& p, const ZRange& z, float area_width, float area_height,
                      bool lateral = false);

// The size of the search picture in device units when no window system says
// otherwise.
constexpr float default_picture_width = 800;
constexpr float default_picture_height = 600;

// The window of a longitudinal section on a picture of the given size:
// margin 0.1, extent y_min..y_max across and the elevation range times
// vert_exag upward. Ylo, Yhi are win_left, win_right; Zlo, Zhi are
// win_bottom, win_top, in exaggerated units.
WorldWindow longitudinal_section_window(const Project& p, float area_width = default_picture_width,
                                        float area_height = default_picture_height);

} // namespace tobel
