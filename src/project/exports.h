// Exports of one slice of the mesh: the two-dimensional data file of a mesh
// row, and the section tables of a row or a column in .DAT files.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Mesh row of a transverse coordinate: X / row_spacing + 1 rounded, held to
// 1..num_rows (x_min is not taken off).
int export_row_of(const Project& p, double x);
// Mesh column of a longitudinal coordinate: Y / col_spacing + 1 rounded, held
// to 1..num_cols (y_min is not taken off).
int export_col_of(const Project& p, double y);

// "Section" + Str(x) + ".tob".
std::string two_d_file_name(double x);
// "CY" + x without blanks + ".DAT" and "CX" + y without blanks + ".DAT".
std::string longitudinal_dat_name(double x);
std::string lateral_dat_name(double y);

// Writes the two-dimensional data file of the row at x to `path`.
void write_two_d_file(Project& p, double x, const std::string& path);
// One line per column: Y, then three blanks and the elevation of each surface.
void write_longitudinal_dat(const Project& p, double x, const std::string& path);
// One line per row: row_spacing * (i - 1), then the elevations at the column of y.
void write_lateral_dat(const Project& p, double y, const std::string& path);

// Graphics > Export > "&Two-dimensional TOB File": asks "ENTER X COORDINATE",
// writes "Section" + X + ".tob" in the current folder and says so. An empty
// or cancelled answer ends the command; a failure shows the error box.
void export_two_d_file(Project& p, Port& port);
// "&Longitudinal Section .DAT File": X is x_min in a two-dimensional project,
// asked otherwise; the name is offered in a save dialog.
void export_longitudinal_dat(Project& p, Port& port);
// "L&ateral Section .DAT File", three-dimensional projects only.
void export_lateral_dat(Project& p, Port& port);

} // namespace tobel
