// A search that also moves across the slope. The classic grid and auto
// searches keep the centre's X and the aspect ratio as the set-up stores
// them; this runs the classic search once for every X of a range and every
// aspect of a list, each on its own copy of the project, and keeps the best
// of all. The searches are independent, so they may run side by side.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "project/project.h"
#include "search/across.h"
#include "search/parallel_runner.h"
#include "ui/port.h"

namespace tobel {

struct AcrossPlan {
    float x0 = 0, x1 = 0, dx = 0;
    std::vector<float> aspects;
    bool grid = true;       // the stored grid search, or else the stored auto search
    bool composite = false; // trial ellipsoids cut by the stored wedge planes
    bool valid_only = false;
    int method = 1;                     // solution_method of every search
    Answer answer = Answer::no;         // how the searches' questions are answered
    std::function<bool()> stop_request; // read by every search between trials; may be empty
};

// The (X, aspect) pairs of a plan, in the order of the result's cells.
std::vector<std::pair<float, float>> across_pairs(const AcrossPlan& plan);

// One classic search of the set on a copy of `base` (a project as read from
// its file): the stored set-up with X and the aspect replaced, then the search.
AcrossCell run_across_cell(const Project& base, const AcrossPlan& plan, float x, float aspect);

// Every pair of the plan, run through `run` (one search a task); the cells
// come back in pair order whatever order and threads they ran on.
AcrossResult across_search(const Project& base, const AcrossPlan& plan, ParallelRunner& run);

} // namespace tobel
