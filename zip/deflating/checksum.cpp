#include "zip/deflating/checksum.h"

#include <zlib.h>
#if QUILLET_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace zip {

std::uint32_t crcOf(std::uint32_t crc, const void* bytes, std::size_t count) {
    // Not by libisal, which leaves the upper halves of vector registers in use: what runs next takes longer.
#if QUILLET_LIBDEFLATE
    return libdeflate_crc32(crc, bytes, count);
#else
    return static_cast<std::uint32_t>(crc32_z(crc, static_cast<const unsigned char*>(bytes), count));
#endif
}

std::uint32_t crcOfBoth(std::uint32_t first, std::uint32_t second, std::size_t count) {
    return static_cast<std::uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(count)));
}

}  // namespace zip
