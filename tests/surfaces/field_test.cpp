// The discontinuity field: the uneven limits of its rectangle, the 2-D rule,
// and the form around it.
#include <gtest/gtest.h>

#include "dialogs/field_form.h"
#include "support/scripted_port.h"
#include "surface_fixture.h"
#include "surfaces/discontinuity_field.h"

namespace tobel::test {
namespace {

// 5 x 5 nodes at x, y = 0, 1, 2, 3, 4.
std::unique_ptr<Project> field_project(int rows = 5)
{
    auto p = make_project({rows, 5, 0, rows > 1 ? 4.0f : 1.0f, 0, 4});
    set_ground(*p, [](double, double) { return 10.0; });
    return p;
}

void set_limits(Project& p, float x_low, float x_high, float y_low, float y_high)
{
    p.field_x_low = x_low;
    p.field_x_high = x_high;
    p.field_y_low = y_low;
    p.field_y_high = y_high;
}

TEST(DiscontinuityField, low_x_limit_is_out_high_x_limit_is_in_y_limits_are_out)
{
    auto p = field_project();
    set_limits(*p, 1, 3, 1, 3);
    set_discontinuity_field(*p);
    // In: x = 2 and 3 (1 < x <= 3), y = 2 only (1 < y < 3).
    for (int row = 1; row <= 5; ++row) {
        const double x = row - 1;
        for (int col = 1; col <= 5; ++col) {
            const double y = col - 1;
            const int expected = (x > 1 && x <= 3 && y > 1 && y < 3) ? 1 : 0;
            EXPECT_EQ(p->disc_code(row, col), expected) << "x=" << x << " y=" << y;
        }
    }
    EXPECT_EQ(p->disc_code(2, 3), 0); // x on the low limit
    EXPECT_EQ(p->disc_code(4, 3), 1); // x on the high limit
    EXPECT_EQ(p->disc_code(3, 2), 0); // y on the low limit
    EXPECT_EQ(p->disc_code(3, 4), 0); // y on the high limit
}

TEST(DiscontinuityField, codes_outside_the_rectangle_are_cleared)
{
    auto p = field_project();
    p->disc_code.fill(3);
    set_limits(*p, 1, 3, 1, 3);
    set_discontinuity_field(*p);
    EXPECT_EQ(p->disc_code(1, 1), 0);
    EXPECT_EQ(p->disc_code(5, 5), 0);
    EXPECT_EQ(p->disc_code(3, 3), 1);
}

TEST(DiscontinuityField, two_d_field_is_set_by_the_y_limits_alone)
{
    auto p = field_project(1); // the one row at x = 0
    set_limits(*p, 50, 60, 0.5f, 3);
    set_discontinuity_field(*p);
    EXPECT_EQ(p->disc_code(1, 1), 0); // y = 0
    EXPECT_EQ(p->disc_code(1, 2), 1); // y = 1
    EXPECT_EQ(p->disc_code(1, 3), 1); // y = 2
    EXPECT_EQ(p->disc_code(1, 4), 0); // y = 3, on the limit
    EXPECT_EQ(p->disc_code(1, 5), 0);
}

TEST(DiscontinuityField, marks_discontinuity_one_as_the_only_plane_code)
{
    auto p = field_project();
    p->num_wedges = 3;
    p->wedge_code[1] = 4;
    set_limits(*p, 0, 0, 0, 0);
    set_discontinuity_field(*p);
    EXPECT_EQ(p->num_wedges, 1);
    EXPECT_EQ(p->wedge_code[1], 1.0f);
}

TEST(FieldForm, opens_on_the_limits_in_memory)
{
    auto p = field_project();
    set_limits(*p, 1, 2, 3, 4);
    FieldForm f = open_field_form(*p);
    EXPECT_EQ(f.values, (std::array<float, 4>{1, 2, 3, 4}));
    EXPECT_EQ(f.row, 1);
}

TEST(FieldForm, continue_stores_the_limits_sets_the_field_and_shows_the_note)
{
    auto p = field_project();
    FieldForm f = open_field_form(*p);
    field_form_enter(f, 1, "1");
    field_form_enter(f, 2, "3.0 m");
    field_form_enter(f, 3, "1");
    field_form_enter(f, 4, "3");
    ScriptedPort port;
    continue_field_form(*p, f, port);
    EXPECT_EQ(p->field_x_high, 3.0f);
    EXPECT_EQ(p->field_y_high, 3.0f);
    EXPECT_EQ(p->disc_code(4, 3), 1);
    EXPECT_EQ(p->num_wedges, 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text,
              "A discontinuity field has been defined.  Note: Must be re-set each time the "
              "General Sliding Surface has been constructed.");
}

TEST(FieldForm, low_above_high_leaves_every_node_out_and_still_shows_the_note)
{
    auto p = field_project();
    FieldForm f = open_field_form(*p);
    f.values = {3, 1, 3, 1};
    ScriptedPort port;
    continue_field_form(*p, f, port);
    for (int row = 1; row <= 5; ++row)
        for (int col = 1; col <= 5; ++col)
            EXPECT_EQ(p->disc_code(row, col), 0);
    EXPECT_EQ(port.boxes.size(), 1u);
}

TEST(FieldForm, moving_down_stops_at_the_fourth_row_without_reaching_the_force_limit)
{
    auto p = field_project();
    FieldForm f = open_field_form(*p);
    ScriptedPort port;
    for (int i = 0; i < 5; ++i)
        field_form_key(*p, f, FieldFormKey::down, port);
    EXPECT_EQ(f.row, 4);
    EXPECT_TRUE(port.boxes.empty());
    field_form_key(*p, f, FieldFormKey::up, port);
    EXPECT_EQ(f.row, 3);
    // With a limit as low as the rows, the forces form's message shows.
    p->max_forces = 4;
    f.row = 4;
    field_form_key(*p, f, FieldFormKey::down, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  4 forces allowed.");
}

TEST(FieldForm, cancel_clears_form_mode_and_keeps_the_codes)
{
    auto p = field_project();
    p->form_mode = 7;
    p->disc_code(2, 2) = 1;
    FieldForm f = open_field_form(*p);
    f.values = {-10, 10, -10, 10};
    cancel_field_form(*p);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->field_x_high, 0.0f);
    EXPECT_EQ(p->disc_code(2, 2), 1);
    EXPECT_EQ(p->disc_code(3, 3), 0);
}

TEST(FieldForm, explanation_and_labels_are_the_forms_texts)
{
    EXPECT_STREQ(field_form_caption, "Discontinuity Field on General Sliding Surface");
    EXPECT_NE(std::string(field_form_explanation).find("wthin the rectangle"), std::string::npos);
    EXPECT_STREQ(field_row_labels[1], "X-Coord.-High");
    EXPECT_TRUE(field_form_accepts("", '-'));
    EXPECT_FALSE(field_form_accepts("1", 'a'));
}

} // namespace
} // namespace tobel::test
