// What the command line says around a result so that nothing that is not a
// usable factor of safety passes as one.
#include <cmath>
#include <ostream>

#include "cli.h"
#include "project/numtext.h"
#include "solver/equilibrium_residuals.h"
#include "solver/validity.h"

namespace tobel::cli {

int warn_about_result(const Project& p, std::ostream& warn)
{
    int status = exit_ok;
    if (const ResultFlaw flaw = result_flaw(p); flaw != ResultFlaw::none) {
        warn << "tobel: warning: the result is not valid: " << result_flaw_text(flaw) << "\n";
        status = exit_not_valid;
    }
    if (const std::string w = equilibrium_warning(p); !w.empty())
        warn << "tobel: warning: " << w << "\n";

    return status;
}

void add_validity_json(const Project& p, nlohmann::ordered_json& j)
{
    const ResultFlaw flaw = result_flaw(p);
    j["valid"] = flaw == ResultFlaw::none;
    if (flaw != ResultFlaw::none)
        j["not_valid_because"] = result_flaw_text(flaw);
}

void add_equilibrium_json(const Project& p, nlohmann::ordered_json& j)
{
    if (p.residuals_valid == 0)
        return;
    nlohmann::ordered_json e;
    e["force_residual"] = p.force_residual;
    e["moment_residual"] = p.moment_residual;
    const std::string w = equilibrium_warning(p);
    e["closed"] = w.empty();
    if (!w.empty())
        e["warning"] = w;
    j["equilibrium"] = e;
}

void print_equilibrium(const Project& p, std::ostream& out)
{
    if (p.residuals_valid == 0)
        return;
    out << "== EQUILIBRIUM OF THE ACCEPTED SOLUTION\n"
        << "  Force residual:  " << format(100.0 * std::fabs(p.force_residual), "##0.00")
        << " % of the driving force\n"
        << "  Moment residual: " << format(100.0 * std::fabs(p.moment_residual), "##0.00")
        << " % of the driving moment\n";
}

} // namespace tobel::cli
