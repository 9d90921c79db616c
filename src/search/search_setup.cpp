#include "search/search_setup.h"

#include <cmath>

namespace tobel {

AutoSearchRecord load_auto_record(const Project& p)
{
    AutoSearchRecord r;
    r.auto_x = p.search_x;
    r.auto_y = p.auto_y;
    r.auto_z = p.auto_z;
    r.auto_step = p.auto_spacing;
    r.auto_tangent_z = p.tangent_z;
    r.auto_radius_step = p.auto_tan_spacing;
    r.auto_aspect = p.aspect_in;
    r.auto_point_y = p.common_y;
    r.auto_point_z = p.common_z;
    return r;
}

GridSearchRecord load_grid_record(const Project& p)
{
    GridSearchRecord r;
    r.grid_x = p.search_x;
    r.grid_y1 = p.grid_y_ul;
    r.grid_z_top = p.grid_z_ul;
    r.grid_tangent_z = p.tangent_z;
    r.grid_aspect = p.aspect_in;
    r.grid_y2 = p.grid_y_lr;
    r.grid_z_bottom = p.grid_z_lr;
    r.grid_radius_step = p.grid_tan_spacing;
    r.grid_ny = p.grid_n_y;
    r.grid_nz = p.grid_n_z;
    r.grid_point_y = p.common_y;
    r.grid_point_z = p.common_z;
    if (r.grid_z_bottom < r.grid_tangent_z)
        r.grid_z_bottom = r.grid_tangent_z;
    if (r.grid_ny == 0)
        r.grid_ny = 5;
    return r;
}

static float distance_yz(float y, float z, float py, float pz)
{
    const double dy = double(y) - double(py), dz = double(z) - double(pz);
    return float(std::sqrt(dy * dy + dz * dz));
}

void store_auto_record(Project& p, const AutoSearchRecord& r)
{
    p.search_x = r.auto_x;
    p.auto_y = r.auto_y;
    p.auto_z = r.auto_z;
    p.auto_spacing = r.auto_step;
    p.tangent_z = r.auto_tangent_z;
    p.auto_tan_spacing = r.auto_radius_step;
    p.aspect_in = r.auto_aspect;
    p.common_y = r.auto_point_y;
    p.common_z = r.auto_point_z;
    p.radius_in = p.auto_use_common != 0 ? distance_yz(p.auto_y, p.auto_z, p.common_y, p.common_z)
                                         : p.auto_z - p.tangent_z;
}

void store_grid_record(Project& p, const GridSearchRecord& r)
{
    p.search_x = r.grid_x;
    p.grid_y_ul = r.grid_y1;
    p.grid_z_ul = r.grid_z_top;
    p.tangent_z = r.grid_tangent_z;
    p.aspect_in = r.grid_aspect;
    p.grid_y_lr = r.grid_y2;
    p.grid_z_lr = r.grid_z_bottom;
    p.grid_tan_spacing = r.grid_radius_step;
    p.grid_n_y = r.grid_ny;
    p.grid_n_z = r.grid_nz;
    p.common_y = r.grid_point_y;
    p.common_z = r.grid_point_z;
    p.radius_in = p.grid_use_common != 0 ? distance_yz(p.grid_y_ul, p.grid_z_ul, p.common_y, p.common_z)
                                         : p.grid_z_ul - p.tangent_z;
}

bool auto_record_blank(const AutoSearchRecord& r)
{
    return r.auto_y == 0 && r.auto_z == 0;
}

bool grid_record_blank(const GridSearchRecord& r)
{
    return r.grid_y1 == 0 && r.grid_z_top == 0 && r.grid_y2 == 0 && r.grid_z_bottom == 0;
}

void apply_auto_defaults(const Project& p, AutoSearchRecord& r, const WorldWindow& w)
{
    const double zlo = w.win_bottom, zr = double(w.win_top) - double(w.win_bottom);
    r.auto_tangent_z = float(zlo + zr * 7 / 25);
    r.auto_z = float(zlo + zr * 5 / 6);
    r.auto_y = float(double(p.y_min) + (double(p.y_max) - double(p.y_min)) / 5);
    r.auto_step = float(std::fabs(double(w.win_right) - double(w.win_left)) / 70);
    r.auto_point_y = r.auto_y;
    r.auto_point_z = r.auto_tangent_z;
}

void apply_grid_defaults(const Project& p, GridSearchRecord& r, const WorldWindow& w)
{
    const double zlo = w.win_bottom, zr = double(w.win_top) - double(w.win_bottom);
    const double ex = p.vert_exag;
    r.grid_tangent_z = float((zlo + zr * 7 / 25) / ex);
    r.grid_z_top = float((zlo + zr * 5 / 6) / ex);
    r.grid_z_bottom = float(double(r.grid_z_top) - zr / 8 / ex);
    r.grid_y1 = float(double(p.y_min) + (double(p.y_max) - double(p.y_min)) / 5);
    r.grid_y2 = float(double(r.grid_y1) + (double(r.grid_z_top) - double(r.grid_z_bottom)));
    r.grid_ny = 6;
    r.grid_nz = 5;
    r.grid_point_y = r.grid_y1;
    r.grid_point_z = r.grid_tangent_z;
}

} // namespace tobel
