// The project and the pointer gestures the section editor tests share.
#pragma once

#include <memory>

#include "graphics/section_editor.h"
#include "project/defaults.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {

// A project of three layers and one piezometric surface on two sections,
// 100 long (Y 0..100) with elevations 0..60, drawn on the default 800 by 600
// picture. The editor's level-3 window then comes from the width branch of
// the fit: s = (100 / 0.8) / 800 = 0.15625, w = 125, h = 93.75, so
// left = -0.1 * 125 = -12.5, right = 112.5, bottom = -(93.75 - 60) / 2 =
// -16.875, top = 76.875; mark_size = snap_dist = 125 / 100 = 1.25.
inline std::unique_ptr<Project> editor_project(float vert_exag = 1)
{
    auto p = make_project({3, 11, 0, 10, 0, 100, 3});
    p->num_piezos = 1;
    derive_counts(*p);
    redim_grids(*p);
    p->vert_exag = vert_exag;
    p->num_sections = 2;
    p->sections.x[1] = 0;
    p->sections.x[2] = 10;
    p->view_row = 1;
    p->mat_name[2] = "Sand";
    p->mat_name[3] = "Clay";
    // Surface 1 at 0, the ground (3) rising to 60, the others between.
    set_surface(*p, 1, [](double, double) { return 0.0; });
    set_surface(*p, 2, [](double, double y) { return 0.2 * y; });
    set_surface(*p, 3, [](double, double y) { return 0.6 * y; });
    set_surface(*p, 4, [](double, double y) { return 0.3 * y; });
    return p;
}

inline void add_point(SectionEditor& ed, int k, float y, float z)
{
    const int n = ed.npts(k) + 1;
    ed.edit_y(n, k) = y;
    ed.edit_z(n, k) = z;
    ed.npts(k) = int16(n);
}

// A click of the left button at world (y, e): down then up.
inline void click(Project& p, SectionEditor& ed, Port& port, double y, double e)
{
    pointer_down(p, ed, port, PointerButton::left, false, y, e);
    pointer_up(p, ed, port, PointerButton::left, false, y, e);
}

// A drag from (y0, e0) to (y1, e1) with the left button.
inline void drag(Project& p, SectionEditor& ed, Port& port, double y0, double e0, double y1, double e1)
{
    pointer_down(p, ed, port, PointerButton::left, false, y0, e0);
    pointer_move(p, ed, port, PointerButton::left, false, y1, e1);
    pointer_up(p, ed, port, PointerButton::left, false, y1, e1);
}

} // namespace tobel::test
