#include "zip/deflating/threads.h"

#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <cstdlib>

namespace zip {
namespace {

constexpr unsigned mostThreads = 8;  // bounds the memory of blocks under way

unsigned processors() {
    cpu_set_t set;
    if (sched_getaffinity(0, sizeof set, &set) != 0) return 1;
    return static_cast<unsigned>(CPU_COUNT(&set));
}

}  // namespace

unsigned usableThreads() {
    const char* const asked = std::getenv("QUILLET_THREADS");
    const long number = asked == nullptr ? 0 : std::strtol(asked, nullptr, 10);
    if (number >= 1) return static_cast<unsigned>(std::min<long>(number, mostThreads));
    return std::clamp(processors(), 1U, mostThreads);
}

bool HelperThread::start(void* (*body)(void*), void* argument) noexcept {
    sigset_t all, before;
    sigfillset(&all);
    if (pthread_sigmask(SIG_SETMASK, &all, &before) != 0) return false;
    _running = pthread_create(&_thread, nullptr, body, argument) == 0;  // the new thread has the mask of its maker
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return _running;
}

void HelperThread::join() noexcept {
    if (_running) pthread_join(_thread, nullptr);
    _running = false;
}

}  // namespace zip
