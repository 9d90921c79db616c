#include "graphics/section_views.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "project/numtext.h"

namespace tobel {

namespace {

enum class SectionKind { longitudinal, search, lateral };

const std::string longitudinal_caption = "LONGITUDINAL SECTION";
const std::string lateral_caption = "LATERAL SECTION";
const std::string longitudinal_title = "         LONGITUDINAL CROSS-SECTION";
const std::string lateral_title = "         LATERAL CROSS-SECTION";
const std::string plan_caption = "PLAN VIEW";
const std::string plan_title = "         PLAN, COLUMN ASSEMBLY";

// One mesh line as a section sees it: node i (1..n) lies at start + (i - 1)
// * spacing along the picture's horizontal axis.
struct SectionLine {
    const Project& p;
    bool along_row; // longitudinal: along Y at view_row; lateral: along X at view_col
    int n;
    float start, spacing;

    float at(int i) const { return start + float(i - 1) * spacing; }
    float z(int i, int k) const
    {
        return along_row ? p.zgrid(p.view_row, i, k) * p.vert_exag : p.zgrid(i, p.view_col, k) * p.vert_exag;
    }
};

float row_value(const std::vector<float>& v, int r)
{
    return r >= 0 && std::size_t(r) < v.size() ? v[std::size_t(r)] : 0.0f;
}

// The lower boundary of layer k at node i: the layer below, or for layer 1 a
// base line one twelfth of the window height above the window bottom.
float lower_boundary(const Project& p, const SectionLine& line, int i, int k)
{
    if (k == 1)
        return (p.view.win_top - p.view.win_bottom) / 12 + p.view.win_bottom;
    return line.z(i, k - 1);
}

void fill_full_colour(Project& p, DrawSurface& s, const SectionLine& line)
{
    for (int k = 1; k <= p.num_layers; ++k) {
        std::vector<WorldPoint> pts;
        const float zb1 = lower_boundary(p, line, 1, k);
        // 1. and 2.
        pts.push_back({line.at(1), zb1});
        pts.push_back({line.at(1), line.z(1, k)});
        // 3. With a single node there is no step 3 and the last y stays at node 1.
        float last = line.at(1);
        for (int c = 2; c <= line.n; ++c) {
            last = line.at(c);
            pts.push_back({last, line.z(c, k)});
        }
        // 4. This corner takes the lower boundary of node 1, not of the last node.
        pts.push_back({last, zb1});
        // 5.
        for (int c = line.n; c >= 1; --c)
            pts.push_back({line.at(c), lower_boundary(p, line, c, k)});
        draw_section_polygon(s, pts, layer_fill_colour(p, k));
    }
}

void fill_hatching(Project& p, DrawSurface& s, const SectionLine& line, SectionKind kind)
{
    s.DrawWidth(2);
    for (int k = 1; k <= p.num_layers; ++k) {
        const Colour c = layer_fill_colour(p, k);
        for (int i = 1; i <= line.n; ++i)
            s.Line(line.at(i), lower_boundary(p, line, i, k), line.at(i), line.z(i, k), c);
    }
    // The lateral section leaves a thin pen behind, the longitudinal ones a thick one.
    s.DrawWidth(kind == SectionKind::lateral ? 1 : 2);
}

void surface_lines(Project& p, DrawSurface& s, const SectionLine& line, SectionKind kind)
{
    const int k0 = p.view.fill_style == 0 ? p.num_layers + 1 : 1;
    for (int k = p.sliding_index; k >= k0; --k) {
        // 1. The lateral section draws the stack entry as it stands.
        if (k == p.sliding_index && kind != SectionKind::lateral) {
            if (p.view.hide_sliding || p.surface_defined == 0)
                continue;
            if (kind == SectionKind::search && (p.view_mode == 3 || p.view_mode == 7 || p.view_mode == 8))
                continue;
        }
        // 2.
        const Colour c = surface_colour(p, k);
        s.DrawWidth(2);
        // 3.
        s.PSet(line.at(1), line.z(1, k));
        for (int i = 2; i <= line.n; ++i)
            s.LineTo(line.at(i), line.z(i, k), c);
    }
}

void external_forces(Project& p, DrawSurface& s)
{
    if (p.num_forces <= 0)
        return;
    double scale = 0;
    if (p.force_peak != 0)
        scale = std::abs(double(s.ScaleHeight()) / 4 / double(p.force_peak));
    const double head_w = std::abs(double(s.ScaleWidth())) / 190;
    const double head_l = std::abs(double(s.ScaleHeight())) / 20;
    for (int i = 1; i <= std::min<int>(p.num_forces, force_capacity); ++i) {
        if (!force_on_row(p, i, p.view_row))
            continue;
        s.DrawWidth(1);
        double v_len = 0, h_len = 0;
        force_arrow_lengths(p, i, scale, v_len, h_len);
        // The tip stands at the force's own elevation, not exaggerated.
        const auto f = std::size_t(i);
        draw_force_arrow(s, p.force_y[f], p.force_z[f], v_len, h_len, head_w, head_l, force_red);
    }
}

void water_forces(Project& p, DrawSurface& s)
{
    const int r = p.view_row;
    const double head_w = std::abs(double(s.ScaleWidth())) / 190;
    const double head_l = std::abs(double(s.ScaleHeight())) / 20;
    double scale = 0;
    // Elevations are not exaggerated here either. The crack thrust has no
    // plan position of its own: it is drawn at the ponded water's position,
    // and its scale is worked out afresh like the ponded water's.
    const float head = row_value(p.head_water_force, r);
    const float crack = row_value(p.crack_water_force, r);
    const float y = row_value(p.head_water_y, r);
    if (head != 0) {
        if (p.force_peak != 0)
            scale = std::abs(double(s.ScaleHeight()) / 6 / double(p.force_peak));
        s.DrawWidth(1);
        draw_force_arrow(s, y, row_value(p.head_water_z, r), 0, double(head) * scale, head_w, head_l,
                         water_blue);
    }
    if (crack != 0) {
        if (p.force_peak != 0)
            scale = std::abs(double(s.ScaleHeight()) / 6 / double(p.force_peak));
        s.DrawWidth(1);
        draw_force_arrow(s, y, row_value(p.crack_water_z, r), 0, double(crack) * scale, head_w, head_l,
                         water_blue);
    }
}

void draw_section(Project& p, Port& port, SectionKind kind)
{
    const bool lateral = kind == SectionKind::lateral;
    PictureWindow& w = kind == SectionKind::search ? p.pictures.search : p.pictures.section;
    // The caption is what activation and the graphic options read back.
    if (kind == SectionKind::longitudinal)
        w.caption = longitudinal_caption;
    else if (lateral)
        w.caption = lateral_caption;

    // 1.
    bring_up(p, w, port);
    RecordingSurface s = picture_surface(p, w);
    s.Cls();
    int16& line_index = lateral ? p.view_col : p.view_row;
    const int16 line_count = lateral ? p.num_cols : p.num_rows;
    if (line_index < 1 || line_count == 1)
        line_index = 1;

    // 2. The scroll bar and its label; the search window has none.
    if (kind != SectionKind::search) {
        // A single line hides the bar whatever the view mode.
        if (line_count == 1) {
            w.scroll.visible = false;
            w.scroll_label_visible = false;
        } else if (p.view_mode == (lateral ? 2 : 1)) {
            w.scroll.min = 1;
            w.scroll.max = line_count;
            w.scroll.visible = true;
            w.scroll_label_visible = true;
        }
        const float at = lateral ? p.y_min + float(p.view_col - 1) * p.col_spacing
                                 : p.x_min + float(p.view_row - 1) * p.row_spacing;
        w.scroll_label = (lateral ? "Y=" : "X=") + format(at, "####0.00");
        w.pointer_labels_visible = true;
    }

    const SectionLine line = lateral ? SectionLine{p, false, p.num_rows, p.x_min, p.row_spacing}
                                     : SectionLine{p, true, p.num_cols, p.y_min, p.col_spacing};

    // 3. The lateral section always fits a new window.
    if (lateral || p.keep_window == 0) {
        const ZRange z = find_z_range(p);
        p.view.z_low = z.z_low;
        p.view.z_high = z.z_high;
        keep_world_window(p, fit_window(section_fit(p, z, s.Width(), s.Height(), lateral)));
    }
    // 4.
    s.Scale(p.view.win_left, p.view.win_top, p.view.win_right, p.view.win_bottom);

    // The layers, then the lines of the surfaces over them.
    if (p.view.fill_style == 0)
        fill_full_colour(p, s, line);
    else if (p.view.fill_style == 1)
        fill_hatching(p, s, line, kind);
    surface_lines(p, s, line, kind);

    if (kind == SectionKind::longitudinal) {
        s.PSet(p.centre_y, p.centre_z * p.vert_exag);
        external_forces(p, s);
        water_forces(p, s);
    }

    // Closing.
    draw_axes(p, s, false);
    s.DrawWidth(1);
    if (kind == SectionKind::longitudinal)
        set_main_title(p, longitudinal_title);
    else if (lateral)
        set_main_title(p, lateral_title);
}

// Int(v * 10 + 1) / 10: the +1, not +0.5, is the rule of the labels.
std::string label_number(double v)
{
    return str(float(std::floor(v * 10 + 1) / 10));
}

} // namespace

void find_force_peak(Project& p)
{
    for (int i = 1; i <= std::min<int>(p.num_forces, force_capacity); ++i) {
        const float h = std::fabs(p.force_h[std::size_t(i)]), v = std::fabs(p.force_v[std::size_t(i)]);
        if (i == 1) {
            p.force_peak = h > v ? h : v;
            continue;
        }
        if (h > p.force_peak)
            p.force_peak = h;
        if (v > p.force_peak)
            p.force_peak = v;
    }
    for (int r = 1; r <= p.num_rows; ++r)
        for (const float w : {row_value(p.head_water_force, r), row_value(p.crack_water_force, r)})
            if (w != 0 && std::fabs(w) > p.force_peak)
                p.force_peak = std::fabs(w);
}

void draw_longitudinal_section(Project& p, Port& port)
{
    draw_section(p, port, SectionKind::longitudinal);
}

void draw_search_section(Project& p, Port& port)
{
    draw_section(p, port, SectionKind::search);
}

void draw_lateral_section(Project& p, Port& port)
{
    draw_section(p, port, SectionKind::lateral);
}

void section_pointer_labels(Project& p, PictureWindow& w, double x, double y)
{
    // The rounding applies to the elevation read, after the exaggeration is taken out.
    const double exag = drawn_exaggeration(p);
    switch (p.view_mode) {
    case 1: w.pointer_labels = {" Y = " + label_number(x), " Z = " + label_number(y / exag)}; break;
    case 2: w.pointer_labels = {" X = " + label_number(x), " Z = " + label_number(y / exag)}; break;
    case 6:
        // The horizontal axis of the plan is mesh Y: the labels keep this order.
        w.pointer_labels = {" X = " + label_number(x), " Y = " + label_number(y)};
        break;
    default: break;
    }
}

void section_scroll_changed(Project& p, Port& port, int value)
{
    PictureWindow& w = p.pictures.section;
    if (p.view.skip_scroll_event) {
        p.view.skip_scroll_event = false;
        return;
    }
    w.scroll.value = int16(value);
    if (p.view_mode == 1) {
        p.view_row = int16(value);
        w.scroll_label = " X =" + format(p.x_min + float(p.view_row - 1) * p.row_spacing, "####0.00");
        draw_longitudinal_section(p, port);
    } else if (p.view_mode == 2) {
        p.view_col = int16(value);
        w.scroll_label = " Y =" + format(p.y_min + float(p.view_col - 1) * p.col_spacing, "####0.00");
        draw_lateral_section(p, port);
    }
}

void picture_activated(Project& p)
{
    const PictureWindow& w = p.pictures.section;
    if (w.scroll.visible) {
        if (w.caption == longitudinal_caption) {
            set_main_title(p, longitudinal_title);
            p.view_mode = 1;
        }
        if (w.caption == lateral_caption) {
            set_main_title(p, lateral_title);
            p.view_mode = 2;
        }
    }
    if (w.caption == plan_caption)
        set_main_title(p, plan_title);
}

} // namespace tobel
