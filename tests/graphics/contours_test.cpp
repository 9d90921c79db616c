// Iso-lines of F over the centres of a search.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "graphics/contours.h"
#include "graphics/drawing.h"
#include "graphics_support.h"
#include "project/defaults.h"
#include "search/grid_search.h"

namespace tobel::test {
namespace {

// F = 0.04 y + 0.3 rises from 0.3 at y = 0 to 1.9 at y = 40.
static float plane(double y)
{
    return float(0.04 * y + 0.3);
}

// A grid search of 5 by 4 centres, y 0..40 by 10, z 30 down to 0 by 10,
// with one recorded trial at each centre but those in `skip`.
static std::unique_ptr<Project> grid_project(std::vector<long> skip = {})
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->grid_n_y = 5;
    p->grid_n_z = 4;
    p->grid_y_ul = 0;
    p->grid_y_lr = 40;
    p->grid_z_ul = 30;
    p->grid_z_lr = 0;
    p->tangent_z = -100;
    p->search.mode = 9;
    GridSearchRecord r;
    r.grid_y1 = 0;
    r.grid_y2 = 40;
    r.grid_z_top = 30;
    r.grid_z_bottom = 0;
    r.grid_ny = 5;
    r.grid_nz = 4;
    build_grid_points(p->search, r);
    SearchState& s = p->search;
    s.summary_count = 0;
    for (long k = 0; k <= s.point_last; ++k) {
        if (std::find(skip.begin(), skip.end(), k) != skip.end())
            continue;
        const std::size_t t = std::size_t(++s.summary_count);
        for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
            v->resize(t + 1, 0.0f);
        s.summary_y[t] = s.point_y[std::size_t(k)];
        s.summary_z[t] = s.point_z[std::size_t(k)];
        s.summary_fos[t] = plane(s.summary_y[t]);
    }
    return p;
}

static std::size_t count_at(const std::vector<ContourSegment>& segs, float level, double y)
{
    std::size_t n = 0;
    for (const auto& g : segs)
        if (g.level == level && std::abs(g.y1 - y) < 1e-4 && std::abs(g.y2 - y) < 1e-4)
            ++n;
    return n;
}

TEST(contours, a_plane_gives_straight_lines_at_the_class_limits)
{
    auto p = grid_project();
    const FsLattice L = search_lattice(*p);
    ASSERT_EQ(L.ny, 5);
    ASSERT_EQ(L.nz, 4);
    const auto segs = contour_segments(L);
    // (level - 0.3) / 0.04: 0.5 at 5, 1 at 17.5, 1.2 at 22.5, 1.4 at 27.5,
    // 1.8 at 37.5; 0, 2.3 and 3 are not reached. Each line crosses the three
    // rows of cells.
    EXPECT_EQ(segs.size(), 15u);
    EXPECT_EQ(count_at(segs, 0.5f, 5), 3u);
    EXPECT_EQ(count_at(segs, 1.0f, 17.5), 3u);
    EXPECT_EQ(count_at(segs, 1.2f, 22.5), 3u);
    EXPECT_EQ(count_at(segs, 1.4f, 27.5), 3u);
    EXPECT_EQ(count_at(segs, 1.8f, 37.5), 3u);
    for (const auto& g : segs)
        EXPECT_NEAR(std::abs(g.z2 - g.z1), 10, 1e-4);
}

TEST(contours, a_missing_corner_skips_its_cells)
{
    // Centre 0 is (0, 30): only the cell from y 0 to 10 and z 30 to 20 has it.
    auto p = grid_project({0});
    const auto segs = contour_segments(search_lattice(*p));
    EXPECT_EQ(segs.size(), 14u);
    EXPECT_EQ(count_at(segs, 0.5f, 5), 2u);
    for (const auto& g : segs) {
        if (g.level == 0.5f) {
            EXPECT_LE(std::max(g.z1, g.z2), 20 + 1e-4);
        }
    }
}

TEST(contours, a_centre_keeps_the_lowest_f_recorded_there)
{
    auto p = grid_project();
    SearchState& s = p->search;
    // Two more trials at centre 6, (10, 20): a radius step lower, then higher.
    for (float f : {0.25f, 0.9f}) {
        const std::size_t t = std::size_t(++s.summary_count);
        for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
            v->resize(t + 1, 0.0f);
        s.summary_y[t] = 10;
        s.summary_z[t] = 20;
        s.summary_fos[t] = f;
    }
    const FsLattice L = search_lattice(*p);
    // Node i = 1 across, j = 1 down.
    EXPECT_FLOAT_EQ(L.fs[L.at(1, 1)], 0.25f);
    EXPECT_FLOAT_EQ(L.fs[L.at(2, 1)], plane(20));
}

TEST(contours, auto_search_centres_lie_on_the_lattice_of_its_step)
{
    auto p = std::make_unique<Project>();
    set_defaults(*p);
    p->search.mode = 10;
    p->auto_y = 50;
    p->auto_z = 30;
    p->auto_spacing = 2;
    SearchState& s = p->search;
    // The first stencil round (50, 30) and one centre further along +Y.
    const float ys[] = {50, 48, 48, 48, 50, 52, 52, 52, 50, 54};
    const float zs[] = {30, 32, 30, 28, 28, 28, 30, 32, 32, 30};
    s.summary_count = 0;
    for (int k = 0; k < 10; ++k) {
        const std::size_t t = std::size_t(++s.summary_count);
        for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
            v->resize(t + 1, 0.0f);
        s.summary_y[t] = ys[k];
        s.summary_z[t] = zs[k];
        // F = 0.1 (y - 50) + 1.1: 0.9 at 48, 1.1 at 50, 1.3 at 52, 1.5 at 54.
        s.summary_fos[t] = float(0.1 * (ys[k] - 50) + 1.1);
    }
    const FsLattice L = search_lattice(*p);
    ASSERT_EQ(L.ny, 4);
    ASSERT_EQ(L.nz, 3);
    EXPECT_DOUBLE_EQ(L.y0, 48);
    EXPECT_DOUBLE_EQ(L.z0, 28);
    EXPECT_FALSE(L.known[L.at(3, 0)]); // (54, 28) was not visited
    const auto segs = contour_segments(L);
    // 1 at y 49 and 1.2 at y 51 across both rows of cells; 1.4 would lie at
    // 53, in cells with unvisited corners.
    EXPECT_EQ(segs.size(), 4u);
    EXPECT_EQ(count_at(segs, 1.0f, 49), 2u);
    EXPECT_EQ(count_at(segs, 1.2f, 51), 2u);
}

TEST(contours, saddle_is_resolved_by_the_mean_of_the_corners)
{
    FsLattice L;
    L.ny = L.nz = 2;
    L.dy = L.dz = 1;
    // Corners (0,0) and (1,1) at 2, the others at 0.4; the mean 1.2 lies
    // above 1, so the line at 1 cuts off the low corners (1,0) and (0,1).
    L.fs = {2.0f, 0.4f, 0.4f, 2.0f};
    L.known = {1, 1, 1, 1};
    std::vector<ContourSegment> at_one;
    for (const auto& g : contour_segments(L))
        if (g.level == 1.0f)
            at_one.push_back(g);
    ASSERT_EQ(at_one.size(), 2u);
    // Crossings at (1 - 2) / (0.4 - 2) = 0.625 from each high corner: the
    // segment round (1, 0) joins (0.625, 0) and (1, 0.375).
    EXPECT_NEAR(at_one[0].y1, 0.625, 1e-6);
    EXPECT_NEAR(at_one[0].z1, 0, 1e-6);
    EXPECT_NEAR(at_one[0].y2, 1, 1e-6);
    EXPECT_NEAR(at_one[0].z2, 0.375, 1e-6);
}

TEST(contours, lines_are_drawn_exaggerated_in_black_and_each_limit_is_named_once)
{
    auto p = grid_project();
    p->vert_exag = 2;
    DisplayList list;
    RecordingSurface s(list);
    s.Scale(-10, 100, 60, -10);
    draw_contours(*p, s);
    const auto segs = segments_of(list);
    ASSERT_EQ(segs.size(), 15u);
    const double ys[] = {5, 17.5, 22.5, 27.5, 37.5};
    for (std::size_t k = 0; k < 5; ++k) {
        // Three pieces per limit, z 30, 20, 10, 0 drawn at 60, 40, 20, 0.
        double low = 1e9, high = -1e9;
        int pieces = 0;
        for (const auto& g : segs)
            if (std::abs(g.x1 - ys[k]) < 1e-4 && std::abs(g.x2 - ys[k]) < 1e-4) {
                EXPECT_EQ(g.colour, 0);
                low = std::min({low, double(g.y1), double(g.y2)});
                high = std::max({high, double(g.y1), double(g.y2)});
                ++pieces;
            }
        EXPECT_EQ(pieces, 3) << ys[k];
        EXPECT_NEAR(low, 0, 1e-4);
        EXPECT_NEAR(high, 60, 1e-4);
    }
    // The five limits crossed (0.5, 1, 1.2, 1.4, 1.8), each named once.
    std::vector<std::string> names;
    for (const auto& item : list.items)
        if (item.op == DrawOp::text)
            names.push_back(list.texts[item.text]);
    std::sort(names.begin(), names.end());
    const std::vector<std::string> expected = {"0.5", "1.0", "1.2", "1.4", "1.8"};
    EXPECT_EQ(names, expected);
}

} // namespace
} // namespace tobel::test
