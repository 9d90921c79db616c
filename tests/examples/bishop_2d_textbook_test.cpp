// The shipped 2-D example against Bishop's simplified method worked out
// independently: vertical slices of a circle through the homogeneous slope,
// F = sum((c b + W tan phi) / m_alpha) / sum(W sin alpha), with
// m_alpha = cos alpha + sin alpha tan phi / F, iterated to a fixed point.
#include <gtest/gtest.h>

#include <cmath>

#include "dialogs/ellipsoid_form.h"
#include "commands/commands.h"
#include "solver/bishop_janbu.h"
#include "support/bishop_slices.h"
#include "support/paths.h"
#include "support/scripted_port.h"

namespace tobel {
namespace {

using test::Circle;
using test::textbook_bishop;

TEST(example_2d, bishop_matches_independent_slice_calculation)
{
    Project p;
    main_load(p);
    test::ScriptedPort port;
    p.data_file_path = test::example_path("slope2d-homogeneous.tob");
    p.open_recent_pending = -1;
    file_open(p, port);
    ASSERT_TRUE(port.boxes.empty()) << port.boxes.front().text;
    continue_ellipsoid_form(p, open_ellipsoid_form(p), port);
    p.solution_method = 1;
    p.solve_interactive = 0;
    solve_bishop_janbu(p, port);

    const Circle k{45, 50, 40};
    // The program's friction angle passes through 3.14 / 180, on purpose.
    const double phi = 20 * 3.14 / 180;
    // Same slices as the mesh columns: 201 nodes 0.5 apart.
    std::vector<double> nodes;
    for (int j = 0; j < 201; ++j) nodes.push_back(0.5 * j);
    const double same_slices = textbook_bishop(k, 10, phi, 20, nodes, 0.5);
    // The program stops when two iterates are within 0.002.
    EXPECT_NEAR(p.factor_of_safety, same_slices, 0.003);
    // A fine division of the same circle: the continuum value.
    std::vector<double> fine;
    for (int j = 0; j < 100000; ++j) fine.push_back(0.001 * (j + 0.5));
    const double continuum = textbook_bishop(k, 10, phi, 20, fine, 0.001);
    EXPECT_NEAR(p.factor_of_safety / continuum, 1.0, 0.01);
    std::printf("2-D example: program F = %.4f, same slices %.4f, continuum %.4f\n", p.factor_of_safety,
                same_slices, continuum);
}

} // namespace
} // namespace tobel
