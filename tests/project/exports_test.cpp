#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "commands/open_project.h"
#include "geometry/surface_stack.h"
#include "commands/commands.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/exports.h"
#include "commands/surface_commands.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::ScratchDir;

// Records what the input boxes and save dialogs were offered.
struct RecordingPort : test::ScriptedPort {
    std::vector<std::string> prompts, input_defaults, save_names;
    std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                         const std::string& initial) override
    {
        prompts.push_back(prompt);
        input_defaults.push_back(initial);
        return ScriptedPort::input_box(prompt, title, initial);
    }
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                bool overwrite) override
    {
        save_names.push_back(initial);
        EXPECT_TRUE(overwrite);
        return ScriptedPort::save_file_dialog(filter, initial, overwrite);
    }
};

// Runs the body with the scratch folder as the current one.
struct InFolder {
    std::filesystem::path old = std::filesystem::current_path();
    explicit InFolder(const ScratchDir& d) { std::filesystem::current_path(d.path); }
    ~InFolder() { std::filesystem::current_path(old); }
};

// Three rows (X 10, 15, 20) by four columns (Y 2, 3.5, 5, 6.5), one layer;
// ground 100 + 10 i + j, sliding plane -(i + j / 2).
Project small_mesh()
{
    Project p;
    main_load(p);
    reset_project(p);
    p.project_title = "Small";
    p.dataset_title = "Mesh";
    p.input_by = "Tester";
    p.num_rows = 3;
    p.num_cols = 4;
    derive_counts(p);
    redim_grids(p);
    p.x_min = 10;
    p.x_max = 20;
    p.row_spacing = 5;
    p.y_min = 2;
    p.y_max = 6.5f;
    p.col_spacing = 1.5f;
    p.mat_name[1] = "Fill";
    p.mat_unit_weight[1] = 18;
    p.surf_method[1] = 1;
    p.surf_grd_file[1] = "ground.grd";
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 4; ++j) {
            p.zgrid(i, j, 1) = float(100 + 10 * i + j);
            p.zgrid(i, j, 2) = -(float(i) + float(j) * 0.5f);
        }
    return p;
}

// Test's own print items and zones.
std::string item(const std::string& general)
{
    return (general[0] == '-' ? "" : " ") + general + " ";
}
std::string zones(const std::vector<std::string>& items)
{
    std::string s;
    for (std::size_t n = 0; n < items.size(); ++n) {
        if (n > 0)
            s.append(14 - s.size() % 14, ' ');
        s += items[n];
    }
    return s;
}

// A .DAT line: coordinate, three blanks, each elevation.
std::string dat(const std::string& a, const std::string& b, const std::string& c)
{
    return item(a) + "   " + item(b) + "   " + item(c);
}

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> out;
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t end = text.find("\r\n", from);
        out.push_back(text.substr(from, end - from));
        from = end + 2;
    }
    return out;
}

TEST(export_names, default_names_as_built_by_the_menu)
{
    EXPECT_EQ(two_d_file_name(50), "Section 50.tob");
    EXPECT_EQ(two_d_file_name(-2.5), "Section-2.5.tob");
    EXPECT_EQ(longitudinal_dat_name(12.5), "CY12.5.DAT");
    EXPECT_EQ(lateral_dat_name(0.5), "CX.5.DAT");
}

TEST(export_rows, row_and_column_ignore_the_mesh_origin_round_half_even_and_clamp)
{
    Project p = small_mesh();
    EXPECT_EQ(export_row_of(p, 5), 2);    // 5 / 5 + 1, x_min not taken off
    EXPECT_EQ(export_row_of(p, 7.5), 2);  // 2.5 goes to the even 2
    EXPECT_EQ(export_row_of(p, 12.5), 3); // 3.5 to the even 4, then held to 3
    EXPECT_EQ(export_row_of(p, -50), 1);
    EXPECT_EQ(export_row_of(p, 1000), 3);
    EXPECT_EQ(export_col_of(p, 3), 3);
    EXPECT_EQ(export_col_of(p, 2.25), 2); // 2.5 to even
    EXPECT_EQ(export_col_of(p, 100), 4);
    EXPECT_EQ(export_col_of(p, -3), 1);
}

TEST(two_d_file, written_in_the_current_folder_with_one_row_and_one_section)
{
    ScratchDir dir;
    Project p = small_mesh();
    RecordingPort port;
    port.inputs.push_back("5");
    {
        InFolder here(dir);
        export_two_d_file(p, port);
    }
    ASSERT_EQ(port.prompts.size(), 1u);
    EXPECT_EQ(port.prompts[0], "ENTER X COORDINATE");
    EXPECT_EQ(port.input_defaults[0], "0");
    ASSERT_EQ(port.boxes.size(), 1u);
    EXPECT_EQ(port.boxes[0].text, "FILE Section 5.tob WAS CREATED");

    const auto lines = lines_of(test::read_bytes(dir.file("Section 5.tob")));
    ASSERT_GT(lines.size(), 30u);
    EXPECT_EQ(lines[0], "Small");
    EXPECT_EQ(lines[1], "Mesh SECTION 5");
    EXPECT_EQ(lines[2], "Tester");
    EXPECT_EQ(lines[4], zones({item("2"), item("6.5"), item("1"), item("1")}));
    EXPECT_EQ(lines[5], zones({item("4"), item("1"), item("1")}));
    EXPECT_EQ(lines[7], "Fill");
    // Every surface becomes a cross-section line; the file name stays.
    EXPECT_EQ(lines[10], zones({item("0"), item("0"), "ground.grd"}));
    EXPECT_EQ(lines[11], zones({item("0"), item("0"), "*.GRD"}));
    EXPECT_EQ(lines[12], item("1"));
    EXPECT_EQ(lines[13], item("4"));
    // Row 2: ground 120 + j, at Y 2, 3.5, 5, 6.5.
    EXPECT_EQ(lines[14], zones({item("2"), item("121")}));
    EXPECT_EQ(lines[15], zones({item("3.5"), item("122")}));
    EXPECT_EQ(lines[17], zones({item("6.5"), item("124")}));
    EXPECT_EQ(lines[18], item("4"));
    EXPECT_EQ(lines[19], zones({item("2"), item("-2.5")}));
    EXPECT_EQ(lines[22], zones({item("6.5"), item("-4")}));
    EXPECT_EQ(lines[23], item("0")); // base_z: the rest as in the data file
    EXPECT_EQ(lines.back(), "True");
}

TEST(two_d_file, reads_back_as_a_two_dimensional_project)
{
    ScratchDir dir;
    Project p = small_mesh();
    write_two_d_file(p, 1000, dir.file("cut.tob")); // clamped to row 3
    Project q;
    main_load(q);
    reset_project(q);
    test::ScriptedPort port;
    read_data_file(q, dir.file("cut.tob"), port);
    EXPECT_EQ(q.num_rows, 1);
    EXPECT_EQ(q.num_sections, 1);
    EXPECT_EQ(q.x_min, 1.0f);
    EXPECT_EQ(q.x_max, 1.0f);
    EXPECT_EQ(q.row_spacing, 1.0f);
    EXPECT_EQ(q.surf_method[1], 0);
    EXPECT_EQ(q.sections.x[1], 1.0f);
    EXPECT_EQ(q.sections.n(1, 1), 4);
    EXPECT_EQ(q.sections.z(1, 4, 1), 134.0f);
    EXPECT_EQ(q.sections.z(1, 1, 2), -3.5f);
}

TEST(two_d_file, empty_or_cancelled_answer_writes_nothing)
{
    ScratchDir dir;
    Project p = small_mesh();
    RecordingPort port;
    port.inputs.push_back(std::string());
    {
        InFolder here(dir);
        export_two_d_file(p, port);
        export_two_d_file(p, port); // cancelled
    }
    EXPECT_TRUE(std::filesystem::is_empty(dir.path));
    EXPECT_TRUE(port.boxes.empty());
}

// A 2-D file cut from the 3-D example solves like a 2-D project built from
// the same section by hand.
TEST(two_d_file, cut_of_3d_example_solves_like_the_hand_built_section)
{
    ScratchDir dir;
    test::ScriptedPort port;
    Project three;
    main_load(three);
    three.data_file_path = test::example_path("slope3d-layers-piezo-force.tob");
    three.open_recent_pending = -1;
    file_open(three, port);
    ASSERT_TRUE(port.boxes.empty());
    port.inputs.push_back("50");
    {
        InFolder here(dir);
        export_two_d_file(three, port);
    }
    const std::string cut = dir.file("Section 50.tob");
    ASSERT_TRUE(std::filesystem::exists(cut));

    Project a;
    main_load(a);
    a.data_file_path = cut;
    a.open_recent_pending = -1;
    file_open(a, port);
    ASSERT_EQ(a.num_rows, 1);
    EXPECT_EQ(a.dataset_title, "Ellipsoid through both layers SECTION 50");

    // By hand: the sections at X 0 and 100 averaged at X 50.
    Project h;
    main_load(h);
    reset_project(h);
    h.unit_weight_water = 9.81f;
    h.num_layers = 2;
    h.num_piezos = 1;
    derive_counts(h);
    h.num_rows = 1;
    h.num_cols = 61;
    h.num_sections = 2;
    redim_grids(h);
    h.x_min = 1;
    h.x_max = 2;
    h.row_spacing = 1;
    h.y_min = 0;
    h.y_max = 120;
    h.col_spacing = 2;
    h.mat_name[1] = "Stiff clay";
    h.mat_unit_weight[1] = 21;
    h.mat_cohesion[1] = h.mat_cohesion_v[1] = 25;
    h.mat_phi[1] = h.mat_phi_v[1] = 28;
    h.mat_piezo[1] = -1;
    h.mat_name[2] = "Silty sand";
    h.mat_unit_weight[2] = 19;
    h.mat_cohesion[2] = h.mat_cohesion_v[2] = 5;
    h.mat_phi[2] = h.mat_phi_v[2] = 30;
    h.mat_piezo[2] = -1;
    h.mat_type[1] = h.mat_type[2] = 1;
    const std::vector<std::vector<std::pair<float, float>>> lines = {
        {{0, 8}, {40, 8}, {70, 20}, {120, 20}},
        {{0, 15}, {38, 15}, {40, 15.5f}, {70, 30.5f}, {120, 30.5f}},
        {{0, 12}, {45, 12}, {80, 24}, {120, 24}},
    };
    for (int s = 1; s <= 2; ++s) {
        h.sections.x[std::size_t(s)] = float(s);
        for (int k = 1; k <= 3; ++k) {
            const auto& line = lines[std::size_t(k - 1)];
            h.sections.n(s, k) = int16(line.size());
            for (std::size_t n = 0; n < line.size(); ++n) {
                h.sections.y(s, int(n) + 1, k) = line[n].first;
                h.sections.z(s, int(n) + 1, k) = line[n].second;
            }
        }
    }
    h.num_forces = 1;
    h.force_h[1] = -50;
    h.force_v[1] = 400;
    h.force_x[1] = 50;
    h.force_y[1] = 85;
    h.force_z[1] = 30;
    rebuild_surfaces(h, port);

    double f[2] = {};
    Project* both[2] = {&a, &h};
    for (int n = 0; n < 2; ++n) {
        Project& q = *both[n];
        q.search_x = q.x_min;
        q.single_y = 60;
        q.single_z = 55;
        q.tangent_z = 12;
        q.aspect_in = 1;
        ASSERT_TRUE(confirm_surface(q, port, SurfaceCommand::ellipsoid)) << n;
        ASSERT_TRUE(solve_single_trial(q, port));
        f[n] = q.factor_of_safety;
    }
    EXPECT_GT(f[0], 0.5);
    EXPECT_NEAR(f[0], f[1], 1e-4);
    for (int j = 1; j <= 61; ++j)
        EXPECT_NEAR(a.zgrid(1, j, 2), h.zgrid(1, j, 2), 1e-4) << j;
}

TEST(longitudinal_dat, asks_x_offers_cy_name_and_writes_a_line_per_column)
{
    ScratchDir dir;
    Project p = small_mesh();
    RecordingPort port;
    port.inputs.push_back("5");
    port.files.push_back(dir.file("long.dat"));
    export_longitudinal_dat(p, port);
    ASSERT_EQ(port.prompts.size(), 1u);
    EXPECT_EQ(port.prompts[0], "ENTER X COORDINATE");
    EXPECT_EQ(port.input_defaults[0], "0");
    ASSERT_EQ(port.save_names.size(), 1u);
    EXPECT_EQ(port.save_names[0], "CY5.DAT");
    EXPECT_EQ(port.dialog_filters[0], "Grid Files (*.DAT)|*.DAT");
    const std::string expected = dat("2", "121", "-2.5") + "\r\n" + dat("3.5", "122", "-3") + "\r\n" +
                                 dat("5", "123", "-3.5") + "\r\n" + dat("6.5", "124", "-4") + "\r\n";
    EXPECT_EQ(test::read_bytes(dir.file("long.dat")), expected);
}

TEST(longitudinal_dat, two_d_project_takes_x_min_without_asking)
{
    ScratchDir dir;
    Project p = small_mesh();
    p.num_rows = 1;
    RecordingPort port;
    port.files.push_back(dir.file("l.dat"));
    export_longitudinal_dat(p, port);
    EXPECT_TRUE(port.prompts.empty());
    ASSERT_EQ(port.save_names.size(), 1u);
    EXPECT_EQ(port.save_names[0], "CY10.DAT");
    // X 10 is row 10 / 5 + 1 = 3, clamped to the one row.
    EXPECT_EQ(lines_of(test::read_bytes(dir.file("l.dat"))).at(0), dat("2", "111", "-1.5"));
}

TEST(longitudinal_dat, row_beyond_the_mesh_is_clamped)
{
    ScratchDir dir;
    Project p = small_mesh();
    write_longitudinal_dat(p, -40, dir.file("low.dat"));
    EXPECT_EQ(lines_of(test::read_bytes(dir.file("low.dat"))).at(3), dat("6.5", "114", "-3"));
}

TEST(longitudinal_dat, cancelled_dialog_or_empty_answer_writes_nothing)
{
    ScratchDir dir;
    Project p = small_mesh();
    RecordingPort port;
    port.inputs.push_back("5");
    export_longitudinal_dat(p, port); // dialog cancelled
    port.inputs.push_back("");
    export_longitudinal_dat(p, port); // empty answer: no dialog
    EXPECT_EQ(port.save_names.size(), 1u);
    EXPECT_TRUE(std::filesystem::is_empty(dir.path));
    EXPECT_TRUE(port.boxes.empty());
}

TEST(lateral_dat, asks_y_and_writes_row_spacing_steps_without_x_min)
{
    ScratchDir dir;
    Project p = small_mesh();
    RecordingPort port;
    port.inputs.push_back("3");
    port.files.push_back(dir.file("lat.dat"));
    export_lateral_dat(p, port);
    ASSERT_EQ(port.prompts.size(), 1u);
    EXPECT_EQ(port.prompts[0], "ENTER Y COORDINATE");
    EXPECT_EQ(port.input_defaults[0], "0");
    EXPECT_EQ(port.save_names.at(0), "CX3.DAT");
    // Column 3 / 1.5 + 1 = 3.
    const std::string expected = dat("0", "113", "-2.5") + "\r\n" + dat("5", "123", "-3.5") + "\r\n" +
                                 dat("10", "133", "-4.5") + "\r\n";
    EXPECT_EQ(test::read_bytes(dir.file("lat.dat")), expected);
}

TEST(lateral_dat, column_beyond_the_mesh_is_clamped)
{
    ScratchDir dir;
    Project p = small_mesh();
    write_lateral_dat(p, 100, dir.file("far.dat"));
    EXPECT_EQ(lines_of(test::read_bytes(dir.file("far.dat"))).at(0), dat("0", "114", "-3"));
}

TEST(lateral_dat, not_offered_in_two_dimensions)
{
    Project p = small_mesh();
    p.num_rows = 1;
    RecordingPort port;
    port.inputs.push_back("3");
    export_lateral_dat(p, port);
    EXPECT_TRUE(port.prompts.empty());
    EXPECT_TRUE(port.save_names.empty());
}

} // namespace
} // namespace tobel
