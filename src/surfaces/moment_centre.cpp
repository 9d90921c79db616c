#include "surfaces/moment_centre.h"

#include <cmath>

#include "project/numtext.h"

namespace tobel {

void find_moment_centre(Project& p)
{
    p.zgrid.take_all_rows();
    const int rows = p.num_rows, cols = p.num_cols;
    const int ground = p.num_layers, s = p.sliding_index;

    // The scan keeps single values, as the plane holds them.
    p.no_slide = 0;
    float sum = 0.0f;
    int c_head = 0, c_toe = 9999;
    float z_head = 0.0f, z_toe = 0.0f;
    for (int row = 1; row <= rows; ++row) {
        for (int col = 1; col <= cols; ++col) {
            const float t = p.zgrid(row, col, ground) - p.zgrid(row, col, s);
            sum = sum + t;
            // Strict comparisons: of rows that reach the same extreme column
            // the first one scanned gives the elevation.
            if (t > 0.0f && col > c_head) {
                c_head = col;
                z_head = p.zgrid(row, col, s);
            }
            if (t > 0.0f && col < c_toe) {
                c_toe = col;
                z_toe = p.zgrid(row, col, s);
            }
        }
    }
    if (sum <= 0.0f) {
        p.no_slide = 1;
        return;
    }
    if (p.surface_kind == 1)
        return; // the ellipsoid brings its own centre

    // From here on in double.
    const double c_mid = double(c_head - c_toe) / 2.0 + double(c_toe);
    const int mid_col = int(cint(c_mid));
    double z_mid = 999999.0;
    for (int row = 1; row <= rows; ++row) {
        const double z = p.zgrid(row, mid_col, s);
        if (z < z_mid)
            z_mid = z;
    }

    const double y_min = p.y_min, spacing = p.col_spacing;
    const double y_head = y_min + double(c_head - 1) * spacing;
    const double y_toe = y_min + double(c_toe - 1) * spacing;
    const double y_mid = y_min + (c_mid - 1.0) * spacing;
    const double d_max = double(cols) * spacing * 50.0;
    const double zh = z_head, zt = z_toe;

    const double y1 = (y_toe + y_mid) / 2.0, z1 = (zt + z_mid) / 2.0;
    const double y2 = (y_mid + y_head) / 2.0, z2 = (z_mid + zh) / 2.0;

    // A vertical chord is a quarter turn taken from 3.14, as the method has it.
    const double quarter = 3.14 / 2.0;
    const double a = y_mid == y_toe ? quarter : std::atan((z_mid - zt) / (y_mid - y_toe));
    const double b = y_head == y_mid ? quarter : std::atan((zh - z_mid) / (y_head - y_mid));
    if (a == 0.0 && b == 0.0)
        return;

    double dist;
    if (a == 0.0) {
        dist = (y2 - y1) / std::sin(b);
    } else {
        const double q = std::cos(b) - std::sin(b) / std::tan(a);
        if (q == 0.0)
            dist = d_max;
        else
            dist = ((z1 - z2) + (y1 - y2) / std::tan(a)) / q;
    }
    if (dist > d_max)
        dist = d_max; // no lower limit: a negative distance stands

    p.centre_y = float(y2 - dist * std::sin(b));
    p.centre_z = float(z2 + dist * std::cos(b));
}

} // namespace tobel
