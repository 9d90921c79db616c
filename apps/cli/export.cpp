// tobel export FILE --grd K [--out PATH]: surface K of the stack, or a column
// result, as an elevation grid file.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "geometry/grid_file.h"
#include "project/commands.h"
#include "project/exports.h"
#include "project/runtime_error.h"
#include "trial.h"

namespace tobel::cli {

// The section exports, with the default name of their save dialog.
static int export_section(Project& p, CliPort& port, const std::string& kind, float at, std::string out)
{
    try {
        if (kind == "--section-2d") {
            if (out.empty())
                out = two_d_file_name(at);
            write_two_d_file(p, at, out);
        } else if (kind == "--dat-long") {
            if (out.empty())
                out = longitudinal_dat_name(at);
            write_longitudinal_dat(p, at, out);
        } else {
            if (p.num_rows < 2) {
                std::cerr << "tobel export: a lateral section needs a three-dimensional project\n";
                return 1;
            }
            if (out.empty())
                out = lateral_dat_name(at);
            write_lateral_dat(p, at, out);
        }
    } catch (const RuntimeError& e) {
        std::cerr << "tobel export: " << error_report_text(e) << "\n";
        return 1;
    }
    std::cerr << "FILE " << out << " WAS CREATED\n";
    finish_project(p, port);
    return 0;
}

int run_export(const std::vector<std::string>& args)
{
    TrialOptions trial;
    int surface = 0;
    std::string out;
    // The section exports: which one and at what X or Y.
    std::string section_kind;
    float section_at = 0;
    try {
        for (std::size_t i = 0; i < args.size(); ++i) {
            if (take_trial_option(args, i, trial))
                continue;
            if (i + 1 >= args.size())
                throw std::runtime_error(args[i] + " needs a value");
            if (args[i] == "--grd") {
                std::array<float, 1> k{};
                if (!parse_numbers(args[++i], k) || k[0] < 1 || k[0] != float(int(k[0])))
                    throw std::runtime_error("--grd takes a surface number from 1");
                surface = int(k[0]);
            } else if (args[i] == "--section-2d" || args[i] == "--dat-long" || args[i] == "--dat-lat") {
                section_kind = args[i];
                std::array<float, 1> v{};
                if (!parse_numbers(args[++i], v))
                    throw std::runtime_error(section_kind + " takes a number");
                section_at = v[0];
            } else if (args[i] == "--out") {
                out = args[++i];
            } else {
                throw std::runtime_error("unknown option '" + args[i] + "'");
            }
        }
        if ((surface == 0) == section_kind.empty())
            throw std::runtime_error("give one of --grd K, --section-2d X, --dat-long X, --dat-lat Y");
        check_trial_options(trial);
    } catch (const std::exception& e) {
        std::cerr << "tobel export: " << e.what() << "\n";
        return 1;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = trial.answer;
    port.show_windows = false;
    if (!open_data_file(p, port, trial.file))
        return 1;
    if (!section_kind.empty())
        return export_section(p, port, section_kind, section_at, out);
    if (surface > p.sliding_index + 2) {
        std::cerr << "tobel export: surface " << surface << " is beyond the stack (1 to " << p.sliding_index
                  << ", " << p.sliding_index + 1 << " normal stresses, " << p.sliding_index + 2
                  << " local factors of safety)\n";
        return 1;
    }
    // The sliding plane and the column results need the surface, the results a solution.
    if (surface >= p.sliding_index) {
        if (!build_trial_surface(p, port, trial))
            return 1;
        if (surface > p.sliding_index && !solve_single_trial(p, port))
            return 1;
    }
    // The save dialog offers "G" + the number + ".GRD".
    if (out.empty())
        out = "G" + std::to_string(surface) + ".GRD";
    try {
        write_grid_file(p, surface, out, port);
    } catch (const RuntimeError& e) {
        std::cerr << "tobel export: " << error_report_text(e) << "\n";
        return 1;
    }
    finish_project(p, port);
    return 0;
}

} // namespace tobel::cli
