// tobel draw: one picture of the program, made as its window shows it and
// written as PNG, SVG or PDF.
#include <cmath>
#include <iostream>
#include <map>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "commands/graphics_commands.h"
#include "geometry/section_window.h"
#include "graphics/isometry.h"
#include "graphics/picture_hooks.h"
#include "graphics/xray.h"
#include "plot_output.h"
#include "solver/validity.h"
#include "trial.h"

namespace tobel::cli {

namespace {

enum class View { plan, assembly, longitudinal, lateral, isometry, result_isometry, xray, search };

const std::map<std::string, View> view_names = {
    {"plan", View::plan},       {"assembly", View::assembly}, {"longitudinal", View::longitudinal},
    {"lateral", View::lateral}, {"isometry", View::isometry}, {"result-isometry", View::result_isometry},
    {"xray", View::xray},       {"search", View::search},
};

struct DrawOptions {
    TrialOptions trial;
    std::string view_text;
    View view = View::plan;
    int row = -1, col = -1; // -1: not given
    float x = 0, y = 0;
    bool x_given = false, y_given = false;
    int stack_surface = 0; // --surface K
    std::string out;
    std::string size_text = "800x600";
    int width = 800, height = 600;
    bool grid = false, automatic = false, composite = false, valid_only = false;
};

// --surface takes a stack surface number for the isometry, or the name of
// the sliding surface to build.
void split_surface_option(DrawOptions& o)
{
    const std::string& s = o.trial.surface;
    if (!s.empty() && s.find_first_not_of("0123456789") == std::string::npos) {
        o.stack_surface = s.size() > 4 ? 10000 : std::stoi(s);
        o.trial.surface = "ellipsoid";
    }
}

void check_options(DrawOptions& o)
{
    const auto v = view_names.find(o.view_text);
    if (v == view_names.end())
        throw std::runtime_error("unknown view '" + o.view_text +
                                 "'; use plan, assembly, longitudinal, lateral, isometry, result-isometry, "
                                 "xray or search");
    o.view = v->second;
    split_surface_option(o);
    check_trial_options(o.trial);
    parse_picture_size(o.size_text, o.width, o.height);
    check_picture_path(o.out);
    const bool along_row = o.row != -1 || o.x_given, along_col = o.col != -1 || o.y_given;
    if (along_row && o.view != View::longitudinal)
        throw std::runtime_error("--row and --x choose the line of the longitudinal view only");
    if (along_col && o.view != View::lateral)
        throw std::runtime_error("--col and --y choose the line of the lateral view only");
    if (o.stack_surface != 0 && o.view != View::isometry)
        throw std::runtime_error("--surface K chooses the surface of the isometry only");
    if (o.view == View::search && !o.grid && !o.automatic)
        throw std::runtime_error("the search view needs --grid or --auto");
    if (o.view != View::search && (o.grid || o.automatic))
        throw std::runtime_error("--grid and --auto belong to the search view");
}

// The mesh line asked for, checked against the mesh; 1 when none was asked.
int chosen_line(const Project& p, const DrawOptions& o, bool row)
{
    const int count = row ? p.num_rows : p.num_cols;
    int line = row ? o.row : o.col;
    if (row && o.x_given)
        line = section_row_of(p, o.x);
    if (!row && o.y_given)
        line = int(std::lround(double((o.y - p.y_min) / p.col_spacing))) + 1;
    if (line == -1)
        return 1;
    if (line < 1 || line > count) {
        const std::string what =
            row ? (o.x_given ? "X " + std::to_string(o.x) : "row " + std::to_string(line))
                : (o.y_given ? "Y " + std::to_string(o.y) : "column " + std::to_string(line));
        throw std::runtime_error(what + " lies off the mesh, which has " + std::to_string(count) +
                                 (row ? " rows" : " columns"));
    }
    return line;
}

// The window whose kept picture the view leaves; empty when it could not be made.
const PictureWindow* draw_view(Project& p, CliPort& port, const DrawOptions& o, int& status)
{
    auto surface = [&](bool required) {
        if (build_trial_surface(p, port, o.trial))
            return true;
        if (!required)
            std::cerr << "tobel draw: the picture shows no sliding surface\n";
        return false;
    };
    switch (o.view) {
    case View::assembly: graphics_plan(p, port); return &p.pictures.section;
    case View::longitudinal: {
        const int row = chosen_line(p, o, true);
        surface(false);
        graphics_longitudinal_section(p, port);
        if (row != 1)
            graphics_scroll_to(p, port, row);
        return &p.pictures.section;
    }
    case View::lateral: {
        const int col = chosen_line(p, o, false);
        surface(false);
        graphics_lateral_section(p, port);
        if (col != 1)
            graphics_scroll_to(p, port, col);
        return &p.pictures.section;
    }
    case View::isometry: {
        surface(false);
        const int last = p.surface_defined != 0 ? p.sliding_index : p.num_surfaces;
        const int k = o.stack_surface != 0 ? o.stack_surface
                                           : (p.surface_defined != 0 ? p.sliding_index : p.num_layers);
        if (k < 1 || k > last)
            throw std::runtime_error("--surface " + std::to_string(k) +
                                     " is not a surface of the stack, which has " + std::to_string(last));
        p.view_mode = 5;
        draw_isometry(p, port, k);
        return &p.pictures.isometry;
    }
    case View::plan:
    case View::result_isometry:
        if (!surface(true)) {
            status = exit_bad_input;
            return nullptr;
        }
        solve_single_trial(p, port);
        if (p.check_fatal != 0) {
            explain_fatal_checks(p, std::cerr);
            status = exit_bad_input;
            return nullptr;
        }
        status = warn_about_result(p, std::cerr);
        if (o.view == View::plan)
            return &p.pictures.plan_active;
        if (p.num_rows == 1) { // a solve draws the result isometry in 3-D only
            p.view.critical_fs = p.factor_of_safety;
            draw_result_isometry(p, port);
        }
        return &p.pictures.result;
    case View::xray:
        surface(false);
        graphics_xray(p, port);
        finish_xray(p);
        return &p.pictures.xray;
    case View::search:
        if (!run_stored_search(p, port, o.trial, o.grid, o.composite, o.valid_only)) {
            status = exit_bad_input;
            return nullptr;
        }
        return &p.pictures.search;
    }
    return nullptr;
}

int run_draw(DrawOptions& o)
{
    try {
        check_options(o);
    } catch (const std::exception& e) {
        std::cerr << "tobel draw: " << e.what() << "\n";
        return exit_bad_input;
    }
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.policy = o.trial.answer;
    port.show_windows = false;
    PictureHooks hooks(port);
    port.hooks = &hooks;
    use_picture_size(p, o.width, o.height);
    install_interrupt_handler();
    if (!open_data_file(p, port, o.trial.file))
        return exit_bad_input;
    warn_about_tokens(p, o.trial.file);
    int status = exit_ok;
    const PictureWindow* w = nullptr;
    try {
        w = draw_view(p, port, o, status);
    } catch (const std::exception& e) {
        std::cerr << "tobel draw: " << e.what() << "\n";
        return exit_bad_input;
    }
    if (w == nullptr)
        return status == exit_ok ? exit_bad_input : status;
    if (!write_picture_file(w->picture, o.out, o.width, o.height))
        return exit_bad_input;
    std::cout << o.out << ": " << w->caption << "\n";
    finish_project(p, port);
    return status;
}

} // namespace

void add_draw_command(CLI::App& app, Runner& run)
{
    auto o = std::make_shared<DrawOptions>();
    auto* sub = app.add_subcommand("draw", "draw one picture of FILE and write it as PNG, SVG or PDF");
    add_trial_options(*sub, o->trial, true);
    add_settings_option(*sub);
    sub->add_option("--view", o->view_text,
                    "plan (of active columns, after a solve), assembly (plan of the column assembly), "
                    "longitudinal, lateral, isometry, result-isometry, xray, search")
        ->required();
    auto* row = sub->add_option("--row", o->row, "N: the mesh row of the longitudinal section");
    sub->add_option("--x", o->x, "X: the longitudinal section nearest to X")->excludes(row);
    sub->get_option("--x")->each([o](const std::string&) { o->x_given = true; });
    auto* col = sub->add_option("--col", o->col, "N: the mesh column of the lateral section");
    sub->add_option("--y", o->y, "Y: the lateral section nearest to Y")->excludes(col);
    sub->get_option("--y")->each([o](const std::string&) { o->y_given = true; });
    sub->get_option("--surface")
        ->description(
            "K: the stack surface of the isometry (1 the lowest layer top ... the sliding surface); "
            "or ellipsoid (default), wedge, composite, general, general-wedge: the sliding surface "
            "stored in the file, built as its dialog's Continue builds it");
    sub->add_option("--out", o->out, "OUT.png, OUT.svg or OUT.pdf")->required();
    sub->add_option("--size", o->size_text, "WxH in pixels (default 800x600)");
    add_search_options(*sub, o->grid, o->automatic, o->composite, o->valid_only);
    sub->callback([o, &run] { run = [o] { return run_draw(*o); }; });
}

} // namespace tobel::cli
