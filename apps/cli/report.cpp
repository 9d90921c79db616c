// tobel report FILE [solve or search options] --out OUT.txt: solves as
// `tobel solve` or searches as `tobel search` does (then solves the tentative
// critical surface), and saves the report as Results > Save Report does.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"
#include "report/report.h"
#include "search/search_commands.h"
#include "trial.h"

namespace tobel::cli {

bool run_stored_search(Project& p, CliPort& port, const TrialOptions& trial, bool grid, bool composite);

int run_report(const std::vector<std::string>& args)
{
    TrialOptions trial;
    int search = 0; // 9 grid, 10 auto
    bool composite = false;
    std::string out;
    try {
        for (std::size_t i = 0; i < args.size(); ++i) {
            if (take_trial_option(args, i, trial))
                continue;
            if (args[i] == "--grid" || args[i] == "--auto") {
                search = args[i] == "--grid" ? 9 : 10;
            } else if (args[i] == "--composite") {
                composite = true;
            } else if (args[i] == "--out" && i + 1 < args.size()) {
                out = args[++i];
            } else {
                throw std::runtime_error("unknown option '" + args[i] + "'");
            }
        }
        if (out.empty())
            throw std::runtime_error("--out OUT.txt is required");
        if (composite && search == 0)
            throw std::runtime_error("--composite goes with --grid or --auto");
        check_trial_options(trial);
    } catch (const std::exception& e) {
        std::cerr << "tobel report: " << e.what() << "\n";
        return 1;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = trial.answer;
    port.show_windows = false;
    install_interrupt_handler();

    ReportContext context;
    context.date = report_date_text();
    if (search != 0) {
        if (!run_stored_search(p, port, trial, search == 9, composite))
            return 1;
        if (!solve_final_surface(p, port)) {
            std::cerr << "tobel report: the search found no surface; the report holds the input only\n";
        } else {
            context.solution_window = true;
            context.solve = search == 9 ? ReportSolve::grid_search : ReportSolve::auto_search;
        }
    } else {
        if (!prepare_trial(p, port, trial))
            return 1;
        if (!solve_single_trial(p, port))
            return 1;
        context.solution_window = true;
    }
    port.files = {out};
    const int errors = port.error_boxes;
    file_save_report(p, port, context);
    if (port.error_boxes != errors)
        return 1;
    finish_project(p, port);
    return context.solution_window && p.factor_of_safety == 0 ? 2 : 0;
}

} // namespace tobel::cli
