#include "graphics/across_plot.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "graphics/drawing.h"
#include "project/numtext.h"

namespace tobel {

namespace {

// Colours of the aspects' lines, in the order of the list; they repeat past
// the last.
constexpr Colour line_colours[] = {rgb(0, 0, 192),   rgb(0, 128, 0),   rgb(192, 96, 0),
                                   rgb(128, 0, 128), rgb(0, 128, 128), rgb(96, 96, 0)};
constexpr Colour best_red = rgb(255, 0, 0);

Colour aspect_colour(std::size_t i)
{
    return line_colours[i % std::size(line_colours)];
}

// The aspects in the order they first appear among the cells.
std::vector<float> aspects_of(const AcrossResult& r)
{
    std::vector<float> a;
    for (const AcrossCell& c : r.cells)
        if (std::find(a.begin(), a.end(), c.aspect) == a.end())
            a.push_back(c.aspect);
    return a;
}

struct Box {
    double x_lo = 0, x_hi = 1, f_lo = 0, f_hi = 1;
};

Box data_box(const AcrossResult& r)
{
    Box b;
    bool any_x = false, any_f = false;
    for (const AcrossCell& c : r.cells) {
        b.x_lo = any_x ? std::min(b.x_lo, double(c.x)) : double(c.x);
        b.x_hi = any_x ? std::max(b.x_hi, double(c.x)) : double(c.x);
        any_x = true;
        if (c.best.trial_number <= 0 || !std::isfinite(c.best.fos))
            continue;
        b.f_lo = any_f ? std::min(b.f_lo, double(c.best.fos)) : double(c.best.fos);
        b.f_hi = any_f ? std::max(b.f_hi, double(c.best.fos)) : double(c.best.fos);
        any_f = true;
    }
    // A single X or a single F still gets an axis of some length.
    if (b.x_hi - b.x_lo <= 0) {
        b.x_lo -= 1;
        b.x_hi += 1;
    }
    // F is drawn over its own range, not from 0: the differences between the
    // searches are what the picture is for.
    const double pad = std::max((b.f_hi - b.f_lo) * 0.15, 0.01);
    b.f_lo -= pad;
    b.f_hi += pad;
    return b;
}

void marker(DrawSurface& s, double x, double f, double dx, double df, Colour c)
{
    s.fill_box(x - dx, f - df, x + dx, f + df, c);
}

} // namespace

double across_axis_step(double e)
{
    if (!(e > 0) || !std::isfinite(e))
        return 1;
    const double raw = e / 5;
    const double ten = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double m : {1.0, 2.0, 5.0})
        if (raw <= m * ten)
            return m * ten;
    return 10 * ten;
}

void draw_across_plot(DrawSurface& s, const AcrossResult& r)
{
    const Box b = data_box(r);
    const double w = b.x_hi - b.x_lo, h = b.f_hi - b.f_lo;
    // Room for the labels on the left and below, the legend on the right.
    const double left = b.x_lo - w * 0.14, right = b.x_hi + w * 0.30;
    const double bottom = b.f_lo - h * 0.14, top = b.f_hi + h * 0.16;
    s.Cls();
    s.Scale(left, top, right, bottom);

    // Axes with their ticks and labels.
    s.DrawWidth(1);
    s.Line(b.x_lo, b.f_lo, b.x_hi, b.f_lo, axis_grey);
    s.Line(b.x_lo, b.f_lo, b.x_lo, b.f_hi, axis_grey);
    s.ForeColor(axis_grey);
    const double xs = across_axis_step(w), fs = across_axis_step(h);
    for (double x = std::ceil(b.x_lo / xs) * xs; x <= b.x_hi + xs * 1e-9; x += xs) {
        s.Line(x, b.f_lo, x, b.f_lo - h * 0.02, axis_grey);
        const std::string t = general_text(float(x));
        s.CurrentX(x - s.TextWidth(t) / 2);
        s.CurrentY(b.f_lo - h * 0.03);
        s.Print(t);
    }
    for (double f = std::ceil(b.f_lo / fs) * fs; f <= b.f_hi + fs * 1e-9; f += fs) {
        s.Line(b.x_lo, f, b.x_lo - w * 0.015, f, axis_grey);
        const std::string t = format(f, "##0.00");
        s.CurrentX(b.x_lo - w * 0.02 - s.TextWidth(t));
        s.CurrentY(f - s.TextHeight(t) / 2);
        s.Print(t);
    }
    s.CurrentX(b.x_lo + w / 2 - s.TextWidth("X of the centre") / 2);
    s.CurrentY(b.f_lo - h * 0.08);
    s.Print("X of the centre");
    s.CurrentX(b.x_lo - w * 0.02 - s.TextWidth("F"));
    s.CurrentY(b.f_hi + h * 0.05);
    s.Print("F");
    s.ForeColor(black);
    s.CurrentX(b.x_lo + w * 0.05);
    s.CurrentY(top - h * 0.02);
    s.Print("SEARCH ACROSS THE SLOPE: LOWEST F OF EACH SEARCH");

    // One line for each aspect; a search without a result breaks it.
    const std::vector<float> aspects = aspects_of(r);
    const double mx = w * 0.006, mf = h * 0.008;
    for (std::size_t a = 0; a < aspects.size(); ++a) {
        const Colour c = aspect_colour(a);
        s.DrawWidth(2);
        bool drawing = false;
        double px = 0, pf = 0;
        for (const AcrossCell& cell : r.cells) {
            if (cell.aspect != aspects[a])
                continue;
            if (cell.best.trial_number <= 0 || !std::isfinite(cell.best.fos)) {
                drawing = false;
                continue;
            }
            const double x = cell.x, f = cell.best.fos;
            if (drawing)
                s.Line(px, pf, x, f, c);
            marker(s, x, f, mx, mf, c);
            px = x;
            pf = f;
            drawing = true;
        }
        // The legend.
        const double ly = b.f_hi - h * 0.08 * double(a);
        s.Line(b.x_hi + w * 0.04, ly, b.x_hi + w * 0.10, ly, c);
        s.ForeColor(c);
        s.CurrentX(b.x_hi + w * 0.12);
        s.CurrentY(ly - s.TextHeight("A") / 2);
        s.Print("aspect " + general_text(aspects[a]));
    }
    s.DrawWidth(1);

    // The best of all.
    if (r.best >= 0) {
        const AcrossCell& c = r.cells[std::size_t(r.best)];
        const double x = c.x, f = c.best.fos;
        s.DrawWidth(2);
        const double rx = mx * 3, rf = mf * 3;
        s.Line(x - rx, f - rf, x + rx, f - rf, best_red);
        s.LineTo(x + rx, f + rf, best_red);
        s.LineTo(x - rx, f + rf, best_red);
        s.LineTo(x - rx, f - rf, best_red);
        s.DrawWidth(1);
        s.ForeColor(best_red);
        s.CurrentX(b.x_hi + w * 0.04);
        s.CurrentY(b.f_hi - h * 0.08 * double(aspects.size() + 1));
        s.Print("best F " + format(double(c.best.fos), "##0.000"));
        s.CurrentX(b.x_hi + w * 0.04);
        s.Print("X " + general_text(c.x) + ", aspect " + general_text(c.aspect));
    }
    s.ForeColor(black);
}

} // namespace tobel
