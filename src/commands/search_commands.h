// The Solve commands of the searches and the button of the progress panel
// that solves the tentative critical surface.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Solve > Grid Search and Solve > Auto Search: the data check, the search
// picture and panel, ell_x and ell_aspect from the stored record, the search
// itself (one progress line per recorded trial), then the result picture; a
// beep when the search gave no surface. The Solve menu is hidden afterwards.
// Returns true when the search ended with a tentative critical surface,
// which search.best then holds and the sliding plane shows.
bool solve_grid_search(Project& p, Port& port);
bool solve_auto_search(Project& p, Port& port);

// "Tentative Critical Surface": a normal interactive solution of the surface
// of the best record, reported as a grid (report kind 2) or an auto search
// (3). Returns false, doing nothing, when the panel does not offer it.
bool solve_final_surface(Project& p, Port& port);

} // namespace tobel
