// The set-up frames and handles on the search window: where the handles
// stand, how they are caught, what a drag changes and the texts it writes,
// what a click brings up, and what is drawn.
#include <gtest/gtest.h>

#include <array>

#include "graphics/graphics_support.h"
#include "graphics/setup_handles.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

std::unique_ptr<Project> project(float vert_exag, float pick_unit)
{
    auto p = make_project({3, 11, 0, 10, 0, 100});
    set_ground(*p, [](double, double y) { return 40 - y / 5; });
    p->vert_exag = vert_exag;
    p->view.pick_unit = pick_unit;
    return p;
}

TEST(SetupHandles, ellipsoid_has_its_centre_and_its_tangent_under_it)
{
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    const auto h = setup_handles({3, v, false});
    ASSERT_EQ(h.size(), 2u);
    EXPECT_EQ(h[0].role, HandleRole::centre);
    EXPECT_DOUBLE_EQ(h[0].y, 40);
    EXPECT_DOUBLE_EQ(h[0].z, 30);
    EXPECT_EQ(h[1].role, HandleRole::tangent);
    EXPECT_DOUBLE_EQ(h[1].y, 40);
    EXPECT_DOUBLE_EQ(h[1].z, 10);
}

TEST(SetupHandles, grid_has_two_corners_and_the_tangent_or_the_common_point)
{
    std::array<float, 12> v = {5, 20, 40, 10, 1, 60, 30, 2, 6, 5, 33, 7};
    auto h = setup_handles({7, v, false});
    ASSERT_EQ(h.size(), 3u);
    EXPECT_EQ(h[0].role, HandleRole::corner_upper);
    EXPECT_DOUBLE_EQ(h[0].y, 20);
    EXPECT_DOUBLE_EQ(h[0].z, 40);
    EXPECT_EQ(h[1].role, HandleRole::corner_lower);
    EXPECT_DOUBLE_EQ(h[1].y, 60);
    EXPECT_DOUBLE_EQ(h[1].z, 30);
    EXPECT_EQ(h[2].role, HandleRole::tangent);
    EXPECT_DOUBLE_EQ(h[2].y, 40); // (20 + 60) / 2
    EXPECT_DOUBLE_EQ(h[2].z, 10);
    h = setup_handles({7, v, true});
    ASSERT_EQ(h.size(), 3u);
    EXPECT_EQ(h[2].role, HandleRole::common_point);
    EXPECT_DOUBLE_EQ(h[2].y, 33);
    EXPECT_DOUBLE_EQ(h[2].z, 7);
}

TEST(SetupHandles, auto_search_has_its_centre_its_step_and_its_tangent)
{
    std::array<float, 9> v = {5, 30, 40, 2, 12, 1, 1, 0, 0};
    const auto h = setup_handles({8, v, false});
    ASSERT_EQ(h.size(), 3u);
    EXPECT_EQ(h[1].role, HandleRole::step);
    EXPECT_DOUBLE_EQ(h[1].y, 32); // 30 + 2
    EXPECT_DOUBLE_EQ(h[1].z, 40);
    EXPECT_EQ(h[2].role, HandleRole::tangent);
    EXPECT_DOUBLE_EQ(h[2].y, 30);
    EXPECT_DOUBLE_EQ(h[2].z, 12);
}

TEST(SetupHandles, other_modes_have_no_handles)
{
    std::array<float, 12> v{};
    EXPECT_TRUE(setup_handles({9, v, false}).empty());
    auto p = project(1, 1);
    EXPECT_EQ(setup_handle_at(*p, {1, v, false}, 0, 0), -1);
}

// pick_unit 2 and vert_exag 2: a handle is caught within 2 in Y and within
// 2 / 2 = 1 in true elevation, that is 2 in drawn units.
TEST(SetupHandles, a_handle_is_caught_nearer_than_pick_unit_and_pick_unit_over_exaggeration)
{
    auto p = project(2, 2);
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    const SetupParameters set{3, v, false};
    // Centre drawn at (40, 60).
    EXPECT_EQ(setup_handle_at(*p, set, 41.9, 61.9), 0); // 0.95 in elevation
    EXPECT_EQ(setup_handle_at(*p, set, 38.1, 58.1), 0);
    EXPECT_EQ(setup_handle_at(*p, set, 42.1, 60), -1); // 2.1 in Y
    EXPECT_EQ(setup_handle_at(*p, set, 40, 62.1), -1); // 1.05 in elevation
    EXPECT_EQ(setup_handle_at(*p, set, 42, 60), -1);   // exactly pick_unit: not nearer
    // Tangent drawn at (40, 20).
    EXPECT_EQ(setup_handle_at(*p, set, 40, 20.5), 1);
}

TEST(SetupHandles, near_two_handles_the_first_is_caught)
{
    auto p = project(1, 3);
    std::array<float, 9> v = {5, 30, 40, 2, 12, 1, 1, 0, 0};
    const SetupParameters set{8, v, false};
    EXPECT_EQ(setup_handle_at(*p, set, 31, 40), 0); // 1 from the centre, 1 from the step
    p->view.pick_unit = 1;
    EXPECT_EQ(setup_handle_at(*p, set, 31.2, 40), 1); // 1.2 from the centre, 0.8 from the step
}

TEST(SetupHandles, dragging_the_centre_moves_y_and_z_and_writes_their_texts)
{
    auto p = project(2, 2);
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    const SetupParameters set{3, v, false};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 40.5, 60.4), 0);
    // Drawn 50 at exaggeration 2 is elevation 25.
    const auto edits = setup_pointer_move(*p, set, drag, 35.125, 50);
    ASSERT_EQ(edits.size(), 2u);
    EXPECT_EQ(edits[0].index, ell_value_y);
    EXPECT_EQ(edits[0].text, "35.13"); // 35.125 rounded half away from zero
    EXPECT_EQ(edits[1].index, ell_value_z);
    EXPECT_EQ(edits[1].text, "25.00");
    EXPECT_FLOAT_EQ(v[1], 35.125f);
    EXPECT_FLOAT_EQ(v[2], 25);
    EXPECT_FLOAT_EQ(v[3], 10); // the tangent stays
    setup_pointer_up(drag);
    EXPECT_TRUE(setup_pointer_move(*p, set, drag, 0, 0).empty());
    EXPECT_FLOAT_EQ(v[1], 35.125f);
}

TEST(SetupHandles, dragging_the_tangent_changes_only_its_elevation)
{
    auto p = project(2, 2);
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    const SetupParameters set{3, v, false};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 40, 20), 1);
    const auto edits = setup_pointer_move(*p, set, drag, 99, 16.5);
    ASSERT_EQ(edits.size(), 1u);
    EXPECT_EQ(edits[0].index, ell_value_tangent);
    EXPECT_EQ(edits[0].text, "8.25"); // 16.5 / 2
    EXPECT_FLOAT_EQ(v[1], 40);
}

TEST(SetupHandles, a_press_away_from_the_handles_drags_nothing)
{
    auto p = project(1, 1);
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    const SetupParameters set{3, v, false};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 70, 70), -1);
    EXPECT_TRUE(setup_pointer_move(*p, set, drag, 40, 30).empty());
    EXPECT_FLOAT_EQ(v[1], 40);
}

TEST(SetupHandles, dragging_a_grid_corner_moves_that_corner)
{
    auto p = project(1, 1);
    std::array<float, 12> v = {5, 20, 40, 10, 1, 60, 30, 2, 6, 5, 0, 0};
    const SetupParameters set{7, v, false};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 60.5, 29.5), 1);
    const auto edits = setup_pointer_move(*p, set, drag, 70, 1234.5);
    ASSERT_EQ(edits.size(), 2u);
    EXPECT_EQ(edits[0].index, grid_value_y2);
    EXPECT_EQ(edits[0].text, "70.00");
    EXPECT_EQ(edits[1].index, grid_value_z_bottom);
    EXPECT_EQ(edits[1].text, "1234.50");
    EXPECT_FLOAT_EQ(v[1], 20); // the upper corner stays
    EXPECT_FLOAT_EQ(v[2], 40);
}

TEST(SetupHandles, dragging_a_common_point_moves_both_its_coordinates)
{
    auto p = project(1, 1);
    std::array<float, 9> v = {5, 30, 40, 2, 12, 1, 1, 50, 8};
    const SetupParameters set{8, v, true};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 50, 8), 2);
    const auto edits = setup_pointer_move(*p, set, drag, 55, 9);
    ASSERT_EQ(edits.size(), 2u);
    EXPECT_EQ(edits[0].index, auto_value_point_y);
    EXPECT_EQ(edits[1].index, auto_value_point_z);
    EXPECT_FLOAT_EQ(v[7], 55);
    EXPECT_FLOAT_EQ(v[8], 9);
    EXPECT_FLOAT_EQ(v[4], 12); // the tangent stays
}

TEST(SetupHandles, dragging_the_step_sets_its_distance_from_the_centre)
{
    auto p = project(1, 1);
    std::array<float, 9> v = {5, 30, 40, 2, 12, 1, 1, 0, 0};
    const SetupParameters set{8, v, false};
    SetupDrag drag;
    EXPECT_EQ(setup_pointer_down(*p, set, drag, 32, 40), 1);
    // To the other side of the centre: |26.5 - 30| = 3.5.
    const auto edits = setup_pointer_move(*p, set, drag, 26.5, 77);
    ASSERT_EQ(edits.size(), 1u);
    EXPECT_EQ(edits[0].index, auto_value_step);
    EXPECT_EQ(edits[0].text, "3.50");
    EXPECT_FLOAT_EQ(v[2], 40);
}

TEST(SetupHandles, handle_side_is_a_55th_of_the_window_width)
{
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 110, 0);
    EXPECT_DOUBLE_EQ(handle_size(s), 2); // 110 / 55
    s.Scale(110, 100, 0, 0);             // a negative width counts by its size
    EXPECT_DOUBLE_EQ(handle_size(s), 2);
}

TEST(SetupHandles, ellipsoid_frames_draw_square_handles_in_the_selected_colour)
{
    auto p = project(2, 1);
    p->selected_colour = 255;
    p->sliding_colour = 16711935;
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 110, 0);
    draw_setup_frames(*p, s, {3, v, false});
    const auto boxes = boxes_of(list);
    ASSERT_EQ(boxes.size(), 2u);
    // Side 2, centred on (40, 30 * 2) and (40, 10 * 2).
    EXPECT_FLOAT_EQ(boxes[0].x1, 39);
    EXPECT_FLOAT_EQ(boxes[0].y1, 59);
    EXPECT_FLOAT_EQ(boxes[0].x2, 41);
    EXPECT_FLOAT_EQ(boxes[0].y2, 61);
    EXPECT_EQ(boxes[0].colour, 255);
    EXPECT_FLOAT_EQ(boxes[1].y1, 19);
    EXPECT_FLOAT_EQ(boxes[1].y2, 21);
    // The half circle of radius 30 - 10 = 20 runs from (20, 60) through the
    // bottom (40, 20) to (60, 60); the tangent line from (20, 20) to (60, 20).
    const auto segs = segments_of(list);
    bool arc_start = false, bottom = false, tangent = false;
    for (const auto& g : segs) {
        if (g.colour == 16711935 && std::abs(g.x1 - 20) < 1e-4f && std::abs(g.y1 - 60) < 1e-4f)
            arc_start = true;
        if (g.colour == 16711935 && std::abs(g.x2 - 40) < 1e-4f && std::abs(g.y2 - 20) < 1e-4f)
            bottom = true;
        if (g.colour == 0 && g.x1 == 20 && g.y1 == 20 && g.x2 == 60 && g.y2 == 20)
            tangent = true;
    }
    EXPECT_TRUE(arc_start);
    EXPECT_TRUE(bottom);
    EXPECT_TRUE(tangent);
}

TEST(SetupHandles, grid_frame_is_the_rectangle_of_centres_with_the_tangent_across)
{
    auto p = project(1, 1);
    std::array<float, 12> v = {5, 20, 40, 10, 1, 60, 30, 2, 6, 5, 0, 0};
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 110, 0);
    draw_setup_frames(*p, s, {7, v, false});
    const auto segs = segments_of(list);
    // Four sides from (20, 40) round to (20, 40), then the tangent at 10
    // from the window's left 0 to its right 110.
    ASSERT_EQ(segs.size(), 5u);
    EXPECT_FLOAT_EQ(segs[0].x1, 20);
    EXPECT_FLOAT_EQ(segs[0].y1, 40);
    EXPECT_FLOAT_EQ(segs[1].x2, 60);
    EXPECT_FLOAT_EQ(segs[1].y2, 30);
    EXPECT_FLOAT_EQ(segs[3].x2, 20);
    EXPECT_FLOAT_EQ(segs[3].y2, 40);
    EXPECT_FLOAT_EQ(segs[4].x1, 0);
    EXPECT_FLOAT_EQ(segs[4].x2, 110);
    EXPECT_FLOAT_EQ(segs[4].y1, 10);
    EXPECT_EQ(boxes_of(list).size(), 3u);
}

TEST(SetupHandles, auto_frame_is_the_square_of_the_stencil_and_no_tangent_with_a_common_point)
{
    auto p = project(1, 1);
    std::array<float, 9> v = {5, 30, 40, 2, 12, 1, 1, 50, 8};
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(0, 100, 110, 0);
    draw_setup_frames(*p, s, {8, v, true});
    const auto segs = segments_of(list);
    ASSERT_EQ(segs.size(), 4u);
    // A step of 2 each way from (30, 40).
    EXPECT_FLOAT_EQ(segs[0].x1, 28);
    EXPECT_FLOAT_EQ(segs[0].y1, 42);
    EXPECT_FLOAT_EQ(segs[1].x2, 32);
    EXPECT_FLOAT_EQ(segs[1].y2, 38);
    const auto boxes = boxes_of(list);
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_FLOAT_EQ(boxes[2].x1, 49); // the common point at (50, 8)
    EXPECT_FLOAT_EQ(boxes[2].y1, 7);
}

TEST(SetupHandles, show_setup_draws_the_section_and_the_frames_on_the_search_window)
{
    auto p = project(1, 1);
    ScriptedPort port;
    p->view_mode = 3;
    p->view_row = 2;
    std::array<float, 5> v = {5, 40, 30, 10, 1};
    show_setup(*p, port, {3, v, false});
    EXPECT_TRUE(p->pictures.search.exists);
    EXPECT_FALSE(boxes_of(p->pictures.search.picture).empty());
    EXPECT_TRUE(p->pictures.section.picture.empty());
}

TEST(SetupHandles, a_click_brings_up_the_dialog_of_the_mode)
{
    auto p = project(1, 1);
    const std::array<std::pair<int, SetupDialog>, 6> cases = {{{3, SetupDialog::ellipsoid},
                                                               {7, SetupDialog::grid_search},
                                                               {8, SetupDialog::auto_search},
                                                               {10, SetupDialog::search_information},
                                                               {9, SetupDialog::none},
                                                               {1, SetupDialog::none}}};
    for (const auto& [mode, dialog] : cases) {
        p->view_mode = int16(mode);
        EXPECT_EQ(search_picture_click(*p), dialog) << mode;
    }
}

TEST(SetupHandles, focus_on_the_search_window_shows_the_file_in_the_title)
{
    auto p = project(1, 1);
    p->data_file_path = "C:\\SLOPE.TOB";
    p->main_caption = "other";
    search_picture_activated(*p);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\SLOPE.TOB");
}

} // namespace
} // namespace tobel::test
