#include "report/report.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "project/numtext.h"
#include "project/safe_save.h"

namespace tobel {

std::string report_date_text()
{
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    char text[48];
    std::snprintf(text, sizeof text, "%02d-%02d-%04d", local.tm_mon + 1, local.tm_mday, local.tm_year + 1900);
    return text;
}

std::string report_value(float x, const char* mask)
{
    double v = val(format(x, mask));
    if (v == 0)
        v = 0; // "-0.00" reads back as a plain zero
    return str(v);
}

// A plain number as a print statement writes it: sign blank, text, blank.
static std::string plain(float x)
{
    return print_item(x);
}

// A label and its value, two fields of one print statement.
static std::string pair(const std::string& label, const std::string& value)
{
    return PrintLine().text(label).text(value).str();
}

const char* report_surface_text(const Project& p, ReportSolve solve)
{
    switch (solve) {
    case ReportSolve::grid_search: return "Critical surface by grid search";
    case ReportSolve::auto_search: return "Critical surface by auto search";
    case ReportSolve::single_trial: break;
    }
    switch (p.surface_kind) {
    case 1: return "Single ellipsoidal sliding surface";
    case 2: return "Multi-planar wedge surface";
    case 4: return "General sliding surface";
    default: return "Composite surface";
    }
}

const char* report_method_text(int method)
{
    switch (method) {
    case 1: return "Bishop's Method";
    case 2: return "Janbu Method";
    case 3: return "Spencer's Method";
    default: return "Morgenstern-Price Method";
    }
}

static void solution_lines(const Project& p, const ReportContext& ctx, std::vector<std::string>& out)
{
    out.push_back(pair("Sliding Surface:", report_surface_text(p, ctx.solve)));
    out.push_back(report_method_text(p.solution_method));
    out.emplace_back();
    out.push_back(pair("Factor of Safety:", report_value(p.factor_of_safety, "####0.00")));
    out.push_back(pair("Slide Volume:", report_value(p.slide_volume, "####0.00")));
    out.push_back(pair("Slide Weight:", report_value(p.slide_weight, "####0.00")));
    out.push_back(pair("Unbalanced Force:", report_value(p.lateral_unbalance, "####0.00")));
    out.push_back(pair("Sliding Surface Area:", report_value(p.slide_area, "####0.00")));
    if (p.solution_method == 3)
        out.push_back(pair("Coefficient Lambda:", report_value(p.lambda_coef, "####0.000")));
    out.push_back(pair("No. of Active Columns:", print_item(long(p.active_columns))));
    out.push_back(pair("Rotation angle:", plain(p.rotation_angle)));
    out.push_back(pair("Centre Y:", report_value(p.centre_y, "####0.00")));
    out.push_back(pair("Centre Z:", report_value(p.centre_z, "####0.00")));
    out.push_back("Negative normal stresses in " + format(p.neg_normal_percent, "##0") + "% of weight");
    if (p.head_water_sum != 0)
        out.push_back(
            pair("Total water thrust (toe submergence):", report_value(p.head_water_sum, "####0.00")));
    if (p.crack_water_sum != 0)
        out.push_back(
            pair("Total water thrust (tension crack):", report_value(p.crack_water_sum, "####0.00")));
    out.emplace_back();
    if (p.unit_weight_water == 9.81f)
        out.push_back("Unit Weight of Water: 9.81 (kN/cu.m)");
    else if (p.unit_weight_water == 62.4f)
        out.push_back("Unit Weight of Water: 62.4  (pcf)");
    if (p.eq_coef != 0)
        out.push_back(pair("Hor. Earthquake Accel.:", report_value(p.eq_coef, "####0.00")));
}

// Piezo # and Press. Ratio from the packed mat_piezo.
static std::string piezo_fields(const Project& p, int m)
{
    const float piezo = p.mat_piezo[m];
    const float number = piezo < 0 ? -piezo : 0.0f;
    const float ratio = piezo > 0 ? piezo : 0.0f;
    return plain(number) + "," + plain(ratio) + "," + plain(p.mat_bbar[m]);
}

static void list_head(std::vector<std::string>& out, const char* heading, const char* columns)
{
    out.emplace_back();
    out.emplace_back();
    out.push_back(heading);
    out.push_back(columns);
}

static void input_lists(const Project& p, std::vector<std::string>& out)
{
    const int layers = std::min<int>(p.num_layers, material_capacity);
    auto count_of = [&](int type) {
        int n = 0;
        for (int m = 1; m <= layers; ++m)
            n += material_type(p, m) == type ? 1 : 0;
        return n;
    };
    const char* ws = "####0.00";

    if (count_of(1) > 0) {
        list_head(out, "List of Materials:",
                  "Name, Unit Weight, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.");
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 1)
                out.push_back(p.mat_name[m] + "," + report_value(p.mat_unit_weight[m], ws) + "," +
                              report_value(p.mat_cohesion[m], ws) + "," + plain(p.mat_phi[m]) + "," +
                              piezo_fields(p, m));
    }
    const int first_disc = p.num_layers + 1;
    const int last_disc = std::min<int>(p.num_layers + p.num_discs, material_capacity);
    if (last_disc >= first_disc) {
        list_head(out, "List of Discontinuities:",
                  "Name, Cohesion, Friction Angle, Piezo #, Press. Ratio, B-bar Coeff.");
        for (int m = first_disc; m <= last_disc; ++m)
            out.push_back(p.mat_name[m] + "," + report_value(p.mat_cohesion[m], ws) + "," +
                          plain(p.mat_phi[m]) + "," + piezo_fields(p, m));
    }
    if (count_of(2) > 0) {
        list_head(out, "List of Anisotropic Materials:",
                  "Name, Unit Weight, Cohesion, Cohesion Vert., Friction Angle, Fi Angle Vert., Piezo #, "
                  "Press. Ratio, B-bar Coeff.");
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 2)
                out.push_back(p.mat_name[m] + "," + report_value(p.mat_unit_weight[m], ws) + "," +
                              report_value(p.mat_cohesion[m], ws) + "," +
                              report_value(p.mat_cohesion_v[m], ws) + "," + plain(p.mat_phi[m]) + "," +
                              plain(p.mat_phi_v[m]) + "," + piezo_fields(p, m));
    }
    if (count_of(3) > 0) {
        list_head(out, "List of Non-Linear Materials:",
                  "Name, Unit Weight, Piezo #, Press. Ratio, B-bar Coeff., Coeff. A, Coeff. B, Uniaxial "
                  "Strength, Coeff. D");
        for (int m = 1; m <= layers; ++m)
            if (material_type(p, m) == 3)
                out.push_back(p.mat_name[m] + "," + report_value(p.mat_unit_weight[m], ws) + "," +
                              piezo_fields(p, m) + "," + plain(p.mat_coef_a[m]) + "," +
                              plain(p.mat_coef_b[m]) + "," + plain(p.mat_uniaxial[m]) + "," +
                              plain(p.mat_coef_d[m]));
    }
    const int forces = std::min<int>(p.num_forces, force_capacity);
    if (forces > 0) {
        list_head(out, "List of External Forces:",
                  "Name, Horizontal Force, Vertical Force, X-Coordinate, Y-Coordinate, Z-Coordinate");
        for (int f = 1; f <= forces; ++f)
            out.push_back("Force " + std::to_string(f) + "," + format(p.force_h[f], ws) + "," +
                          format(p.force_v[f], ws) + "," + format(p.force_x[f], ws) + "," +
                          format(p.force_y[f], ws) + "," + format(p.force_z[f], ws));
    }
}

static void crack_lines(const Project& p, std::vector<std::string>& out)
{
    if (p.crack_mode == 0)
        return;
    out.emplace_back();
    out.emplace_back();
    out.push_back("Tension Crack:");
    if (p.crack_mode == 1)
        out.push_back(pair("Y-coordinate:", plain(p.crack_y)));
    else
        out.push_back(pair("Depth:", plain(p.crack_depth)));
    out.push_back(pair("% Filled by Water: ", format(p.crack_water_pct, "####0.00")));
}

std::vector<std::string> report_text_lines(const Project& p, const ReportContext& ctx)
{
    std::vector<std::string> out;
    out.push_back(pair("PROJECT:", p.project_title));
    out.push_back(pair("Input By: ", p.input_by));
    out.push_back(pair("Date: ", ctx.date));
    out.emplace_back();
    if (ctx.solution_window)
        solution_lines(p, ctx, out);
    input_lists(p, out);
    crack_lines(p, out);
    return out;
}

void write_report_text(const Project& p, const std::string& path, const ReportContext& ctx)
{
    std::string text;
    for (const auto& line : report_text_lines(p, ctx)) {
        text += line;
        text += "\r\n";
    }
    write_file_safely(path, text);
}

} // namespace tobel
