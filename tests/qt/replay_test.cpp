#include <cmath>

#include "qt_test_support.h"

namespace tobel::test {
namespace {

using ReplayTest = QtTest;

constexpr Colour red = 0x0000FF; // 0xBBGGRR
constexpr Colour green = 0x00FF00;
constexpr Colour blue = 0xFF0000;

TEST_F(ReplayTest, red_line_lands_at_window_position_scaled_to_target)
{
    // Device 100 x 100, world window x 0..100, y 0..100 upward. The line at
    // world y 75 is a quarter down the device (25); the target is twice the
    // device size, so image row 50, from image x 20 to 180.
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 100, 100, 0);
    s.Line(10, 75, 90, 75, red);
    const QImage image = replayed(list, 200, 200);

    // A one-pixel cosmetic line covers row 50 or its neighbour above (pixel edge).
    EXPECT_TRUE(is_colour(image, 100, 50, 255, 0, 0) || is_colour(image, 100, 49, 255, 0, 0));
    EXPECT_TRUE(is_colour(image, 30, 50, 255, 0, 0) || is_colour(image, 30, 49, 255, 0, 0));
    // Nothing at the mirrored row (150), nor beyond the line's ends.
    EXPECT_TRUE(is_white(image, 100, 150));
    EXPECT_TRUE(is_white(image, 100, 45));
    EXPECT_TRUE(is_white(image, 10, 50));
    EXPECT_TRUE(is_white(image, 190, 50));
}

TEST_F(ReplayTest, draw_width_is_in_device_pixels_whatever_the_target_size)
{
    // DrawWidth 3 stays 3 image pixels even when the target is 4 times the device.
    DisplayList list = blank_list(50, 50);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 50, 50, 0);
    s.DrawWidth(3);
    s.Line(5, 25, 45, 25, red); // device y 25, image row 100
    const QImage image = replayed(list, 200, 200);
    int red_rows = 0;
    for (int y = 90; y < 110; ++y)
        red_rows += is_colour(image, 100, y, 255, 0, 0) ? 1 : 0;
    EXPECT_EQ(red_rows, 3);
}

TEST_F(ReplayTest, cls_fills_the_whole_target_with_the_background)
{
    DisplayList list = blank_list(10, 10);
    list.background = rgb(0, 0, 200);
    RecordingSurface s(list);
    s.Cls();
    const QImage image = replayed(list, 30, 20);
    EXPECT_TRUE(is_colour(image, 0, 0, 0, 0, 200));
    EXPECT_TRUE(is_colour(image, 29, 19, 0, 0, 200));
}

TEST_F(ReplayTest, text_near_the_top_of_a_y_up_window_stays_near_the_top)
{
    // World y 0..100 upward on a 200 x 100 device: the anchor at y 95 is
    // device row 5, the text's top edge, so the text occupies the top rows.
    DisplayList list = blank_list(200, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 100, 200, 0);
    s.set_font("", 30);
    s.CurrentX(10);
    s.CurrentY(95);
    s.Print("T");
    const QImage image = replayed(list, 200, 100);
    const QRect box = dark_box(image);
    ASSERT_FALSE(box.isNull());
    // 30 points is an em of 40 pixels: the glyph lies within rows 5 to 45.
    EXPECT_GE(box.top(), 5);
    EXPECT_LE(box.bottom(), 50);
    // Not turned over: the bar of the T is at the top of its box, so the row
    // with the most dark pixels is in the upper quarter.
    int best_row = box.top(), best = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        int n = 0;
        for (int x = box.left(); x <= box.right(); ++x)
            n += is_dark(image, x, y) ? 1 : 0;
        if (n > best)
            best = n, best_row = y;
    }
    EXPECT_LT(best_row, box.top() + box.height() / 4);
}

TEST_F(ReplayTest, text_width_matches_what_the_surface_measures)
{
    // Ten digits at 20 points: the surface counts 10 * 0.55 em with an em of
    // 20 * 96 / 72 = 26.67 pixels, 146.7 pixels. A sans digit is about
    // 0.556 em wide, so the inked width is within a tenth of that.
    DisplayList list = blank_list(400, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 400, 100); // y down: world units are device pixels
    s.set_font("", 20);
    const std::string digits = "0000000000";
    const double measured = s.TextWidth(digits);
    EXPECT_NEAR(measured, 146.67, 0.01);
    s.CurrentX(200 - measured / 2);
    s.CurrentY(30);
    s.Print(digits);
    const QImage image = replayed(list, 400, 100);
    const QRect box = dark_box(image);
    ASSERT_FALSE(box.isNull());
    EXPECT_NEAR(box.width(), 146.67, 14.7);
    // Centred by TextWidth, the ink is centred on x 200 within a few pixels.
    EXPECT_NEAR(box.left() + box.width() / 2.0, 200, 5);
    // The top of the text is the anchor: digits start a little below row 30.
    EXPECT_GE(box.top(), 30);
    EXPECT_LE(box.top(), 30 + 13); // within half an em
}

TEST_F(ReplayTest, polygon_is_filled_and_outlined_in_the_fore_colour)
{
    // Points are device pixels; the target equals the device.
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.ForeColor(0); // black outline
    s.Polygon({{20, 20}, {80, 20}, {80, 80}, {20, 80}}, blue);
    const QImage image = replayed(list, 100, 100);
    EXPECT_TRUE(is_colour(image, 50, 50, 0, 0, 255));
    EXPECT_TRUE(is_colour(image, 25, 75, 0, 0, 255));
    EXPECT_TRUE(is_white(image, 10, 50));
    EXPECT_TRUE(is_white(image, 90, 50));
    // The left edge x 20 is black on one of the pixels beside it.
    EXPECT_TRUE(is_colour(image, 20, 50, 0, 0, 0) || is_colour(image, 19, 50, 0, 0, 0));
}

TEST_F(ReplayTest, fill_box_has_no_outline)
{
    // World 20..80 in a 0..100 y-up window on a 100-pixel device: device 20..80.
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 100, 100, 0);
    s.ForeColor(0);
    s.fill_box(20, 20, 80, 80, green);
    const QImage image = replayed(list, 100, 100);
    EXPECT_TRUE(is_colour(image, 50, 50, 0, 255, 0));
    EXPECT_TRUE(is_colour(image, 21, 21, 0, 255, 0));
    EXPECT_TRUE(is_white(image, 10, 10));
    // Every pixel is either the fill or the background: no outline colour.
    int other = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            other += is_white(image, x, y) || is_colour(image, x, y, 0, 255, 0) ? 0 : 1;
    EXPECT_EQ(other, 0);
}

TEST_F(ReplayTest, dot_is_drawn_at_its_device_position)
{
    // World (30, 70) in a 0..100 y-up window: device (30, 30).
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 100, 100, 0);
    s.ForeColor(red);
    s.PSet(30, 70);
    const QImage image = replayed(list, 100, 100);
    int red_pixels = 0;
    for (int y = 28; y <= 32; ++y)
        for (int x = 28; x <= 32; ++x)
            red_pixels += is_colour(image, x, y, 255, 0, 0) ? 1 : 0;
    EXPECT_GE(red_pixels, 1);
    EXPECT_TRUE(is_white(image, 30, 70));
}

TEST_F(ReplayTest, image_place_is_shown_as_an_empty_frame)
{
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 100, 100);
    s.draw_image(1, 20, 20, 80, 80);
    const QImage image = replayed(list, 100, 100);
    EXPECT_TRUE(is_white(image, 50, 50)); // empty inside
    EXPECT_FALSE(is_white(image, 20, 50) && is_white(image, 19, 50) && is_white(image, 21, 50));
}

TEST_F(ReplayTest, drawing_outside_the_device_is_clipped)
{
    // A box reaching past the device's right edge is cut at that edge: on a
    // target of the device's size inside a wider image, the rest stays white.
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 100, 100);
    s.fill_box(50, 0, 300, 100, green);
    QImage image(300, 100, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    replay(list, painter, QSizeF(100, 100));
    painter.end();
    EXPECT_TRUE(is_colour(image, 75, 50, 0, 255, 0));
    EXPECT_TRUE(is_white(image, 150, 50));
}

TEST_F(ReplayTest, million_segment_run_replays)
{
    // One run of 1,000,000 joined segments along y = 300 + 100 sin(x / 80)
    // on an 800 x 600 y-down device: at x 0 the curve is at row 300, at
    // x = 40 pi (125.66) at its lowest row, 400.
    DisplayList list = blank_list(800, 600);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 800, 600);
    const int segments = 1000000;
    s.CurrentX(0); // the run starts at (0, 300) without a dot
    s.CurrentY(300);
    for (int i = 1; i <= segments; ++i) {
        const double x = 800.0 * i / segments;
        s.LineTo(x, 300 + 100 * std::sin(x / 80), red);
    }
    // One run of segments + 1 points, two floats each.
    ASSERT_EQ(list.items.back().op, DrawOp::lines);
    EXPECT_EQ(list.items.back().count, std::size_t(2 * (segments + 1)));
    const QImage image = replayed(list, 800, 600);
    EXPECT_TRUE(is_colour(image, 126, 400, 255, 0, 0) || is_colour(image, 126, 399, 255, 0, 0));
    EXPECT_TRUE(is_colour(image, 0, 300, 255, 0, 0) || is_colour(image, 0, 299, 255, 0, 0));
    // The end, x 800 -> sin(10) = -0.544, row 245.6: the last column shows it.
    int red_in_last_column = 0;
    for (int y = 240; y < 252; ++y)
        red_in_last_column += is_colour(image, 799, y, 255, 0, 0) ? 1 : 0;
    EXPECT_GE(red_in_last_column, 1);
    EXPECT_TRUE(is_white(image, 400, 100));
}

TEST_F(ReplayTest, run_longer_than_a_chunk_stays_joined)
{
    // 10,000 segments of 0.0099 pixels from x 1 to 99 at row 50: any gap at a
    // chunk seam would leave a white column.
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 100, 100);
    s.Line(1, 50.5, 1, 50.5, red);
    for (int i = 1; i <= 10000; ++i)
        s.LineTo(1 + 98.0 * i / 10000, 50.5, red);
    const QImage image = replayed(list, 100, 100);
    int gaps = 0;
    for (int x = 2; x <= 98; ++x)
        gaps += is_colour(image, x, 50, 255, 0, 0) || is_colour(image, x, 49, 255, 0, 0) ? 0 : 1;
    EXPECT_EQ(gaps, 0);
}

TEST_F(ReplayTest, painter_state_is_restored_after_replay)
{
    DisplayList list = blank_list(100, 100);
    RecordingSurface s(list);
    s.Cls();
    s.Scale(0, 0, 10, 10);
    s.Line(0, 0, 10, 10, red);
    QImage image(50, 50, QImage::Format_ARGB32);
    QPainter painter(&image);
    const QTransform before = painter.transform();
    replay(list, painter, QSizeF(50, 50));
    EXPECT_EQ(painter.transform(), before);
    EXPECT_FALSE(painter.hasClipping());
    painter.end();
}

} // namespace
} // namespace tobel::test
