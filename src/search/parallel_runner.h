// The executor of a search's centres: runs a number of independent tasks,
// perhaps at once on several threads. The core knows only this interface;
// the program that runs the search may give it a runner with threads. The
// default runs the tasks one after the other on the calling thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "project/project.h"

namespace tobel {

class ParallelRunner {
  public:
    virtual ~ParallelRunner() = default;
    // How many tasks may run at once.
    virtual int threads() const { return 1; }
    // How many working projects a search may hold at once (each holds a
    // trial's grids and buffers): more than the cores that can work add
    // memory and no speed, as a trial never waits.
    virtual int working_sets() const { return threads(); }
    // Runs task(0) .. task(n - 1), each once, at most threads() at a time,
    // and returns when all have ended. Tasks must not throw.
    virtual void run(int n, const std::function<void(int)>& task)
    {
        for (int i = 0; i < n; ++i)
            task(i);
    }

    // The working copies of the last search's workers, kept for the next
    // search with this runner (centre_queue.cpp): a copy made anew writes
    // every page of its grids and buffers for the first time, which costs a
    // short search a tenth of its time on two threads. A runner serves one
    // search at a time, so these are never shared.
    std::vector<std::unique_ptr<Project>> kept_copies;
};

} // namespace tobel
