// tobel report FILE [solve or search options] --out OUT.txt: solves as
// `tobel solve` or searches as `tobel search` does (then solves the tentative
// critical surface), and saves the report as Results > Save Report does.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "commands/search_commands.h"
#include "report/report.h"
#include "trial.h"

namespace tobel::cli {

namespace {

struct ReportOptions {
    TrialOptions trial;
    bool grid = false, automatic = false, composite = false, valid_only = false;
    std::string out;
};

int run_report(ReportOptions& o)
{
    try {
        if (o.composite && !o.grid && !o.automatic)
            throw std::runtime_error("--composite goes with --grid or --auto");
        check_trial_options(o.trial);
    } catch (const std::exception& e) {
        std::cerr << "tobel report: " << e.what() << "\n";
        return exit_bad_input;
    }
    const bool search = o.grid || o.automatic;
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = o.trial.answer;
    port.show_windows = false;
    install_interrupt_handler();

    ReportContext context;
    context.date = report_date_text();
    if (search) {
        if (!run_stored_search(p, port, o.trial, o.grid, o.composite, o.valid_only))
            return exit_bad_input;
        if (!solve_final_surface(p, port)) {
            std::cerr << "tobel report: the search found no surface; the report holds the input only\n";
        } else {
            context.solution_window = true;
            context.solve = o.grid ? ReportSolve::grid_search : ReportSolve::auto_search;
        }
    } else {
        if (!prepare_trial(p, port, o.trial))
            return exit_bad_input;
        warn_about_tokens(p, o.trial.file);
        if (!solve_single_trial(p, port))
            return exit_bad_input;
        // A fatal input check leaves nothing to report but the refusal.
        if (p.check_fatal != 0) {
            explain_fatal_checks(p, std::cerr);
            return exit_bad_input;
        }
        context.solution_window = true;
    }
    port.files = {o.out};
    const int errors = port.error_boxes;
    file_save_report(p, port, context);
    if (port.error_boxes != errors)
        return exit_bad_input;
    finish_project(p, port);
    int status = context.solution_window ? warn_about_result(p, std::cerr) : exit_not_valid;
    if (search && !p.search.stop_reason.empty()) {
        std::cerr << "tobel: warning: the search was stopped: " << p.search.stop_reason << "\n";
        status = exit_stopped;
    }
    return status;
}

} // namespace

void add_report_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<ReportOptions>();
    auto* sub = app.add_subcommand("report", "solve or search FILE and save the solution report");
    add_trial_options(*sub, o->trial, true);
    add_settings_option(*sub);
    add_search_options(*sub, o->grid, o->automatic, o->composite, o->valid_only);
    sub->add_option("--out", o->out, "OUT.txt: the report file")->required();
    sub->callback([o, &run] { run = [o] { return run_report(*o); }; });
}

} // namespace tobel::cli
