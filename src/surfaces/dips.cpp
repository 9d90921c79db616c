#include "surfaces/dips.h"

#include <cmath>

namespace tobel {

// Slope between two single elevations a spacing (or two) apart. The
// differences are single precision like the plane they come from; only the
// angle is taken in double before it is stored.
static float one_sided(float z_low, float z_high, float spacing)
{
    const float rise = z_high - z_low;
    return float(std::atan(double(rise / spacing)));
}

static float central(float z_low, float z_high, float spacing)
{
    const float half_rise = (z_high - z_low) / 2.0f;
    return float(std::atan(double(half_rise / spacing)));
}

void derive_dips_in(Project& p, const NodeBox& box)
{
    const int rows = p.num_rows, cols = p.num_cols;
    const int ground = p.num_layers, s = p.sliding_index;
    p.zgrid.take_rows(box.r0 - 1, box.r1 + 1); // the box and its neighbours

    for (int row = box.r0; row <= box.r1; ++row)
        for (int col = box.c0; col <= box.c1; ++col)
            if (p.zgrid(row, col, s) > p.zgrid(row, col, ground))
                p.zgrid(row, col, s) = p.zgrid(row, col, ground);

    const auto z = [&p, s](int row, int col) { return p.zgrid(row, col, s); };
    for (int row = box.r0; row <= box.r1; ++row) {
        for (int col = box.c0; col <= box.c1; ++col) {
            if (rows == 1)
                p.surf_dip_x(row, col) = 0.0f;
            else if (row == 1)
                p.surf_dip_x(row, col) = one_sided(z(1, col), z(2, col), p.row_spacing);
            else if (row == rows)
                p.surf_dip_x(row, col) = one_sided(z(rows - 1, col), z(rows, col), p.row_spacing);
            else
                p.surf_dip_x(row, col) = central(z(row - 1, col), z(row + 1, col), p.row_spacing);

            // A mesh of one column has no neighbour to take a slope from.
            if (cols == 1)
                p.surf_dip_y(row, col) = 0.0f;
            else if (col == 1)
                p.surf_dip_y(row, col) = one_sided(z(row, 1), z(row, 2), p.col_spacing);
            else if (col == cols)
                p.surf_dip_y(row, col) = one_sided(z(row, cols - 1), z(row, cols), p.col_spacing);
            else
                p.surf_dip_y(row, col) = central(z(row, col - 1), z(row, col + 1), p.col_spacing);
        }
    }
}

void derive_dips(Project& p)
{
    // A plane from elsewhere: nothing is known any more of the nodes beyond a slide.
    forget_solver_work(p.work);
    derive_dips_in(p, whole_mesh(p.num_rows, p.num_cols));
}

} // namespace tobel
