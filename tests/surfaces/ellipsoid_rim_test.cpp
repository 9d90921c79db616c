// The columns of a mesh row within the rim of the ellipsoid's circle at that
// row, from the closed form y0 +- Rl corrected by the node test |dy| < Rl.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "surfaces/ellipsoid.h"

namespace tobel::test {
namespace {

// dy of columns 1..n (index 0 unused) for nodes y = y_min + (c - 1) s,
// rounded to single precision as the builder rounds them.
std::vector<double> column_dys(int n, double y_min, double s, double ey)
{
    std::vector<double> d(std::size_t(n) + 1, 0.0);
    for (int c = 1; c <= n; ++c)
        d[std::size_t(c)] = double(float(y_min + double(c - 1) * s)) - ey;
    return d;
}

TEST(ellipsoid_rim, the_columns_within_the_circle_of_a_row)
{
    // Nodes y = 0, 1, ..., 40; centre 10, Rl = 3.5: |y - 10| < 3.5 holds for
    // y = 7..13, columns 8..14.
    const auto d = column_dys(41, 0, 1, 10);
    const ColumnSpan s = rim_columns(d, 1, 41, 0, 1, 10, 3.5);
    EXPECT_EQ(s.c0, 8);
    EXPECT_EQ(s.c1, 14);
}

TEST(ellipsoid_rim, a_node_exactly_on_the_rim_is_outside)
{
    // Rl = 3: y = 7 and y = 13 lie on the rim (|dy| = 3, not below it), so
    // only y = 8..12 remain, columns 9..13.
    const auto d = column_dys(41, 0, 1, 10);
    const ColumnSpan s = rim_columns(d, 1, 41, 0, 1, 10, 3);
    EXPECT_EQ(s.c0, 9);
    EXPECT_EQ(s.c1, 13);
}

TEST(ellipsoid_rim, the_span_is_cut_to_the_range_asked_for)
{
    // Spacing 0.5 from y = 2: node c at 2 + (c - 1) / 2. Centre 4, Rl = 2.2:
    // 1.8 < y < 6.2, every node from y = 2 (column 1) to y = 6 (column 9);
    // asked for columns 3..6 only.
    const auto d = column_dys(30, 2, 0.5, 4);
    const ColumnSpan all = rim_columns(d, 1, 30, 2, 0.5, 4, 2.2);
    EXPECT_EQ(all.c0, 1);
    EXPECT_EQ(all.c1, 9);
    const ColumnSpan cut = rim_columns(d, 3, 6, 2, 0.5, 4, 2.2);
    EXPECT_EQ(cut.c0, 3);
    EXPECT_EQ(cut.c1, 6);
}

TEST(ellipsoid_rim, a_circle_beyond_the_range_or_of_no_radius_has_no_columns)
{
    const auto d = column_dys(41, 0, 1, 10);
    // Columns 30..41 hold y = 29..40, all over 3.5 from the centre.
    EXPECT_TRUE(rim_columns(d, 30, 41, 0, 1, 10, 3.5).empty());
    EXPECT_TRUE(rim_columns(d, 1, 41, 0, 1, 10, 0).empty());
    EXPECT_TRUE(rim_columns(d, 1, 41, 0, 1, 10, -2).empty());
}

TEST(ellipsoid_rim, the_rounded_node_coordinates_decide_at_the_rim)
{
    // Spacing 0.1: y of column 31 is float(3.0000000000000004) = 3 exactly,
    // and Rl = 3 around 0: |dy| = 3 is on the rim, so the last column is 30
    // (y = 2.9 as a float, just under 2.9000001); the first is column 1.
    const auto d = column_dys(61, 0, 0.1, 0);
    const ColumnSpan s = rim_columns(d, 1, 61, 0, 0.1, 0, 3);
    EXPECT_EQ(s.c0, 1);
    EXPECT_EQ(s.c1, 30);
}

// The first and the last column with |dy| < rl, node by node.
ColumnSpan node_by_node(const std::vector<double>& d, double rl)
{
    ColumnSpan s{int(d.size()), 0};
    for (int c = 1; c < int(d.size()); ++c)
        if (std::fabs(d[std::size_t(c)]) < rl) {
            s.c0 = std::min(s.c0, c);
            s.c1 = c;
        }
    return s;
}

TEST(ellipsoid_rim, the_closed_form_finds_the_nodes_of_the_node_test_on_any_mesh)
{
    // Spacings that no binary fraction holds, mesh origins off the grid, and
    // circles centred on a node with the radius a whole number of spacings,
    // so that nodes fall on the rim and rounding decides; also circles
    // reaching beyond either end of the mesh.
    std::mt19937 gen(20261124);
    std::uniform_real_distribution<double> unit(0, 1);
    const double spacings[] = {0.1, 0.25, 1.0 / 3, 0.7, 2.5};
    const double origins[] = {0, -3.3, 1234.5678};
    int checked = 0;
    for (double s : spacings)
        for (double y0 : origins)
            for (int k = 0; k < 200; ++k) {
                const int n = 300;
                const bool on_node = k % 2 == 0;
                const int centre_col = int(unit(gen) * 340) - 20;
                const double ey = on_node ? double(float(y0 + double(centre_col - 1) * s))
                                          : y0 + (unit(gen) * 340 - 20) * s;
                const double rl = on_node ? double(1 + k % 37) * s : unit(gen) * 60 * s;
                const auto d = column_dys(n, y0, s, ey);
                const ColumnSpan want = node_by_node(d, rl);
                const ColumnSpan got = rim_columns(d, 1, n, y0, s, ey, rl);
                if (want.empty()) {
                    EXPECT_TRUE(got.empty()) << s << " " << y0 << " " << ey << " " << rl;
                    continue;
                }
                EXPECT_EQ(got.c0, want.c0) << s << " " << y0 << " " << ey << " " << rl;
                EXPECT_EQ(got.c1, want.c1) << s << " " << y0 << " " << ey << " " << rl;
                ++checked;
            }
    // Most circles cut the mesh.
    EXPECT_GT(checked, 2000);
}

} // namespace
} // namespace tobel::test
