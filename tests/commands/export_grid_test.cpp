// Graphics > Export > Isometry .GRD File: the default name of the surface,
// the filter of the save dialog, a cancel, the file written and its message.
#include <gtest/gtest.h>

#include "commands/graphics_commands.h"
#include "support/paths.h"
#include "support/scripted_port.h"
#include "surfaces/surface_fixture.h"

namespace tobel::test {
namespace {

// A port that also remembers the name each save dialog offered.
class NamingPort : public ScriptedPort {
  public:
    std::vector<std::string> offered;
    std::vector<bool> overwrite;
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                bool overwrite_prompt) override
    {
        offered.push_back(initial);
        overwrite.push_back(overwrite_prompt);
        return ScriptedPort::save_file_dialog(filter, initial, overwrite_prompt);
    }
};

std::unique_ptr<Project> small()
{
    auto p = make_project({2, 3, 0, 1, 0, 2});
    set_ground(*p, [](double x, double y) { return 10 + x + y; });
    return p;
}

TEST(export_grid, offers_g_and_the_surface_number_without_blanks)
{
    auto p = small();
    NamingPort port;
    export_grid_item(*p, port, 0); // item 0 is surface 1
    export_grid_item(*p, port, 9); // item 9 is surface 10
    ASSERT_EQ(port.offered.size(), 2u);
    EXPECT_EQ(port.offered[0], "G1.GRD");
    EXPECT_EQ(port.offered[1], "G10.GRD");
    EXPECT_EQ(default_grid_name(3), "G3.GRD");
}

TEST(export_grid, save_dialog_has_the_grid_filter)
{
    auto p = small();
    NamingPort port;
    export_grid_item(*p, port, 0);
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], "Grid Files (*.GRD)|*.GRD");
}

TEST(export_grid, a_cancelled_dialog_writes_nothing_and_says_nothing)
{
    auto p = small();
    ScratchDir dir;
    NamingPort port;
    port.files = {std::nullopt};
    export_grid_item(*p, port, 0);
    EXPECT_TRUE(port.boxes.empty());
    EXPECT_TRUE(std::filesystem::is_empty(dir.path));
}

TEST(export_grid, writes_the_chosen_surface_and_reports_the_file)
{
    auto p = small();
    ScratchDir dir;
    NamingPort port;
    const std::string path = dir.file("GROUND.GRD");
    port.files = {path};
    export_grid_item(*p, port, p->num_layers - 1);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "FILE " + path + " WAS CREATED");
    const std::string bytes = read_bytes(path);
    // "DSAA", then the counts: 3 columns along Y, 2 rows along X.
    EXPECT_EQ(bytes.substr(0, 6), "DSAA\r\n");
    EXPECT_EQ(bytes.substr(6, 6), " 3  2 ");
    // The ground 10 + x + y runs from 10 at (0, 0) to 13 at (1, 2).
    EXPECT_NE(bytes.find(" 10  13 \r\n"), std::string::npos);
}

TEST(export_grid, an_unwritable_file_shows_the_error_box)
{
    auto p = small();
    ScratchDir dir;
    NamingPort port;
    port.files = {dir.file("no-such-folder/G1.GRD")};
    export_grid_item(*p, port, 0);
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text.rfind("Error # 75 occured: ", 0), 0u) << port.boxes[0].text;
    EXPECT_EQ(port.boxes[0].icon, Icon::critical);
}

} // namespace
} // namespace tobel::test
