// The JSON form of the data file: round trips of every data file in the tree,
// the refusals of bad documents, the last line's word, a document written by
// hand, and the documents against docs/project.schema.json.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/runtime_error.h"
#include "project_json.h"
#include "support/paths.h"

using namespace tobel;
using json = nlohmann::ordered_json;
namespace fs = std::filesystem;

namespace {

std::string source(const std::string& rel)
{
    return std::string(TOBEL_SOURCE_DIR) + "/" + rel;
}

// Every data file kept in the source tree: examples, docs, tests and fuzz seeds.
std::vector<std::string> data_files_in_tree()
{
    std::vector<std::string> files;
    for (const char* dir : {"examples", "docs", "tests", "fuzz"}) {
        if (!fs::exists(source(dir)))
            continue;
        for (const auto& e : fs::recursive_directory_iterator(source(dir))) {
            std::string ext = e.path().extension().string();
            std::transform(ext.begin(), ext.end(), ext.begin(),
                           [](unsigned char c) { return char(std::tolower(c)); });
            if (e.is_regular_file() && ext == ".tob")
                files.push_back(e.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// What the program's own Save writes after Open: read every item, write. Empty
// when the reader refuses the file.
std::string saved_text(const std::string& path)
{
    auto p = std::make_unique<Project>();
    reset_project(*p);
    try {
        InputReader in(path);
        read_data_items(*p, in);
    } catch (const RuntimeError&) {
        return "";
    }
    return data_file_text(*p);
}

bool ends_with(const std::string& s, const std::string& tail)
{
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

json tiny_document()
{
    return json::parse(test::read_bytes(source("docs/examples/tiny-2d.json")));
}

// The message of the runtime_error a bad document raises, or "" when none.
std::string refusal(const json& doc)
{
    try {
        (void)cli::json_to_data_file_text(doc);
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "";
}

#define EXPECT_REFUSED(doc, text)                                                                            \
    do {                                                                                                     \
        const std::string msg_ = refusal(doc);                                                               \
        EXPECT_EQ(msg_.rfind(text, 0), 0u) << "message: " << msg_;                                           \
    } while (0)

} // namespace

// ---- Numbers

TEST(project_json, json_float_is_the_shortest_text_of_the_single)
{
    EXPECT_EQ(cli::json_float(0.1f), 0.1);
    EXPECT_EQ(cli::json_float(1.5f), 1.5);
    EXPECT_EQ(cli::json_float(9.81f), 9.81);
    EXPECT_EQ(cli::json_float(-0.25f), -0.25);
    EXPECT_EQ(cli::json_float(20.0f), 20.0);
    // 1/3 as a single is 0.3333333432674...; 0.3333333 (7 digits) is another
    // single 2^-25 away, 0.33333334 (8 digits) is the same one.
    EXPECT_EQ(cli::json_float(1.0f / 3.0f), 0.33333334);
    // 16777217 has no single: it is stored as 2^24.
    EXPECT_EQ(cli::json_float(float(16777217.0)), 16777216.0);
    // The largest single, 3.40282346639e38, is 3.4028235e38 in 8 digits.
    EXPECT_EQ(cli::json_float(FLT_MAX), 3.4028235e38);
    EXPECT_EQ(cli::json_float(1e-5f), 1e-5);
}

// ---- Round trips

TEST(project_json, every_data_file_in_the_tree_comes_back_byte_for_byte)
{
    test::ScratchDir dir;
    int converted = 0;
    for (const std::string& path : data_files_in_tree()) {
        SCOPED_TRACE(path);
        std::string expected = saved_text(path);
        if (expected.empty()) {
            std::cout << "[ skipped  ] refused by the reader: " << path << "\n";
            continue;
        }
        const std::string bytes = test::read_bytes(path);
        // Save always writes True (Open leaves eq_coef 0); the converter keeps
        // the word the file holds.
        if (ends_with(bytes, "\r\nFalse\r\n"))
            expected = expected.substr(0, expected.size() - 6) + "False\r\n";
        if (bytes != expected)
            std::cout << "[ note     ] not as Save writes it: " << path << "\n";

        const json doc = cli::data_file_to_json(path);
        EXPECT_EQ(cli::json_to_data_file_text(doc), expected);
        // Through the text of the document and a file on disk.
        const json again = json::parse(cli::project_json_text(doc));
        EXPECT_EQ(again, doc);
        const std::string out = dir.file("out.tob");
        cli::json_to_data_file(again, out);
        EXPECT_EQ(test::read_bytes(out), expected);
        EXPECT_EQ(cli::data_file_to_json(out), doc);
        ++converted;
    }
    // Six examples, the manual's example and the fuzz seeds at least.
    EXPECT_GE(converted, 7);
}

TEST(project_json, shipped_examples_are_as_save_writes_them)
{
    for (const std::string& path : data_files_in_tree()) {
        if (path.find("/examples/") == std::string::npos)
            continue;
        SCOPED_TRACE(path);
        const json doc = cli::data_file_to_json(path);
        EXPECT_EQ(cli::json_to_data_file_text(doc), test::read_bytes(path));
    }
}

TEST(project_json, manual_example_is_its_document)
{
    const std::string tob = source("docs/examples/tiny-2d.tob");
    const std::string bytes = test::read_bytes(tob);
    EXPECT_EQ(bytes.find('\n'), bytes.find("\r\n") + 1) << "CR LF line ends";
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 27);
    const json doc = cli::data_file_to_json(tob);
    EXPECT_EQ(doc, tiny_document());
    EXPECT_EQ(cli::project_json_text(doc), test::read_bytes(source("docs/examples/tiny-2d.json")));
    EXPECT_EQ(cli::json_to_data_file_text(tiny_document()), bytes);

    // What the manual says the file holds.
    EXPECT_EQ(doc["materials"][0]["mat_name"], "Silty clay");
    EXPECT_EQ(doc["materials"][0]["mat_piezo"], 0.2);
    EXPECT_EQ(doc["mesh"]["num_cols"], 81);
    EXPECT_EQ(doc["sections"][0]["points"][0].size(), 4u);
    EXPECT_EQ(doc["sections"][0]["points"][0][2], json::array({30, 20}));
    EXPECT_EQ(doc["single_ellipsoid"]["radius_in"], 25);
}

// ---- A document written by hand

namespace {

const char* hand_document = R"json({
  "format": "TOBEL-3 project", "version": 1,
  "titles": {"project_title": "Hand-made 3-D slope", "dataset_title": "Caf\u00e9 cut, two sections",
             "input_by": "Tester"},
  "unit_weight_water": 62.4, "num_layers": 1, "num_piezos": 1, "num_discs": 1,
  "mesh": {"y_min": 0, "y_max": 50, "x_min": -10, "x_max": 10, "num_cols": 26, "num_rows": 11},
  "interpolation": {"interp_method": 2, "axis_y": 0.5, "axis_z": -0.25},
  "materials": [
    {"mat_name": "Clay, stiff", "mat_unit_weight": 19.5, "mat_type": 1, "mat_cohesion": 12,
     "mat_cohesion_v": 12, "mat_phi": 28, "mat_phi_v": 28, "mat_coef_a": 0, "mat_coef_b": 0,
     "mat_uniaxial": 0, "mat_coef_d": 0, "mat_piezo": -1, "mat_bbar": 0},
    {"mat_name": "Joint", "mat_unit_weight": 0, "mat_type": 1.0, "mat_cohesion": 0, "mat_cohesion_v": 0,
     "mat_phi": 15, "mat_phi_v": 15, "mat_coef_a": 0, "mat_coef_b": 0, "mat_uniaxial": 0,
     "mat_coef_d": 0, "mat_piezo": 0.25, "mat_bbar": 0.1}],
  "surfaces": [
    {"surf_method": 0, "surf_depth": 0, "surf_grd_file": "*.GRD"},
    {"surf_method": 2, "surf_depth": 1.5, "surf_grd_file": "*.GRD"},
    {"surf_method": 1, "surf_depth": 0, "surf_grd_file": "SLIP.GRD"}],
  "sections": [
    {"section_x": -10, "points": [[[0, 10], [50, 30]], [], []]},
    {"section_x": 10, "points": [[[0, 10], [25, 12.5], [50, 30]], [], []]}],
  "base_z": -5,
  "single_ellipsoid": {"search_x": 0, "single_y": 12.5, "single_z": 40, "tangent_z": 5, "aspect_in": 1,
                       "radius_in": 35},
  "grid_search": {"grid_y_ul": 10, "grid_z_ul": 40, "grid_y_lr": 20, "grid_z_lr": 30, "grid_tan_spacing": 0.5,
                  "grid_n_y": 6, "grid_n_z": 5, "common_y": 1e7, "common_z": -0.000012},
  "auto_search": {"auto_y": 15, "auto_z": 38, "auto_spacing": 2, "auto_tan_spacing": 1},
  "wedges": [{"wedge_x": 0, "wedge_y": 20, "wedge_z": 10, "wedge_code": 1, "wedge_dip": 18, "wedge_dipdir": -90}],
  "forces": [{"force_h": 50, "force_v": 12345678, "force_x": 0, "force_y": 45, "force_z": 30}],
  "crack": {"crack_mode": 1, "crack_y": 44, "crack_depth": 0, "crack_water_pct": 50},
  "eq_coef_is_zero": false
})json";

std::string blanks(int n)
{
    return std::string(std::size_t(n), ' ');
}

// The file of hand_document, worked out item by item: a number x is " x " or
// "-x ", a single in at most 7 digits without a zero before the point, and
// the next item starts at the next of columns 15, 29, 43, ... beyond the
// position reached.
std::string hand_document_file()
{
    const std::string z7 = blanks(7), z8 = blanks(8), z9 = blanks(9), z10 = blanks(10), z11 = blanks(11);
    std::string f;
    auto line = [&](const std::string& s) { f += s + "\r\n"; };
    line("Hand-made 3-D slope");
    line("Caf\xE9 cut, two sections"); // é is the single byte E9
    line("Tester");
    line(" 62.4 " + z8 + " 1 " + z11 + " 1 " + z11 + " 1 ");
    line(" 0 " + z11 + " 50 " + z10 + "-10 " + z10 + " 10 "); // Y before X
    line(" 26 " + z10 + " 11 " + z10 + " 2 ");                // columns, rows, sections
    line(" 2 " + z11 + " .5 " + z10 + "-.25 ");
    line("Clay, stiff");
    line(" 19.5 " + z8 + " 1 " + z11 + " 12 " + z10 + " 12 " + z10 + " 28 " + z10 + " 28 ");
    line(" 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " 0 " + z11 + "-1 " + z11 + " 0 " + z11 + "-1 " + z11 +
         " 0 ");
    line("Joint");
    line(" 0 " + z11 + " 1 " + z11 + " 0 " + z11 + " 0 " + z11 + " 15 " + z10 + " 15 ");
    line(" 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " 0 " + z11 + " .25 " + z9 + " .1 " + z10 + " .25 " + z9 +
         " .1 ");
    line(" 0 " + z11 + " 0 " + z11 + "*.GRD");
    line(" 2 " + z11 + " 1.5 " + z9 + "*.GRD");
    line(" 1 " + z11 + " 0 " + z11 + "SLIP.GRD");
    line("-10 ");
    line(" 2 ");
    line(" 0 " + z11 + " 10 ");
    line(" 50 " + z10 + " 30 ");
    line(" 0 ");
    line(" 0 ");
    line(" 10 ");
    line(" 3 ");
    line(" 0 " + z11 + " 10 ");
    line(" 25 " + z10 + " 12.5 ");
    line(" 50 " + z10 + " 30 ");
    line(" 0 ");
    line(" 0 ");
    line("-5 ");
    line(" 0 " + z11 + " 12.5 " + z8 + " 40 " + z10 + " 5 " + z11 + " 1 " + z11 + " 35 ");
    line(" 10 " + z10 + " 40 " + z10 + " 20 " + z10 + " 30 " + z10 + " .5 " + z10 + " 6 " + z11 + " 5 " +
         z11 + " 1E+07 " + z7 + "-1.2E-05 ");
    line(" 15 " + z10 + " 38 " + z10 + " 2 " + z11 + " 1 ");
    line(" 1 ");
    line(" 0 " + z11 + " 20 " + z10 + " 10 " + z10 + " 1 " + z11 + " 18 " + z10 + "-90 ");
    line(" 1 ");
    // " 1.234568E+07 " fills its zone to column 28 exactly: the next zone
    // beyond column 29 is 43, a whole zone of blanks further.
    line(" 50 " + z10 + " 1.234568E+07 " + blanks(14) + " 0 " + z11 + " 45 " + z10 + " 30 ");
    line(" 1 " + z11 + " 44 " + z10 + " 0 " + z11 + " 50 ");
    line("False");
    return f;
}

} // namespace

TEST(project_json, hand_written_document_gives_the_lines_worked_out_by_hand)
{
    const json doc = json::parse(hand_document);
    EXPECT_EQ(cli::json_to_data_file_text(doc), hand_document_file());
}

TEST(project_json, hand_written_document_fills_the_project_as_the_reader_would)
{
    auto p = std::make_unique<Project>();
    EXPECT_FALSE(cli::json_to_project(json::parse(hand_document), *p));
    EXPECT_EQ(p->num_surfaces, 2);
    EXPECT_EQ(p->sliding_index, 3);
    EXPECT_EQ(p->num_mat_entries, 2);
    EXPECT_EQ(p->num_sections, 2);
    EXPECT_EQ(p->num_wedges, 1);
    EXPECT_EQ(p->num_forces, 1);
    EXPECT_EQ(p->sections.n(2, 1), 3);
    EXPECT_EQ(p->sections.n(2, 3), 0);
    EXPECT_EQ(p->sections.z(2, 2, 1), 12.5f);
    EXPECT_EQ(p->mat_piezo[1], -1.0f);
    EXPECT_EQ(p->mat_type[2], 1);
    EXPECT_EQ(p->dataset_title, "Caf\xE9 cut, two sections");
    // (10 - -10) / (11 - 1) and (50 - 0) / (26 - 1)
    EXPECT_EQ(p->row_spacing, 2.0f);
    EXPECT_EQ(p->col_spacing, 2.0f);
    EXPECT_EQ(p->zgrid.rows, 11);
    EXPECT_EQ(p->zgrid.cols, 26);
    // The file keeps no earthquake coefficient: 0 whatever the word.
    EXPECT_EQ(p->eq_coef, 0.0f);
}

TEST(project_json, accents_are_latin1_bytes_in_the_file_and_utf8_in_the_document)
{
    test::ScratchDir dir;
    json doc = tiny_document();
    doc["titles"]["input_by"] = "J\u00f6rg \u00c5se";
    doc["materials"][0]["mat_name"] = "Argile \u00e0 silex";
    const std::string path = dir.file("accents.tob");
    cli::json_to_data_file(doc, path);
    const std::string bytes = test::read_bytes(path);
    EXPECT_NE(bytes.find("\r\nJ\xF6rg \xC5se\r\n"), std::string::npos);
    EXPECT_NE(bytes.find("\r\nArgile \xE0 silex\r\n"), std::string::npos);
    EXPECT_EQ(cli::data_file_to_json(path), doc);
}

// ---- The last line's word

TEST(project_json, line18_false_is_kept_both_ways)
{
    test::ScratchDir dir;
    std::string bytes = test::read_bytes(source("docs/examples/tiny-2d.tob"));
    ASSERT_TRUE(ends_with(bytes, "\r\nTrue\r\n"));
    EXPECT_TRUE(cli::data_file_to_json(source("docs/examples/tiny-2d.tob"))["eq_coef_is_zero"].get<bool>());

    bytes = bytes.substr(0, bytes.size() - 6) + "False\r\n";
    test::write_bytes(dir.file("quake.tob"), bytes);
    const json doc = cli::data_file_to_json(dir.file("quake.tob"));
    EXPECT_EQ(doc["eq_coef_is_zero"], false);
    EXPECT_EQ(cli::json_to_data_file_text(doc), bytes);
    auto p = std::make_unique<Project>();
    EXPECT_FALSE(cli::json_to_project(doc, *p));
    EXPECT_EQ(p->eq_coef, 0.0f);
}

TEST(project_json, line18_word_follows_the_document)
{
    json doc = tiny_document();
    doc["eq_coef_is_zero"] = false;
    EXPECT_TRUE(ends_with(cli::json_to_data_file_text(doc), " 0 \r\nFalse\r\n"));
    doc["eq_coef_is_zero"] = true;
    EXPECT_TRUE(ends_with(cli::json_to_data_file_text(doc), " 0 \r\nTrue\r\n"));
    doc["eq_coef_is_zero"] = 0;
    EXPECT_REFUSED(doc, "eq_coef_is_zero: expected true or false, found a number");
}

// A hand-typed number on the last line is read as the coefficient: Save
// would write False for it, and so does the document.
TEST(project_json, line18_number_is_the_word_save_would_write)
{
    test::ScratchDir dir;
    std::string bytes = test::read_bytes(source("docs/examples/tiny-2d.tob"));
    test::write_bytes(dir.file("n.tob"), bytes.substr(0, bytes.size() - 6) + "0.15\r\n");
    EXPECT_EQ(cli::data_file_to_json(dir.file("n.tob"))["eq_coef_is_zero"], false);
    test::write_bytes(dir.file("z.tob"), bytes.substr(0, bytes.size() - 6) + "0\r\n");
    EXPECT_EQ(cli::data_file_to_json(dir.file("z.tob"))["eq_coef_is_zero"], true);
}

// ---- Bad documents

TEST(project_json, missing_field_is_named_with_its_path)
{
    json doc = tiny_document();
    doc["materials"][0].erase("mat_phi");
    EXPECT_REFUSED(doc, "materials[0].mat_phi: missing; expected a number");
    doc = tiny_document();
    doc.erase("crack");
    EXPECT_REFUSED(doc, "crack: missing; expected an object");
    doc = tiny_document();
    doc["mesh"].erase("num_rows");
    EXPECT_REFUSED(doc, "mesh.num_rows: missing; expected an integer");
}

TEST(project_json, wrong_type_is_named_with_its_path)
{
    json doc = tiny_document();
    doc["materials"][0]["mat_phi"] = "25";
    EXPECT_REFUSED(doc, "materials[0].mat_phi: expected a number, found a text");
    doc = tiny_document();
    doc["mesh"] = 5;
    EXPECT_REFUSED(doc, "mesh: expected an object, found a number");
    doc = tiny_document();
    doc["materials"][0]["mat_type"] = 2.5;
    EXPECT_REFUSED(doc, "materials[0].mat_type: expected an integer from -32768 to 32767, found 2.5");
    doc = tiny_document();
    doc["sections"][0]["points"][0][1] = json::array({10});
    EXPECT_REFUSED(doc, "sections[0].points[0][1]: expected a point [y, z], found an array");
    doc = tiny_document();
    doc["sections"][0]["points"][0][1][1] = nullptr;
    EXPECT_REFUSED(doc, "sections[0].points[0][1][1]: expected a number, found null");
    doc = tiny_document();
    doc["titles"]["input_by"] = 7;
    EXPECT_REFUSED(doc, "titles.input_by: expected a text, found a number");
    EXPECT_REFUSED(json::array(), "document: expected an object, found an array");
}

TEST(project_json, counts_beyond_the_tables_are_refused)
{
    json doc = tiny_document();
    doc["num_layers"] = 52;
    EXPECT_REFUSED(doc, "num_layers: expected an integer from 0 to 51, found 52");
    doc = tiny_document();
    doc["num_piezos"] = 50;
    EXPECT_REFUSED(doc, "num_piezos: expected num_layers + num_piezos at most 50, found 51");
    doc = tiny_document();
    doc["num_discs"] = 100;
    EXPECT_REFUSED(doc, "num_discs: expected num_layers + num_discs at most 100, found 101");
    doc = tiny_document();
    doc["mesh"]["num_cols"] = 3001;
    EXPECT_REFUSED(doc, "mesh.num_cols: expected an integer from 2 to 3000, found 3001");
    doc["mesh"]["num_cols"] = 1; // the reader fails on it by division by zero
    EXPECT_REFUSED(doc, "mesh.num_cols: expected an integer from 2 to 3000, found 1");

    doc = tiny_document();
    for (int w = 0; w < 101; ++w)
        doc["wedges"].push_back(json({{"wedge_x", 0},
                                      {"wedge_y", 0},
                                      {"wedge_z", 0},
                                      {"wedge_code", 0},
                                      {"wedge_dip", 0},
                                      {"wedge_dipdir", 0}}));
    EXPECT_REFUSED(doc, "wedges: expected at most 100 entries, found 101");
    doc["wedges"].erase(0);
    EXPECT_EQ(refusal(doc), "");

    doc = tiny_document();
    for (int f = 0; f < 101; ++f)
        doc["forces"].push_back(
            json({{"force_h", 0}, {"force_v", 0}, {"force_x", 0}, {"force_y", 0}, {"force_z", 0}}));
    EXPECT_REFUSED(doc, "forces: expected at most 100 entries, found 101");

    doc = tiny_document();
    for (int s = 0; s < 26; ++s)
        doc["sections"].push_back(doc["sections"][0]);
    EXPECT_REFUSED(doc, "sections: expected at most 26 entries, found 27");

    doc = tiny_document();
    json& line = doc["sections"][0]["points"][1];
    for (int n = 0; n < 302; ++n)
        line.push_back(json::array({n, 0}));
    EXPECT_REFUSED(doc, "sections[0].points[1]: expected at most 301 entries, found 302");
    line.erase(0);
    EXPECT_EQ(refusal(doc), "");
}

TEST(project_json, array_lengths_must_match_the_counts)
{
    json doc = tiny_document();
    doc["num_discs"] = 1;
    EXPECT_REFUSED(doc, "materials: expected 2 entries (num_layers + num_discs), found 1");
    doc["materials"].push_back(doc["materials"][0]);
    EXPECT_EQ(refusal(doc), "");

    doc = tiny_document();
    doc["num_piezos"] = 1;
    doc["materials"][0]["mat_piezo"] = -1;
    EXPECT_REFUSED(doc, "surfaces: expected 3 entries (num_layers + num_piezos + 1");
    doc["surfaces"].push_back(doc["surfaces"][1]);
    EXPECT_REFUSED(doc, "sections[0].points: expected 3 entries (one line per surface");
    doc["sections"][0]["points"].push_back(json::array());
    EXPECT_EQ(refusal(doc), "");
}

TEST(project_json, numbers_beyond_their_storage_are_refused)
{
    json doc = tiny_document();
    doc["materials"][0]["mat_unit_weight"] = 1e39;
    EXPECT_REFUSED(doc, "materials[0].mat_unit_weight: expected a number within the single range");
    doc["materials"][0]["mat_unit_weight"] = -3.5e38;
    EXPECT_REFUSED(doc, "materials[0].mat_unit_weight: expected a number within the single range");
    // The largest single's 8-digit text is a little above it and rounds to it.
    doc["materials"][0]["mat_unit_weight"] = 3.4028235e38;
    auto p = std::make_unique<Project>();
    cli::json_to_project(doc, *p);
    EXPECT_EQ(p->mat_unit_weight[1], FLT_MAX);

    doc = tiny_document();
    doc["crack"]["crack_mode"] = 32768;
    EXPECT_REFUSED(doc, "crack.crack_mode: expected an integer from -32768 to 32767, found 32768");
    doc["crack"]["crack_mode"] = -32768;
    EXPECT_EQ(refusal(doc), "");
}

TEST(project_json, texts_the_file_cannot_hold_are_refused)
{
    json doc = tiny_document();
    doc["titles"]["project_title"] = "two\r\nlines";
    EXPECT_REFUSED(doc, "titles.project_title: expected a text of one line");
    doc = tiny_document();
    doc["materials"][0]["mat_name"] = "\u03a9 clay";
    EXPECT_REFUSED(doc, "materials[0].mat_name: expected characters up to U+00FF");
    doc = tiny_document();
    doc["surfaces"][0]["surf_grd_file"] = "A,B.GRD";
    EXPECT_REFUSED(doc, "surfaces[0].surf_grd_file: expected a file name without a comma");
    doc["surfaces"][0]["surf_grd_file"] = " A.GRD";
    EXPECT_REFUSED(doc, "surfaces[0].surf_grd_file: expected a file name without leading or trailing blanks");
    // A name with commas is a whole line in the file: no trouble there.
    doc = tiny_document();
    doc["materials"][0]["mat_name"] = "Clay, soft, \"grey\"";
    EXPECT_EQ(refusal(doc), "");
}

TEST(project_json, unknown_fields_and_other_formats_are_refused)
{
    json doc = tiny_document();
    doc["materials"][0]["mat_phy"] = 25;
    EXPECT_REFUSED(doc, "materials[0].mat_phy: unknown field");
    doc = tiny_document();
    doc["num_sections"] = 1;
    EXPECT_REFUSED(doc, "num_sections: unknown field");
    doc = tiny_document();
    doc["format"] = "TOBEL-2 project";
    EXPECT_REFUSED(doc, "format: expected \"TOBEL-3 project\"");
    doc = tiny_document();
    doc["version"] = 2;
    EXPECT_REFUSED(doc, "version: expected 1");
    doc = tiny_document();
    doc["$schema"] = "../project.schema.json";
    EXPECT_EQ(refusal(doc), "");
}

TEST(project_json, bad_document_writes_nothing)
{
    test::ScratchDir dir;
    json doc = tiny_document();
    doc["sections"][0]["points"][0][3][1] = "20";
    const std::string old_file = dir.file("old.tob");
    test::write_bytes(old_file, "old contents");
    EXPECT_THROW(cli::json_to_data_file(doc, old_file), std::runtime_error);
    EXPECT_EQ(test::read_bytes(old_file), "old contents");
    EXPECT_THROW(cli::json_to_data_file(doc, dir.file("new.tob")), std::runtime_error);
    EXPECT_FALSE(fs::exists(dir.file("new.tob")));
    EXPECT_FALSE(fs::exists(dir.file("new.tob.tmp")));
    EXPECT_FALSE(fs::exists(old_file + ".tmp"));
}

TEST(project_json, file_the_reader_refuses_is_not_converted)
{
    test::ScratchDir dir;
    std::string bytes = test::read_bytes(source("docs/examples/tiny-2d.tob"));
    test::write_bytes(dir.file("short.tob"), bytes.substr(0, bytes.size() / 2));
    EXPECT_THROW(cli::data_file_to_json(dir.file("short.tob")), RuntimeError);
    EXPECT_THROW(cli::data_file_to_json(dir.file("missing.tob")), RuntimeError);
}

// ---- The schema

namespace {

// A small check of a document against the schema: type, const, ranges,
// required, properties with additionalProperties false, items, and $ref into
// $defs. Returns the findings.
struct SchemaCheck {
    const json& root;
    std::vector<std::string> findings;

    void fail(const std::string& path, const std::string& what) { findings.push_back(path + ": " + what); }

    static bool has_type(const json& v, const std::string& t)
    {
        if (t == "object")
            return v.is_object();
        if (t == "array")
            return v.is_array();
        if (t == "string")
            return v.is_string();
        if (t == "boolean")
            return v.is_boolean();
        if (t == "number")
            return v.is_number();
        if (t == "integer")
            return v.is_number_integer() ||
                   (v.is_number_float() && std::floor(v.get<double>()) == v.get<double>());
        return false;
    }

    void check(const json& v, const json& s, const std::string& path)
    {
        if (s.contains("$ref")) {
            const std::string ref = s["$ref"].get<std::string>();
            ASSERT_EQ(ref.rfind("#/$defs/", 0), 0u) << ref;
            check(v, root["$defs"][ref.substr(8)], path);
        }
        if (s.contains("const") && v != s["const"])
            fail(path, "not " + s["const"].dump());
        if (s.contains("type") && !has_type(v, s["type"].get<std::string>()))
            return fail(path, "not of type " + s["type"].get<std::string>());
        if (v.is_number() && s.contains("minimum") && v.get<double>() < s["minimum"].get<double>())
            fail(path, "below the minimum");
        if (v.is_number() && s.contains("maximum") && v.get<double>() > s["maximum"].get<double>())
            fail(path, "above the maximum");
        if (v.is_object()) {
            for (const auto& r : s.value("required", json::array()))
                if (!v.contains(r.get<std::string>()))
                    fail(path, "lacks " + r.get<std::string>());
            const json props = s.value("properties", json::object());
            for (auto it = v.begin(); it != v.end(); ++it) {
                if (props.contains(it.key()))
                    check(it.value(), props[it.key()], path + "." + it.key());
                else if (s.value("additionalProperties", true) == false)
                    fail(path + "." + it.key(), "not in the schema");
            }
        }
        if (v.is_array()) {
            if (s.contains("minItems") && v.size() < s["minItems"].get<std::size_t>())
                fail(path, "too few items");
            if (s.contains("maxItems") && v.size() > s["maxItems"].get<std::size_t>())
                fail(path, "too many items");
            if (s.contains("items"))
                for (std::size_t i = 0; i < v.size(); ++i)
                    check(v[i], s["items"], path + "[" + std::to_string(i) + "]");
        }
    }
};

json schema()
{
    return json::parse(test::read_bytes(source("docs/project.schema.json")));
}

std::vector<std::string> schema_findings(const json& doc)
{
    const json s = schema();
    SchemaCheck c{s, {}};
    c.check(doc, s, "document");
    return c.findings;
}

// Every object of the schema: its properties all described and all required.
void check_schema_objects(const json& s, const std::string& path)
{
    if (s.is_object() && s.contains("properties")) {
        const json& req = s.value("required", json::array());
        for (auto it = s["properties"].begin(); it != s["properties"].end(); ++it) {
            EXPECT_TRUE(it.value().contains("description"))
                << path << "." << it.key() << " has no description";
            if (it.key() != "$schema") {
                EXPECT_NE(std::find(req.begin(), req.end(), it.key()), req.end())
                    << path << "." << it.key() << " is not required";
            }
        }
    }
    if (s.is_structured())
        for (auto it = s.begin(); it != s.end(); ++it)
            check_schema_objects(it.value(), path + "/" + (s.is_object() ? it.key() : "item"));
}

} // namespace

TEST(project_json, documents_of_the_data_files_fit_the_schema)
{
    int checked = 0;
    for (const std::string& path : data_files_in_tree()) {
        SCOPED_TRACE(path);
        json doc;
        try {
            doc = cli::data_file_to_json(path);
        } catch (const RuntimeError&) {
            continue; // refused by the reader
        }
        const auto findings = schema_findings(doc);
        EXPECT_TRUE(findings.empty()) << findings.front();
        ++checked;
    }
    EXPECT_GE(checked, 7);
    EXPECT_TRUE(schema_findings(json::parse(hand_document)).empty());
}

TEST(project_json, schema_check_finds_what_the_converter_refuses)
{
    json doc = tiny_document();
    doc["materials"][0].erase("mat_phi");
    doc["mesh"]["num_rows"] = "1";
    doc["crack"]["crack_depht"] = 0;
    doc["sections"][0]["points"][0][0] = json::array({0, 10, 5});
    const auto f = schema_findings(doc);
    const auto has = [&](const std::string& s) { return std::find(f.begin(), f.end(), s) != f.end(); };
    EXPECT_TRUE(has("document.materials[0]: lacks mat_phi"));
    EXPECT_TRUE(has("document.mesh.num_rows: not of type integer"));
    EXPECT_TRUE(has("document.crack.crack_depht: not in the schema"));
    EXPECT_TRUE(has("document.sections[0].points[0][0]: too many items"));
    EXPECT_EQ(f.size(), 4u);
}

TEST(project_json, schema_describes_and_requires_every_field)
{
    check_schema_objects(schema(), "#");
    EXPECT_EQ(schema()["$schema"], "https://json-schema.org/draft/2020-12/schema");
}
