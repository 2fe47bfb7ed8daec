// For tests: failures on request, and counts of what has to come in pairs.
#pragma once
#include <atomic>

namespace refhost {

/// Lets one call fail: the first from now with 1, the second with 2, none with 0.
class Countdown {
public:
    void operator=(long calls) { _left = calls; }
    /// Counts one call; true when it is the one to fail.
    bool hits() {
        if (_left.load(std::memory_order_relaxed) <= 0) return false;
        return _left.fetch_sub(1, std::memory_order_relaxed) == 1;
    }

private:
    std::atomic<long> _left{0};
};

/// Failures asked of the host.
struct Faults {
    Countdown arrayBegin, arrayStore, setAdd, listAppend, createObject;
    Countdown closeInput, closeOutput;      // the stream is closed, and says that it failed
    std::atomic<long> inputFailsAfter{-1};  // bytes that each input stream gives before it fails; -1: no failure
    std::atomic<int> arrayEndStatus{0};     // what hostArrayEnd answers instead of a status of 0
};

/// Calls seen. What is opened and closed, made and deleted, must come out even when a statement is over.
struct Counts {
    std::atomic<long> arrayBegins{0}, arrayEnds{0};
    std::atomic<long> walkOpens{0}, walkCloses{0};
    std::atomic<long> objectsCreated{0}, objectsDeleted{0};
    std::atomic<long> allocations{0}, releases{0};
    std::atomic<long> streamsOpened{0}, streamsClosed{0};
    std::atomic<long> setsFinished{0};

    bool balanced() const {
        return arrayBegins == arrayEnds && walkOpens == walkCloses && objectsCreated == objectsDeleted &&
               allocations == releases && streamsOpened == streamsClosed;
    }
};

}  // namespace refhost
