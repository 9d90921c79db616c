#include "dialogs/interpolation_form.h"

#include "geometry/surface_stack.h"
#include "project/numtext.h"

namespace tobel {

static void clear_axis_unless_axisymmetric(InterpolationForm& form)
{
    if (form.method == 1 || form.method == 2) {
        form.axis_x_text = "0";
        form.axis_y_text = "0";
    }
}

InterpolationForm open_interpolation_form(const Project& p)
{
    InterpolationForm form;
    form.method = p.interp_method;
    form.axis_x_text = general_text(p.axis_y);
    form.axis_y_text = general_text(p.axis_z);
    // Selecting the option in force on opening acts as a click on it.
    clear_axis_unless_axisymmetric(form);
    return form;
}

void choose_method(Project& p, InterpolationForm& form, int method)
{
    form.method = method;
    p.interp_method = int16(method);
    clear_axis_unless_axisymmetric(form);
}

InterpolationNext continue_interpolation_form(Project& p, const InterpolationForm& form, Port& port)
{
    p.axis_y = float(val(form.axis_x_text));
    p.axis_z = float(val(form.axis_y_text));
    if (p.form_mode == 2)
        return InterpolationNext::to_materials;
    rebuild_surfaces(p, port);
    return InterpolationNext::rebuilt;
}

} // namespace tobel
