// The dialog "Report Graphics": its texts, which window each choice needs
// and with which caption, the "Error" box that keeps it open, Cancel.
#include <gtest/gtest.h>

#include <memory>

#include "dialogs/report_graphics_form.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> project_of_rows(int rows)
{
    auto p = std::make_unique<Project>();
    p->num_rows = int16(rows);
    return p;
}

void show(PictureWindow& w, const std::string& caption)
{
    w.exists = true;
    w.caption = caption;
}

TEST(ReportGraphicsForm, texts_are_the_dialogs_own)
{
    EXPECT_STREQ(report_graphics_caption, "Report Graphics");
    EXPECT_STREQ(report_graphics_question, "Which graphic would you like displayed on the report?");
    EXPECT_STREQ(report_graphic_choices[0], "3-d Sliding Surface");
    EXPECT_STREQ(report_graphic_choices[1], "Plan of Active Columns");
    EXPECT_STREQ(report_graphic_choices[2], "Auto Search Result");
    EXPECT_STREQ(report_graphic_choices[3], "Grid Search Result");
    EXPECT_STREQ(report_graphic_choices[4], "X-ray View");
    EXPECT_STREQ(report_graphics_continue, "Continue");
    EXPECT_STREQ(report_graphics_cancel, "Cancel");
}

TEST(ReportGraphicsForm, a_graphic_not_yet_made_gives_the_error_box_and_the_dialog_stays)
{
    auto p = project_of_rows(3);
    ScriptedPort port;
    ReportGraphicsForm form = open_report_graphics_form();
    form.choice = 5;
    EXPECT_FALSE(continue_report_graphics(*p, port, form));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "This graphic has not been created yet.");
    EXPECT_EQ(port.boxes[0].title, "Error");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok);
    EXPECT_TRUE(form.open);
    EXPECT_EQ(form.graphic, 0);
    // Made now: the same Continue closes it with the choice.
    show(p->pictures.xray, "X-RAY");
    EXPECT_TRUE(continue_report_graphics(*p, port, form));
    EXPECT_FALSE(form.open);
    EXPECT_EQ(form.graphic, 5);
    EXPECT_EQ(port.boxes.size(), 1u);
}

TEST(ReportGraphicsForm, each_choice_needs_its_caption_in_its_window)
{
    auto p = project_of_rows(3);
    show(p->pictures.isometry, "SLIDING SURFACE");
    show(p->pictures.plan_active, "PLAN OF ACTIVE COLUMNS");
    show(p->pictures.search, "AUTO SEARCH RESULT");
    show(p->pictures.xray, "X-RAY");
    EXPECT_EQ(report_graphic_picture(*p, 1), &p->pictures.isometry.picture);
    EXPECT_EQ(report_graphic_picture(*p, 2), &p->pictures.plan_active.picture);
    EXPECT_EQ(report_graphic_picture(*p, 3), &p->pictures.search.picture);
    EXPECT_EQ(report_graphic_picture(*p, 4), nullptr); // the search window holds the auto search
    EXPECT_EQ(report_graphic_picture(*p, 5), &p->pictures.xray.picture);
    show(p->pictures.search, "GRID SEARCH RESULT");
    EXPECT_EQ(report_graphic_picture(*p, 3), nullptr);
    EXPECT_EQ(report_graphic_picture(*p, 4), &p->pictures.search.picture);
    EXPECT_EQ(report_graphic_picture(*p, 0), nullptr);
    EXPECT_EQ(report_graphic_picture(*p, 6), nullptr);
}

TEST(ReportGraphicsForm, isometry_of_another_surface_is_not_the_sliding_surface)
{
    auto p = project_of_rows(3);
    show(p->pictures.isometry, "TOP SURFACE OF LAYER 2");
    ScriptedPort port;
    ReportGraphicsForm form;
    form.choice = 1;
    EXPECT_FALSE(continue_report_graphics(*p, port, form));
    EXPECT_EQ(port.boxes.size(), 1u);
    // The result window's caption with its factor is not the one asked for either.
    show(p->pictures.isometry, "SLIDING SURFACE, FS=1.5");
    EXPECT_EQ(report_graphic_picture(*p, 1), nullptr);
}

TEST(ReportGraphicsForm, two_dimensional_mesh_takes_the_longitudinal_section_for_the_3d_choice)
{
    auto p = project_of_rows(1);
    show(p->pictures.isometry, "SLIDING SURFACE");
    EXPECT_EQ(report_graphic_picture(*p, 1), nullptr);
    EXPECT_STREQ(report_graphic_caption(*p, 1), "LONGITUDINAL SECTION");
    show(p->pictures.section, "LONGITUDINAL SECTION");
    EXPECT_EQ(report_graphic_picture(*p, 1), &p->pictures.section.picture);
    // In 3-D the section is not taken: the isometry must show the sliding surface.
    p->num_rows = 2;
    show(p->pictures.isometry, "TOP SURFACE OF LAYER 1");
    EXPECT_EQ(report_graphic_picture(*p, 1), nullptr);
    EXPECT_STREQ(report_graphic_caption(*p, 1), "SLIDING SURFACE");
}

TEST(ReportGraphicsForm, a_window_closed_since_keeps_its_caption_but_is_not_taken)
{
    auto p = project_of_rows(3);
    p->pictures.plan_active.caption = "PLAN OF ACTIVE COLUMNS";
    p->pictures.plan_active.exists = false;
    EXPECT_EQ(report_graphic_picture(*p, 2), nullptr);
}

TEST(ReportGraphicsForm, cancel_closes_without_a_graphic)
{
    ReportGraphicsForm form = open_report_graphics_form();
    EXPECT_EQ(form.choice, 1);
    EXPECT_TRUE(form.open);
    form.choice = 2;
    cancel_report_graphics(form);
    EXPECT_FALSE(form.open);
    EXPECT_EQ(form.graphic, 0);
}

} // namespace
} // namespace tobel::test
