// tobel check FILE: what a careful engineer would question in a data file.
#include <iostream>

#include "check.h"
#include "cli.h"

namespace tobel::cli {

void add_check_command(CLI::App& app, Runner& run)
{
    auto file = std::make_shared<std::string>();
    auto json = std::make_shared<bool>(false);
    auto* sub = app.add_subcommand("check", "read FILE as File > Open does and list, by line and item, "
                                            "everything to question; exit 0 when clean, 3 with findings");
    add_file_option(*sub, *file);
    sub->add_flag("--json", *json, "print the findings as a JSON array");
    add_settings_option(*sub);
    sub->callback([file, json, &run] { run = [file, json] { return check_file(*file, *json, std::cout); }; });
}

} // namespace tobel::cli
