// The pointer on the search window tob_picser outside any form: while it
// shows a set-up (view_mode 3 ellipsoid, 7 grid search, 8 auto search) a
// press opens the form of that set-up in the session, as its menu item
// does, and hands the press, the drag and the release to the form, whose
// handles move the parameters; the release then names the form that the
// program brings up. After an auto search (view_mode 10) a click brings up
// the search information panel; after a grid search (9) nothing.
#pragma once

#include "commands/dialog_session.h"
#include "graphics/setup_handles.h"
#include "project/project.h"
#include "ui/port.h"

namespace tobel {

// The form of a set-up mode opened in the session, the composite kept: an
// ellipsoid set up for the composite surface (form_mode 3) opens as the
// composite command, a search set up for a composite (5 grid, 6 auto) as
// the composite search. Nothing for the other modes.
void open_setup_form(Project& p, Port& port, DialogSession& s, SetupDialog which);

// Whether the form open in the session is the one of the set-up mode.
bool setup_form_open(const DialogSession& s, SetupDialog which);

// Pointer down at world (y, e), e in drawn units. In a set-up mode the form
// is opened unless it is open already, and takes the press. True when the
// press went to a form.
bool search_picture_down(Project& p, Port& port, DialogSession& s, double y, double e);
// A move with the button held: the form's drag, if one runs.
void search_picture_move(Project& p, Port& port, DialogSession& s, double y, double e);
// The release: the drag ends. Returns what the click brings up by
// view_mode (search_picture_click); for a set-up mode its form is the one
// open in the session.
SetupDialog search_picture_up(Project& p, Port& port, DialogSession& s, double y, double e);

} // namespace tobel
