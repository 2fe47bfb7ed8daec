#include "refhost/report/progress.h"

#include <chrono>
#include <ostream>

namespace refhost {

Progress::Progress(std::ostream* terminal, int line, const Context& context) {
    if (terminal) _thread = std::thread([this, line, &context, terminal] { show(line, context, *terminal); });
}

Progress::~Progress() {
    if (!_thread.joinable()) return;
    {
        const std::lock_guard lock(_mutex);
        _over = true;
    }
    _changed.notify_one();
    _thread.join();
}

void Progress::show(int line, const Context& context, std::ostream& terminal) {
    std::unique_lock lock(_mutex);
    int seconds = 0;
    while (!_changed.wait_for(lock, std::chrono::seconds(1), [&] { return _over; })) {
        ++seconds;
        terminal << "\r\033[Kline " << line << ": " << seconds << " s";
        if (const long read = context.bytesRead; read > 0) terminal << ", " << read / 1000000 << " MB read";
        terminal << std::flush;
    }
    if (seconds > 0) terminal << "\r\033[K" << std::flush;
}

}  // namespace refhost
