// The search across the slope: the X values of a range, the best of the set,
// the totals in 32 bits, each search equal to the classic search at its X and
// aspect, and the same result whatever order or threads the searches run on.
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "commands/across_search.h"
#include "commands/search_commands.h"
#include "commands/surface_commands.h"
#include "graphics/across_plot.h"
#include "graphics/recording_surface.h"
#include "search/search_fixture.h"
#include "support/scripted_port.h"

using namespace tobel;

namespace {

// The slope of the search tests extruded across X: 21 rows over X 0..100,
// the same section in every row, so that nothing but the ellipsoid's own
// shape varies across.
std::unique_ptr<Project> extruded_slope()
{
    auto p = test::make_search_slope(26);
    auto q = std::make_unique<Project>(*p);
    q->num_rows = 21;
    q->x_max = 100;
    redim_grids(*q);
    q->row_spacing = 5;
    for (int i = 1; i <= q->num_rows; ++i)
        for (int j = 1; j <= q->num_cols; ++j)
            q->zgrid(i, j, 1) = p->zgrid(1, j, 1);
    // Three by three centres around the critical circle of the section,
    // radius tangent to Z 10 and stepped by 4.
    GridSearchRecord r = test::grid(26, 38, 66, 54, 3, 3, 10, 4);
    r.grid_x = 50;
    r.grid_aspect = 1;
    store_grid_record(*q, r);
    return q;
}

AcrossPlan plan_of(float x0, float x1, float dx, std::vector<float> aspects)
{
    AcrossPlan s;
    s.x0 = x0;
    s.x1 = x1;
    s.dx = dx;
    s.aspects = std::move(aspects);
    s.grid = true;
    return s;
}

// Every task on its own thread, started last to first.
class ThreadEach : public ParallelRunner {
  public:
    int threads() const override { return 64; }
    void run(int n, const std::function<void(int)>& task) override
    {
        std::vector<std::thread> pool;
        for (int i = n; i-- > 0;)
            pool.emplace_back([&task, i] { task(i); });
        for (std::thread& t : pool)
            t.join();
    }
};

// The default runner: one task after the other.
ParallelRunner one_by_one;

bool same_record(const SearchRecord& a, const SearchRecord& b)
{
    return a.fos == b.fos && a.trial_number == b.trial_number && a.y == b.y && a.z == b.z &&
           a.radius == b.radius && a.volume == b.volume && a.valid == b.valid;
}

} // namespace

TEST(AcrossValues, a_range_ends_on_its_last_value_whatever_the_rounding_of_the_step)
{
    // 0.1 is not exact in binary: ten steps of it come to 1 only within rounding.
    const std::vector<float> xs = across_values(0, 1, 0.1f);
    ASSERT_EQ(xs.size(), 11u);
    EXPECT_EQ(xs.front(), 0.0f);
    EXPECT_FLOAT_EQ(xs[3], 0.3f);
    EXPECT_FLOAT_EQ(xs.back(), 1.0f);
}

TEST(AcrossValues, each_value_comes_from_the_start_and_its_index)
{
    EXPECT_EQ(across_values(0, 10, 2.5f), (std::vector<float>{0, 2.5f, 5, 7.5f, 10}));
    // 10 is not reached by steps of 3 from 0: the range stops at 9.
    EXPECT_EQ(across_values(0, 10, 3), (std::vector<float>{0, 3, 6, 9}));
}

TEST(AcrossValues, one_x_needs_no_step_and_a_reversed_or_stepless_range_is_empty)
{
    EXPECT_EQ(across_values(5, 5, 0), (std::vector<float>{5}));
    EXPECT_TRUE(across_values(1, 0, 1).empty());
    EXPECT_TRUE(across_values(0, 1, 0).empty());
    EXPECT_TRUE(across_values(0, 1, -1).empty());
}

TEST(AcrossPairs, the_aspects_vary_within_each_x)
{
    const auto pairs = across_pairs(plan_of(10, 20, 10, {1, 2, 3}));
    ASSERT_EQ(pairs.size(), 6u);
    EXPECT_EQ(pairs[0], std::make_pair(10.0f, 1.0f));
    EXPECT_EQ(pairs[2], std::make_pair(10.0f, 3.0f));
    EXPECT_EQ(pairs[3], std::make_pair(20.0f, 1.0f));
}

TEST(AcrossBest, the_lowest_f_wins_the_first_of_equal_ones_and_empty_searches_take_no_part)
{
    std::vector<AcrossCell> cells(4);
    cells[0].best.fos = 0.9f; // no record: trial_number 0, never the best
    cells[1].best.fos = 1.4f;
    cells[1].best.trial_number = 3;
    cells[2].best.fos = 1.2f;
    cells[2].best.trial_number = 7;
    cells[3].best.fos = 1.2f;
    cells[3].best.trial_number = 2;
    EXPECT_EQ(best_across_cell(cells), 2);
    EXPECT_EQ(best_across_cell(std::vector<AcrossCell>(2)), -1);
}

TEST(AcrossTotals, trials_of_all_the_searches_are_counted_past_the_16_bit_limit)
{
    AcrossResult r;
    r.cells.resize(3);
    for (AcrossCell& c : r.cells)
        c.trial_count = 30000;
    r.cells[1].stop_reason = "stopped by the user";
    total_across(r);
    EXPECT_EQ(r.trial_count, 90000);
    EXPECT_TRUE(r.stopped);
}

TEST(AcrossSearch, the_search_at_the_stored_x_and_aspect_is_the_classic_search)
{
    const auto base = extruded_slope();
    Project classic = *base;
    test::ScriptedPort port;
    ASSERT_TRUE(confirm_search_setup(classic, port, true, false));
    solve_grid_search(classic, port);
    ASSERT_GT(classic.search.best.trial_number, 0);

    const AcrossResult r = across_search(*base, plan_of(50, 50, 0, {1}), one_by_one);
    ASSERT_EQ(r.cells.size(), 1u);
    EXPECT_TRUE(r.cells[0].set_up);
    EXPECT_TRUE(same_record(r.cells[0].best, classic.search.best));
    EXPECT_EQ(r.cells[0].trial_count, classic.search.trial_count);
    EXPECT_EQ(r.trial_count, classic.search.trial_count);
    EXPECT_EQ(r.best, 0);
}

TEST(AcrossSearch, a_longer_ellipsoid_on_a_uniform_slope_is_less_safe)
{
    // End effects add resistance to a 3-D slide; the longer the slide across
    // a uniform slope, the nearer its F comes to the section's, from above.
    const auto base = extruded_slope();
    const AcrossResult r = across_search(*base, plan_of(50, 50, 0, {1, 2}), one_by_one);
    ASSERT_EQ(r.cells.size(), 2u);
    ASSERT_GT(r.cells[0].best.trial_number, 0);
    ASSERT_GT(r.cells[1].best.trial_number, 0);
    EXPECT_LT(r.cells[1].best.fos, r.cells[0].best.fos);
    EXPECT_EQ(r.best, 1);
}

TEST(AcrossSearch, the_result_is_the_same_whatever_order_and_threads_the_searches_run_on)
{
    const auto base = extruded_slope();
    const AcrossPlan plan = plan_of(30, 70, 20, {1, 1.5f});
    const AcrossResult serial = across_search(*base, plan, one_by_one);
    ThreadEach threads;
    const AcrossResult parallel = across_search(*base, plan, threads);
    ASSERT_EQ(serial.cells.size(), 6u);
    ASSERT_EQ(parallel.cells.size(), 6u);
    for (std::size_t i = 0; i < serial.cells.size(); ++i) {
        EXPECT_EQ(serial.cells[i].x, parallel.cells[i].x);
        EXPECT_EQ(serial.cells[i].aspect, parallel.cells[i].aspect);
        EXPECT_TRUE(same_record(serial.cells[i].best, parallel.cells[i].best)) << "cell " << i;
        EXPECT_EQ(serial.cells[i].trial_count, parallel.cells[i].trial_count);
    }
    EXPECT_EQ(serial.best, parallel.best);
    EXPECT_EQ(serial.trial_count, parallel.trial_count);
    // The slope is the same in every row and X 30 and 70 lie alike about
    // the middle of the mesh: their searches mirror each other.
    for (std::size_t a = 0; a < 2; ++a) {
        const SearchRecord& left = serial.cells[a].best;
        const SearchRecord& right = serial.cells[4 + a].best;
        EXPECT_NEAR(left.fos, right.fos, 1e-4 * double(left.fos)) << "aspect " << a;
        EXPECT_EQ(left.y, right.y);
        EXPECT_EQ(left.z, right.z);
        EXPECT_EQ(left.radius, right.radius);
    }
    // The best of all is the lowest of the cells.
    float lowest = serial.cells[0].best.fos;
    for (const AcrossCell& c : serial.cells)
        lowest = std::min(lowest, c.best.fos);
    EXPECT_EQ(serial.cells[std::size_t(serial.best)].best.fos, lowest);
}

TEST(AcrossSearch, a_stop_request_ends_every_search_as_stopped)
{
    const auto base = extruded_slope();
    AcrossPlan plan = plan_of(40, 60, 20, {1});
    plan.stop_request = [] { return true; };
    const AcrossResult r = across_search(*base, plan, one_by_one);
    ASSERT_EQ(r.cells.size(), 2u);
    EXPECT_TRUE(r.stopped);
    for (const AcrossCell& c : r.cells)
        EXPECT_EQ(c.stop_reason, "stopped by the user");
}

TEST(AcrossPlot, each_aspect_has_its_line_and_the_best_is_named)
{
    AcrossResult r;
    for (const float x : {10.0f, 20.0f, 30.0f})
        for (const float a : {1.0f, 2.0f}) {
            AcrossCell c;
            c.x = x;
            c.aspect = a;
            c.best.trial_number = 1;
            c.best.fos = 1.0f + x / 100 + (a == 2 ? -0.05f : 0.0f);
            r.cells.push_back(c);
        }
    // A search without a result leaves a gap.
    r.cells[2].best.trial_number = 0;
    total_across(r);
    // X 10 with aspect 2: 1 + 0.1 - 0.05.
    ASSERT_EQ(r.best, 1);
    DisplayList list;
    RecordingSurface s(list);
    draw_across_plot(s, r);
    std::vector<std::string> texts;
    for (const DrawItem& item : list.items)
        if (item.op == DrawOp::text)
            texts.push_back(list.texts[item.text]);
    auto has = [&](const std::string& t) { return std::find(texts.begin(), texts.end(), t) != texts.end(); };
    EXPECT_TRUE(has("aspect 1"));
    EXPECT_TRUE(has("aspect 2"));
    EXPECT_TRUE(has("best F 1.050"));
    EXPECT_TRUE(has("X 10, aspect 2"));
}

TEST(AcrossPlot, axis_steps_are_one_two_or_five_times_a_power_of_ten)
{
    EXPECT_DOUBLE_EQ(across_axis_step(40), 10);   // 40 / 5 = 8: the next round step is 10
    EXPECT_DOUBLE_EQ(across_axis_step(5), 1);     // 1 exactly
    EXPECT_DOUBLE_EQ(across_axis_step(0.7), 0.2); // 0.14 -> 0.2
    EXPECT_DOUBLE_EQ(across_axis_step(0), 1);
}
