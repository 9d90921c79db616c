// A runner of a search's centres on oneTBB threads: the tasks of one run go
// to an arena of as many threads as asked, more than the machine's cores if
// so asked (the arena is then oversubscribed). A search gives it no more
// tasks than working_sets() less the calling thread's own.
#pragma once

#include <functional>
#include <memory>

#include "search/parallel_runner.h"

namespace tobel {

class TbbRunner : public ParallelRunner {
  public:
    // threads 0 or less: all cores. sets 0 or less: the threads, but no more
    // than the machine's cores (tests and benchmarks ask for more).
    explicit TbbRunner(int threads = 0, int sets = 0);
    ~TbbRunner() override;
    int threads() const override { return threads_; }
    int working_sets() const override { return sets_; }
    void run(int n, const std::function<void(int)>& task) override;

  private:
    struct Arena;
    int threads_ = 1;
    int sets_ = 1;
    std::unique_ptr<Arena> arena_;
};

// The number of threads of all cores, as TBB counts them.
int all_cores();

} // namespace tobel
