// The isometric views: projection, window, mesh colours, profiles, captions.
#include <gtest/gtest.h>

#include <cmath>

#include "graphics/isometry.h"
#include "graphics/recording_surface.h"
#include "project/settings.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel {
namespace {

using test::MeshSpec;
using test::ScriptedPort;

constexpr Colour magenta = 16711935; // default sliding colour
constexpr Colour layer1 = 46888;     // default layer colour 1
constexpr Colour layer2 = 32456;     // default layer colour 2
constexpr Colour piezo2 = 16736075;  // default piezo colour 2
constexpr Colour piezo13 = 16759178; // default piezo colour 13, the water colour

// A mesh with `layers` layers, `piezos` piezometric surfaces and the default
// colours; the picture is 800 by 600.
std::unique_ptr<Project> make(MeshSpec m, int piezos = 0)
{
    auto p = test::make_project(m);
    p->num_piezos = int16(piezos);
    derive_counts(*p);
    redim_grids(*p);
    default_colours(*p);
    p->data_file_path = "C:\\SLOPE.TOB";
    return p;
}

std::vector<const DrawItem*> runs(const DisplayList& list)
{
    std::vector<const DrawItem*> out;
    for (const auto& it : list.items)
        if (it.op == DrawOp::lines)
            out.push_back(&it);
    return out;
}

const DrawItem& scale_item(const DisplayList& list)
{
    for (const auto& it : list.items)
        if (it.op == DrawOp::scale)
            return it;
    throw std::runtime_error("no window");
}

TEST(isometry, angle_b_uses_the_other_pi_and_is_not_sixty_degrees)
{
    auto p = make({3, 3, 0, 4, 0, 6, 1});
    p->iso_angle = 30;
    const IsoProjection q = iso_projection(*p, 0);
    // a = 30 * 3.14 / 180 = 0.5233333; b = 1.57075 - 0.5233333 = 1.0474167
    EXPECT_NEAR(q.a, 0.5233333333, 1e-9);
    EXPECT_NEAR(q.b, 1.0474166667, 1e-9);
    // pi / 3 = 1.0471976: b is 0.000219 rad (about 0.0126 degrees) more.
    EXPECT_NEAR(q.b - 1.0471975512, 0.000219115, 1e-8);
    EXPECT_GT(q.b * 180 / 3.141592653589793, 60.01);
    EXPECT_LT(q.b * 180 / 3.141592653589793, 60.02);
}

TEST(isometry, node_projects_with_both_angles)
{
    // Rows 0..4 by 2, columns 0..6 by 3.
    auto p = make({3, 3, 0, 4, 0, 6, 1});
    p->iso_angle = 30;
    p->vert_exag = 2;
    const IsoProjection q = iso_projection(*p, 1);
    // cos b = 0.4998102, sin b = 0.8661349, cos a = 0.8661581, sin a = 0.4997701
    EXPECT_NEAR(q.ux, 2 * 0.4998102284, 1e-6);
    EXPECT_NEAR(q.vx, 2 * 0.8661349407, 1e-6);
    EXPECT_NEAR(q.uy, 3 * 0.8661580944, 1e-6);
    EXPECT_NEAR(q.vy, 3 * 0.4997701026, 1e-6);
    // Node (3, 2) at z 7: u = uy - 2 ux = 2.5984743 - 1.9992409;
    // v = vy + 2 vx + (7 - 1) * 2 = 1.4993103 + 3.4645398 + 12.
    const IsoPoint pt = iso_point(q, 3, 2, 7);
    EXPECT_NEAR(pt.u, 0.5992334, 1e-5);
    EXPECT_NEAR(pt.v, 16.9638501, 1e-5);
}

TEST(isometry, window_takes_num_rows_steps_not_num_rows_minus_one)
{
    // 2 by 2 nodes 10 apart, flat ground at 0.
    auto p = make({2, 2, 0, 10, 0, 10, 1});
    p->iso_angle = 30;
    ScriptedPort port;
    draw_isometry(*p, port, 1);
    // Lx = 2 * 10 * cos b = 9.9962046, Ly = 2 * 10 * cos a = 17.3231619;
    // width 27.3193665, height Lx tan b + Ly tan a = 27.3181009: taller than
    // 600 / 800, so s = (27.3181009 / 0.9) / 600, h = 30.3534454,
    // w = 40.4712605; left = -Lx - (w - width) / 2 = -16.5721516,
    // bottom = -0.05 h = -1.5176723.
    const DisplayList& list = p->pictures.isometry.picture;
    const DrawItem& sc = scale_item(list);
    const float* f = &list.coords[sc.first];
    EXPECT_NEAR(f[0], -16.5721516, 1e-4); // left
    EXPECT_NEAR(f[1], 28.8357731, 1e-4);  // top
    EXPECT_NEAR(f[2], 23.8991089, 1e-4);  // right
    EXPECT_NEAR(f[3], -1.5176723, 1e-4);  // bottom
}

TEST(isometry, shared_world_window_is_restored)
{
    auto p = make({3, 3, 0, 4, 0, 6, 1});
    p->view.win_left = 1, p->view.win_bottom = 2, p->view.win_right = 3, p->view.win_top = 4;
    ScriptedPort port;
    draw_isometry(*p, port, 1);
    EXPECT_EQ(p->view.win_left, 1);
    EXPECT_EQ(p->view.win_bottom, 2);
    EXPECT_EQ(p->view.win_right, 3);
    EXPECT_EQ(p->view.win_top, 4);
    // The picture itself has its own window, not the one restored.
    const float* f = &p->pictures.isometry.picture.coords[scale_item(p->pictures.isometry.picture).first];
    EXPECT_NE(f[0], 1);
}

TEST(isometry, result_isometry_leaves_its_window_as_the_shared_one)
{
    auto p = make({3, 3, 0, 4, 0, 6, 1});
    p->surface_defined = -1;
    p->view.win_left = 1, p->view.win_bottom = 2, p->view.win_right = 3, p->view.win_top = 4;
    ScriptedPort port;
    draw_result_isometry(*p, port);
    const float* f = &p->pictures.result.picture.coords[scale_item(p->pictures.result.picture).first];
    // The picture keeps right and bottom as left + width, top + height.
    EXPECT_NEAR(p->view.win_left, f[0], 1e-5);
    EXPECT_NEAR(p->view.win_top, f[1], 1e-5);
    EXPECT_NEAR(p->view.win_right, f[2], 1e-5);
    EXPECT_NEAR(p->view.win_bottom, f[3], 1e-5);
    EXPECT_NE(p->view.win_left, 1);
}

TEST(isometry, single_row_gives_a_single_profile)
{
    // One row of four columns, 1 apart; ground z = y.
    auto p = make({1, 4, 0, 0, 0, 3, 1});
    test::set_ground(*p, [](double, double y) { return y; });
    p->iso_angle = 30;
    ScriptedPort port;
    draw_isometry(*p, port, 1);
    const auto r = runs(p->pictures.isometry.picture);
    // The mesh columns are single dots; the one row and the row-1 profile
    // are the only runs, and the column-1 profile is a dot.
    ASSERT_EQ(r.size(), 2u);
    // uy = cos a = 0.8661581, vy = sin a = 0.4997701, z_low = 0.
    for (const DrawItem* it : r) {
        const auto pts = run_points(p->pictures.isometry.picture, *it);
        ASSERT_EQ(pts.size(), 4u);
        for (int c = 0; c < 4; ++c) {
            EXPECT_NEAR(pts[std::size_t(c)].x, c * 0.8661581, 1e-5);
            EXPECT_NEAR(pts[std::size_t(c)].y, c * 0.4997701 + c, 1e-5);
        }
    }
}

TEST(isometry, sliding_surface_off_the_ground_is_all_sliding_colour)
{
    auto p = make({3, 3, 0, 2, 0, 2, 1});
    p->surface_defined = -1;
    test::set_ground(*p, [](double, double) { return 10; });
    test::set_surface(*p, p->sliding_index, [](double, double) { return 8; });
    ScriptedPort port;
    draw_isometry(*p, port, p->sliding_index);
    const auto r = runs(p->pictures.isometry.picture);
    // 3 columns and 3 rows of the mesh, then 2 profiles of the sliding
    // surface and 2 of the ground.
    ASSERT_EQ(r.size(), 10u);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(r[i]->colour, magenta) << i;
    EXPECT_EQ(r[8]->colour, layer1);
    EXPECT_EQ(r[9]->colour, layer1);
}

TEST(isometry, segment_ending_on_the_ground_takes_the_ground_colour)
{
    // Two layers: the ground colour is layer colour 2.
    auto p = make({3, 3, 0, 2, 0, 2, 2});
    p->surface_defined = -1;
    test::set_surface(*p, 1, [](double, double) { return 5; });
    test::set_ground(*p, [](double, double) { return 10; });
    test::set_surface(*p, p->sliding_index, [](double, double) { return 8; });
    // On the ground at (2, 2), and at (1, 1) which ends no segment.
    p->zgrid(2, 2, p->sliding_index) = 10;
    p->zgrid(1, 1, p->sliding_index) = 10;
    ScriptedPort port;
    draw_isometry(*p, port, p->sliding_index);
    const auto r = runs(p->pictures.isometry.picture);
    // Column 1: one run; column 2: (1,2)-(2,2) ground, (2,2)-(3,2) sliding;
    // column 3: one run; rows likewise with row 2 split.
    const Colour expected[] = {magenta, layer2, magenta, magenta, magenta, layer2, magenta, magenta};
    ASSERT_GE(r.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(r[i]->colour, expected[i]) << i;
    EXPECT_EQ(r[1]->count, 4u); // one segment
    EXPECT_EQ(r[0]->count, 6u); // column 1 whole, though (1, 1) is on the ground
}

TEST(isometry, captions_name_the_surface)
{
    auto p = make({3, 3, 0, 2, 0, 2, 2}, 2);
    ScriptedPort port;
    draw_isometry(*p, port, 4);
    EXPECT_EQ(p->pictures.isometry.caption, "PIEZOMETRIC SURFACE  2");
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\SLOPE.TOB         ISOMETRY, LAYER  4");
    EXPECT_EQ(p->view.iso_layer, 4);
    draw_isometry(*p, port, 2);
    EXPECT_EQ(p->pictures.isometry.caption, "TOP SURFACE OF LAYER 2");
    EXPECT_EQ(p->view.iso_layer, 2);
    draw_isometry(*p, port, p->sliding_index);
    EXPECT_EQ(p->pictures.isometry.caption, "SLIDING SURFACE");
    // Each call brought the window up with its caption.
    ASSERT_EQ(port.views.size(), 3u);
    EXPECT_EQ(port.views[0].second, "PIEZOMETRIC SURFACE  2");
}

TEST(isometry, piezometric_mesh_takes_its_piezo_colour_and_profiles_skip_the_water_rule)
{
    auto p = make({3, 3, 0, 2, 0, 2, 2}, 2);
    p->mat_type[1] = 5; // layer 1 is water
    ScriptedPort port;
    draw_isometry(*p, port, 4);
    const auto r = runs(p->pictures.isometry.picture);
    // 6 mesh runs, then profiles of surfaces 4, 3, 2, 1 (no sliding surface).
    ASSERT_EQ(r.size(), 14u);
    EXPECT_EQ(r[0]->colour, piezo2);
    EXPECT_EQ(r[12]->colour, layer1);
    EXPECT_NE(r[12]->colour, piezo13);
}

TEST(isometry, positions_along_a_polyline_are_advanced_by_steps)
{
    // One row pair of 400 columns 0.1 apart, flat at 0.
    auto p = make({2, 400, 0, 1, 0, 39.9f, 1});
    p->col_spacing = 0.1f;
    p->iso_angle = 30;
    ScriptedPort port;
    draw_isometry(*p, port, 1);
    const IsoProjection q = iso_projection(*p, 0);
    // The row-1 polyline of the mesh: the first run of 400 points, starting
    // at the origin.
    const DisplayList& list = p->pictures.isometry.picture;
    const DrawItem* row1 = nullptr;
    for (const DrawItem* it : runs(list))
        if (it->count == 800 && list.coords[it->first] == 0 && list.coords[it->first + 1] == 0) {
            row1 = it;
            break;
        }
    ASSERT_NE(row1, nullptr);
    // uy added 399 times in single precision, against 399 uy computed at once.
    float u = 0;
    for (int i = 0; i < 399; ++i)
        u += q.uy;
    const float last = list.coords[row1->first + 798];
    EXPECT_EQ(last, u);
    EXPECT_NE(last, float(399 * double(q.uy)));
}

TEST(isometry, large_mesh_is_kept_as_one_run_per_polyline)
{
    const int rows = 120, cols = 150;
    auto p = make({rows, cols, 0, 119, 0, 149, 1});
    test::set_ground(*p, [](double x, double y) { return 0.01 * x * y; });
    ScriptedPort port;
    draw_isometry(*p, port, 1);
    const DisplayList& list = p->pictures.isometry.picture;
    // cls, window, a dot and a run for each mesh polyline, and for each of
    // the two profiles of the one surface.
    EXPECT_EQ(list.items.size(), std::size_t(2 + 2 * cols + 2 * rows + 4));
    // 4 numbers of the window, then 2 per dot and 2 per point of a run.
    const std::size_t expected = 4 + std::size_t(cols) * (2 + 2 * rows) + std::size_t(rows) * (2 + 2 * cols) +
                                 (2 + 2 * cols) + (2 + 2 * rows);
    EXPECT_EQ(list.coords.size(), expected);
}

TEST(isometry, result_isometry_captions_fs_and_has_no_ground_rule)
{
    auto p = make({3, 3, 0, 2, 0, 2, 2});
    p->surface_defined = -1;
    test::set_ground(*p, [](double, double) { return 10; });
    test::set_surface(*p, p->sliding_index, [](double, double) { return 8; });
    p->zgrid(2, 2, p->sliding_index) = 10;
    p->factor_of_safety = 1.5f;
    p->view.critical_fs = 1.5f;
    ScriptedPort port;
    draw_result_isometry(*p, port);
    EXPECT_EQ(p->pictures.result.caption, "SLIDING SURFACE, FS=1.50");
    // The result picture: 6 mesh runs all in the sliding colour.
    const auto r = runs(p->pictures.result.picture);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(r[i]->colour, magenta) << i;
    // tob_pic3 was redrawn with the ground rule but not brought up.
    const auto r3 = runs(p->pictures.isometry.picture);
    EXPECT_EQ(r3[1]->colour, layer2);
    EXPECT_EQ(p->pictures.isometry.caption, "SLIDING SURFACE");
    EXPECT_EQ(p->view.iso_layer, p->sliding_index);
    EXPECT_FALSE(p->view.redraw_only);
    ASSERT_EQ(port.views.size(), 1u);
    EXPECT_EQ(port.views[0].second, "SLIDING SURFACE, FS=1.50");
}

TEST(isometry, result_caption_is_plain_when_there_is_no_solution)
{
    auto p = make({3, 3, 0, 2, 0, 2, 1});
    p->surface_defined = -1;
    p->factor_of_safety = 0;
    p->view.critical_fs = 1.5f;
    ScriptedPort port;
    draw_result_isometry(*p, port);
    EXPECT_EQ(p->pictures.result.caption, "SLIDING SURFACE, FS= 1.5");
    p->factor_of_safety = 2.3456f;
    p->view.critical_fs = 2.3456f;
    draw_result_isometry(*p, port);
    // "#0.00#": up to three decimals.
    EXPECT_EQ(p->pictures.result.caption, "SLIDING SURFACE, FS=2.346");
}

} // namespace
} // namespace tobel
