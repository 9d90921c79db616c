// One trial of a critical surface search: an ellipsoid given by the Y and Z
// of its centre and its radius in the Y-Z plane (X and aspect are ell_x and
// ell_aspect as they stand), built, checked, solved and recorded; the best
// record so far; and the line search of the radius around one centre.
#pragma once

#include <string>
#include <vector>

#include "project/project.h"
#include "search/centre_outcome.h"
#include "search/recording_port.h"
#include "ui/port.h"

namespace tobel {

// Modes of evaluate_trial.
enum TrialMode : int {
    trial_solve_and_record = 0,
    trial_solve_only = 1,
    trial_record_only = 2, // records what the last solve left
};

// Both records cleared, the counts at 0 (start_counts), radius_step_count = 1.
void init_search(Project& p);

// The trials and the surfaces solved counted from 0, as a search starts.
void start_counts(SearchState& s);

// Sets ell_y, ell_z, ell_radius; unless mode 2 builds the surface, checks it
// and (when it is not out of bounds) solves it; unless mode 1 records the
// result as the next trial. A trial out of bounds (surface_out_flag = -1) is
// neither counted nor recorded. plot_a and plot_b are the size of the trial's
// marker on the search picture; plot_a is kept in the record as `third`.
void evaluate_trial(Project& p, Port& port, float y, float z, float radius, float plot_a, float plot_b,
                    int mode);

// The radius line search around a centre whose first trial was recorded:
// one step either way, then on in the direction that improved as long as F
// keeps falling. Every improving step is recorded under its own number.
// Leaves surface_out_flag at 0.
void step_radius(Project& p, Port& port, float y, float z, float tangent_z, float radius_step, float plot_a,
                 float plot_b);

// Everything done at one centre: the starting radius (tangent to tangent_z,
// or through the common point (point_y, point_z) in common point mode), the
// pause check, the first trial and the radius steps. On return
// surface_out_flag = -1 tells that the centre's trial was out of bounds, and
// search.search_abort that the user stopped the search.
void evaluate_centre(Project& p, Port& port, float y, float z, float point_y, float point_z, float tangent_z,
                     float radius_step, float plot_a, float plot_b);

// The evaluation of a centre on a working project w (the user's own on one
// thread, a worker's copy on several): steps 1, 3 to 6 of evaluate_centre,
// with everything the centre would record kept in the outcome instead. The
// port's boxes go into the outcome; a Stop it reports cancels the centre.
// Reads of w: the project, search.valid_only; writes: its working state only.
CentreOutcome evaluate_centre_outcome(Project& w, RecordingPort& port, const CentreJob& job, bool traces);

// Replays an outcome onto the user's project as if the centre had been
// evaluated there: boxes shown, trials recorded (numbers, summary, range and
// classes, panel, progress line, picture hooks), then the run-time error it
// met raised, or search_abort set for a cancelled centre; otherwise
// surface_out_flag and the radius direction and count as the centre left them.
void replay_centre(Project& p, Port& port, const CentreOutcome& o, float plot_a, float plot_b);

// Records a trial: the next trial number (a 16-bit count: its overflow is a
// run-time error), the trial record, the best valid record, the panel and
// progress line, the summary table, the class and range of F, the plot.
void record_trial(Project& p, Port& port, const RecordedTrial& t, float plot_a, float plot_b);

// Why a trial of this project depends on the trials before it (then a
// search must evaluate its centres in order on one project); empty when
// every centre stands alone.
std::string carried_state_reason(const Project& p);

// True unless valid results only are asked for and the trial record is not
// valid: then it may not become the best record.
bool trial_may_be_best(const SearchState& s);

// Copies the trial record into the best record with the stencil point index.
void accept_best(Project& p, long point);

// Builds the best surface again (no solve), shows its record on the panel and
// makes the panel's button "Tentative Critical Surface".
void show_final(Project& p, Port& port, float plot_a, float plot_b);

// True when the search runs in common point mode: the grid search (mode 9)
// with grid_use_common set, or the auto search (mode 10) with auto_use_common.
bool common_point_mode(const Project& p);

// The class of F (0..8) by fos_class_limits, and the update of the class
// flags and of the range fos_min..fos_max.
int fos_class_of(float fos);
void classify_trial(SearchState& s, float fos);

// The panel's lines for a record: "   Ellipsoid #" + Str(number), then F,
// the centre, radius, volume, active columns and the unbalance in per cent of
// the weight.
std::vector<std::string> trial_panel_lines(const SearchRecord& r);
// The same lines joined into one progress line.
std::string trial_progress_line(const SearchRecord& r);

// The panel's buttons. Pause asks the running search to stop before its next
// centre; there the search shows the paused panel through
// port.message_box("Search paused", Buttons::ok_cancel, ...), where OK stands
// for "Continue" and Cancel for "Exit". A window may also call
// search_continue or search_exit itself while the paused panel is up.
void search_pause(Project& p);
void search_continue(Project& p);
void search_exit(Project& p);

// The check made before each centre and each radius step: a Stop reported by
// port.yield(), or a pause answered by Exit, sets search_abort. True when the
// search must end.
bool search_check_pause(Project& p, Port& port);

} // namespace tobel
