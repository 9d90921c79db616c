// Helpers of the painter back end's tests: pictures drawn by hand through the
// recording surface, replayed to images and read back pixel by pixel.
#pragma once

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "graphics/recording_surface.h"
#include "qt/qt_app.h"
#include "qt/replay.h"

namespace tobel::test {

class QtTest : public ::testing::Test {
  protected:
    void SetUp() override { ensure_gui_application(); }
};

inline DisplayList blank_list(float width, float height)
{
    DisplayList list;
    list.device_width = width;
    list.device_height = height;
    return list;
}

// The list replayed on a white image of the given size.
inline QImage replayed(const DisplayList& list, int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    replay(list, painter, QSizeF(width, height));
    painter.end();
    return image;
}

inline bool is_colour(const QImage& image, int x, int y, int r, int g, int b)
{
    const QRgb px = image.pixel(x, y);
    return qRed(px) == r && qGreen(px) == g && qBlue(px) == b;
}

inline bool is_white(const QImage& image, int x, int y)
{
    return is_colour(image, x, y, 255, 255, 255);
}

// A pixel clearly darker than the background (text is smoothed at its edges).
inline bool is_dark(const QImage& image, int x, int y)
{
    return qGray(image.pixel(x, y)) < 128;
}

// The smallest box holding every dark pixel; null when there is none.
inline QRect dark_box(const QImage& image)
{
    int x0 = image.width(), y0 = image.height(), x1 = -1, y1 = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (is_dark(image, x, y)) {
                x0 = std::min(x0, x), y0 = std::min(y0, y);
                x1 = std::max(x1, x), y1 = std::max(y1, y);
            }
    return x1 < 0 ? QRect() : QRect(QPoint(x0, y0), QPoint(x1, y1));
}

} // namespace tobel::test
