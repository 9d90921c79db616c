#include "dialogs/report_graphics_form.h"

namespace tobel {

ReportGraphicsForm open_report_graphics_form()
{
    return {};
}

const char* report_graphic_caption(const Project& p, int choice)
{
    switch (choice) {
    // A two-dimensional mesh has no 3-d picture: its longitudinal section stands in.
    case 1: return p.num_rows == 1 ? "LONGITUDINAL SECTION" : "SLIDING SURFACE";
    case 2: return "PLAN OF ACTIVE COLUMNS";
    case 3: return "AUTO SEARCH RESULT";
    case 4: return "GRID SEARCH RESULT";
    case 5: return "X-RAY";
    default: return "";
    }
}

const PictureWindow* report_graphic_window(const Project& p, int choice)
{
    const Pictures& w = p.pictures;
    switch (choice) {
    case 1: return p.num_rows == 1 ? &w.section : &w.isometry;
    case 2: return &w.plan_active;
    case 3:
    case 4: return &w.search;
    case 5: return &w.xray;
    default: return nullptr;
    }
}

const DisplayList* report_graphic_picture(const Project& p, int choice)
{
    const PictureWindow* w = report_graphic_window(p, choice);
    if (w == nullptr || !w->exists || w->caption != report_graphic_caption(p, choice))
        return nullptr;
    return &w->picture;
}

bool continue_report_graphics(const Project& p, Port& port, ReportGraphicsForm& form)
{
    if (report_graphic_picture(p, form.choice) == nullptr) {
        port.message_box(report_graphic_missing, Buttons::ok, Icon::warning, report_graphic_missing_title);
        return false;
    }
    form.graphic = form.choice;
    form.open = false;
    return true;
}

void cancel_report_graphics(ReportGraphicsForm& form)
{
    form.graphic = 0;
    form.open = false;
}

} // namespace tobel
