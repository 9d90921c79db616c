#include "print/print_jobs.h"

namespace tobel::gui {

void report_command(QWidget*, Project&, Port&, int, const ReportContext&) {}
bool write_report_pdf(const Project&, const ReportContext&, int, const std::string&)
{
    return false;
}
void print_picture(QWidget*, const DisplayList&, const std::string&) {}
void print_text_lines(QWidget*, const std::vector<std::string>&, const std::string&) {}

} // namespace tobel::gui
