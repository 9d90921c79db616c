// The modal forms one after another: the New chain from form to form, and
// the section editor's picture taking a point where the pointer clicks.
#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "forms/form_dialog.h"
#include "forms/form_host.h"
#include "forms/form_picture.h"
#include "recording_port.h"
#include "support/form_cells.h"

using namespace tobel;
using tobel::gui::FormDialog;

namespace {

void set_cell(QTableWidget* t, int row, const char* text)
{
    test::type_cell(t, row, 0, text);
}

} // namespace

class RunDialogsTest : public QObject {
    Q_OBJECT
  private slots:
    void the_new_chain_moves_from_form_to_form();
    void a_click_on_the_editor_picture_adds_a_point_where_it_falls();
};

void RunDialogsTest::the_new_chain_moves_from_form_to_form()
{
    test::RecordingPort port;
    Project p;
    main_load(p);
    DialogSession s;
    new_project(p, port, s);
    QCOMPARE(QString::fromStdString(dialog_caption(s)), QString("Control Parameters"));
    QStringList seen;
    // Each modal form, as it comes up, is worked by the timer.
    QTimer timer;
    timer.setInterval(20);
    int stuck = 0;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* d = qobject_cast<FormDialog*>(QApplication::activeModalWidget());
        if (d == nullptr)
            return;
        if (!seen.isEmpty() && seen.back() == d->windowTitle()) {
            // A form that stays open is given up after a few seconds.
            if (++stuck > 250)
                QTest::mouseClick(d->findChild<QPushButton*>("cancel"), Qt::LeftButton);
            return;
        }
        stuck = 0;
        seen << d->windowTitle();
        auto* t = d->findChild<QTableWidget*>("cells");
        if (d->windowTitle() == "Control Parameters") {
            // A mesh of 21 rows by 61 columns over X 0 to 100 and Y 0 to 120,
            // two layers and a water table.
            set_cell(t, 5, "2");
            set_cell(t, 6, "1");
            set_cell(t, 8, "0");
            set_cell(t, 9, "100");
            set_cell(t, 10, "21");
            set_cell(t, 11, "0");
            set_cell(t, 12, "120");
            set_cell(t, 13, "61");
            QTest::mouseClick(d->findChild<QPushButton*>("continue"), Qt::LeftButton);
        } else if (d->windowTitle() == "Interpolation Method") {
            QTest::mouseClick(d->findChild<QPushButton*>("continue"), Qt::LeftButton);
        } else {
            // The material editor's Cancel stops the chain.
            QTest::mouseClick(d->findChild<QPushButton*>("cancel"), Qt::LeftButton);
        }
    });
    timer.start();
    tobel::gui::run_dialogs(nullptr, p, port, s, &port.images);
    timer.stop();
    QCOMPARE(seen,
             (QStringList{"Control Parameters", "Interpolation Method", "Material / Discontinuity Editor"}));
    QVERIFY(!dialog_open(s));
    QCOMPARE(p.form_mode, int16(0));
    QCOMPARE(p.num_rows, int16(21));
    QCOMPARE(p.num_cols, int16(61));
    QCOMPARE(p.num_layers, int16(2));
}

void RunDialogsTest::a_click_on_the_editor_picture_adds_a_point_where_it_falls()
{
    test::RecordingPort port;
    Project p;
    main_load(p);
    port.files = {test::example("slope3d-new-project.tob")};
    file_open(p, port);
    DialogSession s;
    open_dialog(p, port, s, DialogKind::sections);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.resize(1100, 700);
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    // Snapping off, so that the point stays where it is put; then Insert
    // Point, so that the click puts it among the line's points.
    QTest::mouseClick(d.findChild<QPushButton*>("button-snapping"), Qt::LeftButton);
    QTest::mouseClick(d.findChild<QPushButton*>("button-insert-point"), Qt::LeftButton);
    auto* pic = d.findChild<tobel::gui::FormPicture*>("picture");
    QVERIFY(pic != nullptr);
    const auto& ed = std::get<SectionEditor>(s.form);
    const int k = ed.edit_line;
    const int before = ed.npts(k);
    // A click at two fifths across and a third down: its world position
    // from the picture's window (left, top, right, bottom of its last Scale).
    const DisplayList& list = p.pictures.editor.picture;
    QVERIFY(list.last_scale != DisplayList::no_item);
    const float* w = &list.coords[list.items[list.last_scale].first];
    const QPoint at(pic->width() * 2 / 5, pic->height() / 3);
    const double y = w[0] + double(at.x()) / pic->width() * (w[2] - w[0]);
    const double e = w[1] + double(at.y()) / pic->height() * (w[3] - w[1]);
    QTest::mouseClick(pic, Qt::LeftButton, {}, at);
    const auto& after = std::get<SectionEditor>(s.form);
    QCOMPARE(after.npts(k), int16(before + 1));
    bool found = false;
    for (int pt = 1; pt <= after.npts(k); ++pt)
        if (std::abs(after.edit_y(pt, k) - y) < 1e-3 &&
            std::abs(after.edit_z(pt, k) - e / p.vert_exag) < 1e-3)
            found = true;
    QVERIFY2(found, qPrintable(QString("no point at %1, %2").arg(y).arg(e)));
    d.grab().save(QDir::tempPath() + "/tobel-forms/sections-after-click.png");
}

QTEST_MAIN(RunDialogsTest)
#include "run_dialogs_test.moc"
