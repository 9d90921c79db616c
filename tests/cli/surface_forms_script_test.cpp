// The surface forms driven by a script, as a user types into them: a wedge
// solved, and a grid search set up and saved for the search command.
#include <gtest/gtest.h>

#include "support/paths.h"
#include "support/run_cli.h"

namespace tobel {
namespace {

using test::run_cli_in;

std::string script(const std::string& name)
{
    return std::string(TOBEL_SOURCE_DIR) + "/examples/scripts/" + name;
}

class surface_forms_script : public ::testing::Test {
  protected:
    void SetUp() override
    {
        for (const char* name : {"slope2d-wedge-joint.tob", "slope2d-homogeneous.tob"})
            test::write_bytes(dir.file(name), test::read_bytes(test::example_path(name)));
        result = run_cli_in(dir.path.string(), "run " + script("wedge-and-grid-search.txt"));
    }
    test::ScratchDir dir;
    test::RunResult result;
};

TEST_F(surface_forms_script, the_wedge_typed_plane_by_plane_solves_to_the_factor_of_the_example)
{
    ASSERT_EQ(result.status, 0) << result.out;
    // examples/README.md: the wedge of slope2d-wedge-joint.tob, Bishop 1.35.
    EXPECT_NE(result.out.find("fos = 1.35"), std::string::npos) << result.out;
}

TEST_F(surface_forms_script, the_grid_search_form_stores_the_typed_grid_and_offers_its_solve)
{
    ASSERT_EQ(result.status, 0) << result.out;
    EXPECT_NE(result.out.find("gridsearchsolv visible"), std::string::npos) << result.out;
    // The grid search line of the data file: grid_y_ul, grid_z_ul, grid_y_lr,
    // grid_z_lr, the radius step, the two counts and the common point, in
    // columns of 14; the file's grid from (25, 70) is gone.
    const std::string saved = test::read_bytes(dir.file("one-centre.tob"));
    EXPECT_NE(
        saved.find(
            "\n 32            63            32            63            1             1             1 "),
        std::string::npos)
        << saved;
    EXPECT_EQ(saved.find("\n 25            70"), std::string::npos) << saved;
}

TEST_F(surface_forms_script, the_one_centre_grid_finds_the_critical_circle_of_the_example)
{
    ASSERT_EQ(result.status, 0) << result.out;
    // examples/README.md: the 17 by 17 grid of slope2d-homogeneous.tob finds
    // 1.117 at (32, 63), R 53 with Bishop. The radius steps belong to each
    // centre, so the grid of that one centre finds the same trial.
    const auto r = run_cli_in(dir.path.string(), "search one-centre.tob --grid");
    ASSERT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("1.117"), std::string::npos) << r.out;
}

} // namespace
} // namespace tobel
