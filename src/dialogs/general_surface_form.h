// The form "Assignment of General Sliding Surface Input Method" as logic: how
// the general sliding surface is given (from cross-sections or from an
// elevation grid file), and what follows its Continue, alone (form_mode 7) or
// as the first surface of a composite with wedges (form_mode 4).
#pragma once

#include <array>
#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* general_form_caption = "Assignment of General Sliding Surface Input Method";
constexpr const char* general_form_row_title = "Sliding Surface";
// Combo texts, at the position of surf_method.
constexpr std::array<const char*, 2> general_method_texts = {"Cross-section based ",
                                                             "Elevation grid .GRD file "};
constexpr const char* general_grid_filter = "Grid Files (*.GRD)|*.GRD";

struct GeneralSurfaceForm {
    int method = 0;       // 0 cross-section based, 1 elevation grid file
    std::string grd_file; // the "*.GRD File:" field
    bool file_enabled() const { return method == 1; }
};

// What the form leads to.
enum class GeneralNext {
    stays_open,     // the form is still shown
    closed,         // the form has closed with nothing further to open
    solved_ready,   // the surface is built and the Solve menu is shown
    section_editor, // the section editor opens on section 1, on the sliding line
    to_wedge_form,  // a composite goes on to the wedge form
};

// Opening: the sliding plane is cleared (disc_code, and so any discontinuity
// field, with it) unless it comes from a grid file.
GeneralSurfaceForm open_general_surface_form(Project& p);

// Choosing a text of the combo. The grid file text enables the file field
// and, while no file is named, asks for one as the file button does.
GeneralNext choose_general_method(Project& p, GeneralSurfaceForm& form, int method, Port& port);

// The file button: a file dialog for "*.GRD"; a chosen name becomes
// surf_grd_file and the plane is read at once, which for the sliding plane
// finishes the surface and closes the form.
GeneralNext choose_general_grid_file(Project& p, GeneralSurfaceForm& form, Port& port);

// Continue: the plane is interpolated from its lines unless it comes from a
// grid file, the kind becomes 4 and the surface is defined; then the section
// editor, the Solve menu or the wedge form follows.
GeneralNext continue_general_surface_form(Project& p, const GeneralSurfaceForm& form, Port& port);

// Cancel: form_mode = 0.
void cancel_general_surface_form(Project& p);

} // namespace tobel
