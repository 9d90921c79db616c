// The "Interpolation Method" form as logic: the option buttons "Orthogonal",
// "Oblique" and "Axisymmetric" and the two fields of "Coordinates of the
// vertical axis of rotation:", shown for Axisymmetric only.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

struct InterpolationForm {
    int method = 1;          // option chosen: 1 Orthogonal, 2 Oblique, 3 Axisymmetric
    std::string axis_x_text; // "X-coordinate", read into axis_y
    std::string axis_y_text; // "Y-coordinate", read into axis_z
};

// The form as it opens on the project: the option in force and the axis.
InterpolationForm open_interpolation_form(const Project& p);

// A click on an option: interp_method changes at once (Cancel does not undo
// it); Orthogonal and Oblique set both axis fields to "0".
void choose_method(Project& p, InterpolationForm& form, int method);

enum class InterpolationNext { rebuilt, to_materials };

// Continue: the axis fields go into axis_y and axis_z; then, unless the form
// was opened in the new data flow (form_mode 2), the surface stack is
// rebuilt and the caller draws the ground (isometric view, or the
// longitudinal section when num_rows is 1). In the new data flow the
// material form follows and nothing is rebuilt.
InterpolationNext continue_interpolation_form(Project& p, const InterpolationForm& form, Port& port);

} // namespace tobel
