// The form "Rotation Angle" as logic: one angle in degrees in a text box with
// a scroll bar, and a small arrow showing the rotated direction of sliding.
// Continue stores rotation_angle, which lasts for the next single trial only.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "project/display_list.h"
#include "project/project.h"

namespace tobel {

class DrawSurface;

constexpr const char* rotation_form_caption = "Rotation Angle";
constexpr const char* rotation_limits_text = "(Minimum: -20 deg.  Maximum: 20 deg.)";
constexpr std::array<const char*, 5> rotation_explanation = {
    "The equilibrium equations will be solved", "in a direction rotated by this angle ",
    "respective to the negative Y-direction.", "Will apply to the next single surface only,",
    "then re-set to zero.  "};
constexpr const char* rotation_limitations_title = "LIMITATIONS: ";
constexpr const char* rotation_limitations_text =
    "Can be used only with 3D Bishop or Janbu methods. Cannot be used with searches.";
constexpr int rotation_scroll_min = -20;
constexpr int rotation_scroll_max = 20;
// The arrow's own pi, finer than the 3.14 of the degree conversion.
constexpr double rotation_arrow_pi = 3.141592654;
// The little picture of the arrow, in device units (a choice of the layout).
constexpr float rotation_picture_side = 120;

struct RotationForm {
    std::string text;  // the text box
    int scroll = 0;    // the scroll bar, rotation_scroll_min..rotation_scroll_max
    DisplayList arrow; // the little picture, drawn anew with every change of the angle
};

// Opens on rotation_angle, the arrow drawn.
RotationForm open_rotation_form(const Project& p);

// The scroll bar moved to `value` (held within its limits): the text shows
// it and the arrow follows.
void rotation_form_scroll(RotationForm& form, int value);

// Text typed into the box: it stands as typed; the scroll bar follows the
// leading number, rounded and held within its limits, and the arrow the
// number itself.
void rotation_form_edit(RotationForm& form, std::string_view text);

// Whether a key typed into the box holding `text` enters it.
bool rotation_form_accepts(const std::string& text, char key, int caret = -1);

// The angle the form holds: the leading number of the text, 0 if none.
float rotation_form_angle(const RotationForm& form);

// The arrow of an angle in the plan frame of the little picture (across: Y,
// up: X, window -1.2..1.2 both ways): a shaft of length 2 through the centre
// whose tip points along the negative Y-direction turned by the angle, and
// the two barbs of the head, each from the tip.
struct ArrowPoint {
    double y = 0, x = 0;
};
struct RotationArrow {
    ArrowPoint tail, tip, barb_1, barb_2;
};
RotationArrow rotation_arrow(double angle_degrees);

// Draws the arrow of the form's angle on a surface: Cls, the window, three
// lines in black.
void draw_rotation_arrow(DrawSurface& surface, const RotationForm& form);
// The same into the form's own picture, `arrow`.
void draw_rotation_picture(RotationForm& form);

// Continue: rotation_angle = the form's angle.
void continue_rotation_form(Project& p, const RotationForm& form);

} // namespace tobel
