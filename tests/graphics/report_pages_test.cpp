// The printed pages: the report on a preview and a printer (labels, values
// at tab 48, the multiplier, the differences from the text file, the
// graphic on page one, the page marks), the printed search summary, text
// pages and the current view on a page.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "graphics/recording_surface.h"
#include "graphics/report_pages.h"
#include "graphics_support.h"

namespace tobel::test {
namespace {

// Report text is 10 points: a line is 1.25 em = 12.5 / 72 inch; a character
// is 0.55 em = 5.5 / 72 inch (the surface's text measure).
constexpr double pitch = 12.5 / 72.0;
constexpr double char_w = 5.5 / 72.0;
constexpr double k_preview = 6.8 / 11.0;
// Tab 48: 47 characters right of the 0.75 inch margin.
constexpr double tab48 = 0.75 + 47 * char_w;

std::unique_ptr<Project> report_project()
{
    auto p = std::make_unique<Project>();
    p->project_title = "Dam";
    p->input_by = "AB";
    p->num_rows = 1;
    p->solution_method = 1;
    p->surface_kind = 1;
    p->factor_of_safety = 1.5f;
    p->unit_weight_water = 9.81f;
    return p;
}

ReportContext solved()
{
    ReportContext c;
    c.solution_window = true;
    c.date = "01-02-2026";
    return c;
}

struct Page {
    DisplayList list;
    bool more = false;
};

Page draw_page(const Project& p, const ReportContext& ctx, ReportPages& state, int page, bool printer,
               const DisplayList* graphic = nullptr)
{
    Page out;
    const PageSize size = page_device_size(report_multiplier(printer));
    out.list.device_width = size.width;
    out.list.device_height = size.height;
    RecordingSurface s(out.list);
    out.more = draw_report(s, state, page, printer, p, ctx, graphic);
    return out;
}

const Text* find_text(const std::vector<Text>& texts, const std::string& t)
{
    for (const Text& x : texts)
        if (x.text == t)
            return &x;
    return nullptr;
}

// The text that stands on the same line as `label`, right of it.
std::string value_beside(const std::vector<Text>& texts, const std::string& label)
{
    const Text* l = find_text(texts, label);
    if (l == nullptr)
        return "<no label>";
    for (const Text& x : texts)
        if (x.y == l->y && x.x > l->x)
            return x.text;
    return "<no value>";
}

bool has_text(const DisplayList& list, const std::string& t)
{
    return find_text(texts_of(list), t) != nullptr;
}

TEST(ReportPages, page_surfaces_are_96_units_an_inch_times_the_multiplier)
{
    EXPECT_FLOAT_EQ(page_device_size(1).width, 816.0f);   // 8.5 * 96
    EXPECT_FLOAT_EQ(page_device_size(1).height, 1056.0f); // 11 * 96
    EXPECT_NEAR(page_device_size(k_preview).width, 816.0 * 6.8 / 11.0, 1e-3);
    EXPECT_NEAR(page_device_size(k_preview).height, 652.8, 1e-3); // 1056 * 6.8 / 11
    EXPECT_DOUBLE_EQ(report_multiplier(true), 1.0);
    EXPECT_DOUBLE_EQ(report_multiplier(false), 6.8 / 11.0);
}

TEST(ReportPages, printer_page_is_letter_in_inches_with_labels_at_margin_and_values_at_tab_48)
{
    auto p = report_project();
    ReportPages state;
    const Page page = draw_page(*p, solved(), state, 1, true);
    const auto scale = boxes_of(page.list, DrawOp::scale);
    ASSERT_FALSE(scale.empty());
    EXPECT_FLOAT_EQ(scale.front().x1, 0.0f);
    EXPECT_FLOAT_EQ(scale.front().y1, 0.0f);
    EXPECT_FLOAT_EQ(scale.front().x2, 8.5f);
    EXPECT_FLOAT_EQ(scale.front().y2, 11.0f);
    const auto texts = texts_of(page.list);
    const Text* label = find_text(texts, "PROJECT:");
    ASSERT_NE(label, nullptr);
    EXPECT_NEAR(label->x, 0.75, 1e-5);
    EXPECT_NEAR(label->y, 0.75, 1e-5);
    const Text* title = find_text(texts, "Dam");
    ASSERT_NE(title, nullptr);
    EXPECT_NEAR(title->x, tab48, 1e-5); // 0.75 + 47 * 5.5 / 72 = 4.3403
    EXPECT_NEAR(title->y, 0.75, 1e-5);
    // Line 4 (from 0): the surface line, one pitch a line.
    const Text* surface = find_text(texts, "Sliding Surface:");
    ASSERT_NE(surface, nullptr);
    EXPECT_NEAR(surface->y, 0.75 + 4 * pitch, 1e-5);
    EXPECT_EQ(value_beside(texts, "Sliding Surface:"), "Single ellipsoidal sliding surface");
    EXPECT_EQ(value_beside(texts, "Date: "), "01-02-2026");
    // The font: the serif face at 10 points.
    const auto fonts = items_of(page.list, DrawOp::font);
    ASSERT_FALSE(fonts.empty());
    EXPECT_EQ(page.list.texts[fonts.front()->text], "Times New Roman");
    EXPECT_FLOAT_EQ(page.list.coords[fonts.front()->first], 10.0f);
}

TEST(ReportPages, preview_multiplies_positions_and_font_by_6_8_over_11)
{
    auto p = report_project();
    ReportPages state;
    const Page page = draw_page(*p, solved(), state, 1, false);
    const auto scale = boxes_of(page.list, DrawOp::scale);
    ASSERT_FALSE(scale.empty());
    EXPECT_NEAR(scale.front().x2, 8.5 * k_preview, 1e-5);
    EXPECT_NEAR(scale.front().y2, 11.0 * k_preview, 1e-5);
    const auto texts = texts_of(page.list);
    const Text* label = find_text(texts, "PROJECT:");
    const Text* title = find_text(texts, "Dam");
    ASSERT_NE(label, nullptr);
    ASSERT_NE(title, nullptr);
    EXPECT_NEAR(label->x, 0.75 * k_preview, 1e-5);  // 0.4636
    EXPECT_NEAR(title->x, tab48 * k_preview, 1e-5); // 2.6831
    const Text* surface = find_text(texts, "Sliding Surface:");
    ASSERT_NE(surface, nullptr);
    EXPECT_NEAR(surface->y, (0.75 + 4 * pitch) * k_preview, 1e-5);
    const auto fonts = items_of(page.list, DrawOp::font);
    ASSERT_FALSE(fonts.empty());
    EXPECT_NEAR(page.list.coords[fonts.front()->first], 10.0 * k_preview, 1e-5); // 6.18 points
}

TEST(ReportPages, solution_values_use_the_masks_of_the_printed_report)
{
    auto p = report_project();
    p->lateral_unbalance = 12.34567f; // "####0.0000": 12.3457
    p->active_columns = 123;          // "####0"
    p->rotation_angle = 2.5f;         // "####0.00": 2.50, read back 2.5
    p->slide_volume = 1000;
    p->centre_y = 33.125f; // "####0.00": 33.13 (half away from zero)
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, solved(), state, 1, true).list);
    EXPECT_EQ(value_beside(texts, "Factor of Safety:"), " 1.5");
    EXPECT_EQ(value_beside(texts, "Unbalanced Force:"), " 12.3457");
    EXPECT_EQ(value_beside(texts, "No. of Active Columns:"), " 123");
    EXPECT_EQ(value_beside(texts, "Rotation angle:"), " 2.5");
    EXPECT_EQ(value_beside(texts, "Slide Volume:"), " 1000");
    EXPECT_EQ(value_beside(texts, "Centre Y:"), " 33.13");
    EXPECT_EQ(value_beside(texts, "Sliding Surface:"), "Single ellipsoidal sliding surface");
    EXPECT_NE(find_text(texts, "Bishop's Method"), nullptr);
    EXPECT_NE(find_text(texts, "Negative normal stresses in 0% of weight"), nullptr);
    // Only Spencer's method has a lambda.
    EXPECT_EQ(find_text(texts, "Coefficient Lambda:"), nullptr);
}

TEST(ReportPages, coefficient_lambda_comes_right_after_the_factor_with_two_decimals)
{
    auto p = report_project();
    p->solution_method = 3;
    p->lambda_coef = 0.25f; // "#0.00": 0.25, in the signed form " .25"
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, solved(), state, 1, true).list);
    const Text* fos = find_text(texts, "Factor of Safety:");
    const Text* lambda = find_text(texts, "Coefficient Lambda:");
    const Text* volume = find_text(texts, "Slide Volume:");
    ASSERT_TRUE(fos && lambda && volume);
    EXPECT_NEAR(lambda->y - fos->y, pitch, 1e-5);
    EXPECT_NEAR(volume->y - lambda->y, pitch, 1e-5);
    EXPECT_EQ(value_beside(texts, "Coefficient Lambda:"), " .25");
    EXPECT_NE(find_text(texts, "Spencer's Method"), nullptr);
}

TEST(ReportPages, water_thrust_takes_two_lines)
{
    auto p = report_project();
    p->head_water_sum = 5;
    p->crack_water_sum = 7.5f;
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, solved(), state, 1, true).list);
    const Text* toe = find_text(texts, "     (toe submergence):");
    const Text* crack = find_text(texts, "     (tension crack):");
    ASSERT_TRUE(toe && crack);
    EXPECT_EQ(value_beside(texts, "     (toe submergence):"), " 5");
    EXPECT_EQ(value_beside(texts, "     (tension crack):"), " 7.5");
    int heads = 0;
    for (const Text& t : texts)
        if (t.text == "Total water thrust") {
            ++heads;
            EXPECT_TRUE(std::abs(t.y - (toe->y - pitch)) < 1e-5 || std::abs(t.y - (crack->y - pitch)) < 1e-5);
        }
    EXPECT_EQ(heads, 2);
}

TEST(ReportPages, unit_weight_of_water_has_its_own_value_text_or_no_line)
{
    auto p = report_project();
    ReportPages state;
    EXPECT_EQ(value_beside(texts_of(draw_page(*p, solved(), state, 1, true).list), "Unit Weight of Water:"),
              "9.81 (kN/cu.m)");
    p->unit_weight_water = 62.4f;
    EXPECT_EQ(value_beside(texts_of(draw_page(*p, solved(), state, 1, true).list), "Unit Weight of Water:"),
              "62.4  (pcf)");
    p->unit_weight_water = 10;
    EXPECT_FALSE(has_text(draw_page(*p, solved(), state, 1, true).list, "Unit Weight of Water:"));
}

TEST(ReportPages, before_any_solution_only_the_head_and_the_input_lists)
{
    auto p = report_project();
    p->num_layers = 1;
    p->mat_type[1] = 1;
    p->mat_name[1] = "Clay";
    p->mat_unit_weight[1] = 20;
    ReportContext ctx = solved();
    ctx.solution_window = false;
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, ctx, state, 1, true).list);
    EXPECT_EQ(find_text(texts, "Factor of Safety:"), nullptr);
    EXPECT_EQ(find_text(texts, "Sliding Surface:"), nullptr);
    EXPECT_EQ(find_text(texts, "Unit Weight of Water:"), nullptr);
    // Head (4 lines), two blank lines, then the heading on line 6.
    const Text* heading = find_text(texts, "List of Materials:");
    ASSERT_NE(heading, nullptr);
    EXPECT_NEAR(heading->y, 0.75 + 6 * pitch, 1e-5);
    EXPECT_EQ(value_beside(texts, "Clay"), " 20");
}

TEST(ReportPages, list_headings_stand_in_separate_columns)
{
    auto p = report_project();
    p->num_layers = 3;
    p->mat_type[1] = 1;
    p->mat_type[2] = 2;
    p->mat_type[3] = 3;
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, solved(), state, 1, true).list);
    // Materials: seven column names on one line, left to right.
    const Text* name = find_text(texts, "Unit Weight");
    ASSERT_NE(name, nullptr);
    std::vector<const Text*> row;
    for (const Text& t : texts)
        if (t.y == name->y)
            row.push_back(&t);
    ASSERT_EQ(row.size(), 7u);
    const char* expected[] = {"Name",    "Unit Weight",  "Cohesion",    "Friction Angle",
                              "Piezo #", "Press. Ratio", "B-bar Coeff."};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(row[i]->text, expected[i]);
        if (i > 0) {
            EXPECT_GT(row[i]->x, row[i - 1]->x);
        }
    }
    // Anisotropic: "Vert." under each vertical column, "Angle" under "Friction".
    const Text* friction = find_text(texts, "Friction");
    const Text* angle = find_text(texts, "Angle");
    ASSERT_TRUE(friction && angle);
    EXPECT_FLOAT_EQ(angle->x, friction->x);
    EXPECT_NEAR(angle->y - friction->y, pitch, 1e-5);
    int verts = 0;
    for (const Text& t : texts)
        verts += t.text == "Vert." ? 1 : 0;
    EXPECT_EQ(verts, 2);
    EXPECT_NE(find_text(texts, "Fi Angle"), nullptr);
    // Non-linear: "Uniaxial" over "Strength".
    const Text* uni = find_text(texts, "Uniaxial");
    const Text* strength = find_text(texts, "Strength");
    ASSERT_TRUE(uni && strength);
    EXPECT_FLOAT_EQ(strength->x, uni->x);
    EXPECT_NEAR(strength->y - uni->y, pitch, 1e-5);
    EXPECT_NE(find_text(texts, "Coeff. A"), nullptr);
    EXPECT_NE(find_text(texts, "Coeff. D"), nullptr);
}

TEST(ReportPages, a_type_without_materials_leaves_out_its_list_and_heading)
{
    auto p = report_project();
    p->num_layers = 1;
    p->mat_type[1] = 2; // anisotropic only
    ReportPages state;
    const DisplayList list = draw_page(*p, solved(), state, 1, true).list;
    EXPECT_TRUE(has_text(list, "List of Anisotropic Materials:"));
    EXPECT_FALSE(has_text(list, "List of Materials:"));
    EXPECT_FALSE(has_text(list, "List of Non-Linear Materials:"));
    EXPECT_FALSE(has_text(list, "List of Discontinuities:"));
    EXPECT_FALSE(has_text(list, "List of External Forces:"));
}

TEST(ReportPages, tension_crack_closes_the_report)
{
    auto p = report_project();
    p->crack_mode = 2;
    p->crack_depth = 3;
    p->crack_water_pct = 50;
    ReportPages state;
    const auto texts = texts_of(draw_page(*p, solved(), state, 1, true).list);
    EXPECT_NE(find_text(texts, "Tension Crack:"), nullptr);
    EXPECT_EQ(value_beside(texts, "Depth:"), " 3");
    EXPECT_EQ(value_beside(texts, "% Filled by Water: "), "50.00");
}

// A graphic of 800 by 600 device units, one red box over its whole window.
DisplayList box_graphic(float w, float h)
{
    DisplayList g;
    g.device_width = w;
    g.device_height = h;
    RecordingSurface s(g);
    s.Cls();
    s.Scale(0, 10, 20, 0);
    s.fill_box(0, 0, 20, 10, 255);
    return g;
}

TEST(ReportPages, graphic_on_page_one_keeps_its_ratio_in_its_box)
{
    auto p = report_project();
    const DisplayList g = box_graphic(800, 600);
    ReportPages state;
    const Page page = draw_page(*p, solved(), state, 1, true, &g);
    // 600 / 800 = 0.75: 6.5 wide would be 4.875 high, above the 4 inch box,
    // so 4 high and 4 / 0.75 = 5.3333 wide, centred: left 1 + (6.5 - 5.3333) / 2.
    const PageBox box = report_graphic_box(g, 1);
    EXPECT_NEAR(box.width, 16.0 / 3.0, 1e-9);
    EXPECT_NEAR(box.height, 4.0, 1e-9);
    EXPECT_NEAR(box.left, 1.0 + (6.5 - 16.0 / 3.0) / 2, 1e-9);
    EXPECT_NEAR(box.top, 6.0, 1e-9);
    bool red = false;
    for (const Box& b : boxes_of(page.list))
        if (b.colour == 255) {
            red = true;
            EXPECT_NEAR(std::min(b.x1, b.x2), 1.58333, 1e-4);
            EXPECT_NEAR(std::max(b.x1, b.x2), 6.91667, 1e-4);
            EXPECT_NEAR(std::min(b.y1, b.y2), 6.0, 1e-4);
            EXPECT_NEAR(std::max(b.y1, b.y2), 10.0, 1e-4);
        }
    EXPECT_TRUE(red);
    // A wide graphic (1000 by 200) takes the box's width: 6.5 by 1.3, centred down.
    const PageBox wide = report_graphic_box(box_graphic(1000, 200), 1);
    EXPECT_NEAR(wide.width, 6.5, 1e-9);
    EXPECT_NEAR(wide.height, 1.3, 1e-9);
    EXPECT_NEAR(wide.top, 6.0 + (4.0 - 1.3) / 2, 1e-9);
    // On the preview the box shrinks with the page.
    const PageBox small = report_graphic_box(g, k_preview);
    EXPECT_NEAR(small.left, box.left * k_preview, 1e-9);
    EXPECT_NEAR(small.width, box.width * k_preview, 1e-9);
}

TEST(ReportPages, graphic_is_only_on_page_one)
{
    auto p = report_project();
    p->num_forces = 60;
    const DisplayList g = box_graphic(800, 600);
    ReportPages state;
    draw_page(*p, solved(), state, 1, true, &g);
    const Page two = draw_page(*p, solved(), state, 2, true, &g);
    for (const Box& b : boxes_of(two.list))
        EXPECT_NE(b.colour, 255);
}

// 60 forces, no solution: head 4 lines, two blanks, heading, column names,
// then "Force 1" on line 8 .. "Force 60" on line 67: 68 lines.
std::unique_ptr<Project> sixty_forces()
{
    auto p = report_project();
    p->num_forces = 60;
    return p;
}

ReportContext input_only()
{
    ReportContext c;
    c.date = "01-02-2026";
    return c;
}

TEST(ReportPages, page_two_begins_where_page_one_ended)
{
    auto p = sixty_forces();
    ReportPages state;
    // A page holds floor((10.25 - 0.75) / pitch) = floor(54.72) = 54 lines:
    // page one ends with line 53 ("Force 46"), page two begins with "Force 47".
    const Page one = draw_page(*p, input_only(), state, 1, true);
    EXPECT_TRUE(one.more);
    EXPECT_EQ(state.page_line, 54);
    EXPECT_TRUE(has_text(one.list, "Force 46"));
    EXPECT_FALSE(has_text(one.list, "Force 47"));
    ASSERT_TRUE(state.marks[2].set);
    EXPECT_EQ(state.marks[2].section, 5); // the list of forces
    EXPECT_EQ(state.marks[2].entry, 50);  // 2 blanks, heading, names, then forces 1..46
    const Page two = draw_page(*p, input_only(), state, 2, true);
    EXPECT_FALSE(two.more);
    const auto texts = texts_of(two.list);
    const Text* first = find_text(texts, "Force 47");
    ASSERT_NE(first, nullptr);
    EXPECT_NEAR(first->y, 0.75, 1e-5);
    EXPECT_NE(find_text(texts, "Force 60"), nullptr);
    EXPECT_EQ(find_text(texts, "Force 46"), nullptr);
}

TEST(ReportPages, a_page_drawn_first_finds_its_start_from_the_pages_before)
{
    auto p = sixty_forces();
    ReportPages state;
    const Page two = draw_page(*p, input_only(), state, 2, false);
    const auto texts = texts_of(two.list);
    const Text* first = find_text(texts, "Force 47");
    ASSERT_NE(first, nullptr);
    EXPECT_NEAR(first->y, 0.75 * k_preview, 1e-5);
}

TEST(ReportPages, graphic_shortens_page_one_to_the_lines_above_it)
{
    auto p = sixty_forces();
    const DisplayList g = box_graphic(800, 600);
    ReportPages state;
    // Above 6.0 - 0.25 inch: floor((5.75 - 0.75) / pitch) = floor(28.8) = 28
    // lines, so line 28, "Force 21", opens page two.
    const Page one = draw_page(*p, input_only(), state, 1, true, &g);
    EXPECT_EQ(state.page_line, 28);
    EXPECT_TRUE(has_text(one.list, "Force 20"));
    EXPECT_FALSE(has_text(one.list, "Force 21"));
    const Page two = draw_page(*p, input_only(), state, 2, true, &g);
    EXPECT_NEAR(find_text(texts_of(two.list), "Force 21")->y, 0.75, 1e-5);
}

TEST(ReportPages, a_list_heading_never_stands_alone_at_the_foot_of_a_page)
{
    // 43 materials: head lines 0-3, blanks 4-5, heading 6, names 7, the
    // materials on lines 8-50; then the forces' blanks 51-52, heading 53,
    // names 54. Line 53 would be the last of page one: it moves to page two.
    auto p = sixty_forces();
    p->num_layers = 43;
    for (int m = 1; m <= 43; ++m)
        p->mat_type[std::size_t(m)] = 1;
    ReportPages state;
    const Page one = draw_page(*p, input_only(), state, 1, true);
    EXPECT_EQ(state.page_line, 53);
    EXPECT_FALSE(has_text(one.list, "List of External Forces:"));
    EXPECT_EQ(state.marks[2].section, 5);
    EXPECT_EQ(state.marks[2].entry, 2); // the heading, after its two blank lines
    const auto two = texts_of(draw_page(*p, input_only(), state, 2, true).list);
    const Text* heading = find_text(two, "List of External Forces:");
    ASSERT_NE(heading, nullptr);
    EXPECT_NEAR(heading->y, 0.75, 1e-5);
    // 42 materials put the column names on line 53: heading and names both move.
    p->num_layers = 42;
    ReportPages again;
    draw_page(*p, input_only(), again, 1, true);
    EXPECT_EQ(again.page_line, 52);
    EXPECT_EQ(again.marks[2].entry, 2);
}

TEST(ReportPages, cleared_marks_start_again_at_page_one)
{
    auto p = sixty_forces();
    ReportPages state;
    draw_page(*p, input_only(), state, 2, true);
    state.report_page = 2;
    state.page_line = 9;
    clear_page_marks(state);
    EXPECT_EQ(state.report_page, 1);
    EXPECT_EQ(state.page_line, 0);
    EXPECT_EQ(state.page_count, 0);
    for (const PageMark& m : state.marks)
        EXPECT_FALSE(m.set);
}

TEST(ReportPages, pages_past_the_end_or_the_tenth_draw_no_lines)
{
    auto p = sixty_forces();
    ReportPages state;
    EXPECT_FALSE(draw_page(*p, input_only(), state, 3, true).more);
    EXPECT_TRUE(texts_of(draw_page(*p, input_only(), state, 3, true).list).empty());
    EXPECT_TRUE(texts_of(draw_page(*p, input_only(), state, 11, true).list).empty());
    EXPECT_TRUE(texts_of(draw_page(*p, input_only(), state, 0, true).list).empty());
}

TEST(ReportPages, preview_buttons_step_one_page_within_the_report)
{
    ReportPages state;
    EXPECT_FALSE(report_previous_page(state));
    EXPECT_EQ(state.report_page, 1);
    state.page_line = 30;
    EXPECT_TRUE(report_next_page(state, true));
    EXPECT_EQ(state.report_page, 2);
    EXPECT_EQ(state.page_line, 0);
    EXPECT_FALSE(report_next_page(state, false));
    EXPECT_EQ(state.report_page, 2);
    EXPECT_TRUE(report_previous_page(state));
    EXPECT_EQ(state.report_page, 1);
}

// ---- The printed search summary ----

std::unique_ptr<Project> summary_project(int trials, int best)
{
    auto p = std::make_unique<Project>();
    p->project_title = "Dam";
    p->input_by = "AB";
    p->view_mode = 9;
    SearchState& s = p->search;
    s.summary_count = int16(trials);
    s.best_trial = int16(best);
    for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
        v->assign(std::size_t(trials + 1), 0.0f);
    for (int n = 1; n <= trials; ++n) {
        s.summary_fos[std::size_t(n)] = 1.25f;
        s.summary_y[std::size_t(n)] = 40;
        s.summary_z[std::size_t(n)] = 60.5f;
        s.summary_radius[std::size_t(n)] = 45;
        s.summary_volume[std::size_t(n)] = 1234.5f;
    }
    return p;
}

DisplayList summary_page(const Project& p, int page, bool* more = nullptr)
{
    DisplayList list;
    list.device_width = 816;
    list.device_height = 1056;
    RecordingSurface s(list);
    const bool m = draw_summary_page(s, page, p, "01/02/2026");
    if (more)
        *more = m;
    return list;
}

TEST(SummaryPrint, heading_is_centred_11_point_bold_and_labels_stand_at_2_25_inches)
{
    auto p = summary_project(3, 2);
    const auto list = summary_page(*p, 1);
    const auto texts = texts_of(list);
    // 19 characters at 11 points: 19 * 0.55 * 11 / 72 = 1.5965 inch wide.
    const double w = 19 * 0.55 * 11 / 72;
    std::vector<float> xs;
    for (const Text& t : texts)
        if (t.text == "GRID SEARCH SUMMARY")
            xs.push_back(t.x);
    ASSERT_EQ(xs.size(), 2u); // bold: overstruck
    EXPECT_NEAR(xs[0], (8.5 - w) / 2, 1e-5);
    EXPECT_GT(xs[1], xs[0]);
    EXPECT_LT(xs[1] - xs[0], 0.02);
    const auto fonts = items_of(list, DrawOp::font);
    ASSERT_FALSE(fonts.empty());
    EXPECT_EQ(list.texts[fonts.front()->text], "Times New Roman");
    EXPECT_FLOAT_EQ(list.coords[fonts.front()->first], 11.0f);
    const Text* project = find_text(texts, "PROJECT:");
    ASSERT_NE(project, nullptr);
    EXPECT_NEAR(project->x, 2.25, 1e-5);
    // The value beside its label: "PROJECT: " is 9 characters of 10 points.
    EXPECT_NEAR(find_text(texts, "Dam")->x, 2.25 + 9 * char_w, 1e-5);
    EXPECT_NEAR(find_text(texts, "Input By:")->x, 2.25, 1e-5);
    EXPECT_NEAR(find_text(texts, "Input By:")->y - project->y, 0.1875, 1e-5);
    EXPECT_NE(find_text(texts, "01/02/2026"), nullptr);
    p->view_mode = 10;
    EXPECT_TRUE(has_text(summary_page(*p, 1), "AUTO SEARCH SUMMARY"));
}

TEST(SummaryPrint, rows_use_the_print_masks_with_two_decimals_of_volume)
{
    auto p = summary_project(3, 2);
    const auto texts = texts_of(summary_page(*p, 1));
    EXPECT_NE(find_text(texts, "Surface  1"), nullptr);
    EXPECT_EQ(value_beside(texts, "Surface  1"), "1.250");
    EXPECT_NE(find_text(texts, "1,234.50"), nullptr); // volume "##,##0.00", not the screen's "####0"
    EXPECT_NE(find_text(texts, "60.50"), nullptr);
    for (const char* head : summary_column_heads)
        EXPECT_NE(find_text(texts, head), nullptr) << head;
}

TEST(SummaryPrint, best_trial_is_bold_and_the_others_are_not)
{
    auto p = summary_project(3, 2);
    const auto texts = texts_of(summary_page(*p, 1));
    auto count = [&](const std::string& s) {
        return std::count_if(texts.begin(), texts.end(), [&](const Text& t) { return t.text == s; });
    };
    EXPECT_EQ(count("Surface  2"), 2);
    EXPECT_EQ(count("Surface  1"), 1);
    EXPECT_EQ(count("Surface  3"), 1);
}

TEST(SummaryPrint, lines_step_0_1875_inch_and_the_page_ends_with_a_rule)
{
    auto p = summary_project(3, 2);
    const auto list = summary_page(*p, 1);
    const auto texts = texts_of(list);
    const Text* first = find_text(texts, "Surface  1");
    const Text* third = find_text(texts, "Surface  3");
    ASSERT_TRUE(first && third);
    EXPECT_NEAR(third->y - first->y, 2 * 0.1875, 1e-5);
    // Rules: above and below the heads and one closing the page.
    std::vector<Segment> rules;
    for (const Segment& s : segments_of(list))
        if (s.y1 == s.y2 && s.x2 - s.x1 > 6)
            rules.push_back(s);
    ASSERT_EQ(rules.size(), 3u);
    EXPECT_NEAR(rules.back().y1, third->y + 0.1875, 1e-5);
}

TEST(SummaryPrint, a_line_that_would_pass_0_7_inch_from_the_bottom_starts_a_new_page)
{
    auto p = summary_project(50, 44);
    // Page one's rows begin at 2.125 inch; a row ends 0.1875 below its top,
    // which must stay within 11 - 0.7 = 10.3: the last top is 10.1125, so
    // floor((10.1125 - 2.125) / 0.1875) + 1 = 43 rows.
    bool more = false;
    const auto one = texts_of(summary_page(*p, 1, &more));
    EXPECT_TRUE(more);
    const Text* last = find_text(one, "Surface  43");
    ASSERT_NE(last, nullptr);
    EXPECT_NEAR(last->y, 2.125 + 42 * 0.1875, 1e-5);
    EXPECT_EQ(find_text(one, "Surface  44"), nullptr);
    // Page two repeats the heads; its rows begin at 1.0 inch.
    const auto two = texts_of(summary_page(*p, 2, &more));
    EXPECT_FALSE(more);
    EXPECT_NEAR(find_text(two, "Factor of Safety")->y, 0.75, 1e-5);
    EXPECT_NEAR(find_text(two, "Surface  44")->y, 1.0, 1e-5);
    EXPECT_EQ(find_text(two, "GRID SEARCH SUMMARY"), nullptr);
    EXPECT_EQ(std::count_if(two.begin(), two.end(), [](const Text& t) { return t.text == "Surface  44"; }),
              2); // the best trial, bold on its page
}

// ---- Text pages and the current view ----

TEST(TextPages, printout_headings_are_bold)
{
    const auto text =
        printout_page_text({"", "The Following are Total Forces:", "x", "Solution Acceptability Indices:"});
    ASSERT_EQ(text.size(), 4u);
    EXPECT_FALSE(text[0].bold);
    EXPECT_TRUE(text[1].bold);
    EXPECT_FALSE(text[2].bold);
    EXPECT_TRUE(text[3].bold);
}

TEST(TextPages, lines_run_on_to_the_next_page)
{
    // (10 - 1) / pitch = 51.84: 51 lines, less the title and a blank: 49 a page.
    std::vector<PageText> lines;
    for (int i = 1; i <= 50; ++i)
        lines.push_back({"line " + std::to_string(i), false});
    DisplayList list;
    list.device_width = 816;
    list.device_height = 1056;
    RecordingSurface s(list);
    EXPECT_TRUE(draw_text_page(s, 1, "TITLE", lines));
    EXPECT_TRUE(has_text(list, "line 49"));
    EXPECT_FALSE(has_text(list, "line 50"));
    EXPECT_NEAR(find_text(texts_of(list), "line 1")->y, 1.0 + 2 * pitch, 1e-5);
    EXPECT_FALSE(draw_text_page(s, 2, "TITLE", lines));
    EXPECT_TRUE(has_text(list, "line 50"));
    EXPECT_TRUE(has_text(list, "TITLE"));
}

TEST(TextPages, current_view_fills_the_page_width_with_its_ratio)
{
    const DisplayList g = box_graphic(800, 400);
    DisplayList list;
    list.device_width = 816;
    list.device_height = 1056;
    RecordingSurface s(list);
    draw_picture_page(s, g, "PLAN OF ACTIVE COLUMNS");
    EXPECT_TRUE(has_text(list, "PLAN OF ACTIVE COLUMNS"));
    // 6.5 inches wide (8.5 less two margins of 1), 400 / 800 of that high, from 1.5 inch down.
    bool red = false;
    for (const Box& b : boxes_of(list))
        if (b.colour == 255) {
            red = true;
            EXPECT_NEAR(std::min(b.x1, b.x2), 1.0, 1e-4);
            EXPECT_NEAR(std::max(b.x1, b.x2), 7.5, 1e-4);
            EXPECT_NEAR(std::min(b.y1, b.y2), 1.5, 1e-4);
            EXPECT_NEAR(std::max(b.y1, b.y2), 4.75, 1e-4);
        }
    EXPECT_TRUE(red);
}

TEST(TextPages, picture_lines_and_texts_move_into_the_box)
{
    DisplayList g;
    g.device_width = 100;
    g.device_height = 100;
    {
        RecordingSurface s(g);
        s.Cls();
        s.Scale(0, 1, 1, 0); // y up
        s.Line(0, 0, 1, 1, 65280);
        s.CurrentX(0.5);
        s.CurrentY(0.5);
        s.Print("mid");
    }
    DisplayList list;
    list.device_width = 816;
    list.device_height = 1056;
    RecordingSurface s(list);
    s.Scale(0, 0, 8.5, 11);
    draw_picture_in_box(s, g, {1, 2, 4, 4});
    bool green = false;
    for (const Segment& seg : segments_of(list))
        if (seg.colour == 65280) {
            green = true;
            // World (0, 0), the lower left, is the box's lower left (1, 6);
            // (1, 1) its upper right (5, 2).
            EXPECT_NEAR(seg.x1, 1, 1e-5);
            EXPECT_NEAR(seg.y1, 6, 1e-5);
            EXPECT_NEAR(seg.x2, 5, 1e-5);
            EXPECT_NEAR(seg.y2, 2, 1e-5);
        }
    EXPECT_TRUE(green);
    const auto texts = texts_of(list);
    const Text* mid = find_text(texts, "mid");
    ASSERT_NE(mid, nullptr);
    EXPECT_NEAR(mid->x, 3, 1e-5);
    EXPECT_NEAR(mid->y, 4, 1e-5);
    // The picture's 8 point font at 4 / 100 inch a unit: 8 * 96 * 0.04 = 30.72 points.
    bool scaled = false;
    for (const DrawItem* f : items_of(list, DrawOp::font))
        scaled = scaled || std::abs(list.coords[f->first] - 30.72f) < 1e-3f;
    EXPECT_TRUE(scaled);
}

} // namespace
} // namespace tobel::test
