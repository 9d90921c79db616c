// Each form as a user works it: clicks on the cells, keys typed, buttons,
// Continue and Cancel, on the real widgets; and every form rendered to PNG.
#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest>

#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "forms/form_dialog.h"
#include "forms/form_picture.h"
#include "recording_port.h"

using namespace tobel;
using tobel::gui::FormDialog;

namespace {

Project opened(test::RecordingPort& port, const char* name)
{
    Project p;
    main_load(p);
    port.files = {test::example(name)};
    file_open(p, port);
    return p;
}

QTableWidget* cells(FormDialog* d)
{
    return d->findChild<QTableWidget*>("cells");
}

void click_cell(QTableWidget* t, int row, int col)
{
    QVERIFY(t->item(row, col) != nullptr);
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualItemRect(t->item(row, col)).center());
}

// Empties the current cell with Backspace, as many as its text has.
void clear_cell(QTableWidget* t)
{
    const int n = t->currentItem() ? int(t->currentItem()->text().size()) : 0;
    for (int i = 0; i < n; ++i)
        QTest::keyClick(t, Qt::Key_Backspace);
}

void click(FormDialog* d, const char* name)
{
    auto* b = d->findChild<QPushButton*>(name);
    QVERIFY2(b != nullptr, name);
    QVERIFY2(b->isVisible() && b->isEnabled(), name);
    QTest::mouseClick(b, Qt::LeftButton);
}

QPointF world_window_point(const DisplayList& list, double y, double e, QSize widget)
{
    // The window of the picture from its last Scale: left, top, right, bottom.
    const DrawItem& s = list.items[list.last_scale];
    const float* f = &list.coords[s.first];
    return {(y - f[0]) / (f[2] - f[0]) * widget.width(), (e - f[1]) / (f[3] - f[1]) * widget.height()};
}

} // namespace

class FormDialogTest : public QObject {
    Q_OBJECT
  private slots:
    void a_dip_typed_into_the_wedge_grid_is_stored_on_continue();
    void cancel_of_the_wedge_form_drops_the_typed_dip();
    void a_refused_key_in_control_parameters_shows_its_message();
    void the_grid_search_form_stores_typed_counts_and_relabels_its_block();
    void dragging_the_centre_on_the_ellipsoid_picture_moves_its_fields();
    void the_general_form_hands_over_to_the_field_form();
    void every_form_renders();
};

void FormDialogTest::a_dip_typed_into_the_wedge_grid_is_stored_on_continue()
{
    test::RecordingPort port;
    Project p = opened(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QCOMPARE(d.windowTitle(), QString("Wedge Sliding Surface"));
    QTableWidget* t = cells(&d);
    QCOMPARE(t->rowCount(), 3);
    QCOMPARE(t->horizontalHeaderItem(3)->text(), QString("Dip:"));
    // Plane 2, the basal plane of 18 degrees.
    click_cell(t, 1, 3);
    QCOMPARE(t->item(1, 3)->text(), QString("18")); // the general text of the number
    clear_cell(t);
    QTest::keyClicks(t, "21");
    QCOMPARE(t->item(1, 3)->text(), QString("21"));
    click(&d, "continue");
    QVERIFY(d.form_ended());
    QCOMPARE(p.wedge_dip[2], 21.0f);
    QCOMPARE(p.surface_kind, int16(2));
}

void FormDialogTest::cancel_of_the_wedge_form_drops_the_typed_dip()
{
    test::RecordingPort port;
    Project p = opened(port, "slope2d-wedge-joint.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::wedge);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QTableWidget* t = cells(&d);
    click_cell(t, 1, 3);
    clear_cell(t);
    QTest::keyClicks(t, "30");
    // Tab takes the typed dip into the form's copy and moves on.
    QTest::keyClick(t, Qt::Key_Tab);
    QCOMPARE(t->currentColumn(), 4);
    click(&d, "cancel");
    QVERIFY(d.form_ended());
    QVERIFY(!dialog_open(s));
    QCOMPARE(p.wedge_dip[2], 18.0f);
}

void FormDialogTest::a_refused_key_in_control_parameters_shows_its_message()
{
    test::RecordingPort port;
    Project p = opened(port, "slope2d-homogeneous.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::control);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QCOMPARE(d.windowTitle(), QString("Control Parameters"));
    QTableWidget* t = cells(&d);
    click_cell(t, 5, 0); // "No. of Layers:"
    const QString before = t->item(5, 0)->text();
    port.boxes.clear();
    QTest::keyClicks(t, "3");
    QCOMPARE(int(port.boxes.size()), 1);
    QCOMPARE(QString::fromStdString(port.boxes[0]),
             QString("To add or delete a layer, use Stratigraphic Layers screen"));
    QCOMPARE(t->item(5, 0)->text(), before);
    // A title typed into the first cell goes in.
    click_cell(t, 0, 0);
    clear_cell(t);
    QTest::keyClicks(t, "Cut A");
    click(&d, "continue");
    QVERIFY(d.form_ended());
    QCOMPARE(QString::fromStdString(p.project_title), QString("Cut A"));
}

void FormDialogTest::the_grid_search_form_stores_typed_counts_and_relabels_its_block()
{
    test::RecordingPort port;
    Project p = opened(port, "slope2d-homogeneous.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::grid_search);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QCOMPARE(d.windowTitle(), QString("Grid Search"));
    QVERIFY(d.findChild<tobel::gui::FormPicture*>("picture") != nullptr);
    QTableWidget* t = cells(&d);
    QCOMPARE(t->rowCount(), grid_form_cells);
    QVERIFY(t->verticalHeaderItem(7)->text().startsWith("Common Tangent Planes:"));
    click_cell(t, 5, 0); // centres along Y: 17 in the file
    clear_cell(t);
    QTest::keyClicks(t, "9");
    QTest::keyClick(t, Qt::Key_Down);
    QCOMPARE(t->currentRow(), 6);
    auto* common = d.findChild<QPushButton*>("button-common");
    QVERIFY(common != nullptr);
    QCOMPARE(common->text(), QString("Change to Common Point"));
    QTest::mouseClick(common, Qt::LeftButton);
    QCOMPARE(common->text(), QString("Change to Common Tangent"));
    QVERIFY(t->verticalHeaderItem(7)->text().startsWith("Common Point Coordinates:"));
    click(&d, "continue");
    QVERIFY(d.form_ended());
    QCOMPARE(p.grid_n_y, int16(9));
    QCOMPARE(p.grid_use_common, int16(1));
}

void FormDialogTest::dragging_the_centre_on_the_ellipsoid_picture_moves_its_fields()
{
    test::RecordingPort port;
    Project p = opened(port, "slope3d-new-project.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::ellipsoid);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.resize(1000, 600);
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    auto* pic = d.findChild<tobel::gui::FormPicture*>("picture");
    QVERIFY(pic != nullptr);
    const DisplayList& list = p.pictures.search.picture;
    QVERIFY(list.last_scale != DisplayList::no_item);
    // The file's centre stands at Y 60, Z 55 (vert_exag 1): grab it and drop
    // it 5 m toward the toe and 4 m higher.
    const QPoint from = world_window_point(list, 60, 55, pic->size()).toPoint();
    const QPoint to = world_window_point(list, 55, 59, pic->size()).toPoint();
    QTest::mousePress(pic, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), pic->mapToGlobal(QPointF(to)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pic, &move);
    QTest::mouseRelease(pic, Qt::LeftButton, {}, to);
    const auto& f = std::get<EllipsoidForm>(s.form);
    // Whole pixels: the drop lands within a pixel's width of the world point.
    const DrawItem& sc = list.items[list.last_scale];
    const double pixel =
        std::abs(double(list.coords[sc.first + 2]) - double(list.coords[sc.first])) / double(pic->width());
    QVERIFY2(std::abs(f.value(field_y) - 55.0) <= 2 * pixel, qPrintable(QString::number(f.value(field_y))));
    QVERIFY2(std::abs(f.value(field_z) - 59.0) <= 2 * pixel * 2,
             qPrintable(QString::number(f.value(field_z))));
    QTableWidget* t = cells(&d);
    // The cell shows the dragged Y in its general text of seven digits.
    QVERIFY(std::abs(t->item(1, 0)->text().toDouble() - double(f.value(field_y))) < 1e-4);
}

void FormDialogTest::the_general_form_hands_over_to_the_field_form()
{
    test::RecordingPort port;
    Project p = opened(port, "slope2d-general.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::general);
    {
        FormDialog d(nullptr, p, port, s, &port.images);
        d.show();
        QCOMPARE(d.windowTitle(), QString("Assignment of General Sliding Surface Input Method"));
        auto* option = d.findChild<QRadioButton*>("option0");
        QVERIFY(option != nullptr && option->isChecked());
        click(&d, "button-field");
        QVERIFY(d.form_ended());
    }
    FormDialog f(nullptr, p, port, s, &port.images);
    f.show();
    QCOMPARE(f.windowTitle(), QString("Discontinuity Field on General Sliding Surface"));
    QTableWidget* t = cells(&f);
    click_cell(t, 2, 0);
    clear_cell(t);
    QTest::keyClicks(t, "40");
    QTest::keyClick(t, Qt::Key_Return);
    clear_cell(t);
    QTest::keyClicks(t, "60");
    click(&f, "continue");
    QVERIFY(f.form_ended());
    QCOMPARE(p.field_y_low, 40.0f);
    QCOMPARE(p.field_y_high, 60.0f);
    QCOMPARE(QString::fromStdString(s.general_beneath ? "beneath" : dialog_caption(s)),
             QString("Assignment of General Sliding Surface Input Method"));
}

void FormDialogTest::every_form_renders()
{
    const QString dir = QDir::tempPath() + "/tobel-forms";
    QDir().mkpath(dir);
    for (const char* name : {"control", "interpolation", "materials", "layers", "piezos", "positions",
                             "sections", "forces", "crack", "ellipsoid", "rotation", "graphics-options",
                             "colours", "wedge", "general", "field", "grid-search", "auto-search"}) {
        test::RecordingPort port;
        Project p = opened(port, name == std::string("wedge") ? "slope2d-wedge-joint.tob"
                                                              : "slope3d-new-project.tob");
        DialogSession s;
        open_dialog(p, port, s, parse_dialog_kind(name));
        QVERIFY2(dialog_open(s), name);
        FormDialog d(nullptr, p, port, s, &port.images);
        d.resize(1000, 650);
        d.show();
        QVERIFY(QTest::qWaitForWindowExposed(&d));
        const QImage image = d.grab().toImage();
        QVERIFY(!image.isNull());
        QVERIFY(image.save(dir + "/" + name + ".png"));
        QCOMPARE(d.windowTitle(), QString::fromStdString(dialog_caption(s)));
    }
}

QTEST_MAIN(FormDialogTest)
#include "form_dialog_test.moc"
