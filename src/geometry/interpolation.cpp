// Section interpolation. Precision: section data and zgrid are singles, and so
// are the values derived on the way (the elevations of a node projected on the
// two sections, the link ends of the oblique strips): the primitive works in
// double but each value it gives is held as a single, as the stored data are.
// Only the radius of the axisymmetric method, and the section Y taken from it,
// are kept in double.
#include "geometry/interpolation.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tobel {

// Section entries read one past the end of a line (and one past the last
// section); beyond the capacity of the table they read as zero.
static float sec_x(const Project& p, int s)
{
    return s >= 0 && s <= section_capacity ? p.sections.x[std::size_t(s)] : 0.0f;
}

static float sec_y(const Project& p, int s, int n, int k)
{
    return s >= 0 && s <= section_capacity && n >= 0 && n <= section_point_capacity ? p.sections.y(s, n, k)
                                                                                    : 0.0f;
}

static float sec_z(const Project& p, int s, int n, int k)
{
    return s >= 0 && s <= section_capacity && n >= 0 && n <= section_point_capacity ? p.sections.z(s, n, k)
                                                                                    : 0.0f;
}

static int sec_npts(const Project& p, int s, int k)
{
    return s >= 0 && s <= section_capacity ? p.sections.n(s, k) : 0;
}

static float node_x(const Project& p, int row)
{
    return float(double(p.x_min) + double(row - 1) * double(p.row_spacing));
}

static float node_y(const Project& p, int col)
{
    return float(double(p.y_min) + double(col - 1) * double(p.col_spacing));
}

// Node Y of every column, index 0 unused: Y is the same on every row.
static std::vector<float> column_ys(const Project& p)
{
    std::vector<float> ys(std::size_t(std::max<int>(p.num_cols, 0) + 1), 0.0f);
    for (int col = 1; col <= p.num_cols; ++col)
        ys[std::size_t(col)] = node_y(p, col);
    return ys;
}

double interp_linear(double t, double a, double b, double va, double vb)
{
    if (a != b)
        return va + ((vb - va) * (t - a)) / (b - a);
    return va;
}

int find_section_bracket(const Project& p)
{
    int i = 1;
    for (; i <= p.num_sections; ++i)
        if (sec_x(p, i) > p.cur_x)
            break;
    return std::max(i - 1, 1);
}

int find_point_bracket(const Project& p, int section, int surface)
{
    const int n = sec_npts(p, section, surface);
    int i = 1;
    for (; i <= n; ++i)
        if (sec_y(p, section, i, surface) > p.cur_y)
            break;
    return std::max(i - 1, 1);
}

// Elevation of the line of `surface` on section s at p.cur_y, from its own
// bracketing pair of points.
static float line_value(const Project& p, int s, int surface)
{
    const int j = find_point_bracket(p, s, surface);
    return float(interp_linear(p.cur_y, sec_y(p, s, j, surface), sec_y(p, s, j + 1, surface),
                               sec_z(p, s, j, surface), sec_z(p, s, j + 1, surface)));
}

static void interpolate_orthogonal(Project& p, int surface, const std::vector<float>& ys)
{
    for (int row = 1; row <= p.num_rows; ++row) {
        p.cur_x = node_x(p, row);
        // cur_x is constant along a row, so is its section bracket.
        const int i = find_section_bracket(p);
        const float xa = sec_x(p, i);
        const float xb = sec_x(p, i + 1);
        for (int col = 1; col <= p.num_cols; ++col) {
            p.cur_y = ys[std::size_t(col)];
            const float za = line_value(p, i, surface);
            const float zb = line_value(p, i + 1, surface);
            p.zgrid(row, col, surface) = float(interp_linear(p.cur_x, xa, xb, za, zb));
        }
    }
}

static void interpolate_oblique(Project& p, int surface, const std::vector<float>& ys)
{
    const int ncols = p.num_cols;
    // With node Y rising along the row the columns of one strip form one run,
    // found by bisection; otherwise every column is tested.
    const bool ys_sorted = std::is_sorted(ys.begin() + 1, ys.end());
    for (int i = 1; i <= p.num_sections - 1; ++i) {
        const float xa = sec_x(p, i);
        const float xb = sec_x(p, i + 1);
        const int npts = sec_npts(p, i, surface);
        for (int pt = 1; pt <= npts; ++pt) {
            for (int row = 1; row <= p.num_rows; ++row) {
                p.cur_x = node_x(p, row);
                if (p.cur_x < xa || p.cur_x > xb)
                    continue;
                // Both links of the strip, taken at this row.
                const float za = float(
                    interp_linear(p.cur_x, xa, xb, sec_z(p, i, pt, surface), sec_z(p, i + 1, pt, surface)));
                const float ya = float(
                    interp_linear(p.cur_x, xa, xb, sec_y(p, i, pt, surface), sec_y(p, i + 1, pt, surface)));
                const float zb = float(interp_linear(p.cur_x, xa, xb, sec_z(p, i, pt + 1, surface),
                                                     sec_z(p, i + 1, pt + 1, surface)));
                const float yb = float(interp_linear(p.cur_x, xa, xb, sec_y(p, i, pt + 1, surface),
                                                     sec_y(p, i + 1, pt + 1, surface)));
                int first = 1;
                int last = ncols + 1;
                if (ys_sorted && !std::isnan(ya) && !std::isnan(yb)) {
                    auto begin = ys.begin() + 1;
                    first = int(std::lower_bound(begin, ys.end(), ya) - ys.begin());
                    last = int(std::upper_bound(begin, ys.end(), yb) - ys.begin());
                }
                for (int col = first; col < last; ++col) {
                    const float cy = ys[std::size_t(col)];
                    if (cy < ya || cy > yb)
                        continue;
                    p.zgrid(row, col, surface) = float(interp_linear(cy, ya, yb, za, zb));
                }
                if (ncols >= 1)
                    p.cur_y = ys[std::size_t(ncols)];
            }
        }
    }
}

static void interpolate_axisymmetric(Project& p, int surface, const std::vector<float>& ys)
{
    const int npts = sec_npts(p, 1, surface);
    const double y_first = sec_y(p, 1, 1, surface);
    const double y_last = sec_y(p, 1, npts, surface);
    const double z_first = sec_z(p, 1, 1, surface);
    for (int row = 1; row <= p.num_rows; ++row) {
        p.cur_x = node_x(p, row);
        const double dx = double(p.cur_x) - double(p.axis_y);
        for (int col = 1; col <= p.num_cols; ++col) {
            p.cur_y = ys[std::size_t(col)];
            const double dy = double(p.cur_y) - double(p.axis_z);
            const double r = std::sqrt(dy * dy + dx * dx);
            // The section is read through the axis; the low side, the axis
            // line included, reads it at the mirrored distance.
            const double yy = p.cur_y > p.axis_z ? double(p.axis_z) + r : double(p.axis_z) - r;
            int i = 2;
            for (; i <= npts; ++i)
                if (sec_y(p, 1, i, surface) > yy)
                    break;
            const int k = i - 1;
            float& node = p.zgrid(row, col, surface);
            if (yy > y_last && col > 1) {
                node = p.zgrid(row, col - 1, surface);
                continue;
            }
            const double yi = sec_y(p, 1, i, surface);
            const double yk = sec_y(p, 1, k, surface);
            if (yi == yk || yy < y_first) {
                node = float(z_first);
                continue;
            }
            const double zi = sec_z(p, 1, i, surface);
            const double zk = sec_z(p, 1, k, surface);
            node = float(zk + (zi - zk) * (yy - yk) / (yi - yk));
        }
    }
}

void interpolate_surface(Project& p, int surface)
{
    // A stack that has not been sized for this surface has nothing to fill.
    if (surface < 1 || surface > section_surface_capacity || surface > p.zgrid.planes ||
        p.num_rows > p.zgrid.rows || p.num_cols > p.zgrid.cols)
        return;
    const std::vector<float> ys = column_ys(p);
    switch (p.interp_method) {
    case 1: interpolate_orthogonal(p, surface, ys); break;
    case 2: interpolate_oblique(p, surface, ys); break;
    case 3:
        if (sec_npts(p, 1, surface) == 0)
            return;
        interpolate_axisymmetric(p, surface, ys);
        break;
    default:
        // No method of that number: the plane is left as it is.
        break;
    }
    p.surf_built[std::size_t(surface)] = 1;
}

} // namespace tobel
