#include "search/centre_queue.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>
#include <utility>

#include "search/parallel_runner.h"
#include "search/recording_port.h"
#include "search/trial.h"
#include "surfaces/trial_region.h"

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
    sets_ = threads_ > 1 ? std::min(threads_, std::max(p.search.runner->working_sets(), 1)) : 1;
    if (sets_ > 1) {
        runner_ = p.search.runner;
        copies_.swap(runner_->kept_copies); // leaves the runner none
        made_.assign(copies_.size(), 0);    // each is refreshed when first needed
    }
}

// The copies are kept between searches while they hold no more than this
// many nodes in all: a copy costs some 200 bytes a node where its slides
// reach, so about 100 MB at most lies idle. A bigger search lasts long
// enough for a new copy's first writes not to count.
constexpr long kept_copy_nodes = 500000;

CentreQueue::~CentreQueue()
{
    const long nodes = long(p_.num_rows) * long(p_.num_cols) * long(copies_.size());
    if (runner_ && nodes <= kept_copy_nodes)
        runner_->kept_copies = std::move(copies_);
}

bool CentreQueue::run(const std::vector<CentreJob>& jobs,
                      const std::function<bool(const CentreOutcome&)>& take)
{
    if (sets_ <= 1 || jobs.size() <= 1)
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

namespace {

// What the calling thread and the workers share during one list.
struct SharedList {
    const std::vector<CentreJob>& jobs;
    std::vector<std::unique_ptr<CentreOutcome>> done;
    std::mutex m;
    std::condition_variable cv;
    std::size_t next = 0; // the next centre nobody has taken
    std::atomic<bool> cancel{false};
    bool finished = false; // the runner has returned
    int copying = 0;       // workers yet to make (or decline) their copy

    explicit SharedList(const std::vector<CentreJob>& j) : jobs(j), done(j.size()) {}

    // The next centre for a worker, lowest first, so that the outcomes come
    // about in the order they are replayed. The last centre of the list is
    // left to the calling thread: the user's project then ends the list as
    // it would on one thread, with the working state of that centre.
    bool take_for_worker(std::size_t& i)
    {
        std::lock_guard<std::mutex> lock(m);
        if (cancel.load() || next + 1 >= jobs.size())
            return false;
        i = next++;
        return true;
    }
};

// The user's project as the workers copy it: what no trial reads and what
// may be large is moved aside while they copy (the pictures, the input
// sections, the search's own lists, the solver's buffers) and put back once
// every copy is made. The calling thread leaves the project alone meanwhile,
// so the workers copy it at once, each on its own thread. The elevations are
// not copied: every copy takes the rows its trials come to from one snapshot.
struct CopySource {
    Project& p;
    bool record_holds; // before anything is moved aside
    // Made before anything is moved aside: short of memory for it, the
    // user's project is left whole.
    std::shared_ptr<const Grid3> elevations;
    Pictures pictures;
    SectionTable sections;
    SearchState search;
    SolverWork work;
    Grid3 zgrid;

    explicit CopySource(Project& project)
        : p(project), record_holds(work_record_holds(project)),
          elevations(std::make_shared<const Grid3>(project.zgrid)), pictures(std::move(project.pictures)),
          sections(std::move(project.sections)), search(std::move(project.search)),
          work(std::move(project.work)), zgrid(std::move(project.zgrid))
    {
        // Moved from, the large tables are empty; the small ones keep their size.
        p.pictures = Pictures{};
        p.sections.x.assign(sections.x.size(), 0.0f);
        p.sections.npts.assign(sections.npts.size(), 0);
        p.search = SearchState{};
        p.search.valid_only = search.valid_only;
        p.search.running = search.running;
        p.work = SolverWork{};
        p.zgrid = Grid3{};
    }
    CopySource(const CopySource&) = delete;
    CopySource& operator=(const CopySource&) = delete;
    ~CopySource()
    {
        p.pictures = std::move(pictures);
        p.sections = std::move(sections);
        p.search = std::move(search);
        p.work = std::move(work);
        p.zgrid = std::move(zgrid);
    }

    // Makes w the user's project again (a copy kept from an earlier search
    // keeps the storage of its per-node grids and buffers; its elevations
    // are new, over the snapshot). Its grids are then those of the user's
    // project, so what the last trial left there holds of the copy too: its
    // first trial visits no more than the next trial on the user's project
    // would.
    void copy_to(std::unique_ptr<Project>& w) const
    {
        if (w)
            *w = p;
        else
            w = std::make_unique<Project>(p);
        w->zgrid = grid_over_snapshot(elevations);
        if (record_holds) {
            SolverWork& k = w->work;
            k.known = true;
            k.dirty = work.dirty;
            k.outside_dips = work.outside_dips;
            k.lift_nodes = work.lift_nodes;
            k.stamp = mesh_stamp(*w);
        }
    }
};

} // namespace

// The calling thread is a worker too, on the user's project as on one
// thread, between the replays; the other workers have copies.
bool CentreQueue::run_threads(const std::vector<CentreJob>& jobs,
                              const std::function<bool(const CentreOutcome&)>& take)
{
    // The runner is taken before the search's state is moved aside.
    ParallelRunner& runner = *p_.search.runner;
    SharedList list(jobs);
    const int n_workers = sets_ - 1;
    if (copies_.size() != std::size_t(n_workers)) {
        copies_.resize(std::size_t(n_workers));
        made_.assign(std::size_t(n_workers), 0);
    }
    std::unique_ptr<CopySource> source;
    for (const char made : made_)
        if (made == 0)
            ++list.copying;
    if (list.copying > 0 && !work_record_holds(p_) && trials_may_be_bounded(p_) && jobs.size() > 2) {
        // Nothing is known yet of the nodes beside the slides: a copy made
        // now would sweep the whole mesh at its first trial, and keep every
        // page of it. The first centre is evaluated here first, as on one
        // thread, and the copies are made of what it leaves.
        if (search_check_pause(p_, port_))
            return false;
        RecordingPort quiet(list.cancel, &port_);
        list.done[0] = std::make_unique<CentreOutcome>(evaluate_centre_outcome(p_, quiet, jobs[0], traces_));
        list.next = 1;
    }
    // No copy for a worker that would find every centre taken.
    if (list.copying > 0 && list.next + 1 < jobs.size()) {
        try {
            source = std::make_unique<CopySource>(p_);
        } catch (const std::bad_alloc&) {
            // Short of memory for the snapshot: the calling thread evaluates
            // every centre, on the user's project, which stays whole.
            source.reset();
        }
    }
    const CopySource* const from = source.get();
    const bool traces = traces_;
    auto worker = [this, &list, from, traces](int slot) {
        std::unique_ptr<Project>& mine = copies_[std::size_t(slot)];
        char& made = made_[std::size_t(slot)];
        if (made == 0) {
            // A worker that comes when every centre is taken needs no copy.
            try {
                bool wanted = false;
                {
                    std::lock_guard<std::mutex> lock(list.m);
                    wanted = !list.cancel.load() && list.next + 1 < list.jobs.size();
                }
                if (wanted && from != nullptr) {
                    from->copy_to(mine);
                    made = 1;
                }
            } catch (...) {
                // Short of memory: the others evaluate this worker's share.
                mine.reset();
            }
            {
                std::lock_guard<std::mutex> lock(list.m);
                --list.copying;
            }
            list.cv.notify_all();
            if (made == 0)
                return;
        }
        Project& w = *mine;
        RecordingPort quiet(list.cancel, nullptr);
        std::size_t i = 0;
        while (list.take_for_worker(i)) {
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
    std::thread launcher([&runner, &list, &worker, n_workers] {
        runner.run(n_workers, worker);
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

    if (source) {
        // The user's project is whole again once every copy is made.
        {
            std::unique_lock<std::mutex> lock(list.m);
            list.cv.wait(lock, [&list] { return list.copying == 0 || list.finished; });
        }
        source.reset();
    }

    SearchState& s = p_.search;
    for (std::size_t k = 0; k < jobs.size(); ++k) {
        if (search_check_pause(p_, port_)) {
            list.cancel.store(true);
            return false;
        }
        std::unique_ptr<CentreOutcome> o;
        for (;;) {
            std::unique_lock<std::mutex> lock(list.m);
            if (list.done[k]) {
                o = std::move(list.done[k]);
                break;
            }
            if (!list.cancel.load() && list.next < jobs.size()) {
                // Rather than wait, the calling thread evaluates a centre itself.
                const std::size_t i = list.next++;
                lock.unlock();
                RecordingPort quiet(list.cancel, &port_);
                auto mine =
                    std::make_unique<CentreOutcome>(evaluate_centre_outcome(p_, quiet, jobs[i], traces));
                lock.lock();
                list.done[i] = std::move(mine);
                continue;
            }
            if (list.finished)
                break;
            list.cv.wait_for(lock, std::chrono::milliseconds(20));
            if (list.done[k])
                continue;
            // A Stop or a pause is answered while the workers go on.
            lock.unlock();
            if (search_check_pause(p_, port_)) {
                list.cancel.store(true);
                return false;
            }
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
