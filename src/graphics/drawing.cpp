#include "graphics/drawing.h"

#include <cmath>

#include "project/numtext.h"

namespace tobel {

Colour colour_entry(const ColourTable& table, int i)
{
    return i >= 1 && i <= colour_entries ? table[std::size_t(i)] : 0;
}

double drawn_exaggeration(const Project& p)
{
    return p.vert_exag != 0 ? double(p.vert_exag) : 1.0;
}

Colour surface_colour(const Project& p, int k, bool water_rule)
{
    Colour c = colour_entry(p.layer_colour, k);
    if (k > p.num_layers)
        c = colour_entry(p.piezo_colour, k - p.num_layers);
    if (water_rule && k >= 1 && k <= material_capacity && material_type(p, k) == 5)
        c = p.piezo_colour[13];
    if (k == p.sliding_index)
        c = p.sliding_colour;
    return c;
}

Colour layer_fill_colour(const Project& p, int k)
{
    if (k >= 1 && k <= material_capacity && material_type(p, k) == 5)
        return p.piezo_colour[13];
    return colour_entry(p.layer_colour, k);
}

bool force_on_row(const Project& p, int i, int r)
{
    const float row_x = p.x_min + float(r - 1) * p.row_spacing;
    const float half = p.row_spacing / 2;
    const float x = std::fabs(p.force_x[std::size_t(i)]);
    return x > row_x - half && x <= row_x + half;
}

void force_arrow_lengths(const Project& p, int i, double scale, double& v_len, double& h_len)
{
    const auto f = std::size_t(i);
    v_len = p.force_v_ignored[f] == 1 ? 0.0 : double(p.force_v[f]) * scale;
    h_len = p.force_h_ignored[f] == 1 ? 0.0 : double(p.force_h[f]) * scale;
}

void keep_world_window(Project& p, const WorldWindow& w)
{
    p.view.win_left = w.win_left;
    p.view.win_bottom = w.win_bottom;
    p.view.win_right = w.win_right;
    p.view.win_top = w.win_top;
    p.view.pick_unit = w.pick_unit;
}

WorldWindow fit_and_scale(Project& p, DrawSurface& s, const FitInputs& in)
{
    const WorldWindow w = fit_window(in);
    keep_world_window(p, w);
    s.Scale(w.win_left, w.win_top, w.win_right, w.win_bottom);
    return w;
}

double tick_step(double e)
{
    // A value on a boundary takes the smaller step.
    static const double limits[] = {3,    5,    10,    20,    50,    100,    200,    500,    1000,
                                    2000, 5000, 10000, 20000, 50000, 100000, 200000, 500000, 1000000};
    static const double steps[] = {0.25, 0.5, 1,    2,    5,    10,    20,    50,    100,
                                   200,  500, 1000, 2000, 5000, 10000, 20000, 50000, 100000};
    if (e < limits[0])
        return steps[0];
    for (std::size_t i = 1; i < std::size(limits); ++i)
        if (e <= limits[i])
            return steps[i];
    return 500000;
}

// Integer division of the rounded operands, truncating toward zero.
static double rounded_div(double a, double b)
{
    const double q = std::nearbyint(b);
    if (q == 0)
        return 0;
    return std::trunc(std::nearbyint(a) / q);
}

double first_tick(double start, double step)
{
    if (step >= 1)
        return step * rounded_div(start, step);
    if (step == 0.5)
        return rounded_div(start * 10, step * 10) * (step * 10) / 10;
    return rounded_div(start * 100, step * 100) * (step * 100) / 100;
}

void draw_axes(const Project& p, DrawSurface& s, bool show_limits)
{
    const Colour fore = s.ForeColor();
    s.DrawWidth(1);
    // 1. Vertical coordinates read true elevation until the end.
    const float top0 = s.ScaleTop(), height0 = s.ScaleHeight();
    const double exag = drawn_exaggeration(p);
    s.ScaleTop(float(double(top0) / exag));
    s.ScaleHeight(float(double(height0) / exag));
    const double left = s.ScaleLeft(), top = s.ScaleTop();
    const double sw = std::abs(double(s.ScaleWidth())), sh = std::abs(double(s.ScaleHeight()));

    // 2. and 3.
    const double h_step = tick_step(sw), v_step = tick_step(sh);
    double x = first_tick(left, h_step);
    const double y_first = first_tick(top, v_step);

    // 4.
    const double b = (top - sh) + sh / 38;
    const double a = left + sw / 25;

    // 5.
    const bool across = show_limits && p.menus.items.count("grid") && p.menus.at("grid").checked;
    const double v_end = across ? top : b + sh / 100;
    const double h_end = across ? left + double(s.ScaleWidth()) : a + sw / 120;

    // 6. and 7.
    while (x <= a + sw / 120)
        x += h_step;
    for (; x <= left + sw; x += h_step) {
        s.Line(x, b, x, v_end, axis_grey);
        const std::string text = str(float(x));
        s.CurrentX(x - s.TextWidth(text) / 2);
        s.CurrentY(b - sh / 225);
        s.ForeColor(axis_grey);
        s.Print(text);
        s.ForeColor(fore);
    }

    // 8. The first tick is drawn without the test.
    const double bottom = top - sh;
    for (double y = y_first;; y -= v_step) {
        if (y != y_first && (y < bottom || !(y > b + sh / 100)))
            break;
        s.Line(a, y, h_end, y, axis_grey);
        const std::string text = str(float(y));
        s.CurrentY(y - s.TextHeight(text) / 2);
        s.CurrentX(a - s.TextWidth(text + " "));
        s.ForeColor(axis_grey);
        s.Print(text);
        s.ForeColor(fore);
    }

    // 9.
    s.Line(a, b, left + double(s.ScaleWidth()), b, axis_grey);
    s.Line(a, b, a, top, axis_grey);

    // 10. The mesh limits of the section editor.
    if (show_limits) {
        s.Line(p.y_min, top, p.y_min, bottom, limit_magenta);
        s.Line(p.y_max, top, p.y_max, bottom, limit_magenta);
    }
    s.ScaleTop(top0);
    s.ScaleHeight(height0);
}

void draw_section_polygon(DrawSurface& s, const std::vector<WorldPoint>& points, Colour colour)
{
    if (points.size() < 2)
        return;
    std::vector<DevicePoint> device;
    device.reserve(points.size() - 1);
    // The fill takes the index of the last point as its count.
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        device.push_back(
            {int(std::nearbyint(s.device_x(points[i].x))), int(std::nearbyint(s.device_y(points[i].y)))});
    s.Polygon(device, colour);
}

void draw_force_arrow(DrawSurface& s, double x, double y, double v_len, double h_len, double head_w,
                      double head_l, Colour colour)
{
    // 1.
    s.Line(x, y, x - h_len, y, colour);
    s.Line(x, y, x, y + v_len, colour);
    // 2.
    if (v_len != 0) {
        const double hy = v_len > 0 ? y + head_l : y - head_l;
        s.Line(x, y, x - head_w, hy, colour);
        s.Line(x, y, x + head_w, hy, colour);
        s.Line(x - head_w, hy, x + head_w, hy, colour);
    }
    // 3. The horizontal head takes the two sizes across.
    if (h_len != 0) {
        const double hx = h_len > 0 ? x - head_l : x + head_l;
        s.Line(x, y, hx, y + head_w, colour);
        s.Line(x, y, hx, y - head_w, colour);
        s.Line(hx, y + head_w, hx, y - head_w, colour);
    }
}

} // namespace tobel
