// The Graphics menu and the pictures that follow a load or a surface, on a
// port that takes pictures and on one that does not.
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/graphics_commands.h"
#include "commands/open_project.h"
#include "graphics/picture_hooks.h"
#include "graphics/surface_view.h"
#include "graphics/xray.h"
#include "project/defaults.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

// A port that takes pictures.
class PicturePort : public ScriptedPort {
  public:
    DrawHooks* draw_hooks() override { return &hooks; }
    PictureHooks hooks{*this};
};

Project opened(Port& port, const char* name = "slope3d-layers-piezo-force.tob")
{
    Project p;
    main_load(p);
    p.data_file_path = test::example_path(name);
    read_data_file(p, p.data_file_path, port);
    return p;
}

TEST(graphics_commands, plan_shows_the_column_assembly_in_view_mode_6)
{
    PicturePort port;
    Project p = opened(port);
    graphics_plan(p, port);
    EXPECT_EQ(p.view_mode, 6);
    EXPECT_TRUE(p.pictures.section.exists);
    EXPECT_EQ(p.pictures.section.caption, "PLAN VIEW");
    EXPECT_EQ(p.main_caption, "TOBEL_3          File " + p.data_file_path + "         PLAN, COLUMN ASSEMBLY");
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().first, 6);
}

TEST(graphics_commands, longitudinal_section_starts_at_row_1_and_the_scroll_bar_moves_it)
{
    PicturePort port;
    Project p = opened(port);
    p.view_row = 7;
    p.keep_window = -1;
    graphics_longitudinal_section(p, port);
    EXPECT_EQ(p.view_row, 1);
    EXPECT_EQ(p.keep_window, 0);
    EXPECT_EQ(p.view_mode, 1);
    EXPECT_EQ(p.pictures.section.caption, "LONGITUDINAL SECTION");
    // The example's mesh has 41 rows from X 0 to 100: row 5 lies at X 10.
    EXPECT_TRUE(p.pictures.section.scroll.visible);
    EXPECT_EQ(p.pictures.section.scroll.max, 41);
    graphics_scroll_to(p, port, 5);
    EXPECT_EQ(p.view_row, 5);
    EXPECT_EQ(p.pictures.section.scroll_label, "X=10.00");
}

TEST(graphics_commands, lateral_section_starts_at_column_1)
{
    PicturePort port;
    Project p = opened(port);
    p.view_col = 9;
    graphics_lateral_section(p, port);
    EXPECT_EQ(p.view_col, 1);
    EXPECT_EQ(p.view_mode, 2);
    EXPECT_EQ(p.pictures.section.caption, "LATERAL SECTION");
    EXPECT_EQ(p.main_caption, "TOBEL_3          File " + p.data_file_path + "         LATERAL CROSS-SECTION");
}

TEST(graphics_commands, xray_draws_every_row_and_stops_its_timer)
{
    PicturePort port;
    Project p = opened(port);
    graphics_xray(p, port);
    EXPECT_EQ(p.pictures.xray.caption, "X-RAY");
    EXPECT_TRUE(p.pictures.xray.exists);
    EXPECT_TRUE(p.pictures.xray_state.timer_on);
    EXPECT_EQ(p.pictures.xray_state.xray_row, 41);
    finish_xray(p);
    EXPECT_FALSE(p.pictures.xray_state.timer_on);
    EXPECT_EQ(p.pictures.xray_state.xray_row, 0);
    EXPECT_FALSE(p.pictures.xray_state.stop_visible);
    EXPECT_FALSE(p.pictures.xray_state.continue_visible);
}

TEST(graphics_commands, a_loaded_3d_project_shows_the_isometry_of_its_ground)
{
    PicturePort port;
    Project p = opened(port);
    show_surface_view(p, port, p.num_layers);
    EXPECT_EQ(p.view_mode, 5);
    EXPECT_EQ(p.pictures.isometry.caption, "TOP SURFACE OF LAYER 2");
    EXPECT_FALSE(p.pictures.isometry.picture.empty());
}

TEST(graphics_commands, a_2d_project_shows_its_longitudinal_section_instead)
{
    PicturePort port;
    Project p = opened(port, "slope2d-homogeneous.tob");
    show_surface_view(p, port, p.num_layers, "COMPOSITE GRID-SEARCH");
    EXPECT_EQ(p.view_mode, 1);
    EXPECT_EQ(p.pictures.section.caption, "COMPOSITE GRID-SEARCH");
    EXPECT_FALSE(p.pictures.section.scroll.visible);
}

TEST(graphics_commands, a_port_without_pictures_is_only_told_of_the_view)
{
    ScriptedPort port;
    Project p = opened(port);
    port.views.clear();
    show_surface_view(p, port, p.num_layers);
    ASSERT_EQ(port.views.size(), 1u);
    EXPECT_EQ(port.views[0].first, 5);
    EXPECT_EQ(port.views[0].second, "ISOMETRIC VIEW");
    EXPECT_TRUE(p.pictures.isometry.picture.empty());
    EXPECT_FALSE(p.pictures.isometry.exists);
}

} // namespace
} // namespace tobel
