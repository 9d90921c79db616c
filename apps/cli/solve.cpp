#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "dialogs/ellipsoid_form.h"
#include "project/commands.h"

namespace tobel::cli {

namespace {

struct SolveOptions {
    std::string file;
    int method = 1;
    std::string surface = "ellipsoid";
    bool json = false;
    bool printout = false;
    Answer answer = Answer::no;
};

// Returns an error text, empty when the options are good.
std::string parse(const std::vector<std::string>& args, SolveOptions& o)
{
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](const char* what) -> std::string {
            if (i + 1 >= args.size()) throw std::runtime_error(std::string(what) + " needs a value");
            return args[++i];
        };
        if (a == "--method") {
            const std::string m = value("--method");
            o.method = method_number(m);
            if (o.method == 0) return "unknown method '" + m + "'";
        } else if (a == "--surface") {
            o.surface = value("--surface");
        } else if (a == "--json") {
            o.json = true;
        } else if (a == "--printout") {
            o.printout = true;
        } else if (a == "--yes") {
            o.answer = Answer::yes;
        } else if (a == "--no") {
            o.answer = Answer::no;
        } else if (!a.empty() && a[0] == '-') {
            return "unknown option '" + a + "'";
        } else if (o.file.empty()) {
            o.file = a;
        } else {
            return "more than one file given";
        }
    }
    if (o.file.empty()) return "no data file given";
    if (o.surface != "ellipsoid") return "surface '" + o.surface + "' is not available; use --surface ellipsoid";
    if (o.method == 3 || o.method == 4)
        return std::string("method '") + method_name(o.method) +
               "' is not available yet; use --method bishop or --method janbu";
    return {};
}

// The shortest decimal text that reads back as the same single; JSON has no
// NaN or infinity, and a result never holds one, but a bad file must not
// produce invalid output.
std::string json_number(float x)
{
    if (!std::isfinite(x)) return "0";
    char buf[32];
    for (int digits = 6; digits <= 9; ++digits) {
        std::snprintf(buf, sizeof buf, "%.*g", digits, double(x));
        if (std::strtof(buf, nullptr) == x) break;
    }
    return buf;
}

void print_json(const Project& p, std::ostream& out)
{
    auto num = [](float x) { return json_number(x); };
    out << "{\"factor_of_safety\": " << num(p.factor_of_safety) << ", \"method\": "
        << json_string(method_name(p.solution_method)) << ", \"lambda\": " << num(p.lambda_coef)
        << ", \"slide_volume\": " << num(p.slide_volume) << ", \"slide_weight\": " << num(p.slide_weight)
        << ", \"slide_area\": " << num(p.slide_area) << ", \"active_columns\": " << p.active_columns
        << ", \"lateral_unbalance\": " << num(p.lateral_unbalance) << ", \"centre_y\": " << num(p.centre_y)
        << ", \"centre_z\": " << num(p.centre_z) << ", \"messages\": [";
    for (int i = 1; i <= p.message_count; ++i)
        out << (i > 1 ? ", " : "") << json_string(p.message_text[std::size_t(i)]);
    out << "]}\n";
}

} // namespace

int run_solve(const std::vector<std::string>& args)
{
    SolveOptions o;
    std::string error;
    try {
        error = parse(args, o);
    } catch (const std::exception& e) {
        error = e.what();
    }
    if (!error.empty()) {
        std::cerr << "tobel solve: " << error << "\n";
        return 1;
    }
    Project p;
    main_load(p);
    // With --json only the object goes to standard output.
    CliPort port(o.json ? std::cerr : std::cout);
    port.policy = o.answer;
    port.show_windows = !o.json;
    port.show_printout = o.printout;
    install_interrupt_handler();

    // Open, as the Open command does with the file already chosen.
    p.data_file_path = o.file;
    p.open_recent_pending = -1;
    file_open(p, port);
    if (port.error_boxes) return 1;

    // The single ellipsoid stored in the file, confirmed as its form's Continue does.
    EllipsoidForm form = open_ellipsoid_form(p);
    continue_ellipsoid_form(p, form, port);

    p.solution_method = int16(o.method);
    solve_single_trial(p, port);
    if (o.json) print_json(p, std::cout);
    return p.factor_of_safety == 0 || !std::isfinite(p.factor_of_safety) ? 2 : 0;
}

} // namespace tobel::cli
