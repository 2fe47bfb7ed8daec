// The bytes of an entry as they lie in the archive.
#pragma once
#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "zip/central_directory.h"
#include "zip/zip_source.h"

namespace zip {

/// Windows over an entry's stored bytes, from first to last.
class StoredBytes {
public:
    StoredBytes(const ZipSource& source, const ZipEntry& entry)
        : _source(source), _offset(entryDataOffset(source, entry)), _left(entry.compressedSize), _scratch(65536) {}

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

}  // namespace zip
