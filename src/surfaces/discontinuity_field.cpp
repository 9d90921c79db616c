#include "surfaces/discontinuity_field.h"

namespace tobel {

void set_discontinuity_field(Project& p)
{
    forget_solver_work(p.work);
    const bool two_d = p.num_rows == 1;
    for (int row = 1; row <= p.num_rows; ++row) {
        // Node coordinates as singles, the type of the limits they meet.
        const float x = float(double(p.x_min) + double(row - 1) * double(p.row_spacing));
        // Only the upper X limit is inclusive; the field has always been
        // tested this way.
        const bool in_x = two_d || (x > p.field_x_low && x <= p.field_x_high);
        for (int col = 1; col <= p.num_cols; ++col) {
            const float y = float(double(p.y_min) + double(col - 1) * double(p.col_spacing));
            p.disc_code(row, col) = 0;
            if (in_x && y > p.field_y_low && y < p.field_y_high)
                p.disc_code(row, col) = 1;
        }
    }
    p.num_wedges = 1;
    p.wedge_code[1] = 1.0f;
}

} // namespace tobel
