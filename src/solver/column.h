// What every solver does at one mesh node: the active test, the base
// geometry, the weight through the layers, the working material, the pore
// pressure, the strength model and the removal of a submerged head.
//
// One routine serves both solver families. The switches say which iteration
// it is and on which side of the few deliberate differences between Bishop /
// Janbu and Spencer / Morgenstern-Price the call stands.
#pragma once

#include <cmath>
#include <cstddef>
#include <string>

#include "project/numtext.h"
#include "project/project.h"
#include "report/messages.h"
#include "ui/port.h"

namespace tobel {

struct ColumnSwitches {
    // First iteration of a pass (Bishop, Janbu) or of a lambda round (Spencer,
    // Morgenstern-Price): base geometry, area, weight and pore pressure are
    // worked out and stored; later iterations use what is stored.
    bool setup = true;
    // The zero-strength head test and the continuity messages. Bishop and
    // Janbu run them with the set-up; Spencer only in the very first iteration.
    bool head_test = true;
    // Bishop and Janbu side: col_lat_slope is stored, a non-positive y of the
    // power law gives tan phi = 0, the submerged-head warning is raised and a
    // removed head is taken off the row's count again.
    bool bishop_janbu = true;
    // Factor on the first normal stress estimate of a non-linear base: the
    // lateral factor L of the previously solved column for Bishop and Janbu
    // (0 before any column), 1 for Spencer.
    double sigma_factor = 1;
    // Set in the set-up of an interactive solution whose columns are drawn
    // as they are solved.
    DrawHooks* hooks = nullptr;
};

// Row bookkeeping; a fresh one for each row of each iteration.
struct ColumnRow {
    int continuity = 0; // 1 while inside a part of the mass that has strength
    int passages = 0;   // active-to-inactive passages so far
    int active = 0;     // active columns of the row
};

// Scratch of the node, for the solver's own equations. The trigonometric
// values are always set for an active node; the rest in a set-up iteration.
struct ColumnScratch {
    double sin_a = 0, cos_a = 0, tan_b = 0; // of surf_dip_y, surf_dip_y, surf_dip_x
    double tan_a = 0, sin_b = 0, cos_b = 0; // set-up only
    double zs = 0, zg = 0;                  // sliding surface and ground
    double weight = 0;                      // W as stored (set-up only)
    int layer = 0;                          // base layer, as col_material
    int material = 0;                       // working material
    double head_h = 0;                      // thickness of a removed head
};

enum class ColumnOutcome {
    inactive,     // not part of the mass; its results are zero
    active,       // evaluated; the solver's equations follow
    head_removed, // a zero-strength head was removed; the node is now inactive
    failed,       // an arithmetic failure (see arithmetic_failure_text)
};

// Evaluates node (r, c). Adds to active_columns, and in a set-up iteration to
// slide_weight, slide_area and slide_volume; may add messages. On `failed`
// scratch.material names the material.
ColumnOutcome evaluate_column(Project& p, int r, int c, const ColumnSwitches& sw, ColumnRow& row,
                              ColumnScratch& scratch);

// The dense set-up of the active nodes of row r, columns c0..c1, of an
// ellipsoid trial: what evaluate_column would store at each in a set-up
// iteration, in d, with nothing stored in the project. False when a node
// needs the per-node evaluation: a base that is not a plain Coulomb material
// with some strength (a submerged head, a strength model), or a failure.
bool dense_row_setup(const Project& p, int r, int c0, int c1, DenseRow& d);

// Nodes c0..c1 of row r, none of them active, as a set-up iteration of a
// bounded trial leaves them: the row's bookkeeping, no weight, no interslice
// function (Spencer, Morgenstern-Price), and the results of an inactive node
// where they may be stale. The nodes' elevations are not read: the caller
// knows them inactive.
void clear_inactive_span(Project& p, int r, int c0, int c1, const NodeBox& stale, ColumnRow& row,
                         bool bishop_janbu);

// A node of a bounded trial that is not stale and not cut by the surface
// (ground and sliding surface within 0.001, or not comparable): cleared as an
// inactive span of one, without an evaluation. False when it must be evaluated.
bool skip_clean_node(Project& p, int r, int c, const NodeBox& stale, ColumnRow& row, bool bishop_janbu);

// Stores what the dense set-up worked out for active node k of row r, as
// evaluate_column stores it in a set-up iteration at a plain base, and leaves
// the node's scratch for the equations. Bishop and Janbu keep the lateral
// slope; Spencer and Morgenstern-Price skip the continuity test when they
// solve without it. Inline: the solvers call it at every active node.
inline void commit_dense_node(Project& p, const DenseRow& d, std::size_t k, int r, ColumnRow& row,
                              ColumnScratch& scratch, double plan_area, bool store_lat_slope,
                              bool continuity_test)
{
    const std::size_t at = d.at[k];
    ++p.active_columns;
    ++row.active;
    scratch.sin_a = d.sin_a[k];
    scratch.cos_a = d.cos_a[k];
    scratch.tan_b = d.tan_b[k];
    scratch.zs = d.zs[k];
    scratch.zg = d.zg[k];
    scratch.layer = d.layer[k];
    scratch.material = d.material[k];
    p.col_cos_gamma.v[at] = d.cos_gamma[k];
    if (store_lat_slope)
        p.col_lat_slope.v[at] = d.lat_slope[k];
    p.col_area.v[at] = d.area[k];
    p.col_material.v[at] = d.layer[k];
    p.col_pore.v[at] = d.pore[k];
    p.col_weight.v[at] = d.weight[k];
    scratch.weight = d.weight[k];
    p.slide_weight = float(double(p.slide_weight) + scratch.weight);
    p.slide_area = float(double(p.slide_area) + double(d.area[k]));
    p.slide_volume = float(double(p.slide_volume) + (scratch.zg - scratch.zs) * plan_area);
    p.col_phi.v[at] = d.phi[k];
    p.col_cohesion.v[at] = d.coh[k];
    if (continuity_test) {
        if (row.continuity == 0 && row.passages > 0)
            add_message(p, "SLIDING MASS IS DISCONTINUOUS IN ROW " + str(r));
        row.continuity = 1;
    }
}

// The strength alone (col_phi, col_cohesion) of an active node whose set-up
// is stored, for material m. `sigma` is the normal stress a non-linear base is
// linearised at. False on an arithmetic failure (non-finite strength, a
// uniaxial strength of 0).
bool column_strength(Project& p, int r, int c, int m, double sigma, bool guard_power);

// The material used at a node whose base lies in layer l: the discontinuity
// material there, unless the layer has no strength at all.
int working_material(const Project& p, int l, int r, int c);

// Whether the water thrusts of row r may add anything to the sums of a
// solution: a zero thrust at a finite height adds an exact zero, so a row
// with no column and no such thrust can be passed over.
inline bool row_water_counts(const Project& p, int r)
{
    const std::size_t ri = std::size_t(r);
    return p.head_water_force[ri] != 0 || p.crack_water_force[ri] != 0 ||
           !std::isfinite(p.head_water_z[ri]) || !std::isfinite(p.crack_water_z[ri]) ||
           !std::isfinite(p.centre_z);
}

// Message of a solution stopped by a floating-point failure at a column.
std::string arithmetic_failure_text(int c, int r, int m);

// Where clear_non_finite_results found a number that is not finite: the
// first column in solving order, or column 0 when only a total was.
struct NonFiniteResult {
    bool found = false;
    int r = 0, c = 0, m = 0;
};

// Sets every result of the last solution that is not a finite number (the
// column arrays, the row thrusts and the totals) to 0, so that no report,
// drawing or file ever shows one, and says where the first one was.
NonFiniteResult clear_non_finite_results(Project& p);

// Runs a solver so that a number that is not finite never stands in a result:
// afterwards such numbers are cleared, and the solution counts as failed
// (F = 0, J = 0) at the first column that had one, with its message.
void solve_with_finite_results(Project& p, Port& port, void (*solver)(Project&, Port&));

} // namespace tobel
