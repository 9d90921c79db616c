// A scanned drawing laid behind the lines of the section editor and
// stretched to world coordinates by two known points, so that the user can
// trace it. The image lives in the editor only: it is neither saved nor used
// in any calculation.
#pragma once

#include <array>
#include <string>

#include "graphics/section_editor.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* image_file_filter =
    "All Graphic Files (*.BMP;*.GIF;*.TIF;*.JPG)|*.BMP;*.GIF;*.TIF;*.JPG";
constexpr const char* scale_form_caption = "Image Scale Point Coordinates";
constexpr std::array<const char*, 2> scale_form_texts = {
    "Enter the coordinates of two known points on the image", "in the table below and click Continue:"};
constexpr std::array<const char*, 2> scale_form_rows = {"Point.1, Lower Left:", "Point.2, Upper Right:"};
constexpr std::array<const char*, 2> scale_form_columns = {"Y-coordinate", "Z-coordinate"};
constexpr std::array<const char*, 2> scale_form_buttons = {"Continue", "Cancel"};

// The cancel of a file dialog as the runtime numbers it: silent.
constexpr int image_dialog_cancel_error = 32755;

// Load image: an open dialog, the picture filling the window in force, then
// tob_scale. A cancelled dialog leaves all as it was.
void load_image(Project& p, SectionEditor& ed, Port& port);
// Re-scale image: tob_scale again on the image as it lies.
void rescale_image(Project& p, SectionEditor& ed);
// Unload image: the picture is removed and the editor redrawn.
void unload_image(Project& p, SectionEditor& ed, Port& port);

// tob_scale as logic: its four cells show image_p1_y, image_p1_z,
// image_p2_y, image_p2_z.
ScaleForm open_scale_form(const Project& p);
void scale_form_key(ScaleForm& form, FormKey key);
void scale_form_select(ScaleForm& form, int row, int col);
// Digits, one point, a leading minus and backspace go into the current cell.
bool scale_form_key_accepted(const std::string& text, char key);
bool scale_form_type(ScaleForm& form, Port& port, char key);
// Continue: refused with "Choice of points is incorrect!" unless point 2 is
// above and right of point 1; otherwise the values are kept and the first
// click is awaited. Returns whether the form closed.
bool continue_scale_form(Project& p, SectionEditor& ed, Port& port);
// Cancel: the picture is removed, no click is awaited, the legend returns.
void cancel_scale_form(Project& p, SectionEditor& ed, Port& port);

// A click while the calibration waits (the editor's pointer up): point 1,
// then point 2 with the stretch of the image.
void calibration_click(Project& p, SectionEditor& ed, Port& port, double y, double e);

} // namespace tobel
