// Bytes in memory as the seekable stream that `Xls` reads from and writes to.
#pragma once
#include <cstddef>
#include <iostream>
#include <span>
#include <streambuf>
#include <vector>

namespace vellum {

/// One position for reading and writing. Seeking beyond the end is allowed; a write there fills the gap with zeros.
class MemoryBuf : public std::streambuf {
public:
    MemoryBuf() = default;
    explicit MemoryBuf(std::span<const std::byte> bytes) : _view(bytes) {}
    /// Writing that would pass `limit` bytes fails.
    explicit MemoryBuf(std::size_t limit) : _limit(limit) {}

    std::vector<char>& written() { return _own; }

protected:
    int_type underflow() override;
    std::streamsize xsgetn(char* to, std::streamsize n) override;
    std::streamsize xsputn(const char* from, std::streamsize n) override;
    int_type overflow(int_type c) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override {
        return seekoff(position, std::ios_base::beg, mode);
    }
    int_type uflow() override;

private:
    [[nodiscard]] std::size_t size() const { return _own.empty() ? _view.size() : _own.size(); }
    [[nodiscard]] const char* data() const {
        return _own.empty() ? reinterpret_cast<const char*>(_view.data()) : _own.data();
    }

    std::span<const std::byte> _view;  // what is read, not owned
    std::vector<char> _own;            // what was written
    std::size_t _at = 0;
    std::size_t _limit = static_cast<std::size_t>(-1);
};

class MemoryStream final : private MemoryBuf, public std::iostream {
public:
    /// Empty, for writing.
    MemoryStream() : std::iostream(static_cast<MemoryBuf*>(this)) {}
    /// For reading; `bytes` must outlive the stream.
    explicit MemoryStream(std::span<const std::byte> bytes)
        : MemoryBuf(bytes), std::iostream(static_cast<MemoryBuf*>(this)) {}
    /// For writing of at most `limit` bytes.
    explicit MemoryStream(std::size_t limit) : MemoryBuf(limit), std::iostream(static_cast<MemoryBuf*>(this)) {}

    /// All that was written; the caller may move it away.
    using MemoryBuf::written;
};

}  // namespace vellum
