// The section editor and the rotation form in the open form's session: which
// control a press on the editor's picture reaches, the point table's scroll
// bar, and the rotation arrow that follows the typed angle.
#include <gtest/gtest.h>

#include <cmath>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "graphics/recording_surface.h"
#include "support/opened_example.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

// The world point at fractions (fx across, fy down) of the editor's window.
struct World {
    double y, e;
};
World at_fraction(const SectionEditor& ed, double fx, double fy)
{
    const ZoomWindow& w = ed.window();
    return {w.win_left + fx * (double(w.win_right) - w.win_left),
            w.win_top - fy * (double(w.win_top) - w.win_bottom)};
}

// slope3d-new-project.tob opened, with a dialog of it open in the session.
struct OpenForm {
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-new-project.tob");
    DialogSession s;
    explicit OpenForm(DialogKind kind) { open_dialog(p, port, s, kind); }
    SectionEditor& editor() { return std::get<SectionEditor>(s.form); }
    // A left-button pointer event at a world point.
    DialogStep pointer(PointerAction action, World at)
    {
        return dialog_pointer(p, port, s, action, PointerButton::left, false, at.y, at.e);
    }
};

} // namespace

// The legend stands at fractions 0.02 .. 0.32 across and 0.02 .. 0.14 down.
// Taken at (0.1, 0.05) and dropped at (0.5, 0.45), it moves 0.4 both ways:
// its corner from 0.02 to 0.42.
TEST(dialog_session_editor, a_left_press_on_the_legend_carries_the_legend_not_a_point)
{
    OpenForm f(DialogKind::sections);
    auto& ed = f.editor();
    const int k = ed.edit_line;
    const int before = ed.npts(k);
    const World from = at_fraction(ed, 0.1, 0.05), to = at_fraction(ed, 0.5, 0.45);
    ASSERT_EQ(f.pointer(PointerAction::down, from), DialogStep::done);
    EXPECT_TRUE(ed.legend.dragging);
    f.pointer(PointerAction::move, to);
    f.pointer(PointerAction::up, to);
    EXPECT_FALSE(ed.legend.dragging);
    EXPECT_NEAR(ed.legend.left, 0.42, 1e-5);
    EXPECT_NEAR(ed.legend.top, 0.42, 1e-5);
    EXPECT_EQ(ed.npts(k), before);
}

// Off the legend a press reaches the picture: a click right of the line's
// last point (Y 120 in the file) appends a point.
TEST(dialog_session_editor, a_press_beside_the_legend_reaches_the_picture)
{
    OpenForm f(DialogKind::sections);
    auto& ed = f.editor();
    const int k = ed.edit_line;
    const int before = ed.npts(k);
    const World at = at_fraction(ed, 0.97, 0.5);
    ASSERT_GT(at.y, 120);
    f.pointer(PointerAction::down, at);
    f.pointer(PointerAction::up, at);
    EXPECT_FALSE(ed.legend.dragging);
    EXPECT_EQ(ed.npts(k), before + 1);
}

// Layer 1 of section 1 has four points: the scroll limit is 4 + 10 = 14.
TEST(dialog_session_editor, the_scroll_choice_moves_the_point_table)
{
    OpenForm f(DialogKind::sections);
    auto& ed = f.editor();
    ASSERT_EQ(ed.edit_line, 1);
    ASSERT_EQ(ed.npts(1), 4);
    EXPECT_EQ(table_scroll_max(f.p, ed), 14);
    ASSERT_EQ(dialog_choose(f.p, f.port, f.s, 3), DialogStep::done);
    EXPECT_EQ(ed.table_first, 3);
    // Point 3 of layer 1 is (70, 20).
    EXPECT_EQ(table_cell_text(ed, 1, 1), "70");
    EXPECT_EQ(table_cell_text(ed, 1, 2), "20");
    EXPECT_EQ(table_cell_text(ed, 3, 1), ""); // beyond point 4
}

TEST(dialog_session_editor, the_image_point_table_takes_no_scroll)
{
    OpenForm f(DialogKind::sections);
    f.port.images = {{"scan.bmp", ImageHandle{3, 200, 100}}};
    f.port.files = {std::string("scan.bmp")};
    ASSERT_EQ(dialog_button(f.p, f.port, f.s, "load-image"), DialogStep::done);
    auto& ed = f.editor();
    ASSERT_TRUE(ed.scale.open);
    EXPECT_EQ(dialog_choose(f.p, f.port, f.s, 3), DialogStep::not_here);
    EXPECT_EQ(ed.table_first, 1);
}

// Typed 30: the arrow turns 30 degrees from -Y toward -X, tip at
// (Y, X) = (-cos 30, -sin 30) = (-0.8660, -0.5), before any Continue; the
// scroll bar stops at its maximum of 20.
TEST(dialog_session_editor, the_rotation_arrow_follows_the_typed_angle)
{
    OpenForm open(DialogKind::rotation);
    Project& p = open.p;
    ASSERT_EQ(dialog_clear(p, open.port, open.s), DialogStep::done);
    dialog_type(p, open.port, open.s, '3');
    dialog_type(p, open.port, open.s, '0');
    const auto& f = std::get<RotationForm>(open.s.form);
    EXPECT_EQ(f.scroll, 20);
    EXPECT_EQ(f.arrow.device_width, rotation_picture_side);
    bool tip = false;
    for (const DrawItem& item : f.arrow.items) {
        if (item.op != DrawOp::lines)
            continue;
        for (const RunPoint& pt : run_points(f.arrow, item))
            if (std::abs(pt.x + 0.8660254) < 1e-5 && std::abs(pt.y + 0.5) < 1e-5)
                tip = true;
    }
    EXPECT_TRUE(tip);
    EXPECT_FLOAT_EQ(p.rotation_angle, 0); // stored only on Continue
}

} // namespace tobel
