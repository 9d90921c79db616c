// The general sliding surface form: what opening clears, the grid file
// choice, and what its Continue and the section editor's Continue leave.
#include <gtest/gtest.h>

#include <cmath>

#include "commands/menu_model.h"
#include "dialogs/general_surface_form.h"
#include "dialogs/wedge_form.h"
#include "graphics/section_editor.h"
#include "support/paths.h"
#include "support/scripted_port.h"
#include "surface_fixture.h"
#include "surfaces/discontinuity_field.h"

namespace tobel::test {
namespace {

// 3 rows over x 0..10, 4 columns over y 0..30 (spacings 5 and 10), ground
// flat at 25, orthogonal interpolation between sections at x = 0 and x = 10.
std::unique_ptr<Project> general_project()
{
    auto p = make_project({3, 4, 0, 10, 0, 30});
    set_ground(*p, [](double, double) { return 25.0; });
    p->unit_weight_water = 9.81f;
    p->interp_method = 1;
    p->num_sections = 2;
    p->sections.x[1] = 0;
    p->sections.x[2] = 10;
    return p;
}

// The sliding line z = 28 - y / 2 on both sections: 28, 23, 18, 13 at the
// four columns, above the ground at y = 0 only.
void draw_sliding_line(Project& p)
{
    const int k = p.sliding_index;
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, k) = 2;
        p.sections.y(s, 1, k) = 0;
        p.sections.z(s, 1, k) = 28;
        p.sections.y(s, 2, k) = 30;
        p.sections.z(s, 2, k) = 13;
    }
}

void fill_sliding(Project& p, float z)
{
    for (int row = 1; row <= p.num_rows; ++row)
        for (int col = 1; col <= p.num_cols; ++col)
            p.zgrid(row, col, p.sliding_index) = z;
}

// The grid of the mesh with value 10 * row + column, rows ended by a blank line.
const char* const grid_text = "DSAA\r\n 4  3 \r\n 0  30 \r\n 0  10 \r\n 11  34 \r\n"
                              " 11  12  13  14 \r\n\r\n"
                              " 21  22  23  24 \r\n\r\n"
                              " 31  32  33  34 \r\n\r\n";

TEST(GeneralSurfaceForm, method_texts_carry_their_trailing_blanks)
{
    EXPECT_STREQ(general_method_texts[0], "Cross-section based ");
    EXPECT_STREQ(general_method_texts[1], "Elevation grid .GRD file ");
}

TEST(GeneralSurfaceForm, opening_clears_the_plane_and_the_codes_of_a_section_surface)
{
    auto p = general_project();
    fill_sliding(*p, 20);
    p->surf_dip_y(2, 2) = 0.3f;
    p->field_x_low = -1;
    p->field_x_high = 20;
    p->field_y_low = -1;
    p->field_y_high = 40;
    set_discontinuity_field(*p);
    ASSERT_EQ(p->disc_code(2, 2), 1);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    EXPECT_EQ(f.method, 0);
    EXPECT_FALSE(f.file_enabled());
    for (int row = 1; row <= 3; ++row)
        for (int col = 1; col <= 4; ++col) {
            EXPECT_EQ(p->disc_code(row, col), 0);
            EXPECT_EQ(sliding(*p, row, col), 0.0f);
        }
    EXPECT_EQ(p->surf_dip_y(2, 2), 0.0f);
}

TEST(GeneralSurfaceForm, reopening_keeps_the_field_of_a_plane_from_a_grid_file)
{
    auto p = general_project();
    fill_sliding(*p, 20);
    p->surf_method[std::size_t(p->sliding_index)] = 1;
    p->surf_grd_file[std::size_t(p->sliding_index)] = "SLIDE.GRD";
    p->field_x_low = -1;
    p->field_x_high = 20;
    p->field_y_low = -1;
    p->field_y_high = 40;
    set_discontinuity_field(*p);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    EXPECT_EQ(f.method, 1);
    EXPECT_TRUE(f.file_enabled());
    EXPECT_EQ(f.grd_file, "SLIDE.GRD");
    EXPECT_EQ(p->disc_code(2, 2), 1);
    EXPECT_EQ(sliding(*p, 2, 2), 20.0f);
}

TEST(GeneralSurfaceForm, choosing_the_grid_file_text_asks_for_a_file)
{
    auto p = general_project();
    p->form_mode = 7;
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    port.files.push_back(std::nullopt); // cancelled
    EXPECT_EQ(choose_general_method(*p, f, 1, port), GeneralNext::stays_open);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], "Grid Files (*.GRD)|*.GRD");
    EXPECT_EQ(p->surf_method[std::size_t(p->sliding_index)], 1);
    EXPECT_TRUE(f.file_enabled());
    EXPECT_TRUE(p->surf_grd_file[std::size_t(p->sliding_index)].empty());
    EXPECT_EQ(p->form_mode, 7);
    // Back to sections: no dialog, the file field is cleared.
    EXPECT_EQ(choose_general_method(*p, f, 0, port), GeneralNext::stays_open);
    EXPECT_EQ(p->surf_method[std::size_t(p->sliding_index)], 0);
    EXPECT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_FALSE(f.file_enabled());
}

TEST(GeneralSurfaceForm, a_grid_file_loads_the_plane_and_closes_the_form)
{
    auto p = general_project();
    p->form_mode = 7;
    ScratchDir dir;
    write_bytes(dir.file("S.GRD"), grid_text);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    port.files.push_back(dir.file("S.GRD"));
    EXPECT_EQ(choose_general_method(*p, f, 1, port), GeneralNext::closed);
    EXPECT_EQ(p->surf_grd_file[std::size_t(p->sliding_index)], dir.file("S.GRD"));
    EXPECT_EQ(f.grd_file, dir.file("S.GRD"));
    EXPECT_EQ(sliding(*p, 2, 3), 23.0f);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_TRUE(p->menus.at("Solve_single_trial").visible);
}

TEST(GeneralSurfaceForm, continue_on_sections_interpolates_and_opens_the_section_editor)
{
    auto p = general_project();
    p->form_mode = 7;
    draw_sliding_line(*p);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    EXPECT_EQ(continue_general_surface_form(*p, f, port), GeneralNext::section_editor);
    EXPECT_EQ(p->surface_kind, 4);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_EQ(sliding(*p, 2, 1), 28.0f); // not yet lowered to ground
    EXPECT_EQ(sliding(*p, 3, 4), 13.0f);
    EXPECT_EQ(p->form_mode, 7);
}

// The section editor opened on the general sliding line of section 1 and
// closed by Continue with the line as it stands.
EditorNext editor_continue_as_drawn(Project& p, Port& port)
{
    p.edit_general = true;
    p.view_row = 1;
    SectionEditor ed = editor_open(p, port);
    return continue_editor(p, ed, port);
}

TEST(GeneralSurfaceForm, editor_continue_finishes_a_general_surface)
{
    auto p = general_project();
    p->form_mode = 7;
    draw_sliding_line(*p);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    continue_general_surface_form(*p, f, port);
    EXPECT_EQ(editor_continue_as_drawn(*p, port), EditorNext::general_done);
    EXPECT_EQ(p->form_mode, 0);
    // 28 is lowered to the ground of 25; 23, 18, 13 stay.
    EXPECT_EQ(sliding(*p, 1, 1), 25.0f);
    EXPECT_EQ(sliding(*p, 1, 2), 23.0f);
    // Y dips by differences: one-sided (23 - 25) / 10 at col 1, central
    // (18 - 25) / 2 / 10 at col 2, (13 - 23) / 2 / 10 at col 3, (13 - 18) / 10 at col 4.
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 1), float(std::atan(-0.2)));
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 2), float(std::atan(-0.35)));
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 3), float(std::atan(-0.5)));
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 4), float(std::atan(-0.5)));
    EXPECT_EQ(p->surf_dip_x(2, 2), 0.0f);
    EXPECT_TRUE(p->menus.at("Solve_single_trial").visible);
    EXPECT_TRUE(p->menus.at("Rotation_angle").visible);
    EXPECT_EQ(p->no_slide, 0);
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().first, 5);
}

TEST(GeneralSurfaceForm, editor_continue_of_a_composite_goes_to_the_wedge_form)
{
    auto p = general_project();
    p->form_mode = 4;
    hide_solve_menu(*p);
    draw_sliding_line(*p);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    continue_general_surface_form(*p, f, port);
    EXPECT_EQ(editor_continue_as_drawn(*p, port), EditorNext::to_wedge);
    EXPECT_EQ(p->form_mode, 4);
    EXPECT_EQ(sliding(*p, 1, 1), 25.0f);
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 3), float(std::atan(-0.5)));
    EXPECT_FALSE(p->menus.at("Solve").visible); // the wedge form settles it

    // The wedge form lays a plane at 20 over it: it takes the nodes at 18 and 13.
    WedgeForm w = open_wedge_form(*p);
    wedge_form_add_row(w, port);
    w.rows[0] = WedgeRow{0, 0, 20, 0, 0, 1};
    continue_wedge_form(*p, w, port);
    EXPECT_EQ(p->surface_kind, 5);
    EXPECT_EQ(sliding(*p, 2, 2), 23.0f);
    EXPECT_EQ(p->disc_code(2, 2), 0);
    EXPECT_EQ(sliding(*p, 2, 3), 20.0f);
    EXPECT_EQ(p->disc_code(2, 3), 1);
    EXPECT_EQ(p->form_mode, 0);
}

TEST(GeneralSurfaceForm, grid_surface_continue_alone_shows_the_solve_menu_without_interpolating)
{
    auto p = general_project();
    p->form_mode = 7;
    draw_sliding_line(*p);
    p->surf_method[std::size_t(p->sliding_index)] = 1;
    fill_sliding(*p, 20);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    EXPECT_EQ(continue_general_surface_form(*p, f, port), GeneralNext::solved_ready);
    EXPECT_EQ(sliding(*p, 2, 1), 20.0f); // the lines are not used
    EXPECT_EQ(p->surface_kind, 4);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_TRUE(p->menus.at("Solve_single_trial").visible);
}

TEST(GeneralSurfaceForm, grid_surface_of_a_composite_is_interpolated_from_the_lines_all_the_same)
{
    auto p = general_project();
    p->form_mode = 4;
    draw_sliding_line(*p);
    p->surf_method[std::size_t(p->sliding_index)] = 1;
    fill_sliding(*p, 20);
    GeneralSurfaceForm f = open_general_surface_form(*p);
    ScriptedPort port;
    EXPECT_EQ(continue_general_surface_form(*p, f, port), GeneralNext::to_wedge_form);
    EXPECT_EQ(sliding(*p, 2, 1), 25.0f); // 28 from the line, lowered to ground
    EXPECT_EQ(sliding(*p, 2, 4), 13.0f);
    EXPECT_FLOAT_EQ(p->surf_dip_y(2, 4), float(std::atan(-0.5)));
    EXPECT_EQ(p->surface_kind, 4);
}

TEST(GeneralSurfaceForm, cancel_clears_form_mode)
{
    auto p = general_project();
    p->form_mode = 4;
    cancel_general_surface_form(*p);
    EXPECT_EQ(p->form_mode, 0);
}

} // namespace
} // namespace tobel::test
