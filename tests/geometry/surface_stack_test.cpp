// Surface stack rebuild and the Mirror command. Planes are laid down as flat
// or straight section lines on a small mesh so that every expected value can
// be read off by hand.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "geometry/surface_stack.h"
#include "project/defaults.h"
#include "commands/menu_model.h"
#include "surfaces/surface_fixture.h"
#include "support/scripted_port.h"

using namespace tobel;

namespace {

using Points = std::vector<std::pair<float, float>>; // (y, z) along a line

// 2-D mesh: one row at x = 0, cols at y = 0, 1, 2; two sections at x = 0 and 10.
Project make_stack(int layers, int piezos)
{
    Project p = std::move(*test::make_project({1, 3, 0, 1, 0, 2, layers, piezos}));
    p.num_sections = 2;
    p.sections.x[1] = 0;
    p.sections.x[2] = 10;
    p.surface_defined = -1;
    return p;
}

// The same line on both sections.
void set_line(Project& p, int surface, const Points& pts)
{
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, surface) = int16(pts.size());
        for (std::size_t n = 0; n < pts.size(); ++n) {
            p.sections.y(s, int(n) + 1, surface) = pts[n].first;
            p.sections.z(s, int(n) + 1, surface) = pts[n].second;
        }
    }
}

// A line through the three nodes y = 0, 1, 2 at the given elevations.
void set_nodes(Project& p, int surface, float z1, float z2, float z3)
{
    set_line(p, surface, {{0, z1}, {1, z2}, {2, z3}});
}

void set_plane(Project& p, int surface, float z1, float z2, float z3)
{
    p.zgrid(1, 1, surface) = z1;
    p.zgrid(1, 2, surface) = z2;
    p.zgrid(1, 3, surface) = z3;
}

std::vector<float> plane(const Project& p, int surface)
{
    return {p.zgrid(1, 1, surface), p.zgrid(1, 2, surface), p.zgrid(1, 3, surface)};
}

std::vector<std::string> texts(const test::ScriptedPort& port)
{
    std::vector<std::string> t;
    for (const auto& b : port.boxes)
        t.push_back(b.text);
    return t;
}

const std::string crossing = "Line crossing conflict has been corrected by adjusting surface ";

} // namespace

// ---- blanking and the Solve menu ----

TEST(rebuild_surfaces, grid_blank_has_the_grid_file_bit_pattern)
{
    Project p = make_stack(1, 0);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(p.grid_blank), 0x7EFFFFEEu);
    EXPECT_NEAR(p.grid_blank / 1.70141e38f, 1.0f, 1e-6f);
}

TEST(rebuild_surfaces, blanked_grid_file_nodes_take_the_base_of_z)
{
    Project p = make_stack(2, 0);
    p.surf_method[1] = 1;
    p.base_z = -7;
    set_plane(p, 1, 5, grid_blank_value(), 6);
    set_nodes(p, 2, 50, 50, 50);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{5, -7, 6}));
}

TEST(rebuild_surfaces, blank_values_of_section_planes_are_not_replaced)
{
    // Only grid-file planes are cleaned: the sliding plane is given by
    // sections and keeps a node at the blanking value.
    Project p = make_stack(1, 0);
    p.base_z = -7;
    set_nodes(p, 1, 50, 50, 50);
    p.surf_method[2] = 2; // constant depth from the ground: 50 - (-blank)
    p.surf_depth[2] = -grid_blank_value() + 50.0f;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(p.zgrid(1, 1, 2), grid_blank_value());
}

TEST(rebuild_surfaces, hides_the_solve_menu_without_a_sliding_surface)
{
    Project p = make_stack(1, 0);
    init_menus(p);
    p.menus["Solve"].visible = true;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_TRUE(p.menus["Solve"].visible);
    p.surface_defined = 0;
    rebuild_surfaces(p, port);
    EXPECT_FALSE(p.menus["Solve"].visible);
}

TEST(rebuild_surfaces, sliding_plane_drawn_by_sections_is_rebuilt)
{
    Project p = make_stack(1, 0);
    set_nodes(p, 1, 10, 10, 10);
    set_nodes(p, 2, 3, 4, 5);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 2), (std::vector<float>{3, 4, 5}));
    EXPECT_EQ(p.surf_built[2], 1);
}

TEST(rebuild_surfaces, grid_file_planes_are_not_interpolated)
{
    Project p = make_stack(2, 0);
    p.surf_method[1] = 1;
    set_plane(p, 1, 1, 2, 3);
    set_nodes(p, 1, 40, 40, 40); // lines left over, ignored
    set_nodes(p, 2, 50, 50, 50);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{1, 2, 3}));
}

// ---- constant depth ----

TEST(rebuild_surfaces, constant_depth_chain_hangs_each_plane_from_its_neighbour)
{
    // Layers 1, 2 under the ground 3, piezo surfaces 4 and 5.
    Project p = make_stack(3, 2);
    set_nodes(p, 3, 100, 98, 96);
    p.surf_method[2] = 2;
    p.surf_depth[2] = 10; // 90, 88, 86 under the ground
    p.surf_method[1] = 2;
    p.surf_depth[1] = 5; // 85, 83, 81 under layer 2
    p.surf_method[4] = 2;
    p.surf_depth[4] = 3; // 97, 95, 93 under the ground
    p.surf_method[5] = 2;
    p.surf_depth[5] = 2; // 95, 93, 91 under piezo 1
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 2), (std::vector<float>{90, 88, 86}));
    EXPECT_EQ(plane(p, 1), (std::vector<float>{85, 83, 81}));
    EXPECT_EQ(plane(p, 4), (std::vector<float>{97, 95, 93}));
    EXPECT_EQ(plane(p, 5), (std::vector<float>{95, 93, 91}));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(rebuild_surfaces, constant_depth_ground_hangs_from_the_piezo_plane_as_it_stands)
{
    // Ground (1) of constant depth 4 hangs from piezo 1 before piezo 1 is
    // derived; piezo 1, of constant depth 1, then hangs from the new ground.
    Project p = make_stack(1, 1);
    set_plane(p, 2, 50, 60, 70);
    p.surf_method[1] = 2;
    p.surf_depth[1] = 4;
    p.surf_method[2] = 2;
    p.surf_depth[2] = 1;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{46, 56, 66}));
    EXPECT_EQ(plane(p, 2), (std::vector<float>{45, 55, 65}));
}

TEST(rebuild_surfaces, constant_depth_ground_without_piezos_hangs_from_the_sliding_plane)
{
    Project p = make_stack(1, 0);
    set_nodes(p, 2, 30, 31, 32); // sliding plane by sections
    p.surf_method[1] = 2;
    p.surf_depth[1] = 2.5f;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{27.5f, 28.5f, 29.5f}));
}

// ---- line crossing correction ----

TEST(rebuild_surfaces, equal_elevations_are_not_a_crossing)
{
    Project p = make_stack(2, 0);
    set_nodes(p, 1, 50, 50, 50);
    set_nodes(p, 2, 50, 50, 50);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(plane(p, 1), (std::vector<float>{50, 50, 50}));
}

TEST(rebuild_surfaces, crossing_layer_drops_to_the_layer_above_with_a_message)
{
    Project p = make_stack(2, 0);
    set_nodes(p, 1, 40, 60, 45);
    set_nodes(p, 2, 50, 50, 50);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{40, 50, 45}));
    EXPECT_EQ(plane(p, 2), (std::vector<float>{50, 50, 50}));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, crossing + " 1");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok);
    EXPECT_EQ(port.boxes[0].title, "TOBEL-3");
}

TEST(rebuild_surfaces, layer_one_through_layer_three_drops_to_the_lower_of_the_two)
{
    // Layer 2 lies under the ground everywhere; layer 1 rises above both.
    Project p = make_stack(3, 0);
    set_nodes(p, 1, 70, 90, 110);
    set_nodes(p, 2, 80, 80, 80);
    set_nodes(p, 3, 100, 100, 100);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{70, 80, 80}));
    EXPECT_EQ(texts(port), (std::vector<std::string>{crossing + " 1"}));
}

TEST(rebuild_surfaces, layers_are_corrected_from_the_top_down_one_message_each)
{
    // Layer 2 crosses the ground at y = 1 and is corrected first, so layer 1
    // there meets the corrected 100 and not the original 105.
    Project p = make_stack(3, 0);
    set_nodes(p, 1, 95, 102, 120);
    set_nodes(p, 2, 90, 105, 90);
    set_nodes(p, 3, 100, 100, 100);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 2), (std::vector<float>{90, 100, 90}));
    EXPECT_EQ(plane(p, 1), (std::vector<float>{90, 100, 90}));
    EXPECT_EQ(texts(port), (std::vector<std::string>{crossing + " 2", crossing + " 1"}));
}

TEST(rebuild_surfaces, grid_file_layer_that_crosses_is_left_alone)
{
    Project p = make_stack(2, 0);
    p.surf_method[1] = 1;
    set_plane(p, 1, 120, 30, 120);
    set_nodes(p, 2, 100, 100, 100);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{120, 30, 120}));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(rebuild_surfaces, grid_file_layer_above_still_lowers_the_one_below)
{
    Project p = make_stack(3, 0);
    set_nodes(p, 1, 90, 90, 90);
    p.surf_method[2] = 1;
    set_plane(p, 2, 95, 85, 95);
    set_nodes(p, 3, 100, 100, 100);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{90, 85, 90}));
    EXPECT_EQ(texts(port), (std::vector<std::string>{crossing + " 1"}));
}

TEST(rebuild_surfaces, constant_depth_layer_is_lowered_silently)
{
    // Layer 2 by sections at 95 crosses the ground at y = 1 (90). Layer 1
    // hangs 2 under the uncorrected layer 2 (93) and is then lowered to 90
    // with no message: its line on section 1 is empty.
    Project p = make_stack(3, 0);
    set_nodes(p, 3, 100, 90, 100);
    set_nodes(p, 2, 95, 95, 95);
    p.surf_method[1] = 2;
    p.surf_depth[1] = 2;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 2), (std::vector<float>{95, 90, 95}));
    EXPECT_EQ(plane(p, 1), (std::vector<float>{93, 90, 93}));
    EXPECT_EQ(texts(port), (std::vector<std::string>{crossing + " 2"}));
}

TEST(rebuild_surfaces, crossing_is_silent_when_section_one_has_no_line)
{
    // The row sits at x = 5, halfway between the sections. Layer 1 has a line
    // on section 2 only, at 200: halfway from the 0 of the empty line it
    // gives 100, above the ground at 50, and is lowered without a message.
    Project p = make_stack(2, 0);
    p.x_min = 5;
    p.x_max = 6;
    set_nodes(p, 2, 50, 50, 50);
    p.sections.n(2, 1) = 2;
    p.sections.y(2, 1, 1) = 0;
    p.sections.z(2, 1, 1) = 200;
    p.sections.y(2, 2, 1) = 2;
    p.sections.z(2, 2, 1) = 200;
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(plane(p, 1), (std::vector<float>{50, 50, 50}));
    // Without the ground over it the layer would stand at 100.
    p.surf_method[2] = 1;
    set_plane(p, 2, 500, 500, 500);
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{100, 100, 100}));
}

TEST(rebuild_surfaces, top_layer_is_never_corrected)
{
    // The ground lies under piezo 1 and over layer 1: nothing moves.
    Project p = make_stack(2, 1);
    set_nodes(p, 1, 45, 45, 45);
    set_nodes(p, 2, 50, 50, 50);
    set_nodes(p, 3, 40, 60, 40);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 2), (std::vector<float>{50, 50, 50}));
    EXPECT_EQ(plane(p, 1), (std::vector<float>{45, 45, 45}));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(rebuild_surfaces, single_layer_model_has_no_correction)
{
    Project p = make_stack(1, 1);
    set_nodes(p, 1, 50, 50, 50);
    set_nodes(p, 2, 60, 40, 60); // piezo over and under the ground
    set_nodes(p, 3, 70, 30, 70); // sliding plane likewise
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{50, 50, 50}));
    EXPECT_EQ(plane(p, 2), (std::vector<float>{60, 40, 60}));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(rebuild_surfaces, correction_and_message_recur_at_each_rebuild)
{
    Project p = make_stack(2, 0);
    set_nodes(p, 1, 60, 40, 40);
    set_nodes(p, 2, 50, 50, 50);
    test::ScriptedPort port;
    rebuild_surfaces(p, port);
    rebuild_surfaces(p, port);
    EXPECT_EQ(texts(port), (std::vector<std::string>{crossing + " 1", crossing + " 1"}));
    EXPECT_EQ(p.sections.z(1, 1, 1), 60.0f); // the line itself is kept
}

// ---- Mirror ----

namespace {

Project mirror_case(float y_min, float y_max)
{
    Project p = make_stack(2, 0);
    p.y_min = y_min;
    p.y_max = y_max;
    p.col_spacing = (y_max - y_min) / 2;
    set_line(p, 1, {{y_min, 10}, {y_min + 30, 20}, {y_max, 30}});
    set_line(p, 2, {{y_min, 50}, {y_max, 40}});
    return p;
}

} // namespace

TEST(mirror_model, reverses_lines_about_the_old_y_max)
{
    Project p = mirror_case(0, 100);
    test::ScriptedPort port;
    mirror_model(p, port);
    EXPECT_EQ(p.y_min, 0.0f);
    EXPECT_EQ(p.y_max, 100.0f);
    for (int s = 1; s <= 2; ++s) {
        ASSERT_EQ(p.sections.n(s, 1), 3);
        EXPECT_EQ(p.sections.y(s, 1, 1), 0.0f);
        EXPECT_EQ(p.sections.y(s, 2, 1), 70.0f);
        EXPECT_EQ(p.sections.y(s, 3, 1), 100.0f);
        EXPECT_EQ(p.sections.z(s, 1, 1), 30.0f);
        EXPECT_EQ(p.sections.z(s, 2, 1), 20.0f);
        EXPECT_EQ(p.sections.z(s, 3, 1), 10.0f);
        EXPECT_EQ(p.sections.z(s, 1, 2), 40.0f);
        EXPECT_EQ(p.sections.z(s, 2, 2), 50.0f);
    }
    // The stack is rebuilt on the mirrored lines: node y = 50 on layer 1
    // lies between (0, 30) and (70, 20).
    EXPECT_FLOAT_EQ(p.zgrid(1, 2, 1), float(30.0 - 10.0 * 50.0 / 70.0));
    EXPECT_EQ(p.zgrid(1, 1, 2), 40.0f);
}

TEST(mirror_model, mirror_twice_restores_a_model_from_zero)
{
    Project p = mirror_case(0, 100);
    const Project before = p;
    test::ScriptedPort port;
    mirror_model(p, port);
    mirror_model(p, port);
    EXPECT_EQ(p.y_min, 0.0f);
    EXPECT_EQ(p.y_max, 100.0f);
    for (int s = 1; s <= 2; ++s)
        for (int k = 1; k <= 2; ++k)
            for (int n = 1; n <= p.sections.n(s, k); ++n) {
                EXPECT_FLOAT_EQ(p.sections.y(s, n, k), before.sections.y(s, n, k));
                EXPECT_EQ(p.sections.z(s, n, k), before.sections.z(s, n, k));
            }
}

TEST(mirror_model, model_off_zero_is_shifted_to_zero_by_the_first_mirror)
{
    Project p = mirror_case(20, 120);
    test::ScriptedPort port;
    mirror_model(p, port);
    EXPECT_EQ(p.y_min, 0.0f);
    EXPECT_EQ(p.y_max, 100.0f);
    // Old y 20, 50, 120 become 100, 70, 0, reversed.
    EXPECT_EQ(p.sections.y(1, 1, 1), 0.0f);
    EXPECT_EQ(p.sections.y(1, 2, 1), 70.0f);
    EXPECT_EQ(p.sections.y(1, 3, 1), 100.0f);
    mirror_model(p, port);
    // The second mirror is about 100: back in order, but from 0.
    EXPECT_EQ(p.sections.y(1, 1, 1), 0.0f);
    EXPECT_EQ(p.sections.y(1, 2, 1), 30.0f);
    EXPECT_EQ(p.sections.y(1, 3, 1), 100.0f);
    EXPECT_EQ(p.sections.z(1, 1, 1), 10.0f);
    EXPECT_EQ(p.sections.z(1, 3, 1), 30.0f);
}

TEST(mirror_model, wedge_dip_directions_are_reflected)
{
    Project p = mirror_case(0, 100);
    p.num_wedges = 4;
    const float dips[] = {0, 30, -45, 180};
    const float expected[] = {-180, 150, -135, 0};
    for (int w = 1; w <= 4; ++w) {
        p.wedge_dipdir[w] = dips[w - 1];
        p.wedge_y[w] = float(10 * w);
    }
    test::ScriptedPort port;
    mirror_model(p, port);
    for (int w = 1; w <= 4; ++w) {
        EXPECT_EQ(p.wedge_dipdir[w], expected[w - 1]) << w;
        EXPECT_EQ(p.wedge_y[w], 100.0f - float(10 * w));
    }
}

TEST(mirror_model, centres_forces_and_crack_are_mirrored)
{
    Project p = mirror_case(0, 100);
    p.single_y = 30;
    p.grid_y_ul = 20;
    p.grid_y_lr = 45;
    p.auto_y = 60;
    p.num_forces = 2;
    p.force_y[1] = 10;
    p.force_y[2] = 75;
    p.force_h[1] = 500;
    p.force_v[1] = -200;
    p.force_y[3] = 33; // beyond num_forces: untouched
    p.crack_y = 85;
    test::ScriptedPort port;
    mirror_model(p, port);
    EXPECT_EQ(p.single_y, 70.0f);
    // 80 and 55, exchanged so that the lower stays the lower.
    EXPECT_EQ(p.grid_y_ul, 55.0f);
    EXPECT_EQ(p.grid_y_lr, 80.0f);
    EXPECT_EQ(p.auto_y, 40.0f);
    EXPECT_EQ(p.force_y[1], 90.0f);
    EXPECT_EQ(p.force_y[2], 25.0f);
    EXPECT_EQ(p.force_y[3], 33.0f);
    EXPECT_EQ(p.force_h[1], 500.0f);
    EXPECT_EQ(p.force_v[1], -200.0f);
    EXPECT_EQ(p.crack_y, 15.0f);
}

TEST(mirror_model, grid_file_planes_and_disc_codes_are_not_mirrored)
{
    Project p = mirror_case(0, 100);
    p.surf_method[1] = 1;
    set_plane(p, 1, 1, 2, 3);
    p.disc_code(1, 1) = 4;
    test::ScriptedPort port;
    mirror_model(p, port);
    EXPECT_EQ(plane(p, 1), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(p.disc_code(1, 1), 4);
    EXPECT_EQ(p.disc_code(1, 3), 0);
}
