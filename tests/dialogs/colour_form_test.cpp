// The Colour Editor: the sampler and its blue scroll, the swatch, the boxes,
// Save and Exit with the repeats of the tables and the repaint, Revert to
// the default scheme, Cancel.
#include <gtest/gtest.h>

#include "dialogs/colour_form.h"
#include "graphics/graphics_support.h"
#include "project/settings.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> coloured()
{
    auto p = make_project({3, 6, 0, 10, 0, 50});
    set_ground(*p, [](double, double y) { return 20 - y / 5; });
    default_colours(*p);
    return p;
}

TEST(ColourForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(colour_form_caption, "Colour Editor");
    EXPECT_STREQ(blue_scroll_label, "Less          BLUE          More");
    EXPECT_STREQ(colour_help_1, " 1)  Click on sampler to select colour");
    EXPECT_STREQ(colour_help_2, " 2)  Click on a box to the left to store");
    EXPECT_STREQ(layer_boxes_label, "Layers:");
    EXPECT_STREQ(piezo_boxes_label, "Piezo:");
    EXPECT_STREQ(sliding_box_label, "Sliding Surface:");
    EXPECT_STREQ(selected_box_label, "Selected Layer:");
    EXPECT_STREQ(save_and_exit_caption, "Save and Exit");
    EXPECT_STREQ(revert_caption, "Revert to Default Colour Scheme");
}

TEST(ColourForm, opens_with_a_white_swatch_and_the_boxes_of_the_tables)
{
    auto p = coloured();
    p->layer_colour[4] = 1234;
    p->piezo_colour[15] = 4321;
    p->sliding_colour = 77;
    p->selected_colour = 88;
    ColourForm form = open_colour_form(*p);
    EXPECT_EQ(form.swatch, 0xFFFFFF); // RGB 255, 255, 255
    EXPECT_EQ(form.hscroll1, blue_scroll_max);
    EXPECT_EQ(form.layer_box(1), 46888);
    EXPECT_EQ(form.layer_box(4), 1234);
    EXPECT_EQ(form.piezo_box(1), 16750969);
    EXPECT_EQ(form.piezo_box(15), 4321);
    EXPECT_EQ(form.sliding_box, 77);
    EXPECT_EQ(form.selected_box, 88);
}

// Square (i, j) is centred at (j * 25.5, i * 25.5) with half side 12.75, in
// RGB(Int(i * 25.5), Int(j * 25.5), Int(HScroll1 * 25.5)).
TEST(ColourForm, sampler_has_121_squares_coloured_by_row_column_and_scroll)
{
    auto p = coloured();
    const ColourForm form = open_colour_form(*p);
    const auto squares = boxes_of(form.sampler);
    ASSERT_EQ(squares.size(), 121u);
    // (i, j) = (2, 3): centre (76.5, 51); red Int(51) = 51, green Int(76.5) =
    // 76, blue Int(10 * 25.5) = 255.
    const Box& b = squares[2 * 11 + 3];
    EXPECT_FLOAT_EQ(b.x1, 76.5f - 12.75f);
    EXPECT_FLOAT_EQ(b.y1, 51.0f - 12.75f);
    EXPECT_FLOAT_EQ(b.x2, 76.5f + 12.75f);
    EXPECT_FLOAT_EQ(b.y2, 51.0f + 12.75f);
    EXPECT_EQ(b.colour, 51 + 76 * 256 + 255 * 65536);
    // (0, 0): black with full blue; (10, 10): white.
    EXPECT_EQ(squares[0].colour, 255 * 65536);
    EXPECT_EQ(squares[120].colour, 0xFFFFFF);
    // The picture is 255 units both ways.
    const auto scales = boxes_of(form.sampler, DrawOp::scale);
    ASSERT_EQ(scales.size(), 1u);
    EXPECT_FLOAT_EQ(scales[0].x2, 255);
    EXPECT_FLOAT_EQ(scales[0].y2, 255);
}

TEST(ColourForm, moving_the_blue_scroll_redraws_the_sampler)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    colour_form_hscroll1(form, 3);
    const auto squares = boxes_of(form.sampler);
    ASSERT_EQ(squares.size(), 121u);
    // (1, 1): Int(25.5) = 25 red and green, Int(3 * 25.5) = Int(76.5) = 76 blue.
    EXPECT_EQ(squares[12].colour, 25 + 25 * 256 + 76 * 65536);
    colour_form_hscroll1(form, 0);
    EXPECT_EQ(boxes_of(form.sampler)[0].colour, 0);
}

TEST(ColourForm, sampler_colour_by_hand)
{
    // Int(7 * 25.5) = Int(178.5) = 178; Int(9 * 25.5) = Int(229.5) = 229;
    // Int(4 * 25.5) = 102.
    EXPECT_EQ(sampler_colour(7, 9, 4), 178 + 229 * 256 + 102 * 65536);
}

TEST(ColourForm, click_on_the_sampler_takes_x_as_red_y_as_green_and_the_scroll_as_blue)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    colour_form_hscroll1(form, 7);
    colour_form_sampler_click(form, 100.2, 200.0);
    EXPECT_EQ(form.swatch, 100 + 200 * 256 + 7 * 65536);
}

TEST(ColourForm, click_beyond_the_sampler_is_held_within_0_and_255)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    colour_form_sampler_click(form, -5, 300);
    EXPECT_EQ(form.swatch, 0 + 255 * 256 + 10 * 65536);
}

TEST(ColourForm, click_picks_red_from_x_though_the_squares_carry_red_down_the_rows)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    // The centre of square (i, j) = (0, 10) at (255, 0) shows RGB(0, 255, 255);
    // the click there takes red 255 and green 0.
    EXPECT_EQ(boxes_of(form.sampler)[10].colour, 0 + 255 * 256 + 255 * 65536);
    colour_form_sampler_click(form, 255, 0);
    EXPECT_EQ(red_of(form.swatch), 255);
    EXPECT_EQ(green_of(form.swatch), 0);
}

TEST(ColourForm, click_on_a_box_stores_the_swatch_there)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    colour_form_sampler_click(form, 10, 20);
    const Colour c = 10 + 20 * 256 + 10 * 65536;
    colour_form_box_click(form, ColourBox::layer, 3);
    colour_form_box_click(form, ColourBox::piezo, 15);
    colour_form_box_click(form, ColourBox::sliding);
    colour_form_box_click(form, ColourBox::selected);
    EXPECT_EQ(form.layer_box(3), c);
    EXPECT_EQ(form.layer_box(2), 32456);
    EXPECT_EQ(form.piezo_box(15), c);
    EXPECT_EQ(form.sliding_box, c);
    EXPECT_EQ(form.selected_box, c);
}

TEST(ColourForm, a_saved_layer_colour_applies_at_k_k15_k30_and_up_to_6_at_k45)
{
    auto p = coloured();
    ScriptedPort port;
    ColourForm form = open_colour_form(*p);
    form.layer_box(3) = 111;
    form.layer_box(6) = 666;
    form.layer_box(7) = 777;
    form.piezo_box(1) = 1001;
    form.piezo_box(15) = 1515;
    form.sliding_box = 5;
    form.selected_box = 6;
    colour_form_save_and_exit(*p, form, port);
    for (int at : {3, 18, 33, 48})
        EXPECT_EQ(p->layer_colour[std::size_t(at)], 111) << at;
    for (int at : {6, 21, 36, 51})
        EXPECT_EQ(p->layer_colour[std::size_t(at)], 666) << at;
    // Entry 7 repeats only at 22 and 37: the table ends at 51.
    for (int at : {7, 22, 37})
        EXPECT_EQ(p->layer_colour[std::size_t(at)], 777) << at;
    for (int at : {1, 16, 31, 46})
        EXPECT_EQ(p->piezo_colour[std::size_t(at)], 1001) << at;
    for (int at : {15, 30, 45})
        EXPECT_EQ(p->piezo_colour[std::size_t(at)], 1515) << at;
    // An untouched box keeps the default at all its places.
    EXPECT_EQ(p->layer_colour[47], 32456);
    EXPECT_EQ(p->sliding_colour, 5);
    EXPECT_EQ(p->selected_colour, 6);
}

TEST(ColourForm, save_and_exit_repaints_the_open_section_with_the_new_colours)
{
    auto p = coloured();
    ScriptedPort port;
    p->pictures.section.caption = "LONGITUDINAL SECTION";
    p->view.fill_style = 2; // the ground as a line in its layer colour
    ColourForm form = open_colour_form(*p);
    form.layer_box(1) = 4242;
    colour_form_save_and_exit(*p, form, port);
    bool found = false;
    for (const auto& s : segments_of(p->pictures.section.picture))
        found = found || s.colour == 4242;
    EXPECT_TRUE(found);
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
    EXPECT_TRUE(port.views.empty());
}

TEST(ColourForm, revert_no_changes_nothing)
{
    auto p = coloured();
    p->layer_colour[1] = 9;
    ScriptedPort port;
    port.answers = {Answer::no};
    ColourForm form = open_colour_form(*p);
    form.swatch = 3;
    EXPECT_FALSE(colour_form_revert_to_default_colour_scheme(*p, form, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you want to revert to default colours?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(p->layer_colour[1], 9);
    EXPECT_EQ(form.swatch, 3);
}

TEST(ColourForm, revert_yes_lays_down_the_defaults_and_opens_the_form_anew)
{
    auto p = coloured();
    p->layer_colour[1] = 9;
    p->layer_colour[16] = 9;
    p->piezo_colour[2] = 9;
    p->selected_colour = 1;
    p->sliding_colour = 2;
    ScriptedPort port;
    port.answers = {Answer::yes};
    ColourForm form = open_colour_form(*p);
    form.swatch = 3;
    form.hscroll1 = 2;
    EXPECT_TRUE(colour_form_revert_to_default_colour_scheme(*p, form, port));
    EXPECT_EQ(p->layer_colour[1], 46888);
    EXPECT_EQ(p->layer_colour[16], 46888);
    EXPECT_EQ(p->piezo_colour[2], 16736075);
    EXPECT_EQ(p->selected_colour, 255);
    EXPECT_EQ(p->sliding_colour, 16711935);
    EXPECT_EQ(form.layer_box(1), 46888);
    EXPECT_EQ(form.swatch, 0xFFFFFF);
    EXPECT_EQ(form.hscroll1, blue_scroll_max);
}

TEST(ColourForm, cancel_leaves_the_tables_alone)
{
    auto p = coloured();
    ColourForm form = open_colour_form(*p);
    form.layer_box(1) = 5;
    form.sliding_box = 5;
    cancel_colour_form(*p, form);
    EXPECT_EQ(p->layer_colour[1], 46888);
    EXPECT_EQ(p->sliding_colour, 16711935);
}

} // namespace
} // namespace tobel::test
