#include "qt/replay.h"

#include "qt/image_store.h"

#include <QFont>
#include <QPaintDevice>
#include <QPen>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>

namespace tobel {

namespace {

QColor qt_colour(Colour c)
{
    return QColor(red_of(c), green_of(c), blue_of(c));
}

// A pen whose width stays in device pixels whatever the painter's scale.
QPen cosmetic_pen(Colour c, int width)
{
    QPen pen(qt_colour(c));
    pen.setWidth(width < 1 ? 1 : width);
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::SquareCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

// World to device units of the list, with the present window.
struct WorldMap {
    double left = 0, top = 0, sx = 1, sy = 1;

    void set(const float* f, double device_width, double device_height)
    {
        left = f[0];
        top = f[1];
        const double w = double(f[2]) - double(f[0]), h = double(f[3]) - double(f[1]);
        // A window of no extent maps everything onto its one edge rather than to infinity.
        sx = w != 0 ? device_width / w : 0;
        sy = h != 0 ? device_height / h : 0;
    }
    QPointF operator()(double x, double y) const { return {(x - left) * sx, (y - top) * sy}; }
    QRectF rect(const float* f) const
    {
        return QRectF((*this)(f[0], f[1]), (*this)(f[2], f[3])).normalized();
    }
};

bool finite(const QPointF& pt)
{
    return std::isfinite(pt.x()) && std::isfinite(pt.y());
}

// The font of a font item: its family (a sans font when none is named) at a
// size whose em is points * 96 / 72 device units, the size the surface
// measures text with. Qt turns points into pixels at the paint device's
// resolution, so the size is given back in the device's points.
QFont picture_font(const std::string& family, double points, const QPaintDevice* device)
{
    QFont font;
    if (!family.empty())
        font.setFamily(QString::fromStdString(family));
    else
        font.setFamilies({"Liberation Sans", "Arial", "DejaVu Sans"});
    font.setStyleHint(QFont::SansSerif);
    const int dpi = device && device->logicalDpiY() > 0 ? device->logicalDpiY() : 96;
    font.setPointSizeF(std::max(points, 1.0) * 96.0 / dpi);
    return font;
}

// A run of joined points, drawn in chunks through one fixed buffer so that
// a run of millions of points costs no allocation per segment. A point that
// is not finite breaks the line.
void draw_run(QPainter& painter, const DisplayList& list, const DrawItem& item, const WorldMap& map)
{
    constexpr int chunk = 4096;
    std::array<QPointF, chunk> buffer;
    int n = 0;
    const float* f = list.coords.data() + item.first;
    const std::size_t points = item.count / 2;
    for (std::size_t i = 0; i < points; ++i) {
        const QPointF pt = map(f[2 * i], f[2 * i + 1]);
        if (!finite(pt)) {
            if (n > 1)
                painter.drawPolyline(buffer.data(), n);
            n = 0;
            continue;
        }
        buffer[std::size_t(n++)] = pt;
        if (n == chunk) {
            painter.drawPolyline(buffer.data(), n);
            // The next chunk starts where this one ended, so the line stays joined.
            buffer[0] = buffer[std::size_t(n - 1)];
            n = 1;
        }
    }
    if (n > 1)
        painter.drawPolyline(buffer.data(), n);
}

} // namespace

void replay(const DisplayList& list, QPainter& painter, QSizeF target, const ImageStore* images)
{
    painter.save();
    const double dw = list.device_width > 0 ? double(list.device_width) : 1.0;
    const double dh = list.device_height > 0 ? double(list.device_height) : 1.0;
    painter.scale(target.width() / dw, target.height() / dh);
    const QRectF device(0, 0, dw, dh);
    painter.setClipRect(device, Qt::IntersectClip);
    // Lines as on the classic screen: whole pixels, no smoothing; text smoothed.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);

    WorldMap map;
    const float unit_window[4] = {0, 0, 1, 1}; // a surface's window before any Scale
    map.set(unit_window, dw, dh);
    QFont font = picture_font("", 8, painter.device());
    const auto text_of = [&](std::uint32_t index) -> const std::string& {
        static const std::string none;
        return index < list.texts.size() ? list.texts[index] : none;
    };

    for (const DrawItem& item : list.items) {
        if (item.first + item.count > list.coords.size())
            continue; // a damaged item is left out rather than read beyond the store
        const float* f = list.coords.data() + item.first;
        switch (item.op) {
        case DrawOp::cls: painter.fillRect(device, qt_colour(item.colour)); break;
        case DrawOp::scale:
            if (item.count >= 4)
                map.set(f, dw, dh);
            break;
        case DrawOp::lines:
            painter.setPen(cosmetic_pen(item.colour, item.width));
            painter.setBrush(Qt::NoBrush);
            draw_run(painter, list, item, map);
            break;
        case DrawOp::dot:
            if (item.count >= 2) {
                const QPointF pt = map(f[0], f[1]);
                if (finite(pt)) {
                    painter.setPen(cosmetic_pen(item.colour, item.width));
                    painter.drawPoint(pt);
                }
            }
            break;
        case DrawOp::polygon: {
            QPolygonF poly;
            poly.reserve(qsizetype(item.count / 2));
            for (std::size_t i = 0; i + 1 < item.count; i += 2)
                poly.append(QPointF(f[i], f[i + 1]));
            painter.setPen(cosmetic_pen(Colour(item.text), item.width));
            painter.setBrush(qt_colour(item.colour));
            painter.drawPolygon(poly);
            painter.setBrush(Qt::NoBrush);
            break;
        }
        case DrawOp::fill_box:
            if (item.count >= 4) {
                const QRectF r = map.rect(f);
                if (finite(r.topLeft()) && finite(r.bottomRight()))
                    painter.fillRect(r, qt_colour(item.colour));
            }
            break;
        case DrawOp::text:
            if (item.count >= 2) {
                // Placed in device units from its anchor, so a y-up window never turns it over.
                const QPointF at = map(f[0], f[1]);
                if (finite(at)) {
                    painter.setFont(font);
                    painter.setPen(qt_colour(item.colour));
                    painter.drawText(QRectF(at, QSizeF(0, 0)),
                                     Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip | Qt::TextSingleLine,
                                     QString::fromStdString(text_of(item.text)));
                }
            }
            break;
        case DrawOp::font:
            if (item.count >= 1)
                font = picture_font(text_of(item.text), double(f[0]), painter.device());
            break;
        case DrawOp::image:
            if (item.count >= 4) {
                const QRectF r = map.rect(f);
                const QImage* image = images ? images->find(int(item.text)) : nullptr;
                if (image && finite(r.topLeft()) && finite(r.bottomRight())) {
                    painter.drawImage(r, *image);
                } else if (finite(r.topLeft()) && finite(r.bottomRight())) {
                    painter.setPen(cosmetic_pen(rgb(128, 128, 128), 1));
                    painter.setBrush(Qt::NoBrush);
                    painter.drawRect(r);
                }
            }
            break;
        }
    }
    painter.restore();
}

} // namespace tobel
