#include "graphics/plan_active.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "geometry/section_window.h"
#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "graphics/search_plots.h"
#include "project/numtext.h"
#include "solver/single_column.h"

namespace tobel {

constexpr const char* plan_active_caption = "PLAN OF ACTIVE COLUMNS";

static double row_x(const Project& p, int r)
{
    return double(r - 1) * double(p.row_spacing) + double(p.x_min);
}

static double col_y(const Project& p, int c)
{
    return double(c - 1) * double(p.col_spacing) + double(p.y_min);
}

// The legend band: the materials of the model (the layers, then the
// discontinuities) with a box in their colour and their name. Which
// materials and how they are laid out is our choice: every material a
// column can take, whether or not this surface reaches it, one row each
// from the top of the band.
static void draw_material_legend(Project& p, DrawSurface& s)
{
    const double band = 0.23 * std::abs(double(s.ScaleWidth()));
    const double side = band / 8;
    const double x = double(s.ScaleLeft()) + band * 0.06;
    double y = double(s.ScaleTop()) - std::abs(double(s.ScaleHeight())) * 0.05;
    const Colour fore = s.ForeColor();
    s.ForeColor(black);
    const int last = std::min(p.num_layers + p.num_discs, material_capacity);
    for (int m = 1; m <= last; ++m) {
        s.fill_box(x, y, x + side, y - side, layer_fill_colour(p, m));
        s.CurrentX(x + side * 1.4);
        s.CurrentY(y);
        s.Print(p.mat_name[std::size_t(m)]);
        y -= side * 1.5;
    }
    s.ForeColor(fore);
}

void draw_plan_active(Project& p, Port& port)
{
    PictureWindow& w = p.pictures.plan_active;
    w.caption = plan_active_caption;
    bring_up(p, w, port);
    RecordingSurface s = picture_surface(p, w);
    s.Caption(plan_active_caption);

    // 1. The plan takes the right 77 per cent; the section views keep their
    // window (the fit's pick_unit stays, as only the four edges go back).
    s.Cls();
    const float left = p.view.win_left, bottom = p.view.win_bottom, right = p.view.win_right,
                top = p.view.win_top;
    FitInputs in;
    in.margin_ratio = 0.11f;
    in.extent_left = p.y_min;
    in.extent_bottom = p.x_min;
    in.extent_width = p.y_max - p.y_min;
    in.extent_height = p.x_max - p.x_min;
    in.area_width = 0.77f * s.Width();
    in.area_height = s.Height();
    in.area_left = 0.23f * s.Width();
    in.area_bottom = 0;
    fit_and_scale(p, s, in);
    p.view.win_left = left;
    p.view.win_bottom = bottom;
    p.view.win_right = right;
    p.view.win_top = top;

    // 2. The outline of the mesh.
    s.DrawWidth(1);
    for (int r : {1, int(p.num_rows)})
        s.Line(p.y_min, row_x(p, r), p.y_max, row_x(p, r), black);
    for (int c : {1, int(p.num_cols)})
        s.Line(col_y(p, c), p.x_min, col_y(p, c), p.x_max, black);

    // 3. The input cross-sections, the text at the end of each line.
    for (int k = 1; k <= p.num_sections && k <= section_capacity; ++k) {
        const float x = p.sections.x[std::size_t(k)];
        s.Line(p.y_min, x, p.y_max, x, p.selected_colour);
        s.Print("  X=" + str(x));
    }

    draw_material_legend(p, s);

    // 4.
    s.DrawWidth(1);
    set_main_title(p, "         PLAN OF ACTIVE COLUMNS");
}

void draw_active_column(Project& p, int row, int col, int material, int layer)
{
    PictureWindow& w = p.pictures.plan_active;
    RecordingSurface s = picture_surface(p, w);
    resume_picture(p, s);
    const double y = col_y(p, col), x = row_x(p, row);
    const double half_w = double(p.col_spacing) / 2;
    // One row of unit width would be a thin line: in 2-D the box is a
    // tenth of the picture high.
    const double half_h =
        p.num_rows == 1 ? std::abs(double(s.ScaleHeight())) / 20 : double(p.row_spacing) / 2;
    const bool water = layer >= 1 && layer <= material_capacity && material_type(p, layer) == 5;
    const Colour colour = water ? p.piezo_colour[13] : colour_entry(p.layer_colour, material);
    s.fill_box(y - half_w, x - half_h, y + half_w, x + half_h, colour);
}

void plan_click(Project& p, double world_y, double world_x)
{
    PictureWindow& w = p.pictures.plan_active;
    w.text_visible = true;
    show_single_column(p, float(world_y), float(world_x), w.text_lines);
}

} // namespace tobel
