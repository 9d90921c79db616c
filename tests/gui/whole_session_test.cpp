// One whole session of the desktop program as a user works it: the title and
// start forms, the New wizard with every form a real modal dialog worked by
// clicks and keys, the sections typed into the editor's table and a point
// dragged with the mouse, the project saved, opened again, its ellipsoid
// entered, solved, a column of the plan clicked, the report saved as text and
// printed to PDF through the print dialog, and a grid search stopped with the
// Stop button. Message boxes and file dialogs are answered in code; every
// other step goes through the widgets.
#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QtTest>
#include <deque>
#include <fstream>
#include <functional>
#include <sstream>

#include "forms/form_dialog.h"
#include "forms/form_picture.h"
#include "main_window.h"
#include "print/report_dialogs.h"
#include "project/numtext.h"
#include "session_files.h"
#include "support/form_cells.h"
#include "views/picture_window.h"

using namespace tobel;
using namespace tobel::gui;

namespace {

using test::example;
using test::read_all;

// Works the modal windows as they come up: each queued step names the
// caption of the window it is for and does what the user does there. A window
// nobody expected, or a step that never finds its window, fails the session
// and is closed, so that the test ends instead of waiting for a click.
class Driver : public QObject {
  public:
    using Step = std::function<void(QWidget*)>;
    void expect(const QString& caption, Step step) { steps_.push_back({caption, std::move(step)}); }
    bool done() const { return steps_.empty(); }
    // Waits until every step has run and no modal window is left; false,
    // with what was seen, after `ms`.
    bool finish(int ms)
    {
        QDeadlineTimer deadline(ms);
        while (!deadline.hasExpired()) {
            if (done() && QApplication::activeModalWidget() == nullptr)
                return true;
            QTest::qWait(20);
        }
        QWidget* m = QApplication::activeModalWidget();
        failures << QString("unfinished: seen %1; open \"%2\"; next \"%3\"")
                        .arg(seen.join(", "), m ? m->windowTitle() : QString(),
                             steps_.empty() ? QString() : steps_.front().first);
        return false;
    }
    QString report() const { return failures.join("; "); }
    QStringList failures;
    QStringList seen;

    Driver()
    {
        timer_.setInterval(20);
        connect(&timer_, &QTimer::timeout, this, [this] { tick(); });
        timer_.start();
    }

  private:
    void tick()
    {
        QWidget* w = QApplication::activeModalWidget();
        if (w == nullptr || !w->isVisible() || w == last_) {
            waited_ = 0;
            return;
        }
        const QString caption = w->windowTitle();
        if (!steps_.empty() && steps_.front().first == caption) {
            waited_ = 0;
            last_ = w;
            seen << caption;
            Step step = std::move(steps_.front().second);
            steps_.pop_front();
            // The step may open the next window, whose own loop runs this
            // timer again before the step returns.
            step(w);
            if (last_ == w)
                last_ = nullptr;
            return;
        }
        if (++waited_ < 250)
            return;
        failures << QString("window \"%1\" came up while \"%2\" was expected")
                        .arg(caption, steps_.empty() ? QString("none") : steps_.front().first);
        waited_ = 0;
        if (auto* d = qobject_cast<QDialog*>(w))
            d->reject();
        else
            w->close();
    }

    std::deque<std::pair<QString, Step>> steps_;
    QTimer timer_;
    QWidget* last_ = nullptr;
    int waited_ = 0;
};

// Picks a menu item as the user does: its action triggered, the command it
// queues run, and every form it brings up worked by the driver.
bool choose(MainWindow& w, Driver& drive, const char* control, int ms = 30000)
{
    QAction* a = w.action(control);
    if (a == nullptr || !a->isVisible() || !a->isEnabled()) {
        drive.failures << QString("menu item %1 is not offered").arg(control);
        return false;
    }
    a->trigger();
    QCoreApplication::processEvents();
    return drive.finish(ms) && drive.failures.isEmpty();
}

// Types `text` into the cell at (row, col) of a form's table, as a user who
// clicks the cell and rubs out what it shows.
void set_cell(QWidget* d, int row, int col, const QString& text)
{
    auto* t = d->findChild<QTableWidget*>("cells");
    QVERIFY(t != nullptr && t->item(row, col) != nullptr);
    test::type_cell(t, row, col, text);
}

void click(QWidget* d, const char* name)
{
    auto* b = d->findChild<QAbstractButton*>(name);
    if (b == nullptr)
        QFAIL(qPrintable(QString("no button %1 on \"%2\"").arg(name, d->windowTitle())));
    QTest::mouseClick(b, Qt::LeftButton);
}

// Picks the item captioned `caption` of a form's menu button.
void pick(QWidget* d, const char* menu, const QString& caption)
{
    auto* b = d->findChild<QToolButton*>(menu);
    QVERIFY2(b != nullptr && b->menu() != nullptr, menu);
    for (QAction* a : b->menu()->actions())
        if (a->text().remove(QChar(0x26)) == caption) {
            a->trigger();
            return;
        }
    QStringList items;
    for (QAction* a : b->menu()->actions())
        items << a->text();
    QFAIL(qPrintable(QString("no item \"%1\" in %2: %3").arg(caption, menu, items.join("|"))));
}

// A line of the section editor typed into its table from point 1: Y, Tab,
// Z, Tab for each point (the table scrolls on by itself past its last row).
void type_line(QWidget* d, const std::vector<std::pair<const char*, const char*>>& points)
{
    auto* t = d->findChild<QTableWidget*>("cells");
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualItemRect(t->item(0, 0)).center());
    for (const auto& [y, z] : points) {
        QTest::keyClicks(t, y);
        QTest::keyClick(t, Qt::Key_Tab);
        QTest::keyClicks(t, z);
        QTest::keyClick(t, Qt::Key_Tab);
    }
}

// The widget pixel of world point (x, y) on a picture drawn into `rect` of
// its widget, from the inverse the canvas itself uses, taken at two corners
// (the map is a scale and a shift on each axis).
QPoint pixel_of(const DisplayList& list, QRectF rect, double x, double y)
{
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    if (!world_point(list, rect.size(), QPointF(0, 0), x0, y0) ||
        !world_point(list, rect.size(), QPointF(rect.width(), rect.height()), x1, y1))
        return {-1, -1};
    const double px = (x - x0) / (x1 - x0) * rect.width();
    const double py = (y - y0) / (y1 - y0) * rect.height();
    return {int(std::lround(rect.left() + px)), int(std::lround(rect.top() + py))};
}

} // namespace

class WholeSessionTest : public QObject {
    Q_OBJECT
  private slots:
    void from_the_new_wizard_to_the_printed_report_and_a_stopped_search();
};

void WholeSessionTest::from_the_new_wizard_to_the_printed_report_and_a_stopped_search()
{
    QTemporaryDir dir;
    const std::string saved = (dir.path() + "/new-project.tob").toStdString();
    const std::string report_txt = (dir.path() + "/report.txt").toStdString();
    const QString report_pdf = dir.path() + "/report.pdf";

    Project p;
    MainWindow w(p, MainWindow::Options{true, true});
    std::deque<std::string> files;
    std::vector<std::string> asked;
    w.port().answer_box = [&asked](const QtPort::Box& b) {
        asked.push_back(b.text);
        // The save prompt comes before each Open: the file was just saved.
        if (b.text.rfind("Do you want to save changes", 0) == 0)
            return Answer::no;
        return b.buttons == Buttons::ok ? Answer::ok : Answer::yes;
    };
    w.port().answer_file = [&files](const std::string&, bool) -> std::optional<std::string> {
        if (files.empty())
            return std::nullopt;
        std::string f = files.front();
        files.pop_front();
        return f;
    };
    Driver drive;

    // The title form goes with a click; the start form's first button starts
    // the New wizard.
    drive.expect("", [](QWidget* d) { QTest::mouseClick(d, Qt::LeftButton); });
    drive.expect("TOB Start", [](QWidget* d) { click(d, "Command1"); });
    drive.expect("Control Parameters", [](QWidget* d) {
        set_cell(d, 0, 0, "New slope from the wizard");
        set_cell(d, 1, 0, "Two layers, a water table and two sections");
        set_cell(d, 2, 0, "TOBEL-3 examples");
        set_cell(d, 5, 0, "2");
        set_cell(d, 6, 0, "1");
        set_cell(d, 8, 0, "0");
        set_cell(d, 9, 0, "100");
        set_cell(d, 10, 0, "21");
        set_cell(d, 11, 0, "0");
        set_cell(d, 12, 0, "120");
        set_cell(d, 13, 0, "61");
        click(d, "continue");
    });
    drive.expect("Interpolation Method", [](QWidget* d) {
        click(d, "option1");
        click(d, "continue");
    });
    drive.expect("Material / Discontinuity Editor", [](QWidget* d) {
        // Name, unit weight, cohesion, friction angle and piezometric
        // surface of each layer, a column each, from the bottom up.
        const char* layers[2][4] = {{"Stiff clay", "21", "25", "28"}, {"Silty sand", "19", "5", "30"}};
        for (int col = 0; col < 2; ++col) {
            for (int row : {0, 1, 2})
                set_cell(d, row, col, layers[col][row]);
            set_cell(d, 4, col, layers[col][3]);
            set_cell(d, 6, col, "1");
        }
        click(d, "continue");
    });
    drive.expect("Assignment of Stratigraphic Layer Name and Top Surface Input Method",
                 [](QWidget* d) { click(d, "continue"); });
    drive.expect("Assignment of Piezometric Surface Input Method", [](QWidget* d) { click(d, "continue"); });
    drive.expect("Input cross-section locations", [](QWidget* d) {
        set_cell(d, 0, 0, "0");
        set_cell(d, 1, 0, "100");
        click(d, "continue");
    });
    float dragged_z = 0;
    drive.expect("Section Editor", [&p, &w, &dragged_z](QWidget* d) {
        // Section 1 at X = 0: the top of the clay, the ground and the water
        // table typed point by point from the toe.
        type_line(d, {{"0", "8"}, {"40", "8"}, {"70", "20"}, {"120", "20"}});
        click(d, "button-toggle-line");
        type_line(d, {{"0", "15"}, {"40", "15"}, {"70", "30"}, {"120", "30"}});
        click(d, "button-toggle-line");
        type_line(d, {{"0", "12"}, {"45", "12"}, {"80", "24"}, {"120", "24"}});
        // Section 2 at X = 100: a copy of section 1 whose crest is moved 2 m
        // toward the toe at the foot and raised 1 m at the top.
        pick(d, "menu-goto-section", "Go To Section  2");
        pick(d, "menu-copy-section", "Section  1");
        pick(d, "menu-goto-line", "Go to Ground");
        // Point 3 of the ground dragged up with the mouse lands within a
        // pixel of where the button was let go...
        auto* pic = d->findChild<FormPicture*>("picture");
        QVERIFY(pic != nullptr);
        const DisplayList& list = p.pictures.editor.picture;
        const QSizeF size(pic->size());
        const QPoint from = world_to_widget(list, QPointF(70, 30), size).toPoint();
        const QPoint to = world_to_widget(list, QPointF(70, 31), size).toPoint();
        const double pixel = std::abs(widget_to_world(list, QPointF(0, 1), size).y() -
                                      widget_to_world(list, QPointF(0, 0), size).y());
        QTest::mousePress(pic, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), pic->mapToGlobal(QPointF(to)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(pic, &move);
        // The picture keeps its size under the pointer while the labels change.
        QCOMPARE(QSizeF(pic->size()), size);
        QTest::mouseRelease(pic, Qt::LeftButton, {}, to);
        SectionEditor& ed = std::get<SectionEditor>(w.session().form);
        dragged_z = ed.edit_z(3, 2);
        QVERIFY2(std::abs(dragged_z - 31.0) <= pixel, qPrintable(QString::number(dragged_z)));
        QVERIFY(std::abs(ed.edit_y(3, 2) - 70.0) <= pixel);
        // ...and the exact heights go in through the table: point 2's Y,
        // points 3 and 4's Z.
        set_cell(d, 1, 0, "38");
        set_cell(d, 2, 0, "70");
        set_cell(d, 2, 1, "31");
        set_cell(d, 3, 1, "31");
        QTest::keyClick(d->findChild<QTableWidget*>("cells"), Qt::Key_Tab);
        click(d, "continue");
    });
    w.resize(1100, 800);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QVERIFY2(drive.finish(60000), qPrintable(drive.report()));
    QVERIFY2(drive.failures.isEmpty(), qPrintable(drive.report()));
    QVERIFY(std::abs(dragged_z - 31.0f) < 1.0f);
    QCOMPARE(p.num_layers, int16(2));
    QCOMPARE(p.num_sections, int16(2));

    // The single ellipsoid through its form, then Save As: the file is the
    // hand-written examples/slope3d-new-project.tob byte for byte.
    drive.expect("Ellipsoidal Sliding Surface", [](QWidget* d) {
        const char* values[] = {"50", "60", "55", "12", "1"};
        for (int i = 0; i < 5; ++i)
            set_cell(d, i, 0, values[i]);
        click(d, "continue");
    });
    QVERIFY2(choose(w, drive, "Edit_Sliding_surface_ellipsoid"), qPrintable(drive.report()));
    QVERIFY2(drive.failures.isEmpty(), qPrintable(drive.failures.join("; ")));
    QVERIFY2(drive.finish(10000), qPrintable(drive.report()));
    files.push_back(saved);
    QVERIFY2(choose(w, drive, "File_save_as"), qPrintable(drive.report()));
    if (read_all(saved) != read_all(example("slope3d-new-project.tob")))
        QFile::copy(QString::fromStdString(saved), "/tmp/whole-session-saved.tob");
    QCOMPARE(read_all(saved), read_all(example("slope3d-new-project.tob")));
    QVERIFY(w.windowTitle().startsWith(QString::fromStdString("TOBEL_3          File " + saved)));

    // Open it again: the stored surface is offered, the ellipsoid form
    // confirms it, Solve gives Bishop's 2.69 of examples/README.md.
    files.push_back(saved);
    QVERIFY2(choose(w, drive, "File_open"), qPrintable(drive.report()));
    QCOMPARE(p.data_file_path, saved);
    drive.expect("Ellipsoidal Sliding Surface", [](QWidget* d) { click(d, "continue"); });
    QVERIFY2(choose(w, drive, "Edit_Sliding_surface_ellipsoid"), qPrintable(drive.report()));
    QVERIFY(w.action("Solve_single_trial")->isVisible());
    QVERIFY2(choose(w, drive, "Solve_single_trial"), qPrintable(drive.report()));
    QCOMPARE(format(p.factor_of_safety, "####0.00"), std::string("2.69"));

    // A click on the plan of active columns at X = 50, Y = 62: the column's
    // data beside the plan. Node of the click: r = CInt(50 / 5) + 1 = 11,
    // c = CInt(62 / 2) + 1 = 32.
    PictureView* plan = w.picture_view(p.pictures.plan_active);
    QVERIFY(plan != nullptr);
    if (auto* child = qobject_cast<QMdiSubWindow*>(plan->parentWidget()))
        child->showMaximized();
    QTest::qWait(50);
    PictureCanvas* canvas = plan->canvas();
    // The canvas runs Y along its width and X along its height.
    const QPoint at = pixel_of(p.pictures.plan_active.picture, canvas->picture_rect(), 62, 50);
    double cy = 0, cx = 0;
    QVERIFY(world_point(p.pictures.plan_active.picture, canvas->picture_rect().size(),
                        QPointF(at) - canvas->picture_rect().topLeft(), cy, cx));
    QTest::mouseClick(canvas, Qt::LeftButton, {}, at);
    const std::vector<std::string>& column = p.pictures.plan_active.text_lines;
    QVERIFY(column.size() > 10);
    QCOMPARE(column[1], std::string("   SINGLE COLUMN OUTPUT"));
    QCOMPARE(column[2],
             "   AT X = " + format(float(cx), "####0.0") + "  Y = " + format(float(cy), "####0.0"));
    QVERIFY2(std::abs(cx - 50) < 2.5 && std::abs(cy - 62) < 1, column[2].c_str());
    // By hand: the sphere of centre (50, 60, 55) tangent to Z = 12 has radius
    // 43; at node (X 50, Y 62) its base is 55 - sqrt(43^2 - 2^2) = 12.05,
    // under the clay top 8 + 22 / 30 * 12 = 16.8 (alike in both sections):
    // stiff clay, 28 degrees and 25. The base dips along Y by atan(2 / 42.95)
    // = 2.67 degrees (with 3.14 for pi) and not across. The water table,
    // 12 + 17 / 35 * 12 = 17.83 in both sections, stands 5.78 over the base:
    // 9.81 * 5.78 = 56.7. The vertical stress is 21 * (16.8 - 12.05) of clay
    // and 19 * (26.5 - 16.8) of sand, the ground halfway between the two
    // sections' 26.0 and 27.0: 284.1, within the column's averaging.
    QCOMPARE(column[5], std::string("      Longitudinal:  2.67"));
    QCOMPARE(column[6], std::string("      Transverse:    0.00"));
    QVERIFY(column[8].rfind("   Total Vertical Stress:  ", 0) == 0);
    QVERIFY2(std::abs(std::stod(column[8].substr(27)) - 284.1) < 2.8, column[8].c_str());
    QCOMPARE(column[10], std::string("   Pore Pressure:           56.7"));
    QCOMPARE(column[12], std::string("   Material:         Stiff clay"));
    QCOMPARE(column[13], std::string("   Friction Angle:  28.0"));
    QCOMPARE(column[14], std::string("   Cohesion:        25.0"));
    // Bishop: no f line.
    QCOMPARE(column.size(), std::size_t(17));

    // The report saved as text, then printed to PDF: the Report Graphics
    // dialog takes the plan of active columns, the print dialog a file.
    files.push_back(report_txt);
    QVERIFY2(choose(w, drive, "save_report"), qPrintable(drive.report()));
    const std::string text = read_all(report_txt);
    QVERIFY(text.find("2.69") != std::string::npos);
    QVERIFY(text.find("New slope from the wizard") != std::string::npos);
    drive.expect("Report Graphics", [](QWidget* d) {
        auto* g = qobject_cast<ReportGraphicsDialog*>(d);
        QVERIFY(g != nullptr);
        QTest::mouseClick(g->option(2), Qt::LeftButton);
        QTest::mouseClick(g->continue_button(), Qt::LeftButton);
    });
    drive.expect("Print", [&report_pdf](QWidget* d) {
        auto* pd = qobject_cast<QPrintDialog*>(d);
        QVERIFY(pd != nullptr);
        if (auto* name = pd->findChild<QLineEdit*>("filename"))
            name->setText(report_pdf);
        pd->printer()->setOutputFileName(report_pdf);
        pd->accept();
    });
    QVERIFY2(choose(w, drive, "print_report"), qPrintable(drive.report()));
    QVERIFY2(drive.failures.isEmpty(), qPrintable(drive.report()));
    QVERIFY(QFile::exists(report_pdf));
    QProcess run;
    run.start("pdftoppm",
              {"-r", "50", "-f", "1", "-l", "1", "-singlefile", "-png", report_pdf, dir.path() + "/page1"});
    QVERIFY(run.waitForFinished(60000) && run.exitCode() == 0);
    const QImage page(dir.path() + "/page1.png");
    QVERIFY(!page.isNull());
    // Page one at 50 dots an inch: the text from 0.75 inch down, the plan
    // of active columns in the graphic's box in the lower half.
    auto ink = [&page](double top, double bottom) {
        int n = 0;
        for (int y = int(top * 50); y < int(bottom * 50) && y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                n += QColor(page.pixel(x, y)).lightness() < 230;
        return n;
    };
    QCOMPARE(page.size(), QSize(425, 550));
    QVERIFY(ink(0.7, 3.5) > 300);
    QVERIFY(ink(6.0, 10.0) > 300);

    // Another project opened; the grid search stored in it confirmed through
    // its form and run from the Solve menu; Stop pressed once a few trials
    // are in ends it early.
    files.push_back(example("slope2d-homogeneous.tob"));
    QVERIFY2(choose(w, drive, "File_open"), qPrintable(drive.report()));
    QCOMPARE(p.data_file_path, example("slope2d-homogeneous.tob"));
    drive.expect("Grid Search", [](QWidget* d) { click(d, "continue"); });
    QVERIFY2(choose(w, drive, "Solve_grid_search"), qPrintable(drive.report()));
    QVERIFY2(drive.failures.isEmpty(), qPrintable(drive.failures.join("; ")));
    QVERIFY(w.action("gridsearchsolv")->isVisible());
    int at_stop = -1;
    w.port().on_yield = [&](long) {
        if (at_stop >= 0 || p.search.summary_count < 5)
            return;
        at_stop = p.search.summary_count;
        QTest::mouseClick(w.findChild<QPushButton*>("stop"), Qt::LeftButton);
    };
    QVERIFY2(choose(w, drive, "gridsearchsolv"), qPrintable(drive.report()));
    w.port().on_yield = nullptr;
    QVERIFY(at_stop >= 5);
    QVERIFY(p.search.summary_count <= at_stop + 2);
    QCOMPARE(p.search.stop_reason, std::string("stopped by the user"));
    QVERIFY(!w.running());
    QVERIFY(w.action("File_open")->isEnabled());
    QVERIFY2(drive.failures.isEmpty(), qPrintable(drive.failures.join("; ")));
    // The only boxes of the session: the save prompt before each Open, which
    // stays once a project is open even right after a save.
    const std::string prompt = "Do you want to save changes to: " + saved + "?";
    QCOMPARE(asked, (std::vector<std::string>{prompt, prompt}));
}

QTEST_MAIN(WholeSessionTest)
#include "whole_session_test.moc"
