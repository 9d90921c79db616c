#include "solver/bishop_janbu.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/messages.h"
#include "solver/column.h"
#include "solver/equilibrium_residuals.h"
#include "solver/external_forces.h"
#include "solver/lateral_balance.h"
#include "solver/trial_end.h"
#include "surfaces/trial_region.h"

namespace tobel {

namespace {

// An active column of the pass with everything that stays fixed over the
// pass's iterations (solver_work.h).
using ActiveColumn = BishopColumn;

struct IterationSums {
    double r = 0, dm = 0, sj = 0, nj = 0;
};

// The sums that only the normal forces of a pass's last iteration feed.
struct LastSums {
    double lat_moment = 0, wl_positive = 0;
    float ubf = 0, neg = 0, thrust_positive = 0;
};

struct Failure {
    bool failed = false;
    int c = 0, r = 0, m = 0;
};

} // namespace

[[gnu::always_inline]] static inline void strength_terms(const Project& p, ActiveColumn& e, TanCache& tc)
{
    const double area = e.area;
    e.u = double(p.col_pore.v[e.at]) * area;
    e.coh = double(p.col_cohesion.v[e.at]) * area;
    e.t = tc.of(p.col_phi.v[e.at]);
    e.g = e.sin_a * e.t / e.cos_gamma;
    e.d_cu = e.u * e.sin_a * e.t - e.coh * e.sin_a;
}

// The local factor leaves the pore force out and divides the earthquake term
// by cos(alpha), as the method's column check always has.
static void local_fos(Project& p, const ActiveColumn& e, double k)
{
    const double w = p.col_weight.v[e.at];
    const double d = w * (e.sin_a + k / e.cos_a);
    const double rl = w * e.cos_a * e.t + e.coh;
    p.col_fos.v[e.at] = d == 0 ? 100.0f : float(rl / d);
}

static std::string m_alpha_text(double ma, int c, int r, int m)
{
    return "M ALPHA = " + format(ma, "#0.0000") + " IN COLUMN " + str(c) + " ROW " + str(r) + " MAT'L " +
           str(m);
}

// The factors of an iteration and their reciprocals, so that a column
// divides once.
struct Factors {
    double f = 1, inv_f = 1, j = 1, inv_j = 1;
    Factors(double f_, double j_) : f(f_), inv_f(1 / f_), j(j_), inv_j(1 / j_) {}
};

// The lateral unbalance, its moment and positive side and the negative
// normals of an iteration, from its normal forces n (one per column of
// `cols`), summed in solving order and rounded column after column as the
// iteration would have summed them. Worked out once, for the last iteration.
static LastSums last_iteration_sums(const std::vector<ActiveColumn>& cols, std::size_t count,
                                    const std::vector<double>& n)
{
    LastSums s;
    for (std::size_t k = 0; k < count; ++k) {
        const ActiveColumn& e = cols[k];
        const double nk = n[k];
        const double b = nk * e.lat_slope;
        s.ubf = float(double(s.ubf) + b);
        s.lat_moment += b * e.h_arm;
        if (e.positive) {
            s.thrust_positive = float(double(s.thrust_positive) + b);
            s.wl_positive += e.wl;
        }
        if (nk < 0)
            s.neg = float(double(s.neg) + std::abs(nk));
    }
    return s;
}

// The column's equations at the current F (and J for Janbu); the normal force
// goes to `n_out`. False when it is not a finite number.
static inline bool solve_column(Project& p, Port& port, const ActiveColumn& e, const Factors& fj, bool janbu,
                                IterationSums& s, double& n_out)
{
    const double cg = e.cos_gamma;
    const double ma = cg * (1.0 + e.g * fj.inv_f);
    if (e.warn && std::abs(ma) < 0.1) {
        port.beep();
        add_message(p, m_alpha_text(ma, e.c, e.r, e.m));
    }
    // (W L - C sin(alpha) / F + U sin(alpha) T / F) / m_alpha
    const double n = (e.wl + e.d_cu * fj.inv_f) / ma;
    if (!std::isfinite(n))
        return false;
    n_out = n;
    p.col_normal.v[e.at] = float(n * e.inv_area);
    const double shear = (n - e.u) * e.t + e.coh;
    s.r += shear * e.q_arm;
    // W L arm - N' P + k W E, with N' = N cos(gamma) / cos(alpha)
    s.dm = s.dm + e.wl_arm_kwe - n * e.np_arm;
    if (janbu) {
        const double mj = cg * (1.0 + e.g * fj.inv_j);
        const double nj = (e.wl + e.d_cu * fj.inv_j) / mj;
        if (!std::isfinite(nj))
            return false;
        p.col_normal.v[e.at] = float(nj * e.inv_area);
        s.sj += ((nj - e.u) * e.t + e.coh) * e.cos_a;
        s.nj = s.nj + nj * e.ns_arm + e.kw;
    }
    return true;
}

// Bishop's equations of the columns k.. of a later iteration that need
// nothing else: a linear strength, no m_alpha message and a finite normal
// force. They are those of solve_column, with the two sums kept in registers
// rather than in memory; the loop stops at the first column that needs more
// (or at `end`) and returns its index.
static std::size_t solve_plain_columns(Project& p, const std::vector<ActiveColumn>& cols, std::size_t k,
                                       std::size_t end, double inv_f, IterationSums& s, double* n_now)
{
    double r = s.r, dm = s.dm;
    float* const normal = p.col_normal.v.data();
    for (; k < end; ++k) {
        const ActiveColumn& e = cols[k];
        if (e.nonlinear)
            break;
        const double ma = e.cos_gamma * (1.0 + e.g * inv_f);
        if (e.warn && std::abs(ma) < 0.1)
            break;
        const double n = (e.wl + e.d_cu * inv_f) / ma;
        if (!std::isfinite(n))
            break;
        n_now[k] = n;
        normal[e.at] = float(n * e.inv_area);
        r += ((n - e.u) * e.t + e.coh) * e.q_arm;
        dm = dm + e.wl_arm_kwe - n * e.np_arm;
    }
    s.r = r;
    s.dm = dm;
    return k;
}

// Turns the dips in place for a rotated direction of sliding. The right
// angle is 3.1415 / 2 on purpose.
static void rotate_dips(Project& p, double theta)
{
    const double st = std::sin(theta), ct = std::cos(theta);
    const double sr = std::sin(theta + 3.1415 / 2), cr = std::cos(theta + 3.1415 / 2);
    for (int r = 1; r <= p.num_rows; ++r) {
        for (int c = 1; c <= p.num_cols; ++c) {
            const double tp = std::tan(double(p.surf_dip_x(r, c)));
            const double tq = std::tan(double(p.surf_dip_y(r, c)));
            p.surf_dip_y(r, c) = float(std::atan(tp * st + tq * ct));
            p.surf_dip_x(r, c) = float(std::atan(tp * sr + tq * cr));
        }
    }
}

static void solve(Project& p, Port& port)
{
    BusyPointer busy(port);
    const bool janbu = p.solution_method == 2;
    const bool interactive = p.solve_interactive == -1;
    // An interactive solution draws its columns on the plan of active columns.
    DrawHooks* const hooks = interactive ? port.draw_hooks() : nullptr;
    if (hooks != nullptr)
        hooks->solve_started(p);
    int pass = 0;
    p.solve_abort = 0;
    p.balance_lateral = 0;
    for (int f = 0; f <= force_capacity; ++f) {
        p.force_v_ignored[f] = 0;
        p.force_h_ignored[f] = 0;
    }
    // Rotation applies only to interactively solved trials.
    if (p.solve_interactive == 0)
        p.rotation_angle = 0;
    const double theta = double(p.deg_to_rad) * double(p.rotation_angle);
    for (auto& w : p.head_water_force)
        w = 0;
    if (p.rotation_angle != 0) {
        // Turned dips differ beyond any slide: nothing is known there any more.
        forget_solver_work(p.work);
        rotate_dips(p, theta);
    }
    // The nodes of the trial that may be active or hold anything to clear.
    const NodeBox region = solve_region(p);
    p.zgrid.take_rows(region.r0, region.r1);
    TanCache tan_cache;
    const double cos_t = std::cos(theta);
    const double k = p.eq_coef;
    const int16 first_message = p.message_count;
    const int limit = p.num_rows == 1 ? 40 : 400;
    p.kappa_pos = 0;
    p.kappa_neg = 0;
    p.ubf0 = 0;
    p.iteration_total = 0;
    bool asked = false;
    double l_prev = 0; // lateral factor of the last solved column
    double f = 1, j = 1;

    // The buffers of the last solve, given back at the end. The columns of
    // the pass are the first `count`: the entries beyond stay from earlier
    // trials, so that a new column is written over one, never cleared first.
    std::vector<ActiveColumn> cols;
    std::size_t count = 0;
    std::vector<std::size_t> row_end;
    // Normal forces of the iteration under way and of the last one completed.
    std::vector<double> n_now, n_done;
    cols.swap(p.work.bishop);
    row_end.swap(p.work.row_end);
    n_now.swap(p.work.bishop_n);
    n_done.swap(p.work.bishop_n_done);
    row_end.assign(std::size_t(p.num_rows) + 1, 0);
    // The sums of the last completed iteration are worked out when the
    // iterations stop, whichever way they stop: until then `pending`.
    bool pending = false;
    LastSums last;
    LateralSums lateral;
    auto settle = [&] {
        if (!pending)
            return;
        pending = false;
        last = last_iteration_sums(cols, count, n_done);
        p.neg_normal_sum = last.neg;
        p.lateral_unbalance = last.ubf;
        p.thrust_positive = last.thrust_positive;
        lateral.wl_positive = last.wl_positive;
    };
    struct GiveBack {
        Project& p;
        std::vector<ActiveColumn>& cols;
        std::vector<std::size_t>& row_end;
        std::vector<double>& n_now;
        std::vector<double>& n_done;
        decltype(settle)& settle_sums;
        ~GiveBack()
        {
            settle_sums();
            cols.swap(p.work.bishop);
            row_end.swap(p.work.row_end);
            n_now.swap(p.work.bishop_n);
            n_done.swap(p.work.bishop_n_done);
        }
    } give_back{p, cols, row_end, n_now, n_done, settle};
    p.work.swept = false;

    auto fail = [&](const Failure& x) {
        add_message(p, arithmetic_failure_text(x.c, x.r, x.m));
        p.factor_of_safety = 0;
        p.janbu_fos = 0;
    };

    for (;;) { // a pass; a lateral balance opens a new one
        ++pass;
        f = 1;
        j = 1;
        p.message_count = first_message;
        int i = 0;
        p.slide_weight = p.slide_area = p.slide_volume = 0;
        p.head_water_sum = p.crack_water_sum = p.ext_vertical_sum = 0;
        p.weight_flat = p.weight_positive = p.weight_negative = p.thrust_positive = 0;
        lateral = LateralSums{};
        double m_ext = 0, h_ext = 0;
        fill_box(p.col_weight, region, 0.0f);
        fill_box(p.col_lateral_load, region, 0.0f);

        place_external_forces(p);
        for (int n = 1; n <= p.num_forces; ++n) {
            if (p.force_h_ignored[n] != 0)
                continue;
            m_ext = m_ext + double(p.force_h[n]) * cos_t * (double(p.force_z[n]) - double(p.centre_z));
            h_ext = h_ext - double(p.force_h[n]) * cos_t;
        }
        if (p.num_forces > 0)
            p.ext_horizontal_sum = float(h_ext);

        IterationSums s;
        bool empty = false;
        for (;;) { // an iteration
            ++i;
            ++p.iteration_total;
            p.active_columns = 0;
            s = IterationSums{};
            Failure failure;
            const Factors fj(f, j);

            if (i == 1) {
                count = 0;
                n_now.clear();
                ColumnSwitches sw;
                sw.setup = true;
                sw.head_test = true;
                sw.bishop_janbu = true;
                // A column is drawn once, in the first pass.
                sw.hooks = pass == 1 ? hooks : nullptr;
                // In a bounded trial an inactive node that is not stale holds
                // the results of an inactive node already.
                const bool skip_clean = trial_bounded(p);
                // No more columns than the nodes a bounded trial visits: room
                // for them at once, rather than by doubling, which may leave
                // twice what a big slide needs (and more while the columns
                // are moved). Pages never written take no memory.
                if (skip_clean && !region.empty()) {
                    const std::size_t nodes =
                        std::size_t(region.r1 - region.r0 + 1) * std::size_t(region.c1 - region.c0 + 1);
                    if (cols.capacity() < nodes) {
                        // The kept entries are written over anyway: none is
                        // copied into the new room.
                        cols.clear();
                        cols.reserve(nodes);
                    }
                }
                const NodeBox& stale = p.work.stale;
                // The rows of an ellipsoid trial are set up densely, unless a
                // node of the row needs the evaluation node by node.
                const bool dense = skip_clean && sw.hooks == nullptr && !p.work.per_node_setup;
                DenseRow& d = p.work.dense;
                const double plan_area = double(p.row_spacing) * double(p.col_spacing);
                bool yielded = false;
                for (int r = 1; r <= p.num_rows && !failure.failed; ++r) {
                    // A row beyond the region has no column, and without water
                    // thrusts nothing of it enters the sums: on a big mesh most
                    // rows are such rows.
                    if (!region.has_row(r) && !row_water_counts(p, r)) {
                        row_end[std::size_t(r)] = count;
                        continue;
                    }
                    ColumnRow row;
                    // Beyond the region every node is inactive and already cleared.
                    const int c_first = region.has_row(r) ? region.c0 : 1;
                    const int c_last = region.has_row(r) ? region.c1 : 0;
                    const bool row_dense =
                        dense && c_first <= c_last && dense_row_setup(p, r, c_first, c_last, d);
                    std::size_t next = 0; // the next active node of a dense row
                    // Made once: the evaluation sets what is read of it at each node.
                    ColumnScratch cs;
                    for (int c = c_first; c <= c_last; ++c) {
                        ColumnOutcome out = ColumnOutcome::inactive;
                        if (row_dense) {
                            // The inactive nodes up to the next active one, in one go.
                            const int stop = next < d.n ? d.col[next] : c_last + 1;
                            if (c < stop) {
                                clear_inactive_span(p, r, c, stop - 1, stale, row, true);
                                c = stop - 1;
                                continue;
                            }
                            commit_dense_node(p, d, next, r, row, cs, plan_area, true, true);
                            ++next;
                            out = ColumnOutcome::active;
                        } else if (skip_clean && skip_clean_node(p, r, c, stale, row, true)) {
                            continue;
                        }
                        if (out != ColumnOutcome::active) {
                            sw.sigma_factor = l_prev;
                            out = evaluate_column(p, r, c, sw, row, cs);
                        }
                        if (out == ColumnOutcome::failed) {
                            failure = {true, c, r, cs.material};
                            break;
                        }
                        if (out != ColumnOutcome::active) {
                            p.col_lat_slope(r, c) = 0;
                            p.col_arm(r, c) = 0;
                            p.col_lateral_load(r, c) = 0;
                            if (out == ColumnOutcome::head_removed) {
                                // The head's weight was taken into the pass's sums before it left.
                                if (cs.tan_b == 0)
                                    p.weight_flat = float(double(p.weight_flat) + cs.weight);
                                else if (cs.tan_b > 0) {
                                    p.weight_positive = float(double(p.weight_positive) + cs.weight);
                                    lateral.wt_positive += cs.weight * cs.tan_b;
                                } else {
                                    lateral.wt_negative += cs.weight * cs.tan_b;
                                }
                            }
                            continue;
                        }
                        // Every column grid shares the node's index; every field of
                        // the entry is set here.
                        const std::size_t at = p.col_weight.index(r, c);
                        if (count == cols.size())
                            cols.emplace_back();
                        ActiveColumn& e = cols[count];
                        e.at = at;
                        e.r = r;
                        e.c = c;
                        e.m = cs.material;
                        const int type = material_type(p, e.m);
                        e.nonlinear = type == 3;
                        e.area = p.col_area.v[at];
                        e.cos_gamma = p.col_cos_gamma.v[at];
                        e.lat_slope = p.col_lat_slope.v[at];
                        e.sin_a = cs.sin_a;
                        e.cos_a = cs.cos_a;
                        const double y = double(c - 1) * double(p.col_spacing) + double(p.y_min);
                        p.col_arm.v[at] = float(y - double(p.centre_y));
                        const double arm = p.col_arm.v[at];
                        e.h_arm = double(p.centre_z) - cs.zs;
                        const double p_arm = arm * e.cos_a - e.h_arm * e.sin_a;
                        e.q_arm = arm * e.sin_a + e.h_arm * e.cos_a;
                        const double quake_arm = e.h_arm - (cs.zg - cs.zs) / 2;
                        const double w = p.col_weight.v[at];
                        const double kappa = cs.tan_b > 0 ? p.kappa_pos : p.kappa_neg;
                        const double l = 1 + kappa * cs.tan_b;
                        p.col_lateral_load.v[at] = float(w * (l - 1));
                        e.wl = w * l;
                        e.wl_arm_kwe = e.wl * arm + k * w * quake_arm;
                        e.kw = k * w;
                        e.positive = cs.tan_b > 0;
                        if (cs.tan_b == 0) {
                            p.weight_flat = float(double(p.weight_flat) + w);
                        } else if (cs.tan_b > 0) {
                            p.weight_positive = float(double(p.weight_positive) + w);
                            lateral.wt_positive += w * cs.tan_b;
                        } else {
                            lateral.wt_negative += w * cs.tan_b;
                        }
                        strength_terms(p, e, tan_cache);
                        e.warn = type == 1 && e.t > 0;
                        local_fos(p, e, k);
                        e.inv_area = 1.0 / double(e.area);
                        e.np_arm = e.cos_gamma / e.cos_a * p_arm;
                        e.ns_arm = e.cos_gamma / e.cos_a * e.sin_a;
                        double n = 0;
                        if (!solve_column(p, port, e, fj, janbu, s, n)) {
                            failure = {true, c, r, cs.material};
                            break;
                        }
                        ++count;
                        l_prev = l;
                        n_now.push_back(n);
                    }
                    row_end[std::size_t(r)] = count;
                    if (failure.failed)
                        break;
                    // The row's water thrusts enter the constants of the pass.
                    const double wh = p.head_water_force[std::size_t(r)];
                    const double wc = p.crack_water_force[std::size_t(r)];
                    m_ext = m_ext +
                            wh * cos_t * (double(p.centre_z) - double(p.head_water_z[std::size_t(r)])) +
                            (double(p.centre_z) - double(p.crack_water_z[std::size_t(r)])) * wc;
                    h_ext = h_ext + wh * cos_t + wc * cos_t;
                    p.head_water_sum = float(double(p.head_water_sum) - wh * cos_t);
                    p.crack_water_sum = float(double(p.crack_water_sum) - wc * cos_t);
                    yielded = true;
                    if (port.yield())
                        p.solve_abort = -1;
                }
                if (!yielded && port.yield())
                    p.solve_abort = -1;
                if (!failure.failed && pass == 1)
                    p.work.swept = true;
            } else {
                n_now.resize(count);
                // Only the region's rows hold columns; the interface is given
                // way to at least once an iteration.
                const int r_first = std::max(region.r0, 1), r_last = std::min(region.r1, int(p.num_rows));
                if (r_first > r_last && port.yield())
                    p.solve_abort = -1;
                std::size_t n = r_first <= r_last ? row_end[std::size_t(r_first - 1)] : 0;
                for (int r = r_first; r <= r_last && !failure.failed; ++r) {
                    const std::size_t end = row_end[std::size_t(r)];
                    for (; n < end; ++n) {
                        if (!janbu) {
                            n = solve_plain_columns(p, cols, n, end, fj.inv_f, s, n_now.data());
                            if (n == end)
                                break;
                        }
                        ActiveColumn& e = cols[n];
                        if (e.nonlinear) {
                            // Linearised again at the normal stress of the previous iteration.
                            if (!column_strength(p, e.r, e.c, e.m, p.col_normal.v[e.at], true)) {
                                failure = {true, e.c, e.r, e.m};
                                break;
                            }
                            strength_terms(p, e, tan_cache);
                            local_fos(p, e, k);
                        }
                        if (!solve_column(p, port, e, fj, janbu, s, n_now[n])) {
                            failure = {true, e.c, e.r, e.m};
                            break;
                        }
                    }
                    if (failure.failed)
                        break;
                    if (port.yield())
                        p.solve_abort = -1;
                }
                // L of every column is fixed over the pass, so l_prev still holds
                // that of the last column.
                p.active_columns = std::int32_t(count);
            }
            if (failure.failed) {
                // The sums stand as the last completed iteration left them.
                settle();
                fail(failure);
                return;
            }
            n_now.swap(n_done);
            pending = true;

            if (s.r == 0) { // an empty mass: F stands
                empty = true;
                break;
            }
            if (i == 1 && p.active_columns < limit)
                add_message(p, "LESS THAN " + str(limit) + " ACTIVE COLUMNS FOR THIS SURFACE");
            if (s.dm + m_ext == 0) {
                add_message(p, " ERR - ZERO DRIVING FORCE ");
                p.factor_of_safety = float(f);
                p.janbu_fos = float(j);
                if (interactive)
                    p.solve_interactive = 0;
                return;
            }
            const double f_old = f, j_old = j;
            f = s.r / (s.dm + m_ext);
            if (janbu)
                j = (std::abs(s.sj / (s.nj + h_ext)) + j) / 2;
            if (!std::isfinite(f) || !std::isfinite(j)) {
                add_message(p, "ARITHMETIC FAILURE IN THE SUMS OF THE MASS");
                p.factor_of_safety = 0;
                p.janbu_fos = 0;
                return;
            }
            if (p.solve_abort == -1) {
                p.solve_abort = 0;
                p.factor_of_safety = float(f);
                p.janbu_fos = float(j);
                return;
            }
            if (interactive) {
                port.progress("    Iteration " + str(p.iteration_total));
                port.progress("    Interim F. of S. = " + format(janbu ? j : f, "####0.00"));
            }
            if (i > 50) {
                port.message_box("THIS SOLUTION IS NOT CONVERGING, TRY A DIFFERENT METHOD", Buttons::ok,
                                 Icon::critical, "TOBEL-3");
                p.factor_of_safety = 0;
                p.janbu_fos = 0;
                return;
            }
            if (janbu ? std::abs(j_old - j) > 0.002 : std::abs(f_old - f) > 0.002)
                continue;
            break;
        }

        if (empty) {
            settle();
            break;
        }
        // Converged.
        settle();
        p.unbalance_z = p.lateral_unbalance == 0
                            ? 0.0f
                            : float(double(p.centre_z) - last.lat_moment / double(p.lateral_unbalance));
        if (interactive && lateral_balance_step(p, port, lateral, asked))
            continue;
        if (p.balance_lateral != 1)
            p.unbalance_z = -9999999.0f;
        break;
    }

    if (janbu)
        f = j;
    p.factor_of_safety = float(f);
    p.janbu_fos = float(j);
    if (interactive)
        p.solve_interactive = 0;
}

void solve_bishop_janbu(Project& p, Port& port)
{
    // No residuals of an earlier Spencer solution stand beside this one.
    clear_equilibrium_residuals(p);
    TrialEnd end(p);
    solve_with_finite_results(p, port, solve);
}

} // namespace tobel
