// The shipped scripts run as a user runs them, from a folder of their own.
#include <gtest/gtest.h>

#include "support/paths.h"
#include "support/run_cli.h"

namespace tobel {
namespace {

using test::run_cli;
using test::run_cli_in;

std::string script(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/examples/scripts/" + name;
}

// The value printed by a script's "print fos" line.
std::string printed_fos(const std::string& out)
{
    const auto at = out.rfind("fos = ");
    if (at == std::string::npos)
        return "";
    return out.substr(at + 6, out.find('\n', at) - at - 6);
}

TEST(shipped_scripts, the_new_project_script_writes_the_example_byte_for_byte_and_solves_alike)
{
    test::ScratchDir dir;
    const auto r = run_cli_in(dir.path.string(), "run " + script("new-project.txt"));
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(test::read_bytes(dir.file("new-project.tob")),
              test::read_bytes(test::example_path("slope3d-new-project.tob")));
    // The example solved on its own gives the factor the script printed.
    const auto solved =
        run_cli("solve " + test::example_path("slope3d-new-project.tob") + " --surface ellipsoid");
    ASSERT_EQ(solved.status, 0) << solved.out;
    const std::string fos = printed_fos(r.out);
    ASSERT_FALSE(fos.empty()) << r.out;
    EXPECT_NE(solved.out.find("Factor of Safety: " + fos), std::string::npos)
        << solved.out << "\nscript: " << fos;
}

TEST(shipped_scripts, the_layer_insertion_script_gives_back_the_same_file)
{
    test::ScratchDir dir;
    test::write_bytes(dir.file("slope3d-new-project.tob"),
                      test::read_bytes(test::example_path("slope3d-new-project.tob")));
    const auto r = run_cli_in(dir.path.string(), "run " + script("insert-layer.txt"));
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(test::read_bytes(dir.file("after-insert-and-delete.tob")),
              test::read_bytes(test::example_path("slope3d-new-project.tob")));
}

TEST(shipped_scripts, the_editing_script_moves_the_crest_and_keeps_the_rest)
{
    test::ScratchDir dir;
    test::write_bytes(dir.file("slope3d-new-project.tob"),
                      test::read_bytes(test::example_path("slope3d-new-project.tob")));
    const auto r = run_cli_in(dir.path.string(), "run " + script("edit-sections.txt"));
    ASSERT_EQ(r.status, 0) << r.out;
    const std::string before = test::read_bytes(test::example_path("slope3d-new-project.tob"));
    const std::string after = test::read_bytes(dir.file("edited.tob"));
    EXPECT_NE(after, before);
    // The crest of section 1 was dragged from Y = 70 to 72; the one of section 2
    // was typed as 69; both keep their elevations (30 and 31).
    EXPECT_NE(r.out.find("point = 72 30"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("point = 69 31"), std::string::npos) << r.out;
}

} // namespace
} // namespace tobel
