#include "dialogs/graphics_options_form.h"

#include <cmath>

#include "graphics/drawing.h"
#include "graphics/isometry.h"
#include "graphics/recording_surface.h"
#include "graphics/section_views.h"
#include "project/numtext.h"
#include "surfaces/crack.h"

namespace tobel {

static int clamp_scroll(long v, int low, int high)
{
    if (v < low)
        return low;
    if (v > high)
        return high;
    return int(v);
}

// A scroll takes a rounded value; outside its limits it stays at the limit.
static int scroll_value(double v, int low, int high)
{
    if (!(v > low))
        return low;
    if (v > high)
        return high;
    return clamp_scroll(cint(v), low, high);
}

void draw_axes_sketch(DisplayList& sketch, double degrees)
{
    sketch.clear();
    sketch.device_width = float(2 * sketch_half_side);
    sketch.device_height = float(2 * sketch_half_side);
    RecordingSurface s(sketch);
    s.Cls();
    // y grows downward: the minus of the sine puts the arms above the origin.
    s.Scale(-sketch_half_side, -sketch_half_side, sketch_half_side, sketch_half_side);
    const double a = degrees * sketch_pi / 180;
    const double b = (degrees + 90) * sketch_pi / 180;
    s.Line(0, 0, sketch_arm * std::cos(a), -sketch_arm * std::sin(a), black);
    s.ForeColor(black);
    s.Print("Y");
    s.Line(0, 0, sketch_arm * std::cos(b), -sketch_arm * std::sin(b), black);
    s.Print("X");
}

static void redraw_sketch(GraphicsOptionsForm& form)
{
    draw_axes_sketch(form.sketch, val(form.text2));
}

GraphicsOptionsForm open_graphics_options_form(const Project& p)
{
    GraphicsOptionsForm form;
    form.text1 = general_text(p.vert_exag);
    form.option = p.view.fill_style;
    form.vscroll1 = scroll_value(double(p.vert_exag) * 100, exaggeration_scroll_min, exaggeration_scroll_max);
    form.text2 = format(p.iso_angle, "####0");
    form.vscroll2 = scroll_value(val(form.text2), angle_scroll_min, angle_scroll_max);
    form.field = 1;
    redraw_sketch(form);
    return form;
}

bool graphics_options_accepts(char key)
{
    return (key >= '0' && key <= '9') || key == '.' || key == 8;
}

bool graphics_options_form_type(GraphicsOptionsForm& form, Port&, char key)
{
    if (key == '\r') {
        graphics_options_form_key(form, FormKey::enter);
        return false;
    }
    if (!graphics_options_accepts(key))
        return false;
    std::string& text = form.field == 2 ? form.text2 : form.text1;
    if (key == 8) {
        if (!text.empty())
            text.pop_back();
    } else {
        text.push_back(key);
    }
    return true;
}

static void apply_field(GraphicsOptionsForm& form)
{
    if (form.field == 2)
        graphics_options_apply_text2(form);
    else
        graphics_options_apply_text1(form);
}

void graphics_options_form_key(GraphicsOptionsForm& form, FormKey key)
{
    apply_field(form);
    if (key != FormKey::enter)
        form.field = form.field == 1 ? 2 : 1;
}

void graphics_options_form_select(GraphicsOptionsForm& form, int field)
{
    if (field != 1 && field != 2)
        return;
    if (field != form.field)
        apply_field(form);
    form.field = field;
}

void graphics_options_apply_text1(GraphicsOptionsForm& form)
{
    double v = val(form.text1);
    const double top = exaggeration_scroll_max / 100.0;
    if (v > top) {
        v = top;
        form.text1 = general_text(float(top));
    }
    form.vscroll1 = scroll_value(v * 100, exaggeration_scroll_min, exaggeration_scroll_max);
}

void graphics_options_apply_text2(GraphicsOptionsForm& form)
{
    double v = val(form.text2);
    if (v > angle_scroll_max) {
        v = angle_scroll_max;
        form.text2 = general_text(float(v));
    }
    form.vscroll2 = scroll_value(v, angle_scroll_min, angle_scroll_max);
    redraw_sketch(form);
}

void graphics_options_vscroll1(GraphicsOptionsForm& form, int value)
{
    form.vscroll1 = clamp_scroll(value, exaggeration_scroll_min, exaggeration_scroll_max);
    form.text1 = general_text(float(form.vscroll1 / 100.0));
}

void graphics_options_vscroll2(GraphicsOptionsForm& form, int value)
{
    form.vscroll2 = clamp_scroll(value, angle_scroll_min, angle_scroll_max);
    form.text2 = general_text(float(form.vscroll2));
    redraw_sketch(form);
}

void graphics_options_choose(Project& p, GraphicsOptionsForm& form, int option)
{
    if (option < 0 || option > 2)
        return;
    form.option = option;
    p.view.fill_style = int16(option);
}

bool graphics_options_form_default(Project& p, GraphicsOptionsForm& form, Port& port)
{
    if (port.message_box(graphics_default_question, Buttons::yes_no, Icon::question,
                         graphics_options_caption) != Answer::yes)
        return false;
    form.text1 = "1";
    form.text2 = "30";
    graphics_options_choose(p, form, 0);
    graphics_options_apply_text1(form);
    graphics_options_apply_text2(form);
    return true;
}

void continue_graphics_options_form(Project& p, GraphicsOptionsForm& form, Port& port)
{
    p.vert_exag = float(val(form.text1));
    p.iso_angle = float(val(form.text2));
    repaint_pictures(p, port);
}

void cancel_graphics_options_form(Project&, GraphicsOptionsForm&) {}

void repaint_pictures(Project& p, Port& port)
{
    const std::string& section = p.pictures.section.caption;
    // 1.
    if (section == "LATERAL SECTION") {
        p.view.redraw_only = true;
        draw_lateral_section(p, port);
    }
    // 2.
    if (section == "LONGITUDINAL SECTION") {
        p.keep_window = 0;
        p.view.redraw_only = true;
        scale_forces(p);
        draw_longitudinal_section(p, port);
    }
    // 3.
    if (!p.pictures.isometry.caption.empty()) {
        p.keep_window = 0;
        p.view.redraw_only = true;
        if (p.view.iso_layer == 0)
            p.view.iso_layer = p.num_layers;
        if (p.num_rows > 1)
            draw_isometry(p, port, p.view.iso_layer);
        else
            draw_longitudinal_section(p, port);
    }
    // 4.
    p.view.redraw_only = false;
}

} // namespace tobel
