#include <QByteArray>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QSvgRenderer>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "qt/picture_files.h"
#include "qt_test_support.h"
#include "support/paths.h"

namespace tobel::test {
namespace {

namespace fs = std::filesystem;
using PictureFilesTest = QtTest;

constexpr Colour red = 0x0000FF;

// An 800 x 600 picture: a red horizontal line at world y 75 of a 0..100
// y-up window (device row 150, x 80 to 720) and a filled box.
DisplayList sample_picture()
{
    DisplayList list = blank_list(800, 600);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 100, 100, 0);
    s.Line(10, 75, 90, 75, red);
    s.fill_box(40, 10, 60, 40, rgb(0, 0, 255));
    s.CurrentX(10);
    s.CurrentY(95);
    s.Print("Section");
    return list;
}

std::size_t files_in(const fs::path& folder)
{
    std::size_t n = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(folder))
        ++n;
    return n;
}

// The message of what write_picture throws; empty when it does not throw.
std::string error_of(const DisplayList& list, const std::string& path, int w, int h)
{
    try {
        write_picture(list, path, w, h);
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "";
}

TEST(PictureFormat, format_follows_the_extension_in_any_case)
{
    EXPECT_EQ(picture_format_of("a.png"), PictureFormat::png);
    EXPECT_EQ(picture_format_of("/x/y/B.PNG"), PictureFormat::png);
    EXPECT_EQ(picture_format_of("c.Svg"), PictureFormat::svg);
    EXPECT_EQ(picture_format_of("d.pdf"), PictureFormat::pdf);
    EXPECT_EQ(picture_format_of("e.PdF"), PictureFormat::pdf);
    EXPECT_FALSE(picture_format_of("f.bmp"));
    EXPECT_FALSE(picture_format_of("png"));
    EXPECT_FALSE(picture_format_of("g.png.txt"));
    EXPECT_FALSE(picture_format_of(""));
}

TEST_F(PictureFilesTest, png_has_the_requested_size_and_the_red_line)
{
    ScratchDir dir;
    const std::string path = dir.file("section.png");
    write_picture(sample_picture(), path, 400, 300);
    QImage image;
    ASSERT_TRUE(image.load(QString::fromStdString(path), "PNG"));
    EXPECT_EQ(image.width(), 400);
    EXPECT_EQ(image.height(), 300);
    // Device row 150 of 600 is image row 75 of 300; x 80..720 is 40..360.
    EXPECT_TRUE(is_colour(image, 200, 75, 255, 0, 0) || is_colour(image, 200, 74, 255, 0, 0));
    EXPECT_TRUE(is_white(image, 20, 75));
    EXPECT_TRUE(is_white(image, 380, 75));
    // White background where nothing is drawn.
    EXPECT_TRUE(is_white(image, 390, 290));
    // The box: world x 40..60, y 10..40 is image x 160..240, rows 180..270.
    EXPECT_TRUE(is_colour(image, 200, 225, 0, 0, 255));
    EXPECT_EQ(files_in(dir.path), 1u); // no temporary left beside it
}

TEST_F(PictureFilesTest, png_replaces_an_older_file)
{
    ScratchDir dir;
    const std::string path = dir.file("p.png");
    write_bytes(path, "old");
    write_picture(sample_picture(), path, 80, 60);
    QImage image;
    ASSERT_TRUE(image.load(QString::fromStdString(path), "PNG"));
    EXPECT_EQ(image.size(), QSize(80, 60));
    EXPECT_EQ(files_in(dir.path), 1u);
}

TEST_F(PictureFilesTest, svg_is_xml_with_the_size_and_path_data)
{
    ScratchDir dir;
    const std::string path = dir.file("section.SVG");
    write_picture(sample_picture(), path, 400, 300);
    const std::string text = read_bytes(path);
    EXPECT_EQ(text.rfind("<?xml", 0), 0u);
    EXPECT_NE(text.find("<svg"), std::string::npos);
    EXPECT_NE(text.find("viewBox=\"0 0 400 300\""), std::string::npos);
    // 400 pixels at 96 an inch: 400 / 96 * 25.4 = 105.833 mm.
    EXPECT_NE(text.find("width=\"105.833mm\""), std::string::npos);
    // The line is kept as drawing data (a path or a polyline with points).
    EXPECT_TRUE(text.find(" d=\"") != std::string::npos || text.find(" points=\"") != std::string::npos);
    EXPECT_NE(text.find("Section"), std::string::npos);
    EXPECT_EQ(files_in(dir.path), 1u);
}

TEST_F(PictureFilesTest, svg_text_has_the_em_the_surface_measures_with)
{
    // 12 points at 96 pixels an inch: an em of 12 * 96 / 72 = 16 pixels.
    DisplayList list = blank_list(400, 300);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 400, 300);
    s.set_font("", 12);
    s.CurrentX(10);
    s.CurrentY(10);
    s.Print("Label");
    ScratchDir dir;
    const std::string path = dir.file("label.svg");
    write_picture(list, path, 400, 300);
    const std::string text = read_bytes(path);
    EXPECT_NE(text.find("font-size=\"16\""), std::string::npos);
    EXPECT_NE(text.find(">Label</text>"), std::string::npos);
}

TEST_F(PictureFilesTest, svg_renders_back_with_the_line_in_place)
{
    ScratchDir dir;
    const std::string path = dir.file("section.svg");
    write_picture(sample_picture(), path, 400, 300);
    QSvgRenderer renderer(QString::fromStdString(path));
    ASSERT_TRUE(renderer.isValid());
    EXPECT_EQ(renderer.viewBox(), QRect(0, 0, 400, 300));
    QImage image(400, 300, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    // As for the PNG: row 75 (or the one above), x 40..360. Smoothing may
    // soften the colour, so look for a strongly red pixel.
    auto reddish = [&](int x, int y) {
        const QRgb px = image.pixel(x, y);
        return qRed(px) > 200 && qGreen(px) < 130 && qBlue(px) < 130;
    };
    EXPECT_TRUE(reddish(200, 75) || reddish(200, 74));
    EXPECT_TRUE(is_white(image, 20, 75));
}

TEST_F(PictureFilesTest, pdf_is_a_page_of_the_picture_aspect_that_is_not_blank)
{
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftoppm is not installed";
    ScratchDir dir;
    const std::string path = dir.file("section.pdf");
    write_picture(sample_picture(), path, 800, 600);
    EXPECT_EQ(read_bytes(path).rfind("%PDF", 0), 0u);
    const std::string out = dir.file("page");
    const std::string command = "pdftoppm -png -r 50 -singlefile '" + path + "' '" + out + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    QImage page;
    ASSERT_TRUE(page.load(QString::fromStdString(out + ".png"), "PNG"));
    // 800 x 600 pixels at 96 an inch is 8.33 x 6.25 inches: 417 x 313 at 50 dpi, landscape.
    EXPECT_NEAR(page.width(), 417, 1);
    EXPECT_NEAR(page.height(), 313, 1);
    // Not blank: the red line at row 150 * 50 / 96 = 78, x 42..375.
    int red_pixels = 0;
    for (int y = 74; y <= 82; ++y)
        for (int x = 100; x <= 300; ++x) {
            const QRgb px = page.pixel(x, y);
            red_pixels += qRed(px) > 200 && qGreen(px) < 130 && qBlue(px) < 130 ? 1 : 0;
        }
    EXPECT_GT(red_pixels, 150);
}

TEST_F(PictureFilesTest, pdf_of_a_tall_picture_is_portrait)
{
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftoppm is not installed";
    ScratchDir dir;
    const std::string path = dir.file("tall.pdf");
    write_picture(sample_picture(), path, 300, 600);
    const std::string out = dir.file("page");
    ASSERT_EQ(std::system(("pdftoppm -png -r 48 -singlefile '" + path + "' '" + out + "'").c_str()), 0);
    QImage page;
    ASSERT_TRUE(page.load(QString::fromStdString(out + ".png"), "PNG"));
    // 300 x 600 pixels at 96 an inch at 48 dpi: 150 x 300.
    EXPECT_NEAR(page.width(), 150, 1);
    EXPECT_NEAR(page.height(), 300, 1);
}

TEST_F(PictureFilesTest, unknown_extension_is_refused_and_leaves_no_file)
{
    ScratchDir dir;
    const std::string path = dir.file("picture.bmp");
    const std::string message = error_of(sample_picture(), path, 100, 100);
    EXPECT_NE(message.find(path), std::string::npos);
    EXPECT_NE(message.find("extension"), std::string::npos);
    EXPECT_EQ(files_in(dir.path), 0u);
}

TEST_F(PictureFilesTest, size_of_zero_or_less_is_refused_and_leaves_no_file)
{
    ScratchDir dir;
    for (const auto& [w, h] :
         {std::pair{0, 100}, std::pair{100, 0}, std::pair{-5, 100}, std::pair{100, -1}}) {
        for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
            const std::string path = dir.file(name);
            const std::string message = error_of(sample_picture(), path, w, h);
            EXPECT_NE(message.find(path), std::string::npos) << name << " " << w << " x " << h;
            EXPECT_NE(message.find("not positive"), std::string::npos);
        }
    }
    EXPECT_EQ(files_in(dir.path), 0u);
}

TEST_F(PictureFilesTest, missing_folder_is_refused_and_leaves_no_file)
{
    ScratchDir dir;
    for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
        const std::string path = dir.file(std::string("absent/") + name);
        const std::string message = error_of(sample_picture(), path, 100, 100);
        EXPECT_NE(message.find(path), std::string::npos);
        EXPECT_NE(message.find("does not exist"), std::string::npos);
    }
    EXPECT_EQ(files_in(dir.path), 0u);
}

TEST_F(PictureFilesTest, folder_that_is_a_file_is_refused)
{
    ScratchDir dir;
    write_bytes(dir.file("plain"), "x");
    const std::string path = dir.file("plain/p.png");
    const std::string message = error_of(sample_picture(), path, 100, 100);
    EXPECT_NE(message.find("is not a folder"), std::string::npos);
    EXPECT_EQ(files_in(dir.path), 1u); // only the plain file
}

TEST_F(PictureFilesTest, unwritable_folder_is_refused_and_leaves_no_file)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may write anywhere";
    ScratchDir dir;
    const fs::path locked = dir.path / "locked";
    fs::create_directory(locked);
    fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
    for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
        const std::string path = (locked / name).string();
        const std::string message = error_of(sample_picture(), path, 100, 100);
        EXPECT_NE(message.find(path), std::string::npos);
        EXPECT_NE(message.find("cannot be written"), std::string::npos);
    }
    fs::permissions(locked, fs::perms::owner_all);
    EXPECT_EQ(files_in(locked), 0u);
}

TEST_F(PictureFilesTest, path_that_is_a_folder_is_refused_and_the_temporary_removed)
{
    // The drawing succeeds but cannot take the name of a folder: the
    // temporary file written beside it must go.
    ScratchDir dir;
    fs::create_directory(dir.path / "taken.png");
    const std::string path = dir.file("taken.png");
    const std::string message = error_of(sample_picture(), path, 50, 50);
    EXPECT_NE(message.find(path), std::string::npos);
    EXPECT_EQ(files_in(dir.path), 1u); // only the folder
    EXPECT_TRUE(fs::is_directory(path));
}

TEST_F(PictureFilesTest, side_beyond_32767_pixels_is_refused_and_leaves_no_file)
{
    ScratchDir dir;
    for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
        const std::string path = dir.file(name);
        const std::string message = error_of(sample_picture(), path, 32768, 100);
        EXPECT_NE(message.find(path), std::string::npos);
        EXPECT_NE(message.find("larger than 32767"), std::string::npos);
    }
    EXPECT_EQ(files_in(dir.path), 0u);
}

TEST_F(PictureFilesTest, png_beyond_a_gigabyte_is_refused_and_leaves_no_file)
{
    // 20,000 x 20,000 = 4e8 pixels, more than 2^28 = 268,435,456 (4 bytes each).
    ScratchDir dir;
    const std::string path = dir.file("huge.png");
    const std::string message = error_of(sample_picture(), path, 20000, 20000);
    EXPECT_NE(message.find(path), std::string::npos);
    EXPECT_NE(message.find("too large"), std::string::npos);
    EXPECT_EQ(files_in(dir.path), 0u);
}

TEST_F(PictureFilesTest, folder_of_a_read_only_file_system_is_refused)
{
    // Nobody, not even the superuser, creates files in /proc.
    if (!fs::is_directory("/proc"))
        GTEST_SKIP() << "no /proc";
    const std::string path = "/proc/tobel-picture.png";
    const std::string message = error_of(sample_picture(), path, 100, 100);
    EXPECT_NE(message.find(path), std::string::npos);
    EXPECT_NE(message.find("cannot be written"), std::string::npos);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(PictureFilesTest, ensure_gui_application_may_be_called_again)
{
    ensure_gui_application();
    ensure_gui_application();
    EXPECT_NE(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
}

} // namespace
} // namespace tobel::test
