// The outcome of a centre through a part file of a sharded search and back.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "search_parts.h"

namespace tobel {
namespace {

TEST(search_parts, the_solved_surfaces_and_columns_of_a_centre_come_back_from_its_part)
{
    CentreOutcome o;
    o.index = 7;
    o.stepped = true;
    o.radius_direction = -1;
    o.radius_step_count = 4;
    // More surfaces than a 32-bit count holds, and columns beyond a float's
    // whole numbers: both must come back exact.
    o.solved = std::int64_t(5000000000);
    o.solved_columns = 123456789012.0;
    CentreEvent e;
    e.trial.fos = 1.25f;
    e.trial.active = 321;
    o.events.push_back(e);
    const nlohmann::json j = nlohmann::json::parse(cli::outcome_json(o).dump());
    const CentreOutcome back = cli::outcome_from_json(j);
    EXPECT_EQ(back.index, 7);
    EXPECT_EQ(back.solved, std::int64_t(5000000000));
    EXPECT_EQ(back.solved_columns, 123456789012.0);
    EXPECT_EQ(back.radius_step_count, 4);
    ASSERT_EQ(back.events.size(), 1u);
    EXPECT_EQ(back.events[0].trial.fos, 1.25f);

    // A part written before the counts were kept reads as none solved.
    nlohmann::json old = j;
    old.erase("solved");
    old.erase("solved_columns");
    const CentreOutcome older = cli::outcome_from_json(old);
    EXPECT_EQ(older.solved, 0);
    EXPECT_EQ(older.solved_columns, 0.0);
    EXPECT_EQ(older.radius_step_count, 4);
}

} // namespace
} // namespace tobel
