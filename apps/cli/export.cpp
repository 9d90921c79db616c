// tobel export FILE --grd K [--out PATH]: surface K of the stack, or a column
// result, as an elevation grid file.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "geometry/grid_file.h"
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
                return exit_bad_input;
            }
            if (out.empty())
                out = lateral_dat_name(at);
            write_lateral_dat(p, at, out);
        }
    } catch (const RuntimeError& e) {
        std::cerr << "tobel export: " << error_report_text(e) << "\n";
        return exit_bad_input;
    }
    std::cerr << "FILE " << out << " WAS CREATED\n";
    finish_project(p, port);
    return 0;
}

namespace {
struct ExportOptions {
    TrialOptions trial;
    std::string grd_text, section_text, dat_long_text, dat_lat_text;
    std::string out;
};
} // namespace

static int run_export(ExportOptions& o)
{
    TrialOptions& trial = o.trial;
    int surface = 0;
    std::string out = o.out;
    // The section exports: which one and at what X or Y.
    std::string section_kind;
    float section_at = 0;
    try {
        check_trial_options(trial);
        if (!o.grd_text.empty()) {
            std::array<float, 1> k{};
            if (!parse_numbers(o.grd_text, k) || k[0] < 1 || k[0] != float(int(k[0])))
                throw std::runtime_error("--grd takes a surface number from 1");
            surface = int(k[0]);
        }
        const std::pair<const char*, const std::string*> sections[] = {{"--section-2d", &o.section_text},
                                                                       {"--dat-long", &o.dat_long_text},
                                                                       {"--dat-lat", &o.dat_lat_text}};
        for (const auto& [kind, text] : sections) {
            if (text->empty())
                continue;
            std::array<float, 1> v{};
            if (!parse_numbers(*text, v))
                throw std::runtime_error(std::string(kind) + " takes a number");
            section_kind = kind;
            section_at = v[0];
        }
        if ((surface == 0) == section_kind.empty())
            throw std::runtime_error("give one of --grd K, --section-2d X, --dat-long X, --dat-lat Y");
    } catch (const std::exception& e) {
        std::cerr << "tobel export: " << e.what() << "\n";
        return exit_bad_input;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = trial.answer;
    port.show_windows = false;
    if (!open_data_file(p, port, trial.file))
        return exit_bad_input;
    warn_about_tokens(p, trial.file);
    if (!section_kind.empty())
        return export_section(p, port, section_kind, section_at, out);
    if (surface > p.sliding_index + 2) {
        std::cerr << "tobel export: surface " << surface << " is beyond the stack (1 to " << p.sliding_index
                  << ", " << p.sliding_index + 1 << " normal stresses, " << p.sliding_index + 2
                  << " local factors of safety)\n";
        return exit_bad_input;
    }
    // The sliding plane and the column results need the surface, the results a solution.
    if (surface >= p.sliding_index) {
        if (!build_trial_surface(p, port, trial))
            return exit_bad_input;
        if (surface > p.sliding_index) {
            if (!solve_single_trial(p, port))
                return exit_bad_input;
            if (p.check_fatal != 0) {
                explain_fatal_checks(p, std::cerr);
                return exit_bad_input;
            }
        }
    }
    // The save dialog offers "G" + the number + ".GRD".
    if (out.empty())
        out = "G" + std::to_string(surface) + ".GRD";
    try {
        write_grid_file(p, surface, out, port);
    } catch (const RuntimeError& e) {
        std::cerr << "tobel export: " << error_report_text(e) << "\n";
        return exit_bad_input;
    }
    finish_project(p, port);
    // Column results of a solution that is not valid are written, and said so.
    return surface > p.sliding_index ? warn_about_result(p, std::cerr) : exit_ok;
}

void add_export_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<ExportOptions>();
    auto* sub = app.add_subcommand("export", "write a surface of FILE as a SURFER grid, or a section export");
    add_trial_options(*sub, o->trial, true);
    add_settings_option(*sub);
    auto* grd =
        sub->add_option("--grd", o->grd_text,
                        "K: surface K of the stack (one past the sliding surface: the normal stresses "
                        "of the solution; two past: the local factors of safety)");
    auto* s2d = sub->add_option("--section-2d", o->section_text,
                                "X: the two-dimensional data file of the mesh row at X");
    auto* lng = sub->add_option("--dat-long", o->dat_long_text, "X: the longitudinal section table at X");
    auto* lat = sub->add_option("--dat-lat", o->dat_lat_text, "Y: the lateral section table at Y");
    grd->excludes(s2d)->excludes(lng)->excludes(lat);
    s2d->excludes(lng)->excludes(lat);
    lng->excludes(lat);
    sub->add_option("--out", o->out, "PATH: the file to write (default: the program's own name)");
    sub->callback([o, &run] { run = [o] { return run_export(*o); }; });
}

} // namespace tobel::cli
