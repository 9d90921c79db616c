// What a search across the slope leaves: for each X of a range and each
// aspect of a list, the result of one classic search, and the best of all.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project/search_state.h"

namespace tobel {

// One classic search of the set: its X and aspect, and what it left.
struct AcrossCell {
    float x = 0, aspect = 0;
    bool set_up = false; // the set-up built a surface and the data passed the checks
    SearchRecord best, best_valid;
    std::int16_t trial_count = 0; // each search keeps its own 16-bit count
    float fos_min = 0, fos_max = 0;
    std::string stop_reason;
};

struct AcrossResult {
    std::vector<AcrossCell> cells; // X by X, and the aspects in their order within each X
    long best = -1;                // index of the cell whose best record is lowest; -1 for none
    std::int32_t trial_count = 0;  // the trials of all the searches together
    bool stopped = false;
};

// The X values x0, x0 + dx, ... up to x1 (one value when x0 = x1). Each is
// computed from x0 and its index, so no error piles up along the range.
// Empty when dx is not above 0 while x1 > x0, or when x1 < x0.
std::vector<float> across_values(float x0, float x1, float dx);

// The cell whose best record has the lowest F, the first of equal ones;
// cells without a best record take no part. -1 when no cell has one.
long best_across_cell(const std::vector<AcrossCell>& cells);

// The totals of a result from its cells: the trial count, whether any search
// was stopped, and the best cell.
void total_across(AcrossResult& r);

} // namespace tobel
