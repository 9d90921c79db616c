// tobel search --across as a user runs it: the search at the stored X and
// aspect is the classic search, the table and the picture, and the refusals.
#include <gtest/gtest.h>

#include <filesystem>

#include <nlohmann/json.hpp>

#include "support/paths.h"
#include "support/run_cli.h"

namespace {

using tobel::test::RunResult;

std::string example(const std::string& name)
{
    return "'" + tobel::test::example_path(name) + "'";
}

RunResult run_tobel(const std::string& args)
{
    return tobel::test::run_cli(args, " 2>/dev/null");
}

} // namespace

TEST(search_across, one_x_and_one_aspect_as_stored_give_the_classic_search)
{
    // The file stores its grid search at X 50 with aspect 1.
    const std::string file = example("slope3d-layers-piezo-force.tob");
    const RunResult classic = run_tobel("search " + file + " --grid --json");
    const RunResult across = run_tobel("search " + file + " --grid --across 50,50,0 --aspects 1 --json");
    ASSERT_EQ(classic.status, 0) << classic.out;
    ASSERT_EQ(across.status, 0) << across.out;
    const auto c = nlohmann::json::parse(classic.out);
    const auto a = nlohmann::json::parse(across.out);
    ASSERT_EQ(a["cells"].size(), 1u);
    for (const char* key : {"fos", "y", "z", "radius", "volume", "trial_number"})
        EXPECT_EQ(a["best"][key], c["best"][key]) << key;
    EXPECT_EQ(a["trial_count"], c["trial_count"]);
    EXPECT_EQ(a["best"]["x"], 50.0);
    EXPECT_EQ(a["best"]["aspect"], 1.0);
}

TEST(search_across, every_x_and_aspect_has_its_row_and_the_best_is_the_lowest)
{
    const RunResult r = run_tobel("search " + example("slope3d-layers-piezo-force.tob") +
                                  " --grid --across 40,60,20 --aspects 1,2 --json");
    ASSERT_EQ(r.status, 0) << r.out;
    const auto j = nlohmann::json::parse(r.out);
    ASSERT_EQ(j["cells"].size(), 4u);
    EXPECT_EQ(j["cells"][1]["x"], 40.0);
    EXPECT_EQ(j["cells"][1]["aspect"], 2.0);
    EXPECT_EQ(j["cells"][2]["x"], 60.0);
    double lowest = 1e9;
    long total = 0;
    for (const auto& c : j["cells"]) {
        lowest = std::min(lowest, c["best"]["fos"].get<double>());
        total += c["trial_count"].get<long>();
    }
    EXPECT_EQ(j["best"]["fos"].get<double>(), lowest);
    EXPECT_EQ(j["trial_count"].get<long>(), total);
}

TEST(search_across, the_text_table_and_the_picture)
{
    tobel::test::ScratchDir dir;
    const std::string png = (dir.path / "across.png").string();
    const RunResult r = run_tobel("search " + example("slope3d-layers-piezo-force.tob") +
                                  " --grid --across 40,60,20 --plot '" + png + "'");
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("Search across the slope, grid search"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Best of each search:"), std::string::npos);
    EXPECT_NE(r.out.find("    40.00     1.00"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("    60.00     1.00"), std::string::npos) << r.out;
    EXPECT_TRUE(std::filesystem::exists(png));
    EXPECT_GT(std::filesystem::file_size(png), 1000u);
}

TEST(search_across, bad_ranges_and_aspects_and_a_2d_project_are_refused_with_the_reason)
{
    const std::string file = example("slope3d-layers-piezo-force.tob");
    const auto refused = [](const std::string& args, const std::string& why) {
        const RunResult r = tobel::test::run_cli("search " + args, " 2>&1");
        EXPECT_EQ(r.status, 1) << args;
        EXPECT_NE(r.out.find(why), std::string::npos) << args << "\n" << r.out;
    };
    refused(file + " --grid --across 1,2", "--across wants three numbers X0,X1,DX");
    refused(file + " --grid --across 1,x,2", "--across: \"x\" is not a number");
    refused(file + " --grid --across 60,40,10", "--across: X1 (40) is below X0 (60)");
    refused(file + " --grid --across 40,60,0", "--across: the step DX must be above 0");
    refused(file + " --grid --across 40,60,10 --aspects 1,0", "an aspect ratio must be above 0, not 0");
    refused(example("slope2d-homogeneous.tob") + " --grid --across 0,0,0", "--across needs a 3-D project");
}

TEST(search_across, two_shards_merged_give_the_whole_run_and_a_missing_shard_is_named)
{
    tobel::test::ScratchDir dir;
    const std::string file = example("slope3d-layers-piezo-force.tob");
    const std::string args = "search " + file + " --grid --across 40,60,20 --aspects 1,2 --threads 1";
    const RunResult whole = run_tobel(args + " --json");
    const RunResult whole_text = run_tobel(args);
    ASSERT_EQ(whole.status, 0) << whole.out;
    const std::string p1 = dir.file("p1.json"), p2 = dir.file("p2.json");
    ASSERT_EQ(run_tobel(args + " --shard 1/2 --out '" + p1 + "'").status, 0);
    ASSERT_EQ(run_tobel(args + " --shard 2/2 --out '" + p2 + "'").status, 0);
    const std::string merged_json = dir.file("merged.json");
    const RunResult merged = run_tobel("merge '" + p2 + "' '" + p1 + "' --json '" + merged_json + "'");
    ASSERT_EQ(merged.status, 0) << merged.out;
    EXPECT_EQ(merged.out, whole_text.out);
    EXPECT_EQ(tobel::test::read_bytes(merged_json), whole.out);

    const RunResult alone = tobel::test::run_cli("merge '" + p1 + "'", " 2>&1");
    EXPECT_EQ(alone.status, 1);
    EXPECT_NE(alone.out.find("the parts are incomplete: search 1 (shard 2) is missing"), std::string::npos)
        << alone.out;
}
