// The pointer on the search window outside any form: the set-up handles
// dragged, the click that brings up the form of the set-up, and the modes
// where a click brings up the panel or nothing.
#include <gtest/gtest.h>

#include "commands/commands.h"
#include "commands/open_project.h"
#include "commands/search_picture.h"
#include "graphics/drawing.h"
#include "support/opened_example.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScriptedPort;

// The 2-D homogeneous slope stores: the single ellipsoid centre (45, 50)
// with its tangent plane at 10; the grid of centres from (25, 70) to
// (41, 54), 17 by 17; vertical exaggeration 1.
Project opened_example(ScriptedPort& port)
{
    return test::opened_example(port, "slope2d-homogeneous.tob");
}

// A press at (y0, z0), a drag to (y1, z1) and the release there: whether the
// press took a handle, and the form the release brings up.
struct Drag {
    bool took;
    SetupDialog form;
};
Drag drag(Project& p, Port& port, DialogSession& s, double y0, double z0, double y1, double z1)
{
    const bool took = search_picture_down(p, port, s, y0, z0);
    search_picture_move(p, port, s, y1, z1);
    return {took, search_picture_up(p, port, s, y1, z1)};
}

TEST(search_picture, dragging_the_grid_corner_after_a_cancel_opens_the_form_with_the_moved_corner)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_search_dialog(p, port, s, true, false);
    dialog_cancel(p, port, s);
    ASSERT_FALSE(dialog_open(s));
    ASSERT_EQ(p.view_mode, 7);
    ASSERT_DOUBLE_EQ(drawn_exaggeration(p), 1.0);
    // The upper left corner handle stands at (25, 70); dragged 2 m toward
    // the crest and 4 m down it stands at (27, 66).
    const Drag d = drag(p, port, s, 25, 70, 27, 66);
    EXPECT_TRUE(d.took);
    ASSERT_TRUE(std::holds_alternative<GridSearchForm>(s.form));
    EXPECT_EQ(d.form, SetupDialog::grid_search);
    const GridSearchRecord& r = std::get<GridSearchForm>(s.form).record;
    EXPECT_FLOAT_EQ(r.grid_y1, 27.0f);
    EXPECT_FLOAT_EQ(r.grid_z_top, 66.0f);
    // The lower corner was not taken.
    EXPECT_FLOAT_EQ(r.grid_y2, 41.0f);
    EXPECT_FLOAT_EQ(r.grid_z_bottom, 54.0f);
    // The drag ended: a further move changes nothing.
    search_picture_move(p, port, s, 30, 60);
    EXPECT_FLOAT_EQ(std::get<GridSearchForm>(s.form).record.grid_y1, 27.0f);
    // Nothing is stored until the form's Continue.
    EXPECT_FLOAT_EQ(p.grid_y_ul, 25.0f);
    dialog_continue(p, port, s);
    EXPECT_FLOAT_EQ(p.grid_y_ul, 27.0f);
    EXPECT_FLOAT_EQ(p.grid_z_ul, 66.0f);
}

TEST(search_picture, a_click_away_from_the_handles_brings_up_the_form_unchanged)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_search_dialog(p, port, s, true, false);
    dialog_cancel(p, port, s);
    // (60, 20) is far from both corners and from the tangent handle at
    // ((25 + 41) / 2, 10) = (33, 10).
    EXPECT_EQ(drag(p, port, s, 60, 20, 62, 22).form, SetupDialog::grid_search);
    ASSERT_TRUE(std::holds_alternative<GridSearchForm>(s.form));
    const GridSearchRecord& r = std::get<GridSearchForm>(s.form).record;
    EXPECT_FLOAT_EQ(r.grid_y1, 25.0f);
    EXPECT_FLOAT_EQ(r.grid_z_top, 70.0f);
    EXPECT_FLOAT_EQ(r.grid_tangent_z, 10.0f);
}

TEST(search_picture, the_tangent_handle_of_the_ellipsoid_moves_only_the_tangent_elevation)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_surface_dialog(p, port, s, SurfaceCommand::ellipsoid);
    dialog_cancel(p, port, s);
    ASSERT_EQ(p.view_mode, 3);
    // The tangent handle stands under the centre at (45, 10); dragged to
    // (47, 12) it keeps Y (the tangent carries no Y) and takes Z = 12.
    const Drag d = drag(p, port, s, 45, 10, 47, 12);
    EXPECT_TRUE(d.took);
    EXPECT_EQ(d.form, SetupDialog::ellipsoid);
    const auto& f = std::get<EllipsoidForm>(s.form);
    EXPECT_FLOAT_EQ(f.value(field_tangent), 12.0f);
    EXPECT_FLOAT_EQ(f.value(field_y), 45.0f);
    EXPECT_FLOAT_EQ(f.value(field_z), 50.0f);
}

TEST(search_picture, a_press_on_an_open_form_goes_to_it_without_reopening)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    open_search_dialog(p, port, s, true, false);
    // A value typed into the open form stays: the form is not opened again
    // from the stored record. The grid's lower corner dragged from
    // (41, 54) to (43, 55).
    auto& g = std::get<GridSearchForm>(s.form);
    g.record.grid_ny = 9;
    EXPECT_TRUE(drag(p, port, s, 41, 54, 43, 55).took);
    const GridSearchRecord& r = std::get<GridSearchForm>(s.form).record;
    EXPECT_FLOAT_EQ(r.grid_ny, 9.0f);
    EXPECT_FLOAT_EQ(r.grid_y2, 43.0f);
    EXPECT_FLOAT_EQ(r.grid_z_bottom, 55.0f);
}

TEST(search_picture, after_a_search_a_click_brings_up_the_panel_for_an_auto_search_and_nothing_for_a_grid)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    p.view_mode = 9;
    EXPECT_FALSE(search_picture_down(p, port, s, 45, 50));
    EXPECT_EQ(search_picture_up(p, port, s, 45, 50), SetupDialog::none);
    EXPECT_FALSE(dialog_open(s));
    p.view_mode = 10;
    EXPECT_FALSE(search_picture_down(p, port, s, 45, 50));
    EXPECT_EQ(search_picture_up(p, port, s, 45, 50), SetupDialog::search_information);
    EXPECT_FALSE(dialog_open(s));
}

TEST(search_picture, the_auto_search_of_a_composite_opens_as_the_composite_search)
{
    ScriptedPort port;
    Project p = opened_example(port);
    DialogSession s;
    p.view_mode = 8;
    p.form_mode = 6;
    open_setup_form(p, port, s, SetupDialog::auto_search);
    ASSERT_TRUE(std::holds_alternative<AutoSearchForm>(s.form));
    // The composite's wedge form follows the search form's Continue.
    EXPECT_EQ(p.form_mode, 6);
    EXPECT_EQ(p.view_mode, 8);
}

} // namespace
} // namespace tobel
