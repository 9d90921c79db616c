// "Report Graphics" and "Print Preview" as windows: the error box that keeps
// the choice open, the preview's page buttons, and a look at both.
#include <QPainter>
#include <QSvgRenderer>
#include <QTextBrowser>
#include <QtTest>

#include "graphics/recording_surface.h"
#include "print/report_dialogs.h"
#include "support/scripted_port.h"

namespace {

void keep_for_looking(QWidget& w, const QString& name)
{
    const QByteArray dir = qgetenv("TOBEL_LOOK_DIR");
    if (!dir.isEmpty())
        w.grab().save(QString::fromUtf8(dir) + "/" + name);
}

// A project of 60 forces and no solution: 68 report lines, two pages.
tobel::Project two_page_project()
{
    tobel::Project p;
    p.project_title = "Dam";
    p.input_by = "AB";
    p.num_rows = 1;
    p.num_forces = 60;
    for (int f = 1; f <= 60; ++f)
        p.force_v[std::size_t(f)] = float(10 * f);
    return p;
}

} // namespace

class ReportDialogsTest : public QObject {
    Q_OBJECT

  private slots:
    void report_graphics_offers_five_choices_first_checked();
    void graphic_not_made_shows_error_and_dialog_stays();
    void a_made_graphic_closes_the_dialog_with_it();
    void cancel_rejects_without_a_graphic();
    void preview_steps_pages_with_previous_and_next();
    void preview_shows_the_page_at_6_8_over_11();
    void icon_draws_a_slope_cut_by_a_sliding_circle();
    void manual_shows_in_a_text_browser_with_its_sections();
};

void ReportDialogsTest::report_graphics_offers_five_choices_first_checked()
{
    tobel::Project p;
    tobel::test::ScriptedPort port;
    tobel::gui::ReportGraphicsDialog dialog(nullptr, p, port);
    QCOMPARE(dialog.windowTitle(), QString("Report Graphics"));
    QCOMPARE(dialog.option(1)->text(), QString("3-d Sliding Surface"));
    QCOMPARE(dialog.option(5)->text(), QString("X-ray View"));
    QVERIFY(dialog.option(1)->isChecked());
    QCOMPARE(dialog.continue_button()->text(), QString("Continue"));
    QCOMPARE(dialog.cancel_button()->text(), QString("Cancel"));
    dialog.show();
    keep_for_looking(dialog, "report-graphics.png");
}

void ReportDialogsTest::graphic_not_made_shows_error_and_dialog_stays()
{
    tobel::Project p;
    p.num_rows = 3;
    tobel::test::ScriptedPort port;
    tobel::gui::ReportGraphicsDialog dialog(nullptr, p, port);
    dialog.show();
    dialog.option(4)->click();
    QVERIFY(dialog.option(4)->isChecked());
    QTest::mouseClick(dialog.continue_button(), Qt::LeftButton);
    QCOMPARE(port.boxes.size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(port.boxes[0].text), QString("This graphic has not been created yet."));
    QCOMPARE(QString::fromStdString(port.boxes[0].title), QString("Error"));
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.result(), 0);
    QCOMPARE(dialog.graphic(), 0);
}

void ReportDialogsTest::a_made_graphic_closes_the_dialog_with_it()
{
    tobel::Project p;
    p.num_rows = 3;
    p.pictures.plan_active.exists = true;
    p.pictures.plan_active.caption = "PLAN OF ACTIVE COLUMNS";
    tobel::test::ScriptedPort port;
    tobel::gui::ReportGraphicsDialog dialog(nullptr, p, port);
    dialog.show();
    dialog.option(2)->click();
    QTest::mouseClick(dialog.continue_button(), Qt::LeftButton);
    QVERIFY(port.boxes.empty());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.graphic(), 2);
}

void ReportDialogsTest::cancel_rejects_without_a_graphic()
{
    tobel::Project p;
    tobel::test::ScriptedPort port;
    tobel::gui::ReportGraphicsDialog dialog(nullptr, p, port);
    dialog.show();
    dialog.option(2)->click();
    QTest::mouseClick(dialog.cancel_button(), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(dialog.graphic(), 0);
    QVERIFY(port.boxes.empty());
}

static bool page_has(const tobel::DisplayList& list, const std::string& text)
{
    for (const auto& item : list.items)
        if (item.op == tobel::DrawOp::text && list.texts[item.text] == text)
            return true;
    return false;
}

void ReportDialogsTest::preview_steps_pages_with_previous_and_next()
{
    tobel::Project p = two_page_project();
    tobel::ReportContext ctx;
    ctx.date = "01-02-2026";
    tobel::gui::ReportPreviewDialog preview(nullptr, p, ctx, nullptr);
    preview.show();
    QCOMPARE(preview.windowTitle(), QString("Print Preview"));
    QCOMPARE(preview.print_button()->text(), QString("Print"));
    QCOMPARE(preview.cancel_button()->text(), QString("Cancel"));
    QCOMPARE(preview.page(), 1);
    QVERIFY(!preview.previous_button()->isEnabled());
    QVERIFY(preview.next_button()->isEnabled());
    QVERIFY(page_has(preview.view()->page(), "PROJECT:"));
    keep_for_looking(preview, "preview-page1.png");
    // Page 54 lines long: "Force 47" (line 54) opens page two.
    QTest::mouseClick(preview.next_button(), Qt::LeftButton);
    QCOMPARE(preview.page(), 2);
    QCOMPARE(preview.page_label()->text(), QString("Page 2"));
    QVERIFY(page_has(preview.view()->page(), "Force 47"));
    QVERIFY(!page_has(preview.view()->page(), "PROJECT:"));
    QVERIFY(!preview.next_button()->isEnabled());
    QVERIFY(preview.previous_button()->isEnabled());
    keep_for_looking(preview, "preview-page2.png");
    // A click on a disabled button changes nothing.
    QTest::mouseClick(preview.next_button(), Qt::LeftButton);
    QCOMPARE(preview.page(), 2);
    QTest::mouseClick(preview.previous_button(), Qt::LeftButton);
    QCOMPARE(preview.page(), 1);
    QVERIFY(page_has(preview.view()->page(), "PROJECT:"));
    QTest::mouseClick(preview.cancel_button(), Qt::LeftButton);
    QCOMPARE(preview.result(), int(QDialog::Rejected));
}

void ReportDialogsTest::preview_shows_the_page_at_6_8_over_11()
{
    tobel::Project p = two_page_project();
    tobel::ReportContext ctx;
    tobel::gui::ReportPreviewDialog preview(nullptr, p, ctx, nullptr);
    // 8.5 by 11 inches at 96 an inch, times 6.8 / 11: 504 by 653 pixels.
    QCOMPARE(preview.view()->sizeHint(), QSize(504, 653));
    const QImage shot = const_cast<tobel::gui::PageView*>(preview.view())->grab().toImage();
    QCOMPARE(shot.size(), QSize(504, 653));
    // Ink near the top left, where the head stands (0.75 * 6.8 / 11 inch = 45 pixels in).
    int ink = 0;
    for (int y = 40; y < 80; ++y)
        for (int x = 40; x < 200; ++x)
            ink += QColor(shot.pixel(x, y)).lightness() < 200 ? 1 : 0;
    QVERIFY(ink > 20);
}

void ReportDialogsTest::icon_draws_a_slope_cut_by_a_sliding_circle()
{
    QSvgRenderer svg(QString(TOBEL_SOURCE_DIR) + "/packaging/tobel-gui.svg");
    QVERIFY(svg.isValid());
    QCOMPARE(svg.defaultSize(), QSize(64, 64));
    QImage image(256, 256, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    svg.render(&painter);
    painter.end();
    const QByteArray dir = qgetenv("TOBEL_LOOK_DIR");
    if (!dir.isEmpty())
        image.save(QString::fromUtf8(dir) + "/icon.png");
    // The sliding circle in magenta (#d0149a) at its lowest point, (40, 47.1)
    // of the 64 grid, four pixels a unit; the ground (#c8a064) under the toe.
    auto near = [](QRgb a, QRgb b) {
        return std::abs(qRed(a) - qRed(b)) < 40 && std::abs(qGreen(a) - qGreen(b)) < 40 &&
               std::abs(qBlue(a) - qBlue(b)) < 40;
    };
    QVERIFY(near(image.pixel(160, 188), qRgb(0xd0, 0x14, 0x9a)));
    QVERIFY(near(image.pixel(220, 220), qRgb(0xc8, 0xa0, 0x64)));
    // Sky above the crest.
    QVERIFY(near(image.pixel(40, 40), qRgb(0xdc, 0xec, 0xfa)));
}

void ReportDialogsTest::manual_shows_in_a_text_browser_with_its_sections()
{
    QTextBrowser browser;
    browser.resize(700, 900);
    browser.setSource(QUrl::fromLocalFile(QString(TOBEL_SOURCE_DIR) + "/docs/manual.html"));
    QCOMPARE(browser.documentTitle(), QString("TOBEL-3 Manual"));
    const QString text = browser.toPlainText();
    for (const char* heading : {"Starting the program", "The menus", "A new project: the data entry chain",
                                "Solving a trial surface", "Searching for the critical surface", "The views",
                                "The report and printing"})
        QVERIFY2(text.contains(heading), heading);
    // The report's own texts, as the program shows them.
    QVERIFY(text.contains("This graphic has not been created yet."));
    QVERIFY(text.contains("Report Graphics"));
    browser.show();
    keep_for_looking(browser, "manual.png");
}

QTEST_MAIN(ReportDialogsTest)
#include "report_dialogs_test.moc"
