// Adding, inserting and deleting layers and piezometric surfaces: every
// per-surface table and the material table shift in step, the grids are
// emptied, and an insertion undone by a deletion leaves the data file as it
// was.
#include <gtest/gtest.h>

#include <string>

#include "geometry/layer_stack.h"
#include "geometry/surface_stack.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "surfaces/surface_fixture.h"
#include "support/paths.h"
#include "support/scripted_port.h"

using namespace tobel;
using tobel::test::ScriptedPort;

namespace {

// A stack whose every table carries its own slot number, so that a shift can
// be read off directly: surface k has method k % 3, depth 10k, file "Gk.GRD",
// built flag k % 2, plane value k, and in section s a line of k points with
// Y = 10k + n and Z = 100s + k. Material m is named "Mm" with unit weight m,
// cohesion 2m, and so on; material 1 names piezometric surface 1.
Project make_stack(int layers, int piezos, int discs)
{
    Project p = std::move(*test::make_project({3, 4, 0, 10, 0, 30, layers, piezos, discs}));
    p.num_sections = 2;
    for (int k = 1; k <= p.sliding_index; ++k) {
        const std::size_t u = std::size_t(k);
        p.surf_method[u] = int16(k % 3);
        p.surf_depth[u] = float(10 * k);
        p.surf_grd_file[u] = "G" + std::to_string(k) + ".GRD";
        p.surf_built[u] = int16(k % 2);
        for (int i = 1; i <= p.num_rows; ++i)
            for (int j = 1; j <= p.num_cols; ++j)
                p.zgrid(i, j, k) = float(k);
        for (int s = 1; s <= 2; ++s) {
            p.sections.n(s, k) = int16(k);
            for (int n = 1; n <= k; ++n) {
                p.sections.y(s, n, k) = float(10 * k + n);
                p.sections.z(s, n, k) = float(100 * s + k);
            }
        }
    }
    for (int m = 1; m <= p.num_mat_entries; ++m) {
        const std::size_t u = std::size_t(m);
        p.mat_name[u] = "M" + std::to_string(m);
        p.mat_unit_weight[u] = float(m);
        p.mat_type[u] = int16(m % 3 + 1);
        p.mat_cohesion[u] = float(2 * m);
        p.mat_cohesion_v[u] = float(3 * m);
        p.mat_phi[u] = float(4 * m);
        p.mat_phi_v[u] = float(5 * m);
        p.mat_piezo[u] = 0;
        p.mat_bbar[u] = float(6 * m);
        p.mat_coef_a[u] = float(7 * m);
        p.mat_coef_b[u] = float(8 * m);
        p.mat_uniaxial[u] = float(9 * m);
        p.mat_coef_d[u] = float(11 * m);
    }
    p.mat_piezo[1] = -1;
    return p;
}

// Surface slot `k` holds what make_stack put in slot `from`.
void expect_surface_from(const Project& p, int k, int from)
{
    const std::size_t u = std::size_t(k);
    EXPECT_EQ(p.surf_method[u], from % 3) << "slot " << k;
    EXPECT_EQ(p.surf_depth[u], float(10 * from)) << "slot " << k;
    EXPECT_EQ(p.surf_grd_file[u], "G" + std::to_string(from) + ".GRD") << "slot " << k;
    EXPECT_EQ(p.surf_built[u], from % 2) << "slot " << k;
    for (int s = 1; s <= 2; ++s) {
        ASSERT_EQ(p.sections.n(s, k), from) << "section " << s << " slot " << k;
        for (int n = 1; n <= from; ++n) {
            EXPECT_EQ(p.sections.y(s, n, k), float(10 * from + n));
            EXPECT_EQ(p.sections.z(s, n, k), float(100 * s + from));
        }
    }
}

void expect_surface_cleared(const Project& p, int k)
{
    const std::size_t u = std::size_t(k);
    EXPECT_EQ(p.surf_method[u], 0);
    EXPECT_EQ(p.surf_depth[u], 0.0f);
    EXPECT_EQ(p.surf_grd_file[u], "");
    EXPECT_EQ(p.surf_built[u], 0);
    for (int s = 1; s <= 2; ++s)
        EXPECT_EQ(p.sections.n(s, k), 0);
}

void expect_material_from(const Project& p, int m, int from)
{
    const std::size_t u = std::size_t(m);
    EXPECT_EQ(p.mat_name[u], "M" + std::to_string(from)) << "entry " << m;
    EXPECT_EQ(p.mat_unit_weight[u], float(from));
    EXPECT_EQ(p.mat_type[u], from % 3 + 1);
    EXPECT_EQ(p.mat_cohesion[u], float(2 * from));
    EXPECT_EQ(p.mat_cohesion_v[u], float(3 * from));
    EXPECT_EQ(p.mat_phi[u], float(4 * from));
    EXPECT_EQ(p.mat_phi_v[u], float(5 * from));
    EXPECT_EQ(p.mat_piezo[u], from == 1 ? -1.0f : 0.0f);
    EXPECT_EQ(p.mat_bbar[u], float(6 * from));
    EXPECT_EQ(p.mat_coef_a[u], float(7 * from));
    EXPECT_EQ(p.mat_coef_b[u], float(8 * from));
    EXPECT_EQ(p.mat_uniaxial[u], float(9 * from));
    EXPECT_EQ(p.mat_coef_d[u], float(11 * from));
}

void expect_material_cleared(const Project& p, int m)
{
    const std::size_t u = std::size_t(m);
    EXPECT_EQ(p.mat_name[u], "Material Name");
    EXPECT_EQ(p.mat_type[u], 1);
    for (float v : {p.mat_unit_weight[u], p.mat_cohesion[u], p.mat_cohesion_v[u], p.mat_phi[u],
                    p.mat_phi_v[u], p.mat_piezo[u], p.mat_bbar[u], p.mat_coef_a[u], p.mat_coef_b[u],
                    p.mat_uniaxial[u], p.mat_coef_d[u]})
        EXPECT_EQ(v, 0.0f);
}

bool all_planes_zero(const Project& p)
{
    for (float z : p.zgrid.v)
        if (z != 0)
            return false;
    return true;
}

std::string example_text(Project& p)
{
    reset_project(p);
    InputReader in(test::example_path("slope3d-layers-piezo-force.tob"));
    read_data_items(p, in);
    return data_file_text(p);
}

} // namespace

TEST(layer_stack, limit_message_names_the_limit_in_signed_form)
{
    EXPECT_EQ(surface_limit_message(50),
              "Combined number of materials and piezo surfaces must not exceed  50.");
}

TEST(layer_stack, inserting_a_layer_in_the_middle_shifts_surfaces_and_materials)
{
    // 3 layers, 1 piezo, 1 discontinuity: surfaces 1..4, sliding slot 5,
    // materials 1..3 and the discontinuity at 4.
    Project p = make_stack(3, 1, 1);
    p.col_weight(1, 1) = 7;
    ScriptedPort port;
    ASSERT_TRUE(insert_layer(p, 2, port));
    EXPECT_TRUE(port.boxes.empty());
    // Counts: 4 layers + 1 piezo = 5 surfaces, sliding at 6, 4 + 1 entries.
    EXPECT_EQ(p.num_layers, 4);
    EXPECT_EQ(p.num_surfaces, 5);
    EXPECT_EQ(p.sliding_index, 6);
    EXPECT_EQ(p.num_mat_entries, 5);
    // Surfaces: 1 stays, 2 is new, 3..6 are the old 2..5 (the old sliding slot at 6).
    expect_surface_from(p, 1, 1);
    expect_surface_cleared(p, 2);
    for (int k = 3; k <= 6; ++k)
        expect_surface_from(p, k, k - 1);
    // Materials: 1 stays, 2 is new, 3..5 are the old 2..4, the discontinuity at 5.
    expect_material_from(p, 1, 1);
    expect_material_cleared(p, 2);
    for (int m = 3; m <= 5; ++m)
        expect_material_from(p, m, m - 1);
    // The piezometric reference of material 1 is relative to num_layers and
    // does not move: it still names piezometric surface 1, now slot 5.
    EXPECT_EQ(p.mat_piezo[1], -1.0f);
    // The grids are sized anew for 6 + 1 planes and hold zeros, the shifted
    // planes included; the work grids are emptied too.
    EXPECT_EQ(p.zgrid.planes, 7);
    EXPECT_TRUE(all_planes_zero(p));
    EXPECT_EQ(p.col_weight(1, 1), 0.0f);
}

TEST(layer_stack, inserting_at_the_first_row_moves_every_surface_up_and_leaves_plane_1_zero)
{
    Project p = make_stack(2, 0, 0);
    ScriptedPort port;
    ASSERT_TRUE(insert_layer(p, 1, port));
    EXPECT_EQ(p.num_layers, 3);
    EXPECT_EQ(p.sliding_index, 4);
    expect_surface_cleared(p, 1);
    for (int k = 2; k <= 4; ++k)
        expect_surface_from(p, k, k - 1);
    expect_material_cleared(p, 1);
    expect_material_from(p, 2, 1);
    expect_material_from(p, 3, 2);
    for (int i = 1; i <= p.num_rows; ++i)
        for (int j = 1; j <= p.num_cols; ++j)
            EXPECT_EQ(p.zgrid(i, j, 1), 0.0f);
}

TEST(layer_stack, adding_a_layer_makes_a_new_ground_on_top)
{
    Project p = make_stack(2, 1, 0);
    ScriptedPort port;
    ASSERT_TRUE(add_layer(p, port));
    // The new layer 3 is the ground; the piezo moves from 3 to 4 and the
    // sliding slot from 4 to 5.
    EXPECT_EQ(p.num_layers, 3);
    EXPECT_EQ(p.sliding_index, 5);
    expect_surface_from(p, 1, 1);
    expect_surface_from(p, 2, 2);
    expect_surface_cleared(p, 3);
    expect_surface_from(p, 4, 3);
    expect_surface_from(p, 5, 4);
    expect_material_cleared(p, 3);
}

TEST(layer_stack, deleting_a_layer_in_the_middle_shifts_everything_down)
{
    Project p = make_stack(3, 1, 1);
    ASSERT_TRUE(delete_layer(p, 2));
    EXPECT_EQ(p.num_layers, 2);
    EXPECT_EQ(p.num_surfaces, 3);
    EXPECT_EQ(p.sliding_index, 4);
    EXPECT_EQ(p.num_mat_entries, 3);
    expect_surface_from(p, 1, 1);
    for (int k = 2; k <= 4; ++k)
        expect_surface_from(p, k, k + 1);
    expect_material_from(p, 1, 1);
    expect_material_from(p, 2, 3);
    expect_material_from(p, 3, 4); // the discontinuity, now at num_layers + 1
    // Entries are moved from 2 to num_mat_entries - 1 only: the old last
    // entry stays beyond the new count.
    expect_material_from(p, 4, 4);
    EXPECT_EQ(p.zgrid.planes, 5);
    EXPECT_TRUE(all_planes_zero(p));
}

TEST(layer_stack, deleting_the_top_layer_makes_the_layer_under_it_the_ground)
{
    Project p = make_stack(3, 1, 0);
    ASSERT_TRUE(delete_layer(p, 3));
    EXPECT_EQ(p.num_layers, 2);
    // The ground is now surface 2 with layer 2's own data; the piezo comes
    // down from 4 to 3 and the sliding slot from 5 to 4.
    expect_surface_from(p, 2, 2);
    expect_surface_from(p, 3, 4);
    expect_surface_from(p, 4, 5);
    expect_material_from(p, 2, 2);
}

TEST(layer_stack, deleting_the_only_layer_does_nothing)
{
    Project p = make_stack(1, 0, 0);
    EXPECT_FALSE(delete_layer(p, 1));
    EXPECT_EQ(p.num_layers, 1);
    EXPECT_EQ(p.sliding_index, 2);
    expect_surface_from(p, 1, 1);
    expect_surface_from(p, 2, 2);
    // The planes are not emptied either.
    EXPECT_EQ(p.zgrid(1, 1, 1), 1.0f);
}

TEST(layer_stack, insert_then_delete_restores_every_table)
{
    Project p = make_stack(3, 2, 1);
    ScriptedPort port;
    ASSERT_TRUE(insert_layer(p, 2, port));
    ASSERT_TRUE(delete_layer(p, 2));
    EXPECT_EQ(p.num_layers, 3);
    EXPECT_EQ(p.sliding_index, 6);
    EXPECT_EQ(p.num_mat_entries, 4);
    for (int k = 1; k <= 6; ++k)
        expect_surface_from(p, k, k);
    for (int m = 1; m <= 4; ++m)
        expect_material_from(p, m, m);
    // The planes are the one thing not restored: rebuild_surfaces makes them.
    EXPECT_TRUE(all_planes_zero(p));
}

TEST(layer_stack, a_full_stack_refuses_another_layer_and_the_counts_stay)
{
    // 49 layers + 1 piezo = 50 surfaces: 51 + 1 would exceed 50.
    Project p = make_stack(49, 1, 0);
    ScriptedPort port;
    EXPECT_TRUE(surface_limit_reached(p));
    EXPECT_FALSE(add_layer(p, port));
    EXPECT_FALSE(insert_layer(p, 3, port));
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text, "Combined number of materials and piezo surfaces must not exceed  50.");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok);
    EXPECT_EQ(p.num_layers, 49);
    EXPECT_EQ(p.num_piezos, 1);
    EXPECT_EQ(p.sliding_index, 51);
    expect_surface_from(p, 3, 3);
    EXPECT_EQ(p.zgrid(1, 1, 3), 3.0f); // nothing was emptied
}

TEST(layer_stack, the_limit_counts_the_new_surface_plus_one)
{
    // 47 + 1 = 48 surfaces: the 49th makes 49 + 1 = 50, allowed; the 50th
    // would make 51, refused.
    Project p = make_stack(47, 1, 0);
    ScriptedPort port;
    EXPECT_FALSE(surface_limit_reached(p));
    EXPECT_TRUE(add_layer(p, port));
    EXPECT_EQ(p.num_layers, 48);
    EXPECT_TRUE(surface_limit_reached(p));
    EXPECT_FALSE(add_piezo(p, port));
    EXPECT_EQ(p.num_piezos, 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, surface_limit_message(50));
}

TEST(layer_stack, piezo_insertion_shifts_surfaces_and_leaves_materials)
{
    // 2 layers, 2 piezos: piezos at 3 and 4, sliding at 5.
    Project p = make_stack(2, 2, 1);
    ScriptedPort port;
    ASSERT_TRUE(insert_piezo(p, 2, port));
    EXPECT_EQ(p.num_piezos, 3);
    EXPECT_EQ(p.num_surfaces, 5);
    EXPECT_EQ(p.sliding_index, 6);
    EXPECT_EQ(p.num_mat_entries, 3); // layers + discontinuities only
    expect_surface_from(p, 3, 3);
    expect_surface_cleared(p, 4);
    expect_surface_from(p, 5, 4);
    expect_surface_from(p, 6, 5);
    for (int m = 1; m <= 3; ++m)
        expect_material_from(p, m, m);
    EXPECT_EQ(p.zgrid.planes, 7);
    EXPECT_TRUE(all_planes_zero(p));
}

TEST(layer_stack, piezo_add_and_delete_work_above_the_layers)
{
    Project p = make_stack(2, 1, 0);
    ScriptedPort port;
    ASSERT_TRUE(add_piezo(p, port));
    // The new piezo 2 takes the old sliding slot 4; sliding moves to 5.
    EXPECT_EQ(p.num_piezos, 2);
    expect_surface_from(p, 3, 3);
    expect_surface_cleared(p, 4);
    expect_surface_from(p, 5, 4);
    ASSERT_TRUE(delete_piezo(p, 1));
    // Piezo 1 (slot 3) goes: the new piezo at 3, the sliding slot at 4.
    EXPECT_EQ(p.num_piezos, 1);
    EXPECT_EQ(p.sliding_index, 4);
    expect_surface_cleared(p, 3);
    expect_surface_from(p, 4, 4);
    for (int m = 1; m <= 2; ++m)
        expect_material_from(p, m, m);
    EXPECT_EQ(p.mat_piezo[1], -1.0f);
}

TEST(layer_stack, piezo_positions_outside_the_list_do_nothing)
{
    Project p = make_stack(2, 0, 0);
    ScriptedPort port;
    EXPECT_FALSE(delete_piezo(p, 1));
    EXPECT_FALSE(insert_piezo(p, 2, port));
    EXPECT_FALSE(insert_layer(p, 4, port));
    EXPECT_FALSE(delete_layer(p, 3));
    EXPECT_EQ(p.num_piezos, 0);
    EXPECT_EQ(p.num_layers, 2);
    EXPECT_TRUE(port.boxes.empty());
}

TEST(layer_stack, example_saves_byte_for_byte_after_insert_delete_and_rebuild)
{
    Project p;
    const std::string before = example_text(p);
    ScriptedPort port;
    // A layer in the middle, a new ground and a piezometric surface, each
    // inserted and deleted again.
    ASSERT_TRUE(insert_layer(p, 2, port));
    EXPECT_NE(data_file_text(p), before);
    ASSERT_TRUE(delete_layer(p, 2));
    ASSERT_TRUE(add_layer(p, port));
    ASSERT_TRUE(delete_layer(p, p.num_layers));
    ASSERT_TRUE(insert_piezo(p, 1, port));
    ASSERT_TRUE(delete_piezo(p, 1));
    rebuild_surfaces(p, port);
    EXPECT_EQ(data_file_text(p), before);
}

TEST(layer_stack, example_planes_come_back_with_the_rebuild)
{
    // The example's layer 1 is flat at Z = 8 from Y = 0 to 40 on both
    // sections, so its plane is 8 at the first mesh node once rebuilt.
    Project p;
    example_text(p);
    ScriptedPort port;
    ASSERT_TRUE(insert_layer(p, 1, port));
    ASSERT_TRUE(delete_layer(p, 1));
    EXPECT_EQ(p.zgrid(1, 1, 1), 0.0f);
    rebuild_surfaces(p, port);
    EXPECT_EQ(p.zgrid(1, 1, 1), 8.0f);
}
