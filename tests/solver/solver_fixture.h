// Small meshes for the solver tests, built directly: a mesh, a stack of
// layers, a sliding plane and its dips set node by node.
#pragma once

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

} // namespace tobel::test
