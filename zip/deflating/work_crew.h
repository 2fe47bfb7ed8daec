// Pieces of work on plain bytes, done by the caller's thread and by helpers that live no longer than the call.
#pragma once
#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "zip/deflating/threads.h"

namespace zip {

/// One piece of work, which may run on any thread of a crew. It touches nothing but its own bytes and keeps its own
/// failure. Whoever submits it leaves it alone until it is finished.
class Task {
public:
    virtual ~Task() = default;
    virtual void run() noexcept = 0;

private:
    friend class WorkCrew;
    enum class State { idle, waiting, running };
    State _state = State::idle;
};

/// A queue of tasks, and helpers that take from it. They start with the first task. Tasks that no helper takes run in
/// `finish`, so that all is done even when there is none.
class WorkCrew {
public:
    /// `threads` counts the caller's.
    explicit WorkCrew(unsigned threads = usableThreads());
    /// Tasks that nobody took are dropped; those that run are waited for.
    ~WorkCrew();
    WorkCrew(const WorkCrew&) = delete;
    WorkCrew& operator=(const WorkCrew&) = delete;

    /// Tasks worth having under way at once.
    std::size_t tasksAtOnce() const { return _threads > 1 ? 2 * static_cast<std::size_t>(_threads) : 1; }

    void submit(Task& task);
    /// Returns when the task, which was submitted, has run. Until then this thread takes what waits.
    void finish(Task& task);

private:
    static void* help(void* crew);
    void runFirst(std::unique_lock<std::mutex>& lock);
    void startHelpers();

    unsigned _threads;
    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<Task*> _waiting;
    bool _started = false;
    bool _ending = false;
    std::array<HelperThread, 8> _helpers;
};

}  // namespace zip
