#include "dialogs/rotation_form.h"

#include <algorithm>
#include <cmath>

#include "dialogs/numeric_entry.h"
#include "graphics/draw_surface.h"
#include "graphics/drawing.h"
#include "graphics/recording_surface.h"
#include "project/numtext.h"

namespace tobel {

static int held_in_limits(double value)
{
    if (!(value > rotation_scroll_min))
        return rotation_scroll_min;
    if (value >= rotation_scroll_max)
        return rotation_scroll_max;
    return int(cint(value));
}

RotationForm open_rotation_form(const Project& p)
{
    RotationForm form;
    form.text = general_text(p.rotation_angle);
    form.scroll = held_in_limits(p.rotation_angle);
    draw_rotation_picture(form);
    return form;
}

void rotation_form_scroll(RotationForm& form, int value)
{
    form.scroll = std::clamp(value, rotation_scroll_min, rotation_scroll_max);
    form.text = general_text(float(form.scroll));
    draw_rotation_picture(form);
}

// A typed angle beyond the limits is kept as typed; only the scroll bar is
// bounded. The limits are advice shown beside the box.
void rotation_form_edit(RotationForm& form, std::string_view text)
{
    form.text = std::string(text);
    form.scroll = held_in_limits(val(text));
    draw_rotation_picture(form);
}

bool rotation_form_accepts(const std::string& text, char key, int caret)
{
    return numeric_key_accepted(text, key, caret);
}

float rotation_form_angle(const RotationForm& form)
{
    return float(val(form.text));
}

// The direction of sliding turned by the angle is, in (X, Y), (-sin a, -cos a):
// the same turn as the solver gives the dips.
RotationArrow rotation_arrow(double angle_degrees)
{
    const double a = angle_degrees * rotation_arrow_pi / 180.0;
    const double head = 0.3;   // barb length
    const double spread = 0.4; // barb angle from the shaft, radians
    const double dy = -std::cos(a), dx = -std::sin(a);
    RotationArrow arrow;
    arrow.tip = {dy, dx};
    arrow.tail = {-dy, -dx};
    // Each barb runs back from the tip, towards the tail turned either way.
    arrow.barb_1 = {dy + head * std::cos(a + spread), dx + head * std::sin(a + spread)};
    arrow.barb_2 = {dy + head * std::cos(a - spread), dx + head * std::sin(a - spread)};
    return arrow;
}

void draw_rotation_arrow(DrawSurface& surface, const RotationForm& form)
{
    const RotationArrow arrow = rotation_arrow(double(rotation_form_angle(form)));
    surface.Cls();
    surface.Scale(-1.2, 1.2, 1.2, -1.2);
    surface.Line(arrow.tail.y, arrow.tail.x, arrow.tip.y, arrow.tip.x, black);
    surface.Line(arrow.tip.y, arrow.tip.x, arrow.barb_1.y, arrow.barb_1.x, black);
    surface.Line(arrow.tip.y, arrow.tip.x, arrow.barb_2.y, arrow.barb_2.x, black);
}

void draw_rotation_picture(RotationForm& form)
{
    form.arrow.clear();
    form.arrow.device_width = rotation_picture_side;
    form.arrow.device_height = rotation_picture_side;
    RecordingSurface s(form.arrow);
    draw_rotation_arrow(s, form);
}

void continue_rotation_form(Project& p, const RotationForm& form)
{
    p.rotation_angle = rotation_form_angle(form);
}

} // namespace tobel
