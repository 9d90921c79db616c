#include <iostream>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"
#include "trial.h"

namespace tobel::cli {

// Opens FILE as the Open command does and prints the project as read.
int run_info(const std::vector<std::string>& args)
{
    if (args.size() != 1) {
        std::cerr << "usage: tobel info FILE\n";
        return 1;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    if (!open_data_file(p, port, args[0]))
        return 1;
    print_project(p, std::cout);
    finish_project(p, port);
    return 0;
}

} // namespace tobel::cli
