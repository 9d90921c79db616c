#include "graphics/editor_picture.h"

#include <algorithm>
#include <cmath>

#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "project/numtext.h"
#include "project/runtime_error.h"

namespace tobel {

namespace {

int method_of(const Project& p, int k)
{
    return k >= 0 && k <= surface_capacity ? p.surf_method[std::size_t(k)] : 0;
}

// A square mark of side `side` centred on (y, e).
void draw_mark(DrawSurface& s, double y, double e, double side, Colour c)
{
    const double h = side / 2;
    s.Line(y - h, e - h, y + h, e - h, c);
    s.LineTo(y + h, e + h, c);
    s.LineTo(y - h, e + h, c);
    s.LineTo(y - h, e - h, c);
}

// 6. The fixed polyline of a surface from a grid file or a constant depth,
// from its plane of zgrid along the mesh row nearest the section. Drawn
// exaggerated like everything else in the picture.
void draw_reference_line(const Project& p, DrawSurface& s, int k, int r, Colour c)
{
    const double ve = drawn_exaggeration(p);
    for (int j = 2; j <= p.num_cols; ++j) {
        const double y0 = double(p.y_min) + (j - 2) * double(p.col_spacing);
        const double y1 = double(p.y_min) + (j - 1) * double(p.col_spacing);
        s.Line(y0, double(p.zgrid(r, j - 1, k)) * ve, y1, double(p.zgrid(r, j, k)) * ve, c);
    }
}

void draw_legend(const Project& p, DrawSurface& s, const SectionEditor& ed, const ZoomWindow& w)
{
    (void)p;
    const double W = double(w.win_right) - w.win_left, H = double(w.win_top) - w.win_bottom;
    const LegendBox& l = ed.legend;
    const double x1 = w.win_left + l.left * W, y1 = w.win_top - l.top * H;
    const double x2 = x1 + l.width * W, y2 = y1 - l.height * H;
    s.Line(x1, y1, x2, y1, black);
    s.LineTo(x2, y2, black);
    s.LineTo(x1, y2, black);
    s.LineTo(x1, y1, black);
    s.ForeColor(black);
    s.CurrentX(x1 + W / 200);
    s.CurrentY(y1 - H / 200);
    s.Print(ed.section_label);
    s.CurrentX(x1 + W / 200);
    s.Print(ed.line_label + ed.long_label);
    s.CurrentX(x1 + W / 200);
    s.Print(l.hint);
}

} // namespace

Colour editor_line_colour(const Project& p, const SectionEditor& ed, int k)
{
    if (k == ed.edit_line)
        return p.selected_colour;
    return surface_colour(p, k);
}

int editor_reference_row(const Project& p, int section)
{
    const double x = section >= 0 && section <= section_capacity ? p.sections.x[std::size_t(section)] : 0.0f;
    long r = 1;
    try {
        // The inner rounding of the distance is the rule, kept as it stands.
        r = cint(double(cint(x - double(p.x_min))) / double(p.row_spacing) + 1);
    } catch (const RuntimeError&) {
        r = 1; // no row spacing yet
    }
    return int(std::clamp<long>(r, 1, std::max<long>(1, p.num_rows)));
}

void draw_editor(Project& p, const SectionEditor& ed)
{
    RecordingSurface s = picture_surface(p, p.pictures.editor);
    const ZoomWindow& w = ed.window();
    s.Cls();
    s.Scale(w.win_left, w.win_top, w.win_right, w.win_bottom);

    // The background image under everything, in its world rectangle. While
    // the two points are clicked it shows as loaded; a pan hides it.
    const EditorImage& im = ed.image;
    if (im.loaded && !ed.panning && (im.visible || im.image_stage != 0))
        s.draw_image(im.handle.id, im.left, im.top, double(im.left) + im.width, double(im.top) + im.height);

    draw_axes(p, s, true);

    // Fixed lines of the surfaces not drawn section by section.
    const int row = editor_reference_row(p, p.view_row);
    s.DrawWidth(1);
    for (int k = 1; k <= ed.edit_lines; ++k) {
        const int m = method_of(p, k);
        if (m == 1 || m == 2)
            draw_reference_line(p, s, k, row, surface_colour(p, k));
    }

    // Every cross-section based line; the current one last so that it
    // stands on top.
    auto draw_line = [&](int k) {
        const bool current = k == ed.edit_line;
        const Colour c = editor_line_colour(p, ed, k);
        const double side = current ? ed.mark_size : ed.mark_size / 2;
        const double ve = drawn_exaggeration(p);
        const int n = ed.npts(k);
        s.DrawWidth(current ? 2 : 1);
        for (int pt = 2; pt <= n; ++pt)
            s.Line(ed.edit_y(pt - 1, k), double(ed.edit_z(pt - 1, k)) * ve, ed.edit_y(pt, k),
                   double(ed.edit_z(pt, k)) * ve, c);
        for (int pt = 1; pt <= n; ++pt)
            draw_mark(s, ed.edit_y(pt, k), double(ed.edit_z(pt, k)) * ve, side, c);
    };
    for (int k = 1; k <= ed.edit_lines; ++k)
        if (k != ed.edit_line && method_of(p, k) <= 0)
            draw_line(k);
    if (ed.edit_line >= 1 && ed.edit_line <= ed.edit_lines && method_of(p, ed.edit_line) <= 0)
        draw_line(ed.edit_line);
    s.DrawWidth(1);

    // The slope label beside the place it was computed for: the point
    // picked, then the pointer that drags it.
    if (ed.slope_visible && ed.edit_point >= 1) {
        s.ForeColor(p.selected_colour);
        s.CurrentX(double(ed.slope_y) + ed.mark_size);
        s.CurrentY(double(ed.slope_z) * drawn_exaggeration(p) + ed.mark_size);
        s.Print(ed.slope_label);
    }
    if (ed.legend.visible && ed.labels_visible)
        draw_legend(p, s, ed, w);
}

void set_editor_caption(Project& p)
{
    set_main_title(p, "         EDITING CROSS-SECTION" + str(int(p.view_row)));
}

} // namespace tobel
