// The report and the search summary written as PDF files: an example opened
// and solved through the core, the PDF rendered back with pdftoppm, and its
// page one read for ink in the text band and in the graphic's box.
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "commands/commands.h"
#include "commands/surface_commands.h"
#include "dialogs/report_graphics_form.h"
#include "graphics/picture_hooks.h"
#include "graphics/report_pages.h"
#include "print/print_jobs.h"
#include "support/scripted_port.h"

namespace {

// A port that takes pictures, as the desktop program's does.
class PicturePort : public tobel::test::ScriptedPort {
  public:
    tobel::DrawHooks* draw_hooks() override { return &hooks_; }

  private:
    tobel::PictureHooks hooks_{*this};
};

// Non-white pixels of `image` in a box given in inches, at `dpi`.
int ink_in(const QImage& image, double left, double top, double right, double bottom, int dpi)
{
    int n = 0;
    for (int y = int(top * dpi); y < int(bottom * dpi) && y < image.height(); ++y)
        for (int x = int(left * dpi); x < int(right * dpi) && x < image.width(); ++x)
            n += QColor(image.pixel(x, y)).lightness() < 230 ? 1 : 0;
    return n;
}

// Page one of a PDF as an image at `dpi`, through pdftoppm.
QImage page_one(const QString& pdf, const QString& prefix, int dpi)
{
    QProcess run;
    run.start("pdftoppm",
              {"-r", QString::number(dpi), "-f", "1", "-l", "1", "-singlefile", "-png", pdf, prefix});
    if (!run.waitForFinished(60000) || run.exitCode() != 0)
        return {};
    return QImage(prefix + ".png");
}

// Where a look at the pages is wanted, a copy of them goes there.
void keep_for_looking(const QString& png, const QString& name)
{
    const QByteArray dir = qgetenv("TOBEL_LOOK_DIR");
    if (!dir.isEmpty()) {
        QFile::remove(QString::fromUtf8(dir) + "/" + name);
        QFile::copy(png, QString::fromUtf8(dir) + "/" + name);
    }
}

int pdf_page_count(const QString& pdf)
{
    QProcess run;
    run.start("pdfinfo", {pdf});
    if (!run.waitForFinished(60000))
        return -1;
    for (const QByteArray& line : run.readAllStandardOutput().split('\n'))
        if (line.startsWith("Pages:"))
            return line.mid(6).trimmed().toInt();
    return -1;
}

} // namespace

class PrintPdfTest : public QObject {
    Q_OBJECT

  private slots:
    void report_pdf_of_a_solved_example_shows_text_and_the_plan();
    void report_pdf_of_a_3d_example_carries_the_sliding_surface();
    void report_pdf_without_a_graphic_leaves_the_box_empty();
    void report_pdf_to_a_missing_folder_fails();
    void summary_pdf_runs_onto_a_second_page();
};

void PrintPdfTest::report_pdf_of_a_solved_example_shows_text_and_the_plan()
{
    using namespace tobel;
    PicturePort port;
    Project p;
    main_load(p);
    p.data_file_path = std::string(TOBEL_SOURCE_DIR) + "/examples/slope2d-homogeneous.tob";
    p.open_recent_pending = -1;
    file_open(p, port);
    QVERIFY(confirm_surface(p, port, SurfaceCommand::ellipsoid));
    QVERIFY(solve_single_trial(p, port));
    QVERIFY(p.factor_of_safety > 1.0f);
    // The plan of active columns was drawn with the solution.
    QVERIFY(report_graphic_picture(p, 2) != nullptr);
    QVERIFY(!p.pictures.plan_active.picture.empty());

    QTemporaryDir dir;
    const QString pdf = dir.filePath("report.pdf");
    ReportContext ctx;
    ctx.solution_window = true;
    ctx.date = "01-02-2026";
    QVERIFY(gui::write_report_pdf(p, ctx, 2, pdf.toStdString()));
    // 72 pixels an inch: the Letter page is 612 by 792.
    const QImage image = page_one(pdf, dir.filePath("page"), 72);
    QVERIFY(!image.isNull());
    QCOMPARE(image.width(), 612);
    QCOMPARE(image.height(), 792);
    keep_for_looking(dir.filePath("page.png"), "report-2d-page1.png");
    // The head and the solution: text from 0.75 inch down, left of 8 inches.
    QVERIFY(ink_in(image, 0.75, 0.7, 8.0, 2.0, 72) > 300);
    // The values at tab 48 (4.34 inches) have ink of their own.
    QVERIFY(ink_in(image, 4.3, 0.7, 8.0, 2.0, 72) > 50);
    // The plan in its box, 1 to 7.5 inches across, 6 to 10 down.
    QVERIFY(ink_in(image, 1.05, 6.05, 7.45, 9.95, 72) > 2000);
    // The left margin stays clean, and nothing stands between the text of
    // page one (which ends above 5.75 inches) and the box.
    QCOMPARE(ink_in(image, 0.0, 0.0, 0.7, 11.0, 72), 0);
    QCOMPARE(ink_in(image, 0.0, 5.8, 8.5, 5.95, 72), 0);
}

void PrintPdfTest::report_pdf_of_a_3d_example_carries_the_sliding_surface()
{
    using namespace tobel;
    PicturePort port;
    Project p;
    main_load(p);
    p.data_file_path = std::string(TOBEL_SOURCE_DIR) + "/examples/slope3d-layers-piezo-force.tob";
    p.open_recent_pending = -1;
    file_open(p, port);
    QVERIFY(confirm_surface(p, port, SurfaceCommand::ellipsoid));
    QVERIFY(solve_single_trial(p, port));
    // The solution drew the sliding surface in the isometry window.
    QVERIFY(report_graphic_picture(p, 1) != nullptr);
    QTemporaryDir dir;
    const QString pdf = dir.filePath("report3d.pdf");
    ReportContext ctx;
    ctx.solution_window = true;
    ctx.date = "01-02-2026";
    QVERIFY(gui::write_report_pdf(p, ctx, 1, pdf.toStdString()));
    const QImage image = page_one(pdf, dir.filePath("page3d"), 72);
    QVERIFY(!image.isNull());
    keep_for_looking(dir.filePath("page3d.png"), "report-3d-page1.png");
    QVERIFY(ink_in(image, 0.75, 0.7, 8.0, 2.0, 72) > 300);
    QVERIFY(ink_in(image, 1.05, 6.05, 7.45, 9.95, 72) > 2000);
    // Two materials and a force: the lists run on to page two at most.
    const int pages = pdf_page_count(pdf);
    QVERIFY(pages >= 1 && pages <= 2);
}

void PrintPdfTest::report_pdf_without_a_graphic_leaves_the_box_empty()
{
    using namespace tobel;
    Project p;
    p.project_title = "Empty";
    p.num_rows = 1;
    p.num_forces = 60; // 68 lines: a page of 54, then 14
    QTemporaryDir dir;
    const QString pdf = dir.filePath("input.pdf");
    ReportContext ctx;
    ctx.date = "01-02-2026";
    // Choice 3 names a window that does not exist: no graphic at all.
    QVERIFY(gui::write_report_pdf(p, ctx, 3, pdf.toStdString()));
    QCOMPARE(pdf_page_count(pdf), 2);
    const QImage image = page_one(pdf, dir.filePath("input"), 72);
    QVERIFY(!image.isNull());
    // Without a graphic the lines run to the foot of the page: "Force 46" on
    // line 53, at 0.75 + 53 * 12.5 / 72 = 9.95 inches.
    QVERIFY(ink_in(image, 0.75, 9.9, 3.0, 10.2, 72) > 20);
    QCOMPARE(ink_in(image, 0.0, 10.3, 8.5, 11.0, 72), 0);
}

void PrintPdfTest::report_pdf_to_a_missing_folder_fails()
{
    tobel::Project p;
    tobel::ReportContext ctx;
    QVERIFY(!tobel::gui::write_report_pdf(p, ctx, 0, "/nonexistent-folder-of-tobel/report.pdf"));
}

void PrintPdfTest::summary_pdf_runs_onto_a_second_page()
{
    using namespace tobel;
    Project p;
    p.project_title = "Dam";
    p.view_mode = 9;
    SearchState& s = p.search;
    s.summary_count = 50;
    s.best_trial = 7;
    for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
        v->assign(51, 1.5f);
    QTemporaryDir dir;
    const QString pdf = dir.filePath("summary.pdf");
    QVERIFY(gui::write_summary_pdf(p, pdf.toStdString()));
    // 43 rows on page one, 7 on page two.
    QCOMPARE(pdf_page_count(pdf), 2);
    const QImage image = page_one(pdf, dir.filePath("summary"), 72);
    QVERIFY(!image.isNull());
    keep_for_looking(dir.filePath("summary.png"), "summary-page1.png");
    // The centred heading, near 0.75 inch.
    QVERIFY(ink_in(image, 3.0, 0.7, 5.5, 0.95, 72) > 50);
    QCOMPARE(ink_in(image, 0.0, 0.7, 3.0, 0.95, 72), 0);
    // Rows down to 10 inches, nothing below the closing rule.
    QVERIFY(ink_in(image, 0.75, 9.95, 7.8, 10.2, 72) > 20);
    QCOMPARE(ink_in(image, 0.0, 10.35, 8.5, 11.0, 72), 0);
}

QTEST_MAIN(PrintPdfTest)
#include "print_pdf_test.moc"
