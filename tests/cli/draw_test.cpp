// Every picture of the shipped examples made headless by `tobel draw`, as
// PNG, SVG and PDF, and read back: the size asked for, not blank, the PDF
// rendered again by pdftoppm. Bad requests leave no file behind.
#include <cctype>
#include <gtest/gtest.h>

#include <QImage>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

#include "support/paths.h"
#include "support/run_cli.h"

namespace {

namespace fs = std::filesystem;
using tobel::test::example_path;
using tobel::test::read_bytes;
using tobel::test::ScratchDir;

using tobel::test::RunResult;

RunResult run(const std::string& args)
{
    return tobel::test::run_cli(args);
}

// Colours of a picture, and how much of it is not background white.
struct Looks {
    int width = 0, height = 0;
    std::size_t colours = 0;
    double inked = 0; // fraction of pixels that are not white
};

Looks look_at(const std::string& png)
{
    QImage img(QString::fromStdString(png));
    Looks l;
    if (img.isNull())
        return l;
    l.width = img.width();
    l.height = img.height();
    std::set<QRgb> colours;
    long inked = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) {
            const QRgb c = img.pixel(x, y) & 0xFFFFFF;
            colours.insert(c);
            if (c != 0xFFFFFF)
                ++inked;
        }
    l.colours = colours.size();
    l.inked = double(inked) / (double(l.width) * l.height);
    return l;
}

// A picture that shows something: several colours and some ink, not a
// page of one colour.
void expect_drawn(const std::string& png, int w, int h, const std::string& what)
{
    const Looks l = look_at(png);
    EXPECT_EQ(l.width, w) << what;
    EXPECT_EQ(l.height, h) << what;
    EXPECT_GE(l.colours, 3u) << what;
    EXPECT_GT(l.inked, 0.002) << what;
    EXPECT_LT(l.inked, 0.995) << what;
}

struct Example {
    const char* file;
    bool three_d;
};

const Example examples[] = {
    {"slope2d-acads-1a.tob", false},      {"slope2d-crack-water.tob", false},
    {"slope2d-general.tob", false},       {"slope2d-homogeneous.tob", false},
    {"slope2d-taylor-phi0.tob", false},   {"slope2d-wedge-joint.tob", false},
    {"slope3d-composite-seam.tob", true}, {"slope3d-layers-piezo-force.tob", true},
};

// The surface each example keeps for its single trial.
std::string surface_of(const std::string& file)
{
    if (file == "slope2d-general.tob")
        return " --surface general";
    if (file == "slope2d-wedge-joint.tob")
        return " --surface wedge";
    if (file == "slope3d-composite-seam.tob")
        return " --surface composite";
    return "";
}

// One test per example, so that the examples are drawn side by side.
class every_view : public testing::TestWithParam<Example> {};

TEST_P(every_view, of_the_example_is_drawn_to_png)
{
    const Example& e = GetParam();
    ScratchDir dir;
    std::vector<std::string> views = {"assembly",        "longitudinal", "plan",
                                      "result-isometry", "isometry",     "xray"};
    if (e.three_d)
        views.push_back("lateral");
    for (const auto& v : views) {
        const std::string out = dir.file(std::string(e.file) + "-" + v + ".png");
        const RunResult r = run("draw " + example_path(e.file) + surface_of(e.file) + " --view " + v +
                                " --size 640x480 --out " + out);
        const std::string what = std::string(e.file) + " " + v + ": " + r.out;
        EXPECT_TRUE(r.status == 0 || r.status == 2) << what;
        ASSERT_TRUE(fs::exists(out)) << what;
        expect_drawn(out, 640, 480, what);
    }
}

INSTANTIATE_TEST_SUITE_P(draw, every_view, testing::ValuesIn(examples),
                         [](const testing::TestParamInfo<Example>& param_info) {
                             std::string name = param_info.param.file;
                             for (char& c : name)
                                 if (!std::isalnum(static_cast<unsigned char>(c)))
                                     c = '_';
                             return name;
                         });

TEST(draw, svg_is_xml_of_the_size_asked_with_drawing_in_it)
{
    ScratchDir dir;
    const std::string out = dir.file("section.svg");
    const RunResult r = run("draw " + example_path("slope3d-layers-piezo-force.tob") +
                            " --view longitudinal --row 3 --size 900x500 --out " + out);
    ASSERT_EQ(r.status, 0) << r.out;
    const std::string svg = read_bytes(out);
    EXPECT_NE(svg.find("<svg"), std::string::npos);
    EXPECT_NE(svg.find("900"), std::string::npos);
    EXPECT_NE(svg.find("500"), std::string::npos);
    EXPECT_NE(svg.find("<path"), std::string::npos);
    EXPECT_NE(svg.find("</svg>"), std::string::npos);
}

TEST(draw, pdf_reads_back_through_pdftoppm_as_a_drawn_page)
{
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftoppm is not installed";
    ScratchDir dir;
    for (const char* v : {"isometry", "plan", "xray"}) {
        const std::string out = dir.file(std::string(v) + ".pdf");
        const RunResult r =
            run("draw " + example_path("slope3d-layers-piezo-force.tob") + " --view " + v + " --out " + out);
        ASSERT_TRUE(r.status == 0 || r.status == 2) << r.out;
        EXPECT_EQ(read_bytes(out).substr(0, 5), "%PDF-");
        const std::string base = dir.file(std::string(v) + "-page");
        ASSERT_EQ(std::system(("pdftoppm -png -r 40 -singlefile " + out + " " + base).c_str()), 0);
        const Looks l = look_at(base + ".png");
        EXPECT_GE(l.colours, 3u) << v;
        EXPECT_GT(l.inked, 0.002) << v;
    }
}

TEST(draw, grid_and_auto_search_pictures_are_drawn)
{
    ScratchDir dir;
    for (const char* kind : {"--grid", "--auto"}) {
        const std::string out = dir.file(std::string("search") + kind + ".png");
        const RunResult r = run("draw " + example_path("slope2d-homogeneous.tob") + " --view search " + kind +
                                " --out " + out);
        EXPECT_TRUE(r.status == 0 || r.status == 2) << r.out;
        expect_drawn(out, 800, 600, kind);
    }
}

TEST(draw, solve_and_search_write_their_plots)
{
    ScratchDir dir;
    const std::string plan = dir.file("plan.png"), search = dir.file("search.png");
    RunResult r = run("solve " + example_path("slope3d-layers-piezo-force.tob") + " --plot " + plan);
    EXPECT_EQ(r.status, 0) << r.out;
    expect_drawn(plan, 800, 600, "solve --plot");
    r = run("search " + example_path("slope2d-homogeneous.tob") + " --grid --plot " + search +
            " --size 700x500");
    EXPECT_TRUE(r.status == 0 || r.status == 2) << r.out;
    expect_drawn(search, 700, 500, "search --plot");
}

// Each bad request says what was wrong, exits with 1 and writes nothing.
TEST(draw, bad_requests_name_what_is_wrong_and_leave_no_file)
{
    ScratchDir dir;
    const std::string file = example_path("slope3d-layers-piezo-force.tob");
    struct Case {
        std::string args, out, says;
    };
    const std::vector<Case> cases = {
        {"--view sideways", dir.file("a.png"), "unknown view 'sideways'"},
        {"--view longitudinal --row 999", dir.file("b.png"), "row 999 lies off the mesh"},
        {"--view lateral --col 0", dir.file("c.png"), "column 0 lies off the mesh"},
        {"--view lateral --y -500", dir.file("d.png"), "lies off the mesh"},
        {"--view isometry", dir.file("e.gif"), "must end in .png, .svg or .pdf"},
        {"--view isometry", dir.file("no-such-folder/f.png"), "does not exist"},
        {"--view isometry --size 0x600", dir.file("g.png"), "--size takes WxH"},
        {"--view isometry --size 800", dir.file("h.png"), "--size takes WxH"},
        {"--view isometry --surface 99", dir.file("i.png"), "is not a surface of the stack"},
    };
    for (const auto& c : cases) {
        const RunResult r = run("draw " + file + " " + c.args + " --out " + c.out);
        EXPECT_EQ(r.status, 1) << c.args << ": " << r.out;
        if (!c.says.empty()) {
            EXPECT_NE(r.out.find(c.says), std::string::npos) << c.args << ": " << r.out;
        }
        EXPECT_FALSE(fs::exists(c.out)) << c.args;
    }
    EXPECT_TRUE(fs::is_empty(dir.path));
}

TEST(draw, an_unwritable_folder_is_refused_before_any_work)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into any folder";
    ScratchDir dir;
    fs::create_directory(dir.path / "ro");
    fs::permissions(dir.path / "ro", fs::perms::owner_read | fs::perms::owner_exec);
    const std::string out = (dir.path / "ro" / "x.png").string();
    const RunResult r = run("draw " + example_path("slope2d-homogeneous.tob") + " --view plan --out " + out);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("cannot be written"), std::string::npos) << r.out;
    EXPECT_FALSE(fs::exists(out));
    fs::permissions(dir.path / "ro", fs::perms::owner_all);
}

} // namespace
