#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "project/defaults.h"
#include "commands/surface_commands.h"
#include "report/report.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScratchDir;

// The test's own S(x, f): the single taken at its 7 significant digits,
// rounded to `decimals`, then as a signed number text: trailing zeros and a
// leading zero dropped, a blank for the sign.
std::string S(float x, int decimals)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.7g", double(x));
    std::snprintf(buf, sizeof buf, "%.*f", decimals, std::strtod(buf, nullptr));
    std::string t = buf;
    if (t.find('.') != std::string::npos) {
        while (t.back() == '0')
            t.pop_back();
        if (t.back() == '.')
            t.pop_back();
    }
    bool negative = t[0] == '-';
    if (negative)
        t.erase(0, 1);
    if (t == "0")
        negative = false;
    if (t.rfind("0.", 0) == 0)
        t.erase(0, 1);
    return (negative ? "-" : " ") + t;
}

// Label and value in print zones of 14 columns.
std::string two(const std::string& label, const std::string& value)
{
    return label + std::string(14 - label.size() % 14, ' ') + value;
}

// A plain number of a print statement.
std::string plain(const std::string& general)
{
    return (general[0] == '-' ? "" : " ") + general + " ";
}

ReportContext single(bool window = true)
{
    return {window, ReportSolve::single_trial, "11-22-2026"};
}

Project base()
{
    Project p;
    main_load(p);
    reset_project(p);
    p.project_title = "Slope A";
    p.input_by = "J. Smith";
    p.mat_name[1] = "Clay";
    p.mat_unit_weight[1] = 20;
    p.mat_cohesion[1] = 10.5f;
    p.mat_phi[1] = 25;
    return p;
}

const std::vector<std::string> head = {two("PROJECT:", "Slope A"), two("Input By: ", "J. Smith"),
                                       two("Date: ", "11-22-2026"), ""};

std::vector<std::string> with(std::vector<std::string> a, const std::vector<std::string>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const char* material_columns =
    "Name, Unit Weight, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.";

TEST(report_value, s_form_keeps_the_sign_blank_and_drops_zeros)
{
    EXPECT_EQ(report_value(1.2f, "####0.00"), " 1.2");
    EXPECT_EQ(report_value(0.5f, "####0.00"), " .5");
    EXPECT_EQ(report_value(-2.345f, "####0.00"), "-2.35");
    EXPECT_EQ(report_value(0.0f, "####0.00"), " 0");
    EXPECT_EQ(report_value(-0.001f, "####0.00"), " 0");
    EXPECT_EQ(report_value(12.3456f, "####0.000"), " 12.346");
}

TEST(report, before_any_solution_only_head_and_input_lists)
{
    Project p = base();
    const auto lines = report_text_lines(p, single(false));
    EXPECT_EQ(lines, with(head, {"", "", "List of Materials:", material_columns,
                                 "Clay, 20, 10.5, 25 , 0 , 0 , 0 "}));
}

TEST(report, list_of_a_missing_type_is_left_out_with_its_heading)
{
    Project p = base();
    p.mat_type[1] = 2;
    p.mat_cohesion_v[1] = 7;
    p.mat_phi_v[1] = 22;
    p.mat_piezo[1] = 0.3f;
    p.mat_bbar[1] = 0.8f;
    const auto lines = report_text_lines(p, single(false));
    EXPECT_EQ(lines,
              with(head, {"", "", "List of Anisotropic Materials:",
                          "Name, Unit Weight, Cohesion, Cohesion Vert., Friction Angle, Fi Angle Vert., "
                          "Piezo #, Press. Ratio, B-bar Coeff.",
                          "Clay, 20, 10.5, 7, 25 , 22 , 0 , .3 , .8 "}));
}

TEST(report, lists_come_by_type_discontinuities_non_linear_and_forces)
{
    Project p = base();
    p.num_layers = 3;
    p.num_discs = 1;
    derive_counts(p);
    p.mat_piezo[1] = -2; // piezo surface 2
    p.mat_name[2] = "Rock";
    p.mat_type[2] = 3;
    p.mat_unit_weight[2] = 25.25f;
    p.mat_coef_a[2] = 1.5f;
    p.mat_coef_b[2] = 0.7f;
    p.mat_uniaxial[2] = 5000;
    p.mat_coef_d[2] = 0;
    p.mat_name[3] = "Silt";
    p.mat_type[3] = 1;
    p.mat_unit_weight[3] = 19;
    p.mat_cohesion[3] = 0;
    p.mat_phi[3] = 32;
    p.mat_name[4] = "Joint";
    p.mat_cohesion[4] = 2;
    p.mat_phi[4] = 18;
    p.num_forces = 2;
    p.force_h[1] = -50;
    p.force_v[1] = 400;
    p.force_x[1] = 50;
    p.force_y[1] = 85.125f;
    p.force_z[1] = 30;
    p.force_v[2] = 1.5f;
    const auto lines = report_text_lines(p, single(false));
    EXPECT_EQ(
        lines,
        with(head, {"",
                    "",
                    "List of Materials:",
                    material_columns,
                    "Clay, 20, 10.5, 25 , 2 , 0 , 0 ",
                    "Silt, 19, 0, 32 , 0 , 0 , 0 ",
                    "",
                    "",
                    "List of Discontinuities:",
                    "Name, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.",
                    "Joint, 2, 18 , 0 , 0 , 0 ",
                    "",
                    "",
                    "List of Non-Linear Materials:",
                    "Name, Unit Weight, Piezo #, Press. Ratio, B-bar Coeff., Coeff. A, Coeff. B, Uniaxial "
                    "Strength, Coeff. D",
                    "Rock, 25.25, 0 , 0 , 0 , 1.5 , .7 , 5000 , 0 ",
                    "",
                    "",
                    "List of External Forces:",
                    "Name, Horizontal Force, Vertical Force, X-Coordinate, Y-Coordinate, Z-Coordinate",
                    "Force 1,-50.00,400.00,50.00,85.13,30.00",
                    "Force 2,0.00,1.50,0.00,0.00,0.00"}));
}

TEST(report, crack_by_depth_and_by_y)
{
    Project p = base();
    p.crack_mode = 2;
    p.crack_depth = 3.5f;
    p.crack_y = 9;
    p.crack_water_pct = 50;
    auto lines = report_text_lines(p, single(false));
    const std::vector<std::string> tail = {"", "", "Tension Crack:", two("Depth:", plain("3.5")),
                                           two("% Filled by Water: ", "50.00")};
    EXPECT_EQ(std::vector<std::string>(lines.end() - 5, lines.end()), tail);
    p.crack_mode = 1;
    lines = report_text_lines(p, single(false));
    EXPECT_EQ(lines[lines.size() - 2], two("Y-coordinate:", plain("9")));
}

// A solved state set by hand, to see every line of the solution part.
Project solved()
{
    Project p = base();
    p.surface_kind = 1;
    p.solution_method = 1;
    p.factor_of_safety = 1.2687f;
    p.slide_volume = 1234.5f;
    p.slide_weight = 24690;
    p.lateral_unbalance = -0.004f;
    p.slide_area = 0.5f;
    p.active_columns = 143;
    p.rotation_angle = 0;
    p.centre_y = 45;
    p.centre_z = 50.125f;
    p.neg_normal_percent = 3.4f;
    p.lambda_coef = 0.25f;
    return p;
}

std::vector<std::string> solution_part(const std::vector<std::string>& lines)
{
    return std::vector<std::string>(lines.begin() + 4, lines.end() - 5);
}

TEST(report, solution_part_of_a_single_trial)
{
    Project p = solved();
    const auto lines = report_text_lines(p, single());
    EXPECT_EQ(solution_part(lines),
              (std::vector<std::string>{
                  two("Sliding Surface:", "Single ellipsoidal sliding surface"), "Bishop's Method", "",
                  two("Factor of Safety:", " 1.27"), two("Slide Volume:", " 1234.5"),
                  two("Slide Weight:", " 24690"), two("Unbalanced Force:", " 0"),
                  two("Sliding Surface Area:", " .5"), two("No. of Active Columns:", " 143 "),
                  two("Rotation angle:", " 0 "), two("Centre Y:", " 45"), two("Centre Z:", " 50.13"),
                  "Negative normal stresses in 3% of weight", "", "Unit Weight of Water: 9.81 (kN/cu.m)"}));
}

TEST(report, surface_and_method_lines_by_kind)
{
    Project p = solved();
    const std::pair<int, const char*> kinds[] = {{1, "Single ellipsoidal sliding surface"},
                                                 {2, "Multi-planar wedge surface"},
                                                 {3, "Composite surface"},
                                                 {4, "General sliding surface"},
                                                 {5, "Composite surface"}};
    for (auto [kind, text] : kinds) {
        p.surface_kind = int16(kind);
        EXPECT_EQ(report_text_lines(p, single())[4], two("Sliding Surface:", text));
    }
    EXPECT_EQ(report_text_lines(p, {true, ReportSolve::grid_search, "d"})[4],
              two("Sliding Surface:", "Critical surface by grid search"));
    EXPECT_EQ(report_text_lines(p, {true, ReportSolve::auto_search, "d"})[4],
              two("Sliding Surface:", "Critical surface by auto search"));
    const char* methods[] = {"", "Bishop's Method", "Janbu Method", "Spencer's Method",
                             "Morgenstern-Price Method"};
    for (int m = 1; m <= 4; ++m) {
        p.solution_method = int16(m);
        EXPECT_EQ(report_text_lines(p, single())[5], methods[m]);
    }
}

TEST(report, lambda_only_for_spencer)
{
    Project p = solved();
    p.solution_method = 3;
    auto lines = report_text_lines(p, single());
    EXPECT_EQ(lines[12], two("Coefficient Lambda:", " .25"));
    EXPECT_EQ(lines[13], two("No. of Active Columns:", " 143 "));
    p.solution_method = 4;
    lines = report_text_lines(p, single());
    EXPECT_EQ(lines[12], two("No. of Active Columns:", " 143 "));
}

TEST(report, water_thrusts_and_earthquake_when_not_zero)
{
    Project p = solved();
    p.head_water_sum = 120.5f;
    p.crack_water_sum = 33.333f;
    p.eq_coef = 0.15f;
    const auto lines = report_text_lines(p, single());
    EXPECT_EQ(lines[16], "Negative normal stresses in 3% of weight");
    EXPECT_EQ(lines[17], two("Total water thrust (toe submergence):", " 120.5"));
    EXPECT_EQ(lines[18], two("Total water thrust (tension crack):", " 33.33"));
    EXPECT_EQ(lines[19], "");
    EXPECT_EQ(lines[20], "Unit Weight of Water: 9.81 (kN/cu.m)");
    EXPECT_EQ(lines[21], two("Hor. Earthquake Accel.:", " .15"));
}

TEST(report, unit_weight_line_only_for_the_two_known_values)
{
    Project p = solved();
    p.unit_weight_water = 62.4f;
    auto lines = report_text_lines(p, single());
    EXPECT_EQ(lines[17], "");
    EXPECT_EQ(lines[18], "Unit Weight of Water: 62.4  (pcf)");
    p.unit_weight_water = 10;
    lines = report_text_lines(p, single());
    EXPECT_EQ(lines[17], "");
    EXPECT_EQ(lines[18], ""); // straight on to the lists
    EXPECT_EQ(lines[20], "List of Materials:");
}

TEST(report, file_has_crlf_lines)
{
    ScratchDir dir;
    Project p = base();
    write_report_text(p, dir.file("r.txt"), single(false));
    const std::string text = test::read_bytes(dir.file("r.txt"));
    EXPECT_EQ(text.substr(0, 23), two("PROJECT:", "Slope A") + "\r\n");
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n");
}

TEST(save_report, cancel_writes_nothing)
{
    ScratchDir dir;
    Project p = base();
    test::ScriptedPort port;
    file_save_report(p, port, single(false));
    ASSERT_EQ(port.dialog_filters.size(), 1u);
    EXPECT_EQ(port.dialog_filters[0], "Text Files (*.txt)|*.txt");
    EXPECT_TRUE(std::filesystem::is_empty(dir.path));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(save_report, chosen_file_gets_the_report)
{
    ScratchDir dir;
    Project p = base();
    test::ScriptedPort port;
    port.files.push_back(dir.file("out.txt"));
    file_save_report(p, port, single(false));
    std::string expected;
    for (const auto& l : report_text_lines(p, single(false)))
        expected += l + "\r\n";
    EXPECT_EQ(test::read_bytes(dir.file("out.txt")), expected);
    port.files.push_back(dir.file("no/such/folder.txt"));
    file_save_report(p, port, single(false));
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text.rfind("Error # 75 occured: ", 0), 0u);
}

// Each shipped example solved on the surface it is made for, then its report
// line by line: inputs from the example file, results as solved.
struct ExampleCase {
    const char* file;
    SurfaceCommand surface;
    const char* surface_line;
    std::vector<std::string> lists; // everything after the solution part
};

std::vector<std::string> solution_lines_expected(const Project& p, const char* surface_line)
{
    std::vector<std::string> out = {
        two("Sliding Surface:", surface_line),
        "Bishop's Method",
        "",
        two("Factor of Safety:", S(p.factor_of_safety, 2)),
        two("Slide Volume:", S(p.slide_volume, 2)),
        two("Slide Weight:", S(p.slide_weight, 2)),
        two("Unbalanced Force:", S(p.lateral_unbalance, 2)),
        two("Sliding Surface Area:", S(p.slide_area, 2)),
        two("No. of Active Columns:", " " + std::to_string(p.active_columns) + " "),
        two("Rotation angle:", " 0 "),
        two("Centre Y:", S(p.centre_y, 2)),
        two("Centre Z:", S(p.centre_z, 2)),
        "Negative normal stresses in " + std::to_string(std::lround(p.neg_normal_percent)) + "% of weight",
    };
    if (p.head_water_sum != 0)
        out.push_back(two("Total water thrust (toe submergence):", S(p.head_water_sum, 2)));
    if (p.crack_water_sum != 0)
        out.push_back(two("Total water thrust (tension crack):", S(p.crack_water_sum, 2)));
    out.push_back("");
    out.push_back("Unit Weight of Water: 9.81 (kN/cu.m)");
    return out;
}

TEST(report, each_shipped_example_line_by_line)
{
    const std::string clayey = "Clayey sand, 20, 10, 20 , 0 , 0 , 0 ";
    const std::vector<std::string> two_layers = {"",
                                                 "",
                                                 "List of Materials:",
                                                 material_columns,
                                                 "Stiff clay, 21, 25, 28 , 1 , 0 , 0 ",
                                                 "Silty sand, 19, 5, 30 , 1 , 0 , 0 "};
    const std::vector<ExampleCase> cases = {
        {"slope2d-homogeneous.tob",
         SurfaceCommand::ellipsoid,
         "Single ellipsoidal sliding surface",
         {"", "", "List of Materials:", material_columns, clayey}},
        {"slope2d-crack-water.tob",
         SurfaceCommand::ellipsoid,
         "Single ellipsoidal sliding surface",
         {"", "", "List of Materials:", material_columns, clayey, "", "",
          "Tension Crack:", two("Y-coordinate:", " 76 "), two("% Filled by Water: ", "50.00")}},
        {"slope2d-general.tob",
         SurfaceCommand::general,
         "General sliding surface",
         {"", "", "List of Materials:", material_columns, clayey}},
        {"slope2d-wedge-joint.tob",
         SurfaceCommand::wedge,
         "Multi-planar wedge surface",
         {"", "", "List of Materials:", material_columns, "Weathered sandstone, 22, 20, 35 , 0 , 0 , 0 ", "",
          "",
          "List of Discontinuities:", "Name, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.",
          "Bedding joint, 0, 24 , 0 , 0 , 0 "}},
        {"slope3d-composite-seam.tob", SurfaceCommand::composite, "Composite surface",
         with(two_layers, {"", "", "List of Discontinuities:",
                           "Name, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.",
                           "Weak seam, 2, 15 , 1 , 0 , 0 "})},
        {"slope3d-layers-piezo-force.tob", SurfaceCommand::ellipsoid, "Single ellipsoidal sliding surface",
         with(two_layers, {"", "", "List of External Forces:",
                           "Name, Horizontal Force, Vertical Force, X-Coordinate, Y-Coordinate, Z-Coordinate",
                           "Force 1,-50.00,400.00,50.00,85.00,30.00"})},
    };
    for (const auto& c : cases) {
        test::ScriptedPort port;
        Project p;
        main_load(p);
        p.data_file_path = test::example_path(c.file);
        p.open_recent_pending = -1;
        file_open(p, port);
        ASSERT_TRUE(confirm_surface(p, port, c.surface)) << c.file;
        ASSERT_TRUE(solve_single_trial(p, port)) << c.file;
        ASSERT_GT(p.factor_of_safety, 0.0f) << c.file;
        if (std::string(c.file).find("crack") != std::string::npos) {
            EXPECT_NE(p.crack_water_sum, 0.0f) << "a half-filled crack pushes";
        }

        const std::string title = test::read_bytes(test::example_path(c.file));
        std::vector<std::string> expected = {two("PROJECT:", title.substr(0, title.find('\r'))),
                                             two("Input By: ", "TOBEL-3 examples"),
                                             two("Date: ", "01-02-2027"), ""};
        expected = with(expected, solution_lines_expected(p, c.surface_line));
        expected = with(expected, c.lists);
        const auto lines = report_text_lines(p, {true, ReportSolve::single_trial, "01-02-2027"});
        ASSERT_EQ(lines.size(), expected.size()) << c.file;
        for (std::size_t n = 0; n < lines.size(); ++n)
            EXPECT_EQ(lines[n], expected[n]) << c.file << " line " << n;
    }
}

} // namespace
} // namespace tobel
