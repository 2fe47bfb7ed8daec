// A line on the terminal while something takes its time.
#pragma once
#include <condition_variable>
#include <iosfwd>
#include <mutex>
#include <thread>

#include "refhost/operations/context.h"

namespace refhost {

/// Lives as long as the work, and ends before its results are told. After a second it shows the statement's line, the
/// seconds gone and what the context has read, once a second, and wipes the line away at the end.
class Progress {
public:
    /// No terminal, no line.
    Progress(std::ostream* terminal, int line, const Context& context);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void show(int line, const Context& context, std::ostream& terminal);

    std::mutex _mutex;
    std::condition_variable _changed;
    bool _over = false;
    std::thread _thread;
};

}  // namespace refhost
