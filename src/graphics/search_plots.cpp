#include "graphics/search_plots.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "graphics/drawing.h"
#include "project/numtext.h"
#include "search/trial.h"

namespace tobel {

// One colour component of the table, rounded to a whole number (ties to
// even); the range guard only catches the float noise at a class limit.
static int component(double v)
{
    return int(std::clamp(cint(v), 0L, 255L));
}

Colour fs_colour(float F)
{
    const double f = F;
    switch (fos_class_of(F)) {
    case 0: return rgb(200, 225, 200);
    case 1: return rgb(component(390 * f + 60), 0, 0);
    case 2: return rgb(255, component(320 * f - 160), 0);
    case 3: return rgb(255, component(-600 * f + 720), 255);
    case 4: return rgb(component(-1275 * f + 1785), 0, 255);
    case 5: return rgb(0, 0, component(-387.5 * f + 797.5));
    case 6: return rgb(0, 255, component(-510 * f + 1173));
    case 7: return rgb(0, component((-190 / 0.7) * f + 437 / 0.7 + 255), 0);
    default: return rgb(0, 65, 0);
    }
}

Colour trial_colour(const Project& p)
{
    return p.view.tentative_marker ? tentative_yellow : fs_colour(p.search.trial.fos);
}

void draw_trial_marker(Project& p, DrawSurface& s, double y, double z, double w, double h)
{
    const double e = drawn_exaggeration(p);
    s.fill_box(y - w / 2, z * e - (h / 2) * e, y + w / 2, z * e + (h / 2) * e, trial_colour(p));
}

void draw_trial_trace(Project& p, DrawSurface& s)
{
    if (p.view_row < 1)
        p.view_row = 1;
    // A row beyond the mesh (a mesh made smaller since) shows its last row.
    const int r = std::min<int>(p.view_row, p.num_rows);
    if (r < 1 || p.num_cols < 1)
        return;
    const double e = drawn_exaggeration(p);
    const Colour colour = trial_colour(p);
    auto y_of = [&](int c) { return double(p.y_min) + double(c - 1) * double(p.col_spacing); };
    double y0 = y_of(1), z0 = double(p.zgrid(r, 1, p.sliding_index)) * e;
    for (int c = 2; c <= p.num_cols; ++c) {
        const double y1 = y_of(c), z1 = double(p.zgrid(r, c, p.sliding_index)) * e;
        s.DrawWidth(p.view.tentative_marker ? 2 : 1);
        s.Line(y0, z0, y1, z1, colour);
        s.DrawWidth(1);
        y0 = y1;
        z0 = z1;
    }
}

void draw_search_grid(Project& p, DrawSurface& s, GridSearchRecord& r)
{
    if (r.grid_ny == 0)
        r.grid_ny = 1;
    if (r.grid_nz == 0)
        r.grid_nz = 1;
    const double ny = r.grid_ny, nz = r.grid_nz;
    const double dy = ny == 1 ? 0.0 : (double(r.grid_y2) - double(r.grid_y1)) / (ny - 1);
    const double dz = nz == 1 ? 0.0 : (double(r.grid_z_top) - double(r.grid_z_bottom)) / (nz - 1);
    // Arms: half a spacing each way, at most a hundredth of the picture,
    // then both the smaller so that the cross is square in drawn units.
    const double cut = std::abs(double(s.ScaleWidth())) / 100;
    double a = std::min(std::abs(double(r.grid_y2) - double(r.grid_y1)) / (2 * ny), cut);
    double b = std::min(std::abs(double(r.grid_z_top) - double(r.grid_z_bottom)) / (2 * nz), cut);
    a = b = std::min(a, b);
    const double e = drawn_exaggeration(p);
    s.DrawWidth(1);
    for (long j = 0; double(j) <= nz - 1; ++j)
        for (long i = 0; double(i) <= ny - 1; ++i) {
            const double y = double(r.grid_y1) + double(i) * dy;
            const double z = double(r.grid_z_top) - double(j) * dz;
            s.Line(y - a, z * e, y + a, z * e, black);
            s.Line(y, (z + b / e) * e, y, (z - b / e) * e, black);
        }
}

void draw_fs_legend(Project& p, DrawSurface& s)
{
    const float fs_high = p.search.fos_max, fs_low = p.search.fos_min;
    const int n = fs_high > 0.5f && fs_low < 3.0f ? 5 : 2;
    const float step = (fs_high - fs_low) / float(n);
    const double w = std::abs(double(s.ScaleWidth()));
    const double side = w / 38;
    const double x = double(s.ScaleLeft()) + w * 17 / 18;
    double y = double(s.ScaleTop()) - w / 20;
    const double text_x = x - side * 1.3;
    double text_y = y - side * 0.18;
    const Colour fore = s.ForeColor();

    s.ForeColor(black);
    s.CurrentX(text_x - side);
    s.CurrentY(text_y);
    s.Print("FS");
    float F = fs_low;
    for (int row = 0; row <= n; ++row) {
        s.fill_box(x, y, x + side, y - side, fs_colour(F));
        s.ForeColor(row == 0 ? force_red : black);
        s.CurrentX(text_x);
        s.CurrentY(text_y);
        // Two decimals, as the factors of safety are shown elsewhere.
        s.Print(format(double(F), "##0.00"));
        y -= side;
        text_y -= side;
        F += step;
    }
    s.ForeColor(fore);
}

} // namespace tobel
