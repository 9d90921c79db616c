// The sliding surface commands of the menu, each followed through its forms
// with the values the project holds, as the forms' Continue buttons would.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

enum class SurfaceCommand { ellipsoid, wedge, composite, general, general_wedge };

// "ellipsoid", "wedge", "composite", "general", "general-wedge"; false when unknown.
bool parse_surface_command(const std::string& name, SurfaceCommand& out);

// The caption of the search window that the ellipsoid family sets its
// surface up on: "ELLIPSOIDAL SURFACE" for the single ellipsoid, "COMPOSITE
// SURFACE" for the composite of ellipsoid and wedges, "" for the commands
// that do not use the window; "ELLIPSOIDAL GRID-SEARCH" for every search
// set-up, composite or not.
const char* setup_window_caption(SurfaceCommand which);
const char* search_setup_window_caption();

// What every surface command does before its form opens: the water and force
// columns cleared, keep_window 0, form_mode of the command, and the set-up
// window of the ellipsoid family brought up with its caption.
void begin_surface_command(Project& p, Port& port, SurfaceCommand which);

// Runs the command and confirms each form in turn. Returns true when a
// sliding surface is defined afterwards.
bool confirm_surface(Project& p, Port& port, SurfaceCommand which);

// Edit > Sliding Surface > Ellipsoid (or Composite) > Grid Search or Auto
// Search, confirmed with the search parameters the project holds (first
// proposals where they are all 0), and for a composite the wedge form after.
bool confirm_search_setup(Project& p, Port& port, bool grid, bool composite);

// The discontinuity field of a general surface, set to the given rectangle.
void confirm_discontinuity_field(Project& p, Port& port, float x_low, float x_high, float y_low,
                                 float y_high);

} // namespace tobel
