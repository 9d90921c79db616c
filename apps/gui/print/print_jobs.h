// Printing and preview of the desktop program: the report with its graphic
// on page one, the search summary, the solution printout and the current
// view, on Letter pages, to a printer or a PDF file.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "project/display_list.h"
#include "project/project.h"
#include "report/report.h"
#include "ui/port.h"

namespace tobel::gui {

// Results > Preview Report (report_mode 0) and Print Report (1): the
// "Report Graphics" dialog, then the preview or the print dialog.
void report_command(QWidget* parent, Project& p, Port& port, int report_mode, const ReportContext& ctx);

// The report with `graphic` (1 "3-d Sliding Surface" .. 5 "X-ray View", 0 for
// none) on page one, written as a PDF without any dialog. False when the
// file cannot be written.
bool write_report_pdf(const Project& p, const ReportContext& ctx, int graphic, const std::string& path);

// File > Print > Current view: the kept picture on one page.
void print_picture(QWidget* parent, const DisplayList& picture, const std::string& caption);

// Lines of text (the search summary, the solution printout) on pages.
void print_text_lines(QWidget* parent, const std::vector<std::string>& lines, const std::string& title);

// The search summary's "Print": the print dialog, then the summary's pages.
void print_search_summary(QWidget* parent, const Project& p);

// The printed search summary written as a PDF without any dialog.
bool write_summary_pdf(const Project& p, const std::string& path);

} // namespace tobel::gui
