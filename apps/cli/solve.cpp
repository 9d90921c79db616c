// tobel solve: Open, the sliding surface's forms, Solve > Single Trial Surface.
#include <iostream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "graphics/picture_hooks.h"
#include "plot_output.h"
#include "solver/single_column.h"
#include "solver/validity.h"
#include "trial.h"

namespace tobel::cli {

namespace {

using nlohmann::ordered_json;

nlohmann::ordered_json solution_json(const Project& p)
{
    ordered_json j;
    j["factor_of_safety"] = json_float(p.factor_of_safety);
    j["method"] = method_name(p.solution_method);
    j["lambda"] = json_float(p.lambda_coef);
    j["slide_volume"] = json_float(p.slide_volume);
    j["slide_weight"] = json_float(p.slide_weight);
    j["slide_area"] = json_float(p.slide_area);
    j["active_columns"] = p.active_columns;
    j["lateral_unbalance"] = json_float(p.lateral_unbalance);
    j["centre_y"] = json_float(p.centre_y);
    j["centre_z"] = json_float(p.centre_z);
    j["iteration_count"] = p.solution_method >= 3 ? int(p.iteration_count) : p.iteration_total;
    j["neg_normal_percent"] = json_float(p.neg_normal_percent);
    j["head_water_sum"] = json_float(p.head_water_sum);
    j["crack_water_sum"] = json_float(p.crack_water_sum);
    j["ext_horizontal_sum"] = json_float(p.ext_horizontal_sum);
    j["ext_vertical_sum"] = json_float(p.ext_vertical_sum);
    if (p.solution_method >= 3) {
        ordered_json a;
        a["moment_shear"] = json_float(p.moment_shear);
        a["moment_other"] = json_float(p.moment_other);
        if (p.num_rows == 1) {
            a["thrust_ratio_mean"] = json_float(p.thrust_ratio_mean);
            a["thrust_ratio_min"] = json_float(p.thrust_ratio_min);
            a["thrust_ratio_max"] = json_float(p.thrust_ratio_max);
            a["vol_thrust_inside"] = json_float(p.vol_thrust_inside);
            a["vol_thrust_middle"] = json_float(p.vol_thrust_middle);
            a["vol_tension"] = json_float(p.vol_tension);
        }
        a["vol_overstressed"] = json_float(p.vol_overstressed);
        j["acceptability"] = a;
    }
    add_equilibrium_json(p, j);
    add_validity_json(p, j);
    ordered_json messages = ordered_json::array();
    for (int i = 1; i <= p.message_count; ++i)
        messages.push_back(latin1_to_utf8(p.message_text[std::size_t(i)]));
    j["messages"] = messages;
    return j;
}

} // namespace

void add_solve_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<SolveOptions>();
    auto* sub =
        app.add_subcommand("solve", "open FILE, build its sliding surface and solve the single trial");
    add_trial_options(*sub, o->trial, true);
    add_settings_option(*sub);
    sub->add_flag("--printout", o->printout, "add the solution printout (lateral balance or acceptability)");
    sub->add_option("--column", o->column_text, "Y,X: print the single column output of the column there");
    sub->add_option("--plot", o->plot, "OUT.png, .svg or .pdf: the plan of active columns with its legend");
    sub->add_option("--size", o->size_text,
                    "WxH: the size of the --plot picture in pixels (default 800x600)");
    sub->callback([o, &run] { run = [o] { return run_solve(*o); }; });
}

int run_solve(SolveOptions& o)
{
    try {
        check_trial_options(o.trial);
        if (!o.column_text.empty()) {
            if (!parse_numbers(o.column_text, o.column_yx))
                throw std::runtime_error("--column takes Y,X");
            o.column = true;
        }
        if (!o.plot.empty()) {
            parse_picture_size(o.size_text, o.width, o.height);
            check_picture_path(o.plot);
        }
    } catch (const std::exception& e) {
        std::cerr << "tobel solve: " << e.what() << "\n";
        return exit_bad_input;
    }
    Project p;
    start_project(p);
    // With --json only the object goes to standard output.
    CliPort port(o.trial.json ? std::cerr : std::cout);
    port.policy = o.trial.answer;
    port.show_windows = !o.trial.json;
    port.show_printout = o.printout;
    PictureHooks hooks(port);
    if (!o.plot.empty()) {
        port.hooks = &hooks;
        use_picture_size(p, o.width, o.height);
    }
    install_interrupt_handler();

    if (!prepare_trial(p, port, o.trial))
        return exit_bad_input;
    warn_about_tokens(p, o.trial.file);
    if (!solve_single_trial(p, port)) {
        std::cerr << "tobel solve: method " << method_name(p.solution_method) << " is not available\n";
        return exit_bad_input;
    }
    if (p.check_fatal != 0) {
        explain_fatal_checks(p, std::cerr);
        finish_project(p, port);
        return exit_bad_input;
    }
    if (o.column) {
        std::vector<std::string> lines;
        show_single_column(p, o.column_yx[0], o.column_yx[1], lines);
        for (const auto& l : lines)
            (o.trial.json ? std::cerr : std::cout) << l << "\n";
    }
    if (o.printout && !o.trial.json)
        print_equilibrium(p, std::cout);
    if (o.trial.json)
        std::cout << solution_json(p).dump(2) << "\n";
    const int status = warn_about_result(p, std::cerr);
    if (!o.plot.empty() && !write_picture_file(p.pictures.plan_active.picture, o.plot, o.width, o.height))
        return exit_bad_input;
    finish_project(p, port);
    return status;
}

} // namespace tobel::cli
