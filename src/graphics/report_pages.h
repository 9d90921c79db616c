// The printed pages of the program, drawn on a drawing surface so that a
// page is kept as a display list: the solution report with its graphic on
// page one (preview or printer), the printed search summary, and plain text
// pages (the solution printout) and the current view on a page.
//
// Pages are Letter, 8.5 by 11 inches. A page is drawn in a world window of
// inches times the multiplier (1 on a printer, 6.8 / 11 on a preview), y
// growing downward, on a surface of 96 device units an inch times the
// multiplier, so that text measures the same in both.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "graphics/draw_surface.h"
#include "project/project.h"
#include "report/report.h"

namespace tobel {

constexpr double page_width_inches = 8.5;
constexpr double page_height_inches = 11.0;
constexpr double preview_multiplier = 6.8 / 11.0;
constexpr double printer_multiplier = 1.0;
// The serif face of every printed page.
constexpr const char* page_font = "Times New Roman";
constexpr float report_font_points = 10;

// The multiplier of a report page.
double report_multiplier(bool is_printer);

// The device size of a page surface (96 units an inch times the multiplier):
// the size the display list of a page is made with.
struct PageSize {
    float width = 0, height = 0;
};
PageSize page_device_size(double multiplier);

// Layout of the report page, in inches before the multiplier (the place of
// the graphic, the margins and the columns of the lists are this system's
// own): labels at the left margin, values at character column 48.
constexpr double report_left_inches = 0.75;
constexpr double report_top_inches = 0.75;
constexpr double report_bottom_inches = 10.25; // no line reaches below this
constexpr int report_value_tab = 48;
// The graphic of page one is fitted, its width to height ratio kept and
// centred, in this box; with a graphic the text of page one stops above it.
constexpr double graphic_left_inches = 1.0, graphic_top_inches = 6.0;
constexpr double graphic_width_inches = 6.5, graphic_height_inches = 4.0;
constexpr int report_mark_capacity = 10;

// Where a page begins: the section (0 the head and solution, 1 to 5 the
// lists of materials, discontinuities, anisotropic and non-linear materials
// and forces, 6 the tension crack) and the line within it.
struct PageMark {
    bool set = false;
    int section = 0;
    int entry = 0;
};

// The report's printing state (report_mode, report_page, page_line and the
// page marks of pages 1 to 10).
struct ReportPages {
    std::int16_t report_mode = 0; // 0 preview, 1 print, 2 save
    std::int16_t report_page = 1;
    std::int16_t page_line = 0;
    std::array<PageMark, report_mark_capacity + 1> marks{};
    int page_count = 0; // pages sent to a printer
};

// Before printing: page count and marks cleared, report_page 1, page_line 0.
void clear_page_marks(ReportPages& state);

// Draws page `page` of the report on `target`: Cls, the page window, then
// the lines of the page from its mark, with `graphic` (a kept picture, or
// none) on page one. The mark of the next page is set where this page ends.
// Returns true when more pages follow. A page whose start is not yet known
// is found by laying out the pages before it. Pages beyond the tenth are
// not drawn: the table has 10 marks.
bool draw_report(DrawSurface& target, ReportPages& state, int page, bool is_printer, const Project& p,
                 const ReportContext& ctx, const DisplayList* graphic);

// The box the graphic takes on page one (world units of the page, that is
// inches times the multiplier): the graphic box narrowed to its ratio.
struct PageBox {
    double left = 0, top = 0, width = 0, height = 0;
};
PageBox report_graphic_box(const DisplayList& graphic, double multiplier);

// A kept picture drawn again on a page surface in a box of the page's world
// window, every item moved and scaled into it.
void draw_picture_in_box(DrawSurface& target, const DisplayList& picture, const PageBox& box);

// Print Preview's buttons for the previous and next page: report_page moves
// by one (not below 1, and not beyond the last page: `more_after` tells
// whether the page shown has a next one), page_line 0. True when it moved,
// and the page is to be drawn again.
bool report_previous_page(ReportPages& state);
bool report_next_page(ReportPages& state, bool more_after);

// The printed search summary (Command1 "Print"). Layout in inches.
constexpr double summary_label_inches = 2.25; // "PROJECT:", "Input By:", "Date:"
constexpr double summary_pitch_inches = 0.1875;
constexpr double summary_bottom_gap_inches = 0.7;
constexpr double summary_left_inches = 0.75, summary_right_inches = 7.75;
constexpr std::array<double, 5> summary_column_inches = {2.0, 3.3, 4.4, 5.5, 6.6};
constexpr std::array<const char*, 5> summary_column_heads = {"Factor of Safety", "Y-coord.", "Z-coord.",
                                                             "Radius", "Slide Volume"};

// Draws page `page` (from 1) of the printed summary; true when more follow.
bool draw_summary_page(DrawSurface& target, int page, const Project& p, const std::string& date);

// Lines of text on pages (the solution printout): the title on top of each
// page, then the lines at the text pitch; a line marked bold is overstruck.
struct PageText {
    std::string text;
    bool bold = false;
};
bool draw_text_page(DrawSurface& target, int page, const std::string& title,
                    const std::vector<PageText>& lines);

// The lines of the solution printout as printed: its two headings bold.
std::vector<PageText> printout_page_text(const std::vector<std::string>& lines);

// The current view on one page: its caption on top, the picture below in
// the page's width, its ratio kept.
void draw_picture_page(DrawSurface& target, const DisplayList& picture, const std::string& caption);

} // namespace tobel
