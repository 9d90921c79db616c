// The Material / Discontinuity Editor: opening on the table, headings,
// colours and locks, the type list with Water and Hard Layer, moving and
// scrolling with the question to add, the rules of rows 7 and 8, the key
// filter, Add and Delete Discontinuity, Continue and Cancel.
#include <gtest/gtest.h>

#include <memory>

#include "dialogs/material_form.h"
#include "project/defaults.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

// Two layers, one piezometric surface, one discontinuity:
// 1 "Clay" Coulomb on piezo surface 1, 2 "Rock" anisotropic with Ru .3,
// 3 "Joint" of stored type 0.
std::unique_ptr<Project> two_layers_one_joint()
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->num_layers = 2;
    p->num_piezos = 1;
    p->num_discs = 1;
    derive_counts(*p);
    p->form_mode = 0;
    p->mat_name[1] = "Clay";
    p->mat_type[1] = 1;
    p->mat_unit_weight[1] = 18;
    p->mat_cohesion[1] = 5;
    p->mat_cohesion_v[1] = 7;
    p->mat_phi[1] = 25;
    p->mat_phi_v[1] = 27;
    p->mat_piezo[1] = -1;
    p->mat_bbar[1] = 0.5f;
    p->mat_name[2] = "Rock";
    p->mat_type[2] = 2;
    p->mat_unit_weight[2] = 24;
    p->mat_cohesion[2] = 50;
    p->mat_cohesion_v[2] = 40;
    p->mat_phi[2] = 35;
    p->mat_phi_v[2] = 30;
    p->mat_piezo[2] = 0.3f;
    p->mat_name[3] = "Joint";
    p->mat_type[3] = 0;
    p->mat_phi[3] = 20;
    for (int k = 1; k <= 15; ++k)
        p->layer_colour[std::size_t(k)] = 1000 + k;
    p->piezo_colour[13] = 777;
    return p;
}

// Moves the selection to (row, slot) answering No to any question.
void go(Project& p, MaterialForm& form, int row, int slot)
{
    ScriptedPort port;
    material_form_select(p, form, port, row, slot);
}

TEST(MaterialForm, texts_are_the_forms_own)
{
    EXPECT_STREQ(material_form_caption, "Material / Discontinuity Editor");
    EXPECT_STREQ(material_form_note, "Materials numbered from the  bottom up");
    EXPECT_STREQ(material_type_label, "Material Type >");
    const char* labels[] = {"Material:",
                            "Unit Weight:",
                            "Cohesion:",
                            "Cohesion, Vertical:",
                            "Friction Angle:",
                            "Fi Angle, Vertical:",
                            "Piezo Surface Number:",
                            "Pore Pressure Ratio:",
                            "B bar coefficient*:",
                            "Coefficient A:",
                            "Coefficient B:",
                            "Uniaxial Strength:",
                            "Coefficient D:"};
    for (int r = 0; r < material_rows; ++r)
        EXPECT_STREQ(material_row_labels[std::size_t(r)], labels[r]);
    EXPECT_STREQ(material_type_names[0], "Coulomb");
    EXPECT_STREQ(material_type_names[1], "Anisotropic");
    EXPECT_STREQ(material_type_names[2], "Non-linear");
    EXPECT_STREQ(material_type_names[3], "Hard Layer");
    EXPECT_STREQ(material_type_names[4], "Water");
    EXPECT_STREQ(material_add_caption, "&Add Discontinuity");
    EXPECT_STREQ(material_delete_caption, "&Delete Discontinuity");
    EXPECT_EQ(material_locked_colour, 12648447);
    EXPECT_EQ(material_text_colour, 12582912);
}

TEST(MaterialForm, opens_with_cells_in_signed_form_and_piezo_split_in_rows_7_and_8)
{
    auto p = two_layers_one_joint();
    const MaterialForm form = open_material_form(*p);
    EXPECT_EQ(form.cell(1, 1), "Clay");
    EXPECT_EQ(form.cell(2, 1), " 18");
    EXPECT_EQ(form.cell(3, 1), " 5");
    EXPECT_EQ(form.cell(5, 1), " 25");
    EXPECT_EQ(form.cell(9, 1), " .5");
    // mat_piezo -1: piezo surface 1, no ratio.
    EXPECT_EQ(form.cell(7, 1), " 1");
    EXPECT_EQ(form.cell(8, 1), " 0");
    // mat_piezo .3: a ratio, no surface.
    EXPECT_EQ(form.cell(7, 2), " 0");
    EXPECT_EQ(form.cell(8, 2), " .3");
    EXPECT_EQ(form.cell(1, 3), "Joint");
    EXPECT_EQ(form.cell(1, 4), "");
    EXPECT_EQ(form.row, 1);
    EXPECT_EQ(form.slot, 1);
    EXPECT_EQ(form.first, 1);
    EXPECT_EQ(form.edit, "Clay");
    EXPECT_FALSE(form.scroll_visible);
}

TEST(MaterialForm, opening_turns_type_0_into_coulomb_in_the_project)
{
    auto p = two_layers_one_joint();
    open_material_form(*p);
    EXPECT_EQ(p->mat_type[3], 1);
}

TEST(MaterialForm, headings_colour_boxes_and_type_lists_by_slot)
{
    auto p = two_layers_one_joint();
    const MaterialForm form = open_material_form(*p);
    EXPECT_EQ(material_slot_heading(*p, form, 1), "Material 1");
    EXPECT_EQ(material_slot_heading(*p, form, 2), "Material 2");
    EXPECT_EQ(material_slot_heading(*p, form, 3), "Disc. 1");
    EXPECT_EQ(material_slot_heading(*p, form, 4), "");
    EXPECT_EQ(material_slot_colour(*p, form, 1).value_or(-1), 1001);
    EXPECT_EQ(material_slot_colour(*p, form, 2).value_or(-1), 1002);
    EXPECT_FALSE(material_slot_colour(*p, form, 3).has_value());
    EXPECT_FALSE(material_slot_colour(*p, form, 4).has_value());
    EXPECT_EQ(material_type_list(*p, form, 1).size(), 5u);
    EXPECT_FALSE(material_type_list_locked(*p, form, 1));
    EXPECT_EQ(material_type_index(*p, form, 2), 1);
    ASSERT_EQ(material_type_list(*p, form, 3).size(), 1u);
    EXPECT_EQ(material_type_list(*p, form, 3)[0], "Coulomb");
    EXPECT_TRUE(material_type_list_locked(*p, form, 3));
    EXPECT_EQ(material_type_index(*p, form, 3), 0);
    EXPECT_TRUE(material_type_list(*p, form, 4).empty());
}

TEST(MaterialForm, lock_table_by_type_and_discontinuity)
{
    // Coulomb (t = 0): rows 4, 6 and 10 to 13.
    for (int r = 1; r <= 13; ++r)
        EXPECT_EQ(material_cell_locked(false, 0, r), r == 4 || r == 6 || r >= 10) << r;
    // Anisotropic: rows 10 to 13.
    for (int r = 1; r <= 13; ++r)
        EXPECT_EQ(material_cell_locked(false, 1, r), r >= 10) << r;
    // Non-linear: rows 3 to 6.
    for (int r = 1; r <= 13; ++r)
        EXPECT_EQ(material_cell_locked(false, 2, r), r >= 3 && r <= 6) << r;
    // Hard Layer and Water: everything but the name.
    for (int r = 1; r <= 13; ++r) {
        EXPECT_EQ(material_cell_locked(false, 3, r), r > 1) << r;
        EXPECT_EQ(material_cell_locked(false, 4, r), r > 1) << r;
    }
    // A discontinuity (always Coulomb) adds row 2.
    for (int r = 1; r <= 13; ++r)
        EXPECT_EQ(material_cell_locked(true, 0, r), r == 2 || r == 4 || r == 6 || r >= 10) << r;
}

TEST(MaterialForm, locked_cells_show_light_yellow_others_blue)
{
    auto p = two_layers_one_joint();
    const MaterialForm form = open_material_form(*p);
    EXPECT_EQ(material_cell_colour(*p, form, 4, 1), 12648447);
    EXPECT_EQ(material_cell_colour(*p, form, 3, 1), 12582912);
    EXPECT_EQ(material_cell_colour(*p, form, 4, 2), 12582912); // anisotropic
    EXPECT_EQ(material_cell_colour(*p, form, 2, 3), 12648447); // discontinuity
    EXPECT_EQ(material_cell_colour(*p, form, 2, 4), 12582912); // empty slot
}

TEST(MaterialForm, redraw_sets_discontinuity_unit_weight_to_0_and_resets_friction_90)
{
    auto p = two_layers_one_joint();
    MaterialForm form = open_material_form(*p);
    form.cell(2, 3) = "12";
    form.cell(5, 1) = "90";
    form.cell(6, 2) = "90";
    form.cell(5, 2) = "89";
    material_form_redraw(*p, form);
    EXPECT_EQ(form.cell(2, 3), "0");
    EXPECT_EQ(form.cell(5, 1), "0");
    EXPECT_EQ(form.cell(6, 2), "0");
    EXPECT_EQ(form.cell(5, 2), "89");
}

TEST(MaterialForm, choosing_water_fills_the_column_and_stores_the_type_at_once)
{
    auto p = two_layers_one_joint();
    MaterialForm form = open_material_form(*p);
    material_form_choose_type(*p, form, 2, 4);
    EXPECT_EQ(p->mat_type[2], 5);
    EXPECT_EQ(form.cell(1, 2), "Water");
    EXPECT_EQ(form.cell(2, 2), "9.81");
    for (int r = 3; r <= 13; ++r)
        EXPECT_EQ(form.cell(r, 2), "0") << r;
    // A Water layer shows the water colour, 13 of the piezo table.
    EXPECT_EQ(material_slot_colour(*p, form, 2).value_or(-1), 777);
    EXPECT_EQ(material_cell_colour(*p, form, 2, 2), 12648447);
}

TEST(MaterialForm, choosing_hard_layer_sets_friction_90_and_leaving_it_resets_to_0)
{
    auto p = two_layers_one_joint();
    MaterialForm form = open_material_form(*p);
    material_form_choose_type(*p, form, 1, 3);
    EXPECT_EQ(p->mat_type[1], 4);
    EXPECT_EQ(form.cell(1, 1), "Hard Surf.");
    EXPECT_EQ(form.cell(2, 1), "0");
    EXPECT_EQ(form.cell(5, 1), "90");
    EXPECT_EQ(form.cell(7, 1), "0");
    EXPECT_EQ(form.cell(13, 1), "0");
    // The selected cell shows the new name.
    EXPECT_EQ(form.edit, "Hard Surf.");
    // Back to Coulomb: the redraw resets the 90 of the other type.
    material_form_choose_type(*p, form, 1, 0);
    EXPECT_EQ(p->mat_type[1], 1);
    EXPECT_EQ(form.cell(5, 1), "0");
    EXPECT_EQ(form.cell(1, 1), "Hard Surf.");
}

TEST(MaterialForm, discontinuity_type_list_is_locked_on_coulomb)
{
    auto p = two_layers_one_joint();
    MaterialForm form = open_material_form(*p);
    material_form_choose_type(*p, form, 3, 4);
    EXPECT_EQ(p->mat_type[3], 1);
    EXPECT_EQ(form.cell(1, 3), "Joint");
}

TEST(MaterialForm, arrows_move_the_cell_and_enter_stores_and_stays)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    material_form_key(*p, form, port, FormKey::up);
    EXPECT_EQ(form.row, 1);
    material_form_key(*p, form, port, FormKey::down);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.edit, " 18");
    form.edit = "19";
    material_form_key(*p, form, port, FormKey::enter);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.slot, 1);
    EXPECT_EQ(form.cell(2, 1), "19");
    form.edit = "20";
    material_form_key(*p, form, port, FormKey::tab);
    EXPECT_EQ(form.cell(2, 1), "20");
    material_form_key(*p, form, port, FormKey::right);
    EXPECT_EQ(form.slot, 2);
    EXPECT_EQ(form.edit, " 24");
    material_form_key(*p, form, port, FormKey::left);
    material_form_key(*p, form, port, FormKey::left);
    EXPECT_EQ(form.slot, 1);
    EXPECT_EQ(form.first, 1);
    for (int i = 0; i < 20; ++i)
        material_form_key(*p, form, port, FormKey::down);
    EXPECT_EQ(form.row, 13);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(MaterialForm, moving_onto_the_slot_after_the_last_entry_asks_to_add_and_no_adds_nothing)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    port.answers = {Answer::no};
    MaterialForm form = open_material_form(*p);
    material_form_select(*p, form, port, 1, 3);
    EXPECT_TRUE(port.boxes.empty());
    material_form_key(*p, form, port, FormKey::right);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Do you wish to add a discontinuity?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(form.slot, 4);
    EXPECT_EQ(p->num_discs, 1);
    // Moving within that slot asks nothing more.
    material_form_key(*p, form, port, FormKey::down);
    EXPECT_EQ(port.boxes.size(), 1u);
}

TEST(MaterialForm, yes_to_the_question_adds_a_discontinuity_there)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    port.answers = {Answer::yes};
    MaterialForm form = open_material_form(*p);
    material_form_select(*p, form, port, 1, 4);
    EXPECT_EQ(p->num_discs, 2);
    EXPECT_EQ(p->num_mat_entries, 4);
    EXPECT_EQ(form.cell(1, 4), "Discontinuity Name");
    EXPECT_EQ(form.edit, "Discontinuity Name");
    EXPECT_EQ(material_slot_heading(*p, form, 4), "Disc. 2");
}

TEST(MaterialForm, the_scroll_bar_moves_without_asking)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    port.answers = {Answer::yes};
    MaterialForm form = open_material_form(*p);
    // Slot 1 then shows entry 4, the one after the last.
    material_form_scroll(*p, form, port, 4);
    EXPECT_EQ(form.first, 4);
    EXPECT_EQ(form.entry(), 4);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p->num_discs, 1);
    // The window stays within entries 1..50.
    material_form_scroll(*p, form, port, 60);
    EXPECT_EQ(form.first, 47);
    material_form_scroll(*p, form, port, -3);
    EXPECT_EQ(form.first, 1);
}

TEST(MaterialForm, moving_past_the_last_visible_column_scrolls_by_one_clamped_at_50)
{
    auto p = two_layers_one_joint();
    ScriptedPort port; // answers No
    MaterialForm form = open_material_form(*p);
    material_form_scroll(*p, form, port, 46);
    material_form_select(*p, form, port, 1, 4);
    EXPECT_EQ(form.entry(), 49);
    material_form_key(*p, form, port, FormKey::right);
    EXPECT_EQ(form.first, 47);
    EXPECT_EQ(form.entry(), 50);
    material_form_key(*p, form, port, FormKey::right);
    EXPECT_EQ(form.first, 47);
    EXPECT_EQ(form.entry(), 50);
    material_form_select(*p, form, port, 1, 1);
    material_form_key(*p, form, port, FormKey::left);
    EXPECT_EQ(form.first, 46);
    EXPECT_EQ(form.slot, 1);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(MaterialForm, piezo_number_above_the_surfaces_is_refused_with_the_count_in_signed_form)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 7, 2);
    form.edit = "2";
    material_form_key(*p, form, port, FormKey::down);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Only  1 Piezo surfaces exist");
    EXPECT_EQ(material_piezo_message(*p), "Only " + std::string(" 1") + " Piezo surfaces exist");
    // Restored; the ratio of row 8 stays since no positive row 7 came in.
    EXPECT_EQ(form.cell(7, 2), " 0");
    EXPECT_EQ(form.cell(8, 2), " .3");
}

TEST(MaterialForm, positive_piezo_number_clears_the_ratio_and_a_positive_ratio_the_number)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 7, 2);
    form.edit = "1";
    material_form_key(*p, form, port, FormKey::enter);
    EXPECT_EQ(form.cell(7, 2), "1");
    EXPECT_EQ(form.cell(8, 2), "0");
    go(*p, form, 8, 1);
    form.edit = ".25";
    material_form_key(*p, form, port, FormKey::left);
    EXPECT_EQ(form.cell(8, 1), ".25");
    EXPECT_EQ(form.cell(7, 1), "0");
    EXPECT_TRUE(port.boxes.empty());
}

TEST(MaterialForm, key_filter_by_row)
{
    EXPECT_FALSE(material_key_accepted(1, "", '\r'));
    EXPECT_FALSE(material_key_accepted(1, "", '\t'));
    EXPECT_FALSE(material_key_accepted(3, "", '\r'));
    EXPECT_TRUE(material_key_accepted(1, "a.b", 'x'));
    EXPECT_TRUE(material_key_accepted(1, "a.b", '.'));
    EXPECT_TRUE(material_key_accepted(1, "a", '-'));
    EXPECT_TRUE(material_key_accepted(3, "1", '5'));
    EXPECT_TRUE(material_key_accepted(3, "1", '\b'));
    EXPECT_FALSE(material_key_accepted(3, "1", 'e'));
    EXPECT_FALSE(material_key_accepted(3, "1", '+'));
    EXPECT_FALSE(material_key_accepted(3, "1", '/'));
    EXPECT_TRUE(material_key_accepted(3, "1", '.'));
    EXPECT_FALSE(material_key_accepted(3, "1.", '.'));
    EXPECT_TRUE(material_key_accepted(3, "1", '-', 0));
    EXPECT_FALSE(material_key_accepted(3, "1", '-', 1));
    EXPECT_FALSE(material_key_accepted(3, "1", '-'));
    // Row 7 holds a surface number: no point, no minus.
    EXPECT_FALSE(material_key_accepted(7, "1", '.'));
    EXPECT_FALSE(material_key_accepted(7, "", '-', 0));
    EXPECT_TRUE(material_key_accepted(7, "", '2'));
    EXPECT_TRUE(material_key_accepted(8, "", '.'));
}

TEST(MaterialForm, typing_enters_keys_but_not_into_a_locked_cell)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 3, 1);
    form.edit.clear();
    for (char k : std::string("-1x2.5."))
        material_form_type(form, *p, port, k);
    EXPECT_EQ(form.edit, "-12.5");
    EXPECT_TRUE(material_form_type(form, *p, port, '\b'));
    EXPECT_EQ(form.edit, "-12.");
    // Row 4 of a Coulomb layer is locked.
    go(*p, form, 4, 1);
    EXPECT_FALSE(material_form_type(form, *p, port, '3'));
    EXPECT_EQ(form.edit, " 7");
    EXPECT_TRUE(port.boxes.empty());
}

TEST(MaterialForm, add_on_a_layer_slot_is_refused)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 1, 2);
    material_form_add_discontinuity(*p, form, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "To add a material layer, use Stratigraphic Layers screen");
    EXPECT_EQ(p->num_discs, 1);
}

TEST(MaterialForm, add_shifts_the_entries_from_the_selected_slot_up)
{
    auto p = two_layers_one_joint();
    p->mat_type[3] = 1;
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 1, 3);
    material_form_add_discontinuity(*p, form, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p->num_discs, 2);
    EXPECT_EQ(p->num_mat_entries, 4);
    EXPECT_EQ(form.cell(1, 3), "Discontinuity Name");
    for (int r = 2; r <= 13; ++r)
        EXPECT_EQ(form.cell(r, 3), "0") << r;
    EXPECT_EQ(form.cell(1, 4), "Joint");
    EXPECT_EQ(form.cell(5, 4), " 20");
    EXPECT_EQ(p->mat_type[3], 1);
    EXPECT_EQ(p->mat_type[4], 1);
    EXPECT_EQ(form.edit, "Discontinuity Name");
    // Four entries fill the four columns: no scroll bar yet.
    EXPECT_FALSE(form.scroll_visible);
    material_form_add_discontinuity(*p, form, port);
    EXPECT_EQ(p->num_mat_entries, 5);
    EXPECT_TRUE(form.scroll_visible);
    EXPECT_EQ(form.cell(1, 5), "Joint");
}

TEST(MaterialForm, add_beyond_the_combined_limit_shows_the_limit)
{
    auto p = two_layers_one_joint();
    p->max_materials = 3; // 2 layers + 1 discontinuity + 1 > 3
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 1, 3);
    material_form_add_discontinuity(*p, form, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Combined number of materials and discontinuities must not exceed  3.");
    EXPECT_EQ(p->num_discs, 1);
    EXPECT_EQ(form.cell(1, 3), "Joint");
}

TEST(MaterialForm, delete_on_a_layer_slot_is_refused)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    material_form_delete_discontinuity(*p, form, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "To delete a material layer, use Control Parameters or Layers screen");
    EXPECT_EQ(p->num_discs, 1);
}

TEST(MaterialForm, delete_shifts_the_entries_above_down_and_keeps_the_selection)
{
    auto p = two_layers_one_joint();
    p->num_discs = 3;
    derive_counts(*p);
    p->mat_name[4] = "Fault";
    p->mat_name[5] = "Seam";
    p->mat_type[5] = 2; // a stale type moves with its entry
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    EXPECT_TRUE(form.scroll_visible);
    go(*p, form, 1, 3);
    material_form_delete_discontinuity(*p, form, port);
    EXPECT_EQ(p->num_discs, 2);
    EXPECT_EQ(p->num_mat_entries, 4);
    EXPECT_EQ(form.cell(1, 3), "Fault");
    EXPECT_EQ(form.cell(1, 4), "Seam");
    EXPECT_EQ(form.cell(1, 5), "");
    EXPECT_EQ(p->mat_type[4], 2);
    EXPECT_EQ(form.slot, 3);
    EXPECT_EQ(form.edit, "Fault");
    EXPECT_FALSE(form.scroll_visible);
}

TEST(MaterialForm, deleting_the_last_entry_moves_the_selection_one_left)
{
    auto p = two_layers_one_joint();
    p->num_discs = 2;
    derive_counts(*p);
    p->mat_name[4] = "Fault";
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    go(*p, form, 1, 4);
    material_form_delete_discontinuity(*p, form, port);
    EXPECT_EQ(p->num_discs, 1);
    EXPECT_EQ(form.slot, 3);
    EXPECT_EQ(form.edit, "Joint");
    EXPECT_EQ(material_slot_heading(*p, form, 4), "");
}

TEST(MaterialForm, continue_stores_the_table_with_vertical_values_for_coulomb)
{
    auto p = two_layers_one_joint();
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    form.edit = "Soft clay";
    form.cell(3, 1) = "6";
    form.cell(10, 2) = "1.5";
    form.cell(11, 2) = "2.5";
    form.cell(12, 2) = "100";
    form.cell(13, 2) = "3";
    EXPECT_EQ(continue_material_form(*p, form, port), MaterialNext::closed);
    EXPECT_EQ(p->mat_name[1], "Soft clay");
    EXPECT_EQ(p->mat_unit_weight[1], 18.0f);
    EXPECT_EQ(p->mat_cohesion[1], 6.0f);
    // Coulomb: the vertical values are the others, whatever the cells held.
    EXPECT_EQ(p->mat_cohesion_v[1], 6.0f);
    EXPECT_EQ(p->mat_phi_v[1], 25.0f);
    EXPECT_EQ(p->mat_piezo[1], -1.0f);
    EXPECT_EQ(p->mat_bbar[1], 0.5f);
    // Anisotropic keeps its own vertical values.
    EXPECT_EQ(p->mat_cohesion_v[2], 40.0f);
    EXPECT_EQ(p->mat_phi_v[2], 30.0f);
    EXPECT_EQ(p->mat_piezo[2], 0.3f);
    EXPECT_EQ(p->mat_coef_a[2], 1.5f);
    EXPECT_EQ(p->mat_coef_b[2], 2.5f);
    EXPECT_EQ(p->mat_uniaxial[2], 100.0f);
    EXPECT_EQ(p->mat_coef_d[2], 3.0f);
    EXPECT_EQ(p->mat_name[3], "Joint");
    EXPECT_EQ(p->mat_phi_v[3], 20.0f);
}

TEST(MaterialForm, piezo_number_1_6_is_stored_as_surface_2)
{
    auto p = two_layers_one_joint();
    p->num_piezos = 2;
    derive_counts(*p);
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    form.cell(7, 1) = "1.6";
    form.cell(7, 2) = "1.6";
    form.cell(8, 2) = "0";
    continue_material_form(*p, form, port);
    // "###" rounds 1.6 to 2, kept negated.
    EXPECT_EQ(p->mat_piezo[1], -2.0f);
    EXPECT_EQ(p->mat_piezo[2], -2.0f);
}

TEST(MaterialForm, continue_in_the_wizard_leads_to_the_layers)
{
    auto p = two_layers_one_joint();
    p->form_mode = 2;
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    EXPECT_EQ(continue_material_form(*p, form, port), MaterialNext::to_layers);
    EXPECT_EQ(p->form_mode, 2);
}

TEST(MaterialForm, cancel_after_add_keeps_the_count_but_not_the_text)
{
    auto p = two_layers_one_joint();
    p->form_mode = 2;
    ScriptedPort port;
    MaterialForm form = open_material_form(*p);
    material_form_choose_type(*p, form, 2, 4);
    go(*p, form, 1, 3);
    material_form_add_discontinuity(*p, form, port);
    form.edit = "New joint";
    cancel_material_form(*p, form);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->num_discs, 2);
    EXPECT_EQ(p->num_mat_entries, 4);
    EXPECT_EQ(p->mat_type[2], 5);
    // The table was never stored: names stay as they were.
    EXPECT_EQ(p->mat_name[2], "Rock");
    EXPECT_EQ(p->mat_name[3], "Joint");
    EXPECT_EQ(p->mat_name[4], "");
}

} // namespace
} // namespace tobel::test
