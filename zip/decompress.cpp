#include "zip/decompress.h"

#include <bzlib.h>
#if QUILLET_ISAL
#include <isa-l/igzip_lib.h>
#endif
#include <zlib.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "zip/messages.h"
#include "zip/zip_error.h"
#include "zip/zip_source.h"

namespace zip {
namespace {

constexpr std::size_t bufferSize = 65536;

const char* zlibText(int code) {
    switch (code) {
        case Z_STREAM_END:
            return msg::zlibStreamEnd;
        case Z_STREAM_ERROR:
            return msg::zlibStream;
        case Z_MEM_ERROR:
            return msg::notEnoughMemory;
        case Z_BUF_ERROR:
            return msg::zlibBuffer;
        case Z_VERSION_ERROR:
            return msg::zlibVersion;
        default:
            return msg::zlibData;
    }
}

const char* bzipText(int code) {
    switch (code) {
        case BZ_SEQUENCE_ERROR:
            return msg::bzipSequence;
        case BZ_PARAM_ERROR:
            return msg::bzipParameters;
        case BZ_MEM_ERROR:
            return msg::bzipMemory;
        case BZ_DATA_ERROR_MAGIC:
            return msg::bzipMagic;
        case BZ_IO_ERROR:
            return msg::bzipIo;
        case BZ_UNEXPECTED_EOF:
            return msg::bzipEof;
        case BZ_OUTBUFF_FULL:
            return msg::bzipFull;
        case BZ_CONFIG_ERROR:
            return msg::bzipConfiguration;
        case BZ_DATA_ERROR:
            return msg::bzipData;
        default:
            return msg::bzipInternal;
    }
}

/// The libraries as one thing: a stream that moves bytes from `in` to `out` and says how many of each it took.
class InflateStream {
public:
    InflateStream() {
        const int code = inflateInit2(&_stream, -MAX_WBITS);
        if (code != Z_OK) throw ZipError(zlibText(code));
    }
    ~InflateStream() { inflateEnd(&_stream); }
    InflateStream(const InflateStream&) = delete;
    InflateStream& operator=(const InflateStream&) = delete;

    /// True at the end of the stream.
    bool step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
        _stream.next_in = const_cast<unsigned char*>(in.data());
        _stream.avail_in = static_cast<uInt>(in.size());
        _stream.next_out = out.data();
        _stream.avail_out = static_cast<uInt>(out.size());
        const int code = inflate(&_stream, Z_NO_FLUSH);
        in = in.last(_stream.avail_in);
        out = out.last(_stream.avail_out);
        if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR) throw ZipError(zlibText(code));
        return code == Z_STREAM_END;
    }

    static const char* cutText() { return msg::zlibBuffer; }

private:
    z_stream _stream = {};
};

#if QUILLET_ISAL
/// Inflates in less than half of zlib's time. What it refuses is for zlib to judge.
class FastInflateStream {
public:
    FastInflateStream() : _stream(std::make_unique<inflate_state>()) { isal_inflate_init(_stream.get()); }

    bool step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
        _stream->next_in = const_cast<unsigned char*>(in.data());
        _stream->avail_in = static_cast<std::uint32_t>(in.size());
        _stream->next_out = out.data();
        _stream->avail_out = static_cast<std::uint32_t>(out.size());
        const int code = isal_inflate(_stream.get());
        in = in.last(_stream->avail_in);
        out = out.last(_stream->avail_out);
        if (code != ISAL_DECOMP_OK) throw ZipError(msg::zlibData);
        return _stream->block_state == ISAL_BLOCK_FINISH;
    }

    static const char* cutText() { return msg::zlibBuffer; }

private:
    std::unique_ptr<inflate_state> _stream;
};
#else
using FastInflateStream = InflateStream;
#endif

class Bzip2Stream {
public:
    Bzip2Stream() {
        const int code = BZ2_bzDecompressInit(&_stream, 0, 0);
        if (code != BZ_OK) throw ZipError(bzipText(code));
    }
    ~Bzip2Stream() { BZ2_bzDecompressEnd(&_stream); }
    Bzip2Stream(const Bzip2Stream&) = delete;
    Bzip2Stream& operator=(const Bzip2Stream&) = delete;

    bool step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
        _stream.next_in = const_cast<char*>(reinterpret_cast<const char*>(in.data()));
        _stream.avail_in = static_cast<unsigned>(in.size());
        _stream.next_out = reinterpret_cast<char*>(out.data());
        _stream.avail_out = static_cast<unsigned>(out.size());
        const int code = BZ2_bzDecompress(&_stream);
        in = in.last(_stream.avail_in);
        out = out.last(_stream.avail_out);
        if (code != BZ_OK && code != BZ_STREAM_END) throw ZipError(bzipText(code));
        return code == BZ_STREAM_END;
    }

    static const char* cutText() { return msg::bzipEof; }

private:
    bz_stream _stream = {};
};

/// Windows over an entry's stored bytes, from first to last.
class StoredBytes {
public:
    StoredBytes(const ZipSource& source, const ZipEntry& entry)
        : _source(source), _offset(entryDataOffset(source, entry)), _left(entry.compressedSize), _scratch(bufferSize) {}

    /// Empty at the end.
    std::span<const unsigned char> next() {
        if (_left == 0) return {};
        constexpr std::uint64_t longest = 1 << 30;  // what the libraries' 32-bit counts take
        const auto window = _source.window(_offset, std::min(_left, longest), _scratch);
        _offset += window.size();
        _left -= window.size();
        return window;
    }

private:
    const ZipSource& _source;
    std::uint64_t _offset;
    std::uint64_t _left;
    std::vector<unsigned char> _scratch;
};

std::span<unsigned char> limited(std::span<unsigned char> room) {
    return room.first(std::min<std::size_t>(room.size(), std::numeric_limits<int>::max()));
}

/// Runs the stream to its end. One byte of room more than the recorded size tells a stream that is longer.
template <class Stream>
void unpack(const ZipSource& source, const ZipEntry& entry, ByteSink& sink) {
    Stream stream;
    StoredBytes stored(source, entry);
    std::span<const unsigned char> in = stored.next();
    std::uint64_t left = entry.uncompressedSize;
    unsigned char excess;
    for (bool ended = false; !ended;) {
        const bool full = left == 0;
        const std::span<unsigned char> room =
            full ? std::span(&excess, 1) : limited(sink.room(static_cast<std::size_t>(left)));
        const std::span<unsigned char> offered =
            room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), full ? 1 : left)));
        std::span<unsigned char> out = offered;
        const std::size_t inBefore = in.size();
        ended = stream.step(in, out);
        const std::size_t made = offered.size() - out.size();
        if (full && made > 0) throw ZipError(msg::incorrectSize);
        if (!full) sink.filled(made);
        left -= full ? 0 : made;
        if (!ended && in.empty()) in = stored.next();
        if (!ended && in.empty() && made == 0 && inBefore == 0) throw ZipError(Stream::cutText());
    }
    if (left > 0) throw ZipError(msg::incorrectSize);
}

void copyStored(const ZipSource& source, const ZipEntry& entry, ByteSink& sink) {
    if (entry.compressedSize != entry.uncompressedSize) throw ZipError(msg::damaged);
    StoredBytes stored(source, entry);
    for (auto window = stored.next(); !window.empty(); window = stored.next()) {
        while (!window.empty()) {
            const auto room = sink.room(window.size());
            const std::size_t part = std::min(room.size(), window.size());
            std::copy_n(window.begin(), part, room.begin());
            sink.filled(part);
            window = window.subspan(part);
        }
    }
}

}  // namespace

void decompressEntry(const ZipSource& source, const ZipEntry& entry, ByteSink& sink, Inflater inflater) {
    // Some writers give an empty entry a method but no stream.
    if (entry.compressedSize == 0 && entry.uncompressedSize == 0) return;
    switch (entry.method) {
        case zipStored:
            return copyStored(source, entry, sink);
        case zipDeflated:
            if (inflater == Inflater::fast) return unpack<FastInflateStream>(source, entry, sink);
            return unpack<InflateStream>(source, entry, sink);
        case zipBzip2:
            return unpack<Bzip2Stream>(source, entry, sink);
        default:
            throw ZipError(msg::damaged);
    }
}

}  // namespace zip
