#include "surfaces/ellipsoid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "project/lanes.h"
#include "surfaces/base_trig.h"
#include "surfaces/trial_region.h"

namespace tobel {

void clear_sliding_surface(Project& p)
{
    const int k = p.sliding_index;
    p.zgrid.take_all_rows();
    for (int row = 0; row <= p.zgrid.rows; ++row)
        for (int col = 0; col <= p.zgrid.cols; ++col)
            p.zgrid(row, col, k) = 0.0f;
    p.disc_code.fill(0);
    p.surf_dip_x.fill(0.0f);
    p.surf_dip_y.fill(0.0f);
    forget_solver_work(p.work);
}

// A node beyond the rim, or where the ellipsoid is at or above the ground, has
// no slide: the plane is the ground and the node has no slopes.
static inline void set_outside(Project& p, int row, int col, int ground, int sliding)
{
    p.zgrid(row, col, sliding) = p.zgrid(row, col, ground);
    p.surf_dip_x(row, col) = 0.0f;
    p.surf_dip_y(row, col) = 0.0f;
    p.disc_code(row, col) = 0;
}

// Node coordinates are kept in single precision, as the builders' scratch
// coordinates are; the differences to the centre are then taken in double.
static float node_x(const Project& p, int row)
{
    return float(double(p.x_min) + double(row - 1) * double(p.row_spacing));
}

static float node_y(const Project& p, int col)
{
    return float(double(p.y_min) + double(col - 1) * double(p.col_spacing));
}

// The indices 1..n with |d(i)| < rl, one by one, as one run from the first
// to the last (a mesh whose nodes do not grow with the index).
template <class Offset> static ColumnSpan every_within(const Offset& d, int n, double rl)
{
    ColumnSpan s{n + 1, 0};
    for (int i = 1; i <= n; ++i)
        if (std::fabs(d(i)) < rl) {
            s.c0 = std::min(s.c0, i);
            s.c1 = i;
        }
    return s.c0 <= s.c1 ? s : ColumnSpan{};
}

ColumnSpan rim_columns(const std::vector<double>& dys, int first, int last, double y0, double spacing,
                       double ey, double rl)
{
    return span_within([&](int c) { return dys[std::size_t(c)]; }, first, last, y0, spacing, ey, rl);
}

// out[i] = quick_atan(y[i] / x[i]), or of y[i] alone without x, a lane
// type's width at a time.
template <class V>
[[gnu::always_inline]] static inline void arc_tangents(const double* y, const double* x, double* out,
                                                       std::size_t n)
{
    constexpr std::size_t w = lane_count<V>;
    std::size_t i = 0;
    for (; i + w <= n; i += w) {
        const V yi = load_lanes<V>(y, i, w);
        store_lanes(out, i, w, quick_atan_lanes(x != nullptr ? yi / load_lanes<V>(x, i, w) : yi));
    }
    for (; i < n; ++i)
        out[i] = quick_atan(x != nullptr ? y[i] / x[i] : y[i]);
}

// The ellipsoid with the row loops worked a lane type V at a time.
template <class V> [[gnu::always_inline]] static inline void build_ellipsoid_with(Project& p)
{
    const int rows = p.num_rows, cols = p.num_cols;
    const int ground = p.num_layers, sliding = p.sliding_index;
    const double a = p.ell_aspect;
    const double r = p.ell_radius;
    const double k = a * a * r * r;
    const double ex = p.ell_x, ey = p.ell_y, ez = p.ell_z;
    const bool two_d = rows == 1;

    // The rows and columns within the rim: no node beyond them is cut. Every
    // search trial comes through here, over meshes of up to 3000 x 3000, so
    // they come from the closed form, checked against the nodes' test, rather
    // than from a pass over the mesh.
    NodeBox slide{};
    {
        const double ysp = p.col_spacing, xsp = p.row_spacing;
        const auto dy = [&](int col) { return double(node_y(p, col)) - ey; };
        const auto dx = [&](int row) { return double(node_x(p, row)) - ex; };
        const double ra = r * a;
        // Nodes that do not grow with the index are tested each.
        const ColumnSpan cs =
            ysp > 0 ? span_within(dy, 1, cols, p.y_min, ysp, ey, r) : every_within(dy, cols, r);
        const ColumnSpan rs =
            xsp > 0 ? span_within(dx, 1, rows, p.x_min, xsp, ex, ra) : every_within(dx, rows, ra);
        if (!cs.empty() && !rs.empty())
            slide = NodeBox{rs.c0, rs.c1, cs.c0, cs.c1};
    }

    // A trial visits its slide and what the last trial left; a sweep of the
    // whole mesh when nothing is known of the nodes beyond.
    SolverWork& w = p.work;
    const NodeBox box = box_grown(slide, rows, cols);
    const bool bounded = work_record_holds(p) && trials_may_be_bounded(p);
    if (!bounded)
        w.known = false;
    w.armed = true;
    w.box = box;
    w.region = bounded ? box_hull(box, w.dirty) : whole_mesh(rows, cols);
    // The nodes that may hold anything but what a trial leaves beside its
    // slide: what the last trial dirtied, or the whole region when nothing is
    // known or the dips beyond the slide are the ground's.
    const NodeBox stale = bounded && w.outside_dips == 0 ? w.dirty : w.region;
    w.stale = stale;
    // Until a solve has cleared it, the whole region may differ.
    if (bounded)
        w.dirty = w.region;
    const NodeBox& region = w.region;
    p.zgrid.take_rows(region.r0, region.r1);
    // The offsets of the region's columns from the centre, worked out once.
    const int dys0 = region.c0 <= region.c1 ? region.c0 : 1;
    std::vector<double>& dys = w.column_offsets;
    dys.resize(std::size_t(std::max(region.c1 - dys0 + 1, 0)));
    for (int col = dys0; col <= region.c1; ++col)
        dys[std::size_t(col - dys0)] = double(node_y(p, col)) - ey;
    const auto dy_at = [&](int col) { return dys[std::size_t(col - dys0)]; };

    // The base trigonometry of every node of the slide, for the solver.
    w.trig_box = slide;
    const std::size_t trig_cols = slide.empty() ? 0 : std::size_t(slide.c1 - slide.c0 + 1);
    if (!slide.empty()) {
        const std::size_t entries = std::size_t(slide.r1 - slide.r0 + 1) * trig_cols;
        w.trig.resize(entries);
        w.trig_lent.assign(entries, 0);
    }
    w.mirrored_nodes = 0;
    // The row whose nodes lie as far beyond the centre's X as those of `row`
    // lie short of it, when it comes earlier in the slide and its offset is
    // exactly this row's turned: a node of it at the same column has the same
    // Y dip and the X dip turned, bit for bit, for every operation on the X
    // slope keeps its sign. 0 when there is none, as where the centre lies
    // off the mesh lines.
    auto mirror_row = [&](int row, double dx) {
        if (two_d || w.no_mirror || !(p.row_spacing > 0))
            return 0;
        const double at = (double(node_x(p, row)) + 2 * dx - double(p.x_min)) / double(p.row_spacing) + 1;
        if (!(at > slide.r0 - 0.5 && at < row - 0.5))
            return 0;
        const int m = int(std::lround(at));
        return ex - double(node_x(p, m)) == -dx ? m : 0;
    };

    NodeBox cut{rows + 1, 0, cols + 1, 0};
    // Scratch of a row's cut nodes, all within the region's columns: their
    // columns and the steps of their dips.
    const std::size_t span = region.c1 >= region.c0 ? std::size_t(region.c1 - region.c0 + 1) : 0;
    std::vector<int> cut_cols(span);
    std::vector<double> sin_y(span), cos_y(span), dip(span), slope(span), rim_z(span);
    // Puts the nodes c0..c1 of the row that may be stale back to the ground.
    auto clear_stale = [&](int row, int c0, int c1) {
        if (!stale.has_row(row))
            return;
        for (int col = std::max(c0, stale.c0); col <= std::min(c1, stale.c1); ++col)
            set_outside(p, row, col, ground, sliding);
    };

    for (int row = region.r0; row <= region.r1; ++row) {
        const float cur_x = node_x(p, row);
        const double dx = ex - double(cur_x);
        // 1. A row beyond the rim has no slide: only stale nodes are rewritten.
        if (std::fabs(dx) >= r * a) {
            clear_stale(row, region.c0, region.c1);
            continue;
        }
        const double rl = r * std::sqrt(1.0 - dx * dx / k);
        // (-dx) / a / sqrt(K - dx * dx), the X slope before the Y tilt
        const double slope_x = two_d ? 0.0 : ((-dx) / a) / std::sqrt(k - dx * dx);
        // 2. The columns within the rim of this row's circle, from its closed
        // form; those beyond it are rewritten only where stale.
        const ColumnSpan in = span_within(dy_at, region.c0, region.c1, p.y_min, p.col_spacing, ey, rl);
        if (in.empty()) {
            clear_stale(row, region.c0, region.c1);
            continue;
        }
        clear_stale(row, region.c0, in.c0 - 1);
        clear_stale(row, in.c1 + 1, region.c1);
        // 3. The nodes within the rim: the elevation, two at a time, and
        // which are cut.
        const std::size_t rim = std::size_t(in.c1 - in.c0 + 1);
        const double* dyr = &dys[std::size_t(in.c0 - dys0)];
        const double rl2 = rl * rl;
        in_lanes<V>(rim, [&](std::size_t i, std::size_t lanes) TOBEL_LANE_BODY {
            const V d = load_lanes<V>(dyr, i, lanes);
            store_lanes(rim_z.data(), i, lanes, ez - sqrt_lanes(rl2 - d * d));
        });
        std::size_t n = 0;
        for (int col = in.c0; col <= in.c1; ++col) {
            const float z = float(rim_z[std::size_t(col - in.c0)]);
            // Above the ground the slopes would be overwritten: no need to work
            // them out, and a node that is not stale holds the ground already.
            if (!(z < p.zgrid(row, col, ground))) {
                if (stale.has(row, col))
                    set_outside(p, row, col, ground, sliding);
                continue;
            }
            p.disc_code(row, col) = 0;
            p.zgrid(row, col, sliding) = z;
            cut_cols[n++] = col;
        }
        if (n == 0)
            continue;
        cut = box_hull(cut, NodeBox{row, row, cut_cols[0], cut_cols[n - 1]});
        // Where column `col` of a row starting at `row_start` stands in w.trig.
        auto slot = [&](std::size_t row_start, int col) { return row_start + std::size_t(col - slide.c0); };
        const std::size_t trig_row = std::size_t(row - slide.r0) * trig_cols;
        auto entry = [&](std::size_t i) -> BaseTrig& { return w.trig[slot(trig_row, cut_cols[i])]; };
        // 4. The dips of the nodes the mirrored row worked out, from there; the
        // other cut nodes stay in cut_cols. On a search whose centres lie on a
        // mesh line (or midway) this halves the work of the dips.
        if (const int m = mirror_row(row, dx); m != 0) {
            const std::size_t mirror = std::size_t(m - slide.r0) * trig_cols;
            std::size_t left = 0;
            for (std::size_t i = 0; i < n; ++i) {
                const int col = cut_cols[i];
                if (w.trig_lent[slot(mirror, col)] == 0) {
                    cut_cols[left++] = col;
                    continue;
                }
                BaseTrig e = w.trig[slot(mirror, col)];
                e.dip_x = -e.dip_x;
                e.sin_b = -e.sin_b;
                e.tan_b = -e.tan_b;
                w.trig[slot(trig_row, col)] = e;
                p.surf_dip_y(row, col) = e.dip_y;
                p.surf_dip_x(row, col) = e.dip_x;
            }
            w.mirrored_nodes += n - left;
            n = left;
            if (n == 0)
                continue;
        }
        // 5. The dips of the cut nodes, a step at a time over the row, so that
        // the long chain of each node's divisions overlaps with its neighbours',
        // and two at a time where the steps allow.
        // a. The sine and cosine of the Y dip, and its angle.
        in_lanes<V>(n, [&](std::size_t i, std::size_t lanes) TOBEL_LANE_BODY {
            V d{};
            for (std::size_t j = 0; j < lane_count<V>; ++j)
                d[j] = dy_at(cut_cols[i + std::min(j, lanes - 1)]);
            const V t = d / rl;
            store_lanes(sin_y.data(), i, lanes, t);
            store_lanes(cos_y.data(), i, lanes, sqrt_lanes(1.0 - t * t));
        });
        arc_tangents<V>(sin_y.data(), cos_y.data(), dip.data(), n);
        // b. The stored Y dip, and the sine and cosine of it in place of those
        // of the unrounded angle.
        for (std::size_t i = 0; i < n; ++i) {
            const int col = cut_cols[i];
            const double t = sin_y[i], ct = cos_y[i];
            double ay = dip[i];
            // Rounded as the library's angle would be, or the library's angle.
            if (near_float_tie(ay, 1e-14))
                ay = std::atan(t / ct);
            const float dip_y = float(ay);
            p.surf_dip_y(row, col) = dip_y;
            BaseTrig& e = entry(i);
            e.dip_y = dip_y;
            // t and sqrt(1 - t^2) are the sine and cosine of the unrounded Y dip.
            const SinCos sy = rounded_angle(t, ct, ay, dip_y);
            e.sin_a = sin_y[i] = sy.s;
            e.cos_a = cos_y[i] = sy.c;
            if (two_d) {
                p.surf_dip_x(row, col) = 0.0f;
                e.dip_x = 0.0f;
                e.sin_b = 0;
                e.cos_b = 1;
                e.tan_b = 0;
            }
        }
        // c. The Y dip's tangent and the X slope, tilted by the cosine of the
        // stored, single, Y dip.
        in_lanes<V>(n, [&](std::size_t i, std::size_t lanes) TOBEL_LANE_BODY {
            const V c = load_lanes<V>(cos_y.data(), i, lanes);
            const V tan_a = load_lanes<V>(sin_y.data(), i, lanes) / c;
            for (std::size_t lane = 0; lane < lanes; ++lane)
                entry(i + lane).tan_a = tan_a[lane];
            if (!two_d)
                store_lanes(slope.data(), i, lanes, slope_x / c);
        });
        if (two_d)
            continue;
        arc_tangents<V>(slope.data(), nullptr, dip.data(), n);
        // d. The stored X dip; its angle and slope stay in dip and slope, the
        // stored value goes where the Y dip's sines were, free by now.
        std::vector<double>& stored_x = sin_y;
        for (std::size_t i = 0; i < n; ++i) {
            const int col = cut_cols[i];
            BaseTrig& e = entry(i);
            // Near a tie of the rounding, with the library's cosine and arc tangent
            // as the description has them.
            const bool tie = near_float_tie(dip[i], 1e-12);
            if (tie) {
                slope[i] = slope_x / std::cos(double(e.dip_y));
                dip[i] = std::atan(slope[i]);
            }
            // The library's arc tangent is not promised to keep the sign: only
            // the node's own operations are lent to the mirrored row.
            w.trig_lent[slot(trig_row, col)] = tie ? 0 : 1;
            const float dip_x = float(dip[i]);
            p.surf_dip_x(row, col) = dip_x;
            e.dip_x = dip_x;
            stored_x[i] = dip_x;
        }
        // e. The sine, cosine and tangent of the stored X dip.
        in_lanes<V>(n, [&](std::size_t i, std::size_t lanes) TOBEL_LANE_BODY {
            const V v = load_lanes<V>(slope.data(), i, lanes);
            const V cb = 1.0 / sqrt_lanes(1.0 + v * v);
            const SinCosOf<V> sx = rounded_angle_of(v * cb, cb, load_lanes<V>(dip.data(), i, lanes),
                                                    load_lanes<V>(stored_x.data(), i, lanes));
            const V tan_b = sx.s / sx.c;
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                BaseTrig& e = entry(i + lane);
                e.sin_b = sx.s[lane];
                e.cos_b = sx.c[lane];
                e.tan_b = tan_b[lane];
            }
        });
    }
    w.cut = cut.empty() ? NodeBox{} : cut;
    // Beyond the cut and the stale nodes the plane lies on the ground and
    // every node holds the results of an inactive node.
    w.visit = box_hull(w.cut, stale);
    if (rows >= 1)
        p.cur_x = node_x(p, rows);
    if (rows >= 1 && cols >= 1)
        p.cur_y = node_y(p, cols);

    p.centre_y = p.ell_y;
    p.centre_z = p.ell_z;
}

static void build_ellipsoid_2(Project& p)
{
    build_ellipsoid_with<Double2>(p);
}

TOBEL_LANES4_TARGET static void build_ellipsoid_4(Project& p)
{
    build_ellipsoid_with<Double4>(p);
}

void build_ellipsoid(Project& p)
{
    if (take_four_lanes(p.work.two_lanes))
        build_ellipsoid_4(p);
    else
        build_ellipsoid_2(p);
}

} // namespace tobel
