#include "solver/single_column.h"

#include "project/numtext.h"

namespace tobel {

// Angles are shown through 3.14, as every conversion of the program is.
static double degrees(float radians)
{
    return double(radians) * 180 / 3.14;
}

static std::string material_name(const Project& p, long m)
{
    return m >= 0 && m <= material_capacity ? p.mat_name[std::size_t(m)] : std::string();
}

void show_single_column(Project& p, float y, float x, std::vector<std::string>& out)
{
    out.clear();
    out.push_back("");
    out.push_back("   SINGLE COLUMN OUTPUT");
    out.push_back("   AT X = " + format(x, "####0.0") + "  Y = " + format(y, "####0.0"));
    out.push_back("");
    long r = cint((double(x) - double(p.x_min)) / double(p.row_spacing)) + 1;
    if (p.num_rows == 1)
        r = 1;
    const long c = cint((double(y) - double(p.y_min)) / double(p.col_spacing)) + 1;
    if (r < 1 || r > p.num_rows || c < 1 || c > p.num_cols)
        return;
    const int ri = int(r), ci = int(c);

    out.push_back("   Angle of Sliding Surface (degrees):");
    out.push_back("      Longitudinal:  " + format(degrees(p.surf_dip_y(ri, ci)), "####0.00"));
    out.push_back("      Transverse:    " + format(degrees(p.surf_dip_x(ri, ci)), "####0.00"));
    out.push_back("");
    // A column with an external force carries it in its weight, so the
    // label holds only for columns without one.
    if (p.col_area(ri, ci) > 0)
        out.push_back("   Total Vertical Stress:  " +
                      format(p.col_weight(ri, ci) / p.col_area(ri, ci), "####0.0"));
    out.push_back("   Normal Stress:           " + format(p.col_normal(ri, ci), "####0.0"));
    out.push_back("   Pore Pressure:           " + format(p.col_pore(ri, ci), "####0.0"));
    out.push_back("");
    const long material = p.col_material(ri, ci);
    const int code = p.disc_code(ri, ci);
    if (material == 0 && code == 0)
        return;
    if (code > 0)
        out.push_back("   Discontinuity: " + material_name(p, long(p.num_layers) + code));
    else
        out.push_back("   Material:         " + material_name(p, material));
    out.push_back("   Friction Angle:  " + format(degrees(p.col_phi(ri, ci)), "####0.0"));
    out.push_back("   Cohesion:        " + format(p.col_cohesion(ri, ci), "####0.0"));
    out.push_back("");
    out.push_back("   Local F. of S.:   " + format(p.col_fos(ri, ci), "####0.00"));
    if (p.solution_method == 3 || p.solution_method == 4)
        out.push_back("   f function:   " + format(p.zgrid(ri, ci, p.sliding_index + 1), "####0.00"));
}

} // namespace tobel
