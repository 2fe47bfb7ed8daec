#include "zip/decompress.h"

#include <bzlib.h>

#include <algorithm>
#include <limits>

#include "zip/inflate_stream.h"
#include "zip/messages.h"
#include "zip/stored_bytes.h"
#include "zip/zip_error.h"
#include "zip/zip_source.h"

namespace zip {
namespace {

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
