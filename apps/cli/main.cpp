// tobel: the command-line program that stands for the menus of TOBEL-3.
#include <iostream>
#include <string>
#include <vector>

#include "cli.h"

namespace {

void usage(std::ostream& out)
{
    out << "usage: tobel info FILE\n"
           "       tobel solve FILE [--method bishop|janbu|spencer|morgenstern-price]\n"
           "                        [--surface ellipsoid|wedge|composite|general|general-wedge]\n"
           "                        [--field XLO,XHI,YLO,YHI] [--rotation DEG] [--json]\n"
           "                        [--printout] [--column Y,X] [--yes|--no]\n"
           "       tobel search FILE --grid|--auto [--composite] [--method M] [--json] [--trials]\n"
           "                         [--summary OUT.txt]\n"
           "       tobel report FILE [solve options | --grid|--auto [--composite]] --out OUT.txt\n"
           "       tobel export FILE --grd K [--out PATH] [solve options]\n"
           "       tobel export FILE --section-2d X | --dat-long X | --dat-lat Y [--out PATH]\n"
           "       tobel convert IN.TOD OUT.TOB\n"
           "       tobel run SCRIPT\n"
           "Every command takes --settings PATH to read and write that settings file.\n";
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty() || args[0] == "--help" || args[0] == "-h") {
        usage(args.empty() ? std::cerr : std::cout);
        return args.empty() ? 1 : 0;
    }
    const std::string command = args[0];
    args.erase(args.begin());
    // --settings PATH belongs to every command.
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] != "--settings")
            continue;
        if (i + 1 >= args.size()) {
            std::cerr << "tobel: --settings needs a file\n";
            return 1;
        }
        tobel::cli::set_settings_path(args[i + 1]);
        args.erase(args.begin() + long(i), args.begin() + long(i) + 2);
        break;
    }
    try {
        if (command == "info")
            return tobel::cli::run_info(args);
        if (command == "solve")
            return tobel::cli::run_solve(args);
        if (command == "run")
            return tobel::cli::run_script(args);
        if (command == "export")
            return tobel::cli::run_export(args);
        if (command == "search")
            return tobel::cli::run_search(args);
        if (command == "report")
            return tobel::cli::run_report(args);
        if (command == "convert")
            return tobel::cli::run_convert(args);
    } catch (const std::exception& e) {
        std::cerr << "tobel: " << e.what() << "\n";
        return 1;
    }
    std::cerr << "tobel: unknown command '" << command << "'\n";
    usage(std::cerr);
    return 1;
}
