// What a critical surface search keeps in the project: the last trial and the
// best one, the summary table, the range and class of F, the work lists of
// the grid and auto searches, and the flags of the progress panel.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tobel {

// Given by the program that runs a search (search/parallel_runner.h,
// search/centre_outcome.h); the project only holds them.
class ParallelRunner;
class CentreExchange;

// One recorded trial surface. The best record also keeps the stencil point
// that won in the current auto search round.
struct SearchRecord {
    float fos = 0;
    std::int16_t trial_number = 0;
    float y = 0, z = 0, radius = 0;
    float volume = 0;    // slide_volume
    float active = 0;    // active_columns
    float third = 0;     // first plot argument of the trial (the caller's spacing)
    float unbalance = 0; // lateral_unbalance
    float weight = 0;    // slide_weight
    std::int16_t best_point = 0;
    // Whether the trial's result is valid (-1): a finite F above 0 of a
    // slide that has active columns and moves down the slope. Kept beside
    // the classic fields; the classic comparisons never read it.
    std::int16_t valid = 0;
};

// Upper limits of the nine classes of F, as singles: a value belongs to the
// first class whose limit it does not pass (under 0, up to 0.5, ... up to 3),
// the ninth holds what is above 3.
constexpr std::array<float, 8> fos_class_limits = {0.0f, 0.5f, 1.0f, 1.2f, 1.4f, 1.8f, 2.3f, 3.0f};

struct SearchState {
    SearchRecord trial; // the last trial
    SearchRecord best;
    std::int16_t trial_count = 0;
    // Every surface the search has solved, recorded as a trial or not, and
    // their active columns: what its time goes on. Not in project files
    // and not shown; the parts of a sharded search carry them.
    std::int64_t solved_surfaces = 0;
    double solved_columns = 0;
    std::int16_t radius_step_count = 0;
    std::int16_t radius_direction = 1;

    // Summary table by trial_number (index 0 unused); summary_count is the
    // last number recorded, best_trial the number of the best record.
    std::vector<float> summary_fos, summary_y, summary_z, summary_radius, summary_volume;
    std::int16_t summary_count = 0;
    std::int16_t best_trial = 0;
    std::vector<std::int16_t> summary_valid; // the record's `valid`, by trial_number

    // The lowest valid trial of the search, whatever the best record is.
    SearchRecord best_valid;
    // Chosen by the user, off by default: trials that are not valid never
    // become the best record (and no radius step that is not valid improves
    // a centre), so the walk goes on from the best valid centre. A departure
    // from the classic search, where a failed trial (F = 0) wins.
    bool valid_only = false;
    // How the centres are evaluated: by the runner's threads (none: on the
    // calling thread), and for a grid search shared among several runs, the
    // exchange of the centres' outcomes. Choices of the user, like valid_only.
    std::shared_ptr<ParallelRunner> runner;
    std::shared_ptr<CentreExchange> exchange;
    // Why the last search ran on one thread though the runner has more;
    // empty when it did not.
    std::string serial_reason;
    // Why the last search ended before its natural end: empty when it ran to
    // its end; "stopped by the user", or the run-time error that ended it.
    std::string stop_reason;

    // Range of F over the search; the first recorded trial sets both ends.
    float fos_max = 0, fos_min = 0;
    std::int16_t fos_range_set = 0;
    std::array<std::int16_t, 9> fos_class{}; // -1 for the class of the last trial

    // Flags: pause requested by the panel, stop requested, a search under way,
    // the final drawing of the best surface made.
    std::int16_t pause_flag = 0;
    std::int16_t search_abort = 0;
    std::int16_t running = 0;
    std::int16_t final_drawing = 0;
    std::int16_t mode = 0; // 9 grid search, 10 auto search: the last one started

    // Grid search: the centres, top line first, and the last index in use.
    std::vector<float> point_y, point_z;
    long point_last = -1;
    float grid_dy = 0, grid_dz = 0;

    // Auto search: the stencil around the current centre and what to skip.
    std::array<float, 9> stencil_y{}, stencil_z{};
    std::int16_t skip_from = 0, skip_to = 0;
    std::int16_t current_point = 0;
    std::int32_t round = 0;

    // Trial markers drawn on the search picture.
    std::int32_t plot_count = 0;

    // The progress panel (tob_searchinfo): its first button's caption,
    // whether "Summary of Factors of Safety" shows, its lines, and where it
    // stands over the search picture as fractions of its width and height.
    std::string panel_caption = "Pause";
    std::int16_t summary_visible = 0;
    std::int16_t panel_open = 0;
    std::vector<std::string> panel_lines;
    float panel_left = 0, panel_top = 0;
};

// Clears everything a new project must not inherit from a search: records,
// counters, the summary, the range, the flags, the centre list and the plot count.
void clear_search(SearchState& s);

} // namespace tobel
