// Inflating piece by piece.
#pragma once
#include <cstddef>
#include <memory>
#include <span>

#include <zlib.h>

namespace zip {

/// A stream moves bytes from `in` to `out` and says how many of each it took. Throws ZipError for damaged ones.
class InflateStream {
public:
    InflateStream();
    ~InflateStream();
    InflateStream(const InflateStream&) = delete;
    InflateStream& operator=(const InflateStream&) = delete;

    /// True at the end of the stream.
    bool step(std::span<const unsigned char>& in, std::span<unsigned char>& out);

    /// What is said of a stream that ends too early.
    static const char* cutText();

private:
    z_stream _stream = {};
};

/// The same in less than half of the time, where libisal is there. What it refuses is for zlib to judge.
class FastInflateStream {
public:
    FastInflateStream();
    ~FastInflateStream();
    FastInflateStream(const FastInflateStream&) = delete;
    FastInflateStream& operator=(const FastInflateStream&) = delete;

    bool step(std::span<const unsigned char>& in, std::span<unsigned char>& out);
    static const char* cutText() { return InflateStream::cutText(); }

private:
    struct State;
    std::unique_ptr<State> _state;
};

}  // namespace zip
