#include <iostream>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "trial.h"

namespace tobel::cli {

void add_info_command(CLI::App& app, Runner& run)
{
    auto file = std::make_shared<std::string>();
    auto* sub = app.add_subcommand("info", "open FILE as File > Open does and print the project as read");
    add_file_option(*sub, *file);
    add_settings_option(*sub);
    sub->callback([file, &run] {
        run = [file] {
            Project p;
            start_project(p);
            CliPort port(std::cerr);
            if (!open_data_file(p, port, *file))
                return exit_bad_input;
            warn_about_tokens(p, *file);
            print_project(p, std::cout);
            finish_project(p, port);
            return exit_ok;
        };
    });
}

} // namespace tobel::cli
