// A search trial visits only its slide's box and the box the last trial
// dirtied. Every node it leaves alone must already hold what a sweep of the
// whole mesh would have written: two consecutive trials of different extents
// leave every grid exactly as the same two trials do when the second sweeps
// the whole mesh, and as a fresh project that solves the second trial alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>

#include "project/defaults.h"
#include "project/lanes.h"
#include "project/project.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/spencer_mp.h"
#include "solver/validity.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/trial_region.h"
#include "ui/port.h"

namespace tobel::test {
namespace {

// A slope 40 m across (X) and 80 m along (Y) on a 1 m mesh: the ground rises
// from 10 at Y = 20 to 30 at Y = 60. Layer 1 (friction 85: a hard layer)
// lies 6 m under the ground, except beyond X = 34, where its top is the
// ground itself, far from every slide below; layer 2 is the soil.
std::unique_ptr<Project> make_hard_slope(int method, bool hard_at_ground, bool hard = true, int rows = 41)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = int16(method);
    // The trials follow one another as in a search, the only time the
    // grids stand still between trials.
    p->search.running = -1;
    p->num_layers = 2;
    derive_counts(*p);
    p->num_rows = int16(rows);
    p->num_cols = 81;
    p->x_max = float(rows - 1);
    p->y_max = 80;
    redim_grids(*p);
    p->row_spacing = 1;
    p->col_spacing = 1;
    for (int l = 1; l <= 2; ++l) {
        p->mat_type[l] = 1;
        p->mat_unit_weight[l] = 20;
        p->mat_cohesion[l] = p->mat_cohesion_v[l] = 10;
        p->mat_phi_v[l] = 20;
    }
    // Without a hard layer layer 1 is soil like layer 2 and nothing is lifted.
    p->mat_phi[1] = hard ? 85 : 20;
    p->mat_phi[2] = 20;
    p->unit_weight_water = 9.81f;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            const double y = c - 1, x = r - 1;
            const float ground = float(y <= 20 ? 10 : y >= 60 ? 30 : 10 + (y - 20) / 2);
            p->zgrid(r, c, 2) = ground;
            p->zgrid(r, c, 1) = hard_at_ground && x >= 34 ? ground : ground - 6;
        }
    p->surface_defined = -1;
    p->surface_kind = 1;
    p->ell_x = 15;
    p->ell_aspect = 0.5f;
    // The crack where the slide first gets 1 m deep, half full of water.
    p->crack_mode = 2;
    p->crack_depth = 1;
    p->crack_water_pct = 50;
    return p;
}

// One trial as a search runs it: build, crack, check, solve.
// The steps of a trial after its surface is built: crack, forces, checks and
// the solver of the project's method.
void solve_built(Project& p)
{
    QuietPort port;
    apply_crack(p);
    scale_forces(p);
    check_surface(p);
    p.solve_interactive = 0;
    if (p.solution_method == 3 || p.solution_method == 4)
        solve_spencer_mp(p, port);
    else
        solve_bishop_janbu(p, port);
}

void run_trial(Project& p, float y, float z, float radius)
{
    p.ell_y = y;
    p.ell_z = z;
    p.ell_radius = radius;
    build_ellipsoid(p);
    solve_built(p);
    ASSERT_EQ(p.surface_out_flag, 0);
}

template <class V> bool same_bits(const V& a, const V& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(a[0])) == 0;
}

// Every grid, row vector and result, bit for bit; with_kept adds the two
// grids that keep values of earlier trials at a node in any sweep.
void expect_same_state(const Project& a, const Project& b, bool with_kept)
{
    EXPECT_TRUE(same_bits(a.zgrid.v, b.zgrid.v)) << "zgrid";
    const std::pair<const char*, Grid2<float> Project::*> grids[] = {
        {"col_weight", &Project::col_weight},
        {"col_area", &Project::col_area},
        {"col_pore", &Project::col_pore},
        {"col_phi", &Project::col_phi},
        {"col_cohesion", &Project::col_cohesion},
        {"col_cos_gamma", &Project::col_cos_gamma},
        {"col_normal", &Project::col_normal},
        {"col_fos", &Project::col_fos},
        {"surf_dip_x", &Project::surf_dip_x},
        {"surf_dip_y", &Project::surf_dip_y},
        {"col_lat_slope", &Project::col_lat_slope},
        {"col_arm", &Project::col_arm},
        {"col_lateral_load", &Project::col_lateral_load},
        {"col_eff_thrust", &Project::col_eff_thrust},
        {"col_thrust_height", &Project::col_thrust_height},
    };
    for (const auto& [name, g] : grids)
        EXPECT_TRUE(same_bits((a.*g).v, (b.*g).v)) << name;
    EXPECT_TRUE(same_bits(a.disc_code.v, b.disc_code.v)) << "disc_code";
    if (with_kept) {
        EXPECT_TRUE(same_bits(a.col_material.v, b.col_material.v)) << "col_material";
        EXPECT_TRUE(same_bits(a.col_shear_ratio.v, b.col_shear_ratio.v)) << "col_shear_ratio";
    }
    EXPECT_TRUE(same_bits(a.row_coef, b.row_coef)) << "row_coef";
    EXPECT_TRUE(same_bits(a.crack_water_force, b.crack_water_force)) << "crack_water_force";
    EXPECT_TRUE(same_bits(a.crack_water_z, b.crack_water_z)) << "crack_water_z";
    EXPECT_TRUE(same_bits(a.head_water_force, b.head_water_force)) << "head_water_force";
    EXPECT_EQ(a.factor_of_safety, b.factor_of_safety);
    EXPECT_EQ(a.lambda_coef, b.lambda_coef);
    EXPECT_EQ(a.slide_weight, b.slide_weight);
    EXPECT_EQ(a.slide_volume, b.slide_volume);
    EXPECT_EQ(a.slide_area, b.slide_area);
    EXPECT_EQ(a.active_columns, b.active_columns);
    EXPECT_EQ(a.lateral_unbalance, b.lateral_unbalance);
    EXPECT_EQ(a.crack_y, b.crack_y);
    EXPECT_EQ(a.surface_lifted, b.surface_lifted);
    EXPECT_EQ(a.no_slide, b.no_slide);
    EXPECT_EQ(a.moment_residual, b.moment_residual);
    EXPECT_EQ(a.message_count, b.message_count);
    EXPECT_EQ(result_flaw(a), result_flaw(b));
}

// The first slide lies near the toe; the second, smaller, further up the
// slope and further across, so that each reaches nodes the other does not.
constexpr float y1 = 30, z1 = 42, r1 = 34;
constexpr float y2 = 40, z2 = 44, r2 = 28;

double nodes_of(const NodeBox& b)
{
    return b.empty() ? 0.0 : double(b.r1 - b.r0 + 1) * double(b.c1 - b.c0 + 1);
}

void check_two_trials(int method, bool hard_at_ground, bool hard = true, int rows = 41)
{
    auto bounded = make_hard_slope(method, hard_at_ground, hard, rows);
    run_trial(*bounded, y1, z1, r1);
    bounded->ell_x = 20;
    run_trial(*bounded, y2, z2, r2);
    // The second trial did visit part of the mesh only.
    const NodeBox visited = bounded->work.region, visit = bounded->work.visit;
    EXPECT_LT(nodes_of(visited), double(bounded->num_rows) * bounded->num_cols);
    ASSERT_GT(bounded->factor_of_safety, 0.0f);
    if (!hard) {
        // Nothing lifted: the solve visits the nodes the ellipsoid cut and
        // those the first trial dirtied, fewer than the region holds.
        EXPECT_EQ(bounded->surface_lifted, 0);
        EXPECT_LT(nodes_of(visit), nodes_of(visited));
        EXPECT_GT(nodes_of(visit), 0.0);
    }

    // The same two trials, the second over the whole mesh.
    auto swept = make_hard_slope(method, hard_at_ground, hard, rows);
    run_trial(*swept, y1, z1, r1);
    swept->ell_x = 20;
    forget_solver_work(swept->work);
    run_trial(*swept, y2, z2, r2);
    {
        SCOPED_TRACE("against the whole sweep");
        expect_same_state(*bounded, *swept, true);
    }

    // A fresh project solving the second trial alone. The base layer of a
    // node stays where it was last active, and a side strength ratio where
    // the side thrust was not positive, in any sweep: col_material and
    // col_shear_ratio keep values of the first trial and are left out.
    auto fresh = make_hard_slope(method, hard_at_ground, hard, rows);
    fresh->ell_x = 20;
    run_trial(*fresh, y2, z2, r2);
    SCOPED_TRACE("against a fresh project");
    expect_same_state(*bounded, *fresh, false);
}

// A search's working copy holds the elevations of a snapshot and takes a row
// only when a trial comes to it: the trial gives what it gives on the
// project itself, bit for bit. Without a hard layer it takes the rows of its
// region only; a lifted plane reads the whole mesh.
std::unique_ptr<Project> copy_over_snapshot(const Project& p)
{
    auto w = std::make_unique<Project>(p);
    w->zgrid = grid_over_snapshot(std::make_shared<const Grid3>(p.zgrid));
    w->work.stamp = mesh_stamp(*w);
    return w;
}

void check_copy_over_snapshot(int method, bool hard)
{
    auto p = make_hard_slope(method, false, hard, 121);
    run_trial(*p, y1, z1, r1);
    ASSERT_TRUE(work_record_holds(*p));
    auto copy = copy_over_snapshot(*p);
    Project& w = *copy;
    ASSERT_TRUE(work_record_holds(w));

    p->ell_x = 20;
    run_trial(*p, y2, z2, r2);
    w.ell_x = 20;
    run_trial(w, y2, z2, r2);
    ASSERT_GT(w.factor_of_safety, 0.0f);
    int taken = 0;
    for (const char t : w.zgrid.taken)
        taken += t != 0 ? 1 : 0;
    if (!hard) {
        // The rows of the region of the two slides.
        const NodeBox region = w.work.region;
        EXPECT_LE(taken, region.r1 - region.r0 + 1);
        EXPECT_LT(taken, w.num_rows / 2);
    }
    // Every other row is the snapshot's, which beyond the region is what the
    // project holds.
    w.zgrid.take_all_rows();
    expect_same_state(*p, w, true);
}

TEST(bounded_trial, bishop_on_a_copy_over_a_snapshot_takes_the_rows_of_its_region)
{
    check_copy_over_snapshot(1, false);
}

TEST(bounded_trial, spencer_on_a_copy_over_a_snapshot_takes_the_rows_of_its_region)
{
    check_copy_over_snapshot(3, false);
}

TEST(bounded_trial, morgenstern_price_with_a_hard_layer_on_a_copy_over_a_snapshot)
{
    check_copy_over_snapshot(4, true);
}

TEST(bounded_trial, bishop_with_a_hard_layer_on_a_copy_over_a_snapshot)
{
    check_copy_over_snapshot(1, true);
}

// The first two trials of the sequences below, the second further across;
// the third of each is centred at X = 14.
void run_first_two(Project& p)
{
    run_trial(p, y1, z1, r1);
    p.ell_x = 20;
    run_trial(p, y2, z2, r2);
    p.ell_x = 14;
}

// Three trials, the third inside the box of the first: the nodes the second
// dirtied are stale, those only the first reached are clean again and are
// passed over, and the mesh ends as a fresh project's that solves the third.
void check_three_trials(int method, bool hard = true)
{
    auto bounded = make_hard_slope(method, false, hard);
    run_first_two(*bounded);
    run_trial(*bounded, 32, 42, 30);
    ASSERT_GT(bounded->factor_of_safety, 0.0f);
    auto fresh = make_hard_slope(method, false, hard);
    fresh->ell_x = 14;
    run_trial(*fresh, 32, 42, 30);
    expect_same_state(*bounded, *fresh, false);
}

// A mesh three times as wide: most rows lie beyond both slides, and the
// solvers pass them over, water thrusts and all, as a sweep would leave them.
TEST(bounded_trial, bishop_passes_over_the_rows_beyond_the_slide)
{
    check_two_trials(1, false, false, 121);
}

TEST(bounded_trial, spencer_passes_over_the_rows_beyond_the_slide)
{
    check_two_trials(3, false, false, 121);
}

TEST(bounded_trial, morgenstern_price_passes_over_the_rows_beyond_the_slide)
{
    check_two_trials(4, false, true, 121);
}

// Water thrust standing in a row beyond the slide (put there by hand: no
// surface of the system leaves one there) still enters the sums of a bounded
// trial, as it does those of a sweep.
void check_water_beyond_the_slide(int method)
{
    auto second = [&](Project& p, bool sweep, bool water) {
        p.ell_x = 20;
        p.ell_y = y2;
        p.ell_z = z2;
        p.ell_radius = r2;
        if (sweep)
            forget_solver_work(p.work);
        build_ellipsoid(p);
        QuietPort port;
        apply_crack(p);
        scale_forces(p);
        check_surface(p);
        // The bounded trial leaves the row alone.
        if (!sweep) {
            ASSERT_FALSE(p.work.visit.has_row(110));
        }
        if (water) {
            p.crack_water_force[110] = 500;
            p.crack_water_z[110] = 12;
        }
        if (method == 1)
            solve_bishop_janbu(p, port);
        else
            solve_spencer_mp(p, port);
    };
    std::unique_ptr<Project> runs[3];
    for (int k = 0; k < 3; ++k) {
        runs[k] = make_hard_slope(method, false, false, 121);
        run_trial(*runs[k], y1, z1, r1);
        second(*runs[k], k == 1, k != 2);
    }
    expect_same_state(*runs[0], *runs[1], true);
    // The thrust did count.
    EXPECT_NE(runs[0]->factor_of_safety, runs[2]->factor_of_safety);
    EXPECT_GT(runs[0]->factor_of_safety, 0.0f);
}

TEST(bounded_trial, bishop_counts_water_in_a_row_beyond_the_slide)
{
    check_water_beyond_the_slide(1);
}

TEST(bounded_trial, spencer_counts_water_in_a_row_beyond_the_slide)
{
    check_water_beyond_the_slide(3);
}

TEST(bounded_trial, bishop_after_two_trials_of_other_extents)
{
    check_three_trials(1);
}

TEST(bounded_trial, spencer_after_two_trials_of_other_extents)
{
    check_three_trials(3);
}

// The lateral unbalance and the negative normals are summed once after the
// iterations, from the last iteration's normal forces: the lateral unbalance
// is then the sum of N cos(gamma) tan(beta) = col_normal A col_lat_slope over
// the columns as they stand. The terms are single precision products and
// the solver rounds the sum column after column: 2e-5 of the sum of their
// sizes.
TEST(bounded_trial, the_lateral_unbalance_is_that_of_the_last_normal_forces)
{
    auto p = make_hard_slope(1, false);
    // The ground and the layer tilted across, 1 in 5, so that the two sides
    // of the slide do not balance.
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c)
            for (int l = 1; l <= 2; ++l)
                p->zgrid(r, c, l) += 0.2f * float(r - 1);
    p->ell_x = 12;
    run_trial(*p, y2, z2 + 3, r2);
    ASSERT_GT(p->factor_of_safety, 0.0f);
    double ubf = 0, size = 0, neg = 0;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            const double n = double(p->col_normal(r, c)) * double(p->col_area(r, c));
            ubf += n * double(p->col_lat_slope(r, c));
            size += std::abs(n * double(p->col_lat_slope(r, c)));
            if (n < 0)
                neg -= n;
        }
    ASSERT_GT(std::abs(ubf), 0.01 * size);
    EXPECT_NEAR(p->lateral_unbalance, ubf, 2e-5 * size);
    EXPECT_NEAR(p->neg_normal_sum, neg, 2e-5 * size);
}

// The dense set-up of an ellipsoid trial's rows stores what the evaluation
// node by node stores: the same three trials, with a pore pressure ratio in
// the soil and a discontinuity code at a few nodes of the slide, leave every
// grid and result bit for bit alike either way.
void check_dense_setup(int method, bool hard = true)
{
    auto run = [method, hard](bool per_node) {
        auto p = make_hard_slope(method, false, hard);
        p->mat_piezo[2] = 0.25f;
        // Discontinuity 1: a weaker plain material for the nodes coded 1.
        p->mat_type[3] = 1;
        p->mat_unit_weight[3] = 20;
        p->mat_cohesion[3] = 2;
        p->mat_phi[3] = 15;
        p->work.per_node_setup = per_node;
        run_first_two(*p);
        p->ell_y = 32;
        p->ell_z = 42;
        p->ell_radius = 30;
        build_ellipsoid(*p);
        for (int c = 30; c <= 34; ++c)
            p->disc_code(14, c) = 1;
        solve_built(*p);
        return p;
    };
    auto dense = run(false);
    auto per_node = run(true);
    ASSERT_GT(dense->factor_of_safety, 0.0f);
    expect_same_state(*dense, *per_node, true);
    EXPECT_EQ(dense->neg_normal_sum, per_node->neg_normal_sum);
    EXPECT_EQ(dense->unbalance_z, per_node->unbalance_z);
}

TEST(bounded_trial, bishop_dense_setup_equals_the_setup_node_by_node)
{
    check_dense_setup(1);
}

TEST(bounded_trial, janbu_dense_setup_equals_the_setup_node_by_node)
{
    check_dense_setup(2);
}

TEST(bounded_trial, spencer_dense_setup_equals_the_setup_node_by_node)
{
    check_dense_setup(3);
}

// Three trials of a search, run with a switch of the solver's work (one of
// those kept for comparisons) off and on, leave the same state bit for bit.
// Returns the project of the run with the switch off.
template <class Switch> std::unique_ptr<Project> check_switch(int method, bool hard, Switch set)
{
    auto run = [&](bool on) {
        auto p = make_hard_slope(method, false, hard);
        p->mat_piezo[2] = 0.25f;
        set(p->work, on);
        run_first_two(*p);
        run_trial(*p, 32, 42, 30);
        return p;
    };
    auto off = run(false);
    auto on = run(true);
    EXPECT_GT(off->factor_of_safety, 0.0f);
    expect_same_state(*off, *on, true);
    EXPECT_EQ(off->iteration_count, on->iteration_count);
    EXPECT_EQ(off->neg_normal_sum, on->neg_normal_sum);
    EXPECT_EQ(off->moment_shear, on->moment_shear);
    EXPECT_EQ(off->moment_other, on->moment_other);
    EXPECT_EQ(off->message_count, on->message_count);
    for (int i = 1; i <= std::min(off->message_count, on->message_count); ++i)
        EXPECT_EQ(off->message_text[std::size_t(i)], on->message_text[std::size_t(i)]);
    return off;
}

// Spencer's and Morgenstern-Price's iterations work the columns' terms out
// several at a time; one at a time they are the same bit for bit.
void check_column_terms(int method, bool hard)
{
    auto lanes = check_switch(method, hard, [](SolverWork& w, bool on) { w.per_column_terms = on; });
    // Enough iterations to have been worked out in lanes at all.
    EXPECT_GT(lanes->iteration_count, 2);
}

TEST(bounded_trial, spencer_terms_in_pairs_equal_the_terms_one_at_a_time)
{
    check_column_terms(3, false);
    check_column_terms(3, true);
}

TEST(bounded_trial, morgenstern_price_terms_in_pairs_equal_the_terms_one_at_a_time)
{
    check_column_terms(4, false);
    check_column_terms(4, true);
}

// The centres of these trials lie on mesh lines: a row takes its dips from
// the row mirrored about the centre's X where that row worked them out, and
// leaves the same state bit for bit as when every row works them out, hard
// layer, crack and all.
TEST(bounded_trial, a_row_mirrored_about_the_centre_leaves_what_it_would_work_out)
{
    for (int method = 1; method <= 4; ++method) {
        SCOPED_TRACE(method);
        for (const bool hard : {false, true}) {
            auto mirrored = check_switch(method, hard, [](SolverWork& w, bool on) { w.no_mirror = on; });
            EXPECT_GT(mirrored->work.mirrored_nodes, 100u);
        }
    }
}

// The row loops of the ellipsoid, of the dense set-up and of Spencer's and
// Morgenstern-Price's terms, worked four lanes at a time, leave the same state
// bit for bit as two at a time.
void check_lane_widths(int method, bool hard)
{
    check_switch(method, hard, [](SolverWork& w, bool on) { w.two_lanes = on; });
}

TEST(bounded_trial, four_lanes_at_a_time_equal_two_at_a_time)
{
    if (!four_lanes_available())
        GTEST_SKIP() << "no four-lane instructions on this processor";
    for (int method = 1; method <= 4; ++method) {
        SCOPED_TRACE(method);
        check_lane_widths(method, false);
        check_lane_widths(method, true);
    }
}

TEST(bounded_trial, morgenstern_price_with_a_hard_layer_at_the_ground_and_a_crack_by_depth)
{
    check_two_trials(4, true);
}

TEST(bounded_trial, spencer_with_a_hard_layer_at_the_ground_and_a_crack_by_depth)
{
    check_two_trials(3, true);
}

TEST(bounded_trial, bishop_with_a_hard_layer_at_the_ground_and_a_crack_by_depth)
{
    check_two_trials(1, true);
}

TEST(bounded_trial, bishop_without_a_hard_layer_at_the_ground)
{
    check_two_trials(1, false);
}

TEST(bounded_trial, morgenstern_price_without_a_hard_layer_at_the_ground)
{
    check_two_trials(4, false);
}

// Without a hard layer no plane is lifted, and a trial's solve visits only
// the nodes its ellipsoid cut and those the last trial dirtied: every grid
// ends as after a sweep of the whole mesh, and as a fresh project leaves it.
TEST(bounded_trial, bishop_without_a_hard_layer_visits_the_cut_and_the_stale_nodes_only)
{
    check_two_trials(1, false, false);
    check_three_trials(1, false);
}

TEST(bounded_trial, janbu_without_a_hard_layer_visits_the_cut_and_the_stale_nodes_only)
{
    check_two_trials(2, false, false);
}

TEST(bounded_trial, spencer_without_a_hard_layer_visits_the_cut_and_the_stale_nodes_only)
{
    check_two_trials(3, false, false);
    check_three_trials(3, false);
}

TEST(bounded_trial, morgenstern_price_without_a_hard_layer_visits_the_cut_and_the_stale_nodes_only)
{
    check_two_trials(4, false, false);
    check_three_trials(4, false);
}

// A set-up stopped at a failing column (a discontinuity code with no entry in
// the material table) leaves the mesh as the same stop in a sweep of the
// whole mesh: beyond the stop every node not visited keeps what the first
// trial left, and the interslice function stands where the sweep wrote it.
void check_stop_in_setup(int method)
{
    auto run = [method](bool sweep) {
        auto p = make_hard_slope(method, false, false);
        run_trial(*p, y1, z1, r1);
        if (sweep)
            forget_solver_work(p->work);
        p->ell_x = 20;
        p->ell_y = y2;
        p->ell_z = z2;
        p->ell_radius = r2;
        build_ellipsoid(*p);
        p->disc_code(20, 40) = 99; // material 2 + 99, beyond the table
        solve_built(*p);
        return p;
    };
    auto bounded = run(false);
    auto swept = run(true);
    EXPECT_EQ(bounded->factor_of_safety, 0.0f);
    ASSERT_GE(bounded->message_count, 1);
    EXPECT_EQ(bounded->message_text[std::size_t(bounded->message_count)],
              "ARITHMETIC FAILURE IN COLUMN  40 ROW  20 MAT'L  101"); // numbers as STR$ prints them
    expect_same_state(*bounded, *swept, true);
}

// The same stop on a search's working copy: the interslice function written
// beyond the region, and the tests of the result over the whole mesh once
// the record is lost, find their rows taken.
void check_stop_in_setup_on_a_copy(int method)
{
    auto p = make_hard_slope(method, false, false);
    run_trial(*p, y1, z1, r1);
    auto w = copy_over_snapshot(*p);
    for (Project* q : {p.get(), w.get()}) {
        q->ell_x = 20;
        q->ell_y = y2;
        q->ell_z = z2;
        q->ell_radius = r2;
        build_ellipsoid(*q);
        q->disc_code(20, 40) = 99;
        solve_built(*q);
        const NodeBox rr = result_region(*q);
        q->zgrid.take_rows(rr.r0, rr.r1);
    }
    EXPECT_EQ(w->factor_of_safety, 0.0f);
    EXPECT_EQ(result_flaw(*w), result_flaw(*p));
    w->zgrid.take_all_rows();
    expect_same_state(*p, *w, true);
}

TEST(bounded_trial, spencer_stopped_in_the_setup_on_a_copy_over_a_snapshot)
{
    check_stop_in_setup_on_a_copy(3);
}

TEST(bounded_trial, morgenstern_price_stopped_in_the_setup_on_a_copy_over_a_snapshot)
{
    check_stop_in_setup_on_a_copy(4);
}

TEST(bounded_trial, bishop_stopped_in_the_setup_leaves_the_mesh_as_a_sweep_does)
{
    check_stop_in_setup(1);
}

TEST(bounded_trial, spencer_stopped_in_the_setup_leaves_the_mesh_as_a_sweep_does)
{
    check_stop_in_setup(3);
}

TEST(bounded_trial, morgenstern_price_stopped_in_the_setup_leaves_the_mesh_as_a_sweep_does)
{
    check_stop_in_setup(4);
}

// The inactive nodes between the active ones of a dense row are cleared a
// span at a time: the same grids, bit for bit, as the evaluation node by node.
TEST(bounded_trial, bishop_dense_spans_equal_the_setup_node_by_node_without_a_lift)
{
    check_dense_setup(1, false);
}

TEST(bounded_trial, spencer_dense_spans_equal_the_setup_node_by_node_without_a_lift)
{
    check_dense_setup(3, false);
}

TEST(bounded_trial, morgenstern_price_dense_spans_equal_the_setup_node_by_node_without_a_lift)
{
    check_dense_setup(4, false);
}

// A hard layer at the ground lifts a node beyond every slide, so every trial
// is lifted and the dips beyond the slide are the ground's differences: on
// the 2:1 face atan(0.5) along Y, 0 across.
TEST(bounded_trial, dips_beyond_a_lifted_slide_are_the_ground_slopes)
{
    auto p = make_hard_slope(1, true);
    run_trial(*p, y1, z1, r1);
    run_trial(*p, y2, z2, r2);
    EXPECT_EQ(p->surface_lifted, 1);
    // Row 41 (X = 40) lies beyond both slides; column 41 (Y = 40) on the face.
    EXPECT_FLOAT_EQ(p->surf_dip_y(41, 41), float(std::atan(0.5)));
    EXPECT_EQ(p->surf_dip_x(41, 41), 0.0f);
    EXPECT_EQ(p->zgrid(41, 41, p->sliding_index), p->zgrid(41, 41, 2));
}

// After the record is dropped (a surface command, a changed plane) the next
// trial sweeps the whole mesh.
TEST(bounded_trial, a_dropped_record_makes_the_next_trial_sweep_the_whole_mesh)
{
    auto p = make_hard_slope(1, false);
    run_trial(*p, y1, z1, r1);
    reset_forces(*p);
    run_trial(*p, y2, z2, r2);
    EXPECT_EQ(p->work.region.r0, 1);
    EXPECT_EQ(p->work.region.c0, 1);
    EXPECT_EQ(p->work.region.r1, p->num_rows);
    EXPECT_EQ(p->work.region.c1, p->num_cols);
}

} // namespace
} // namespace tobel::test
