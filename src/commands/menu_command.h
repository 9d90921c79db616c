// One entry for every item of the main menu: the command of an item chosen
// by its control name, as the window program and the command line's scripts
// choose them. Items that open a form open it in the dialog session; the
// program shows the session's forms afterwards.
#pragma once

#include <string>
#include <string_view>

#include "commands/dialog_session.h"
#include "project/project.h"
#include "report/report.h"
#include "ui/port.h"

namespace tobel {

// What the program around the core does for the commands that need more than
// the port: the report's preview and printing, printing and copying the
// active picture, the help file, the end of the program. A host that does
// none of it leaves those commands without effect.
class MenuHost {
  public:
    virtual ~MenuHost() = default;
    // Results > Preview Report (destination 0) and Print Report (1).
    virtual void report(Project&, Port&, int /*destination*/, const ReportContext&) {}
    // File > Print > Current view.
    virtual void print_view(Project&, Port&) {}
    // Graphics > Copy to Clipboard: the picture of the active window.
    virtual void copy_picture(Project&, Port&) {}
    // Help > Help.
    virtual void show_help(Project&, Port&) {}
    // Exit, once the main window's QueryUnload let the program end.
    virtual void end_program(Project&) {}
};

enum class MenuResult {
    done,      // the command ran
    no_action, // an item with no action attached, or a submenu
    refused,   // hidden or disabled, itself or a menu above it
    unknown,   // no such item
    busy,      // a long run is under way; nothing else runs meanwhile
};

struct MenuContext {
    DialogSession& session;
    MenuHost* host = nullptr;
    // A solve or a search is under way: the window system keeps serving the
    // interface through the port's yield, and every command is refused.
    bool running = false;
};

// The item name in the menu model: "FileName(2)" for the arrays FileName,
// Graphics_Isometry_Layer and grd_layer1, the control itself otherwise.
std::string menu_item_name(std::string_view control, int index);

// The menu that holds an item: its submenu ("TODfile", "ellipsoid",
// "Graphics_ExportGRD", ...) or its top-level menu; "" for a top-level menu.
std::string menu_parent(const Project& p, const std::string& item);

// The item and every menu above it are visible and enabled.
bool menu_item_available(const Project& p, const std::string& item);

// The commands that run long (Solve single trial, grid and auto search).
bool is_long_run(std::string_view control);

// The report's context: a solution window exists after a solve, of the kind
// of the last one (report_kind 1 single trial, 2 grid, 3 auto search), until
// the windows close.
ReportContext report_context_of(const Project& p);

// Runs the command of the item `control` (with `index` for the arrays and
// for "meth", the method labels 2 to 4; "meth2" to "meth4" name them too).
// "Graphics" stands for the opening of the Graphics menu.
MenuResult run_menu_command(Project& p, Port& port, MenuContext& ctx, std::string_view control,
                            int index = 0);

// The Sliding Surface items: the ellipsoid form opens in the session; the
// other forms of the family are reached through begin_surface_command.
void open_surface_form(Project& p, Port& port, DialogSession& s, std::string_view control);

// Closes every picture window (New and Open close all windows but the main),
// the solution window among them: report_kind becomes 0.
void close_picture_windows(Project& p);

} // namespace tobel
