#include "zip/deflating/work_crew.h"

#include <algorithm>

namespace zip {

WorkCrew::WorkCrew(unsigned threads)
    : _threads(std::clamp(threads, 1U, unsigned{std::tuple_size_v<decltype(_helpers)>})) {}

WorkCrew::~WorkCrew() {
    {
        const std::lock_guard lock(_mutex);
        _ending = true;
        _waiting.clear();
    }
    _changed.notify_all();
    for (HelperThread& helper : _helpers) helper.join();
}

void WorkCrew::startHelpers() {
    _started = true;
    for (unsigned i = 1; i < _threads; ++i) {
        if (!_helpers[i].start(help, this)) return;
    }
}

/// Takes the task that has waited longest and runs it without the lock.
void WorkCrew::runFirst(std::unique_lock<std::mutex>& lock) {
    Task& task = *_waiting.front();
    _waiting.pop_front();
    task._state = Task::State::running;
    lock.unlock();
    task.run();
    lock.lock();
    task._state = Task::State::idle;
    _changed.notify_all();
}

void* WorkCrew::help(void* argument) {
    WorkCrew& crew = *static_cast<WorkCrew*>(argument);
    std::unique_lock lock(crew._mutex);
    while (!crew._ending) {
        if (crew._waiting.empty()) {
            crew._changed.wait(lock);
        } else {
            crew.runFirst(lock);
        }
    }
    return nullptr;
}

void WorkCrew::submit(Task& task) {
    if (!_started) startHelpers();
    {
        const std::lock_guard lock(_mutex);
        _waiting.push_back(&task);
        task._state = Task::State::waiting;
    }
    _changed.notify_one();
}

void WorkCrew::finish(Task& task) {
    std::unique_lock lock(_mutex);
    while (task._state != Task::State::idle) {
        if (_waiting.empty()) {
            _changed.wait(lock);
        } else {
            runFirst(lock);
        }
    }
}

}  // namespace zip
