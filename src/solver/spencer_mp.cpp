#include "solver/spencer_mp.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <vector>

#include "project/lanes.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/messages.h"
#include "solver/column.h"
#include "solver/equilibrium_residuals.h"
#include "solver/external_forces.h"
#include "solver/trial_end.h"
#include "surfaces/trial_region.h"

namespace tobel {

namespace {

// An active column of the round and a row's share of them (solver_work.h).
using RowRange = SpencerRow;

// What runs along a row during one iteration.
struct RowState {
    double e = 0;   // thrust entering the next column
    double arm = 0; // arm of that thrust over the base of the next column
    double a1 = 0, a2 = 0, a3 = 0;
};

struct Failure {
    bool failed = false;
    int c = 0, r = 0, m = 0;
    bool sums = false; // in the sums of a row or of the mass, not at one column
};

} // namespace

bool next_lambda(LambdaSearch& s, double rm)
{
    ++s.since_rescue;
    if (s.round == 1) {
        s.r1 = rm;
        s.lambda1 = s.lambda;
        s.lambda = float(0.3 / s.fmax);
        return false;
    }
    double lc = 0, rc = 0; // the new point
    if (s.since_rescue > 2 && std::abs(rm) > std::abs(s.best_r)) {
        // Three rounds without doing better: start again just below the best point.
        s.since_rescue = 0;
        lc = s.best_lambda;
        rc = s.best_r;
        s.lambda = float(s.best_lambda - 0.05);
    } else {
        lc = s.lambda;
        rc = rm;
        if (s.r1 == rm)
            return true;
        s.lambda = float(lc + rm * (lc - s.lambda1) / (s.r1 - rm));
    }
    if (std::abs(s.r1) > std::abs(rc)) {
        s.best_lambda = lc;
        s.best_r = rc;
    } else {
        s.best_lambda = s.lambda1;
        s.best_r = s.r1;
    }
    // Lambda stays positive and never zero.
    if (s.lambda == 0)
        s.lambda = 0.01f;
    else if (s.lambda < 0)
        s.lambda = -s.lambda;
    if (std::abs(double(s.lambda) - lc) > 0.002) {
        s.lambda1 = lc;
        s.r1 = rc;
        return false;
    }
    return true;
}

double next_factor(double fp, double rp, double fc, double rf)
{
    double f = fc + rf * (fc - fp) / (rp - rf);
    if (f < 0.18)
        f = 0.2;
    return f;
}

static std::string m_alpha_text(double ma, int c, int r, int m)
{
    return "M ALPHA = " + format(ma, "#0.0000") + " IN COLUMN " + str(c) + " ROW " + str(r) + " MAT'L " +
           str(m);
}

// The chain terms of a column at 1 / F and lambda; a small m_alpha is
// reported as it is met.
static inline ChainTerms column_terms(Project& p, const SpencerColumn& e, double inv_f, double lam, double k)
{
    const double t_f = e.t * inv_f;
    const double ma = e.cos_g + e.sin_a * t_f;
    const double na = e.cos_g * e.tan_a - e.cos_a * t_f;
    if (std::abs(ma) < 0.1)
        add_message(p, m_alpha_text(ma, e.c, e.r, e.m));
    return chain_terms(ma, na, lam * e.f, k, e.sin_a, e.cos_a, e.tan_a);
}

// A column's part of its row's sums a1, a2, a3, from its weight W, U T - C
// and its chain terms.
static inline void add_to_row_sums(double w, double ut_c, const ChainTerms& ct, double inv_f, double& a1s,
                                   double& a2s, double& a3s)
{
    a1s -= w * ct.a1;
    a3s -= ut_c * ct.a3 * inv_f;
    a2s += w * ct.a2;
}

// The equations of a column in an iteration before the last pass, where only
// the row's sums count, kept in registers. False when a term is not a finite
// number.
static inline bool column_sums(Project& p, const SpencerColumn& e, double inv_f, double lam, double k,
                               double& a1s, double& a2s, double& a3s)
{
    const ChainTerms ct = column_terms(p, e, inv_f, lam, k);
    if (!std::isfinite(ct.a1) || !std::isfinite(ct.a2) || !std::isfinite(ct.a3))
        return false;
    add_to_row_sums(e.w, e.ut_c, ct, inv_f, a1s, a2s, a3s);
    return true;
}

// The columns' arrays for lane_terms, from `cols`; false (and nothing to
// use) when a column's strength may change between iterations.
static bool fill_lanes(SpencerLanes& l, const std::vector<SpencerColumn>& cols)
{
    const std::size_t n = cols.size();
    for (auto* v : {&l.t,  &l.cos_g, &l.sin_a, &l.cos_a,  &l.tan_a,  &l.f,    &l.w,    &l.ut_c,
                    &l.ma, &l.a1,    &l.a2,    &l.a3,     &l.u,      &l.coh,  &l.area, &l.v,
                    &l.na, &l.de,    &l.n,     &l.n_vert, &l.normal, &l.shear})
        v->resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        const SpencerColumn& e = cols[i];
        if (e.nonlinear)
            return false;
        l.t[i] = e.t;
        l.cos_g[i] = e.cos_g;
        l.sin_a[i] = e.sin_a;
        l.cos_a[i] = e.cos_a;
        l.tan_a[i] = e.tan_a;
        l.f[i] = e.f;
        l.w[i] = e.w;
        l.ut_c[i] = e.ut_c;
        l.u[i] = e.u;
        l.coh[i] = e.coh;
        l.area[i] = e.area;
    }
    return true;
}

// x in every lane of V, or x itself when V is a single double.
template <class V> [[gnu::always_inline]] static inline V splat(double x)
{
    if constexpr (std::is_same_v<V, double>)
        return x;
    else
        return broadcast<V>(x);
}

// m_alpha, n_alpha and the chain terms of column_terms, without the message
// of a small m_alpha: the same operations in the same order, free of
// branches, so that they serve several columns in one instruction as well as
// one column (V = double).
template <class V> struct TermsOf {
    V ma, na, a1, a2, a3;
};

template <class V>
[[gnu::always_inline]] static inline TermsOf<V> terms_of(const V& t, const V& cos_g, const V& sin_a,
                                                         const V& cos_a, const V& tan_a, const V& f,
                                                         double inv_f, double lam, double k)
{
    TermsOf<V> o;
    const V t_f = t * inv_f;
    o.ma = cos_g + sin_a * t_f;
    o.na = cos_g * tan_a - cos_a * t_f;
    const V inv_d = 1 / (lam * f * o.na + o.ma);
    // As chain_terms: |n_alpha| not above 0.0001 takes k, 1 and cos(alpha);
    // both sides are worked out and one taken.
    const auto steep = (o.na > 0.0001) | (o.na < -0.0001);
    o.a1 = steep ? (o.na + k * o.ma) * inv_d : splat<V>(k);
    o.a2 = steep ? (tan_a * o.na + o.ma) * inv_d : splat<V>(1);
    o.a3 = steep ? (sin_a * o.na + o.ma * cos_a) * inv_d : cos_a;
    return o;
}

// terms_of every column at once, from the arrays of fill_lanes, and whether
// any m_alpha is small enough for a message.
template <class V>
[[gnu::always_inline]] static inline void lane_terms_with(SpencerLanes& l, double inv_f, double lam, double k)
{
    MaskOf<V> small{};
    in_lanes<V>(l.t.size(), [&](std::size_t i, std::size_t m) TOBEL_LANE_BODY {
        auto in = [&](const std::vector<double>& x) TOBEL_LANE_BODY { return load_lanes<V>(x.data(), i, m); };
        const TermsOf<V> o =
            terms_of<V>(in(l.t), in(l.cos_g), in(l.sin_a), in(l.cos_a), in(l.tan_a), in(l.f), inv_f, lam, k);
        small |= (o.ma < 0.1) & (o.ma > -0.1);
        store_lanes(l.ma.data(), i, m, o.ma);
        store_lanes(l.a1.data(), i, m, o.a1);
        store_lanes(l.a2.data(), i, m, o.a2);
        store_lanes(l.a3.data(), i, m, o.a3);
    });
    l.small_ma = false;
    for (std::size_t j = 0; j < lane_count<V>; ++j)
        l.small_ma = l.small_ma || small[j] != 0;
}

static void lane_terms_2(SpencerLanes& l, double inv_f, double lam, double k)
{
    lane_terms_with<Double2>(l, inv_f, lam, k);
}

TOBEL_LANES4_TARGET static void lane_terms_4(SpencerLanes& l, double inv_f, double lam, double k)
{
    lane_terms_with<Double4>(l, inv_f, lam, k);
}

static void lane_terms(SpencerLanes& l, double inv_f, double lam, double k, bool two_lanes)
{
    if (take_four_lanes(two_lanes))
        lane_terms_4(l, inv_f, lam, k);
    else
        lane_terms_2(l, inv_f, lam, k);
}

// What the last pass of a round works out of a column before the thrust
// entering it is known: terms_of, the thrust increment de at the row's
// coefficient v and, unless n_alpha is 0, the normal force N.
template <class V> struct LastTerms {
    TermsOf<V> ct;
    V de, n;
};

// What follows from N: N cos(gamma) / cos(alpha), N / A and the shear force
// ((N - U) T + C) / F.
template <class V> struct NormalTerms {
    V n_vert, normal, shear;
};

template <class V>
[[gnu::always_inline]] static inline NormalTerms<V> normal_terms(const V& n, const V& cos_g, const V& cos_a,
                                                                 const V& area, const V& u, const V& t,
                                                                 const V& coh, double f_s)
{
    return {n * cos_g / cos_a, n / area, ((n - u) * t + coh) / f_s};
}

template <class V>
[[gnu::always_inline]] static inline LastTerms<V>
last_terms(const V& t, const V& cos_g, const V& sin_a, const V& cos_a, const V& tan_a, const V& f, const V& w,
           const V& ut_c, const V& u, const V& coh, const V& v, double inv_f, double f_s, double lam,
           double k)
{
    LastTerms<V> o;
    o.ct = terms_of<V>(t, cos_g, sin_a, cos_a, tan_a, f, inv_f, lam, k);
    o.de = -w * o.ct.a1 - w * v * o.ct.a2 - ut_c * o.ct.a3 / f_s;
    o.n = (-o.de - (k + v) * w + (coh - u * t) * cos_a / f_s) / o.ct.na;
    return o;
}

// last_terms and normal_terms of every column at once, from the arrays of
// fill_lanes and the row coefficients in l.v.
template <class V>
[[gnu::always_inline]] static inline void last_lane_terms_with(SpencerLanes& l, double inv_f, double f_s,
                                                               double lam, double k)
{
    in_lanes<V>(l.t.size(), [&](std::size_t i, std::size_t m) TOBEL_LANE_BODY {
        auto in = [&](const std::vector<double>& x) TOBEL_LANE_BODY { return load_lanes<V>(x.data(), i, m); };
        auto out = [&](std::vector<double>& x, const V& y)
                       TOBEL_LANE_BODY { store_lanes(x.data(), i, m, y); };
        const V t = in(l.t), cos_g = in(l.cos_g), cos_a = in(l.cos_a), u = in(l.u), coh = in(l.coh);
        const LastTerms<V> o = last_terms<V>(t, cos_g, in(l.sin_a), cos_a, in(l.tan_a), in(l.f), in(l.w),
                                             in(l.ut_c), u, coh, in(l.v), inv_f, f_s, lam, k);
        const NormalTerms<V> nt = normal_terms<V>(o.n, cos_g, cos_a, in(l.area), u, t, coh, f_s);
        out(l.ma, o.ct.ma);
        out(l.na, o.ct.na);
        out(l.a1, o.ct.a1);
        out(l.a2, o.ct.a2);
        out(l.a3, o.ct.a3);
        out(l.de, o.de);
        out(l.n, o.n);
        out(l.n_vert, nt.n_vert);
        out(l.normal, nt.normal);
        out(l.shear, nt.shear);
    });
}

static void last_lane_terms_2(SpencerLanes& l, double inv_f, double f_s, double lam, double k)
{
    last_lane_terms_with<Double2>(l, inv_f, f_s, lam, k);
}

TOBEL_LANES4_TARGET static void last_lane_terms_4(SpencerLanes& l, double inv_f, double f_s, double lam,
                                                  double k)
{
    last_lane_terms_with<Double4>(l, inv_f, f_s, lam, k);
}

static void last_lane_terms(SpencerLanes& l, double inv_f, double f_s, double lam, double k, bool two_lanes)
{
    if (take_four_lanes(two_lanes))
        last_lane_terms_4(l, inv_f, f_s, lam, k);
    else
        last_lane_terms_2(l, inv_f, f_s, lam, k);
}

// column_sums over the columns b..e - 1 from their lane_terms, in order, with
// the messages; false at a column whose terms are not finite numbers, which
// is left in `bad`. The sums go first, free of branches: a term that is not a
// finite number leaves a sum that is not one either (its product with any
// number is not, nor is any sum after it), so only then are the terms looked
// at one by one. The sums of a row that fails are not used.
static bool lane_sums(Project& p, const SpencerLanes& l, const std::vector<SpencerColumn>& cols,
                      std::size_t b, std::size_t e, double inv_f, double& a1s, double& a2s, double& a3s,
                      std::size_t& bad)
{
    const double *w = l.w.data(), *ut_c = l.ut_c.data(), *a1 = l.a1.data(), *a2 = l.a2.data(),
                 *a3 = l.a3.data();
    for (std::size_t i = b; i < e; ++i)
        add_to_row_sums(w[i], ut_c[i], ChainTerms{a1[i], a2[i], a3[i]}, inv_f, a1s, a2s, a3s);
    std::size_t end = e;
    bool ok = true;
    if (!std::isfinite(a1s) || !std::isfinite(a2s) || !std::isfinite(a3s))
        for (std::size_t i = b; i < e; ++i)
            if (!std::isfinite(a1[i]) || !std::isfinite(a2[i]) || !std::isfinite(a3[i])) {
                bad = i;
                end = i + 1;
                ok = false;
                break;
            }
    // A small m_alpha is reported for every column up to the one that failed.
    for (std::size_t i = b; l.small_ma && i < end; ++i)
        if (std::abs(l.ma[i]) < 0.1)
            add_message(p, m_alpha_text(l.ma[i], cols[i].c, cols[i].r, cols[i].m));
    return ok;
}

static void strength_terms(const Project& p, SpencerColumn& e, TanCache& tc)
{
    e.u = double(p.col_pore.v[e.at]) * e.area;
    e.coh = double(p.col_cohesion.v[e.at]) * e.area;
    e.t = tc.of(p.col_phi.v[e.at]);
    e.ut_c = e.u * e.t - e.coh;
}

// The local factor leaves the pore force out; here the earthquake term is
// multiplied by cos(alpha).
static void local_fos(Project& p, const SpencerColumn& e, double k)
{
    const double d = e.w * (e.sin_a + k * e.cos_a);
    p.col_fos.v[e.at] = d == 0 ? 100.0f : float((e.w * e.cos_a * e.t + e.coh) / d);
}

// The interslice function of Spencer (1 everywhere) or of Morgenstern-Price
// (a half sine over the slide, with 3.1415 for pi). Method 5 keeps what the
// slice holds.
struct Interslice {
    int method = 3;
    double y_lo = 0, span = 0; // of the half sine

    // The value at column c, as the slice holds it.
    float at(const Project& p, int c) const
    {
        if (method == 3)
            return 1;
        const double ymin = p.y_min, cs = p.col_spacing;
        return float(std::sin((ymin + double(c - 1) * cs - y_lo) * 3.1415 / span));
    }
};

// Writes the function over the region; beyond it the whole sweep would
// write it too, but the first set-up puts 0 back at every inactive node.
static Interslice interslice_function(Project& p, int method, const NodeBox& region)
{
    const int si = p.sliding_index, nl = p.num_layers;
    Interslice f;
    f.method = method;
    if (method == 3) {
        for (int r = region.r0; r <= region.r1; ++r)
            for (int c = region.c0; c <= region.c1; ++c)
                p.zgrid(r, c, si + 1) = 1;
        return f;
    }
    if (method != 4)
        return f;
    // The slide's thickness is 0 beyond the region.
    int c_min = 999999, c_max = 0;
    for (int r = region.r0; r <= region.r1; ++r)
        for (int c = region.c0; c <= region.c1; ++c)
            if (double(p.zgrid(r, c, nl)) - double(p.zgrid(r, c, si)) > 0) {
                if (c > c_max)
                    c_max = c;
                if (c < c_min)
                    c_min = c;
            }
    fill_box(p.col_thrust_height, region, 0.0f);
    const double ymin = p.y_min, cs = p.col_spacing;
    f.y_lo = ymin + double(c_min - 1) * cs;
    f.span = (ymin + double(c_max - 1) * cs) - f.y_lo;
    for (int c = region.c0; c <= region.c1; ++c) {
        const float v = f.at(p, c);
        for (int r = region.r0; r <= region.r1; ++r)
            p.zgrid(r, c, si + 1) = v;
    }
    return f;
}

// Where the first set-up of a solve stands: the nodes up to (r, c) in
// solving order have been visited.
struct SetupPoint {
    bool open = false;
    int r = 0, c = 0;
};

// A bounded solve that stops within its first set-up: the whole sweep would
// have left the interslice function at every node not yet visited, beyond
// the region as well. Nothing is known of the mesh any more.
static void leave_interslice_beyond(Project& p, const Interslice& f, const NodeBox& region,
                                    const SetupPoint& at)
{
    const int si = p.sliding_index;
    p.zgrid.take_all_rows();
    for (int r = std::max(at.r, 1); r <= p.num_rows; ++r)
        for (int c = r == at.r ? at.c + 1 : 1; c <= p.num_cols; ++c)
            if (!region.has(r, c))
                p.zgrid(r, c, si + 1) = f.at(p, c);
    forget_solver_work(p.work);
}

static void solve(Project& p, Port& port)
{
    BusyPointer busy(port);
    const int method = p.solution_method;
    const bool interactive = p.solve_interactive == -1;
    // An interactive solution draws its columns on the plan of active columns.
    DrawHooks* const hooks = interactive ? port.draw_hooks() : nullptr;
    if (hooks != nullptr)
        hooks->solve_started(p);
    // This method knows no rotation and no lateral balancing.
    p.rotation_angle = 0;
    p.balance_lateral = 0;
    p.solve_abort = 0;
    for (int n = 0; n <= force_capacity; ++n) {
        p.force_v_ignored[n] = 0;
        p.force_h_ignored[n] = 0;
    }
    const int nl = p.num_layers, si = p.sliding_index;
    const int num_rows = p.num_rows, num_cols = p.num_cols;
    const bool two_d = num_rows == 1;
    const double k = p.eq_coef;
    const double cs = p.col_spacing, rs_w = p.row_spacing;
    const double a_plan = rs_w * cs;
    const double cz = p.centre_z, cy = p.centre_y, ymin = p.y_min;
    const double gw = p.unit_weight_water;
    const int limit = two_d ? 40 : 400;
    // tan of each layer's vertical friction angle, for the strength of the
    // columns' sides in the last pass of every round.
    std::array<double, material_capacity + 1> tan_phi_v{};
    for (int l = 1; l <= nl && l <= material_capacity; ++l)
        tan_phi_v[std::size_t(l)] = std::tan(double(p.deg_to_rad) * double(p.mat_phi_v[std::size_t(l)]));

    // The nodes of the trial that may be active or hold anything to clear.
    const NodeBox region = solve_region(p);
    p.zgrid.take_rows(region.r0, region.r1);
    const bool bounded = trial_bounded(p);
    const Interslice fn = interslice_function(p, method, region);
    double fmax = 0;
    bool f_finite = true;
    auto take = [&](double f) {
        if (!std::isfinite(f))
            f_finite = false;
        else if (f > fmax)
            fmax = f;
    };
    if (bounded) {
        // The function depends on the column alone, over the whole mesh.
        if (num_rows >= 1)
            for (int c = 1; c <= num_cols; ++c)
                take(fn.at(p, c));
    } else {
        for (int r = 1; r <= num_rows; ++r)
            for (int c = 1; c <= num_cols; ++c)
                take(p.zgrid(r, c, si + 1));
    }
    SetupPoint setup_at;
    setup_at.open = bounded;
    LambdaSearch ls;
    ls.fmax = fmax;
    ls.lambda = 1;
    if (method != 5)
        ls.lambda = float(0.6 / fmax);
    if (!f_finite || !std::isfinite(ls.lambda)) {
        // A slide of one column has no span for the half sine.
        add_message(p, "ARITHMETIC FAILURE IN THE INTERSLICE FUNCTION");
        p.factor_of_safety = 0;
        if (bounded)
            leave_interslice_beyond(p, fn, region, setup_at);
        return;
    }
    p.lambda_coef = ls.lambda;
    p.iteration_count = 0;

    // The buffers of the last solve, given back at the end.
    std::vector<SpencerColumn> cols;
    std::vector<RowRange> rows;
    cols.swap(p.work.spencer);
    rows.swap(p.work.spencer_rows);
    rows.assign(std::size_t(num_rows) + 1, RowRange{});
    struct GiveBack {
        Project& p;
        std::vector<SpencerColumn>& cols;
        std::vector<RowRange>& rows;
        ~GiveBack()
        {
            cols.swap(p.work.spencer);
            rows.swap(p.work.spencer_rows);
        }
    } give_back{p, cols, rows};
    p.work.swept = false;
    TanCache tan_cache;
    // The set-up of a round whose sliding plane did not change stands for
    // every later round: the same columns, weights and forces.
    bool setup_kept = false;
    float kept_weight = 0, kept_area = 0, kept_volume = 0, kept_ext_vertical = 0;
    // A set-up cut short within the first round, in a bounded solve.
    auto stopped_in_setup = [&] {
        if (setup_at.open)
            leave_interslice_beyond(p, fn, region, setup_at);
    };
    double f_s = 1;        // F
    double inv_f = 1;      // 1 / F
    double m_ext = 0;      // moment of the external forces and water thrusts
    double lat_moment = 0; // moment of the lateral components about the centre
    double sum_a1 = 0;
    double t_thrust = 0; // thrust height over the base of the last column worked out
    double zeta = 0;     // its ratio to the column height; stays 0 in 3-D
    int ratio_count = 0;
    bool empty = false;
    float lam_f = ls.lambda;
    double lam = lam_f;
    bool last_pass = false;
    // The column arrays of lane_terms hold the columns of `cols`; usable when
    // no column's strength changes between iterations.
    bool lanes_filled = false, lanes_usable = false;
    Failure failure;

    // The column's equations at F and lambda in the last pass of a round:
    // the thrust, the normal force, the side strength and the moments, from
    // the terms worked out before the thrust entering the column is known.
    // Kept in line, so that the locals of the pass it carries on (the thrust
    // line, the lateral moment, the ratio count) stay in registers.
    // clang-format off
    auto equations = [&](SpencerColumn& e, RowState& rs, const LastTerms<double>& lt, NormalTerms<double> nt)
        __attribute__((always_inline)) -> bool {
        // clang-format on
        if (std::abs(lt.ct.ma) < 0.1)
            add_message(p, m_alpha_text(lt.ct.ma, e.c, e.r, e.m));
        const double a1 = lt.ct.a1, a2 = lt.ct.a2, a3 = lt.ct.a3;
        if (!std::isfinite(a1) || !std::isfinite(a2) || !std::isfinite(a3))
            return false;
        const int r = e.r, c = e.c;
        if (e.prev_active) // the arm is carried from the last base to this one
            rs.arm = t_thrust - e.zs + double(p.zgrid(r, c - 1, si));
        const double v = p.row_coef[std::size_t(r)];
        const double e_in = rs.e;
        const double de = lt.de;
        rs.e = e_in + de;
        const double en = rs.e;
        // The thrust less the force of the water pressure on the side.
        const float eff_stored = float(en - e.side_water);
        p.col_eff_thrust.v[e.at] = eff_stored;
        const double x = en * e.f * lam;
        double n = lt.n;
        if (lt.ct.na == 0) {
            n = x + e.w;
            nt = normal_terms<double>(n, e.cos_g, e.cos_a, e.area, e.u, e.t, e.coh, f_s);
        }
        if (!std::isfinite(n) || !std::isfinite(en))
            return false;
        const double n_vert = nt.n_vert;
        if (n < 0)
            p.neg_normal_sum = float(double(p.neg_normal_sum) + std::abs(n));
        const double b = n * e.cos_g * e.tan_b;
        p.lateral_unbalance = float(double(p.lateral_unbalance) + b);
        lat_moment += b * (cz - e.zs);
        p.col_normal.v[e.at] = float(nt.normal);

        const double h = e.zg - e.zs;
        const bool chain_end = c == num_cols || p.zgrid(r, c + 1, si) == p.zgrid(r, c + 1, nl);
        if (!chain_end) {
            if (two_d) {
                // Moment about the column's base gives the height of the thrust line.
                const double mb = e_in * rs.arm - (k + v) * e.w * h / 2 + (e_in + en) * e.f * lam * cs / 2;
                if (en == 0) {
                    t_thrust = 0;
                } else {
                    if (std::abs(h) < 0.0001) {
                        t_thrust = 0;
                        zeta = 0;
                    } else {
                        t_thrust = mb / en;
                        zeta = t_thrust / h;
                    }
                    p.col_thrust_height.v[e.at] = float(t_thrust);
                    if (zeta >= 0 && zeta <= 1) {
                        p.vol_thrust_inside = float(double(p.vol_thrust_inside) + h * a_plan);
                        p.thrust_ratio_mean = float(double(p.thrust_ratio_mean) + zeta);
                        ++ratio_count;
                        if (zeta < p.thrust_ratio_min)
                            p.thrust_ratio_min = float(zeta);
                        if (zeta > p.thrust_ratio_max)
                            p.thrust_ratio_max = float(zeta);
                    }
                    if (zeta > 0.333 && zeta < 0.667)
                        p.vol_thrust_middle = float(double(p.vol_thrust_middle) + h * a_plan);
                }
            }
            // Stresses on the vertical side: uniform, or a trapezoid when
            // the thrust line lies low in the middle third.
            const double eff = eff_stored;
            double sb = 0, st = 0;
            if (eff < 0) {
                p.vol_tension = float(double(p.vol_tension) + h * a_plan);
            } else {
                sb = st = eff / h;
                if (zeta >= 0.3333 && zeta < 0.5) {
                    st = (6 * eff / h) * (zeta - 0.333);
                    sb = 2 * eff / h - st;
                }
            }
            // Strength of the vertical side through the column, layer by
            // layer with the vertical values of every material type.
            // A uniform stress has no gradient (a division spared: (sb - st) / h
            // is a zero then, whose sign the sums below do not keep).
            const double g = sb == st && std::isfinite(sb) && std::abs(h) > 0 ? 0.0 : (sb - st) / h;
            double sv = 0;
            const int base = p.col_material.v[e.at];
            for (int l = base; l <= nl; ++l) {
                const double bl = l == base ? 0.0 : double(p.zgrid(r, c, l - 1)) - e.zs;
                const double tl = double(p.zgrid(r, c, l)) - e.zs;
                const double mean = ((sb - bl * g) + (sb - tl * g)) / 2;
                sv += (double(p.mat_cohesion_v[l]) + tan_phi_v[std::size_t(l)] * mean) * (tl - bl) * rs_w;
            }
            float ratio = p.col_shear_ratio.v[e.at]; // a ratio left from before counts the same
            if (x > 0) {
                ratio = float(sv / x);
                p.col_shear_ratio.v[e.at] = ratio;
            }
            if (std::abs(ratio) < 1)
                p.vol_overstressed = float(double(p.vol_overstressed) + h * a_plan);
        }
        // Moments about the centre; y lies one spacing on from the node.
        const double y = double(c) * cs + ymin;
        const double hc = cz - e.zs;
        const double arm = y - cy;
        const double pa = arm * e.cos_a - hc * e.sin_a;
        const double qa = arm * e.sin_a + hc * e.cos_a;
        const double em = hc - h / 2;
        p.moment_shear = float(double(p.moment_shear) + nt.shear * qa);
        p.moment_other = float(double(p.moment_other) - e.w * (arm + k * em) + n_vert * pa);
        add_to_row_sums(e.w, e.ut_c, ChainTerms{a1, a2, a3}, inv_f, rs.a1, rs.a2, rs.a3);
        return true;
    };

    try {
        for (;;) { // a lambda round
            ++ls.round;
            lam_f = ls.lambda;
            lam = lam_f;
            p.lambda_coef = lam_f;
            p.thrust_ratio_max = -1000000000.0f;
            p.thrust_ratio_min = 1000000000.0f;
            p.thrust_ratio_mean = 0;
            ratio_count = 0;
            p.vol_thrust_inside = p.vol_thrust_middle = p.vol_tension = p.vol_overstressed = 0;
            f_s = 1;
            int i = 0;
            p.slide_weight = p.slide_area = p.slide_volume = 0;
            p.head_water_sum = p.crack_water_sum = 0;
            // Cleared with the round as in the Bishop pass, so that the panel's
            // vertical external force is the force applied once, not once per round.
            p.ext_vertical_sum = 0;
            m_ext = 0;
            double h_ext = 0;
            if (setup_kept) {
                p.slide_weight = kept_weight;
                p.slide_area = kept_area;
                p.slide_volume = kept_volume;
                p.ext_vertical_sum = kept_ext_vertical;
            } else {
                fill_box(p.col_weight, region, 0.0f);
                place_external_forces(p);
            }
            bool head_removed = false;
            for (int n = 1; n <= p.num_forces; ++n) {
                if (p.force_h_ignored[n] != 0)
                    continue;
                m_ext = m_ext + (double(p.force_z[n]) - cz) * double(p.force_h[n]);
                h_ext = h_ext - double(p.force_h[n]);
            }
            if (p.num_forces > 0)
                p.ext_horizontal_sum = float(h_ext);
            last_pass = false;
            p.moment_shear = 0;
            p.moment_other = 0;
            double fp = 0, rp = 0;

            for (;;) { // an F iteration
                inv_f = 1 / f_s;
                ++i;
                ++p.iteration_count;
                p.active_columns = 0;
                p.neg_normal_sum = 0;
                p.lateral_unbalance = 0;
                lat_moment = 0;
                double g_sum = 0;
                sum_a1 = 0;
                if (i == 1 && !setup_kept) {
                    cols.clear();
                    lanes_filled = false;
                }
                // An iteration that only sums the columns set up before works
                // their terms out all at once.
                SpencerLanes& sl = p.work.spencer_lanes;
                bool lanes = false;
                if ((i > 1 || setup_kept) && !p.work.per_column_terms) {
                    if (!lanes_filled) {
                        lanes_usable = fill_lanes(sl, cols);
                        lanes_filled = true;
                    }
                    lanes = lanes_usable;
                    if (lanes && last_pass) {
                        // A row's coefficient changes only once its last column is done.
                        for (std::size_t n = 0; n < cols.size(); ++n)
                            sl.v[n] = p.row_coef[std::size_t(cols[n].r)];
                        last_lane_terms(sl, inv_f, f_s, lam, k, p.work.two_lanes);
                    } else if (lanes) {
                        lane_terms(sl, inv_f, lam, k, p.work.two_lanes);
                    }
                }
                if (i == 1 && setup_kept)
                    p.active_columns = std::int32_t(cols.size());

                if (p.iteration_count == 1)
                    for (int r = 1; r <= num_rows; ++r) {
                        const std::size_t ri = std::size_t(r);
                        p.head_water_force[ri] = 0;
                        p.row_thrust_arm[ri] = 0;
                        if (!region.has_row(r))
                            p.row_coef[ri] = 0;
                    }
                bool yielded = false;
                for (int r = 1; r <= num_rows; ++r) {
                    const std::size_t ri = std::size_t(r);
                    // A row beyond the region has no column and, without water
                    // thrusts, adds nothing: its coefficient stays 0.
                    if (!region.has_row(r) && !row_water_counts(p, r))
                        continue;
                    RowState rs;
                    rs.e = -double(p.head_water_force[ri]);
                    rs.arm = p.row_thrust_arm[ri];
                    RowRange& range = rows[ri];
                    if (lanes && !last_pass) {
                        std::size_t bad = 0;
                        if (!lane_sums(p, sl, cols, range.begin, range.end, inv_f, rs.a1, rs.a2, rs.a3,
                                       bad)) {
                            const SpencerColumn& e = cols[bad];
                            failure = {true, e.c, e.r, e.m, false};
                        }
                    } else if (i == 1 && setup_kept) {
                        double a1s = rs.a1, a2s = rs.a2, a3s = rs.a3;
                        for (std::size_t n = range.begin; n < range.end; ++n) {
                            SpencerColumn& e = cols[n];
                            if (e.nonlinear) {
                                // Back to the strength of the set-up.
                                p.col_phi.v[e.at] = e.phi0;
                                p.col_cohesion.v[e.at] = e.coh0;
                                strength_terms(p, e, tan_cache);
                                local_fos(p, e, k);
                            }
                            if (!column_sums(p, e, inv_f, lam, k, a1s, a2s, a3s)) {
                                failure = {true, e.c, e.r, e.m, false};
                                break;
                            }
                        }
                        rs.a1 = a1s;
                        rs.a2 = a2s;
                        rs.a3 = a3s;
                    } else if (i == 1) {
                        // Set-up of the round, column by column.
                        range.begin = cols.size();
                        range.weight = 0;
                        ColumnSwitches sw;
                        sw.setup = true;
                        sw.head_test = p.iteration_count == 1;
                        sw.bishop_janbu = false;
                        sw.sigma_factor = 1;
                        // A column is drawn once, in the very first iteration.
                        sw.hooks = p.iteration_count == 1 ? hooks : nullptr;
                        ColumnRow row;
                        bool prev_active = false;
                        // Beyond the region every node is inactive and already cleared.
                        const int c_first = region.has_row(r) ? region.c0 : 1;
                        const int c_last = region.has_row(r) ? region.c1 : 0;
                        // The rows of an ellipsoid trial are set up densely, unless
                        // a node of the row needs the evaluation node by node.
                        DenseRow& d = p.work.dense;
                        const bool row_dense = bounded && sw.hooks == nullptr && !p.work.per_node_setup &&
                                               c_first <= c_last && dense_row_setup(p, r, c_first, c_last, d);
                        std::size_t next = 0; // the next active node of a dense row
                        // Made once: the evaluation sets what is read of it at each node.
                        ColumnScratch sc;
                        for (int c = c_first; c <= c_last; ++c) {
                            setup_at.r = r;
                            setup_at.c = c;
                            ColumnOutcome out = ColumnOutcome::inactive;
                            if (row_dense) {
                                // The inactive nodes up to the next active one, in one go.
                                const int stop = next < d.n ? d.col[next] : c_last + 1;
                                if (c < stop) {
                                    clear_inactive_span(p, r, c, stop - 1, p.work.stale, row, false);
                                    prev_active = false;
                                    c = stop - 1;
                                    setup_at.c = c;
                                    continue;
                                }
                                commit_dense_node(p, d, next, r, row, sc, a_plan, false, sw.head_test);
                                ++next;
                                out = ColumnOutcome::active;
                            } else if (bounded && skip_clean_node(p, r, c, p.work.stale, row, false)) {
                                prev_active = false;
                                continue;
                            }
                            if (out != ColumnOutcome::active)
                                out = evaluate_column(p, r, c, sw, row, sc);
                            if (out == ColumnOutcome::failed) {
                                failure = {true, c, r, sc.material, false};
                                break;
                            }
                            if (out != ColumnOutcome::active) {
                                p.col_eff_thrust(r, c) = 0;
                                p.zgrid(r, c, si + 1) = 0;
                                p.col_shear_ratio(r, c) = 0;
                                if (out == ColumnOutcome::head_removed) {
                                    p.row_thrust_arm[ri] = float(sc.head_h / 3);
                                    head_removed = true;
                                }
                                prev_active = false;
                                continue;
                            }
                            SpencerColumn e;
                            e.at = p.col_weight.index(r, c);
                            e.r = r;
                            e.c = c;
                            e.m = sc.material;
                            e.nonlinear = p.mat_type[e.m] == 3;
                            e.prev_active = prev_active;
                            prev_active = true;
                            e.w = p.col_weight.v[e.at];
                            e.area = p.col_area.v[e.at];
                            e.pore = p.col_pore.v[e.at];
                            e.side_water = (e.pore * e.pore / 2 / gw) * rs_w;
                            e.cos_g = p.col_cos_gamma.v[e.at];
                            e.sin_a = sc.sin_a;
                            e.cos_a = sc.cos_a;
                            e.tan_a = sc.sin_a / sc.cos_a;
                            e.tan_b = sc.tan_b;
                            e.zs = sc.zs;
                            e.zg = sc.zg;
                            e.f = p.zgrid(r, c, si + 1);
                            e.phi0 = p.col_phi.v[e.at];
                            e.coh0 = p.col_cohesion.v[e.at];
                            strength_terms(p, e, tan_cache);
                            local_fos(p, e, k);
                            range.weight += e.w;
                            // The set-up is never the last pass: only the row's sums count.
                            if (!column_sums(p, e, inv_f, lam, k, rs.a1, rs.a2, rs.a3)) {
                                failure = {true, c, r, e.m, false};
                                break;
                            }
                            cols.push_back(e);
                        }
                        range.end = cols.size();
                    } else {
                        double a1s = rs.a1, a2s = rs.a2, a3s = rs.a3;
                        for (std::size_t n = range.begin; n < range.end; ++n) {
                            SpencerColumn& e = cols[n];
                            if (e.nonlinear) {
                                // Linearised again at the normal stress the column holds.
                                if (!column_strength(p, e.r, e.c, e.m, p.col_normal.v[e.at], false)) {
                                    failure = {true, e.c, e.r, e.m, false};
                                    break;
                                }
                                strength_terms(p, e, tan_cache);
                                local_fos(p, e, k);
                            }
                            // Before the last pass only the row's sums count.
                            bool ok = false;
                            if (!last_pass) {
                                ok = column_sums(p, e, inv_f, lam, k, a1s, a2s, a3s);
                            } else if (lanes) {
                                ok = equations(
                                    e, rs,
                                    {{sl.ma[n], sl.na[n], sl.a1[n], sl.a2[n], sl.a3[n]}, sl.de[n], sl.n[n]},
                                    {sl.n_vert[n], sl.normal[n], sl.shear[n]});
                            } else {
                                const LastTerms<double> lt = last_terms<double>(
                                    e.t, e.cos_g, e.sin_a, e.cos_a, e.tan_a, e.f, e.w, e.ut_c, e.u, e.coh,
                                    p.row_coef[std::size_t(e.r)], inv_f, f_s, lam, k);
                                ok = equations(e, rs, lt,
                                               normal_terms<double>(lt.n, e.cos_g, e.cos_a, e.area, e.u, e.t,
                                                                    e.coh, f_s));
                            }
                            if (!ok) {
                                failure = {true, e.c, e.r, e.m, false};
                                break;
                            }
                        }
                        if (!last_pass) {
                            rs.a1 = a1s;
                            rs.a2 = a2s;
                            rs.a3 = a3s;
                        }
                    }
                    if (failure.failed)
                        break;
                    // Every node of the row has been visited.
                    setup_at.r = r;
                    setup_at.c = num_cols;

                    // End of the row.
                    yielded = true;
                    if (port.yield())
                        p.solve_abort = -1;
                    const double hwf = p.head_water_force[ri];
                    if (rs.a1 == 0) {
                        p.row_coef[ri] = 0;
                    } else {
                        // The vertical coefficient that closes the row's thrust.
                        p.row_coef[ri] = float((rs.a1 + rs.a3 - hwf) / rs.a2);
                        if (!std::isfinite(p.row_coef[ri])) {
                            failure = {true, 0, r, 0, true};
                            break;
                        }
                    }
                    g_sum += range.weight * double(p.row_coef[ri]);
                    if (i == 1) {
                        const double cwf = p.crack_water_force[ri];
                        m_ext = m_ext + (cz - double(p.head_water_z[ri])) * hwf +
                                (cz - double(p.crack_water_z[ri])) * cwf;
                        p.head_water_sum = float(double(p.head_water_sum) - hwf);
                        p.crack_water_sum = float(double(p.crack_water_sum) + cwf);
                    }
                    sum_a1 += rs.a1;
                }
                if (!failure.failed && !yielded && port.yield())
                    p.solve_abort = -1;
                if (i > 1)
                    p.active_columns = std::int32_t(cols.size());
                if (i == 1 && !failure.failed) {
                    if (ls.round == 1)
                        p.work.swept = true;
                    setup_at.open = false;
                    if (!setup_kept && !head_removed) {
                        setup_kept = true;
                        kept_weight = p.slide_weight;
                        kept_area = p.slide_area;
                        kept_volume = p.slide_volume;
                        kept_ext_vertical = p.ext_vertical_sum;
                    }
                }
                if (failure.failed) {
                    stopped_in_setup();
                    add_message(p, failure.sums ? std::string("ARITHMETIC FAILURE IN THE SUMS OF THE MASS")
                                                : arithmetic_failure_text(failure.c, failure.r, failure.m));
                    p.factor_of_safety = 0;
                    return;
                }

                if (i == 1) {
                    if (sum_a1 == 0) { // no driving force: F stands
                        empty = true;
                        break;
                    }
                    if (p.active_columns < limit && p.iteration_count == 1)
                        add_message(p, "LESS THAN " + str(limit) + " ACTIVE COLUMNS FOR THIS SURFACE");
                }
                if (last_pass)
                    break;
                const double rf = g_sum - h_ext;
                if (p.solve_abort == -1) {
                    p.solve_abort = 0;
                    port.busy(false);
                    port.message_box("This solution has been aborted!", Buttons::ok, Icon::warning, "TOB");
                    p.factor_of_safety = 0;
                    return;
                }
                if (interactive) {
                    port.progress("    Iteration " + str(int(p.iteration_count)));
                    port.progress("    Interim F. of S. = " + format(f_s, "####0.00"));
                }
                if (i == 1) {
                    fp = f_s;
                    rp = rf;
                    f_s = 1.5;
                    continue;
                }
                if (i > 100 || ls.round > 30 || rp == rf) {
                    port.busy(false);
                    port.message_box("THIS SOLUTION IS NOT CONVERGING, TRY A DIFFERENT METHOD", Buttons::ok,
                                     Icon::critical, "TOBEL-3");
                    p.factor_of_safety = 0;
                    return;
                }
                const double fc = f_s;
                f_s = next_factor(fp, rp, fc, rf);
                if (!std::isfinite(f_s)) {
                    add_message(p, "ARITHMETIC FAILURE IN THE SUMS OF THE MASS");
                    p.factor_of_safety = 0;
                    return;
                }
                if (std::abs(f_s - fc) > 0.002) {
                    fp = fc;
                    rp = rf;
                    continue;
                }
                // Accepted: one more iteration at this F, the last pass, gives the thrusts.
                last_pass = true;
            }

            if (empty || method == 5)
                break;
            const double rm = double(p.moment_shear) + double(p.moment_other) - m_ext;
            const bool done = next_lambda(ls, rm);
            if (!std::isfinite(rm) || !std::isfinite(ls.lambda)) {
                add_message(p, "ARITHMETIC FAILURE IN THE SUMS OF THE MASS");
                p.factor_of_safety = 0;
                return;
            }
            p.lambda_coef = ls.lambda;
            if (done)
                break;
        }

    } catch (...) {
        stopped_in_setup();
        throw;
    }

    // Finish.
    p.factor_of_safety = float(f_s);
    if (!empty)
        p.unbalance_z =
            p.lateral_unbalance == 0 ? 0.0f : float(cz - lat_moment / double(p.lateral_unbalance));
    p.resisting_sum = float(sum_a1);
    p.thrust_ratio_mean = ratio_count > 0 ? float(double(p.thrust_ratio_mean) / ratio_count) : 0.0f;
    if (p.slide_volume != 0) {
        const double vol = p.slide_volume;
        p.vol_thrust_inside = float(double(p.vol_thrust_inside) / vol * 100);
        p.vol_thrust_middle = float(double(p.vol_thrust_middle) / vol * 100);
        p.vol_tension = float(double(p.vol_tension) / vol * 100);
        p.vol_overstressed = float(double(p.vol_overstressed) / vol * 100);
    }
    p.moment_other = float(double(p.moment_other) - m_ext);
    // The acceptability indices window is opened by the command that asked
    // for the solution, once, after the result panel.
    if (interactive)
        p.solve_interactive = 0;
}

void solve_spencer_mp(Project& p, Port& port)
{
    clear_equilibrium_residuals(p);
    TrialEnd end(p);
    solve_with_finite_results(p, port, solve);
    // Measured after the solver, which it leaves as it is; method 5 does not
    // seek moment equilibrium and is not measured. Nothing reads the
    // measurement of a search's trials (only a solution's report does), so a
    // search does not take it.
    if (p.factor_of_safety > 0 && (p.solution_method == 3 || p.solution_method == 4) && p.search.running == 0)
        compute_equilibrium_residuals(p);
}

} // namespace tobel
