#include "surfaces/wedges.h"

#include <cmath>
#include <cstddef>

#include "project/numtext.h"

namespace tobel {

// Start of a wedge-only surface: lower than any plane will be.
constexpr float wedge_floor = -100000000.0f;

void build_wedges(Project& p)
{
    // Planes reach beyond any ellipsoid: the trial goes on over the whole mesh.
    forget_solver_work(p.work);
    p.zgrid.take_all_rows();
    const int rows = p.num_rows, cols = p.num_cols;
    const int ground = p.num_layers, s = p.sliding_index;

    if (p.surface_kind == 2)
        for (int row = 1; row <= rows; ++row)
            for (int col = 1; col <= cols; ++col)
                p.zgrid(row, col, s) = wedge_floor;

    for (int w = 1; w <= p.num_wedges; ++w) {
        const std::size_t k = std::size_t(w);
        // The angles are converted with 3.14 and held as singles, while the
        // direction cosine along X turns by 3.1415 / 2: both as the program
        // has always computed them.
        const float dip = float(double(p.wedge_dip[k]) * 3.14 / 180.0);
        const float dd = float(double(p.wedge_dipdir[k]) * 3.14 / 180.0);
        const double sx = std::cos((3.1415 / 2.0) - double(dd));
        const double sy = std::cos(double(dd));
        const double tan_d = std::tan(double(dip));
        const double ax = std::atan(tan_d * sx);
        const double ay = std::atan(tan_d * sy);
        const double tan_ax = std::tan(ax);
        const double tan_ay = std::tan(ay);
        const double wx = p.wedge_x[k], wy = p.wedge_y[k], wz = p.wedge_z[k];
        const int16 code = int16(cint(double(p.wedge_code[k])));
        // A two-dimensional problem has no slope across, but the plane is
        // still taken at x = x_min.
        const float dip_x = rows == 1 ? 0.0f : float(ax);
        const float dip_y = float(ay);

        for (int row = 1; row <= rows; ++row) {
            const double x = double(row - 1) * double(p.row_spacing) + double(p.x_min);
            const double zx = wz - (x - wx) * tan_ax;
            for (int col = 1; col <= cols; ++col) {
                const double y = double(col - 1) * double(p.col_spacing) + double(p.y_min);
                const double z = zx - (wy - y) * tan_ay;
                // Equal counts as higher, so that of two planes meeting at a
                // node the later one takes it.
                if (z < double(p.zgrid(row, col, s)))
                    continue;
                p.zgrid(row, col, s) = float(z);
                p.surf_dip_x(row, col) = dip_x;
                p.surf_dip_y(row, col) = dip_y;
                p.disc_code(row, col) = code;
                // Above the ground the node keeps the plane's dips and code;
                // the next plane is then compared with the ground.
                if (p.zgrid(row, col, s) > p.zgrid(row, col, ground))
                    p.zgrid(row, col, s) = p.zgrid(row, col, ground);
            }
        }
    }
}

} // namespace tobel
