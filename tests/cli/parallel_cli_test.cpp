// Searches on several threads and shared among runs, as a user runs them:
// `search --threads N`, `search --shard K/N --out PART.json`, `merge`, and
// the GNU parallel driver, each against the plain search of one run.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "support/paths.h"
#include "support/run_cli.h"

namespace {

using tobel::test::read_bytes;
using tobel::test::RunResult;
using tobel::test::ScratchDir;

const std::string example2d = tobel::test::example_path("slope2d-homogeneous.tob");

// Standard output and standard error apart.
struct Both {
    int status = -1;
    std::string out, err;
};

Both tobel_both(const std::string& args, const ScratchDir& dir, const std::string& tag)
{
    const std::string err = dir.file(tag + ".err");
    RunResult r = tobel::test::run_cli(args, (" 2>'" + err + "'").c_str());
    return {r.status, r.out, read_bytes(err)};
}

TEST(parallel_cli, grid_search_on_three_threads_prints_what_one_thread_prints)
{
    ScratchDir dir;
    const Both one = tobel_both("search " + example2d + " --grid --trials --threads 1", dir, "one");
    const Both three = tobel_both("search " + example2d + " --grid --trials --threads 3", dir, "three");
    ASSERT_EQ(one.status, 0) << one.err;
    EXPECT_EQ(three.status, 0);
    EXPECT_NE(one.out.find("Best surface: Ellipsoid #"), std::string::npos) << one.out;
    EXPECT_EQ(one.out, three.out);
    // The progress lines, one per trial, in the same order.
    EXPECT_NE(one.err.find("Ellipsoid # 1  F ="), std::string::npos) << one.err;
    EXPECT_EQ(one.err, three.err);
}

TEST(parallel_cli, auto_search_on_two_threads_prints_what_one_thread_prints)
{
    ScratchDir dir;
    const Both one =
        tobel_both("search " + example2d + " --auto --method spencer --json --threads 1", dir, "1");
    const Both two =
        tobel_both("search " + example2d + " --auto --method spencer --json --threads 2", dir, "2");
    EXPECT_EQ(one.out, two.out);
    EXPECT_EQ(one.err, two.err);
}

// Runs the three shards of the 2-D grid into dir.
void run_shards(const ScratchDir& dir, const std::string& extra1 = "")
{
    for (int k = 1; k <= 3; ++k) {
        const std::string part = dir.file("part" + std::to_string(k) + ".json");
        RunResult r = tobel::test::run_cli("search " + example2d + " --grid --shard " + std::to_string(k) +
                                               "/3 --out '" + part + "'" + (k == 1 ? extra1 : ""),
                                           " 2>&1");
        ASSERT_EQ(r.status, 0) << r.out;
    }
}

TEST(parallel_cli, merged_shards_print_the_result_of_the_whole_search_in_text_and_json)
{
    ScratchDir dir;
    run_shards(dir);
    const std::string parts =
        "'" + dir.file("part3.json") + "' '" + dir.file("part1.json") + "' '" + dir.file("part2.json") + "'";
    const Both whole = tobel_both("search " + example2d + " --grid --trials", dir, "whole");
    const Both merged =
        tobel_both("merge " + parts + " --trials --json '" + dir.file("merged.json") + "'", dir, "merged");
    ASSERT_EQ(merged.status, whole.status) << merged.err;
    EXPECT_EQ(merged.out, whole.out);
    EXPECT_EQ(merged.err, whole.err);
    const Both json = tobel_both("search " + example2d + " --grid --trials --json", dir, "json");
    EXPECT_EQ(read_bytes(dir.file("merged.json")), json.out);
}

TEST(parallel_cli, merge_refuses_a_part_of_another_search_and_names_it)
{
    ScratchDir dir;
    run_shards(dir, " --method spencer");
    RunResult r = tobel::test::run_cli("merge '" + dir.file("part2.json") + "' '" + dir.file("part1.json") +
                                       "' '" + dir.file("part3.json") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("part1.json belongs to another search than"), std::string::npos) << r.out;
}

TEST(parallel_cli, merge_refuses_an_incomplete_set_and_names_the_missing_shard)
{
    ScratchDir dir;
    run_shards(dir);
    RunResult r =
        tobel::test::run_cli("merge '" + dir.file("part1.json") + "' '" + dir.file("part3.json") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("shard 2/3 is missing"), std::string::npos) << r.out;
}

TEST(parallel_cli, shard_option_needs_a_grid_search_and_an_out_file)
{
    EXPECT_EQ(tobel::test::run_cli("search " + example2d + " --auto --shard 1/2 --out x.json").status, 1);
    RunResult r = tobel::test::run_cli("search " + example2d + " --grid --shard 1/2");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("--shard needs --out"), std::string::npos) << r.out;
    r = tobel::test::run_cli("search " + example2d + " --grid --shard 3/2 --out x.json");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("1 <= K <= N"), std::string::npos) << r.out;
}

TEST(parallel_cli, gnu_parallel_driver_with_three_shards_gives_the_unsharded_result)
{
    if (std::system("command -v parallel >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "GNU parallel is not installed (scripts/deps.sh installs it)";
    ScratchDir dir;
    const std::string driver = std::string(TOBEL_SOURCE_DIR) + "/scripts/drivers/search-parallel.sh";
    RunResult r =
        tobel::test::run_cli_command("TOBEL='" + std::string(TOBEL_CLI) + "' '" + driver + "' -j 2 3 '" +
                                     example2d + "' '" + dir.file("out") + "' 2>/dev/null");
    const Both whole = tobel_both("search " + example2d + " --grid", dir, "whole");
    EXPECT_EQ(r.status, whole.status);
    EXPECT_NE(whole.out.find("Best surface"), std::string::npos);
    EXPECT_EQ(r.out, whole.out);
    const Both json = tobel_both("search " + example2d + " --grid --json", dir, "json");
    EXPECT_EQ(read_bytes(dir.file("out/result.json")), json.out);
}

} // namespace

namespace {

// The search across the slope of the shipped 3-D example, run whole and by
// the GNU parallel driver in 3 shards of its X and aspect pairs.
void across_driver_matches(const std::string& kind)
{
    if (std::system("command -v parallel >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "GNU parallel is not installed (scripts/deps.sh installs it)";
    ScratchDir dir;
    const std::string example3d = tobel::test::example_path("slope3d-layers-piezo-force.tob");
    const std::string driver = std::string(TOBEL_SOURCE_DIR) + "/scripts/drivers/search-parallel.sh";
    const std::string across = " --across 40,60,10 --aspects 1,2";
    const std::string extra = kind == "--auto" ? " --auto" : "";
    RunResult r = tobel::test::run_cli_command("TOBEL='" + std::string(TOBEL_CLI) + "' '" + driver + "' -j 2 3 '" +
                                               example3d + "' '" + dir.file("out") + "' --" + extra + across +
                                               " 2>/dev/null");
    const std::string args = "search '" + example3d + "' " + kind + across;
    const Both whole = tobel_both(args, dir, "whole");
    ASSERT_EQ(whole.status, 0) << whole.err;
    // Six pairs, X 40, 50 and 60 by aspects 1 and 2: six searches.
    EXPECT_NE(whole.out.find(": 6 searches"), std::string::npos) << whole.out;
    EXPECT_EQ(r.status, whole.status);
    EXPECT_EQ(r.out, whole.out);
    const Both json = tobel_both(args + " --json", dir, "json");
    EXPECT_EQ(read_bytes(dir.file("out/result.json")), json.out);
}

} // namespace

TEST(parallel_cli, gnu_parallel_driver_shares_a_grid_search_across_the_slope_by_its_pairs)
{
    across_driver_matches("--grid");
}

TEST(parallel_cli, gnu_parallel_driver_shares_an_auto_search_across_the_slope_by_its_pairs)
{
    across_driver_matches("--auto");
}
