// tobel search --across X0,X1,DX --aspects A1,A2,...: the stored grid or
// auto search for every X of the range and every aspect of the list, side by
// side, the best of all and a table of the best of each search.
#include <cmath>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "cli.h"
#include "cli_port.h"
#include "commands/across_search.h"
#include "commands/commands.h"
#include "graphics/across_plot.h"
#include "graphics/recording_surface.h"
#include "plot_output.h"
#include "project/numtext.h"
#include "search_across.h"
#include "search_parts.h"

namespace tobel::cli {

namespace {

using nlohmann::ordered_json;

// Numbers separated by commas; every one must read whole.
std::vector<float> parse_list(const std::string& text, const char* what)
{
    std::vector<float> values;
    std::stringstream in(text);
    std::string item;
    while (std::getline(in, item, ',')) {
        std::size_t used = 0;
        float v = 0;
        try {
            v = std::stof(item, &used);
        } catch (const std::exception&) {
            used = 0;
        }
        while (used < item.size() && item[used] == ' ')
            ++used;
        if (item.empty() || used != item.size() || !std::isfinite(v))
            throw std::runtime_error(std::string(what) + ": \"" + item + "\" is not a number");
        values.push_back(v);
    }
    if (values.empty())
        throw std::runtime_error(std::string(what) + " is empty");
    return values;
}

void print_json(const AcrossPlan& plan, const AcrossResult& r, std::ostream& out)
{
    ordered_json j;
    j["method"] = method_name(plan.method);
    j["search"] = plan.grid ? "grid" : "auto";
    j["across"] = {{"x0", json_float(plan.x0)}, {"x1", json_float(plan.x1)}, {"dx", json_float(plan.dx)}};
    ordered_json aspects = ordered_json::array();
    for (const float a : plan.aspects)
        aspects.push_back(json_float(a));
    j["aspects"] = aspects;
    j["searches"] = r.cells.size();
    j["trial_count"] = r.trial_count;
    j["stopped"] = r.stopped;
    if (r.best >= 0) {
        const AcrossCell& c = r.cells[std::size_t(r.best)];
        ordered_json b = search_record_json(c.best);
        b["x"] = json_float(c.x);
        b["aspect"] = json_float(c.aspect);
        j["best"] = b;
    } else {
        j["best"] = nullptr;
    }
    ordered_json cells = ordered_json::array();
    for (const AcrossCell& c : r.cells) {
        ordered_json e;
        e["x"] = json_float(c.x);
        e["aspect"] = json_float(c.aspect);
        e["set_up"] = c.set_up;
        e["trial_count"] = c.trial_count;
        e["best"] = c.best.trial_number > 0 ? search_record_json(c.best) : ordered_json(nullptr);
        if (c.best.trial_number > 0) {
            e["fos_min"] = json_float(c.fos_min);
            e["fos_max"] = json_float(c.fos_max);
        }
        if (!c.stop_reason.empty())
            e["stop_reason"] = latin1_to_utf8(c.stop_reason);
        cells.push_back(e);
    }
    j["cells"] = cells;
    out << j.dump(2) << "\n";
}

void print_text(const AcrossPlan& plan, const AcrossResult& r, std::ostream& out)
{
    out << "Search across the slope, " << (plan.grid ? "grid" : "auto") << " search, "
        << method_name(plan.method) << (plan.valid_only ? " (valid results only)" : "") << ": "
        << r.cells.size() << " searches, " << r.trial_count << " trials recorded"
        << (r.stopped ? " (stopped)" : "") << "\n";
    if (r.best >= 0) {
        const AcrossCell& c = r.cells[std::size_t(r.best)];
        out << "Best surface: X " << general_text(c.x) << ", aspect " << general_text(c.aspect)
            << ": Ellipsoid #" << str(long(c.best.trial_number)) << " of its search"
            << (c.best.valid != 0 ? "" : " (NOT VALID)") << "\n"
            << "  Factor of Safety: " << format(c.best.fos, "###0.000") << "\n"
            << "  Centre X: " << format(c.x, "###0.00") << "  Y: " << format(c.best.y, "###0.00")
            << "  Z: " << format(c.best.z, "###0.00") << "\n"
            << "  Radius: " << format(c.best.radius, "###0.00") << "  Aspect: " << format(c.aspect, "#0.00")
            << "\n"
            << "  Slide Volume: " << format(c.best.volume, "###0.00") << "\n";
    } else {
        out << "No search found a surface.\n";
    }
    out << "Best of each search:\n"
        << "        X   Aspect         F  Trial#         Y         Z    Radius    Volume  Trials\n";
    for (const AcrossCell& c : r.cells) {
        out << std::setw(9) << format(c.x, "0.00") << std::setw(9) << format(c.aspect, "0.00");
        if (c.best.trial_number > 0)
            out << std::setw(10) << format(c.best.fos, "0.000") << std::setw(8) << c.best.trial_number
                << std::setw(10) << format(c.best.y, "0.00") << std::setw(10) << format(c.best.z, "0.00")
                << std::setw(10) << format(c.best.radius, "0.00") << std::setw(10)
                << format(c.best.volume, "0") << std::setw(8) << c.trial_count
                << (c.best.valid != 0 ? "" : "  not valid");
        else
            out << (c.set_up ? "   no surface" : "   the set-up builds no surface");
        if (!c.stop_reason.empty())
            out << "  (" << c.stop_reason << ")";
        out << "\n";
    }
}

int report_across(const SearchOptions& o, const AcrossPlan& plan, const AcrossResult& r, std::ostream& out)
{
    if (o.trial.json)
        print_json(plan, r, out);
    else
        print_text(plan, r, out);
    if (!o.plot.empty()) {
        DisplayList picture;
        picture.device_width = float(o.width);
        picture.device_height = float(o.height);
        RecordingSurface s(picture);
        draw_across_plot(s, r);
        if (!write_picture_file(picture, o.plot, o.width, o.height))
            return exit_bad_input;
    }
    if (r.stopped) {
        std::cerr << "tobel: warning: the searches were stopped: the best record is the best so far\n";
        return exit_stopped;
    }
    if (r.best < 0)
        return exit_not_valid;
    const AcrossCell& best = r.cells[std::size_t(r.best)];
    if (best.best.valid == 0) {
        std::cerr << "tobel: warning: the best record (X " << general_text(best.x) << ", aspect "
                  << general_text(best.aspect) << ", F = " << general_text(best.best.fos) << ") is not valid"
                  << (plan.valid_only ? "" : "; --valid-only keeps such trials from winning") << "\n";
        return exit_not_valid;
    }
    return exit_ok;
}

constexpr const char* across_part_kind = "tobel search --across part";

// Every field of a record, each float read back to the same float.
ordered_json exact_record(const SearchRecord& r)
{
    return {{"fos", put_float(r.fos)},
            {"trial_number", r.trial_number},
            {"y", put_float(r.y)},
            {"z", put_float(r.z)},
            {"radius", put_float(r.radius)},
            {"volume", put_float(r.volume)},
            {"active", put_float(r.active)},
            {"third", put_float(r.third)},
            {"unbalance", put_float(r.unbalance)},
            {"weight", put_float(r.weight)},
            {"best_point", r.best_point},
            {"valid", r.valid}};
}

float f_of(const nlohmann::json& j, const char* key)
{
    return get_float(j.at(key));
}

SearchRecord record_of(const nlohmann::json& j)
{
    SearchRecord r;
    r.fos = f_of(j, "fos");
    r.trial_number = j.at("trial_number").get<std::int16_t>();
    r.y = f_of(j, "y");
    r.z = f_of(j, "z");
    r.radius = f_of(j, "radius");
    r.volume = f_of(j, "volume");
    r.active = f_of(j, "active");
    r.third = f_of(j, "third");
    r.unbalance = f_of(j, "unbalance");
    r.weight = f_of(j, "weight");
    r.best_point = j.at("best_point").get<std::int16_t>();
    r.valid = j.at("valid").get<std::int16_t>();
    return r;
}

// --shard with --across: the pairs k with k % N == K - 1, written to --out.
int run_across_shard(const SearchOptions& o, const AcrossPlan& plan, const Project& base, ParallelRunner& run,
                     const std::string& across, const std::string& aspects)
{
    const std::vector<std::pair<float, float>> pairs = across_pairs(plan);
    std::vector<std::size_t> mine;
    for (std::size_t k = 0; k < pairs.size(); ++k)
        if (long(k) % o.shards == o.shard - 1)
            mine.push_back(k);
    std::vector<AcrossCell> cells(mine.size());
    run.run(int(mine.size()), [&](int i) {
        const auto& pr = pairs[mine[std::size_t(i)]];
        cells[std::size_t(i)] = run_across_cell(base, plan, pr.first, pr.second);
    });
    ordered_json j;
    j["kind"] = across_part_kind;
    try {
        j["fingerprint"] = search_fingerprint({o.trial.file, o.trial.method, o.composite, o.valid_only});
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return exit_bad_input;
    }
    j["file"] = o.trial.file;
    j["method"] = o.trial.method;
    j["grid"] = plan.grid;
    j["composite"] = plan.composite;
    j["valid_only"] = plan.valid_only;
    j["across"] = across;
    j["aspects"] = aspects;
    j["shard"] = o.shard;
    j["shards"] = o.shards;
    j["pairs"] = pairs.size();
    ordered_json list = ordered_json::array();
    for (std::size_t i = 0; i < mine.size(); ++i) {
        const AcrossCell& c = cells[i];
        if (!c.stop_reason.empty()) {
            std::cerr << "tobel search: shard " << o.shard_text << " stopped before its end; " << o.out
                      << " not written\n";
            return exit_stopped;
        }
        list.push_back({{"index", mine[i]},
                        {"set_up", c.set_up},
                        {"trial_count", c.trial_count},
                        {"fos_min", put_float(c.fos_min)},
                        {"fos_max", put_float(c.fos_max)},
                        {"best", exact_record(c.best)},
                        {"best_valid", exact_record(c.best_valid)}});
    }
    j["cells"] = list;
    std::ofstream file(o.out, std::ios::binary | std::ios::trunc);
    if (!(file << j.dump(1) << "\n")) {
        std::cerr << "tobel search: cannot write " << o.out << "\n";
        return exit_bad_input;
    }
    std::cerr << "tobel search: shard " << o.shard << "/" << o.shards << ": " << mine.size()
              << " searches written to " << o.out << "\n";
    return exit_ok;
}

} // namespace

bool is_across_part(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    const nlohmann::json j = nlohmann::json::parse(in, nullptr, false);
    return j.is_object() && j.value("kind", std::string()) == across_part_kind;
}

int merge_across_parts(const std::vector<std::string>& paths, const MergeOptions& m)
{
    SearchOptions o;
    AcrossPlan plan;
    AcrossResult r;
    std::vector<bool> have;
    try {
        nlohmann::json first;
        for (const std::string& path : paths) {
            std::ifstream in(path, std::ios::binary);
            nlohmann::json j = nlohmann::json::parse(in, nullptr, false);
            if (!j.is_object() || j.value("kind", std::string()) != across_part_kind)
                throw std::runtime_error(path + " is not a part of a search across the slope");
            if (first.is_null()) {
                first = j;
                o.trial.file = j.at("file").get<std::string>();
                o.trial.method = j.at("method").get<int>();
                o.grid = j.at("grid").get<bool>();
                o.composite = j.at("composite").get<bool>();
                o.valid_only = j.at("valid_only").get<bool>();
                parse_across(j.at("across").get<std::string>(), j.at("aspects").get<std::string>(), plan);
                const std::size_t n = j.at("pairs").get<std::size_t>();
                if (n != across_pairs(plan).size())
                    throw std::runtime_error(path + " counts " + std::to_string(n) + " searches, its range " +
                                             std::to_string(across_pairs(plan).size()));
                r.cells.resize(n);
                have.assign(n, false);
            }
            for (const char* key :
                 {"fingerprint", "across", "aspects", "shards", "method", "grid", "composite", "valid_only"})
                if (j.at(key) != first.at(key))
                    throw std::runtime_error(path + " belongs to another search than " + paths.front() +
                                             " (" + key + " differs)");
            for (const auto& c : j.at("cells")) {
                const std::size_t k = c.at("index").get<std::size_t>();
                if (k >= r.cells.size() || have[k])
                    throw std::runtime_error(path + " repeats or misplaces search " + std::to_string(k));
                have[k] = true;
                AcrossCell& cell = r.cells[k];
                cell.set_up = c.at("set_up").get<bool>();
                cell.trial_count = c.at("trial_count").get<std::int16_t>();
                cell.fos_min = f_of(c, "fos_min");
                cell.fos_max = f_of(c, "fos_max");
                cell.best = record_of(c.at("best"));
                cell.best_valid = record_of(c.at("best_valid"));
            }
        }
        if (search_fingerprint({o.trial.file, o.trial.method, o.composite, o.valid_only}) !=
            first.at("fingerprint").get<std::string>())
            throw std::runtime_error("the data file " + o.trial.file + " has changed since " + paths.front() +
                                     " was written");
        for (std::size_t k = 0; k < have.size(); ++k)
            if (!have[k])
                throw std::runtime_error(
                    "the parts are incomplete: search " + std::to_string(k) + " (shard " +
                    std::to_string(long(k) % first.at("shards").get<long>() + 1) + ") is missing");
    } catch (const std::exception& e) {
        std::cerr << "tobel merge: " << e.what() << "\n";
        return exit_bad_input;
    }
    const std::vector<std::pair<float, float>> pairs = across_pairs(plan);
    for (std::size_t k = 0; k < pairs.size(); ++k) {
        r.cells[k].x = pairs[k].first;
        r.cells[k].aspect = pairs[k].second;
    }
    total_across(r);
    plan.grid = o.grid;
    plan.composite = o.composite;
    plan.valid_only = o.valid_only;
    plan.method = o.trial.method;
    if (!m.json_out.empty()) {
        std::ofstream json(m.json_out, std::ios::binary | std::ios::trunc);
        print_json(plan, r, json);
        if (!json) {
            std::cerr << "tobel merge: cannot write " << m.json_out << "\n";
            return exit_bad_input;
        }
    }
    return report_across(o, plan, r, std::cout);
}

void parse_across(const std::string& across, const std::string& aspects, AcrossPlan& plan)
{
    const std::vector<float> a = parse_list(across, "--across");
    if (a.size() != 3)
        throw std::runtime_error("--across wants three numbers X0,X1,DX, not \"" + across + "\"");
    plan.x0 = a[0];
    plan.x1 = a[1];
    plan.dx = a[2];
    if (plan.x1 < plan.x0)
        throw std::runtime_error("--across: X1 (" + general_text(plan.x1) + ") is below X0 (" +
                                 general_text(plan.x0) + ")");
    if (plan.x1 > plan.x0 && !(plan.dx > 0))
        throw std::runtime_error("--across: the step DX must be above 0");
    plan.aspects = aspects.empty() ? std::vector<float>{} : parse_list(aspects, "--aspects");
    for (const float v : plan.aspects)
        if (!(v > 0))
            throw std::runtime_error("--aspects: an aspect ratio must be above 0, not " + general_text(v));
    if (across_pairs(plan).size() > 100000)
        throw std::runtime_error("--across and --aspects ask for more than 100000 searches");
}

int run_across_search(const SearchOptions& o, const std::string& across, const std::string& aspects,
                      ParallelRunner& run)
{
    AcrossPlan plan;
    try {
        parse_across(across, aspects, plan);
    } catch (const std::exception& e) {
        std::cerr << "tobel search: " << e.what() << "\n";
        return exit_bad_input;
    }
    Project base;
    start_project(base);
    CliPort port(std::cerr);
    port.policy = o.trial.answer;
    port.show_windows = false;
    if (!open_data_file(base, port, o.trial.file))
        return exit_bad_input;
    warn_about_tokens(base, o.trial.file);
    if (base.num_rows <= 1) {
        std::cerr << "tobel search: --across needs a 3-D project: " << o.trial.file << " has one mesh row\n";
        return exit_bad_input;
    }
    if (o.composite && base.num_wedges == 0) {
        std::cerr << "tobel: " << o.trial.file << " holds no wedge planes\n";
        return exit_bad_input;
    }
    // Without a list the stored aspect is the only one.
    if (plan.aspects.empty())
        plan.aspects.push_back(base.aspect_in);
    base.solution_method = int16(o.trial.method);
    plan.grid = o.grid;
    plan.composite = o.composite;
    plan.valid_only = o.valid_only;
    plan.method = o.trial.method;
    plan.answer = o.trial.answer;
    install_interrupt_handler();
    plan.stop_request = [] { return interrupt_requested(); };
    std::cerr << "tobel: " << across_pairs(plan).size() << " searches across the slope\n";
    if (o.shard > 0)
        return run_across_shard(o, plan, base, run, across, aspects);
    const AcrossResult r = across_search(base, plan, run);
    return report_across(o, plan, r, std::cout);
}

} // namespace tobel::cli
