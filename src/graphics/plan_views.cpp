#include "graphics/plan_views.h"

#include <algorithm>

#include "graphics/drawing.h"
#include "graphics/picture.h"
#include "project/numtext.h"

namespace tobel {

void draw_plan_assembly(Project& p, Port& port)
{
    PictureWindow& w = p.pictures.section;
    // 1. The caption is set before the window comes up so that it shows
    // with its window; it is the caption the picture ends with either way.
    w.caption = "PLAN VIEW";
    bring_up(p, w, port);
    BusyPointer busy(port);
    w.scroll.visible = false;
    w.scroll_label_visible = false;
    w.pointer_labels_visible = false;
    RecordingSurface s = picture_surface(p, w);
    s.Cls();

    // 2. Mesh Y across, mesh X upward.
    FitInputs in;
    in.margin_ratio = 0.17f;
    in.extent_left = p.y_min;
    in.extent_bottom = p.x_min;
    in.extent_width = p.y_max - p.y_min;
    in.extent_height = p.x_max - p.x_min;
    in.area_width = s.Width();
    in.area_height = s.Height();
    fit_and_scale(p, s, in);

    // 3. The input cross-sections, labelled at their right end.
    s.DrawWidth(5);
    for (int sec = 1; sec <= std::min<int>(p.num_sections, section_capacity); ++sec) {
        const float x = p.sections.x[std::size_t(sec)];
        s.Line(p.y_min, x, p.y_max, x, p.selected_colour);
        // Both numbers in the signed text form: a leading blank unless negative.
        s.Print("  Sctn." + str(sec) + ",   X=" + str(x));
    }

    // 4. Every mesh row and mesh column.
    s.DrawWidth(1);
    for (int r = 1; r <= p.num_rows; ++r) {
        const float x = float(r - 1) * p.row_spacing + p.x_min;
        s.Line(p.y_min, x, p.y_max, x, black);
    }
    for (int c = 1; c <= p.num_cols; ++c) {
        const float y = float(c - 1) * p.col_spacing + p.y_min;
        s.Line(y, p.x_min, y, p.x_max, black);
    }

    // 5.
    set_main_title(p, "         PLAN, COLUMN ASSEMBLY");
}

} // namespace tobel
