#include "dialogs/general_surface_form.h"

#include <cstddef>

#include "geometry/grid_file.h"
#include "geometry/interpolation.h"
#include "graphics/surface_view.h"
#include "project/menus.h"
#include "surfaces/crack.h"
#include "surfaces/dips.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/grid_surface.h"
#include "surfaces/moment_centre.h"

namespace tobel {

static std::size_t sliding(const Project& p)
{
    return std::size_t(p.sliding_index);
}

static void draw_surface(Project& p, Port& port)
{
    show_surface_view(p, port, p.sliding_index);
}

GeneralSurfaceForm open_general_surface_form(Project& p)
{
    if (p.surf_method[sliding(p)] != 1)
        clear_sliding_surface(p);
    GeneralSurfaceForm form;
    form.method = p.surf_method[sliding(p)] == 1 ? 1 : 0;
    form.grd_file = form.method == 1 ? p.surf_grd_file[sliding(p)] : std::string();
    return form;
}

GeneralNext choose_general_method(Project& p, GeneralSurfaceForm& form, int method, Port& port)
{
    if (method != 0 && method != 1)
        return GeneralNext::stays_open;
    form.method = method;
    p.surf_method[sliding(p)] = int16(method);
    if (method == 0) {
        // The file field is not in use and shows nothing.
        form.grd_file.clear();
        return GeneralNext::stays_open;
    }
    form.grd_file = p.surf_grd_file[sliding(p)];
    if (form.grd_file.empty())
        return choose_general_grid_file(p, form, port);
    return GeneralNext::stays_open;
}

GeneralNext choose_general_grid_file(Project& p, GeneralSurfaceForm& form, Port& port)
{
    if (form.method != 1)
        return GeneralNext::stays_open;
    const auto path = port.open_file_dialog(general_grid_filter, form.grd_file);
    if (!path)
        return GeneralNext::stays_open;
    form.grd_file = *path;
    p.surf_grd_file[sliding(p)] = *path;
    // Reading the sliding plane does the whole closing sequence and ends with
    // form_mode 0; a file that was refused or wrong leaves the form open.
    const int16 mode_before = p.form_mode;
    read_grid_file(p, *path, p.sliding_index, port);
    if (p.form_mode == 0 && mode_before != 0)
        return GeneralNext::closed;
    return GeneralNext::stays_open;
}

GeneralNext continue_general_surface_form(Project& p, const GeneralSurfaceForm& form, Port& port)
{
    if (p.surf_method[sliding(p)] != 1)
        interpolate_surface(p, p.sliding_index);
    p.surface_kind = 4;
    p.surface_defined = -1;

    if (form.method != 1)
        return GeneralNext::section_editor;

    if (p.form_mode == 4) {
        // Whatever the source of the plane, the composite interpolates its
        // lines as they stand before taking the dips.
        interpolate_surface(p, p.sliding_index);
        derive_dips(p);
        return GeneralNext::to_wedge_form;
    }
    show_solve_menu(p, SolveItems::single_trial, true);
    draw_surface(p, port);
    return GeneralNext::solved_ready;
}

void cancel_general_surface_form(Project& p)
{
    p.form_mode = 0;
}

} // namespace tobel
