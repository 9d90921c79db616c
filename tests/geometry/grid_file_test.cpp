// Elevation grid files: the reader's questions and its swallowed item, the
// writer's form, and grids written by SURFER.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

#include "surfaces/grid_surface.h"
#include "geometry/grid_file.h"
#include "project/defaults.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "support/scripted_port.h"

using namespace tobel;
namespace fs = std::filesystem;

namespace {

const char* const wrong_file = "Wrong .GRD file.  Use 'Edit Stratigraphic Layer Surfaces' to correct.";
const char* const x_question =
    "Grid file uses different grid parameters in the X (transverse) direction.  Do "
    "you want to continue reading this file?";
const char* const y_question = "Grid file uses different grid parameters in the Y (longitudinal) direction.  "
                               "Do you want to continue reading this file?";

class GridFileTest : public ::testing::Test {
  protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir = fs::temp_directory_path() / ("tobel_grd_" + std::to_string(::getpid()) + "_" + info->name());
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override
    {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }
    fs::path dir;
};

std::string slurp(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void spit(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
}

// Two layers, a 3 (X) by 4 (Y) mesh over x 0..10 and y 0..30.
Project small_mesh()
{
    Project p;
    reset_project(p);
    p.num_layers = 2;
    derive_counts(p);
    p.num_rows = 3;
    p.num_cols = 4;
    p.x_min = 0;
    p.x_max = 10;
    p.y_min = 0;
    p.y_max = 30;
    p.row_spacing = 5;
    p.col_spacing = 10;
    redim_grids(p);
    return p;
}

// The grid of small_mesh with value 10 * row + column, rows separated by a
// blank line as the program writes them.
std::string small_grid_text()
{
    return "DSAA\r\n 4  3 \r\n 0  30 \r\n 0  10 \r\n 11  34 \r\n"
           " 11  12  13  14 \r\n\r\n"
           " 21  22  23  24 \r\n\r\n"
           " 31  32  33  34 \r\n\r\n";
}

bool same_bits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(grid_item, forms)
{
    EXPECT_EQ(grid_item(1.5f), " 1.5 ");
    EXPECT_EQ(grid_item(-1.5f), "-1.5 ");
    EXPECT_EQ(grid_item(0.25f), " .25 ");
    EXPECT_EQ(grid_item(0.f), " 0 ");
    EXPECT_EQ(grid_item(1.70141e38f), " 1.70141E+38 ");
    // 100/49 in single needs more than seven digits to come back.
    const float q = float(100.0 / 49.0);
    EXPECT_EQ(float(val(grid_item(q))), q);
    EXPECT_NE(float(val(general_text(q))), q);
}

TEST(grid_item, every_single_of_a_sweep_reads_back)
{
    float x = -1234.567f;
    for (int n = 0; n < 20000; ++n) {
        const std::string s = grid_item(x);
        ASSERT_TRUE(same_bits(float(val(s)), x)) << s;
        x = std::nextafter(x, 1e9f) * 1.0007f + 0.013f;
    }
}

TEST_F(GridFileTest, reads_own_grid_with_blank_lines)
{
    spit(path("a.GRD"), small_grid_text());
    Project p = small_mesh();
    test::ScriptedPort port;
    read_grid_file(p, path("a.GRD"), 1, port);
    EXPECT_TRUE(port.boxes.empty());
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            EXPECT_EQ(p.zgrid(i, j, 1), float(10 * i + j)) << i << "," << j;
    EXPECT_EQ(p.surf_built[1], 1);
    EXPECT_EQ(p.surface_defined, 0);
}

TEST_F(GridFileTest, surfer_grid_with_wrapped_rows_reads)
{
    // SURFER wraps a row after ten values and puts an empty line after each row.
    const int nx = 12, ny = 3;
    std::string t = "DSAA\n12 3\n0 110\n-5 5\n0 400\n";
    for (int i = 1; i <= ny; ++i) {
        for (int j = 1; j <= nx; ++j) {
            t += std::to_string(100 * i + j) + ".5";
            t += (j % 10 == 0 || j == nx) ? "\n" : " ";
        }
        t += "\n";
    }
    spit(path("s.GRD"), t);
    Project p = small_mesh();
    test::ScriptedPort port;
    port.answers = {Answer::yes, Answer::yes};
    read_grid_file(p, path("s.GRD"), 2, port);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[0].text, x_question);
    EXPECT_EQ(port.boxes[0].buttons, Buttons::yes_no);
    EXPECT_EQ(port.boxes[1].text, y_question);
    EXPECT_EQ(p.num_rows, 3);
    EXPECT_EQ(p.num_cols, 12);
    EXPECT_EQ(p.x_min, -5.0f);
    EXPECT_EQ(p.x_max, 5.0f);
    EXPECT_EQ(p.y_max, 110.0f);
    EXPECT_EQ(p.row_spacing, 5.0f);
    EXPECT_EQ(p.col_spacing, 10.0f);
    for (int i = 1; i <= ny; ++i)
        for (int j = 1; j <= nx; ++j)
            EXPECT_EQ(p.zgrid(i, j, 2), float(100 * i + j) + 0.5f) << i << "," << j;
}

TEST_F(GridFileTest, surfer_grid_with_crlf_and_trailing_blanks_reads)
{
    std::string t = "DSAA\r\n4 3\r\n0 30\r\n0 10\r\n0 1\r\n";
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 4; ++j)
            t += std::to_string(i * j) + "  ";
        t += "\r\n \r\n";
    }
    spit(path("s.GRD"), t);
    Project p = small_mesh();
    test::ScriptedPort port;
    read_grid_file(p, path("s.GRD"), 1, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.zgrid(3, 4, 1), 12.0f);
    EXPECT_EQ(p.zgrid(2, 3, 1), 6.0f);
}

TEST_F(GridFileTest, grid_without_blank_lines_loses_a_value_per_row)
{
    // 4 values a row and no separating lines: the item after each row is
    // thrown away, so row 2 starts with the second value of the file's row 2.
    std::string t = "DSAA\r\n4 3\r\n0 30\r\n0 10\r\n0 99\r\n";
    for (int n = 1; n <= 15; ++n)
        t += std::to_string(n) + (n % 4 == 0 ? "\r\n" : " ");
    spit(path("n.GRD"), t);
    Project p = small_mesh();
    test::ScriptedPort port;
    read_grid_file(p, path("n.GRD"), 1, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.zgrid(1, 1, 1), 1.0f);
    EXPECT_EQ(p.zgrid(1, 4, 1), 4.0f);
    EXPECT_EQ(p.zgrid(2, 1, 1), 6.0f);  // 5 was swallowed
    EXPECT_EQ(p.zgrid(3, 1, 1), 11.0f); // 10 was swallowed
    EXPECT_EQ(p.zgrid(3, 4, 1), 14.0f);
}

TEST_F(GridFileTest, limit_differing_in_sixth_decimal_asks)
{
    std::string t = small_grid_text();
    t.replace(t.find(" 0  10 "), 7, " 0  10.00001 ");
    spit(path("a.GRD"), t);
    Project p = small_mesh();
    p.zgrid(1, 1, 1) = -7;
    test::ScriptedPort port;
    port.answers = {Answer::no};
    read_grid_file(p, path("a.GRD"), 1, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, x_question);
    // No: nothing changed.
    EXPECT_EQ(p.x_max, 10.0f);
    EXPECT_EQ(p.zgrid(1, 1, 1), -7.0f);
    EXPECT_EQ(p.surf_built[1], 0);
}

TEST_F(GridFileTest, y_question_no_keeps_project)
{
    std::string t = small_grid_text();
    t.replace(t.find(" 0  30 "), 7, " 0  31 ");
    spit(path("a.GRD"), t);
    Project p = small_mesh();
    test::ScriptedPort port;
    port.answers = {Answer::no};
    read_grid_file(p, path("a.GRD"), 1, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, y_question);
    EXPECT_EQ(p.y_max, 30.0f);
    EXPECT_EQ(p.zgrid(1, 1, 1), 0.0f);
}

TEST_F(GridFileTest, yes_with_same_size_takes_limits_and_keeps_other_planes)
{
    std::string t = small_grid_text();
    t.replace(t.find(" 0  10 "), 7, " 2  12 ");
    spit(path("a.GRD"), t);
    Project p = small_mesh();
    p.zgrid(2, 2, 2) = 55;
    test::ScriptedPort port;
    port.answers = {Answer::yes};
    read_grid_file(p, path("a.GRD"), 1, port);
    EXPECT_EQ(p.x_min, 2.0f);
    EXPECT_EQ(p.x_max, 12.0f);
    EXPECT_EQ(p.zgrid(2, 2, 2), 55.0f); // not re-dimensioned
    EXPECT_EQ(p.zgrid(3, 3, 1), 33.0f);
}

TEST_F(GridFileTest, yes_with_different_size_clears_other_planes)
{
    spit(path("a.GRD"), "DSAA\r\n 2  2 \r\n 0  30 \r\n 0  10 \r\n 1  4 \r\n 1  2 \r\n\r\n 3  4 \r\n\r\n");
    Project p = small_mesh();
    p.zgrid(1, 1, 2) = 55;
    p.col_fos(1, 1) = 1.5f;
    test::ScriptedPort port;
    port.answers = {Answer::yes, Answer::yes};
    read_grid_file(p, path("a.GRD"), 1, port);
    EXPECT_EQ(p.num_rows, 2);
    EXPECT_EQ(p.num_cols, 2);
    EXPECT_EQ(p.zgrid.rows, 2);
    EXPECT_EQ(p.zgrid(1, 1, 2), 0.0f);
    EXPECT_EQ(p.col_fos(1, 1), 0.0f);
    EXPECT_EQ(p.zgrid(2, 2, 1), 4.0f);
    EXPECT_EQ(p.row_spacing, 10.0f);
    EXPECT_EQ(p.col_spacing, 30.0f);
}

TEST_F(GridFileTest, count_below_two_is_incorrect_and_kept)
{
    spit(path("a.GRD"), "DSAA\r\n 4  1 \r\n 0  30 \r\n 0  10 \r\n 0  1 \r\n 1  2  3  4 \r\n\r\n");
    Project p = small_mesh();
    test::ScriptedPort port;
    port.answers = {Answer::yes};
    read_grid_file(p, path("a.GRD"), 1, port);
    ASSERT_EQ(port.boxes.size(), 2u);
    EXPECT_EQ(port.boxes[1].text, "Incorrect .GRD file");
    EXPECT_EQ(p.num_rows, 1); // the counts stay as read
    EXPECT_EQ(p.num_cols, 4);
    EXPECT_EQ(p.zgrid.rows, 3); // but the grids were not re-dimensioned
    EXPECT_EQ(p.surf_built[1], 0);
}

TEST_F(GridFileTest, missing_file_is_a_wrong_file)
{
    Project p = small_mesh();
    test::ScriptedPort port;
    read_grid_file(p, path("none.GRD"), 1, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, wrong_file);
    EXPECT_EQ(p.surf_built[1], 0);
}

TEST_F(GridFileTest, short_file_keeps_what_was_read)
{
    std::string t = small_grid_text();
    t.resize(t.find(" 31 "));
    spit(path("a.GRD"), t);
    Project p = small_mesh();
    test::ScriptedPort port;
    read_grid_file(p, path("a.GRD"), 1, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, wrong_file);
    EXPECT_EQ(p.zgrid(2, 4, 1), 24.0f);
    EXPECT_EQ(p.zgrid(3, 1, 1), 0.0f);
    EXPECT_EQ(p.surf_built[1], 0);
}

TEST_F(GridFileTest, blank_node_reads_as_blank_value)
{
    std::string t = small_grid_text();
    t.replace(t.find(" 22 "), 4, " 1.70141E+38 ");
    spit(path("a.GRD"), t);
    Project p = small_mesh();
    p.base_z = -3;
    test::ScriptedPort port;
    read_grid_file(p, path("a.GRD"), 1, port);
    EXPECT_EQ(p.zgrid(2, 2, 1), 1.70141e38f);
}

TEST_F(GridFileTest, writes_plane_in_print_form)
{
    Project p = small_mesh();
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            p.zgrid(i, j, 1) = float(10 * i + j);
    p.zgrid(1, 2, 1) = -0.5f;
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);
    EXPECT_EQ(slurp(path("w.GRD")), "DSAA\r\n 4  3 \r\n 0  30 \r\n 0  10 \r\n-.5  34 \r\n"
                                    " 11 -.5  13  14 \r\n\r\n"
                                    " 21  22  23  24 \r\n\r\n"
                                    " 31  32  33  34 \r\n\r\n");
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "FILE " + path("w.GRD") + " WAS CREATED");
    EXPECT_EQ(port.boxes[0].buttons, Buttons::ok);
}

TEST_F(GridFileTest, writer_range_starts_at_ten_thousand)
{
    Project p = small_mesh();
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            p.zgrid(i, j, 1) = 20000;
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);
    const std::string t = slurp(path("w.GRD"));
    EXPECT_NE(t.find("\r\n 10000  20000 \r\n"), std::string::npos) << t;
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            p.zgrid(i, j, 1) = -20000;
    write_grid_file(p, 1, path("w.GRD"), port);
    EXPECT_NE(slurp(path("w.GRD")).find("\r\n-20000 -10000 \r\n"), std::string::npos);
}

TEST_F(GridFileTest, writer_recomputes_upper_limits_from_spacing)
{
    Project p = small_mesh();
    p.x_max = 11; // stale; the spacing says 0 + 2 * 5
    p.y_max = 99;
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);
    EXPECT_EQ(slurp(path("w.GRD")).substr(0, 30), "DSAA\r\n 4  3 \r\n 0  30 \r\n 0  10 ");
}

TEST_F(GridFileTest, writes_normals_and_factors_of_safety)
{
    Project p = small_mesh();
    p.col_normal(2, 3) = 7.25f;
    p.col_fos(3, 4) = 1.125f;
    test::ScriptedPort port;
    write_grid_file(p, p.sliding_index + 1, path("n.GRD"), port);
    write_grid_file(p, p.sliding_index + 2, path("f.GRD"), port);
    EXPECT_NE(slurp(path("n.GRD")).find(" 0  0  7.25  0 \r\n"), std::string::npos);
    EXPECT_NE(slurp(path("f.GRD")).find(" 0  0  0  1.125 \r\n\r\n"), std::string::npos);
}

TEST_F(GridFileTest, write_then_read_gives_same_plane_bit_for_bit)
{
    Project p = small_mesh();
    p.num_rows = 7;
    p.num_cols = 9;
    p.x_min = -3.3f;
    p.x_max = 9.1f;
    p.y_min = 1.7f;
    p.y_max = 50;
    p.row_spacing = float((double(p.x_max) - p.x_min) / 6);
    p.col_spacing = float((double(p.y_max) - p.y_min) / 8);
    redim_grids(p);
    for (int i = 1; i <= 7; ++i)
        for (int j = 1; j <= 9; ++j)
            p.zgrid(i, j, 1) = float(100.0 / (i + 2.0 * j)) * (j % 2 ? 1.0f : -1.0f) + 1e-3f * float(i);
    p.zgrid(4, 4, 1) = 1.70141e38f;
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);

    Project q = p;
    for (auto& v : q.zgrid.v)
        v = 0;
    test::ScriptedPort port2;
    port2.answers = {Answer::yes, Answer::yes};
    read_grid_file(q, path("w.GRD"), 2, port2);
    for (int i = 1; i <= 7; ++i)
        for (int j = 1; j <= 9; ++j)
            EXPECT_TRUE(same_bits(q.zgrid(i, j, 2), p.zgrid(i, j, 1))) << i << "," << j;
    EXPECT_EQ(q.x_min, p.x_min);
    EXPECT_EQ(q.y_min, p.y_min);
}

TEST_F(GridFileTest, default_mesh_written_reads_back_without_questions)
{
    Project p;
    reset_project(p);
    for (int i = 1; i <= 50; ++i)
        for (int j = 1; j <= 50; ++j)
            p.zgrid(i, j, 1) = float(i) * 0.37f - float(j) / 3.0f;
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);
    Project q = p;
    for (auto& v : q.zgrid.v)
        v = 0;
    test::ScriptedPort port2;
    read_grid_file(q, path("w.GRD"), 1, port2);
    EXPECT_TRUE(port2.boxes.empty()); // 49 * single(100/49) comes to 100 in single
    for (int i = 1; i <= 50; ++i)
        for (int j = 1; j <= 50; ++j)
            ASSERT_TRUE(same_bits(q.zgrid(i, j, 1), p.zgrid(i, j, 1)));
}

TEST_F(GridFileTest, two_dimensional_grid_writes_but_does_not_read_back)
{
    Project p = small_mesh();
    p.num_rows = 1;
    p.row_spacing = 1;
    p.x_max = 1;
    redim_grids(p);
    test::ScriptedPort port;
    write_grid_file(p, 1, path("w.GRD"), port);
    // The written upper X limit is x_min, not x_min + 1, so the X question
    // comes first.
    test::ScriptedPort port2;
    port2.answers = {Answer::yes};
    read_grid_file(p, path("w.GRD"), 1, port2);
    ASSERT_EQ(port2.boxes.size(), 2u);
    EXPECT_EQ(port2.boxes[0].text, x_question);
    EXPECT_EQ(port2.boxes[1].text, "Incorrect .GRD file");
    EXPECT_EQ(slurp(path("w.GRD")).substr(0, 31), "DSAA\r\n 4  1 \r\n 0  30 \r\n 0  0 \r\n");
}

TEST_F(GridFileTest, sliding_surface_from_grid_is_ready_to_solve)
{
    Project p = small_mesh();
    // Ground at 40 everywhere, the sliding plane of the file below it.
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j)
            p.zgrid(i, j, 2) = 40;
    p.form_mode = 3;
    spit(path("a.GRD"), small_grid_text());
    test::ScriptedPort port;
    read_grid_file(p, path("a.GRD"), p.sliding_index, port);
    EXPECT_EQ(p.surface_defined, -1);
    EXPECT_EQ(p.form_mode, 0);
    EXPECT_EQ(p.surf_built[std::size_t(p.sliding_index)], 1);
    EXPECT_EQ(p.zgrid(2, 2, p.sliding_index), 22.0f);
}

TEST_F(GridFileTest, write_to_missing_directory_fails)
{
    Project p = small_mesh();
    test::ScriptedPort port;
    try {
        write_grid_file(p, 1, path("missing/w.GRD"), port);
        FAIL() << "written";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_path_access);
    }
    EXPECT_TRUE(port.boxes.empty());
}
