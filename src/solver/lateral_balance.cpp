#include "solver/lateral_balance.h"

#include <cmath>

#include "project/numtext.h"
#include "report/messages.h"

namespace tobel {

bool lateral_balance_step(Project& p, Port& port, const LateralSums& sums, bool& asked)
{
    const double ubf = p.lateral_unbalance;
    const double wt = p.slide_weight;
    const double ratio = ubf / wt;
    if (std::abs(ratio) > 0.01 && !asked && p.solve_interactive == -1) {
        asked = true;
        const Answer a = port.message_box("UBF/WT = " + format(ratio, "#0.00000") + "\n" +
                                              "DO YOU WISH TO BALANCE LATERAL FORCES ?",
                                          Buttons::yes_no, Icon::none, "WARNING");
        p.balance_lateral = a == Answer::yes ? 1.0f : 0.0f;
    }
    if (p.balance_lateral != 1)
        return false;

    const double wo = wt - double(p.weight_flat) - sums.wl_positive;
    p.weight_negative = float(wt - double(p.weight_flat) - double(p.weight_positive));
    if (p.num_rows > 1 &&
        (sums.wl_positive == 0 || wo == 0 || sums.wt_positive == 0 || sums.wt_negative == 0)) {
        add_message(p, "LATERAL EQUILIBRIUM CANNOT BE ACHIEVED WITH THIS GEOMETRY");
        p.balance_lateral = 0;
        return false;
    }
    // Secant on kappa+ through the fixed point (0, UBF0).
    if (p.kappa_pos == 0) {
        p.ubf0 = ubf;
        p.kappa_pos = 1;
    } else {
        p.kappa_pos = p.kappa_pos * p.ubf0 / (p.ubf0 - ubf);
    }
    // The added loads sum to zero over the mass. A single row without a
    // negative side (its geometry test is passed over) gets no load there.
    p.kappa_neg = sums.wt_negative == 0 ? 0.0 : -p.kappa_pos * sums.wt_positive / sums.wt_negative;
    return std::abs(ratio) > 0.001;
}

} // namespace tobel
