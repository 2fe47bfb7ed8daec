#include "zip/deflating/entry_deflater.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "zip/deflating/block_deflater.h"
#include "zip/deflating/checksum.h"

namespace zip {
namespace {

constexpr std::size_t blockSize = 256 << 10;

}  // namespace

/// One block with the window before it and the room for its result.
class EntryDeflater::Block final : public Task {
public:
    Block() : _bytes(deflateWindow + blockSize) {}

    /// For `run`: whatever a helper needs.
    void prepare() {
        if (_deflater) return;
        _deflater = makeBlockDeflater(blockSize);
        makeRoom(*_deflater);
    }

    /// Empties the block; the window before it is the end of the block that it follows, if any.
    void restart(const Block* previous) {
        _filled = deflateWindow;
        _windowFrom = deflateWindow;
        if (previous == nullptr) return;
        _windowFrom = 0;
        std::memcpy(_bytes.data(), previous->_bytes.data() + blockSize, deflateWindow);
    }

    bool isFull() const { return _filled == _bytes.size(); }
    std::size_t size() const { return _filled - deflateWindow; }

    /// Takes as much as there is room for.
    std::size_t fill(const unsigned char* from, std::size_t count) {
        const std::size_t part = std::min(count, _bytes.size() - _filled);
        if (part > 0) std::memcpy(_bytes.data() + _filled, from, part);
        _filled += part;
        return part;
    }

    void makeLast(bool last) { _last = last; }

    void run() noexcept override { deflateBy(*_deflater); }

    /// Without a helper, and without the deflater of its own.
    void runBy(BlockDeflater& deflater) {
        makeRoom(deflater);
        deflateBy(deflater);
    }

    std::uint32_t crc() const { return _crc; }
    /// Empty when the block could not be deflated.
    std::span<const unsigned char> result() const { return std::span(_result).first(_resultSize); }

private:
    void makeRoom(BlockDeflater& deflater) {
        if (_result.size() < deflater.bound()) _result.resize(deflater.bound());
    }

    void deflateBy(BlockDeflater& deflater) noexcept {
        const std::span all(_bytes);
        const auto block = all.subspan(deflateWindow, size());
        _crc = crcOf(0, block.data(), block.size());
        _resultSize = deflater.deflate(all.subspan(_windowFrom, deflateWindow - _windowFrom), block, _last, _result);
    }

    std::unique_ptr<BlockDeflater> _deflater;
    std::vector<unsigned char> _bytes;  // the window, then the block
    std::size_t _windowFrom = deflateWindow;
    std::size_t _filled = deflateWindow;
    bool _last = false;
    std::vector<unsigned char> _result;
    std::size_t _resultSize = 0;
    std::uint32_t _crc = 0;
};

EntryDeflater::EntryDeflater(DeflatedSink& sink, unsigned threads) : _sink(sink), _crew(threads) {}

EntryDeflater::~EntryDeflater() = default;

std::unique_ptr<EntryDeflater::Block> EntryDeflater::spareBlock() {
    if (_spare.empty()) return std::make_unique<Block>();
    std::unique_ptr<Block> block = std::move(_spare.back());
    _spare.pop_back();
    return block;
}

void EntryDeflater::begin() {
    for (; !_underWay.empty(); _underWay.pop_front()) _crew.finish(*_underWay.front());  // of an entry that failed
    if (!_filling) _filling = spareBlock();
    _filling->restart(nullptr);
    _size = 0;
    _crc = 0;
}

bool EntryDeflater::write(const void* bytes, std::size_t count) {
    const auto* at = static_cast<const unsigned char*>(bytes);
    while (count > 0) {
        if (_filling->isFull() && !startNextBlock()) return false;
        const std::size_t part = _filling->fill(at, count);
        at += part;
        count -= part;
    }
    return true;
}

/// Sends the full block to the crew. What has waited longest is handed on when enough is under way.
bool EntryDeflater::startNextBlock() {
    if (_underWay.size() >= _crew.tasksAtOnce() && !handOnFirst()) return false;
    std::unique_ptr<Block> next = spareBlock();
    next->restart(_filling.get());
    _filling->makeLast(false);
    _filling->prepare();
    _underWay.push_back(std::move(_filling));
    _filling = std::move(next);
    _crew.submit(*_underWay.back());
    return true;
}

/// The last block runs here, while helpers work on those before it. One that is alone is left to zlib: it takes no time
/// to speak of, and zlib makes less of short texts.
bool EntryDeflater::end() {
    _filling->makeLast(true);
    if (_size == 0 && _underWay.empty()) {
        if (!_single) _single = makeZlibBlockDeflater(blockSize);
        _filling->runBy(*_single);
    } else {
        _filling->prepare();
        _filling->run();
    }
    while (!_underWay.empty()) {
        if (!handOnFirst()) return false;
    }
    return handOn(*_filling);
}

bool EntryDeflater::handOn(const Block& block) {
    _crc = crcOfBoth(_crc, block.crc(), block.size());
    _size += block.size();
    return !block.result().empty() && _sink.take(block.result());
}

bool EntryDeflater::handOnFirst() {
    _crew.finish(*_underWay.front());
    const bool done = handOn(*_underWay.front());
    _spare.push_back(std::move(_underWay.front()));
    _underWay.pop_front();
    return done;
}

}  // namespace zip
