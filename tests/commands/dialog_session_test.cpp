// The open form as the command line and the desktop program drive it.
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

Project opened_example(ScriptedPort& port)
{
    return test::opened_example(port, "slope3d-new-project.tob");
}

TEST(dialog_session, dragging_the_centre_handle_moves_the_ellipsoid_fields)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::ellipsoid);
    ASSERT_EQ(dialog_caption(s), "Ellipsoidal Sliding Surface");
    EXPECT_EQ(p.pictures.search.caption, "ELLIPSOIDAL SURFACE");
    // The centre stands at the stored Y = 60, Z = 55 (vert_exag 1); dragged
    // by 2 m toward the toe and 3 m up it stands at (58, 58).
    ASSERT_EQ(dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, 60, 55),
              DialogStep::done);
    dialog_pointer(p, port, s, PointerAction::move, PointerButton::left, false, 58, 58);
    dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, 58, 58);
    const auto& f = std::get<EllipsoidForm>(s.form);
    EXPECT_FLOAT_EQ(f.value(field_y), 58.0f);
    EXPECT_FLOAT_EQ(f.value(field_z), 58.0f);
    EXPECT_FLOAT_EQ(f.value(field_tangent), 12.0f); // the tangent handle was not taken
    dialog_continue(p, port, s);
    EXPECT_FLOAT_EQ(p.single_y, 58.0f);
    EXPECT_FLOAT_EQ(p.radius_in, 46.0f); // 58 - 12
}

TEST(dialog_session, a_step_the_form_does_not_take_is_refused)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    EXPECT_EQ(dialog_button(p, port, s, "add"), DialogStep::not_here); // nothing open
    open_dialog(p, port, s, DialogKind::positions);
    ASSERT_EQ(dialog_caption(s), "Input cross-section locations");
    EXPECT_EQ(dialog_button(p, port, s, "toggle-line"), DialogStep::not_here);
    EXPECT_EQ(dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, 0, 0),
              DialogStep::not_here);
    dialog_cancel(p, port, s);
    EXPECT_FALSE(dialog_open(s));
}

TEST(dialog_session, the_editor_from_the_menu_writes_back_on_continue)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::sections);
    ASSERT_EQ(dialog_caption(s), "Section Editor");
    EXPECT_EQ(p.form_mode, 0);
    // Line 1 (the top of the clay) of section 1: its last point (120, 20)
    // dragged down to 19.
    dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, 120, 20);
    dialog_pointer(p, port, s, PointerAction::move, PointerButton::left, false, 120, 19);
    dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, 120, 19);
    dialog_continue(p, port, s);
    EXPECT_FALSE(dialog_open(s));
    EXPECT_FLOAT_EQ(p.sections.z(1, 4, 1), 19.0f);
    EXPECT_EQ(p.view_mode, 5);
}

TEST(dialog_session, the_editor_cancelled_keeps_the_section)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::sections);
    dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, 120, 20);
    dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, 120, 19);
    dialog_cancel(p, port, s);
    EXPECT_FLOAT_EQ(p.sections.z(1, 4, 1), 20.0f);
}

} // namespace
} // namespace tobel
