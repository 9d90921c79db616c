// Searches on several threads: the same best record, summary table, boxes,
// progress lines and picture calls as on one thread; a project whose trials
// depend on the trial before is searched on one thread and says why; Stop
// during a parallel search ends it cleanly.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "commands/commands.h"
#include "commands/search_commands.h"
#include "commands/surface_commands.h"
#include "search/centre_queue.h"
#include "search/search_setup.h"
#include "search/trial.h"
#include "support/paths.h"
#include "support/scripted_port.h"
#include "tbb_runner.h"

namespace tobel {
namespace {

// Writes down every call of the search's picture hooks with what they see:
// the trial's centre, the marker and the trace of the sliding surface along
// the row the picture shows.
class HookLog : public DrawHooks {
  public:
    std::vector<std::string> calls;
    void trial_recorded(Project& p, float a, float b, bool tentative) override
    {
        std::ostringstream s;
        s.precision(9);
        s << "trial " << p.search.trial.trial_number << " " << p.search.trial.y << " " << p.search.trial.z
          << " " << a << " " << b << " " << tentative << " trace";
        const int r = p.view_row < 1 ? 1 : p.view_row;
        for (int c = 1; c <= p.num_cols; ++c)
            s << " " << p.zgrid(r, c, p.sliding_index);
        calls.push_back(s.str());
    }
    void final_surface(Project& p, float a, float b) override
    {
        std::ostringstream s;
        s << "final " << p.search.best.trial_number << " " << a << " " << b;
        calls.push_back(s.str());
    }
    void search_ended(Project& p) override
    {
        calls.push_back("ended " + std::to_string(p.search.summary_count));
    }
};

class HookedPort : public test::ScriptedPort {
  public:
    HookLog log;
    bool draw = true;
    DrawHooks* draw_hooks() override { return draw ? &log : nullptr; }
};

// Everything a search shows or keeps, as one comparable text; `state` is
// what the user's project holds after it: the working results of the last
// solve, its messages and the sliding plane and dips the search left.
struct SearchTrace {
    std::string best, summary, boxes, progress, hooks, reason, stop, state;
};

// The working projects the runners of the searches below allow: as many as
// asked, more than the cores of the machine, for as long as this lives.
int working_sets_asked = 0;
struct WorkingSets {
    explicit WorkingSets(int n) { working_sets_asked = n; }
    ~WorkingSets() { working_sets_asked = 0; }
    WorkingSets(const WorkingSets&) = delete;
    WorkingSets& operator=(const WorkingSets&) = delete;
};

std::string state_of(const Project& p)
{
    std::ostringstream s;
    s.precision(9);
    s << "F " << p.factor_of_safety << " J " << p.janbu_fos << " V " << p.slide_volume << " W "
      << p.slide_weight << " A " << p.active_columns << " out " << p.surface_out_flag << " messages "
      << p.message_count;
    for (int m = 1; m <= p.message_count; ++m)
        s << " | " << p.message_text[std::size_t(m)];
    double plane = 0, dips = 0;
    for (int r = 1; r <= p.num_rows; ++r)
        for (int c = 1; c <= p.num_cols; ++c) {
            plane += double(p.zgrid(r, c, p.sliding_index));
            dips += double(p.surf_dip_x(r, c)) + double(p.surf_dip_y(r, c));
        }
    s << " plane " << plane << " dips " << dips;
    return s.str();
}

std::string record_text(const SearchRecord& r)
{
    std::ostringstream s;
    s.precision(9);
    s << r.trial_number << " F " << r.fos << " Y " << r.y << " Z " << r.z << " R " << r.radius << " V "
      << r.volume << " A " << r.active << " U " << r.unbalance << " W " << r.weight << " P " << r.best_point
      << " valid " << r.valid;
    return s.str();
}

SearchTrace trace_of(const Project& p, const HookedPort& port)
{
    SearchTrace t;
    const SearchState& s = p.search;
    t.best = record_text(s.best) + " | " + record_text(s.best_valid) + " | count " +
             std::to_string(s.trial_count) + " range " + std::to_string(s.fos_min) + " " +
             std::to_string(s.fos_max) + " best_trial " + std::to_string(s.best_trial) + " solved " +
             std::to_string(s.solved_surfaces) + " columns " + std::to_string(s.solved_columns);
    std::ostringstream sum;
    sum.precision(9);
    for (int n = 1; n <= s.summary_count; ++n) {
        const auto k = std::size_t(n);
        sum << n << " " << s.summary_fos[k] << " " << s.summary_y[k] << " " << s.summary_z[k] << " "
            << s.summary_radius[k] << " " << s.summary_volume[k] << " " << s.summary_valid[k] << "\n";
    }
    t.summary = sum.str();
    for (const auto& b : port.boxes)
        t.boxes += b.title + ": " + b.text + "\n";
    for (const auto& l : port.progress_lines)
        t.progress += l + "\n";
    for (const auto& c : port.log.calls)
        t.hooks += c + "\n";
    t.reason = s.serial_reason;
    t.stop = s.stop_reason;
    t.state = state_of(p);
    return t;
}

void open_example(Project& p, test::ScriptedPort& port, const std::string& name, int method)
{
    main_load(p);
    p.data_file_path = test::example_path(name);
    p.open_recent_pending = -1;
    file_open(p, port);
    ASSERT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    port.boxes.clear();
    p.solution_method = int16(method);
}

enum class Kind { grid, automatic };

// A search of an example with the given runner (none: on one thread);
// `change` may alter the project once it is open.
SearchTrace search_on(const std::shared_ptr<ParallelRunner>& runner, const std::string& name, int method,
                      Kind kind, void (*change)(Project&) = nullptr, int stop_after_yields = -1)
{
    Project p;
    HookedPort port;
    open_example(p, port, name, method);
    if (change != nullptr)
        change(p);
    p.search.runner = runner;
    port.stop_after_yields = stop_after_yields;
    if (kind == Kind::grid)
        solve_grid_search(p, port);
    else
        solve_auto_search(p, port);
    return trace_of(p, port);
}

// The same on `threads` threads, with a runner of its own.
SearchTrace search(const std::string& name, int method, Kind kind, int threads,
                   void (*change)(Project&) = nullptr, int stop_after_yields = -1)
{
    std::shared_ptr<ParallelRunner> runner;
    if (threads > 1)
        runner = std::make_shared<TbbRunner>(threads, working_sets_asked);
    return search_on(runner, name, method, kind, change, stop_after_yields);
}

// Everything but the reason for one thread, which b may give.
void expect_same_results(const SearchTrace& a, const SearchTrace& b, int threads)
{
    EXPECT_EQ(a.best, b.best) << threads << " threads";
    EXPECT_EQ(a.summary, b.summary) << threads << " threads";
    EXPECT_EQ(a.boxes, b.boxes) << threads << " threads";
    EXPECT_EQ(a.progress, b.progress) << threads << " threads";
    EXPECT_EQ(a.hooks, b.hooks) << threads << " threads";
    EXPECT_EQ(a.state, b.state) << threads << " threads";
}

void expect_same(const SearchTrace& a, const SearchTrace& b, int threads)
{
    expect_same_results(a, b, threads);
    EXPECT_EQ(b.reason, "") << threads << " threads";
}

// As many working projects as threads, whatever the cores of the machine.
void check_thread_counts(const std::string& name, int method, Kind kind)
{
    const WorkingSets sets(8);
    const SearchTrace one = search(name, method, kind, 1);
    // A search that recorded and drew nothing would prove nothing. (A grid
    // search with a failed trial, F = 0, ends without a final surface.)
    ASSERT_GT(one.summary.size(), 0u);
    ASSERT_NE(one.hooks.find("trial 1 "), std::string::npos);
    ASSERT_NE(one.hooks.find("ended"), std::string::npos);
    for (int threads : {2, 3, 8})
        expect_same(one, search(name, method, kind, threads), threads);
}

TEST(parallel_search, grid_search_of_2d_example_by_bishop_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope2d-homogeneous.tob", 1, Kind::grid);
}

TEST(parallel_search, auto_search_of_2d_example_by_spencer_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope2d-homogeneous.tob", 3, Kind::automatic);
}

TEST(parallel_search, grid_search_of_2d_example_by_spencer_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope2d-homogeneous.tob", 3, Kind::grid);
}

TEST(parallel_search, grid_search_of_3d_example_by_bishop_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope3d-layers-piezo-force.tob", 1, Kind::grid);
}

TEST(parallel_search, auto_search_of_3d_example_by_bishop_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope3d-layers-piezo-force.tob", 1, Kind::automatic);
}

TEST(parallel_search, grid_search_of_3d_example_by_spencer_is_the_same_on_1_2_3_and_8_threads)
{
    check_thread_counts("slope3d-layers-piezo-force.tob", 3, Kind::grid);
}

// The two-layer slope with a water table made by the New wizard, searched
// with the grid and the auto search set-up of the other 3-D example (whose
// mesh spans the same plan).
void search_like_the_layered_example(Project& p)
{
    Project q;
    test::ScriptedPort port;
    open_example(q, port, "slope3d-layers-piezo-force.tob", 1);
    store_grid_record(p, load_grid_record(q));
    store_auto_record(p, load_auto_record(q));
}

void check_one_and_four(const std::string& name, int method, Kind kind, void (*change)(Project&) = nullptr)
{
    const WorkingSets sets(4);
    const SearchTrace one = search(name, method, kind, 1, change);
    ASSERT_GT(one.summary.size(), 0u);
    ASSERT_NE(one.progress.find("Ellipsoid"), std::string::npos);
    expect_same(one, search(name, method, kind, 4, change), 4);
}

TEST(parallel_search, grid_search_of_the_two_layer_water_table_example_is_the_same_on_1_and_4_threads)
{
    check_one_and_four("slope3d-new-project.tob", 1, Kind::grid, search_like_the_layered_example);
}

TEST(parallel_search, auto_search_of_the_two_layer_water_table_example_is_the_same_on_1_and_4_threads)
{
    check_one_and_four("slope3d-new-project.tob", 1, Kind::automatic, search_like_the_layered_example);
}

TEST(parallel_search, auto_search_of_3d_example_by_spencer_is_the_same_on_1_and_4_threads)
{
    check_one_and_four("slope3d-layers-piezo-force.tob", 3, Kind::automatic);
}

TEST(parallel_search, grid_search_of_3d_example_by_morgenstern_price_is_the_same_on_1_and_4_threads)
{
    check_one_and_four("slope3d-layers-piezo-force.tob", 4, Kind::grid);
}

TEST(parallel_search, grid_search_of_3d_example_by_janbu_is_the_same_on_1_and_4_threads)
{
    check_one_and_four("slope3d-layers-piezo-force.tob", 2, Kind::grid);
}

// The user's project is one of the working projects: after a search on
// several threads it holds what one thread leaves, the results and messages
// of the last centre's last solve, then the final surface.
TEST(parallel_search, a_search_on_four_threads_leaves_the_users_project_as_one_thread_does)
{
    const WorkingSets sets(4);
    const SearchTrace one = search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 1);
    const SearchTrace four = search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 4);
    // A solve was made: F of a solved 3-D trial is not 0.
    ASSERT_EQ(one.state.find("F 0 "), std::string::npos);
    EXPECT_EQ(one.state, four.state);
}

// A 2-D search after a 3-D one (other mesh, other layers) and the 3-D one
// again after it give what one thread gives.
TEST(parallel_search, searches_one_after_another_on_other_projects_are_the_same_as_on_one_thread)
{
    const WorkingSets sets(4);
    const SearchTrace one_3d = search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 1);
    const SearchTrace one_2d = search("slope2d-homogeneous.tob", 3, Kind::grid, 1);
    expect_same(one_3d, search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 4), 4);
    expect_same(one_2d, search("slope2d-homogeneous.tob", 3, Kind::grid, 4), 4);
    expect_same(one_3d, search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 4), 4);
}

// A runner keeps its workers' copies from one search to the next, whatever
// the project: searches one after another with one runner, on another mesh
// and on the same project with weaker soil, give what one thread gives.
TEST(parallel_search, a_runner_keeps_its_copies_for_the_next_search_of_any_project)
{
    const WorkingSets sets(4);
    const std::string s3 = "slope3d-layers-piezo-force.tob", s2 = "slope2d-homogeneous.tob";
    auto weaker = [](Project& p) {
        for (int l = 1; l <= p.num_layers; ++l)
            p.mat_phi[std::size_t(l)] -= 3;
    };
    const SearchTrace one_3d = search(s3, 1, Kind::grid, 1);
    const SearchTrace one_2d = search(s2, 3, Kind::grid, 1);
    const SearchTrace one_weaker = search(s3, 1, Kind::grid, 1, weaker);
    ASSERT_NE(one_3d.best, one_weaker.best);
    auto runner = std::make_shared<TbbRunner>(4, 4);
    expect_same(one_3d, search_on(runner, s3, 1, Kind::grid), 4);
    // The three workers beside the calling thread left their copies.
    ASSERT_EQ(runner->kept_copies.size(), 3u);
    for (const auto& copy : runner->kept_copies)
        EXPECT_NE(copy, nullptr);
    expect_same(one_2d, search_on(runner, s2, 3, Kind::grid), 4);
    expect_same(one_3d, search_on(runner, s3, 1, Kind::grid), 4);
    expect_same(one_weaker, search_on(runner, s3, 1, Kind::grid, weaker), 4);
}

// 16 threads on a machine of fewer cores hold no more working projects than
// the cores: each holds a trial's grids and buffers and only the cores work.
TEST(parallel_search, working_projects_are_the_threads_but_no_more_than_the_limit)
{
    Project p;
    test::ScriptedPort port;
    p.search.runner = std::make_shared<TbbRunner>(16, 2);
    EXPECT_EQ(CentreQueue(p, port).threads(), 16);
    EXPECT_EQ(CentreQueue(p, port).working_sets(), 2);
    p.search.runner = std::make_shared<TbbRunner>(16, 32);
    EXPECT_EQ(CentreQueue(p, port).working_sets(), 16);
    p.search.runner = std::make_shared<TbbRunner>(16);
    EXPECT_EQ(CentreQueue(p, port).working_sets(), std::min(16, all_cores()));
    // A project searched on one thread has one working project, its own.
    p.mat_type[1] = 4;
    EXPECT_EQ(CentreQueue(p, port).working_sets(), 1);
}

// The lower layer of the 3-D example made a hard layer: a node keeps the
// strength the trial before left there.
void make_hard_layer(Project& p)
{
    p.mat_type[1] = 4;
}

TEST(parallel_search, hard_layer_is_searched_on_one_thread_with_the_reason_and_the_same_result)
{
    const SearchTrace one = search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 1, make_hard_layer);
    const SearchTrace four = search("slope3d-layers-piezo-force.tob", 1, Kind::grid, 4, make_hard_layer);
    EXPECT_EQ(one.reason, "");
    EXPECT_EQ(four.reason, "a hard layer keeps at each node the strength of the trial before");
    EXPECT_EQ(one.best, four.best);
    EXPECT_EQ(one.summary, four.summary);
    EXPECT_EQ(one.progress, four.progress);
}

// The examples the tests above leave out, searched as the command line
// searches them (the set-up form confirmed): the published benchmark
// slopes, a crack with water, a general surface, wedges alone and with the
// ellipsoid. Each working copy takes the rows of elevations its trials come
// to from one snapshot; the checked build stops at a row read before it
// was taken.
SearchTrace search_as_stored(const std::string& name, Kind kind, bool composite, int threads)
{
    Project p;
    HookedPort port;
    open_example(p, port, name, 1);
    if (threads > 1)
        p.search.runner = std::make_shared<TbbRunner>(threads, working_sets_asked);
    const bool grid = kind == Kind::grid;
    EXPECT_TRUE(confirm_search_setup(p, port, grid, composite)) << name;
    if (grid)
        solve_grid_search(p, port);
    else
        solve_auto_search(p, port);
    return trace_of(p, port);
}

void check_stored_on_four(const std::string& name, Kind kind, bool composite = false)
{
    SCOPED_TRACE(name + (kind == Kind::grid ? " grid" : " auto") + (composite ? " composite" : ""));
    const WorkingSets sets(4);
    const SearchTrace one = search_as_stored(name, kind, composite, 1);
    ASSERT_GT(one.summary.size(), 0u);
    expect_same_results(one, search_as_stored(name, kind, composite, 4), 4);
}

TEST(parallel_search, the_other_examples_search_the_same_on_1_and_4_threads)
{
    check_stored_on_four("slope2d-acads-1a.tob", Kind::grid);
    check_stored_on_four("slope2d-acads-1a.tob", Kind::automatic);
    check_stored_on_four("slope2d-taylor-phi0.tob", Kind::automatic);
    check_stored_on_four("slope2d-crack-water.tob", Kind::grid);
    check_stored_on_four("slope2d-general.tob", Kind::grid);
    check_stored_on_four("slope2d-wedge-joint.tob", Kind::grid);
    check_stored_on_four("slope2d-wedge-joint.tob", Kind::grid, true);
    check_stored_on_four("slope2d-wedge-joint.tob", Kind::automatic, true);
}

TEST(parallel_search, carried_state_reasons_name_each_case)
{
    Project p;
    EXPECT_EQ(carried_state_reason(p), "");
    p.mat_type[3] = 3; // a non-linear base: only the interslice methods re-linearise from the trial before
    p.solution_method = 1;
    EXPECT_EQ(carried_state_reason(p), "");
    p.solution_method = 4;
    EXPECT_EQ(carried_state_reason(p),
              "a non-linear base is linearised at the normal stresses of the trial before");
    p.mat_type[3] = 1;
    p.crack_mode = 1; // a crack at a fixed Y is the same for every trial
    EXPECT_EQ(carried_state_reason(p), "");
    p.crack_mode = 2;
    EXPECT_NE(carried_state_reason(p), "");
}

// Stop after some yields: the search ends with what it had replayed, which
// is the beginning of the whole search, trial for trial.
TEST(parallel_search, stop_during_a_parallel_search_ends_cleanly_with_a_prefix_of_the_trials)
{
    const SearchTrace whole = search("slope2d-homogeneous.tob", 1, Kind::grid, 1);
    const SearchTrace stopped = search("slope2d-homogeneous.tob", 1, Kind::grid, 2, nullptr, 30);
    EXPECT_EQ(stopped.stop, "stopped by the user");
    EXPECT_GT(stopped.summary.size(), 0u);
    EXPECT_LT(stopped.summary.size(), whole.summary.size());
    EXPECT_EQ(whole.summary.compare(0, stopped.summary.size(), stopped.summary), 0);
    EXPECT_EQ(whole.progress.compare(0, stopped.progress.size(), stopped.progress), 0);
    // No final surface after a Stop.
    EXPECT_EQ(stopped.hooks.find("final"), std::string::npos);
}

} // namespace
} // namespace tobel
