// Subcommands of the command-line program, parsed by CLI11: each file adds
// its subcommand with its options, and its callback leaves the run to main.
#pragma once

#include <array>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "cli_port.h"
#include "project/project.h"
#include "project_json.h"
#include "trial.h"
#include "ui/port.h"

namespace tobel::cli {

// Exit statuses, the same for every command.
constexpr int exit_ok = 0;
constexpr int exit_bad_input = 1; // unreadable or refused input, fatal input checks, bad options
constexpr int exit_not_valid = 2; // the solution failed or its result is not valid
constexpr int exit_stopped = 3;   // a search stopped before its end; `check` with findings

// What the chosen subcommand will run once the command line is parsed.
using Runner = std::function<int()>;

struct SolveOptions {
    TrialOptions trial;
    bool printout = false;
    std::string column_text;
    bool column = false;
    std::array<float, 2> column_yx{};
    std::string plot, size_text = "800x600"; // --plot OUT, --size WxH
    int width = 800, height = 600;
};

struct SearchOptions {
    TrialOptions trial;
    bool grid = false, automatic = false;
    bool composite = false;
    bool trials = false;
    bool valid_only = false;
    std::string summary;
    std::string plot, size_text = "800x600";
    int width = 800, height = 600;
    int threads = 0;        // --threads N; 0: all cores
    std::string shard_text; // --shard K/N
    int shard = 0, shards = 0;
    std::string out;             // --out PART.json of a shard
    std::string across, aspects; // --across X0,X1,DX --aspects A1,A2,...
};

struct MergeOptions {
    std::vector<std::string> parts;
    std::string json_out; // --json OUT
    bool trials = false;
    std::string summary;
};

void add_info_command(CLI::App& app, Runner& run);
void add_solve_command(CLI::App& app, Runner& run);
void add_search_command(CLI::App& app, Runner& run);
void add_report_command(CLI::App& app, Runner& run);
void add_export_command(CLI::App& app, Runner& run);
void add_convert_command(CLI::App& app, Runner& run);
void add_check_command(CLI::App& app, Runner& run);
void add_run_command(CLI::App& app, Runner& run);
void add_draw_command(CLI::App& app, Runner& run);
void add_merge_command(CLI::App& app, Runner& run);

int run_solve(SolveOptions& o);
int run_search(SearchOptions& o);
int run_merge(MergeOptions& o);
// The result of a search as `search` prints it (text or --json on standard
// output, and the JSON also to json_file when given), the summary file, the
// picture and the warnings; returns the exit status.
int report_search(Project& p, CliPort& port, const SearchOptions& o, std::ostream* json_file);
int run_script(const std::vector<std::string>& args);

// --settings PATH, which every command takes: that settings file is read at
// the main window's load and written when the command ends; without it no
// settings file is touched.
void add_settings_option(CLI::App& sub);
void set_settings_path(const std::string& path);
void start_project(Project& p);
void finish_project(Project& p, Port& port);

// Shared by the subcommands.
// A search record as the JSON outputs give it.
nlohmann::ordered_json search_record_json(const SearchRecord& r);
int method_number(const std::string& name); // 0 when unknown
const char* method_name(int method);
void print_project(const Project& p, std::ostream& out);
// The files are single-byte text; JSON wants UTF-8.
std::string latin1_to_utf8(const std::string& s);

// Around a result: what is not valid about it is said on `warn` as a line
// "tobel: warning: ..." and gives exit_not_valid; a valid one exit_ok. Also
// warns when an interslice method left its equilibrium open.
int warn_about_result(const Project& p, std::ostream& warn);
void add_validity_json(const Project& p, nlohmann::ordered_json& j);
void add_equilibrium_json(const Project& p, nlohmann::ordered_json& j);
void print_equilibrium(const Project& p, std::ostream& out);

// The input checks' fatal findings, with the property and the material named.
void explain_fatal_checks(const Project& p, std::ostream& out);
// Items of the data file that are not numbers where numbers are expected, as
// warnings on standard error: the reader takes their leading number.
void warn_about_tokens(const Project& p, const std::string& file);

} // namespace tobel::cli
