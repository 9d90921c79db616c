// The command-line program as a user runs it.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

#include "support/paths.h"

namespace {

struct RunResult {
    int status = -1;
    std::string out;
};

// Runs tobel with the arguments; standard error is kept apart unless merged.
RunResult tobel(const std::string& args, bool merge_stderr = false)
{
    const std::string cmd = std::string(TOBEL_CLI) + " " + args + (merge_stderr ? " 2>&1" : " 2>/dev/null");
    RunResult r;
    FILE* f = popen(cmd.c_str(), "r");
    if (!f) return r;
    std::array<char, 4096> buf;
    std::size_t n;
    while ((n = fread(buf.data(), 1, buf.size(), f)) > 0) r.out.append(buf.data(), n);
    const int st = pclose(f);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return r;
}

std::string example(const std::string& name) { return tobel::test::example_path(name); }

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
    for (const char* key : {"\"factor_of_safety\": ", "\"method\": \"bishop\"", "\"lambda\": ", "\"slide_volume\": ",
                            "\"slide_weight\": ", "\"slide_area\": ", "\"active_columns\": ",
                            "\"lateral_unbalance\": ", "\"centre_y\": 60", "\"centre_z\": 55", "\"messages\": ["})
        EXPECT_NE(r.out.find(key), std::string::npos) << key << " in " << r.out;
    EXPECT_EQ(r.out.front(), '{');
    EXPECT_EQ(r.out.substr(r.out.size() - 2), "}\n");
}

TEST(cli, lateral_question_is_answered_by_yes_and_echoed)
{
    RunResult no = tobel("solve " + example("slope3d-layers-piezo-force.tob"));
    RunResult yes = tobel("solve " + example("slope3d-layers-piezo-force.tob") + " --yes --printout");
    // The example's unbalance is above 1 % of the weight only if the question shows; either way no crash.
    if (no.out.find("DO YOU WISH TO BALANCE LATERAL FORCES ?") != std::string::npos) {
        EXPECT_NE(no.out.find("-> No"), std::string::npos);
        EXPECT_NE(yes.out.find("-> Yes"), std::string::npos);
    }
    EXPECT_EQ(yes.status, 0);
}

TEST(cli, missing_file_is_bad_input)
{
    RunResult r = tobel("solve /nonexistent/none.tob", true);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("Error # 53 occured: File not found"), std::string::npos) << r.out;
}

TEST(cli, methods_not_yet_available_are_refused)
{
    RunResult r = tobel("solve " + example("slope2d-homogeneous.tob") + " --method spencer", true);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("not available"), std::string::npos) << r.out;
    RunResult u = tobel("solve " + example("slope2d-homogeneous.tob") + " --method nonsense", true);
    EXPECT_EQ(u.status, 1);
}

TEST(cli, failed_solution_exits_two)
{
    // A non-linear material with a uniaxial strength of 0 cannot be evaluated.
    tobel::test::ScratchDir dir;
    std::string text = tobel::test::read_bytes(example("slope2d-homogeneous.tob"));
    const std::string coulomb = " 20            1             10";
    const auto at = text.find(coulomb);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, coulomb.size(), " 20            3             10");
    tobel::test::write_bytes(dir.file("bad.tob"), text);
    RunResult r = tobel("solve " + dir.file("bad.tob") + " --json");
    EXPECT_EQ(r.status, 2) << r.out;
    EXPECT_NE(r.out.find("\"factor_of_safety\": 0"), std::string::npos) << r.out;
}

TEST(cli, script_drives_open_surface_and_solve)
{
    tobel::test::ScratchDir dir;
    tobel::test::write_bytes(dir.file("s.txt"), "# open, confirm, solve\n"
                                                "open " + example("slope2d-homogeneous.tob") + "\n"
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
    EXPECT_NE(r.out.find("Do you want to save changes to: " + example("slope2d-homogeneous.tob") + "? -> Cancel"),
              std::string::npos);
    EXPECT_NE(r.out.find("exit cancelled"), std::string::npos);
    EXPECT_NE(r.out.find("program ended"), std::string::npos);
    EXPECT_EQ(r.out.find("print fos"), std::string::npos);  // the script ended at the exit
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
