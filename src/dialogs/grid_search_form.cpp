#include "dialogs/grid_search_form.h"

#include "graphics/section_views.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"

namespace tobel {

SearchBlockCaptions search_block_captions(int common_point)
{
    if (common_point != 0)
        return {"Change to Common Tangent", "Common Point Coordinates:", "Y-Coordinate", "Z-Coordinate"};
    return {"Change to Common Point", "Common Tangent Planes:", "Initial Elevation", "Spacing"};
}

std::string search_mesh_x_line(const Project& p)
{
    return "Mesh X = " + format(p.x_min, "####0.#") + " to " + format(p.x_max, "####0.#");
}

GridSearchForm open_grid_search_form(Project& p, const WorldWindow& picture)
{
    GridSearchForm form;
    // The proposals are for a grid never set, its stored corners all 0. The
    // load raises the lower Z to the tangent plane of a single ellipsoid set
    // before, which would otherwise hide that the grid itself is blank.
    GridSearchRecord stored;
    stored.grid_y1 = p.grid_y_ul;
    stored.grid_z_top = p.grid_z_ul;
    stored.grid_y2 = p.grid_y_lr;
    stored.grid_z_bottom = p.grid_z_lr;
    form.record = load_grid_record(p);
    if (grid_record_blank(stored))
        apply_grid_defaults(p, form.record, picture);
    form.common_point = p.grid_use_common != 0 ? 1 : 0;
    p.view_mode = 7;
    return form;
}

GridSearchForm open_grid_search_form(Project& p)
{
    return open_grid_search_form(p, longitudinal_section_window(p));
}

void grid_form_toggle_common(GridSearchForm& form)
{
    form.common_point = form.common_point != 0 ? 0 : 1;
}

float& grid_form_block(GridSearchForm& form, int which)
{
    GridSearchRecord& r = form.record;
    if (form.common_point != 0)
        return which == 1 ? r.grid_point_y : r.grid_point_z;
    return which == 1 ? r.grid_tangent_z : r.grid_radius_step;
}

void grid_form_enter_x(Project& p, GridSearchForm& form, std::string_view text)
{
    form.record.grid_x = float(val(text));
    p.view_row = section_row_of(p, form.record.grid_x);
}

float& grid_form_cell(GridSearchForm& form, int cell)
{
    GridSearchRecord& r = form.record;
    switch (cell) {
    case 2: return r.grid_y1;
    case 3: return r.grid_z_top;
    case 4: return r.grid_y2;
    case 5: return r.grid_z_bottom;
    case 6: return r.grid_ny;
    case 7: return r.grid_nz;
    case 8: return grid_form_block(form, 1);
    case 9: return grid_form_block(form, 2);
    case 10: return r.grid_aspect;
    default: return r.grid_x;
    }
}

void grid_form_enter(Project& p, GridSearchForm& form, int cell, std::string_view text)
{
    if (cell < 1 || cell > grid_form_cells)
        return;
    if (cell == 1)
        grid_form_enter_x(p, form, text);
    else
        grid_form_cell(form, cell) = float(val(text));
}

SearchFormNext finish_search_form(Project& p, Port& port, bool grid)
{
    p.ell_x = p.search_x;
    p.ell_y = grid ? p.grid_y_ul : p.auto_y;
    p.ell_z = grid ? p.grid_z_ul : p.auto_z;
    p.ell_radius = p.radius_in;
    p.ell_aspect = p.aspect_in;
    clear_sliding_surface(p);
    build_ellipsoid(p);
    if (p.form_mode == (grid ? 5 : 6))
        return SearchFormNext::to_wedge_form;
    p.surface_defined = -1;
    p.surface_kind = 1;
    apply_crack(p);
    scale_forces(p);
    show_solve_menu(p, grid ? SolveItems::grid_search : SolveItems::auto_search, false);
    // The section of the search line, as the form left view_row.
    p.view_mode = 1;
    p.pictures.section.caption = "LONGITUDINAL SECTION";
    if (port.draw_hooks() == nullptr) {
        port.show_view(1, "LONGITUDINAL SECTION");
    } else {
        find_force_peak(p);
        draw_longitudinal_section(p, port);
    }
    return SearchFormNext::search_ready;
}

SearchFormNext continue_grid_search_form(Project& p, const GridSearchForm& form, Port& port)
{
    p.grid_use_common = int16(form.common_point);
    store_grid_record(p, form.record);
    return finish_search_form(p, port, true);
}

} // namespace tobel
