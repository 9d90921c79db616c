#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/equilibrium_residuals.h"
#include "solver/spencer_mp.h"
#include "solver_fixture.h"
#include "support/scripted_port.h"

namespace tobel::test {
namespace {

static std::unique_ptr<Project> sphere(int n, double yc, double zc, double rad, double phi, double coh, bool face)
{
    SolverMesh m;
    m.rows = n;
    m.cols = n;
    m.x_max = 100;
    m.y_max = 100;
    auto p = make_solver_project(m);
    p->solution_method = 3;
    p->mat_unit_weight[1] = 20;
    p->mat_cohesion[1] = float(coh);
    p->mat_phi[1] = float(phi);
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            const double y = double(p->y_min) + (c - 1) * double(p->col_spacing);
            double z = 0.5 * y;
            if (face)
                z = y < 20 ? 10 : (y > 80 ? 40 : 10 + 0.5 * (y - 20));
            p->zgrid(r, c, 1) = float(z);
        }
    p->ell_x = 50;
    p->ell_y = float(yc);
    p->ell_z = float(zc);
    p->ell_radius = float(rad);
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    return p;
}

static double ground_at(bool face, double y)
{
    if (!face)
        return 0.5 * y;
    return y < 20 ? 10 : (y > 80 ? 40 : 10 + 0.5 * (y - 20));
}

TEST(explore, sphere)
{
    const char* env = std::getenv("EXPLORE");
    if (!env)
        GTEST_SKIP();
    int n = 41, face = 0, method = 3;
    double rad = 30, phi = 20, coh = 10, y0 = 30, y1 = 70, dy = 5;
    std::sscanf(env, "%d %d %d %lf %lf %lf %lf %lf %lf", &n, &face, &method, &rad, &phi, &coh, &y0, &y1, &dy);
    const double ds[] = {-4, -2, -1, -0.5, 0, 0.25, 0.5, 1, 1.5, 2, 3, 4, 6};
    for (double yc = y0; yc <= y1 + 1e-9; yc += dy)
        for (double d : ds) {
            const double zc = ground_at(face != 0, yc + rad) + d;
            auto p = sphere(n, yc, zc, rad, phi, coh, face != 0);
            p->solution_method = int16(method);
            check_surface(*p);
            if (p->surface_out_flag != 0)
                continue;
            p->solve_interactive = 0;
            ScriptedPort port;
            solve_spencer_mp(*p, port);
            const EquilibriumSums e = equilibrium_sums(*p);
            std::printf("yc %.2f d %.2f F %.4f lam %.4f it %d fres %.5f mres %.5f rm %.5f cols %d box %zu\n", yc, d,
                        p->factor_of_safety, p->lambda_coef, p->iteration_count, p->force_residual,
                        p->moment_residual, (p->moment_shear + p->moment_other) / std::abs(e.driving_moment),
                        p->active_columns, port.boxes.size());
        }
}

} // namespace
} // namespace tobel::test
