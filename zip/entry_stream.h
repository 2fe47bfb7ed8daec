// An entry that is read piece by piece while it is inflated.
#pragma once
#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <span>
#include <vector>

#include "zip/deflating/threads.h"
#include "zip/inflate_stream.h"
#include "zip/stored_bytes.h"

namespace zip {

/// The bytes of a deflated entry, a window of 256 KiB at a time. A thread of the stream's own inflates up to three
/// windows ahead; without one, each window is inflated when it is asked for. Whoever meets a failure reads the entry
/// again as a whole, and hears there what is wrong with it. The source outlives the stream.
class EntryStream {
public:
    EntryStream(const ZipSource& source, const ZipEntry& entry, unsigned threads = usableThreads());
    ~EntryStream();
    EntryStream(const EntryStream&) = delete;
    EntryStream& operator=(const EntryStream&) = delete;

    /// The next bytes, until the next call; none at the end, when size and checksum are as recorded. Throws ZipError.
    std::span<const unsigned char> next();

private:
    static constexpr std::size_t windowSize = 256 << 10;
    struct Window {
        std::vector<unsigned char> bytes;
        std::size_t size = 0;
    };

    static void* inflateAhead(void* stream);
    void fillAll();
    void fill(Window& window);
    void checkEnd() const;

    StoredBytes _stored;
    FastInflateStream _inflater;
    std::span<const unsigned char> _in;
    std::uint64_t _left;  // of the recorded size
    std::uint32_t _crc = 0;
    const std::uint32_t _recordedCrc;
    bool _inflaterEnded = false;

    std::array<Window, 4> _windows;
    std::mutex _mutex;
    std::condition_variable _changed;
    // Windows since the start: those filled, and those given back. What lies between them belongs to the reader.
    std::size_t _filled = 0, _returned = 0;
    bool _given = false;   // the reader has the first of them
    bool _ended = false;   // no more will be filled
    bool _ending = false;  // nobody reads any more
    std::exception_ptr _failure;
    HelperThread _helper;
};

}  // namespace zip
