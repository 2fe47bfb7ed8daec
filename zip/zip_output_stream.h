// A standard output stream into an archive's open entry.
#pragma once
#include <array>
#include <ostream>
#include <streambuf>

namespace zip {

class ZipWriter;

/// What is printed goes to the entry that the writer has open, in pieces of 65536 bytes. The stream goes bad when the
/// writer fails. It must be flushed or destroyed before the entry is closed.
class ZipOutputStream : public std::ostream {
public:
    explicit ZipOutputStream(ZipWriter& writer) : std::ostream(nullptr), _buffer(writer) { rdbuf(&_buffer); }
    ~ZipOutputStream() override { flush(); }

private:
    class Buffer final : public std::streambuf {
    public:
        explicit Buffer(ZipWriter& writer) : _writer(writer) { setp(_bytes.data(), _bytes.data() + _bytes.size()); }

    protected:
        int_type overflow(int_type c) override;
        std::streamsize xsputn(const char* from, std::streamsize count) override;
        int sync() override { return drain() ? 0 : -1; }

    private:
        bool drain();

        ZipWriter& _writer;
        std::array<char, 65536> _bytes;
    };

    Buffer _buffer;
};

}  // namespace zip
