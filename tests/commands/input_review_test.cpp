// The review of a data file (`tobel check`): each broken file under
// tests/data/check differs from a shipped example in the items named, and
// each finding must come with the line of the file that holds the item,
// counted by hand in the file.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include <nlohmann/json.hpp>

#include "check.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/runtime_error.h"
#include "commands/input_review.h"
#include "support/paths.h"

using namespace tobel;

namespace {

std::string broken(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/tests/data/check/" + name;
}

bool has(const Finding& f, int line, const std::string& item, const std::string& text)
{
    return f.line == line && f.item == item && f.text.find(text) != std::string::npos;
}

std::string listing(const Review& r)
{
    std::string s;
    for (const auto& f : r.findings)
        s += std::to_string(f.line) + " " + f.item + ": " + f.text + "\n";
    for (const auto& n : r.notes)
        s += "note: " + n + "\n";
    return s;
}

// The file gives exactly one finding, at this line and item.
void expect_single(const std::string& file, int line, const std::string& item, const std::string& text,
                   bool serious)
{
    const Review r = review_data_file(broken(file));
    EXPECT_TRUE(r.readable) << file;
    ASSERT_EQ(r.findings.size(), 1u) << file << "\n" << listing(r);
    EXPECT_TRUE(has(r.findings[0], line, item, text)) << file << "\n" << listing(r);
    EXPECT_EQ(r.findings[0].serious, serious) << file;
}

} // namespace

// ------------------------------------------------------------ the record

TEST(input_record, is_off_unless_asked)
{
    auto in = InputReader::from_text(" 1 2\r\n");
    in.number("a");
    in.number("b");
    EXPECT_TRUE(in.items().empty());
}

TEST(input_record, keeps_line_text_value_name_and_statement)
{
    auto in = InputReader::from_text("Title\r\n 2O  7.6 \r\nthree,\r\n", "f");
    in.record_items(true);
    in.statement("1");
    EXPECT_EQ(in.line("project_title"), "Title");
    in.statement("4");
    EXPECT_EQ(in.single("unit_weight_water"), 2.0f);
    EXPECT_EQ(in.integer16({"num_layers"}), 8);
    in.statement("5");
    EXPECT_EQ(in.number({"mat_phi", 2}), 0);
    EXPECT_EQ(in.number({"section_y", 1, 3, 2}), 0); // the empty item after the comma
    const auto& items = in.items();
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ(items[0].kind, ReadItem::Kind::line);
    EXPECT_EQ(items[1].line, 2);
    EXPECT_EQ(items[1].text, "2O");
    EXPECT_EQ(items[1].value, 2.0);
    EXPECT_EQ(items[1].statement, "4");
    EXPECT_EQ(items[2].kind, ReadItem::Kind::integer);
    EXPECT_EQ(items[2].value, 8.0); // the rounded value stored, not 7.6
    EXPECT_EQ(items[1].instance, items[2].instance);
    EXPECT_EQ(items[3].name, "mat_phi(2)");
    EXPECT_EQ(items[3].line, 3);
    EXPECT_TRUE(items[3].comma);
    EXPECT_NE(items[3].instance, items[2].instance);
    EXPECT_EQ(items[4].name, "section_y(1, 3, 2)");
    EXPECT_EQ(items[4].text, "");
    EXPECT_TRUE(in.only_blanks_left());
}

TEST(input_record, changes_no_value_and_no_error)
{
    for (const char* name : {"slope3d-layers-piezo-force.tob", "slope2d-wedge-joint.tob"}) {
        Project plain, recorded;
        reset_project(plain);
        reset_project(recorded);
        InputReader a(test::example_path(name)), b(test::example_path(name));
        b.record_items(true);
        read_data_items(plain, a);
        read_data_items(recorded, b);
        EXPECT_EQ(data_file_text(plain), data_file_text(recorded)) << name;
        EXPECT_FALSE(b.items().empty());
    }
    // A short text fails the same way, at the same place, with the record on.
    std::string errors[2];
    for (int on = 0; on < 2; ++on) {
        auto in = InputReader::from_text("T\r\nD\r\nI\r\n 9.81 1 0 0\r\n", "short.TOB");
        in.record_items(on == 1);
        Project p;
        reset_project(p);
        try {
            read_data_items(p, in);
        } catch (const RuntimeError& e) {
            errors[on] = error_report_text(e);
        }
    }
    EXPECT_EQ(errors[0], "Error # 62 occured: Input past end of file (short.TOB, line 5)");
    EXPECT_EQ(errors[0], errors[1]);
}

TEST(input_record, data_file_items_carry_state_names_and_format_lines)
{
    // Line 43 of the 3-D example is the second point of section 2's ground
    // line (surface 2): " 38  15".
    InputReader in(test::example_path("slope3d-layers-piezo-force.tob"));
    in.record_items(true);
    Project p;
    reset_project(p);
    read_data_items(p, in);
    const ReadItem* y = nullptr;
    for (const auto& r : in.items())
        if (r.name == "section_y(2, 2, 2)")
            y = &r;
    ASSERT_NE(y, nullptr);
    EXPECT_EQ(y->line, 43);
    EXPECT_EQ(y->text, "38");
    EXPECT_EQ(y->statement, "10c");
    const auto& first = in.items().front();
    EXPECT_EQ(first.name, "project_title");
    const auto& last = in.items().back();
    EXPECT_EQ(last.name, "eq_coef");
    EXPECT_EQ(last.line, 60);
    EXPECT_EQ(last.text, "True");
}

// ------------------------------------------------------------ the items

TEST(review_items, comma_inside_a_number_and_the_item_it_pushes_on)
{
    auto in = InputReader::from_text(" 1 19,6\r\n 5 \r\n");
    in.record_items(true);
    in.statement("A");
    in.number("a1");
    in.number("a2");
    in.statement("B");
    in.number("b1");
    const auto f = review_items(in.items());
    ASSERT_EQ(f.size(), 2u);
    EXPECT_TRUE(has(f[0], 1, "a2", "'19,6' holds a comma")) << f[0].text;
    EXPECT_TRUE(has(f[1], 1, "b1", "more items than the 2 of line A of the format: '6' is read as b1"))
        << f[1].text;
}

TEST(review_items, truth_word_on_the_last_line_is_not_a_finding)
{
    auto in = InputReader::from_text("True\r\nFalse\r\n0.15\r\n");
    in.record_items(true);
    for (int i = 0; i < 3; ++i) {
        in.statement("18");
        in.single("eq_coef");
    }
    const auto f = review_items(in.items());
    ASSERT_EQ(f.size(), 1u);
    EXPECT_TRUE(has(f[0], 3, "eq_coef", "'0.15' where the word True or False is expected; read as .15"))
        << f[0].text;
}

TEST(review_items, empty_items_and_whole_numbers)
{
    auto in = InputReader::from_text(" 1,,2 \r\n\r\n 2.5 \r\n");
    in.record_items(true);
    in.statement("A");
    in.number("a");
    in.number("b");
    in.number("c");
    in.statement("B");
    in.number("d");
    in.statement("C");
    in.integer16("n");
    const auto f = review_items(in.items());
    ASSERT_EQ(f.size(), 3u);
    EXPECT_TRUE(has(f[0], 1, "b", "an empty item before a comma; read as 0")) << f[0].text;
    EXPECT_TRUE(has(f[1], 2, "d", "an empty line where a number is expected")) << f[1].text;
    EXPECT_TRUE(has(f[2], 3, "n", "'2.5' is not a whole number; read as 2")) << f[2].text;
}

// ------------------------------------------------------------ the files

TEST(review_data_file, every_shipped_example_is_clean)
{
    int files = 0;
    for (const auto& e : std::filesystem::directory_iterator(std::string(TOBEL_SOURCE_DIR) + "/examples")) {
        if (e.path().extension() != ".tob")
            continue;
        ++files;
        const Review r = review_data_file(e.path().string());
        EXPECT_TRUE(r.readable) << e.path();
        EXPECT_TRUE(r.findings.empty()) << e.path() << "\n" << listing(r);
    }
    EXPECT_GE(files, 6);
}

TEST(review_data_file, letter_o_in_a_unit_weight_is_read_as_its_leading_number)
{
    expect_single("unit-weight-letter-o.tob", 9, "mat_unit_weight(1)", "'2O' is not a number; read as 2",
                  true);
}

TEST(review_data_file, word_for_a_cohesion_is_read_as_zero)
{
    expect_single("cohesion-word.tob", 9, "mat_cohesion(1)", "'three' is not a number; read as 0", true);
}

TEST(review_data_file, friction_angle_above_90_degrees)
{
    expect_single("friction-196.tob", 9, "mat_phi(1)", "friction angle 196 degrees is above 90", true);
}

TEST(review_data_file, negative_cohesion_is_the_fatal_check_with_its_property)
{
    const Review r = review_data_file(broken("cohesion-negative.tob"));
    ASSERT_EQ(r.findings.size(), 1u) << listing(r);
    EXPECT_TRUE(has(r.findings[0], 9, "mat_cohesion(1)", "Material # 1: properties incorrect! (cohesion -10"))
        << listing(r);
    EXPECT_TRUE(r.findings[0].serious);
    // The solve would refuse the file, so the ellipsoid is not tried.
    ASSERT_EQ(r.notes.size(), 1u);
    EXPECT_NE(r.notes[0].find("input checks refuse"), std::string::npos);
}

TEST(review_data_file, decimal_comma_splits_a_friction_angle_and_shifts_the_rest)
{
    const Review r = review_data_file(broken("friction-decimal-comma.tob"));
    EXPECT_TRUE(r.readable);
    ASSERT_EQ(r.findings.size(), 2u) << listing(r);
    EXPECT_TRUE(has(r.findings[0], 9, "mat_phi(1)", "read as 19 for mat_phi(1) and 6 for mat_phi_v(1)"))
        << listing(r);
    // The seventh item of line 9 opens line 8c; line 11 holds the last
    // misplaced item (surf_grd_file(1) takes the rest of it).
    EXPECT_TRUE(has(r.findings[1], 9, "mat_coef_a(1)", "more items than the 6 of line 8b")) << listing(r);
    EXPECT_NE(r.findings[1].text.find("out of step down to line 11"), std::string::npos) << listing(r);
}

TEST(review_data_file, short_line_takes_its_last_item_from_the_next)
{
    const Review r = review_data_file(broken("friction-short-line.tob"));
    EXPECT_FALSE(r.readable);
    ASSERT_EQ(r.findings.size(), 2u) << listing(r);
    EXPECT_TRUE(has(r.findings[0], 9, "mat_phi_v(1)", "fewer items than the 6 of line 8b")) << listing(r);
    EXPECT_NE(r.findings[0].text.find("mat_phi_v(1) is read from line 10"), std::string::npos);
    // Every later statement is one item behind: the 34-line file runs out.
    EXPECT_TRUE(has(r.findings[1], 35, "section_npts(2, 2)", "Error # 62 occured: Input past end of file"))
        << listing(r);
}

TEST(review_data_file, section_point_going_back_in_y)
{
    expect_single("section-y-back.tob", 17, "section_y(1, 3, 1)",
                  "Y 25 goes back behind the previous point's 30", true);
}

TEST(review_data_file, section_point_beyond_the_mesh)
{
    expect_single("section-y-beyond.tob", 18, "section_y(1, 4, 1)", "Y 130 lies beyond y_max 100", false);
}

TEST(review_data_file, layer_above_the_ground_in_a_section)
{
    // Layer 1 at (40, 18) against the ground's (40, 15) in section 1.
    expect_single(
        "layers-crossing.tob", 21, "section_z(1, 2, 1)",
        "Layer 1 rises above Ground Surface in section 1: at Y 40 it is at Z 18, Ground Surface at 15",
        false);
}

TEST(review_data_file, section_outside_the_mesh_in_x)
{
    expect_single("section-outside-mesh.tob", 35, "section_x(2)", "section 2 at X 130 lies outside the mesh",
                  false);
}

TEST(review_data_file, two_dimensional_centre_away_from_x_min)
{
    expect_single("centre-2d-off-x-min.tob", 28, "search_x", "the centre X belongs at x_min 0; at 10", true);
}

TEST(review_data_file, slope_with_its_toe_towards_plus_y)
{
    expect_single("slope-mirrored-toe-plus-y.tob", 28, "single_y", "moves towards +Y", true);
}

TEST(review_data_file, ellipsoid_that_misses_the_ground)
{
    expect_single("ellipsoid-misses-ground.tob", 28, "tangent_z", "does not cut the ground", true);
}

TEST(review_data_file, truncated_file_names_the_line_the_reader_stopped_at)
{
    // 25 lines: the file stops after the last point of section 2's ground.
    const Review r = review_data_file(broken("truncated.tob"));
    EXPECT_FALSE(r.readable);
    ASSERT_EQ(r.findings.size(), 1u) << listing(r);
    EXPECT_TRUE(has(r.findings[0], 26, "section_npts(2, 2)", "Error # 62 occured: Input past end of file ("))
        << listing(r);
    EXPECT_NE(r.read_error.find("truncated.tob, line 26"), std::string::npos) << r.read_error;
}

TEST(review_data_file, missing_file_is_not_readable)
{
    const Review r = review_data_file(broken("none.tob"));
    EXPECT_FALSE(r.readable);
    ASSERT_EQ(r.findings.size(), 1u);
    EXPECT_EQ(r.findings[0].line, 0);
    EXPECT_EQ(r.read_error.rfind("Error # 53 occured: File not found", 0), 0u) << r.read_error;
}

// ------------------------------------------------------------ materials

TEST(material_problems, name_the_property_of_each_fatal_finding)
{
    Project p;
    set_defaults(p);
    p.num_layers = 3;
    derive_counts(p);
    // 1: Coulomb, weightless, cohesion negative; two findings.
    p.mat_type[1] = 1;
    p.mat_unit_weight[1] = 0;
    p.mat_cohesion[1] = -5;
    p.mat_phi[1] = 30;
    // 2: anisotropic with only one of each pair.
    p.mat_type[2] = 2;
    p.mat_unit_weight[2] = 20;
    p.mat_cohesion[2] = 10;
    p.mat_phi[2] = 30;
    // 3: sound.
    p.mat_type[3] = 1;
    p.mat_unit_weight[3] = 20;
    p.mat_phi[3] = 30;
    const auto one = material_problems(p, 1);
    ASSERT_EQ(one.size(), 2u);
    EXPECT_EQ(one[0].item, "mat_unit_weight(1)");
    EXPECT_EQ(one[0].text, "unit weight 0 is not above 0");
    EXPECT_EQ(one[1].item, "mat_cohesion(1)");
    EXPECT_EQ(one[1].text, "cohesion -5 below 0");
    const auto two = material_problems(p, 2);
    ASSERT_EQ(two.size(), 1u);
    EXPECT_EQ(two[0].item, "mat_cohesion_v(2)");
    EXPECT_TRUE(material_problems(p, 3).empty());
    EXPECT_EQ(material_property_problem(p, 1),
              "mat_unit_weight(1): unit weight 0 is not above 0; mat_cohesion(1): cohesion -5 below 0");
    EXPECT_EQ(material_property_problem(p, 3), "");
}

// ------------------------------------------------------------ tobel check

TEST(check_file, exit_status_says_clean_findings_or_unreadable)
{
    std::ostringstream clean, found, unreadable, missing;
    EXPECT_EQ(cli::check_file(test::example_path("slope2d-homogeneous.tob"), false, clean), 0);
    EXPECT_NE(clean.str().find("nothing to question"), std::string::npos) << clean.str();
    const std::string file = broken("unit-weight-letter-o.tob");
    EXPECT_EQ(cli::check_file(file, false, found), 3);
    EXPECT_EQ(found.str().rfind(file + ":9: mat_unit_weight(1): '2O' is not a number; read as 2\n", 0), 0u)
        << found.str();
    EXPECT_NE(found.str().find("1 finding, 1 serious"), std::string::npos) << found.str();
    EXPECT_EQ(cli::check_file(broken("truncated.tob"), false, unreadable), 1);
    EXPECT_NE(unreadable.str().find(":26: section_npts(2, 2): Error # 62"), std::string::npos)
        << unreadable.str();
    EXPECT_EQ(cli::check_file(broken("none.tob"), false, missing), 1);
    EXPECT_NE(missing.str().find("Error # 53 occured: File not found"), std::string::npos) << missing.str();
}

TEST(check_file, json_is_an_array_of_findings)
{
    std::ostringstream out, clean;
    const std::string file = broken("friction-196.tob");
    EXPECT_EQ(cli::check_file(file, true, out), 3);
    const auto j = nlohmann::json::parse(out.str());
    ASSERT_TRUE(j.is_array());
    ASSERT_EQ(j.size(), 1u);
    EXPECT_EQ(j[0]["file"], file);
    EXPECT_EQ(j[0]["line"], 9);
    EXPECT_EQ(j[0]["item"], "mat_phi(1)");
    EXPECT_EQ(j[0]["serious"], true);
    EXPECT_NE(j[0]["text"].get<std::string>().find("196"), std::string::npos);
    EXPECT_EQ(cli::check_file(test::example_path("slope2d-general.tob"), true, clean), 0);
    EXPECT_EQ(nlohmann::json::parse(clean.str()), nlohmann::json::array());
}
