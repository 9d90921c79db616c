// The shipped 2-D example: the auto search and a fine grid search find the
// same critical circle, and its F agrees with Bishop's method worked out
// independently on slices of that circle.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "commands/commands.h"
#include "commands/search_commands.h"
#include "support/bishop_slices.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

void open_example(Project& p, test::ScriptedPort& port)
{
    main_load(p);
    p.data_file_path = test::example_path("slope2d-homogeneous.tob");
    p.open_recent_pending = -1;
    file_open(p, port);
    ASSERT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    p.solution_method = 1;
}

// The textbook factor of a circle on the mesh's own slices and as a continuum.
void check_against_slices(const SearchRecord& best, const char* what)
{
    const test::Circle k{best.y, best.z, best.radius};
    const double phi = 20 * 3.14 / 180; // the program's degrees pass through 3.14 / 180
    std::vector<double> nodes;
    for (int j = 0; j < 201; ++j)
        nodes.push_back(0.5 * j);
    const double same = test::textbook_bishop(k, 10, phi, 20, nodes, 0.5);
    std::vector<double> fine;
    for (int j = 0; j < 100000; ++j)
        fine.push_back(0.001 * (j + 0.5));
    const double continuum = test::textbook_bishop(k, 10, phi, 20, fine, 0.001);
    EXPECT_NEAR(best.fos, same, 0.003) << what;
    EXPECT_NEAR(best.fos / continuum, 1.0, 0.01) << what;
    std::printf("%s: centre (%.2f, %.2f) radius %.2f, F = %.4f; slices %.4f, continuum %.4f, %d trials\n",
                what, double(best.y), double(best.z), double(best.radius), double(best.fos), same, continuum,
                int(best.trial_number));
}

TEST(example_search, auto_and_fine_grid_search_agree_with_independent_bishop)
{
    Project a;
    test::ScriptedPort pa;
    open_example(a, pa);
    a.auto_y = 45;
    a.auto_z = 50;
    a.auto_spacing = 2;
    a.tangent_z = 10;
    a.auto_tan_spacing = 1;
    a.aspect_in = 1;
    a.search_x = 0;
    ASSERT_TRUE(solve_auto_search(a, pa));
    const SearchRecord auto_best = a.search.best;
    check_against_slices(auto_best, "auto search");

    Project g;
    test::ScriptedPort pg;
    open_example(g, pg);
    // Centres 1 apart around the auto search's result.
    g.grid_y_ul = std::round(auto_best.y) - 8;
    g.grid_y_lr = std::round(auto_best.y) + 8;
    g.grid_z_ul = std::round(auto_best.z) + 8;
    g.grid_z_lr = std::round(auto_best.z) - 8;
    g.grid_n_y = 17;
    g.grid_n_z = 17;
    g.tangent_z = 10;
    g.grid_tan_spacing = 1;
    g.aspect_in = 1;
    g.search_x = 0;
    ASSERT_TRUE(solve_grid_search(g, pg));
    const SearchRecord grid_best = g.search.best;
    check_against_slices(grid_best, "grid search");

    EXPECT_NEAR(auto_best.fos / grid_best.fos, 1.0, 0.01);
    // The grid is finer, so it can only do as well or better than a point of it.
    EXPECT_LE(grid_best.fos, auto_best.fos + 0.002f);
    // The final solve of the tentative surface gives the best record's F.
    EXPECT_TRUE(solve_final_surface(g, pg));
    EXPECT_NEAR(g.factor_of_safety, grid_best.fos, 1e-6);
}

} // namespace
} // namespace tobel
