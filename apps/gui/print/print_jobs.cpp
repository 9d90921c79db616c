#include "print/print_jobs.h"

#include <memory>

#include "dialogs/report_graphics_form.h"
#include "graphics/report_pages.h"
#include "print/page_printer.h"
#include "print/report_dialogs.h"
#include "search/summary.h"

namespace tobel::gui {

void report_command(QWidget* parent, Project& p, Port& port, int report_mode, const ReportContext& ctx)
{
    // 1. "Report Graphics": Cancel ends the command.
    ReportGraphicsDialog choose(parent, p, port);
    if (choose.exec() != QDialog::Accepted)
        return;
    const DisplayList* graphic = report_graphic_picture(p, choose.graphic());
    // 2. The preview, whose Print prints, or straight to the print dialog.
    if (report_mode == 0) {
        ReportPreviewDialog preview(parent, p, ctx, graphic);
        preview.exec();
    } else {
        print_report_pages(parent, p, ctx, graphic);
    }
}

bool write_report_pdf(const Project& p, const ReportContext& ctx, int graphic, const std::string& path)
{
    const DisplayList* picture = report_graphic_picture(p, graphic);
    auto state = std::make_shared<ReportPages>();
    clear_page_marks(*state);
    return write_pages_pdf(path, [&](DrawSurface& s, int page) {
        state->report_page = std::int16_t(page);
        return draw_report(s, *state, page, true, p, ctx, picture);
    });
}

void print_picture(QWidget* parent, const DisplayList& picture, const std::string& caption)
{
    print_with_dialog(parent, [&](DrawSurface& s, int) {
        draw_picture_page(s, picture, caption);
        return false;
    });
}

void print_text_lines(QWidget* parent, const std::vector<std::string>& lines, const std::string& title)
{
    const std::vector<PageText> text = printout_page_text(lines);
    print_with_dialog(parent, [&](DrawSurface& s, int page) { return draw_text_page(s, page, title, text); });
}

void print_search_summary(QWidget* parent, const Project& p)
{
    const std::string date = short_date_today();
    print_with_dialog(parent, [&](DrawSurface& s, int page) { return draw_summary_page(s, page, p, date); });
}

bool write_summary_pdf(const Project& p, const std::string& path)
{
    const std::string date = short_date_today();
    return write_pages_pdf(path,
                           [&](DrawSurface& s, int page) { return draw_summary_page(s, page, p, date); });
}

} // namespace tobel::gui
