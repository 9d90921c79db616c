#include "commands/search_picture.h"

#include <variant>

namespace tobel {

void open_setup_form(Project& p, Port& port, DialogSession& s, SetupDialog which)
{
    switch (which) {
    case SetupDialog::ellipsoid:
        open_surface_dialog(p, port, s,
                            p.form_mode == 3 ? SurfaceCommand::composite : SurfaceCommand::ellipsoid);
        return;
    case SetupDialog::grid_search: open_search_dialog(p, port, s, true, p.form_mode == 5); return;
    case SetupDialog::auto_search: open_search_dialog(p, port, s, false, p.form_mode == 6); return;
    case SetupDialog::none:
    case SetupDialog::search_information: return;
    }
}

bool setup_form_open(const DialogSession& s, SetupDialog which)
{
    switch (which) {
    case SetupDialog::ellipsoid: return std::holds_alternative<EllipsoidForm>(s.form);
    case SetupDialog::grid_search: return std::holds_alternative<GridSearchForm>(s.form);
    case SetupDialog::auto_search: return std::holds_alternative<AutoSearchForm>(s.form);
    case SetupDialog::none:
    case SetupDialog::search_information: return false;
    }
    return false;
}

static bool setup_mode(SetupDialog which)
{
    return which == SetupDialog::ellipsoid || which == SetupDialog::grid_search ||
           which == SetupDialog::auto_search;
}

bool search_picture_down(Project& p, Port& port, DialogSession& s, double y, double e)
{
    const SetupDialog which = search_picture_click(p);
    if (!setup_mode(which))
        return false;
    // The form reads the stored parameters when it opens; the handles stand
    // where it puts them.
    if (!setup_form_open(s, which))
        open_setup_form(p, port, s, which);
    return dialog_pointer(p, port, s, PointerAction::down, PointerButton::left, false, y, e) ==
           DialogStep::done;
}

void search_picture_move(Project& p, Port& port, DialogSession& s, double y, double e)
{
    if (s.drag.handle < 0 || !setup_form_open(s, search_picture_click(p)))
        return;
    dialog_pointer(p, port, s, PointerAction::move, PointerButton::left, false, y, e);
}

SetupDialog search_picture_up(Project& p, Port& port, DialogSession& s, double y, double e)
{
    const SetupDialog which = search_picture_click(p);
    if (setup_form_open(s, which))
        dialog_pointer(p, port, s, PointerAction::up, PointerButton::left, false, y, e);
    return which;
}

} // namespace tobel
