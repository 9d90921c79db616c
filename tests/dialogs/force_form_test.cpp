// The external forces form: its private copy, Add and Delete, the limit
// message, Continue with the rule for a lone zero force, and Cancel.
#include <gtest/gtest.h>

#include "dialogs/force_form.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

void set_force(Project& p, int f, float h, float v, float x, float y, float z)
{
    const std::size_t k = std::size_t(f);
    p.force_h[k] = h;
    p.force_v[k] = v;
    p.force_x[k] = x;
    p.force_y[k] = y;
    p.force_z[k] = z;
}

std::unique_ptr<Project> project_with_three_forces()
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->num_forces = 3;
    set_force(*p, 1, 10, 20, 1, 2, 3);
    set_force(*p, 2, 11, 21, 4, 5, 6);
    set_force(*p, 3, 12, 22, 7, 8, 9);
    return p;
}

TEST(ForceForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(force_form_caption, "List of external forces");
    EXPECT_STREQ(force_components_title, "Force Components:");
    EXPECT_STREQ(force_point_title, "Application Point Coordinates:");
    EXPECT_STREQ(force_column_titles[0], "Horiz. Comp.: *");
    EXPECT_STREQ(force_column_titles[1], "Vert. Comp.: **");
    EXPECT_STREQ(force_column_titles[2], "X - Coord.:");
    EXPECT_STREQ(force_column_titles[3], "Y - Coord.:");
    EXPECT_STREQ(force_column_titles[4], "Z - Coord.:");
    // 42 blanks between the two notes.
    EXPECT_EQ(std::string(force_footnote),
              "* Positive in the Y-direction" + std::string(42, ' ') + "** Positive down");
    EXPECT_STREQ(force_add_caption, "&Add Force");
    EXPECT_STREQ(force_delete_caption, "&Delete Force");
    EXPECT_EQ(force_visible_rows, 8);
    EXPECT_EQ(force_columns, 5);
}

TEST(ForceForm, opens_on_a_copy_of_the_forces_in_order)
{
    auto p = project_with_three_forces();
    const ForceForm form = open_force_form(*p);
    ASSERT_EQ(form.count(), 3);
    EXPECT_EQ(form.row, 1);
    EXPECT_EQ(form.cell(2, force_col_h), 11.0f);
    EXPECT_EQ(form.cell(2, force_col_v), 21.0f);
    EXPECT_EQ(form.cell(2, force_col_x), 4.0f);
    EXPECT_EQ(form.cell(2, force_col_y), 5.0f);
    EXPECT_EQ(form.cell(2, force_col_z), 6.0f);
    EXPECT_EQ(form.cell(3, force_col_z), 9.0f);
}

TEST(ForceForm, opens_with_one_cleared_line_when_there_are_no_forces)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->num_forces = 0;
    const ForceForm form = open_force_form(*p);
    ASSERT_EQ(form.count(), 1);
    for (int c = 1; c <= force_columns; ++c)
        EXPECT_EQ(form.cell(1, c), 0.0f);
}

TEST(ForceForm, add_appends_a_cleared_selected_line)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    EXPECT_TRUE(force_form_add(form, port));
    ASSERT_EQ(form.count(), 4);
    EXPECT_EQ(form.row, 4);
    for (int c = 1; c <= force_columns; ++c)
        EXPECT_EQ(form.cell(4, c), 0.0f);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(ForceForm, add_beyond_the_limit_shows_the_limit_in_signed_form)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->max_forces = 2;
    p->num_forces = 2;
    set_force(*p, 1, 1, 0, 0, 0, 0);
    set_force(*p, 2, 2, 0, 0, 0, 0);
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    EXPECT_FALSE(force_form_add(form, port));
    EXPECT_EQ(form.count(), 2);
    ASSERT_EQ(port.boxes.size(), 1u);
    // The signed text of 2 carries a leading blank: two blanks after "Only".
    EXPECT_EQ(port.boxes[0].text, "Only  2 forces allowed.");
}

TEST(ForceForm, default_limit_is_one_hundred_and_the_hundred_and_first_is_refused)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    EXPECT_EQ(p->max_forces, 100);
    ForceForm form = open_force_form(*p); // one line
    ScriptedPort port;
    for (int i = 2; i <= 100; ++i)
        ASSERT_TRUE(force_form_add(form, port)) << i;
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_FALSE(force_form_add(form, port));
    EXPECT_EQ(form.count(), 100);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  100 forces allowed.");
    EXPECT_EQ(force_limit_message(100), "Only  100 forces allowed.");
}

TEST(ForceForm, delete_in_the_middle_moves_the_lines_below_up)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    force_form_select(form, 2);
    force_form_delete(form);
    ASSERT_EQ(form.count(), 2);
    EXPECT_EQ(form.cell(1, force_col_h), 10.0f);
    EXPECT_EQ(form.cell(2, force_col_h), 12.0f); // old line 3
    EXPECT_EQ(form.cell(2, force_col_z), 9.0f);
    EXPECT_EQ(form.row, 2);
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 2);
    EXPECT_EQ(p->force_h[2], 12.0f);
    EXPECT_EQ(p->force_v[2], 22.0f);
    EXPECT_EQ(p->force_x[2], 7.0f);
    EXPECT_EQ(p->force_y[2], 8.0f);
    EXPECT_EQ(p->force_z[2], 9.0f);
}

TEST(ForceForm, delete_of_the_last_line_selects_the_new_last)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    force_form_select(form, 3);
    force_form_delete(form);
    EXPECT_EQ(form.count(), 2);
    EXPECT_EQ(form.row, 2);
}

TEST(ForceForm, select_outside_the_lines_is_ignored)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    force_form_select(form, 2);
    force_form_select(form, 4);
    force_form_select(form, 0);
    EXPECT_EQ(form.row, 2);
}

TEST(ForceForm, typed_cells_take_the_leading_number)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    force_form_enter(form, 1, force_col_v, "-12.5kN");
    force_form_enter(form, 3, force_col_y, "abc");
    force_form_enter(form, 4, force_col_h, "7"); // no line 4: ignored
    EXPECT_EQ(form.cell(1, force_col_v), -12.5f);
    EXPECT_EQ(form.cell(3, force_col_y), 0.0f);
    EXPECT_EQ(form.count(), 3);
    EXPECT_TRUE(force_form_accepts("12", '.'));
    EXPECT_FALSE(force_form_accepts("1.2", '.'));
    EXPECT_FALSE(force_form_accepts("12", '-'));
    EXPECT_TRUE(force_form_accepts("", '-'));
}

TEST(ForceForm, continue_copies_every_column_and_the_count)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->num_forces = 0;
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    force_form_add(form, port);
    force_form_enter(form, 1, force_col_h, "100");
    force_form_enter(form, 1, force_col_v, "-50");
    force_form_enter(form, 1, force_col_x, "1");
    force_form_enter(form, 1, force_col_y, "2");
    force_form_enter(form, 1, force_col_z, "3");
    force_form_enter(form, 2, force_col_v, "5");
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 2);
    EXPECT_EQ(p->force_h[1], 100.0f);
    EXPECT_EQ(p->force_v[1], -50.0f);
    EXPECT_EQ(p->force_x[1], 1.0f);
    EXPECT_EQ(p->force_y[1], 2.0f);
    EXPECT_EQ(p->force_z[1], 3.0f);
    EXPECT_EQ(p->force_v[2], 5.0f);
}

TEST(ForceForm, a_lone_force_without_components_counts_as_none)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    ForceForm form = open_force_form(*p);
    // A point of application alone does not make a force.
    force_form_enter(form, 1, force_col_x, "4");
    force_form_enter(form, 1, force_col_z, "9");
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 0);
    EXPECT_EQ(p->force_x[1], 4.0f); // the line is still copied
}

TEST(ForceForm, a_lone_force_with_one_component_counts)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    ForceForm form = open_force_form(*p);
    force_form_enter(form, 1, force_col_v, "1");
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 1);
}

TEST(ForceForm, two_zero_forces_are_kept_as_two)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    force_form_add(form, port);
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 2);
}

TEST(ForceForm, a_zero_first_force_counts_when_others_follow)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    force_form_enter(form, 1, force_col_h, "0");
    force_form_enter(form, 1, force_col_v, "0");
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 3);
}

TEST(ForceForm, deleting_every_line_stores_no_forces)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    for (int i = 0; i < 3; ++i)
        force_form_delete(form);
    EXPECT_EQ(form.count(), 0);
    force_form_delete(form); // nothing left: no effect
    continue_force_form(*p, form);
    EXPECT_EQ(p->num_forces, 0);
}

TEST(ForceForm, cancel_leaves_the_project_unchanged)
{
    auto p = project_with_three_forces();
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    force_form_enter(form, 1, force_col_h, "999");
    force_form_select(form, 2);
    force_form_delete(form);
    force_form_add(form, port);
    cancel_force_form(form);
    EXPECT_EQ(p->num_forces, 3);
    EXPECT_EQ(p->force_h[1], 10.0f);
    EXPECT_EQ(p->force_h[2], 11.0f);
    EXPECT_EQ(p->force_v[2], 21.0f);
    EXPECT_EQ(p->force_h[3], 12.0f);
    EXPECT_EQ(p->force_z[3], 9.0f);
    EXPECT_EQ(p->force_h[4], 0.0f);
}

TEST(ForceForm, the_selected_line_stays_among_the_eight_in_view)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    ForceForm form = open_force_form(*p);
    ScriptedPort port;
    for (int i = 2; i <= 10; ++i)
        force_form_add(form, port);
    // Line 10 selected: lines 3..10 in view.
    EXPECT_EQ(form.row, 10);
    EXPECT_EQ(form.top_row, 3);
    force_form_select(form, 1);
    EXPECT_EQ(form.top_row, 1);
}

} // namespace
} // namespace tobel::test
