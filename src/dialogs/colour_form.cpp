#include "dialogs/colour_form.h"

#include <cmath>

#include "dialogs/graphics_options_form.h"
#include "graphics/recording_surface.h"
#include "project/numtext.h"
#include "project/settings.h"

namespace tobel {

// A colour component as the runtime builds a colour: at most 255.
static int component(long v)
{
    return v > 255 ? 255 : (v < 0 ? 0 : int(v));
}

Colour sampler_colour(int i, int j, int hscroll1)
{
    return rgb(component(vb_int(i * sampler_step)), component(vb_int(j * sampler_step)),
               component(vb_int(hscroll1 * sampler_step)));
}

void draw_colour_sampler(ColourForm& form)
{
    form.sampler.clear();
    form.sampler.device_width = float(sampler_units);
    form.sampler.device_height = float(sampler_units);
    RecordingSurface s(form.sampler);
    s.Cls();
    s.Scale(0, 0, sampler_units, sampler_units);
    for (int i = 0; i < sampler_squares; ++i)
        for (int j = 0; j < sampler_squares; ++j) {
            const double x = j * sampler_step, y = i * sampler_step;
            s.fill_box(x - sampler_half_side, y - sampler_half_side, x + sampler_half_side,
                       y + sampler_half_side, sampler_colour(i, j, form.hscroll1));
        }
}

ColourForm open_colour_form(const Project& p)
{
    ColourForm form;
    form.swatch = rgb(255, 255, 255);
    form.hscroll1 = blue_scroll_max;
    draw_colour_sampler(form);
    for (int k = 1; k <= colour_boxes; ++k) {
        form.layer_box(k) = p.layer_colour[std::size_t(k)];
        form.piezo_box(k) = p.piezo_colour[std::size_t(k)];
    }
    form.sliding_box = p.sliding_colour;
    form.selected_box = p.selected_colour;
    return form;
}

void colour_form_hscroll1(ColourForm& form, int value)
{
    form.hscroll1 =
        value < blue_scroll_min ? blue_scroll_min : (value > blue_scroll_max ? blue_scroll_max : value);
    draw_colour_sampler(form);
}

// A coordinate held within 0 to 255, then taken as a whole number.
static int clicked_component(double v)
{
    if (!(v > 0))
        return 0;
    if (v > 255)
        return 255;
    return component(cint(v));
}

void colour_form_sampler_click(ColourForm& form, double x, double y)
{
    // Blue is the scroll's own value, not the sampler's Int(HScroll1 * 25.5).
    form.swatch = rgb(clicked_component(x), clicked_component(y), clicked_component(form.hscroll1));
}

void colour_form_box_click(ColourForm& form, ColourBox box, int k)
{
    switch (box) {
    case ColourBox::layer:
        if (k >= 1 && k <= colour_boxes)
            form.layer_box(k) = form.swatch;
        break;
    case ColourBox::piezo:
        if (k >= 1 && k <= colour_boxes)
            form.piezo_box(k) = form.swatch;
        break;
    case ColourBox::sliding: form.sliding_box = form.swatch; break;
    case ColourBox::selected: form.selected_box = form.swatch; break;
    }
}

// Entry k of a table and its repeats: k + 15, k + 30 and, up to k = 6, k + 45.
static void store_with_repeats(std::array<std::int32_t, colour_entries + 1>& table, int k, Colour c)
{
    for (int at = k; at <= colour_entries; at += colour_boxes)
        table[std::size_t(at)] = c;
}

void colour_form_save_and_exit(Project& p, const ColourForm& form, Port& port)
{
    for (int k = 1; k <= colour_boxes; ++k) {
        store_with_repeats(p.layer_colour, k, form.layer_boxes[std::size_t(k)]);
        store_with_repeats(p.piezo_colour, k, form.piezo_boxes[std::size_t(k)]);
    }
    p.sliding_colour = form.sliding_box;
    p.selected_colour = form.selected_box;
    repaint_pictures(p, port);
}

bool colour_form_revert_to_default_colour_scheme(Project& p, ColourForm& form, Port& port)
{
    if (port.message_box(revert_question, Buttons::yes_no, Icon::question, colour_form_caption) !=
        Answer::yes)
        return false;
    default_colours(p);
    form = open_colour_form(p);
    return true;
}

void cancel_colour_form(Project&, ColourForm&) {}

} // namespace tobel
