#include "zip/entry_stream.h"

#include <algorithm>
#include <utility>

#include "zip/deflating/checksum.h"
#include "zip/messages.h"
#include "zip/zip_error.h"

namespace zip {

EntryStream::EntryStream(const ZipSource& source, const ZipEntry& entry, unsigned threads)
    : _stored(source, entry), _left(entry.uncompressedSize), _recordedCrc(entry.crc) {
    const std::size_t count = threads > 1 ? _windows.size() : 1;
    for (std::size_t i = 0; i < count; ++i) _windows[i].bytes.resize(windowSize);
    if (threads > 1) _helper.start(inflateAhead, this);
}

EntryStream::~EntryStream() {
    {
        const std::lock_guard lock(_mutex);
        _ending = true;
    }
    _changed.notify_all();
    _helper.join();
}

/// Fills the window unless the entry ends before; an empty one tells the end.
void EntryStream::fill(Window& window) {
    std::span<unsigned char> room(window.bytes);
    while (!_inflaterEnded && !room.empty()) {
        const std::size_t inBefore = _in.size(), roomBefore = room.size();
        _inflaterEnded = _inflater.step(_in, room);
        if (_inflaterEnded) break;
        if (_in.empty()) _in = _stored.next();
        if (_in.empty() && inBefore == 0 && room.size() == roomBefore) throw ZipError(FastInflateStream::cutText());
    }
    window.size = window.bytes.size() - room.size();
    if (window.size > _left) throw ZipError(msg::incorrectSize);
    _left -= window.size;
    _crc = crcOf(_crc, window.bytes.data(), window.size);
    if (window.size == 0) checkEnd();
}

void EntryStream::checkEnd() const {
    if (_left > 0) throw ZipError(msg::incorrectSize);
    if (_crc != _recordedCrc) throw ZipError(msg::crcMismatch);
}

void* EntryStream::inflateAhead(void* argument) {
    EntryStream& stream = *static_cast<EntryStream*>(argument);
    std::exception_ptr failure;
    try {
        stream.fillAll();
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(stream._mutex);
    stream._ended = true;
    stream._failure = std::move(failure);
    stream._changed.notify_all();
    return nullptr;
}

/// On the helper's thread.
void EntryStream::fillAll() {
    for (;;) {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [this] { return _ending || _filled - _returned < _windows.size(); });
        if (_ending) return;
        Window& window = _windows[_filled % _windows.size()];
        lock.unlock();
        fill(window);
        if (window.size == 0) return;
        lock.lock();
        ++_filled;
        _changed.notify_all();
    }
}

std::span<const unsigned char> EntryStream::next() {
    if (!_helper.isRunning()) {
        fill(_windows[0]);
        return std::span(_windows[0].bytes).first(_windows[0].size);
    }
    std::unique_lock lock(_mutex);
    if (_given) {
        ++_returned;
        _given = false;
        _changed.notify_all();
    }
    _changed.wait(lock, [this] { return _ended || _filled > _returned; });
    if (_filled == _returned) {
        if (_failure) std::rethrow_exception(_failure);
        return {};
    }
    _given = true;
    const Window& window = _windows[_returned % _windows.size()];
    return std::span(window.bytes).first(window.size);
}

}  // namespace zip
