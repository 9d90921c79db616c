// Menu items chosen by their control names, as the desktop program and the
// scripts choose them: what each makes available, what it refuses, and the
// long-run guard.
#include <gtest/gtest.h>

#include <functional>

#include "commands/commands.h"
#include "commands/menu_command.h"
#include "project/numtext.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

// Records what the commands ask of the program around them.
struct RecordingHost : MenuHost {
    std::vector<int> reports;
    std::vector<ReportContext> contexts;
    int prints = 0, copies = 0, helps = 0, ends = 0;
    void report(Project&, Port&, int destination, const ReportContext& ctx) override
    {
        reports.push_back(destination);
        contexts.push_back(ctx);
    }
    void print_view(Project&, Port&) override { ++prints; }
    void copy_picture(Project&, Port&) override { ++copies; }
    void show_help(Project&, Port&) override { ++helps; }
    void end_program(Project&) override { ++ends; }
};

struct Shell {
    Project p;
    ScriptedPort port;
    DialogSession s;
    RecordingHost host;
    MenuContext ctx{s, &host, false};

    Shell()
    {
        main_load(p);
        s.today = "11/24/26";
    }
    MenuResult run(const char* control, int index = 0)
    {
        return run_menu_command(p, port, ctx, control, index);
    }
    void open(const std::string& example)
    {
        port.files.push_back(test::example_path(example));
        ASSERT_EQ(run("File_open"), MenuResult::done);
        ASSERT_EQ(p.data_file_path, test::example_path(example));
    }
};

TEST(menu_command, a_new_program_refuses_the_project_items_and_takes_the_file_items)
{
    Shell w;
    // Load hides the edit group and the Solve menu: nothing to edit or solve yet.
    EXPECT_EQ(w.run("Edit_control_parameters"), MenuResult::refused);
    EXPECT_EQ(w.run("Graphics_plan"), MenuResult::refused);
    EXPECT_EQ(w.run("Solve_single_trial"), MenuResult::refused);
    EXPECT_FALSE(dialog_open(w.s));
    // The item itself is visible, but its submenu "ellipsoid" is hidden.
    EXPECT_TRUE(w.p.menus.at("Edit_Sliding_surface_ellipsoid").visible);
    EXPECT_EQ(w.run("Edit_Sliding_surface_ellipsoid"), MenuResult::refused);
    EXPECT_TRUE(menu_item_available(w.p, "File_open"));
    EXPECT_EQ(w.run("no_such_item"), MenuResult::unknown);
}

TEST(menu_command, items_with_no_action_attached_do_nothing)
{
    Shell w;
    EXPECT_EQ(w.run("print_datafile"), MenuResult::no_action);
    EXPECT_EQ(w.run("Graphics_ExportDfx"), MenuResult::no_action);
    EXPECT_EQ(w.run("TODfile"), MenuResult::no_action); // a submenu
    EXPECT_TRUE(w.port.boxes.empty());
}

TEST(menu_command, a_disabled_item_is_refused)
{
    Shell w;
    w.p.menus["Help_About"].enabled = false;
    EXPECT_EQ(w.run("Help_About"), MenuResult::refused);
    w.p.menus["Help_About"].enabled = true;
    EXPECT_EQ(w.run("Help_About"), MenuResult::done);
    ASSERT_EQ(w.port.boxes.size(), 1u);
    EXPECT_EQ(w.port.boxes[0].title, "TOBEL_3");
    EXPECT_EQ(w.port.boxes[0].text.rfind("TOBEL-3\n                   Version 1, compiled ", 0), 0u);
}

TEST(menu_command, submenus_and_arrays_have_their_parents)
{
    Shell w;
    EXPECT_EQ(menu_parent(w.p, "TODfile_Open"), "TODfile");
    EXPECT_EQ(menu_parent(w.p, "TODfile"), "File");
    EXPECT_EQ(menu_parent(w.p, "File"), "");
    EXPECT_EQ(menu_parent(w.p, "Solve_grid_search_comp"), "composite");
    EXPECT_EQ(menu_parent(w.p, "composite"), "Edit_Sliding_surface");
    EXPECT_EQ(menu_parent(w.p, "FileName(3)"), "RecentFiles");
    EXPECT_EQ(menu_parent(w.p, "grd_layer1(0)"), "Export_Graphics_Isometry");
    EXPECT_EQ(menu_parent(w.p, "Export_Graphics_Isometry"), "Graphics_ExportGRD");
    EXPECT_EQ(menu_item_name("FileName", 2), "FileName(2)");
    EXPECT_EQ(menu_item_name("File_open", 2), "File_open");
}

TEST(menu_command, new_opens_control_parameters_in_the_wizard_with_the_empty_caption)
{
    Shell w;
    ASSERT_EQ(w.run("file_new"), MenuResult::done);
    EXPECT_EQ(dialog_caption(w.s), "Control Parameters");
    EXPECT_EQ(w.p.form_mode, 2);
    // "TOBEL_3" and ten blanks, "File " and the empty path.
    EXPECT_EQ(w.p.main_caption, "TOBEL_3          File ");
}

TEST(menu_command, open_makes_the_project_menus_visible_and_keeps_solve_hidden)
{
    Shell w;
    w.open("slope3d-layers-piezo-force.tob");
    EXPECT_EQ(w.p.main_caption,
              "TOBEL_3          File " + test::example_path("slope3d-layers-piezo-force.tob"));
    for (const char* c : {"Edit_control_parameters", "ellipsoid", "Graphics_plan", "Graphics_Lateral_Section",
                          "xxray", "Graphics_Isometry"})
        EXPECT_TRUE(menu_item_available(w.p, c)) << c;
    // No surface confirmed yet.
    EXPECT_FALSE(w.p.menus.at("Solve").visible);
    EXPECT_EQ(w.run("Solve_single_trial"), MenuResult::refused);
    EXPECT_EQ(w.p.dirty_flag, -1);
}

TEST(menu_command, a_two_dimensional_project_hides_the_lateral_views)
{
    Shell w;
    w.open("slope2d-homogeneous.tob");
    EXPECT_EQ(w.run("Graphics_Lateral_Section"), MenuResult::refused);
    EXPECT_EQ(w.run("xxray"), MenuResult::refused);
    EXPECT_EQ(w.run("Export_Graphics_Lateral_Sections"), MenuResult::refused);
    EXPECT_EQ(w.run("Graphics_Longitudinal_Section"), MenuResult::done);
    EXPECT_EQ(w.p.pictures.section.caption, "LONGITUDINAL SECTION");
    EXPECT_EQ(w.p.view_mode, 1);
}

TEST(menu_command, the_ellipsoid_item_opens_its_form_and_its_continue_shows_solve)
{
    Shell w;
    w.open("slope2d-homogeneous.tob");
    ASSERT_EQ(w.run("Edit_Sliding_surface_ellipsoid"), MenuResult::done);
    EXPECT_EQ(dialog_caption(w.s), "Ellipsoidal Sliding Surface");
    EXPECT_EQ(w.p.pictures.search.caption, "ELLIPSOIDAL SURFACE");
    dialog_continue(w.p, w.port, w.s);
    EXPECT_TRUE(w.p.menus.at("Solve").visible);
    EXPECT_TRUE(menu_item_available(w.p, "Solve_single_trial"));
    EXPECT_FALSE(menu_item_available(w.p, "gridsearchsolv"));
    // One row: the rotation angle stays hidden after a single ellipsoid.
    EXPECT_FALSE(menu_item_available(w.p, "Rotation_angle"));
}

TEST(menu_command, solve_single_trial_gives_the_listed_bishop_factor)
{
    Shell w;
    w.open("slope2d-homogeneous.tob");
    w.run("Edit_Sliding_surface_ellipsoid");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(w.run("Solve_single_trial"), MenuResult::done);
    // examples/README.md lists 1.27 for Bishop; an independent slice
    // calculation of the same circle gives 1.2687.
    EXPECT_EQ(format(w.p.factor_of_safety, "####0.00"), "1.27");
    EXPECT_FALSE(w.ctx.running);
    // A single trial without rotation or toe water keeps Solve available.
    EXPECT_TRUE(menu_item_available(w.p, "Solve_single_trial"));
    EXPECT_EQ(w.p.report_kind, 1);
}

// A port whose yield stands for the interface: a menu command chosen while
// the solver gives way.
struct ReenteringPort : ScriptedPort {
    std::function<void()> on_yield;
    bool yield() override
    {
        if (on_yield) {
            on_yield();
            on_yield = nullptr;
        }
        return ScriptedPort::yield();
    }
};

TEST(menu_command, a_second_command_during_a_solve_is_refused)
{
    Project p;
    main_load(p);
    ReenteringPort port;
    DialogSession s;
    MenuContext ctx{s, nullptr, false};
    port.files.push_back(test::example_path("slope2d-homogeneous.tob"));
    run_menu_command(p, port, ctx, "File_open");
    run_menu_command(p, port, ctx, "Edit_Sliding_surface_ellipsoid");
    dialog_continue(p, port, s);
    MenuResult during = MenuResult::done;
    std::string path_during;
    port.on_yield = [&] {
        port.files.push_back(test::example_path("slope3d-layers-piezo-force.tob"));
        during = run_menu_command(p, port, ctx, "File_open");
        path_during = p.data_file_path;
    };
    run_menu_command(p, port, ctx, "Solve_single_trial");
    EXPECT_EQ(during, MenuResult::busy);
    EXPECT_EQ(path_during, test::example_path("slope2d-homogeneous.tob"));
    EXPECT_EQ(format(p.factor_of_safety, "####0.00"), "1.27");
    // Once the solve has ended commands run again.
    EXPECT_EQ(run_menu_command(p, port, ctx, "grid"), MenuResult::done);
}

TEST(menu_command, the_method_labels_swap_with_the_top_one)
{
    Shell w;
    // Labels in order: Bishop, Janbu, Spencer, Morgenstern-Price. Label 3
    // (Spencer) goes to the top, Bishop takes its place.
    EXPECT_EQ(w.run("meth", 3), MenuResult::done);
    EXPECT_EQ(w.p.solution_method, 3);
    EXPECT_EQ(w.p.method_labels[3], "BISHOP'S SIMPLIFIED METHOD");
    // Clicking it again brings Bishop back on top.
    w.run("meth3");
    EXPECT_EQ(w.p.solution_method, 1);
    EXPECT_EQ(w.run("meth", 1), MenuResult::no_action); // the top label does nothing
}

TEST(menu_command, the_second_recent_item_of_a_list_of_two_selects_the_empty_entry)
{
    Shell w;
    w.p.recent_count = 2;
    w.p.recent_file[1] = test::example_path("slope2d-homogeneous.tob");
    w.p.recent_file[2] = test::example_path("slope2d-general.tob");
    refresh_recent_menu(w.p);
    // Item 0 is captioned with the newest file, recent_file(2).
    EXPECT_EQ(w.p.menus.at("FileName(0)").caption, " 1 " + test::example_path("slope2d-general.tob"));
    EXPECT_FALSE(w.p.menus.at("FileName(2)").visible);
    EXPECT_EQ(w.run("FileName", 2), MenuResult::refused);
    // Item 1 takes recent_file(4 - 1) = recent_file(3), which is empty: the
    // read fails after the project was cleared.
    ASSERT_EQ(w.run("FileName", 1), MenuResult::done);
    EXPECT_EQ(w.p.data_file_path, "");
    ASSERT_FALSE(w.port.boxes.empty());
    EXPECT_EQ(w.port.boxes.back().text.rfind("Error #", 0), 0u);
    EXPECT_EQ(w.port.boxes.back().icon, Icon::critical);
}

TEST(menu_command, graphics_menu_opening_lists_the_stack_and_checks_the_item_used)
{
    Shell w;
    w.open("slope3d-layers-piezo-force.tob");
    ASSERT_EQ(w.run("Graphics"), MenuResult::done);
    // Two layers and one piezometric surface, no sliding surface yet.
    EXPECT_EQ(w.p.menus.at("Graphics_Isometry_Layer(0)").caption, "Layer 1");
    EXPECT_EQ(w.p.menus.at("Graphics_Isometry_Layer(1)").caption, "Ground Surface");
    EXPECT_EQ(w.p.menus.at("Graphics_Isometry_Layer(2)").caption, "Piezo Surface 1");
    EXPECT_EQ(w.p.menus.items.count("Graphics_Isometry_Layer(3)"), 0u);
    ASSERT_EQ(w.run("Graphics_Isometry_Layer", 2), MenuResult::done);
    EXPECT_EQ(w.p.view_mode, 5);
    EXPECT_EQ(w.p.view.iso_layer, 3);
    w.run("Graphics");
    EXPECT_TRUE(w.p.menus.at("Graphics_Isometry_Layer(2)").checked);
    EXPECT_FALSE(w.p.menus.at("Graphics_Isometry_Layer(0)").checked);
}

TEST(menu_command, the_grid_item_toggles_its_own_check_mark)
{
    Shell w;
    EXPECT_FALSE(w.p.menus.at("grid").checked);
    w.run("grid");
    EXPECT_TRUE(w.p.menus.at("grid").checked);
    w.run("grid");
    EXPECT_FALSE(w.p.menus.at("grid").checked);
}

TEST(menu_command, exit_of_a_new_program_asks_to_exit_and_ends_on_ok)
{
    Shell w;
    w.port.answers = {Answer::cancel};
    w.run("File_exit");
    ASSERT_EQ(w.port.boxes.size(), 1u);
    EXPECT_EQ(w.port.boxes[0].text, "Do you wish to exit TOBEL?");
    EXPECT_EQ(w.host.ends, 0);
    w.port.answers = {Answer::ok};
    w.run("File_exit");
    EXPECT_EQ(w.host.ends, 1);
}

TEST(menu_command, results_items_go_to_the_program_with_the_kind_of_the_last_solve)
{
    Shell w;
    w.open("slope2d-homogeneous.tob");
    w.run("preview_report");
    w.run("Edit_Sliding_surface_ellipsoid");
    dialog_continue(w.p, w.port, w.s);
    w.run("Solve_single_trial");
    w.run("print_report");
    ASSERT_EQ(w.host.reports, (std::vector<int>{0, 1}));
    ASSERT_EQ(w.host.contexts.size(), 2u);
    EXPECT_FALSE(w.host.contexts[0].solution_window); // nothing solved yet
    EXPECT_TRUE(w.host.contexts[1].solution_window);
    EXPECT_EQ(w.host.contexts[1].solve, ReportSolve::single_trial);
    // Opening another file closes the solution window.
    w.open("slope2d-general.tob");
    w.run("preview_report");
    EXPECT_FALSE(w.host.contexts[2].solution_window);
    w.run("copygraphic");
    w.run("print_this");
    w.run("help");
    EXPECT_EQ(w.host.copies, 1);
    EXPECT_EQ(w.host.prints, 1);
    EXPECT_EQ(w.host.helps, 1);
}

TEST(menu_command, open_closes_the_old_windows_but_a_cancelled_open_keeps_them)
{
    Shell w;
    w.open("slope2d-homogeneous.tob");
    w.run("Graphics_plan");
    ASSERT_TRUE(w.p.pictures.section.exists);
    ASSERT_FALSE(w.p.pictures.section.picture.empty());
    // The save prompt is answered No, the dialog is cancelled.
    w.port.answers = {Answer::no};
    w.port.files.push_back(std::nullopt);
    w.run("File_open");
    EXPECT_TRUE(w.p.pictures.section.exists);
    EXPECT_EQ(w.p.pictures.section.caption, "PLAN VIEW");
    // A file chosen: the plan goes with the old project.
    w.port.answers = {Answer::no};
    w.open("slope3d-layers-piezo-force.tob");
    EXPECT_FALSE(w.p.pictures.section.exists);
    EXPECT_TRUE(w.p.pictures.section.picture.empty());
}

} // namespace
} // namespace tobel
