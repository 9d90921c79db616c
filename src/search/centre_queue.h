// Evaluation of a list of search centres, on the calling thread or on the
// threads of the search's runner, with the outcomes handed back in the order
// of the list on the calling thread, which alone talks to the user's port
// and writes the user's project.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "project/project.h"
#include "search/centre_outcome.h"
#include "ui/port.h"

namespace tobel {

class CentreQueue {
  public:
    // Takes the runner of p.search; a project whose trials depend on the
    // trials before them is searched on one thread, and search.serial_reason
    // says why.
    CentreQueue(Project& p, Port& port);
    ~CentreQueue();
    CentreQueue(const CentreQueue&) = delete;
    CentreQueue& operator=(const CentreQueue&) = delete;

    int threads() const { return threads_; }
    // Working projects the centres are evaluated on at once: the runner's
    // threads, but no more than the runner's working_sets(). The user's project is
    // one of them (the calling thread's); one means it alone.
    int working_sets() const { return sets_; }

    // Evaluates the jobs and gives each outcome, in order, to `take`, which
    // replays it and returns false to end the list early. Before each centre
    // (and while waiting for one) the pause and Stop are looked at; a Stop
    // or a pause ended by Exit cancels the centres under way and returns
    // false with search.search_abort set. `take` also gets a cancelled
    // outcome (what its centre completed), and the list ends after it.
    bool run(const std::vector<CentreJob>& jobs, const std::function<bool(const CentreOutcome&)>& take);

  private:
    bool run_here(const std::vector<CentreJob>& jobs, const std::function<bool(const CentreOutcome&)>& take);
    bool run_threads(const std::vector<CentreJob>& jobs,
                     const std::function<bool(const CentreOutcome&)>& take);

    Project& p_;
    Port& port_;
    std::shared_ptr<ParallelRunner> runner_; // of p.search, which a search moves aside
    bool traces_ = false;
    int threads_ = 1;
    int sets_ = 1;
    // The working copies of the workers beside the calling thread (which
    // works on the user's project), each made (or, if the runner kept one
    // from an earlier search, refreshed) by its worker when first needed,
    // and kept for the lists that follow.
    std::vector<std::unique_ptr<Project>> copies_;
    std::vector<char> made_; // the copy of the slot is of this search
};

} // namespace tobel
