#include "solver/result_panel.h"

#include "project/numtext.h"

namespace tobel {

std::vector<std::string> result_panel_lines(Project& p)
{
    std::vector<std::string> out;
    switch (p.solution_method) {
    case 1: out.push_back("  Bishop's Method"); break;
    case 2: out.push_back("  Janbu Method"); break;
    case 3: out.push_back("  Spencer's Method"); break;
    case 4: out.push_back("  Morgenstern-Price Method"); break;
    default: break;
    }
    out.push_back("  Factor of Safety: " + format(p.factor_of_safety, "####0.00"));
    if (p.solution_method == 3 || p.solution_method == 4)
        out.push_back("  Coefficient Lambda = " + format(p.lambda_coef, "#0.00"));
    out.push_back("  Slide Volume: " + format(p.slide_volume, "####0.00"));
    out.push_back("  Slide Weight: " + format(p.slide_weight, "####0.00"));
    out.push_back("  Unbalanced Force: " + format(p.lateral_unbalance, "####0.0000"));
    out.push_back("  Sliding Surface Area: " + format(p.slide_area, "####0.00"));
    out.push_back("  Number of Active Columns: " + std::to_string(p.active_columns));
    if (p.rotation_angle != 0) {
        out.push_back("  Rotation angle: " + format(p.rotation_angle, "####0.0"));
        p.rotation_angle = 0;
    }
    out.push_back("  Centre Y: " + format(p.centre_y, "####0.00") + "  Z: " + format(p.centre_z, "####0.00"));
    if (p.slide_weight > 0) {
        p.neg_normal_percent = float(double(p.neg_normal_sum) / double(p.slide_weight) * 100);
        out.push_back("  Negative normal stresses, " + format(p.neg_normal_percent, "##0") + " % weight");
    }
    if (p.head_water_sum != 0 || p.crack_water_sum != 0) {
        out.push_back("  Total water thrust");
        if (p.head_water_sum != 0)
            out.push_back("       (toe submergence): " + format(p.head_water_sum, "######0.00"));
        if (p.crack_water_sum != 0)
            out.push_back("       (tension crack): " + format(p.crack_water_sum, "######0.00"));
    }
    if (p.num_forces > 0) {
        out.push_back("  Total external forces:");
        out.push_back("       horizontal: " + format(-p.ext_horizontal_sum, "######0.00"));
        out.push_back("       vertical:   " + format(p.ext_vertical_sum, "######0.00"));
    }
    if (p.eq_coef != 0)
        out.push_back("  Hor. Earthquake Accel.: " + format(p.eq_coef, "####0.00"));
    return out;
}

std::vector<std::string> solution_printout_lines(const Project& p)
{
    std::vector<std::string> out;
    if (p.balance_lateral == 1) {
        out.push_back("LATERAL EQUILIBRIUM ESTABLISHED");
        out.push_back("");
        out.push_back("");
        out.push_back("The Following are Total Forces:");
        out.push_back("");
        auto line = [&](const char* label, float v) { out.push_back(label + format(v, "###0.00")); };
        line("Weight of Sliding Body .................................. = ", p.slide_weight);
        line("Weight of Columns with Positive Lateral Slope ........... = ", p.weight_positive);
        line("Weight of Columns with Negative Lateral Slope ........... = ", p.weight_negative);
        line("Weight of Columns with Zero Lateral Slope ............... = ", p.weight_flat);
        // The window never sees the vertical shear total: it prints 0 less
        // the weight of the positive side.
        line("Total Vertical Shear Force Used to Establish Equilibrium  = ", 0 - p.weight_positive);
        line("Total Horizontal Thrust on Deepest Cross-section ........ = ", p.thrust_positive);
        return out;
    }
    out.push_back("SOLUTION ACCEPTABILITY INDICES");
    out.push_back("");
    out.push_back("");
    out.push_back(p.solution_method == 4 ? "MORGENSTERN - PRICE METHOD" : "SPENCER'S METHOD");
    out.push_back("");
    out.push_back("Solution Acceptability Indices:");
    out.push_back("");
    out.push_back("Number of iterations .......................: " + std::to_string(p.iteration_count));
    out.push_back("Moment of resisting forces .................: " + general_text(p.moment_shear));
    out.push_back("Moment of driving forces ...................: " + general_text(p.moment_other));
    if (p.num_rows == 1) {
        out.push_back(
            "Thrust line elevation as a ratio of column height (in those columns where acceptable):");
        out.push_back("          Average: " + general_text(p.thrust_ratio_mean) + " Range: " +
                      general_text(p.thrust_ratio_min) + " to " + general_text(p.thrust_ratio_max));
        out.push_back("Thrust line acceptable in ..........:" + format(p.vol_thrust_inside, "###0.00") +
                      " % of slide volume");
        out.push_back("Thrust line in middle third in .......:" + format(p.vol_thrust_middle, "###0.00") +
                      " % of volume");
        out.push_back("Horizontal thrust negative in ........:" + format(p.vol_tension, "###0.00") +
                      " % of volume");
    }
    out.push_back("Vertical internal strength exceeded in: " + format(p.vol_overstressed, "###0.00") +
                  " % of volume");
    out.push_back("Coefficient Lambda = " + format(p.lambda_coef, "###0.00"));
    out.push_back("FACTOR OF SAFETY   = " + format(p.factor_of_safety, "###0.00"));
    return out;
}

} // namespace tobel
