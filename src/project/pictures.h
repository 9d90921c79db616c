// The picture windows of the program and the state of the views: what each
// window shows, its caption, its scroll bar and labels, and the picture it
// keeps. A window system shows these; the core draws into them headless.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "project/display_list.h"

namespace tobel {

struct ScrollBar {
    bool visible = false;
    std::int16_t min = 1, max = 1, value = 1;
};

struct PictureWindow {
    std::string name;    // the form: tob_pic, tob_pic3, ...
    bool exists = false; // brought up and not closed since
    std::string caption; // the picture caption
    ScrollBar scroll;
    std::string scroll_label;
    bool scroll_label_visible = false;
    std::array<std::string, 2> pointer_labels{}; // follow the pointer
    bool pointer_labels_visible = false;
    // The text area beside a picture (the single column output of the plan
    // of active columns).
    std::vector<std::string> text_lines;
    bool text_visible = false;
    DisplayList picture; // the kept picture

    explicit PictureWindow(std::string form = {}) : name(std::move(form)) {}
};

// The x-ray window's animation: the row drawn next, the shift per section,
// where the previous section stood; the timer and which button shows.
struct XrayState {
    std::int16_t xray_row = 0;
    float xray_dy = 0, xray_dz = 0, xray_y = 0, xray_z = 0;
    bool timer_on = false;
    bool stop_visible = false, continue_visible = false;
};

struct Pictures {
    PictureWindow section{"tob_pic"};        // sections, plan of the assembly
    PictureWindow isometry{"tob_pic3"};      // isometry of any stack surface
    PictureWindow search{"tob_picser"};      // search set-up and progress
    PictureWindow plan_active{"tob_picsol"}; // plan of active columns
    PictureWindow xray{"tob_picxray"};
    PictureWindow result{"tob_picres"};  // the result isometry
    PictureWindow editor{"tob_graphic"}; // the section editor
    XrayState xray_state;
};

// The view state shared by the pictures.
struct ViewState {
    std::int16_t fill_style = 0; // 0 full colour, 1 vertical hatching, 2 lines only
    bool hide_sliding = false;
    bool redraw_only = false;
    bool skip_scroll_event = false;
    // The world window of the section views and its pick distance.
    float win_left = 0, win_bottom = 0, win_right = 0, win_top = 0, pick_unit = 0;
    float z_low = 0, z_high = 0;
    std::int16_t iso_layer = 0;
    float critical_fs = 0;
    bool tentative_marker = false;
    // Device size of a picture when no window system says otherwise.
    float picture_width = 800, picture_height = 600;
};

} // namespace tobel
