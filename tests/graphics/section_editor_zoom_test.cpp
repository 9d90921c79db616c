// The section editor's zoom levels, its pan and its legend box.
#include <gtest/gtest.h>

#include <memory>

#include "editor_fixture.h"
#include "project/menus.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

void expect_window(const ZoomWindow& w, float left, float right, float top, float bottom)
{
    EXPECT_TRUE(w.set);
    EXPECT_FLOAT_EQ(w.win_left, left);
    EXPECT_FLOAT_EQ(w.win_right, right);
    EXPECT_FLOAT_EQ(w.win_top, top);
    EXPECT_FLOAT_EQ(w.win_bottom, bottom);
}

} // namespace

// Level 3 is (-12.5, 112.5, 76.875, -16.875): W = 125, H = 93.75. Each zoom
// in centres half the extents on the click at (50, 30):
// level 4: 50 -+ 31.25, 30 +- 23.4375; level 5: 50 -+ 15.625, 30 +- 11.71875;
// level 6: 50 -+ 7.8125, 30 +- 5.859375.
TEST(SectionEditorZoom, zoom_in_halves_the_window_about_the_click)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    zoom_in(ed);
    EXPECT_EQ(ed.zoom_pending, 1);
    pointer_down(*p, ed, port, PointerButton::left, false, 50, 30);
    EXPECT_EQ(ed.zoom_level, 4);
    EXPECT_EQ(ed.zoom_pending, 1); // until the button is released
    pointer_up(*p, ed, port, PointerButton::left, false, 50, 30);
    EXPECT_EQ(ed.zoom_pending, 0);
    EXPECT_EQ(ed.npts(1), 0); // the zoom click adds no point
    expect_window(ed.window(), 18.75f, 81.25f, 53.4375f, 6.5625f);
    EXPECT_FLOAT_EQ(ed.mark_size, 0.625f);
    EXPECT_TRUE(ed.zoom_in_enabled);

    zoom_in(ed);
    click(*p, ed, port, 50, 30);
    EXPECT_EQ(ed.zoom_level, 5);
    expect_window(ed.window(), 34.375f, 65.625f, 41.71875f, 18.28125f);
    EXPECT_TRUE(ed.zoom_in_enabled);

    zoom_in(ed);
    click(*p, ed, port, 50, 30);
    EXPECT_EQ(ed.zoom_level, 6);
    expect_window(ed.window(), 42.1875f, 57.8125f, 35.859375f, 24.140625f);
    // Disabled at level 6: the button does nothing more.
    EXPECT_FALSE(ed.zoom_in_enabled);
    zoom_in(ed);
    EXPECT_EQ(ed.zoom_pending, 0);
}

TEST(SectionEditorZoom, level_seven_is_the_deepest)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    ed.zoom_level = 6;
    ed.windows[6] = {42.1875f, 57.8125f, 35.859375f, 24.140625f, true};
    ed.zoom_pending = 1;
    click(*p, ed, port, 50, 30);
    EXPECT_EQ(ed.zoom_level, 7);
    // W 15.625, H 11.71875: 50 -+ 3.90625, 30 +- 2.9296875.
    expect_window(ed.window(), 46.09375f, 53.90625f, 32.9296875f, 27.0703125f);
    ed.zoom_pending = 1;
    click(*p, ed, port, 40, 30);
    EXPECT_EQ(ed.zoom_level, 7);
    expect_window(ed.window(), 46.09375f, 53.90625f, 32.9296875f, 27.0703125f);
}

TEST(SectionEditorZoom, zoom_out_steps_back_through_every_level)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    for (int i = 0; i < 3; ++i) {
        zoom_in(ed);
        click(*p, ed, port, 50, 30);
    }
    ed.zoom_pending = 1; // level 7, past the disabled button
    click(*p, ed, port, 50, 30);
    ASSERT_EQ(ed.zoom_level, 7);

    zoom_out(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 6);
    EXPECT_TRUE(ed.zoom_in_enabled);
    expect_window(ed.window(), 42.1875f, 57.8125f, 35.859375f, 24.140625f);
    zoom_out(*p, ed, port);
    expect_window(ed.window(), 34.375f, 65.625f, 41.71875f, 18.28125f);
    zoom_out(*p, ed, port);
    expect_window(ed.window(), 18.75f, 81.25f, 53.4375f, 6.5625f);
    zoom_out(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 3);
    expect_window(ed.window(), -12.5f, 112.5f, 76.875f, -16.875f);
    EXPECT_FLOAT_EQ(ed.mark_size, 1.25f);

    // Below 3 each level is a quarter of the extents wider on every side:
    // level 2 from W 125, H 93.75: -+31.25, +-23.4375.
    zoom_out(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 2);
    expect_window(ed.window(), -43.75f, 143.75f, 100.3125f, -40.3125f);
    // Level 1 from W 187.5, H 140.625: -+46.875, +-35.15625.
    zoom_out(*p, ed, port);
    expect_window(ed.window(), -90.625f, 190.625f, 135.46875f, -75.46875f);
    EXPECT_TRUE(ed.zoom_out_enabled);
    // Level 0 from W 281.25, H 210.9375: -+70.3125, +-52.734375.
    zoom_out(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 0);
    expect_window(ed.window(), -160.9375f, 260.9375f, 188.203125f, -128.203125f);
    EXPECT_FALSE(ed.zoom_out_enabled);
    zoom_out(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 0);

    // Zooming in below 3 takes the stored window of the level as it is.
    zoom_in(ed);
    click(*p, ed, port, 0, 0);
    EXPECT_EQ(ed.zoom_level, 1);
    expect_window(ed.window(), -90.625f, 190.625f, 135.46875f, -75.46875f);
}

TEST(SectionEditorZoom, fit_to_screen_returns_to_level_three)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    zoom_out(*p, ed, port);
    zoom_out(*p, ed, port);
    zoom_out(*p, ed, port);
    ASSERT_FALSE(ed.zoom_out_enabled);
    fit_to_screen(*p, ed, port);
    EXPECT_EQ(ed.zoom_level, 3);
    EXPECT_TRUE(ed.zoom_in_enabled);
    EXPECT_TRUE(ed.zoom_out_enabled);
    expect_window(ed.window(), -12.5f, 112.5f, 76.875f, -16.875f);
    EXPECT_FLOAT_EQ(ed.mark_size, 1.25f);
}

TEST(SectionEditorPan, shift_drag_moves_the_window_with_the_pointer)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    pointer_down(*p, ed, port, PointerButton::left, true, 50, 30);
    EXPECT_TRUE(ed.panning);
    EXPECT_EQ(ed.pointer, EditorPointer::pan);
    EXPECT_EQ(ed.pointer_file, "C:\\Program Files\\TOB\\h_move.cur");
    EXPECT_EQ(ed.legend.hint, "Press SHIFT and drag cursor to scroll image");
    EXPECT_FALSE(ed.labels_visible);
    // The pointer went 10 left and 5 down: the window goes 10 right, 5 up.
    pointer_move(*p, ed, port, PointerButton::left, true, 40, 25);
    expect_window(ed.window(), -2.5f, 122.5f, 81.875f, -11.875f);
    pointer_up(*p, ed, port, PointerButton::left, true, 40, 25);
    EXPECT_FALSE(ed.panning);
    EXPECT_EQ(ed.pointer, EditorPointer::cross);
    EXPECT_TRUE(ed.labels_visible);
    EXPECT_EQ(ed.npts(1), 0);
    expect_window(ed.window(), -2.5f, 122.5f, 81.875f, -11.875f);
}

TEST(SectionEditorPan, right_click_on_the_legend_toggles_it)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    ASSERT_TRUE(ed.legend.visible);
    // The legend stands at 2 % from the left and top of the level-3 window:
    // Y = -12.5 + 0.05 * 125, E = 76.875 - 0.05 * 93.75 is inside it.
    pointer_down(*p, ed, port, PointerButton::right, false, -6.25, 72.1875);
    pointer_up(*p, ed, port, PointerButton::right, false, -6.25, 72.1875);
    EXPECT_FALSE(ed.legend.visible);
    EXPECT_EQ(ed.npts(1), 0);
    // Elsewhere the right button only redraws.
    click(*p, ed, port, 50, 30);
    pointer_down(*p, ed, port, PointerButton::right, false, 50, 30);
    pointer_up(*p, ed, port, PointerButton::right, false, 50, 30);
    EXPECT_FALSE(ed.legend.visible);
}

} // namespace tobel::test
