// Threads that help one call: how many there may be, and how one is started.
#pragma once
#include <pthread.h>

namespace zip {

/// Threads that a call may keep busy, its own included: the number in the environment's QUILLET_THREADS, else that of
/// the processors that this process may use; 1 to 8.
unsigned usableThreads();

/// A thread that helps the caller's and is joined before it. All signals are blocked in it, so that the process's
/// handlers run where they ran before.
class HelperThread {
public:
    HelperThread() = default;
    ~HelperThread() { join(); }
    HelperThread(const HelperThread&) = delete;
    HelperThread& operator=(const HelperThread&) = delete;

    /// False when the system has no thread to give; the work is then the caller's. `body` must not throw.
    bool start(void* (*body)(void*), void* argument) noexcept;
    void join() noexcept;
    bool isRunning() const { return _running; }

private:
    pthread_t _thread = {};
    bool _running = false;
};

}  // namespace zip
