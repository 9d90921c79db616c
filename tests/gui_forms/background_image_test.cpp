// The background image of the section editor as a user lays it: Load Image
// through the file dialog, the point table of the two known points typed in,
// the two clicks on the image, the image stretched under the lines; Retry
// after a wrong second click; Unload Image.
//
// The picture stands as in editor_mouse_test: slope3d-new-project.tob on 800
// by 600 pixels, window Y -15 to 135 and E 75.75 to -36.75, 0.1875 world
// units a pixel, so pixel (px, py) is Y = -15 + 0.1875 px, E = 75.75 -
// 0.1875 py.
//
// The image is 200 by 100 pixels in four quarters: red upper left, green
// upper right, blue lower left, yellow lower right. As loaded it fills the
// window, so its quarter centres stand at pixels (200, 150), (600, 150),
// (200, 450), (600, 450). Point 1 (Y 10, Z 20) is clicked at the centre of
// the blue quarter, image fraction (0.25, 0.75), and point 2 (Y 30, Z 40) at
// the centre of the green one, (0.75, 0.25). Half the image's width spans
// 20 in Y and half its height 20 in Z, so the image becomes 40 by 40 with
// its left edge at 10 - 0.25 * 40 = 0 and its top at 40 + 0.25 * 40 = 50:
// Y 0 to 40, Z 10 to 50.
#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "editor_driver.h"
#include "graphics/image_calibration.h"

using namespace tobel;
using tobel::test::EditorDialog;

namespace {

QString quarter_image(const QString& dir, const char* format)
{
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x) {
            const bool right = x >= 100, lower = y >= 50;
            image.setPixelColor(x, y,
                                lower ? (right ? QColor(255, 255, 0) : QColor(0, 0, 255))
                                      : (right ? QColor(0, 255, 0) : QColor(255, 0, 0)));
        }
    const QString path = dir + "/scan." + QString(format).toLower();
    if (!image.save(path, format, 95))
        return {};
    return path;
}

QPoint pixel_of(double y, double e)
{
    return {int(std::lround((y + 15) / 0.1875)), int(std::lround((75.75 - e) / 0.1875))};
}

bool near_colour(QColor a, QColor b)
{
    // Within what a JPEG's compression leaves of a flat colour.
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) < 90;
}

QString describe(QColor c)
{
    return QString("(%1, %2, %3)").arg(c.red()).arg(c.green()).arg(c.blue());
}

// Types `text` over the point table's cell (row, col), 0-based.
void type_cell(QTableWidget* t, int row, int col, const char* text)
{
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, t->visualItemRect(t->item(row, col)).center());
    const int n = int(t->item(row, col)->text().size());
    for (int i = 0; i < n; ++i)
        QTest::keyClick(t, Qt::Key_Backspace);
    QTest::keyClicks(t, text);
}

// Load Image with `path` as the file chosen, then the four numbers typed
// and Continue.
void load_and_enter_points(EditorDialog& t, const QString& path)
{
    t.port.files = {path.toStdString()};
    QVERIFY(t.button("button-load-image")->isEnabled());
    QTest::mouseClick(t.button("button-load-image"), Qt::LeftButton);
    QCOMPARE(t.d->windowTitle(), QString("Image Scale Point Coordinates"));
    QTableWidget* cells = t.cells();
    QCOMPARE(cells->rowCount(), 2);
    QCOMPARE(cells->verticalHeaderItem(0)->text(), QString("Point.1, Lower Left:"));
    QCOMPARE(cells->verticalHeaderItem(1)->text(), QString("Point.2, Upper Right:"));
    QCOMPARE(cells->horizontalHeaderItem(0)->text(), QString("Y-coordinate"));
    QCOMPARE(cells->horizontalHeaderItem(1)->text(), QString("Z-coordinate"));
    QVERIFY(t.notes().contains("Enter the coordinates of two known points on the image"));
    type_cell(cells, 0, 0, "10");
    type_cell(cells, 0, 1, "20");
    type_cell(cells, 1, 0, "30");
    type_cell(cells, 1, 1, "40");
    QTest::mouseClick(t.button("continue"), Qt::LeftButton);
    QCOMPARE(t.d->windowTitle(), QString("Section Editor"));
    QVERIFY2(t.notes().contains("Locate Point 1 at Y =  10 and Z =  20 on image and click."),
             qPrintable(t.notes()));
}

} // namespace

class BackgroundImageTest : public QObject {
    Q_OBJECT
  private slots:
    void initTestCase();
    void two_clicks_lay_the_image_on_its_points_data();
    void two_clicks_lay_the_image_on_its_points();
    void a_second_click_left_of_the_first_offers_the_point_table_again();
    void unload_image_takes_it_away();

  private:
    QTemporaryDir dir_;
};

void BackgroundImageTest::initTestCase()
{
    QVERIFY(dir_.isValid());
    QDir().mkpath(QDir::tempPath() + "/tobel-forms");
}

void BackgroundImageTest::two_clicks_lay_the_image_on_its_points_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("bmp") << "BMP";
    QTest::newRow("jpg") << "JPG";
    QTest::newRow("tif") << "TIF";
}

void BackgroundImageTest::two_clicks_lay_the_image_on_its_points()
{
    QFETCH(QString, format);
    const QString path = quarter_image(dir_.path(), qPrintable(format));
    QVERIFY2(!path.isEmpty(), qPrintable(format));
    EditorDialog t("slope3d-new-project.tob");
    auto& ed = t.editor();
    load_and_enter_points(t, path);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(ed.image.loaded);
    QCOMPARE(ed.image.handle.width, 200);
    QCOMPARE(ed.image.handle.height, 100);
    QCOMPARE(t.p.image_p2_z, 40.0f);

    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(200, 450));
    QVERIFY2(t.notes().contains("Locate Point 2 at Y =  30 and Z =  40 on image and click."),
             qPrintable(t.notes()));
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(600, 150));
    QCOMPARE(ed.image.image_stage, 0);
    QVERIFY(ed.image.visible);
    QVERIFY2(std::abs(ed.image.left - 0) < 1e-3, qPrintable(QString::number(ed.image.left)));
    QVERIFY2(std::abs(ed.image.top - 50) < 1e-3, qPrintable(QString::number(ed.image.top)));
    QVERIFY2(std::abs(ed.image.width - 40) < 1e-3, qPrintable(QString::number(ed.image.width)));
    QVERIFY2(std::abs(ed.image.height + 40) < 1e-3, qPrintable(QString::number(ed.image.height)));
    // The clicks added no point to the line.
    QCOMPARE(ed.npts(1), int16(4));

    // On the screen: each quarter where its world place is.
    QTest::qWait(1);
    const QImage shot = t.pic->grab().toImage();
    const struct {
        double y, e;
        QColor colour;
    } quarters[] = {{10, 45, QColor(255, 0, 0)},
                    {30, 45, QColor(0, 255, 0)},
                    {10, 25, QColor(0, 0, 255)},
                    {30, 25, QColor(255, 255, 0)}};
    for (const auto& q : quarters) {
        const QColor got = shot.pixelColor(pixel_of(q.y, q.e));
        QVERIFY2(near_colour(got, q.colour),
                 qPrintable(describe(got) + " at " + QString::number(q.y) + ", " + QString::number(q.e)));
    }
    // Outside the image's rectangle the white picture shows: Y 60, Z 45.
    QVERIFY(near_colour(shot.pixelColor(pixel_of(60, 45)), Qt::white));
    shot.save(QDir::tempPath() + "/tobel-forms/editor-image-" + format.toLower() + ".png");
}

// Point 1 clicked at (600, 150) and point 2 at (200, 450), left of and below
// it: the box offers Retry (the port's OK), and the point table opens again
// with the numbers entered.
void BackgroundImageTest::a_second_click_left_of_the_first_offers_the_point_table_again()
{
    const QString path = quarter_image(dir_.path(), "BMP");
    EditorDialog t("slope3d-new-project.tob");
    load_and_enter_points(t, path);
    if (QTest::currentTestFailed())
        return;
    t.port.boxes.clear();
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(600, 150));
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(200, 450));
    QCOMPARE(int(t.port.boxes.size()), 1);
    QCOMPARE(QString::fromStdString(t.port.boxes[0]),
             QString("Point 2 must be above and to the right of Point 1"));
    QCOMPARE(t.d->windowTitle(), QString("Image Scale Point Coordinates"));
    QTableWidget* cells = t.cells();
    QCOMPARE(cells->item(0, 0)->text(), QString("10"));
    QCOMPARE(cells->item(0, 1)->text(), QString("20"));
    QCOMPARE(cells->item(1, 0)->text(), QString("30"));
    QCOMPARE(cells->item(1, 1)->text(), QString("40"));
    // Cancel of the point table drops the picture and keeps the editor open.
    QTest::mouseClick(t.button("cancel"), Qt::LeftButton);
    QVERIFY(!t.d->form_ended());
    QCOMPARE(t.d->windowTitle(), QString("Section Editor"));
    QVERIFY(!t.editor().image.loaded);
    QVERIFY(!t.button("button-unload-image")->isEnabled());
}

void BackgroundImageTest::unload_image_takes_it_away()
{
    const QString path = quarter_image(dir_.path(), "BMP");
    EditorDialog t("slope3d-new-project.tob");
    load_and_enter_points(t, path);
    if (QTest::currentTestFailed())
        return;
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(200, 450));
    QTest::mouseClick(t.pic, Qt::LeftButton, {}, QPoint(600, 150));
    QVERIFY(near_colour(t.pic->grab().toImage().pixelColor(pixel_of(10, 45)), QColor(255, 0, 0)));
    QVERIFY(t.button("button-unload-image")->isEnabled());
    QTest::mouseClick(t.button("button-unload-image"), Qt::LeftButton);
    QVERIFY(!t.editor().image.loaded);
    QVERIFY(t.port.images.find(1) == nullptr);
    QVERIFY(near_colour(t.pic->grab().toImage().pixelColor(pixel_of(10, 45)), Qt::white));
    QVERIFY(!t.button("button-unload-image")->isEnabled());
}

QTEST_MAIN(BackgroundImageTest)
#include "background_image_test.moc"
