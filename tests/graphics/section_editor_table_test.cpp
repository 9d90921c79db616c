// The section editor's table of points, its copy commands, the change of
// section, and Continue and Cancel.
#include <gtest/gtest.h>

#include <memory>

#include "editor_fixture.h"
#include "project/menus.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

void type(Project& p, SectionEditor& ed, Port& port, const std::string& text)
{
    for (char c : text)
        table_type(p, ed, port, c);
}

} // namespace

TEST(SectionEditorTable, cells_show_the_points_of_the_current_line)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 12.5f, -3);
    EXPECT_EQ(table_cell_text(ed, 1, 1), "12.5");
    EXPECT_EQ(table_cell_text(ed, 1, 2), "-3");
    EXPECT_EQ(table_cell_text(ed, 2, 1), "");
}

TEST(SectionEditorTable, typing_on_an_empty_line_makes_the_first_point)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    type(*p, ed, port, "12.5");
    EXPECT_EQ(ed.cell_text, "12.5");
    EXPECT_TRUE(table_type(*p, ed, port, 9)); // Tab: to the Z cell
    EXPECT_EQ(ed.npts(1), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 12.5f);
    EXPECT_EQ(ed.table_col, 2);
    EXPECT_EQ(ed.cell_text, "0"); // the Z of the new point
    type(*p, ed, port, "\b-3x");
    table_type(*p, ed, port, 13); // Enter: on to the next row
    EXPECT_FLOAT_EQ(ed.edit_z(1, 1), -3);
    EXPECT_EQ(ed.table_row, 2);
    EXPECT_EQ(ed.table_col, 1);
}

TEST(SectionEditorTable, other_keys_are_dropped)
{
    EXPECT_TRUE(table_key_accepted('7'));
    EXPECT_TRUE(table_key_accepted('.'));
    EXPECT_TRUE(table_key_accepted('-'));
    EXPECT_TRUE(table_key_accepted(8));
    EXPECT_TRUE(table_key_accepted(13));
    EXPECT_TRUE(table_key_accepted(9));
    EXPECT_FALSE(table_key_accepted('a'));
    EXPECT_FALSE(table_key_accepted('+'));
    EXPECT_FALSE(table_key_accepted(' '));
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    type(*p, ed, port, "4");
    EXPECT_FALSE(table_type(*p, ed, port, 'e'));
    EXPECT_EQ(ed.cell_text, "4");
    EXPECT_TRUE(table_type(*p, ed, port, 8)); // backspace
    EXPECT_EQ(ed.cell_text, "");
}

TEST(SectionEditorTable, unreadable_text_becomes_zero)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 10);
    type(*p, ed, port, "-"); // the text "-" reads as no number
    table_key(*p, ed, port, FormKey::right);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 0);
}

TEST(SectionEditorTable, moves_below_the_last_row_scroll_by_one)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    for (int i = 0; i < 4; ++i)
        table_key(*p, ed, port, FormKey::down);
    EXPECT_EQ(ed.table_row, 5);
    EXPECT_EQ(ed.table_first, 1);
    table_key(*p, ed, port, FormKey::down);
    EXPECT_EQ(ed.table_row, 5);
    EXPECT_EQ(ed.table_first, 2);
    for (int i = 0; i < 4; ++i)
        table_key(*p, ed, port, FormKey::up);
    EXPECT_EQ(ed.table_row, 1);
    EXPECT_EQ(ed.table_first, 2);
    table_key(*p, ed, port, FormKey::up);
    EXPECT_EQ(ed.table_row, 1);
    EXPECT_EQ(ed.table_first, 1);
    table_key(*p, ed, port, FormKey::up);
    EXPECT_EQ(ed.table_first, 1);
    table_key(*p, ed, port, FormKey::right);
    EXPECT_EQ(ed.table_col, 2);
    table_key(*p, ed, port, FormKey::right);
    EXPECT_EQ(ed.table_col, 2);
    table_key(*p, ed, port, FormKey::left);
    table_key(*p, ed, port, FormKey::left);
    EXPECT_EQ(ed.table_col, 1);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(SectionEditorTable, a_move_beyond_max_points_says_so_and_stays)
{
    auto p = editor_project();
    p->max_points = 3;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    table_key(*p, ed, port, FormKey::down);
    table_key(*p, ed, port, FormKey::down);
    ASSERT_EQ(ed.table_row, 3);
    table_key(*p, ed, port, FormKey::down);
    EXPECT_EQ(ed.table_row, 3);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  3 points allowed.");
    // Tab from the last column of the last point is the same move.
    table_key(*p, ed, port, FormKey::right);
    table_key(*p, ed, port, FormKey::tab);
    EXPECT_EQ(ed.table_row, 3);
    EXPECT_EQ(ed.table_col, 2);
    EXPECT_EQ(port.boxes.size(), 2u);
}

TEST(SectionEditorTable, clicking_a_cell_with_insert_pending_adds_a_point_there)
{
    auto p = editor_project();
    p->y_min = -5;
    p->base_z = 2;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 10, 10);
    add_point(ed, 1, 30, 20);
    insert_point(ed);
    table_click(*p, ed, port, 2, 1);
    ASSERT_EQ(ed.npts(1), 3);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), -5); // y_min
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 2);  // base_z
    EXPECT_FLOAT_EQ(ed.edit_y(3, 1), 30);
    EXPECT_EQ(ed.insert_pending, 0);
    delete_point(ed);
    table_click(*p, ed, port, 1, 2);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), -5);
    EXPECT_EQ(ed.delete_pending, 0);
}

TEST(SectionEditorCopy, copy_above_follows_the_neighbour_point_by_point)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 2, 0, 10);
    add_point(ed, 2, 20, 12);
    add_point(ed, 2, 40, 14);
    // Empty line: the neighbour's point 1.
    copy_above(*p, ed, port);
    ASSERT_EQ(ed.npts(1), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 0);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 1), 10);
    // The point at the last Y equals the last point: the one after it.
    copy_above(*p, ed, port);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 20);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 12);
    copy_above(*p, ed, port);
    ASSERT_EQ(ed.npts(1), 3);
    EXPECT_FLOAT_EQ(ed.edit_y(3, 1), 40);
    EXPECT_EQ(ed.edit_point, 3);
    // The neighbour ends where this line ends: nothing.
    copy_above(*p, ed, port);
    EXPECT_EQ(ed.npts(1), 3);
    // Line 1 has no line below.
    copy_below(*p, ed, port);
    EXPECT_EQ(ed.npts(1), 3);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(SectionEditorCopy, copy_takes_the_first_point_at_or_right_of_the_last)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 0, 10);
    add_point(ed, 1, 20, 30);
    add_point(ed, 2, 10, 5);
    goto_line(*p, ed, port, 2);
    // Last point of line 2 is at Y 10; line 1's first point at or right of
    // it is (20, 30), which differs from (10, 5).
    copy_below(*p, ed, port);
    ASSERT_EQ(ed.npts(2), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 2), 20);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 2), 30);
}

TEST(SectionEditorCopy, copy_at_max_points_says_so)
{
    auto p = editor_project();
    p->max_points = 1;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 0, 10);
    add_point(ed, 2, 20, 12);
    copy_above(*p, ed, port);
    EXPECT_EQ(ed.npts(1), 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  1 points allowed.");
}

TEST(SectionEditorCopy, copy_layer_asks_before_replacing_points)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    add_point(ed, 1, 5, 5);
    add_point(ed, 3, 0, 1);
    add_point(ed, 3, 50, 2);
    port.answers = {Answer::no};
    copy_layer(*p, ed, port, 3);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you want to replace the existing data in this layer?");
    EXPECT_EQ(port.boxes[0].title, "Caution");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(ed.npts(1), 1);
    port.answers = {Answer::yes};
    copy_layer(*p, ed, port, 3);
    ASSERT_EQ(ed.npts(1), 2);
    EXPECT_FLOAT_EQ(ed.edit_y(2, 1), 50);
    EXPECT_FLOAT_EQ(ed.edit_z(2, 1), 2);
    // An empty line is filled without a question.
    goto_line(*p, ed, port, 2);
    copy_layer(*p, ed, port, 3);
    EXPECT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(ed.npts(2), 2);
}

TEST(SectionEditorCopy, copy_section_asks_when_this_section_has_points)
{
    auto p = editor_project();
    p->sections.n(2, 1) = 1;
    p->sections.y(2, 1, 1) = 7;
    p->sections.z(2, 1, 1) = 8;
    p->sections.n(2, 4) = 1;
    p->sections.y(2, 1, 4) = 9;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    copy_section(*p, ed, port, 2); // nothing here yet: no question
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(ed.npts(1), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 7);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 4), 9);
    port.answers = {Answer::no};
    p->sections.y(2, 1, 1) = 70;
    copy_section(*p, ed, port, 2);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you want to replace the existing data in this section?");
    EXPECT_EQ(port.boxes[0].title, "Caution");
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 7);
}

TEST(SectionEditorCopy, copy_section_of_a_general_surface_takes_the_sliding_line_only)
{
    auto p = editor_project();
    p->edit_general = true;
    p->sections.n(2, 1) = 1;
    p->sections.n(2, 5) = 1;
    p->sections.y(2, 1, 5) = 33;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    copy_section(*p, ed, port, 2);
    EXPECT_EQ(ed.npts(1), 0);
    ASSERT_EQ(ed.npts(5), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 5), 33);
}

TEST(SectionEditorSections, leaving_a_section_writes_it_back)
{
    auto p = editor_project();
    p->snap_off = -1;
    p->menus["Solve_single_trial"].enabled = true;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    click(*p, ed, port, 10, 5);
    toggle_section(*p, ed, port);
    EXPECT_EQ(p->view_row, 2);
    EXPECT_EQ(p->sections.n(1, 1), 1);
    EXPECT_FLOAT_EQ(p->sections.y(1, 1, 1), 10);
    EXPECT_FALSE(p->menus["Solve_single_trial"].enabled);
    EXPECT_EQ(ed.npts(1), 0); // section 2 is loaded
    EXPECT_EQ(p->main_caption, "TOBEL_3          File          EDITING CROSS-SECTION 2");
    toggle_section(*p, ed, port); // wraps to 1
    EXPECT_EQ(p->view_row, 1);
    EXPECT_EQ(ed.npts(1), 1);
    goto_section(*p, ed, port, 2);
    EXPECT_EQ(p->view_row, 2);
}

TEST(SectionEditorSections, a_typed_cell_goes_in_when_the_section_is_left)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    type(*p, ed, port, "42");
    goto_section(*p, ed, port, 2);
    EXPECT_EQ(p->sections.n(1, 1), 1);
    EXPECT_FLOAT_EQ(p->sections.y(1, 1, 1), 42);
}

TEST(SectionEditorSections, cancel_after_a_section_change_keeps_the_sections_left)
{
    auto p = editor_project();
    p->snap_off = -1;
    p->form_mode = 2;
    p->edit_general = false;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    click(*p, ed, port, 10, 5);
    toggle_section(*p, ed, port);
    click(*p, ed, port, 20, 6);
    cancel_editor(*p, ed);
    EXPECT_FALSE(ed.open);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->sections.n(1, 1), 1);
    EXPECT_EQ(p->sections.n(2, 1), 0);
}

TEST(SectionEditorContinue, wizard_continue_rebuilds_and_finishes)
{
    auto p = editor_project();
    p->snap_off = -1;
    p->form_mode = 2;
    p->num_rows = 1; // keep the rebuild small: one row at X 0
    p->x_max = 1;
    p->row_spacing = 1;
    redim_grids(*p);
    // Lines 2 to 4 flat at Z 10 on both sections, so that nothing crosses.
    for (int s = 1; s <= 2; ++s)
        for (int k = 2; k <= 4; ++k) {
            p->sections.n(s, k) = 2;
            p->sections.y(s, 1, k) = 0;
            p->sections.y(s, 2, k) = 100;
            p->sections.z(s, 1, k) = p->sections.z(s, 2, k) = 10;
        }
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    // A flat line at Z 5 across the mesh on section 1, the same on section 2.
    click(*p, ed, port, 0, 5);
    click(*p, ed, port, 100, 5);
    toggle_section(*p, ed, port);
    click(*p, ed, port, 0, 5);
    click(*p, ed, port, 100, 5);
    EXPECT_EQ(continue_editor(*p, ed, port), EditorNext::finished);
    EXPECT_FALSE(ed.open);
    EXPECT_EQ(p->view_mode, 5);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->sections.n(2, 1), 2);
    // The stack is rebuilt from the lines: layer 1 at 5 everywhere.
    EXPECT_FLOAT_EQ(p->zgrid(1, 6, 1), 5);
}

TEST(SectionEditorContinue, composite_general_goes_on_to_the_wedges)
{
    auto p = editor_project();
    p->form_mode = 4;
    p->edit_general = true;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(continue_editor(*p, ed, port), EditorNext::to_wedge);
    EXPECT_EQ(p->form_mode, 4);
    EXPECT_FALSE(p->edit_general);
    EXPECT_FALSE(ed.open);
}

TEST(SectionEditorContinue, general_surface_is_finished_and_shown)
{
    auto p = editor_project();
    p->form_mode = 7;
    p->edit_general = true;
    p->menus["Solve_single_trial"].visible = false;
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    EXPECT_EQ(continue_editor(*p, ed, port), EditorNext::general_done);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_FALSE(p->edit_general);
    EXPECT_TRUE(p->menus["Solve_single_trial"].visible);
    // Three rows: the isometry of the sliding surface is what comes up.
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().first, 5);
}

} // namespace tobel::test
