#include "graphics/recording_surface.h"

namespace tobel {

RecordingSurface::RecordingSurface(DisplayList& list)
    : DrawSurface(list.device_width, list.device_height), list_(list)
{
}

DrawItem& RecordingSurface::add(DrawOp op, Colour colour, std::initializer_list<float> numbers)
{
    DrawItem item;
    item.op = op;
    item.colour = colour;
    item.width = std::uint8_t(DrawWidth() > 255 ? 255 : DrawWidth());
    item.first = list_.coords.size();
    item.count = numbers.size();
    list_.coords.insert(list_.coords.end(), numbers);
    list_.items.push_back(item);
    return list_.items.back();
}

bool RecordingSurface::resume()
{
    if (list_.last_scale >= list_.items.size() || list_.items[list_.last_scale].op != DrawOp::scale)
        return false;
    const float* f = &list_.coords[list_.items[list_.last_scale].first];
    take_window(f[0], f[1], f[2], f[3]);
    return true;
}

// Cls starts the kept picture afresh: what was drawn before can no longer be seen.
void RecordingSurface::on_cls()
{
    list_.clear();
    add(DrawOp::cls, list_.background, {});
    on_scale();
}

void RecordingSurface::on_scale()
{
    const float right = ScaleLeft() + ScaleWidth(), bottom = ScaleTop() + ScaleHeight();
    if (!list_.items.empty() && list_.items.back().op == DrawOp::scale) {
        // A window set again before anything was drawn in it: keep the last.
        float* f = &list_.coords[list_.items.back().first];
        f[0] = ScaleLeft(), f[1] = ScaleTop(), f[2] = right, f[3] = bottom;
        return;
    }
    add(DrawOp::scale, 0, {ScaleLeft(), ScaleTop(), right, bottom});
    list_.last_scale = list_.items.size() - 1;
}

void RecordingSurface::on_segment(float x1, float y1, float x2, float y2, Colour colour, int width)
{
    if (!list_.items.empty()) {
        DrawItem& last = list_.items.back();
        if (last.op == DrawOp::lines && last.colour == colour && last.width == width &&
            last.first + last.count == list_.coords.size() && list_.coords[list_.coords.size() - 2] == x1 &&
            list_.coords.back() == y1) {
            list_.coords.push_back(x2);
            list_.coords.push_back(y2);
            last.count += 2;
            return;
        }
    }
    add(DrawOp::lines, colour, {x1, y1, x2, y2});
}

void RecordingSurface::on_dot(float x, float y, Colour colour, int)
{
    add(DrawOp::dot, colour, {x, y});
}

void RecordingSurface::on_polygon(const std::vector<DevicePoint>& points, Colour fill, Colour outline)
{
    DrawItem& item = add(DrawOp::polygon, fill, {});
    item.text = std::uint32_t(outline); // the outline colour rides in the text slot
    for (const auto& pt : points) {
        list_.coords.push_back(float(pt.x));
        list_.coords.push_back(float(pt.y));
    }
    list_.items.back().count = points.size() * 2;
}

void RecordingSurface::on_fill_box(float x1, float y1, float x2, float y2, Colour colour)
{
    add(DrawOp::fill_box, colour, {x1, y1, x2, y2});
}

void RecordingSurface::on_text(float x, float y, const std::string& text, Colour colour)
{
    DrawItem& item = add(DrawOp::text, colour, {x, y});
    item.text = std::uint32_t(list_.texts.size());
    list_.texts.push_back(text);
}

void RecordingSurface::on_font(const std::string& family, float points)
{
    DrawItem& item = add(DrawOp::font, 0, {points});
    item.text = std::uint32_t(list_.texts.size());
    list_.texts.push_back(family);
}

void RecordingSurface::on_image(int handle, float x1, float y1, float x2, float y2)
{
    DrawItem& item = add(DrawOp::image, 0, {x1, y1, x2, y2});
    item.text = std::uint32_t(handle);
}

std::vector<RunPoint> run_points(const DisplayList& list, const DrawItem& item)
{
    std::vector<RunPoint> out;
    for (std::size_t i = 0; i + 1 < item.count; i += 2)
        out.push_back({list.coords[item.first + i], list.coords[item.first + i + 1]});
    return out;
}

} // namespace tobel
