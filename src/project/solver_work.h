// Scratch of the surface builders and the solvers, kept with the project
// from one search trial to the next so that a trial costs what its slide
// costs, not what the mesh costs. Never written to a file, never compared;
// a copy of the project carries a copy that describes the copy's own grids.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tobel {

// Mesh nodes of rows r0..r1 and columns c0..c1; empty when r0 > r1 or c0 > c1.
struct NodeBox {
    int r0 = 1, r1 = 0, c0 = 1, c1 = 0;

    bool empty() const { return r0 > r1 || c0 > c1; }
    bool has_row(int r) const { return r >= r0 && r <= r1; }
    bool has(int r, int c) const { return has_row(r) && c >= c0 && c <= c1; }
};

// The smallest box holding both.
inline NodeBox box_hull(const NodeBox& a, const NodeBox& b)
{
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    return {std::min(a.r0, b.r0), std::max(a.r1, b.r1), std::min(a.c0, b.c0), std::max(a.c1, b.c1)};
}

// The box grown by one node each way, within 1..rows by 1..cols.
inline NodeBox box_grown(const NodeBox& a, int rows, int cols)
{
    if (a.empty())
        return a;
    return {std::max(a.r0 - 1, 1), std::min(a.r1 + 1, rows), std::max(a.c0 - 1, 1), std::min(a.c1 + 1, cols)};
}

inline NodeBox whole_mesh(int rows, int cols)
{
    return {1, rows, 1, cols};
}

// What identifies the mesh a record describes. The address of the elevations
// is compared, never followed: a copied project or re-dimensioned grids have
// other storage and so no record.
struct MeshStamp {
    int rows = 0, cols = 0, planes = 0, layers = 0, sliding = 0, method = 0, kind = 0;
    float row_spacing = 0, col_spacing = 0, x_min = 0, y_min = 0;
    std::uintptr_t storage = 0;

    bool operator==(const MeshStamp&) const = default;
};

// An active column of a Bishop or Janbu pass: what the iterations read,
// worked out once in the double values the equations would compute each time.
// What every iteration reads comes first, so that it shares as few cache
// lines as can be.
struct BishopColumn {
    double cos_gamma = 0, g = 0;       // as stored, single; sin(alpha) T / cos(gamma)
    double wl = 0, d_cu = 0;           // W L and U sin(alpha) T - C sin(alpha)
    double u = 0, t = 0, coh = 0;      // U = u A, T = tan(phi), C = c A
    double inv_area = 0;               // 1 / A
    double q_arm = 0;                  // arm of the shear force
    double np_arm = 0, wl_arm_kwe = 0; // cos(gamma) / cos(alpha) P; W L col_arm + k W E
    std::size_t at = 0;                // flat index into the column grids
    bool nonlinear = false, warn = false, positive = false;
    // Read once a pass has converged, for its lateral sums.
    double lat_slope = 0, h_arm = 0; // as stored, single; H = centre_z - z_s
    int r = 0, c = 0, m = 0;
    // Read by Janbu's equations and by a non-linear base's strength only.
    float area = 0;
    double sin_a = 0, cos_a = 0, ns_arm = 0, kw = 0; // ns_arm = cos(gamma) / cos(alpha) sin(alpha)
};

// An active column of a Spencer or Morgenstern-Price round, with what stays
// fixed over the round's F iterations (and over the rounds that follow one
// whose sliding plane did not change).
struct SpencerColumn {
    // What every F iteration reads comes first.
    double t = 0, ut_c = 0; // T = tan(phi); U T - C
    double cos_g = 0, sin_a = 0, cos_a = 0, tan_a = 0;
    double f = 0, w = 0;
    bool nonlinear = false;
    bool prev_active = false; // node c - 1 is active in this round
    int r = 0, c = 0, m = 0;
    std::size_t at = 0;       // flat index into the column grids
    float phi0 = 0, coh0 = 0; // strength of the set-up, for a non-linear base
    double area = 0, pore = 0, tan_b = 0;
    double zs = 0, zg = 0;
    double u = 0, coh = 0; // U = u A, C = c A
    double side_water = 0; // force of the water pressure on the column's side
};

// What an F iteration of a Spencer or Morgenstern-Price round reads of each
// column, one array per quantity in the order of `spencer`, so that the
// columns' terms are worked out several at a time; and those terms.
struct SpencerLanes {
    std::vector<double> t, cos_g, sin_a, cos_a, tan_a, f, w, ut_c; // as in SpencerColumn
    std::vector<double> ma, a1, a2, a3;                            // the terms of the iteration
    bool small_ma = false; // some column's m_alpha is below 0.1 in size (lane_terms)
    // The last pass of a round reads these as well: what it works out of a
    // column before the thrust that comes along the row is known.
    std::vector<double> u, coh, area; // as in SpencerColumn
    std::vector<double> v;            // the coefficient of the column's row
    std::vector<double> na, de, n, n_vert, normal, shear;
};

struct SpencerRow {
    std::size_t begin = 0, end = 0;
    double weight = 0; // sum of W over the row's active columns
};

// Sine, cosine and tangent of a node's stored dips (surf_dip_y is alpha,
// surf_dip_x is beta), as the surface builder worked them out from the slopes
// it rounded. An entry is always a matching pair: the functions of exactly the
// single precision angles it names, so it stands for any node whose stored
// dips are those angles, whoever wrote them.
struct BaseTrig {
    float dip_x = 0, dip_y = 0;
    double sin_a = 0, cos_a = 1, tan_a = 0;
    double sin_b = 0, cos_b = 1, tan_b = 0;
};

// The active nodes of a mesh row in the dense set-up of an ellipsoid trial,
// one array per quantity, in the order of the nodes: what the per-node
// evaluation would store at each, worked out before anything is stored.
// The arrays only grow; the first n entries are the row's.
struct DenseRow {
    std::size_t n = 0;
    std::vector<int> col, layer, material;
    std::vector<std::size_t> at; // flat index into the column grids
    std::vector<double> zs, zg, sin_a, cos_a, tan_b;
    std::vector<double> tan_a, sin_b, cos_b; // the base's other functions, for cos(gamma) and the area
    std::vector<float> cos_gamma, lat_slope, area, pore, weight, phi, coh;
};

struct SolverWork {
    // 1. What the last trial left. With `known` and a matching stamp every
    // node outside `dirty` holds what a trial leaves beside its slide: the
    // sliding plane on the ground, disc_code 0, the dips 0 (or, after a
    // lifted surface, the differences of the ground: outside_dips = 1) and
    // the solver's results of an inactive node.
    bool known = false;
    MeshStamp stamp;
    NodeBox dirty;
    int outside_dips = 0;
    long lift_nodes = 0; // nodes where a hard layer's top reaches the ground

    // 2. The trial being built: set by the ellipsoid, read by the crack,
    // the checks and the solver, which ends it. `box` is the slide with a
    // one-node border, `region` the nodes the trial visits (the box and what
    // the last trial dirtied); outside `region` nothing is rewritten.
    bool armed = false;
    NodeBox box, region;
    // The nodes of `region` that may hold anything but what a trial leaves
    // beside its slide (the box the last trial dirtied, or all of `region`);
    // the others need no clearing.
    NodeBox stale;
    // The nodes the ellipsoid left under the ground: beyond them, and
    // unless the plane was lifted, a finished solve leaves nothing to clear.
    NodeBox cut;
    // The nodes of `region` a solve visits: the cut and the stale nodes.
    // Every other node of the region is inactive and holds what a trial
    // leaves beside its slide already; a lifted plane makes it all of `region`.
    NodeBox visit;
    bool swept = false; // the solver's set-up went over the whole region

    // 3. The base trigonometry of the last ellipsoid's slide, node (r, c) of
    // trig_box at (r - r0) * (c1 - c0 + 1) + (c - c0).
    NodeBox trig_box;
    std::vector<BaseTrig> trig;
    // Which entries of `trig` the last ellipsoid worked out itself (1), and
    // so may lend to the row mirrored about its centre; and how many nodes
    // took their entries from such a row.
    std::vector<std::uint8_t> trig_lent;
    std::size_t mirrored_nodes = 0;
    // The ellipsoid's scratch: Y of the region's columns less the centre's.
    std::vector<double> column_offsets;

    // 4. Buffers of the solvers, kept so that a trial allocates nothing.
    std::vector<BishopColumn> bishop;
    std::vector<double> bishop_n, bishop_n_done; // normal forces of two iterations
    std::vector<std::size_t> row_end;
    std::vector<SpencerColumn> spencer;
    std::vector<SpencerRow> spencer_rows;
    SpencerLanes spencer_lanes;
    DenseRow dense;
    // Every set-up node by node, as beyond the ellipsoid, and every Spencer
    // or Morgenstern-Price column's terms one at a time: for comparisons.
    bool per_node_setup = false;
    bool per_column_terms = false;
    // The row loops worked two lanes at a time even where the processor has
    // four: for comparisons.
    bool two_lanes = false;
    // Every row's dips worked out, even where the row mirrored about the
    // centre's X holds them already: for comparisons.
    bool no_mirror = false;
};

// Drops the record: the next trial visits the whole mesh. For every change of
// the grids made outside the trial sequence.
inline void forget_solver_work(SolverWork& w)
{
    w.known = false;
    w.armed = false;
}

} // namespace tobel
