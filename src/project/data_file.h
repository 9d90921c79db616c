// The .TOB data file: the project's one persistent form, written and read
// whole, item by item in a fixed order. The .TOD extension gets the same
// layout.
#pragma once

#include <string>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// A two-dimensional section file is the data file layout taken along mesh row
// `row`: the title gets " SECTION " + x_text, the mesh one row and one
// section, every surface the method of cross-sections, and the section the
// row's nodes.
struct SectionCut {
    int row = 1;
    std::string x_text;
};

// The text of the data file, or of a section cut of it. Empty material names
// become "Material" and empty grid file names "*.GRD" in the project itself.
std::string data_file_text(Project& p, const SectionCut* cut = nullptr);

// Writes the project. Empty material names become "Material" and empty grid
// file names "*.GRD" in the project itself on the way. The file is written
// beside the target first and replaces it only when complete; a failure throws
// RuntimeError(err_path_access, path) and leaves an old file as it was. Updates
// the recent files afterwards.
void write_data_file(Project& p, const std::string& path);

class InputReader;
// Every item of the data file in order, into a project that reset_project
// has just cleared, without loading grid files or touching the menus (Open
// does both). Throws RuntimeError on a short or malformed file, leaving the
// project as far as the reading got; counts beyond the tables are refused
// (err_subscript) before any table is touched, and a number beyond the single
// range or a count beyond 16 bits is an overflow (err_overflow); each names
// the file, the line and the value.
void read_data_items(Project& p, InputReader& in);

// The mesh counts as the data files hold them, columns first, then rows and
// sections, refused beyond the limits; the grids are sized to them.
void read_mesh_counts(InputReader& in, Project& p);

// The wedge planes (X, Y, Z, code, dip, dip direction) and the external
// forces (horizontal, vertical, X, Y, Z) of num_wedges and num_forces rows.
void read_wedge_table(InputReader& in, Project& p);
void read_force_table(InputReader& in, Project& p);

// The section table as the data files hold it: per section its X, then for
// each of `line_sets` surfaces the point count and the points.
void read_section_lines(InputReader& in, Project& p, int line_sets);

} // namespace tobel
