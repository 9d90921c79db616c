// The section editor: opening, menus and labels, the pointer, snapping and
// clusters, and its picture.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "editor_fixture.h"
#include "graphics/editor_picture.h"
#include "graphics_support.h"
#include "project/menus.h"
#include "support/scripted_port.h"

namespace tobel::test {

TEST(SectionEditorOpen, opens_on_the_first_section_based_line_at_zoom_level_three)
{
    auto p = editor_project();
    ScriptedPort port;
    const SectionEditor ed = editor_open(*p, port);
    EXPECT_TRUE(ed.open);
    EXPECT_TRUE(p->pictures.editor.exists);
    // No sliding surface: lines 1 .. sliding_index - 1 = 4.
    EXPECT_EQ(ed.edit_lines, 4);
    EXPECT_EQ(ed.edit_line, 1);
    EXPECT_EQ(ed.zoom_level, 3);
    EXPECT_TRUE(ed.clusters_on);
    EXPECT_EQ(ed.clusters_caption, "Cl&usters On");
    EXPECT_EQ(ed.snap_caption, "S&napping On");
    const ZoomWindow& w = ed.window();
    EXPECT_FLOAT_EQ(w.win_left, -12.5f);
    EXPECT_FLOAT_EQ(w.win_right, 112.5f);
    EXPECT_FLOAT_EQ(w.win_bottom, -16.875f);
    EXPECT_FLOAT_EQ(w.win_top, 76.875f);
    EXPECT_FLOAT_EQ(ed.mark_size, 1.25f);
    EXPECT_FLOAT_EQ(ed.snap_dist, 1.25f);
    // The other levels are filled only when reached.
    EXPECT_FALSE(ed.windows[2].set);
    EXPECT_FALSE(ed.windows[4].set);
    EXPECT_EQ(ed.table_rows, 5);
    EXPECT_EQ(ed.table_cols, 2);
}

TEST(SectionEditorOpen, main_caption_names_the_section_in_signed_form)
{
    auto p = editor_project();
    p->data_file_path = "C:\\A.TOB";
    ScriptedPort port;
    editor_open(*p, port);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         EDITING CROSS-SECTION 1");
}

TEST(SectionEditorOpen, a_defined_sliding_surface_adds_its_line)
{
    auto p = editor_project();
    p->surface_defined = -1;
    ScriptedPort port;
    const SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(ed.edit_lines, 5);
    ASSERT_EQ(ed.goto_line_items.size(), 5u);
    EXPECT_EQ(ed.goto_line_items[4].caption, "Go to Sl. Surface ");
    EXPECT_EQ(ed.copy_layer_items[4].caption, "Sl. Surface ");
}

TEST(SectionEditorOpen, menus_are_built_with_signed_numbers)
{
    auto p = editor_project();
    ScriptedPort port;
    const SectionEditor ed = editor_open(*p, port);
    ASSERT_EQ(ed.goto_section_items.size(), 2u);
    // Item 1 stands in the form; the built ones take Str with its blank.
    EXPECT_EQ(ed.goto_section_items[0].caption, "Go To Section 1");
    EXPECT_EQ(ed.goto_section_items[1].caption, "Go To Section  2");
    EXPECT_EQ(ed.copy_section_items[0].caption, "Section  1");
    EXPECT_EQ(ed.copy_section_items[1].caption, "Section  2");
    ASSERT_EQ(ed.goto_line_items.size(), 4u);
    EXPECT_EQ(ed.goto_line_items[0].caption, "Go to Layer  1");
    EXPECT_EQ(ed.goto_line_items[1].caption, "Go to Layer  2");
    EXPECT_EQ(ed.goto_line_items[2].caption, "Go to Ground");
    EXPECT_EQ(ed.goto_line_items[3].caption, "Go to Piezo  1");
    EXPECT_EQ(ed.copy_layer_items[0].caption, "Layer  1");
    EXPECT_EQ(ed.copy_layer_items[2].caption, "Ground");
    EXPECT_EQ(ed.copy_layer_items[3].caption, "Piezo  1");
    for (const auto& item : ed.goto_line_items)
        EXPECT_TRUE(item.visible);
}

TEST(SectionEditorOpen, lines_from_grid_files_are_hidden_and_skipped)
{
    auto p = editor_project();
    p->surf_method[1] = 1;
    ScriptedPort port;
    const SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(ed.edit_line, 2);
    EXPECT_FALSE(ed.goto_line_items[0].visible);
    EXPECT_FALSE(ed.copy_layer_items[0].visible);
    EXPECT_TRUE(ed.goto_line_items[1].visible);
}

TEST(SectionEditorOpen, general_surface_edits_the_sliding_line_alone)
{
    auto p = editor_project();
    p->edit_general = true;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(ed.edit_lines, 5);
    EXPECT_EQ(ed.edit_line, 5);
    EXPECT_FALSE(ed.clusters_on);
    EXPECT_FALSE(ed.clusters_offered);
    EXPECT_EQ(ed.clusters_caption, "Cl&usters Off");
    EXPECT_FALSE(ed.toggle_line_offered);
    EXPECT_FALSE(ed.goto_line_offered);
    EXPECT_FALSE(ed.copy_layer_offered);
    toggle_line(*p, ed, port);
    EXPECT_EQ(ed.edit_line, 5);
    goto_line(*p, ed, port, 1);
    EXPECT_EQ(ed.edit_line, 5);
    EXPECT_EQ(ed.line_label, "S.Surf.");
    EXPECT_EQ(ed.long_label, "  Sliding Surface");
}

TEST(SectionEditorLabels, labels_name_the_line_and_the_section)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(ed.line_label, "  Layer  1");
    EXPECT_EQ(ed.long_label, " Material Name");
    // Section 1 at X = 0 by "#####0.00".
    EXPECT_EQ(ed.section_label, "Section  1 at X = 0.00");
    goto_line(*p, ed, port, 3);
    EXPECT_EQ(ed.line_label, "Ground");
    EXPECT_EQ(ed.long_label, " Clay");
    toggle_line(*p, ed, port);
    EXPECT_EQ(ed.edit_line, 4);
    EXPECT_EQ(ed.line_label, "  Piezo  1");
    EXPECT_EQ(ed.long_label, "  Piezometric Surface  1");
    // Wraps from the last line to line 1.
    toggle_line(*p, ed, port);
    EXPECT_EQ(ed.edit_line, 1);
    toggle_section(*p, ed, port);
    EXPECT_EQ(ed.section_label, "Section  2 at X = 10.00");
}

TEST(SectionEditorLabels, copy_commands_fit_the_line)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_FALSE(ed.copy_below_offered); // line 1
    EXPECT_TRUE(ed.copy_above_offered);
    goto_line(*p, ed, port, 4); // the top line
    EXPECT_TRUE(ed.copy_below_offered);
    EXPECT_FALSE(ed.copy_above_offered);
}

TEST(SectionEditorLabels, slope_label_is_run_over_rise_by_two_decimals)
{
    SectionEditor ed;
    ed.edit_line = 1;
    add_point(ed, 1, 10, 10);
    add_point(ed, 1, 30, 20);
    ed.edit_point = 2;
    // run 20, rise 10: 2.
    update_slope_label(ed, 30, 20);
    EXPECT_TRUE(ed.slope_visible);
    EXPECT_EQ(ed.slope_label, "1 : 2.00");
    // run 20, rise -10: -2.
    update_slope_label(ed, 30, 0);
    EXPECT_EQ(ed.slope_label, "1 : -2.00");
    // run 5, rise 3: 1.666.. rounds to 1.67.
    update_slope_label(ed, 15, 13);
    EXPECT_EQ(ed.slope_label, "1 : 1.67");
    // run 100, rise 1: 100 is not below 99, hidden.
    update_slope_label(ed, 110, 11);
    EXPECT_FALSE(ed.slope_visible);
    // No rise: hidden.
    update_slope_label(ed, 20, 10);
    EXPECT_FALSE(ed.slope_visible);
    // The first point has no slope.
    ed.edit_point = 1;
    update_slope_label(ed, 10, 50);
    EXPECT_FALSE(ed.slope_visible);
}

TEST(SectionEditorPointer, picking_a_point_shows_its_slope)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 10);
    add_point(ed, 1, 30, 20);
    // Within mark_size / 2 = 0.625 of point 2.
    pointer_down(*p, ed, port, PointerButton::left, false, 30.5, 19.5);
    EXPECT_EQ(ed.point_picked, 1);
    EXPECT_EQ(ed.edit_point, 2);
    EXPECT_EQ(ed.pointer, EditorPointer::move);
    EXPECT_TRUE(ed.slope_visible);
    EXPECT_EQ(ed.slope_label, "1 : 2.00");
    pointer_move(*p, ed, port, PointerButton::left, false, 31.04, 20.0);
    EXPECT_EQ(ed.y_label, " Y = 31.0");
    EXPECT_EQ(ed.z_label, " Z = 20.0");
    pointer_up(*p, ed, port, PointerButton::left, false, 30, 20);
    EXPECT_EQ(ed.point_picked, 0);
    EXPECT_FALSE(ed.slope_visible);
    EXPECT_EQ(ed.pointer, EditorPointer::cross);
}

TEST(SectionEditorPointer, clicks_append_points_left_to_right)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    p->snap_off = -1;
    click(*p, ed, port, 10, 5);
    click(*p, ed, port, 20, 6);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 20);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 6);
    EXPECT_EQ(ed.table_limit, 12); // edit_npts + 10
}

TEST(SectionEditorPointer, click_left_of_the_last_point_adds_nothing)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 5);
    add_point(ed, 1, 50, 5);
    click(*p, ed, port, 30, 20);
    ASSERT_EQ(ed.npts(1), 2);
    // Nothing moved either.
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 10);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 50);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 5);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(SectionEditorPointer, click_under_the_last_point_y_is_appended)
{
    auto p = editor_project();
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 5);
    // Same Y, 20 higher: the last point's Y is not right of y.
    click(*p, ed, port, 10, 25);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 25);
}

TEST(SectionEditorPointer, a_full_line_says_only_so_many_points_allowed)
{
    auto p = editor_project();
    p->max_points = 3;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 5);
    add_point(ed, 1, 20, 5);
    add_point(ed, 1, 30, 5);
    click(*p, ed, port, 40, 5);
    EXPECT_EQ(ed.npts(1), 3);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  3 points allowed.");
    EXPECT_EQ(points_limit_message(50), "Only  50 points allowed.");
}

TEST(SectionEditorPointer, insert_puts_the_point_before_the_first_point_beyond)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 5);
    add_point(ed, 1, 50, 5);
    insert_point(ed);
    click(*p, ed, port, 30, 20);
    ASSERT_EQ(ed.npts(1), 3);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 30);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 20);
    EXPECT_FLOAT_EQ(ed.edit_y(3, 1), 50);
    EXPECT_EQ(ed.insert_pending, 0);
}

TEST(SectionEditorPointer, delete_removes_the_picked_point)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 5);
    add_point(ed, 1, 30, 6);
    add_point(ed, 1, 50, 7);
    delete_point(ed);
    click(*p, ed, port, 30, 6);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 50);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 7);
    EXPECT_EQ(ed.delete_pending, 0);
    // The table shows the row of the deleted point.
    EXPECT_EQ(ed.table_row + ed.table_first - 1, 2);
}

TEST(SectionEditorPointer, dragging_past_the_next_point_stops_at_its_y)
{
    auto p = editor_project();
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 10);
    add_point(ed, 1, 20, 20);
    add_point(ed, 1, 30, 30);
    drag(*p, ed, port, 20, 20, 35, 25);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 30); // exactly above the next point
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 25);
    drag(*p, ed, port, 30, 25, 4, 12);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 10); // the previous point's Y
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 12);
    EXPECT_EQ(ed.npts(1), 3);
}

TEST(SectionEditorPointer, stored_z_is_the_elevation_over_vert_exag)
{
    auto p = editor_project(2);
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    click(*p, ed, port, 10, 30);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 1), 15);
}

TEST(SectionEditorPointer, lines_from_grid_files_take_no_points)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    p->surf_method[1] = 2; // constant depth after opening
    click(*p, ed, port, 10, 5);
    EXPECT_EQ(ed.npts(1), 0);
}

TEST(SectionEditorSnap, a_hit_on_the_line_below_wins)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 50, 10);       // below
    add_point(ed, 3, 50.5f, 10.5f); // above
    goto_line(*p, ed, port, 2);
    // Both within snap_dist 1.25 of the drop.
    click(*p, ed, port, 50.3, 10.3);
    ASSERT_EQ(ed.npts(2), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 50);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 2), 10);
}

TEST(SectionEditorSnap, the_line_above_snaps_when_alone_in_reach)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 40, 10);
    add_point(ed, 3, 50.5f, 10.5f);
    goto_line(*p, ed, port, 2);
    click(*p, ed, port, 50.3, 10.3);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 50.5f);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 2), 10.5f);
}

TEST(SectionEditorSnap, snapping_off_keeps_the_drop)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    toggle_snap(*p, ed);
    EXPECT_EQ(p->snap_off, -1);
    EXPECT_EQ(ed.snap_caption, "S&napping Off");
    add_point(ed, 1, 50, 10);
    goto_line(*p, ed, port, 2);
    click(*p, ed, port, 50.3, 10.3);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 50.3f);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 2), 10.3f);
    toggle_snap(*p, ed);
    EXPECT_EQ(p->snap_off, 0);
    EXPECT_EQ(ed.snap_caption, "S&napping On");
}

TEST(SectionEditorSnap, snap_off_survives_reset_project)
{
    auto p = editor_project();
    p->snap_off = -1;
    reset_project(*p);
    EXPECT_EQ(p->snap_off, -1);
}

TEST(SectionEditorSnap, snap_reach_is_not_scaled_by_zoom)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    zoom_in(ed);
    click(*p, ed, port, 50, 10);
    zoom_in(ed);
    click(*p, ed, port, 50, 10);
    ASSERT_EQ(ed.zoom_level, 5);
    // Level 5 is a quarter as wide as level 3: 31.25 / 100.
    EXPECT_FLOAT_EQ(ed.mark_size, 0.3125f);
    EXPECT_FLOAT_EQ(ed.snap_dist, 1.25f);
    add_point(ed, 1, 50, 10);
    goto_line(*p, ed, port, 2);
    // 1 away in both directions: beyond the mark, within snap_dist.
    click(*p, ed, port, 51, 11);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 50);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 2), 10);
}

TEST(SectionEditorClusters, coincident_layer_points_move_together_but_not_piezo)
{
    auto p = editor_project();
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 40, 20);
    add_point(ed, 2, 40, 20);
    add_point(ed, 3, std::nextafter(40.0f, 100.0f), 20); // differs in the last bit
    add_point(ed, 4, 40, 20);                            // piezometric line
    drag(*p, ed, port, 40, 20, 45, 22);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 45);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 1), 22);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 45);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 2), 22);
    EXPECT_EQ(ed.edit_y(1, 3), std::nextafter(40.0f, 100.0f));
    EXPECT_FLOAT_EQ(ed.edit_z(1, 3), 20);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 4), 40);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 4), 20);
}

TEST(SectionEditorClusters, clusters_off_moves_one_point)
{
    auto p = editor_project();
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    toggle_clusters(ed);
    EXPECT_EQ(ed.clusters_caption, "Cl&usters Off");
    add_point(ed, 1, 40, 20);
    add_point(ed, 2, 40, 20);
    drag(*p, ed, port, 40, 20, 45, 22);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 45);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 2), 40);
}

TEST(SectionEditorClusters, a_piezometric_point_moves_alone)
{
    auto p = editor_project();
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 3, 40, 20);
    add_point(ed, 4, 40, 20);
    goto_line(*p, ed, port, 4);
    drag(*p, ed, port, 40, 20, 45, 22);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 4), 45);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 3), 40);
}

TEST(SectionEditorPicture, current_line_is_wider_in_the_selected_colour)
{
    auto p = editor_project();
    p->selected_colour = 255;
    p->layer_colour[2] = 46888;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 10);
    add_point(ed, 1, 30, 20);
    add_point(ed, 2, 10, 30);
    add_point(ed, 2, 30, 40);
    draw_editor(*p, ed);
    bool current = false, other = false;
    for (const Segment& s : segments_of(p->pictures.editor.picture)) {
        if (s.x1 == 10 && s.y1 == 10 && s.x2 == 30 && s.y2 == 20) {
            current = true;
            EXPECT_EQ(s.colour, 255);
            EXPECT_EQ(s.width, 2);
        }
        if (s.x1 == 10 && s.y1 == 30 && s.x2 == 30 && s.y2 == 40) {
            other = true;
            EXPECT_EQ(s.colour, 46888);
            EXPECT_EQ(s.width, 1);
        }
    }
    EXPECT_TRUE(current);
    EXPECT_TRUE(other);
    // The current line's marks are a whole mark_size (1.25) wide: the bottom
    // edge of the mark at (10, 10) runs from 9.375 to 10.625.
    bool mark = false;
    for (const Segment& s : segments_of(p->pictures.editor.picture))
        if (s.x1 == 9.375f && s.y1 == 9.375f && s.x2 == 10.625f && s.y2 == 9.375f)
            mark = true;
    EXPECT_TRUE(mark);
}

TEST(SectionEditorPicture, reference_row_rounds_the_distance_first)
{
    auto p = editor_project(); // rows 1..3 at X 0, 5, 10
    p->sections.x[1] = 7.5f;
    // CInt(7.5) = 8 (ties to even), 8 / 5 + 1 = 2.6 -> 3; without the inner
    // rounding 7.5 / 5 + 1 = 2.5 would give 2.
    EXPECT_EQ(editor_reference_row(*p, 1), 3);
    p->sections.x[1] = 100;
    EXPECT_EQ(editor_reference_row(*p, 1), 3); // limited to num_rows
    p->sections.x[1] = -20;
    EXPECT_EQ(editor_reference_row(*p, 1), 1);
}

TEST(SectionEditorPicture, lines_from_grid_files_show_as_fixed_polylines)
{
    auto p = editor_project();
    p->surf_method[2] = 1;
    p->layer_colour[2] = 1234;
    p->sections.x[1] = 5; // row 2
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    // Surface 2 is 0.2 * Y: from (0, 0) to (10, 2) between columns 1 and 2.
    bool found = false;
    for (const Segment& s : segments_of(p->pictures.editor.picture))
        if (s.x1 == 0 && s.y1 == 0 && s.x2 == 10 && std::fabs(s.y2 - 2) < 1e-5f && s.colour == 1234)
            found = true;
    EXPECT_TRUE(found);
}

} // namespace tobel::test
