#include "search/centre_queue.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "search/parallel_runner.h"
#include "search/recording_port.h"
#include "search/trial.h"

namespace tobel {

CentreQueue::CentreQueue(Project& p, Port& port) : p_(p), port_(port)
{
    traces_ = port.draw_hooks() != nullptr;
    p.search.serial_reason.clear();
    threads_ = p.search.runner ? p.search.runner->threads() : 1;
    if (threads_ > 1) {
        const std::string why = carried_state_reason(p);
        if (!why.empty()) {
            threads_ = 1;
            p.search.serial_reason = why;
        }
    }
    if (threads_ < 1)
        threads_ = 1;
}

CentreQueue::~CentreQueue() = default;

bool CentreQueue::run(const std::vector<CentreJob>& jobs,
                      const std::function<bool(const CentreOutcome&)>& take)
{
    if (threads_ <= 1 || jobs.size() <= 1)
        return run_here(jobs, take);
    return run_threads(jobs, take);
}

// On one thread the user's project is the working project itself: the
// centres are evaluated and replayed one by one, as the search always went.
bool CentreQueue::run_here(const std::vector<CentreJob>& jobs,
                           const std::function<bool(const CentreOutcome&)>& take)
{
    SearchState& s = p_.search;
    for (const CentreJob& job : jobs) {
        if (search_check_pause(p_, port_))
            return false;
        std::atomic<bool> cancel{false};
        RecordingPort quiet(cancel, &port_);
        const CentreOutcome o = evaluate_centre_outcome(p_, quiet, job, traces_);
        const bool go = take(o);
        if (o.cancelled) {
            s.search_abort = -1;
            return false;
        }
        if (!go)
            return true;
    }
    return true;
}

// The copies leave out what no trial reads and what may be large: the
// pictures, the input sections and the search's own lists.
void CentreQueue::make_copies()
{
    if (int(copies_.size()) >= threads_)
        return;
    Pictures pictures = std::move(p_.pictures);
    SectionTable sections = std::move(p_.sections);
    SearchState search = std::move(p_.search);
    auto put_back = [&] {
        p_.pictures = std::move(pictures);
        p_.sections = std::move(sections);
        p_.search = std::move(search);
    };
    try {
        p_.pictures = Pictures{};
        p_.sections = SectionTable{};
        p_.sections.y_v.clear();
        p_.sections.z_v.clear();
        p_.search = SearchState{};
        p_.search.valid_only = search.valid_only;
        while (int(copies_.size()) < threads_)
            copies_.push_back(std::make_unique<Project>(p_));
    } catch (...) {
        put_back();
        throw;
    }
    put_back();
}

namespace {

// What the calling thread and the workers share during one list.
struct SharedList {
    const std::vector<CentreJob>& jobs;
    std::vector<std::unique_ptr<CentreOutcome>> done;
    std::mutex m;
    std::condition_variable cv;
    std::atomic<std::size_t> next{0};
    std::atomic<bool> cancel{false};
    bool finished = false; // the runner has returned

    explicit SharedList(const std::vector<CentreJob>& j) : jobs(j), done(j.size()) {}
};

} // namespace

bool CentreQueue::run_threads(const std::vector<CentreJob>& jobs,
                              const std::function<bool(const CentreOutcome&)>& take)
{
    make_copies();
    SharedList list(jobs);
    const bool traces = traces_;
    // Each worker takes the next centre of the list, lowest first, so that
    // the outcomes come about in the order they are replayed.
    auto worker = [this, &list, traces](int slot) {
        Project& w = *copies_[std::size_t(slot)];
        RecordingPort quiet(list.cancel, nullptr);
        for (;;) {
            if (list.cancel.load())
                return;
            const std::size_t i = list.next.fetch_add(1);
            if (i >= list.jobs.size())
                return;
            auto o = std::make_unique<CentreOutcome>();
            try {
                *o = evaluate_centre_outcome(w, quiet, list.jobs[i], traces);
            } catch (...) {
                o->index = list.jobs[i].index;
                o->error = std::current_exception();
            }
            {
                std::lock_guard<std::mutex> lock(list.m);
                list.done[i] = std::move(o);
            }
            list.cv.notify_all();
        }
    };
    ParallelRunner& runner = *p_.search.runner;
    const int n_threads = threads_;
    std::thread launcher([&runner, &list, &worker, n_threads] {
        runner.run(n_threads, worker);
        {
            std::lock_guard<std::mutex> lock(list.m);
            list.finished = true;
        }
        list.cv.notify_all();
    });
    // The workers end before this function does, whatever the replay throws.
    struct Join {
        SharedList& list;
        std::thread& t;
        ~Join()
        {
            list.cancel.store(true);
            t.join();
        }
    } join{list, launcher};

    SearchState& s = p_.search;
    for (std::size_t k = 0; k < jobs.size(); ++k) {
        if (search_check_pause(p_, port_)) {
            list.cancel.store(true);
            return false;
        }
        std::unique_ptr<CentreOutcome> o;
        {
            std::unique_lock<std::mutex> lock(list.m);
            while (!list.done[k] && !list.finished) {
                list.cv.wait_for(lock, std::chrono::milliseconds(20));
                if (list.done[k])
                    break;
                // A Stop or a pause is answered while the workers go on.
                lock.unlock();
                const bool stop = search_check_pause(p_, port_);
                lock.lock();
                if (stop) {
                    list.cancel.store(true);
                    return false;
                }
            }
            o = std::move(list.done[k]);
        }
        if (!o) {
            // The runner ended without this centre: treated as a Stop.
            s.search_abort = -1;
            return false;
        }
        const bool go = take(*o);
        if (o->cancelled) {
            s.search_abort = -1;
            return false;
        }
        if (!go)
            return true;
    }
    return true;
}

} // namespace tobel
