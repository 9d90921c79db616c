// The plan of active columns: its frame, its legend band, the columns as
// they are solved and the click that shows one column.
#include <gtest/gtest.h>

#include <algorithm>

#include "graphics/drawing.h"
#include "graphics/plan_active.h"
#include "graphics_support.h"
#include "project/settings.h"
#include "solver/solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

// Three rows over x 0..20 (spacing 10), five columns over y 0..40 (spacing
// 10); layers "Sand" and "Clay" and the discontinuity "Joint"; sections at
// x 5 and 15.
static std::unique_ptr<Project> plan_project(int rows = 3)
{
    SolverMesh m;
    m.rows = rows;
    m.cols = 5;
    m.x_max = rows == 1 ? 0 : 20;
    m.y_max = 40;
    m.layers = 2;
    m.discs = 1;
    auto p = make_solver_project(m);
    default_colours(*p);
    p->mat_name[1] = "Sand";
    p->mat_name[2] = "Clay";
    p->mat_name[3] = "Joint";
    p->num_sections = 2;
    p->sections.x[1] = 5;
    p->sections.x[2] = 15;
    p->data_file_path = "C:\\SLOPE.TOB";
    p->view.win_left = 1;
    p->view.win_bottom = 2;
    p->view.win_right = 3;
    p->view.win_top = 4;
    return p;
}

// The fit on 800 by 600 with the band: area 616 by 600 from 184, extent 40
// by 20, margin 0.11. The extent is flatter than the area, so
// s = (40 / 0.78) / 616 = 0.08325008, w = 51.282051, h = 49.950050;
// left = -184 s - 0.11 w = -20.959041, right = left + 184 s + w = 45.641026,
// bottom = -(h - 20) / 2 = -14.975025, top = bottom + h = 34.975025.
TEST(plan_active, frame_is_fitted_beside_the_legend_band_and_the_section_window_stays)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_active(*p, port);
    const DisplayList& list = p->pictures.plan_active.picture;
    const auto scales = boxes_of(list, DrawOp::scale);
    ASSERT_FALSE(scales.empty());
    EXPECT_NEAR(scales.back().x1, -20.959041, 1e-4);
    EXPECT_NEAR(scales.back().y1, 34.975025, 1e-4);
    EXPECT_NEAR(scales.back().x2, 45.641026, 1e-4);
    EXPECT_NEAR(scales.back().y2, -14.975025, 1e-4);
    // The four edges go back; pick_unit is the fit's: 66.600067 / 100.
    EXPECT_EQ(p->view.win_left, 1.0f);
    EXPECT_EQ(p->view.win_bottom, 2.0f);
    EXPECT_EQ(p->view.win_right, 3.0f);
    EXPECT_EQ(p->view.win_top, 4.0f);
    EXPECT_NEAR(p->view.pick_unit, 0.66600067, 1e-5);
    EXPECT_TRUE(p->pictures.plan_active.exists);
    EXPECT_EQ(p->pictures.plan_active.caption, "PLAN OF ACTIVE COLUMNS");
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\SLOPE.TOB         PLAN OF ACTIVE COLUMNS");
    ASSERT_EQ(port.views.size(), 1u);
    EXPECT_EQ(port.views[0].second, "PLAN OF ACTIVE COLUMNS");
}

TEST(plan_active, outline_and_sections_with_their_x)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_active(*p, port);
    const DisplayList& list = p->pictures.plan_active.picture;
    std::vector<Segment> outline, sections;
    for (const auto& g : segments_of(list))
        (g.colour == black ? outline : sections).push_back(g);
    ASSERT_EQ(outline.size(), 4u);
    // Rows 1 and 3 at x 0 and 20 across y 0..40; columns 1 and 5 at y 0 and 40.
    const float expect[4][4] = {{0, 0, 40, 0}, {0, 20, 40, 20}, {0, 0, 0, 20}, {40, 0, 40, 20}};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_FLOAT_EQ(outline[k].x1, expect[k][0]);
        EXPECT_FLOAT_EQ(outline[k].y1, expect[k][1]);
        EXPECT_FLOAT_EQ(outline[k].x2, expect[k][2]);
        EXPECT_FLOAT_EQ(outline[k].y2, expect[k][3]);
    }
    ASSERT_EQ(sections.size(), 2u);
    EXPECT_EQ(sections[0].colour, rgb(255, 0, 0));
    EXPECT_FLOAT_EQ(sections[0].y1, 5);
    EXPECT_FLOAT_EQ(sections[1].y2, 15);
    const auto texts = texts_of(list);
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[0].text, "  X= 5");
    EXPECT_FLOAT_EQ(texts[0].x, 40);
    EXPECT_FLOAT_EQ(texts[0].y, 5);
    EXPECT_EQ(texts[1].text, "  X= 15");
}

TEST(plan_active, legend_band_holds_each_material_with_its_colour)
{
    auto p = plan_project();
    p->mat_type[2] = 5; // Clay is water
    ScriptedPort port;
    draw_plan_active(*p, port);
    const DisplayList& list = p->pictures.plan_active.picture;
    const auto boxes = boxes_of(list);
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[0].colour, 46888);    // layer colour 1
    EXPECT_EQ(boxes[1].colour, 16759178); // water: piezo colour 13
    EXPECT_EQ(boxes[2].colour, 53728);    // layer colour 3
    // The band: the left 23 per cent of the window, -20.959041 to -5.641026.
    for (const auto& b : boxes) {
        EXPECT_GE(std::min(b.x1, b.x2), -20.959041 - 1e-4);
        EXPECT_LE(std::max(b.x1, b.x2), -5.641026);
    }
    const auto texts = texts_of(list);
    ASSERT_EQ(texts.size(), 5u);
    EXPECT_EQ(texts[2].text, "Sand");
    EXPECT_EQ(texts[3].text, "Clay");
    EXPECT_EQ(texts[4].text, "Joint");
    EXPECT_LT(texts[2].x, -5.641026);
    EXPECT_GT(texts[2].y, texts[3].y); // from the top down
}

TEST(plan_active, column_box_is_centred_on_its_node_in_the_working_material_colour)
{
    auto p = plan_project();
    ScriptedPort port;
    draw_plan_active(*p, port);
    const std::size_t before = boxes_of(p->pictures.plan_active.picture).size();
    const std::size_t items = p->pictures.plan_active.picture.items.size();
    // Row 2, column 3 is the node (y 20, x 10); half spacings of 5.
    draw_active_column(*p, 2, 3, 1, 1);
    // The box alone is added: the plan's window stands in the picture already.
    EXPECT_EQ(p->pictures.plan_active.picture.items.size(), items + 1);
    // The same node with the discontinuity's material 3 over layer 1.
    draw_active_column(*p, 2, 3, 3, 1);
    const auto boxes = boxes_of(p->pictures.plan_active.picture);
    ASSERT_EQ(boxes.size(), before + 2);
    const Box& b = boxes[before];
    EXPECT_FLOAT_EQ(b.x1, 15);
    EXPECT_FLOAT_EQ(b.y1, 5);
    EXPECT_FLOAT_EQ(b.x2, 25);
    EXPECT_FLOAT_EQ(b.y2, 15);
    EXPECT_EQ(b.colour, 46888);
    EXPECT_EQ(boxes[before + 1].colour, 53728);
    // Drawn in the plan's window, not the section views'.
    const auto scales = boxes_of(p->pictures.plan_active.picture, DrawOp::scale);
    EXPECT_NEAR(scales.back().x1, -20.959041, 1e-4);
}

TEST(plan_active, column_on_a_water_layer_takes_the_water_colour)
{
    auto p = plan_project();
    p->mat_type[2] = 5;
    ScriptedPort port;
    draw_plan_active(*p, port);
    draw_active_column(*p, 1, 1, 2, 2);
    const auto boxes = boxes_of(p->pictures.plan_active.picture);
    EXPECT_EQ(boxes.back().colour, 16759178);
}

TEST(plan_active, two_d_box_is_a_twentieth_of_the_picture_high_each_way)
{
    auto p = plan_project(1);
    ScriptedPort port;
    draw_plan_active(*p, port);
    // Zero extent height: the width branch, h = 49.950050 and the window
    // from -24.975025 to 24.975025; half height 49.950050 / 20 = 2.4975025.
    const auto scales = boxes_of(p->pictures.plan_active.picture, DrawOp::scale);
    EXPECT_NEAR(scales.back().y1, 24.975025, 1e-4);
    draw_active_column(*p, 1, 3, 1, 1);
    const Box b = boxes_of(p->pictures.plan_active.picture).back();
    EXPECT_FLOAT_EQ(b.x1, 15);
    EXPECT_FLOAT_EQ(b.x2, 25);
    EXPECT_NEAR(b.y1, -2.4975025, 1e-5);
    EXPECT_NEAR(b.y2, 2.4975025, 1e-5);
}

TEST(plan_active, click_on_a_column_shows_its_data_beside_the_plan)
{
    auto p = plan_project();
    p->col_material(2, 3) = 1;
    p->col_fos(2, 3) = 1.25f;
    // (20.4, 9.6) is nearest to row CInt(0.96) + 1 = 2, column CInt(2.04) + 1 = 3.
    plan_click(*p, 20.4, 9.6);
    const PictureWindow& w = p->pictures.plan_active;
    EXPECT_TRUE(w.text_visible);
    ASSERT_GT(w.text_lines.size(), 4u);
    EXPECT_EQ(w.text_lines[1], "   SINGLE COLUMN OUTPUT");
    EXPECT_EQ(w.text_lines[2], "   AT X = 9.6  Y = 20.4");
    EXPECT_NE(std::find(w.text_lines.begin(), w.text_lines.end(), "   Material:         Sand"),
              w.text_lines.end());
    EXPECT_NE(std::find(w.text_lines.begin(), w.text_lines.end(), "   Local F. of S.:   1.25"),
              w.text_lines.end());
}

TEST(plan_active, click_off_the_mesh_shows_the_heading_alone)
{
    auto p = plan_project();
    plan_click(*p, 20.4, 9.6);
    // y 60 is column CInt(6) + 1 = 7 of 5.
    plan_click(*p, 60, 9.6);
    const PictureWindow& w = p->pictures.plan_active;
    EXPECT_TRUE(w.text_visible);
    ASSERT_EQ(w.text_lines.size(), 4u);
    EXPECT_EQ(w.text_lines[2], "   AT X = 9.6  Y = 60.0");
}

} // namespace
} // namespace tobel::test
