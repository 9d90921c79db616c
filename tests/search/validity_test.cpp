// Whether a solved trial is a valid result, on the search slope and on
// surfaces that give meaningless factors.
#include <gtest/gtest.h>

#include <limits>

#include "search/trial.h"
#include "search_fixture.h"
#include "solver/validity.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::make_search_slope;
using test::ScriptedPort;

// Solves the ellipsoid of centre (y, z) and radius r as a search trial does.
void solve_circle(Project& p, float y, float z, float r)
{
    ScriptedPort port;
    init_search(p);
    evaluate_trial(p, port, y, z, r, 1, 1, trial_solve_only);
}

TEST(result_validity, a_circle_through_the_slope_is_valid)
{
    auto p = make_search_slope();
    solve_circle(*p, 45, 50, 40);
    ASSERT_GT(p->factor_of_safety, 0.5f);
    EXPECT_EQ(result_flaw(*p), ResultFlaw::none);
    EXPECT_GT(driving_direction(*p), 0.5);
}

TEST(result_validity, a_slope_drawn_with_its_toe_towards_plus_y_moves_the_wrong_way)
{
    auto p = make_search_slope();
    // The same slope mirrored about Y = 50: toe at high Y.
    for (int j = 1; j <= p->num_cols; ++j)
        p->zgrid(1, j, 1) = float(test::example_2d_ground(100.0 - double(j - 1) * p->col_spacing));
    solve_circle(*p, 55, 50, 40);
    EXPECT_EQ(result_flaw(*p), ResultFlaw::moves_towards_plus_y) << p->factor_of_safety;
    EXPECT_LT(driving_direction(*p), -0.5);
    EXPECT_NE(result_flaw_text(ResultFlaw::moves_towards_plus_y).find("Mirror"), std::string::npos);
}

TEST(result_validity, a_lens_in_flat_ground_has_no_driving_weight)
{
    auto p = make_search_slope();
    for (int j = 1; j <= p->num_cols; ++j)
        p->zgrid(1, j, 1) = 30;
    solve_circle(*p, 50, 40, 15); // symmetric about Y = 50
    EXPECT_EQ(result_flaw(*p), ResultFlaw::no_driving_force) << p->factor_of_safety;
    EXPECT_NEAR(driving_direction(*p), 0.0, 0.02);
}

TEST(result_validity, a_surface_above_the_ground_is_outside_the_geometry)
{
    auto p = make_search_slope();
    solve_circle(*p, 50, 90, 10);
    EXPECT_EQ(result_flaw(*p), ResultFlaw::outside_geometry);
    EXPECT_EQ(driving_direction(*p), 0.0);
}

TEST(result_validity, a_failed_solution_is_not_valid)
{
    auto p = make_search_slope(51, 10, 20, std::numeric_limits<float>::quiet_NaN());
    solve_circle(*p, 45, 50, 40);
    EXPECT_EQ(p->factor_of_safety, 0.0f);
    // The weights are not numbers, so the direction cannot be judged either;
    // a failed solution is never valid whichever flaw is named first.
    EXPECT_NE(result_flaw(*p), ResultFlaw::none);
}

TEST(result_validity, a_negative_or_infinite_factor_is_not_valid)
{
    auto p = make_search_slope();
    solve_circle(*p, 45, 50, 40);
    p->factor_of_safety = -0.98f;
    EXPECT_EQ(result_flaw(*p), ResultFlaw::negative);
    p->factor_of_safety = std::numeric_limits<float>::infinity();
    EXPECT_EQ(result_flaw(*p), ResultFlaw::not_finite);
    p->factor_of_safety = 0;
    EXPECT_EQ(result_flaw(*p), ResultFlaw::failed);
    p->factor_of_safety = 1.2f;
    p->active_columns = 0;
    EXPECT_EQ(result_flaw(*p), ResultFlaw::no_active_column);
}

} // namespace
} // namespace tobel
