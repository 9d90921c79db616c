// The form "Colour Editor" (tob_cols) as logic: a sampler of colours with a
// blue scroll, a swatch that a click on the sampler fills, and the boxes of
// the 15 layer and 15 piezometric colours, the sliding and the selected
// colour that a click fills from the swatch. Save and Exit stores the boxes
// in the colour tables and repaints the open pictures.
#pragma once

#include <array>
#include <cstddef>

#include "project/display_list.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* colour_form_caption = "Colour Editor";
constexpr const char* blue_scroll_label = "Less          BLUE          More";
constexpr const char* colour_help_1 = " 1)  Click on sampler to select colour";
constexpr const char* colour_help_2 = " 2)  Click on a box to the left to store";
constexpr const char* layer_boxes_label = "Layers:";
constexpr const char* piezo_boxes_label = "Piezo:";
constexpr const char* sliding_box_label = "Sliding Surface:";
constexpr const char* selected_box_label = "Selected Layer:";
constexpr const char* save_and_exit_caption = "Save and Exit";
constexpr const char* revert_caption = "Revert to Default Colour Scheme";
constexpr const char* revert_question = "Are you sure you want to revert to default colours?";

constexpr int colour_boxes = 15; // layer and piezo boxes each
constexpr int sampler_squares = 11;
constexpr double sampler_units = 255; // the sampler picture is 255 units square
constexpr double sampler_step = 25.5;
constexpr double sampler_half_side = 12.75;
// HScroll1, a choice of the layout: 0 at the Less end to 10 at the More end,
// one step per column of the sampler, starting at the More end.
constexpr int blue_scroll_min = 0, blue_scroll_max = 10;

enum class ColourBox { layer, piezo, sliding, selected };

struct ColourForm {
    Colour swatch = rgb(255, 255, 255);
    int hscroll1 = blue_scroll_max;
    std::array<Colour, colour_boxes + 1> layer_boxes{}; // 1..15
    std::array<Colour, colour_boxes + 1> piezo_boxes{}; // 1..15
    Colour sliding_box = 0, selected_box = 0;
    DisplayList sampler;

    Colour& layer_box(int k) { return layer_boxes[std::size_t(k)]; }
    Colour& piezo_box(int k) { return piezo_boxes[std::size_t(k)]; }
};

// Opening: a white swatch, the blue scroll at its top, the sampler drawn and
// the boxes filled from the colour tables.
ColourForm open_colour_form(const Project& p);

// The colour of sampler square (i, j), i and j from 0 to 10, for a blue scroll
// at `hscroll1`: RGB(Int(i * 25.5), Int(j * 25.5), Int(hscroll1 * 25.5)).
Colour sampler_colour(int i, int j, int hscroll1);

// The 11 by 11 squares: square (i, j) centred at (j * 25.5, i * 25.5) with
// half side 12.75, on a picture whose window runs 0 to 255 both ways with y
// downward.
void draw_colour_sampler(ColourForm& form);

// HScroll1 moved: the sampler is redrawn.
void colour_form_hscroll1(ColourForm& form, int value);

// A click on the sampler at (x, y): red = x, green = y, blue = HScroll1, each
// held within 0 to 255; the colour becomes the swatch's. The sampler's rows
// carry red and its columns green, so the swatch is not the square clicked.
void colour_form_sampler_click(ColourForm& form, double x, double y);

// A click on a box: the swatch's colour goes to it. `k` (1..15) picks the
// layer or piezo box.
void colour_form_box_click(ColourForm& form, ColourBox box, int k = 1);

// Save and Exit: each layer box k goes to layer_colour k, k + 15, k + 30 and,
// for k up to 6, k + 45; the piezo boxes likewise; the sliding and selected
// colours take theirs; then the pictures are repainted. The form closes.
void colour_form_save_and_exit(Project& p, const ColourForm& form, Port& port);

// Revert to Default Colour Scheme: after a Yes the default colours are laid
// down and the form is opened anew on them (true); after a No nothing
// changes (false).
bool colour_form_revert_to_default_colour_scheme(Project& p, ColourForm& form, Port& port);

// Cancel closes without change.
void cancel_colour_form(Project& p, ColourForm& form);

} // namespace tobel
