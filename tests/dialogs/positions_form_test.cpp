// The cross-section locations form: its private copy, the note, Add, Insert
// and Delete Section moving the section lines of every surface, the limit,
// the four checks of Continue in their order, the store and what follows,
// and Cancel.
#include <gtest/gtest.h>

#include <memory>

#include "dialogs/positions_form.h"
#include "project/defaults.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

// Marks the line of surface k on section s: s + k points, the first at
// Y = 10 s + k, Z = 100 s + k.
void mark_line(Project& p, int s, int k)
{
    p.sections.n(s, k) = int16(s + k);
    p.sections.y(s, 1, k) = float(10 * s + k);
    p.sections.z(s, 1, k) = float(100 * s + k);
}

bool line_is(const Project& p, int s, int k, int marked_as)
{
    return p.sections.n(s, k) == marked_as + k && p.sections.y(s, 1, k) == float(10 * marked_as + k) &&
           p.sections.z(s, 1, k) == float(100 * marked_as + k);
}

bool line_is_clear(const Project& p, int s, int k)
{
    return p.sections.n(s, k) == 0 && p.sections.y(s, 1, k) == 0 && p.sections.z(s, 1, k) == 0;
}

// A 10 by 10 mesh over X 0..100, two layers (sliding surface 3), three
// sections at 0, 50 and 100 with a line on every surface.
std::unique_ptr<Project> three_sections(int form_mode = 0)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->num_layers = 2;
    derive_counts(*p);
    p->num_rows = 10;
    p->num_cols = 10;
    redim_grids(*p);
    p->row_spacing = float(100.0 / 9.0);
    p->col_spacing = float(100.0 / 9.0);
    p->num_sections = 3;
    p->sections.x[1] = 0;
    p->sections.x[2] = 50;
    p->sections.x[3] = 100;
    for (int s = 1; s <= 3; ++s)
        for (int k = 1; k <= 3; ++k)
            mark_line(*p, s, k);
    p->form_mode = int16(form_mode);
    return p;
}

void set_x(PositionsForm& form, int r, const std::string& text)
{
    positions_form_select(form, r);
    form.edit = text;
}

TEST(PositionsForm, texts_are_the_forms_own)
{
    auto p = three_sections();
    EXPECT_STREQ(positions_form_caption, "Input cross-section locations");
    EXPECT_STREQ(positions_column_title, "X-Coordinate");
    EXPECT_STREQ(positions_add_caption, "&Add Section");
    EXPECT_STREQ(positions_insert_caption, "&Insert Section");
    EXPECT_STREQ(positions_delete_caption, "&Delete Section");
    EXPECT_EQ(positions_note(*p), "Mesh extent, X: 0  to 100");
    EXPECT_EQ(positions_limit_message(25), "Only  25 sections allowed.");
}

TEST(PositionsForm, opens_on_a_copy_of_the_positions)
{
    auto p = three_sections();
    const PositionsForm form = open_positions_form(*p);
    EXPECT_EQ(form.count, 3);
    EXPECT_EQ(form.x[1], 0.0f);
    EXPECT_EQ(form.x[2], 50.0f);
    EXPECT_EQ(form.x[3], 100.0f);
    EXPECT_EQ(form.row, 1);
    EXPECT_EQ(form.edit, "0");
}

TEST(PositionsForm, keys_move_between_lines_and_store_the_edit_text)
{
    auto p = three_sections();
    PositionsForm form = open_positions_form(*p);
    form.edit = "-5";
    positions_form_key(form, FormKey::down);
    EXPECT_EQ(form.x[1], -5.0f);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.edit, "50");
    positions_form_key(form, FormKey::enter);
    positions_form_key(form, FormKey::tab);
    EXPECT_EQ(form.row, 3);
    positions_form_key(form, FormKey::up);
    EXPECT_EQ(form.row, 2);
    // The project is not touched before Continue.
    EXPECT_EQ(p->sections.x[1], 0.0f);
}

TEST(PositionsForm, typing_takes_a_number)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    form.edit.clear();
    for (char k : std::string("-2a.5."))
        positions_form_type(form, port, k);
    EXPECT_EQ(form.edit, "-2.5");
    EXPECT_TRUE(positions_form_type(form, port, '\b'));
    EXPECT_EQ(form.edit, "-2.");
}

TEST(PositionsForm, add_appends_a_selected_line_and_leaves_the_lines_alone)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_add_section(*p, form, port);
    EXPECT_EQ(form.count, 4);
    EXPECT_EQ(form.row, 4);
    EXPECT_EQ(form.x[4], 0.0f);
    EXPECT_EQ(p->num_sections, 3);
    for (int k = 1; k <= 3; ++k)
        EXPECT_TRUE(line_is(*p, 3, k, 3));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(PositionsForm, add_and_insert_at_the_limit_show_it)
{
    auto p = three_sections();
    p->max_sections = 4;
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_add_section(*p, form, port);
    EXPECT_EQ(form.count, 4);
    positions_form_add_section(*p, form, port);
    positions_form_insert_section(*p, form, port);
    EXPECT_EQ(form.count, 4);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text, "Only  4 sections allowed.");
    EXPECT_EQ(port.boxes[1].text, "Only  4 sections allowed.");
}

TEST(PositionsForm, insert_moves_sections_from_the_selected_one_up_with_all_their_lines)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_select(form, 2);
    positions_form_insert_section(*p, form, port);
    EXPECT_EQ(form.count, 4);
    EXPECT_EQ(form.row, 2);
    EXPECT_EQ(form.x[1], 0.0f);
    EXPECT_EQ(form.x[2], 0.0f);
    EXPECT_EQ(form.x[3], 50.0f);
    EXPECT_EQ(form.x[4], 100.0f);
    for (int k = 1; k <= 3; ++k) {
        EXPECT_TRUE(line_is(*p, 1, k, 1)) << k;
        EXPECT_TRUE(line_is_clear(*p, 2, k)) << k;
        EXPECT_TRUE(line_is(*p, 3, k, 2)) << k;
        EXPECT_TRUE(line_is(*p, 4, k, 3)) << k;
    }
    // The count in the project waits for Continue.
    EXPECT_EQ(p->num_sections, 3);
}

TEST(PositionsForm, delete_moves_the_sections_above_down_and_zeroes_the_last_slot)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_select(form, 1);
    positions_form_delete_section(*p, form, port);
    EXPECT_EQ(form.count, 2);
    EXPECT_EQ(form.x[1], 50.0f);
    EXPECT_EQ(form.x[2], 100.0f);
    EXPECT_EQ(form.x[3], 0.0f);
    for (int k = 1; k <= 3; ++k) {
        EXPECT_TRUE(line_is(*p, 1, k, 2)) << k;
        EXPECT_TRUE(line_is(*p, 2, k, 3)) << k;
        EXPECT_TRUE(line_is_clear(*p, 3, k)) << k;
    }
    EXPECT_EQ(form.edit, "50");
}

TEST(PositionsForm, deleting_the_last_line_selects_the_one_before)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_select(form, 3);
    positions_form_delete_section(*p, form, port);
    EXPECT_EQ(form.count, 2);
    EXPECT_EQ(form.row, 2);
    for (int k = 1; k <= 3; ++k)
        EXPECT_TRUE(line_is_clear(*p, 3, k)) << k;
}

// Continue refused: the message, the form open, nothing stored.
void expect_refused(Project& p, PositionsForm& form, const std::string& message)
{
    ScriptedPort port;
    const float first = p.sections.x[1];
    const int count = p.num_sections;
    EXPECT_EQ(continue_positions_form(p, form, port), PositionsNext::stays_open);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, message);
    EXPECT_EQ(p.sections.x[1], first);
    EXPECT_EQ(p.num_sections, count);
}

TEST(PositionsForm, check_1_two_sections_in_three_dimensions)
{
    auto p = three_sections();
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_delete_section(*p, form, port);
    positions_form_delete_section(*p, form, port);
    expect_refused(*p, form, "Must have at least two sections in 3D configuration.");
}

TEST(PositionsForm, one_section_passes_in_two_dimensions)
{
    auto p = three_sections();
    p->num_rows = 1;
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_delete_section(*p, form, port);
    positions_form_delete_section(*p, form, port);
    set_x(form, 1, "30"); // beyond x_min, but checks 3 and 4 need two sections
    EXPECT_EQ(continue_positions_form(*p, form, port), PositionsNext::closed);
    EXPECT_EQ(p->num_sections, 1);
    EXPECT_EQ(p->sections.x[1], 30.0f);
}

TEST(PositionsForm, check_2_sections_must_increase)
{
    auto p = three_sections();
    PositionsForm form = open_positions_form(*p);
    set_x(form, 2, "0"); // equal to section 1
    expect_refused(*p, form, "Sections must increase in order.");
    set_x(form, 2, "120");
    expect_refused(*p, form, "Sections must increase in order.");
}

TEST(PositionsForm, check_3_first_section_on_or_before_min_x)
{
    auto p = three_sections();
    PositionsForm form = open_positions_form(*p);
    set_x(form, 1, "0.5");
    expect_refused(*p, form, "Section 1 must be on or before the Min. X position.");
}

TEST(PositionsForm, check_4_last_section_on_or_beyond_max_x_names_its_number)
{
    auto p = three_sections();
    PositionsForm form = open_positions_form(*p);
    set_x(form, 3, "99.5");
    expect_refused(*p, form, "Section 3 must be on or beyond the Max. X position.");
}

TEST(PositionsForm, checks_run_in_order)
{
    auto p = three_sections();
    PositionsForm form = open_positions_form(*p);
    set_x(form, 1, "10"); // check 3
    set_x(form, 3, "5");  // check 2 and 4
    expect_refused(*p, form, "Sections must increase in order.");
}

TEST(PositionsForm, continue_in_the_wizard_stores_sets_view_row_and_leads_to_the_section_editor)
{
    auto p = three_sections(2);
    p->view_row = 4;
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    set_x(form, 1, "-10");
    positions_form_add_section(*p, form, port);
    form.edit = "150";
    EXPECT_EQ(continue_positions_form(*p, form, port), PositionsNext::to_section_editor);
    EXPECT_EQ(p->num_sections, 4);
    EXPECT_EQ(p->sections.x[1], -10.0f);
    EXPECT_EQ(p->sections.x[2], 50.0f);
    EXPECT_EQ(p->sections.x[3], 100.0f);
    EXPECT_EQ(p->sections.x[4], 150.0f);
    EXPECT_EQ(p->view_row, 1);
    EXPECT_EQ(p->form_mode, 2);
    EXPECT_EQ(p->pictures.section.caption, "PLAN VIEW");
    // No rebuild and no isometry in the wizard.
    EXPECT_TRUE(p->pictures.isometry.picture.empty());
}

TEST(PositionsForm, continue_from_the_menu_rebuilds_and_draws_the_isometry_of_the_ground)
{
    auto p = three_sections(0);
    p->view_row = 4;
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    set_x(form, 2, "40");
    EXPECT_EQ(continue_positions_form(*p, form, port), PositionsNext::closed);
    EXPECT_EQ(p->sections.x[2], 40.0f);
    EXPECT_EQ(p->view_row, 4);
    EXPECT_EQ(p->pictures.section.caption, "PLAN VIEW");
    EXPECT_FALSE(p->pictures.section.picture.empty());
    // Surface num_layers = 2, the ground.
    EXPECT_EQ(p->pictures.isometry.caption, "TOP SURFACE OF LAYER 2");
    EXPECT_EQ(p->view.iso_layer, 2);
}

TEST(PositionsForm, cancel_drops_the_positions_but_moved_lines_stay_moved)
{
    auto p = three_sections(2);
    ScriptedPort port;
    PositionsForm form = open_positions_form(*p);
    positions_form_select(form, 1);
    positions_form_delete_section(*p, form, port);
    cancel_positions_form(*p, form);
    EXPECT_EQ(p->form_mode, 0);
    EXPECT_EQ(p->num_sections, 3);
    EXPECT_EQ(p->sections.x[1], 0.0f);
    EXPECT_EQ(p->sections.x[3], 100.0f);
    for (int k = 1; k <= 3; ++k)
        EXPECT_TRUE(line_is(*p, 1, k, 2)) << k;
}

} // namespace
} // namespace tobel::test
