#include <gtest/gtest.h>

#include <string>

#include "commands/open_project.h"
#include "commands/commands.h"
#include "project/defaults.h"
#include "project/legacy_file.h"
#include "commands/menu_model.h"
#include "project/runtime_error.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScratchDir;
using test::ScriptedPort;

std::string crlf(const std::string& text)
{
    std::string out;
    for (char c : text) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

// Two-dimensional, no extra line set, one Coulomb layer; section 1 has no
// sliding line. The file's Y maximum (999) is not the mesh's.
const char* two_d_tod = R"(Legacy slope
Old data set
Engineer
 5  7  0
 99  3  4
 9.81  1  0  0
 10  999  2  888  5
 21  1  2
 11  12
Sand
 18  1
 5  6  30  31  0  .5
 0
 3
 10  10
 30  20
 50  20
 0
 100
 3
 10  10
 30  20
 50  20
 2
 10  15
 50  15
 25  1.5  0  30  40  12
 .1  1
dropped line one
dropped line two
-5  100  0  40  20
 0  1  2
 0  20  10  1  30  180
dropped line
 1  2  3  4  5
 6  7  8  9  10
 1  2  3  4  5  6  7  0  1
 9  9
 9
 1  2  3  4  5
)";

// Three-dimensional with the extra line set: two layers (the upper one
// non-linear), one piezometric surface, one discontinuity, wedges, forces.
const char* three_d_tod = R"(Legacy 3-D
With extra lines
Someone
 0  0 -1
 0  50  60
 62.4  2  1  1
 0  0  5  0  10
 11  3  2
 0  0
Clay
 20  1
 15  16  25  26 -1  .2
Rock
 24  3
 1.5  .8  5000  .3  .25  0
Joint
 0  1
 2  2  18  18  0  0
 0
 2
 0  5
 50  5
 2
 0  10
 50  20
 2
 0  7
 50  9
 2
 0  12
 50  3
 2
 0  1
 50  2
 20
 2
 0  5
 50  5
 2
 0  12
 50  22
 2
 0  8
 50  10
 0
 1
 0  3
 25  2  10  20  30  5
 0  2
dropped
dropped
 0  100  10  20  30
-10  0  5  5  5
 7  3  0
 0  10  5  1  20  0
 0  20  6  0  40  90
 0  30  7  0  60 -90
dropped line
 1  2  3  4  5  6  7  3  0
 1  1  1
 5  5  5  5  5
)";

Project loaded()
{
    Project p;
    main_load(p);
    return p;
}

Project read_tod(const std::string& text, ScratchDir& dir)
{
    const std::string path = dir.file("old.tod");
    test::write_bytes(path, crlf(text));
    Project p = loaded();
    reset_project(p);
    ScriptedPort port;
    read_legacy_file(p, path, port);
    return p;
}

TEST(legacy_file, two_d_file_keeps_the_values_the_model_holds)
{
    ScratchDir dir;
    Project p = read_tod(two_d_tod, dir);
    EXPECT_EQ(p.project_title, "Legacy slope");
    EXPECT_EQ(p.dataset_title, "Old data set");
    EXPECT_EQ(p.input_by, "Engineer");
    EXPECT_EQ(p.axis_y, 3.0f);
    EXPECT_EQ(p.axis_z, 4.0f);
    EXPECT_EQ(p.unit_weight_water, 9.81f);
    EXPECT_EQ(p.num_layers, 1);
    EXPECT_EQ(p.sliding_index, 2);
    EXPECT_EQ(p.num_mat_entries, 1);
    EXPECT_EQ(p.y_min, 10.0f);
    EXPECT_EQ(p.col_spacing, 2.0f);
    EXPECT_EQ(p.num_cols, 21);
    EXPECT_EQ(p.num_rows, 1);
    EXPECT_EQ(p.num_sections, 2);
    EXPECT_EQ(p.mat_name[1], "Sand");
    EXPECT_EQ(p.mat_unit_weight[1], 18.0f);
    EXPECT_EQ(p.mat_type[1], 1);
    EXPECT_EQ(p.mat_cohesion[1], 5.0f);
    EXPECT_EQ(p.mat_cohesion_v[1], 6.0f);
    EXPECT_EQ(p.mat_phi[1], 30.0f);
    EXPECT_EQ(p.mat_phi_v[1], 31.0f);
    EXPECT_EQ(p.mat_piezo[1], 0.0f);
    EXPECT_EQ(p.mat_bbar[1], 0.5f);
    EXPECT_EQ(p.sections.x[2], 100.0f);
    EXPECT_EQ(p.crack_y, 25.0f);
    EXPECT_EQ(p.crack_mode, 0); // the crack's mode is not in the file
    EXPECT_EQ(p.aspect_in, 1.5f);
    EXPECT_EQ(p.search_x, 0.0f);
    EXPECT_EQ(p.single_y, 30.0f);
    EXPECT_EQ(p.single_z, 40.0f);
    EXPECT_EQ(p.tangent_z, 12.0f);
    // Unlike the data file, the earthquake coefficient itself is kept.
    EXPECT_EQ(p.eq_coef, 0.1f);
    EXPECT_EQ(p.num_forces, 1);
    EXPECT_EQ(p.force_h[1], -5.0f);
    EXPECT_EQ(p.force_v[1], 100.0f);
    EXPECT_EQ(p.force_y[1], 40.0f);
    EXPECT_EQ(p.force_z[1], 20.0f);
    EXPECT_EQ(p.num_wedges, 1);
    EXPECT_EQ(p.wedge_y[1], 20.0f);
    EXPECT_EQ(p.wedge_z[1], 10.0f);
    EXPECT_EQ(p.wedge_code[1], 1.0f);
    EXPECT_EQ(p.wedge_dip[1], 30.0f);
    EXPECT_EQ(p.wedge_dipdir[1], 180.0f);
}

TEST(legacy_file, mesh_limits_come_from_the_spacings_and_a_single_row_gets_spacing_1)
{
    ScratchDir dir;
    Project p = read_tod(two_d_tod, dir);
    EXPECT_EQ(p.x_min, 0.0f);
    EXPECT_EQ(p.x_max, 0.0f); // (1 - 1) * 5, before the spacing becomes 1
    EXPECT_EQ(p.row_spacing, 1.0f);
    EXPECT_EQ(p.y_max, 50.0f); // 20 * 2 + 10, not the 999 of the file
}

TEST(legacy_file, section_without_sliding_line_copies_the_ground_line)
{
    ScratchDir dir;
    Project p = read_tod(two_d_tod, dir);
    ASSERT_EQ(p.sections.n(1, 2), 3);
    for (int n = 1; n <= 3; ++n) {
        EXPECT_EQ(p.sections.y(1, n, 2), p.sections.y(1, n, 1));
        EXPECT_EQ(p.sections.z(1, n, 2), p.sections.z(1, n, 1));
    }
    // Section 2 has its own sliding line.
    EXPECT_EQ(p.sections.n(2, 2), 2);
    EXPECT_EQ(p.sections.z(2, 1, 2), 15.0f);
}

TEST(legacy_file, every_surface_is_interpolated_from_the_sections)
{
    ScratchDir dir;
    Project p = read_tod(two_d_tod, dir);
    for (int k = 1; k <= 2; ++k) {
        EXPECT_EQ(p.surf_method[k], 0);
        EXPECT_EQ(p.surf_loaded[k], 0);
    }
    // The row lies on section 1: ground 10 up to Y 10, 20 from Y 30, linear between.
    EXPECT_FLOAT_EQ(p.zgrid(1, 1, 1), 10.0f);  // Y 10
    EXPECT_FLOAT_EQ(p.zgrid(1, 6, 1), 15.0f);  // Y 20
    EXPECT_FLOAT_EQ(p.zgrid(1, 11, 1), 20.0f); // Y 30
    EXPECT_FLOAT_EQ(p.zgrid(1, 21, 1), 20.0f); // Y 50
    for (int j = 1; j <= 21; ++j)
        EXPECT_EQ(p.zgrid(1, j, 2), p.zgrid(1, j, 1)) << j;
}

TEST(legacy_file, reader_hides_solve_and_shows_project_menus)
{
    ScratchDir dir;
    Project p = loaded();
    p.menus["Solve"].visible = true;
    const std::string path = dir.file("old.tod");
    test::write_bytes(path, crlf(two_d_tod));
    reset_project(p);
    p.menus["Solve"].visible = true;
    ScriptedPort port;
    read_legacy_file(p, path, port);
    EXPECT_FALSE(p.menus.at("Solve").visible);
    EXPECT_TRUE(p.menus.at("Edit_material_properties").visible);
    EXPECT_FALSE(p.menus.at("Graphics_Isometry").visible); // one row
}

TEST(legacy_file, three_d_file_with_extra_line_set_and_non_linear_material)
{
    ScratchDir dir;
    Project p = read_tod(three_d_tod, dir);
    EXPECT_EQ(p.axis_y, 50.0f);
    EXPECT_EQ(p.axis_z, 60.0f);
    EXPECT_EQ(p.unit_weight_water, 62.4f);
    EXPECT_EQ(p.num_layers, 2);
    EXPECT_EQ(p.num_piezos, 1);
    EXPECT_EQ(p.num_discs, 1);
    EXPECT_EQ(p.sliding_index, 4);
    EXPECT_EQ(p.num_mat_entries, 3);
    EXPECT_EQ(p.num_rows, 3);
    EXPECT_EQ(p.num_cols, 11);
    EXPECT_EQ(p.row_spacing, 10.0f);
    EXPECT_EQ(p.x_max, 20.0f);
    EXPECT_EQ(p.y_max, 50.0f);

    EXPECT_EQ(p.mat_cohesion[1], 15.0f);
    EXPECT_EQ(p.mat_phi_v[1], 26.0f);
    EXPECT_EQ(p.mat_piezo[1], -1.0f);
    EXPECT_EQ(p.mat_bbar[1], 0.2f);
    // Non-linear: the six values are A, B, uniaxial strength, D, piezo, B bar.
    EXPECT_EQ(p.mat_type[2], 3);
    EXPECT_EQ(p.mat_coef_a[2], 1.5f);
    EXPECT_EQ(p.mat_coef_b[2], 0.8f);
    EXPECT_EQ(p.mat_uniaxial[2], 5000.0f);
    EXPECT_EQ(p.mat_coef_d[2], 0.3f);
    EXPECT_EQ(p.mat_piezo[2], 0.25f);
    EXPECT_EQ(p.mat_cohesion[2], 0.0f);
    EXPECT_EQ(p.mat_name[3], "Joint");
    EXPECT_EQ(p.mat_phi[3], 18.0f);

    // The extra line set sits above the sliding surface.
    EXPECT_EQ(p.sections.n(1, 5), 2);
    EXPECT_EQ(p.sections.z(1, 2, 5), 2.0f);
    EXPECT_EQ(p.sections.n(2, 5), 1);
    EXPECT_EQ(p.sections.z(2, 1, 5), 3.0f);
    // Section 1 keeps its sliding line, section 2 takes its ground line.
    EXPECT_EQ(p.sections.z(1, 2, 4), 3.0f);
    EXPECT_EQ(p.sections.n(2, 4), 2);
    EXPECT_EQ(p.sections.z(2, 2, 4), 22.0f);

    EXPECT_EQ(p.crack_y, 25.0f);
    EXPECT_EQ(p.single_z, 30.0f);
    EXPECT_EQ(p.eq_coef, 0.0f);
    EXPECT_EQ(p.num_forces, 2);
    EXPECT_EQ(p.force_x[1], 10.0f);
    EXPECT_EQ(p.force_h[2], -10.0f);
    EXPECT_EQ(p.num_wedges, 3);
    EXPECT_EQ(p.wedge_z[2], 6.0f);
    EXPECT_EQ(p.wedge_dipdir[2], 90.0f);
    EXPECT_EQ(p.wedge_dip[3], 60.0f);
    EXPECT_EQ(p.wedge_dipdir[3], -90.0f);
}

TEST(legacy_file, three_d_surfaces_interpolate_between_sections)
{
    ScratchDir dir;
    Project p = read_tod(three_d_tod, dir);
    // Row 2 lies midway (X 10) between the sections at 0 and 20; column 6 is Y 25.
    EXPECT_FLOAT_EQ(p.zgrid(2, 6, 2), (15.0f + 17.0f) / 2);
    EXPECT_FLOAT_EQ(p.zgrid(2, 6, 4), (7.5f + 17.0f) / 2);
    EXPECT_FLOAT_EQ(p.zgrid(3, 6, 4), 17.0f);
    EXPECT_FLOAT_EQ(p.zgrid(1, 11, 3), 9.0f);
}

TEST(legacy_file, short_file_fails_at_the_end)
{
    ScratchDir dir;
    std::string text = two_d_tod;
    text = text.substr(0, text.find(" 25  1.5"));
    const std::string path = dir.file("short.tod");
    test::write_bytes(path, crlf(text));
    Project p = loaded();
    reset_project(p);
    ScriptedPort port;
    try {
        read_legacy_file(p, path, port);
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_input_past_end);
    }
    EXPECT_EQ(p.num_cols, 21); // as far as it got
}

TEST(open_legacy, opens_through_the_tod_dialog_without_touching_the_recent_list)
{
    ScratchDir dir;
    const std::string path = dir.file("old.tod");
    test::write_bytes(path, crlf(two_d_tod));
    Project p = loaded();
    p.open_recent_pending = -1; // the recent file case does not apply
    ScriptedPort port;
    port.files.push_back(path);
    file_open_legacy(p, port);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], "TOBEL Files (*.TOD)|*.TOD");
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.recent_count, 0);
    EXPECT_EQ(p.data_file_path, path);
    EXPECT_EQ(p.main_caption, "TOBEL_3          File " + path);
    EXPECT_EQ(p.dirty_flag, -1);
    EXPECT_EQ(p.view_mode, 5);
    EXPECT_EQ(p.project_title, "Legacy slope");
    ASSERT_FALSE(port.views.empty());
    EXPECT_EQ(port.views.back().second, "LONGITUDINAL SECTION");
}

TEST(open_legacy, cancel_leaves_the_project_untouched)
{
    Project p = loaded();
    p.project_title = "Mine";
    ScriptedPort port;
    file_open_legacy(p, port);
    EXPECT_EQ(p.project_title, "Mine");
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.dirty_flag, 0);
}

TEST(open_legacy, bad_file_shows_the_error_box)
{
    ScratchDir dir;
    Project p = loaded();
    ScriptedPort port;
    port.files.push_back(dir.file("none.tod"));
    file_open_legacy(p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text.rfind("Error # 53 occured: ", 0), 0u) << port.boxes[0].text;
    EXPECT_EQ(p.recent_count, 0);
}

} // namespace
} // namespace tobel
