// tobel run SCRIPT: menu commands and dialog steps, one per line, with the
// answers to the program's questions queued ahead of the command that asks.
#include <ctime>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "commands/dialog_session.h"
#include "commands/menu_command.h"
#include "commands/menu_model.h"
#include "dialogs/ellipsoid_form.h"
#include "plot_output.h"
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
        {"num_layers", [](const Project& p) { return std::to_string(p.num_layers); }},
        {"num_piezos", [](const Project& p) { return std::to_string(p.num_piezos); }},
        {"num_discs", [](const Project& p) { return std::to_string(p.num_discs); }},
        {"num_sections", [](const Project& p) { return std::to_string(p.num_sections); }},
        {"view_row", [](const Project& p) { return std::to_string(p.view_row); }},
        {"view_mode", [](const Project& p) { return std::to_string(p.view_mode); }},
        {"vert_exag", [f](const Project& p) { return f(p.vert_exag); }},
        {"iso_angle", [f](const Project& p) { return f(p.iso_angle); }},
        {"fill_style", [](const Project& p) { return std::to_string(p.view.fill_style); }},
    };
}

// Fields read with numbers after their name: the material of entry m, the
// point count of line k in section s, and so on. The function checks the
// numbers and gives false when one is out of range.
using IndexedField =
    std::pair<int, std::function<bool(const Project&, const std::vector<int>&, std::string&)>>;
std::map<std::string, IndexedField> indexed_fields()
{
    auto in = [](int v, int lo, int hi) { return v >= lo && v <= hi; };
    return {
        {"material_name",
         {1,
          [in](const Project& p, const std::vector<int>& i, std::string& out) {
              if (!in(i[0], 1, material_capacity))
                  return false;
              out = p.mat_name[std::size_t(i[0])];
              return true;
          }}},
        {"section_npts",
         {2,
          [in](const Project& p, const std::vector<int>& i, std::string& out) {
              if (!in(i[0], 1, section_capacity) || !in(i[1], 1, section_count_surfaces))
                  return false;
              out = std::to_string(p.sections.n(i[0], i[1]));
              return true;
          }}},
        {"point",
         {3,
          [in](const Project& p, const std::vector<int>& i, std::string& out) {
              if (!in(i[0], 1, section_capacity) || !in(i[1], 1, section_surface_capacity) ||
                  !in(i[2], 1, section_point_capacity))
                  return false;
              out = general_text(p.sections.y(i[0], i[2], i[1])) + " " +
                    general_text(p.sections.z(i[0], i[2], i[1]));
              return true;
          }}},
        {"surf_method",
         {1,
          [in](const Project& p, const std::vector<int>& i, std::string& out) {
              if (!in(i[0], 1, surface_capacity))
                  return false;
              out = std::to_string(p.surf_method[std::size_t(i[0])]);
              return true;
          }}},
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

// Today's date in the system's short form, for the Control Parameters form.
std::string today_text()
{
    const std::time_t now = std::time(nullptr);
    char buf[32] = {};
    std::strftime(buf, sizeof buf, "%x", std::localtime(&now));
    return buf;
}

bool is_dialog_step(const std::string& cmd)
{
    for (const char* step :
         {"cell", "type", "text", "key", "choose", "button", "continue", "cancel", "goto-line",
          "goto-section", "copy-layer", "copy-section", "down", "move", "up", "click", "drag"})
        if (cmd == step)
            return true;
    return false;
}

// The script's stand-in for the window program around the menu commands:
// Exit ends the script; what needs a printer, the clipboard or the help
// viewer is only reported.
class ScriptHost : public MenuHost {
  public:
    bool ended = false;
    void report(Project&, Port&, int destination, const ReportContext&) override
    {
        std::cout << (destination == 0 ? "Preview Report" : "Print Report") << " needs the desktop program\n";
    }
    void print_view(Project&, Port&) override
    {
        std::cout << "Print > Current view needs the desktop program\n";
    }
    void copy_picture(Project&, Port&) override
    {
        std::cout << "Copy to Clipboard needs the desktop program\n";
    }
    void show_help(Project&, Port&) override { std::cout << "Help needs the desktop program\n"; }
    void end_program(Project&) override { ended = true; }
};

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
    const auto indexed = indexed_fields();
    DialogSession session;
    session.today = today_text();
    ScriptHost host;
    MenuContext menu_context{session, &host, false};

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
            new_project(p, port, session);
        } else if (cmd == "start") {
            int button = 0;
            if (!(in >> button) || button < 1 || button > 3)
                return fail("start takes a button 1 to 3");
            start_form_button(p, port, session, button);
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
            std::string value;
            if (auto it = readable.find(field); it != readable.end()) {
                value = it->second(p);
            } else if (auto jt = indexed.find(field); jt != indexed.end()) {
                std::vector<int> idx(jt->second.first);
                for (int& i : idx)
                    if (!(in >> i))
                        return fail(field + " takes " + std::to_string(idx.size()) + " numbers");
                if (!jt->second.second(p, idx, value))
                    return fail(field + ": a number is out of range");
            } else {
                return fail("unknown field '" + field + "'");
            }
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
        } else if (cmd == "command") {
            std::string control;
            int index = 0;
            in >> control >> index;
            switch (run_menu_command(p, port, menu_context, control, index)) {
            case MenuResult::unknown: return fail("unknown menu item '" + control + "'");
            case MenuResult::refused: std::cout << "menu item " << control << " is not available\n"; break;
            case MenuResult::no_action: std::cout << "menu item " << control << " has no action\n"; break;
            case MenuResult::busy:
            case MenuResult::done: break;
            }
            if (host.ended) {
                std::cout << "program ended\n";
                return 0;
            }
        } else if (cmd == "messages") {
            for (int i = 1; i <= p.message_count; ++i)
                std::cout << p.message_text[std::size_t(i)] << "\n";
        } else if (cmd == "info") {
            print_project(p, std::cout);
        } else if (cmd == "picture") {
            std::string which, out;
            in >> which >> out;
            const std::map<std::string, const PictureWindow*> windows = {{"editor", &p.pictures.editor},
                                                                         {"section", &p.pictures.section},
                                                                         {"isometry", &p.pictures.isometry},
                                                                         {"search", &p.pictures.search},
                                                                         {"plan", &p.pictures.plan_active}};
            auto it = windows.find(which);
            if (it == windows.end() || out.empty())
                return fail(
                    "picture takes editor, section, isometry, search or plan, and a .png, .svg or .pdf file");
            if (!write_picture_file(it->second->picture, out, int(p.view.picture_width),
                                    int(p.view.picture_height)))
                return fail("cannot write " + out);
            std::cout << out << ": " << it->second->caption << "\n";
        } else if (cmd == "dialog") {
            std::string name;
            in >> name;
            const DialogKind kind = parse_dialog_kind(name);
            if (kind == DialogKind::none)
                return fail("unknown dialog '" + name + "'");
            const std::string control = dialog_menu_control(kind);
            if (p.menus.items.count(control) && !p.menus.at(control).visible)
                std::cout << "menu item " << control << " is not available\n";
            else
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
                int arg = 0;
                in >> name >> arg;
                step = dialog_button(p, port, session, name, arg);
            } else if (cmd == "goto-line" || cmd == "goto-section" || cmd == "copy-layer" ||
                       cmd == "copy-section") {
                int arg = 0;
                if (!(in >> arg))
                    return fail(cmd + " takes a number");
                step = dialog_button(p, port, session, cmd, arg);
            } else if (cmd == "down" || cmd == "move" || cmd == "up") {
                std::string b;
                double y = 0, e = 0;
                if (!(in >> b >> y >> e))
                    return fail(cmd + " takes a button (left, right, left+shift, right+shift) and Y E");
                const bool shift = b.size() > 6 && b.substr(b.size() - 6) == "+shift";
                if (shift)
                    b.resize(b.size() - 6);
                if (b != "left" && b != "right")
                    return fail("the button must be left or right, with +shift for Shift");
                const PointerAction a = cmd == "down"   ? PointerAction::down
                                        : cmd == "move" ? PointerAction::move
                                                        : PointerAction::up;
                step = dialog_pointer(p, port, session, a,
                                      b == "left" ? PointerButton::left : PointerButton::right, shift, y, e);
            } else if (cmd == "click" || cmd == "drag") {
                double y1 = 0, e1 = 0, y2 = 0, e2 = 0;
                if (!(in >> y1 >> e1) || (cmd == "drag" && !(in >> y2 >> e2)))
                    return fail(cmd == "click" ? "click takes Y E" : "drag takes Y1 E1 Y2 E2");
                if (cmd == "click") {
                    y2 = y1;
                    e2 = e1;
                }
                step =
                    dialog_pointer(p, port, session, PointerAction::down, PointerButton::left, false, y1, e1);
                if (step == DialogStep::done && cmd == "drag")
                    dialog_pointer(p, port, session, PointerAction::move, PointerButton::left, false, y2, e2);
                if (step == DialogStep::done)
                    dialog_pointer(p, port, session, PointerAction::up, PointerButton::left, false, y2, e2);
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
