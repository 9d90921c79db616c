// Every shipped example reads, writes back to the same bytes and solves.
#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/ellipsoid_form.h"
#include "commands/commands.h"
#include "project/data_file.h"
#include "commands/menu_model.h"
#include "commands/surface_commands.h"
#include "solver/bishop_janbu.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

std::vector<std::string> example_files()
{
    std::vector<std::string> out;
    for (const auto& e : std::filesystem::directory_iterator(std::string(TOBEL_SOURCE_DIR) + "/examples"))
        if (e.path().extension() == ".tob") out.push_back(e.path().string());
    std::sort(out.begin(), out.end());
    return out;
}

// The sliding surface each example is made for.
SurfaceCommand surface_of(const std::string& path)
{
    if (path.find("wedge") != std::string::npos) return SurfaceCommand::wedge;
    if (path.find("composite") != std::string::npos) return SurfaceCommand::composite;
    if (path.find("general") != std::string::npos) return SurfaceCommand::general;
    return SurfaceCommand::ellipsoid;
}

Project opened(const std::string& path, test::ScriptedPort& port)
{
    Project p;
    main_load(p);
    p.data_file_path = path;
    p.open_recent_pending = -1;
    file_open(p, port);
    return p;
}

TEST(examples, there_are_at_least_two)
{
    EXPECT_GE(example_files().size(), 2u);
}

TEST(examples, each_written_back_gives_the_same_bytes)
{
    test::ScratchDir dir;
    for (const auto& path : example_files()) {
        test::ScriptedPort port;
        Project p = opened(path, port);
        ASSERT_TRUE(port.boxes.empty()) << path << ": " << port.boxes.front().text;
        const std::string copy = dir.file("copy.tob");
        write_data_file(p, copy);
        EXPECT_EQ(test::read_bytes(copy), test::read_bytes(path)) << path;
    }
}

TEST(examples, each_solves_by_every_method_with_a_sensible_factor)
{
    for (const auto& path : example_files()) {
        for (int method : {1, 2, 3, 4}) {
            test::ScriptedPort port;
            Project p = opened(path, port);
            ASSERT_TRUE(confirm_surface(p, port, surface_of(path))) << path;
            p.solution_method = int16(method);
            ASSERT_TRUE(solve_single_trial(p, port));
            EXPECT_GT(p.factor_of_safety, 0.5f) << path << " method " << method;
            EXPECT_LT(p.factor_of_safety, 10.0f) << path << " method " << method;
            // The slides of the examples have 40 columns at least (2-D) and
            // cover thousands of square metres in plan (3-D), whatever the mesh.
            if (p.num_rows == 1)
                EXPECT_GE(p.active_columns, 40) << path;
            else
                EXPECT_GE(double(p.active_columns) * p.col_spacing * p.row_spacing, 2000.0) << path;
        }
    }
}

TEST(examples, rotation_item_stays_hidden_in_two_dimensions_after_single_ellipsoid)
{
    test::ScriptedPort port;
    Project p = opened(test::example_path("slope2d-homogeneous.tob"), port);
    continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
    EXPECT_TRUE(p.menus.at("Solve").visible);
    EXPECT_TRUE(p.menus.at("Solve_single_trial").visible);
    EXPECT_FALSE(p.menus.at("gridsearchsolv").visible);
    EXPECT_FALSE(p.menus.at("Rotation_angle").visible);

    Project q = opened(test::example_path("slope3d-layers-piezo-force.tob"), port);
    continue_ellipsoid_form(q, open_ellipsoid_form(q), port);
    EXPECT_TRUE(q.menus.at("Rotation_angle").visible);
}

TEST(examples, janbu_is_below_bishop_on_the_2d_circle)
{
    double f[3] = {};
    for (int method : {1, 2}) {
        test::ScriptedPort port;
        Project p = opened(test::example_path("slope2d-homogeneous.tob"), port);
        continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
        p.solution_method = int16(method);
        solve_single_trial(p, port);
        f[method] = p.factor_of_safety;
    }
    EXPECT_LT(f[2], f[1]);
}

TEST(solve_command, rotated_trial_hides_solve_menu_and_clears_angle)
{
    test::ScriptedPort port;
    Project p = opened(test::example_path("slope3d-layers-piezo-force.tob"), port);
    continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
    p.rotation_angle = 10;
    solve_single_trial(p, port);
    EXPECT_EQ(p.rotation_angle, 0.0f);
    EXPECT_FALSE(p.menus.at("Solve").visible);
}

TEST(solve_command, shows_results_then_messages_then_printout)
{
    test::ScriptedPort port;
    Project p = opened(test::example_path("slope2d-homogeneous.tob"), port);
    continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
    solve_single_trial(p, port);
    ASSERT_GE(port.texts.size(), 2u);
    EXPECT_EQ(port.texts.front().caption, "RESULTS");
    EXPECT_EQ(port.texts.front().lines.at(0), "  Bishop's Method");
    if (p.message_count > 0) {
        EXPECT_EQ(port.texts.at(1).caption,
                  " " + std::to_string(p.message_count) + " warnings and errors issued for this trial surface");
    }
}

} // namespace
} // namespace tobel
