// The solution report as a text file: the head, the solution when its window
// exists, the input lists by type, the external forces and the tension crack.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"

namespace tobel {

// Which kind of solve made the solution window.
enum class ReportSolve { single_trial, grid_search, auto_search };

struct ReportContext {
    bool solution_window = false; // false: head and input lists only
    ReportSolve solve = ReportSolve::single_trial;
    std::string date; // the text after "Date: "
};

// Today as the runtime's date text, "mm-dd-yyyy".
std::string report_date_text();

// A value written S(x, f): x formatted by the mask, then in the signed number
// form, so "####0.00" gives " 1.2" for 1.2 and " .5" for 0.5.
std::string report_value(float x, const char* mask);

// The surface line of the solution ("Single ellipsoidal sliding surface",
// "Critical surface by grid search", ...) and its method line, shared by
// the text report and the printed pages.
const char* report_surface_text(const Project& p, ReportSolve solve);
const char* report_method_text(int method);

// The lines of the report, without line ends.
std::vector<std::string> report_text_lines(const Project& p, const ReportContext& ctx);

// Writes the lines with CR LF line ends through the safe save. Throws
// RuntimeError(err_path_access, path) when the file cannot be written.
void write_report_text(const Project& p, const std::string& path, const ReportContext& ctx);

} // namespace tobel
