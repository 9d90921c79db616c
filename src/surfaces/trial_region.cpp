#include "surfaces/trial_region.h"

namespace tobel {

MeshStamp mesh_stamp(const Project& p)
{
    MeshStamp s;
    s.rows = p.num_rows;
    s.cols = p.num_cols;
    s.planes = p.zgrid.planes;
    s.layers = p.num_layers;
    s.sliding = p.sliding_index;
    s.method = p.solution_method;
    s.kind = p.surface_kind;
    s.row_spacing = p.row_spacing;
    s.col_spacing = p.col_spacing;
    s.x_min = p.x_min;
    s.y_min = p.y_min;
    s.storage = reinterpret_cast<std::uintptr_t>(p.zgrid.v.data());
    return s;
}

bool work_record_holds(const Project& p)
{
    // Only a running search keeps the geometry still from one trial to the
    // next: the forms and commands change the grids in place, so anywhere
    // else every trial goes over the whole mesh.
    return p.search.running != 0 && p.work.known && p.work.stamp == mesh_stamp(p);
}

bool trials_may_be_bounded(const Project& p)
{
    return p.surface_kind == 1 && p.solution_method != 5 && !(p.crack_mode == 2 && p.crack_depth < 0);
}

bool trial_bounded(const Project& p)
{
    return p.work.armed && p.surface_kind == 1 && work_record_holds(p);
}

NodeBox trial_region(const Project& p)
{
    return trial_bounded(p) ? p.work.region : whole_mesh(p.num_rows, p.num_cols);
}

NodeBox solve_region(const Project& p)
{
    return trial_bounded(p) ? p.work.visit : whole_mesh(p.num_rows, p.num_cols);
}

NodeBox result_region(const Project& p)
{
    return work_record_holds(p) ? p.work.dirty : whole_mesh(p.num_rows, p.num_cols);
}

} // namespace tobel
