#include "graphics/isometry.h"

#include <cmath>

#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "project/numtext.h"

namespace tobel {

IsoProjection iso_projection(const Project& p, float z_low)
{
    IsoProjection q;
    // Two values of pi on purpose: b is a little more than 90 degrees - a.
    q.a = double(p.iso_angle) * 3.14 / 180;
    q.b = 3.1415 / 2 - q.a;
    const double dx = p.row_spacing, dy = p.col_spacing;
    q.ux = float(dx * std::cos(q.b));
    q.vx = float(dx * std::sin(q.b));
    q.uy = float(dy * std::cos(q.a));
    q.vy = float(dy * std::sin(q.a));
    q.z_low = z_low;
    q.vert_exag = p.vert_exag;
    return q;
}

IsoPoint iso_point(const IsoProjection& q, int row, int col, float z)
{
    const double r = row - 1, c = col - 1;
    return {c * double(q.uy) - r * double(q.ux),
            c * double(q.vy) + r * double(q.vx) + (double(z) - double(q.z_low)) * double(q.vert_exag)};
}

namespace {

// The height of a node above the base of the drawing.
inline float lift(const IsoProjection& q, float z)
{
    return (z - q.z_low) * q.vert_exag;
}

// The first node of a polyline: u and the height of its base, before the
// elevation is added.
struct Cursor {
    float u = 0, base = 0;
};
inline Cursor cursor_at(const IsoProjection& q, int row, int col)
{
    const double r = row - 1, c = col - 1;
    return {float(c * double(q.uy) - r * double(q.ux)), float(c * double(q.vy) + r * double(q.vx))};
}

// The mesh of surface k: every column across the rows, then every row along
// the columns. Along a polyline the position is advanced by the steps of the
// projection, not computed afresh. With `ground_rule` a segment whose end
// node has the surface on the ground is drawn in the ground colour.
void draw_mesh(const Project& p, DrawSurface& s, const IsoProjection& q, int k, Colour colour,
               bool ground_rule)
{
    const int rows = p.num_rows, cols = p.num_cols, ground = p.num_layers;
    if (k < 1 || k > p.zgrid.planes || ground < 0 || ground > p.zgrid.planes || rows < 1 || cols < 1 ||
        rows > p.zgrid.rows || cols > p.zgrid.cols)
        return;
    const Colour ground_colour =
        p.layer_colour[std::size_t(ground >= 0 && ground <= colour_entries ? ground : 0)];
    auto segment_colour = [&](int r, int c) {
        return ground_rule && p.zgrid(r, c, k) == p.zgrid(r, c, ground) ? ground_colour : colour;
    };
    for (int c = 1; c <= cols; ++c) {
        Cursor at = cursor_at(q, 1, c);
        s.PSet(at.u, at.base + lift(q, p.zgrid(1, c, k)));
        for (int r = 2; r <= rows; ++r) {
            at.u -= q.ux;
            at.base += q.vx;
            s.LineTo(at.u, at.base + lift(q, p.zgrid(r, c, k)), segment_colour(r, c));
        }
    }
    for (int r = 1; r <= rows; ++r) {
        Cursor at = cursor_at(q, r, 1);
        s.PSet(at.u, at.base + lift(q, p.zgrid(r, 1, k)));
        for (int c = 2; c <= cols; ++c) {
            at.u += q.uy;
            at.base += q.vy;
            s.LineTo(at.u, at.base + lift(q, p.zgrid(r, c, k)), segment_colour(r, c));
        }
    }
}

// Every surface from the top of the stack down as two sections along the
// near edges: row 1 through all columns, column 1 through all rows.
void draw_edge_profiles(const Project& p, DrawSurface& s, const IsoProjection& q)
{
    const int n = p.surface_defined != 0 ? p.sliding_index : p.sliding_index - 1;
    if (n > p.zgrid.planes || p.num_rows > p.zgrid.rows || p.num_cols > p.zgrid.cols || p.num_rows < 1 ||
        p.num_cols < 1)
        return;
    for (int j = n; j >= 1; --j) {
        const Colour colour = surface_colour(p, j, false);
        const float corner = lift(q, p.zgrid(1, 1, j));
        Cursor at = cursor_at(q, 1, 1);
        s.PSet(at.u, at.base + corner);
        for (int c = 2; c <= p.num_cols; ++c) {
            at.u += q.uy;
            at.base += q.vy;
            s.LineTo(at.u, at.base + lift(q, p.zgrid(1, c, j)), colour);
        }
        at = cursor_at(q, 1, 1);
        s.PSet(at.u, at.base + corner);
        for (int r = 2; r <= p.num_rows; ++r) {
            at.u -= q.ux;
            at.base += q.vx;
            s.LineTo(at.u, at.base + lift(q, p.zgrid(r, 1, j)), colour);
        }
    }
}

// The world window of an isometry: the whole mesh with one mesh step to
// spare on each axis and the elevation range above it.
IsoProjection fit_isometry(Project& p, DrawSurface& s)
{
    const ZRange z = find_z_range(p);
    p.view.z_low = z.z_low;
    p.view.z_high = z.z_high;
    const IsoProjection q = iso_projection(p, z.z_low);
    const double lx = double(p.num_rows) * double(p.row_spacing) * std::cos(q.b);
    const double ly = double(p.num_cols) * double(p.col_spacing) * std::cos(q.a);
    FitInputs in;
    in.margin_ratio = 0.05f;
    in.extent_width = float(lx + ly);
    in.extent_height = float(lx * std::tan(q.b) + ly * std::tan(q.a) +
                             (double(z.z_high) - double(z.z_low)) * double(p.vert_exag));
    in.extent_left = float(-lx);
    in.extent_bottom = 0;
    in.area_width = s.Width();
    in.area_height = s.Height();
    fit_and_scale(p, s, in);
    return q;
}

// Room for every point of the mesh and the profiles, so that a large mesh is
// recorded without the list growing step by step.
void reserve_picture(const Project& p, DisplayList& list)
{
    const std::size_t rows = std::size_t(p.num_rows > 0 ? p.num_rows : 0);
    const std::size_t cols = std::size_t(p.num_cols > 0 ? p.num_cols : 0);
    const std::size_t surfaces = std::size_t(p.sliding_index > 0 ? p.sliding_index : 0);
    list.coords.reserve(list.coords.size() + 4 * (rows * cols + rows + cols) +
                        4 * surfaces * (rows + cols + 2));
    list.items.reserve(list.items.size() + 2 * (rows + cols) + 4 * surfaces + 4);
}

std::string isometry_caption(const Project& p, int k)
{
    if (k == p.sliding_index)
        return "SLIDING SURFACE";
    if (k > p.num_layers && k < p.sliding_index)
        return "PIEZOMETRIC SURFACE " + str(k - p.num_layers);
    // The layer number is written without the sign blank of the piezometric one.
    return "TOP SURFACE OF LAYER " + general_text(float(k));
}

} // namespace

void draw_isometry(Project& p, Port& port, int k)
{
    PictureWindow& w = p.pictures.isometry;
    // 2. The caption goes first so that the window comes up with it.
    w.caption = isometry_caption(p, k);
    // 1.
    bring_up(p, w, port);
    BusyPointer busy(port);
    RecordingSurface s = picture_surface(p, w);
    s.Cls();
    reserve_picture(p, w.picture);

    // The world window: the sections' four values are kept across the fit.
    // pick_unit is not among them and keeps the isometry's value.
    const float left = p.view.win_left, bottom = p.view.win_bottom, right = p.view.win_right,
                top = p.view.win_top;
    const IsoProjection q = fit_isometry(p, s);
    p.view.win_left = left;
    p.view.win_bottom = bottom;
    p.view.win_right = right;
    p.view.win_top = top;

    // 3. and 4. The mesh in the colour of its table; the sliding surface
    // shows the uncut ground round the sliding mass in the ground colour.
    draw_mesh(p, s, q, k, surface_colour(p, k, false), k == p.sliding_index);
    // 5.
    draw_edge_profiles(p, s, q);
    // 6.
    set_main_title(p, "         ISOMETRY, LAYER " + str(k));
    p.view.iso_layer = int16(k);
}

void draw_result_isometry(Project& p, Port& port)
{
    const int k = p.sliding_index;
    PictureWindow& w = p.pictures.result;
    w.caption = "SLIDING SURFACE, FS=" +
                (p.factor_of_safety == 0 ? str(p.view.critical_fs) : format(p.view.critical_fs, "#0.00#"));
    bring_up(p, w, port);
    {
        BusyPointer busy(port);
        RecordingSurface s = picture_surface(p, w);
        s.Cls();
        reserve_picture(p, w.picture);
        // The shared world window is not restored here.
        const IsoProjection q = fit_isometry(p, s);
        draw_mesh(p, s, q, k, surface_colour(p, k, false), false);
        draw_edge_profiles(p, s, q);
    }
    // tob_pic3 follows, without coming up.
    p.view.redraw_only = true;
    draw_isometry(p, port, k);
    p.view.redraw_only = false;
}

} // namespace tobel
