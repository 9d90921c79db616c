// The form "Graphics Options" (tob_graphops) as logic: the vertical
// exaggeration, the angle of the isometry with a sketch of its two axes, and
// the fill style of the sections. The fill style is set at once by its
// options; the two numbers are stored on Continue, which repaints the open
// pictures.
#pragma once

#include <array>
#include <string>

#include "ui/form_key.h"
#include "project/display_list.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* graphics_options_caption = "Graphics Options";
constexpr const char* exaggeration_frame = "Vertical Exaggeration";
constexpr const char* exaggeration_label = "Vertical exaggeration ratio:";
constexpr const char* rotation_frame = "Rotation Angle (for isometry)";
constexpr const char* rotation_label = "Angle between y axis and horizontal:";
constexpr const char* fill_frame = "Section Drawing (fill style)";
constexpr std::array<const char*, 3> fill_option_captions = {"   Full Colour", "   Vertical Hatching",
                                                             "   Lines Only"};
constexpr const char* graphics_default_caption = "Default...";
constexpr const char* graphics_default_question = "Are you sure you want to default all values?";

// The limits of the two scrolls, a choice of the layout: VScroll1 holds the
// exaggeration times 100, from 0.01 to 20; VScroll2 the angle in degrees, from
// 0 to 90 (the Y axis between horizontal and vertical).
constexpr int exaggeration_scroll_min = 1, exaggeration_scroll_max = 2000;
constexpr int angle_scroll_min = 0, angle_scroll_max = 90;

// The sketch: a square picture of 100 by 100 device units with its origin in
// the middle and y growing downward, arms 40 units long from the origin.
constexpr double sketch_half_side = 50;
constexpr double sketch_arm = 40;
// Pi of the sketch only; no other picture uses this value.
constexpr double sketch_pi = 3.141592654;

struct GraphicsOptionsForm {
    std::string text1, text2; // Text1: exaggeration; Text2: angle
    int vscroll1 = 100, vscroll2 = 30;
    int field = 1;  // the text box with the focus: 1 Text1, 2 Text2
    int option = 0; // the fill option shown: 0, 1, 2
    DisplayList sketch;
};

// Opening: Text1 shows vert_exag and VScroll1 takes it times 100 rounded;
// Text2 shows iso_angle by "####0" and VScroll2 takes that whole number; the
// option of fill_style is set; the sketch is drawn. A value beyond a scroll's
// limits leaves the scroll at that limit.
GraphicsOptionsForm open_graphics_options_form(const Project& p);

// The two arms of the sketch for an angle of `degrees`, from the origin:
// the Y arm at the angle, the X arm at the angle + 90 degrees, drawn with
// y downward.
void draw_axes_sketch(DisplayList& sketch, double degrees);

// The key filter of both text boxes: digits and the point; backspace edits.
bool graphics_options_accepts(char key);

// Typing into the text box with the focus. A carriage return acts as Enter.
bool graphics_options_form_type(GraphicsOptionsForm& form, Port& port, char key);

// Enter applies the text with the focus; Up, Down, Left, Right and Tab leave
// it, which applies it too, and give the focus to the other text box.
void graphics_options_form_key(GraphicsOptionsForm& form, FormKey key);
// A click on a text box: the one left applies its text.
void graphics_options_form_select(GraphicsOptionsForm& form, int field);

// Enter in, or leaving, Text1: a value above the scroll's top is cut to the
// top / 100 (in the text too); the scroll takes the value * 100.
void graphics_options_apply_text1(GraphicsOptionsForm& form);
// Enter in, or leaving, Text2: the value is cut to the scroll's top; the
// scroll takes it and the sketch is redrawn.
void graphics_options_apply_text2(GraphicsOptionsForm& form);

// Moving a scroll writes its value into its text: VScroll1 / 100 into Text1,
// VScroll2 into Text2 with the sketch redrawn.
void graphics_options_vscroll1(GraphicsOptionsForm& form, int value);
void graphics_options_vscroll2(GraphicsOptionsForm& form, int value);

// Option1..3 (0, 1, 2): fill_style at once, whatever closes the form.
void graphics_options_choose(Project& p, GraphicsOptionsForm& form, int option);

// Default...: after a Yes, Text1 "1", Text2 "30", Full Colour (fill_style 0
// at once), the scrolls and the sketch following. False on No.
bool graphics_options_form_default(Project& p, GraphicsOptionsForm& form, Port& port);

// Continue: vert_exag and iso_angle take the texts through the number
// parser, then the open pictures are repainted.
void continue_graphics_options_form(Project& p, GraphicsOptionsForm& form, Port& port);

// Cancel closes; fill_style keeps what an option set.
void cancel_graphics_options_form(Project& p, GraphicsOptionsForm& form);

// The repaint that follows Graphics Options and the Colour Editor, by the
// captions of the pictures: a lateral or a longitudinal section on tob_pic,
// and the isometry when tob_pic3 has a caption (of the surface it showed, or
// the ground when none; the longitudinal section in two dimensions). The
// windows are redrawn in place and do not come up.
void repaint_pictures(Project& p, Port& port);

} // namespace tobel
