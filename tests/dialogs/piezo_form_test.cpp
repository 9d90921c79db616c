// The piezometric surface form: depth questions by position, planes hung at
// once from a reference not made by sections, Add and Delete that leave the
// materials alone, and where Continue leads.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/piezo_form.h"
#include "project/defaults.h"
#include "surfaces/surface_fixture.h"
#include "support/scripted_port.h"

using namespace tobel;
using tobel::test::ScriptedPort;

namespace {

// Mesh of 2 rows by 3 columns; `layers` layers named "M1".., `piezos`
// piezometric surfaces, all by sections; material 1 uses piezo 1.
Project make_piezos(int layers, int piezos)
{
    Project p = std::move(*test::make_project({2, 3, 0, 10, 0, 20, layers, piezos}));
    p.num_sections = 2;
    p.sections.x[2] = 10;
    for (int m = 1; m <= layers; ++m)
        p.mat_name[std::size_t(m)] = "M" + std::to_string(m);
    p.mat_piezo[1] = -1;
    return p;
}

void fill_plane(Project& p, int k, float z)
{
    for (int i = 1; i <= p.num_rows; ++i)
        for (int j = 1; j <= p.num_cols; ++j)
            p.zgrid(i, j, k) = z + float(j);
}

} // namespace

TEST(piezo_form, captions_and_note_are_the_forms_own)
{
    EXPECT_STREQ(piezo_form_caption, "Assignment of Piezometric Surface Input Method");
    EXPECT_STREQ(piezo_form_note, "Important:  No piezometric surface will be used in the analysis, unless "
                                  "associated with a material or discontinuity.");
    EXPECT_STREQ(piezo_column_titles[3], "Thickness:");
    EXPECT_EQ(piezo_caption(2), "Piezo 2");
    Project p = make_piezos(2, 2);
    PiezoForm form = open_piezo_form(p);
    const auto rows = piezo_form_rows(p, form);
    EXPECT_EQ(rows[0].caption, "Piezo 1");
    EXPECT_EQ(rows[1].caption, "Piezo 2");
    EXPECT_EQ(rows[0].material, "");
    EXPECT_FALSE(rows[2].shown);
    EXPECT_EQ(form.cell, surface_cell_method);
}

TEST(piezo_form, first_piezo_hangs_from_a_grid_file_ground_at_once)
{
    // Ground (surface 2) from a grid file, already in its plane: 20 + j.
    Project p = make_piezos(2, 2);
    p.surf_method[2] = 1;
    fill_plane(p, 2, 20);
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    port.inputs.push_back("3");
    piezo_form_choose_method(form, p, port, 1, 2);
    ASSERT_EQ(port.input_boxes.size(), 1u);
    EXPECT_EQ(port.input_boxes[0].prompt, "Enter value of constant depth beneath the ground surface");
    EXPECT_EQ(port.input_boxes[0].title, "Piezo 1");
    EXPECT_EQ(p.surf_method[3], 2);
    EXPECT_EQ(p.surf_depth[3], 3.0f);
    EXPECT_EQ(p.zgrid(1, 1, 3), 18.0f); // 20 + 1 - 3
    EXPECT_EQ(p.zgrid(2, 3, 3), 20.0f); // 20 + 3 - 3
    // The second hangs from the first, whose constant depth counts here: 18 - 2.
    port.inputs.push_back("2");
    piezo_form_choose_method(form, p, port, 2, 2);
    ASSERT_EQ(port.input_boxes.size(), 2u);
    EXPECT_EQ(port.input_boxes[1].prompt,
              "Enter value of constant depth beneath the next higher piezo surface");
    EXPECT_EQ(port.input_boxes[1].title, "Piezo 2");
    EXPECT_EQ(p.zgrid(1, 1, 4), 16.0f);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(piezo_form, a_reference_from_sections_leaves_the_plane_to_the_rebuild)
{
    Project p = make_piezos(1, 1);
    fill_plane(p, 1, 20); // ground by sections
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    port.inputs.push_back("3");
    piezo_form_choose_method(form, p, port, 1, 2);
    EXPECT_EQ(p.surf_depth[2], 3.0f);
    EXPECT_EQ(p.zgrid(1, 1, 2), 0.0f);
}

TEST(piezo_form, moving_past_the_last_row_offers_a_new_piezo)
{
    Project p = make_piezos(2, 1);
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    port.answers.push_back(Answer::yes);
    piezo_form_key(form, p, port, FormKey::down);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Do you wish to add a piezo surface?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(p.num_piezos, 2);
    EXPECT_EQ(p.sliding_index, 5);
    EXPECT_EQ(form.row, 2);
    // Materials are not touched: still two entries, material 1 on piezo 1.
    EXPECT_EQ(p.num_mat_entries, 2);
    EXPECT_EQ(p.mat_name[2], "M2");
    EXPECT_EQ(p.mat_piezo[1], -1.0f);
}

TEST(piezo_form, delete_asks_and_shifts_the_piezo_surfaces_only)
{
    Project p = make_piezos(2, 2);
    p.surf_method[4] = 1;
    p.surf_grd_file[4] = "P2.GRD";
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    port.answers.push_back(Answer::yes);
    ASSERT_TRUE(piezo_form_delete_surface(form, p, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you wish to delete Piezo 1");
    EXPECT_EQ(p.num_piezos, 1);
    EXPECT_EQ(p.surf_method[3], 1);
    EXPECT_EQ(p.surf_grd_file[3], "P2.GRD");
    // The reference in material 1 still says piezo 1, now the former piezo 2.
    EXPECT_EQ(p.mat_piezo[1], -1.0f);
    EXPECT_EQ(p.mat_name[1], "M1");
    // The last piezo may go too; then the list is empty.
    port.answers.push_back(Answer::yes);
    ASSERT_TRUE(piezo_form_delete_surface(form, p, port));
    EXPECT_EQ(p.num_piezos, 0);
    EXPECT_EQ(p.sliding_index, 3);
    EXPECT_FALSE(piezo_form_delete_surface(form, p, port));
    EXPECT_EQ(port.boxes.size(), 2u);
}

TEST(piezo_form, insert_puts_a_piezo_under_the_current_row)
{
    Project p = make_piezos(1, 2);
    p.surf_method[3] = 1;
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    piezo_form_select(form, p, 2, surface_cell_method);
    ASSERT_TRUE(piezo_form_insert_surface(form, p, port));
    EXPECT_EQ(p.num_piezos, 3);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(p.surf_method[3], 0);
    EXPECT_EQ(p.surf_method[4], 1);
}

TEST(piezo_form, the_limit_refuses_a_piezo)
{
    Project p = make_piezos(48, 1);
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    EXPECT_FALSE(piezo_form_add_surface(form, p, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Combined number of materials and piezo surfaces must not exceed  50.");
    EXPECT_EQ(p.num_piezos, 1);
}

TEST(piezo_form, typing_a_thickness_sets_the_depth)
{
    Project p = make_piezos(1, 1);
    p.surf_method[2] = 2;
    p.surf_depth[2] = 1;
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    piezo_form_key(form, p, port, FormKey::tab);
    EXPECT_EQ(form.cell, surface_cell_depth);
    EXPECT_EQ(form.edit_text, "1");
    EXPECT_TRUE(piezo_form_type(form, p, port, '2'));
    EXPECT_EQ(p.surf_depth[2], 12.0f);
    EXPECT_FALSE(piezo_form_accepts(surface_cell_name, "", 'a'));
}

TEST(piezo_form, continue_in_the_wizard_looks_at_the_piezo_surfaces_only)
{
    // Layers by sections, the piezo from a grid file: the wizard ends here
    // without going to the sections.
    Project p = make_piezos(2, 1);
    p.surf_method[3] = 1;
    p.form_mode = 2;
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_piezo_form(p, form, port), PiezoNext::finished);
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_EQ(p.view_mode, 5);
}

TEST(piezo_form, continue_in_the_wizard_draws_the_plan_for_a_piezo_by_sections)
{
    Project p = make_piezos(2, 1);
    p.surf_method[1] = 1;
    p.surf_method[2] = 1;
    p.form_mode = 2;
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_piezo_form(p, form, port), PiezoNext::to_positions);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(p.view_mode, 6);
    EXPECT_EQ(p.pictures.section.caption, "PLAN VIEW");
}

TEST(piezo_form, continue_from_the_menu_rebuilds_and_cancel_ends_the_wizard)
{
    // Piezo 1 at constant depth 2 under a ground by sections flat at Z = 7.
    Project p = make_piezos(1, 1);
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, 1) = 2;
        p.sections.y(s, 1, 1) = 0;
        p.sections.z(s, 1, 1) = 7;
        p.sections.y(s, 2, 1) = 20;
        p.sections.z(s, 2, 1) = 7;
    }
    p.surf_method[2] = 2;
    p.surf_depth[2] = 2;
    p.form_mode = 0;
    PiezoForm form = open_piezo_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_piezo_form(p, form, port), PiezoNext::finished);
    EXPECT_EQ(p.zgrid(1, 2, 2), 5.0f);
    p.form_mode = 2;
    cancel_piezo_form(p, form);
    EXPECT_EQ(p.form_mode, 0);
}
