#include "geometry/input_checks.h"

#include "project/numtext.h"

namespace tobel {

static void add_finding(Project& p, const std::string& text)
{
    p.check_text.push_back(text);
    p.check_count = int16(p.check_count + 1);
}

// A material can give several findings; each one stops the run.
static void check_material(Project& p, int n)
{
    const std::string text = "Material #" + str(long(n)) + ": properties incorrect!";
    const int type = material_type(p, n);
    int findings = 0;
    // Hard layers, water and discontinuities carry no weight of their own.
    if (n <= p.num_layers && (type == 1 || type == 2 || type == 3) && !(p.mat_unit_weight[n] > 0))
        ++findings;
    if (type == 1) {
        if (p.mat_cohesion[n] < 0 || p.mat_phi[n] < 0)
            ++findings;
        if (p.mat_cohesion[n] == 0 && p.mat_phi[n] == 0)
            ++findings;
    }
    if (type == 2) {
        if (p.mat_cohesion[n] < 0 || p.mat_cohesion_v[n] < 0 || p.mat_phi[n] < 0 || p.mat_phi_v[n] < 0)
            ++findings;
        const bool both_cohesions = p.mat_cohesion[n] != 0 && p.mat_cohesion_v[n] != 0;
        const bool both_angles = p.mat_phi[n] != 0 && p.mat_phi_v[n] != 0;
        if (!both_cohesions && !both_angles)
            ++findings;
    }
    if (type == 3 && !(p.mat_uniaxial[n] > 0))
        ++findings;
    for (int f = 0; f < findings; ++f) {
        add_finding(p, text);
        p.check_fatal = -1;
    }
}

// Lines of surfaces built from sections must span the mesh in Y. A
// two-dimensional problem is built from its first section alone.
static void check_section_lines(Project& p)
{
    const int last_section = p.num_rows == 1 ? (p.num_sections >= 1 ? 1 : 0) : p.num_sections;
    for (int i = 1; i <= last_section; ++i) {
        for (int s = 1; s <= p.num_surfaces; ++s) {
            if (p.surf_method[s] != 0)
                continue;
            const int npts = p.sections.n(i, s);
            if (npts == 0) {
                add_finding(p, "No points in section " + str(long(i)) + ", layer " + str(long(s)) + ".");
                continue;
            }
            if (p.sections.y(i, 1, s) > p.y_min)
                add_finding(p, "Layer " + str(long(s)) + " in section " + str(long(i)) +
                                   " does not extend to left boundary.");
            if (p.sections.y(i, npts, s) < p.y_max)
                add_finding(p, "Layer " + str(long(s)) + " in section " + str(long(i)) +
                                   " does not extend to right boundary.");
        }
    }
}

static void check_piezo_surfaces(Project& p)
{
    for (int s = p.num_layers + 1; s <= p.num_surfaces; ++s) {
        const int piezo = s - p.num_layers;
        bool used = false;
        for (int m = 1; m <= p.num_mat_entries && !used; ++m)
            used = -p.mat_piezo[m] == float(piezo);
        if (!used)
            add_finding(p, "Piezo Surface #" + str(long(piezo)) +
                               " is not associated with any material or discontinuity.");
    }
}

// A discontinuity field reaches its codes through the wedge table too.
static void check_discontinuities(Project& p)
{
    for (int d = 1; d <= p.num_discs; ++d) {
        bool used = false;
        for (int w = 1; w <= p.num_wedges && !used; ++w)
            used = p.wedge_code[w] == float(d);
        if (!used)
            add_finding(p, "Discontinuity #" + str(long(d)) +
                               " is not associated with any part of the sliding surface.");
    }
}

void check_input(Project& p)
{
    p.check_count = 0;
    p.check_fatal = 0;
    p.check_text.assign(1, std::string());
    for (int n = 1; n <= p.num_mat_entries; ++n)
        check_material(p, n);
    check_section_lines(p);
    check_piezo_surfaces(p);
    check_discontinuities(p);
}

} // namespace tobel
