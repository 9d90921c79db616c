// tobel export FILE --grd K [--out PATH]: surface K of the stack, or a column
// result, as an elevation grid file.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "geometry/grid_file.h"
#include "project/commands.h"
#include "project/runtime_error.h"
#include "trial.h"

namespace tobel::cli {

int run_export(const std::vector<std::string>& args)
{
    TrialOptions trial;
    int surface = 0;
    std::string out;
    try {
        for (std::size_t i = 0; i < args.size(); ++i) {
            if (take_trial_option(args, i, trial)) continue;
            if (i + 1 >= args.size()) throw std::runtime_error(args[i] + " needs a value");
            if (args[i] == "--grd") {
                std::array<float, 1> k{};
                if (!parse_numbers(args[++i], k) || k[0] < 1 || k[0] != float(int(k[0])))
                    throw std::runtime_error("--grd takes a surface number from 1");
                surface = int(k[0]);
            } else if (args[i] == "--out") {
                out = args[++i];
            } else {
                throw std::runtime_error("unknown option '" + args[i] + "'");
            }
        }
        if (surface == 0) throw std::runtime_error("--grd K is required");
        check_trial_options(trial);
    } catch (const std::exception& e) {
        std::cerr << "tobel export: " << e.what() << "\n";
        return 1;
    }
    Project p;
    main_load(p);
    CliPort port(std::cerr);
    port.policy = trial.answer;
    port.show_windows = false;
    if (!open_data_file(p, port, trial.file)) return 1;
    if (surface > p.sliding_index + 2) {
        std::cerr << "tobel export: surface " << surface << " is beyond the stack (1 to " << p.sliding_index
                  << ", " << p.sliding_index + 1 << " normal stresses, " << p.sliding_index + 2
                  << " local factors of safety)\n";
        return 1;
    }
    // The sliding plane and the column results need the surface, the results a solution.
    if (surface >= p.sliding_index) {
        if (!build_trial_surface(p, port, trial)) return 1;
        if (surface > p.sliding_index && !solve_single_trial(p, port)) return 1;
    }
    // The save dialog offers "G" + the number + ".GRD".
    if (out.empty()) out = "G" + std::to_string(surface) + ".GRD";
    try {
        write_grid_file(p, surface, out, port);
    } catch (const RuntimeError& e) {
        std::cerr << "tobel export: " << error_report_text(e) << "\n";
        return 1;
    }
    return 0;
}

} // namespace tobel::cli
