// The menu commands of the main window as operations on the project. Each
// runs to its end; what a window system gives is reached through the port.
#pragma once

#include "project/project.h"
#include "report/report.h"
#include "ui/port.h"

namespace tobel {

// Main window: Load hides the project menus, sets the method, lays down the defaults.
void main_load(Project& p);
// "TOBEL_3          File " + data_file_path.
void set_main_caption(Project& p);

// The save prompt of New, Open, Open legacy and Exit. Returns false when the
// user cancels, in which case the command ends with nothing changed.
bool save_prompt(Project& p, Port& port);

// File > New up to the cleared project; false when the save prompt was
// cancelled. Control Parameters follow (see new_project).
bool file_new(Project& p, Port& port);
void file_open(Project& p, Port& port);
// Open legacy file: Open with the .TOD filter and the legacy reader, always
// through the dialog; the recent list is not updated.
void file_open_legacy(Project& p, Port& port);
// Results > Save Report in .txt File: a save dialog, then the report text.
// A cancel writes nothing; a failure shows the error box.
void file_save_report(Project& p, Port& port, const ReportContext& context);
// Recent file item i (0 to 3): recent_file(4 - i), then Open without a dialog.
void file_open_recent(Project& p, Port& port, int item);
void file_save(Project& p, Port& port);
void file_save_as(Project& p, Port& port);
void file_save_as_tod(Project& p, Port& port);
// Exit (the main window's QueryUnload). Returns true when the program may end.
bool main_query_unload(Project& p, Port& port);

void mirror_command(Project& p, Port& port);

// The drawing that follows a finished load: isometry of the ground in 3-D,
// the longitudinal section in 2-D.
void show_finished_load_view(Project& p, Port& port);

// Help > About: the title and the version line with the build date.
void help_about(Project& p, Port& port);
// Graphics > Isometry item i: the isometric view of surface i + 1.
void graphics_isometry_item(Project& p, Port& port, int item);

// The solution of the surface in place as the Solve commands show it: the
// surface check, the solver of the chosen method, the result panel, the
// trial's message list when it has messages, and the solution printout.
void solve_and_show_trial(Project& p, Port& port);

// Solve single trial. Returns false for a method number outside 1 to 4.
bool solve_single_trial(Project& p, Port& port);

} // namespace tobel
