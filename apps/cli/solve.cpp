// tobel solve: Open, the sliding surface's forms, Solve > Single Trial Surface.
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "project/commands.h"
#include "solver/single_column.h"
#include "trial.h"

namespace tobel::cli {

namespace {

struct SolveOptions {
    TrialOptions trial;
    bool printout = false;
    bool column = false;
    std::array<float, 2> column_yx{};
};

SolveOptions parse(const std::vector<std::string>& args)
{
    SolveOptions o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (take_trial_option(args, i, o.trial))
            continue;
        if (args[i] == "--printout") {
            o.printout = true;
        } else if (args[i] == "--column") {
            if (i + 1 >= args.size() || !parse_numbers(args[++i], o.column_yx))
                throw std::runtime_error("--column takes Y,X");
            o.column = true;
        } else {
            throw std::runtime_error("unknown option '" + args[i] + "'");
        }
    }
    check_trial_options(o.trial);
    return o;
}

void print_json(const Project& p, std::ostream& out)
{
    auto field = [&out](const char* name, const std::string& value) {
        out << ", \"" << name << "\": " << value;
    };
    auto num = [&field](const char* name, float x) { field(name, json_number(x)); };
    out << "{\"factor_of_safety\": " << json_number(p.factor_of_safety);
    field("method", json_string(method_name(p.solution_method)));
    num("lambda", p.lambda_coef);
    num("slide_volume", p.slide_volume);
    num("slide_weight", p.slide_weight);
    num("slide_area", p.slide_area);
    field("active_columns", std::to_string(p.active_columns));
    num("lateral_unbalance", p.lateral_unbalance);
    num("centre_y", p.centre_y);
    num("centre_z", p.centre_z);
    field("iteration_count", std::to_string(p.solution_method >= 3 ? p.iteration_count : p.iteration_total));
    num("neg_normal_percent", p.neg_normal_percent);
    num("head_water_sum", p.head_water_sum);
    num("crack_water_sum", p.crack_water_sum);
    num("ext_horizontal_sum", p.ext_horizontal_sum);
    num("ext_vertical_sum", p.ext_vertical_sum);
    if (p.solution_method >= 3) {
        out << ", \"acceptability\": {\"moment_shear\": " << json_number(p.moment_shear);
        field("moment_other", json_number(p.moment_other));
        if (p.num_rows == 1) {
            field("thrust_ratio_mean", json_number(p.thrust_ratio_mean));
            field("thrust_ratio_min", json_number(p.thrust_ratio_min));
            field("thrust_ratio_max", json_number(p.thrust_ratio_max));
            field("vol_thrust_inside", json_number(p.vol_thrust_inside));
            field("vol_thrust_middle", json_number(p.vol_thrust_middle));
            field("vol_tension", json_number(p.vol_tension));
        }
        field("vol_overstressed", json_number(p.vol_overstressed));
        out << "}";
    }
    out << ", \"messages\": [";
    for (int i = 1; i <= p.message_count; ++i)
        out << (i > 1 ? ", " : "") << json_string(p.message_text[std::size_t(i)]);
    out << "]}\n";
}

} // namespace

int run_solve(const std::vector<std::string>& args)
{
    SolveOptions o;
    try {
        o = parse(args);
    } catch (const std::exception& e) {
        std::cerr << "tobel solve: " << e.what() << "\n";
        return 1;
    }
    Project p;
    start_project(p);
    // With --json only the object goes to standard output.
    CliPort port(o.trial.json ? std::cerr : std::cout);
    port.policy = o.trial.answer;
    port.show_windows = !o.trial.json;
    port.show_printout = o.printout;
    install_interrupt_handler();

    if (!prepare_trial(p, port, o.trial))
        return 1;
    if (!solve_single_trial(p, port)) {
        std::cerr << "tobel solve: method " << method_name(p.solution_method) << " is not available\n";
        return 1;
    }
    if (o.column) {
        std::vector<std::string> lines;
        show_single_column(p, o.column_yx[0], o.column_yx[1], lines);
        for (const auto& l : lines)
            (o.trial.json ? std::cerr : std::cout) << l << "\n";
    }
    if (o.trial.json)
        print_json(p, std::cout);
    finish_project(p, port);
    return p.factor_of_safety == 0 ? 2 : 0;
}

} // namespace tobel::cli
