// Results that are not valid, fatal input and stops, as the command line
// reports them: a warning line naming why, and the exit status of the table.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include "support/paths.h"
#include "support/run_cli.h"

namespace {

using tobel::test::RunResult;

RunResult run(const std::string& args, const char* err = " 2>&1")
{
    return tobel::test::run_cli(args, err);
}

std::string broken(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/tests/data/check/" + name;
}

bool has(const std::string& text, const std::string& what)
{
    return text.find(what) != std::string::npos;
}

TEST(result_status, a_slope_with_its_toe_towards_plus_y_is_not_valid_and_points_to_mirror)
{
    RunResult r = run("solve " + broken("slope-mirrored-toe-plus-y.tob"));
    EXPECT_EQ(r.status, 2) << r.out;
    EXPECT_TRUE(has(r.out, "tobel: warning: the result is not valid: the slide moves towards +Y")) << r.out;
    EXPECT_TRUE(has(r.out, "Mirror")) << r.out;
}

TEST(result_status, a_surface_that_misses_the_ground_is_not_valid)
{
    RunResult r = run("solve " + broken("ellipsoid-misses-ground.tob") + " --json", " 2>/dev/null");
    EXPECT_EQ(r.status, 2) << r.out;
    const auto doc = nlohmann::json::parse(r.out);
    EXPECT_FALSE(doc["valid"].get<bool>());
    EXPECT_TRUE(has(doc["not_valid_because"].get<std::string>(), "outside the geometry")) << r.out;
    EXPECT_TRUE(has(doc["messages"][0].get<std::string>(), "SURFACE DOES NOT INTERSECT GEOMETRY"));
}

TEST(result_status, a_negative_cohesion_is_bad_input_naming_the_property_and_writes_no_report)
{
    tobel::test::ScratchDir dir;
    const std::string commands[] = {"solve", "search --grid", "report --out " + dir.file("r.txt")};
    for (const std::string& command : commands) {
        RunResult r = run(command.substr(0, command.find(' ')) + " " + broken("cohesion-negative.tob") +
                          (command.find(' ') == std::string::npos ? "" : command.substr(command.find(' '))));
        EXPECT_EQ(r.status, 1) << command << ": " << r.out;
        EXPECT_TRUE(has(r.out, "properties incorrect!")) << r.out;
        EXPECT_TRUE(has(r.out, "mat_cohesion(1)")) << command << ": " << r.out;
        EXPECT_FALSE(has(r.out, "No valid surface was found")) << r.out;
    }
    EXPECT_FALSE(std::ifstream(dir.file("r.txt")).good());
}

TEST(result_status, tokens_that_are_not_numbers_are_warned_about_when_solving)
{
    RunResult r = run("solve " + broken("unit-weight-letter-o.tob"));
    EXPECT_TRUE(has(r.out, "tobel: warning: ")) << r.out;
    EXPECT_TRUE(has(r.out, "'2O'")) << r.out;
}

TEST(result_status, check_is_clean_on_an_example_and_lists_findings_with_status_three)
{
    RunResult clean = run("check " + tobel::test::example_path("slope2d-homogeneous.tob"));
    EXPECT_EQ(clean.status, 0) << clean.out;
    RunResult bad = run("check " + broken("friction-196.tob"));
    EXPECT_EQ(bad.status, 3) << bad.out;
    EXPECT_TRUE(has(bad.out, "mat_phi(1)")) << bad.out;
    RunResult missing = run("check /nonexistent/none.tob");
    EXPECT_EQ(missing.status, 1) << missing.out;
}

TEST(result_status, every_command_has_help_and_bad_options_are_status_one)
{
    for (const char* c : {"info", "check", "solve", "search", "report", "export", "convert", "run"}) {
        RunResult h = run(std::string(c) + " --help");
        EXPECT_EQ(h.status, 0) << c;
        EXPECT_TRUE(has(h.out, "Usage")) << c << ": " << h.out;
    }
    EXPECT_EQ(run("solve").status, 1);
    EXPECT_EQ(run("nonsense").status, 1);
    EXPECT_EQ(run("search " + tobel::test::example_path("slope2d-homogeneous.tob") + " --grid --auto").status,
              1);
}

TEST(result_status, convert_goes_to_json_and_back_byte_for_byte)
{
    tobel::test::ScratchDir dir;
    const std::string in = tobel::test::example_path("slope3d-layers-piezo-force.tob");
    EXPECT_EQ(run("convert " + in + " " + dir.file("p.json")).status, 0);
    EXPECT_EQ(run("convert " + dir.file("p.json") + " " + dir.file("p.tob")).status, 0);
    EXPECT_EQ(tobel::test::read_bytes(dir.file("p.tob")), tobel::test::read_bytes(in));
    tobel::test::write_bytes(dir.file("bad.json"), "{\n  \"format\": \"TOBEL-3 project\",\n  oops\n}\n");
    RunResult bad = run("convert " + dir.file("bad.json") + " " + dir.file("bad.tob"));
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(has(bad.out, "bad.json, line 3")) << bad.out;
    EXPECT_FALSE(std::ifstream(dir.file("bad.tob")).good());
}

} // namespace
