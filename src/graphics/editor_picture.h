// The section editor's picture on tob_graphic: the background image, the
// axes with the mesh limits, the fixed lines of surfaces from grid files or
// constant depths, every cross-section based line with its marks, the slope
// label and the legend box.
#pragma once

#include "graphics/section_editor.h"
#include "project/project.h"

namespace tobel {

// The colour of line k in the editor: its layer, piezometric, water or
// sliding colour; the selected colour for the current line.
Colour editor_line_colour(const Project& p, const SectionEditor& ed, int k);

// The mesh row a section at section_x shows its fixed lines from:
// CInt(CInt(section_x - x_min) / row_spacing + 1), within 1 .. num_rows.
int editor_reference_row(const Project& p, int section);

// Redraws the whole picture in the window of the zoom level in force.
void draw_editor(Project& p, const SectionEditor& ed);

// "TOBEL_3          File " + path + "         EDITING CROSS-SECTION" + Str(view_row).
void set_editor_caption(Project& p);

} // namespace tobel
