// The list of entries at the end of an archive.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace zip {

class ZipSource;

/// One entry, by the central directory alone: local headers leave sizes out where a data descriptor follows.
struct ZipEntry {
    std::string name;  // with its path, as stored
    std::uint64_t compressedSize;
    std::uint64_t uncompressedSize;  // unusableSize marks an entry that cannot be extracted
    std::uint64_t headerOffset;      // of the local header, from the start of the source
    std::uint32_t crc;
    std::uint16_t method;
    std::uint16_t flags;
};

constexpr std::uint64_t unusableSize = 0xFFFFFFFF;

enum ZipMethod : std::uint16_t { zipStored = 0, zipDeflated = 8, zipBzip2 = 12 };

constexpr std::uint16_t zipEncrypted = 1;  // bit of `flags`

/// Reads the central directory, plain or Zip64. Throws ZipError when it is missing, when it claims more entries or
/// bytes than the archive can hold, and when entries overlap, as only archives do that were made to expand without end.
std::vector<ZipEntry> readCentralDirectory(const ZipSource& source);

/// Offset of the entry's data, behind its local header. Throws when the archive does not hold all of them.
std::uint64_t entryDataOffset(const ZipSource& source, const ZipEntry& entry);

}  // namespace zip
