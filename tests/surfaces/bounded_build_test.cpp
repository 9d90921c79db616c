// The ellipsoid and the crack of a search trial visit the slide's box and the
// box the last trial dirtied; beyond them every node already holds what a
// sweep of the whole mesh writes (the plane on the ground, no dips, code 0).
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "solver/checks.h"
#include "surface_fixture.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/trial_region.h"

namespace tobel::test {
namespace {

// Flat ground at 20 on a 31 by 61 mesh over X 0..30, Y 0..60.
std::unique_ptr<Project> make_flat()
{
    MeshSpec m;
    m.rows = 31;
    m.cols = 61;
    m.x_max = 30;
    m.y_max = 60;
    auto p = make_project(m);
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c)
            p->zgrid(r, c, 1) = 20;
    p->surface_kind = 1;
    p->solution_method = 1;
    p->ell_aspect = 1;
    // As in a search, the only time the grids stand still between trials.
    p->search.running = -1;
    return p;
}

// The ellipsoid and crack of a trial, then what a finished solve records:
// beyond the slide's box the mesh is as a trial leaves it.
void build_and_record(Project& p, float x, float y, float z, float radius)
{
    p.ell_x = x;
    p.ell_y = y;
    p.ell_z = z;
    p.ell_radius = radius;
    build_ellipsoid(p);
    apply_crack(p);
    p.work.known = true;
    p.work.stamp = mesh_stamp(p);
    p.work.dirty = p.work.box;
    p.work.armed = false;
}

void expect_same_surface(const Project& a, const Project& b)
{
    const auto same = [](const auto& u, const auto& v) {
        return u.size() == v.size() && std::memcmp(u.data(), v.data(), u.size() * sizeof(u[0])) == 0;
    };
    EXPECT_TRUE(same(a.zgrid.v, b.zgrid.v));
    EXPECT_TRUE(same(a.surf_dip_x.v, b.surf_dip_x.v));
    EXPECT_TRUE(same(a.surf_dip_y.v, b.surf_dip_y.v));
    EXPECT_TRUE(same(a.disc_code.v, b.disc_code.v));
    EXPECT_EQ(a.cur_x, b.cur_x);
    EXPECT_EQ(a.cur_y, b.cur_y);
}

// The box is the rim of the ellipsoid (|x - x0| < a R, |y - y0| < R), not
// its cut with the ground, with one node more each way.
TEST(bounded_build, the_box_is_the_rim_of_the_ellipsoid_with_a_border)
{
    auto p = make_flat();
    build_and_record(*p, 10, 20, 26, 10);
    // Within the rim: |x - 10| < 10 and |y - 20| < 10, rows 2..20 and
    // columns 12..30 (1 m spacing, node 1 at 0), then one node more.
    EXPECT_EQ(p->work.box.r0, 1);
    EXPECT_EQ(p->work.box.r1, 21);
    EXPECT_EQ(p->work.box.c0, 11);
    EXPECT_EQ(p->work.box.c1, 31);
}

TEST(bounded_build, a_second_ellipsoid_elsewhere_leaves_the_mesh_as_a_fresh_build)
{
    auto bounded = make_flat();
    // Bottoms at 16 and 17, under the ground at 20.
    build_and_record(*bounded, 10, 20, 26, 10);
    build_and_record(*bounded, 20, 40, 25, 8);
    // Visited: the union of both boxes, not the whole mesh.
    EXPECT_EQ(bounded->work.region.c0, 11);
    EXPECT_EQ(bounded->work.region.c1, 49);
    EXPECT_EQ(bounded->work.region.r1, 29);

    auto fresh = make_flat();
    build_and_record(*fresh, 20, 40, 25, 8);
    expect_same_surface(*bounded, *fresh);
    // A node of the first slide is back on the ground, without dips.
    EXPECT_EQ(bounded->zgrid(11, 21, bounded->sliding_index), 20.0f);
    EXPECT_EQ(bounded->surf_dip_y(11, 22), 0.0f);
}

TEST(bounded_build, the_crack_by_depth_is_placed_and_cut_as_over_the_whole_mesh)
{
    auto make = [] {
        auto p = make_flat();
        p->crack_mode = 2;
        p->crack_depth = 2;
        p->crack_water_pct = 100;
        p->unit_weight_water = 10;
        return p;
    };
    auto bounded = make();
    build_and_record(*bounded, 15, 20, 26, 10);
    build_and_record(*bounded, 15, 40, 25, 8);
    auto fresh = make();
    build_and_record(*fresh, 15, 40, 25, 8);
    expect_same_surface(*bounded, *fresh);
    EXPECT_TRUE(std::memcmp(bounded->crack_water_force.data(), fresh->crack_water_force.data(),
                            fresh->crack_water_force.size() * sizeof(float)) == 0);
    // The middle row is row 15 (X = 14, dx = 1): the sphere's depth there is
    // 20 - 25 + sqrt(63 - dy^2), over 2 m for dy^2 < 14. From the head the
    // first such node is Y = 43, column 44, whose head edge is 0 + 44 * 1.
    EXPECT_EQ(bounded->crack_y, 44.0f);
    // Cut from there on: the plane is on the ground at Y = 43.
    EXPECT_EQ(bounded->zgrid(15, 44, bounded->sliding_index), 20.0f);
}

// A crack placed with a negative depth would lie at the head of the mesh,
// beyond any slide: such a trial sweeps the whole mesh.
TEST(bounded_build, a_crack_of_negative_depth_sweeps_the_whole_mesh)
{
    auto p = make_flat();
    p->crack_mode = 2;
    p->crack_depth = -1;
    build_and_record(*p, 10, 20, 26, 10);
    build_and_record(*p, 20, 40, 25, 8);
    EXPECT_EQ(p->work.region.c1, p->num_cols);
    EXPECT_EQ(p->work.region.r1, p->num_rows);
}

TEST(bounded_build, outside_a_search_every_build_goes_over_the_whole_mesh)
{
    // A form may have changed the ground in place since the last trial: with
    // no search running the builder trusts no record.
    auto p = make_flat();
    build_and_record(*p, 15, 30, 25, 10);
    p->search.running = 0;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c)
            p->zgrid(r, c, 1) = 18;
    p->ell_x = 15;
    p->ell_y = 30;
    p->ell_z = 25;
    p->ell_radius = 10;
    build_ellipsoid(*p);
    // Far from the slide the sliding plane follows the new ground.
    EXPECT_EQ(p->zgrid(1, 1, p->sliding_index), 18.0f);
    EXPECT_EQ(p->zgrid(31, 61, p->sliding_index), 18.0f);
}

} // namespace
} // namespace tobel::test
