// tobel search: the stored grid or auto search, as Solve > Grid Search or
// Solve > Auto Search runs it after its set-up form is confirmed.
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "tbb_runner.h"

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "commands/search_commands.h"
#include "graphics/picture_hooks.h"
#include "plot_output.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "search/grid_search.h"
#include "search/parallel_runner.h"
#include "search/summary.h"
#include "search/trial.h"
#include "search_across.h"
#include "search_parts.h"
#include "trial.h"

namespace tobel::cli {

using nlohmann::ordered_json;

ordered_json search_record_json(const SearchRecord& r)
{
    ordered_json j;
    j["fos"] = json_float(r.fos);
    j["y"] = json_float(r.y);
    j["z"] = json_float(r.z);
    j["radius"] = json_float(r.radius);
    j["volume"] = json_float(r.volume);
    j["trial_number"] = r.trial_number;
    j["valid"] = r.valid != 0;
    return j;
}

namespace {

// Why the search's result needs a second look; empty lines when it does not.
struct SearchVerdict {
    bool found = false;      // a best record exists
    bool best_valid = false; // and it is valid
    bool on_edge = false;    // a grid search's best centre lies on its edge
    bool stopped = false;
    std::string stop_reason;
};

SearchVerdict judge(const Project& p, bool interrupted)
{
    const SearchState& s = p.search;
    SearchVerdict v;
    v.found = s.best.trial_number > 0;
    v.best_valid = v.found && s.best.valid != 0;
    v.on_edge = v.found && s.mode == 9 && on_grid_edge(s, s.best.y, s.best.z);
    v.stop_reason = s.stop_reason;
    if (interrupted && v.stop_reason.empty())
        v.stop_reason = "stopped by the user";
    v.stopped = !v.stop_reason.empty();
    return v;
}

void print_json(const Project& p, const SearchVerdict& v, bool with_trials, std::ostream& out)
{
    const SearchState& s = p.search;
    ordered_json j;
    j["method"] = method_name(p.solution_method);
    j["search"] = s.mode == 9 ? "grid" : "auto";
    j["valid_only"] = s.valid_only;
    j["best"] = v.found ? search_record_json(s.best) : ordered_json(nullptr);
    j["best_valid"] =
        s.best_valid.trial_number > 0 ? search_record_json(s.best_valid) : ordered_json(nullptr);
    j["trial_count"] = s.trial_count;
    j["fos_min"] = json_float(s.fos_min);
    j["fos_max"] = json_float(s.fos_max);
    j["stopped"] = v.stopped;
    if (v.stopped)
        j["stop_reason"] = latin1_to_utf8(v.stop_reason);
    j["best_on_grid_edge"] = v.on_edge;
    if (!s.serial_reason.empty())
        j["searched_on_one_thread"] = s.serial_reason;
    if (with_trials) {
        ordered_json trials = ordered_json::array();
        for (int n = 1; n <= s.summary_count; ++n) {
            const auto k = std::size_t(n);
            ordered_json t;
            t["trial_number"] = n;
            t["fos"] = json_float(s.summary_fos[k]);
            t["y"] = json_float(s.summary_y[k]);
            t["z"] = json_float(s.summary_z[k]);
            t["radius"] = json_float(s.summary_radius[k]);
            t["volume"] = json_float(s.summary_volume[k]);
            t["valid"] = k < s.summary_valid.size() && s.summary_valid[k] != 0;
            trials.push_back(t);
        }
        j["trials"] = trials;
    }
    out << j.dump(2) << "\n";
}

void print_record(const SearchRecord& r, std::ostream& out)
{
    out << "  Factor of Safety: " << format(r.fos, "###0.000") << "\n"
        << "  Centre Y: " << format(r.y, "###0.00") << "  Z: " << format(r.z, "###0.00") << "\n"
        << "  Radius: " << format(r.radius, "###0.00") << "\n"
        << "  Slide Volume: " << format(r.volume, "###0.00") << "\n";
}

void print_text(const Project& p, const SearchVerdict& v, bool with_trials, std::ostream& out)
{
    const SearchState& s = p.search;
    out << (s.mode == 9 ? "Grid search" : "Auto search") << ", " << method_name(p.solution_method)
        << (s.valid_only ? " (valid results only)" : "") << ": " << s.trial_count << " trials recorded";
    if (s.trial_count > 0)
        out << ", factor of safety from " << format(s.fos_min, "###0.000") << " to "
            << format(s.fos_max, "###0.000");
    out << (v.stopped ? " (stopped)" : "") << "\n";
    if (!s.serial_reason.empty())
        out << "Searched on one thread: " << s.serial_reason << "\n";
    if (v.stopped)
        out << "The search was stopped before its end: " << v.stop_reason
            << ". The best record below is the best so far.\n";
    if (v.found) {
        out << "Best surface: Ellipsoid #" << str(long(s.best.trial_number))
            << (v.best_valid ? "" : " (NOT VALID)") << "\n";
        print_record(s.best, out);
    } else {
        out << "No valid surface was found.\n";
    }
    if (v.found && !v.best_valid) {
        if (s.best_valid.trial_number > 0) {
            out << "Lowest valid trial: Ellipsoid #" << str(long(s.best_valid.trial_number)) << "\n";
            print_record(s.best_valid, out);
        } else {
            out << "No trial of the search has a valid result.\n";
        }
    }
    if (with_trials)
        for (int n = 1; n <= s.summary_count; ++n) {
            const auto k = std::size_t(n);
            const bool valid = k < s.summary_valid.size() && s.summary_valid[k] != 0;
            out << "Surface" << str(long(n)) << "  F = " << format(s.summary_fos[k], "####0.000")
                << "  Y = " << format(s.summary_y[k], "####0.00")
                << "  Z = " << format(s.summary_z[k], "####0.00")
                << "  R = " << format(s.summary_radius[k], "####0.00")
                << "  V = " << format(s.summary_volume[k], "####0") << (valid ? "" : "  not valid") << "\n";
        }
}

// Warnings on standard error, and the exit status they give.
int warn_about_search(const Project& p, const SearchVerdict& v)
{
    const SearchState& s = p.search;
    if (v.found && !v.best_valid)
        std::cerr << "tobel: warning: the best record, trial " << s.best.trial_number
                  << ", is not valid (F = " << general_text(s.best.fos) << ")"
                  << (s.best_valid.trial_number > 0
                          ? "; the lowest valid trial is " + std::to_string(s.best_valid.trial_number) +
                                " with F = " + format(s.best_valid.fos, "###0.000")
                          : std::string("; no trial is valid"))
                  << (s.valid_only ? "" : "; --valid-only keeps such trials from winning") << "\n";
    if (v.on_edge)
        std::cerr << "tobel: warning: the best centre (Y " << general_text(s.best.y) << ", Z "
                  << general_text(s.best.z) << ") lies on the edge of the search grid: the critical "
                  << "centre may lie beyond it; extend the grid\n";
    if (v.stopped) {
        std::cerr << "tobel: warning: the search was stopped: " << v.stop_reason << "\n";
        return exit_stopped;
    }
    return v.found && v.best_valid ? exit_ok : exit_not_valid;
}

} // namespace

// Opens the file, confirms the search's set-up form and runs the search.
// Shared with the report command.
bool run_stored_search(Project& p, CliPort& port, const TrialOptions& trial, bool grid, bool composite,
                       bool valid_only, const std::function<bool(Project&)>& before)
{
    if (!open_data_file(p, port, trial.file))
        return false;
    warn_about_tokens(p, trial.file);
    p.solution_method = int16(trial.method);
    p.search.valid_only = valid_only;
    if (composite && p.num_wedges == 0) {
        std::cerr << "tobel: " << trial.file << " holds no wedge planes\n";
        return false;
    }
    if (!confirm_search_setup(p, port, grid, composite)) {
        std::cerr << "tobel: the search set-up of " << trial.file << " builds no surface\n";
        return false;
    }
    if (before && !before(p))
        return false;
    if (grid)
        solve_grid_search(p, port);
    else
        solve_auto_search(p, port);
    if (p.check_fatal != 0) {
        explain_fatal_checks(p, std::cerr);
        return false;
    }
    return true;
}

void add_search_options(CLI::App& sub, bool& grid, bool& automatic, bool& composite, bool& valid_only)
{
    auto* g = sub.add_flag("--grid", grid, "the grid search stored in the file");
    sub.add_flag("--auto", automatic, "the auto search stored in the file")->excludes(g);
    sub.add_flag("--composite", composite, "cut the trial ellipsoids with the stored wedge planes");
    sub.add_flag("--valid-only", valid_only,
                 "trials whose result is not valid (failed, negative, no active column, moving towards +Y) "
                 "never become the best record; departs from the classic search, where they can win");
}

void add_search_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<SearchOptions>();
    auto* sub = app.add_subcommand("search", "run the grid or auto search stored in FILE");
    add_trial_options(*sub, o->trial, false);
    add_settings_option(*sub);
    add_search_options(*sub, o->grid, o->automatic, o->composite, o->valid_only);
    sub->add_flag("--trials", o->trials, "list every recorded trial");
    sub->add_option("--summary", o->summary, "OUT.txt: save the search summary table");
    sub->add_option("--plot", o->plot,
                    "OUT.png, .svg or .pdf: the search picture (markers, final surface, contours, legend)");
    sub->add_option("--size", o->size_text,
                    "WxH: the size of the --plot picture in pixels (default 800x600)");
    auto* across = sub->add_option("--across", o->across,
                                   "X0,X1,DX: run the search for every X of the range (3-D projects); the "
                                   "classic search keeps the stored X");
    sub->add_option("--aspects", o->aspects, "A1,A2,...: with --across, every aspect ratio of the list")
        ->needs(across);
    sub->add_option("--threads", o->threads,
                    "N: evaluate the centres on N threads (default: all cores); the result is that of one "
                    "thread")
        ->check(CLI::Range(1, 4096));
    sub->add_option("--shard", o->shard_text,
                    "K/N: evaluate only the grid centres k with k % N == K - 1 and write their outcomes to "
                    "--out, for `tobel merge`");
    sub->add_option("--out", o->out, "PART.json: where --shard writes its outcomes");
    sub->callback([o, &run] { run = [o] { return run_search(*o); }; });
}

std::shared_ptr<ParallelRunner> make_runner(int threads)
{
    const int n = threads > 0 ? threads : all_cores();
    if (n <= 1)
        return nullptr;
    return std::make_shared<TbbRunner>(n);
}

int report_search(Project& p, CliPort& port, const SearchOptions& o, std::ostream* json_file)
{
    const SearchVerdict v = judge(p, port.stopped);
    if (o.trial.json)
        print_json(p, v, o.trials, std::cout);
    else
        print_text(p, v, o.trials, std::cout);
    if (json_file != nullptr)
        print_json(p, v, o.trials, *json_file);
    if (!o.summary.empty()) {
        try {
            save_search_summary(p, o.summary);
        } catch (const RuntimeError& e) {
            std::cerr << "tobel search: " << error_report_text(e) << "\n";
            return exit_bad_input;
        }
    }
    if (!o.plot.empty() && !write_picture_file(p.pictures.search.picture, o.plot, o.width, o.height))
        return exit_bad_input;
    finish_project(p, port);
    return warn_about_search(p, v);
}

// --shard: the share of the grid's centres, written to --out; nothing replayed.
static int run_shard(SearchOptions& o, Project& p, CliPort& port)
{
    SearchPart part;
    part.shard = o.shard;
    part.shards = o.shards;
    part.settings = {o.trial.file, o.trial.method, o.composite, o.valid_only};
    try {
        part.fingerprint = search_fingerprint(part.settings);
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return exit_bad_input;
    }
    auto run = std::make_shared<ShardRun>(o.shard, o.shards);
    p.search.exchange = run;
    const auto alone = [&](Project& q) {
        const std::string why = carried_state_reason(q);
        if (why.empty())
            return true;
        std::cerr << "tobel search: " << o.trial.file << " cannot be shared among runs: " << why
                  << "; search it in one run\n";
        return false;
    };
    if (!run_stored_search(p, port, o.trial, true, o.composite, o.valid_only, alone))
        return exit_bad_input;
    if (port.stopped || !p.search.stop_reason.empty()) {
        std::cerr << "tobel search: shard " << o.shard_text << " stopped before its end"
                  << (p.search.stop_reason.empty() ? "" : ": " + p.search.stop_reason) << "; " << o.out
                  << " not written\n";
        return exit_stopped;
    }
    part.centres = p.search.point_last + 1;
    part.outcomes = std::move(run->outcomes);
    for (const CentreOutcome& c : part.outcomes)
        if (c.error && c.error_number == 0) {
            std::cerr << "tobel search: centre " << c.index << " failed; " << o.out << " not written\n";
            return exit_bad_input;
        }
    try {
        write_search_part(part, o.out);
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return exit_bad_input;
    }
    std::cerr << "tobel search: shard " << o.shard << "/" << o.shards << ": " << part.outcomes.size()
              << " of " << part.centres << " centres written to " << o.out << "\n";
    finish_project(p, port);
    return exit_ok;
}

int run_search(SearchOptions& o)
{
    try {
        if (!o.grid && !o.automatic)
            throw std::runtime_error("give --grid or --auto");
        check_trial_options(o.trial);
        if (!o.plot.empty()) {
            parse_picture_size(o.size_text, o.width, o.height);
            check_picture_path(o.plot);
        }
        if (!o.shard_text.empty()) {
            parse_shard(o.shard_text, o.shard, o.shards);
            if (!o.grid && o.across.empty())
                throw std::runtime_error(
                    "--shard shares a grid search or a search across the slope: give --grid or --across");
            if (o.out.empty())
                throw std::runtime_error("--shard needs --out PART.json");
        } else if (!o.out.empty()) {
            throw std::runtime_error("--out goes with --shard");
        }
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return exit_bad_input;
    }
    if (!o.across.empty()) {
        const std::shared_ptr<ParallelRunner> threads = make_runner(o.threads);
        ParallelRunner one_by_one;
        return run_across_search(o, o.across, o.aspects, threads ? *threads : one_by_one);
    }
    Project p;
    start_project(p);
    // Progress and boxes go to standard error; the result to standard output.
    CliPort port(std::cerr);
    port.policy = o.trial.answer;
    port.show_windows = false;
    port.show_progress = true;
    PictureHooks hooks(port);
    if (!o.plot.empty()) {
        port.hooks = &hooks;
        use_picture_size(p, o.width, o.height);
    }
    install_interrupt_handler();
    p.search.runner = make_runner(o.threads);
    if (o.shards > 0)
        return run_shard(o, p, port);
    if (!run_stored_search(p, port, o.trial, o.grid, o.composite, o.valid_only))
        return exit_bad_input;
    return report_search(p, port, o, nullptr);
}

} // namespace tobel::cli
