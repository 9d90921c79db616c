#include "commands/commands.h"
#include "commands/menu_model.h"
#include "graphics/isometry.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/message_list_form.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/result_panel.h"
#include "solver/spencer_mp.h"

namespace tobel {

// The interactive solution of the surface in place: the surface check, the
// solver of the method, the result panel, the messages and the printout.
void solve_and_show_trial(Project& p, Port& port)
{
    check_surface(p);
    try {
        if (p.solution_method == 3 || p.solution_method == 4)
            solve_spencer_mp(p, port);
        else
            solve_bishop_janbu(p, port);
    } catch (const RuntimeError& e) {
        // A run-time failure of the solution (the message list overflowing) fails the trial.
        p.factor_of_safety = 0;
        p.solve_interactive = 0;
        port.busy(false);
        port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
    }
    // The result window: the sliding surface with its factor of safety.
    if (port.draw_hooks() != nullptr && p.num_rows > 1) {
        p.view.critical_fs = p.factor_of_safety;
        draw_result_isometry(p, port);
    }
    port.show_text("RESULTS", result_panel_lines(p));
    show_trial_messages(p, port);
    const auto printout = solution_printout_lines(p);
    port.show_text(printout.front(), std::vector<std::string>(printout.begin() + 1, printout.end()));
}

bool solve_single_trial(Project& p, Port& port)
{
    if (p.solution_method < 1 || p.solution_method > 4)
        return false;
    // 1. The data check; a fatal finding ends the command.
    if (!run_input_checks_for_solve(p, port))
        return true;
    // 2.
    p.report_kind = 1;
    p.solve_interactive = -1;
    // The plan of active columns comes up with the solution when the port
    // takes pictures; otherwise the port is only told of it.
    if (port.draw_hooks() == nullptr)
        port.show_view(6, "PLAN OF ACTIVE COLUMNS");
    // 3.
    p.keep_window = 0;
    // 4 to 6.
    const bool rotated = p.rotation_angle != 0;
    solve_and_show_trial(p, port);
    // A rotation lasts one solution, and a toe water thrust changed the surface.
    if (rotated || p.head_water_sum != 0)
        hide_solve_menu(p);
    return true;
}

} // namespace tobel
