#include "tbb_runner.h"

#include <algorithm>

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/info.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/task_arena.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tobel {

int all_cores()
{
    const int n = oneapi::tbb::info::default_concurrency();
    return n < 1 ? 1 : n;
}

// The global limit lets TBB start as many workers as the arena has slots,
// past the number of cores when asked; the thread that calls run takes one
// of the slots itself.
struct TbbRunner::Arena {
    explicit Arena(int threads)
        : limit(oneapi::tbb::global_control::max_allowed_parallelism, std::size_t(threads)), arena(threads, 1)
    {
    }
    oneapi::tbb::global_control limit;
    oneapi::tbb::task_arena arena;
};

TbbRunner::TbbRunner(int threads, int sets)
{
    threads_ = threads > 0 ? threads : all_cores();
    sets_ = std::min(threads_, sets > 0 ? sets : all_cores());
    arena_ = std::make_unique<Arena>(threads_);
#ifdef __GLIBC__
    // A working copy's grids are blocks of megabytes that its trials write
    // only in part: they must come as fresh pages, which the system commits
    // as they are written. glibc raises its threshold for such blocks each
    // time one is freed, and then serves them from the heap, written whole;
    // a fixed threshold keeps every block of 1 MB or more mapped apart.
    if (sets_ > 1)
        mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

TbbRunner::~TbbRunner() = default;

void TbbRunner::run(int n, const std::function<void(int)>& task)
{
    if (n <= 0)
        return;
    arena_->arena.execute([&] {
        // One task per index, none split further: each is a worker's loop.
        oneapi::tbb::parallel_for(
            oneapi::tbb::blocked_range<int>(0, n, 1),
            [&](const oneapi::tbb::blocked_range<int>& r) {
                for (int i = r.begin(); i != r.end(); ++i)
                    task(i);
            },
            oneapi::tbb::simple_partitioner());
    });
}

} // namespace tobel
