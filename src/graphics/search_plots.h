// What a search draws on its picture while it runs: each trial's centre as
// a box and its sliding surface as a trace, both coloured by the trial's
// factor of safety, the grid of centres of a grid search, and the legend of
// the colour scale at the end.
#pragma once

#include "graphics/draw_surface.h"
#include "project/project.h"
#include "search/search_setup.h"

namespace tobel {

// The colour of a factor of safety: the nine classes of the search (a value
// on a class limit belongs to the lower class), each component rounded to a
// whole number.
Colour fs_colour(float F);

// The colour a trial is drawn in: tentative yellow while tentative_marker is
// set, otherwise the colour of the trial record's F.
Colour trial_colour(const Project& p);

// A filled box without outline centred on (y, z * vert_exag), w wide and
// h * vert_exag high, in the trial's colour.
void draw_trial_marker(Project& p, DrawSurface& s, double y, double z, double w, double h);

// The sliding surface along view_row (raised to 1 when below it) from column
// 1, one segment at a time in the trial's colour; a tentative trace is
// drawn 2 pixels wide and the width is put back to 1 after each segment.
void draw_trial_trace(Project& p, DrawSurface& s);

// A black cross at each centre of the grid of a grid search. A count of 0
// is first made 1 in the record (the dialog writes it back to its box).
void draw_search_grid(Project& p, DrawSurface& s, GridSearchRecord& r);

// The legend of the colour scale at the upper right of the picture, from
// the search's lowest F (fos_min) to its highest (fos_max).
void draw_fs_legend(Project& p, DrawSurface& s);

} // namespace tobel
