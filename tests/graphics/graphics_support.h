// What the picture tests read back from a kept picture: its items of one
// kind, its segments, its texts.
#pragma once

#include <string>
#include <vector>

#include "graphics/recording_surface.h"

namespace tobel::test {

inline std::vector<const DrawItem*> items_of(const DisplayList& list, DrawOp op)
{
    std::vector<const DrawItem*> out;
    for (const DrawItem& item : list.items)
        if (item.op == op)
            out.push_back(&item);
    return out;
}

// The four numbers of an item with four (fill_box, scale).
struct Box {
    float x1, y1, x2, y2;
    Colour colour;
};
inline std::vector<Box> boxes_of(const DisplayList& list, DrawOp op = DrawOp::fill_box)
{
    std::vector<Box> out;
    for (const DrawItem* item : items_of(list, op)) {
        const float* f = &list.coords[item->first];
        out.push_back({f[0], f[1], f[2], f[3], item->colour});
    }
    return out;
}

// Every segment of every run, whatever the runs were joined into.
struct Segment {
    float x1, y1, x2, y2;
    Colour colour;
    int width;
};
inline std::vector<Segment> segments_of(const DisplayList& list)
{
    std::vector<Segment> out;
    for (const DrawItem* item : items_of(list, DrawOp::lines)) {
        const auto pts = run_points(list, *item);
        for (std::size_t i = 1; i < pts.size(); ++i)
            out.push_back({pts[i - 1].x, pts[i - 1].y, pts[i].x, pts[i].y, item->colour, int(item->width)});
    }
    return out;
}

struct Text {
    float x, y;
    std::string text;
    Colour colour;
};
inline std::vector<Text> texts_of(const DisplayList& list)
{
    std::vector<Text> out;
    for (const DrawItem* item : items_of(list, DrawOp::text)) {
        const float* f = &list.coords[item->first];
        out.push_back({f[0], f[1], list.texts[item->text], item->colour});
    }
    return out;
}

} // namespace tobel::test
