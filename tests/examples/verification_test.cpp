// Verification: benchmark examples and closed-form problems against their
// published or closed-form factors of safety. docs/verification.md lists the
// same checks; the last test holds every number of its tables to what these
// tests compute, so that the page cannot go stale.
//
// The examples are run as `tobel search FILE --grid` and `tobel solve FILE`
// run them: File > Open, the stored set-up confirmed, the search or the
// single trial solved.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/surface_commands.h"
#include "commands/search_commands.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/solver_fixture.h"
#include "solver/spencer_mp.h"
#include "support/bishop_slices.h"
#include "support/circle_slope.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::Circle;
using test::GroundLine;

// One row of the page: the program's value against its reference, within a
// tolerance relative to the reference (or absolute).
struct Check {
    std::string id;
    double reference;
    double program;
    double tolerance;
    bool relative = true;
};

double difference_percent(const Check& c)
{
    return (c.program - c.reference) / c.reference * 100;
}

void expect_within(const Check& c)
{
    const double allowed = c.relative ? c.tolerance * std::fabs(c.reference) : c.tolerance;
    EXPECT_LE(std::fabs(c.program - c.reference), allowed)
        << c.id << ": program " << c.program << ", reference " << c.reference;
    std::printf("| `%s` | reference %.4f | program %.4f | %+.2f %% |\n", c.id.c_str(), c.reference, c.program,
                difference_percent(c));
}

// The program's degrees pass through 3.14 / 180, on purpose; the
// independent calculations that compare a circle with the program's own use
// the same angle.
double program_radians(double deg)
{
    return deg * 3.14 / 180;
}

Project opened(const std::string& name, test::ScriptedPort& port)
{
    Project p;
    main_load(p);
    p.data_file_path = test::example_path(name);
    p.open_recent_pending = -1;
    file_open(p, port);
    EXPECT_TRUE(port.boxes.empty()) << name << ": " << port.boxes.front().text;
    return p;
}

// `tobel search FILE --grid --method bishop`: the stored grid search.
SearchRecord grid_search(const std::string& name)
{
    test::ScriptedPort port;
    Project p = opened(name, port);
    p.solution_method = 1;
    EXPECT_TRUE(confirm_search_setup(p, port, true, false)) << name;
    EXPECT_TRUE(solve_grid_search(p, port)) << name;
    return p.search.best;
}

// The ellipsoid form confirmed with the given circle and solved by `method`,
// as `tobel solve` does with the circle stored in the file.
double solve_circle(const std::string& name, const Circle& k, int method)
{
    test::ScriptedPort port;
    Project p = opened(name, port);
    p.search_x = p.x_min;
    p.single_y = float(k.yc);
    p.single_z = float(k.zc);
    p.tangent_z = float(k.zc - k.r);
    p.aspect_in = 1;
    EXPECT_TRUE(confirm_surface(p, port, SurfaceCommand::ellipsoid));
    p.solution_method = int16(method);
    EXPECT_TRUE(solve_single_trial(p, port));
    return p.factor_of_safety;
}

Circle circle_of(const SearchRecord& r)
{
    return {r.y, r.z, r.radius};
}

// ACADS referee problem 1(a) (Donald and Giam, 1989): a homogeneous slope
// 10 m high at 2:1, c' = 3 kPa, phi' = 19.6 degrees, unit weight 20, dry.
// Published geometry (Y, Z): (20, 25), (30, 25), (50, 35), (70, 35).
constexpr double acads_referee = 1.00;
const GroundLine acads_ground{{{20, 25}, {30, 25}, {50, 35}, {70, 35}}};

std::vector<Check> acads_checks()
{
    const std::string file = "slope2d-acads-1a.tob";
    const SearchRecord best = grid_search(file);
    const Circle k = circle_of(best);
    // The minimum must lie inside the stored grid (Y 22 to 38, Z 46 to 62),
    // or the grid did not bracket it.
    EXPECT_GT(best.y, 22.5f);
    EXPECT_LT(best.y, 37.5f);
    EXPECT_GT(best.z, 46.5f);
    EXPECT_LT(best.z, 61.5f);
    const double phi = program_radians(19.6);
    // The file's mesh: 801 nodes 0.1 apart from Y = 0.
    const double same =
        test::bishop_on_slices(acads_ground, k, 3, phi, 20, test::mesh_nodes(0, 0.1, 801), 0.1);
    const double continuum = test::bishop_continuum(acads_ground, k, 3, phi, 20);
    const test::CircleMinimum least = test::minimise_over_circles(
        acads_ground,
        [&](const Circle& c, int n) { return test::bishop_continuum(acads_ground, c, 3, phi, 20, n); }, 20,
        44, 36, 70, 2, 4000);
    std::printf("ACADS 1(a): grid best (%.2f, %.2f) R %.2f F %.5f; independent minimum (%.3f, %.3f) R %.3f F "
                "%.5f\n",
                double(best.y), double(best.z), double(best.radius), double(best.fos), least.circle.yc,
                least.circle.zc, least.circle.r, least.factor);
    return {
        {"acads-1a/bishop-grid", acads_referee, best.fos, 0.02},
        {"acads-1a/spencer-critical", acads_referee, solve_circle(file, k, 3), 0.02},
        {"acads-1a/mp-critical", acads_referee, solve_circle(file, k, 4), 0.02},
        {"acads-1a/bishop-minimum", least.factor, best.fos, 0.005},
        {"acads-1a/bishop-same-slices", same, best.fos, 0.003},
        {"acads-1a/bishop-continuum", continuum, best.fos, 0.01},
    };
}

// Taylor's stability number for phi = 0 and a slope of 60 degrees: the
// critical circle is a toe circle and N = c / (F gamma H) = 0.191 (Taylor,
// 1937 and 1948). H = 10, c = 40, gamma = 20.
constexpr double taylor_n = 0.191;
constexpr double taylor_c = 40, taylor_gamma = 20, taylor_h = 10;
const GroundLine taylor_ground{{{0, 10}, {30, 10}, {30 + 10 / std::tan(M_PI / 3), 20}, {70, 20}}};

std::vector<Check> taylor_checks()
{
    const std::string file = "slope2d-taylor-phi0.tob";
    const double chart = taylor_c / (taylor_n * taylor_gamma * taylor_h);
    const SearchRecord best = grid_search(file);
    const Circle k = circle_of(best);
    // Inside the stored grid: Y 24 to 36, Z 22 to 34.
    EXPECT_GT(best.y, 24.5f);
    EXPECT_LT(best.y, 35.5f);
    EXPECT_GT(best.z, 22.5f);
    EXPECT_LT(best.z, 33.5f);
    const double closed = test::cohesive_rotation(taylor_ground, k, taylor_c, taylor_gamma);
    // The file's mesh: 1401 nodes 0.05 apart from Y = 0.
    const double same = test::cohesive_rotation_on_slices(taylor_ground, k, taylor_c, taylor_gamma,
                                                          test::mesh_nodes(0, 0.05, 1401), 0.05);
    const test::CircleMinimum least = test::minimise_over_circles(
        taylor_ground,
        [&](const Circle& c, int n) {
            return test::cohesive_rotation(taylor_ground, c, taylor_c, taylor_gamma, n);
        },
        20, 40, 22, 40, 2, 20000);
    std::printf("Taylor 60: grid best (%.2f, %.2f) R %.2f F %.5f; independent minimum (%.3f, %.3f) R %.3f F "
                "%.5f, N = %.4f\n",
                double(best.y), double(best.z), double(best.radius), double(best.fos), least.circle.yc,
                least.circle.zc, least.circle.r, least.factor,
                taylor_c / (least.factor * taylor_gamma * taylor_h));
    // The chart value itself: the closed-form minimum is a toe circle (the
    // toe at Y = 30, Z = 10 lies on it) of Taylor's stability number.
    EXPECT_NEAR(std::hypot(least.circle.yc - 30, least.circle.zc - 10), least.circle.r, 0.01);
    EXPECT_NEAR(least.factor / chart, 1.0, 0.005);
    // The stored single trial: a deeper circle on which all the methods that
    // satisfy moment equilibrium converge.
    const Circle single{35, 40, 30};
    const double single_closed = test::cohesive_rotation(taylor_ground, single, taylor_c, taylor_gamma);
    return {
        {"taylor-60/bishop-grid", chart, best.fos, 0.01},
        {"taylor-60/closed-form-minimum", least.factor, best.fos, 0.01},
        {"taylor-60/closed-form-critical", closed, best.fos, 0.01},
        {"taylor-60/same-slices-critical", same, best.fos, 0.001},
        {"taylor-60/bishop-single", single_closed, solve_circle(file, single, 1), 0.01},
        {"taylor-60/spencer-single", single_closed, solve_circle(file, single, 3), 0.01},
        {"taylor-60/mp-single", single_closed, solve_circle(file, single, 4), 0.01},
    };
}

// The solver on a project built directly, as the solver tests build it.
double solve_built(Project& p, int method)
{
    check_surface(p);
    EXPECT_EQ(p.surface_out_flag, 0);
    p.solution_method = int16(method);
    p.solve_interactive = 0;
    test::ScriptedPort port;
    if (method <= 2)
        solve_bishop_janbu(p, port);
    else
        solve_spencer_mp(p, port);
    EXPECT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    return p.factor_of_safety;
}

// The sliding block of tests/solver/planar_block_test.cpp: a 45 degree face
// 20 high from a toe at Y = 10, a plane of theta from the toe, 2001 columns.
// F = (c L + W cos(theta) tan(phi)) / (W sin(theta)) for every method that
// keeps force equilibrium.
std::vector<Check> block_checks(const std::string& id, double theta_deg, double c, double phi_deg)
{
    const double gamma = 20, toe = 10, height = 20;
    const float theta = float(theta_deg * M_PI / 180);
    const double face = std::tan(45 * M_PI / 180);
    const double exit_y = toe + height / std::tan(double(theta));
    const double w = gamma * (exit_y - (toe + height / face)) * height / 2;
    const double length = height / std::sin(double(theta));
    const double exact = (c * length + w * std::cos(double(theta)) * std::tan(program_radians(phi_deg))) /
                         (w * std::sin(double(theta)));
    std::vector<Check> out;
    const char* names[] = {"", "", "janbu", "spencer", "mp"};
    for (int method : {2, 3, 4}) {
        test::SolverMesh m;
        m.rows = 1;
        m.cols = 2001;
        m.x_max = 1;
        m.y_max = 100;
        auto p = test::make_solver_project(m);
        p->mat_unit_weight[1] = float(gamma);
        p->mat_cohesion[1] = float(c);
        p->mat_phi[1] = float(phi_deg);
        for (int j = 1; j <= m.cols; ++j) {
            const double y = double(p->y_min) + (j - 1) * double(p->col_spacing);
            const double zg = y <= toe ? 0 : std::min(height, (y - toe) * face);
            const double zp = (y - toe) * std::tan(double(theta));
            p->zgrid(1, j, 1) = float(zg);
            p->zgrid(1, j, p->sliding_index) = float(y > toe && zp < zg ? zp : zg);
            p->surf_dip_y(1, j) = theta;
            p->surf_dip_x(1, j) = 0;
        }
        p->centre_y = 40;
        p->centre_z = 60;
        out.push_back({id + "/" + names[method], exact, solve_built(*p, method), 0.005});
    }
    return out;
}

// The purely cohesive circle of tests/solver/planar_block_test.cpp (ground
// rising at 0.3, circle of radius 30 centred at (50, 39), 2000 columns):
// moment equilibrium alone fixes F, the closed form of a rigid rotation.
std::vector<Check> cohesive_circle_checks()
{
    const test::Slope g;
    const double exact = test::closed_form_2d(g);
    std::vector<Check> out;
    const char* names[] = {"", "bishop", "", "spencer", "mp"};
    for (int method : {1, 3, 4}) {
        auto p = test::make_cohesive_slope(g, 2000, true, method);
        out.push_back(
            {std::string("cohesive-circle/") + names[method], exact, solve_built(*p, method), 0.005});
    }
    return out;
}

// The stored circle of examples/slope2d-homogeneous.tob against Bishop's
// method on the same slices and as a continuum (tests/examples/
// bishop_2d_textbook_test.cpp).
std::vector<Check> example_2d_checks()
{
    const double f = solve_circle("slope2d-homogeneous.tob", {45, 50, 40}, 1);
    const Circle k{45, 50, 40};
    const double phi = program_radians(20);
    const double same = test::textbook_bishop(k, 10, phi, 20, test::mesh_nodes(0, 0.5, 201), 0.5);
    const double continuum =
        test::textbook_bishop(k, 10, phi, 20, test::mesh_nodes(0.0005, 0.001, 100000), 0.001);
    return {
        {"example-2d/bishop-same-slices", same, f, 0.003, false},
        {"example-2d/bishop-continuum", continuum, f, 0.01},
    };
}

std::vector<Check> closed_form_checks()
{
    std::vector<Check> out;
    for (auto part : {block_checks("planar-block-20", 20, 10, 30), block_checks("planar-block-30", 30, 5, 25),
                      cohesive_circle_checks(), example_2d_checks()})
        out.insert(out.end(), part.begin(), part.end());
    return out;
}

TEST(verification, acads_1a_grid_search_meets_the_referee_factor)
{
    for (const Check& c : acads_checks())
        expect_within(c);
}

TEST(verification, taylor_phi0_grid_search_meets_the_stability_number)
{
    for (const Check& c : taylor_checks())
        expect_within(c);
}

TEST(verification, closed_form_problems_hold)
{
    for (const Check& c : closed_form_checks())
        expect_within(c);
}

// A row of the page's tables, its cells by column name.
using PageRow = std::map<std::string, std::string>;

std::string trimmed(const std::string& s)
{
    const auto b = s.find_first_not_of(" \t\r");
    const auto e = s.find_last_not_of(" \t\r");
    return b == std::string::npos ? "" : s.substr(b, e - b + 1);
}

std::vector<std::string> cells_of(const std::string& line)
{
    std::vector<std::string> cells;
    std::string cell;
    std::istringstream in(line.substr(1));
    while (std::getline(in, cell, '|'))
        cells.push_back(trimmed(cell));
    if (!cells.empty() && cells.back().empty())
        cells.pop_back();
    return cells;
}

// The rows of every table whose first column is "Check", keyed by the check
// named in backticks.
std::map<std::string, PageRow> page_rows(const std::string& text)
{
    std::map<std::string, PageRow> rows;
    std::vector<std::string> header;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        line = trimmed(line);
        if (line.empty() || line[0] != '|') {
            header.clear();
            continue;
        }
        const std::vector<std::string> cells = cells_of(line);
        if (cells.empty() || cells[0].rfind("---", 0) == 0)
            continue;
        if (cells[0] == "Check") {
            header = cells;
            continue;
        }
        if (header.empty() || cells[0].size() < 3 || cells[0].front() != '`')
            continue;
        PageRow row;
        for (std::size_t i = 0; i < cells.size() && i < header.size(); ++i)
            row[header[i]] = cells[i];
        rows[cells[0].substr(1, cells[0].size() - 2)] = row;
    }
    return rows;
}

// The number in a cell and the unit of its last printed digit.
struct Printed {
    double value = 0;
    double unit = 1;
    bool percent = false;
    bool ok = false;
};

Printed printed(const std::string& cell)
{
    Printed out;
    const auto start = cell.find_first_of("+-0123456789.");
    if (start == std::string::npos)
        return out;
    std::size_t end = start + 1;
    while (end < cell.size() && (std::isdigit(static_cast<unsigned char>(cell[end])) || cell[end] == '.'))
        ++end;
    const std::string number = cell.substr(start, end - start);
    out.value = std::stod(number);
    const auto point = number.find('.');
    out.unit = point == std::string::npos ? 1 : std::pow(10.0, -double(number.size() - point - 1));
    out.percent = cell.find('%', end) != std::string::npos;
    out.ok = true;
    return out;
}

// Agreement to the printed digits, with a little room for the last bit of
// another compiler's arithmetic.
void expect_printed(const std::string& id, const PageRow& row, const std::string& column, double value)
{
    const auto it = row.find(column);
    ASSERT_NE(it, row.end()) << id << ": no column " << column;
    const Printed p = printed(it->second);
    ASSERT_TRUE(p.ok) << id << ": no number in " << column << " '" << it->second << "'";
    EXPECT_LE(std::fabs(p.value - value), 0.6 * p.unit)
        << id << ": the page says " << column << " " << it->second << ", the test computes " << value;
}

TEST(verification_page, every_row_is_what_the_tests_compute)
{
    const std::string text = test::read_bytes(std::string(TOBEL_SOURCE_DIR) + "/docs/verification.md");
    ASSERT_FALSE(text.empty()) << "docs/verification.md is missing";
    const std::map<std::string, PageRow> rows = page_rows(text);
    std::vector<Check> all;
    for (auto part : {acads_checks(), taylor_checks(), closed_form_checks()})
        all.insert(all.end(), part.begin(), part.end());
    std::map<std::string, bool> computed;
    for (const Check& c : all) {
        computed[c.id] = true;
        std::printf("| `%s` | %.4f | %.4f | %+.2f %% | ±%g%s |\n", c.id.c_str(), c.reference, c.program,
                    difference_percent(c), c.relative ? c.tolerance * 100 : c.tolerance,
                    c.relative ? " %" : "");
        const auto it = rows.find(c.id);
        if (it == rows.end()) {
            ADD_FAILURE() << "docs/verification.md has no row `" << c.id << "`";
            continue;
        }
        const PageRow& row = it->second;
        expect_printed(c.id, row, "Reference", c.reference);
        expect_printed(c.id, row, "Program", c.program);
        expect_printed(c.id, row, "Difference", difference_percent(c));
        const Printed tol = printed(row.count("Tolerance") ? row.at("Tolerance") : "");
        ASSERT_TRUE(tol.ok) << c.id << ": no tolerance";
        EXPECT_EQ(tol.percent, c.relative) << c.id << ": tolerance " << row.at("Tolerance");
        EXPECT_NEAR(tol.value, c.relative ? c.tolerance * 100 : c.tolerance, 1e-9)
            << c.id << ": tolerance " << row.at("Tolerance");
    }
    for (const auto& [id, row] : rows)
        EXPECT_TRUE(computed.count(id))
            << "docs/verification.md has a row `" << id << "` that no test computes";
    EXPECT_EQ(rows.size(), all.size());
}

} // namespace
} // namespace tobel
