#include "graphics/report_pages.h"

#include <algorithm>
#include <cmath>

#include "project/numtext.h"

namespace tobel {

namespace {

constexpr Colour ink = 0;
// The surface has no bold face: bold text is printed twice, the second time
// this far (inches) to the right, as a typewriter overstrikes.
constexpr double overstrike_inches = 0.008;
constexpr double text_pitch_inches = 1.25 * double(report_font_points) / 72.0;

// One text of a report line, at a character column (1-based), as a print
// statement's Tab places it.
struct Field {
    int column = 1;
    std::string text;
};

struct ReportLine {
    int section = 0;
    int entry = 0;
    std::vector<Field> fields;
    bool keep_with_next = false; // a heading: never the last line of a page
};

constexpr int end_section = 7; // the mark of a page after the last line

class LineBuilder {
  public:
    explicit LineBuilder(std::vector<ReportLine>& out) : out_(out) {}
    void section(int s)
    {
        section_ = s;
        entry_ = 0;
    }
    void line(std::vector<Field> fields) { out_.push_back({section_, entry_++, std::move(fields), false}); }
    // The line just added stays on the page of the line after it.
    void keep_with_next() { out_.back().keep_with_next = true; }
    void blank() { line({}); }
    void pair(const std::string& label, const std::string& value)
    {
        line({{1, label}, {report_value_tab, value}});
    }
    // Column names: they stay with the first row of their list.
    void heads(const std::vector<int>& at, const std::vector<std::string>& texts)
    {
        columns(at, texts);
        keep_with_next();
    }
    // Texts at the given columns; an empty text leaves its column empty.
    void columns(const std::vector<int>& at, const std::vector<std::string>& texts)
    {
        std::vector<Field> f;
        for (std::size_t i = 0; i < texts.size() && i < at.size(); ++i)
            if (!texts[i].empty())
                f.push_back({at[i], texts[i]});
        line(std::move(f));
    }

  private:
    std::vector<ReportLine>& out_;
    int section_ = 0, entry_ = 0;
};

void solution_lines(const Project& p, const ReportContext& ctx, LineBuilder& b)
{
    b.pair("Sliding Surface:", report_surface_text(p, ctx.solve));
    // The method has no label of its own: it stands under the surface, in the value column.
    b.line({{report_value_tab, report_method_text(p.solution_method)}});
    b.blank();
    b.pair("Factor of Safety:", report_value(p.factor_of_safety, "####0.00"));
    if (p.solution_method == 3)
        b.pair("Coefficient Lambda:", report_value(p.lambda_coef, "#0.00"));
    b.pair("Slide Volume:", report_value(p.slide_volume, "####0.00"));
    b.pair("Slide Weight:", report_value(p.slide_weight, "####0.00"));
    b.pair("Unbalanced Force:", report_value(p.lateral_unbalance, "####0.0000"));
    b.pair("Sliding Surface Area:", report_value(p.slide_area, "####0.00"));
    b.pair("No. of Active Columns:", report_value(float(p.active_columns), "####0"));
    b.pair("Rotation angle:", report_value(p.rotation_angle, "####0.00"));
    b.pair("Centre Y:", report_value(p.centre_y, "####0.00"));
    b.pair("Centre Z:", report_value(p.centre_z, "####0.00"));
    b.line({{1, "Negative normal stresses in " + format(p.neg_normal_percent, "##0") + "% of weight"}});
    if (p.head_water_sum != 0) {
        b.line({{1, "Total water thrust"}});
        b.keep_with_next();
        b.pair("     (toe submergence):", report_value(p.head_water_sum, "####0.00"));
    }
    if (p.crack_water_sum != 0) {
        b.line({{1, "Total water thrust"}});
        b.keep_with_next();
        b.pair("     (tension crack):", report_value(p.crack_water_sum, "####0.00"));
    }
    b.blank();
    if (p.unit_weight_water == 9.81f)
        b.pair("Unit Weight of Water:", "9.81 (kN/cu.m)");
    else if (p.unit_weight_water == 62.4f)
        b.pair("Unit Weight of Water:", "62.4  (pcf)");
    if (p.eq_coef != 0)
        b.pair("Hor. Earthquake Accel.:", report_value(p.eq_coef, "####0.00"));
}

// Piezo #, Press. Ratio and B-bar Coeff. from the packed mat_piezo.
std::vector<std::string> piezo_texts(const Project& p, int m)
{
    const float piezo = p.mat_piezo[m];
    return {str(piezo < 0 ? -piezo : 0.0f), str(piezo > 0 ? piezo : 0.0f), str(p.mat_bbar[m])};
}

std::vector<std::string> joined(std::vector<std::string> a, const std::vector<std::string>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// The columns of each list (character columns, chosen to fit the page).
const std::vector<int> material_columns = {1, 17, 30, 41, 56, 65, 78};
const std::vector<int> disc_columns = {1, 17, 28, 43, 52, 65};
const std::vector<int> aniso_columns = {1, 15, 27, 36, 45, 54, 64, 72, 84};
const std::vector<int> nonlinear_columns = {1, 15, 27, 35, 47, 59, 68, 77, 87};
const std::vector<int> force_columns = {1, 12, 30, 46, 60, 74};

void list_heading(LineBuilder& b, const char* heading)
{
    b.blank();
    b.blank();
    b.line({{1, heading}});
    b.keep_with_next();
}

void input_lists(const Project& p, LineBuilder& b)
{
    const int layers = std::min<int>(p.num_layers, material_capacity);
    auto count_of = [&](int type) {
        int n = 0;
        for (int m = 1; m <= layers; ++m)
            n += material_type(p, m) == type ? 1 : 0;
        return n;
    };
    const char* ws = "####0.00";

    b.section(1);
    if (count_of(1) > 0) {
        list_heading(b, "List of Materials:");
        b.heads(material_columns, {"Name", "Unit Weight", "Cohesion", "Friction Angle", "Piezo #",
                                   "Press. Ratio", "B-bar Coeff."});
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 1)
                b.columns(material_columns, joined({p.mat_name[m], report_value(p.mat_unit_weight[m], ws),
                                                    report_value(p.mat_cohesion[m], ws), str(p.mat_phi[m])},
                                                   piezo_texts(p, m)));
    }
    b.section(2);
    const int first_disc = p.num_layers + 1;
    const int last_disc = std::min<int>(p.num_layers + p.num_discs, material_capacity);
    if (last_disc >= first_disc) {
        list_heading(b, "List of Discontinuities:");
        b.heads(disc_columns,
                {"Name", "Cohesion", "Friction Angle", "Piezo #", "Press. Ratio", "B-bar Coeff."});
        for (int m = first_disc; m <= last_disc; ++m)
            b.columns(disc_columns,
                      joined({p.mat_name[m], report_value(p.mat_cohesion[m], ws), str(p.mat_phi[m])},
                             piezo_texts(p, m)));
    }
    b.section(3);
    if (count_of(2) > 0) {
        list_heading(b, "List of Anisotropic Materials:");
        b.heads(aniso_columns, {"Name", "Unit Weight", "Cohesion", "Cohesion", "Friction", "Fi Angle",
                                "Piezo #", "Press. Ratio", "B-bar Coeff."});
        b.heads(aniso_columns, {"", "", "", "Vert.", "Angle", "Vert."});
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 2)
                b.columns(aniso_columns,
                          joined({p.mat_name[m], report_value(p.mat_unit_weight[m], ws),
                                  report_value(p.mat_cohesion[m], ws), report_value(p.mat_cohesion_v[m], ws),
                                  str(p.mat_phi[m]), str(p.mat_phi_v[m])},
                                 piezo_texts(p, m)));
    }
    b.section(4);
    if (count_of(3) > 0) {
        list_heading(b, "List of Non-Linear Materials:");
        b.heads(nonlinear_columns, {"Name", "Unit Weight", "Piezo #", "Press. Ratio", "B-bar Coeff.",
                                    "Coeff. A", "Coeff. B", "Uniaxial", "Coeff. D"});
        b.heads(nonlinear_columns, {"", "", "", "", "", "", "", "Strength"});
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 3)
                b.columns(
                    nonlinear_columns,
                    joined(joined({p.mat_name[m], report_value(p.mat_unit_weight[m], ws)}, piezo_texts(p, m)),
                           {str(p.mat_coef_a[m]), str(p.mat_coef_b[m]), str(p.mat_uniaxial[m]),
                            str(p.mat_coef_d[m])}));
    }
    b.section(5);
    const int forces = std::min<int>(p.num_forces, force_capacity);
    if (forces > 0) {
        list_heading(b, "List of External Forces:");
        b.heads(force_columns, {"Name", "Horizontal Force", "Vertical Force", "X-Coordinate", "Y-Coordinate",
                                "Z-Coordinate"});
        for (int f = 1; f <= forces; ++f)
            b.columns(force_columns,
                      {"Force " + std::to_string(f), format(p.force_h[f], ws), format(p.force_v[f], ws),
                       format(p.force_x[f], ws), format(p.force_y[f], ws), format(p.force_z[f], ws)});
    }
}

void crack_lines(const Project& p, LineBuilder& b)
{
    b.section(6);
    if (p.crack_mode == 0)
        return;
    b.blank();
    b.blank();
    b.line({{1, "Tension Crack:"}});
    b.keep_with_next();
    if (p.crack_mode == 1)
        b.pair("Y-coordinate:", str(p.crack_y));
    else
        b.pair("Depth:", str(p.crack_depth));
    b.pair("% Filled by Water: ", format(p.crack_water_pct, "####0.00"));
}

std::vector<ReportLine> report_lines(const Project& p, const ReportContext& ctx)
{
    std::vector<ReportLine> out;
    LineBuilder b(out);
    b.section(0);
    b.pair("PROJECT:", p.project_title);
    b.pair("Input By: ", p.input_by);
    b.pair("Date: ", ctx.date);
    b.blank();
    if (ctx.solution_window)
        solution_lines(p, ctx, b);
    input_lists(p, b);
    crack_lines(p, b);
    return out;
}

// Lines a page holds, from the top margin down to `bottom` (inches).
int lines_fitting(double bottom)
{
    return int(std::floor((bottom - report_top_inches) / text_pitch_inches + 1e-9));
}

int page_capacity(int page, bool with_graphic)
{
    // Page one keeps a quarter inch clear above the graphic.
    if (page == 1 && with_graphic)
        return lines_fitting(graphic_top_inches - 0.25);
    return lines_fitting(report_bottom_inches);
}

// The end of a page that starts at line `start`: as many lines as it holds,
// less a heading that would stand at its foot without what it heads.
std::size_t page_end(const std::vector<ReportLine>& lines, std::size_t start, int capacity)
{
    std::size_t end = std::min(lines.size(), start + std::size_t(capacity));
    if (end < lines.size())
        while (end > start + 1 && lines[end - 1].keep_with_next)
            --end;
    return end;
}

std::size_t index_of(const std::vector<ReportLine>& lines, const PageMark& mark)
{
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].section == mark.section && lines[i].entry == mark.entry)
            return i;
    return lines.size();
}

PageMark mark_of(const std::vector<ReportLine>& lines, std::size_t i)
{
    if (i >= lines.size())
        return {true, end_section, 0};
    return {true, lines[i].section, lines[i].entry};
}

// The page window: inches times the multiplier, y downward.
void page_window(DrawSurface& s, double k)
{
    s.Cls();
    s.Scale(0, 0, page_width_inches * k, page_height_inches * k);
    s.ForeColor(ink);
    s.DrawWidth(1);
}

void text_at(DrawSurface& s, double x, double y, const std::string& text, bool bold, double k)
{
    s.CurrentX(x);
    s.CurrentY(y);
    s.Print(text);
    if (bold) {
        s.CurrentX(x + overstrike_inches * k);
        s.CurrentY(y);
        s.Print(text);
    }
}

bool has_picture(const DisplayList* graphic)
{
    return graphic != nullptr && !graphic->empty() && graphic->device_width > 0 && graphic->device_height > 0;
}

} // namespace

double report_multiplier(bool is_printer)
{
    return is_printer ? printer_multiplier : preview_multiplier;
}

PageSize page_device_size(double multiplier)
{
    return {float(page_width_inches * 96.0 * multiplier), float(page_height_inches * 96.0 * multiplier)};
}

void clear_page_marks(ReportPages& state)
{
    state.page_count = 0;
    state.marks = {};
    state.report_page = 1;
    state.page_line = 0;
}

PageBox report_graphic_box(const DisplayList& graphic, double k)
{
    const double ratio = double(graphic.device_height) / double(graphic.device_width);
    double w = graphic_width_inches, h = w * ratio;
    if (h > graphic_height_inches) {
        h = graphic_height_inches;
        w = h / ratio;
    }
    return {(graphic_left_inches + (graphic_width_inches - w) / 2) * k,
            (graphic_top_inches + (graphic_height_inches - h) / 2) * k, w * k, h * k};
}

void draw_picture_in_box(DrawSurface& s, const DisplayList& picture, const PageBox& box)
{
    const double dw = picture.device_width, dh = picture.device_height;
    if (dw <= 0 || dh <= 0)
        return;
    const double f = box.width / dw; // page units per device unit of the picture
    // World to the picture's device units, for the window in force; a
    // picture starts in the unit window, as when it is replayed.
    double left = 0, top = 0, sx = dw, sy = dh;
    auto to_page_x = [&](double x) { return box.left + (x - left) * sx * f; };
    auto to_page_y = [&](double y) { return box.top + (y - top) * sy * f; };
    const Colour fore = s.ForeColor();
    const float report_points = s.font_points();
    s.set_font("", float(8 * 96 * f));

    for (const DrawItem& item : picture.items) {
        if (item.first + item.count > picture.coords.size())
            continue;
        const float* c = picture.coords.data() + item.first;
        switch (item.op) {
        case DrawOp::cls:
            s.fill_box(box.left, box.top, box.left + box.width, box.top + box.height, item.colour);
            break;
        case DrawOp::scale:
            if (item.count >= 4) {
                left = c[0];
                top = c[1];
                const double w = double(c[2]) - c[0], h = double(c[3]) - c[1];
                sx = w != 0 ? dw / w : 0;
                sy = h != 0 ? dh / h : 0;
            }
            break;
        case DrawOp::lines: {
            s.DrawWidth(item.width);
            bool have_last = false;
            double last_x = 0, last_y = 0;
            for (std::size_t i = 0; i + 1 < item.count; i += 2) {
                const double x = to_page_x(c[i]), y = to_page_y(c[i + 1]);
                if (!std::isfinite(x) || !std::isfinite(y)) {
                    have_last = false; // a point that is not finite breaks the line
                    continue;
                }
                if (have_last)
                    s.Line(last_x, last_y, x, y, item.colour);
                last_x = x;
                last_y = y;
                have_last = true;
            }
            break;
        }
        case DrawOp::dot:
            if (item.count >= 2) {
                s.DrawWidth(item.width);
                s.ForeColor(item.colour);
                s.PSet(to_page_x(c[0]), to_page_y(c[1]));
            }
            break;
        case DrawOp::polygon: {
            std::vector<DevicePoint> points;
            for (std::size_t i = 0; i + 1 < item.count; i += 2)
                points.push_back({int(std::lround(s.device_x(box.left + c[i] * f))),
                                  int(std::lround(s.device_y(box.top + c[i + 1] * f)))});
            s.ForeColor(Colour(item.text));
            s.DrawWidth(item.width);
            s.Polygon(points, item.colour);
            break;
        }
        case DrawOp::fill_box:
            if (item.count >= 4)
                s.fill_box(to_page_x(c[0]), to_page_y(c[1]), to_page_x(c[2]), to_page_y(c[3]), item.colour);
            break;
        case DrawOp::text:
            if (item.count >= 2 && item.text < picture.texts.size()) {
                s.ForeColor(item.colour);
                s.CurrentX(to_page_x(c[0]));
                s.CurrentY(to_page_y(c[1]));
                s.Print(picture.texts[item.text]);
            }
            break;
        case DrawOp::font:
            if (item.count >= 1)
                s.set_font(item.text < picture.texts.size() ? picture.texts[item.text] : "",
                           float(double(c[0]) * 96 * f));
            break;
        case DrawOp::image:
            if (item.count >= 4)
                s.draw_image(int(item.text), to_page_x(c[0]), to_page_y(c[1]), to_page_x(c[2]),
                             to_page_y(c[3]));
            break;
        }
    }
    // A thin frame round the graphic sets it off from the text.
    s.DrawWidth(1);
    s.Line(box.left, box.top, box.left + box.width, box.top, ink);
    s.LineTo(box.left + box.width, box.top + box.height, ink);
    s.LineTo(box.left, box.top + box.height, ink);
    s.LineTo(box.left, box.top, ink);
    s.ForeColor(fore);
    s.set_font(page_font, report_points);
}

bool draw_report(DrawSurface& s, ReportPages& state, int page, bool is_printer, const Project& p,
                 const ReportContext& ctx, const DisplayList* graphic)
{
    const double k = report_multiplier(is_printer);
    const bool with_graphic = has_picture(graphic);
    const std::vector<ReportLine> lines = report_lines(p, ctx);
    page_window(s, k);
    s.set_font(page_font, float(report_font_points * k));
    state.page_line = 0;
    if (page < 1 || page > report_mark_capacity)
        return false;
    // 1. Where the page begins: its mark, or the pages before it laid out.
    state.marks[1] = {true, 0, 0};
    for (int q = 1; q < page; ++q) {
        if (state.marks[std::size_t(q + 1)].set)
            continue;
        const std::size_t start = index_of(lines, state.marks[std::size_t(q)]);
        state.marks[std::size_t(q + 1)] =
            mark_of(lines, page_end(lines, start, page_capacity(q, with_graphic)));
    }
    std::size_t i = index_of(lines, state.marks[std::size_t(page)]);
    if (i >= lines.size())
        return false;
    // 2. The lines of the page, labels at the margin, values at their tab.
    const std::size_t end = page_end(lines, i, page_capacity(page, with_graphic));
    const double left = report_left_inches * k;
    for (; i < end; ++i) {
        const double y = (report_top_inches + state.page_line * text_pitch_inches) * k;
        for (const Field& f : lines[i].fields)
            text_at(s, left + s.TextWidth(std::string(std::size_t(f.column - 1), ' ')), y, f.text, false, k);
        ++state.page_line;
    }
    // 3. The graphic on page one.
    if (page == 1 && with_graphic)
        draw_picture_in_box(s, *graphic, report_graphic_box(*graphic, k));
    // 4. The next page begins where this one ended.
    if (page < report_mark_capacity)
        state.marks[std::size_t(page + 1)] = mark_of(lines, i);
    return i < lines.size() && page < report_mark_capacity;
}

bool report_previous_page(ReportPages& state)
{
    if (state.report_page <= 1)
        return false;
    --state.report_page;
    state.page_line = 0;
    return true;
}

bool report_next_page(ReportPages& state, bool more_after)
{
    if (!more_after)
        return false;
    ++state.report_page;
    state.page_line = 0;
    return true;
}

// ---- The printed search summary ----

namespace {

constexpr double summary_title_top = 0.75;
constexpr double summary_labels_top = 1.125;
constexpr double summary_first_rule = 1.75;

// The top of the column heads on a page; the rule above them is an eighth
// of an inch higher, the rule below them one pitch lower.
double heads_top(int page)
{
    return page == 1 ? summary_first_rule + 0.125 : summary_title_top;
}

double first_row_top(int page)
{
    return heads_top(page) + summary_pitch_inches + 0.0625;
}

int rows_on_page(int page)
{
    // A line that would pass 0.7 inch from the bottom starts a new page.
    const double last_top = page_height_inches - summary_bottom_gap_inches - summary_pitch_inches;
    return int(std::floor((last_top - first_row_top(page)) / summary_pitch_inches + 1e-9)) + 1;
}

void rule(DrawSurface& s, double y)
{
    s.Line(summary_left_inches, y, summary_right_inches, y, ink);
}

float summary_at(const std::vector<float>& v, int n)
{
    return n >= 0 && std::size_t(n) < v.size() ? v[std::size_t(n)] : 0.0f;
}

} // namespace

bool draw_summary_page(DrawSurface& s, int page, const Project& p, const std::string& date)
{
    const SearchState& st = p.search;
    page_window(s, 1);
    if (page < 1)
        return false;
    // 1. The trials of this page.
    int first = 1;
    for (int q = 1; q < page; ++q)
        first += rows_on_page(q);
    const int last = std::min<int>(st.summary_count, first + rows_on_page(page) - 1);
    if (page > 1 && first > st.summary_count)
        return false;
    // 2. Page one: the heading, centred, 11 points bold, and the labels.
    if (page == 1) {
        const std::string title = p.view_mode == 10  ? "AUTO SEARCH SUMMARY"
                                  : p.view_mode == 9 ? "GRID SEARCH SUMMARY"
                                                     : "";
        s.set_font(page_font, 11);
        text_at(s, (page_width_inches - s.TextWidth(title)) / 2, summary_title_top, title, true, 1);
        s.set_font(page_font, report_font_points);
        const std::array<std::pair<std::string, std::string>, 3> labels = {
            {{"PROJECT:", p.project_title}, {"Input By:", p.input_by}, {"Date:", date}}};
        double y = summary_labels_top;
        for (const auto& [label, value] : labels) {
            text_at(s, summary_label_inches, y, label, false, 1);
            text_at(s, summary_label_inches + s.TextWidth(label + " "), y, value, false, 1);
            y += summary_pitch_inches;
        }
    }
    s.set_font(page_font, report_font_points);
    // 3. The column heads between two rules.
    const double top = heads_top(page);
    rule(s, top - 0.125);
    for (std::size_t c = 0; c < summary_column_heads.size(); ++c)
        text_at(s, summary_column_inches[c], top, summary_column_heads[c], false, 1);
    rule(s, top + summary_pitch_inches);
    // 4. One line per trial, the best one bold.
    double y = first_row_top(page);
    for (int n = first; n <= last; ++n) {
        const bool bold = n == st.best_trial;
        // The label in the signed form, as the table on the screen shows it.
        text_at(s, summary_left_inches, y, "Surface " + str(long(n)), bold, 1);
        const std::array<std::string, 5> values = {format(summary_at(st.summary_fos, n), "##,##0.000"),
                                                   format(summary_at(st.summary_y, n), "##,##0.00"),
                                                   format(summary_at(st.summary_z, n), "##,##0.00"),
                                                   format(summary_at(st.summary_radius, n), "##,##0.00"),
                                                   format(summary_at(st.summary_volume, n), "##,##0.00")};
        for (std::size_t c = 0; c < values.size(); ++c)
            text_at(s, summary_column_inches[c], y, values[c], bold, 1);
        y += summary_pitch_inches;
    }
    // 5. The page ends with a rule.
    rule(s, y);
    return last < st.summary_count;
}

// ---- Text pages and the current view ----

namespace {

constexpr double text_left = 1.0, text_top = 1.0, text_bottom = 10.0;

int text_lines_on_page()
{
    // The title and a blank line take the first two lines of each page.
    return int(std::floor((text_bottom - text_top) / text_pitch_inches + 1e-9)) - 2;
}

} // namespace

bool draw_text_page(DrawSurface& s, int page, const std::string& title, const std::vector<PageText>& lines)
{
    page_window(s, 1);
    s.set_font(page_font, report_font_points);
    const int per_page = text_lines_on_page();
    const std::size_t first = std::size_t(std::max(page - 1, 0)) * std::size_t(per_page);
    if (page < 1 || (page > 1 && first >= lines.size()))
        return false;
    text_at(s, text_left, text_top, title, true, 1);
    double y = text_top + 2 * text_pitch_inches;
    std::size_t i = first;
    for (; i < lines.size() && i < first + std::size_t(per_page); ++i) {
        text_at(s, text_left, y, lines[i].text, lines[i].bold, 1);
        y += text_pitch_inches;
    }
    return i < lines.size();
}

std::vector<PageText> printout_page_text(const std::vector<std::string>& lines)
{
    std::vector<PageText> out;
    for (const auto& line : lines)
        out.push_back(
            {line, line == "The Following are Total Forces:" || line == "Solution Acceptability Indices:"});
    return out;
}

void draw_picture_page(DrawSurface& s, const DisplayList& picture, const std::string& caption)
{
    page_window(s, 1);
    s.set_font(page_font, 11);
    text_at(s, text_left, text_top, caption, true, 1);
    s.set_font(page_font, report_font_points);
    if (picture.device_width <= 0 || picture.device_height <= 0)
        return;
    // The page's width within the margins, and no lower than an inch from the bottom.
    const double max_w = page_width_inches - 2 * text_left, max_h = text_bottom - (text_top + 0.5);
    const double ratio = double(picture.device_height) / double(picture.device_width);
    double w = max_w, h = w * ratio;
    if (h > max_h) {
        h = max_h;
        w = h / ratio;
    }
    draw_picture_in_box(s, picture, {text_left + (max_w - w) / 2, text_top + 0.5, w, h});
}

} // namespace tobel
