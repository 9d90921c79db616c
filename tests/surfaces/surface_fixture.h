// Small projects for the sliding surface tests: a mesh over given limits with
// a flat or shaped ground and an optional stack of layers below it.
#pragma once

#include <functional>
#include <memory>

#include "project/defaults.h"
#include "project/project.h"

namespace tobel::test {

struct MeshSpec {
    int rows = 11;
    int cols = 11;
    float x_min = 0, x_max = 10, y_min = 0, y_max = 10;
    int layers = 1;
    int piezos = 0;
    int discs = 0;
};

// A default project reshaped to the mesh. Spacings follow the data-entry rule:
// 1 across a two-dimensional problem.
inline std::unique_ptr<Project> make_project(const MeshSpec& m)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
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
    return p;
}

inline double node_x(const Project& p, int row)
{
    return double(p.x_min) + (row - 1) * double(p.row_spacing);
}
inline double node_y(const Project& p, int col)
{
    return double(p.y_min) + (col - 1) * double(p.col_spacing);
}

// Sets surface k at every node from a function of the node's X and Y.
inline void set_surface(Project& p, int k, const std::function<double(double, double)>& z)
{
    for (int row = 1; row <= p.num_rows; ++row)
        for (int col = 1; col <= p.num_cols; ++col)
            p.zgrid(row, col, k) = float(z(node_x(p, row), node_y(p, col)));
}

inline void set_ground(Project& p, const std::function<double(double, double)>& z)
{
    set_surface(p, p.num_layers, z);
}

inline float ground(const Project& p, int row, int col)
{
    return p.zgrid(row, col, p.num_layers);
}
inline float sliding(const Project& p, int row, int col)
{
    return p.zgrid(row, col, p.sliding_index);
}

} // namespace tobel::test
