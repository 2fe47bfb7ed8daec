// An entry's bytes, deflated in blocks beside the work that makes them.
#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <vector>

#include "zip/deflating/work_crew.h"

namespace zip {

class BlockDeflater;

/// Where the compressed bytes of an entry go, in their order, on the caller's thread. False on failure.
class DeflatedSink {
public:
    virtual bool take(std::span<const unsigned char> bytes) = 0;

protected:
    ~DeflatedSink() = default;
};

/// Deflates one entry after the other. Bytes are gathered in blocks of 256 KiB, which are compressed on the threads of
/// a crew, a few at a time, and handed on in their order: the result is the same for every number of threads. An entry
/// of one block never leaves the caller's thread, and is deflated by zlib. After a failure there is nothing to do but
/// to begin another entry.
class EntryDeflater {
public:
    explicit EntryDeflater(DeflatedSink& sink, unsigned threads = usableThreads());
    ~EntryDeflater();

    void begin();
    /// Both answer false when the sink or the compressor fails, and throw std::bad_alloc.
    bool write(const void* bytes, std::size_t count);
    /// Hands on what is left. The entry's size and CRC are known then.
    bool end();

    std::uint64_t size() const { return _size; }
    std::uint32_t crc() const { return _crc; }

private:
    class Block;

    std::unique_ptr<Block> spareBlock();
    bool startNextBlock();
    bool handOn(const Block& block);
    bool handOnFirst();

    DeflatedSink& _sink;
    std::unique_ptr<BlockDeflater> _single;  // of entries of one block
    std::unique_ptr<Block> _filling;
    std::vector<std::unique_ptr<Block>> _spare;
    std::deque<std::unique_ptr<Block>> _underWay;  // in the entry's order
    std::uint64_t _size = 0;                       // of what was handed on
    std::uint32_t _crc = 0;
    WorkCrew _crew;  // ends first, since its threads work on the blocks
};

}  // namespace zip
