// The search summary (tob_searchsummary, "Search Summary"): the table of
// every recorded trial with the best one marked, its display copy, and the
// summary saved as a text file.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr int summary_window_rows = 8;
constexpr std::array<const char*, 5> summary_headings = {
    "Factor of Safety:", "Y - Coord.:", "Z - Coord.:", "Radius:", "Slide Volume:"};

// The display copy: per trial n (index 0 unused) its five cells, F in
// "####0.000", Y, Z and radius in "####0.00", volume in "####0".
struct SummaryView {
    std::vector<std::array<std::string, 5>> cells;
    int top_trial = 1; // the trial in the first row of the window
};

// The five cells of trial n as first shown.
std::vector<std::string> summary_rows(const SearchState& s, int n);

// Opening the form: the display copy of every trial, top_trial 1.
SummaryView summary_open(const Project& p);

// One row of the 8-row window: "Surface " + Str(t) in red (255) for the best
// trial and black (0) otherwise; blank label and cells beyond the table.
struct SummaryRow {
    std::string label;
    std::int32_t colour = 0;
    std::array<std::string, 5> cells;
};
std::vector<SummaryRow> summary_refresh(const Project& p, const SummaryView& v);

// The scroll bar: visible with more than 7 trials, from 1 to count - 8 + 1.
bool summary_scroll_visible(const Project& p);
int summary_scroll_max(const Project& p);
void summary_scroll(SummaryView& v, int value);

// A number typed into the cell of trial n, column c (0..4): its leading
// number goes back into the display copy only.
void summary_type_cell(SummaryView& v, int n, int column, const std::string& text);

// The lines of the saved summary, the date given in the platform's short form.
std::vector<std::string> search_summary_lines(const Project& p, const std::string& date);

// Today in the short date form used by the summary: mm/dd/yyyy.
std::string short_date_today();

// Writes the summary to `path` (lines ending in CR LF) through a file beside
// it, renamed over it when complete. Throws RuntimeError on failure.
void save_search_summary(const Project& p, const std::string& path);

// "Save As": the save dialog ("Text Files (*.txt)|*.txt", overwrite prompt),
// then the file; a cancel ends it silently, a failure shows the "Error #" box.
void summary_save_as(const Project& p, Port& port);

} // namespace tobel
