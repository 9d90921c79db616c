#include "project/settings.h"

#include "project/input_reader.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/safe_save.h"

namespace tobel {

static constexpr int stored_colours = 15;

static constexpr std::int32_t layer_defaults[stored_colours] = {46888,   32456, 53728,   10072702, 30890,
                                                                1697070, 36297, 43727,   8361818,  7444951,
                                                                24576,   57814, 6778228, 13231,    9408399};
static constexpr std::int32_t piezo_defaults[stored_colours] = {
    16750969, 16736075, 16721956, 13972837, 16756600, 16745029, 16733262, 16719973,
    16754797, 16739666, 16729391, 15631495, 16759178, 15631495, 16748108};

void refresh_colour_repeats(Project& p)
{
    for (auto* table : {&p.layer_colour, &p.piezo_colour})
        for (int i = stored_colours + 1; i <= colour_entries; ++i)
            (*table)[std::size_t(i)] = (*table)[std::size_t((i - 1) % stored_colours + 1)];
}

void default_colours(Project& p)
{
    for (int i = 1; i <= stored_colours; ++i) {
        p.layer_colour[std::size_t(i)] = layer_defaults[i - 1];
        p.piezo_colour[std::size_t(i)] = piezo_defaults[i - 1];
    }
    p.selected_colour = 255;
    p.sliding_colour = 16711935;
    refresh_colour_repeats(p);
}

// A colour is kept as decimal text.
static std::int32_t colour_item(InputReader& in)
{
    return std::int32_t(vb_int(val(in.text_item())));
}

void read_settings(Project& p, const std::string& path)
{
    try {
        InputReader in(path);
        for (int i = 1; i <= stored_colours; ++i)
            p.layer_colour[std::size_t(i)] = colour_item(in);
        for (int i = 1; i <= stored_colours; ++i)
            p.piezo_colour[std::size_t(i)] = colour_item(in);
        p.selected_colour = colour_item(in);
        p.sliding_colour = colour_item(in);
        p.work_drive = in.text_item();
        p.recent_count = int16(in.integer16());
        for (int i = 1; i <= p.recent_count; ++i) {
            // The list has room for four files.
            if (i > recent_capacity)
                throw RuntimeError(err_subscript, in.where());
            p.recent_file[std::size_t(i)] = in.text_item();
        }
        refresh_colour_repeats(p);
    } catch (const RuntimeError&) {
        p.work_drive = "C:";
        default_colours(p);
    }
}

void write_settings(Project& p, const std::string& path)
{
    refresh_colour_repeats(p);
    std::string out;
    auto put = [&out](const std::string& line) {
        out += line;
        out += "\r\n";
    };
    for (int i = 1; i <= stored_colours; ++i)
        put(std::to_string(p.layer_colour[std::size_t(i)]));
    for (int i = 1; i <= stored_colours; ++i)
        put(std::to_string(p.piezo_colour[std::size_t(i)]));
    put(std::to_string(p.selected_colour));
    put(std::to_string(p.sliding_colour));
    put(p.work_drive);
    put(print_item(long(p.recent_count)));
    for (int i = 1; i <= p.recent_count && i <= recent_capacity; ++i)
        put(p.recent_file[std::size_t(i)]);
    write_file_safely(path, out);
}

} // namespace tobel
