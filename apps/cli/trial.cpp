#include "trial.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "commands/commands.h"

namespace tobel::cli {

template <std::size_t N> bool parse_numbers(const std::string& text, std::array<float, N>& out)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i < N; ++i) {
        const std::size_t end = text.find(',', start);
        if ((end == std::string::npos) != (i + 1 == N))
            return false;
        const std::string item =
            text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        char* stop = nullptr;
        const float v = std::strtof(item.c_str(), &stop);
        if (item.empty() || *stop != '\0' || !std::isfinite(v))
            return false;
        out[i] = v;
        start = end + 1;
    }
    return true;
}
template bool parse_numbers<1>(const std::string&, std::array<float, 1>&);
template bool parse_numbers<2>(const std::string&, std::array<float, 2>&);
template bool parse_numbers<4>(const std::string&, std::array<float, 4>&);

void add_file_option(CLI::App& sub, std::string& file)
{
    sub.add_option("FILE", file, "the data file (.TOB)")->required();
}

void add_trial_options(CLI::App& sub, TrialOptions& o, bool surface)
{
    add_file_option(sub, o.file);
    sub.add_option("--method", o.method_text, "bishop, janbu, spencer or morgenstern-price (default bishop)");
    if (surface) {
        sub.add_option("--surface", o.surface,
                       "ellipsoid (default), wedge, composite, general or general-wedge: the surface stored "
                       "in the file, built as its dialog's Continue builds it");
        sub.add_option("--field", o.field_text,
                       "XLO,XHI,YLO,YHI: the discontinuity field of a general surface");
        sub.add_option("--rotation", o.rotation_text,
                       "DEG: rotate the direction of sliding for this solution");
    }
    sub.add_flag("--json", o.json, "print one JSON object on standard output");
    auto* yes = sub.add_flag("--yes", o.yes, "answer Yes to the program's questions");
    sub.add_flag("--no", o.no, "answer No to the program's questions (the default)")->excludes(yes);
}

void check_trial_options(TrialOptions& o)
{
    o.method = method_number(o.method_text);
    if (o.method == 0)
        throw std::runtime_error("unknown method '" + o.method_text + "'");
    o.answer = o.yes ? Answer::yes : Answer::no;
    if (!o.field_text.empty()) {
        if (!parse_numbers(o.field_text, o.field_limits))
            throw std::runtime_error("--field takes XLO,XHI,YLO,YHI");
        o.field = true;
    }
    if (!o.rotation_text.empty()) {
        std::array<float, 1> deg{};
        if (!parse_numbers(o.rotation_text, deg))
            throw std::runtime_error("--rotation takes a number of degrees");
        o.rotation = true;
        o.rotation_deg = deg[0];
    }
    if (o.file.empty())
        throw std::runtime_error("no data file given");
    if (!parse_surface_command(o.surface, o.surface_command))
        throw std::runtime_error("unknown surface '" + o.surface +
                                 "'; use ellipsoid, wedge, composite, general or general-wedge");
    if (o.field && o.surface_command != SurfaceCommand::general &&
        o.surface_command != SurfaceCommand::general_wedge)
        throw std::runtime_error("--field needs --surface general or general-wedge");
}

// What the file lacks for the surface asked for; empty when nothing.
static std::string missing_surface_data(const Project& p, SurfaceCommand which)
{
    const bool wedges = which == SurfaceCommand::wedge || which == SurfaceCommand::composite ||
                        which == SurfaceCommand::general_wedge;
    if (wedges && p.num_wedges == 0)
        return "wedge planes";
    if (which == SurfaceCommand::general || which == SurfaceCommand::general_wedge) {
        if (p.surf_method[std::size_t(p.sliding_index)] == 1)
            return {};
        for (int s = 1; s <= p.num_sections; ++s)
            if (p.sections.n(s, p.sliding_index) > 0)
                return {};
        return "sliding surface lines in its sections and no sliding surface grid file";
    }
    return {};
}

bool open_data_file(Project& p, CliPort& port, const std::string& file)
{
    p.data_file_path = file;
    p.open_recent_pending = -1;
    const int errors = port.error_boxes;
    file_open(p, port);
    return port.error_boxes == errors;
}

bool prepare_trial(Project& p, CliPort& port, const TrialOptions& o)
{
    return open_data_file(p, port, o.file) && build_trial_surface(p, port, o);
}

bool build_trial_surface(Project& p, CliPort& port, const TrialOptions& o)
{
    if (const std::string missing = missing_surface_data(p, o.surface_command); !missing.empty()) {
        std::cerr << "tobel: " << o.file << " holds no " << missing << "\n";
        return false;
    }
    if (!confirm_surface(p, port, o.surface_command)) {
        std::cerr << "tobel: no sliding surface could be built from " << o.file << "\n";
        return false;
    }
    if (o.field) {
        const auto& f = o.field_limits;
        confirm_discontinuity_field(p, port, f[0], f[1], f[2], f[3]);
    }
    if (o.rotation)
        p.rotation_angle = o.rotation_deg;
    p.solution_method = int16(o.method);
    return true;
}

} // namespace tobel::cli
