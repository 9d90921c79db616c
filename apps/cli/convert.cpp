// tobel convert IN OUT, by the extensions: an older .TOD data file to .TOB
// (File > Open .TOD File > Open, then Save As), and a .TOB data file to its
// JSON document and back.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "cli.h"
#include "cli_port.h"
#include "commands/commands.h"
#include "project_json.h"

namespace tobel::cli {

namespace {

std::string extension_of(const std::string& path)
{
    const auto dot = path.find_last_of('.');
    const auto slash = path.find_last_of('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return {};
    std::string e = path.substr(dot + 1);
    std::transform(e.begin(), e.end(), e.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return e;
}

int convert_legacy(const std::string& in, const std::string& out)
{
    Project p;
    start_project(p);
    CliPort port(std::cerr);
    port.show_windows = false;
    port.files = {in};
    file_open_legacy(p, port);
    if (port.error_boxes)
        return exit_bad_input;
    if (p.data_file_path != in) {
        std::cerr << "tobel convert: " << in << " was not read\n";
        return exit_bad_input;
    }
    port.files = {out};
    p.save_cancelled = 0;
    file_save_as(p, port);
    if (p.save_cancelled || p.data_file_path != out) {
        std::cerr << "tobel convert: " << out << " could not be written\n";
        return exit_bad_input;
    }
    finish_project(p, port);
    return exit_ok;
}

int convert_to_json(const std::string& in, const std::string& out)
{
    const nlohmann::ordered_json doc = data_file_to_json(in);
    const std::string text = doc.dump(2) + "\n";
    if (out == "-") {
        std::cout << text;
        return exit_ok;
    }
    // Written whole beside the target, then renamed over it.
    const std::string temp = out + ".part";
    {
        std::ofstream f(temp, std::ios::binary);
        f << text;
        if (!f.flush()) {
            std::remove(temp.c_str());
            throw std::runtime_error(out + ": cannot be written");
        }
    }
    if (std::rename(temp.c_str(), out.c_str()) != 0) {
        std::remove(temp.c_str());
        throw std::runtime_error(out + ": cannot be written");
    }
    return exit_ok;
}

int convert_from_json(const std::string& in, const std::string& out)
{
    std::ifstream f(in, std::ios::binary);
    if (!f)
        throw std::runtime_error(in + ": cannot be opened");
    nlohmann::ordered_json doc;
    try {
        doc = nlohmann::ordered_json::parse(f);
    } catch (const nlohmann::json::parse_error& e) {
        // The parser names the byte; say the line too.
        std::ifstream again(in, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(again)), std::istreambuf_iterator<char>());
        const std::size_t upto = std::min<std::size_t>(e.byte, text.size());
        const long line = 1 + std::count(text.begin(), text.begin() + long(upto), '\n');
        throw std::runtime_error(in + ", line " + std::to_string(line) + ": not JSON: " + e.what());
    }
    try {
        json_to_data_file(doc, out);
    } catch (const std::exception& e) {
        throw std::runtime_error(in + ": " + e.what());
    }
    return exit_ok;
}

} // namespace

void add_convert_command(CLI::App& app, Runner& run)
{
    auto in = std::make_shared<std::string>();
    auto out = std::make_shared<std::string>();
    auto* sub = app.add_subcommand(
        "convert", "IN.TOD OUT.TOB: import an older data file; IN.TOB OUT.json: the project as "
                   "a JSON document (- for standard output); IN.json OUT.TOB: back to a data file");
    sub->add_option("IN", *in, "the file to read")->required();
    sub->add_option("OUT", *out, "the file to write")->required();
    add_settings_option(*sub);
    sub->callback([in, out, &run] {
        run = [in, out] {
            const std::string from = extension_of(*in), to = extension_of(*out);
            try {
                if (from == "tod")
                    return convert_legacy(*in, *out);
                if (from == "tob" && to == "json")
                    return convert_to_json(*in, *out == "-" ? "-" : *out);
                if (from == "json" && (to == "tob" || to == "tod"))
                    return convert_from_json(*in, *out);
                if (from == "tob" && *out == "-")
                    return convert_to_json(*in, "-");
            } catch (const std::exception& e) {
                std::cerr << "tobel convert: " << e.what() << "\n";
                return exit_bad_input;
            }
            std::cerr << "tobel convert: cannot convert ." << from << " to ." << to
                      << "; give IN.TOD OUT.TOB, IN.TOB OUT.json or IN.json OUT.TOB\n";
            return exit_bad_input;
        };
    });
}

} // namespace tobel::cli
