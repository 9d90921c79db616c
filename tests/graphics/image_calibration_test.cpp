// The background image of the section editor: loading, the point table,
// the two clicks and the stretch.
#include <gtest/gtest.h>

#include <memory>

#include "editor_fixture.h"
#include "graphics/image_calibration.h"
#include "graphics_support.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

const ImageHandle scan{7, 640, 480};

// An editor with the scan loaded and the point table open.
SectionEditor loaded_editor(Project& p, ScriptedPort& port)
{
    port.images = {{"scan.bmp", scan}};
    port.files = {std::string("scan.bmp")};
    SectionEditor ed = editor_open(p, port);
    load_image(p, ed, port);
    return ed;
}

void enter_points(SectionEditor& ed, const char* p1y, const char* p1z, const char* p2y, const char* p2z)
{
    ed.scale.cells = {p1y, p1z, p2y, p2z};
}

} // namespace

TEST(ImageCalibration, texts_are_the_forms_own)
{
    EXPECT_STREQ(image_file_filter, "All Graphic Files (*.BMP;*.GIF;*.TIF;*.JPG)|*.BMP;*.GIF;*.TIF;*.JPG");
    EXPECT_STREQ(scale_form_caption, "Image Scale Point Coordinates");
    EXPECT_STREQ(scale_form_texts[0], "Enter the coordinates of two known points on the image");
    EXPECT_STREQ(scale_form_texts[1], "in the table below and click Continue:");
    EXPECT_STREQ(scale_form_rows[0], "Point.1, Lower Left:");
    EXPECT_STREQ(scale_form_rows[1], "Point.2, Upper Right:");
    EXPECT_STREQ(scale_form_columns[0], "Y-coordinate");
    EXPECT_STREQ(scale_form_columns[1], "Z-coordinate");
    EXPECT_STREQ(scale_form_buttons[0], "Continue");
    EXPECT_STREQ(scale_form_buttons[1], "Cancel");
}

TEST(ImageCalibration, a_cancelled_file_dialog_leaves_all_as_it_was)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = editor_open(*p, port);
    load_image(*p, ed, port);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], image_file_filter);
    EXPECT_FALSE(ed.image.loaded);
    EXPECT_FALSE(ed.scale.open);
    EXPECT_TRUE(ed.legend.visible);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(ImageCalibration, a_file_that_cannot_be_read_says_so)
{
    auto p = editor_project();
    ScriptedPort port;
    port.files = {std::string("missing.bmp")};
    SectionEditor ed = editor_open(*p, port);
    load_image(*p, ed, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Error # 53 occured: File not found");
    EXPECT_FALSE(ed.image.loaded);
}

TEST(ImageCalibration, load_fills_the_window_and_opens_the_point_table)
{
    auto p = editor_project();
    p->image_p1_y = 10;
    p->image_p2_z = 45.5f;
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    EXPECT_TRUE(ed.image.loaded);
    EXPECT_EQ(ed.image.handle.id, 7);
    EXPECT_TRUE(ed.unload_image_enabled);
    // The level-3 window: left -12.5, top 76.875, 125 wide, 93.75 high.
    EXPECT_FLOAT_EQ(ed.image.left, -12.5f);
    EXPECT_FLOAT_EQ(ed.image.top, 76.875f);
    EXPECT_FLOAT_EQ(ed.image.width, 125);
    EXPECT_FLOAT_EQ(ed.image.height, -93.75f);
    // Hidden, with the labels and legend, while the points are entered.
    EXPECT_FALSE(ed.image.visible);
    EXPECT_FALSE(ed.legend.visible);
    EXPECT_FALSE(ed.labels_visible);
    ASSERT_TRUE(ed.scale.open);
    EXPECT_EQ(ed.scale.cells[0], "10");
    EXPECT_EQ(ed.scale.cells[1], "0");
    EXPECT_EQ(ed.scale.cells[2], "0");
    EXPECT_EQ(ed.scale.cells[3], "45.5");
}

TEST(ImageCalibration, points_with_equal_y_are_refused)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "10", "45");
    EXPECT_FALSE(continue_scale_form(*p, ed, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Choice of points is incorrect!");
    EXPECT_EQ(port.boxes[0].title, "Error");
    EXPECT_TRUE(ed.scale.open);
    EXPECT_EQ(ed.image.image_stage, 0);
    EXPECT_EQ(p->image_p1_y, 0); // not stored
    // Point 2 below point 1 as well.
    enter_points(ed, "10", "5", "90", "4");
    EXPECT_FALSE(continue_scale_form(*p, ed, port));
    EXPECT_EQ(port.boxes.size(), 2u);
}

TEST(ImageCalibration, typing_into_the_point_table)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    ed.scale.cells[0].clear();
    EXPECT_TRUE(scale_form_type(ed.scale, port, '-'));
    EXPECT_TRUE(scale_form_type(ed.scale, port, '1'));
    EXPECT_TRUE(scale_form_type(ed.scale, port, '.'));
    EXPECT_FALSE(scale_form_type(ed.scale, port, '.'));
    EXPECT_FALSE(scale_form_type(ed.scale, port, '-'));
    EXPECT_FALSE(scale_form_type(ed.scale, port, 'x'));
    EXPECT_EQ(ed.scale.cells[0], "-1.");
    scale_form_key(ed.scale, FormKey::tab);
    scale_form_key(ed.scale, FormKey::tab);
    EXPECT_EQ(ed.scale.row, 2);
    EXPECT_EQ(ed.scale.col, 1);
    scale_form_select(ed.scale, 1, 2);
    EXPECT_EQ(ed.scale.row, 1);
    EXPECT_EQ(ed.scale.col, 2);
}

TEST(ImageCalibration, continue_waits_for_the_first_click)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    EXPECT_TRUE(continue_scale_form(*p, ed, port));
    EXPECT_FALSE(ed.scale.open);
    EXPECT_EQ(ed.image.image_stage, 1);
    EXPECT_FLOAT_EQ(p->image_p1_y, 10);
    EXPECT_FLOAT_EQ(p->image_p2_z, 45);
    EXPECT_TRUE(ed.image.help_visible);
    EXPECT_EQ(ed.image.help_text, "Locate Point 1 at Y =  10 and Z =  5 on image and click.");
    // A pointer down does nothing while a click is awaited; the up is the click.
    pointer_down(*p, ed, port, PointerButton::left, false, 0, 0);
    EXPECT_EQ(ed.npts(1), 0);
    pointer_up(*p, ed, port, PointerButton::left, false, 0, 0);
    EXPECT_EQ(ed.image.image_stage, 2);
    EXPECT_EQ(ed.image.help_text, "Locate Point 2 at Y =  90 and Z =  45 on image and click.");
    EXPECT_EQ(ed.npts(1), 0);
}

// Loaded at left -12.5, top 76.875, 125 by -93.75; clicks at (0, 0) and
// (40, 20) for points (10, 5) and (90, 45): sy = 80 / 40 = 2, sz = 40 / 20 = 2,
// oy = (0 + 12.5) * 2 - (10 + 12.5) = 2.5, oz = (0 - 76.875) * 2 - (5 - 76.875)
// = -81.875; width 250, height -187.5, left -15, top 158.75.
TEST(ImageCalibration, two_clicks_stretch_the_image_onto_the_points)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 0, 0);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 20);
    EXPECT_EQ(ed.image.image_stage, 0);
    EXPECT_FLOAT_EQ(ed.image.width, 250);
    EXPECT_FLOAT_EQ(ed.image.height, -187.5f);
    EXPECT_FLOAT_EQ(ed.image.left, -15);
    EXPECT_FLOAT_EQ(ed.image.top, 158.75f);
    EXPECT_TRUE(ed.image.visible);
    EXPECT_TRUE(ed.legend.visible);
    EXPECT_TRUE(ed.labels_visible);
    EXPECT_FALSE(ed.image.help_visible);
    // The picture draws the image under the lines, by its handle.
    const auto images = items_of(p->pictures.editor.picture, DrawOp::image);
    ASSERT_EQ(images.size(), 1u);
    EXPECT_EQ(images[0]->text, 7u);
    const Box b = boxes_of(p->pictures.editor.picture, DrawOp::image)[0];
    EXPECT_FLOAT_EQ(b.x1, -15);
    EXPECT_FLOAT_EQ(b.y1, 158.75f);
    EXPECT_FLOAT_EQ(b.x2, 235);
    EXPECT_FLOAT_EQ(b.y2, -28.75f);
}

// The same loaded rectangle (0, 100, 100 by -100) and clicks at (20, 20) and
// (60, 40) for points (10, 5) and (90, 45): sy = 2; sz = (40 / 20) * vert_exag.
// With vert_exag 1: oz = (20 - 100) * 2 - (5 - 100) = -65, top 165, height
// -200. With 2: oz = (20 - 100) * 4 - (10 - 100) = -230, top 330, height
// -400. The image point of the second click lies 0.6 down the image: at
// 165 - 120 = 45 and at 330 - 240 = 90, which is Z 45 either way.
void stretch_with(float vert_exag, float expect_height, float expect_top, double trace_e)
{
    auto p = editor_project(vert_exag);
    p->snap_off = -1;
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    ed.image.left = 0;
    ed.image.top = 100;
    ed.image.width = 100;
    ed.image.height = -100;
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 20, 20);
    pointer_up(*p, ed, port, PointerButton::left, false, 60, 40);
    EXPECT_FLOAT_EQ(ed.image.height, expect_height);
    EXPECT_FLOAT_EQ(ed.image.top, expect_top);
    EXPECT_FLOAT_EQ(ed.image.width, 200);
    EXPECT_FLOAT_EQ(ed.image.left, -30); // oy = 20 * 2 - 10 = 30
    // The image point of click 2 stands at the new place of 0.6 down.
    EXPECT_FLOAT_EQ(ed.image.top + 0.6f * ed.image.height, float(trace_e));
    // Tracing it gives the true point.
    pointer_down(*p, ed, port, PointerButton::left, false, 90, trace_e);
    pointer_up(*p, ed, port, PointerButton::left, false, 90, trace_e);
    ASSERT_EQ(ed.npts(1), 1);
    EXPECT_FLOAT_EQ(ed.edit_y(1, 1), 90);
    EXPECT_FLOAT_EQ(ed.edit_z(1, 1), 45);
}

TEST(ImageCalibration, stretch_with_vert_exag_one)
{
    stretch_with(1, -200, 165, 45);
}

TEST(ImageCalibration, vert_exag_two_stretches_twice_as_high_and_traces_true_z)
{
    stretch_with(2, -400, 330, 90);
}

TEST(ImageCalibration, second_click_left_of_the_first_offers_retry)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 0);
    port.answers = {Answer::ok}; // Retry
    pointer_up(*p, ed, port, PointerButton::left, false, 20, 20);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Point 2 must be above and to the right of Point 1");
    EXPECT_EQ(port.boxes[0].title, "LAHAR");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok_cancel);
    // The point table again, with the numbers entered.
    ASSERT_TRUE(ed.scale.open);
    EXPECT_EQ(ed.scale.cells[0], "10");
    EXPECT_EQ(ed.scale.cells[1], "5");
    EXPECT_EQ(ed.scale.cells[2], "90");
    EXPECT_EQ(ed.scale.cells[3], "45");
    EXPECT_EQ(ed.image.image_stage, 0);
    EXPECT_TRUE(ed.image.loaded);
}

TEST(ImageCalibration, cancel_of_the_retry_box_drops_the_image)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 20);
    port.answers = {Answer::cancel};
    pointer_up(*p, ed, port, PointerButton::left, false, 50, 10); // below the first
    EXPECT_EQ(ed.image.image_stage, 0);
    EXPECT_FALSE(ed.image.loaded);
    EXPECT_TRUE(ed.image.path.empty());
    ASSERT_EQ(port.unloaded_images.size(), 1u);
    EXPECT_EQ(port.unloaded_images[0], 7);
    EXPECT_TRUE(ed.legend.visible);
    EXPECT_TRUE(ed.labels_visible);
    EXPECT_FALSE(ed.scale.open);
}

TEST(ImageCalibration, cancel_of_the_point_table_removes_the_picture)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    cancel_scale_form(*p, ed, port);
    EXPECT_FALSE(ed.image.loaded);
    EXPECT_FALSE(ed.scale.open);
    EXPECT_TRUE(ed.legend.visible);
    EXPECT_FALSE(ed.unload_image_enabled);
    EXPECT_EQ(port.unloaded_images.size(), 1u);
}

TEST(ImageCalibration, rescale_and_unload)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 0, 0);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 20);
    ASSERT_TRUE(ed.image.visible);
    rescale_image(*p, ed);
    EXPECT_TRUE(ed.scale.open);
    EXPECT_FALSE(ed.legend.visible);
    EXPECT_EQ(ed.scale.cells[2], "90");   // kept between uses
    EXPECT_FLOAT_EQ(ed.image.width, 250); // the image as it lies
    cancel_scale_form(*p, ed, port);
    EXPECT_FALSE(ed.image.loaded);

    SectionEditor ed2 = loaded_editor(*p, port);
    ASSERT_TRUE(ed2.unload_image_enabled);
    unload_image(*p, ed2, port);
    EXPECT_FALSE(ed2.image.loaded);
    EXPECT_FALSE(ed2.unload_image_enabled);
    EXPECT_TRUE(items_of(p->pictures.editor.picture, DrawOp::image).empty());
}

TEST(ImageCalibration, the_image_moves_with_a_pan)
{
    auto p = editor_project();
    ScriptedPort port;
    SectionEditor ed = loaded_editor(*p, port);
    enter_points(ed, "10", "5", "90", "45");
    continue_scale_form(*p, ed, port);
    pointer_up(*p, ed, port, PointerButton::left, false, 0, 0);
    pointer_up(*p, ed, port, PointerButton::left, false, 40, 20);
    pointer_down(*p, ed, port, PointerButton::left, true, 50, 30);
    // Hidden during the pan.
    EXPECT_TRUE(items_of(p->pictures.editor.picture, DrawOp::image).empty());
    pointer_move(*p, ed, port, PointerButton::left, true, 40, 30);
    pointer_up(*p, ed, port, PointerButton::left, true, 40, 30);
    // Its world rectangle stays where it was.
    const Box b = boxes_of(p->pictures.editor.picture, DrawOp::image)[0];
    EXPECT_FLOAT_EQ(b.x1, -15);
    EXPECT_FLOAT_EQ(b.y1, 158.75f);
}

} // namespace tobel::test
