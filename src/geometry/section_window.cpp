#include "geometry/section_window.h"

#include "project/numtext.h"

#include <algorithm>

namespace tobel {

WorldWindow fit_window(const FitInputs& in)
{
    // A degenerate extent (no width) is taken as a flat one.
    const double aspect = in.extent_width > 0 ? double(in.extent_height) / double(in.extent_width) : 0.01;
    const double m = in.margin_ratio;
    double s = 0, left = 0, bottom = 0;
    if (aspect > double(in.area_height) / double(in.area_width)) {
        s = (double(in.extent_height) / (1 - 2 * m)) / double(in.area_height);
        const double h = double(in.area_height) * s, w = double(in.area_width) * s;
        left = (double(in.extent_left) - double(in.area_left) * s) - (w - double(in.extent_width)) / 2;
        bottom = (double(in.extent_bottom) - double(in.area_bottom) * s) - m * h;
    } else {
        s = (double(in.extent_width) / (1 - 2 * m)) / double(in.area_width);
        const double h = double(in.area_height) * s, w = double(in.area_width) * s;
        left = (double(in.extent_left) - double(in.area_left) * s) - m * w;
        bottom = (double(in.extent_bottom) - double(in.area_bottom) * s) - (h - double(in.extent_height)) / 2;
    }
    const double h = double(in.area_height) * s, w = double(in.area_width) * s;
    WorldWindow out;
    out.win_left = float(left);
    out.win_bottom = float(bottom);
    out.win_right = float(double(out.win_left) + double(in.area_left) * s + w);
    out.win_top = float(double(out.win_bottom) + double(in.area_bottom) * s + h);
    out.pick_unit = float((double(out.win_right) - double(out.win_left)) / 100);
    return out;
}

ZRange find_z_range(const Project& p)
{
    ZRange r;
    if (p.zgrid.rows < 1 || p.zgrid.cols < 1 || p.num_layers < 1)
        return r;
    r.z_low = p.zgrid(1, 1, 1);
    r.z_high = p.zgrid(1, 1, p.num_layers);
    const int n = p.surface_defined != 0 ? p.sliding_index : p.sliding_index - 1;
    for (int k = 1; k <= std::min(n, p.zgrid.planes); ++k)
        for (int i = 1; i <= std::min<int>(p.num_rows, p.zgrid.rows); ++i)
            for (int j = 1; j <= std::min<int>(p.num_cols, p.zgrid.cols); ++j) {
                const float z = p.zgrid(i, j, k);
                r.z_low = std::min(r.z_low, z);
                r.z_high = std::max(r.z_high, z);
            }
    if (r.z_low < p.base_z)
        r.z_low = p.base_z;
    return r;
}

FitInputs section_fit(const Project& p, const ZRange& z, float area_width, float area_height, bool lateral)
{
    FitInputs in;
    in.margin_ratio = 0.1f;
    in.extent_left = lateral ? p.x_min : p.y_min;
    in.extent_width = lateral ? p.x_max - p.x_min : p.y_max - p.y_min;
    in.extent_height = (z.z_high - z.z_low) * p.vert_exag;
    in.extent_bottom = p.vert_exag * z.z_low;
    in.area_width = area_width;
    in.area_height = area_height;
    return in;
}

WorldWindow longitudinal_section_window(const Project& p, float area_width, float area_height)
{
    return fit_window(section_fit(p, find_z_range(p), area_width, area_height));
}

int16 section_row_of(const Project& p, float x)
{
    return int16(cint(double((x - p.x_min) / p.row_spacing)) + 1);
}

} // namespace tobel
