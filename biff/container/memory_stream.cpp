#include "biff/container/memory_stream.h"

#include <algorithm>
#include <cstring>

namespace vellum {

MemoryBuf::int_type MemoryBuf::underflow() {
    return _at < size() ? traits_type::to_int_type(data()[_at]) : traits_type::eof();
}

MemoryBuf::int_type MemoryBuf::uflow() {
    return _at < size() ? traits_type::to_int_type(data()[_at++]) : traits_type::eof();
}

std::streamsize MemoryBuf::xsgetn(char* to, std::streamsize n) {
    if (_at >= size()) return 0;
    const std::size_t count = std::min(static_cast<std::size_t>(n), size() - _at);
    std::memcpy(to, data() + _at, count);
    _at += count;
    return static_cast<std::streamsize>(count);
}

std::streamsize MemoryBuf::xsputn(const char* from, std::streamsize n) {
    const auto count = static_cast<std::size_t>(n);
    if (count == 0) return 0;
    if (_at > _limit || count > _limit - _at) return 0;
    if (_at > _own.size()) _own.resize(_at);
    const std::size_t over = std::min(count, _own.size() - _at);
    if (over > 0) std::memcpy(_own.data() + _at, from, over);
    _own.insert(_own.end(), from + over, from + count);
    _at += count;
    return n;
}

MemoryBuf::int_type MemoryBuf::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char one = traits_type::to_char_type(c);
    return xsputn(&one, 1) == 1 ? c : traits_type::eof();
}

MemoryBuf::pos_type MemoryBuf::seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) {
    const std::size_t origin = from == std::ios_base::beg ? 0 : from == std::ios_base::cur ? _at : size();
    const off_type target = static_cast<off_type>(origin) + offset;
    if (target < 0) return pos_type(off_type(-1));
    _at = static_cast<std::size_t>(target);
    return pos_type(target);
}

}  // namespace vellum
