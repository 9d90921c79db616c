// The layer form: rows, methods with their file dialog and depth question,
// the refusal of a thickness for the ground, Add, Insert and Delete with their
// questions, the scroll, and where Continue leads.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/layer_form.h"
#include "dialogs/piezo_form.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "surfaces/surface_fixture.h"
#include "support/paths.h"
#include "support/scripted_port.h"

using namespace tobel;
using tobel::test::ScratchDir;
using tobel::test::ScriptedPort;

namespace {

// Mesh of 3 rows (X = 0, 5, 10) by 4 columns (Y = 0, 10, 20, 30), two
// sections at X = 0 and 10, `layers` layers named "M1".., all by sections.
Project make_layers(int layers, int piezos = 0)
{
    Project p = std::move(*test::make_project({3, 4, 0, 10, 0, 30, layers, piezos}));
    p.num_sections = 2;
    p.sections.x[1] = 0;
    p.sections.x[2] = 10;
    for (int m = 1; m <= layers; ++m)
        p.mat_name[std::size_t(m)] = "M" + std::to_string(m);
    return p;
}

// Surface k as a flat section line at Z = z from Y = 0 to 30 on both sections.
void flat_line(Project& p, int k, float z)
{
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, k) = 2;
        p.sections.y(s, 1, k) = 0;
        p.sections.z(s, 1, k) = z;
        p.sections.y(s, 2, k) = 30;
        p.sections.z(s, 2, k) = z;
    }
}

// A grid of this mesh in which node (i, j) is at 50 + i + j; each row is
// followed by the empty line the reader swallows.
std::string grid_text()
{
    std::string t = "DSAA\n4 3\n0 30\n0 10\n52 57\n";
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 4; ++j)
            t += std::to_string(50 + i + j) + " ";
        t += "\n\n";
    }
    return t;
}

} // namespace

TEST(layer_form, captions_and_notes_are_the_forms_own)
{
    EXPECT_STREQ(layer_form_caption, "Assignment of Stratigraphic Layer Name and Top Surface Input Method");
    EXPECT_STREQ(layer_form_note, "* NOTE: Layers are numbered from the bottom up.  ");
    EXPECT_STREQ(surface_method_texts[0], "Cross-section based ");
    EXPECT_STREQ(surface_method_texts[1], "Elevation grid .GRD file ");
    EXPECT_STREQ(surface_method_texts[2], "At constant depth");
    Project p = make_layers(3);
    EXPECT_EQ(layer_caption(p, 1), "Layer 1");
    EXPECT_EQ(layer_caption(p, 2), "Layer 2");
    EXPECT_EQ(layer_caption(p, 3), "Ground");
}

TEST(layer_form, rows_show_only_the_fields_of_their_method)
{
    Project p = make_layers(3);
    p.surf_method[1] = 1;
    p.surf_grd_file[1] = "A.GRD";
    p.surf_depth[1] = 4; // not in use: not shown
    p.surf_method[2] = 2;
    p.surf_depth[2] = 2.5f;
    p.surf_grd_file[2] = "B.GRD"; // not in use: not shown
    p.surf_grd_file[3] = "C.GRD";
    p.surf_depth[3] = 1;
    LayerForm form = open_layer_form(p);
    const auto rows = layer_form_rows(p, form);
    ASSERT_EQ(rows.size(), 10u);
    EXPECT_TRUE(rows[0].shown);
    EXPECT_EQ(rows[0].caption, "Layer 1");
    EXPECT_EQ(rows[0].material, "M1");
    EXPECT_EQ(rows[0].method_text, "Elevation grid .GRD file ");
    EXPECT_TRUE(rows[0].file_active);
    EXPECT_EQ(rows[0].file, "A.GRD");
    EXPECT_FALSE(rows[0].depth_active);
    EXPECT_EQ(rows[0].depth, "");
    EXPECT_FALSE(rows[1].file_active);
    EXPECT_EQ(rows[1].file, "");
    EXPECT_TRUE(rows[1].depth_active);
    EXPECT_EQ(rows[1].depth, "2.5");
    EXPECT_EQ(rows[2].caption, "Ground");
    EXPECT_EQ(rows[2].file, "");
    EXPECT_EQ(rows[2].depth, "");
    // Rows past the last layer are empty and inactive.
    EXPECT_FALSE(rows[3].shown);
    EXPECT_EQ(rows[3].caption, "");
    EXPECT_FALSE(layer_form_scroll_visible(p));
    // Displaying clears the fields of the form only, not the project.
    EXPECT_EQ(p.surf_grd_file[2], "B.GRD");
    EXPECT_EQ(p.surf_depth[1], 4.0f);
}

TEST(layer_form, constant_depth_for_the_ground_is_refused_and_reset_to_sections)
{
    Project p = make_layers(2);
    p.surf_method[2] = 1;
    p.surf_grd_file[2] = "G.GRD";
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_choose_method(form, p, port, 2, 2);
    // Set back to 0, not to the grid file method it had.
    EXPECT_EQ(p.surf_method[2], 0);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Thickness cannot be specified for this surface");
    EXPECT_TRUE(port.input_boxes.empty());
}

TEST(layer_form, constant_depth_asks_once_and_hangs_from_a_grid_file_plane_above)
{
    ScratchDir dir;
    const std::string grd = dir.file("GROUND.GRD");
    test::write_bytes(grd, grid_text());
    Project p = make_layers(2);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    // The ground from a grid file: no file yet, so the file dialog.
    port.files.push_back(grd);
    layer_form_choose_method(form, p, port, 2, 1);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], "Grid Files (*.GRD)|*.GRD");
    EXPECT_EQ(p.surf_grd_file[2], grd);
    EXPECT_EQ(p.surf_built[2], 1);
    EXPECT_EQ(p.zgrid(2, 3, 2), 55.0f); // 50 + 2 + 3
    // Layer 1 at constant depth 5 under it: the plane is computed at once.
    port.inputs.push_back("5");
    layer_form_choose_method(form, p, port, 1, 2);
    ASSERT_EQ(port.input_boxes.size(), 1u);
    EXPECT_EQ(port.input_boxes[0].prompt, "Enter value of constant depth beneath the next higher surface");
    EXPECT_EQ(port.input_boxes[0].title, "Layer 1");
    EXPECT_EQ(p.surf_method[1], 2);
    EXPECT_EQ(p.surf_depth[1], 5.0f);
    EXPECT_EQ(p.zgrid(1, 1, 1), 47.0f); // 50 + 1 + 1 - 5
    EXPECT_EQ(p.zgrid(3, 4, 1), 52.0f); // 50 + 3 + 4 - 5
    // A second choice of the method with a depth already set asks nothing.
    layer_form_choose_method(form, p, port, 1, 0);
    layer_form_choose_method(form, p, port, 1, 2);
    EXPECT_EQ(port.input_boxes.size(), 1u);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(layer_form, a_constant_depth_plane_above_counts_only_for_the_row_button)
{
    // 3 layers: layer 2 at constant depth 1 under a ground at Z = 10 (already
    // in its plane), layer 1 chosen at depth 3 under layer 2.
    Project p = make_layers(3);
    p.surf_method[2] = 2;
    p.surf_depth[2] = 1;
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            p.zgrid(i, j, 2) = 9;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    port.inputs.push_back("3");
    layer_form_choose_method(form, p, port, 1, 2);
    EXPECT_EQ(p.surf_depth[1], 3.0f);
    EXPECT_EQ(p.zgrid(1, 1, 1), 0.0f); // left to the next rebuild
    // The button asks again and takes the constant-depth plane above: 9 - 4.
    port.inputs.push_back("4");
    layer_form_select(form, p, 1, surface_cell_method);
    layer_form_change(form, p, port);
    ASSERT_EQ(port.input_boxes.size(), 2u);
    EXPECT_EQ(port.input_boxes[1].prompt, "Enter value of constant depth beneath the next higher surface");
    EXPECT_EQ(p.surf_depth[1], 4.0f);
    EXPECT_EQ(p.zgrid(2, 2, 1), 5.0f);
}

TEST(layer_form, an_empty_depth_answer_leaves_the_depth)
{
    Project p = make_layers(2);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    port.inputs.push_back("");
    layer_form_choose_method(form, p, port, 1, 2);
    EXPECT_EQ(p.surf_method[1], 2);
    EXPECT_EQ(p.surf_depth[1], 0.0f);
    layer_form_choose_method(form, p, port, 1, 0);
    layer_form_choose_method(form, p, port, 1, 2); // cancelled box
    EXPECT_EQ(port.input_boxes.size(), 2u);
    EXPECT_EQ(p.surf_depth[1], 0.0f);
}

TEST(layer_form, a_named_grid_file_is_not_asked_for_again_but_the_button_asks)
{
    Project p = make_layers(2);
    p.surf_grd_file[1] = "OLD.GRD";
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_choose_method(form, p, port, 1, 1);
    EXPECT_TRUE(port.dialog_filters.empty());
    EXPECT_EQ(p.surf_method[1], 1);
    // The button asks at any time; a cancel changes nothing.
    layer_form_select(form, p, 1, surface_cell_method);
    layer_form_change(form, p, port);
    EXPECT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(p.surf_grd_file[1], "OLD.GRD");
    // The "*.GRD" a save leaves for a missing name is no file.
    p.surf_grd_file[1] = "*.GRD";
    layer_form_choose_method(form, p, port, 1, 0);
    layer_form_choose_method(form, p, port, 1, 1);
    EXPECT_EQ(port.dialog_filters.size(), 2u);
}

TEST(layer_form, moving_past_the_last_row_offers_a_new_layer)
{
    Project p = make_layers(2);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_key(form, p, port, FormKey::down);
    EXPECT_EQ(form.row, 2);
    EXPECT_TRUE(port.boxes.empty());
    // No: nothing added.
    port.answers.push_back(Answer::no);
    layer_form_key(form, p, port, FormKey::down);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Do you wish to add a material layer?");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(p.num_layers, 2);
    // Yes: a new ground at 3, which the form takes.
    port.answers.push_back(Answer::yes);
    layer_form_key(form, p, port, FormKey::down);
    EXPECT_EQ(p.num_layers, 3);
    EXPECT_EQ(form.row, 3);
    EXPECT_EQ(p.mat_name[3], "Material Name");
    EXPECT_EQ(p.mat_name[2], "M2");
    EXPECT_EQ(layer_caption(p, 2), "Layer 2");
    EXPECT_EQ(layer_caption(p, 3), "Ground");
}

TEST(layer_form, tab_walks_the_cells_in_use_and_wraps_to_the_next_row)
{
    Project p = make_layers(2);
    p.surf_method[1] = 2;
    p.surf_depth[1] = 1.5f;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_EQ(form.cell, surface_cell_name);
    EXPECT_EQ(form.edit_text, "M1");
    layer_form_key(form, p, port, FormKey::tab);
    EXPECT_EQ(form.cell, surface_cell_method);
    layer_form_key(form, p, port, FormKey::tab); // the file cell is not in use
    EXPECT_EQ(form.cell, surface_cell_depth);
    EXPECT_EQ(form.edit_text, "1.5");
    layer_form_key(form, p, port, FormKey::left);
    EXPECT_EQ(form.cell, surface_cell_method);
    layer_form_key(form, p, port, FormKey::right);
    layer_form_key(form, p, port, FormKey::enter);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.cell, surface_cell_name);
    EXPECT_EQ(form.edit_text, "M2");
    layer_form_key(form, p, port, FormKey::up);
    EXPECT_EQ(form.row, 1);
    layer_form_key(form, p, port, FormKey::up);
    EXPECT_EQ(form.row, 1);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(layer_form, typing_names_the_material_and_sets_the_depth_at_once)
{
    Project p = make_layers(2);
    p.surf_method[1] = 2;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_TRUE(layer_form_type(form, p, port, 8));
    EXPECT_TRUE(layer_form_type(form, p, port, 'x'));
    EXPECT_EQ(p.mat_name[1], "Mx");
    layer_form_select(form, p, 1, surface_cell_depth);
    EXPECT_EQ(form.edit_text, "0");
    EXPECT_TRUE(layer_form_type(form, p, port, '.'));
    EXPECT_TRUE(layer_form_type(form, p, port, '5'));
    EXPECT_FALSE(layer_form_type(form, p, port, 'a'));
    EXPECT_FALSE(layer_form_type(form, p, port, '.'));
    EXPECT_EQ(form.edit_text, "0.5");
    EXPECT_EQ(p.surf_depth[1], 0.5f);
    // The method list and the file field take no keys.
    layer_form_select(form, p, 1, surface_cell_method);
    EXPECT_FALSE(layer_form_type(form, p, port, '1'));
    EXPECT_FALSE(layer_form_accepts(surface_cell_file, "", 'a'));
    EXPECT_TRUE(layer_form_accepts(surface_cell_name, "", ' '));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(layer_form, insert_puts_a_layer_under_the_current_row)
{
    Project p = make_layers(3);
    p.surf_method[2] = 1;
    p.surf_grd_file[2] = "TWO.GRD";
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_select(form, p, 2, surface_cell_name);
    ASSERT_TRUE(layer_form_insert_surface(form, p, port));
    EXPECT_EQ(p.num_layers, 4);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.edit_text, "Material Name");
    EXPECT_EQ(p.mat_name[2], "Material Name");
    EXPECT_EQ(p.mat_name[3], "M2");
    EXPECT_EQ(p.surf_method[3], 1);
    EXPECT_EQ(p.surf_grd_file[3], "TWO.GRD");
    EXPECT_EQ(p.surf_method[2], 0);
    EXPECT_EQ(layer_caption(p, 4), "Ground");
}

TEST(layer_form, adding_beyond_ten_rows_scrolls_the_new_row_into_view)
{
    Project p = make_layers(10);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_FALSE(layer_form_scroll_visible(p));
    ASSERT_TRUE(layer_form_add_surface(form, p, port));
    // Row 11 among ten rows in view: rows 2..11.
    EXPECT_EQ(form.row, 11);
    EXPECT_EQ(form.top_row, 2);
    EXPECT_TRUE(layer_form_scroll_visible(p));
    const auto rows = layer_form_rows(p, form);
    EXPECT_EQ(rows[0].caption, "Layer 2");
    EXPECT_EQ(rows[9].caption, "Ground");
    // The scroll bar moves the view only; taking row 1 brings it back.
    layer_form_select(form, p, 11, surface_cell_name);
    layer_form_scroll(form, p, 1);
    EXPECT_EQ(form.top_row, 1);
    layer_form_scroll(form, p, 9); // 11 layers: the top row goes no further than 2
    EXPECT_EQ(form.top_row, 2);
    layer_form_select(form, p, 1, surface_cell_name);
    EXPECT_EQ(form.top_row, 1);
}

TEST(layer_form, the_limit_refuses_a_layer_through_the_form)
{
    Project p = make_layers(49);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_FALSE(layer_form_add_surface(form, p, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Combined number of materials and piezo surfaces must not exceed  50.");
    EXPECT_EQ(p.num_layers, 49);
    EXPECT_EQ(form.row, 1);
}

TEST(layer_form, delete_asks_and_removes_the_current_layer)
{
    Project p = make_layers(3);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_select(form, p, 2, surface_cell_name);
    port.answers.push_back(Answer::no);
    EXPECT_FALSE(layer_form_delete_surface(form, p, port));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Are you sure you wish to delete Layer 2");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(p.num_layers, 3);
    port.answers.push_back(Answer::yes);
    EXPECT_TRUE(layer_form_delete_surface(form, p, port));
    EXPECT_EQ(p.num_layers, 2);
    EXPECT_EQ(p.mat_name[2], "M3");
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.edit_text, "M3");
}

TEST(layer_form, deleting_the_only_layer_does_nothing_and_asks_nothing)
{
    Project p = make_layers(1);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_FALSE(layer_form_delete_surface(form, p, port));
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.num_layers, 1);
}

TEST(layer_form, deleting_the_ground_makes_the_layer_under_it_the_ground)
{
    Project p = make_layers(3);
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    layer_form_select(form, p, 3, surface_cell_name);
    port.answers.push_back(Answer::yes);
    ASSERT_TRUE(layer_form_delete_surface(form, p, port));
    EXPECT_EQ(port.boxes[0].text, "Are you sure you wish to delete Layer 3");
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(layer_caption(p, 2), "Ground");
    EXPECT_EQ(layer_form_rows(p, form)[1].material, "M2");
}

TEST(layer_form, continue_from_the_menu_rebuilds_the_stack)
{
    Project p = make_layers(2);
    flat_line(p, 1, 4);
    flat_line(p, 2, 10);
    p.form_mode = 0;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_layer_form(p, form, port), LayerNext::finished);
    EXPECT_EQ(p.zgrid(2, 2, 1), 4.0f);
    EXPECT_EQ(p.zgrid(2, 2, 2), 10.0f);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(layer_form, continue_in_the_wizard_goes_to_the_piezometric_form_first)
{
    Project p = make_layers(2, 1);
    flat_line(p, 1, 4);
    p.form_mode = 2;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_layer_form(p, form, port), LayerNext::to_piezos);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(p.zgrid(2, 2, 1), 0.0f); // nothing rebuilt yet
}

TEST(layer_form, continue_in_the_wizard_draws_the_plan_when_a_layer_needs_sections)
{
    Project p = make_layers(2);
    p.surf_method[2] = 1;
    p.form_mode = 2;
    p.view_mode = 0;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_layer_form(p, form, port), LayerNext::to_positions);
    EXPECT_EQ(p.form_mode, 2);
    EXPECT_EQ(p.view_mode, 6);
    EXPECT_EQ(p.pictures.section.caption, "PLAN VIEW");
}

TEST(layer_form, continue_in_the_wizard_without_sections_finishes_the_load)
{
    Project p = make_layers(2);
    p.surf_method[1] = 1;
    p.surf_method[2] = 1;
    p.form_mode = 2;
    LayerForm form = open_layer_form(p);
    ScriptedPort port;
    EXPECT_EQ(continue_layer_form(p, form, port), LayerNext::finished);
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_EQ(p.view_mode, 5);
    EXPECT_NE(p.pictures.section.caption, "PLAN VIEW");
}

TEST(layer_form, cancel_ends_the_wizard)
{
    Project p = make_layers(2);
    p.form_mode = 2;
    LayerForm form = open_layer_form(p);
    cancel_layer_form(p, form);
    EXPECT_EQ(p.form_mode, 0);
}

TEST(layer_form, the_example_saves_as_before_after_an_insert_and_delete_through_the_forms)
{
    Project p;
    reset_project(p);
    InputReader in(test::example_path("slope3d-layers-piezo-force.tob"));
    read_data_items(p, in);
    const std::string before = data_file_text(p);
    ScriptedPort port;
    LayerForm layers = open_layer_form(p);
    layer_form_select(layers, p, 2, surface_cell_name);
    ASSERT_TRUE(layer_form_insert_surface(layers, p, port));
    EXPECT_EQ(p.mat_name[3], "Silty sand");
    port.answers.push_back(Answer::yes);
    ASSERT_TRUE(layer_form_delete_surface(layers, p, port));
    PiezoForm piezos = open_piezo_form(p);
    ASSERT_TRUE(piezo_form_insert_surface(piezos, p, port));
    port.answers.push_back(Answer::yes);
    ASSERT_TRUE(piezo_form_delete_surface(piezos, p, port));
    EXPECT_EQ(continue_piezo_form(p, piezos, port), PiezoNext::finished);
    EXPECT_EQ(data_file_text(p), before);
}
