// tobel convert IN.TOD OUT.TOB: File > Open .TOD File > Open, then Save As.
#include <iostream>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"

namespace tobel::cli {

int run_convert(const std::vector<std::string>& args)
{
    if (args.size() != 2) {
        std::cerr << "usage: tobel convert IN.TOD OUT.TOB\n";
        return 1;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.show_windows = false;
    port.files = {args[0]};
    file_open_legacy(p, port);
    if (port.error_boxes)
        return 1;
    if (p.data_file_path != args[0]) {
        std::cerr << "tobel convert: " << args[0] << " was not read\n";
        return 1;
    }
    port.files = {args[1]};
    p.save_cancelled = 0;
    file_save_as(p, port);
    if (p.save_cancelled || p.data_file_path != args[1]) {
        std::cerr << "tobel convert: " << args[1] << " could not be written\n";
        return 1;
    }
    finish_project(p, port);
    return 0;
}

} // namespace tobel::cli
