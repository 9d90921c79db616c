#include "search/trial.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>

#include "project/numtext.h"
#include "project/runtime_error.h"
#include "search/recording_port.h"
#include "solver/bishop_janbu.h"
#include "solver/checks.h"
#include "solver/spencer_mp.h"
#include "solver/validity.h"
#include "surfaces/crack.h"
#include "surfaces/ellipsoid.h"
#include "surfaces/trial_region.h"
#include "surfaces/wedges.h"

namespace tobel {

void init_search(Project& p)
{
    SearchState& s = p.search;
    s.trial = SearchRecord{};
    s.best = SearchRecord{};
    s.best_valid = SearchRecord{};
    start_counts(s);
    s.radius_step_count = 1;
}

void start_counts(SearchState& s)
{
    s.trial_count = 0;
    s.solved_surfaces = 0;
    s.solved_columns = 0;
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

// The row of the mesh whose trace the search picture draws.
static int trace_row(const Project& p)
{
    return std::min<int>(p.view_row < 1 ? 1 : p.view_row, p.num_rows);
}

static std::vector<float> trace_of(Project& p)
{
    std::vector<float> t;
    const int r = trace_row(p);
    if (r < 1 || p.num_cols < 1)
        return t;
    t.resize(std::size_t(p.num_cols) + 1, 0.0f);
    p.zgrid.take_rows(r, r);
    for (int c = 1; c <= p.num_cols; ++c)
        t[std::size_t(c)] = p.zgrid(r, c, p.sliding_index);
    return t;
}

static void put_trace(Project& p, const std::vector<float>& t)
{
    const int r = trace_row(p);
    p.zgrid.take_rows(r, r);
    for (int c = 1; c <= p.num_cols; ++c)
        p.zgrid(r, c, p.sliding_index) = t[std::size_t(c)];
}

// Trial markers and traces belong to the search picture, drawn by the
// port's hooks; the search keeps their count. The best trial so far is
// drawn once more, tentatively. A trial evaluated elsewhere brings its trace,
// which stands in the sliding plane while the hooks draw it.
static void plot_trial(Project& p, Port& port, const RecordedTrial& rt, float plot_a, float plot_b,
                       bool best_so_far)
{
    ++p.search.plot_count;
    DrawHooks* const hooks = port.draw_hooks();
    if (hooks == nullptr)
        return;
    const bool swap = trace_row(p) >= 1 && rt.trace.size() == std::size_t(p.num_cols) + 1;
    std::vector<float> kept;
    if (swap) {
        kept = trace_of(p);
        put_trace(p, rt.trace);
    }
    hooks->trial_recorded(p, plot_a, plot_b, false);
    if (best_so_far)
        hooks->trial_recorded(p, plot_a, plot_b, true);
    if (swap)
        put_trace(p, kept);
}

// Builds, checks and (when in bounds) solves the trial surface on the
// working project w. False when the surface is out of bounds.
static bool solve_surface(Project& w, Port& port, float y, float z, float radius)
{
    w.ell_y = y;
    w.ell_z = z;
    w.ell_radius = radius;
    build_trial_surface(w);
    check_surface(w);
    if (w.surface_out_flag == -1)
        return false;
    w.solve_interactive = 0;
    try {
        if (w.solution_method == 3 || w.solution_method == 4)
            solve_spencer_mp(w, port);
        else
            solve_bishop_janbu(w, port);
    } catch (const RuntimeError&) {
        // A run-time failure of one solution fails that trial, as F = 0.
        w.factor_of_safety = 0;
    }
    return true;
}

// The trial record the last solve of w gives.
static RecordedTrial trial_of(Project& w, float y, float z, float radius, float plot_a, bool trace)
{
    RecordedTrial t;
    t.fos = w.factor_of_safety;
    t.y = y;
    t.z = z;
    t.radius = radius;
    t.volume = w.slide_volume;
    t.active = float(w.active_columns);
    t.third = plot_a;
    t.unbalance = w.lateral_unbalance;
    t.weight = w.slide_weight;
    // The rows the tests of the result read (all of them once the record is lost).
    const NodeBox rr = result_region(w);
    w.zgrid.take_rows(rr.r0, rr.r1);
    t.valid = result_flaw(w) == ResultFlaw::none ? -1 : 0;
    if (trace)
        t.trace = trace_of(w);
    return t;
}

void record_trial(Project& p, Port& port, const RecordedTrial& rt, float plot_a, float plot_b)
{
    SearchState& s = p.search;
    if (s.trial_count == 32767)
        throw RuntimeError(err_overflow, "trial count of the search");
    ++s.trial_count;
    SearchRecord& t = s.trial;
    t.fos = rt.fos;
    t.trial_number = s.trial_count;
    t.y = rt.y;
    t.z = rt.z;
    t.radius = rt.radius;
    t.volume = rt.volume;
    t.active = rt.active;
    t.third = rt.third;
    t.unbalance = rt.unbalance;
    t.weight = rt.weight;
    t.valid = rt.valid;
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
    plot_trial(p, port, rt, plot_a, plot_b, best_so_far);
}

// Shows the boxes of an evaluation on the user's port.
static void show_boxes(Port& port, const std::vector<CentreEvent>& events)
{
    for (const CentreEvent& e : events)
        if (e.is_box)
            port.message_box(e.box.text, e.box.buttons, e.box.icon, e.box.title);
}

void evaluate_trial(Project& p, Port& port, float y, float z, float radius, float plot_a, float plot_b,
                    int mode)
{
    if (mode != trial_record_only) {
        std::atomic<bool> cancel{false};
        RecordingPort quiet(cancel, &port);
        std::vector<CentreEvent> boxes;
        quiet.events = &boxes;
        const bool in = solve_surface(p, quiet, y, z, radius);
        show_boxes(port, boxes);
        if (!in)
            return;
        // A solution cut short by Stop is not a result.
        if (quiet.cancelled()) {
            p.search.search_abort = -1;
            return;
        }
    } else {
        p.ell_y = y;
        p.ell_z = z;
        p.ell_radius = radius;
    }
    if (mode == trial_solve_only)
        return;
    record_trial(p, port, trial_of(p, y, z, radius, plot_a, false), plot_a, plot_b);
}

// A radius of the line search: z - tangent_z + steps * radius_step, in single.
static float stepped_radius(float z, float tangent_z, float steps_times_step)
{
    return float(double(z) - double(tangent_z) + double(steps_times_step));
}

// True when the last solve of w was in bounds and beat F of the centre's
// record; with valid results only, it must also be valid.
static bool improves(const Project& w, float record_fos)
{
    if (w.search.valid_only && result_flaw(w) != ResultFlaw::none)
        return false;
    return w.surface_out_flag != -1 && w.factor_of_safety < record_fos;
}

bool trial_may_be_best(const SearchState& s)
{
    return !s.valid_only || s.trial.valid != 0;
}

namespace {

// One centre under evaluation on a working project: its job, what it has
// recorded so far, and F of its trial record.
struct CentreRun {
    Project& w;
    RecordingPort& port;
    CentreOutcome& o;
    const CentreJob& job;
    bool traces;
    float record_fos = 0;

    enum Solved { solved, out, cancelled };
    Solved solve(float radius)
    {
        const bool in = solve_surface(w, port, job.y, job.z, radius);
        // A solve cut short by Stop counts too: its time was spent.
        if (in) {
            ++o.solved;
            o.solved_columns += double(w.active_columns);
        }
        if (port.cancelled()) {
            o.cancelled = true;
            return cancelled;
        }
        return in ? solved : out;
    }
    void record(float radius)
    {
        CentreEvent e;
        e.trial = trial_of(w, job.y, job.z, radius, job.plot_a, traces);
        record_fos = e.trial.fos;
        o.events.push_back(std::move(e));
    }
};

// Steps 5 and 6 of a centre: one step either way, then on in the direction
// that improved while F keeps falling.
void step_radius_run(CentreRun& c)
{
    const float z = c.job.z, tangent_z = c.job.tangent_z, step = c.job.radius_step;
    bool improved = false;
    float r = stepped_radius(z, tangent_z, step);
    if (c.solve(r) == CentreRun::cancelled)
        return;
    if (improves(c.w, c.record_fos)) {
        c.record(r);
        c.o.radius_direction = 1;
        improved = true;
    }
    // This test sees the first success, and wins if it is lower still.
    r = stepped_radius(z, tangent_z, -step);
    if (c.solve(r) == CentreRun::cancelled)
        return;
    if (improves(c.w, c.record_fos)) {
        c.record(r);
        c.o.radius_direction = -1;
        improved = true;
    }
    if (!improved)
        return;
    c.o.stepped = true;
    c.o.radius_step_count = 2;
    for (;;) {
        // Between steps only a Stop is looked at; a pause waits for the next centre.
        if (c.port.yield()) {
            c.o.cancelled = true;
            return;
        }
        const float steps = float(c.o.radius_step_count * c.o.radius_direction) * step;
        r = stepped_radius(z, tangent_z, steps);
        if (c.solve(r) == CentreRun::cancelled)
            return;
        if (!improves(c.w, c.record_fos))
            break;
        c.record(r);
        ++c.o.radius_step_count;
    }
}

void keep_error(CentreOutcome& o)
{
    o.error = std::current_exception();
    try {
        throw;
    } catch (const RuntimeError& e) {
        o.error_number = e.number();
        o.error_description = e.description();
    } catch (...) {
        o.error_number = 0;
    }
}

} // namespace

CentreOutcome evaluate_centre_outcome(Project& w, RecordingPort& port, const CentreJob& job, bool traces)
{
    CentreOutcome o;
    o.index = job.index;
    port.events = &o.events;
    try {
        CentreRun c{w, port, o, job, traces};
        // 1. Tangent to the plane, or through the common point.
        float radius = 0;
        if (common_point_mode(w)) {
            const double dz = double(job.z) - double(job.point_z), dy = double(job.y) - double(job.point_y);
            radius = float(std::sqrt(dz * dz + dy * dy));
        } else {
            radius = float(double(job.z) - double(job.tangent_z));
        }
        // 3. (2, the pause, is the search's, before the centre.)
        const CentreRun::Solved first = c.solve(radius);
        if (first == CentreRun::solved) {
            c.record(radius);
            // 4. Either common point option holds the radius, whatever the search.
            if (job.radius_step != 0 && w.grid_use_common == 0 && w.auto_use_common == 0)
                step_radius_run(c); // 5, 6.
        } else if (first == CentreRun::out) {
            o.out = true;
        }
    } catch (...) {
        keep_error(o);
    }
    port.events = nullptr;
    return o;
}

void replay_centre(Project& p, Port& port, const CentreOutcome& o, float plot_a, float plot_b)
{
    SearchState& s = p.search;
    s.solved_surfaces += o.solved;
    s.solved_columns += o.solved_columns;
    for (const CentreEvent& e : o.events) {
        if (e.is_box)
            port.message_box(e.box.text, e.box.buttons, e.box.icon, e.box.title);
        else
            record_trial(p, port, e.trial, plot_a, plot_b);
    }
    if (o.error)
        std::rethrow_exception(o.error);
    if (o.error_number != 0)
        throw RuntimeError(o.error_number, o.error_description, true);
    if (o.cancelled) {
        s.search_abort = -1;
        return;
    }
    p.surface_out_flag = o.out ? -1 : 0;
    if (o.stepped) {
        s.radius_direction = o.radius_direction;
        s.radius_step_count = o.radius_step_count;
    }
}

void step_radius(Project& p, Port& port, float y, float z, float tangent_z, float radius_step, float plot_a,
                 float plot_b)
{
    CentreJob job;
    job.y = y;
    job.z = z;
    job.tangent_z = tangent_z;
    job.radius_step = radius_step;
    job.plot_a = plot_a;
    job.plot_b = plot_b;
    CentreOutcome o;
    std::atomic<bool> cancel{false};
    RecordingPort quiet(cancel, &port);
    quiet.events = &o.events;
    try {
        CentreRun c{p, quiet, o, job, false};
        c.record_fos = p.search.trial.fos;
        step_radius_run(c);
    } catch (...) {
        keep_error(o);
    }
    replay_centre(p, port, o, plot_a, plot_b);
}

void evaluate_centre(Project& p, Port& port, float y, float z, float point_y, float point_z, float tangent_z,
                     float radius_step, float plot_a, float plot_b)
{
    // 2.
    if (search_check_pause(p, port))
        return;
    CentreJob job{0, y, z, point_y, point_z, tangent_z, radius_step, plot_a, plot_b};
    std::atomic<bool> cancel{false};
    RecordingPort quiet(cancel, &port);
    const CentreOutcome o = evaluate_centre_outcome(p, quiet, job, false);
    replay_centre(p, port, o, plot_a, plot_b);
}

// Why trials of this project depend on the trial before them, so that a
// centre gives the same result only after the centres before it; empty when
// every centre stands alone.
std::string carried_state_reason(const Project& p)
{
    for (int m = 1; m <= material_capacity; ++m)
        if (p.mat_type[std::size_t(m)] == 4)
            return "a hard layer keeps at each node the strength of the trial before";
    if (p.solution_method == 3 || p.solution_method == 4)
        for (int m = 1; m <= material_capacity; ++m)
            if (p.mat_type[std::size_t(m)] == 3)
                return "a non-linear base is linearised at the normal stresses of the trial before";
    if (p.crack_mode == 2)
        return "a tension crack placed by depth stays where the trial before put it when none is deep "
               "enough";
    return {};
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
