// The dialog "Report Graphics" as logic: which of five pictures goes on
// page one of a previewed or printed report. A choice is valid only when its
// window exists and holds the caption of that picture; otherwise an "Error"
// box says so and the dialog stays open.
#pragma once

#include <array>

#include "project/project.h"
#include "ui/port.h"

namespace tobel {

constexpr const char* report_graphics_caption = "Report Graphics";
constexpr const char* report_graphics_question = "Which graphic would you like displayed on the report?";
constexpr std::array<const char*, 5> report_graphic_choices = {"3-d Sliding Surface",
                                                               "Plan of Active Columns", "Auto Search Result",
                                                               "Grid Search Result", "X-ray View"};
constexpr const char* report_graphics_continue = "Continue";
constexpr const char* report_graphics_cancel = "Cancel";
constexpr const char* report_graphic_missing = "This graphic has not been created yet.";
constexpr const char* report_graphic_missing_title = "Error";

struct ReportGraphicsForm {
    int choice = 1;   // the option chosen, 1 to 5
    bool open = true; // false once Continue or Cancel closed it
    int graphic = 0;  // after Continue: the choice taken; 0 after Cancel
};

ReportGraphicsForm open_report_graphics_form();

// The caption the window of choice `choice` must hold: "SLIDING SURFACE"
// (in 2-D "LONGITUDINAL SECTION"), "PLAN OF ACTIVE COLUMNS", "AUTO SEARCH
// RESULT", "GRID SEARCH RESULT", "X-RAY"; empty outside 1 to 5.
const char* report_graphic_caption(const Project& p, int choice);

// The window whose picture choice `choice` puts on the report: the
// isometry (the longitudinal section in 2-D), the plan of active columns,
// the search picture twice, the x-ray.
const PictureWindow* report_graphic_window(const Project& p, int choice);

// The picture of a valid choice; none when its window does not exist or
// holds another caption.
const DisplayList* report_graphic_picture(const Project& p, int choice);

// Continue: a valid choice closes the form with it; otherwise the "Error"
// box and the form stays open. True when the form closed.
bool continue_report_graphics(const Project& p, Port& port, ReportGraphicsForm& form);

// Cancel: the form closes and the command ends.
void cancel_report_graphics(ReportGraphicsForm& form);

} // namespace tobel
