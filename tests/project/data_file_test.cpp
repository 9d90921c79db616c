// The item reader and the .TOB data file: exact bytes, round trips and the
// quirks of the format.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

#include "commands/open_project.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/runtime_error.h"
#include "support/scripted_port.h"

using namespace tobel;
namespace fs = std::filesystem;

namespace {

std::string blanks(int n)
{
    return std::string(std::size_t(n), ' ');
}

// A directory of its own for each test.
class DataFileTest : public ::testing::Test {
  protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir = fs::temp_directory_path() / ("tobel_df_" + std::to_string(::getpid()) + "_" + info->name());
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override
    {
        std::error_code ec;
        fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add, ec);
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

Project fresh()
{
    Project p;
    reset_project(p);
    return p;
}

// One layer, two sections, one force: a small project whose file is worked
// out by hand below.
Project small_project()
{
    Project p = fresh();
    p.project_title = "Slope A";
    p.dataset_title = "Set 1";
    p.input_by = "Me";
    p.num_cols = 11;
    p.num_rows = 5;
    p.mat_name[1] = "Clay";
    p.mat_unit_weight[1] = 18.5f;
    p.mat_type[1] = 1;
    p.mat_cohesion[1] = p.mat_cohesion_v[1] = 10;
    p.mat_phi[1] = p.mat_phi_v[1] = 25;
    p.mat_piezo[1] = 0.25f;
    for (int s = 1; s <= 2; ++s) {
        p.sections.n(s, 1) = 2;
        p.sections.y(s, 1, 1) = 0;
        p.sections.z(s, 1, 1) = 50;
        p.sections.y(s, 2, 1) = 100;
        p.sections.z(s, 2, 1) = 40;
    }
    p.base_z = -10;
    p.search_x = 50;
    p.single_y = 60;
    p.single_z = 80;
    p.tangent_z = 20;
    p.aspect_in = 1;
    p.radius_in = 60;
    p.num_forces = 1;
    p.force_h[1] = 100;
    p.force_v[1] = -50.5f;
    p.force_x[1] = 10;
    p.force_y[1] = 20;
    p.force_z[1] = 30;
    return p;
}

// The file of small_project, zone by zone: an item "x" is " x " (or "-x "),
// and the next item starts at column 15, 29, 43, ... beyond the position.
std::string small_project_file()
{
    const std::string z11 = blanks(11), z10 = blanks(10), z9 = blanks(9), z8 = blanks(8);
    std::string f;
    auto line = [&](const std::string& s) { f += s + "\r\n"; };
    line("Slope A");
    line("Set 1");
    line("Me");
    line(" 9.81 " + z8 + " 1 " + z11 + " 0 " + z11 + " 0 ");
    line(" 0 " + z11 + " 100 " + z9 + " 0 " + z11 + " 100 ");
    line(" 11 " + z10 + " 5 " + z11 + " 2 ");
    line(" 1 " + z11 + " 0 " + z11 + " 0 ");
    line("Clay");
    line(" 18.5 " + z8 + " 1 " + z11 + " 10 " + z10 + " 10 " + z10 + " 25 " + z10 + " 25 ");
    line(" 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " .25 " + z9 + " 0 " + z11 + " .25 " + z9 +
         " 0 ");
    line(" 0 " + z11 + " 0 " + z11 + "*.GRD");
    line(" 0 " + z11 + " 0 " + z11 + "*.GRD");
    for (const char* x : {" 0 ", " 100 "}) {
        line(x);
        line(" 2 ");
        line(" 0 " + z11 + " 50 ");
        line(" 100 " + z9 + " 40 ");
        line(" 0 ");
    }
    line("-10 ");
    line(" 50 " + z10 + " 60 " + z10 + " 80 " + z10 + " 20 " + z10 + " 1 " + z11 + " 60 ");
    std::string zeros = " 0 ";
    for (int i = 0; i < 8; ++i)
        zeros += z11 + " 0 ";
    line(zeros);
    line(" 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " 0 ");
    line(" 0 ");
    line(" 1 ");
    line(" 100 " + z9 + "-50.5 " + z8 + " 10 " + z10 + " 20 " + z10 + " 30 ");
    line(" 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " 0 ");
    line("True");
    return f;
}

} // namespace

// ---------------------------------------------------------------- item reader

TEST(input_reader, numbers_split_at_blanks_commas_and_line_ends)
{
    auto in = InputReader::from_text(" 1  2,3\r\n4\n5\r6\t7");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.number(), 2);
    EXPECT_EQ(in.number(), 3);
    EXPECT_EQ(in.number(), 4);
    EXPECT_EQ(in.number(), 5);
    EXPECT_EQ(in.number(), 6);
    EXPECT_EQ(in.number(), 7);
    EXPECT_TRUE(in.eof());
}

TEST(input_reader, blanks_before_a_comma_make_one_separator)
{
    auto in = InputReader::from_text("1   , 2 ,3");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.number(), 2);
    EXPECT_EQ(in.number(), 3);
}

TEST(input_reader, trailing_blanks_before_line_end_make_one_separator)
{
    auto in = InputReader::from_text(" 1  2 \r\n 3 \r\n");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.number(), 2);
    EXPECT_EQ(in.number(), 3);
    EXPECT_TRUE(in.eof());
}

TEST(input_reader, empty_items_read_as_zero)
{
    auto in = InputReader::from_text("1,,2\r\n\r\n3");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.number(), 0); // between the two commas
    EXPECT_EQ(in.number(), 2);
    EXPECT_EQ(in.number(), 0); // the empty line
    EXPECT_EQ(in.number(), 3);
}

TEST(input_reader, line_of_blanks_is_one_empty_item)
{
    auto in = InputReader::from_text("1\r\n   \r\n2");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.number(), 0);
    EXPECT_EQ(in.number(), 2);
}

TEST(input_reader, words_read_as_zero)
{
    auto in = InputReader::from_text("True False 12abc");
    EXPECT_EQ(in.number(), 0);
    EXPECT_EQ(in.number(), 0);
    EXPECT_EQ(in.number(), 12);
}

TEST(input_reader, line_takes_whole_line)
{
    auto in = InputReader::from_text("  a, \"b\" ,c  \r\nnext\nlast");
    EXPECT_EQ(in.line(), "  a, \"b\" ,c  ");
    EXPECT_EQ(in.line(), "next");
    EXPECT_EQ(in.line(), "last");
    EXPECT_TRUE(in.eof());
}

TEST(input_reader, line_after_number_starts_on_next_line)
{
    auto in = InputReader::from_text(" 1 \r\nName, with comma\r\n");
    EXPECT_EQ(in.number(), 1);
    EXPECT_EQ(in.line(), "Name, with comma");
}

TEST(input_reader, empty_line_reads_as_empty_text)
{
    auto in = InputReader::from_text("\r\nx");
    EXPECT_EQ(in.line(), "");
    EXPECT_EQ(in.line(), "x");
}

TEST(input_reader, text_item_runs_to_comma_or_line_end)
{
    auto in = InputReader::from_text("   my file.GRD   \r\na,b\r\n 7");
    EXPECT_EQ(in.text_item(), "my file.GRD");
    EXPECT_EQ(in.text_item(), "a");
    EXPECT_EQ(in.text_item(), "b");
    EXPECT_EQ(in.number(), 7);
}

TEST(input_reader, integer16_rounds_half_to_even)
{
    auto in = InputReader::from_text("2.5 3.5 -2.5 7.49");
    EXPECT_EQ(in.integer16(), 2);
    EXPECT_EQ(in.integer16(), 4);
    EXPECT_EQ(in.integer16(), -2);
    EXPECT_EQ(in.integer16(), 7);
}

TEST(input_reader, integer16_out_of_range_overflows)
{
    auto in = InputReader::from_text("32767 -32768\r\n32768", "f");
    EXPECT_EQ(in.integer16(), 32767);
    EXPECT_EQ(in.integer16(), -32768);
    try {
        in.integer16();
        FAIL() << "no overflow";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_overflow);
        EXPECT_NE(e.description().find("f, line 2"), std::string::npos) << e.description();
    }
    auto big = InputReader::from_text("1E30", "f");
    EXPECT_THROW(big.integer16(), RuntimeError);
}

TEST(input_reader, reading_past_end_names_file_and_line)
{
    auto in = InputReader::from_text("1\r\n2\r\n", "data.TOB");
    in.number();
    in.number();
    try {
        in.number();
        FAIL() << "read past end";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_input_past_end);
        EXPECT_NE(e.description().find("data.TOB, line 3"), std::string::npos) << e.description();
    }
    EXPECT_THROW(in.line(), RuntimeError);
    EXPECT_THROW(in.text_item(), RuntimeError);
}

TEST(input_reader, blanks_at_end_are_not_an_item)
{
    auto in = InputReader::from_text("1   ");
    EXPECT_EQ(in.number(), 1);
    EXPECT_THROW(in.number(), RuntimeError);
}

TEST(input_reader, missing_file_is_file_not_found)
{
    try {
        InputReader in("/nonexistent/dir/x.TOB");
        FAIL() << "opened";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_file_not_found);
        EXPECT_NE(e.description().find("/nonexistent/dir/x.TOB"), std::string::npos);
    }
}

// ------------------------------------------------------------------ writing

TEST_F(DataFileTest, writes_small_project_byte_for_byte)
{
    Project p = small_project();
    write_data_file(p, path("a.TOB"));
    EXPECT_EQ(slurp(path("a.TOB")), small_project_file());
}

TEST_F(DataFileTest, saving_fills_empty_names_in_the_project)
{
    Project p = small_project();
    p.mat_name[1] = "";
    p.surf_grd_file[2] = "";
    write_data_file(p, path("a.TOB"));
    EXPECT_EQ(p.mat_name[1], "Material");
    EXPECT_EQ(p.surf_grd_file[1], "*.GRD");
    EXPECT_EQ(p.surf_grd_file[2], "*.GRD");
    const std::string text = slurp(path("a.TOB"));
    EXPECT_NE(text.find("\r\nMaterial\r\n"), std::string::npos);
}

TEST_F(DataFileTest, saving_recomputes_derived_counts)
{
    Project p = small_project();
    p.num_layers = 2; // derived counts left stale on purpose
    p.mat_name[2] = "Sand";
    write_data_file(p, path("a.TOB"));
    EXPECT_EQ(p.sliding_index, 3);
    EXPECT_EQ(p.num_mat_entries, 2);
    const std::string text = slurp(path("a.TOB"));
    EXPECT_NE(text.find("\r\nSand\r\n"), std::string::npos);
}

TEST_F(DataFileTest, earthquake_coefficient_is_kept_as_truth_word)
{
    Project p = small_project();
    p.eq_coef = 0.15f;
    write_data_file(p, path("a.TOB"));
    const std::string text = slurp(path("a.TOB"));
    ASSERT_GE(text.size(), 7u);
    EXPECT_EQ(text.substr(text.size() - 7), "False\r\n");
    Project q = fresh();
    test::ScriptedPort port;
    q.eq_coef = 0.3f;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.eq_coef, 0.0f);
}

TEST_F(DataFileTest, tod_extension_gets_the_same_layout)
{
    Project p = small_project();
    write_data_file(p, path("a.TOB"));
    write_data_file(p, path("a.TOD"));
    EXPECT_EQ(slurp(path("a.TOD")), slurp(path("a.TOB")));
}

TEST_F(DataFileTest, failed_save_leaves_old_file_intact)
{
    spit(path("a.TOB"), "old contents\r\n");
    // A directory where the new text would go first makes the save fail.
    fs::create_directories(path("a.TOB.tmp"));
    Project p = small_project();
    try {
        write_data_file(p, path("a.TOB"));
        FAIL() << "saved";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_path_access);
        EXPECT_NE(e.description().find(path("a.TOB")), std::string::npos);
    }
    EXPECT_EQ(slurp(path("a.TOB")), "old contents\r\n");
}

TEST_F(DataFileTest, save_into_missing_directory_fails_with_path_access)
{
    Project p = small_project();
    const std::string target = path("missing/a.TOB");
    try {
        write_data_file(p, target);
        FAIL() << "saved";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_path_access);
    }
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(DataFileTest, save_replaces_old_file_and_leaves_no_temporary)
{
    spit(path("a.TOB"), "old contents\r\n");
    Project p = small_project();
    write_data_file(p, path("a.TOB"));
    EXPECT_EQ(slurp(path("a.TOB")), small_project_file());
    EXPECT_FALSE(fs::exists(path("a.TOB.tmp")));
}

// ------------------------------------------------------------------ reading

TEST_F(DataFileTest, reads_hand_written_file)
{
    spit(path("a.TOB"), small_project_file());
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.project_title, "Slope A");
    EXPECT_EQ(q.input_by, "Me");
    EXPECT_EQ(q.num_cols, 11);
    EXPECT_EQ(q.num_rows, 5);
    EXPECT_EQ(q.sliding_index, 2);
    EXPECT_EQ(q.zgrid.rows, 5);
    EXPECT_EQ(q.zgrid.cols, 11);
    EXPECT_EQ(q.row_spacing, 25.0f); // 100 / 4
    EXPECT_EQ(q.col_spacing, 10.0f); // 100 / 10
    EXPECT_EQ(q.mat_name[1], "Clay");
    EXPECT_EQ(q.mat_unit_weight[1], 18.5f);
    EXPECT_EQ(q.mat_phi_v[1], 25.0f);
    EXPECT_EQ(q.mat_piezo[1], 0.25f);
    EXPECT_EQ(q.surf_grd_file[2], "*.GRD");
    EXPECT_EQ(q.sections.x[2], 100.0f);
    EXPECT_EQ(q.sections.n(2, 1), 2);
    EXPECT_EQ(q.sections.z(2, 2, 1), 40.0f);
    EXPECT_EQ(q.base_z, -10.0f);
    EXPECT_EQ(q.radius_in, 60.0f);
    EXPECT_EQ(q.num_forces, 1);
    EXPECT_EQ(q.force_v[1], -50.5f);
    EXPECT_EQ(q.force_z[1], 30.0f);
    EXPECT_EQ(q.eq_coef, 0.0f);
    EXPECT_TRUE(port.boxes.empty());
}

TEST_F(DataFileTest, round_trip_gives_identical_bytes)
{
    Project p = small_project();
    p.num_layers = 2;
    p.num_piezos = 1;
    p.num_discs = 1;
    derive_counts(p);
    p.mat_name[2] = "  Sand, \"dense\", wet";
    p.mat_type[2] = 2;
    p.mat_cohesion_v[2] = 3.25f;
    p.mat_name[3] = "Joint";
    p.mat_coef_a[3] = 1.5e-5f;
    p.mat_uniaxial[3] = 12345678.f;
    p.mat_piezo[2] = -1;
    p.project_title = " Slope, \"B\"";
    p.unit_weight_water = 62.4f;
    p.num_rows = 1;
    p.x_max = 1;
    p.surf_method[3] = 2;
    p.surf_depth[3] = 0.5f;
    p.num_wedges = 2;
    p.wedge_dip[2] = 35;
    p.wedge_dipdir[2] = -12.5f;
    p.wedge_code[2] = 1;
    p.crack_mode = 2;
    p.crack_depth = 3.3f;
    p.crack_water_pct = 50;
    p.grid_n_y = 7;
    p.auto_tan_spacing = 0.001f;
    p.sections.n(1, 3) = 1;
    p.sections.y(1, 1, 3) = 33.3f;
    p.sections.z(1, 1, 3) = float(100.0 / 49.0);
    write_data_file(p, path("a.TOB"));

    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.mat_name[2], "  Sand, \"dense\", wet");
    EXPECT_EQ(q.project_title, " Slope, \"B\"");
    EXPECT_EQ(q.mat_uniaxial[3], 12345680.f); // seven digits kept
    EXPECT_EQ(q.mat_coef_a[3], 1.5e-5f);
    EXPECT_EQ(q.wedge_dipdir[2], -12.5f);
    EXPECT_EQ(q.crack_depth, 3.3f);
    write_data_file(q, path("b.TOB"));
    EXPECT_EQ(slurp(path("b.TOB")), slurp(path("a.TOB")));
}

TEST_F(DataFileTest, names_with_commas_blanks_and_quotes_survive)
{
    Project p = small_project();
    p.project_title = "  \"Quoted\", title,";
    p.dataset_title = ",";
    p.input_by = "   ";
    p.mat_name[1] = " , \"x\" ";
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.project_title, "  \"Quoted\", title,");
    EXPECT_EQ(q.dataset_title, ",");
    EXPECT_EQ(q.input_by, "   ");
    EXPECT_EQ(q.mat_name[1], " , \"x\" ");
    EXPECT_EQ(q.mat_unit_weight[1], 18.5f);
}

TEST_F(DataFileTest, comma_in_grid_file_name_shifts_later_items)
{
    Project p = small_project();
    p.surf_grd_file[1] = "a,b.GRD";
    p.surf_method[2] = 2;
    p.surf_depth[2] = 3.5f;
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.surf_grd_file[1], "a");
    EXPECT_EQ(q.surf_method[2], 0);   // "b.GRD" read as a number
    EXPECT_EQ(q.surf_depth[2], 2.0f); // the method of surface 2
    EXPECT_EQ(q.surf_grd_file[2], "3.5" + blanks(10) + "*.GRD");
}

TEST_F(DataFileTest, two_dimensional_file_has_unit_row_spacing)
{
    Project p = small_project();
    p.num_rows = 1;
    p.x_max = 7;
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.num_rows, 1);
    EXPECT_EQ(q.row_spacing, 1.0f);
    EXPECT_EQ(q.x_max, 7.0f);
}

TEST_F(DataFileTest, empty_grid_file_name_reads_back_as_pattern_and_fails_to_load)
{
    Project p = small_project();
    p.surf_method[1] = 1;
    p.surf_grd_file[1] = "";
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.surf_grd_file[1], "*.GRD");
    EXPECT_EQ(q.surf_method[1], 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Wrong .GRD file.  Use 'Edit Stratigraphic Layer Surfaces' to correct.");
}

TEST_F(DataFileTest, grid_file_of_method_one_is_loaded)
{
    // 3 columns (Y) by 2 rows (X) over the project's own limits.
    spit(path("g.GRD"), "DSAA\r\n3 2\r\n0 100\r\n0 100\r\n1 6\r\n1 2 3\r\n\r\n4 5 6\r\n\r\n");
    Project p = small_project();
    p.num_cols = 3;
    p.num_rows = 2;
    p.surf_method[1] = 1;
    p.surf_grd_file[1] = path("g.GRD");
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(q.zgrid(1, 3, 1), 3.0f);
    EXPECT_EQ(q.zgrid(2, 1, 1), 4.0f);
    EXPECT_EQ(q.surf_built[1], 1);
}

TEST_F(DataFileTest, second_piezo_pair_wins)
{
    std::string f = small_project_file();
    const std::string first = " .25 " + blanks(9) + " 0 ";
    const std::size_t at = f.find(first);
    ASSERT_NE(at, std::string::npos);
    f.replace(at, first.size(), "-3 , 7 ");
    spit(path("a.TOB"), f);
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.mat_piezo[1], 0.25f);
    EXPECT_EQ(q.mat_bbar[1], 0.0f);
}

TEST_F(DataFileTest, last_line_number_is_taken_as_it_stands)
{
    std::string f = small_project_file();
    f.replace(f.size() - 6, 6, ".2\r\n");
    spit(path("a.TOB"), f);
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.eq_coef, 0.2f);
}

TEST_F(DataFileTest, unix_line_ends_read_too)
{
    std::string f = small_project_file(), g;
    for (char c : f)
        if (c != '\r')
            g += c;
    spit(path("a.TOB"), g);
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.mat_name[1], "Clay");
    EXPECT_EQ(q.force_v[1], -50.5f);
}

TEST_F(DataFileTest, reading_leaves_unsaved_state_alone)
{
    spit(path("a.TOB"), small_project_file());
    Project q = fresh();
    q.solution_method = 4;
    q.surface_kind = 2;
    q.grid_use_common = 1;
    q.vert_exag = 2.5f;
    q.iso_angle = 40;
    q.rotation_angle = 15;
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.solution_method, 4);
    EXPECT_EQ(q.surface_kind, 2);
    EXPECT_EQ(q.surface_defined, 0);
    EXPECT_EQ(q.grid_use_common, 1);
    EXPECT_EQ(q.vert_exag, 2.5f);
    EXPECT_EQ(q.iso_angle, 40.0f);
    EXPECT_EQ(q.rotation_angle, 15.0f);
}

TEST_F(DataFileTest, short_file_fails_naming_file_and_line)
{
    std::string f = small_project_file();
    f.resize(f.size() - 6); // drop the last line, "True"
    spit(path("a.TOB"), f);
    Project q = fresh();
    test::ScriptedPort port;
    try {
        read_data_file(q, path("a.TOB"), port);
        FAIL() << "read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_input_past_end);
        EXPECT_NE(e.description().find(path("a.TOB") + ", line 31"), std::string::npos) << e.description();
    }
    // The project keeps what was read.
    EXPECT_EQ(q.crack_mode, 0);
    EXPECT_EQ(q.force_v[1], -50.5f);
}

TEST_F(DataFileTest, titles_only_fail_at_line_four)
{
    spit(path("a.TOB"), "A\r\nB\r\nC\r\n");
    Project q = fresh();
    test::ScriptedPort port;
    try {
        read_data_file(q, path("a.TOB"), port);
        FAIL() << "read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_input_past_end);
        EXPECT_NE(e.description().find(", line 4"), std::string::npos) << e.description();
    }
    EXPECT_EQ(q.project_title, "A");
    EXPECT_EQ(q.input_by, "C");
}

TEST_F(DataFileTest, missing_file_is_not_found)
{
    Project q = fresh();
    test::ScriptedPort port;
    try {
        read_data_file(q, path("none.TOB"), port);
        FAIL() << "read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_file_not_found);
    }
}

TEST_F(DataFileTest, one_column_mesh_divides_by_zero_after_sizing)
{
    std::string f = small_project_file();
    const std::string mesh = " 11 " + blanks(10) + " 5 ";
    const std::size_t at = f.find(mesh);
    ASSERT_NE(at, std::string::npos);
    f.replace(at, mesh.size(), " 1 " + blanks(11) + " 5 ");
    spit(path("a.TOB"), f);
    Project q = fresh();
    test::ScriptedPort port;
    try {
        read_data_file(q, path("a.TOB"), port);
        FAIL() << "read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_division_by_zero);
        EXPECT_NE(e.description().find(", line 6"), std::string::npos) << e.description();
    }
    EXPECT_EQ(q.num_cols, 1);
    EXPECT_EQ(q.zgrid.cols, 1); // sized before the division
    EXPECT_EQ(q.zgrid.rows, 5);
    EXPECT_EQ(q.row_spacing, 25.0f);
}

namespace {

// The small file with the item `from` (first occurrence after `after`)
// replaced by `to`.
std::string edited(const std::string& after, const std::string& from, const std::string& to)
{
    std::string f = small_project_file();
    const std::size_t start = f.find(after);
    const std::size_t at = f.find(from, start == std::string::npos ? 0 : start);
    if (start == std::string::npos || at == std::string::npos)
        return {};
    f.replace(at, from.size(), to);
    return f;
}

} // namespace

TEST_F(DataFileTest, oversize_counts_are_refused)
{
    struct Case {
        const char* what;
        std::string file;
    };
    const std::string z11 = blanks(11);
    const Case cases[] = {
        {"num_sections", edited(" 11 ", " 2 \r\n", " 27 \r\n")},
        {"num_sections", edited(" 11 ", " 2 \r\n", "-1 \r\n")},
        {"num_layers", edited(" 9.81", " 1 ", " 60 ")},
        {"sliding_index", edited(" 9.81", " 1 " + z11 + " 0 ", " 40 " + z11 + " 20 ")},
        {"num_mat_entries", edited(" 9.81", " 0 \r\n", " 100 \r\n")},
        {"num_rows", edited(" 11 ", " 5 ", " 3001 ")},
        {"num_rows", edited(" 11 ", " 5 ", " 0 ")},
        {"num_cols", edited("", " 11 ", " 0 ")},
        {"section_npts", edited("*.GRD", " 2 \r\n", " 302 \r\n")},
        {"section_npts", edited("*.GRD", " 2 \r\n", "-2 \r\n")},
        {"num_forces", edited("-10 ", " 1 \r\n", " 101 \r\n")},
        {"num_wedges", edited("-10 ", "\r\n 0 \r\n 1 \r\n", "\r\n 101 \r\n 1 \r\n")},
    };
    for (const Case& c : cases) {
        ASSERT_FALSE(c.file.empty()) << c.what;
        spit(path("a.TOB"), c.file);
        Project q = fresh();
        test::ScriptedPort port;
        try {
            read_data_file(q, path("a.TOB"), port);
            ADD_FAILURE() << c.what << " accepted";
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), err_subscript) << c.what;
            EXPECT_NE(e.description().find(c.what), std::string::npos) << e.description();
            EXPECT_NE(e.description().find(path("a.TOB") + ", line"), std::string::npos) << e.description();
        }
    }
}

TEST_F(DataFileTest, count_beyond_sixteen_bits_overflows)
{
    spit(path("a.TOB"), edited(" 11 ", " 5 ", " 40000 "));
    Project q = fresh();
    test::ScriptedPort port;
    try {
        read_data_file(q, path("a.TOB"), port);
        FAIL() << "read";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err_overflow);
    }
}

TEST_F(DataFileTest, largest_counts_within_tables_are_read)
{
    // 26 sections and the full table of points fit.
    Project p = small_project();
    p.num_sections = 26;
    p.num_rows = 3000;
    p.num_cols = 2;
    for (int s = 1; s <= 26; ++s)
        p.sections.x[std::size_t(s)] = float(s);
    p.sections.n(26, 1) = 301;
    for (int n = 1; n <= 301; ++n)
        p.sections.y(26, n, 1) = float(n);
    write_data_file(p, path("a.TOB"));
    Project q = fresh();
    test::ScriptedPort port;
    read_data_file(q, path("a.TOB"), port);
    EXPECT_EQ(q.num_sections, 26);
    EXPECT_EQ(q.sections.n(26, 1), 301);
    EXPECT_EQ(q.sections.y(26, 301, 1), 301.0f);
    EXPECT_EQ(q.num_rows, 3000);
}
