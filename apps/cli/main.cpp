// tobel: the command-line program that stands for the menus of TOBEL-3.
#include <iostream>

#include "cli.h"

int main(int argc, char** argv)
{
    namespace cli = tobel::cli;
    CLI::App app{"TOBEL-3: factor of safety of soil and rock slopes by limit-equilibrium column methods.\n"
                 "Exit status: 0 a valid result, 1 bad input, 2 a failed or not valid result, 3 a search "
                 "stopped before its end or findings of `check`.",
                 "tobel"};
    app.require_subcommand(1);
    app.failure_message(CLI::FailureMessage::help);
    cli::Runner run;
    cli::add_info_command(app, run);
    cli::add_check_command(app, run);
    cli::add_solve_command(app, run);
    cli::add_search_command(app, run);
    cli::add_merge_command(app, run);
    cli::add_report_command(app, run);
    cli::add_export_command(app, run);
    cli::add_draw_command(app, run);
    cli::add_convert_command(app, run);
    cli::add_run_command(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return cli::exit_bad_input;
    }
    try {
        return run ? run() : cli::exit_bad_input;
    } catch (const std::exception& e) {
        std::cerr << "tobel: " << e.what() << "\n";
        return cli::exit_bad_input;
    }
}
