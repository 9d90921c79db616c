// The solver's side of a bounded trial: clearing a grid over the trial's
// region only, and the record the solve leaves for the next trial.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "project/project.h"

namespace tobel {

template <class T> void fill_box(Grid2<T>& g, const NodeBox& b, T x)
{
    if (b.c0 > b.c1)
        return;
    // A row of the box lies together in the grid.
    for (int r = b.r0; r <= b.r1; ++r) {
        const auto first = g.v.begin() + std::ptrdiff_t(g.index(r, b.c0));
        std::fill(first, first + std::ptrdiff_t(b.c1 - b.c0 + 1), x);
    }
}

// tan of the last friction angle asked for: columns of one material share it.
struct TanCache {
    float phi = 0;
    double t = 0; // tan(0)
    double of(float x)
    {
        if (!(x == phi) || std::signbit(x) != std::signbit(phi)) {
            phi = x;
            t = std::tan(double(x));
        }
        return t;
    }
};

// Ends the solver's part of a trial, however the solve ends. After a set-up
// that went over the whole region of an armed trial, only the slide's box
// differs from what a trial leaves beside its slide; a solve of a surface
// the ellipsoid did not build leaves nothing known.
void end_solver_trial(Project& p);

struct TrialEnd {
    Project& p;
    explicit TrialEnd(Project& project) : p(project) {}
    TrialEnd(const TrialEnd&) = delete;
    TrialEnd& operator=(const TrialEnd&) = delete;
    ~TrialEnd() { end_solver_trial(p); }
};

} // namespace tobel
