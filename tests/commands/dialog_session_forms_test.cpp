// The sliding surface and search set-up forms in the open form's session:
// their cells, keys and buttons, and the chains of the composite commands.
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "commands/open_project.h"
#include "support/opened_example.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

// Empties the current cell and types `text` into it.
void type_text(Project& p, Port& port, DialogSession& s, const std::string& text)
{
    ASSERT_EQ(dialog_clear(p, port, s), DialogStep::done);
    for (char c : text)
        ASSERT_EQ(dialog_type(p, port, s, c), DialogStep::done);
}

bool visible(const Project& p, const char* item)
{
    return p.menus.at(item).visible;
}

TEST(dialog_session_forms, the_new_forms_are_named_as_the_script_names_them)
{
    EXPECT_EQ(parse_dialog_kind("wedge"), DialogKind::wedge);
    EXPECT_EQ(parse_dialog_kind("general"), DialogKind::general);
    EXPECT_EQ(parse_dialog_kind("field"), DialogKind::field);
    EXPECT_EQ(parse_dialog_kind("grid-search"), DialogKind::grid_search);
    EXPECT_EQ(parse_dialog_kind("auto-search"), DialogKind::auto_search);
    EXPECT_STREQ(dialog_menu_control(DialogKind::wedge), "Edit_Sliding_surface_wedge");
    EXPECT_STREQ(dialog_menu_control(DialogKind::grid_search), "Solve_grid_search");
}

TEST(dialog_session_forms, a_plane_typed_into_the_wedge_form_is_stored_on_continue)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    EXPECT_EQ(p.form_mode, 0);
    const auto& f = std::get<WedgeForm>(s.form);
    ASSERT_EQ(f.count(), 3); // the file's three planes
    // The basal plane (plane 2) dips 18 degrees; 21 is typed over it.
    ASSERT_EQ(dialog_select(p, port, s, 2, wedge_col_dip), DialogStep::done);
    EXPECT_EQ(s.edit, "18"); // the general text of the number
    type_text(p, port, s, "21");
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_FLOAT_EQ(p.wedge_dip[2], 21.0f);
    EXPECT_FLOAT_EQ(p.wedge_dip[1], 45.0f);
    EXPECT_EQ(p.num_wedges, 3);
    EXPECT_EQ(p.surface_kind, 2);
    EXPECT_EQ(p.surface_defined, -1);
    EXPECT_TRUE(visible(p, "Solve_single_trial"));
}

TEST(dialog_session_forms, cancel_of_the_wedge_form_drops_what_was_typed)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    dialog_select(p, port, s, 2, wedge_col_dip);
    type_text(p, port, s, "30");
    ASSERT_EQ(dialog_button(p, port, s, "delete"), DialogStep::done);
    dialog_cancel(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_FLOAT_EQ(p.wedge_dip[2], 18.0f);
    EXPECT_EQ(p.num_wedges, 3);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(dialog_session_forms, a_letter_or_a_late_minus_is_not_entered_in_a_wedge_cell)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    dialog_select(p, port, s, 1, wedge_col_z);
    type_text(p, port, s, "12");
    const int beeps = port.beeps;
    dialog_type(p, port, s, 'x');
    dialog_type(p, port, s, '-');
    EXPECT_EQ(s.edit, "12");
    EXPECT_EQ(port.beeps, beeps + 2);
}

TEST(dialog_session_forms, tab_from_the_last_column_goes_to_the_first_of_the_next_plane)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    dialog_select(p, port, s, 1, wedge_col_code);
    type_text(p, port, s, "1");
    dialog_key(p, port, s, FormKey::tab);
    EXPECT_EQ(s.row, 2);
    EXPECT_EQ(s.col, 1);
    // The code typed before the move was kept in the form's copy.
    EXPECT_FLOAT_EQ(std::get<WedgeForm>(s.form).cell(1, wedge_col_code), 1.0f);
}

TEST(dialog_session_forms, the_eleventh_plane_is_refused_with_the_limit_message)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    for (int i = 0; i < 7; ++i)
        dialog_button(p, port, s, "add");
    EXPECT_EQ(std::get<WedgeForm>(s.form).count(), 10);
    EXPECT_TRUE(port.boxes.empty());
    dialog_button(p, port, s, "add");
    EXPECT_EQ(std::get<WedgeForm>(s.form).count(), 10);
    // Str(10) has its leading blank.
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  10 wedge surfaces allowed.");
}

TEST(dialog_session_forms, the_composite_surface_goes_from_the_ellipsoid_to_the_wedge_form)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-composite-seam.tob");
    DialogSession s;
    open_surface_dialog(p, port, s, SurfaceCommand::composite);
    EXPECT_EQ(p.form_mode, 3);
    EXPECT_EQ(p.pictures.search.caption, "COMPOSITE SURFACE");
    ASSERT_EQ(dialog_caption(s), "Ellipsoidal Sliding Surface");
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    EXPECT_EQ(p.form_mode, 3);
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.surface_kind, 3);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(dialog_session_forms, cancel_of_the_composite_wedge_form_ends_the_chain)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-composite-seam.tob");
    DialogSession s;
    open_surface_dialog(p, port, s, SurfaceCommand::composite);
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    dialog_cancel(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_EQ(p.surface_defined, 0); // the ellipsoid alone never defines a composite
}

TEST(dialog_session_forms, a_grid_search_set_up_stores_the_typed_counts)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-homogeneous.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::grid_search);
    ASSERT_EQ(dialog_caption(s), "Grid Search");
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_EQ(p.view_mode, 7);
    EXPECT_EQ(p.pictures.search.caption, "ELLIPSOIDAL GRID-SEARCH");
    // The stored grid: 17 centres across from Y 25.
    ASSERT_EQ(dialog_select(p, port, s, 6, 1), DialogStep::done);
    EXPECT_EQ(s.edit, "17");
    type_text(p, port, s, "9");
    dialog_key(p, port, s, FormKey::down);
    EXPECT_EQ(s.row, 7);
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.grid_n_y, 9);
    EXPECT_EQ(p.grid_n_z, 17);
    EXPECT_EQ(p.surface_kind, 1);
    EXPECT_TRUE(visible(p, "gridsearchsolv"));
    EXPECT_FALSE(visible(p, "Solve_single_trial"));
}

TEST(dialog_session_forms, the_section_x_of_a_search_moves_the_section_row_rounding_to_even)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-layers-piezo-force.tob");
    ASSERT_EQ(p.num_rows, 41);
    ASSERT_FLOAT_EQ(p.x_min, 0.0f);
    ASSERT_FLOAT_EQ(p.x_max, 100.0f);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::auto_search);
    ASSERT_EQ(dialog_caption(s), "Auto Search");
    EXPECT_EQ(p.view_mode, 8);
    // Rows 2.5 apart: 31.25 is row 12.5 from the first, which rounds to the
    // even 12, so the section is row 13; 33.75 is 13.5, rounded to 14: row 15.
    dialog_select(p, port, s, 1, 1);
    type_text(p, port, s, "31.25");
    dialog_key(p, port, s, FormKey::enter);
    EXPECT_EQ(p.view_row, 13);
    dialog_select(p, port, s, 1, 1);
    type_text(p, port, s, "33.75");
    dialog_key(p, port, s, FormKey::enter);
    EXPECT_EQ(p.view_row, 15);
    dialog_continue(p, port, s);
    EXPECT_FLOAT_EQ(p.search_x, 33.75f);
}

TEST(dialog_session_forms, cancel_of_the_auto_search_form_drops_the_typed_step)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-homogeneous.tob");
    const float step = p.auto_spacing;
    DialogSession s;
    open_dialog(p, port, s, DialogKind::auto_search);
    dialog_select(p, port, s, 4, 1);
    type_text(p, port, s, "7");
    dialog_cancel(p, port, s);
    EXPECT_FLOAT_EQ(p.auto_spacing, step);
    EXPECT_FLOAT_EQ(step, 2.0f); // the file's step
}

TEST(dialog_session_forms, the_common_point_command_relabels_the_block_and_stores_the_point)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-homogeneous.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::grid_search);
    ASSERT_EQ(dialog_button(p, port, s, "common"), DialogStep::done);
    EXPECT_EQ(std::get<GridSearchForm>(s.form).common_point, 1);
    dialog_select(p, port, s, 8, 1);
    type_text(p, port, s, "20");
    dialog_select(p, port, s, 9, 1);
    type_text(p, port, s, "15");
    dialog_continue(p, port, s);
    EXPECT_EQ(p.grid_use_common, 1);
    EXPECT_FLOAT_EQ(p.common_y, 20.0f);
    EXPECT_FLOAT_EQ(p.common_z, 15.0f);
    EXPECT_FLOAT_EQ(p.tangent_z, 10.0f); // the tangent plane's elevation is not touched
    // From the upper left centre (25, 70) to the point (20, 15): sqrt(25 + 3025).
    EXPECT_NEAR(p.radius_in, 55.2268, 1e-3);
}

TEST(dialog_session_forms, dragging_the_upper_corner_of_the_grid_moves_its_two_cells)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-homogeneous.tob");
    ASSERT_FLOAT_EQ(p.vert_exag, 1.0f);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::grid_search);
    // The upper left centre stands at (25, 70); dragged to (28, 72).
    dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, 25, 70);
    dialog_pointer(p, port, s, PointerAction::move, PointerButton::left, false, 28, 72);
    dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, 28, 72);
    auto& f = std::get<GridSearchForm>(s.form);
    EXPECT_FLOAT_EQ(f.record.grid_y1, 28.0f);
    EXPECT_FLOAT_EQ(f.record.grid_z_top, 72.0f);
    EXPECT_FLOAT_EQ(f.record.grid_y2, 41.0f); // the other corner stays
    dialog_continue(p, port, s);
    EXPECT_FLOAT_EQ(p.grid_y_ul, 28.0f);
    EXPECT_FLOAT_EQ(p.grid_z_ul, 72.0f);
}

TEST(dialog_session_forms, the_composite_grid_search_leads_to_the_wedge_form_and_names_its_picture)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-composite-seam.tob");
    DialogSession s;
    open_search_dialog(p, port, s, true, true);
    EXPECT_EQ(p.form_mode, 5);
    ASSERT_EQ(dialog_caption(s), "Grid Search");
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.surface_kind, 3);
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_TRUE(visible(p, "gridsearchsolv"));
    EXPECT_FALSE(visible(p, "Solve_single_trial"));
}

TEST(dialog_session_forms, the_composite_auto_search_opens_in_form_mode_6)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope3d-composite-seam.tob");
    DialogSession s;
    open_search_dialog(p, port, s, false, true);
    EXPECT_EQ(p.form_mode, 6);
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    dialog_continue(p, port, s);
    EXPECT_EQ(p.surface_kind, 3);
    EXPECT_TRUE(visible(p, "autosearchsolv"));
}

TEST(dialog_session_forms, the_general_surface_goes_through_the_section_editor)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-general.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::general);
    EXPECT_EQ(p.form_mode, 7);
    ASSERT_EQ(dialog_caption(s), "Assignment of General Sliding Surface Input Method");
    EXPECT_EQ(std::get<GeneralSurfaceForm>(s.form).method, 0);
    // The buttons of the layer forms are there and do nothing.
    EXPECT_EQ(dialog_button(p, port, s, "add-surface"), DialogStep::done);
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Section Editor");
    EXPECT_EQ(p.view_row, 1);
    const auto& ed = std::get<SectionEditor>(s.form);
    EXPECT_EQ(ed.edit_line, p.sliding_index); // the sliding line is the one edited
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.surface_kind, 4);
    EXPECT_EQ(p.surface_defined, -1);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(dialog_session_forms, the_composite_general_surface_ends_in_the_wedge_form)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-general.tob");
    DialogSession s;
    open_surface_dialog(p, port, s, SurfaceCommand::general_wedge);
    EXPECT_EQ(p.form_mode, 4);
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Section Editor");
    dialog_continue(p, port, s);
    ASSERT_EQ(dialog_caption(s), "Wedge Sliding Surface");
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_EQ(p.surface_kind, 5);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(dialog_session_forms, the_field_form_stands_over_the_general_form_and_gives_it_back)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-general.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::general);
    ASSERT_EQ(dialog_button(p, port, s, "field"), DialogStep::done);
    ASSERT_EQ(dialog_caption(s), "Discontinuity Field on General Sliding Surface");
    dialog_select(p, port, s, 3, 1);
    type_text(p, port, s, "40");
    dialog_key(p, port, s, FormKey::down);
    type_text(p, port, s, "60");
    dialog_continue(p, port, s);
    EXPECT_FLOAT_EQ(p.field_y_low, 40.0f);
    EXPECT_FLOAT_EQ(p.field_y_high, 60.0f);
    ASSERT_FALSE(port.boxes.empty());
    EXPECT_EQ(port.boxes.back().text, field_defined_message);
    EXPECT_EQ(p.num_wedges, 1);
    ASSERT_EQ(dialog_caption(s), "Assignment of General Sliding Surface Input Method");
    EXPECT_EQ(p.form_mode, 7);
}

TEST(dialog_session_forms, cancel_of_the_field_form_clears_the_form_mode_of_the_general_form)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-general.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::general);
    dialog_button(p, port, s, "field");
    dialog_select(p, port, s, 1, 1);
    type_text(p, port, s, "5");
    dialog_cancel(p, port, s);
    EXPECT_FLOAT_EQ(p.field_x_low, 0.0f);
    // The field form's Cancel sets form_mode 0 even with the general form
    // still open beneath it.
    ASSERT_EQ(dialog_caption(s), "Assignment of General Sliding Surface Input Method");
    EXPECT_EQ(p.form_mode, 0);
}

TEST(dialog_session_forms, the_file_button_of_the_grid_file_method_asks_for_a_grid_file)
{
    ScriptedPort port;
    Project p = test::opened_example(port, "slope2d-general.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::general);
    ASSERT_EQ(dialog_choose(p, port, s, 1), DialogStep::done);
    port.dialog_filters.clear();
    port.files = {std::nullopt}; // the file dialog is cancelled
    ASSERT_EQ(dialog_button(p, port, s, "file"), DialogStep::done);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters.back(), "Grid Files (*.GRD)|*.GRD");
    EXPECT_EQ(std::get<GeneralSurfaceForm>(s.form).method, 1);
    EXPECT_TRUE(dialog_open(s));
}

} // namespace
} // namespace tobel
