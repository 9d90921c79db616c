// The section editor as a user works it with the mouse: points dragged with
// the slope and pointer labels following, Shift and drag to pan, zoom in,
// out and fit, the legend box dragged, the point table's scroll bar.
//
// slope3d-new-project.tob spans Y 0 to 120 with elevations 8 to 31 (vert_exag
// 1); on the 800 by 600 picture the width branch of the fit gives
// s = (120 / 0.8) / 800 = 0.1875, w = 150, h = 112.5, left = -15, right =
// 135, bottom = 8 - (112.5 - 23) / 2 = -36.75, top = 75.75. A pixel is 0.1875
// world units both ways: pixel (px, py) is Y = -15 + 0.1875 px,
// E = 75.75 - 0.1875 py.
#include <QDir>
#include <QScrollBar>

#include "editor_driver.h"

using namespace tobel;
using tobel::test::EditorDialog;

namespace {

QPoint pixel_of(double y, double e)
{
    return {int(std::lround((y + 15) / 0.1875)), int(std::lround((75.75 - e) / 0.1875))};
}

void expect_window(const EditorDialog& t, double left, double top, double right, double bottom)
{
    const auto w = t.window();
    QVERIFY2(std::abs(w.left - left) < 1e-4, qPrintable(QString::number(w.left)));
    QVERIFY2(std::abs(w.top - top) < 1e-4, qPrintable(QString::number(w.top)));
    QVERIFY2(std::abs(w.right - right) < 1e-4, qPrintable(QString::number(w.right)));
    QVERIFY2(std::abs(w.bottom - bottom) < 1e-4, qPrintable(QString::number(w.bottom)));
}

} // namespace

class EditorMouseTest : public QObject {
    Q_OBJECT
  private slots:
    void the_picture_opens_on_the_fitted_window();
    void a_dragged_point_lands_where_the_button_is_released();
    void shift_and_drag_pans_the_window_with_the_pointer();
    void zoom_in_out_and_fit_with_the_buttons_and_a_click();
    void the_legend_box_is_dragged_with_the_mouse();
    void the_table_scroll_bar_shows_the_points_from_its_value();
};

void EditorMouseTest::the_picture_opens_on_the_fitted_window()
{
    EditorDialog t("slope3d-new-project.tob");
    QCOMPARE(t.d->windowTitle(), QString("Section Editor"));
    QCOMPARE(t.pic->size(), QSize(800, 600));
    expect_window(t, -15, 75.75, 135, -36.75);
}

// Layer 1 of section 1 runs (0, 8), (40, 8), (70, 20), (120, 20). Point 3 is
// taken at pixel (453, 297), that is (69.9375, 20.0625), within half a mark
// (1.5 / 2) of it, and dragged to pixel (400, 308), that is (60, 18). There
// the slope from point 2 is run 20 over rise 10: "1 : 2.00".
void EditorMouseTest::a_dragged_point_lands_where_the_button_is_released()
{
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    QCOMPARE(ed.edit_line, int16(1));
    QCOMPARE(ed.edit_z(3, 1), 20.0f);
    // Snapping off: the point stays where it is put.
    QTest::mouseClick(t.button("button-snapping"), Qt::LeftButton);
    QCOMPARE(t.button("button-snapping")->text(), QString("S&napping Off"));

    // The pointer labels follow a pointer with no button held.
    test::move_to(t.pic, QPoint(400, 308), Qt::NoButton);
    QVERIFY2(t.notes().contains(" Y = 60.0") && t.notes().contains(" Z = 18.0"), qPrintable(t.notes()));

    QCOMPARE(pixel_of(70, 20), QPoint(453, 297));
    QCOMPARE(pixel_of(60, 18), QPoint(400, 308));
    QTest::mousePress(t.pic, Qt::LeftButton, {}, pixel_of(70, 20));
    QCOMPARE(ed.point_picked, int16(1));
    QCOMPARE(ed.edit_point, int16(3));
    // Run 30, rise 12 from point 2 to the point as it stands: 2.5.
    QVERIFY2(t.notes().contains("1 : 2.50"), qPrintable(t.notes()));
    test::move_to(t.pic, QPoint(400, 308), Qt::LeftButton);
    QVERIFY2(t.notes().contains("1 : 2.00"), qPrintable(t.notes()));
    QVERIFY(t.notes().contains(" Y = 60.0"));
    QTest::mouseRelease(t.pic, Qt::LeftButton, {}, QPoint(400, 308));
    QCOMPARE(ed.npts(1), int16(4));
    QVERIFY(std::abs(ed.edit_y(3, 1) - 60.0f) < 1e-4);
    QVERIFY(std::abs(ed.edit_z(3, 1) - 18.0f) < 1e-4);
    QVERIFY(!t.notes().contains("1 : "));
    // The ground's points stay: none stood at (70, 20).
    QCOMPARE(ed.edit_y(3, 2), 70.0f);
    QCOMPARE(ed.edit_z(3, 2), 30.0f);
    t.d->grab().save(QDir::tempPath() + "/tobel-forms/editor-after-drag.png");
}

// Shift and the left button at (400, 308), the world point (60, 18), moved
// to (480, 348), 80 pixels right and 40 down: the window follows by 15 and
// 7.5 so that (60, 18) stays under the pointer.
void EditorMouseTest::shift_and_drag_pans_the_window_with_the_pointer()
{
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    const int before = ed.npts(1);
    QTest::mousePress(t.pic, Qt::LeftButton, Qt::ShiftModifier, QPoint(400, 308));
    QVERIFY(ed.panning);
    test::move_to(t.pic, QPoint(480, 348), Qt::LeftButton, Qt::ShiftModifier);
    expect_window(t, -30, 83.25, 120, -29.25);
    QTest::mouseRelease(t.pic, Qt::LeftButton, Qt::ShiftModifier, QPoint(480, 348));
    QVERIFY(!ed.panning);
    expect_window(t, -30, 83.25, 120, -29.25);
    QCOMPARE(ed.npts(1), int16(before));
}

// Zoom In, then a click at (60, 18): level 4 centred there with half the
// extents, Y 60 -+ 37.5 and E 18 +- 28.125. Zoom Out goes back to level 3;
// once more to level 2, a quarter of the extents wider on every side:
// Y -15 - 37.5 = -52.5 to 135 + 37.5 = 172.5, E 75.75 + 28.125 = 103.875 to
// -36.75 - 28.125 = -64.875. Fit to Screen takes level 3 again.
void EditorMouseTest::zoom_in_out_and_fit_with_the_buttons_and_a_click()
{
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    const int before = ed.npts(1);
    QTest::mouseClick(t.button("button-zoom-in"), Qt::LeftButton);
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(400, 308));
    QCOMPARE(ed.zoom_level, int16(4));
    expect_window(t, 22.5, 46.125, 97.5, -10.125);
    QCOMPARE(ed.npts(1), int16(before));
    QTest::mouseClick(t.button("button-zoom-out"), Qt::LeftButton);
    expect_window(t, -15, 75.75, 135, -36.75);
    QTest::mouseClick(t.button("button-zoom-out"), Qt::LeftButton);
    QCOMPARE(ed.zoom_level, int16(2));
    expect_window(t, -52.5, 103.875, 172.5, -64.875);
    QTest::mouseClick(t.button("button-fit"), Qt::LeftButton);
    QCOMPARE(ed.zoom_level, int16(3));
    expect_window(t, -15, 75.75, 135, -36.75);
}

// The legend box covers fractions 0.02 to 0.32 across and 0.02 to 0.14 down:
// pixels 16 to 256 and 12 to 84. Taken at (80, 30) and dropped at
// (400, 330), 0.4 of the width right and 0.5 of the height down.
void EditorMouseTest::the_legend_box_is_dragged_with_the_mouse()
{
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    const int before = ed.npts(1);
    QTest::mousePress(t.pic, Qt::LeftButton, {}, QPoint(80, 30));
    QVERIFY(ed.legend.dragging);
    test::move_to(t.pic, QPoint(240, 180), Qt::LeftButton);
    // Half way: 0.2 right, 0.25 down.
    QVERIFY(std::abs(ed.legend.left - 0.22f) < 1e-5);
    QVERIFY(std::abs(ed.legend.top - 0.27f) < 1e-5);
    QTest::mouseRelease(t.pic, Qt::LeftButton, {}, QPoint(400, 330));
    QVERIFY(!ed.legend.dragging);
    QVERIFY(std::abs(ed.legend.left - 0.42f) < 1e-5);
    QVERIFY(std::abs(ed.legend.top - 0.52f) < 1e-5);
    QCOMPARE(ed.npts(1), int16(before));
    // A click where the legend was now reaches the picture: left of the
    // line's first point at Y 0 it adds nothing, and takes no legend.
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(40, 30));
    QVERIFY(!ed.legend.dragging);
    QCOMPARE(ed.npts(1), int16(before));
    t.d->grab().save(QDir::tempPath() + "/tobel-forms/editor-legend-moved.png");
}

// Layer 1 has four points, so the bar runs from 1 to 4 + 10 = 14.
void EditorMouseTest::the_table_scroll_bar_shows_the_points_from_its_value()
{
    EditorDialog t("slope3d-new-project.tob");
    auto* bar = t.d->findChild<QScrollBar*>("table-scroll");
    QVERIFY(bar != nullptr && bar->isVisible());
    QCOMPARE(bar->orientation(), Qt::Vertical);
    QCOMPARE(bar->minimum(), 1);
    QCOMPARE(bar->maximum(), 14);
    QCOMPARE(bar->value(), 1);
    QTableWidget* cells = t.cells();
    QCOMPARE(cells->rowCount(), 5);
    QCOMPARE(cells->verticalHeaderItem(0)->text(), QString("1"));
    // The arrow at the bar's lower end: one point on.
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, bar->height() - 4));
    QCOMPARE(bar->value(), 2);
    QCOMPARE(t.editor().table_first, int16(2));
    QCOMPARE(cells->verticalHeaderItem(0)->text(), QString("2"));
    QCOMPARE(cells->verticalHeaderItem(4)->text(), QString("6"));
    QCOMPARE(cells->item(0, 0)->text(), QString("40"));
    QCOMPARE(cells->item(1, 0)->text(), QString("70"));
    QCOMPARE(cells->item(1, 1)->text(), QString("20"));
    QCOMPARE(cells->item(3, 0)->text(), QString()); // point 5: beyond the line
    // Down from the last row scrolls by one, and the bar follows.
    cells->setFocus();
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(cells, Qt::Key_Down);
    QCOMPARE(t.editor().table_first, int16(3));
    QCOMPARE(bar->value(), 3);
    QCOMPARE(cells->currentRow(), 4);
}

QTEST_MAIN(EditorMouseTest)
#include "editor_mouse_test.moc"
