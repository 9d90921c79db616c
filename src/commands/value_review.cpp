// The values of a data file as read: what lies outside its sense, section
// lines that do not hold together, and the input checks with their items.
#include <cmath>
#include <cstdio>
#include <map>

#include "commands/input_review.h"
#include "geometry/input_checks.h"
#include "project/menus.h"
#include "project/numtext.h"

namespace tobel {

namespace {

std::string g(float x)
{
    return general_text(x);
}

std::string name(const char* base, int i)
{
    return std::string(base) + "(" + std::to_string(i) + ")";
}

std::string name(const char* base, int i, int j)
{
    return std::string(base) + "(" + std::to_string(i) + ", " + std::to_string(j) + ")";
}

std::string name(const char* base, int i, int j, int k)
{
    return std::string(base) + "(" + std::to_string(i) + ", " + std::to_string(j) + ", " + std::to_string(k) +
           ")";
}

// Findings with the lines of their items, from the record.
class Findings {
  public:
    explicit Findings(const std::vector<ReadItem>& items)
    {
        for (const auto& r : items)
            readings_[r.name].push_back(&r);
    }
    void add(const std::string& item, const std::string& text, bool serious)
    {
        out.push_back({line_of(item), item, text, serious});
    }
    int line_of(const std::string& item) const
    {
        auto it = readings_.find(item);
        return it == readings_.end() ? 0 : it->second.back()->line;
    }
    // Every reading of an item, in the order read.
    std::vector<const ReadItem*> readings(const std::string& item) const
    {
        auto it = readings_.find(item);
        return it == readings_.end() ? std::vector<const ReadItem*>() : it->second;
    }
    std::vector<Finding> out;

  private:
    std::map<std::string, std::vector<const ReadItem*>> readings_;
};

void review_units_and_mesh(const Project& p, Findings& f)
{
    const float w = p.unit_weight_water;
    if (!(w > 0))
        f.add("unit_weight_water", "unit weight of water " + g(w) + " is not above 0", true);
    else if (w != 9.81f && w != 62.4f)
        f.add("unit_weight_water",
              "unit weight of water " + g(w) +
                  " is neither 9.81 (kN/m3) nor 62.4 (pcf), the two unit systems",
              false);
    if (!(p.y_max > p.y_min))
        f.add("y_max", "y_max " + g(p.y_max) + " is not above y_min " + g(p.y_min), true);
    if (p.num_rows > 1 && !(p.x_max > p.x_min))
        f.add("x_max", "x_max " + g(p.x_max) + " is not above x_min " + g(p.x_min), true);
    if (p.interp_method < 1 || p.interp_method > 3)
        f.add("interp_method",
              "interpolation method " + std::to_string(p.interp_method) +
                  " is none of 1 orthogonal, 2 oblique, 3 axisymmetric",
              true);
    for (int k = 1; k <= p.sliding_index; ++k)
        if (p.surf_method[k] < 0 || p.surf_method[k] > 2)
            f.add(name("surf_method", k),
                  "surface method " + std::to_string(p.surf_method[k]) +
                      " is none of 0 cross-sections, 1 grid file, 2 constant depth",
                  true);
}

// What check_input does not already refuse.
void review_material(const Project& p, int m, Findings& f)
{
    const int type = material_type(p, m);
    if (type < 1 || type > 5) {
        f.add(name("mat_type", m),
              "material type " + std::to_string(p.mat_type[m]) +
                  " is none of 1 Coulomb, 2 Anisotropic, 3 Non-linear, 4 Hard Layer, 5 Water",
              true);
        return;
    }
    const float uw = p.mat_unit_weight[m];
    const bool weight_checked = m <= p.num_layers && type <= 3;
    if (type == 5 && uw != p.unit_weight_water)
        f.add(name("mat_unit_weight", m),
              "a Water material weighs unit_weight_water (" + g(p.unit_weight_water) + "); this one " + g(uw),
              false);
    else if (!weight_checked && uw < 0)
        f.add(name("mat_unit_weight", m), "unit weight " + g(uw) + " is below 0", true);
    if (type == 1 || type == 2) {
        if (p.mat_phi[m] > 90)
            f.add(name("mat_phi", m), "friction angle " + g(p.mat_phi[m]) + " degrees is above 90", true);
        if (type == 2 && p.mat_phi_v[m] > 90)
            f.add(name("mat_phi_v", m),
                  "vertical friction angle " + g(p.mat_phi_v[m]) + " degrees is above 90", true);
    }
    if (type == 3) {
        if (p.mat_coef_a[m] < 0)
            f.add(name("mat_coef_a", m), "coefficient A " + g(p.mat_coef_a[m]) + " is below 0", true);
        if (p.mat_coef_b[m] < 0)
            f.add(name("mat_coef_b", m), "coefficient B " + g(p.mat_coef_b[m]) + " is below 0", true);
        if (p.mat_coef_d[m] < 0)
            f.add(name("mat_coef_d", m), "coefficient D " + g(p.mat_coef_d[m]) + " is below 0", true);
    }

    // Pore pressure: a negative value names a piezometric surface, a
    // positive one is Ru.
    const float piezo = p.mat_piezo[m];
    const std::string piezo_item = name("mat_piezo", m);
    if (piezo < 0 && (-piezo > float(p.num_piezos) || piezo != std::floor(piezo)))
        f.add(piezo_item,
              "pore pressure from piezometric surface " + g(-piezo) + ", but the file has " +
                  std::to_string(p.num_piezos) + (p.num_piezos == 1 ? " surface" : " surfaces"),
              true);
    if (piezo > 1)
        f.add(piezo_item, "pore pressure ratio Ru " + g(piezo) + " is above 1", false);
    if (p.mat_bbar[m] < 0 || p.mat_bbar[m] > 1)
        f.add(name("mat_bbar", m), "B bar coefficient " + g(p.mat_bbar[m]) + " is outside 0 to 1", false);
    // The line carries the pair twice; the reader keeps the second.
    for (const char* base : {"mat_piezo", "mat_bbar"}) {
        const auto readings = f.readings(name(base, m));
        if (readings.size() == 2 && readings[0]->value != readings[1]->value)
            f.add(name(base, m),
                  "the two " + name(base, m) + " items differ (" + g(float(readings[0]->value)) + " and " +
                      g(float(readings[1]->value)) + "); the second is used",
                  false);
    }
}

bool increasing(const Project& p, int s, int k)
{
    for (int n = 2; n <= p.sections.n(s, k); ++n)
        if (!(p.sections.y(s, n, k) > p.sections.y(s, n - 1, k)))
            return false;
    return true;
}

// Z of the line of surface k on section s at y, when y lies within the line.
bool line_z_at(const Project& p, int s, int k, float y, double& z)
{
    const int n = p.sections.n(s, k);
    if (n == 0 || y < p.sections.y(s, 1, k) || y > p.sections.y(s, n, k))
        return false;
    for (int i = 1; i < n; ++i) {
        const double y0 = p.sections.y(s, i, k), y1 = p.sections.y(s, i + 1, k);
        if (y >= y0 && y <= y1) {
            const double z0 = p.sections.z(s, i, k), z1 = p.sections.z(s, i + 1, k);
            z = y1 > y0 ? z0 + (z1 - z0) * (double(y) - y0) / (y1 - y0) : z0;
            return true;
        }
    }
    z = p.sections.z(s, 1, k);
    return true;
}

// The first place where the line of `lower` lies above the line of `upper`,
// looked at on the points of both lines.
bool crossing(const Project& p, int s, int lower, int upper, int& at_surface, int& at_point, double& y,
              double& z_low, double& z_up)
{
    for (int pass = 0; pass < 2; ++pass) {
        const int k = pass == 0 ? lower : upper;
        for (int n = 1; n <= p.sections.n(s, k); ++n) {
            const float yn = p.sections.y(s, n, k);
            double other = 0;
            if (!line_z_at(p, s, pass == 0 ? upper : lower, yn, other))
                continue;
            const double zn = p.sections.z(s, n, k);
            const double lo = pass == 0 ? zn : other, up = pass == 0 ? other : zn;
            if (lo > up + 1e-4 * std::max(1.0, std::fabs(up))) {
                at_surface = k;
                at_point = n;
                y = yn;
                z_low = lo;
                z_up = up;
                return true;
            }
        }
    }
    return false;
}

void review_line(const Project& p, int s, int k, Findings& f)
{
    const int n_pts = p.sections.n(s, k);
    const std::string caption = surface_item_caption(p, k);
    const std::string where = " (section " + std::to_string(s) + ", " + caption + ")";
    for (int n = 2; n <= n_pts; ++n) {
        const float y = p.sections.y(s, n, k), before = p.sections.y(s, n - 1, k);
        if (y < before)
            f.add(name("section_y", s, n, k),
                  "Y " + g(y) + " goes back behind the previous point's " + g(before) + where +
                      ": the points must run in increasing Y",
                  true);
        else if (y == before)
            f.add(name("section_y", s, n, k),
                  "Y " + g(y) + " repeats the previous point's" + where +
                      (p.sections.z(s, n, k) == p.sections.z(s, n - 1, k) ? ": the point is doubled"
                                                                          : ": a vertical step"),
                  false);
    }
    const float tol = 1e-4f * std::max(1.0f, std::fabs(p.y_max) + std::fabs(p.y_min));
    for (int n = 1; n <= n_pts; ++n)
        if (p.sections.y(s, n, k) < p.y_min - tol) {
            f.add(name("section_y", s, n, k),
                  "Y " + g(p.sections.y(s, n, k)) + " lies before y_min " + g(p.y_min) + where, false);
            break;
        }
    for (int n = 1; n <= n_pts; ++n)
        if (p.sections.y(s, n, k) > p.y_max + tol) {
            f.add(name("section_y", s, n, k),
                  "Y " + g(p.sections.y(s, n, k)) + " lies beyond y_max " + g(p.y_max) + where, false);
            break;
        }
}

bool built_from_sections(const Project& p, int k)
{
    return p.surf_method[k] == 0;
}

void review_crossings(const Project& p, int s, Findings& f)
{
    for (int lower = 1; lower < p.num_layers; ++lower) {
        if (!built_from_sections(p, lower) || p.sections.n(s, lower) == 0 || !increasing(p, s, lower))
            continue;
        for (int upper = lower + 1; upper <= p.num_layers; ++upper) {
            if (!built_from_sections(p, upper) || p.sections.n(s, upper) == 0 || !increasing(p, s, upper))
                continue;
            int k = 0, n = 0;
            double y = 0, z_low = 0, z_up = 0;
            if (!crossing(p, s, lower, upper, k, n, y, z_low, z_up))
                continue;
            const std::string low = surface_item_caption(p, lower), up = surface_item_caption(p, upper);
            f.add(name("section_z", s, n, k),
                  low + " rises above " + up + " in section " + std::to_string(s) + ": at Y " + g(float(y)) +
                      " it is at Z " + g(float(z_low)) + ", " + up + " at " + g(float(z_up)) +
                      "; the program lowers " + low + " to it",
                  false);
            break;
        }
    }
}

void review_sections(const Project& p, Findings& f)
{
    const bool two_d = p.num_rows == 1;
    const bool by_sections = p.interp_method == 1 || p.interp_method == 2;
    for (int s = 2; s <= p.num_sections; ++s)
        if (!(p.sections.x[std::size_t(s)] > p.sections.x[std::size_t(s - 1)]))
            f.add(name("section_x", s),
                  "section " + std::to_string(s) + " at X " + g(p.sections.x[std::size_t(s)]) +
                      " is not beyond section " + std::to_string(s - 1) + " at X " +
                      g(p.sections.x[std::size_t(s - 1)]) + ": sections must run in increasing X",
                  true);
    if (two_d && by_sections && p.num_sections >= 1 && p.sections.x[1] != p.x_min)
        f.add("section_x(1)",
              "in a two-dimensional problem the row lies at x_min " + g(p.x_min) +
                  ", but section 1 is at X " + g(p.sections.x[1]) + ": the row is not section 1's line",
              true);
    if (!two_d && by_sections) {
        if (p.num_sections < 2)
            f.add("num_sections", "a three-dimensional mesh needs at least two sections", true);
        for (int s = 1; s <= p.num_sections; ++s) {
            const float x = p.sections.x[std::size_t(s)];
            if (x < p.x_min || x > p.x_max)
                f.add(name("section_x", s),
                      "section " + std::to_string(s) + " at X " + g(x) + " lies outside the mesh (x_min " +
                          g(p.x_min) + " to x_max " + g(p.x_max) + ")",
                      false);
        }
    }
    const int last = two_d ? std::min<int>(p.num_sections, 1) : p.num_sections;
    for (int s = 1; s <= last; ++s) {
        for (int k = 1; k <= p.sliding_index; ++k)
            if (built_from_sections(p, k))
                review_line(p, s, k, f);
        review_crossings(p, s, f);
    }
}

void review_surface_data(const Project& p, Findings& f)
{
    if (p.num_rows == 1 && p.search_x != p.x_min)
        f.add("search_x",
              "in a two-dimensional problem the centre X belongs at x_min " + g(p.x_min) + "; at " +
                  g(p.search_x) + " the row cuts a smaller circle than the radius says",
              true);
    for (int w = 1; w <= p.num_wedges; ++w) {
        const float code = p.wedge_code[w];
        if (code < 0 || code != std::floor(code) || code > float(p.num_discs))
            f.add(name("wedge_code", w),
                  "discontinuity code " + g(code) + " names no discontinuity (the file has " +
                      std::to_string(p.num_discs) + ")",
                  true);
    }
    if (p.crack_mode < 0 || p.crack_mode > 2)
        f.add("crack_mode",
              "tension crack mode " + std::to_string(p.crack_mode) + " is none of 0 none, 1 by Y, 2 by depth",
              true);
    else if (p.crack_mode != 0 && (p.crack_water_pct < 0 || p.crack_water_pct > 100))
        f.add("crack_water_pct",
              "tension crack filled " + g(p.crack_water_pct) + " % with water, outside 0 to 100", true);
}

// check_input's findings with their items; a material's with the property.
void review_input_checks(Project& p, Findings& f)
{
    check_input(p);
    std::map<int, int> material_seen;
    for (int i = 1; i <= p.check_count; ++i) {
        const std::string& text = p.check_text[std::size_t(i)];
        int a = 0, b = 0;
        if (std::sscanf(text.c_str(), "Material #%d", &a) == 1) {
            const auto problems = material_problems(p, a);
            const int nth = material_seen[a]++;
            if (nth < int(problems.size()))
                f.add(problems[std::size_t(nth)].item, text + " (" + problems[std::size_t(nth)].text + ")",
                      true);
            else
                f.add(name("mat_type", a), text, true);
        } else if (std::sscanf(text.c_str(), "No points in section %d, layer %d", &a, &b) == 2) {
            f.add(name("section_npts", a, b), text, false);
        } else if (std::sscanf(text.c_str(), "Layer %d in section %d", &a, &b) == 2) {
            const bool left = text.find("left") != std::string::npos;
            f.add(name("section_y", b, left ? 1 : std::max<int>(1, p.sections.n(b, a)), a), text, false);
        } else if (std::sscanf(text.c_str(), "Piezo Surface #%d", &a) == 1) {
            f.add("num_piezos", text, false);
        } else if (std::sscanf(text.c_str(), "Discontinuity #%d", &a) == 1) {
            f.add("num_discs", text, false);
        } else {
            f.add("", text, p.check_fatal != 0);
        }
    }
}

} // namespace

std::vector<MaterialProblem> material_problems(const Project& p, int m)
{
    std::vector<MaterialProblem> out;
    const int type = material_type(p, m);
    const float uw = p.mat_unit_weight[m], c = p.mat_cohesion[m], cv = p.mat_cohesion_v[m];
    const float phi = p.mat_phi[m], phi_v = p.mat_phi_v[m];
    if (m <= p.num_layers && type >= 1 && type <= 3 && !(uw > 0))
        out.push_back({name("mat_unit_weight", m), "unit weight " + g(uw) + " is not above 0"});
    // The negative ones of a list of properties, named together.
    auto negatives = [&](std::initializer_list<std::pair<const char*, const char*>> props,
                         std::initializer_list<float> values) {
        MaterialProblem problem;
        auto v = values.begin();
        for (const auto& [base, label] : props) {
            const float x = *v++;
            if (!(x < 0))
                continue;
            if (problem.item.empty())
                problem.item = name(base, m);
            problem.text += (problem.text.empty() ? "" : ", ") + std::string(label) + " " + g(x);
        }
        if (!problem.item.empty()) {
            problem.text += " below 0";
            out.push_back(problem);
        }
    };
    if (type == 1) {
        if (c < 0 || phi < 0)
            negatives({{"mat_cohesion", "cohesion"}, {"mat_phi", "friction angle"}}, {c, phi});
        if (c == 0 && phi == 0)
            out.push_back({name("mat_cohesion", m), "cohesion and friction angle both 0: no strength"});
    }
    if (type == 2) {
        if (c < 0 || cv < 0 || phi < 0 || phi_v < 0)
            negatives({{"mat_cohesion", "cohesion"},
                       {"mat_cohesion_v", "vertical cohesion"},
                       {"mat_phi", "friction angle"},
                       {"mat_phi_v", "vertical friction angle"}},
                      {c, cv, phi, phi_v});
        if (!(c != 0 && cv != 0) && !(phi != 0 && phi_v != 0)) {
            const char* item = c == 0     ? "mat_cohesion"
                               : cv == 0  ? "mat_cohesion_v"
                               : phi == 0 ? "mat_phi"
                                          : "mat_phi_v";
            out.push_back({name(item, m), "anisotropic strength needs both cohesions or both friction angles "
                                          "other than 0: cohesion " +
                                              g(c) + " and " + g(cv) + ", friction angle " + g(phi) +
                                              " and " + g(phi_v)});
        }
    }
    if (type == 3 && !(p.mat_uniaxial[m] > 0))
        out.push_back(
            {name("mat_uniaxial", m), "uniaxial strength " + g(p.mat_uniaxial[m]) + " is not above 0"});
    return out;
}

std::string material_property_problem(const Project& p, int m)
{
    std::string text;
    for (const auto& problem : material_problems(p, m))
        text += (text.empty() ? "" : "; ") + problem.item + ": " + problem.text;
    return text;
}

std::vector<Finding> review_values(Project& p, const std::vector<ReadItem>& items)
{
    Findings f(items);
    review_units_and_mesh(p, f);
    for (int m = 1; m <= p.num_mat_entries; ++m)
        review_material(p, m, f);
    review_sections(p, f);
    review_surface_data(p, f);
    review_input_checks(p, f);
    return f.out;
}

} // namespace tobel
