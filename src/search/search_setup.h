// The parameter records of the two searches: working copies of the
// project's ellipsoid store, loaded when a search dialog opens or a search
// starts, stored on the dialog's Continue, and their first proposals.
#pragma once

#include "geometry/section_window.h"
#include "project/project.h"

namespace tobel {

struct AutoSearchRecord {
    float auto_x = 0; // search_x, read into ell_x
    float auto_y = 0; // starting centre
    float auto_z = 0;
    float auto_step = 0;        // auto_spacing, the step of the stencil
    float auto_tangent_z = 0;   // tangent_z, initial elevation of the tangent planes
    float auto_radius_step = 0; // auto_tan_spacing, spacing of the tangent planes
    float auto_aspect = 0;      // aspect_in, read into ell_aspect
    float auto_point_y = 0;     // common_y, common_z: the common point
    float auto_point_z = 0;
};

struct GridSearchRecord {
    float grid_x = 0;           // search_x
    float grid_y1 = 0;          // grid_y_ul
    float grid_z_top = 0;       // grid_z_ul
    float grid_tangent_z = 0;   // tangent_z
    float grid_aspect = 0;      // aspect_in
    float grid_y2 = 0;          // grid_y_lr
    float grid_z_bottom = 0;    // grid_z_lr
    float grid_radius_step = 0; // grid_tan_spacing
    float grid_ny = 0;          // grid_n_y
    float grid_nz = 0;          // grid_n_z
    float grid_point_y = 0;     // common_y
    float grid_point_z = 0;     // common_z
};

// The record from the project's fields. The grid record's lower Z is raised
// to the tangent elevation when it lies under it, and a count across of 0 is
// read as 5.
AutoSearchRecord load_auto_record(const Project& p);
GridSearchRecord load_grid_record(const Project& p);

// Stores the record in the project's fields, and radius_in: the centre's
// height over the tangent plane, or with the common point option the
// distance from the centre to the common point in the Y-Z plane.
void store_auto_record(Project& p, const AutoSearchRecord& r);
void store_grid_record(Project& p, const GridSearchRecord& r);

// Whether a record is still blank, so that it takes the first proposal:
// its centre (auto) or both corners (grid) are all 0.
bool auto_record_blank(const AutoSearchRecord& r);
bool grid_record_blank(const GridSearchRecord& r);

// First proposals from the limits of the section picture (Zlo, Zhi in drawn,
// exaggerated units). The grid's elevations are divided by vert_exag, the
// auto search's are not.
void apply_auto_defaults(const Project& p, AutoSearchRecord& r, const WorldWindow& picture);
void apply_grid_defaults(const Project& p, GridSearchRecord& r, const WorldWindow& picture);

} // namespace tobel
