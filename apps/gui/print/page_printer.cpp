#include "print/page_printer.h"

#include <QApplication>
#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>

#include "graphics/recording_surface.h"
#include "graphics/report_pages.h"
#include "qt/qt_app.h"
#include "qt/replay.h"

namespace tobel::gui {

void prepare_page_fonts()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    QFont::insertSubstitutions(page_font, {"Liberation Serif", "Tinos", "DejaVu Serif"});
}

void set_letter_pages(QPagedPaintDevice& device)
{
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                     QMarginsF(0, 0, 0, 0), QPageLayout::Inch));
}

void set_letter_pages(QPrinter& printer)
{
    printer.setFullPage(true);
    set_letter_pages(static_cast<QPagedPaintDevice&>(printer));
}

bool paint_pages(QPagedPaintDevice& device, const PageDrawer& draw, int max_pages)
{
    prepare_page_fonts();
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const PageSize size = page_device_size(printer_multiplier);
    for (int page = 1; page <= max_pages; ++page) {
        DisplayList list;
        list.device_width = size.width;
        list.device_height = size.height;
        bool more = false;
        {
            RecordingSurface surface(list);
            more = draw(surface, page);
        }
        // The page's list stretched over the whole sheet, whose size in
        // device pixels the painter's device gives.
        replay(list, painter, QSizeF(painter.device()->width(), painter.device()->height()));
        if (!more)
            break;
        if (!device.newPage())
            return false;
    }
    return painter.end();
}

bool print_with_dialog(QWidget* parent, const PageDrawer& draw)
{
    QPrinter printer(QPrinter::HighResolution);
    set_letter_pages(printer);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = paint_pages(printer, draw);
    QApplication::restoreOverrideCursor();
    return ok;
}

bool write_pages_pdf(const std::string& path, const PageDrawer& draw)
{
    ensure_gui_application();
    QPdfWriter pdf(QString::fromStdString(path));
    pdf.setResolution(300);
    pdf.setCreator("TOBEL-3");
    set_letter_pages(pdf);
    return paint_pages(pdf, draw);
}

} // namespace tobel::gui
