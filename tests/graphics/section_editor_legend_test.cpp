// The section editor as the mouse works it: the legend box taken and carried,
// the slope label beside the dragged pointer, the point table's scroll bar.
#include <gtest/gtest.h>

#include <memory>

#include "editor_fixture.h"
#include "graphics_support.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

bool has_text(const DisplayList& list, const std::string& text)
{
    for (const Text& t : texts_of(list))
        if (t.text == text)
            return true;
    return false;
}

} // namespace

// Level 3 is (-12.5, 112.5, 76.875, -16.875): W = 125, H = 93.75. The legend
// at fractions left 0.02, top 0.02, width 0.3, height 0.12 covers
// Y -10 .. 27.5 and E 75 .. 63.75.
TEST(SectionEditorLegend, legend_hit_is_the_box_as_drawn)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_TRUE(legend_hit(ed, 0, 70));
    EXPECT_TRUE(legend_hit(ed, -9.9, 74.9));
    EXPECT_FALSE(legend_hit(ed, 28, 70));  // right of Y 27.5
    EXPECT_FALSE(legend_hit(ed, 0, 63.5)); // below E 63.75
    EXPECT_FALSE(legend_hit(ed, -11, 70)); // left of Y -10
    ed.legend.visible = false;
    EXPECT_FALSE(legend_hit(ed, 0, 70));
    ed.legend.visible = true;
    ed.labels_visible = false; // hidden with the labels during a calibration
    EXPECT_FALSE(legend_hit(ed, 0, 70));
}

// Taken at (0, 70): fractions x = 12.5 / 125 = 0.1, y = 6.875 / 93.75 =
// 0.07333, so the grab is 0.08 and 0.05333 into the box. At (25, 51.25),
// fractions 0.3 and 25.625 / 93.75 = 0.27333: the box's corner at 0.22, 0.22.
// Dropped at (50, 32.5), fractions 0.5 and 0.47333: corner at 0.42, 0.42.
TEST(SectionEditorLegend, a_dragged_legend_keeps_its_place_under_the_pointer)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    legend_drag_begin(ed, 0, 70);
    EXPECT_TRUE(ed.legend.dragging);
    pointer_move(*p, ed, port, PointerButton::left, false, 25, 51.25);
    EXPECT_NEAR(ed.legend.left, 0.22, 1e-6);
    EXPECT_NEAR(ed.legend.top, 0.22, 1e-6);
    EXPECT_TRUE(ed.legend.dragging);
    pointer_up(*p, ed, port, PointerButton::left, false, 50, 32.5);
    EXPECT_FALSE(ed.legend.dragging);
    EXPECT_NEAR(ed.legend.left, 0.42, 1e-6);
    EXPECT_NEAR(ed.legend.top, 0.42, 1e-6);
    EXPECT_EQ(ed.npts(1), 0); // the drag adds no point
    // The box is drawn at its new place: its top edge from Y -12.5 + 0.42 * 125
    // = 40 to 40 + 37.5 = 77.5 at E 76.875 - 0.42 * 93.75 = 37.5.
    bool edge = false;
    for (const Segment& s : segments_of(p->pictures.editor.picture))
        if (std::abs(s.x1 - 40) < 1e-3 && std::abs(s.x2 - 77.5) < 1e-3 && std::abs(s.y1 - 37.5) < 1e-3 &&
            std::abs(s.y2 - 37.5) < 1e-3)
            edge = true;
    EXPECT_TRUE(edge);
}

TEST(SectionEditorLegend, a_press_while_the_legend_is_carried_adds_no_point)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    legend_drag_begin(ed, 0, 70);
    pointer_down(*p, ed, port, PointerButton::left, false, 50, 30);
    EXPECT_EQ(ed.npts(1), 0);
}

TEST(SectionEditorLegend, the_legend_release_leaves_a_pending_zoom_for_the_next_click)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    zoom_in(ed);
    legend_drag_begin(ed, 0, 70);
    pointer_up(*p, ed, port, PointerButton::left, false, 0, 70);
    EXPECT_FALSE(ed.legend.dragging);
    EXPECT_EQ(ed.zoom_pending, 1);
    EXPECT_EQ(ed.zoom_level, 3);
}

// Line 1 holds (0, 0) and (50, 10). Picked at point 2 the label is 50 / 10:
// "1 : 5.00". Dragged to (40, 30): run 40, rise 30, 1.333: "1 : 1.33",
// standing beside the pointer.
TEST(SectionEditorLegend, the_slope_label_follows_the_dragged_pointer)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 0, 0);
    add_point(ed, 1, 50, 10);
    pointer_down(*p, ed, port, PointerButton::left, false, 50, 10);
    ASSERT_EQ(ed.point_picked, 1);
    EXPECT_EQ(ed.slope_label, "1 : 5.00");
    pointer_move(*p, ed, port, PointerButton::left, false, 40, 30);
    EXPECT_TRUE(ed.slope_visible);
    EXPECT_EQ(ed.slope_label, "1 : 1.33");
    EXPECT_FLOAT_EQ(ed.slope_y, 40);
    EXPECT_FLOAT_EQ(ed.slope_z, 30);
    EXPECT_TRUE(has_text(p->pictures.editor.picture, "1 : 1.33"));
    // Beside the pointer: mark_size 1.25 to the right of and above it.
    bool beside = false;
    for (const Text& t : texts_of(p->pictures.editor.picture))
        if (t.text == "1 : 1.33" && std::abs(t.x - 41.25) < 1e-4 && std::abs(t.y - 31.25) < 1e-4)
            beside = true;
    EXPECT_TRUE(beside);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 30);
    EXPECT_FALSE(ed.slope_visible);
    EXPECT_FALSE(has_text(p->pictures.editor.picture, "1 : 1.33"));
}

// With vert_exag 2 the pointer's E of 60 is Z 30: the same label.
TEST(SectionEditorLegend, the_dragged_slope_label_reads_true_z)
{
    auto p = editor_project(2);
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 0, 0);
    add_point(ed, 1, 50, 10);
    pointer_down(*p, ed, port, PointerButton::left, false, 50, 20);
    ASSERT_EQ(ed.point_picked, 1);
    pointer_move(*p, ed, port, PointerButton::left, false, 40, 60);
    EXPECT_EQ(ed.slope_label, "1 : 1.33");
    EXPECT_FLOAT_EQ(ed.slope_z, 30);
}

// Eight points on line 1: the scroll limit is 8 + 10 = 18.
TEST(SectionEditorTableScroll, the_scroll_bar_shows_the_points_from_its_value)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    for (int i = 1; i <= 8; ++i)
        add_point(ed, 1, float(10 * i), float(i));
    ed.table_limit = int16(ed.npts(1) + 10);
    EXPECT_EQ(table_scroll_max(*p, ed), 18);
    table_scroll(*p, ed, 4);
    EXPECT_EQ(ed.table_first, 4);
    EXPECT_EQ(ed.table_row, 1);
    EXPECT_EQ(table_cell_text(ed, 1, 1), "40");
    EXPECT_EQ(table_cell_text(ed, 5, 2), "8");
    EXPECT_EQ(ed.cell_text, "40"); // the current cell now shows point 4
    // Beyond the limit the bar stops at it.
    table_scroll(*p, ed, 30);
    EXPECT_EQ(ed.table_first, 18);
    table_scroll(*p, ed, 0);
    EXPECT_EQ(ed.table_first, 1);
}

TEST(SectionEditorTableScroll, a_typed_cell_goes_in_before_the_table_scrolls)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    for (int i = 1; i <= 6; ++i)
        add_point(ed, 1, float(10 * i), float(i));
    // Point 1's Y typed as 5, then the table scrolled to point 3.
    ed.cell_text.clear();
    table_type(*p, ed, port, '5');
    table_scroll(*p, ed, 3);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 5);
    EXPECT_EQ(ed.table_first, 3);
    EXPECT_EQ(ed.cell_text, "30");
}

// max_points 50 with 5 rows: the last row shows point 50 at first = 46, so
// a limit of 48 + 10 stops at 46.
TEST(SectionEditorTableScroll, the_scroll_bar_stops_where_the_last_row_shows_max_points)
{
    auto p = editor_project();
    ASSERT_EQ(p->max_points, 50);
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    for (int i = 1; i <= 48; ++i)
        add_point(ed, 1, float(i), 1);
    ed.table_limit = int16(ed.npts(1) + 10);
    EXPECT_EQ(table_scroll_max(*p, ed), 46);
}

} // namespace tobel::test
