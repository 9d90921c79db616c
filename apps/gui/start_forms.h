// The two forms of the program's start: the title form, which any click
// closes, and the start form "TOB Start" with its three buttons.
#pragma once

#include <QWidget>

namespace tobel::gui {

// Modal, centred on `parent`; returns when it is clicked anywhere.
void show_title_form(QWidget* parent);

// Modal "TOB Start": 1 "Create a New File", 2 "Open an Existing File",
// 3 "Other" (tip "Enable Menu"); 0 when closed without a button.
int show_start_form(QWidget* parent);

} // namespace tobel::gui
