// The form "Ellipsoidal Sliding Surface" as logic: the centre of rotation, the
// tangent plane elevation and the aspect ratio of a single ellipsoid. The form
// works on its own copy of the five values and stores them on Continue.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "geometry/section_window.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// Field numbers, 1-based as on the form.
enum EllipsoidField : int {
    field_x = 1,       // "X-coordinate:  "
    field_y = 2,       // "Y-coordinate:  "
    field_z = 3,       // "Z-coordinate:  "
    field_tangent = 4, // "Tangent Plane Elevation:"
    field_aspect = 5,  // "Ellipsoid Aspect Ratio:  "
};

// The zoom of the form's picture: level 3 is the window the section was
// drawn in; each level below is wider.
constexpr int ellipsoid_zoom_levels = 4;

struct EllipsoidForm {
    std::array<float, 5> values{}; // X, Y, Z, tangent elevation, aspect, at 0..4
    int field = 1;                 // current field, 1..5
    // The view limits of the four zoom levels, the level shown and the two
    // buttons' enabled flags.
    std::array<WorldWindow, ellipsoid_zoom_levels> zoom_windows{};
    int zoom_level = 3;
    bool zoom_in_enabled = false, zoom_out_enabled = true;

    float& value(int f) { return values[std::size_t(f - 1)]; }
    float value(int f) const { return values[std::size_t(f - 1)]; }
};

constexpr const char* ellipsoid_form_caption = "Ellipsoidal Sliding Surface";
constexpr const char* ellipsoid_form_heading = "Centre of Rotation:";
constexpr std::array<const char*, 5> ellipsoid_field_labels = {
    "X-coordinate:  ", "Y-coordinate:  ", "Z-coordinate:  ", "Tangent Plane Elevation:",
    "Ellipsoid Aspect Ratio:  "};

// Opens on a copy of search_x, single_y, single_z, tangent_z and aspect_in.
EllipsoidForm open_ellipsoid_form(const Project& p);

// Keys that move between the fields. Up goes back; Enter, Tab and Down go on;
// the field stays within 1..5.
enum class FieldKey { up, down, enter, tab };
void ellipsoid_form_key(EllipsoidForm& form, FieldKey key);

// Whether a key typed into a field holding `text` enters it: digits, one
// point, and a minus sign only as the first character.
bool ellipsoid_form_accepts(const std::string& text, char key, int caret = -1);

// A number typed into a field: the leading number of the text, 0 if none.
void ellipsoid_form_enter(EllipsoidForm& form, int field, std::string_view text);

// What is done after each change of a field before the section and the
// ellipse are drawn: view_row follows the X field, and a form whose Y and Z
// are both 0 gets the first proposal. top and bottom are the vertical limits
// of the section drawing, exaggeration its vertical scale factor.
void ellipsoid_form_preview(Project& p, EllipsoidForm& form, double top, double bottom, double exaggeration);

// Zoom Out: the limits of the present level (at level 3, the window the
// section is drawn in) are widened by a quarter of their span at each end,
// the level steps back by one and keeps them; level 0 disables Zoom Out.
// The section is drawn again in the new limits.
void ellipsoid_form_zoom_out(Project& p, EllipsoidForm& form, Port& port);

// Zoom In: the next level's stored limits come back; level 3 disables Zoom In.
void ellipsoid_form_zoom_in(Project& p, EllipsoidForm& form, Port& port);

// What the form leads to after Continue: the solve menu is ready, or (while a
// composite surface is under construction) the wedge form must open next.
enum class EllipsoidNext { solved_ready, to_wedge_form };

// Continue: stores the input set (radius_in = Z - tangent), copies it to the
// working set and builds the ellipsoid; outside a composite it also marks the
// surface defined, runs the crack and force scale and shows the Solve menu.
EllipsoidNext continue_ellipsoid_form(Project& p, const EllipsoidForm& form, Port& port);

} // namespace tobel
