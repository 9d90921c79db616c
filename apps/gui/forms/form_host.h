// The modal forms of the desktop program: each form of the core's dialog
// session shown as a Qt dialog that hands every click, key and button to the
// session and repaints itself from the form's state.
#pragma once

#include <QWidget>

#include "commands/dialog_session.h"
#include "project/project.h"
#include "qt/image_store.h"
#include "ui/port.h"

namespace tobel::gui {

// Shows the form open in `s` as a modal dialog over `parent`, then each form
// its Continue opens (the New wizard), and returns when none is open.
// `images` holds the pictures the port loaded (the section editor's background).
void run_dialogs(QWidget* parent, Project& p, Port& port, DialogSession& s, const ImageStore* images);

} // namespace tobel::gui
