#include "search/trial.h"

#include <cmath>
#include <cstddef>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/spencer_mp.h"
#include "solver/validity.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/wedges.h"

namespace tobel {

// Passes everything to the user's port but remembers a Stop that the solver
// would otherwise take for itself: during a search Stop ends the search.
namespace {
class StopWatchPort : public Port {
  public:
    explicit StopWatchPort(Port& inner) : inner_(inner) {}
    bool stopped = false;

    Answer message_box(const std::string& text, Buttons b, Icon i, const std::string& title) override
    {
        return inner_.message_box(text, b, i, title);
    }
    std::optional<std::string> input_box(const std::string& prompt, const std::string& title,
                                         const std::string& initial) override
    {
        return inner_.input_box(prompt, title, initial);
    }
    std::optional<std::string> open_file_dialog(const std::string& filter,
                                                const std::string& initial) override
    {
        return inner_.open_file_dialog(filter, initial);
    }
    std::optional<std::string> save_file_dialog(const std::string& filter, const std::string& initial,
                                                bool overwrite_prompt) override
    {
        return inner_.save_file_dialog(filter, initial, overwrite_prompt);
    }
    void progress(const std::string& line) override { inner_.progress(line); }
    bool yield() override
    {
        const bool stop = inner_.yield();
        if (stop)
            stopped = true;
        return stop;
    }
    void beep() override { inner_.beep(); }
    void busy(bool on) override { inner_.busy(on); }
    void show_text(const std::string& caption, const std::vector<std::string>& lines) override
    {
        inner_.show_text(caption, lines);
    }
    void show_view(int view_mode, const std::string& caption) override
    {
        inner_.show_view(view_mode, caption);
    }
    DrawHooks* draw_hooks() override { return inner_.draw_hooks(); }

  private:
    Port& inner_;
};
} // namespace

void init_search(Project& p)
{
    SearchState& s = p.search;
    s.trial = SearchRecord{};
    s.best = SearchRecord{};
    s.best_valid = SearchRecord{};
    s.trial_count = 0;
    s.radius_step_count = 1;
}

bool common_point_mode(const Project& p)
{
    return (p.view_mode == 9 && p.grid_use_common != 0) || (p.view_mode == 10 && p.auto_use_common != 0);
}

int fos_class_of(float fos)
{
    if (fos < fos_class_limits[0])
        return 0;
    for (std::size_t c = 1; c < fos_class_limits.size(); ++c)
        if (fos <= fos_class_limits[c])
            return int(c);
    return 8;
}

void classify_trial(SearchState& s, float fos)
{
    s.fos_class.fill(0);
    s.fos_class[std::size_t(fos_class_of(fos))] = -1;
    if (fos > s.fos_max) {
        s.fos_max = fos;
        if (s.fos_range_set == 0)
            s.fos_min = fos;
    } else if (fos < s.fos_min) {
        s.fos_min = fos;
        if (s.fos_range_set == 0)
            s.fos_max = fos;
    }
    s.fos_range_set = -1;
}

std::vector<std::string> trial_panel_lines(const SearchRecord& r)
{
    const double pct = r.weight == 0 ? 0.0 : double(r.unbalance) / double(r.weight) * 100.0;
    return {
        "   Ellipsoid #" + str(long(r.trial_number)),
        "   F = " + format(r.fos, "###0.000"),
        "   Y = " + format(r.y, "###0.00"),
        "   Z = " + format(r.z, "###0.00"),
        "   Radius = " + format(r.radius, "###0.00"),
        "   Volume = " + format(r.volume, "###0.00"),
        "   Active Columns = " + format(r.active, "#####0"),
        "   Unbalance = " + format(pct, "###0.00") + "%",
    };
}

std::string trial_progress_line(const SearchRecord& r)
{
    std::string line;
    for (const std::string& l : trial_panel_lines(r)) {
        const std::size_t start = l.find_first_not_of(' ');
        if (!line.empty())
            line += "  ";
        line += l.substr(start == std::string::npos ? l.size() : start);
    }
    return line;
}

// The surface of the trial from the working set: the ellipsoid, the wedge
// planes over it for a composite, then the crack and the water forces.
static void build_trial_surface(Project& p)
{
    build_ellipsoid(p);
    if (p.surface_kind == 3)
        build_wedges(p);
    apply_crack(p);
    scale_forces(p);
}

// Trial markers and traces belong to the search picture, drawn by the
// port's hooks; the search keeps their count. The best trial so far is
// drawn once more, tentatively.
static void plot_trial(Project& p, Port& port, float plot_a, float plot_b, bool best_so_far)
{
    ++p.search.plot_count;
    DrawHooks* const hooks = port.draw_hooks();
    if (hooks == nullptr)
        return;
    hooks->trial_recorded(p, plot_a, plot_b, false);
    if (best_so_far)
        hooks->trial_recorded(p, plot_a, plot_b, true);
}

static void solve_trial(Project& p, Port& port)
{
    StopWatchPort watch(port);
    p.solve_interactive = 0;
    try {
        if (p.solution_method == 3 || p.solution_method == 4)
            solve_spencer_mp(p, watch);
        else
            solve_bishop_janbu(p, watch);
    } catch (const RuntimeError&) {
        // A run-time failure of one solution fails that trial, as F = 0.
        p.factor_of_safety = 0;
    }
    if (watch.stopped)
        p.search.search_abort = -1;
}

void evaluate_trial(Project& p, Port& port, float y, float z, float radius, float plot_a, float plot_b,
                    int mode)
{
    SearchState& s = p.search;
    p.ell_y = y;
    p.ell_z = z;
    p.ell_radius = radius;
    if (mode != trial_record_only) {
        build_trial_surface(p);
        check_surface(p);
        if (p.surface_out_flag == -1)
            return;
        solve_trial(p, port);
        // A solution cut short by Stop is not a result.
        if (s.search_abort != 0)
            return;
    }
    if (mode == trial_solve_only)
        return;

    if (s.trial_count == 32767)
        throw RuntimeError(err_overflow, "trial count of the search");
    ++s.trial_count;
    SearchRecord& t = s.trial;
    t.fos = p.factor_of_safety;
    t.trial_number = s.trial_count;
    t.y = y;
    t.z = z;
    t.radius = radius;
    t.volume = p.slide_volume;
    t.active = float(p.active_columns);
    t.third = plot_a;
    t.unbalance = p.lateral_unbalance;
    t.weight = p.slide_weight;
    t.valid = result_flaw(p) == ResultFlaw::none ? -1 : 0;
    if (t.valid != 0 && (s.best_valid.trial_number == 0 || t.fos < s.best_valid.fos))
        s.best_valid = t;

    s.panel_lines = trial_panel_lines(t);
    port.progress(trial_progress_line(t));

    const std::size_t n = std::size_t(t.trial_number);
    for (auto* v : {&s.summary_fos, &s.summary_y, &s.summary_z, &s.summary_radius, &s.summary_volume})
        if (v->size() < n + 1)
            v->resize(n + 1, 0.0f);
    if (s.summary_valid.size() < n + 1)
        s.summary_valid.resize(n + 1, 0);
    s.summary_valid[n] = t.valid;
    s.summary_fos[n] = t.fos;
    s.summary_y[n] = t.y;
    s.summary_z[n] = t.z;
    s.summary_radius[n] = t.radius;
    s.summary_volume[n] = t.volume;
    s.summary_count = t.trial_number;

    // The best so far: the first trial, or one strictly under every F of
    // the search before it (that may become the best record).
    const bool best_so_far = (s.fos_range_set == 0 || t.fos < s.fos_min) && trial_may_be_best(s);
    classify_trial(s, t.fos);
    plot_trial(p, port, plot_a, plot_b, best_so_far);
}

// A radius of the line search: z - tangent_z + steps * radius_step, in single.
static float stepped_radius(float z, float tangent_z, float steps_times_step)
{
    return float(double(z) - double(tangent_z) + double(steps_times_step));
}

// True when the last mode-1 trial was in bounds and beat the trial record;
// with valid results only, it must also be valid.
static bool improves(const Project& p)
{
    if (p.search.valid_only && result_flaw(p) != ResultFlaw::none)
        return false;
    return p.surface_out_flag != -1 && p.factor_of_safety < p.search.trial.fos;
}

bool trial_may_be_best(const SearchState& s)
{
    return !s.valid_only || s.trial.valid != 0;
}

void step_radius(Project& p, Port& port, float y, float z, float tangent_z, float radius_step, float plot_a,
                 float plot_b)
{
    SearchState& s = p.search;
    bool improved = false;

    float r = stepped_radius(z, tangent_z, radius_step);
    evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_solve_only);
    if (s.search_abort == 0 && improves(p)) {
        s.trial.fos = p.factor_of_safety;
        evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_record_only);
        s.radius_direction = 1;
        improved = true;
    }
    if (s.search_abort == 0) {
        // This test sees the first success, and wins if it is lower still.
        r = stepped_radius(z, tangent_z, -radius_step);
        evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_solve_only);
        if (s.search_abort == 0 && improves(p)) {
            s.trial.fos = p.factor_of_safety;
            evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_record_only);
            s.radius_direction = -1;
            improved = true;
        }
    }

    if (improved && s.search_abort == 0) {
        s.radius_step_count = 2;
        for (;;) {
            if (search_check_pause(p, port))
                break;
            const float steps = float(s.radius_step_count * s.radius_direction) * radius_step;
            r = stepped_radius(z, tangent_z, steps);
            evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_solve_only);
            if (s.search_abort != 0 || !improves(p))
                break;
            s.trial.fos = p.factor_of_safety;
            evaluate_trial(p, port, y, z, r, plot_a, plot_b, trial_record_only);
            ++s.radius_step_count;
        }
    }
    p.surface_out_flag = 0;
}

void evaluate_centre(Project& p, Port& port, float y, float z, float point_y, float point_z, float tangent_z,
                     float radius_step, float plot_a, float plot_b)
{
    // 1. Tangent to the plane, or through the common point.
    float radius = 0;
    if (common_point_mode(p)) {
        const double dz = double(z) - double(point_z), dy = double(y) - double(point_y);
        radius = float(std::sqrt(dz * dz + dy * dy));
    } else {
        radius = float(double(z) - double(tangent_z));
    }
    // 2.
    if (search_check_pause(p, port))
        return;
    // 3.
    evaluate_trial(p, port, y, z, radius, plot_a, plot_b, trial_solve_and_record);
    if (p.search.search_abort != 0)
        return;
    // 4. Either common point option holds the radius, whatever the search.
    if (radius_step == 0 || p.surface_out_flag == -1 || p.grid_use_common != 0 || p.auto_use_common != 0)
        return;
    // 5, 6.
    step_radius(p, port, y, z, tangent_z, radius_step, plot_a, plot_b);
}

void accept_best(Project& p, long point)
{
    SearchState& s = p.search;
    if (point > 32767)
        throw RuntimeError(err_overflow, "search point " + std::to_string(point));
    s.best = s.trial;
    s.best.best_point = std::int16_t(point);
    s.best_trial = s.best.trial_number;
}

void show_final(Project& p, Port& port, float plot_a, float plot_b)
{
    SearchState& s = p.search;
    s.final_drawing = -1;
    ++s.plot_count;
    p.ell_y = s.best.y;
    p.ell_z = s.best.z;
    p.ell_radius = s.best.radius;
    build_trial_surface(p);
    // The best centre and the surface just built.
    if (DrawHooks* const hooks = port.draw_hooks())
        hooks->final_surface(p, plot_a, plot_b);
    s.panel_lines = trial_panel_lines(s.best);
    s.panel_caption = "Tentative Critical Surface";
    p.surface_out_flag = 0;
}

void search_pause(Project& p)
{
    p.search.pause_flag = -1;
    p.search.panel_open = 0;
}

void search_continue(Project& p)
{
    // The flag stays at -1: the search reads that as "go on".
    p.search.panel_open = 0;
}

void search_exit(Project& p)
{
    p.search.pause_flag = 0;
    p.search.panel_caption = "Pause";
    p.search.panel_open = 0;
}

bool search_check_pause(Project& p, Port& port)
{
    SearchState& s = p.search;
    if (s.search_abort == 0 && port.yield())
        s.search_abort = -1;
    if (s.search_abort == 0 && s.pause_flag == -1) {
        s.panel_open = -1;
        const Answer a = port.message_box("Search paused", Buttons::ok_cancel, Icon::none, "TOBEL-3");
        if (a == Answer::ok)
            search_continue(p);
        else
            search_exit(p);
        if (s.pause_flag == -1) {
            s.pause_flag = 0;
            s.panel_open = -1;
        } else {
            s.search_abort = -1;
        }
    }
    return s.search_abort != 0;
}

} // namespace tobel
