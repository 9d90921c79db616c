#include <cstdio>
#include <ostream>

#include "cli.h"
#include "project/commands.h"
#include "project/menu_model.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "project/settings.h"

namespace tobel::cli {

static std::string settings_file;

void set_settings_path(const std::string& path)
{
    settings_file = path;
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

std::string json_string(const std::string& s)
{
    std::string out = "\"";
    for (unsigned char c : s) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20 || c >= 0x80) {
                // Files are single-byte text: show other bytes as their Latin-1 code points.
                char buf[8];
                std::snprintf(buf, sizeof buf, "\\u%04x", unsigned(c));
                out += buf;
            } else {
                out += char(c);
            }
        }
    }
    return out + "\"";
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
