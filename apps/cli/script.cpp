// tobel run SCRIPT: menu commands and dialog steps, one per line, with the
// answers to the program's questions queued ahead of the command that asks.
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "commands/menu_model.h"
#include "dialogs/ellipsoid_form.h"
#include "project/numtext.h"

namespace tobel::cli {

namespace {

std::map<std::string, std::function<std::string(const Project&)>> readable_fields()
{
    auto f = [](float x) { return general_text(x); };
    return {
        {"factor_of_safety", [f](const Project& p) { return f(p.factor_of_safety); }},
        {"fos", [](const Project& p) { return format(p.factor_of_safety, "####0.00"); }},
        {"slide_volume", [f](const Project& p) { return f(p.slide_volume); }},
        {"slide_weight", [f](const Project& p) { return f(p.slide_weight); }},
        {"slide_area", [f](const Project& p) { return f(p.slide_area); }},
        {"active_columns", [](const Project& p) { return std::to_string(p.active_columns); }},
        {"lateral_unbalance", [f](const Project& p) { return f(p.lateral_unbalance); }},
        {"centre_y", [f](const Project& p) { return f(p.centre_y); }},
        {"centre_z", [f](const Project& p) { return f(p.centre_z); }},
        {"solution_method", [](const Project& p) { return std::to_string(p.solution_method); }},
        {"method", [](const Project& p) { return std::string(method_name(p.solution_method)); }},
        {"dirty_flag", [](const Project& p) { return std::to_string(p.dirty_flag); }},
        {"save_cancelled", [](const Project& p) { return std::to_string(p.save_cancelled); }},
        {"form_mode", [](const Project& p) { return std::to_string(p.form_mode); }},
        {"surface_defined", [](const Project& p) { return std::to_string(p.surface_defined); }},
        {"surface_kind", [](const Project& p) { return std::to_string(p.surface_kind); }},
        {"data_file_path", [](const Project& p) { return p.data_file_path; }},
        {"caption", [](const Project& p) { return p.main_caption; }},
        {"message_count", [](const Project& p) { return std::to_string(p.message_count); }},
        {"eq_coef", [f](const Project& p) { return f(p.eq_coef); }},
        {"rotation_angle", [f](const Project& p) { return f(p.rotation_angle); }},
        {"num_rows", [](const Project& p) { return std::to_string(p.num_rows); }},
        {"num_cols", [](const Project& p) { return std::to_string(p.num_cols); }},
        {"y_min", [f](const Project& p) { return f(p.y_min); }},
        {"y_max", [f](const Project& p) { return f(p.y_max); }},
        {"single_y", [f](const Project& p) { return f(p.single_y); }},
        {"recent_count", [](const Project& p) { return std::to_string(p.recent_count); }},
        {"project_title", [](const Project& p) { return p.project_title; }},
    };
}

std::map<std::string, float Project::*> writable_fields()
{
    return {{"eq_coef", &Project::eq_coef},    {"rotation_angle", &Project::rotation_angle},
            {"search_x", &Project::search_x},  {"single_y", &Project::single_y},
            {"single_z", &Project::single_z},  {"tangent_z", &Project::tangent_z},
            {"aspect_in", &Project::aspect_in}};
}

std::optional<Answer> parse_answer(const std::string& w)
{
    if (w == "yes")
        return Answer::yes;
    if (w == "no")
        return Answer::no;
    if (w == "ok")
        return Answer::ok;
    if (w == "cancel")
        return Answer::cancel;
    return std::nullopt;
}

std::optional<FormKey> parse_form_key(const std::string& w)
{
    static const std::map<std::string, FormKey> keys = {{"up", FormKey::up},       {"down", FormKey::down},
                                                        {"left", FormKey::left},   {"right", FormKey::right},
                                                        {"enter", FormKey::enter}, {"tab", FormKey::tab}};
    auto it = keys.find(w);
    if (it == keys.end())
        return std::nullopt;
    return it->second;
}

std::string rest_of(std::istringstream& in)
{
    std::string rest;
    std::getline(in, rest);
    const auto b = rest.find_first_not_of(" \t");
    return b == std::string::npos ? std::string() : rest.substr(b);
}

bool is_dialog_step(const std::string& cmd)
{
    for (const char* step : {"cell", "type", "text", "key", "choose", "button", "continue", "cancel"})
        if (cmd == step)
            return true;
    return false;
}

} // namespace

int run_script(const std::vector<std::string>& args)
{
    if (args.size() != 1) {
        std::cerr << "usage: tobel run SCRIPT\n";
        return 1;
    }
    std::ifstream script(args[0]);
    if (!script) {
        std::cerr << "tobel run: cannot open script " << args[0] << "\n";
        return 1;
    }
    Project p;
    start_project(p);
    CliPort port(std::cout);
    install_interrupt_handler();
    const auto readable = readable_fields();
    const auto writable = writable_fields();
    DialogSession session;

    std::string line;
    int line_no = 0;
    auto fail = [&](const std::string& why) {
        std::cerr << args[0] << ", line " << line_no << ": " << why << "\n";
        return 1;
    };
    while (std::getline(script, line)) {
        ++line_no;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        std::istringstream in(line);
        std::string cmd;
        if (!(in >> cmd) || cmd[0] == '#')
            continue;
        std::cout << "> " << line << "\n";
        if (cmd == "answer") {
            std::string w;
            in >> w;
            auto a = parse_answer(w);
            if (!a)
                return fail("answer must be yes, no, ok or cancel");
            port.answers.push_back(*a);
        } else if (cmd == "file") {
            port.files.push_back(rest_of(in));
        } else if (cmd == "file-cancel") {
            port.files.push_back(std::nullopt);
        } else if (cmd == "input") {
            port.inputs.push_back(rest_of(in));
        } else if (cmd == "input-cancel") {
            port.inputs.push_back(std::nullopt);
        } else if (cmd == "new") {
            file_new(p, port);
        } else if (cmd == "open" || cmd == "save-as" || cmd == "save-as-tod") {
            const std::string path = rest_of(in);
            if (!path.empty())
                port.files.push_back(path);
            if (cmd == "open")
                file_open(p, port);
            else if (cmd == "save-as")
                file_save_as(p, port);
            else
                file_save_as_tod(p, port);
        } else if (cmd == "open-recent") {
            int item = -1;
            in >> item;
            if (item < 0 || item > 3)
                return fail("open-recent takes an item 0 to 3");
            file_open_recent(p, port, item);
        } else if (cmd == "save") {
            file_save(p, port);
        } else if (cmd == "exit") {
            if (main_query_unload(p, port)) {
                std::cout << "program ended\n";
                return 0;
            }
            std::cout << "exit cancelled\n";
        } else if (cmd == "mirror") {
            mirror_command(p, port);
        } else if (cmd == "method") {
            std::string name;
            in >> name;
            const int m = method_number(name);
            if (m == 0)
                return fail("unknown method '" + name + "'");
            for (int label = 2; label <= 4; ++label) {
                click_method_label(p, label);
                if (p.solution_method == m)
                    break;
                click_method_label(p, label); // swap back and try the next label
            }
        } else if (cmd == "ellipsoid") {
            EllipsoidForm form = open_ellipsoid_form(p);
            for (std::size_t i = 0; i < form.values.size(); ++i) {
                float v;
                if (in >> v)
                    form.values[i] = v;
            }
            continue_ellipsoid_form(p, form, port);
        } else if (cmd == "solve") {
            if (!p.menus["Solve"].visible || !p.menus["Solve_single_trial"].visible) {
                std::cout << "Solve > Single Trial Surface is not available\n";
            } else if (!solve_single_trial(p, port)) {
                std::cout << "method " << method_name(p.solution_method) << " is not available yet\n";
            }
        } else if (cmd == "set") {
            std::string field;
            float v = 0;
            in >> field >> v;
            auto it = writable.find(field);
            if (it == writable.end())
                return fail("field '" + field + "' cannot be set");
            p.*(it->second) = v;
        } else if (cmd == "print" || cmd == "expect") {
            std::string field;
            in >> field;
            auto it = readable.find(field);
            if (it == readable.end())
                return fail("unknown field '" + field + "'");
            const std::string value = it->second(p);
            if (cmd == "print") {
                std::cout << field << " = " << value << "\n";
            } else {
                const std::string want = rest_of(in);
                if (value != want)
                    return fail(field + " is '" + value + "', expected '" + want + "'");
            }
        } else if (cmd == "menu") {
            std::string control;
            in >> control;
            if (!p.menus.items.count(control))
                return fail("unknown menu item '" + control + "'");
            const MenuItem& m = p.menus.at(control);
            std::cout << control << (m.visible ? " visible" : " hidden")
                      << (m.enabled ? " enabled" : " disabled") << (m.checked ? " checked" : "") << " \""
                      << m.caption << "\"\n";
        } else if (cmd == "messages") {
            for (int i = 1; i <= p.message_count; ++i)
                std::cout << p.message_text[std::size_t(i)] << "\n";
        } else if (cmd == "info") {
            print_project(p, std::cout);
        } else if (cmd == "dialog") {
            std::string name;
            in >> name;
            const DialogKind kind = parse_dialog_kind(name);
            if (kind == DialogKind::none)
                return fail("unknown dialog '" + name + "'");
            open_dialog(p, port, session, kind);
        } else if (cmd == "expect-dialog") {
            const std::string want = rest_of(in);
            const std::string have = dialog_caption(session);
            if (have != want)
                return fail("the open dialog is '" + have + "', expected '" + want + "'");
        } else if (is_dialog_step(cmd)) {
            if (!dialog_open(session))
                return fail("no dialog is open");
            DialogStep step = DialogStep::done;
            if (cmd == "cell") {
                int row = 0, col = 1;
                if (!(in >> row))
                    return fail("cell takes a row and, for a table, a column");
                in >> col;
                step = dialog_select(p, port, session, row, col);
            } else if (cmd == "type" || cmd == "text") {
                if (cmd == "text")
                    step = dialog_clear(p, port, session);
                for (char c : rest_of(in))
                    if (step == DialogStep::done)
                        step = dialog_type(p, port, session, c);
            } else if (cmd == "key") {
                std::string w;
                in >> w;
                if (w == "backspace") {
                    step = dialog_type(p, port, session, '\b');
                } else {
                    const auto key = parse_form_key(w);
                    if (!key)
                        return fail("key must be up, down, left, right, enter, tab or backspace");
                    step = dialog_key(p, port, session, *key);
                }
            } else if (cmd == "choose") {
                int choice = 0;
                if (!(in >> choice))
                    return fail("choose takes a number");
                step = dialog_choose(p, port, session, choice);
            } else if (cmd == "button") {
                std::string name;
                in >> name;
                step = dialog_button(p, port, session, name);
            } else if (cmd == "continue") {
                dialog_continue(p, port, session);
            } else if (cmd == "cancel") {
                dialog_cancel(p, port, session);
            }
            if (step == DialogStep::not_here)
                return fail("'" + line + "' is not a step of the dialog '" + dialog_caption(session) + "'");
        } else {
            return fail("unknown command '" + cmd + "'");
        }
    }
    return 0;
}

void add_run_command(CLI::App& app, Runner& run)
{
    auto script = std::make_shared<std::string>();
    auto* sub = app.add_subcommand("run", "run SCRIPT: menu commands and dialog steps, one per line");
    sub->add_option("SCRIPT", *script, "the script file")->required();
    add_settings_option(*sub);
    sub->callback([script, &run] { run = [script] { return run_script({*script}); }; });
}

} // namespace tobel::cli
