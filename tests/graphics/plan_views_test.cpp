#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "graphics/drawing.h"
#include "graphics/plan_views.h"
#include "graphics/recording_surface.h"
#include "graphics/section_views.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

constexpr Colour selected = 77;

// Mesh X 0 to 20 (rows 10 apart), Y 0 to 40 (columns 20 apart), sections at
// X 0, 12.5 and 20.
std::unique_ptr<Project> plan_project(int rows = 3, int cols = 3)
{
    auto p = make_project({rows, cols, 0, rows > 1 ? 20.0f : 0.0f, 0, 40, 1});
    p->num_sections = 3;
    p->sections.x[1] = 0;
    p->sections.x[2] = 12.5f;
    p->sections.x[3] = 20;
    p->selected_colour = selected;
    p->view_mode = 6;
    p->data_file_path = "D:\\SLOPE.TOB";
    return p;
}

using Run = std::vector<RunPoint>;

std::vector<const DrawItem*> lines_of(const DisplayList& list, Colour colour)
{
    std::vector<const DrawItem*> out;
    for (const auto& item : list.items)
        if (item.op == DrawOp::lines && item.colour == colour)
            out.push_back(&item);
    return out;
}

void expect_line(const DisplayList& list, const DrawItem& item, float x1, float y1, float x2, float y2)
{
    const Run run = run_points(list, item);
    ASSERT_EQ(run.size(), 2u);
    EXPECT_FLOAT_EQ(run[0].x, x1);
    EXPECT_FLOAT_EQ(run[0].y, y1);
    EXPECT_FLOAT_EQ(run[1].x, x2);
    EXPECT_FLOAT_EQ(run[1].y, y2);
}

TEST(PlanAssembly, fits_mesh_y_across_and_mesh_x_upward_with_margin_017)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    // Extent 40 across, 20 up: aspect 0.5 < 0.75, the width branch. The
    // window is 40 / 0.66 wide with 0.17 of it clear each side, 0.75 of that
    // high and centred on X 10.
    const double w = 40.0 / 0.66;
    EXPECT_NEAR(p->view.win_left, -0.17 * w, 1e-3);
    EXPECT_NEAR(p->view.win_right, 40 + 0.17 * w, 1e-3);
    EXPECT_NEAR(p->view.win_bottom, 10 - 0.75 * w / 2, 1e-3);
    EXPECT_NEAR(p->view.win_top, 10 + 0.75 * w / 2, 1e-3);
}

TEST(PlanAssembly, section_lines_are_thick_in_the_selected_colour_with_their_texts)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    const DisplayList& list = p->pictures.section.picture;
    const auto sec = lines_of(list, selected);
    ASSERT_EQ(sec.size(), 3u);
    expect_line(list, *sec[0], 0, 0, 40, 0);
    expect_line(list, *sec[1], 0, 12.5f, 40, 12.5f);
    expect_line(list, *sec[2], 0, 20, 40, 20);
    for (const auto* item : sec)
        EXPECT_EQ(item->width, 5);
    std::vector<std::string> texts;
    std::vector<RunPoint> anchors;
    for (const auto& item : list.items)
        if (item.op == DrawOp::text) {
            texts.push_back(list.texts[item.text]);
            anchors.push_back({list.coords[item.first], list.coords[item.first + 1]});
        }
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0], "  Sctn. 1,   X= 0");
    EXPECT_EQ(texts[1], "  Sctn. 2,   X= 12.5");
    EXPECT_EQ(texts[2], "  Sctn. 3,   X= 20");
    // Each text starts at the right end of its line.
    EXPECT_FLOAT_EQ(anchors[1].x, 40.0f);
    EXPECT_FLOAT_EQ(anchors[1].y, 12.5f);
}

TEST(PlanAssembly, every_mesh_row_and_column_is_a_thin_black_line)
{
    auto p = plan_project(3, 3);
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    const DisplayList& list = p->pictures.section.picture;
    const auto mesh = lines_of(list, black);
    ASSERT_EQ(mesh.size(), 6u); // 3 rows and 3 columns
    expect_line(list, *mesh[0], 0, 0, 40, 0);
    expect_line(list, *mesh[1], 0, 10, 40, 10);
    expect_line(list, *mesh[2], 0, 20, 40, 20);
    expect_line(list, *mesh[3], 0, 0, 0, 20);
    expect_line(list, *mesh[4], 20, 0, 20, 20);
    expect_line(list, *mesh[5], 40, 0, 40, 20);
    for (const auto* item : mesh)
        EXPECT_EQ(item->width, 1);
}

TEST(PlanAssembly, mesh_line_count_is_rows_plus_columns)
{
    auto p = plan_project(4, 5);
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    EXPECT_EQ(lines_of(p->pictures.section.picture, black).size(), 9u);
}

TEST(PlanAssembly, single_row_has_no_height_and_takes_the_width_branch)
{
    auto p = plan_project(1, 3);
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    // x_min = x_max = 0: aspect 0, so the width fills the area with margin
    // 0.17 and the window is centred on X 0, 0.75 of its width high.
    const double w = 40.0 / 0.66;
    EXPECT_NEAR(p->view.win_left, -0.17 * w, 1e-3);
    EXPECT_NEAR(p->view.win_right, 40 + 0.17 * w, 1e-3);
    EXPECT_NEAR(p->view.win_bottom, -0.75 * w / 2, 1e-3);
    EXPECT_NEAR(p->view.win_top, 0.75 * w / 2, 1e-3);
    const DisplayList& list = p->pictures.section.picture;
    const auto mesh = lines_of(list, black);
    ASSERT_EQ(mesh.size(), 4u); // one row and three columns of no length
    expect_line(list, *mesh[0], 0, 0, 40, 0);
    expect_line(list, *mesh[2], 20, 0, 20, 0);
}

TEST(PlanAssembly, captions_title_and_hidden_section_controls)
{
    auto p = plan_project();
    p->pictures.section.scroll.visible = true;
    p->pictures.section.scroll_label_visible = true;
    p->pictures.section.pointer_labels_visible = true;
    p->view_mode = 1; // the command sets 6; the routine leaves it alone
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    const PictureWindow& w = p->pictures.section;
    EXPECT_EQ(w.caption, "PLAN VIEW");
    EXPECT_FALSE(w.scroll.visible);
    EXPECT_FALSE(w.scroll_label_visible);
    EXPECT_FALSE(w.pointer_labels_visible);
    EXPECT_EQ(p->view_mode, 1);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File D:\\SLOPE.TOB         PLAN, COLUMN ASSEMBLY");
    ASSERT_EQ(port.views.size(), 1u);
    EXPECT_EQ(port.views[0].second, "PLAN VIEW");
    // A later activation of the window keeps the plan's title.
    p->main_caption.clear();
    picture_activated(*p);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File D:\\SLOPE.TOB         PLAN, COLUMN ASSEMBLY");
}

TEST(PlanAssembly, starts_a_fresh_picture)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_assembly(*p, port);
    const std::size_t first = p->pictures.section.picture.items.size();
    draw_plan_assembly(*p, port);
    EXPECT_EQ(p->pictures.section.picture.items.size(), first);
    EXPECT_EQ(p->pictures.section.picture.items.front().op, DrawOp::cls);
}

} // namespace
} // namespace tobel::test
