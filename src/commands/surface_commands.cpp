#include "commands/surface_commands.h"

#include "dialogs/auto_search_form.h"
#include "dialogs/ellipsoid_form.h"
#include "dialogs/field_form.h"
#include "dialogs/general_surface_form.h"
#include "dialogs/grid_search_form.h"
#include "dialogs/wedge_form.h"
#include "graphics/picture.h"
#include "graphics/section_editor.h"
#include "project/runtime_error.h"
#include "solver/checks.h"

namespace tobel {

bool parse_surface_command(const std::string& name, SurfaceCommand& out)
{
    if (name == "ellipsoid")
        out = SurfaceCommand::ellipsoid;
    else if (name == "wedge")
        out = SurfaceCommand::wedge;
    else if (name == "composite")
        out = SurfaceCommand::composite;
    else if (name == "general")
        out = SurfaceCommand::general;
    else if (name == "general-wedge")
        out = SurfaceCommand::general_wedge;
    else
        return false;
    return true;
}

static int16 form_mode_of(SurfaceCommand which)
{
    switch (which) {
    case SurfaceCommand::composite: return 3;
    case SurfaceCommand::general_wedge: return 4;
    case SurfaceCommand::general: return 7;
    default: return 0;
    }
}

static bool confirm_surface_forms(Project& p, Port& port, SurfaceCommand which);
static bool confirm_search_forms(Project& p, Port& port, bool grid, bool composite);

// The ellipsoid family sets its surface up on the search window, which comes
// up with the caption of the command and the set-up view mode.
static void show_setup_window(Project& p, Port& port, const char* caption, int mode)
{
    p.view_mode = int16(mode);
    p.pictures.search.caption = caption;
    bring_up(p, p.pictures.search, port);
}

const char* setup_window_caption(SurfaceCommand which)
{
    if (which == SurfaceCommand::ellipsoid)
        return "ELLIPSOIDAL SURFACE";
    if (which == SurfaceCommand::composite)
        return "COMPOSITE SURFACE";
    return "";
}

const char* search_setup_window_caption()
{
    // The composite searches set up the same grid of ellipsoids; their own
    // captions come with the wedge form.
    return "ELLIPSOIDAL GRID-SEARCH";
}

// A run-time error of the construction (a crack row that has no number, say)
// is shown as the file commands show theirs; no surface is defined then.
bool confirm_surface(Project& p, Port& port, SurfaceCommand which)
{
    try {
        return confirm_surface_forms(p, port, which);
    } catch (const RuntimeError& e) {
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
        p.surface_defined = 0;
        return false;
    }
}

void begin_surface_command(Project& p, Port& port, SurfaceCommand which)
{
    // Surface commands start from clear water and force columns.
    reset_forces(p);
    p.keep_window = 0;
    p.form_mode = form_mode_of(which);
    if (which == SurfaceCommand::ellipsoid || which == SurfaceCommand::composite)
        show_setup_window(p, port, setup_window_caption(which), 3);
}

static bool confirm_surface_forms(Project& p, Port& port, SurfaceCommand which)
{
    begin_surface_command(p, port, which);
    bool to_wedges = which == SurfaceCommand::wedge;
    if (which == SurfaceCommand::ellipsoid || which == SurfaceCommand::composite) {
        to_wedges = continue_ellipsoid_form(p, open_ellipsoid_form(p), port) == EllipsoidNext::to_wedge_form;
    } else if (which == SurfaceCommand::general || which == SurfaceCommand::general_wedge) {
        GeneralSurfaceForm form = open_general_surface_form(p);
        GeneralNext next = continue_general_surface_form(p, form, port);
        // The section editor opens on the sliding line; it is confirmed as it stands.
        if (next == GeneralNext::section_editor) {
            p.edit_general = true;
            p.view_row = 1;
            SectionEditor editor = editor_open(p, port);
            next = continue_editor(p, editor, port) == EditorNext::to_wedge ? GeneralNext::to_wedge_form
                                                                            : GeneralNext::solved_ready;
        }
        to_wedges = next == GeneralNext::to_wedge_form;
    }
    if (to_wedges)
        continue_wedge_form(p, open_wedge_form(p), port);
    return p.surface_defined != 0;
}

bool confirm_search_setup(Project& p, Port& port, bool grid, bool composite)
{
    try {
        return confirm_search_forms(p, port, grid, composite);
    } catch (const RuntimeError& e) {
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
        p.surface_defined = 0;
        return false;
    }
}

static bool confirm_search_forms(Project& p, Port& port, bool grid, bool composite)
{
    reset_forces(p);
    p.keep_window = 0;
    p.form_mode = int16(composite ? (grid ? 5 : 6) : 0);
    show_setup_window(p, port, search_setup_window_caption(), grid ? 7 : 8);
    const SearchFormNext next = grid ? continue_grid_search_form(p, open_grid_search_form(p), port)
                                     : continue_auto_search_form(p, open_auto_search_form(p), port);
    if (next == SearchFormNext::to_wedge_form)
        continue_wedge_form(p, open_wedge_form(p), port);
    return p.surface_defined != 0;
}

void confirm_discontinuity_field(Project& p, Port& port, float x_low, float x_high, float y_low, float y_high)
{
    FieldForm form = open_field_form(p);
    form.values = {x_low, x_high, y_low, y_high};
    continue_field_form(p, form, port);
}

} // namespace tobel
