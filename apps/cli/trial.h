// Options and steps shared by the commands that open a data file and build
// its sliding surface: solve and export (and later search and report).
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli_port.h"
#include "commands/surface_commands.h"
#include "project/project.h"

namespace tobel::cli {

struct TrialOptions {
    std::string file;
    std::string method_text = "bishop";
    int method = 1;
    std::string surface = "ellipsoid";
    SurfaceCommand surface_command = SurfaceCommand::ellipsoid;
    std::string field_text;
    bool field = false;
    std::array<float, 4> field_limits{};
    std::string rotation_text;
    bool rotation = false;
    float rotation_deg = 0;
    bool json = false;
    bool yes = false, no = false;
    Answer answer = Answer::no;
};

// The data file and the options every command that opens and solves takes:
// --method, --json, --yes/--no; with `surface` also --surface, --field and
// --rotation.
void add_file_option(CLI::App& sub, std::string& file);
void add_trial_options(CLI::App& sub, TrialOptions& o, bool surface);

// Checks and converts the options once all are read; throws
// std::runtime_error naming the option and what it takes.
void check_trial_options(TrialOptions& o);

// Comma-separated numbers, exactly as many as `out` holds.
template <std::size_t N> bool parse_numbers(const std::string& text, std::array<float, N>& out);

// Opens the file as File > Open does with the file already chosen. False
// when the read failed (its box has been shown).
bool open_data_file(Project& p, CliPort& port, const std::string& file);

// Builds the surface stored in the open project as its forms' Continue
// buttons do, with the field, the rotation and the method. Returns false,
// having said why on standard error, when that cannot be done.
bool build_trial_surface(Project& p, CliPort& port, const TrialOptions& o);

// open_data_file, then build_trial_surface.
bool prepare_trial(Project& p, CliPort& port, const TrialOptions& o);

// Opens the file, confirms the search's set-up form and runs the search
// (search, report and draw share it). `before`, when given, sees the
// project just before the search and may refuse it by returning false.
bool run_stored_search(Project& p, CliPort& port, const TrialOptions& trial, bool grid, bool composite,
                       bool valid_only, const std::function<bool(Project&)>& before = nullptr);
// --grid, --auto, --composite, --valid-only.
void add_search_options(CLI::App& sub, bool& grid, bool& automatic, bool& composite, bool& valid_only);

} // namespace tobel::cli
