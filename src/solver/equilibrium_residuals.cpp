#include "solver/equilibrium_residuals.h"

#include <cmath>

#include "project/numtext.h"
#include "solver/trial_end.h"
#include "surfaces/trial_region.h"

namespace tobel {

void clear_equilibrium_residuals(Project& p)
{
    p.force_residual = 0;
    p.moment_residual = 0;
    p.residuals_valid = 0;
}

EquilibriumSums equilibrium_sums(const Project& p)
{
    const int nl = p.num_layers, si = p.sliding_index;
    const double f = p.factor_of_safety, k = p.eq_coef;
    const double cy = p.centre_y, cz = p.centre_z;
    const double cs = p.col_spacing, ymin = p.y_min;

    // 1. The loads outside the columns: the horizontal parts of the applied
    // external forces and the water thrusts of the rows.
    double h_ext = 0, m_ext = 0;
    for (int n = 1; n <= p.num_forces; ++n) {
        if (p.force_h_ignored[std::size_t(n)] != 0)
            continue;
        h_ext -= double(p.force_h[std::size_t(n)]);
        m_ext += (double(p.force_z[std::size_t(n)]) - cz) * double(p.force_h[std::size_t(n)]);
    }
    // Beyond the nodes the trial's solve visits no node is active.
    const NodeBox region = solve_region(p);
    double head_sum = 0;
    for (int r = 1; r <= p.num_rows; ++r) {
        const std::size_t ri = std::size_t(r);
        const double wh = p.head_water_force[ri], wc = p.crack_water_force[ri];
        m_ext += (cz - double(p.head_water_z[ri])) * wh + (cz - double(p.crack_water_z[ri])) * wc;
        // The head thrust enters the force balance as the thrust into the row's first column.
        bool active_row = false;
        const int c_last = region.has_row(r) ? region.c1 : 0;
        for (int c = region.c0; c <= c_last && !active_row; ++c)
            active_row = std::abs(double(p.zgrid(r, c, si)) - double(p.zgrid(r, c, nl))) >= 0.001;
        if (active_row)
            head_sum += wh;
    }

    // 2. The columns, with the active test of the column evaluation.
    double resist_f = 0, load_f = 0, drive_f = 0;
    double resist_m = 0, load_m = 0;
    TanCache tan_cache; // columns of one material share their tan(phi)
    for (int r = region.r0; r <= region.r1; ++r) {
        for (int c = region.c0; c <= region.c1; ++c) {
            const double zs = p.zgrid(r, c, si), zg = p.zgrid(r, c, nl);
            if (!(std::abs(zs - zg) >= 0.001))
                continue;
            const double w = p.col_weight(r, c), area = p.col_area(r, c);
            const double n = double(p.col_normal(r, c)) * area;
            const double u = double(p.col_pore(r, c)) * area;
            const double coh = double(p.col_cohesion(r, c)) * area;
            const double t = tan_cache.of(p.col_phi(r, c));
            const double cg = p.col_cos_gamma(r, c);
            const double dip = p.surf_dip_y(r, c);
            const double sin_a = std::sin(dip), cos_a = std::cos(dip), tan_a = sin_a / cos_a;
            const double s = ((n - u) * t + coh) / f;
            const double n_vert = n * cg / cos_a;

            resist_f += s * cos_a;
            load_f += n_vert * sin_a + k * w;
            drive_f += w * cg * cg * tan_a + k * w;

            const double y = double(c) * cs + ymin;
            const double arm = y - cy, hc = cz - zs;
            const double pa = arm * cos_a - hc * sin_a;
            const double qa = arm * sin_a + hc * cos_a;
            const double em = hc - (zg - zs) / 2;
            resist_m += s * qa + n_vert * pa;
            load_m += w * (arm + k * em);
        }
    }

    EquilibriumSums e;
    e.force = resist_f - load_f - head_sum - h_ext;
    e.driving_force = drive_f + head_sum + h_ext;
    e.moment = resist_m - load_m - m_ext;
    e.driving_moment = load_m + m_ext;
    return e;
}

void compute_equilibrium_residuals(Project& p)
{
    clear_equilibrium_residuals(p);
    const EquilibriumSums e = equilibrium_sums(p);
    const double fr = e.force / std::abs(e.driving_force);
    const double mr = e.moment / std::abs(e.driving_moment);
    // No driving sum (an empty mass) gives no fraction to speak of.
    if (e.driving_force == 0 || e.driving_moment == 0 || !std::isfinite(fr) || !std::isfinite(mr))
        return;
    p.force_residual = fr;
    p.moment_residual = mr;
    p.residuals_valid = -1;
}

static std::string residual_text(const char* what, double fraction)
{
    return std::string(what) + " equilibrium not closed: residual " +
           format(std::abs(fraction) * 100, "##0.0") + " % of the driving " + what;
}

std::string equilibrium_warning(const Project& p)
{
    constexpr double limit = 0.01;
    if (p.residuals_valid != -1)
        return "";
    std::string text;
    if (std::abs(p.force_residual) > limit)
        text = residual_text("force", p.force_residual);
    if (std::abs(p.moment_residual) > limit)
        text += (text.empty() ? "" : "; ") + residual_text("moment", p.moment_residual);
    return text;
}

} // namespace tobel
