// The Control Parameters form: opening on the project, moving, the key filter
// and the refusals of the count cells, the 2D/3D button, the nine checks of
// Continue in their order, the store and what follows it, and Cancel.
#include <gtest/gtest.h>

#include <memory>

#include "dialogs/control_form.h"
#include "project/defaults.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

const std::string today = "06-01-2024";

std::unique_ptr<Project> default_project(int form_mode = 2)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->form_mode = int16(form_mode);
    return p;
}

// Sets cell c of the form as if typed and left.
void put(ControlForm& form, int c, const std::string& text)
{
    control_form_select(form, c);
    form.edit = text;
    control_form_select(form, c == 1 ? 2 : 1);
}

// Types every key of `keys`; returns how many were accepted.
int type_keys(ControlForm& form, const Project& p, ScriptedPort& port, const std::string& keys)
{
    int accepted = 0;
    for (char k : keys)
        accepted += control_form_type(form, p, port, k) ? 1 : 0;
    return accepted;
}

TEST(ControlForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(control_form_caption, "Control Parameters");
    EXPECT_STREQ(control_cell_labels[0], "Project:   ");
    EXPECT_STREQ(control_cell_labels[1], "Data Set:   ");
    EXPECT_STREQ(control_cell_labels[2], "Input By:   ");
    EXPECT_STREQ(control_cell_labels[3], "Date:   ");
    EXPECT_STREQ(control_cell_labels[4], "Hor. Earthqake Acceleration:");
    EXPECT_STREQ(control_cell_labels[5], "No. of Layers:");
    EXPECT_STREQ(control_cell_labels[6], "No.  Piezo Surfaces:");
    EXPECT_STREQ(control_cell_labels[7], "No. Discontinuities:");
    EXPECT_STREQ(control_cell_labels[8], "Min. X (Transverse):");
    EXPECT_STREQ(control_cell_labels[9], "Max. X (Transverse):");
    EXPECT_STREQ(control_cell_labels[10], "Number of Rows:");
    EXPECT_STREQ(control_cell_labels[11], "Min. Y (Longitudinal):   ");
    EXPECT_STREQ(control_cell_labels[12], "Max. Y (Longitudinal):   ");
    EXPECT_STREQ(control_cell_labels[13], "Number of Columns:   ");
    EXPECT_STREQ(control_cell_labels[14], "Base of Z-coordinates (optional):");
    EXPECT_STREQ(control_water_label, "Unit Weight of Water:   ");
    EXPECT_STREQ(control_water_entries[0], "9.81  (kN/cu.m)");
    EXPECT_STREQ(control_water_entries[1], "62.4  (pcf)");
    EXPECT_STREQ(control_grid_note, "Grid extent and density:");
    EXPECT_STREQ(control_column_note, "Each grid intersection represents the centre of a column.");
    EXPECT_STREQ(control_two_d_note, "Two-dimensional ");
    EXPECT_STREQ(control_two_d_hint, "For 3D, make Number of Rows > 1");
}

TEST(ControlForm, opens_on_the_default_project_with_the_first_cell_selected)
{
    auto p = default_project();
    const ControlForm form = open_control_form(*p, today);
    // The defaults of a new project, in general text.
    EXPECT_EQ(form.text(1), "Project Title");
    EXPECT_EQ(form.text(2), "Data Set Title");
    EXPECT_EQ(form.text(3), "Name");
    EXPECT_EQ(form.text(4), today);
    EXPECT_EQ(form.text(5), "0");
    EXPECT_EQ(form.text(6), "1");
    EXPECT_EQ(form.text(7), "0");
    EXPECT_EQ(form.text(8), "0");
    EXPECT_EQ(form.text(9), "0");
    EXPECT_EQ(form.text(10), "100");
    EXPECT_EQ(form.text(11), "50");
    EXPECT_EQ(form.text(12), "0");
    EXPECT_EQ(form.text(13), "100");
    EXPECT_EQ(form.text(14), "50");
    EXPECT_EQ(form.text(15), "0");
    EXPECT_EQ(form.water_index, 0);
    EXPECT_EQ(form.command1_caption, "Change to 2D");
    EXPECT_EQ(form.cell, 1);
    EXPECT_EQ(form.edit, "Project Title");
    EXPECT_FALSE(control_two_d_note_visible(form));
}

TEST(ControlForm, list_selects_pcf_entry_for_62_4_and_button_reads_3d_for_one_row)
{
    auto p = default_project();
    p->unit_weight_water = 62.4f;
    p->num_rows = 1;
    const ControlForm form = open_control_form(*p, today);
    EXPECT_EQ(form.water_index, 1);
    EXPECT_EQ(form.command1_caption, "Change to 3D");
    EXPECT_TRUE(control_two_d_note_visible(form));
}

TEST(ControlForm, up_goes_back_and_down_enter_tab_go_on_within_1_to_15)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    control_form_key(form, FormKey::up);
    EXPECT_EQ(form.cell, 1);
    control_form_key(form, FormKey::down);
    EXPECT_EQ(form.cell, 2);
    control_form_key(form, FormKey::enter);
    EXPECT_EQ(form.cell, 3);
    control_form_key(form, FormKey::tab);
    EXPECT_EQ(form.cell, 4);
    control_form_key(form, FormKey::up);
    EXPECT_EQ(form.cell, 3);
    for (int i = 0; i < 20; ++i)
        control_form_key(form, FormKey::down);
    EXPECT_EQ(form.cell, 15);
    EXPECT_EQ(form.edit, "0");
}

TEST(ControlForm, moving_and_clicking_a_label_store_the_edit_text)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    form.edit = "Dam";
    control_form_key(form, FormKey::down);
    EXPECT_EQ(form.text(1), "Dam");
    EXPECT_EQ(form.edit, "Data Set Title");
    form.edit = "Left bank";
    control_form_select(form, 10);
    EXPECT_EQ(form.text(2), "Left bank");
    EXPECT_EQ(form.cell, 10);
    EXPECT_EQ(form.edit, "100");
}

TEST(ControlForm, return_and_tab_never_enter_and_the_date_cell_takes_nothing)
{
    auto p = default_project();
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    EXPECT_FALSE(control_form_type(form, *p, port, '\r'));
    EXPECT_FALSE(control_form_type(form, *p, port, '\t'));
    EXPECT_EQ(form.edit, "Project Title");
    control_form_select(form, 4);
    EXPECT_EQ(type_keys(form, *p, port, "1a.\b"), 0);
    EXPECT_EQ(form.edit, today);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(ControlForm, title_cells_take_any_key)
{
    auto p = default_project();
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    form.edit.clear();
    EXPECT_EQ(type_keys(form, *p, port, "Dam #2/x-"), 9);
    EXPECT_EQ(form.edit, "Dam #2/x-");
    EXPECT_TRUE(control_form_type(form, *p, port, '\b'));
    EXPECT_EQ(form.edit, "Dam #2/x");
}

TEST(ControlForm, count_cells_are_refused_with_their_messages_outside_the_wizard)
{
    auto p = default_project(1);
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 6);
    EXPECT_FALSE(control_form_type(form, *p, port, '3'));
    control_form_select(form, 7);
    EXPECT_FALSE(control_form_type(form, *p, port, '\b'));
    control_form_select(form, 8);
    EXPECT_FALSE(control_form_type(form, *p, port, '2'));
    ASSERT_EQ(port.boxes.size(), 3u);
    EXPECT_EQ(port.boxes[0].text, "To add or delete a layer, use Stratigraphic Layers screen");
    EXPECT_EQ(port.boxes[1].text, "To add or delete a piezo surface, use Piezometric Surfaces screen");
    EXPECT_EQ(port.boxes[2].text, "To add or delete a discontinuity, use Materials Editor screen");
    // The cells keep what they held.
    EXPECT_EQ(form.edit, "0");
    EXPECT_EQ(form.text(6), "1");
    EXPECT_EQ(form.text(7), "0");
}

TEST(ControlForm, plain_editing_mode_zero_refuses_the_count_cells_too)
{
    auto p = default_project(0);
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 6);
    EXPECT_FALSE(control_form_type(form, *p, port, '2'));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(control_cell_refusal(*p, 9), "");
}

TEST(ControlForm, count_cells_take_numbers_in_the_new_project_wizard)
{
    auto p = default_project(2);
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 6);
    EXPECT_TRUE(control_form_type(form, *p, port, '\b'));
    EXPECT_TRUE(control_form_type(form, *p, port, '3'));
    EXPECT_EQ(form.edit, "3");
    EXPECT_TRUE(port.boxes.empty());
}

TEST(ControlForm, numeric_cells_take_digits_one_point_and_a_leading_minus)
{
    // Codes below 45 or above 57 and code 47 ('/') are refused.
    EXPECT_FALSE(control_key_accepted(5, "", ','));
    EXPECT_FALSE(control_key_accepted(5, "", '+'));
    EXPECT_FALSE(control_key_accepted(5, "", ' '));
    EXPECT_FALSE(control_key_accepted(5, "", '/'));
    EXPECT_FALSE(control_key_accepted(5, "", ':'));
    EXPECT_FALSE(control_key_accepted(5, "", 'e'));
    for (char d = '0'; d <= '9'; ++d)
        EXPECT_TRUE(control_key_accepted(15, "1", d));
    EXPECT_TRUE(control_key_accepted(9, "12", '.'));
    EXPECT_FALSE(control_key_accepted(9, "1.2", '.'));
    EXPECT_TRUE(control_key_accepted(9, "12", '-', 0));
    EXPECT_FALSE(control_key_accepted(9, "12", '-', 1));
    EXPECT_FALSE(control_key_accepted(9, "12", '-'));
    EXPECT_TRUE(control_key_accepted(9, "", '-'));
    EXPECT_TRUE(control_key_accepted(9, "12", '\b'));
}

TEST(ControlForm, typing_enters_at_the_caret_and_backspace_removes_the_key_before_it)
{
    auto p = default_project();
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 10);
    EXPECT_EQ(type_keys(form, *p, port, ".5x/."), 2);
    EXPECT_EQ(form.edit, "100.5");
    EXPECT_TRUE(control_form_type(form, *p, port, '-', 0));
    EXPECT_EQ(form.edit, "-100.5");
    EXPECT_TRUE(control_form_type(form, *p, port, '\b'));
    EXPECT_EQ(form.edit, "-100.");
}

TEST(ControlForm, button_makes_a_two_dimensional_mesh_of_300_columns_and_back)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    control_form_command1(form);
    EXPECT_EQ(form.text(14), "300");
    EXPECT_EQ(form.text(11), "1");
    EXPECT_EQ(form.command1_caption, "Change to 3D");
    EXPECT_EQ(form.cell, 9);
    EXPECT_TRUE(control_two_d_note_visible(form));
    control_form_command1(form);
    EXPECT_EQ(form.text(14), "50");
    EXPECT_EQ(form.text(11), "50");
    EXPECT_EQ(form.command1_caption, "Change to 2D");
    EXPECT_EQ(form.cell, 9);
    EXPECT_FALSE(control_two_d_note_visible(form));
}

TEST(ControlForm, two_dimensional_note_follows_the_rows_cell_being_typed)
{
    auto p = default_project();
    ScriptedPort port;
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 11);
    form.edit = "1";
    EXPECT_TRUE(control_two_d_note_visible(form));
    form.edit = "12";
    EXPECT_FALSE(control_two_d_note_visible(form));
}

// Continue with one bad cell: the message, the form open, nothing stored.
void expect_refused(ControlForm& form, Project& p, const std::string& message)
{
    ScriptedPort port;
    const std::string title = p.project_title;
    EXPECT_EQ(continue_control_form(p, form, port), ControlNext::stays_open);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, message);
    EXPECT_EQ(p.project_title, title);
    EXPECT_EQ(p.dirty_flag, 0);
}

TEST(ControlForm, check_1_x_limits_when_the_project_has_rows)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    put(form, 1, "changed");
    put(form, 10, "0"); // equal to Min. X
    expect_refused(form, *p, "Min. X must be smaller than Max. X.");
}

TEST(ControlForm, check_1_is_skipped_in_a_one_row_project_whatever_cell_11_says)
{
    auto p = default_project();
    p->num_rows = 1;
    ControlForm form = open_control_form(*p, today);
    put(form, 11, "20");
    put(form, 9, "50");
    put(form, 10, "10");
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::to_interpolation);
    EXPECT_EQ(p->num_rows, 20);
    EXPECT_EQ(p->x_min, 50.0f);
    EXPECT_EQ(p->x_max, 10.0f);
}

TEST(ControlForm, check_2_y_limits)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    put(form, 12, "200");
    expect_refused(form, *p, "Min. Y must be smaller than Max. Y.");
}

TEST(ControlForm, checks_3_to_5_rows_and_columns)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    put(form, 11, "0");
    expect_refused(form, *p, "Can't have less than 1 row.");
    put(form, 11, "3001");
    expect_refused(form, *p, "Can't have more than 3000 rows.");
    put(form, 11, "3000");
    put(form, 14, "3001");
    expect_refused(form, *p, "Can't have more than 3000 columns.");
}

TEST(ControlForm, checks_6_and_7_compare_with_50_but_print_max_materials)
{
    auto p = default_project();
    p->max_materials = 40;
    ControlForm form = open_control_form(*p, today);
    put(form, 6, "30");
    put(form, 7, "21"); // 51 > 50
    expect_refused(form, *p, "Combined number of materials and piezo surfaces must not exceed  40.");
    put(form, 7, "0");
    put(form, 8, "21");
    expect_refused(form, *p, "Combined number of materials and discontinuities must not exceed  40.");
    // 30 + 15 = 45 lies above 40 but not above 50: accepted.
    put(form, 7, "15");
    put(form, 8, "15");
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::to_interpolation);
    EXPECT_EQ(p->num_layers, 30);
}

TEST(ControlForm, checks_8_and_9_layer_count)
{
    auto p = default_project();
    p->max_materials = 20;
    ControlForm form = open_control_form(*p, today);
    put(form, 6, "21");
    expect_refused(form, *p, "Can't have more than  20 material layers.");
    put(form, 6, "0");
    expect_refused(form, *p, "Must have at least one material layer.");
}

TEST(ControlForm, checks_run_in_order_and_show_only_the_first_failure)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    put(form, 6, "0");     // check 9
    put(form, 14, "4000"); // check 5
    put(form, 13, "-5");   // check 2
    expect_refused(form, *p, "Min. Y must be smaller than Max. Y.");
}

TEST(ControlForm, continue_takes_the_edit_text_of_the_selected_cell)
{
    auto p = default_project();
    ControlForm form = open_control_form(*p, today);
    control_form_select(form, 13);
    form.edit = "-1";
    expect_refused(form, *p, "Min. Y must be smaller than Max. Y.");
    EXPECT_EQ(form.text(13), "-1");
}

TEST(ControlForm, store_sets_titles_units_counts_and_the_mesh)
{
    auto p = default_project(2);
    p->dirty_flag = 0;
    ControlForm form = open_control_form(*p, today);
    put(form, 1, "Dam");
    put(form, 2, "Case A");
    put(form, 3, "JS");
    put(form, 5, ".15");
    put(form, 6, "3");
    put(form, 7, "2");
    put(form, 8, "2");
    put(form, 9, "10");
    put(form, 10, "20");
    put(form, 11, "5");
    put(form, 12, "-30");
    put(form, 13, "30");
    put(form, 14, "7");
    put(form, 15, "-100");
    control_form_choose_water(form, 1);
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::to_interpolation);
    EXPECT_EQ(p->project_title, "Dam");
    EXPECT_EQ(p->dataset_title, "Case A");
    EXPECT_EQ(p->input_by, "JS");
    EXPECT_EQ(p->unit_weight_water, 62.4f);
    EXPECT_EQ(p->eq_coef, 0.15f);
    EXPECT_EQ(p->num_layers, 3);
    EXPECT_EQ(p->num_piezos, 2);
    EXPECT_EQ(p->num_discs, 2);
    // Derived: 3 + 2 surfaces, sliding surface above them, 3 + 2 entries.
    EXPECT_EQ(p->num_surfaces, 5);
    EXPECT_EQ(p->sliding_index, 6);
    EXPECT_EQ(p->num_mat_entries, 5);
    EXPECT_EQ(p->x_min, 10.0f);
    EXPECT_EQ(p->x_max, 20.0f);
    EXPECT_EQ(p->num_rows, 5);
    EXPECT_EQ(p->y_min, -30.0f);
    EXPECT_EQ(p->y_max, 30.0f);
    EXPECT_EQ(p->num_cols, 7);
    EXPECT_EQ(p->base_z, -100.0f);
    // (20 - 10) / (5 - 1) and (30 - -30) / (7 - 1).
    EXPECT_EQ(p->row_spacing, 2.5f);
    EXPECT_EQ(p->col_spacing, 10.0f);
    // The grids take the new mesh: rows 0..5, columns 0..7, planes 0..7.
    EXPECT_EQ(p->zgrid.rows, 5);
    EXPECT_EQ(p->zgrid.cols, 7);
    EXPECT_EQ(p->zgrid.planes, 7);
    EXPECT_EQ(p->col_weight.rows, 5);
}

TEST(ControlForm, store_names_unnamed_materials_and_discontinuities)
{
    auto p = default_project(2);
    p->mat_name[2] = "Kept";
    ControlForm form = open_control_form(*p, today);
    put(form, 6, "3");
    put(form, 8, "2");
    ScriptedPort port;
    continue_control_form(*p, form, port);
    EXPECT_EQ(p->mat_name[1], "Material Name");
    EXPECT_EQ(p->mat_name[2], "Kept");
    EXPECT_EQ(p->mat_name[3], "Material Name");
    EXPECT_EQ(p->mat_name[4], "Discontinuity Name");
    EXPECT_EQ(p->mat_name[5], "Discontinuity Name");
    EXPECT_EQ(p->mat_name[6], "");
}

TEST(ControlForm, names_left_as_0_by_a_reset_are_kept_and_only_new_entries_are_named)
{
    auto p = default_project(2);
    p->num_layers = 5;
    derive_counts(*p);
    for (int m = 1; m <= 5; ++m)
        p->mat_name[std::size_t(m)] = "Layer";
    reset_project(*p);
    p->form_mode = 2;
    ControlForm form = open_control_form(*p, today);
    put(form, 6, "6");
    ScriptedPort port;
    continue_control_form(*p, form, port);
    EXPECT_EQ(p->mat_name[1], "Material Name");
    for (int m = 2; m <= 5; ++m)
        EXPECT_EQ(p->mat_name[std::size_t(m)], "0") << m;
    EXPECT_EQ(p->mat_name[6], "Material Name");
}

TEST(ControlForm, a_two_dimensional_mesh_is_one_unit_wide)
{
    auto p = default_project(2);
    ControlForm form = open_control_form(*p, today);
    put(form, 9, "7");
    put(form, 10, "90");
    put(form, 11, "1");
    put(form, 14, "1");
    ScriptedPort port;
    continue_control_form(*p, form, port);
    EXPECT_EQ(p->num_rows, 1);
    EXPECT_EQ(p->row_spacing, 1.0f);
    EXPECT_EQ(p->x_min, 7.0f);
    EXPECT_EQ(p->x_max, 8.0f); // x_min + 1, whatever cell 10 said
    EXPECT_EQ(p->num_cols, 1);
    EXPECT_EQ(p->col_spacing, 1.0f);
}

TEST(ControlForm, new_two_dimensional_project_from_the_button_has_300_columns_and_1_row)
{
    auto p = default_project(2);
    ControlForm form = open_control_form(*p, today);
    control_form_command1(form);
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::to_interpolation);
    EXPECT_EQ(p->num_rows, 1);
    EXPECT_EQ(p->num_cols, 300);
    // (100 - 0) / 299 in single.
    EXPECT_EQ(p->col_spacing, float(100.0 / 299.0));
    EXPECT_EQ(p->x_max, 1.0f);
    // The views that need a second row stay hidden.
    EXPECT_FALSE(p->menus.at("Graphics_Isometry").visible);
    EXPECT_FALSE(p->menus.at("Graphics_Lateral_Section").visible);
    EXPECT_TRUE(p->menus.at("Graphics_Longitudinal_Section").visible);
}

TEST(ControlForm, continue_marks_the_project_shows_menus_hides_solve_and_draws_the_plan)
{
    auto p = default_project(1);
    p->dirty_flag = 0;
    set_edit_menus_visible(*p, false);
    p->menus["Solve"].visible = true;
    ControlForm form = open_control_form(*p, today);
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::closed);
    EXPECT_EQ(p->dirty_flag, -1);
    EXPECT_FALSE(p->menus.at("Solve").visible);
    EXPECT_TRUE(p->menus.at("Edit_material_properties").visible);
    EXPECT_TRUE(p->menus.at("Graphics_Isometry").visible);
    EXPECT_TRUE(p->menus.at("xxray").visible);
    EXPECT_EQ(p->pictures.section.caption, "PLAN VIEW");
    EXPECT_FALSE(p->pictures.section.picture.empty());
    EXPECT_EQ(p->main_caption, "TOBEL_3          File          PLAN, COLUMN ASSEMBLY");
}

TEST(ControlForm, continue_wipes_zgrid_even_when_nothing_changed)
{
    auto p = default_project(1);
    // A surface read from a grid file is not rebuilt from sections.
    p->surf_method[1] = 1;
    p->zgrid(3, 4, 1) = 25.0f;
    ControlForm form = open_control_form(*p, today);
    ScriptedPort port;
    EXPECT_EQ(continue_control_form(*p, form, port), ControlNext::closed);
    EXPECT_EQ(p->zgrid(3, 4, 1), 0.0f);
}

TEST(ControlForm, cancel_stores_nothing)
{
    auto p = default_project(1);
    ControlForm form = open_control_form(*p, today);
    put(form, 1, "Other");
    put(form, 11, "7");
    cancel_control_form(*p, form);
    EXPECT_EQ(p->project_title, "Project Title");
    EXPECT_EQ(p->num_rows, 50);
    EXPECT_EQ(p->form_mode, 1);
}

} // namespace
} // namespace tobel::test
