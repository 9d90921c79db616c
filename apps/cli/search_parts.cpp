#include "search_parts.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace tobel::cli {

using nlohmann::json;
using nlohmann::ordered_json;

namespace {

constexpr const char* part_kind = "tobel search part";
constexpr int part_version = 1;

void fnv(std::uint64_t& h, const std::string& bytes)
{
    for (unsigned char c : bytes) {
        h ^= c;
        h *= 1099511628211ull;
    }
}

std::string read_bytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

const char* buttons_name(Buttons b)
{
    switch (b) {
    case Buttons::ok_cancel: return "ok_cancel";
    case Buttons::yes_no: return "yes_no";
    case Buttons::yes_no_cancel: return "yes_no_cancel";
    default: return "ok";
    }
}

Buttons buttons_of(const std::string& s)
{
    if (s == "ok_cancel")
        return Buttons::ok_cancel;
    if (s == "yes_no")
        return Buttons::yes_no;
    if (s == "yes_no_cancel")
        return Buttons::yes_no_cancel;
    return Buttons::ok;
}

} // namespace

// A float goes through double, which holds it exactly and which JSON writes
// so that it reads back to the same double; the values JSON has no number
// for are written as text.
ordered_json put_float(float x)
{
    if (std::isnan(x))
        return "nan";
    if (std::isinf(x))
        return x > 0 ? "inf" : "-inf";
    return double(x);
}

float get_float(const json& j)
{
    if (j.is_string()) {
        const std::string s = j.get<std::string>();
        if (s == "nan")
            return std::nanf("");
        if (s == "inf")
            return INFINITY;
        if (s == "-inf")
            return -INFINITY;
        throw std::runtime_error("bad number " + s);
    }
    return float(j.get<double>());
}

std::string search_fingerprint(const SearchSettings& s)
{
    std::uint64_t h = 14695981039346656037ull;
    fnv(h, read_bytes(s.file));
    fnv(h, "|grid|method " + std::to_string(s.method) + "|composite " + std::to_string(int(s.composite)) +
               "|valid only " + std::to_string(int(s.valid_only)));
    char buf[17];
    std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(h));
    return buf;
}

void parse_shard(const std::string& text, int& shard, int& shards)
{
    const std::size_t slash = text.find('/');
    try {
        if (slash == std::string::npos)
            throw std::invalid_argument(text);
        std::size_t used = 0;
        shard = std::stoi(text.substr(0, slash), &used);
        if (used != slash)
            throw std::invalid_argument(text);
        const std::string rest = text.substr(slash + 1);
        shards = std::stoi(rest, &used);
        if (used != rest.size())
            throw std::invalid_argument(text);
    } catch (const std::logic_error&) {
        throw std::runtime_error("--shard takes K/N, for example 2/3, not " + text);
    }
    if (shards < 1 || shard < 1 || shard > shards)
        throw std::runtime_error("--shard K/N needs 1 <= K <= N, not " + text);
}

ordered_json outcome_json(const CentreOutcome& o)
{
    ordered_json j;
    j["k"] = o.index;
    j["out"] = o.out;
    j["stepped"] = o.stepped;
    j["radius_direction"] = o.radius_direction;
    j["radius_step_count"] = o.radius_step_count;
    j["solved"] = o.solved;
    j["solved_columns"] = o.solved_columns;
    if (o.error_number != 0)
        j["error"] = {{"number", o.error_number}, {"description", o.error_description}};
    ordered_json events = ordered_json::array();
    for (const CentreEvent& e : o.events) {
        ordered_json ej;
        if (e.is_box) {
            ej["box"] = {{"text", e.box.text},
                         {"title", e.box.title},
                         {"buttons", buttons_name(e.box.buttons)},
                         {"icon", int(e.box.icon)}};
        } else {
            const RecordedTrial& t = e.trial;
            ej["trial"] = {{"fos", put_float(t.fos)},       {"y", put_float(t.y)},
                           {"z", put_float(t.z)},           {"radius", put_float(t.radius)},
                           {"volume", put_float(t.volume)}, {"active", put_float(t.active)},
                           {"third", put_float(t.third)},   {"unbalance", put_float(t.unbalance)},
                           {"weight", put_float(t.weight)}, {"valid", t.valid}};
        }
        events.push_back(ej);
    }
    j["events"] = events;
    return j;
}

CentreOutcome outcome_from_json(const json& j)
{
    CentreOutcome o;
    o.index = j.at("k").get<long>();
    o.out = j.at("out").get<bool>();
    o.stepped = j.at("stepped").get<bool>();
    o.radius_direction = j.at("radius_direction").get<std::int16_t>();
    o.radius_step_count = j.at("radius_step_count").get<std::int16_t>();
    // Parts written before the counts were kept have none.
    o.solved = j.value("solved", std::int64_t{0});
    o.solved_columns = j.value("solved_columns", 0.0);
    if (j.contains("error")) {
        o.error_number = j["error"].at("number").get<int>();
        o.error_description = j["error"].at("description").get<std::string>();
    }
    for (const json& ej : j.at("events")) {
        CentreEvent e;
        if (ej.contains("box")) {
            const json& b = ej["box"];
            e.is_box = true;
            e.box.text = b.at("text").get<std::string>();
            e.box.title = b.at("title").get<std::string>();
            e.box.buttons = buttons_of(b.at("buttons").get<std::string>());
            e.box.icon = Icon(b.at("icon").get<int>());
        } else {
            const json& t = ej.at("trial");
            RecordedTrial& r = e.trial;
            r.fos = get_float(t.at("fos"));
            r.y = get_float(t.at("y"));
            r.z = get_float(t.at("z"));
            r.radius = get_float(t.at("radius"));
            r.volume = get_float(t.at("volume"));
            r.active = get_float(t.at("active"));
            r.third = get_float(t.at("third"));
            r.unbalance = get_float(t.at("unbalance"));
            r.weight = get_float(t.at("weight"));
            r.valid = t.at("valid").get<std::int16_t>();
        }
        o.events.push_back(std::move(e));
    }
    return o;
}

CentreOutcome ShardRun::given(long k)
{
    throw std::logic_error("a shard does not replay centre " + std::to_string(k));
}

CentreOutcome MergedParts::given(long k)
{
    const auto it = outcomes.find(k);
    if (it == outcomes.end())
        throw std::runtime_error("no part holds centre " + std::to_string(k));
    return it->second;
}

void write_search_part(const SearchPart& part, const std::string& path)
{
    ordered_json j;
    j["kind"] = part_kind;
    j["version"] = part_version;
    j["fingerprint"] = part.fingerprint;
    j["file"] = part.settings.file;
    j["method"] = part.settings.method;
    j["composite"] = part.settings.composite;
    j["valid_only"] = part.settings.valid_only;
    j["shard"] = part.shard;
    j["shards"] = part.shards;
    j["centres"] = part.centres;
    ordered_json outcomes = ordered_json::array();
    for (const CentreOutcome& o : part.outcomes)
        outcomes.push_back(outcome_json(o));
    j["outcomes"] = outcomes;
    // Written beside and renamed, so that a part on disk is always whole.
    const std::string tmp = path + ".tmp";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        out << j.dump() << "\n";
        if (!out)
            throw std::runtime_error("cannot write " + tmp);
    }
    if (std::rename(tmp.c_str(), path.c_str()) != 0)
        throw std::runtime_error("cannot write " + path);
}

SearchPart read_search_part(const std::string& path)
{
    SearchPart part;
    part.path = path;
    try {
        const json j = json::parse(read_bytes(path));
        if (j.value("kind", std::string()) != part_kind || j.value("version", 0) != part_version)
            throw std::runtime_error("not a part of a shared grid search");
        part.fingerprint = j.at("fingerprint").get<std::string>();
        part.settings.file = j.at("file").get<std::string>();
        part.settings.method = j.at("method").get<int>();
        part.settings.composite = j.at("composite").get<bool>();
        part.settings.valid_only = j.at("valid_only").get<bool>();
        part.shard = j.at("shard").get<int>();
        part.shards = j.at("shards").get<int>();
        part.centres = j.at("centres").get<long>();
        for (const json& o : j.at("outcomes"))
            part.outcomes.push_back(outcome_from_json(o));
    } catch (const std::exception& e) {
        throw std::runtime_error(path + ": " + e.what());
    }
    return part;
}

} // namespace tobel::cli
