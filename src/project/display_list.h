// A picture as the operations that drew it, in world coordinates: what each
// picture window keeps for repaint, copy, print and the report, and what the
// tests read. Long runs of joined lines are kept as one run of points, so
// that a 3000 by 3000 isometry (about 18 million segments) stays smaller than
// the project it shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tobel {

// A colour as the tables hold it: red in the low byte, then green, then blue.
using Colour = std::int32_t;

constexpr Colour rgb(int r, int g, int b)
{
    return Colour(r & 255) | Colour((g & 255) << 8) | Colour((b & 255) << 16);
}
constexpr int red_of(Colour c)
{
    return c & 255;
}
constexpr int green_of(Colour c)
{
    return (c >> 8) & 255;
}
constexpr int blue_of(Colour c)
{
    return (c >> 16) & 255;
}

enum class DrawOp : std::uint8_t {
    cls,      // colour: the background
    scale,    // f: left, top, right, bottom
    lines,    // a run: n points joined in order; colour, width
    dot,      // f: x, y; colour, width
    polygon,  // n points in device pixels; colour = fill, text = outline colour
    fill_box, // f: x1, y1, x2, y2; colour
    text,     // f: x, y (world anchor, top left of the text); text; colour
    font,     // text: family; f: size in points
    image,    // f: x1, y1, x2, y2 (world); text = the image handle
};

// One operation; its numbers are f_count floats from `first` in the list's
// coordinate store (two per point for runs and polygons).
struct DrawItem {
    DrawOp op = DrawOp::cls;
    std::uint8_t width = 1; // DrawWidth, device pixels
    Colour colour = 0;
    std::uint32_t text = 0; // index into texts
    std::size_t first = 0;  // index into coords
    std::size_t count = 0;  // floats in coords
};

struct DisplayList {
    float device_width = 800, device_height = 600; // outer size, device units
    Colour background = 0xFFFFFF;
    std::vector<DrawItem> items;
    std::vector<float> coords;
    std::vector<std::string> texts;
    // The item of the window in force at the end of the list, so that more
    // drawing can resume in it without reading the list back.
    std::size_t last_scale = no_item;
    static constexpr std::size_t no_item = std::size_t(-1);

    void clear()
    {
        items.clear();
        coords.clear();
        texts.clear();
        last_scale = no_item;
    }
    bool empty() const { return items.empty(); }
    // Bytes held, for the memory figures.
    std::size_t bytes() const
    {
        std::size_t n = items.capacity() * sizeof(DrawItem) + coords.capacity() * sizeof(float);
        for (const auto& t : texts)
            n += sizeof(std::string) + t.capacity();
        return n;
    }
};

} // namespace tobel
