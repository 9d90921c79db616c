#include "project_json.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "cli.h"
#include "project/data_file.h"
#include "project/defaults.h"
#include "project/input_reader.h"
#include "project/safe_save.h"

namespace tobel::cli {

namespace {

using json = nlohmann::ordered_json;

constexpr const char* format_name = "TOBEL-3 project";
constexpr int format_version = 1;

// The reader's limits: one more surface than these tables hold is refused.
constexpr long max_stack = section_surface_capacity; // sliding_index at most
constexpr long max_mesh = 3000;

// Text: the data file is single-byte Latin-1, JSON text is UTF-8
// (latin1_to_utf8 one way, json_text_to_latin1 the other).

[[noreturn]] void bad(const std::string& path, const std::string& what)
{
    throw std::runtime_error((path.empty() ? std::string("document") : path) + ": " + what);
}

std::string member(const std::string& path, const std::string& key)
{
    return path.empty() ? key : path + "." + key;
}

std::string element(const std::string& path, std::size_t i)
{
    return path + "[" + std::to_string(i) + "]";
}

const char* kind_of(const json& v)
{
    switch (v.type()) {
    case json::value_t::null: return "null";
    case json::value_t::object: return "an object";
    case json::value_t::array: return "an array";
    case json::value_t::string: return "a text";
    case json::value_t::boolean: return "true or false";
    case json::value_t::binary: return "binary data";
    case json::value_t::discarded: return "nothing";
    default: return "a number";
    }
}

[[noreturn]] void wrong_type(const std::string& path, const char* expected, const json& v)
{
    bad(path, std::string("expected ") + expected + ", found " + kind_of(v));
}

// ---- Values

// A single as the reader stores it: any number that rounds to a finite single.
float single_value(const json& v, const std::string& path)
{
    if (!v.is_number())
        wrong_type(path, "a number", v);
    const double d = v.get<double>();
    // Halfway between the largest single and the next power of two, rounding
    // goes to infinity: the reader calls that an overflow.
    const double limit = std::ldexp(1.0, 128) - std::ldexp(1.0, 103);
    if (!(std::fabs(d) < limit))
        bad(path,
            "expected a number within the single range (magnitude up to 3.402823E+38), found " + v.dump());
    if (std::fabs(d) > double(FLT_MAX))
        return std::copysign(FLT_MAX, float(d > 0 ? 1 : -1));
    return float(d);
}

long integer_value(const json& v, const std::string& path, long low, long high)
{
    const std::string range = "an integer from " + std::to_string(low) + " to " + std::to_string(high);
    double d = 0;
    if (v.is_number_unsigned())
        d = v.get<std::uint64_t>() > std::uint64_t(high) ? double(high) + 1 : double(v.get<std::uint64_t>());
    else if (v.is_number_integer())
        d = double(std::clamp<std::int64_t>(v.get<std::int64_t>(), low - 1, high + 1));
    else if (v.is_number_float())
        d = v.get<double>();
    else
        wrong_type(path, range.c_str(), v);
    if (!(std::floor(d) == d))
        bad(path, "expected " + range + ", found " + v.dump());
    if (d < double(low) || d > double(high))
        bad(path, "expected " + range + ", found " + v.dump());
    return long(d);
}

int16 int16_value(const json& v, const std::string& path)
{
    return int16(integer_value(v, path, -32768, 32767));
}

enum class TextKind { line, file_name };

// A title or a name is a whole line of the file; a grid file name is an item
// that ends at a comma, with blanks around it dropped by the reader.
std::string text_value(const json& v, const std::string& path, TextKind kind)
{
    if (!v.is_string())
        wrong_type(path, "a text", v);
    const std::string& s = v.get_ref<const std::string&>();
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(s[i]);
        unsigned code = c;
        if (c >= 0x80) {
            // Two-byte sequences reach U+07FF; the file holds up to U+00FF.
            const bool pair = (c & 0xE0) == 0xC0 && i + 1 < s.size() &&
                              (static_cast<unsigned char>(s[i + 1]) & 0xC0) == 0x80;
            code = pair ? ((c & 0x1Fu) << 6) | (static_cast<unsigned char>(s[i + 1]) & 0x3Fu) : 0x100;
            if (code > 0xFF || code < 0x80)
                bad(path, "expected characters up to U+00FF (the file is single-byte text)");
            ++i;
        }
        if (code == '\r' || code == '\n')
            bad(path, "expected a text of one line");
        if (kind == TextKind::file_name && code == ',')
            bad(path, "expected a file name without a comma (the comma ends the item in the file)");
        out += char(code);
    }
    if (kind == TextKind::file_name && !out.empty() &&
        (out.front() == ' ' || out.front() == '\t' || out.back() == ' ' || out.back() == '\t'))
        bad(path, "expected a file name without leading or trailing blanks");
    return out;
}

// ---- Objects: the fields of one object at `path`, every one required, and
// none but those taken.
class Fields {
  public:
    Fields(const json& v, std::string path) : v_(v), path_(std::move(path))
    {
        if (!v_.is_object())
            wrong_type(path_, "an object", v_);
    }

    const json& take(const char* key, const char* expected)
    {
        taken_.emplace_back(key);
        const auto it = v_.find(key);
        if (it == v_.end())
            bad(at(key), std::string("missing; expected ") + expected);
        return *it;
    }
    bool has(const char* key) const { return v_.contains(key); }
    std::string at(const char* key) const { return member(path_, key); }

    float single(const char* key) { return single_value(take(key, "a number"), at(key)); }
    int16 int16_item(const char* key) { return int16_value(take(key, "an integer"), at(key)); }
    long integer(const char* key, long low, long high)
    {
        return integer_value(take(key, "an integer"), at(key), low, high);
    }
    std::string text(const char* key, TextKind kind = TextKind::line)
    {
        return text_value(take(key, "a text"), at(key), kind);
    }
    bool boolean(const char* key)
    {
        const json& v = take(key, "true or false");
        if (!v.is_boolean())
            wrong_type(at(key), "true or false", v);
        return v.get<bool>();
    }
    Fields object(const char* key) { return Fields(take(key, "an object"), at(key)); }
    const json& array(const char* key)
    {
        const json& v = take(key, "an array");
        if (!v.is_array())
            wrong_type(at(key), "an array", v);
        return v;
    }

    // A field that is none of those read is most likely misspelt.
    void finish() const
    {
        for (auto it = v_.begin(); it != v_.end(); ++it)
            if (std::find(taken_.begin(), taken_.end(), it.key()) == taken_.end())
                bad(member(path_, it.key()), "unknown field");
    }

  private:
    const json& v_;
    std::string path_;
    std::vector<std::string> taken_;
};

void check_entries(const json& a, const std::string& path, std::size_t high)
{
    if (a.size() > high)
        bad(path, "expected at most " + std::to_string(high) + " entries, found " + std::to_string(a.size()));
}

void check_entries_exactly(const json& a, const std::string& path, std::size_t n, const char* why)
{
    if (a.size() != n)
        bad(path,
            "expected " + std::to_string(n) + " entries (" + why + "), found " + std::to_string(a.size()));
}

// ---- Numbers into the document

json number(float x)
{
    const double d = json_float(x);
    // Whole values read best without a fraction; 2^53 keeps them exact.
    if (std::floor(d) == d && std::fabs(d) < 9007199254740992.0)
        return json(static_cast<std::int64_t>(d));
    return json(d);
}

// The word on the line where the reader took the last item: True and False as
// they stand; any other item by the value read, as Save would write it.
bool last_word_is_true(const std::string& path, int line_no, float eq_coef)
{
    std::ifstream f(path, std::ios::binary);
    const std::string data((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    std::size_t i = 0;
    for (int line = 1; line < line_no && i < data.size();) {
        if (data[i] == '\r') {
            ++i;
            if (i < data.size() && data[i] == '\n')
                ++i;
            ++line;
        } else if (data[i] == '\n') {
            ++i;
            ++line;
        } else {
            ++i;
        }
    }
    while (i < data.size() && (data[i] == ' ' || data[i] == '\t'))
        ++i;
    std::size_t end = i;
    while (end < data.size() && std::string_view(" \t,\r\n").find(data[end]) == std::string_view::npos)
        ++end;
    const std::string word = data.substr(i, end - i);
    if (word == "True")
        return true;
    if (word == "False")
        return false;
    return eq_coef == 0;
}

// The writer keeps only whether eq_coef is 0: a stand-in of 1 has it write
// False, and the project gets its own value back.
std::string data_file_text_with_word(Project& p, bool eq_coef_is_zero)
{
    const float eq = p.eq_coef;
    p.eq_coef = eq_coef_is_zero ? 0.0f : 1.0f;
    std::string text = data_file_text(p);
    p.eq_coef = eq;
    return text;
}

// A stored single from a double the way the runtime stores one.
float stored_single(double d)
{
    if (std::fabs(d) > double(FLT_MAX))
        return std::copysign(std::fabs(d) < std::ldexp(1.0, 128) - std::ldexp(1.0, 103) ? FLT_MAX : INFINITY,
                             float(d > 0 ? 1 : -1));
    return float(d);
}

void put_json(std::string& out, const json& v, std::size_t indent)
{
    const auto plain = [](const json& e) { return !e.is_structured(); };
    if (v.is_object() && !v.empty()) {
        out += "{\n";
        bool first = true;
        for (auto it = v.begin(); it != v.end(); ++it) {
            out += first ? "" : ",\n";
            first = false;
            out += std::string(indent + 2, ' ') + json(it.key()).dump() + ": ";
            put_json(out, it.value(), indent + 2);
        }
        out += "\n" + std::string(indent, ' ') + "}";
    } else if (v.is_array() && !std::all_of(v.begin(), v.end(), plain)) {
        out += "[\n";
        for (std::size_t i = 0; i < v.size(); ++i) {
            out += std::string(indent + 2, ' ');
            put_json(out, v[i], indent + 2);
            out += i + 1 < v.size() ? ",\n" : "\n";
        }
        out += std::string(indent, ' ') + "]";
    } else if (v.is_array()) {
        out += "[";
        for (std::size_t i = 0; i < v.size(); ++i)
            out += (i ? ", " : "") + v[i].dump();
        out += "]";
    } else {
        out += v.dump();
    }
}

} // namespace

double json_float(float x)
{
    if (!std::isfinite(x))
        return double(x);
    char buf[32];
    for (int digits = 6; digits <= 9; ++digits) {
        std::snprintf(buf, sizeof buf, "%.*g", digits, double(x));
        if (std::strtof(buf, nullptr) == x)
            break; // nine digits always read back
    }
    return std::strtod(buf, nullptr);
}

json project_to_json(const Project& p, bool eq_coef_is_zero)
{
    json doc;
    doc["format"] = format_name;
    doc["version"] = format_version;

    // 1 to 4: titles, water and the stack counts
    json& titles = doc["titles"];
    titles["project_title"] = latin1_to_utf8(p.project_title);
    titles["dataset_title"] = latin1_to_utf8(p.dataset_title);
    titles["input_by"] = latin1_to_utf8(p.input_by);
    doc["unit_weight_water"] = number(p.unit_weight_water);
    doc["num_layers"] = p.num_layers;
    doc["num_piezos"] = p.num_piezos;
    doc["num_discs"] = p.num_discs;

    // 5 and 6: mesh, Y before X, columns before rows, as in the file
    json& mesh = doc["mesh"];
    mesh["y_min"] = number(p.y_min);
    mesh["y_max"] = number(p.y_max);
    mesh["x_min"] = number(p.x_min);
    mesh["x_max"] = number(p.x_max);
    mesh["num_cols"] = p.num_cols;
    mesh["num_rows"] = p.num_rows;

    // 7
    json& interp = doc["interpolation"];
    interp["interp_method"] = p.interp_method;
    interp["axis_y"] = number(p.axis_y);
    interp["axis_z"] = number(p.axis_z);

    // 8: layers from the bottom up, then the discontinuities
    const int mat_entries = std::min(p.num_layers + p.num_discs, material_capacity);
    json& materials = doc["materials"] = json::array();
    for (int m = 1; m <= mat_entries; ++m) {
        json e;
        e["mat_name"] = latin1_to_utf8(p.mat_name[std::size_t(m)]);
        e["mat_unit_weight"] = number(p.mat_unit_weight[std::size_t(m)]);
        e["mat_type"] = p.mat_type[std::size_t(m)];
        e["mat_cohesion"] = number(p.mat_cohesion[std::size_t(m)]);
        e["mat_cohesion_v"] = number(p.mat_cohesion_v[std::size_t(m)]);
        e["mat_phi"] = number(p.mat_phi[std::size_t(m)]);
        e["mat_phi_v"] = number(p.mat_phi_v[std::size_t(m)]);
        e["mat_coef_a"] = number(p.mat_coef_a[std::size_t(m)]);
        e["mat_coef_b"] = number(p.mat_coef_b[std::size_t(m)]);
        e["mat_uniaxial"] = number(p.mat_uniaxial[std::size_t(m)]);
        e["mat_coef_d"] = number(p.mat_coef_d[std::size_t(m)]);
        e["mat_piezo"] = number(p.mat_piezo[std::size_t(m)]);
        e["mat_bbar"] = number(p.mat_bbar[std::size_t(m)]);
        materials.push_back(std::move(e));
    }

    // 9: every surface of the stack, the sliding surface last
    const int surfaces = std::min(p.num_layers + p.num_piezos + 1, int(max_stack));
    json& surf = doc["surfaces"] = json::array();
    for (int k = 1; k <= surfaces; ++k) {
        json e;
        e["surf_method"] = p.surf_method[std::size_t(k)];
        e["surf_depth"] = number(p.surf_depth[std::size_t(k)]);
        e["surf_grd_file"] = latin1_to_utf8(p.surf_grd_file[std::size_t(k)]);
        surf.push_back(std::move(e));
    }

    // 10: per section its X and one line of points per surface
    json& sections = doc["sections"] = json::array();
    for (int s = 1; s <= std::min(int(p.num_sections), section_capacity); ++s) {
        json e;
        e["section_x"] = number(p.sections.x[std::size_t(s)]);
        json& lines = e["points"] = json::array();
        for (int k = 1; k <= surfaces; ++k) {
            json line = json::array();
            for (int n = 1; n <= std::min(int(p.sections.n(s, k)), section_point_capacity); ++n)
                line.push_back(json::array({number(p.sections.y(s, n, k)), number(p.sections.z(s, n, k))}));
            lines.push_back(std::move(line));
        }
        sections.push_back(std::move(e));
    }

    // 11 to 14
    doc["base_z"] = number(p.base_z);
    json& single = doc["single_ellipsoid"];
    single["search_x"] = number(p.search_x);
    single["single_y"] = number(p.single_y);
    single["single_z"] = number(p.single_z);
    single["tangent_z"] = number(p.tangent_z);
    single["aspect_in"] = number(p.aspect_in);
    single["radius_in"] = number(p.radius_in);
    json& grid = doc["grid_search"];
    grid["grid_y_ul"] = number(p.grid_y_ul);
    grid["grid_z_ul"] = number(p.grid_z_ul);
    grid["grid_y_lr"] = number(p.grid_y_lr);
    grid["grid_z_lr"] = number(p.grid_z_lr);
    grid["grid_tan_spacing"] = number(p.grid_tan_spacing);
    grid["grid_n_y"] = number(p.grid_n_y);
    grid["grid_n_z"] = number(p.grid_n_z);
    grid["common_y"] = number(p.common_y);
    grid["common_z"] = number(p.common_z);
    json& autos = doc["auto_search"];
    autos["auto_y"] = number(p.auto_y);
    autos["auto_z"] = number(p.auto_z);
    autos["auto_spacing"] = number(p.auto_spacing);
    autos["auto_tan_spacing"] = number(p.auto_tan_spacing);

    // 15 and 16
    json& wedges = doc["wedges"] = json::array();
    for (int w = 1; w <= std::min(int(p.num_wedges), wedge_capacity); ++w) {
        json e;
        e["wedge_x"] = number(p.wedge_x[std::size_t(w)]);
        e["wedge_y"] = number(p.wedge_y[std::size_t(w)]);
        e["wedge_z"] = number(p.wedge_z[std::size_t(w)]);
        e["wedge_code"] = number(p.wedge_code[std::size_t(w)]);
        e["wedge_dip"] = number(p.wedge_dip[std::size_t(w)]);
        e["wedge_dipdir"] = number(p.wedge_dipdir[std::size_t(w)]);
        wedges.push_back(std::move(e));
    }
    json& forces = doc["forces"] = json::array();
    for (int f = 1; f <= std::min(int(p.num_forces), force_capacity); ++f) {
        json e;
        e["force_h"] = number(p.force_h[std::size_t(f)]);
        e["force_v"] = number(p.force_v[std::size_t(f)]);
        e["force_x"] = number(p.force_x[std::size_t(f)]);
        e["force_y"] = number(p.force_y[std::size_t(f)]);
        e["force_z"] = number(p.force_z[std::size_t(f)]);
        forces.push_back(std::move(e));
    }

    // 17 and 18
    json& crack = doc["crack"];
    crack["crack_mode"] = p.crack_mode;
    crack["crack_y"] = number(p.crack_y);
    crack["crack_depth"] = number(p.crack_depth);
    crack["crack_water_pct"] = number(p.crack_water_pct);
    doc["eq_coef_is_zero"] = eq_coef_is_zero;
    return doc;
}

json data_file_to_json(const std::string& tob_path)
{
    auto p = std::make_unique<Project>();
    reset_project(*p);
    InputReader in(tob_path);
    read_data_items(*p, in);
    return project_to_json(*p, last_word_is_true(tob_path, in.item_line(), p->eq_coef));
}

bool json_to_project(const json& doc, Project& p)
{
    reset_project(p);
    Fields top(doc, "");
    if (top.has("$schema"))
        top.text("$schema");
    {
        const json& f = top.take("format", "\"TOBEL-3 project\"");
        if (!f.is_string() || f.get<std::string>() != format_name)
            bad("format", std::string("expected \"") + format_name + "\", found " + f.dump());
        const json& v = top.take("version", "1");
        if (!v.is_number() || v.get<double>() != format_version)
            bad("version", "expected 1 (the version this program reads), found " + v.dump());
    }

    // 1 to 4
    Fields titles = top.object("titles");
    p.project_title = titles.text("project_title");
    p.dataset_title = titles.text("dataset_title");
    p.input_by = titles.text("input_by");
    titles.finish();
    p.unit_weight_water = top.single("unit_weight_water");
    const long layers = top.integer("num_layers", 0, max_stack);
    const long piezos = top.integer("num_piezos", 0, max_stack);
    const long discs = top.integer("num_discs", 0, material_capacity);
    // The stack and the material table have fixed room, as the reader knows.
    if (layers + piezos + 1 > max_stack)
        bad("num_piezos", "expected num_layers + num_piezos at most " + std::to_string(max_stack - 1) +
                              ", found " + std::to_string(layers + piezos));
    if (layers + discs > material_capacity)
        bad("num_discs", "expected num_layers + num_discs at most " + std::to_string(material_capacity) +
                             ", found " + std::to_string(layers + discs));
    p.num_layers = int16(layers);
    p.num_piezos = int16(piezos);
    p.num_discs = int16(discs);
    derive_counts(p);

    // 5 and 6; a one-column mesh is refused, as the reader fails on it by
    // division by zero.
    Fields mesh = top.object("mesh");
    p.y_min = mesh.single("y_min");
    p.y_max = mesh.single("y_max");
    p.x_min = mesh.single("x_min");
    p.x_max = mesh.single("x_max");
    p.num_cols = int16(mesh.integer("num_cols", 2, max_mesh));
    p.num_rows = int16(mesh.integer("num_rows", 1, max_mesh));
    mesh.finish();
    redim_grids(p);
    p.row_spacing =
        p.num_rows > 1 ? stored_single((double(p.x_max) - double(p.x_min)) / double(p.num_rows - 1)) : 1.0f;
    p.col_spacing = stored_single((double(p.y_max) - double(p.y_min)) / double(p.num_cols - 1));

    // 7
    Fields interp = top.object("interpolation");
    p.interp_method = interp.int16_item("interp_method");
    p.axis_y = interp.single("axis_y");
    p.axis_z = interp.single("axis_z");
    interp.finish();

    // 8
    const json& materials = top.array("materials");
    check_entries_exactly(materials, "materials", std::size_t(p.num_mat_entries), "num_layers + num_discs");
    for (int m = 1; m <= p.num_mat_entries; ++m) {
        const auto i = std::size_t(m);
        Fields e(materials[i - 1], element("materials", i - 1));
        p.mat_name[i] = e.text("mat_name");
        p.mat_unit_weight[i] = e.single("mat_unit_weight");
        p.mat_type[i] = e.int16_item("mat_type");
        p.mat_cohesion[i] = e.single("mat_cohesion");
        p.mat_cohesion_v[i] = e.single("mat_cohesion_v");
        p.mat_phi[i] = e.single("mat_phi");
        p.mat_phi_v[i] = e.single("mat_phi_v");
        p.mat_coef_a[i] = e.single("mat_coef_a");
        p.mat_coef_b[i] = e.single("mat_coef_b");
        p.mat_uniaxial[i] = e.single("mat_uniaxial");
        p.mat_coef_d[i] = e.single("mat_coef_d");
        p.mat_piezo[i] = e.single("mat_piezo");
        p.mat_bbar[i] = e.single("mat_bbar");
        e.finish();
    }

    // 9
    const json& surfaces = top.array("surfaces");
    check_entries_exactly(surfaces, "surfaces", std::size_t(p.sliding_index),
                          "num_layers + num_piezos + 1, the sliding surface last");
    for (int k = 1; k <= p.sliding_index; ++k) {
        const auto i = std::size_t(k);
        Fields e(surfaces[i - 1], element("surfaces", i - 1));
        p.surf_method[i] = e.int16_item("surf_method");
        p.surf_depth[i] = e.single("surf_depth");
        p.surf_grd_file[i] = e.text("surf_grd_file", TextKind::file_name);
        e.finish();
    }

    // 10
    const json& sections = top.array("sections");
    check_entries(sections, "sections", section_capacity);
    p.num_sections = int16(sections.size());
    for (int s = 1; s <= p.num_sections; ++s) {
        const std::string path = element("sections", std::size_t(s - 1));
        Fields e(sections[std::size_t(s - 1)], path);
        p.sections.x[std::size_t(s)] = e.single("section_x");
        const json& lines = e.array("points");
        check_entries_exactly(lines, e.at("points"), std::size_t(p.sliding_index),
                              "one line per surface, num_layers + num_piezos + 1");
        for (int k = 1; k <= p.sliding_index; ++k) {
            const std::string line_path = element(e.at("points"), std::size_t(k - 1));
            const json& line = lines[std::size_t(k - 1)];
            if (!line.is_array())
                wrong_type(line_path, "an array of points [y, z]", line);
            check_entries(line, line_path, section_point_capacity);
            p.sections.n(s, k) = int16(line.size());
            for (int n = 1; n <= int(line.size()); ++n) {
                const std::string point_path = element(line_path, std::size_t(n - 1));
                const json& point = line[std::size_t(n - 1)];
                if (!point.is_array() || point.size() != 2)
                    wrong_type(point_path, "a point [y, z]", point);
                p.sections.y(s, n, k) = single_value(point[0], element(point_path, 0));
                p.sections.z(s, n, k) = single_value(point[1], element(point_path, 1));
            }
        }
        e.finish();
    }

    // 11 to 14
    p.base_z = top.single("base_z");
    Fields single = top.object("single_ellipsoid");
    p.search_x = single.single("search_x");
    p.single_y = single.single("single_y");
    p.single_z = single.single("single_z");
    p.tangent_z = single.single("tangent_z");
    p.aspect_in = single.single("aspect_in");
    p.radius_in = single.single("radius_in");
    single.finish();
    Fields grid = top.object("grid_search");
    p.grid_y_ul = grid.single("grid_y_ul");
    p.grid_z_ul = grid.single("grid_z_ul");
    p.grid_y_lr = grid.single("grid_y_lr");
    p.grid_z_lr = grid.single("grid_z_lr");
    p.grid_tan_spacing = grid.single("grid_tan_spacing");
    p.grid_n_y = grid.single("grid_n_y");
    p.grid_n_z = grid.single("grid_n_z");
    p.common_y = grid.single("common_y");
    p.common_z = grid.single("common_z");
    grid.finish();
    Fields autos = top.object("auto_search");
    p.auto_y = autos.single("auto_y");
    p.auto_z = autos.single("auto_z");
    p.auto_spacing = autos.single("auto_spacing");
    p.auto_tan_spacing = autos.single("auto_tan_spacing");
    autos.finish();

    // 15 and 16
    const json& wedges = top.array("wedges");
    check_entries(wedges, "wedges", wedge_capacity);
    p.num_wedges = int16(wedges.size());
    for (int w = 1; w <= p.num_wedges; ++w) {
        const auto i = std::size_t(w);
        Fields e(wedges[i - 1], element("wedges", i - 1));
        p.wedge_x[i] = e.single("wedge_x");
        p.wedge_y[i] = e.single("wedge_y");
        p.wedge_z[i] = e.single("wedge_z");
        p.wedge_code[i] = e.single("wedge_code");
        p.wedge_dip[i] = e.single("wedge_dip");
        p.wedge_dipdir[i] = e.single("wedge_dipdir");
        e.finish();
    }
    const json& forces = top.array("forces");
    check_entries(forces, "forces", force_capacity);
    p.num_forces = int16(forces.size());
    for (int f = 1; f <= p.num_forces; ++f) {
        const auto i = std::size_t(f);
        Fields e(forces[i - 1], element("forces", i - 1));
        p.force_h[i] = e.single("force_h");
        p.force_v[i] = e.single("force_v");
        p.force_x[i] = e.single("force_x");
        p.force_y[i] = e.single("force_y");
        p.force_z[i] = e.single("force_z");
        e.finish();
    }

    // 17 and 18: the reader leaves eq_coef 0 whatever the word
    Fields crack = top.object("crack");
    p.crack_mode = crack.int16_item("crack_mode");
    p.crack_y = crack.single("crack_y");
    p.crack_depth = crack.single("crack_depth");
    p.crack_water_pct = crack.single("crack_water_pct");
    crack.finish();
    const bool eq_coef_is_zero = top.boolean("eq_coef_is_zero");
    top.finish();
    return eq_coef_is_zero;
}

std::string json_to_data_file_text(const json& doc)
{
    auto p = std::make_unique<Project>();
    const bool eq_coef_is_zero = json_to_project(doc, *p);
    return data_file_text_with_word(*p, eq_coef_is_zero);
}

void json_to_data_file(const json& doc, const std::string& tob_path)
{
    const std::string text = json_to_data_file_text(doc);
    write_file_safely(tob_path, text);
}

std::string project_json_text(const json& doc)
{
    std::string out;
    put_json(out, doc, 0);
    return out + "\n";
}

} // namespace tobel::cli
