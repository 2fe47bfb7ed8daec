#include "zip/inflate_stream.h"

#if QUILLET_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include <algorithm>
#include <cstdint>

#include "zip/messages.h"
#include "zip/zip_error.h"

namespace zip {
namespace {

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

}  // namespace

InflateStream::InflateStream() {
    const int code = inflateInit2(&_stream, -MAX_WBITS);
    if (code != Z_OK) throw ZipError(zlibText(code));
}

InflateStream::~InflateStream() {
    inflateEnd(&_stream);
}

bool InflateStream::step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
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

const char* InflateStream::cutText() {
    return msg::zlibBuffer;
}

#if QUILLET_ISAL

struct FastInflateStream::State {
    inflate_state stream;
};

FastInflateStream::FastInflateStream() : _state(std::make_unique<State>()) {
    isal_inflate_init(&_state->stream);
}

bool FastInflateStream::step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
    inflate_state& stream = _state->stream;
    stream.next_in = const_cast<unsigned char*>(in.data());
    stream.avail_in = static_cast<std::uint32_t>(in.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<std::uint32_t>(out.size());
    if (isal_inflate(&stream) != ISAL_DECOMP_OK) throw ZipError(msg::zlibData);
    // At the end it gives back what it took ahead, which may have come with an earlier window.
    in = in.last(std::min<std::size_t>(stream.avail_in, in.size()));
    out = out.last(stream.avail_out);
    return stream.block_state == ISAL_BLOCK_FINISH;
}

#else

struct FastInflateStream::State {
    InflateStream stream;
};

FastInflateStream::FastInflateStream() : _state(std::make_unique<State>()) {}

bool FastInflateStream::step(std::span<const unsigned char>& in, std::span<unsigned char>& out) {
    return _state->stream.step(in, out);
}

#endif

FastInflateStream::~FastInflateStream() = default;

}  // namespace zip
