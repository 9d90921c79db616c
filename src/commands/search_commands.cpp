#include "commands/search_commands.h"

#include "commands/commands.h"
#include "commands/menu_model.h"
#include "graphics/isometry.h"
#include "graphics/section_views.h"
#include "project/numtext.h"
#include "project/runtime_error.h"
#include "report/message_list_form.h"
#include "search/auto_search.h"
#include "search/grid_search.h"
#include "search/search_setup.h"
#include "search/trial.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/result_panel.h"
#include "solver/spencer_mp.h"

namespace tobel {

constexpr const char* tentative_caption = "Tentative Critical Surface";

// Steps 2 to 5 shared by both searches, up to the search itself.
static void prepare_search(Project& p, Port& port, int mode, float x, float aspect)
{
    SearchState& s = p.search;
    // 2. The range of F and the best result start afresh.
    s.fos_max = s.fos_min = 0;
    s.fos_range_set = 0;
    s.best.fos = s.best.y = s.best.z = 0;
    p.pictures.search.caption = mode == 9 ? "GRID SEARCH RESULT" : "AUTO SEARCH RESULT";
    if (port.draw_hooks() == nullptr)
        port.show_view(mode, p.pictures.search.caption);
    // 3.
    p.keep_window = -1;
    p.view_mode = int16(mode);
    s.mode = int16(mode);
    s.panel_left = 0.75f;
    s.panel_top = 0.5f;
    s.panel_open = -1;
    s.panel_caption = "Pause";
    s.summary_visible = 0;
    s.panel_lines.clear();
    s.pause_flag = 0;
    s.search_abort = 0;
    s.final_drawing = 0;
    s.stop_reason.clear();
    // Whatever the grids were given before, the first trial of the search
    // goes over the whole mesh.
    forget_solver_work(p.work);
    // 4. The section of the search, drawn without its sliding surface.
    p.ell_x = x;
    p.ell_aspect = aspect;
    p.view_row = section_row_of(p, x);
    if (port.draw_hooks() != nullptr) {
        // No old sliding surface shows under the trial markers.
        p.view.hide_sliding = true;
        draw_search_section(p, port);
        p.view.hide_sliding = false;
    }
    s.running = -1;
}

// Step 6 after the search: the result picture and what follows it.
static bool finish_search(Project& p, Port& port)
{
    SearchState& s = p.search;
    s.running = 0;
    p.keep_window = 0;
    if (s.final_drawing != 0)
        s.panel_open = 0;
    s.summary_visible = -1;
    const bool found = s.panel_caption == tentative_caption;
    if (!found)
        port.beep();
    else if (p.num_rows > 1 && port.draw_hooks() != nullptr)
        draw_isometry(p, port, p.sliding_index);
    else if (p.num_rows > 1)
        port.show_view(5, "ISOMETRIC VIEW");
    hide_solve_menu(p);
    return found;
}

// A run-time error ends the search as a file command's would.
static void report_search_error(Project& p, Port& port, const RuntimeError& e)
{
    p.search.running = 0;
    // The counters of a search are 16-bit: their overflow is the trial limit.
    p.search.stop_reason =
        e.number() == err_overflow
            ? "trial limit reached: a search counts at most 32767 trials and grid centres (" +
                  error_report_text(e) + ")"
            : error_report_text(e);
    port.busy(false);
    port.message_box(error_report_text(e), Buttons::ok, Icon::critical, "TOBEL-3");
}

bool solve_grid_search(Project& p, Port& port)
{
    if (!run_input_checks_for_solve(p, port))
        return false;
    const GridSearchRecord r = load_grid_record(p);
    prepare_search(p, port, 9, r.grid_x, r.grid_aspect);
    try {
        // 5. The centres stand ready; the records are not cleared.
        build_grid_points(p.search, r);
        BusyPointer busy(port);
        grid_search(p, port, r);
    } catch (const RuntimeError& e) {
        report_search_error(p, port, e);
    }
    return finish_search(p, port);
}

bool solve_auto_search(Project& p, Port& port)
{
    if (!run_input_checks_for_solve(p, port))
        return false;
    const AutoSearchRecord r = load_auto_record(p);
    prepare_search(p, port, 10, r.auto_x, r.auto_aspect);
    try {
        // 5.
        p.search.plot_count = 0;
        init_search(p);
        BusyPointer busy(port);
        auto_search(p, port, r);
    } catch (const RuntimeError& e) {
        report_search_error(p, port, e);
    }
    return finish_search(p, port);
}

bool solve_final_surface(Project& p, Port& port)
{
    SearchState& s = p.search;
    if (s.panel_caption != tentative_caption)
        return false;
    p.report_kind = s.mode == 10 ? 3 : 2;
    if (port.draw_hooks() == nullptr)
        port.show_view(6, "PLAN OF ACTIVE COLUMNS");
    p.solve_interactive = -1;
    solve_and_show_trial(p, port);
    s.panel_open = 0;
    return true;
}

} // namespace tobel
