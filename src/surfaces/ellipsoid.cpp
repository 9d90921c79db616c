#include "surfaces/ellipsoid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "surfaces/base_trig.h"
#include "surfaces/trial_region.h"

namespace tobel {

void clear_sliding_surface(Project& p)
{
    const int k = p.sliding_index;
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

void build_ellipsoid(Project& p)
{
    const int rows = p.num_rows, cols = p.num_cols;
    const int ground = p.num_layers, sliding = p.sliding_index;
    const double a = p.ell_aspect;
    const double r = p.ell_radius;
    const double k = a * a * r * r;
    const double ex = p.ell_x, ey = p.ell_y, ez = p.ell_z;
    const bool two_d = rows == 1;

    // Everything that depends on the column alone is worked out once; every
    // search trial comes through here, over meshes of up to 3000 x 3000.
    std::vector<float> ys(std::size_t(cols) + 1, 0.0f);
    std::vector<double> dys(std::size_t(cols) + 1, 0.0);
    // The rows and columns within the rim: no node beyond them is cut.
    NodeBox slide{rows + 1, 0, cols + 1, 0};
    for (int col = 1; col <= cols; ++col) {
        ys[std::size_t(col)] = node_y(p, col);
        dys[std::size_t(col)] = double(ys[std::size_t(col)]) - ey;
        if (std::fabs(dys[std::size_t(col)]) < r) {
            slide.c0 = std::min(slide.c0, col);
            slide.c1 = col;
        }
    }
    for (int row = 1; row <= rows; ++row)
        if (std::fabs(ex - double(node_x(p, row))) < r * a) {
            slide.r0 = std::min(slide.r0, row);
            slide.r1 = row;
        }
    if (slide.empty())
        slide = NodeBox{};

    // A trial visits its slide and what the last trial left; a sweep of the
    // whole mesh when nothing is known of the nodes beyond.
    SolverWork& w = p.work;
    const NodeBox box = box_grown(slide, rows, cols);
    // A crack placed by depth with a negative depth reaches beyond any slide.
    const bool bounded = work_record_holds(p) && p.surface_kind == 1 && p.solution_method != 5 &&
                         !(p.crack_mode == 2 && p.crack_depth < 0);
    if (!bounded)
        w.known = false;
    w.armed = true;
    w.box = box;
    w.region = bounded ? box_hull(box, w.dirty) : whole_mesh(rows, cols);
    // Until a solve has cleared it, the whole region may differ.
    if (bounded)
        w.dirty = w.region;
    const NodeBox& region = w.region;

    // The base trigonometry of every node of the slide, for the solver.
    w.trig_box = slide;
    if (!slide.empty())
        w.trig.resize(std::size_t(slide.r1 - slide.r0 + 1) * std::size_t(slide.c1 - slide.c0 + 1));
    const std::size_t trig_cols = slide.empty() ? 0 : std::size_t(slide.c1 - slide.c0 + 1);

    for (int row = region.r0; row <= region.r1; ++row) {
        const float cur_x = node_x(p, row);
        const double dx = ex - double(cur_x);
        const bool row_outside = std::fabs(dx) >= r * a;
        double rl = 0.0;
        double slope_x = 0.0; // (-dx) / a / sqrt(K - dx * dx), the X slope before the Y tilt
        if (!row_outside) {
            rl = r * std::sqrt(1.0 - dx * dx / k);
            if (!two_d)
                slope_x = ((-dx) / a) / std::sqrt(k - dx * dx);
        }
        for (int col = region.c0; col <= region.c1; ++col) {
            p.disc_code(row, col) = 0;
            if (row_outside) {
                set_outside(p, row, col, ground, sliding);
                continue;
            }
            const double dy = dys[std::size_t(col)];
            if (std::fabs(dy) >= rl) {
                set_outside(p, row, col, ground, sliding);
                continue;
            }
            const float z = float(ez - std::sqrt(rl * rl - dy * dy));
            // Above the ground the slopes would be overwritten: no need to work them out.
            if (!(z < p.zgrid(row, col, ground))) {
                set_outside(p, row, col, ground, sliding);
                continue;
            }
            p.zgrid(row, col, sliding) = z;
            const double t = dy / rl;
            const double ct = std::sqrt(1.0 - t * t);
            double ay = quick_atan(t / ct);
            // Rounded as the library's angle would be, or the library's angle.
            if (near_float_tie(ay, 1e-14))
                ay = std::atan(t / ct);
            const float dip_y = float(ay);
            p.surf_dip_y(row, col) = dip_y;
            BaseTrig& e = w.trig[std::size_t(row - slide.r0) * trig_cols + std::size_t(col - slide.c0)];
            e.dip_y = dip_y;
            // t and sqrt(1 - t^2) are the sine and cosine of the unrounded Y dip.
            const SinCos sy = rounded_angle(t, ct, ay, dip_y);
            e.sin_a = sy.s;
            e.cos_a = sy.c;
            e.tan_a = sy.s / sy.c;
            if (two_d) {
                p.surf_dip_x(row, col) = 0.0f;
                e.dip_x = 0.0f;
                e.sin_b = 0;
                e.cos_b = 1;
                e.tan_b = 0;
                continue;
            }
            // The X slope is tilted by the cosine of the stored, single, Y dip.
            double v = slope_x / sy.c;
            double ax = quick_atan(v);
            // Near a tie of the rounding, with the library's cosine and arc tangent
            // as the description has them.
            if (near_float_tie(ax, 1e-12)) {
                v = slope_x / std::cos(double(dip_y));
                ax = std::atan(v);
            }
            const float dip_x = float(ax);
            p.surf_dip_x(row, col) = dip_x;
            e.dip_x = dip_x;
            const double cb = 1.0 / std::sqrt(1.0 + v * v);
            const SinCos sx = rounded_angle(v * cb, cb, ax, dip_x);
            e.sin_b = sx.s;
            e.cos_b = sx.c;
            e.tan_b = sx.s / sx.c;
        }
    }
    if (rows >= 1)
        p.cur_x = node_x(p, rows);
    if (rows >= 1 && cols >= 1)
        p.cur_y = ys[std::size_t(cols)];

    p.centre_y = p.ell_y;
    p.centre_z = p.ell_z;
}

} // namespace tobel
