// Files that lie about their sizes, numbers that do not fit, names of things
// that are not files, and saves that fail or die half way: each ends in a
// clear error, and neither the project's tables nor an old file on disk are
// damaged by it.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "surfaces/grid_surface.h"
#include "geometry/grid_file.h"
#include "commands/commands.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/runtime_error.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::read_bytes;
using test::ScratchDir;
using test::ScriptedPort;
using test::write_bytes;

// The shipped two-dimensional example with line n (1-based) replaced.
std::string example_with_line(int n, const std::string& replacement)
{
    const std::string text = read_bytes(test::example_path("slope2d-homogeneous.tob"));
    std::string out;
    std::size_t from = 0;
    for (int line = 1; from < text.size(); ++line) {
        std::size_t end = text.find("\r\n", from);
        if (end == std::string::npos)
            end = text.size();
        out += line == n ? replacement : text.substr(from, end - from);
        out += "\r\n";
        from = end + 2;
    }
    return out;
}

Project loaded()
{
    Project p;
    main_load(p);
    return p;
}

// File > Open of `path` as a recent file, with no dialog.
void open_file(Project& p, ScriptedPort& port, const std::string& path)
{
    p.data_file_path = path;
    p.open_recent_pending = -1;
    file_open(p, port);
}

class HostileInputTest : public ::testing::Test {
  protected:
    ScratchDir dir;
    std::string path(const std::string& name) const { return dir.file(name); }

    // Opens the text as a data file; the error box's text, "" when none.
    std::string open_text(Project& p, const std::string& text)
    {
        write_bytes(path("bad.TOB"), text);
        ScriptedPort port;
        open_file(p, port, path("bad.TOB"));
        EXPECT_EQ(read_bytes(path("bad.TOB")), text) << "the file on disk changed";
        for (const auto& b : port.boxes)
            if (b.icon == Icon::critical)
                return b.text;
        return "";
    }
};

// --- counts beyond the tables -------------------------------------------

TEST_F(HostileInputTest, example_opens_without_an_error)
{
    Project p = loaded();
    EXPECT_EQ(open_text(p, example_with_line(0, "")), "");
    EXPECT_EQ(p.num_cols, 201);
}

TEST_F(HostileInputTest, too_many_columns_are_refused_naming_file_line_and_value_before_the_grids_change)
{
    Project p = loaded();
    const std::string box = open_text(p, example_with_line(6, " 5000          1             2 "));
    EXPECT_EQ(box, "Error # 9 occured: Subscript out of range (" + path("bad.TOB") +
                       ", line 6: num_cols 5000 exceeds the limits 1..3000)");
    // Open leaves the project where the reader stopped: titles read, mesh not.
    EXPECT_EQ(p.project_title, "Homogeneous 2-D slope");
    EXPECT_EQ(p.num_cols, 50);
    EXPECT_EQ(p.col_weight.cols, 50);
    EXPECT_EQ(p.zgrid.cols, 50);
}

TEST_F(HostileInputTest, too_many_rows_are_refused)
{
    Project p = loaded();
    const std::string box = open_text(p, example_with_line(6, " 201           3001          2 "));
    EXPECT_NE(box.find("Error # 9 occured: "), std::string::npos) << box;
    EXPECT_NE(box.find(path("bad.TOB") + ", line 6: num_rows 3001 "), std::string::npos) << box;
    EXPECT_EQ(p.zgrid.rows, 50);
}

TEST_F(HostileInputTest, negative_counts_are_refused)
{
    struct Case {
        int line;
        std::string text, expected;
    };
    const Case cases[] = {
        {6, " 201          -1             2 ", ", line 6: num_rows -1 "},
        {6, " 201           1            -2 ", ", line 6: num_sections -2 "},
        {4, " 9.81         -1             0             0 ", ", line 4: num_layers -1 "},
        {4, " 9.81          1            -3             0 ", ", line 4: num_piezos -3 "},
        {4, " 9.81          1             0            -1 ", ", line 4: num_discs -1 "},
        {14, "-4 ", ", line 14: section_npts -4 "},
        {31, "-1 ", ", line 31: num_wedges -1 "},
        {32, "-1 ", ", line 32: num_forces -1 "},
    };
    for (const Case& c : cases) {
        Project p = loaded();
        const std::string box = open_text(p, example_with_line(c.line, c.text));
        EXPECT_EQ(box.rfind("Error # 9 occured: Subscript out of range (" + path("bad.TOB"), 0), 0u) << box;
        EXPECT_NE(box.find(c.expected), std::string::npos) << box;
    }
}

TEST_F(HostileInputTest, counts_beyond_the_tables_are_refused)
{
    struct Case {
        int line;
        std::string text, expected;
    };
    const Case cases[] = {
        {6, " 201           1             27 ", ", line 6: num_sections 27 "},
        {4, " 9.81          52            0             0 ", ", line 4: num_layers 52 "},
        {4, " 9.81          1             0             100 ", ", line 4: num_mat_entries 101 "},
        {4, " 9.81          30            30            0 ", ", line 4: sliding_index 61 "},
        {14, " 302 ", ", line 14: section_npts 302 "},
        {31, " 101 ", ", line 31: num_wedges 101 "},
        {32, " 101 ", ", line 32: num_forces 101 "},
    };
    for (const Case& c : cases) {
        Project p = loaded();
        const std::string box = open_text(p, example_with_line(c.line, c.text));
        EXPECT_EQ(box.rfind("Error # 9 occured: Subscript out of range (" + path("bad.TOB"), 0), 0u) << box;
        EXPECT_NE(box.find(c.expected), std::string::npos) << box;
    }
}

TEST_F(HostileInputTest, refused_point_count_leaves_the_section_table_untouched)
{
    Project p = loaded();
    open_text(p, example_with_line(14, " 302 "));
    EXPECT_EQ(p.sections.n(1, 1), 0);
    EXPECT_EQ(p.sections.y(1, 1, 1), 0.0f);
}

TEST_F(HostileInputTest, count_beyond_sixteen_bits_is_an_overflow_naming_the_value)
{
    Project p = loaded();
    const std::string box = open_text(p, example_with_line(6, " 201           40000         2 "));
    EXPECT_EQ(box, "Error # 6 occured: Overflow (" + path("bad.TOB") + ", line 6: 40000)");
    EXPECT_EQ(p.zgrid.rows, 50);
}

TEST_F(HostileInputTest, number_beyond_single_range_is_an_overflow_naming_the_value)
{
    Project p = loaded();
    const std::string box =
        open_text(p, example_with_line(5, " 0             1E+39         0             1 "));
    EXPECT_EQ(box, "Error # 6 occured: Overflow (" + path("bad.TOB") + ", line 5: 1E+39)");
    EXPECT_EQ(p.y_max, 100.0f); // the default, not infinity
}

TEST_F(HostileInputTest, largest_single_is_read)
{
    auto in = InputReader::from_text("3.402823E+38 -3.402823E+38 1E-45", "f");
    EXPECT_EQ(in.single(), 3.402823E+38f);
    EXPECT_EQ(in.single(), -3.402823E+38f);
    EXPECT_GE(in.single(), 0.0f);
}

TEST_F(HostileInputTest, short_file_ends_with_input_past_end)
{
    Project p = loaded();
    std::string text = example_with_line(0, "");
    text.resize(text.find("Clayey sand") + 5);
    const std::string box = open_text(p, text);
    EXPECT_EQ(box.rfind("Error # 62 occured: Input past end of file (" + path("bad.TOB") + ", line 8)", 0),
              0u)
        << box;
}

TEST_F(HostileInputTest, folder_given_as_data_file_is_a_bad_file_name)
{
    Project p = loaded();
    std::filesystem::create_directory(path("folder.TOB"));
    ScriptedPort port;
    open_file(p, port, path("folder.TOB"));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Error # 52 occured: Bad file name or number (" + path("folder.TOB") + ")");
}

TEST_F(HostileInputTest, device_named_as_grid_file_is_a_wrong_grid_and_not_read_for_ever)
{
    Project p = loaded();
    ScriptedPort port;
    read_grid_file(p, "/dev/zero", 1, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "Wrong .GRD file.  Use 'Edit Stratigraphic Layer Surfaces' to correct.");
}

// --- grid files --------------------------------------------------------

TEST_F(HostileInputTest, grid_beyond_the_mesh_limit_is_refused_before_anything_changes)
{
    Project p = loaded();
    p.zgrid(3, 4, 1) = 7;
    write_bytes(path("big.GRD"), "DSAA\r\n 4000  3 \r\n 0  100 \r\n 0  100 \r\n 0  1 \r\n");
    ScriptedPort port;
    port.default_answer = Answer::yes;
    read_grid_file(p, path("big.GRD"), 1, port);
    ASSERT_FALSE(port.boxes.empty());
    EXPECT_EQ(port.boxes.back().text,
              "Incorrect .GRD file (" + path("big.GRD") + ", line 2: 4000 columns; the limit is 3000)");
    EXPECT_EQ(p.num_cols, 50);
    EXPECT_EQ(p.num_rows, 50);
    EXPECT_EQ(p.zgrid.cols, 50);
    EXPECT_EQ(p.zgrid(3, 4, 1), 7.0f);
}

TEST_F(HostileInputTest, grid_rows_beyond_the_limit_are_named)
{
    Project p = loaded();
    write_bytes(path("big.GRD"), "DSAA\r\n 50  3001 \r\n 0  100 \r\n 0  100 \r\n 0  1 \r\n");
    ScriptedPort port;
    port.default_answer = Answer::yes;
    read_grid_file(p, path("big.GRD"), 1, port);
    ASSERT_FALSE(port.boxes.empty());
    EXPECT_EQ(port.boxes.back().text,
              "Incorrect .GRD file (" + path("big.GRD") + ", line 2: 3001 rows; the limit is 3000)");
    EXPECT_EQ(p.num_rows, 50);
}

TEST_F(HostileInputTest, refused_small_grid_with_more_rows_than_the_grids_resizes_them)
{
    // One column is refused, but 60 rows stay as read: the grids must hold them.
    Project p = loaded();
    write_bytes(path("odd.GRD"), "DSAA\r\n 1  60 \r\n 0  100 \r\n 0  100 \r\n 0  1 \r\n");
    ScriptedPort port;
    port.default_answer = Answer::yes;
    read_grid_file(p, path("odd.GRD"), 1, port);
    EXPECT_EQ(port.boxes.back().text, "Incorrect .GRD file");
    EXPECT_EQ(p.num_rows, 60);
    EXPECT_EQ(p.num_cols, 1);
    EXPECT_GE(p.zgrid.rows, 60);
    EXPECT_GE(p.col_weight.rows, 60);
}

TEST_F(HostileInputTest, grid_value_beyond_single_range_is_a_wrong_grid_keeping_what_was_read)
{
    Project p = loaded();
    std::string text =
        "DSAA\r\n 3  2 \r\n 0  100 \r\n 0  100 \r\n 0  1 \r\n 1  2  3 \r\n\r\n 4  1E+40  6 \r\n\r\n";
    write_bytes(path("inf.GRD"), text);
    ScriptedPort port;
    port.default_answer = Answer::yes;
    read_grid_file(p, path("inf.GRD"), 1, port);
    EXPECT_EQ(port.boxes.back().text,
              "Wrong .GRD file.  Use 'Edit Stratigraphic Layer Surfaces' to correct.");
    EXPECT_EQ(p.zgrid(1, 3, 1), 3.0f);
    EXPECT_EQ(p.zgrid(2, 1, 1), 4.0f);
    EXPECT_EQ(p.zgrid(2, 2, 1), 0.0f);
    EXPECT_EQ(p.surf_built[1], 0);
}

// --- saving --------------------------------------------------------------

// A project opened from the example, saved to `target` which holds `old`.
Project project_for_saving(const std::string& target, const std::string& old)
{
    Project p = loaded();
    ScriptedPort port;
    open_file(p, port, test::example_path("slope2d-homogeneous.tob"));
    p.data_file_path = target;
    write_bytes(target, old);
    return p;
}

TEST_F(HostileInputTest, save_that_cannot_write_its_temporary_file_keeps_the_old_file)
{
    const std::string old = "the old file\r\n";
    Project p = project_for_saving(path("keep.TOB"), old);
    // The temporary file beside the target cannot be created.
    std::filesystem::create_directory(path("keep.TOB.tmp"));
    ScriptedPort port;
    file_save(p, port);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "No file loaded.");
    EXPECT_EQ(port.boxes[0].icon, Icon::warning);
    EXPECT_EQ(read_bytes(path("keep.TOB")), old);
}

TEST_F(HostileInputTest, failed_save_as_keeps_the_old_file_and_the_old_path)
{
    const std::string old = "the old file\r\n";
    Project p = project_for_saving(path("keep.TOB"), old);
    p.data_file_path = path("first.TOB");
    std::filesystem::create_directory(path("keep.TOB.tmp"));
    ScriptedPort port;
    port.files.push_back(path("keep.TOB"));
    file_save_as(p, port);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_EQ(p.data_file_path, path("first.TOB"));
    EXPECT_EQ(p.save_cancelled, -1);
    EXPECT_EQ(read_bytes(path("keep.TOB")), old);
}

TEST_F(HostileInputTest, save_whose_disk_fills_half_way_keeps_the_old_file_and_leaves_no_temporary)
{
    const std::string old = "the old file\r\n";
    Project p = project_for_saving(path("full.TOB"), old);
    // The child may write 200 bytes to any file: the data file is longer.
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{200, 200};
        setrlimit(RLIMIT_FSIZE, &limit);
        int code = 1;
        try {
            write_data_file(p, path("full.TOB"));
        } catch (const RuntimeError& e) {
            code = e.number() == err_path_access ? 0 : 2;
        }
        _exit(code);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the write did not fail as a path access error";
    EXPECT_EQ(read_bytes(path("full.TOB")), old);
    EXPECT_FALSE(std::filesystem::exists(path("full.TOB.tmp")));
}

TEST_F(HostileInputTest, save_killed_half_way_leaves_the_old_file_or_the_new_one_whole)
{
    const std::string old = "the old file\r\n";
    Project p = project_for_saving(path("kill.TOB"), old);
    // A large project takes a while to write.
    p.num_sections = 26;
    for (int s = 1; s <= 26; ++s)
        for (int k = 1; k <= p.sliding_index; ++k)
            p.sections.n(s, k) = 301;
    const std::string whole = data_file_text(p);
    for (int delay_ms : {1, 3, 10, 30}) {
        write_bytes(path("kill.TOB"), old);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (;;)
                write_data_file(p, path("kill.TOB"));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(delay_ms));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        const std::string now = read_bytes(path("kill.TOB"));
        EXPECT_TRUE(now == old || now == whole) << "after " << delay_ms << " ms: " << now.size() << " bytes";
    }
}

TEST_F(HostileInputTest, failed_open_leaves_the_file_on_disk_unchanged)
{
    const std::string text = example_with_line(32, " 500 ");
    write_bytes(path("bad.TOB"), text);
    const auto before = std::filesystem::last_write_time(path("bad.TOB"));
    Project p = loaded();
    ScriptedPort port;
    open_file(p, port, path("bad.TOB"));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(read_bytes(path("bad.TOB")), text);
    EXPECT_EQ(std::filesystem::last_write_time(path("bad.TOB")), before);
    EXPECT_FALSE(std::filesystem::exists(path("bad.TOB.tmp")));
}

} // namespace
} // namespace tobel
