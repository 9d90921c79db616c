// The new project chain driven as a user drives it: New, then each form's
// cells, keys and buttons and its Continue, the sections drawn with the
// pointer in the section editor, a single ellipsoid, Save As. The file
// written is compared byte for byte with a data file written by hand from
// the same values (examples/slope3d-new-project.tob).
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "project/defaults.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

struct Wizard {
    Project p;
    ScriptedPort port;
    DialogSession s;

    Wizard()
    {
        main_load(p);
        s.today = "11/23/26";
    }
    void text(int row, int col, const std::string& t)
    {
        ASSERT_EQ(dialog_select(p, port, s, row, col), DialogStep::done) << dialog_caption(s);
        ASSERT_EQ(dialog_clear(p, port, s), DialogStep::done);
        for (char c : t)
            ASSERT_EQ(dialog_type(p, port, s, c), DialogStep::done);
    }
    void click(double y, double z)
    {
        dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, y, z * p.vert_exag);
        dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, y, z * p.vert_exag);
    }
    void drag(double y1, double z1, double y2, double z2)
    {
        dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, y1, z1 * p.vert_exag);
        dialog_pointer(p, port, s, PointerAction::move, PointerButton::left, false, y2, z2 * p.vert_exag);
        dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, y2, z2 * p.vert_exag);
    }
};

// The whole chain up to the section editor, with the values of the example.
void fill_up_to_the_editor(Wizard& w)
{
    new_project(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Control Parameters");
    EXPECT_EQ(w.p.form_mode, 2);
    w.text(1, 1, "New slope from the wizard");
    w.text(2, 1, "Two layers, a water table and two sections");
    w.text(3, 1, "TOBEL-3 examples");
    w.text(6, 1, "2");
    w.text(7, 1, "1");
    w.text(9, 1, "0");
    w.text(10, 1, "100");
    w.text(11, 1, "21");
    w.text(12, 1, "0");
    w.text(13, 1, "120");
    w.text(14, 1, "61");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Interpolation Method");
    // Rows 21 over 0..100 and columns 61 over 0..120.
    EXPECT_FLOAT_EQ(w.p.row_spacing, 5.0f);
    EXPECT_FLOAT_EQ(w.p.col_spacing, 2.0f);
    ASSERT_EQ(dialog_choose(w.p, w.port, w.s, 1), DialogStep::done);
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Material / Discontinuity Editor");
    w.text(1, 1, "Stiff clay");
    w.text(2, 1, "21");
    w.text(3, 1, "25");
    w.text(5, 1, "28");
    w.text(7, 1, "1");
    w.text(1, 2, "Silty sand");
    w.text(2, 2, "19");
    w.text(3, 2, "5");
    w.text(5, 2, "30");
    w.text(7, 2, "1");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Assignment of Stratigraphic Layer Name and Top Surface Input Method");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Assignment of Piezometric Surface Input Method");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Input cross-section locations");
    // A new project holds two sections, at the ends of the mesh.
    EXPECT_EQ(w.p.num_sections, 2);
    w.text(1, 1, "0");
    w.text(2, 1, "100");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Section Editor") << (w.port.boxes.empty() ? "" : w.port.boxes.back().text);
    EXPECT_EQ(w.p.view_row, 1);
}

void draw_the_sections(Wizard& w)
{
    // Section 1: the top of the clay, the ground, the water table.
    for (auto [y, z] : {std::pair{0, 8}, {40, 8}, {70, 20}, {120, 20}})
        w.click(y, z);
    dialog_button(w.p, w.port, w.s, "toggle-line");
    for (auto [y, z] : {std::pair{0, 15}, {40, 15}, {70, 30}, {120, 30}})
        w.click(y, z);
    dialog_button(w.p, w.port, w.s, "toggle-line");
    for (auto [y, z] : {std::pair{0, 12}, {45, 12}, {80, 24}, {120, 24}})
        w.click(y, z);
    // Section 2: a copy of section 1 whose crest is moved by dragging.
    ASSERT_EQ(dialog_button(w.p, w.port, w.s, "goto-section", 2), DialogStep::done);
    EXPECT_EQ(w.p.view_row, 2);
    ASSERT_EQ(dialog_button(w.p, w.port, w.s, "copy-section", 1), DialogStep::done);
    ASSERT_EQ(dialog_button(w.p, w.port, w.s, "goto-line", 2), DialogStep::done);
    w.drag(40, 15, 38, 15);
    w.drag(70, 30, 70, 31);
    w.drag(120, 30, 120, 31);
}

TEST(new_project_chain, builds_the_example_from_nothing_byte_for_byte)
{
    Wizard w;
    fill_up_to_the_editor(w);
    draw_the_sections(w);
    dialog_continue(w.p, w.port, w.s);
    EXPECT_FALSE(dialog_open(w.s));
    EXPECT_EQ(w.p.form_mode, 0);
    EXPECT_EQ(w.p.view_mode, 5);
    // The layers were written back: section 1 as drawn, section 2 moved.
    EXPECT_EQ(w.p.sections.n(1, 2), 4);
    EXPECT_FLOAT_EQ(w.p.sections.y(2, 2, 2), 38.0f);
    EXPECT_FLOAT_EQ(w.p.sections.z(2, 3, 2), 31.0f);
    EXPECT_FLOAT_EQ(w.p.sections.z(1, 3, 2), 30.0f);

    open_dialog(w.p, w.port, w.s, DialogKind::ellipsoid);
    ASSERT_EQ(dialog_caption(w.s), "Ellipsoidal Sliding Surface");
    w.text(1, 1, "50");
    w.text(2, 1, "60");
    w.text(3, 1, "55");
    w.text(4, 1, "12");
    w.text(5, 1, "1");
    dialog_continue(w.p, w.port, w.s);
    EXPECT_NE(w.p.surface_defined, 0);
    EXPECT_FLOAT_EQ(w.p.radius_in, 43.0f); // 55 - 12

    test::ScratchDir dir;
    w.port.files = {dir.file("new.tob")};
    file_save_as(w.p, w.port);
    EXPECT_EQ(test::read_bytes(dir.file("new.tob")),
              test::read_bytes(test::example_path("slope3d-new-project.tob")));
}

TEST(new_project_chain, cancel_of_the_materials_stops_the_chain)
{
    Wizard w;
    new_project(w.p, w.port, w.s);
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Interpolation Method");
    dialog_continue(w.p, w.port, w.s);
    ASSERT_EQ(dialog_caption(w.s), "Material / Discontinuity Editor");
    dialog_cancel(w.p, w.port, w.s);
    EXPECT_FALSE(dialog_open(w.s));
    EXPECT_EQ(w.p.form_mode, 0);
}

TEST(new_project_chain, a_refused_check_keeps_control_parameters_open)
{
    Wizard w;
    new_project(w.p, w.port, w.s);
    w.text(13, 1, "0"); // Max. Y not above Min. Y
    w.text(12, 1, "5");
    dialog_continue(w.p, w.port, w.s);
    EXPECT_EQ(dialog_caption(w.s), "Control Parameters");
    ASSERT_FALSE(w.port.boxes.empty());
    EXPECT_EQ(w.port.boxes.back().text, "Min. Y must be smaller than Max. Y.");
}

TEST(new_project_chain, layers_by_constant_depth_skip_the_sections)
{
    // With no piezometric surface and every layer but the ground at a
    // constant depth, there is nothing to draw: the stack is rebuilt and the
    // chain ends after the layer form.
    Wizard w;
    new_project(w.p, w.port, w.s);
    w.text(6, 1, "2");
    w.text(7, 1, "0");
    dialog_continue(w.p, w.port, w.s);
    dialog_continue(w.p, w.port, w.s); // interpolation
    dialog_continue(w.p, w.port, w.s); // materials
    ASSERT_EQ(dialog_caption(w.s), "Assignment of Stratigraphic Layer Name and Top Surface Input Method");
    w.port.inputs = {std::string("4")};
    ASSERT_EQ(dialog_choose(w.p, w.port, w.s, 2), DialogStep::done); // layer 1 at a constant depth
    EXPECT_EQ(w.p.surf_method[1], 2);
    EXPECT_FLOAT_EQ(w.p.surf_depth[1], 4.0f);
    // The ground stays with its sections, so the positions follow.
    dialog_continue(w.p, w.port, w.s);
    EXPECT_EQ(dialog_caption(w.s), "Input cross-section locations");
}

TEST(new_project_chain, new_is_cancelled_at_the_save_prompt)
{
    Wizard w;
    w.p.dirty_flag = -1;
    w.port.answers = {Answer::cancel};
    new_project(w.p, w.port, w.s);
    EXPECT_FALSE(dialog_open(w.s));
}

} // namespace
} // namespace tobel
