// Deflating by zlib: the window before a stretch is its dictionary.
#include <zlib.h>

#include <new>

#include "zip/deflating/block_deflater.h"

namespace zip {
namespace {

class ZlibBlockDeflater final : public BlockDeflater {
public:
    explicit ZlibBlockDeflater(std::size_t greatest) : _greatest(greatest) {
        constexpr int memoryLevel = 8;
        if (deflateInit2(&_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, memoryLevel, Z_DEFAULT_STRATEGY) !=
            Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~ZlibBlockDeflater() override { deflateEnd(&_stream); }
    ZlibBlockDeflater(const ZlibBlockDeflater&) = delete;
    ZlibBlockDeflater& operator=(const ZlibBlockDeflater&) = delete;

    std::size_t bound() override {
        constexpr std::size_t emptyBlock = 16;  // more than the flush of a stretch takes
        return deflateBound(&_stream, static_cast<uLong>(_greatest)) + emptyBlock;
    }

    std::size_t deflate(std::span<const unsigned char> before, std::span<const unsigned char> stretch, bool last,
                        std::span<unsigned char> result) noexcept override {
        if (deflateReset(&_stream) != Z_OK) return 0;
        if (!before.empty() &&
            deflateSetDictionary(&_stream, before.data(), static_cast<uInt>(before.size())) != Z_OK) {
            return 0;
        }
        _stream.next_in = const_cast<unsigned char*>(stretch.data());
        _stream.avail_in = static_cast<uInt>(stretch.size());
        _stream.next_out = result.data();
        _stream.avail_out = static_cast<uInt>(result.size());
        const int code = ::deflate(&_stream, last ? Z_FINISH : Z_SYNC_FLUSH);
        const bool whole = last ? code == Z_STREAM_END : code == Z_OK && _stream.avail_out > 0;
        return whole ? result.size() - _stream.avail_out : 0;
    }

private:
    std::size_t _greatest;
    z_stream _stream = {};
};

}  // namespace

std::unique_ptr<BlockDeflater> makeZlibBlockDeflater(std::size_t greatest) {
    return std::make_unique<ZlibBlockDeflater>(greatest);
}

#if !QUILLET_LIBDEFLATE
std::unique_ptr<BlockDeflater> makeBlockDeflater(std::size_t greatest) {
    return makeZlibBlockDeflater(greatest);
}
#endif

}  // namespace zip
