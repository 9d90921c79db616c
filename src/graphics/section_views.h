// The section views: the stratigraphy, piezometric surfaces, sliding surface
// and forces of one mesh line. The longitudinal section runs along a mesh
// row (view_row) and the lateral one along a mesh column (view_col), both on
// the picture window tob_pic with its scroll bar and pointer labels; the
// search section is the longitudinal one on the search window tob_picser.
#pragma once

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// force_peak: the largest component or water force magnitude in use, for
// the length of the arrows. With no forces at all it keeps its value.
void find_force_peak(Project& p);

// The section along view_row on tob_pic, with its forces and moment centre.
void draw_longitudinal_section(Project& p, Port& port);

// The section along view_row on tob_picser while a search or its set-up is
// in progress: no scroll bar, forces, moment centre, caption or title; the
// sliding surface is left out of a set-up sketch (view_mode 3, 7, 8). The
// caller brings up the set-up dialog afterwards.
void draw_search_section(Project& p, Port& port);

// The section along view_col on tob_pic.
void draw_lateral_section(Project& p, Port& port);

// The two labels that follow the pointer, for a pointer at world (x, y).
void section_pointer_labels(Project& p, PictureWindow& w, double x, double y);

// The change event of tob_pic's scroll bar: moves to another row or column.
void section_scroll_changed(Project& p, Port& port, int value);

// tob_pic regains focus: its caption decides the main title and view_mode.
void picture_activated(Project& p);

} // namespace tobel
