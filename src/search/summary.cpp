#include "search/summary.h"

#include <cstddef>
#include <cstdlib>
#include <ctime>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/safe_save.h"

namespace tobel {

static float at(const std::vector<float>& v, int n)
{
    return n >= 0 && std::size_t(n) < v.size() ? v[std::size_t(n)] : 0.0f;
}

std::vector<std::string> summary_rows(const SearchState& s, int n)
{
    return {format(at(s.summary_fos, n), "####0.000"), format(at(s.summary_y, n), "####0.00"),
            format(at(s.summary_z, n), "####0.00"), format(at(s.summary_radius, n), "####0.00"),
            format(at(s.summary_volume, n), "####0")};
}

SummaryView summary_open(const Project& p)
{
    SummaryView v;
    const int count = p.search.summary_count;
    v.cells.assign(std::size_t(count > 0 ? count : 0) + 1, {});
    for (int n = 1; n <= count; ++n) {
        const auto row = summary_rows(p.search, n);
        for (std::size_t c = 0; c < 5; ++c)
            v.cells[std::size_t(n)][c] = row[c];
    }
    v.top_trial = 1;
    return v;
}

std::vector<SummaryRow> summary_refresh(const Project& p, const SummaryView& v)
{
    std::vector<SummaryRow> rows(summary_window_rows);
    for (int row = 1; row <= summary_window_rows; ++row) {
        const int t = row + v.top_trial - 1;
        SummaryRow& out = rows[std::size_t(row - 1)];
        if (t > p.search.summary_count || t < 1 || std::size_t(t) >= v.cells.size())
            continue;
        out.label = "Surface " + str(long(t));
        out.colour = t == p.search.best_trial ? 255 : 0;
        out.cells = v.cells[std::size_t(t)];
    }
    return rows;
}

bool summary_scroll_visible(const Project& p)
{
    return p.search.summary_count > 7;
}

int summary_scroll_max(const Project& p)
{
    return p.search.summary_count - summary_window_rows + 1;
}

void summary_scroll(SummaryView& v, int value)
{
    v.top_trial = value < 1 ? 1 : value;
}

void summary_type_cell(SummaryView& v, int n, int column, const std::string& text)
{
    if (n < 1 || std::size_t(n) >= v.cells.size() || column < 0 || column > 4)
        return;
    v.cells[std::size_t(n)][std::size_t(column)] = general_text_double(val(text));
}

// A value as the file carries it: formatted by the mask, read back as a
// number and written in the signed text form, so that it has a leading blank
// and no trailing zeros.
static std::string file_value(float x, const char* mask)
{
    std::string t = format(x, mask);
    std::string plain;
    for (char ch : t)
        if (ch != ',')
            plain += ch;
    return str(std::strtod(plain.c_str(), nullptr));
}

std::vector<std::string> search_summary_lines(const Project& p, const std::string& date)
{
    const SearchState& s = p.search;
    std::vector<std::string> lines;
    lines.push_back(p.view_mode == 10  ? "AUTO SEARCH SUMMARY"
                    : p.view_mode == 9 ? "GRID SEARCH SUMMARY"
                                       : "");
    lines.emplace_back();
    lines.push_back(PrintLine().text("PROJECT:").text(p.project_title).str());
    lines.push_back(PrintLine().text("Input By: ").text(p.input_by).str());
    lines.push_back(PrintLine().text("Date: ").text(date).str());
    lines.emplace_back();
    lines.emplace_back("Surface #, Factor of Safety, Y-coord., Z-coord., Radius, Slide Volume");
    for (int n = 1; n <= s.summary_count; ++n)
        lines.push_back("Surface " + str(long(n)) + "," + file_value(at(s.summary_fos, n), "##,##0.000") +
                        "," + file_value(at(s.summary_y, n), "##,##0.00") + "," +
                        file_value(at(s.summary_z, n), "##,##0.00") + "," +
                        file_value(at(s.summary_radius, n), "##,##0.00") + "," +
                        file_value(at(s.summary_volume, n), "##,##0.00"));
    return lines;
}

std::string short_date_today()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buf[16];
    std::strftime(buf, sizeof buf, "%m/%d/%Y", &local);
    return buf;
}

void save_search_summary(const Project& p, const std::string& path)
{
    std::string text;
    for (const std::string& line : search_summary_lines(p, short_date_today()))
        text += line + "\r\n";
    write_file_safely(path, text);
}

void summary_save_as(const Project& p, Port& port)
{
    const auto path = port.save_file_dialog("Text Files (*.txt)|*.txt", "", true);
    if (!path)
        return;
    BusyPointer busy(port);
    try {
        save_search_summary(p, *path);
    } catch (const RuntimeError& e) {
        port.busy(false);
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
    }
}

} // namespace tobel
