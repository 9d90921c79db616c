// Small meshes for the solver tests, built directly: a mesh, a stack of
// layers, a sliding plane and its dips set node by node.
#pragma once

#include <cmath>
#include <memory>

#include "project/defaults.h"
#include "project/project.h"
#include "surfaces/ellipsoid.h"

namespace tobel::test {

struct SolverMesh {
    int rows = 3;
    int cols = 5;
    float x_min = 0, x_max = 2, y_min = 0, y_max = 4;
    int layers = 1;
    int piezos = 0;
    int discs = 0;
};

// A default project reshaped to the mesh; spacings as the data entry sets
// them (1 across a single row).
inline std::unique_ptr<Project> make_solver_project(const SolverMesh& m)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->solution_method = 1;
    p->num_layers = int16(m.layers);
    p->num_piezos = int16(m.piezos);
    p->num_discs = int16(m.discs);
    derive_counts(*p);
    p->num_rows = int16(m.rows);
    p->num_cols = int16(m.cols);
    p->x_min = m.x_min;
    p->x_max = m.x_max;
    p->y_min = m.y_min;
    p->y_max = m.y_max;
    redim_grids(*p);
    p->row_spacing = m.rows > 1 ? float((double(m.x_max) - m.x_min) / (m.rows - 1)) : 1.0f;
    p->col_spacing = m.cols > 1 ? float((double(m.y_max) - m.y_min) / (m.cols - 1)) : 1.0f;
    for (int l = 1; l <= p->num_mat_entries; ++l)
        p->mat_type[l] = 1;
    return p;
}

// Sets surface k to z at every node.
inline void fill_plane(Project& p, int k, float z)
{
    for (int r = 1; r <= p.num_rows; ++r)
        for (int c = 1; c <= p.num_cols; ++c)
            p.zgrid(r, c, k) = z;
}

// A cohesive-frictional slope rising with Y (the mass moves towards -Y),
// tilted across by `tilt_x`, cut by a sphere of radius 30 centred at
// (50, 50, 39 + tilt): an n by n mesh over 0..100 both ways.
inline std::unique_ptr<Project> make_sphere_slope(int n, float phi = 0, float tilt_x = 0)
{
    SolverMesh m;
    m.rows = n;
    m.cols = n;
    m.x_max = 100;
    m.y_max = 100;
    auto p = make_solver_project(m);
    p->mat_unit_weight[1] = 18;
    p->mat_cohesion[1] = 20;
    p->mat_phi[1] = phi;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            const double x = double(p->x_min) + (r - 1) * double(p->row_spacing);
            const double y = double(p->y_min) + (c - 1) * double(p->col_spacing);
            p->zgrid(r, c, 1) = float(0.3 * y + tilt_x * (x - 50));
        }
    p->ell_x = 50;
    p->ell_y = 50;
    p->ell_z = 39;
    p->ell_radius = 30;
    p->ell_aspect = 1;
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    return p;
}

// Closed form of a purely cohesive slide rotating about an axis parallel to
// X. With phi = 0 every column's normal force passes through the axis of a
// circular (spherical) base, so the exact factor of a rigid rotation is
//     F = integral(c rho dA) / integral(gamma (z_g - z_s) (y - yc) dx dy),
// rho the distance of the base point from the axis, worked out strip by strip
// in X with the Y integrals in closed form.

// Ground z = z0 + s y rises with Y, so that the mass moves towards -Y, the
// direction of sliding. The sliding surface is the lower half of the
// ellipsoid of revolution about the axis through (xc, yc, zc) parallel to X,
// radius R in the Y-Z plane, semi-axis a R along X.
struct Slope {
    double z0 = 0, s = 0.3;
    double xc = 50, yc = 50, zc = 39, radius = 30, aspect = 1;
    double cohesion = 20, gamma = 18;
};

// The two closed-form integrals of one strip at dx = x - xc, per unit width.
inline void strip(const Slope& g, double dx, double& resisting, double& driving)
{
    resisting = driving = 0;
    const double a = g.aspect;
    const double rl2 = g.radius * g.radius - dx * dx / (a * a);
    if (rl2 <= 0)
        return;
    const double rl = std::sqrt(rl2);
    // Height of the centre over the ground at y = yc.
    const double d = g.zc - g.z0 - g.s * g.yc;
    // Cut of the circle z = zc - sqrt(rl^2 - u^2) with the ground, u = y - yc.
    const double disc = (1 + g.s * g.s) * rl2 - d * d;
    if (disc <= 0)
        return;
    const double u1 = (d * g.s - std::sqrt(disc)) / (1 + g.s * g.s);
    const double u2 = (d * g.s + std::sqrt(disc)) / (1 + g.s * g.s);
    // dA / (dx dy) = sqrt(1 + zx^2 + zy^2) = sqrt(rl^2 + dx^2 / a^4) / sqrt(rl^2 - u^2),
    // and the distance from the axis is rl on the whole strip.
    resisting = g.cohesion * rl * std::sqrt(rl2 + dx * dx / (a * a * a * a)) *
                (std::asin(u2 / rl) - std::asin(u1 / rl));
    // Thickness sqrt(rl^2 - u^2) - d + s u, times the arm u.
    auto prim = [&](double u) {
        return -std::pow(rl2 - u * u, 1.5) / 3 - d * u * u / 2 + g.s * u * u * u / 3;
    };
    driving = g.gamma * (prim(u2) - prim(u1));
}

inline double closed_form_3d(const Slope& g)
{
    const double half = g.radius * g.aspect;
    const int n = 400000;
    const double h = 2 * half / n;
    double res = 0, drv = 0;
    for (int i = 0; i < n; ++i) {
        const double dx = -half + (i + 0.5) * h;
        double r1 = 0, d1 = 0;
        strip(g, dx, r1, d1);
        res += r1 * h;
        drv += d1 * h;
    }
    return res / drv;
}

inline double closed_form_2d(const Slope& g)
{
    double r1 = 0, d1 = 0;
    strip(g, 0, r1, d1);
    return r1 / d1;
}

// The slope of Slope on an n by n mesh (one row of unit width in 2-D), cut by
// its ellipsoid, ready for a solver: purely cohesive, moment centre at the
// centre of rotation.
inline std::unique_ptr<Project> make_cohesive_slope(const Slope& g, int n, bool two_d, int method)
{
    SolverMesh m;
    m.rows = two_d ? 1 : n;
    m.cols = n;
    m.x_min = 0;
    m.x_max = two_d ? 1.0f : float(2 * g.xc);
    m.y_min = 0;
    m.y_max = float(2 * g.yc);
    auto p = make_solver_project(m);
    p->solution_method = int16(method);
    p->mat_unit_weight[1] = float(g.gamma);
    p->mat_cohesion[1] = float(g.cohesion);
    p->mat_phi[1] = 0;
    for (int r = 1; r <= p->num_rows; ++r)
        for (int c = 1; c <= p->num_cols; ++c) {
            const double y = double(p->y_min) + (c - 1) * double(p->col_spacing);
            p->zgrid(r, c, 1) = float(g.z0 + g.s * y);
        }
    p->ell_x = two_d ? p->x_min : float(g.xc);
    p->ell_y = float(g.yc);
    p->ell_z = float(g.zc);
    p->ell_radius = float(g.radius);
    p->ell_aspect = float(g.aspect);
    clear_sliding_surface(*p);
    build_ellipsoid(*p);
    return p;
}

} // namespace tobel::test
