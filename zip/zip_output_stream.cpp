#include "zip/zip_output_stream.h"

#include "zip/zip_writer.h"

namespace zip {

bool ZipOutputStream::Buffer::drain() {
    const auto count = static_cast<std::size_t>(pptr() - pbase());
    setp(_bytes.data(), _bytes.data() + _bytes.size());
    return count == 0 || _writer.writeEntry(_bytes.data(), count);
}

std::streambuf::int_type ZipOutputStream::Buffer::overflow(int_type c) {
    if (!drain()) return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) return sputc(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
}

/// A piece larger than the buffer goes straight through.
std::streamsize ZipOutputStream::Buffer::xsputn(const char* from, std::streamsize count) {
    if (count < static_cast<std::streamsize>(_bytes.size())) return std::streambuf::xsputn(from, count);
    return drain() && _writer.writeEntry(from, static_cast<std::size_t>(count)) ? count : 0;
}

}  // namespace zip
