#include <iostream>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"

namespace tobel::cli {

// Opens FILE as the Open command does and prints the project as read.
int run_info(const std::vector<std::string>& args)
{
    if (args.size() != 1) {
        std::cerr << "usage: tobel info FILE\n";
        return 1;
    }
    Project p;
    main_load(p);
    CliPort port(std::cerr);
    p.data_file_path = args[0];
    p.open_recent_pending = -1;
    file_open(p, port);
    if (port.error_boxes) return 1;
    print_project(p, std::cout);
    return 0;
}

} // namespace tobel::cli
