// The form "Tension Crack" as logic: three options for how the crack is
// given and up to two cells. Choosing an option sets crack_mode at once; the
// cells are stored on Continue.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "project/project.h"

namespace tobel {

constexpr const char* crack_form_caption = "Tension Crack";
// Option n sets crack_mode n.
constexpr std::array<const char*, 3> crack_option_captions = {"No tension crack", "Specified by Y-coordinate",
                                                              "Specified by depth"};
constexpr const char* crack_y_label = "Y-coordinate of Tension Crack:";
constexpr const char* crack_depth_label = "Tension crack depth:";
constexpr const char* crack_water_label = "% Tension crack filled by water:";
constexpr int crack_cells = 2;

struct CrackForm {
    std::array<float, crack_cells> values{}; // cell 1 at 0, cell 2 at 1
    int cell = 1;                            // current cell, 1..2

    float& value(int c) { return values[std::size_t(c - 1)]; }
    float value(int c) const { return values[std::size_t(c - 1)]; }
};

// Opens on crack_y (mode 1) or crack_depth (mode 2) in cell 1 and
// crack_water_pct in cell 2, at cell 1.
CrackForm open_crack_form(const Project& p);

// An option: crack_mode = mode (0, 1 or 2) straight away. The cells keep
// what they hold.
void crack_form_choose(Project& p, int mode);

// Whether cell c shows under the present mode, and its label ("" if hidden).
bool crack_cell_visible(const Project& p, int c);
std::string crack_cell_label(const Project& p, int c);

// Up goes to the previous cell; Down, Enter and Tab to the next. The current
// cell stays within 1..2.
enum class CrackKey { up, down, enter, tab };
void crack_form_key(CrackForm& form, CrackKey key);

// A click on the label of cell c takes that cell.
void crack_form_click_label(CrackForm& form, int c);

// Whether a key typed into a cell holding `text` enters it.
bool crack_form_accepts(const std::string& text, char key, int caret = -1);

// A number typed into cell c: the leading number of the text, 0 if none.
void crack_form_enter(CrackForm& form, int c, std::string_view text);

// Continue, by crack_mode: 0 clears crack_y, crack_depth and crack_water_pct;
// 1 stores crack_y and crack_water_pct; 2 stores crack_depth and
// crack_water_pct; then scale_forces.
void continue_crack_form(Project& p, const CrackForm& form);

// Cancel only closes: an option already chosen stays in crack_mode.
void cancel_crack_form(const Project& p);

} // namespace tobel
