// The sliding surface commands of the ellipsoid family bring up the search
// window with the caption of the command before their dialog; the others
// leave it alone.
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/open_project.h"
#include "commands/surface_commands.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

Project opened(Port& port, const char* name = "slope2d-homogeneous.tob")
{
    Project p;
    main_load(p);
    p.data_file_path = test::example_path(name);
    read_data_file(p, p.data_file_path, port);
    return p;
}

TEST(surface_captions, single_ellipsoid_shows_ellipsoidal_surface)
{
    ScriptedPort port;
    Project p = opened(port);
    port.views.clear();
    p.keep_window = -1;
    confirm_surface(p, port, SurfaceCommand::ellipsoid);
    EXPECT_EQ(p.pictures.search.caption, "ELLIPSOIDAL SURFACE");
    EXPECT_TRUE(p.pictures.search.exists);
    EXPECT_EQ(p.keep_window, 0);
    ASSERT_FALSE(port.views.empty());
    // The set-up of an ellipsoid is view mode 3.
    EXPECT_EQ(port.views.front(), (std::pair<int, std::string>(3, "ELLIPSOIDAL SURFACE")));
}

TEST(surface_captions, composite_shows_composite_surface)
{
    ScriptedPort port;
    Project p = opened(port);
    port.views.clear();
    confirm_surface(p, port, SurfaceCommand::composite);
    EXPECT_EQ(p.pictures.search.caption, "COMPOSITE SURFACE");
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.front(), (std::pair<int, std::string>(3, "COMPOSITE SURFACE")));
}

TEST(surface_captions, grid_and_auto_search_set_ups_show_ellipsoidal_grid_search)
{
    for (const bool grid : {true, false})
        for (const bool composite : {false, true}) {
            ScriptedPort port;
            Project p = opened(port);
            port.views.clear();
            confirm_search_setup(p, port, grid, composite);
            EXPECT_EQ(p.pictures.search.caption, "ELLIPSOIDAL GRID-SEARCH") << grid << composite;
            ASSERT_FALSE(port.views.empty());
            // Grid search set-up is view mode 7, auto search 8.
            EXPECT_EQ(port.views.front(),
                      (std::pair<int, std::string>(grid ? 7 : 8, "ELLIPSOIDAL GRID-SEARCH")));
        }
}

TEST(surface_captions, wedge_and_general_surfaces_leave_the_search_window_alone)
{
    for (const SurfaceCommand which : {SurfaceCommand::wedge, SurfaceCommand::general}) {
        ScriptedPort port;
        Project p = opened(port);
        confirm_surface(p, port, which);
        EXPECT_FALSE(p.pictures.search.exists);
        EXPECT_EQ(p.pictures.search.caption, "");
    }
    EXPECT_STREQ(setup_window_caption(SurfaceCommand::wedge), "");
    EXPECT_STREQ(setup_window_caption(SurfaceCommand::general_wedge), "");
}

} // namespace
} // namespace tobel
