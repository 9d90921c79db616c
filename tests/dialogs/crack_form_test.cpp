// The tension crack form: options that act at once, cells and labels by mode,
// the keys, Continue by mode with the force scale, and Cancel.
#include <gtest/gtest.h>

#include "dialogs/crack_form.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> crack_project(int mode)
{
    auto p = make_project({3, 3, 0, 10, 0, 10});
    p->crack_mode = int16(mode);
    p->crack_y = 7.5f;
    p->crack_depth = 2.25f;
    p->crack_water_pct = 40;
    return p;
}

TEST(CrackForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(crack_form_caption, "Tension Crack");
    EXPECT_STREQ(crack_option_captions[0], "No tension crack");
    EXPECT_STREQ(crack_option_captions[1], "Specified by Y-coordinate");
    EXPECT_STREQ(crack_option_captions[2], "Specified by depth");
}

TEST(CrackForm, opens_on_crack_y_in_mode_1)
{
    auto p = crack_project(1);
    const CrackForm form = open_crack_form(*p);
    EXPECT_EQ(form.value(1), 7.5f);
    EXPECT_EQ(form.value(2), 40.0f);
    EXPECT_EQ(form.cell, 1);
}

TEST(CrackForm, opens_on_crack_depth_in_mode_2)
{
    auto p = crack_project(2);
    const CrackForm form = open_crack_form(*p);
    EXPECT_EQ(form.value(1), 2.25f);
    EXPECT_EQ(form.value(2), 40.0f);
}

TEST(CrackForm, mode_0_shows_no_cell)
{
    auto p = crack_project(0);
    EXPECT_FALSE(crack_cell_visible(*p, 1));
    EXPECT_FALSE(crack_cell_visible(*p, 2));
    EXPECT_EQ(crack_cell_label(*p, 1), "");
    EXPECT_EQ(crack_cell_label(*p, 2), "");
}

TEST(CrackForm, mode_1_labels_cell_1_by_y_coordinate)
{
    auto p = crack_project(1);
    EXPECT_TRUE(crack_cell_visible(*p, 1));
    EXPECT_TRUE(crack_cell_visible(*p, 2));
    EXPECT_EQ(crack_cell_label(*p, 1), "Y-coordinate of Tension Crack:");
    EXPECT_EQ(crack_cell_label(*p, 2), "% Tension crack filled by water:");
}

TEST(CrackForm, mode_2_labels_cell_1_by_depth)
{
    auto p = crack_project(2);
    EXPECT_TRUE(crack_cell_visible(*p, 1));
    EXPECT_TRUE(crack_cell_visible(*p, 2));
    EXPECT_EQ(crack_cell_label(*p, 1), "Tension crack depth:");
    EXPECT_EQ(crack_cell_label(*p, 2), "% Tension crack filled by water:");
}

TEST(CrackForm, choosing_an_option_sets_crack_mode_at_once)
{
    auto p = crack_project(0);
    crack_form_choose(*p, 2);
    EXPECT_EQ(p->crack_mode, 2);
    EXPECT_EQ(crack_cell_label(*p, 1), "Tension crack depth:");
    crack_form_choose(*p, 1);
    EXPECT_EQ(p->crack_mode, 1);
    crack_form_choose(*p, 3); // no such option
    EXPECT_EQ(p->crack_mode, 1);
}

TEST(CrackForm, cancel_keeps_the_option_chosen_and_the_values)
{
    auto p = crack_project(0);
    CrackForm form = open_crack_form(*p);
    crack_form_choose(*p, 1);
    crack_form_enter(form, 1, "3");
    crack_form_enter(form, 2, "100");
    cancel_crack_form(*p);
    EXPECT_EQ(p->crack_mode, 1);
    EXPECT_EQ(p->crack_y, 7.5f);
    EXPECT_EQ(p->crack_depth, 2.25f);
    EXPECT_EQ(p->crack_water_pct, 40.0f);
}

TEST(CrackForm, up_goes_back_and_down_enter_tab_go_on_within_the_two_cells)
{
    CrackForm form;
    crack_form_key(form, CrackKey::up);
    EXPECT_EQ(form.cell, 1);
    crack_form_key(form, CrackKey::down);
    EXPECT_EQ(form.cell, 2);
    crack_form_key(form, CrackKey::down);
    EXPECT_EQ(form.cell, 2);
    crack_form_key(form, CrackKey::up);
    EXPECT_EQ(form.cell, 1);
    crack_form_key(form, CrackKey::enter);
    EXPECT_EQ(form.cell, 2);
    crack_form_key(form, CrackKey::up);
    crack_form_key(form, CrackKey::tab);
    EXPECT_EQ(form.cell, 2);
}

TEST(CrackForm, a_click_on_a_label_takes_its_cell)
{
    CrackForm form;
    crack_form_click_label(form, 2);
    EXPECT_EQ(form.cell, 2);
    crack_form_click_label(form, 1);
    EXPECT_EQ(form.cell, 1);
    crack_form_click_label(form, 3);
    EXPECT_EQ(form.cell, 1);
}

TEST(CrackForm, cells_take_the_leading_number)
{
    CrackForm form;
    crack_form_enter(form, 1, "12.5 m");
    crack_form_enter(form, 2, "x");
    EXPECT_EQ(form.value(1), 12.5f);
    EXPECT_EQ(form.value(2), 0.0f);
    EXPECT_TRUE(crack_form_accepts("1", '5'));
    EXPECT_FALSE(crack_form_accepts("1", '\t'));
}

TEST(CrackForm, continue_in_mode_0_clears_all_three_values)
{
    auto p = crack_project(0);
    CrackForm form = open_crack_form(*p);
    crack_form_enter(form, 1, "5");
    continue_crack_form(*p, form);
    EXPECT_EQ(p->crack_mode, 0);
    EXPECT_EQ(p->crack_y, 0.0f);
    EXPECT_EQ(p->crack_depth, 0.0f);
    EXPECT_EQ(p->crack_water_pct, 0.0f);
}

TEST(CrackForm, continue_in_mode_1_stores_y_and_water_and_leaves_depth)
{
    auto p = crack_project(1);
    CrackForm form = open_crack_form(*p);
    crack_form_enter(form, 1, "6");
    crack_form_enter(form, 2, "50");
    continue_crack_form(*p, form);
    EXPECT_EQ(p->crack_y, 6.0f);
    EXPECT_EQ(p->crack_water_pct, 50.0f);
    EXPECT_EQ(p->crack_depth, 2.25f);
}

TEST(CrackForm, continue_in_mode_2_stores_depth_and_water_and_leaves_y)
{
    auto p = crack_project(2);
    CrackForm form = open_crack_form(*p);
    crack_form_enter(form, 1, "3.5");
    crack_form_enter(form, 2, "25");
    continue_crack_form(*p, form);
    EXPECT_EQ(p->crack_depth, 3.5f);
    EXPECT_EQ(p->crack_water_pct, 25.0f);
    EXPECT_EQ(p->crack_y, 7.5f);
}

TEST(CrackForm, option_changed_after_opening_stores_cell_1_by_the_new_mode)
{
    // Opened in mode 1: cell 1 holds crack_y 7.5; switched to depth, the same
    // cell goes to crack_depth.
    auto p = crack_project(1);
    const CrackForm form = open_crack_form(*p);
    crack_form_choose(*p, 2);
    continue_crack_form(*p, form);
    EXPECT_EQ(p->crack_depth, 7.5f);
    EXPECT_EQ(p->crack_y, 7.5f);
}

TEST(CrackForm, continue_rescales_the_force_arrows)
{
    auto p = crack_project(1);
    p->num_forces = 1;
    p->force_h[1] = 3;
    p->force_v[1] = -8; // larger size: the vertical, with its sign
    p->force_peak = 0;
    const CrackForm form = open_crack_form(*p);
    continue_crack_form(*p, form);
    EXPECT_EQ(p->force_peak, -8.0f);
}

} // namespace
} // namespace tobel::test
