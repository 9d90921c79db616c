#include <cstdio>
#include <ostream>

#include "cli.h"
#include "commands/commands.h"
#include "commands/menu_model.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/settings.h"

namespace tobel::cli {

static std::string settings_file;

void set_settings_path(const std::string& path)
{
    settings_file = path;
}

void add_settings_option(CLI::App& sub)
{
    sub.add_option_function<std::string>("--settings", set_settings_path,
                                         "PATH: read this settings file (colours, folder, recent files) "
                                         "at the start and write it at the end");
}

void start_project(Project& p)
{
    p.settings_path = settings_file;
    main_load(p);
}

void finish_project(Project& p, Port& port)
{
    if (p.settings_path.empty())
        return;
    try {
        write_settings(p, p.settings_path);
    } catch (const RuntimeError& e) {
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
    }
}

std::string latin1_to_utf8(const std::string& s)
{
    std::string out;
    for (unsigned char c : s) {
        if (c < 0x80) {
            out += char(c);
        } else {
            out += char(0xC0 | (c >> 6));
            out += char(0x80 | (c & 0x3F));
        }
    }
    return out;
}

int method_number(const std::string& name)
{
    if (name == "bishop")
        return 1;
    if (name == "janbu")
        return 2;
    if (name == "spencer")
        return 3;
    if (name == "morgenstern-price")
        return 4;
    return 0;
}

const char* method_name(int method)
{
    switch (method) {
    case 1: return "bishop";
    case 2: return "janbu";
    case 3: return "spencer";
    case 4: return "morgenstern-price";
    default: return "";
    }
}

} // namespace tobel::cli
