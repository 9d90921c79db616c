#include "solver/column.h"

#include "project/runtime_error.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "project/lanes.h"
#include "project/numtext.h"
#include "report/messages.h"
#include "surfaces/base_trig.h"
#include "surfaces/trial_region.h"

namespace tobel {

std::string arithmetic_failure_text(int c, int r, int m)
{
    return "ARITHMETIC FAILURE IN COLUMN " + str(c) + " ROW " + str(r) + " MAT'L " + str(m);
}

static bool clear_if_non_finite(float& x)
{
    if (std::isfinite(x))
        return false;
    x = 0;
    return true;
}

// A scan that the compiler can vectorise: the exponent bits all set is an
// infinity or a NaN.
[[gnu::always_inline]] static inline bool any_non_finite_with(const float* x, std::size_t n)
{
    unsigned bad = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t b = std::bit_cast<std::uint32_t>(x[i]);
        bad |= unsigned((b & 0x7f800000u) == 0x7f800000u);
    }
    return bad != 0;
}

static bool any_non_finite_2(const float* x, std::size_t n)
{
    return any_non_finite_with(x, n);
}

// Eight floats at a time where the processor has AVX2.
TOBEL_LANES4_TARGET static bool any_non_finite_4(const float* x, std::size_t n)
{
    return any_non_finite_with(x, n);
}

static bool any_non_finite(const float* x, std::size_t n)
{
    return four_lanes_available() ? any_non_finite_4(x, n) : any_non_finite_2(x, n);
}

// The same over a row's span c0..c1 of a grid.
static bool any_non_finite(const Grid2<float>& g, int r, int c0, int c1)
{
    return c0 <= c1 && any_non_finite(&g.v[g.index(r, c0)], std::size_t(c1 - c0 + 1));
}

NonFiniteResult clear_non_finite_results(Project& p)
{
    NonFiniteResult first;
    // The nodes a trial's solve visits hold whatever it wrote; beyond them
    // every result is 0.
    const bool armed = trial_bounded(p);
    const NodeBox& b = p.work.visit;
    for (auto* g : {&p.col_weight, &p.col_area, &p.col_pore, &p.col_phi, &p.col_cohesion, &p.col_cos_gamma,
                    &p.col_normal, &p.col_fos, &p.col_lat_slope, &p.col_arm, &p.col_lateral_load,
                    &p.col_eff_thrust, &p.col_thrust_height, &p.col_shear_ratio}) {
        const int r0 = armed ? b.r0 : 0, r1 = armed ? b.r1 : g->rows;
        const int c0 = armed ? b.c0 : 0, c1 = armed ? b.c1 : g->cols;
        for (int r = r0; r <= r1; ++r) {
            if (!any_non_finite(*g, r, c0, c1))
                continue;
            for (int c = c0; c <= c1; ++c) {
                if (!clear_if_non_finite((*g)(r, c)))
                    continue;
                // The first in solving order: row by row, column by column.
                if (!first.found || r < first.r || (r == first.r && c < first.c)) {
                    first.found = true;
                    first.r = r;
                    first.c = c;
                }
            }
        }
    }
    if (first.found) {
        const int l = p.col_material(first.r, first.c);
        first.m = l >= 1 && l <= p.num_layers ? working_material(p, l, first.r, first.c) : l;
    }
    for (auto* v : {&p.head_water_force, &p.head_water_z, &p.crack_water_force, &p.crack_water_z, &p.row_coef,
                    &p.row_thrust_arm}) {
        if (!any_non_finite(v->data(), v->size()))
            continue;
        for (float& x : *v)
            first.found = clear_if_non_finite(x) || first.found;
    }
    for (float* x : {&p.factor_of_safety,   &p.janbu_fos,        &p.slide_weight,     &p.slide_area,
                     &p.slide_volume,       &p.lambda_coef,      &p.neg_normal_sum,   &p.ext_vertical_sum,
                     &p.ext_horizontal_sum, &p.head_water_sum,   &p.crack_water_sum,  &p.lateral_unbalance,
                     &p.unbalance_z,        &p.moment_shear,     &p.moment_other,     &p.resisting_sum,
                     &p.thrust_ratio_mean,  &p.thrust_ratio_min, &p.thrust_ratio_max, &p.vol_thrust_inside,
                     &p.vol_thrust_middle,  &p.vol_tension,      &p.vol_overstressed, &p.weight_flat,
                     &p.weight_positive,    &p.weight_negative,  &p.thrust_positive})
        first.found = clear_if_non_finite(*x) || first.found;
    return first;
}

int working_material(const Project& p, int l, int r, int c)
{
    const int code = p.disc_code(r, c);
    // Water, a layer of no strength, is never replaced by a discontinuity.
    if ((p.mat_cohesion[l] != 0 || p.mat_phi[l] != 0) && code > 0)
        return p.num_layers + code;
    return l;
}

// A discontinuity code with no entry in the material table stops the
// solution like any other run-time failure at the column.
static bool in_material_table(int m)
{
    return m >= 1 && m <= material_capacity;
}

static void clear_node(Project& p, int r, int c, ColumnRow& row)
{
    if (row.continuity != 0)
        ++row.passages;
    row.continuity = 0;
    p.col_weight(r, c) = 0;
    p.col_cohesion(r, c) = 0;
    p.col_area(r, c) = 0;
    p.col_pore(r, c) = 0;
    p.col_phi(r, c) = 0;
    p.col_cos_gamma(r, c) = 0;
    p.col_normal(r, c) = 0;
    p.col_fos(r, c) = 0;
}

bool column_strength(Project& p, int r, int c, int m, double sigma, bool guard_power)
{
    const int type = material_type(p, m);
    double phi = 0, coh = 0;
    switch (type) {
    case 3: {
        // The power law tau = A sc (s / sc + D)^B replaced by its tangent at s.
        const double sc = p.mat_uniaxial[m];
        if (sc == 0)
            return false;
        const double a = p.mat_coef_a[m], b = p.mat_coef_b[m];
        double x = sigma / sc;
        if (x < 0)
            x = 0;
        const double y = x + double(p.mat_coef_d[m]);
        const double tau = a * sc * std::pow(y, b);
        const double tan_phi = (guard_power && !(y > 0)) ? 0.0 : b * a * std::pow(y, b - 1);
        phi = std::atan(tan_phi);
        coh = tau - sigma * tan_phi;
        if (!std::isfinite(phi) || !std::isfinite(coh))
            return false;
        break;
    }
    case 2: {
        // Polar ellipse between the horizontal and the vertical values.
        const double cg = p.col_cos_gamma(r, c);
        const double c2 = cg * cg;
        const double ph = p.mat_phi[m], pv = p.mat_phi_v[m];
        if (ph == 0 || pv == 0) {
            phi = 0;
        } else {
            const double rho = pv / ph;
            phi = double(p.deg_to_rad) * pv / std::sqrt(1 - c2 * (1 - rho * rho));
        }
        const double ch = p.mat_cohesion[m], cv = p.mat_cohesion_v[m];
        if (ch == 0 || cv == 0) {
            coh = 0;
        } else {
            const double rho = cv / ch;
            coh = cv / std::sqrt(1 - c2 * (1 - rho * rho));
        }
        if (!std::isfinite(phi) || !std::isfinite(coh))
            return false;
        break;
    }
    case 4:
        // A hard layer keeps whatever strength the node held.
        return true;
    default:
        phi = double(p.deg_to_rad) * double(p.mat_phi[m]);
        coh = p.mat_cohesion[m];
        break;
    }
    p.col_phi(r, c) = float(phi);
    p.col_cohesion(r, c) = float(coh);
    return true;
}

// Weight through the layers from the top down; leaves the base layer in `l`
// and the top of that layer in `t`.
[[gnu::always_inline]] static inline double weight_down_to(const Project& p, int r, int c, double zs, int& l,
                                                           double& t)
{
    double q = 0;
    l = 1;
    t = p.zgrid(r, c, 1);
    for (int i = 1; i <= p.num_layers; ++i) {
        l = p.num_layers - i + 1;
        t = p.zgrid(r, c, l);
        // The lowest layer reaches down to a fixed floor of the model.
        const double b = l == 1 ? -10000.0 : double(p.zgrid(r, c, l - 1));
        if (zs == t || (zs < t && zs > b))
            break;
        q += double(p.mat_unit_weight[l]) * (t - b);
    }
    return q;
}

[[gnu::always_inline]] static inline bool pore_pressure(const Project& p, int r, int c, int l, int m,
                                                        const ColumnScratch& s, double q, double& u)
{
    const float piezo = p.mat_piezo[m];
    if (piezo < 0) {
        const long k = long(p.num_layers) - cint(piezo);
        if (k < 1 || k > p.zgrid.planes)
            return false;
        u = (double(p.zgrid(r, c, int(k))) - s.zs) * double(p.unit_weight_water);
        if (u < 0)
            u = 0;
    } else {
        u = q * double(piezo);
    }
    // Loading of the base by the top layer, when the base lies under it.
    if (p.mat_bbar[m] != 0 && l < p.num_layers)
        u = u + (s.zg - double(p.zgrid(r, c, p.num_layers - 1))) * double(p.mat_unit_weight[p.num_layers]) *
                    double(p.mat_bbar[m]);
    return true;
}

// dense_row_setup with the base's roots and divisions worked a lane type V
// at a time.
template <class V>
[[gnu::always_inline]] static inline bool dense_row_setup_with(const Project& p, int r, int c0, int c1,
                                                               DenseRow& d)
{
    const int nl = p.num_layers, si = p.sliding_index;
    const double a = double(p.row_spacing) * double(p.col_spacing);
    // The arrays hold the whole span, so that no node is appended one by one.
    const std::size_t span = c1 >= c0 ? std::size_t(c1 - c0 + 1) : 0;
    if (d.col.size() < span) {
        for (auto* v : {&d.col, &d.layer, &d.material})
            v->resize(span);
        d.at.resize(span);
        for (auto* v : {&d.zs, &d.zg, &d.sin_a, &d.cos_a, &d.tan_b, &d.tan_a, &d.sin_b, &d.cos_b})
            v->resize(span);
        for (auto* v : {&d.cos_gamma, &d.lat_slope, &d.area, &d.pore, &d.weight, &d.phi, &d.coh})
            v->resize(span);
    }
    // 1. The active nodes of the span.
    std::size_t n = 0;
    for (int c = c0; c <= c1; ++c) {
        const double zs = p.zgrid(r, c, si), zg = p.zgrid(r, c, nl);
        if (std::abs(zs - zg) >= 0.001) {
            d.col[n] = c;
            d.zs[n] = zs;
            d.zg[n] = zg;
            ++n;
        }
    }
    d.n = n;
    // 2. The base: its dips' functions, then cos(gamma), the lateral slope and
    // the area two nodes at a time, for their roots and divisions take long.
    for (std::size_t k = 0; k < n; ++k) {
        const int c = d.col[k];
        const std::size_t at = p.col_weight.index(r, c);
        d.at[k] = at;
        const BaseTrig bt = node_base_trig(p.work, r, c, p.surf_dip_x.v[at], p.surf_dip_y.v[at]);
        d.sin_a[k] = bt.sin_a;
        d.cos_a[k] = bt.cos_a;
        d.tan_b[k] = bt.tan_b;
        d.tan_a[k] = bt.tan_a;
        d.sin_b[k] = bt.sin_b;
        d.cos_b[k] = bt.cos_b;
    }
    in_lanes<V>(n, [&](std::size_t i, std::size_t lanes) TOBEL_LANE_BODY {
        const V tb = load_lanes<V>(d.tan_b.data(), i, lanes), ta = load_lanes<V>(d.tan_a.data(), i, lanes);
        const V sa = load_lanes<V>(d.sin_a.data(), i, lanes), ca = load_lanes<V>(d.cos_a.data(), i, lanes);
        const V sb = load_lanes<V>(d.sin_b.data(), i, lanes), cb = load_lanes<V>(d.cos_b.data(), i, lanes);
        const V cg = 1.0 / sqrt_lanes(tb * tb + ta * ta + 1.0);
        const V lat = cg * tb;
        const V area = a * sqrt_lanes(1 - sa * sa * sb * sb) / cb / ca;
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            d.cos_gamma[i + lane] = float(cg[lane]);
            d.lat_slope[i + lane] = float(lat[lane]);
            d.area[i + lane] = float(area[lane]);
        }
    });
    for (std::size_t k = 0; k < n; ++k)
        if (!(d.area[k] != 0) || !std::isfinite(d.area[k]))
            return false;
    // 3. Weight through the layers, material, pore pressure and strength.
    ColumnScratch s;
    for (std::size_t k = 0; k < n; ++k) {
        const int c = d.col[k];
        const std::size_t at = d.at[k];
        int l = 1;
        double t = 0;
        double q = weight_down_to(p, r, c, d.zs[k], l, t);
        const int m = working_material(p, l, r, c);
        if (!in_material_table(m) || material_type(p, m) != 1)
            return false;
        const float phi = float(double(p.deg_to_rad) * double(p.mat_phi[m]));
        const float coh = p.mat_cohesion[m];
        if (phi == 0 && coh == 0) // a submerged head
            return false;
        d.layer[k] = l;
        d.material[k] = m;
        d.phi[k] = phi;
        d.coh[k] = coh;
        q = q + double(p.mat_unit_weight[l]) * (t - d.zs[k]);
        s.zs = d.zs[k];
        s.zg = d.zg[k];
        double u = 0;
        if (!pore_pressure(p, r, c, l, m, s, q, u) || !std::isfinite(u))
            return false;
        d.pore[k] = float(u);
        d.weight[k] = float(double(p.col_weight.v[at]) + q * a);
        if (!std::isfinite(d.weight[k]))
            return false;
    }
    return true;
}

static bool dense_row_setup_2(const Project& p, int r, int c0, int c1, DenseRow& d)
{
    return dense_row_setup_with<Double2>(p, r, c0, c1, d);
}

TOBEL_LANES4_TARGET static bool dense_row_setup_4(const Project& p, int r, int c0, int c1, DenseRow& d)
{
    return dense_row_setup_with<Double4>(p, r, c0, c1, d);
}

bool dense_row_setup(const Project& p, int r, int c0, int c1, DenseRow& d)
{
    return take_four_lanes(p.work.two_lanes) ? dense_row_setup_4(p, r, c0, c1, d)
                                             : dense_row_setup_2(p, r, c0, c1, d);
}

void clear_inactive_span(Project& p, int r, int c0, int c1, const NodeBox& stale, ColumnRow& row,
                         bool bishop_janbu)
{
    if (c0 > c1)
        return;
    if (row.continuity != 0)
        ++row.passages;
    row.continuity = 0;
    // The weight an external force may have put there.
    const std::size_t at0 = p.col_weight.index(r, c0), at1 = p.col_weight.index(r, c1);
    std::fill(p.col_weight.v.begin() + std::ptrdiff_t(at0), p.col_weight.v.begin() + std::ptrdiff_t(at1) + 1,
              0.0f);
    // Spencer and Morgenstern-Price: no interslice function where there is no column.
    if (!bishop_janbu)
        for (int c = c0; c <= c1; ++c)
            p.zgrid(r, c, p.sliding_index + 1) = 0;
    if (!stale.has_row(r))
        return;
    const int s0 = std::max(c0, stale.c0), s1 = std::min(c1, stale.c1);
    if (s0 > s1)
        return;
    const std::size_t b0 = p.col_weight.index(r, s0), b1 = p.col_weight.index(r, s1) + 1;
    auto zero = [&](Grid2<float>& g) {
        std::fill(g.v.begin() + std::ptrdiff_t(b0), g.v.begin() + std::ptrdiff_t(b1), 0.0f);
    };
    for (auto* g :
         {&p.col_cohesion, &p.col_area, &p.col_pore, &p.col_phi, &p.col_cos_gamma, &p.col_normal, &p.col_fos})
        zero(*g);
    if (bishop_janbu) {
        for (auto* g : {&p.col_lat_slope, &p.col_arm, &p.col_lateral_load})
            zero(*g);
    } else {
        for (auto* g : {&p.col_eff_thrust, &p.col_shear_ratio})
            zero(*g);
    }
}

bool skip_clean_node(Project& p, int r, int c, const NodeBox& stale, ColumnRow& row, bool bishop_janbu)
{
    if (stale.has(r, c))
        return false;
    const double zs = p.zgrid(r, c, p.sliding_index), zg = p.zgrid(r, c, p.num_layers);
    if (std::abs(zs - zg) >= 0.001)
        return false;
    clear_inactive_span(p, r, c, c, stale, row, bishop_janbu);
    return true;
}

ColumnOutcome evaluate_column(Project& p, int r, int c, const ColumnSwitches& sw, ColumnRow& row,
                              ColumnScratch& s)
{
    const int nl = p.num_layers, si = p.sliding_index;
    bool removed = false;
    for (;;) {
        const float zg_f = p.zgrid(r, c, nl);
        s.zs = p.zgrid(r, c, si);
        s.zg = zg_f;
        if (!(std::abs(s.zs - s.zg) >= 0.001)) {
            clear_node(p, r, c, row);
            return removed ? ColumnOutcome::head_removed : ColumnOutcome::inactive;
        }
        ++p.active_columns;
        ++row.active;
        // The sines, cosines and tangents of the stored dips; those of an
        // ellipsoid's slide come worked out with the surface.
        const BaseTrig bt = node_base_trig(p.work, r, c, p.surf_dip_x(r, c), p.surf_dip_y(r, c));
        s.sin_a = bt.sin_a;
        s.cos_a = bt.cos_a;
        s.tan_b = bt.tan_b;

        if (sw.setup) {
            s.tan_a = bt.tan_a;
            const double cg = 1.0 / std::sqrt(s.tan_b * s.tan_b + s.tan_a * s.tan_a + 1.0);
            p.col_cos_gamma(r, c) = float(cg);
            if (sw.bishop_janbu)
                p.col_lat_slope(r, c) = float(cg * s.tan_b);
            s.sin_b = bt.sin_b;
            s.cos_b = bt.cos_b;
            const double a = double(p.row_spacing) * double(p.col_spacing);
            const double area = a * std::sqrt(1 - s.sin_a * s.sin_a * s.sin_b * s.sin_b) / s.cos_b / s.cos_a;
            p.col_area(r, c) = float(area);

            int l = 1;
            double t = 0;
            double q = weight_down_to(p, r, c, s.zs, l, t);
            p.col_material(r, c) = l;
            s.layer = l;
            s.material = working_material(p, l, r, c);
            if (!in_material_table(s.material))
                return ColumnOutcome::failed;
            // The unit weight is the layer's, never the discontinuity's.
            q = q + double(p.mat_unit_weight[l]) * (t - s.zs);
            double u = 0;
            if (!pore_pressure(p, r, c, l, s.material, s, q, u))
                return ColumnOutcome::failed;
            p.col_pore(r, c) = float(u);
            // External vertical forces were put into col_weight at the start of the pass.
            p.col_weight(r, c) = float(double(p.col_weight(r, c)) + q * a);
            s.weight = p.col_weight(r, c);
            p.slide_weight = float(double(p.slide_weight) + s.weight);
            p.slide_area = float(double(p.slide_area) + double(p.col_area(r, c)));
            p.slide_volume = float(double(p.slide_volume) + (s.zg - s.zs) * a);
            if (sw.hooks != nullptr)
                sw.hooks->column_solved(p, r, c, s.material, l);
            if (!(p.col_area(r, c) != 0) || !std::isfinite(p.col_area(r, c)) || !std::isfinite(s.weight) ||
                !std::isfinite(u))
                return ColumnOutcome::failed;
        } else {
            s.layer = p.col_material(r, c);
            s.material = working_material(p, s.layer, r, c);
            if (!in_material_table(s.material))
                return ColumnOutcome::failed;
        }

        const int m = s.material;
        double sigma = 0;
        if (p.mat_type[m] == 3) {
            if (sw.setup)
                sigma = double(p.col_weight(r, c)) / double(p.col_area(r, c)) * s.cos_b * s.cos_a *
                        sw.sigma_factor;
            else
                sigma = p.col_normal(r, c);
        }
        if (!column_strength(p, r, c, m, sigma, sw.bishop_janbu))
            return ColumnOutcome::failed;

        if (sw.head_test) {
            if (p.col_phi(r, c) == 0 && p.col_cohesion(r, c) == 0) {
                // No strength: the water in a submerged head, not part of the mass.
                const double h = s.zg - s.zs;
                p.zgrid(r, c, si) = zg_f;
                p.head_water_force[std::size_t(r)] =
                    float(-h * h * double(p.mat_unit_weight[m]) * double(p.row_spacing) / 2);
                p.head_water_z[std::size_t(r)] = float(s.zs + h / 3);
                p.head_water_x[std::size_t(r)] = float(double(r) * double(p.row_spacing));
                p.head_water_y[std::size_t(r)] =
                    float(double(p.y_min) + double(c - 1) * double(p.col_spacing));
                if (sw.bishop_janbu) {
                    if (row.active > 1)
                        add_message(p, "HEAD OF SLIDE SUBMERGED.  USE SUBMERGED WEIGHTS.");
                    --row.active;
                }
                s.head_h = h;
                removed = true;
                continue;
            }
            if (row.continuity == 0 && row.passages > 0)
                add_message(p, "SLIDING MASS IS DISCONTINUOUS IN ROW " + str(r));
            row.continuity = 1;
        }
        return ColumnOutcome::active;
    }
}

void solve_with_finite_results(Project& p, Port& port, void (*solver)(Project&, Port&))
{
    try {
        solver(p, port);
    } catch (const RuntimeError&) {
        clear_non_finite_results(p);
        throw;
    }
    const NonFiniteResult bad = clear_non_finite_results(p);
    if (bad.found && p.factor_of_safety != 0) {
        add_message(p, bad.c == 0 ? std::string("ARITHMETIC FAILURE IN THE SUMS OF THE MASS")
                                  : arithmetic_failure_text(bad.c, bad.r, bad.m));
        p.factor_of_safety = 0;
        p.janbu_fos = 0;
    }
}

} // namespace tobel
