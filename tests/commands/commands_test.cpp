#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "project/defaults.h"
#include "commands/menu_model.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScratchDir;
using test::ScriptedPort;

Project loaded()
{
    Project p;
    main_load(p);
    return p;
}

TEST(main_window, load_hides_project_menus_and_sets_bishop)
{
    Project p = loaded();
    EXPECT_EQ(p.solution_method, 1);
    for (const char* c : {"composite", "Edit_control_parameters", "ellipsoid", "Graphics_plan", "xxray",
                          "tension_crack", "Rotation_angle", "Edit_GeomOptions", "layersurfaces"})
        EXPECT_FALSE(p.menus.at(c).visible) << c;
    EXPECT_TRUE(p.menus.at("File_open").visible);
    EXPECT_FALSE(p.menus.at("Solve").visible);
    EXPECT_EQ(p.num_rows, 50);  // defaults laid down
    EXPECT_EQ(p.main_caption, "TOBEL-3");
}

TEST(main_window, project_menus_hide_lateral_views_in_two_dimensions)
{
    Project p = loaded();
    p.num_rows = 1;
    show_project_menus(p);
    EXPECT_TRUE(p.menus.at("Graphics_Longitudinal_Section").visible);
    EXPECT_TRUE(p.menus.at("Edit_material_properties").visible);
    for (const char* c : {"Graphics_Lateral_Section", "Graphics_Isometry", "xxray", "Export_Graphics_Lateral_Sections"})
        EXPECT_FALSE(p.menus.at(c).visible) << c;
    p.num_rows = 2;
    show_project_menus(p);
    for (const char* c : {"Graphics_Lateral_Section", "Graphics_Isometry", "xxray", "Export_Graphics_Lateral_Sections"})
        EXPECT_TRUE(p.menus.at(c).visible) << c;
}

TEST(method_box, clicking_a_label_swaps_it_with_the_top_one)
{
    Project p = loaded();
    EXPECT_EQ(p.method_labels[1], "BISHOP'S SIMPLIFIED METHOD");
    click_method_label(p, 3);
    EXPECT_EQ(p.method_labels[1], "SPENCER'S METHOD        ");
    EXPECT_EQ(p.method_labels[3], "BISHOP'S SIMPLIFIED METHOD");
    EXPECT_EQ(p.solution_method, 3);
    click_method_label(p, 2);
    EXPECT_EQ(p.method_labels[1], "JANBU METHOD               ");
    EXPECT_EQ(p.method_labels[2], "SPENCER'S METHOD        ");
    EXPECT_EQ(p.solution_method, 2);
    click_method_label(p, 4);
    EXPECT_EQ(p.solution_method, 4);
    EXPECT_EQ(p.method_labels[4], "JANBU METHOD               ");
}

TEST(exit, new_program_without_project_asks_to_exit)
{
    Project p = loaded();
    ScriptedPort port;
    port.answers = {Answer::ok};
    EXPECT_TRUE(main_query_unload(p, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Do you wish to exit TOBEL?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok_cancel);
    port.answers = {Answer::cancel};
    EXPECT_FALSE(main_query_unload(p, port));
}

TEST(exit, save_prompt_still_appears_after_save_because_dirty_stays)
{
    ScratchDir dir;
    Project p = loaded();
    ScriptedPort port;
    p.dirty_flag = -1;
    p.data_file_path = dir.file("a.tob");
    file_save(p, port);
    EXPECT_TRUE(std::filesystem::exists(p.data_file_path));
    EXPECT_EQ(p.dirty_flag, -1);
    port.answers = {Answer::no};
    EXPECT_TRUE(main_query_unload(p, port));
    ASSERT_FALSE(port.boxes.empty());
    EXPECT_EQ(port.boxes.back().text, "Do you want to save changes to: " + p.data_file_path + "?");
    EXPECT_EQ(port.boxes.back().buttons, Buttons::yes_no_cancel);
}

TEST(exit, stale_save_cancelled_from_new_cancels_next_exit_once)
{
    ScratchDir dir;
    Project p = loaded();
    ScriptedPort port;
    p.dirty_flag = -1;
    // New: Yes to the prompt, then the Save As dialog is cancelled; New goes on regardless.
    port.answers = {Answer::yes};
    port.files = {std::nullopt};
    file_new(p, port);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(p.save_cancelled, -1);
    // Exit with Yes: a successful save, yet the stale flag cancels once and clears.
    p.data_file_path = dir.file("b.tob");
    port.answers = {Answer::yes};
    EXPECT_FALSE(main_query_unload(p, port));
    EXPECT_EQ(p.save_cancelled, 0);
    EXPECT_TRUE(std::filesystem::exists(dir.file("b.tob")));
    port.answers = {Answer::yes};
    EXPECT_TRUE(main_query_unload(p, port));
}

TEST(save_prompt, cancel_ends_new_with_nothing_changed)
{
    Project p = loaded();
    ScriptedPort port;
    p.dirty_flag = -1;
    p.data_file_path = "kept.tob";
    p.num_rows = 7;
    port.answers = {Answer::cancel};
    file_new(p, port);
    EXPECT_EQ(p.num_rows, 7);
    EXPECT_EQ(p.data_file_path, "kept.tob");
    EXPECT_EQ(p.form_mode, 0);
}

TEST(file_new, clears_paths_resets_and_sets_caption)
{
    Project p = loaded();
    ScriptedPort port;
    p.data_file_path = "x.tob";
    p.work_drive = "D:";
    p.num_layers = 3;
    file_new(p, port);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(p.data_file_path, "");
    EXPECT_EQ(p.work_drive, "");
    EXPECT_EQ(p.num_layers, 1);
    EXPECT_EQ(p.main_caption, "TOBEL_3          File ");
}

TEST(save, tod_ending_becomes_tob)
{
    ScratchDir dir;
    Project p = loaded();
    ScriptedPort port;
    p.data_file_path = dir.file("old.tod");
    file_save(p, port);
    EXPECT_EQ(p.data_file_path, dir.file("old.TOB"));
    EXPECT_TRUE(std::filesystem::exists(dir.file("old.TOB")));
    EXPECT_EQ(p.main_caption, "TOBEL_3          File " + dir.file("old.TOB"));
}

TEST(save, without_a_file_warns_no_file_loaded)
{
    Project p = loaded();
    ScriptedPort port;
    p.data_file_path.clear();
    file_save(p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "No file loaded.");
    EXPECT_EQ(port.boxes[0].icon, Icon::warning);
}

TEST(save_as, cancel_restores_path_and_remembers_for_exit)
{
    Project p = loaded();
    ScriptedPort port;
    p.data_file_path = "C:\\work\\slope.tod";
    port.files = {std::nullopt};
    file_save_as(p, port);
    EXPECT_EQ(p.data_file_path, "C:\\work\\slope.tod");
    EXPECT_EQ(p.save_cancelled, -1);
    EXPECT_EQ(port.dialog_filters.back(), "TOBEL-3 Files (*.TOB)|*.TOB");
}

TEST(save_as_tod, writes_the_tob_layout_and_never_sets_save_cancelled)
{
    ScratchDir dir;
    Project p = loaded();
    ScriptedPort port;
    port.files = {std::nullopt};
    file_save_as_tod(p, port);
    EXPECT_EQ(p.save_cancelled, 0);
    EXPECT_EQ(port.dialog_filters.back(), "TOBEL Files (*.TOD)|*.TOD");
    port.files = {dir.file("copy.TOD")};
    file_save_as_tod(p, port);
    Project q = loaded();
    q.data_file_path = dir.file("copy.TOD");
    q.open_recent_pending = -1;
    file_open(q, port);
    EXPECT_EQ(q.project_title, "Project Title");
    EXPECT_EQ(q.num_cols, 50);
}

TEST(open, cancel_is_silent_and_leaves_project_untouched)
{
    Project p = loaded();
    ScriptedPort port;
    p.num_rows = 9;
    port.files = {std::nullopt};
    file_open(p, port);
    EXPECT_EQ(p.num_rows, 9);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(port.dialog_filters.back(), "TOBEL-3 Files (*.TOB)|*.TOB");
}

TEST(open, missing_file_reports_runtime_error_box)
{
    Project p = loaded();
    ScriptedPort port;
    port.files = {std::string("/nonexistent/dir/none.tob")};
    file_open(p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text.rfind("Error # 53 occured: File not found", 0), 0u) << port.boxes[0].text;
    EXPECT_NE(port.boxes[0].text.find("none.tob"), std::string::npos);
    EXPECT_EQ(port.boxes[0].icon, Icon::critical);
    EXPECT_EQ(p.dirty_flag, 0);
}

TEST(open, example_sets_caption_dirty_recent_and_menus)
{
    Project p = loaded();
    ScriptedPort port;
    const std::string path = test::example_path("slope2d-homogeneous.tob");
    port.files = {path};
    file_open(p, port);
    ASSERT_TRUE(port.boxes.empty()) << port.boxes[0].text;
    EXPECT_EQ(p.dirty_flag, -1);
    EXPECT_EQ(p.main_caption, "TOBEL_3          File " + path);
    EXPECT_EQ(p.recent_count, 1);
    EXPECT_EQ(p.menus.at("FileName(0)").caption, " 1 " + path);
    EXPECT_EQ(p.view_mode, 5);
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().second, "LONGITUDINAL SECTION");
    EXPECT_TRUE(p.menus.at("ellipsoid").visible);
    EXPECT_FALSE(p.menus.at("Graphics_Isometry").visible);
}

TEST(recent_files, second_item_of_two_selects_empty_entry_and_read_fails_after_clearing)
{
    Project p = loaded();
    ScriptedPort port;
    p.recent_count = 2;
    p.recent_file[1] = "first.tob";
    p.recent_file[2] = "second.tob";
    p.num_layers = 4;
    derive_counts(p);
    file_open_recent(p, port, 1);
    EXPECT_EQ(p.data_file_path, "");  // recent_file(3)
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].icon, Icon::critical);
    EXPECT_EQ(p.num_layers, 1);  // the project was cleared before the read failed
    EXPECT_EQ(p.open_recent_pending, 0);
}

TEST(recent_files, fifth_distinct_file_pushes_out_the_oldest)
{
    Project p = loaded();
    for (const char* f : {"a", "b", "c", "d", "e"}) {
        p.data_file_path = f;
        update_recent_files(p);
    }
    EXPECT_EQ(p.recent_count, 4);
    EXPECT_EQ(p.recent_file[1], "b");
    EXPECT_EQ(p.recent_file[4], "e");
    EXPECT_EQ(p.menus.at("FileName(0)").caption, " 1 e");  // newest is number 1
    EXPECT_EQ(p.menus.at("FileName(3)").caption, " 4 b");
}

TEST(recent_files, a_file_already_listed_keeps_the_order)
{
    Project p = loaded();
    for (const char* f : {"a", "b", "c"}) {
        p.data_file_path = f;
        update_recent_files(p);
    }
    p.data_file_path = "a";
    update_recent_files(p);
    EXPECT_EQ(p.recent_count, 3);
    EXPECT_EQ(p.recent_file[1], "a");
    EXPECT_EQ(p.recent_file[3], "c");
}

} // namespace
} // namespace tobel

namespace tobel {
namespace {

TEST(graphics_menu, one_item_per_surface_with_signed_numbers)
{
    Project p = loaded();
    p.num_layers = 3;
    p.num_piezos = 2;
    derive_counts(p);
    p.surface_defined = 0;
    open_graphics_menu(p, 1);
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(0)").caption, "Layer 1");
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(1)").caption, "Layer 2");
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(2)").caption, "Ground Surface");
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(3)").caption, "Piezo Surface 1");
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(4)").caption, "Piezo Surface 2");
    EXPECT_EQ(p.menus.items.count("Graphics_Isometry_Layer(5)"), 0u);  // no sliding surface yet
    EXPECT_EQ(p.menus.at("grd_layer1(4)").caption, "Piezo Surface 2");
    EXPECT_TRUE(p.menus.at("Graphics_Isometry_Layer(1)").checked);
    EXPECT_FALSE(p.menus.at("Graphics_Isometry_Layer(0)").checked);
    p.surface_defined = -1;
    p.num_piezos = 0;
    derive_counts(p);
    open_graphics_menu(p, -1);
    EXPECT_EQ(p.menus.at("Graphics_Isometry_Layer(3)").caption, "Sliding Surface");
    EXPECT_EQ(p.menus.items.count("Graphics_Isometry_Layer(4)"), 0u);  // stale items of the last opening go
}

TEST(help_about, shows_the_version_line)
{
    Project p = loaded();
    ScriptedPort port;
    help_about(p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].title, "TOBEL_3");
    EXPECT_NE(port.boxes[0].text.find("\n                   Version 1, compiled "), std::string::npos);
}

TEST(start_form, other_only_closes_open_runs_open_and_new_opens_control_parameters)
{
    Project p = loaded();
    ScriptedPort port;
    DialogSession s;
    start_form_button(p, port, s, 3);
    EXPECT_TRUE(port.dialog_filters.empty());
    EXPECT_FALSE(dialog_open(s));
    port.files = {std::nullopt};
    start_form_button(p, port, s, 2);
    EXPECT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_FALSE(dialog_open(s));
    start_form_button(p, port, s, 1);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(dialog_caption(s), "Control Parameters");
}

} // namespace
} // namespace tobel
