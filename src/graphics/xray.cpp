#include "graphics/xray.h"

#include <cmath>

#include "graphics/drawing.h"
#include "graphics/picture.h"

namespace tobel {

namespace {

// A horizontal water arrow at (y, z) of the shifted section.
void water_arrow(DrawSurface& s, double y, double z, double force, double scale, double head_w, double head_l)
{
    s.DrawWidth(1);
    draw_force_arrow(s, y, z, 0, force * scale, head_w, head_l, water_blue);
}

} // namespace

// The window is already up: the x-ray command shows it before the set-up.
void start_xray(Project& p, Port&)
{
    XrayState& x = p.pictures.xray_state;
    RecordingSurface s = picture_surface(p, p.pictures.xray);
    // 1.
    s.DrawWidth(1);
    s.Cls();
    const ZRange z = find_z_range(p);
    p.view.z_low = z.z_low;
    p.view.z_high = z.z_high;
    // 2.
    FitInputs in = section_fit(p, z, s.Width(), s.Height());
    // 3.
    const float rows_1 = float(p.num_rows + 1);
    x.xray_dy = (in.extent_height / 3) / rows_1;
    x.xray_dz = x.xray_dy * 5;
    // 4.
    in.extent_width += x.xray_dy * rows_1;
    in.extent_height += x.xray_dz * rows_1;
    fit_and_scale(p, s, in);
    // 5.
    x.xray_y = p.y_min - x.xray_dy;
    x.xray_z = x.xray_dz * float(p.num_rows);
    x.xray_row = p.num_rows;
    // 6.
    x.timer_on = true;
    x.stop_visible = true;
    x.continue_visible = false;
    set_main_title(p, "         X-RAY VIEW");
}

void xray_step(Project& p)
{
    XrayState& x = p.pictures.xray_state;
    const int r = x.xray_row;
    if (r < 1 || r > p.num_rows || r > p.zgrid.rows || p.num_cols > p.zgrid.cols || p.num_cols < 1)
        return;
    DisplayList& list = p.pictures.xray.picture;
    RecordingSurface s(list);
    if (!s.resume())
        return;

    // 1. Each section sits one shift up and to the right of the one before.
    const float y0 = x.xray_y + x.xray_dy;
    const float z0 = x.xray_z - x.xray_dz;

    // The force scale is one sixth of the picture's height to the peak; a
    // zero peak leaves it 0 and the arrows without length. The water arrows
    // take the same scale.
    const double sh = std::abs(double(s.ScaleHeight())), sw = std::abs(double(s.ScaleWidth()));
    const double scale = p.force_peak != 0 ? std::abs(double(s.ScaleHeight()) / 6 / double(p.force_peak)) : 0;
    const double head_w = sw / 265, head_l = sh / 40;
    const std::size_t ri = std::size_t(r);

    const int n = p.surface_defined != 0 ? p.sliding_index : p.sliding_index - 1;
    for (int k = n; k >= 1 && k <= p.zgrid.planes; --k) {
        // 2. The section of surface k; piezometric surfaces are left out.
        if (!(k > p.num_layers && k < p.sliding_index)) {
            const Colour colour = surface_colour(p, k);
            float y = y0;
            s.PSet(y, p.zgrid(r, 1, k) * p.vert_exag + z0);
            for (int c = 2; c <= p.num_cols; ++c) {
                y += p.col_spacing;
                s.LineTo(y, p.zgrid(r, c, k) * p.vert_exag + z0, colour);
            }
        }
        // 3. The forces of the row, once for every surface of the loop (the
        // skipped ones too), each time over the last.
        for (int i = 1; i <= p.num_forces && i <= force_capacity; ++i) {
            if (!force_on_row(p, i, r))
                continue;
            s.DrawWidth(1);
            double v_len = 0, h_len = 0;
            force_arrow_lengths(p, i, scale, v_len, h_len);
            const std::size_t fi = std::size_t(i);
            draw_force_arrow(s, double(p.force_y[fi]) + double(y0), double(p.force_z[fi]) + double(z0), v_len,
                             h_len, head_w, head_l, force_red);
        }
        // 4. The water of the row, in the same loop. The crack water arrow
        // stands at the ponded water's position with its own elevation.
        if (ri < p.head_water_force.size() && ri < p.head_water_y.size() && ri < p.head_water_z.size() &&
            p.head_water_force[ri] != 0)
            water_arrow(s, double(p.head_water_y[ri]) + double(y0), double(p.head_water_z[ri]) + double(z0),
                        p.head_water_force[ri], scale, head_w, head_l);
        if (ri < p.crack_water_force.size() && ri < p.head_water_y.size() && ri < p.crack_water_z.size() &&
            p.crack_water_force[ri] != 0)
            water_arrow(s, double(p.head_water_y[ri]) + double(y0), double(p.crack_water_z[ri]) + double(z0),
                        p.crack_water_force[ri], scale, head_w, head_l);
    }

    // 5.
    x.xray_row = int16(x.xray_row - 1);
    x.xray_y = y0;
    x.xray_z = z0;
    if (x.xray_row < 1) {
        x.timer_on = false;
        x.stop_visible = false;
        x.continue_visible = false;
    }
}

void xray_stop(Project& p)
{
    XrayState& x = p.pictures.xray_state;
    x.timer_on = false;
    x.stop_visible = false;
    x.continue_visible = true;
}

void xray_continue(Project& p)
{
    XrayState& x = p.pictures.xray_state;
    x.timer_on = true;
    x.continue_visible = false;
    x.stop_visible = true;
}

void run_xray(Project& p, Port& port)
{
    start_xray(p, port);
    finish_xray(p);
}

void finish_xray(Project& p)
{
    XrayState& x = p.pictures.xray_state;
    while (x.timer_on) {
        const int before = x.xray_row;
        xray_step(p);
        // A step that could not draw would tick for ever.
        if (x.xray_row == before)
            x.timer_on = false;
    }
}

} // namespace tobel
