// tobel-gui: the desktop program. With --screenshot it opens a data file,
// shows one view, writes the window to a PNG and ends.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <iostream>

#include "main_window.h"
#include "screenshot.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    CLI::App cli{"tobel-gui: TOBEL-3, the desktop program"};
    std::string shot, view, file, settings;
    cli.add_option("--screenshot", shot,
                   "OUT.png: open FILE, show the view, write the window to OUT.png and end");
    cli.add_option("--view", view,
                   "with --screenshot: isometry, longitudinal, lateral, plan, plan-active, xray, "
                   "search, editor, search-progress or report-preview")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(tobel::gui::screenshot_views),
                                                       std::end(tobel::gui::screenshot_views))));
    cli.add_option("--settings", settings, "PATH: the settings file (default tob.cfg in the current folder)");
    cli.add_option("FILE", file, "with --screenshot: the data file (.tob) to open");
    try {
        cli.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return cli.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "tobel-gui: " << e.what() << "\n";
        return 1;
    }
    if (shot.empty() && (!view.empty() || !file.empty())) {
        std::cerr << "tobel-gui: --view and FILE go with --screenshot\n";
        return 1;
    }

    tobel::Project p;
    // The settings file lives in the current folder; a screenshot reads and
    // writes none unless one is named.
    p.settings_path = !settings.empty() ? settings : shot.empty() ? "tob.cfg" : "";
    tobel::gui::MainWindow::Options options;
    options.greet = shot.empty();
    options.show_forms = shot.empty();
    tobel::gui::MainWindow w(p, options);
    if (!shot.empty())
        return tobel::gui::take_screenshot(w, shot, view, file);
    w.show();
    return app.exec();
}
