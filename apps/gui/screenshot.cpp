#include "screenshot.h"

#include <QCoreApplication>
#include <QImage>
#include <QMdiSubWindow>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <iostream>

#include "commands/menu_command.h"
#include "commands/surface_commands.h"
#include "dialogs/report_graphics_form.h"
#include "graphics/contours.h"
#include "graphics/picture.h"
#include "graphics/search_plots.h"
#include "graphics/xray.h"
#include "main_window.h"
#include "print/report_dialogs.h"
#include "views/picture_window.h"

namespace tobel::gui {

namespace {

// The surface command of the kind the data file stores.
SurfaceCommand command_of_kind(int surface_kind)
{
    switch (surface_kind) {
    case 2: return SurfaceCommand::wedge;
    case 3: return SurfaceCommand::composite;
    case 4: return SurfaceCommand::general;
    case 5: return SurfaceCommand::general_wedge;
    default: return SurfaceCommand::ellipsoid;
    }
}

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

// The picture's child alone, maximised over the others; the search
// information window stays over it.
bool show_alone(MainWindow& w, const PictureWindow& shown)
{
    w.activateWindow();
    w.show_picture_window(shown.caption);
    PictureView* view = w.picture_view(shown);
    if (view == nullptr)
        return false;
    auto* sw = qobject_cast<QMdiSubWindow*>(view->parentWidget());
    if (sw != nullptr) {
        for (QMdiSubWindow* other : w.mdi()->subWindowList())
            if (other != sw && other != w.search_info_child())
                other->hide();
        w.mdi()->setActiveSubWindow(sw);
        sw->showMaximized();
        sw->raise();
    }
    // The information window placed again over the maximised picture.
    if (QMdiSubWindow* info = w.search_info_child(); info != nullptr && info->isVisible()) {
        info->hide();
        w.sync_search_info();
    }
    return true;
}

// Trials recorded before the search-progress shot pauses the grid search:
// on the stored search of the 3-D example (83 trials, 5 lines of centres)
// the upper lines are done by then, so that their contours of F show.
constexpr int progress_pause_trials = 50;

// The stored grid search run and paused part way; while the paused panel
// waits, the contours of the centres so far and the legend are drawn, the
// window is grabbed, and the panel's Exit ends the search.
bool search_progress_shot(MainWindow& w, QImage& image, std::string& why)
{
    Project& p = w.project();
    if (!confirm_search_setup(p, w.port(), true, false)) {
        why = "the stored grid search could not be set up";
        return false;
    }
    w.refresh();
    bool asked = false;
    std::function<void()> poll;
    poll = [&] {
        if (!w.paused()) {
            QTimer::singleShot(10, &w, poll);
            return;
        }
        RecordingSurface s = picture_surface(p, p.pictures.search);
        resume_picture(p, s);
        draw_contours(p, s);
        draw_fs_legend(p, s);
        show_alone(w, p.pictures.search);
        settle();
        image = w.grab().toImage();
        w.search_info_button(3);
    };
    w.port().on_yield = [&](long) {
        if (asked || p.search.summary_count < progress_pause_trials)
            return;
        asked = true;
        w.press_pause();
        QTimer::singleShot(10, &w, poll);
    };
    w.choose("gridsearchsolv");
    w.port().on_yield = nullptr;
    if (image.isNull())
        why = "the grid search ended before it was paused";
    return !image.isNull();
}

// The stored surface solved, then the report's print preview with the plan
// of active columns on page one, grabbed alone.
bool report_preview_shot(MainWindow& w, QImage& image, std::string& why)
{
    Project& p = w.project();
    if (!confirm_surface(p, w.port(), command_of_kind(p.surface_kind))) {
        why = "the stored sliding surface could not be built";
        return false;
    }
    w.refresh();
    w.choose("Solve_single_trial");
    // 2: "Plan of Active Columns".
    ReportPreviewDialog preview(&w, p, report_context_of(p), report_graphic_picture(p, 2));
    preview.adjustSize();
    preview.show();
    settle();
    image = preview.grab().toImage();
    preview.hide();
    return true;
}

// The view's picture window, or null with the reason in `why`.
const PictureWindow* show_view(MainWindow& w, const std::string& view, std::string& why)
{
    Project& p = w.project();
    const bool three_d = p.num_rows > 1;
    if ((view == "isometry" || view == "lateral" || view == "xray") && !three_d) {
        why = "the " + view + " view needs a three-dimensional project (more than one mesh row)";
        return nullptr;
    }
    if (view == "isometry") {
        w.choose("Graphics");
        w.choose("Graphics_Isometry_Layer", p.num_layers - 1);
        return &p.pictures.isometry;
    }
    if (view == "longitudinal") {
        w.choose("Graphics_Longitudinal_Section");
        return &p.pictures.section;
    }
    if (view == "lateral") {
        w.choose("Graphics_Lateral_Section");
        return &p.pictures.section;
    }
    if (view == "plan") {
        w.choose("Graphics_plan");
        return &p.pictures.section;
    }
    if (view == "plan-active") {
        // The stored surface confirmed as its form's Continue would, then solved.
        if (!confirm_surface(p, w.port(), command_of_kind(p.surface_kind))) {
            why = "the stored sliding surface could not be built";
            return nullptr;
        }
        w.refresh();
        w.choose("Solve_single_trial");
        return &p.pictures.plan_active;
    }
    if (view == "xray") {
        w.choose("xxray");
        // The timer's ticks all at once.
        finish_xray(p);
        w.refresh();
        return &p.pictures.xray;
    }
    if (view == "search") {
        if (!confirm_search_setup(p, w.port(), true, false)) {
            why = "the stored grid search could not be set up";
            return nullptr;
        }
        w.refresh();
        w.choose("gridsearchsolv");
        return &p.pictures.search;
    }
    if (view == "editor") {
        w.choose("Edit_Crosssections");
        return &p.pictures.editor;
    }
    why = "unknown view '" + view + "'";
    return nullptr;
}

} // namespace

int take_screenshot(MainWindow& w, const std::string& out, const std::string& view, const std::string& file)
{
    auto fail = [](const std::string& why) {
        std::cerr << "tobel-gui: " << why << "\n";
        return 1;
    };
    // No box or dialog shows: errors are collected, questions answered No.
    std::vector<std::string> errors;
    w.port().answer_box = [&errors](const QtPort::Box& b) {
        if (b.icon == Icon::critical || b.icon == Icon::warning)
            errors.push_back(b.text);
        return b.buttons == Buttons::ok || b.buttons == Buttons::ok_cancel ? Answer::ok : Answer::no;
    };
    w.port().answer_file = [](const std::string&, bool) { return std::nullopt; };
    w.port().answer_input = [](const std::string&) { return std::nullopt; };
    // The search pictures are taller: the section's window is fitted to the
    // ground across the width, and the centres above the crest, with their
    // contours, show only where the picture leaves room above it.
    if (view == "search" || view == "search-progress")
        w.resize(1100, 1100);
    else
        w.resize(1280, 860);
    w.show();
    settle();

    Project& p = w.project();
    if (!file.empty()) {
        std::error_code ec;
        if (!std::filesystem::is_regular_file(file, ec))
            return fail("cannot open " + file);
        // Open without its dialog, as a recent file is opened.
        p.data_file_path = std::filesystem::absolute(file).string();
        p.open_recent_pending = -1;
        w.choose("File_open");
        if (!errors.empty())
            return fail(file + ": " + errors.front());
    } else if (!view.empty()) {
        return fail("--view needs a data file");
    }
    if (view == "search-progress" || view == "report-preview") {
        QImage image;
        std::string why;
        const bool ok = view == "search-progress" ? search_progress_shot(w, image, why)
                                                  : report_preview_shot(w, image, why);
        if (!ok)
            return fail(why);
        if (!errors.empty())
            return fail(errors.front());
        if (image.isNull() || !image.save(QString::fromStdString(out), "PNG"))
            return fail("cannot write " + out);
        return 0;
    }
    if (!view.empty()) {
        std::string why;
        const PictureWindow* shown = show_view(w, view, why);
        if (shown == nullptr)
            return fail(why);
        if (!errors.empty())
            return fail(errors.front());
        if (!shown->exists)
            return fail("the " + view + " view did not come up");
        // The view's own child, maximised over the others.
        if (!show_alone(w, *shown))
            return fail("the " + view + " view has no window");
    }
    settle();
    const QImage image = w.grab().toImage();
    if (image.isNull() || !image.save(QString::fromStdString(out), "PNG"))
        return fail("cannot write " + out);
    return 0;
}

} // namespace tobel::gui
