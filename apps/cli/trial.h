// Options and steps shared by the commands that open a data file and build
// its sliding surface: solve and export (and later search and report).
#pragma once

#include <array>
#include <string>
#include <vector>

#include "cli_port.h"
#include "project/project.h"
#include "project/surface_commands.h"

namespace tobel::cli {

struct TrialOptions {
    std::string file;
    int method = 1;
    std::string surface = "ellipsoid";
    SurfaceCommand surface_command = SurfaceCommand::ellipsoid;
    bool field = false;
    std::array<float, 4> field_limits{};
    bool rotation = false;
    float rotation_deg = 0;
    bool json = false;
    Answer answer = Answer::no;
};

// Takes the option at args[i] (and its value) if it is one of the trial
// options or the data file. Returns 1 when taken, 0 when not an option of
// these, and throws std::runtime_error with the reason on a bad value.
int take_trial_option(const std::vector<std::string>& args, std::size_t& i, TrialOptions& o);

// Checks the options once all are read; throws std::runtime_error.
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

// The shortest decimal text that reads back as the same single.
std::string json_number(float x);

} // namespace tobel::cli
