// Iso-lines of the factor of safety over the centres a search tried, at the
// limits of the colour classes, by marching squares.
#pragma once

#include <vector>

#include "graphics/draw_surface.h"
#include "project/project.h"

namespace tobel {

// The lowest F recorded at each node of a rectangular lattice of centres:
// node (i, j) stands at (y0 + i * dy, z0 + j * dz), index j * ny + i. A node
// where no trial was recorded is not known.
struct FsLattice {
    int ny = 0, nz = 0;
    double y0 = 0, z0 = 0, dy = 0, dz = 0;
    std::vector<float> fs;
    std::vector<char> known;

    double y(int i) const { return y0 + double(i) * dy; }
    double z(int j) const { return z0 + double(j) * dz; }
    std::size_t at(int i, int j) const { return std::size_t(j) * std::size_t(ny) + std::size_t(i); }
};

// The grid search's grid of centres (search.point_y, point_z with the counts
// of the project's grid fields), each node with the lowest F of the summary
// table recorded there.
FsLattice grid_search_lattice(const Project& p);

// The centres an auto search visited, on the lattice of its step
// (auto_spacing) through its starting centre (auto_y, auto_z).
FsLattice auto_search_lattice(const Project& p);

// The lattice of the search last run: grid (search.mode 9) or auto (10).
FsLattice search_lattice(const Project& p);

// One piece of an iso-line, in world units (z true elevation).
struct ContourSegment {
    double y1 = 0, z1 = 0, y2 = 0, z2 = 0;
    float level = 0;
};

// The iso-lines at the eight class limits (0, 0.5, 1, 1.2, 1.4, 1.8, 2.3,
// 3). A corner lies above a level when its F is greater; a cell with a
// corner not known is skipped.
std::vector<ContourSegment> contour_segments(const FsLattice& lattice);

// The iso-lines of the last search on the surface, elevations times
// vert_exag, each in the colour of its limit.
void draw_contours(Project& p, DrawSurface& s);

} // namespace tobel
