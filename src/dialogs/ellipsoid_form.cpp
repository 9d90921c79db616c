#include "dialogs/ellipsoid_form.h"

#include "dialogs/numeric_entry.h"
#include "graphics/drawing.h"
#include "graphics/setup_handles.h"
#include "graphics/surface_view.h"
#include "project/menus.h"
#include "project/numtext.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"

namespace tobel {

EllipsoidForm open_ellipsoid_form(const Project& p)
{
    EllipsoidForm form;
    form.value(field_x) = p.search_x;
    form.value(field_y) = p.single_y;
    form.value(field_z) = p.single_z;
    form.value(field_tangent) = p.tangent_z;
    form.value(field_aspect) = p.aspect_in;
    form.field = 1;
    return form;
}

void ellipsoid_form_key(EllipsoidForm& form, FieldKey key)
{
    if (key == FieldKey::up)
        --form.field;
    else
        ++form.field;
    if (form.field < 1)
        form.field = 1;
    if (form.field > 5)
        form.field = 5;
}

bool ellipsoid_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

void ellipsoid_form_enter(EllipsoidForm& form, int field, std::string_view text)
{
    if (field < 1 || field > 5)
        return;
    form.value(field) = float(val(text));
}

void ellipsoid_form_preview(Project& p, EllipsoidForm& form, double top, double bottom, double exaggeration)
{
    // The section shown is the mesh row nearest to the centre's X.
    const float rows_from_min = (form.value(field_x) - p.x_min) / p.row_spacing;
    long row = cint(double(rows_from_min)) + 1;
    if (row < 1)
        row = 1;
    p.view_row = int16(row);

    // First proposal. Y is half the span of the mesh, not its middle.
    if (form.value(field_y) == 0.0f && form.value(field_z) == 0.0f) {
        form.value(field_y) = (p.y_max - p.y_min) / 2.0f;
        form.value(field_z) = float(((top - bottom) / 2.0 + bottom) / exaggeration);
        form.value(field_tangent) = float(((top - bottom) / 5.0 + bottom) / exaggeration);
    }
}

// The section drawn again in the limits of the present zoom level, with the
// ellipsoid of the form over it.
static void draw_zoomed(Project& p, EllipsoidForm& form, Port& port)
{
    keep_world_window(p, form.zoom_windows[std::size_t(form.zoom_level)]);
    const int16 keep = p.keep_window;
    p.keep_window = -1;
    show_setup(p, port, {3, form.values, false});
    p.keep_window = keep;
}

void ellipsoid_form_zoom_out(Project& p, EllipsoidForm& form, Port& port)
{
    if (form.zoom_level <= 0)
        return;
    // Level 3 is what the section was last drawn in.
    if (form.zoom_level == ellipsoid_zoom_levels - 1)
        form.zoom_windows[std::size_t(form.zoom_level)] = {
            p.view.win_left, p.view.win_bottom, p.view.win_right, p.view.win_top, p.view.pick_unit};
    WorldWindow w = form.zoom_windows[std::size_t(form.zoom_level)];
    const float width = w.win_right - w.win_left, height = w.win_top - w.win_bottom;
    w.win_left -= width / 4;
    w.win_right += width / 4;
    w.win_bottom -= height / 4;
    w.win_top += height / 4;
    w.pick_unit = (w.win_right - w.win_left) / 100;
    --form.zoom_level;
    form.zoom_windows[std::size_t(form.zoom_level)] = w;
    form.zoom_out_enabled = form.zoom_level > 0;
    form.zoom_in_enabled = true;
    draw_zoomed(p, form, port);
}

void ellipsoid_form_zoom_in(Project& p, EllipsoidForm& form, Port& port)
{
    if (form.zoom_level >= ellipsoid_zoom_levels - 1)
        return;
    ++form.zoom_level;
    form.zoom_in_enabled = form.zoom_level < ellipsoid_zoom_levels - 1;
    form.zoom_out_enabled = true;
    draw_zoomed(p, form, port);
}

EllipsoidNext continue_ellipsoid_form(Project& p, const EllipsoidForm& form, Port& port)
{
    p.search_x = form.value(field_x);
    p.single_y = form.value(field_y);
    p.single_z = form.value(field_z);
    p.tangent_z = form.value(field_tangent);
    p.aspect_in = form.value(field_aspect);
    p.radius_in = form.value(field_z) - form.value(field_tangent);

    p.ell_x = p.search_x;
    p.ell_y = p.single_y;
    p.ell_z = p.single_z;
    p.ell_radius = p.radius_in;
    p.ell_aspect = p.aspect_in;

    clear_sliding_surface(p);
    build_ellipsoid(p);

    // A composite surface goes on to its wedge planes, which settle the kind.
    if (p.form_mode == 3)
        return EllipsoidNext::to_wedge_form;

    p.surface_defined = -1;
    p.surface_kind = 1;
    apply_crack(p);
    scale_forces(p);
    show_solve_menu(p, SolveItems::single_trial, p.num_rows >= 2);
    show_surface_view(p, port, p.sliding_index);
    return EllipsoidNext::solved_ready;
}

} // namespace tobel
