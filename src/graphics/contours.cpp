#include "graphics/contours.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphics/drawing.h"
#include "graphics/search_plots.h"
#include "project/numtext.h"
#include "search/search_setup.h"

namespace tobel {

// The index of a coordinate on a line of nodes, -1 when it lies off the
// nodes. Centres are computed in single precision, so a hundredth of a
// spacing is allowed for.
static int node_index(double v, double origin, double step, int count)
{
    if (step == 0)
        return std::abs(v - origin) <= 1e-4 * std::max(1.0, std::abs(origin)) ? 0 : -1;
    const double d = (v - origin) / step;
    const double k = std::nearbyint(d);
    if (!(std::abs(d - k) <= 0.01) || k < 0 || k >= double(count))
        return -1;
    return int(k);
}

// Each node gets the lowest F of the summary table recorded at it.
static void record_lowest(FsLattice& L, const SearchState& s)
{
    const std::size_t n = std::size_t(L.ny) * std::size_t(L.nz);
    L.fs.assign(n, 0.0f);
    L.known.assign(n, 0);
    for (std::size_t t = 1; t <= std::size_t(std::max<int>(s.summary_count, 0)); ++t) {
        if (t >= s.summary_fos.size() || t >= s.summary_y.size() || t >= s.summary_z.size())
            break;
        const int i = node_index(s.summary_y[t], L.y0, L.dy, L.ny);
        const int j = node_index(s.summary_z[t], L.z0, L.dz, L.nz);
        if (i < 0 || j < 0)
            continue;
        const std::size_t k = L.at(i, j);
        if (!L.known[k] || s.summary_fos[t] < L.fs[k]) {
            L.fs[k] = s.summary_fos[t];
            L.known[k] = 1;
        }
    }
}

FsLattice grid_search_lattice(const Project& p)
{
    const SearchState& s = p.search;
    const GridSearchRecord r = load_grid_record(p);
    // Only whole counts give a rectangle of centres; the list must be the
    // one these counts made.
    if (s.point_last < 0 || r.grid_ny < 1 || r.grid_nz < 1 || r.grid_ny != std::floor(r.grid_ny) ||
        r.grid_nz != std::floor(r.grid_nz))
        return {};
    const long ny = long(r.grid_ny), nz = long(r.grid_nz);
    if (ny * nz != s.point_last + 1 || std::size_t(s.point_last) >= s.point_y.size() ||
        std::size_t(s.point_last) >= s.point_z.size())
        return {};
    FsLattice L;
    L.ny = int(ny);
    L.nz = int(nz);
    // The top line first, Z falling line by line.
    L.y0 = s.point_y[0];
    L.z0 = s.point_z[0];
    L.dy = s.grid_dy;
    L.dz = -double(s.grid_dz);
    record_lowest(L, s);
    return L;
}

FsLattice auto_search_lattice(const Project& p)
{
    const SearchState& s = p.search;
    const double step = p.auto_spacing;
    if (!(step > 0) || s.summary_count < 1)
        return {};
    long i_lo = 0, i_hi = 0, j_lo = 0, j_hi = 0;
    bool any = false;
    for (std::size_t t = 1; t <= std::size_t(s.summary_count); ++t) {
        if (t >= s.summary_y.size() || t >= s.summary_z.size())
            break;
        const double di = (double(s.summary_y[t]) - double(p.auto_y)) / step;
        const double dj = (double(s.summary_z[t]) - double(p.auto_z)) / step;
        const double i = std::nearbyint(di), j = std::nearbyint(dj);
        if (!(std::abs(di - i) <= 0.01 && std::abs(dj - j) <= 0.01) || std::abs(i) > 1e6 || std::abs(j) > 1e6)
            continue;
        if (!any) {
            i_lo = i_hi = long(i);
            j_lo = j_hi = long(j);
            any = true;
        }
        i_lo = std::min(i_lo, long(i));
        i_hi = std::max(i_hi, long(i));
        j_lo = std::min(j_lo, long(j));
        j_hi = std::max(j_hi, long(j));
    }
    const long ny = i_hi - i_lo + 1, nz = j_hi - j_lo + 1;
    // A walk is one connected path; a lattice this large is not one.
    if (!any || ny * nz > 4000000)
        return {};
    FsLattice L;
    L.ny = int(ny);
    L.nz = int(nz);
    L.y0 = double(p.auto_y) + double(i_lo) * step;
    L.z0 = double(p.auto_z) + double(j_lo) * step;
    L.dy = L.dz = step;
    record_lowest(L, s);
    return L;
}

FsLattice search_lattice(const Project& p)
{
    if (p.search.mode == 9)
        return grid_search_lattice(p);
    if (p.search.mode == 10)
        return auto_search_lattice(p);
    return {};
}

std::vector<ContourSegment> contour_segments(const FsLattice& L)
{
    std::vector<ContourSegment> out;
    if (L.ny < 2 || L.nz < 2)
        return out;
    // Corners round the cell and the edges between them: edge e joins
    // corner e and corner e + 1.
    static constexpr int di[4] = {0, 1, 1, 0}, dj[4] = {0, 0, 1, 1};
    for (const float level : fos_class_limits) {
        for (int j = 0; j + 1 < L.nz; ++j)
            for (int i = 0; i + 1 < L.ny; ++i) {
                std::array<double, 4> v{}, cy{}, cz{};
                std::array<bool, 4> above{};
                bool complete = true;
                for (int k = 0; k < 4; ++k) {
                    const std::size_t at = L.at(i + di[k], j + dj[k]);
                    if (!L.known[at]) {
                        complete = false;
                        break;
                    }
                    v[k] = L.fs[at];
                    cy[k] = L.y(i + di[k]);
                    cz[k] = L.z(j + dj[k]);
                    above[k] = L.fs[at] > level;
                }
                if (!complete)
                    continue;
                std::array<bool, 4> cut{};
                std::array<double, 4> py{}, pz{};
                int cuts = 0;
                for (int e = 0; e < 4; ++e) {
                    const int a = e, b = (e + 1) % 4;
                    if (above[a] == above[b])
                        continue;
                    const double t = (double(level) - v[a]) / (v[b] - v[a]);
                    py[e] = cy[a] + t * (cy[b] - cy[a]);
                    pz[e] = cz[a] + t * (cz[b] - cz[a]);
                    cut[e] = true;
                    ++cuts;
                }
                auto join = [&](int e1, int e2) { out.push_back({py[e1], pz[e1], py[e2], pz[e2], level}); };
                if (cuts == 2) {
                    int first = -1;
                    for (int e = 0; e < 4; ++e)
                        if (cut[e]) {
                            if (first < 0)
                                first = e;
                            else
                                join(first, e);
                        }
                } else if (cuts == 4) {
                    // A saddle: the mean of the corners says whether the
                    // cell's middle lies above, and so which corners the
                    // lines cut off.
                    const bool middle_above = (v[0] + v[1] + v[2] + v[3]) / 4 > double(level);
                    const bool cut_off_1_and_3 = above[0] == middle_above;
                    if (cut_off_1_and_3) {
                        join(0, 1);
                        join(2, 3);
                    } else {
                        join(3, 0);
                        join(1, 2);
                    }
                }
            }
    }
    return out;
}

void draw_contours(Project& p, DrawSurface& s)
{
    const double e = drawn_exaggeration(p);
    s.DrawWidth(1);
    // Black, so that the lines stand out over the trial markers, which are
    // coloured by the same classes; each limit is named once, beside the
    // first piece of its line.
    const std::vector<ContourSegment> segments = contour_segments(search_lattice(p));
    std::vector<float> named;
    for (const ContourSegment& g : segments)
        s.Line(g.y1, g.z1 * e, g.y2, g.z2 * e, black);
    const Colour fore = s.ForeColor();
    s.ForeColor(black);
    for (const ContourSegment& g : segments) {
        if (std::find(named.begin(), named.end(), g.level) != named.end())
            continue;
        named.push_back(g.level);
        s.CurrentX((double(g.y1) + double(g.y2)) / 2);
        s.CurrentY((double(g.z1) + double(g.z2)) / 2 * e);
        s.Print(format(g.level, "0.0#"));
    }
    s.ForeColor(fore);
}

} // namespace tobel
