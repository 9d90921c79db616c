// The form "Discontinuity Field on General Sliding Surface" as logic: the four
// limits of a rectangle whose nodes take the strength of discontinuity 1.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* field_form_caption = "Discontinuity Field on General Sliding Surface";
constexpr const char* field_form_explanation =
    "Set Discontinuity Field:  Define field by entering the limits of a rectangle.  The properties of the "
    "sliding surface wthin the rectangle will be those corresponding to the discontinuity code No. 1.  "
    "(This includes the piezo surface or Ru).  IMPORTANT NOTE:  The field assignment is not recorded in "
    "the data file and the field must be re-set every time the general surface is assembled or the file "
    "is read.  Check detailed column output to ensure field is defined correctly.  X-low and x-high are "
    "ignored in 2D.";
constexpr std::array<const char*, 4> field_row_labels = {"X-Coord. Low", "X-Coord.-High", "Y-Coord.-Low",
                                                         "Y-Coord.-High"};
constexpr const char* field_defined_message =
    "A discontinuity field has been defined.  Note: Must be re-set each time the General Sliding "
    "Surface has been constructed.";
constexpr int field_rows = 4;

struct FieldForm {
    std::array<float, field_rows> values{}; // x low, x high, y low, y high at 0..3
    int row = 1;                            // current row, 1..4

    float& value(int r) { return values[std::size_t(r - 1)]; }
    float value(int r) const { return values[std::size_t(r - 1)]; }
};

// Opens on a copy of the four limits held in memory.
FieldForm open_field_form(const Project& p);

// Up and Down between the four rows. Down past the last row meets the limit
// of the forces form: "Only " + max_forces in signed text form + " forces
// allowed." when the four rows reach it, which they never do in practice.
enum class FieldFormKey { up, down };
void field_form_key(const Project& p, FieldForm& form, FieldFormKey key, Port& port);

// Whether a key typed into a row holding `text` enters it.
bool field_form_accepts(const std::string& text, char key, int caret = -1);

// A number typed into row r: the leading number of the text, 0 if none.
void field_form_enter(FieldForm& form, int r, std::string_view text);

// Continue: the limits are stored, the field is set on the surface as it
// stands and the note is shown. Nothing is validated.
void continue_field_form(Project& p, const FieldForm& form, Port& port);

// Cancel: form_mode = 0; the limits and the codes stay.
void cancel_field_form(Project& p);

} // namespace tobel
