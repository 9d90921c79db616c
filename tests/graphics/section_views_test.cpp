#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "graphics/drawing.h"
#include "graphics/recording_surface.h"
#include "graphics/section_views.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

constexpr Colour layer1 = 11, layer2 = 22, piezo1 = 33, water = 133, sliding_c = 99;

// Three rows 10 apart (X 0 to 20) and three columns 10 apart (Y 0 to 20).
// Stack: layer 1 (4, 5, 6 along Y), the ground (10, 9 - (row - 1) / 2, 8),
// one piezometric surface (7 + (row - 1) / 2 everywhere) and the sliding
// surface (10, 6, 8). Elevations 4 to 10 on an 800 by 600 picture with
// margin 0.1 give, by the width branch of the fit, a window 25 wide and
// 18.75 high: Y -2.5 to 22.5, Z -2.375 to 16.375, 32 pixels to the unit.
std::unique_ptr<Project> section_project(int rows = 3)
{
    auto p = make_project({rows, 3, 0, float(rows > 1 ? (rows - 1) * 10 : 0), 0, 20, 2});
    p->num_piezos = 1;
    derive_counts(*p);
    redim_grids(*p);
    for (int r = 1; r <= rows; ++r) {
        const float dr = float(r - 1) * 0.5f;
        const float l1[] = {4, 5, 6}, gr[] = {10, 9 - dr, 8}, sl[] = {10, 6, 8};
        for (int c = 1; c <= 3; ++c) {
            p->zgrid(r, c, 1) = l1[c - 1];
            p->zgrid(r, c, 2) = gr[c - 1];
            p->zgrid(r, c, 3) = 7 + dr;
            p->zgrid(r, c, 4) = sl[c - 1];
        }
    }
    p->layer_colour[1] = layer1;
    p->layer_colour[2] = layer2;
    p->piezo_colour[1] = piezo1;
    p->piezo_colour[13] = water;
    p->sliding_colour = sliding_c;
    p->surface_defined = -1;
    p->view_mode = 1;
    p->view_row = 2;
    p->view_col = 2;
    p->data_file_path = "C:\\A.TOB";
    return p;
}

using Run = std::vector<RunPoint>;

std::vector<Run> runs_of(const DisplayList& list, Colour colour)
{
    std::vector<Run> out;
    for (const auto& item : list.items)
        if (item.op == DrawOp::lines && item.colour == colour)
            out.push_back(run_points(list, item));
    return out;
}

std::vector<const DrawItem*> items_of(const DisplayList& list, DrawOp op)
{
    std::vector<const DrawItem*> out;
    for (const auto& item : list.items)
        if (item.op == op)
            out.push_back(&item);
    return out;
}

void expect_run(const Run& run, const std::vector<RunPoint>& want)
{
    ASSERT_EQ(run.size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i) {
        EXPECT_FLOAT_EQ(run[i].x, want[i].x) << "point " << i;
        EXPECT_FLOAT_EQ(run[i].y, want[i].y) << "point " << i;
    }
}

std::vector<RunPoint> polygon_points(const DisplayList& list, const DrawItem& item)
{
    return run_points(list, item);
}

const DisplayList& section_picture(const Project& p)
{
    return p.pictures.section.picture;
}

// ---- frame ---------------------------------------------------------------------

TEST(LongitudinalSection, fits_the_window_to_the_elevation_range_with_margin_one_tenth)
{
    auto p = section_project();
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_FLOAT_EQ(p->view.win_left, -2.5f);
    EXPECT_FLOAT_EQ(p->view.win_right, 22.5f);
    EXPECT_FLOAT_EQ(p->view.win_bottom, -2.375f);
    EXPECT_FLOAT_EQ(p->view.win_top, 16.375f);
    EXPECT_FLOAT_EQ(p->view.z_low, 4.0f);
    EXPECT_FLOAT_EQ(p->view.z_high, 10.0f);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         LONGITUDINAL CROSS-SECTION");
    EXPECT_EQ(p->pictures.section.caption, "LONGITUDINAL SECTION");
    ASSERT_EQ(port.views.size(), 1u);
    EXPECT_EQ(port.views[0].first, 1);
}

TEST(LongitudinalSection, scroll_bar_runs_over_the_rows_and_its_label_gives_the_row_x)
{
    auto p = section_project();
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const PictureWindow& w = p->pictures.section;
    EXPECT_TRUE(w.scroll.visible);
    EXPECT_EQ(w.scroll.min, 1);
    EXPECT_EQ(w.scroll.max, 3);
    EXPECT_TRUE(w.scroll_label_visible);
    EXPECT_EQ(w.scroll_label, "X=10.00"); // row 2: 0 + 1 * 10
    EXPECT_TRUE(w.pointer_labels_visible);
}

TEST(LongitudinalSection, single_row_hides_the_scroll_bar_and_draws_row_one)
{
    auto p = section_project(1);
    p->view_row = 3; // beyond the mesh
    p->pictures.section.scroll.visible = true;
    p->pictures.section.scroll_label_visible = true;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_EQ(p->view_row, 1);
    EXPECT_FALSE(p->pictures.section.scroll.visible);
    EXPECT_FALSE(p->pictures.section.scroll_label_visible);
    EXPECT_EQ(p->pictures.section.scroll_label, "X=0.00");
    const auto piezo = runs_of(section_picture(*p), piezo1);
    ASSERT_EQ(piezo.size(), 1u);
    expect_run(piezo[0], {{0, 7}, {10, 7}, {20, 7}}); // the piezometric surface of row 1
}

TEST(LongitudinalSection, redraw_only_keeps_the_window_where_it_is)
{
    auto p = section_project();
    p->view.redraw_only = true;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_TRUE(port.views.empty());
    EXPECT_FALSE(section_picture(*p).empty());
}

TEST(LongitudinalSection, kept_window_is_used_as_it_stands)
{
    auto p = section_project();
    p->keep_window = -1;
    p->view.win_left = 0;
    p->view.win_bottom = 0;
    p->view.win_right = 40;
    p->view.win_top = 30;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto scales = items_of(section_picture(*p), DrawOp::scale);
    ASSERT_FALSE(scales.empty());
    const float* f = &section_picture(*p).coords[scales[0]->first];
    EXPECT_FLOAT_EQ(f[0], 0.0f);
    EXPECT_FLOAT_EQ(f[1], 30.0f);
    EXPECT_FLOAT_EQ(f[2], 40.0f);
    EXPECT_FLOAT_EQ(f[3], 0.0f);
}

// ---- full colour fill ------------------------------------------------------

TEST(LongitudinalSection, full_colour_polygons_close_on_the_lower_boundary_of_column_one)
{
    auto p = section_project();
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    const auto polys = items_of(list, DrawOp::polygon);
    ASSERT_EQ(polys.size(), 2u);
    // Device pixels: x = (y + 2.5) * 32, y = (16.375 - z) * 32. Layer 1
    // stands on the base line (16.375 + 2.375) / 12 - 2.375 = -0.8125, pixel
    // 550; the repeated first point at the end is left out.
    EXPECT_EQ(polys[0]->colour, layer1);
    expect_run(polygon_points(list, *polys[0]),
               {{80, 550}, {80, 396}, {400, 364}, {720, 332}, {720, 550}, {720, 550}, {400, 550}});
    // Layer 2 on layer 1 along row 2 (ground 10, 8.5, 8). Its fifth point is
    // at the last Y but at the lower boundary of column 1 (z 4, pixel 396),
    // not of column 3 (z 6, pixel 332).
    EXPECT_EQ(polys[1]->colour, layer2);
    expect_run(polygon_points(list, *polys[1]),
               {{80, 396}, {80, 204}, {400, 252}, {720, 268}, {720, 396}, {720, 332}, {400, 364}});
}

TEST(LongitudinalSection, water_layer_is_filled_in_the_water_colour)
{
    auto p = section_project();
    p->mat_type[2] = 5;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto polys = items_of(section_picture(*p), DrawOp::polygon);
    ASSERT_EQ(polys.size(), 2u);
    EXPECT_EQ(polys[0]->colour, layer1);
    EXPECT_EQ(polys[1]->colour, water);
}

TEST(LongitudinalSection, full_colour_draws_lines_only_above_the_layers_sliding_first)
{
    auto p = section_project();
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    EXPECT_TRUE(runs_of(list, layer1).empty());
    EXPECT_TRUE(runs_of(list, layer2).empty());
    const auto slide = runs_of(list, sliding_c);
    const auto piezo = runs_of(list, piezo1);
    ASSERT_EQ(slide.size(), 1u);
    ASSERT_EQ(piezo.size(), 1u);
    expect_run(slide[0], {{0, 10}, {10, 6}, {20, 8}});
    expect_run(piezo[0], {{0, 7.5}, {10, 7.5}, {20, 7.5}}); // row 2
    std::size_t slide_at = 0, piezo_at = 0;
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        if (list.items[i].op != DrawOp::lines)
            continue;
        if (list.items[i].colour == sliding_c)
            slide_at = i;
        if (list.items[i].colour == piezo1)
            piezo_at = i;
        if (list.items[i].colour == sliding_c || list.items[i].colour == piezo1) {
            EXPECT_EQ(list.items[i].width, 2);
        }
    }
    EXPECT_LT(slide_at, piezo_at);
}

TEST(LongitudinalSection, crossing_surfaces_are_painted_in_stack_order_without_clipping)
{
    auto p = section_project();
    for (int r = 1; r <= 3; ++r)
        p->zgrid(r, 3, 1) = 9; // layer 1 rises above the ground (8) at Y = 20
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    const auto polys = items_of(list, DrawOp::polygon);
    ASSERT_EQ(polys.size(), 2u);
    EXPECT_EQ(polys[0]->colour, layer1);
    EXPECT_EQ(polys[1]->colour, layer2);
    // Layer 1 keeps its top at z 9 (pixel (16.375 - 9) * 32 = 236), above the
    // ground; layer 2 painted afterwards runs down to it.
    EXPECT_FLOAT_EQ(polygon_points(list, *polys[0])[3].y, 236.0f);
    EXPECT_FLOAT_EQ(polygon_points(list, *polys[1])[5].y, 236.0f);
}

// ---- other fills -----------------------------------------------------------

TEST(LongitudinalSection, lines_only_has_no_fill_and_every_layer_top_as_a_line)
{
    auto p = section_project();
    p->view.fill_style = 2;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    EXPECT_TRUE(items_of(list, DrawOp::polygon).empty());
    const auto l1 = runs_of(list, layer1), l2 = runs_of(list, layer2);
    ASSERT_EQ(l1.size(), 1u);
    ASSERT_EQ(l2.size(), 1u);
    expect_run(l1[0], {{0, 4}, {10, 5}, {20, 6}});
    expect_run(l2[0], {{0, 10}, {10, 8.5}, {20, 8}});
    EXPECT_EQ(runs_of(list, piezo1).size(), 1u);
    EXPECT_EQ(runs_of(list, sliding_c).size(), 1u);
}

TEST(LongitudinalSection, hatching_draws_one_thick_stroke_a_column_from_the_lower_boundary)
{
    auto p = section_project();
    p->view.fill_style = 1;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    EXPECT_TRUE(items_of(list, DrawOp::polygon).empty());
    // Layer 1: three strokes up from the base line -0.8125, then its top line.
    const auto l1 = runs_of(list, layer1);
    ASSERT_EQ(l1.size(), 4u);
    expect_run(l1[0], {{0, -0.8125f}, {0, 4}});
    expect_run(l1[1], {{10, -0.8125f}, {10, 5}});
    expect_run(l1[2], {{20, -0.8125f}, {20, 6}});
    expect_run(l1[3], {{0, 4}, {10, 5}, {20, 6}});
    // Layer 2 strokes rise from layer 1.
    const auto l2 = runs_of(list, layer2);
    ASSERT_EQ(l2.size(), 4u);
    expect_run(l2[1], {{10, 5}, {10, 8.5}});
    for (const auto& item : list.items)
        if (item.op == DrawOp::lines && (item.colour == layer1 || item.colour == layer2)) {
            EXPECT_EQ(item.width, 2);
        }
}

TEST(LateralSection, hatching_strokes_are_thick_too)
{
    auto p = section_project();
    p->view.fill_style = 1;
    p->view_mode = 2;
    ScriptedPort port;
    draw_lateral_section(*p, port);
    const DisplayList& list = section_picture(*p);
    // Along column 2: layer 1 at 5 on every row, the ground 9, 8.5, 8.
    const auto l2 = runs_of(list, layer2);
    ASSERT_EQ(l2.size(), 4u);
    expect_run(l2[0], {{0, 5}, {0, 9}});
    expect_run(l2[2], {{20, 5}, {20, 8}});
    for (const auto& item : list.items)
        if (item.op == DrawOp::lines && item.colour == layer2) {
            EXPECT_EQ(item.width, 2);
        }
}

// ---- sliding surface --------------------------------------------------------

TEST(LongitudinalSection, no_sliding_surface_leaves_it_out)
{
    auto p = section_project();
    p->surface_defined = 0;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_TRUE(runs_of(section_picture(*p), sliding_c).empty());
    EXPECT_EQ(runs_of(section_picture(*p), piezo1).size(), 1u);
}

TEST(LongitudinalSection, hidden_sliding_surface_is_left_out)
{
    auto p = section_project();
    p->view.hide_sliding = true;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_TRUE(runs_of(section_picture(*p), sliding_c).empty());
}

TEST(LateralSection, draws_the_sliding_entry_as_it_stands_without_a_surface)
{
    auto p = section_project();
    p->surface_defined = 0;
    p->view.hide_sliding = true;
    p->view_mode = 2;
    ScriptedPort port;
    draw_lateral_section(*p, port);
    const auto slide = runs_of(section_picture(*p), sliding_c);
    ASSERT_EQ(slide.size(), 1u);
    expect_run(slide[0], {{0, 6}, {10, 6}, {20, 6}}); // column 2 of every row
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         LATERAL CROSS-SECTION");
    EXPECT_EQ(p->pictures.section.caption, "LATERAL SECTION");
    EXPECT_EQ(p->pictures.section.scroll_label, "Y=10.00");
    EXPECT_EQ(p->pictures.section.scroll.max, 3);
}

TEST(LateralSection, fits_a_new_window_even_when_the_window_is_kept)
{
    auto p = section_project();
    p->keep_window = -1;
    p->view.win_left = 100;
    p->view_mode = 2;
    ScriptedPort port;
    draw_lateral_section(*p, port);
    EXPECT_FLOAT_EQ(p->view.win_left, -2.5f); // X 0 to 20 with margin 0.1
}

// ---- moment centre and forces ------------------------------------------------

TEST(LongitudinalSection, moment_centre_is_a_dot_at_its_exaggerated_elevation)
{
    auto p = section_project();
    p->vert_exag = 2;
    p->centre_y = 10;
    p->centre_z = 3;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const DisplayList& list = section_picture(*p);
    bool found = false;
    for (const auto* dot : items_of(list, DrawOp::dot))
        if (list.coords[dot->first] == 10.0f && list.coords[dot->first + 1] == 6.0f)
            found = true;
    EXPECT_TRUE(found);
}

// A force of 10 pushing down at (Y 10, Z 6) with force_peak 10. With
// vert_exag 2 the window is still 18.75 high, so the scale is
// 18.75 / 4 / 10 and the shaft is 4.6875 long; the head is 18.75 / 20 =
// 0.9375 long.
std::unique_ptr<Project> force_project(float force_x)
{
    auto p = section_project();
    p->vert_exag = 2;
    p->num_forces = 1;
    p->force_x[1] = force_x;
    p->force_y[1] = 10;
    p->force_z[1] = 6;
    p->force_v[1] = 10;
    p->force_h[1] = 0;
    p->force_peak = 10;
    return p;
}

TEST(LongitudinalSection, force_arrow_tip_stands_at_the_true_elevation)
{
    auto p = force_project(15);
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto red = runs_of(section_picture(*p), force_red);
    ASSERT_EQ(red.size(), 4u); // shafts, two head sides, the base
    // Tip at z 6, not 12; the zero horizontal shaft joins the vertical one.
    expect_run(red[0], {{10, 6}, {10, 6}, {10, 10.6875f}});
    EXPECT_FLOAT_EQ(red[3][0].y, 6.9375f);
    EXPECT_FLOAT_EQ(red[3][1].y, 6.9375f);
}

TEST(LongitudinalSection, force_at_half_a_spacing_above_the_row_belongs_to_it)
{
    auto p = force_project(15); // row 2 at X 10 takes (5, 15]
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_FALSE(runs_of(section_picture(*p), force_red).empty());
}

TEST(LongitudinalSection, force_at_half_a_spacing_below_the_row_belongs_to_the_previous_row)
{
    auto p = force_project(5);
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_TRUE(runs_of(section_picture(*p), force_red).empty());
    p->view_row = 1; // X 0 takes (-5, 5]
    draw_longitudinal_section(*p, port);
    EXPECT_FALSE(runs_of(section_picture(*p), force_red).empty());
}

TEST(LongitudinalSection, force_with_negative_x_is_taken_at_its_size)
{
    auto p = force_project(-15);
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    EXPECT_EQ(runs_of(section_picture(*p), force_red).size(), 4u);
}

TEST(LongitudinalSection, flagged_component_is_drawn_as_zero)
{
    auto p = force_project(10);
    p->force_v_ignored[1] = 1;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto red = runs_of(section_picture(*p), force_red);
    ASSERT_EQ(red.size(), 1u); // two zero-length shafts and no head
    expect_run(red[0], {{10, 6}, {10, 6}, {10, 6}});
}

TEST(LongitudinalSection, zero_force_peak_gives_arrows_of_no_length)
{
    auto p = force_project(10);
    p->force_peak = 0;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto red = runs_of(section_picture(*p), force_red);
    ASSERT_FALSE(red.empty());
    for (const auto& pt : red[0]) {
        EXPECT_FLOAT_EQ(pt.x, 10.0f);
        EXPECT_FLOAT_EQ(pt.y, 6.0f);
    }
}

TEST(LongitudinalSection, water_thrusts_of_the_row_are_blue_horizontal_arrows)
{
    auto p = section_project();
    p->head_water_force[2] = -20;
    p->head_water_y[2] = 2;
    p->head_water_z[2] = 5;
    p->crack_water_force[2] = 10;
    p->crack_water_z[2] = 7;
    p->head_water_force[1] = -100; // another row: not drawn
    p->force_peak = 20;
    ScriptedPort port;
    draw_longitudinal_section(*p, port);
    const auto blue = runs_of(section_picture(*p), water_blue);
    // Scale 18.75 / 6 / 20 = 0.15625: the ponded water pushes -3.125, so
    // its shaft runs from the tip (2, 5) to 2 + 3.125; the crack water
    // pushes 1.5625 at its own elevation 7 from the same Y.
    ASSERT_FALSE(blue.empty());
    expect_run(blue[0], {{2, 5}, {5.125f, 5}});
    bool crack = false;
    for (const auto& run : blue)
        if (run.size() >= 2 && run[0].x == 2.0f && run[0].y == 7.0f && run[1].x == 0.4375f &&
            run[1].y == 7.0f)
            crack = true;
    EXPECT_TRUE(crack);
    for (const auto& run : blue)
        for (const auto& pt : run)
            EXPECT_LT(pt.x, 6.0f); // the -100 of row 1 would reach 2 + 15.625
}

// ---- search section -------------------------------------------------------------

TEST(SearchSection, draws_on_the_search_window_without_forces_centre_or_title)
{
    auto p = force_project(10);
    p->centre_y = 10;
    p->centre_z = 3;
    p->view_mode = 9;
    ScriptedPort port;
    draw_search_section(*p, port);
    const DisplayList& list = p->pictures.search.picture;
    EXPECT_TRUE(section_picture(*p).empty());
    EXPECT_FALSE(list.empty());
    EXPECT_TRUE(runs_of(list, force_red).empty());
    for (const auto* dot : items_of(list, DrawOp::dot))
        EXPECT_NE(list.coords[dot->first], 10.0f); // only the surfaces' first nodes at Y 0
    EXPECT_EQ(p->main_caption, "TOBEL-3");
    EXPECT_FALSE(p->pictures.search.scroll.visible);
    EXPECT_FALSE(p->pictures.search.pointer_labels_visible);
    EXPECT_EQ(runs_of(list, sliding_c).size(), 1u); // a running search shows it
}

TEST(SearchSection, set_up_sketches_leave_the_sliding_surface_out)
{
    for (const int mode : {3, 7, 8}) {
        auto p = section_project();
        p->view_mode = int16(mode);
        ScriptedPort port;
        draw_search_section(*p, port);
        EXPECT_TRUE(runs_of(p->pictures.search.picture, sliding_c).empty()) << mode;
        EXPECT_EQ(runs_of(p->pictures.search.picture, piezo1).size(), 1u);
    }
}

TEST(SearchSection, hatching_leaves_a_thick_pen_like_the_longitudinal_section)
{
    auto p = section_project();
    p->view.fill_style = 1;
    p->view_mode = 9;
    ScriptedPort port;
    draw_search_section(*p, port);
    EXPECT_EQ(runs_of(p->pictures.search.picture, layer1).size(), 4u);
}

// ---- force peak -------------------------------------------------------------------

TEST(FindForcePeak, takes_component_and_water_magnitudes)
{
    auto p = section_project();
    p->num_forces = 2;
    p->force_h[1] = -3;
    p->force_v[1] = 2;
    p->force_h[2] = 1;
    p->force_v[2] = -5;
    find_force_peak(*p);
    EXPECT_EQ(p->force_peak, 5.0f);
    p->num_forces = 1;
    find_force_peak(*p);
    EXPECT_EQ(p->force_peak, 3.0f); // the size of -3, not -3
    p->crack_water_force[3] = -7;
    find_force_peak(*p);
    EXPECT_EQ(p->force_peak, 7.0f);
}

TEST(FindForcePeak, no_forces_keep_the_old_value)
{
    auto p = section_project();
    p->num_forces = 0;
    p->force_peak = 42;
    find_force_peak(*p);
    EXPECT_EQ(p->force_peak, 42.0f);
}

// ---- pointer labels, scroll bar, activation -------------------------------------

TEST(PointerLabels, longitudinal_reads_y_and_true_z_rounded_up_a_tenth)
{
    auto p = section_project();
    p->vert_exag = 2;
    PictureWindow& w = p->pictures.section;
    section_pointer_labels(*p, w, 12.34, 20.5);
    // Int(123.4 + 1) / 10 = 12.4; 20.5 / 2 = 10.25: Int(102.5 + 1) / 10 = 10.3.
    // The signed text form adds its own blank after the caption's.
    EXPECT_EQ(w.pointer_labels[0], " Y =  12.4");
    EXPECT_EQ(w.pointer_labels[1], " Z =  10.3");
}

TEST(PointerLabels, lateral_reads_x_and_z)
{
    auto p = section_project();
    p->view_mode = 2;
    PictureWindow& w = p->pictures.section;
    section_pointer_labels(*p, w, 5, 2);
    // A whole value gains a tenth: Int(50 + 1) / 10 = 5.1.
    EXPECT_EQ(w.pointer_labels[0], " X =  5.1");
    EXPECT_EQ(w.pointer_labels[1], " Z =  2.1");
}

TEST(PointerLabels, plan_calls_the_horizontal_axis_x_and_keeps_y_unscaled)
{
    auto p = section_project();
    p->view_mode = 6;
    p->vert_exag = 2;
    PictureWindow& w = p->pictures.section;
    section_pointer_labels(*p, w, 3, -2.35);
    // Int(-23.5 + 1) = -23: -2.3.
    EXPECT_EQ(w.pointer_labels[0], " X =  3.1");
    EXPECT_EQ(w.pointer_labels[1], " Y = -2.3");
}

TEST(PointerLabels, other_views_leave_the_labels_alone)
{
    auto p = section_project();
    p->view_mode = 5;
    PictureWindow& w = p->pictures.section;
    w.pointer_labels = {"a", "b"};
    section_pointer_labels(*p, w, 3, 4);
    EXPECT_EQ(w.pointer_labels[0], "a");
    EXPECT_EQ(w.pointer_labels[1], "b");
}

TEST(ScrollBar, change_after_a_program_change_is_skipped_once)
{
    auto p = section_project();
    p->view_row = 1;
    p->view.skip_scroll_event = true;
    ScriptedPort port;
    section_scroll_changed(*p, port, 3);
    EXPECT_EQ(p->view_row, 1);
    EXPECT_FALSE(p->view.skip_scroll_event);
    EXPECT_TRUE(section_picture(*p).empty());
    section_scroll_changed(*p, port, 3);
    EXPECT_EQ(p->view_row, 3);
    EXPECT_FALSE(section_picture(*p).empty());
    // The redraw writes the frame's own label over the event's " X =20.00".
    EXPECT_EQ(p->pictures.section.scroll_label, "X=20.00");
    const auto piezo = runs_of(section_picture(*p), piezo1);
    ASSERT_EQ(piezo.size(), 1u);
    expect_run(piezo[0], {{0, 8}, {10, 8}, {20, 8}}); // row 3
}

TEST(ScrollBar, lateral_change_moves_to_another_column)
{
    auto p = section_project();
    p->view_mode = 2;
    ScriptedPort port;
    section_scroll_changed(*p, port, 3);
    EXPECT_EQ(p->view_col, 3);
    EXPECT_EQ(p->pictures.section.caption, "LATERAL SECTION");
    const auto slide = runs_of(section_picture(*p), sliding_c);
    ASSERT_EQ(slide.size(), 1u);
    expect_run(slide[0], {{0, 8}, {10, 8}, {20, 8}}); // column 3
}

TEST(ScrollBar, other_views_ignore_the_change)
{
    auto p = section_project();
    p->view_mode = 6;
    ScriptedPort port;
    section_scroll_changed(*p, port, 3);
    EXPECT_EQ(p->view_row, 2);
    EXPECT_EQ(p->view_col, 2);
    EXPECT_TRUE(section_picture(*p).empty());
}

TEST(Activation, visible_scroll_bar_lets_the_caption_choose_the_section_mode)
{
    auto p = section_project();
    p->view_mode = 6;
    p->pictures.section.caption = "LATERAL SECTION";
    p->pictures.section.scroll.visible = true;
    picture_activated(*p);
    EXPECT_EQ(p->view_mode, 2);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         LATERAL CROSS-SECTION");
    p->pictures.section.caption = "LONGITUDINAL SECTION";
    picture_activated(*p);
    EXPECT_EQ(p->view_mode, 1);
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         LONGITUDINAL CROSS-SECTION");
}

TEST(Activation, hidden_scroll_bar_makes_only_the_plan_test)
{
    auto p = section_project();
    p->view_mode = 6;
    p->pictures.section.caption = "LONGITUDINAL SECTION";
    p->pictures.section.scroll.visible = false;
    picture_activated(*p);
    EXPECT_EQ(p->view_mode, 6);
    EXPECT_EQ(p->main_caption, "TOBEL-3");
    p->pictures.section.caption = "PLAN VIEW";
    p->view_mode = 3;
    picture_activated(*p);
    EXPECT_EQ(p->view_mode, 3); // unchanged by the plan
    EXPECT_EQ(p->main_caption, "TOBEL_3          File C:\\A.TOB         PLAN, COLUMN ASSEMBLY");
}

} // namespace
} // namespace tobel::test
