// Section interpolation and the Interpolation Method form. Expected values are
// worked out by hand or from the closed form of the data laid on the sections.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "dialogs/interpolation_form.h"
#include "dialogs/numeric_entry.h"
#include "geometry/interpolation.h"
#include "project/defaults.h"
#include "support/scripted_port.h"

using namespace tobel;

namespace {

using Points = std::vector<std::pair<float, float>>; // (y, z) along a line

// A project of `layers` layers on a mesh of rows along X from x0 by dx and
// cols along Y from y0 by dy, with sections at the given X.
Project make_project(int rows, float x0, float dx, int cols, float y0, float dy,
                     const std::vector<float>& section_xs, int layers = 1)
{
    Project p;
    set_defaults(p);
    p.num_layers = int16(layers);
    p.num_piezos = 0;
    derive_counts(p);
    p.num_rows = int16(rows);
    p.num_cols = int16(cols);
    p.x_min = x0;
    p.row_spacing = dx;
    p.x_max = x0 + dx * float(rows - 1);
    p.y_min = y0;
    p.col_spacing = dy;
    p.y_max = y0 + dy * float(cols - 1);
    redim_grids(p);
    p.num_sections = int16(section_xs.size());
    for (std::size_t s = 0; s < section_xs.size(); ++s)
        p.sections.x[s + 1] = section_xs[s];
    return p;
}

void set_line(Project& p, int section, int surface, const Points& pts)
{
    p.sections.n(section, surface) = int16(pts.size());
    for (std::size_t n = 0; n < pts.size(); ++n) {
        p.sections.y(section, int(n) + 1, surface) = pts[n].first;
        p.sections.z(section, int(n) + 1, surface) = pts[n].second;
    }
}

void fill_plane(Project& p, int surface, float z)
{
    for (int i = 1; i <= p.num_rows; ++i)
        for (int j = 1; j <= p.num_cols; ++j)
            p.zgrid(i, j, surface) = z;
}

} // namespace

// ---- primitive and brackets ----

TEST(interp_linear, gives_the_straight_line_between_the_two_values)
{
    EXPECT_DOUBLE_EQ(interp_linear(2, 0, 4, 1, 9), 5.0);
    EXPECT_DOUBLE_EQ(interp_linear(4, 0, 4, 1, 9), 9.0);
}

TEST(interp_linear, extrapolates_outside_the_pair)
{
    EXPECT_DOUBLE_EQ(interp_linear(-2, 0, 4, 1, 9), -3.0);
    EXPECT_DOUBLE_EQ(interp_linear(6, 0, 4, 1, 9), 13.0);
}

TEST(interp_linear, equal_ends_give_the_first_value)
{
    EXPECT_DOUBLE_EQ(interp_linear(7, 3, 3, 11, 99), 11.0);
}

TEST(find_section_bracket, picks_the_section_at_or_before_cur_x_clamped_to_one)
{
    Project p = make_project(1, 0, 1, 1, 0, 1, {0, 10, 20});
    const std::vector<std::pair<float, int>> cases = {{-5, 1}, {0, 1},  {5, 1}, {10, 2},
                                                      {15, 2}, {20, 3}, {25, 3}};
    for (auto [x, expected] : cases) {
        p.cur_x = x;
        EXPECT_EQ(find_section_bracket(p), expected) << "x = " << x;
    }
}

TEST(find_point_bracket, picks_the_point_at_or_before_cur_y)
{
    Project p = make_project(1, 0, 1, 1, 0, 1, {0, 10});
    set_line(p, 1, 1, {{2, 0}, {6, 0}, {9, 0}});
    const std::vector<std::pair<float, int>> cases = {{0, 1},    {2, 1}, {5, 1}, {6, 2},
                                                      {8.5f, 2}, {9, 3}, {50, 3}};
    for (auto [y, expected] : cases) {
        p.cur_y = y;
        EXPECT_EQ(find_point_bracket(p, 1, 1), expected) << "y = " << y;
    }
}

TEST(find_point_bracket, empty_line_gives_one)
{
    Project p = make_project(1, 0, 1, 1, 0, 1, {0, 10});
    p.cur_y = 42;
    EXPECT_EQ(find_point_bracket(p, 2, 1), 1);
}

// ---- Orthogonal ----

TEST(orthogonal, plane_given_on_sections_is_reproduced_at_every_node)
{
    // z = 2 + 0.5 x + 0.25 y, laid on three sections with lines whose points
    // do not correspond in number or in Y.
    auto plane = [](float x, float y) { return 2.0f + 0.5f * x + 0.25f * y; };
    Project p = make_project(5, 0, 1, 9, 0, 1, {0, 2, 4});
    set_line(p, 1, 1, {{0, plane(0, 0)}, {3, plane(0, 3)}, {8, plane(0, 8)}});
    set_line(p, 2, 1, {{0, plane(2, 0)}, {5, plane(2, 5)}, {6, plane(2, 6)}, {8, plane(2, 8)}});
    set_line(p, 3, 1, {{0, plane(4, 0)}, {8, plane(4, 8)}});
    interpolate_surface(p, 1);
    for (int i = 1; i <= 5; ++i)
        for (int j = 1; j <= 9; ++j)
            EXPECT_FLOAT_EQ(p.zgrid(i, j, 1), plane(float(i - 1), float(j - 1))) << i << "," << j;
}

TEST(orthogonal, last_point_at_y_max_gives_its_elevation_exactly)
{
    Project p;
    set_defaults(p); // 50 x 50 nodes over 0..100, spacing 100/49 in single
    set_line(p, 1, 1, {{0, 10}, {37.3f, 12.7f}, {100, 23.9f}});
    set_line(p, 2, 1, {{0, 4}, {61.1f, 8.3f}, {100, 17.7f}});
    interpolate_surface(p, 1);
    EXPECT_EQ(p.zgrid(1, 50, 1), 23.9f);
    EXPECT_EQ(p.zgrid(50, 50, 1), 17.7f);
    EXPECT_EQ(p.zgrid(1, 1, 1), 10.0f);
}

TEST(orthogonal, extrapolates_before_the_first_point_and_the_first_section)
{
    // Rows at x = -2, 0, 2, 4; sections at 0 and 4.
    Project p = make_project(4, -2, 2, 1, 0, 1, {0, 4});
    set_line(p, 1, 1, {{2, 10}, {6, 20}});
    set_line(p, 2, 1, {{2, 30}, {6, 50}});
    interpolate_surface(p, 1);
    // y = 0 on section 1: 10 + 10 * (0 - 2) / 4 = 5; on section 2: 30 + 20 * (-2) / 4 = 20.
    EXPECT_FLOAT_EQ(p.zgrid(2, 1, 1), 5.0f);
    EXPECT_FLOAT_EQ(p.zgrid(3, 1, 1), 12.5f);
    EXPECT_FLOAT_EQ(p.zgrid(4, 1, 1), 20.0f);
    // x = -2, in front of section 1: 5 + 15 * (-2 - 0) / 4.
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), -2.5f);
}

TEST(orthogonal, node_beyond_the_last_point_reads_the_zero_entry_past_the_end)
{
    // 2-D: one row at x = 0 on section 1. Node y = 8 lies beyond point 2
    // (y 6, z 20): paired with the entry past the end (y 0, z 0) the line
    // gives 20 + (0 - 20) * (8 - 6) / (0 - 6) = 20 + 20/3.
    Project p = make_project(1, 0, 1, 3, 4, 2, {0, 10});
    set_line(p, 1, 1, {{2, 10}, {6, 20}});
    set_line(p, 2, 1, {{2, 10}, {6, 20}});
    interpolate_surface(p, 1);
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), 15.0f); // y = 4, inside
    EXPECT_FLOAT_EQ(p.zgrid(1, 2, 1), 20.0f); // y = 6, the last point
    EXPECT_FLOAT_EQ(p.zgrid(1, 3, 1), float(20.0 + 20.0 / 3.0));
}

TEST(orthogonal, a_stale_entry_past_the_end_is_read_as_it_stands)
{
    // A longer line once left point 3 at (10, 40); the line now has 2 points.
    Project p = make_project(1, 0, 1, 1, 8, 1, {0, 10});
    set_line(p, 1, 1, {{2, 10}, {6, 20}, {10, 40}});
    p.sections.n(1, 1) = 2;
    interpolate_surface(p, 1);
    // 20 + (40 - 20) * (8 - 6) / (10 - 6)
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), 30.0f);
}

TEST(orthogonal, two_dimensional_row_takes_section_one_whatever_section_two_holds)
{
    Project p = make_project(1, 5, 1, 4, 0, 2, {5, 50});
    set_line(p, 1, 1, {{0, 1}, {2, 3}, {6, 4}});
    // Section 2 has no line for the surface.
    interpolate_surface(p, 1);
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), 1.0f);
    EXPECT_FLOAT_EQ(p.zgrid(1, 2, 1), 3.0f);
    EXPECT_FLOAT_EQ(p.zgrid(1, 3, 1), 3.5f);
    EXPECT_FLOAT_EQ(p.zgrid(1, 4, 1), 4.0f);
}

TEST(interpolate_surface, marks_the_surface_built_and_leaves_the_last_node_coordinates)
{
    Project p = make_project(3, 1, 0.5f, 4, 10, 0.25f, {0, 10});
    set_line(p, 1, 1, {{0, 1}, {20, 1}});
    set_line(p, 2, 1, {{0, 1}, {20, 1}});
    EXPECT_EQ(p.surf_built[1], 0);
    interpolate_surface(p, 1);
    EXPECT_EQ(p.surf_built[1], 1);
    EXPECT_EQ(p.cur_x, 2.0f);
    EXPECT_EQ(p.cur_y, 10.75f);
}

TEST(interpolate_surface, node_coordinates_are_rounded_to_single)
{
    // 0.1 * 2 in double is not a single: the node keeps the single nearest.
    Project p = make_project(1, 0, 1, 3, 0.1f, 0.1f, {0, 10});
    set_line(p, 1, 1, {{0, 0}, {1, 1}});
    set_line(p, 2, 1, {{0, 0}, {1, 1}});
    interpolate_surface(p, 1);
    EXPECT_EQ(p.cur_y, float(double(0.1f) + 2.0 * double(0.1f)));
}

// ---- Oblique ----

namespace {

// Two sections at x = 0 and 4 with lines linked point to point into a strip
// that runs skew across the mesh: link 1 from (y 0, z 10) to (y 4, z 30),
// link 2 from (y 4, z 20) to (y 8, z 40). Rows at x = -1..5, cols y = 0..10.
Project skew_strip()
{
    Project p = make_project(7, -1, 1, 11, 0, 1, {0, 4});
    p.interp_method = 2;
    set_line(p, 1, 1, {{0, 10}, {4, 20}});
    set_line(p, 2, 1, {{4, 30}, {8, 40}});
    fill_plane(p, 1, -99);
    return p;
}

} // namespace

TEST(oblique, skewed_strip_is_interpolated_between_its_links)
{
    Project p = skew_strip();
    interpolate_surface(p, 1);
    // At x the links run y from x to x + 4, z from 10 + 5x to 20 + 5x.
    for (int i = 2; i <= 6; ++i) {
        const float x = float(i - 2);
        for (int j = 1; j <= 11; ++j) {
            const float y = float(j - 1);
            if (y >= x && y <= x + 4)
                EXPECT_FLOAT_EQ(p.zgrid(i, j, 1), 10 + 5 * x + 2.5f * (y - x)) << x << "," << y;
            else
                EXPECT_EQ(p.zgrid(i, j, 1), -99.0f) << x << "," << y;
        }
    }
    EXPECT_EQ(p.surf_built[1], 1);
}

TEST(oblique, rows_outside_the_sections_keep_their_values)
{
    Project p = skew_strip();
    interpolate_surface(p, 1);
    for (int j = 1; j <= 11; ++j) {
        EXPECT_EQ(p.zgrid(1, j, 1), -99.0f); // x = -1
        EXPECT_EQ(p.zgrid(7, j, 1), -99.0f); // x = 5
    }
}

TEST(oblique, columns_outside_the_first_and_last_links_keep_their_values)
{
    Project p = skew_strip();
    interpolate_surface(p, 1);
    // x = 2: covered y 2..6.
    EXPECT_EQ(p.zgrid(4, 2, 1), -99.0f);
    EXPECT_EQ(p.zgrid(4, 8, 1), -99.0f);
    EXPECT_FLOAT_EQ(p.zgrid(4, 3, 1), 20.0f);
    EXPECT_FLOAT_EQ(p.zgrid(4, 7, 1), 30.0f);
}

TEST(oblique, mesh_running_down_in_y_gives_the_same_strip)
{
    // Columns from y = 10 down to 0: every node is still tested on its own.
    Project p = skew_strip();
    p.y_min = 10;
    p.col_spacing = -1;
    interpolate_surface(p, 1);
    for (int i = 2; i <= 6; ++i) {
        const float x = float(i - 2);
        for (int j = 1; j <= 11; ++j) {
            const float y = float(11 - j);
            if (y >= x && y <= x + 4)
                EXPECT_FLOAT_EQ(p.zgrid(i, j, 1), 10 + 5 * x + 2.5f * (y - x)) << x << "," << y;
            else
                EXPECT_EQ(p.zgrid(i, j, 1), -99.0f) << x << "," << y;
        }
    }
}

TEST(oblique, last_point_links_to_the_entries_past_the_end)
{
    // Stale entries 3 at (y 12, z 0) on both sections close a further strip.
    Project p = skew_strip();
    p.sections.y(1, 3, 1) = 12;
    p.sections.y(2, 3, 1) = 12;
    interpolate_surface(p, 1);
    // x = 0, y = 8: between (4, 20) and (12, 0): 20 - 20 * 4 / 8.
    EXPECT_FLOAT_EQ(p.zgrid(2, 9, 1), 10.0f);
}

TEST(oblique, unbuilt_lines_write_nothing)
{
    Project p = make_project(3, 0, 1, 3, 0, 1, {0, 2});
    p.interp_method = 2;
    fill_plane(p, 1, 7);
    interpolate_surface(p, 1);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j)
            EXPECT_EQ(p.zgrid(i, j, 1), 7.0f);
}

// ---- Axisymmetric ----

TEST(axisymmetric, straight_line_rotated_gives_a_cone)
{
    // z = 100 - y on section 1 around the axis at X -10, Y -10, outside the
    // mesh: every node lies on the high side, yy = -10 + r, z = 110 - r.
    Project p = make_project(5, 0, 1, 9, 0, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = -10;
    p.axis_z = -10;
    set_line(p, 1, 1, {{0, 100}, {50, 50}});
    interpolate_surface(p, 1);
    for (int i = 1; i <= 5; ++i)
        for (int j = 1; j <= 9; ++j) {
            const double r = std::hypot(double(i - 1) + 10.0, double(j - 1) + 10.0);
            EXPECT_NEAR(p.zgrid(i, j, 1), 110.0 - r, 1e-4) << i << "," << j;
        }
}

TEST(axisymmetric, low_side_reads_the_section_at_the_mirrored_distance)
{
    // Axis at X 2, Y 20, beyond the mesh in Y: yy = 20 - r. Line z = y + 10.
    Project p = make_project(5, 0, 1, 9, 0, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = 2;
    p.axis_z = 20;
    set_line(p, 1, 1, {{-20, -10}, {20, 30}});
    interpolate_surface(p, 1);
    EXPECT_FLOAT_EQ(p.zgrid(3, 1, 1), 10.0f); // (2, 0): r = 20, yy = 0
    EXPECT_NEAR(p.zgrid(1, 5, 1), 30.0 - std::hypot(2.0, 16.0), 1e-4);
}

TEST(axisymmetric, node_level_with_the_axis_takes_the_low_side)
{
    Project p = make_project(1, 0, 1, 9, 0, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = -10;
    p.axis_z = 4;
    set_line(p, 1, 1, {{-20, 0}, {40, 60}}); // z = y + 20
    interpolate_surface(p, 1);
    // Node (0, 4): r = 10, yy = 4 - 10 = -6, not 14.
    EXPECT_FLOAT_EQ(p.zgrid(1, 5, 1), 14.0f);
}

TEST(axisymmetric, column_one_beyond_the_end_reads_the_entry_past_the_end)
{
    // Line (0, 10), (2, 20); axis at X 0, Y -10; cols from y = 5.
    Project p = make_project(2, 0, 6, 3, 5, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = 0;
    p.axis_z = -10;
    set_line(p, 1, 1, {{0, 10}, {2, 20}});
    interpolate_surface(p, 1);
    // Row 1 col 1: r = 15, yy = 5 beyond the last point, col 1 so no flat
    // extension: 20 + (0 - 20) * (5 - 2) / (0 - 2) = 50.
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), 50.0f);
    // Further columns carry the value of the column before them.
    EXPECT_FLOAT_EQ(p.zgrid(1, 2, 1), 50.0f);
    EXPECT_FLOAT_EQ(p.zgrid(1, 3, 1), 50.0f);
    // Row 2 (x = 6) col 1: r = sqrt(36 + 225), yy = r - 10.
    const double yy = std::sqrt(261.0) - 10.0;
    const double z = 20.0 + (0.0 - 20.0) * (yy - 2.0) / (0.0 - 2.0);
    EXPECT_NEAR(p.zgrid(2, 1, 1), z, 1e-4);
    EXPECT_EQ(p.zgrid(2, 3, 1), p.zgrid(2, 1, 1));
}

TEST(axisymmetric, before_the_first_point_takes_the_first_elevation)
{
    Project p = make_project(1, 0, 1, 2, 0, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = -3;
    p.axis_z = -1;
    set_line(p, 1, 1, {{8, 7}, {20, 19}});
    interpolate_surface(p, 1);
    // yy = -1 + sqrt(10) and -1 + sqrt(13), both before y = 8.
    EXPECT_EQ(p.zgrid(1, 1, 1), 7.0f);
    EXPECT_EQ(p.zgrid(1, 2, 1), 7.0f);
}

TEST(axisymmetric, points_of_equal_y_give_the_first_point_elevation)
{
    // The last point and the entry past the end both at y 0: a node at
    // yy = 0 is bracketed by two equal Y and takes point 1's elevation, not
    // the 15 of the last point.
    Project p = make_project(1, 0, 1, 1, 0, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = 0;
    p.axis_z = 0;
    set_line(p, 1, 1, {{-10, 5}, {0, 15}});
    interpolate_surface(p, 1);
    EXPECT_EQ(p.zgrid(1, 1, 1), 5.0f);
}

TEST(axisymmetric, stale_entry_level_with_the_last_point_gives_the_first_elevation)
{
    Project p = make_project(1, 0, 1, 1, 6, 1, {0, 4});
    p.interp_method = 3;
    p.axis_y = 0;
    p.axis_z = 0;
    set_line(p, 1, 1, {{0, 10}, {4, 20}, {4, 99}});
    p.sections.n(1, 1) = 2;
    interpolate_surface(p, 1);
    // yy = 6 beyond the end at col 1: points 2 and 3 have equal Y.
    EXPECT_EQ(p.zgrid(1, 1, 1), 10.0f);
}

TEST(axisymmetric, empty_line_leaves_the_plane_and_the_flag_alone)
{
    Project p = make_project(2, 0, 1, 2, 0, 1, {0, 4});
    p.interp_method = 3;
    fill_plane(p, 1, 3);
    p.cur_x = 77;
    p.cur_y = 88;
    set_line(p, 2, 1, {{0, 1}, {5, 1}}); // only section 1 counts
    interpolate_surface(p, 1);
    EXPECT_EQ(p.zgrid(1, 1, 1), 3.0f);
    EXPECT_EQ(p.zgrid(2, 2, 1), 3.0f);
    EXPECT_EQ(p.surf_built[1], 0);
    EXPECT_EQ(p.cur_x, 77.0f);
    EXPECT_EQ(p.cur_y, 88.0f);
}

// ---- Interpolation Method form ----

TEST(interpolation_form, opens_on_the_method_in_force_with_zero_axis_texts)
{
    Project p;
    set_defaults(p);
    p.interp_method = 2;
    p.axis_y = 5;
    InterpolationForm f = open_interpolation_form(p);
    EXPECT_EQ(f.method, 2);
    EXPECT_EQ(f.axis_x_text, "0");
    EXPECT_EQ(f.axis_y_text, "0");
}

TEST(interpolation_form, axisymmetric_opens_with_the_axis_in_force)
{
    Project p;
    set_defaults(p);
    p.interp_method = 3;
    p.axis_y = -12.5f;
    p.axis_z = 140;
    InterpolationForm f = open_interpolation_form(p);
    EXPECT_EQ(f.method, 3);
    EXPECT_EQ(f.axis_x_text, "-12.5");
    EXPECT_EQ(f.axis_y_text, "140");
}

TEST(interpolation_form, choosing_a_method_sets_it_at_once_and_cancel_keeps_it)
{
    Project p;
    set_defaults(p);
    InterpolationForm f = open_interpolation_form(p);
    choose_method(p, f, 3);
    EXPECT_EQ(p.interp_method, 3);
    f.axis_x_text = "7";
    f.axis_y_text = "8";
    choose_method(p, f, 2);
    EXPECT_EQ(p.interp_method, 2);
    EXPECT_EQ(f.axis_x_text, "0");
    EXPECT_EQ(f.axis_y_text, "0");
    // Cancel just drops the form: the method chosen stays, the axis is not read.
    EXPECT_EQ(p.axis_y, 0.0f);
}

TEST(interpolation_form, continue_reads_the_axis_and_rebuilds_the_stack)
{
    Project p;
    set_defaults(p);
    set_line(p, 1, 1, {{0, 12}, {100, 12}});
    set_line(p, 2, 1, {{0, 12}, {100, 12}});
    p.form_mode = 0;
    InterpolationForm f = open_interpolation_form(p);
    choose_method(p, f, 3);
    f.axis_x_text = "-25.5m";
    f.axis_y_text = "abc";
    test::ScriptedPort port;
    EXPECT_EQ(continue_interpolation_form(p, f, port), InterpolationNext::rebuilt);
    EXPECT_EQ(p.axis_y, -25.5f); // leading number of the text
    EXPECT_EQ(p.axis_z, 0.0f);   // no number at all
    EXPECT_EQ(p.zgrid(3, 3, 1), 12.0f);
}

TEST(interpolation_form, continue_in_the_new_data_flow_leads_to_materials_without_rebuild)
{
    Project p;
    set_defaults(p);
    set_line(p, 1, 1, {{0, 12}, {100, 12}});
    set_line(p, 2, 1, {{0, 12}, {100, 12}});
    p.form_mode = 2;
    InterpolationForm f = open_interpolation_form(p);
    f.axis_x_text = "4";
    test::ScriptedPort port;
    EXPECT_EQ(continue_interpolation_form(p, f, port), InterpolationNext::to_materials);
    EXPECT_EQ(p.axis_y, 4.0f);
    EXPECT_EQ(p.zgrid(3, 3, 1), 0.0f);
}

TEST(numeric_entry, accepts_digits_and_backspace)
{
    for (char c = '0'; c <= '9'; ++c)
        EXPECT_TRUE(numeric_key_accepted("12", c));
    EXPECT_TRUE(numeric_key_accepted("12", '\b'));
}

TEST(numeric_entry, accepts_one_decimal_point_only)
{
    EXPECT_TRUE(numeric_key_accepted("12", '.'));
    EXPECT_FALSE(numeric_key_accepted("1.2", '.'));
}

TEST(numeric_entry, accepts_minus_only_as_first_character)
{
    EXPECT_TRUE(numeric_key_accepted("", '-'));
    EXPECT_FALSE(numeric_key_accepted("3", '-'));
    EXPECT_TRUE(numeric_key_accepted("3", '-', 0));
    EXPECT_FALSE(numeric_key_accepted("3", '-', 1));
    EXPECT_FALSE(numeric_key_accepted("-3", '-', 0));
}

TEST(numeric_entry, refuses_letters_blanks_and_control_keys)
{
    for (char c : {'a', 'E', 'e', ' ', '+', ',', '/', '\r', '\t'})
        EXPECT_FALSE(numeric_key_accepted("1", c)) << int(c);
}
