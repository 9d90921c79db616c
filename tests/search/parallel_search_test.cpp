// Searches on several threads: the same best record, summary table, boxes,
// progress lines and picture calls as on one thread; a project whose trials
// depend on the trial before is searched on one thread and says why; Stop
// during a parallel search ends it cleanly.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/search_commands.h"
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

// Everything a search shows or keeps, as one comparable text.
struct SearchTrace {
    std::string best, summary, boxes, progress, hooks, reason, stop;
};

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
             std::to_string(s.fos_max) + " best_trial " + std::to_string(s.best_trial);
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

// A search of an example on `threads` threads; `change` may alter the
// project once it is open.
SearchTrace search(const std::string& name, int method, Kind kind, int threads,
                   void (*change)(Project&) = nullptr, int stop_after_yields = -1)
{
    Project p;
    HookedPort port;
    open_example(p, port, name, method);
    if (change != nullptr)
        change(p);
    if (threads > 1)
        p.search.runner = std::make_shared<TbbRunner>(threads);
    port.stop_after_yields = stop_after_yields;
    if (kind == Kind::grid)
        solve_grid_search(p, port);
    else
        solve_auto_search(p, port);
    return trace_of(p, port);
}

void expect_same(const SearchTrace& a, const SearchTrace& b, int threads)
{
    EXPECT_EQ(a.best, b.best) << threads << " threads";
    EXPECT_EQ(a.summary, b.summary) << threads << " threads";
    EXPECT_EQ(a.boxes, b.boxes) << threads << " threads";
    EXPECT_EQ(a.progress, b.progress) << threads << " threads";
    EXPECT_EQ(a.hooks, b.hooks) << threads << " threads";
    EXPECT_EQ(b.reason, "") << threads << " threads";
}

void check_thread_counts(const std::string& name, int method, Kind kind)
{
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
