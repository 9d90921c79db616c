// The command-line program as a user runs it.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include "support/paths.h"
#include "support/run_cli.h"

namespace {

using tobel::test::RunResult;

// Runs tobel with the arguments; standard error is kept apart unless merged.
RunResult tobel(const std::string& args, bool merge_stderr = false)
{
    return tobel::test::run_cli(args, merge_stderr ? " 2>&1" : " 2>/dev/null");
}

std::string example(const std::string& name)
{
    return tobel::test::example_path(name);
}

TEST(cli, info_prints_the_project_as_read)
{
    RunResult r = tobel("info " + example("slope3d-layers-piezo-force.tob"));
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("Project:   3-D slope with two layers"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("41 rows"), std::string::npos);
    EXPECT_NE(r.out.find("Piezo Surface 1"), std::string::npos);
    EXPECT_NE(r.out.find("Silty sand"), std::string::npos);
    EXPECT_NE(r.out.find("External forces: 1"), std::string::npos);
}

TEST(cli, solve_prints_result_panel_and_exits_zero)
{
    RunResult r = tobel("solve " + example("slope2d-homogeneous.tob"));
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("  Bishop's Method\n  Factor of Safety: 1.27\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.out.find("SOLUTION ACCEPTABILITY INDICES"), std::string::npos);
    RunResult j = tobel("solve " + example("slope2d-homogeneous.tob") + " --method janbu");
    EXPECT_NE(j.out.find("  Janbu Method\n  Factor of Safety: "), std::string::npos) << j.out;
}

TEST(cli, json_has_every_field)
{
    RunResult r = tobel("solve " + example("slope3d-layers-piezo-force.tob") + " --json");
    EXPECT_EQ(r.status, 0);
    for (const char* key : {"\"factor_of_safety\": ", "\"method\": \"bishop\"",
                            "\"lambda\": ", "\"slide_volume\": ", "\"slide_weight\": ", "\"slide_area\": ",
                            "\"active_columns\": ", "\"lateral_unbalance\": ", "\"centre_y\": 60",
                            "\"centre_z\": 55", "\"messages\": ["})
        EXPECT_NE(r.out.find(key), std::string::npos) << key << " in " << r.out;
    EXPECT_EQ(r.out.front(), '{');
    EXPECT_EQ(r.out.substr(r.out.size() - 2), "}\n");
}

// A narrow ellipsoid off the middle of the 3-D example leaves an unbalance of
// about 1.1 % of the weight: the program asks, and Yes balances it.
TEST(cli, lateral_balance_question_is_answered_from_the_script)
{
    tobel::test::ScratchDir dir;
    const std::string steps = "open " + example("slope3d-layers-piezo-force.tob") +
                              "\nset search_x 40\nset aspect_in 0.5\nellipsoid\n";
    tobel::test::write_bytes(dir.file("yes.txt"),
                             steps + "answer yes\nsolve\nprint lateral_unbalance\nprint slide_weight\n");
    tobel::test::write_bytes(dir.file("no.txt"),
                             steps + "solve\nprint lateral_unbalance\nprint slide_weight\n");
    RunResult yes = tobel("run " + dir.file("yes.txt"));
    RunResult no = tobel("run " + dir.file("no.txt"));
    EXPECT_NE(yes.out.find("[WARNING] UBF/WT = 0.01"), std::string::npos) << yes.out;
    EXPECT_NE(yes.out.find("DO YOU WISH TO BALANCE LATERAL FORCES ? -> Yes"), std::string::npos);
    EXPECT_NE(yes.out.find("== LATERAL EQUILIBRIUM ESTABLISHED"), std::string::npos);
    EXPECT_NE(no.out.find("DO YOU WISH TO BALANCE LATERAL FORCES ? -> No"), std::string::npos) << no.out;
    EXPECT_EQ(no.out.find("== LATERAL EQUILIBRIUM ESTABLISHED"), std::string::npos);
    // Balanced: the unbalance ends within 0.1 % of the weight; unbalanced it stays above 1 %.
    const auto value = [](const std::string& out, const std::string& name) {
        const auto at = out.find(name + " = ");
        return at == std::string::npos ? 1e9 : std::stod(out.substr(at + name.size() + 3));
    };
    EXPECT_LT(std::abs(value(yes.out, "lateral_unbalance")), 0.001 * value(yes.out, "slide_weight"));
    EXPECT_GT(std::abs(value(no.out, "lateral_unbalance")), 0.01 * value(no.out, "slide_weight"));
}

TEST(cli, missing_file_is_bad_input)
{
    RunResult r = tobel("solve /nonexistent/none.tob", true);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("Error # 53 occured: File not found"), std::string::npos) << r.out;
}

TEST(cli, unknown_method_surface_or_option_is_bad_input)
{
    RunResult u = tobel("solve " + example("slope2d-homogeneous.tob") + " --method nonsense", true);
    EXPECT_EQ(u.status, 1);
    EXPECT_NE(u.out.find("unknown method 'nonsense'"), std::string::npos) << u.out;
    RunResult s = tobel("solve " + example("slope2d-homogeneous.tob") + " --surface sphere", true);
    EXPECT_EQ(s.status, 1);
    EXPECT_NE(s.out.find("unknown surface 'sphere'"), std::string::npos) << s.out;
    RunResult f = tobel("solve " + example("slope2d-homogeneous.tob") + " --field 1,2,3", true);
    EXPECT_EQ(f.status, 1);
    RunResult w = tobel("solve " + example("slope2d-homogeneous.tob") + " --surface wedge", true);
    EXPECT_EQ(w.status, 1);
    EXPECT_NE(w.out.find("holds no wedge planes"), std::string::npos) << w.out;
}

TEST(cli, all_four_methods_solve_the_2d_example)
{
    for (const char* m : {"bishop", "janbu", "spencer", "morgenstern-price"}) {
        RunResult r = tobel("solve " + example("slope2d-homogeneous.tob") + " --json --method " + m);
        EXPECT_EQ(r.status, 0) << m;
        EXPECT_NE(r.out.find(std::string("\"method\": \"") + m + "\""), std::string::npos) << r.out;
    }
}

TEST(cli, export_writes_a_grid_that_names_the_mesh)
{
    tobel::test::ScratchDir dir;
    RunResult r =
        tobel("export " + example("slope3d-layers-piezo-force.tob") + " --grd 2 --out " + dir.file("g.grd"));
    EXPECT_EQ(r.status, 0);
    const std::string grid = tobel::test::read_bytes(dir.file("g.grd"));
    EXPECT_EQ(grid.rfind("DSAA", 0), 0u) << grid.substr(0, 40);
    EXPECT_NE(grid.find(" 61  41 "), std::string::npos);
    RunResult beyond = tobel(
        "export " + example("slope3d-layers-piezo-force.tob") + " --grd 9 --out " + dir.file("h.grd"), true);
    EXPECT_EQ(beyond.status, 1);
    EXPECT_NE(beyond.out.find("beyond the stack"), std::string::npos) << beyond.out;
}

TEST(cli, fatal_input_check_exits_one_naming_the_property)
{
    // A non-linear material with a uniaxial strength of 0 is refused by the
    // input checks: bad input, status 1, with the property named.
    tobel::test::ScratchDir dir;
    std::string text = tobel::test::read_bytes(example("slope2d-homogeneous.tob"));
    const std::string coulomb = " 20            1             10";
    const auto at = text.find(coulomb);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, coulomb.size(), " 20            3             10");
    tobel::test::write_bytes(dir.file("bad.tob"), text);
    RunResult r = tobel("solve " + dir.file("bad.tob") + " --json", true);
    EXPECT_EQ(r.status, 1) << r.out;
    EXPECT_NE(r.out.find("mat_uniaxial(1)"), std::string::npos) << r.out;
}

TEST(cli, script_drives_open_surface_and_solve)
{
    tobel::test::ScratchDir dir;
    tobel::test::write_bytes(dir.file("s.txt"), "# open, confirm, solve\n"
                                                "open " +
                                                    example("slope2d-homogeneous.tob") +
                                                    "\n"
                                                    "menu Solve\n"
                                                    "ellipsoid\n"
                                                    "menu Rotation_angle\n"
                                                    "solve\n"
                                                    "expect fos 1.27\n"
                                                    "method janbu\n"
                                                    "expect method janbu\n"
                                                    "answer cancel\n"
                                                    "exit\n"
                                                    "answer no\n"
                                                    "exit\n"
                                                    "print fos\n");
    RunResult r = tobel("run " + dir.file("s.txt"), true);
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("Solve hidden"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Rotation_angle hidden"), std::string::npos);
    EXPECT_NE(
        r.out.find("Do you want to save changes to: " + example("slope2d-homogeneous.tob") + "? -> Cancel"),
        std::string::npos);
    EXPECT_NE(r.out.find("exit cancelled"), std::string::npos);
    EXPECT_NE(r.out.find("program ended"), std::string::npos);
    EXPECT_EQ(r.out.find("print fos"), std::string::npos); // the script ended at the exit
}

TEST(cli, script_expectation_failure_names_the_line)
{
    tobel::test::ScratchDir dir;
    tobel::test::write_bytes(dir.file("s.txt"), "expect num_rows 7\n");
    RunResult r = tobel("run " + dir.file("s.txt"), true);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("s.txt, line 1: num_rows is '50', expected '7'"), std::string::npos) << r.out;
}

} // namespace

namespace {

TEST(cli, search_prints_best_record_and_json)
{
    RunResult t = tobel("search " + example("slope2d-homogeneous.tob") + " --auto");
    EXPECT_EQ(t.status, 0);
    EXPECT_NE(t.out.find("Best surface: Ellipsoid #"), std::string::npos) << t.out;
    RunResult j = tobel("search " + example("slope2d-homogeneous.tob") + " --grid --json --trials");
    EXPECT_EQ(j.status, 0);
    const auto doc = nlohmann::json::parse(j.out);
    EXPECT_TRUE(doc["best"]["fos"].is_number());
    EXPECT_TRUE(doc["best"]["trial_number"].is_number_integer());
    EXPECT_TRUE(doc["best"]["valid"].get<bool>());
    EXPECT_EQ(doc["best_valid"], doc["best"]); // a valid best is its own lowest valid trial
    EXPECT_TRUE(doc["trial_count"].is_number_integer());
    EXPECT_LE(doc["fos_min"].get<double>(), doc["best"]["fos"].get<double>());
    EXPECT_TRUE(doc["fos_max"].is_number());
    EXPECT_FALSE(doc["stopped"].get<bool>());
    ASSERT_TRUE(doc["trials"].is_array());
    EXPECT_EQ(doc["trials"].size(), doc["trial_count"].get<std::size_t>());
    EXPECT_TRUE(doc["trials"][0]["fos"].is_number());
}

TEST(cli, search_progress_goes_to_stderr_one_line_per_trial)
{
    RunResult r = tobel("search " + example("slope2d-homogeneous.tob") + " --auto --json", true);
    EXPECT_NE(r.out.find("Ellipsoid # 1 "), std::string::npos) << r.out.substr(0, 300);
    EXPECT_NE(r.out.find("Ellipsoid # 2 "), std::string::npos);
}

TEST(cli, search_summary_file_has_its_heading)
{
    tobel::test::ScratchDir dir;
    RunResult r =
        tobel("search " + example("slope2d-homogeneous.tob") + " --grid --summary " + dir.file("s.txt"));
    EXPECT_EQ(r.status, 0);
    const std::string text = tobel::test::read_bytes(dir.file("s.txt"));
    EXPECT_EQ(text.rfind("GRID SEARCH SUMMARY\r\n\r\n", 0), 0u) << text.substr(0, 100);
    EXPECT_NE(text.find("Surface #, Factor of Safety, Y-coord., Z-coord., Radius, Slide Volume\r\n"),
              std::string::npos);
}

TEST(cli, report_of_a_solve_and_of_a_search)
{
    tobel::test::ScratchDir dir;
    RunResult r = tobel("report " + example("slope2d-homogeneous.tob") + " --out " + dir.file("r.txt"));
    EXPECT_EQ(r.status, 0);
    std::string text = tobel::test::read_bytes(dir.file("r.txt"));
    EXPECT_NE(text.find("Single ellipsoidal sliding surface"), std::string::npos) << text;
    EXPECT_NE(text.find("Bishop's Method"), std::string::npos);
    RunResult s = tobel("report " + example("slope2d-homogeneous.tob") + " --auto --method janbu --out " +
                        dir.file("s.txt"));
    EXPECT_EQ(s.status, 0);
    text = tobel::test::read_bytes(dir.file("s.txt"));
    EXPECT_NE(text.find("Critical surface by auto search"), std::string::npos) << text;
    EXPECT_NE(text.find("Janbu Method"), std::string::npos);
}

TEST(cli, export_two_dimensional_file_opens_and_solves)
{
    tobel::test::ScratchDir dir;
    RunResult e = tobel("export " + example("slope3d-layers-piezo-force.tob") + " --section-2d 50 --out " +
                        dir.file("sec.tob"));
    EXPECT_EQ(e.status, 0);
    RunResult i = tobel("info " + dir.file("sec.tob"));
    EXPECT_EQ(i.status, 0);
    EXPECT_NE(i.out.find("1 rows"), std::string::npos) << i.out;
    RunResult lat = tobel("export " + example("slope2d-homogeneous.tob") + " --dat-lat 10", true);
    EXPECT_EQ(lat.status, 1);
}

TEST(cli, settings_are_read_and_written_only_when_asked)
{
    tobel::test::ScratchDir dir;
    const std::string cfg = dir.file("tob.cfg");
    RunResult r = tobel("info " + example("slope2d-homogeneous.tob") + " --settings " + cfg);
    EXPECT_EQ(r.status, 0);
    const std::string text = tobel::test::read_bytes(cfg);
    EXPECT_NE(text.find("slope2d-homogeneous.tob"), std::string::npos) << text; // the recent file
    EXPECT_NE(text.find("46888"), std::string::npos);                           // the first layer colour
}

TEST(cli, convert_imports_a_legacy_file)
{
    tobel::test::ScratchDir dir;
    RunResult missing = tobel("convert " + dir.file("none.TOD") + " " + dir.file("out.TOB"), true);
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.out.find("Error # 53"), std::string::npos) << missing.out;
}

} // namespace

namespace {

// Ctrl-C stops a search as the Exit button does, and the best so far is printed.
TEST(cli, interrupt_stops_a_search_and_prints_the_best_so_far)
{
    tobel::test::ScratchDir dir;
    std::string text = tobel::test::read_bytes(example("slope3d-layers-piezo-force.tob"));
    // A grid of 150 by 150 centres takes far longer than the second allowed.
    const std::string stored =
        " 30            70            50            55            2             6             4 ";
    const auto at = text.find(stored);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, stored.size(), " 30 70 50 55 2 150 150 ");
    tobel::test::write_bytes(dir.file("long.tob"), text);
    // Ctrl-C once the first trial is listed: the search is under way and has
    // a best record, however long a loaded machine took to start it (a
    // minute at most).
    const std::string err = dir.file("err.txt");
    const std::string cmd = "sh -c '" + std::string(TOBEL_CLI) + " search " + dir.file("long.tob") +
                            " --grid --json --trials > " + dir.file("out.json") + " 2> " + err +
                            " & pid=$!; i=0; while ! grep -q \"Ellipsoid #\" " + err +
                            " && [ $i -lt 600 ]; do sleep 0.1; i=$((i+1)); done; kill -INT $pid; wait $pid; "
                            "echo $?'";
    FILE* f = popen(cmd.c_str(), "r");
    ASSERT_NE(f, nullptr);
    char buf[64] = {};
    const std::size_t n = fread(buf, 1, sizeof buf - 1, f);
    pclose(f);
    // A stopped search exits with 3 and says why.
    EXPECT_EQ(std::string(buf, n), "3\n");
    const std::string json = tobel::test::read_bytes(dir.file("out.json"));
    const auto doc = nlohmann::json::parse(json);
    EXPECT_TRUE(doc["stopped"].get<bool>()) << json;
    EXPECT_EQ(doc["stop_reason"], "stopped by the user");
    EXPECT_TRUE(doc["best"]["fos"].is_number()) << json;
}

} // namespace
