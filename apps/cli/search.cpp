// tobel search: the stored grid or auto search, as Solve > Grid Search or
// Solve > Auto Search runs it after its set-up form is confirmed.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "search/search_commands.h"
#include "search/summary.h"
#include "trial.h"

namespace tobel::cli {

namespace {

struct SearchOptions {
    TrialOptions trial;
    int kind = 0; // 9 grid, 10 auto
    bool composite = false;
    bool trials = false;
    std::string summary;
};

SearchOptions parse(const std::vector<std::string>& args)
{
    SearchOptions o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (take_trial_option(args, i, o.trial))
            continue;
        const std::string& a = args[i];
        if (a == "--grid" || a == "--auto") {
            const int kind = a == "--grid" ? 9 : 10;
            if (o.kind != 0 && o.kind != kind)
                throw std::runtime_error("give --grid or --auto, not both");
            o.kind = kind;
        } else if (a == "--composite") {
            o.composite = true;
        } else if (a == "--trials") {
            o.trials = true;
        } else if (a == "--summary") {
            if (i + 1 >= args.size())
                throw std::runtime_error("--summary needs a file");
            o.summary = args[++i];
        } else {
            throw std::runtime_error("unknown option '" + a + "'");
        }
    }
    if (o.kind == 0)
        throw std::runtime_error("give --grid or --auto");
    if (o.trial.surface != "ellipsoid" || o.trial.field || o.trial.rotation)
        throw std::runtime_error("a search takes no --surface, --field or --rotation");
    check_trial_options(o.trial);
    return o;
}

void print_json(const Project& p, bool stopped, bool with_trials, std::ostream& out)
{
    const SearchState& s = p.search;
    const bool found = s.best.trial_number > 0;
    out << "{\"method\": " << json_string(method_name(p.solution_method)) << ", \"search\": \""
        << (s.mode == 9 ? "grid" : "auto") << "\", \"best\": ";
    if (found)
        out << "{\"fos\": " << json_number(s.best.fos) << ", \"y\": " << json_number(s.best.y)
            << ", \"z\": " << json_number(s.best.z) << ", \"radius\": " << json_number(s.best.radius)
            << ", \"volume\": " << json_number(s.best.volume) << ", \"trial_number\": " << s.best.trial_number
            << "}";
    else
        out << "null";
    out << ", \"trial_count\": " << s.trial_count << ", \"fos_min\": " << json_number(s.fos_min)
        << ", \"fos_max\": " << json_number(s.fos_max) << ", \"stopped\": " << (stopped ? "true" : "false");
    if (with_trials) {
        out << ", \"trials\": [";
        for (int n = 1; n <= s.summary_count; ++n) {
            const auto k = std::size_t(n);
            out << (n > 1 ? ", " : "") << "{\"trial_number\": " << n
                << ", \"fos\": " << json_number(s.summary_fos[k])
                << ", \"y\": " << json_number(s.summary_y[k]) << ", \"z\": " << json_number(s.summary_z[k])
                << ", \"radius\": " << json_number(s.summary_radius[k])
                << ", \"volume\": " << json_number(s.summary_volume[k]) << "}";
        }
        out << "]";
    }
    out << "}\n";
}

void print_text(const Project& p, bool stopped, bool with_trials, std::ostream& out)
{
    const SearchState& s = p.search;
    out << (s.mode == 9 ? "Grid search" : "Auto search") << ", " << method_name(p.solution_method) << ": "
        << s.trial_count << " trials recorded";
    if (s.trial_count > 0)
        out << ", factor of safety from " << format(s.fos_min, "###0.000") << " to "
            << format(s.fos_max, "###0.000");
    out << (stopped ? " (stopped)" : "") << "\n";
    if (s.best.trial_number > 0)
        out << "Best surface: Ellipsoid #" << str(long(s.best.trial_number)) << "\n"
            << "  Factor of Safety: " << format(s.best.fos, "###0.000") << "\n"
            << "  Centre Y: " << format(s.best.y, "###0.00") << "  Z: " << format(s.best.z, "###0.00") << "\n"
            << "  Radius: " << format(s.best.radius, "###0.00") << "\n"
            << "  Slide Volume: " << format(s.best.volume, "###0.00") << "\n";
    else
        out << "No valid surface was found.\n";
    if (with_trials)
        for (int n = 1; n <= s.summary_count; ++n) {
            const auto k = std::size_t(n);
            out << "Surface" << str(long(n)) << "  F = " << format(s.summary_fos[k], "####0.000")
                << "  Y = " << format(s.summary_y[k], "####0.00")
                << "  Z = " << format(s.summary_z[k], "####0.00")
                << "  R = " << format(s.summary_radius[k], "####0.00")
                << "  V = " << format(s.summary_volume[k], "####0") << "\n";
        }
}

} // namespace

// Opens the file, confirms the search's set-up form and runs the search.
// Shared with the report command.
bool run_stored_search(Project& p, CliPort& port, const TrialOptions& trial, bool grid, bool composite)
{
    if (!open_data_file(p, port, trial.file))
        return false;
    p.solution_method = int16(trial.method);
    if (composite && p.num_wedges == 0) {
        std::cerr << "tobel: " << trial.file << " holds no wedge planes\n";
        return false;
    }
    if (!confirm_search_setup(p, port, grid, composite)) {
        std::cerr << "tobel: the search set-up of " << trial.file << " builds no surface\n";
        return false;
    }
    if (grid)
        solve_grid_search(p, port);
    else
        solve_auto_search(p, port);
    return true;
}

int run_search(const std::vector<std::string>& args)
{
    SearchOptions o;
    try {
        o = parse(args);
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return 1;
    }
    Project p;
    start_project(p);
    // Progress and boxes go to standard error; the result to standard output.
    CliPort port(std::cerr);
    port.policy = o.trial.answer;
    port.show_windows = false;
    port.show_progress = true;
    install_interrupt_handler();
    if (!run_stored_search(p, port, o.trial, o.kind == 9, o.composite))
        return 1;
    if (o.trial.json)
        print_json(p, port.stopped, o.trials, std::cout);
    else
        print_text(p, port.stopped, o.trials, std::cout);
    if (!o.summary.empty()) {
        try {
            save_search_summary(p, o.summary);
        } catch (const RuntimeError& e) {
            std::cerr << "tobel search: " << error_report_text(e) << "\n";
            return 1;
        }
    }
    finish_project(p, port);
    return p.search.best.trial_number > 0 ? 0 : 2;
}

} // namespace tobel::cli
