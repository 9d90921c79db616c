// The picture of the section editor over a background image for the
// documentation: written as editor-image.png into TOBEL_SCREENSHOT_DIR when
// that is set, skipped otherwise.
//
// The "scan" is the longitudinal section of the same slope along mesh row 1
// (X = 0, where section 1 stands), drawn at 1000 by 500 device units and
// saved as a JPG: its world window differs from the editor's, so as loaded
// it is stretched wrong, and the two clicks set it right. Two known points,
// Y 10, Z 10 and Y 110, Z 30, stand in the scan at fractions
// fx = (Y - left) / (right - left), fy = (top - Z) / (top - bottom) of its
// window; as loaded the image fills the editor's 800 by 600 picture, so they
// are clicked at pixels (800 fx, 600 fy). Afterwards the scan's window lies
// on the world: its left edge at the scan's left, and so on.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "editor_driver.h"
#include "graphics/section_views.h"
#include "qt/replay.h"
#include "support/form_cells.h"

using namespace tobel;
using tobel::test::EditorDialog;

using tobel::test::type_cell;

class EditorScreenshotTest : public QObject {
    Q_OBJECT
  private slots:
    void the_editor_over_a_calibrated_scan();
};

void EditorScreenshotTest::the_editor_over_a_calibrated_scan()
{
    const QByteArray out = qgetenv("TOBEL_SCREENSHOT_DIR");
    if (out.isEmpty())
        QSKIP("TOBEL_SCREENSHOT_DIR is not set");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());

    // 1. The scan: the longitudinal section of row 1 at 1000 by 500.
    QString scan_path = dir.path() + "/scan.jpg";
    gui::PictureWindowUnits scan{};
    {
        test::RecordingPort port;
        Project p = test::opened_example(port, "slope3d-new-project.tob");
        p.view.picture_width = 1000;
        p.view.picture_height = 500;
        p.view_row = 1;
        p.view_mode = 1;
        p.keep_window = 0;
        draw_longitudinal_section(p, port);
        const DisplayList& list = p.pictures.section.picture;
        QCOMPARE(list.device_width, 1000.0f);
        scan = gui::picture_window(list).value();
        QImage image(1000, 500, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        replay(list, painter, QSizeF(1000, 500));
        painter.end();
        QVERIFY(image.save(scan_path, "JPG", 90));
    }

    // 2. The editor of section 1, the scan loaded and the points typed in.
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    t.port.files = {scan_path.toStdString()};
    QTest::mouseClick(t.button("button-load-image"), Qt::LeftButton);
    QCOMPARE(t.d->windowTitle(), QString("Image Scale Point Coordinates"));
    type_cell(t.cells(), 0, 0, "10");
    type_cell(t.cells(), 0, 1, "10");
    type_cell(t.cells(), 1, 0, "110");
    type_cell(t.cells(), 1, 1, "30");
    QTest::mouseClick(t.button("continue"), Qt::LeftButton);
    QCOMPARE(ed.image.image_stage, 1);

    // 3. The two clicks where the scan shows the points.
    const auto at = [&](double y, double z) {
        const double fx = (y - scan.left) / (scan.right - scan.left);
        const double fy = (scan.top - z) / (scan.top - scan.bottom);
        return QPoint(int(std::lround(800 * fx)), int(std::lround(600 * fy)));
    };
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, at(10, 10));
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, at(110, 30));
    QCOMPARE(ed.image.image_stage, 0);
    QVERIFY(ed.image.visible);
    // Within a click's pixel (0.1875 world units) stretched by the scan.
    const double tolerance = 0.5;
    QVERIFY2(std::abs(ed.image.left - scan.left) < tolerance, qPrintable(QString::number(ed.image.left)));
    QVERIFY2(std::abs(ed.image.top - scan.top) < tolerance, qPrintable(QString::number(ed.image.top)));
    QVERIFY2(std::abs(ed.image.left + ed.image.width - scan.right) < tolerance,
             qPrintable(QString::number(ed.image.width)));
    QVERIFY2(std::abs(ed.image.top + ed.image.height - scan.bottom) < tolerance,
             qPrintable(QString::number(ed.image.height)));

    // 4. The ground line as the current one, and the picture.
    QTest::mouseClick(t.button("button-toggle-line"), Qt::LeftButton);
    QCOMPARE(ed.edit_line, int16(2));
    QTest::qWait(1);
    const QString target = QString::fromLocal8Bit(out) + "/editor-image.png";
    QVERIFY(QDir().mkpath(QString::fromLocal8Bit(out)));
    QVERIFY(t.d->grab().save(target));
}

QTEST_MAIN(EditorScreenshotTest)
#include "editor_screenshot_test.moc"
