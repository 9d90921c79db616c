// Search set-up records and forms, the picture limits they start from, and
// the search summary with its saved text.
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/auto_search_form.h"
#include "dialogs/grid_search_form.h"
#include "geometry/section_window.h"
#include "project/numtext.h"
#include "search/search_setup.h"
#include "search/summary.h"
#include "search_fixture.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::make_search_slope;
using test::ScriptedPort;

TEST(section_limits, wide_extent_fills_the_width_with_margins)
{
    FitInputs in;
    in.extent_left = 0;
    in.extent_bottom = 10;
    in.extent_width = 100;
    in.extent_height = 20;
    in.area_width = 800;
    in.area_height = 600;
    in.margin_ratio = 0.1f;
    const WorldWindow w = fit_window(in);
    // s = 100 / 0.8 / 800; the window is 125 by 93.75, the height centred.
    EXPECT_FLOAT_EQ(w.win_left, -12.5f);
    EXPECT_FLOAT_EQ(w.win_right, 112.5f);
    EXPECT_FLOAT_EQ(w.win_bottom, 10 - (93.75f - 20) / 2);
    EXPECT_FLOAT_EQ(w.win_top, 10 - (93.75f - 20) / 2 + 93.75f);
    EXPECT_FLOAT_EQ(w.pick_unit, 1.25f);
}

TEST(section_limits, tall_extent_fills_the_height_and_zero_width_counts_as_flat)
{
    FitInputs in;
    in.extent_width = 10;
    in.extent_height = 100;
    in.area_width = 800;
    in.area_height = 600;
    in.margin_ratio = 0.1f;
    WorldWindow w = fit_window(in);
    EXPECT_FLOAT_EQ(w.win_top - w.win_bottom, 125.0f);
    EXPECT_FLOAT_EQ(w.win_bottom, -12.5f);
    EXPECT_NEAR((w.win_left + w.win_right) / 2, 5.0f, 1e-4);
    in.extent_width = 0;
    w = fit_window(in);
    // Width branch with no width: a window of no size.
    EXPECT_FLOAT_EQ(w.win_right - w.win_left, 0.0f);
}

TEST(section_limits, z_range_is_raised_to_the_base)
{
    auto p = make_search_slope();
    p->base_z = 15;
    const ZRange r = find_z_range(*p);
    EXPECT_EQ(r.z_low, 15.0f);
    EXPECT_EQ(r.z_high, 30.0f);
}

TEST(search_setup, defaults_come_from_the_section_picture)
{
    auto p = make_search_slope();
    p->surface_defined = 0; // the picture leaves out the sliding plane
    p->vert_exag = 2;
    const WorldWindow w = longitudinal_section_window(*p);
    // Extent 100 wide and (30 - 10) * 2 high from 20: the width fills.
    EXPECT_FLOAT_EQ(w.win_left, -12.5f);
    const double zlo = w.win_bottom, zr = double(w.win_top) - zlo;
    EXPECT_NEAR(zr, 93.75, 1e-4);
    EXPECT_NEAR(zlo, 20 - (93.75 - 40) / 2, 1e-4);

    GridSearchRecord g;
    apply_grid_defaults(*p, g, w);
    EXPECT_NEAR(g.grid_tangent_z, (zlo + zr * 7 / 25) / 2, 1e-4);
    EXPECT_NEAR(g.grid_z_top, (zlo + zr * 5 / 6) / 2, 1e-4);
    EXPECT_NEAR(g.grid_z_bottom, g.grid_z_top - zr / 8 / 2, 1e-4);
    EXPECT_FLOAT_EQ(g.grid_y1, 20);
    EXPECT_NEAR(g.grid_y2, 20 + zr / 16, 1e-4);
    EXPECT_EQ(g.grid_ny, 6);
    EXPECT_EQ(g.grid_nz, 5);
    EXPECT_EQ(g.grid_point_y, g.grid_y1);
    EXPECT_EQ(g.grid_point_z, g.grid_tangent_z);

    AutoSearchRecord a;
    apply_auto_defaults(*p, a, w);
    // The auto search keeps the drawn (exaggerated) elevations.
    EXPECT_NEAR(a.auto_tangent_z, zlo + zr * 7 / 25, 1e-4);
    EXPECT_NEAR(a.auto_z, zlo + zr * 5 / 6, 1e-4);
    EXPECT_FLOAT_EQ(a.auto_y, 20);
    EXPECT_NEAR(a.auto_step, 125.0 / 70, 1e-5);
    EXPECT_EQ(a.auto_point_z, a.auto_tangent_z);
}

TEST(search_setup, grid_record_read_from_the_store_raises_its_bottom_and_counts_five)
{
    auto p = make_search_slope();
    p->tangent_z = 12;
    p->grid_z_lr = 8;
    p->grid_n_y = 0;
    const GridSearchRecord r = load_grid_record(*p);
    EXPECT_EQ(r.grid_z_bottom, 12.0f);
    EXPECT_EQ(r.grid_ny, 5.0f);
}

TEST(search_setup, storing_sets_the_radius_by_the_option)
{
    auto p = make_search_slope();
    GridSearchRecord g;
    g.grid_y1 = 10;
    g.grid_z_top = 50;
    g.grid_tangent_z = 20;
    g.grid_point_y = 13;
    g.grid_point_z = 46;
    store_grid_record(*p, g);
    EXPECT_EQ(p->radius_in, 30.0f);
    p->grid_use_common = 1;
    store_grid_record(*p, g);
    EXPECT_EQ(p->radius_in, 5.0f);
    AutoSearchRecord a;
    a.auto_y = 40;
    a.auto_z = 44;
    a.auto_tangent_z = 4;
    store_auto_record(*p, a);
    EXPECT_EQ(p->radius_in, 40.0f);
    EXPECT_EQ(p->auto_y, 40.0f);
}

TEST(search_forms, blank_store_opens_on_proposals_and_a_filled_one_as_stored)
{
    auto p = make_search_slope();
    GridSearchForm g = open_grid_search_form(*p);
    EXPECT_EQ(p->view_mode, 7);
    EXPECT_EQ(g.record.grid_ny, 6.0f);
    EXPECT_FLOAT_EQ(g.record.grid_y1, 20);
    p->auto_y = 33;
    p->auto_z = 44;
    AutoSearchForm a = open_auto_search_form(*p);
    EXPECT_EQ(p->view_mode, 8);
    EXPECT_EQ(a.record.auto_y, 33.0f);
    EXPECT_EQ(a.record.auto_step, 0.0f);
}

// A single ellipsoid set before leaves a tangent plane at 12; the grid's
// corners were never set, so the grid form still opens on its proposals
// (6 by 5 centres, the first Y a fifth into the mesh: 0 + 100 / 5 = 20).
TEST(search_forms, a_tangent_plane_of_a_single_ellipsoid_does_not_hide_a_blank_grid)
{
    auto p = make_search_slope();
    p->tangent_z = 12;
    GridSearchForm g = open_grid_search_form(*p);
    EXPECT_EQ(g.record.grid_ny, 6.0f);
    EXPECT_EQ(g.record.grid_nz, 5.0f);
    EXPECT_FLOAT_EQ(g.record.grid_y1, 20);
    EXPECT_GT(g.record.grid_z_top, g.record.grid_z_bottom);
}

TEST(search_forms, common_point_toggle_relabels_the_block)
{
    GridSearchForm g;
    g.record.grid_tangent_z = 7;
    g.record.grid_point_z = 9;
    auto c = search_block_captions(g.common_point);
    EXPECT_EQ(c.command, "Change to Common Point");
    EXPECT_EQ(c.heading, "Common Tangent Planes:");
    EXPECT_EQ(c.first, "Initial Elevation");
    EXPECT_EQ(c.second, "Spacing");
    EXPECT_EQ(grid_form_block(g, 1), 7.0f);
    grid_form_toggle_common(g);
    c = search_block_captions(g.common_point);
    EXPECT_EQ(c.command, "Change to Common Tangent");
    EXPECT_EQ(c.heading, "Common Point Coordinates:");
    EXPECT_EQ(c.first, "Y-Coordinate");
    EXPECT_EQ(c.second, "Z-Coordinate");
    EXPECT_EQ(grid_form_block(g, 2), 9.0f);
}

TEST(search_forms, continue_stores_builds_the_first_ellipsoid_and_offers_the_search)
{
    auto p = make_search_slope();
    ScriptedPort port;
    p->surface_defined = 0;
    GridSearchForm g = open_grid_search_form(*p);
    g.record.grid_x = 0;
    g.record.grid_y1 = 45;
    g.record.grid_z_top = 50;
    g.record.grid_tangent_z = 10;
    g.record.grid_aspect = 1;
    EXPECT_EQ(continue_grid_search_form(*p, g, port), SearchFormNext::search_ready);
    EXPECT_EQ(p->grid_y_ul, 45.0f);
    EXPECT_EQ(p->radius_in, 40.0f);
    EXPECT_EQ(p->surface_defined, -1);
    EXPECT_EQ(p->surface_kind, 1);
    EXPECT_TRUE(p->menus["gridsearchsolv"].visible);
    EXPECT_FALSE(p->menus["autosearchsolv"].visible);
    // Y = 44, one off the centre, on the circle of radius 40.
    EXPECT_NEAR(p->zgrid(1, 23, p->sliding_index), 50 - std::sqrt(1600.0 - 1.0), 1e-4);
    EXPECT_EQ(port.views.back(), (std::pair<int, std::string>(1, "LONGITUDINAL SECTION")));
    p->form_mode = 6;
    AutoSearchForm a = open_auto_search_form(*p);
    EXPECT_EQ(continue_auto_search_form(*p, a, port), SearchFormNext::to_wedge_form);
}

TEST(search_forms, mesh_x_line_and_section_row)
{
    auto p = make_search_slope();
    p->x_max = 100;
    p->row_spacing = 10;
    EXPECT_EQ(search_mesh_x_line(*p),
              "Mesh X = " + format(0.0f, "####0.#") + " to " + format(100.0f, "####0.#"));
    GridSearchForm g;
    grid_form_enter_x(*p, g, "25abc");
    EXPECT_EQ(g.record.grid_x, 25.0f);
    EXPECT_EQ(p->view_row, 3); // CInt(2.5) = 2, plus 1
}

// Three recorded trials, the second the best.
std::unique_ptr<Project> three_trials()
{
    auto p = make_search_slope();
    p->project_title = "Dam";
    p->input_by = "Me";
    p->view_mode = 9;
    SearchState& s = p->search;
    s.summary_count = 3;
    s.summary_fos = {0, 1.5f, 1.23456f, 2.0f};
    s.summary_y = {0, 45, 46.5f, 1234.5f};
    s.summary_z = {0, 50, 51, 52};
    s.summary_radius = {0, 40, 41.25f, 42};
    s.summary_volume = {0, 1234.567f, 10, 0.5f};
    s.best_trial = 2;
    return p;
}

TEST(search_summary, three_trials_show_five_blank_rows_and_no_scroll)
{
    auto p = three_trials();
    SummaryView v = summary_open(*p);
    const auto rows = summary_refresh(*p, v);
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows[0].label, "Surface  1");
    EXPECT_EQ(rows[0].colour, 0);
    EXPECT_EQ(rows[1].colour, 255);
    EXPECT_EQ(rows[0].cells[0], "1.500");
    EXPECT_EQ(rows[1].cells[0], "1.235");
    EXPECT_EQ(rows[0].cells[4], "1235");
    EXPECT_EQ(rows[2].cells[1], "1234.50");
    for (int r = 3; r < 8; ++r) {
        EXPECT_EQ(rows[std::size_t(r)].label, "");
        for (const auto& c : rows[std::size_t(r)].cells)
            EXPECT_EQ(c, "");
    }
    EXPECT_FALSE(summary_scroll_visible(*p));
}

TEST(search_summary, scroll_shows_from_eight_trials)
{
    auto p = three_trials();
    p->search.summary_count = 8;
    EXPECT_TRUE(summary_scroll_visible(*p));
    EXPECT_EQ(summary_scroll_max(*p), 1);
}

TEST(search_summary, saved_text_has_the_heading_and_one_line_per_trial)
{
    auto p = three_trials();
    const auto lines = search_summary_lines(*p, "05/31/2024");
    const std::vector<std::string> expect = {
        "GRID SEARCH SUMMARY",
        "",
        "PROJECT:      Dam",
        "Input By:     Me",
        "Date:         05/31/2024",
        "",
        "Surface #, Factor of Safety, Y-coord., Z-coord., Radius, Slide Volume",
        "Surface  1, 1.5, 45, 50, 40, 1234.57",
        "Surface  2, 1.235, 46.5, 51, 41.25, 10",
        "Surface  3, 2, 1234.5, 52, 42, .5",
    };
    EXPECT_EQ(lines, expect);
    p->view_mode = 10;
    EXPECT_EQ(search_summary_lines(*p, "x")[0], "AUTO SEARCH SUMMARY");
}

TEST(search_summary, typed_cell_changes_the_display_only)
{
    auto p = three_trials();
    SummaryView v = summary_open(*p);
    summary_type_cell(v, 1, 0, "9.5xyz");
    EXPECT_EQ(v.cells[1][0], "9.5");
    EXPECT_EQ(summary_refresh(*p, v)[0].cells[0], "9.5");
    test::ScratchDir dir;
    save_search_summary(*p, dir.file("s.txt"));
    const std::string text = test::read_bytes(dir.file("s.txt"));
    EXPECT_NE(text.find("Surface  1, 1.5, 45, 50, 40, 1234.57\r\n"), std::string::npos);
    EXPECT_NE(text.find("Date:         " + short_date_today() + "\r\n"), std::string::npos);
    EXPECT_EQ(text.find("9.5"), std::string::npos);
}

TEST(search_summary, save_as_cancel_writes_nothing_and_failure_shows_the_error_box)
{
    auto p = three_trials();
    ScriptedPort port;
    port.files.push_back(std::nullopt);
    summary_save_as(*p, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(port.dialog_filters.back(), "Text Files (*.txt)|*.txt");
    port.files.push_back(std::string("/nonexistent-dir/x/s.txt"));
    summary_save_as(*p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text.rfind("Error #", 0), 0u);
}

} // namespace
} // namespace tobel
