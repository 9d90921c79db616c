// The pictures of the two small forms in their dialogs: the colour editor's
// sampler (clicked for the swatch, redrawn by the blue scroll) and the
// rotation form's arrow that follows the angle.
#include <QDir>
#include <QLabel>
#include <QScrollBar>

#include "editor_driver.h"

using namespace tobel;
using tobel::gui::FormDialog;

namespace {

bool dark_near(const QImage& image, QPoint at)
{
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            const QColor c = image.pixelColor(at + QPoint(dx, dy));
            if (c.red() + c.green() + c.blue() < 200)
                return true;
        }
    return false;
}

QString describe(QColor c)
{
    return QString("(%1, %2, %3)").arg(c.red()).arg(c.green()).arg(c.blue());
}

void click_arrow(QScrollBar* bar, bool more, int times)
{
    const QPoint at = more ? QPoint(bar->width() - 4, bar->height() / 2) : QPoint(4, bar->height() / 2);
    for (int i = 0; i < times; ++i)
        QTest::mouseClick(bar, Qt::LeftButton, {}, at);
}

} // namespace

class SmallPicturesTest : public QObject {
    Q_OBJECT
  private slots:
    void initTestCase() { QDir().mkpath(QDir::tempPath() + "/tobel-forms"); }
    void the_sampler_is_clicked_for_the_swatch_and_a_box_stores_it();
    void the_rotation_arrow_follows_the_angle();
};

// The sampler is 255 units square on 255 pixels: a pixel is a unit. Square
// (i, j) is centred at (j * 25.5, i * 25.5): pixel (128, 51) lies in square
// i = 2, j = 5, coloured RGB(Int(51), Int(127.5), Int(10 * 25.5)) =
// (51, 127, 255) with the blue scroll at its top of 10, and
// (51, 127, Int(4 * 25.5) = 102) at 4. A click at (100, 200) takes red 100,
// green 200 and the scroll's own value, 10, as blue.
void SmallPicturesTest::the_sampler_is_clicked_for_the_swatch_and_a_box_stores_it()
{
    test::RecordingPort port;
    Project p = test::opened_example(port, "slope3d-new-project.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::colours);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    QCOMPARE(d.windowTitle(), QString("Colour Editor"));
    auto* pic = d.findChild<gui::FormPicture*>("picture");
    QVERIFY(pic != nullptr);
    QCOMPARE(pic->size(), QSize(255, 255));
    QCOMPARE(d.findChild<QPushButton*>("continue")->text(), QString("Save and Exit"));
    QCOMPARE(d.findChild<QPushButton*>("cancel")->text(), QString("Cancel"));
    auto* label = d.findChild<QLabel*>("scroll-label");
    QVERIFY(label != nullptr && label->isVisible());
    QCOMPARE(label->text(), QString("Less          BLUE          More"));

    QColor got = pic->grab().toImage().pixelColor(128, 51);
    QVERIFY2(got == QColor(51, 127, 255), qPrintable(describe(got)));

    auto* swatch = d.findChild<QLabel*>("swatch");
    QVERIFY(swatch != nullptr && swatch->isVisible());
    QCOMPARE(swatch->palette().color(QPalette::Window), QColor(255, 255, 255)); // white on opening
    QTest::mouseClick(pic, Qt::LeftButton, {}, QPoint(100, 200));
    QCOMPARE(swatch->palette().color(QPalette::Window), QColor(100, 200, 10));
    got = swatch->grab().toImage().pixelColor(swatch->width() / 2, swatch->height() / 2);
    QVERIFY2(got == QColor(100, 200, 10), qPrintable(describe(got)));

    // Layer box 3 takes the swatch.
    auto* cells = d.findChild<QTableWidget*>("cells");
    QTest::mouseClick(cells->viewport(), Qt::LeftButton, {},
                      cells->visualItemRect(cells->item(0, 2)).center());
    QCOMPARE(cells->item(0, 2)->background().color(), QColor(100, 200, 10));

    // The blue scroll moved to 4 redraws the sampler.
    auto* bar = d.findChild<QScrollBar*>("scroll");
    QCOMPARE(bar->value(), 10);
    click_arrow(bar, false, 6);
    QCOMPARE(bar->value(), 4);
    got = pic->grab().toImage().pixelColor(128, 51);
    QVERIFY2(got == QColor(51, 127, 102), qPrintable(describe(got)));
    d.grab().save(QDir::tempPath() + "/tobel-forms/colours-sampler.png");

    // Save and Exit: layer 3 and its repeats at 18, 33 and 48.
    const Colour layer_4 = p.layer_colour[4];
    QTest::mouseClick(d.findChild<QPushButton*>("continue"), Qt::LeftButton);
    QVERIFY(d.form_ended());
    for (int k : {3, 18, 33, 48})
        QCOMPARE(p.layer_colour[std::size_t(k)], rgb(100, 200, 10));
    QCOMPARE(p.layer_colour[4], layer_4);
}

// The arrow's picture is 120 pixels for the window -1.2 to 1.2 both ways:
// pixel = (u + 1.2) * 50 across for Y and (1.2 - X) * 50 down. At 0 degrees
// the shaft runs along Y through the centre: pixel (30, 60) is on it. At -20
// degrees the tip is at (-cos(-20), -sin(-20)) = (-0.9397, 0.3420), pixel
// (13.0, 42.9), and half way to the centre (-0.4698, 0.1710) is pixel
// (36.5, 51.4); (30, 60) is off the shaft.
void SmallPicturesTest::the_rotation_arrow_follows_the_angle()
{
    test::RecordingPort port;
    Project p = test::opened_example(port, "slope3d-new-project.tob");
    DialogSession s;
    open_dialog(p, port, s, DialogKind::rotation);
    FormDialog d(nullptr, p, port, s, &port.images);
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    auto* pic = d.findChild<gui::FormPicture*>("picture");
    QVERIFY(pic != nullptr);
    QCOMPARE(pic->size(), QSize(120, 120));
    QImage shot = pic->grab().toImage();
    QVERIFY(dark_near(shot, QPoint(30, 60)));
    QVERIFY(dark_near(shot, QPoint(90, 60)));

    auto* cells = d.findChild<QTableWidget*>("cells");
    QTest::mouseClick(cells->viewport(), Qt::LeftButton, {},
                      cells->visualItemRect(cells->item(0, 0)).center());
    for (int i = int(cells->item(0, 0)->text().size()); i > 0; --i)
        QTest::keyClick(cells, Qt::Key_Backspace);
    QTest::keyClicks(cells, "-20");
    auto* bar = d.findChild<QScrollBar*>("scroll");
    QCOMPARE(bar->value(), -20);
    shot = pic->grab().toImage();
    QVERIFY(dark_near(shot, QPoint(13, 43)));
    QVERIFY(dark_near(shot, QPoint(37, 51)));
    QVERIFY(!dark_near(shot, QPoint(30, 60)));
    d.grab().save(QDir::tempPath() + "/tobel-forms/rotation-arrow.png");

    // One step of the scroll toward the maximum: -19 in the box.
    click_arrow(bar, true, 1);
    QCOMPARE(bar->value(), -19);
    QCOMPARE(cells->item(0, 0)->text(), QString("-19"));
    QTest::mouseClick(d.findChild<QPushButton*>("continue"), Qt::LeftButton);
    QVERIFY(d.form_ended());
    QCOMPARE(p.rotation_angle, -19.0f);
}

QTEST_MAIN(SmallPicturesTest)
#include "small_pictures_test.moc"
