#include "zip/central_directory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <limits>
#include <optional>
#include <span>

#include "zip/messages.h"
#include "zip/zip_error.h"
#include "zip/zip_source.h"

namespace zip {
namespace {

constexpr std::uint32_t endSignature = 0x06054b50;
constexpr std::uint32_t zip64LocatorSignature = 0x07064b50;
constexpr std::uint32_t zip64EndSignature = 0x06064b50;
constexpr std::uint32_t entrySignature = 0x02014b50;
constexpr std::uint32_t localSignature = 0x04034b50;
constexpr std::uint16_t zip64Extra = 0x0001;

constexpr std::size_t endSize = 22;
constexpr std::size_t longestComment = 0xFFFF;
constexpr std::size_t zip64LocatorSize = 20;
constexpr std::size_t zip64EndSize = 56;
constexpr std::size_t entrySize = 46;
constexpr std::size_t localSize = 30;
constexpr std::uint64_t largeTotal = std::uint64_t{1} << 32;
constexpr std::uint64_t largeTotalRatio = 200;  // an archive beyond largeTotal must not expand more than this

/// Little-endian fields of a record in memory, checked against its end.
class Fields {
public:
    explicit Fields(std::span<const unsigned char> bytes) : _rest(bytes) {}

    std::size_t left() const { return _rest.size(); }

    std::span<const unsigned char> take(std::size_t count) {
        if (count > _rest.size()) throw ZipError(msg::damaged);
        const auto taken = _rest.first(count);
        _rest = _rest.subspan(count);
        return taken;
    }

    template <class Integer>
    Integer get() {
        Integer value = 0;
        int shift = 0;
        for (const unsigned char byte : take(sizeof(Integer))) {
            value = static_cast<Integer>(value | static_cast<Integer>(byte) << shift);
            shift += 8;
        }
        return value;
    }

private:
    std::span<const unsigned char> _rest;
};

template <std::size_t size>
std::array<unsigned char, size> recordAt(const ZipSource& source, std::uint64_t offset) {
    std::array<unsigned char, size> bytes;
    source.read(offset, bytes);
    return bytes;
}

/// Where the directory lies and what it claims.
struct Directory {
    std::uint64_t entries;
    std::uint64_t size;
    std::uint64_t offset;  // as recorded
    std::uint64_t end;     // offset of the record behind the directory
    bool zip64;
};

Directory readZip64End(const ZipSource& source, std::uint64_t endOffset) {
    if (endOffset < zip64LocatorSize) throw ZipError(msg::noZip64Directory);
    const auto locatorBytes = recordAt<zip64LocatorSize>(source, endOffset - zip64LocatorSize);
    Fields locator(locatorBytes);
    if (locator.get<std::uint32_t>() != zip64LocatorSignature) throw ZipError(msg::noZip64Directory);
    locator.get<std::uint32_t>();  // disk
    const auto offset = locator.get<std::uint64_t>();
    if (offset > endOffset || endOffset - offset < zip64EndSize) throw ZipError(msg::noZip64Directory);
    const auto bytes = recordAt<zip64EndSize>(source, offset);
    Fields end(bytes);
    if (end.get<std::uint32_t>() != zip64EndSignature) throw ZipError(msg::noZip64Directory);
    end.take(8 + 2 + 2 + 4 + 4);  // record size, versions, disks
    end.get<std::uint64_t>();     // entries on this disk
    Directory directory{};
    directory.entries = end.get<std::uint64_t>();
    directory.size = end.get<std::uint64_t>();
    directory.offset = end.get<std::uint64_t>();
    directory.end = offset;
    directory.zip64 = true;
    return directory;
}

bool signatureAt(const ZipSource& source, std::uint64_t offset, std::uint32_t signature) {
    if (offset > source.size() || source.size() - offset < 4) return false;
    const auto bytes = recordAt<4>(source, offset);
    return Fields(bytes).get<std::uint32_t>() == signature;
}

/// A count of 65,535 may be meant, where the directory has room for so many and there is no locator.
bool isZip64(const ZipSource& source, const Directory& directory) {
    if (directory.size == 0xFFFFFFFF || directory.offset == 0xFFFFFFFF) return true;
    if (directory.entries != 0xFFFF || directory.size / entrySize < 0xFFFF) return directory.entries == 0xFFFF;
    return directory.end >= zip64LocatorSize &&
           signatureAt(source, directory.end - zip64LocatorSize, zip64LocatorSignature);
}

Directory readEndAt(const ZipSource& source, std::uint64_t endOffset) {
    const auto bytes = recordAt<endSize>(source, endOffset);
    Fields end(bytes);
    end.take(4 + 2 + 2 + 2);  // signature, disks, entries on this disk
    Directory directory{};
    directory.entries = end.get<std::uint16_t>();
    directory.size = end.get<std::uint32_t>();
    directory.offset = end.get<std::uint32_t>();
    directory.end = endOffset;
    return isZip64(source, directory) ? readZip64End(source, endOffset) : directory;
}

/// Bytes in front of the archive, by which all recorded offsets are short: 0 but for archives behind a foreign head.
std::uint64_t bytesBefore(const ZipSource& source, const Directory& directory) {
    if (directory.offset > directory.end || directory.size > directory.end - directory.offset) {
        throw ZipError(msg::damaged);
    }
    if (directory.entries == 0 || signatureAt(source, directory.offset, entrySignature)) return 0;
    const std::uint64_t before = directory.end - directory.size - directory.offset;
    if (!signatureAt(source, directory.offset + before, entrySignature)) throw ZipError(msg::damaged);
    if (directory.zip64) throw ZipError(msg::bytesBeforeZip64);
    return before;
}

/// The directory that the end record tells of: of the last one whose signature stands with a comment that the archive
/// can hold. A comment may hold such bytes by chance: one with the directory right in front of it is better, and one
/// that leads to no directory counts only when there is no other.
Directory readEnd(const ZipSource& source) {
    const std::uint64_t size = source.size();
    if (size < endSize) throw ZipError(msg::noCentralDirectory);
    const auto tailSize = static_cast<std::size_t>(std::min<std::uint64_t>(size, endSize + longestComment));
    std::vector<unsigned char> tail(tailSize);
    source.read(size - tailSize, tail);
    std::optional<Directory> loose;
    std::exception_ptr refusal;  // of the last one
    for (std::size_t i = tailSize - endSize + 1; i-- > 0;) {
        if (tail[i] != 'P' || Fields(std::span(tail).subspan(i)).get<std::uint32_t>() != endSignature) continue;
        const std::size_t comment = tail[i + 20] | static_cast<std::size_t>(tail[i + 21]) << 8;
        if (comment > tailSize - endSize - i) continue;
        try {
            const Directory directory = readEndAt(source, size - tailSize + i);
            bytesBefore(source, directory);
            if (directory.offset + directory.size == directory.end) return directory;
            if (!loose) loose = directory;
        } catch (const ZipError&) {
            if (!refusal) refusal = std::current_exception();
        }
    }
    if (loose) return *loose;
    if (refusal) std::rethrow_exception(refusal);
    throw ZipError(msg::noCentralDirectory);
}

/// The Zip64 extra field gives, in this order, those of the three whose 32-bit field is at its maximum.
void applyZip64Extra(Fields extra, ZipEntry& entry) {
    while (extra.left() >= 4) {
        const auto id = extra.get<std::uint16_t>();
        const auto size = extra.get<std::uint16_t>();
        if (size > extra.left()) return;  // sloppy writers: what follows is no field
        Fields field(extra.take(size));
        if (id != zip64Extra) continue;
        for (std::uint64_t* value : {&entry.uncompressedSize, &entry.compressedSize, &entry.headerOffset}) {
            if (*value == 0xFFFFFFFF && field.left() >= 8) *value = field.get<std::uint64_t>();
        }
        return;
    }
}

ZipEntry readEntry(Fields& in) {
    if (in.get<std::uint32_t>() != entrySignature) throw ZipError(msg::damaged);
    in.take(2 + 2);  // versions
    ZipEntry entry{};
    entry.flags = in.get<std::uint16_t>();
    entry.method = in.get<std::uint16_t>();
    in.take(4);  // time
    entry.crc = in.get<std::uint32_t>();
    entry.compressedSize = in.get<std::uint32_t>();
    entry.uncompressedSize = in.get<std::uint32_t>();
    const auto nameLength = in.get<std::uint16_t>();
    const auto extraLength = in.get<std::uint16_t>();
    const auto commentLength = in.get<std::uint16_t>();
    in.take(2 + 2 + 4);  // disk, attributes
    entry.headerOffset = in.get<std::uint32_t>();
    const auto name = in.take(nameLength);
    entry.name.assign(name.begin(), std::find(name.begin(), name.end(), '\0'));  // no name goes on behind a zero
    applyZip64Extra(Fields(in.take(extraLength)), entry);
    in.take(commentLength);
    return entry;
}

void refuseOverlaps(const std::vector<ZipEntry>& entries, std::uint64_t directoryOffset) {
    std::vector<const ZipEntry*> byOffset;
    for (const ZipEntry& entry : entries) byOffset.push_back(&entry);
    std::sort(byOffset.begin(), byOffset.end(),
              [](const ZipEntry* a, const ZipEntry* b) { return a->headerOffset < b->headerOffset; });
    for (std::size_t i = 0; i < byOffset.size(); ++i) {
        const ZipEntry& entry = *byOffset[i];
        const std::uint64_t limit = i + 1 < byOffset.size() ? byOffset[i + 1]->headerOffset : directoryOffset;
        if (entry.headerOffset > limit || limit - entry.headerOffset < localSize ||
            limit - entry.headerOffset - localSize < entry.compressedSize) {
            throw ZipError(msg::damaged);
        }
    }
}

// No workbook is that large and that empty: all of it would be inflated before anybody could ask for less.
void refuseBomb(const std::vector<ZipEntry>& entries, std::uint64_t archiveSize) {
    std::uint64_t total = 0;
    for (const ZipEntry& entry : entries) {
        if (entry.uncompressedSize == unusableSize) continue;
        if (entry.uncompressedSize > std::numeric_limits<std::uint64_t>::max() - total) throw ZipError(msg::damaged);
        total += entry.uncompressedSize;
    }
    if (total > largeTotal && total / largeTotalRatio > archiveSize) throw ZipError(msg::damaged);
}

}  // namespace

std::vector<ZipEntry> readCentralDirectory(const ZipSource& source) {
    const Directory directory = readEnd(source);
    const std::uint64_t before = bytesBefore(source, directory);
    if (directory.entries > directory.size / entrySize) throw ZipError(msg::damaged);

    std::vector<unsigned char> bytes(static_cast<std::size_t>(directory.size));
    source.read(directory.offset + before, bytes);
    Fields in(bytes);
    std::vector<ZipEntry> entries;
    entries.reserve(static_cast<std::size_t>(directory.entries));
    for (std::uint64_t i = 0; i < directory.entries; ++i) {
        entries.push_back(readEntry(in));
        if (entries.back().headerOffset > source.size() - before) throw ZipError(msg::damaged);
        entries.back().headerOffset += before;
    }
    refuseOverlaps(entries, directory.offset + before);
    refuseBomb(entries, source.size());
    return entries;
}

std::uint64_t entryDataOffset(const ZipSource& source, const ZipEntry& entry) {
    const auto bytes = recordAt<localSize>(source, entry.headerOffset);
    Fields local(bytes);
    if (local.get<std::uint32_t>() != localSignature) throw ZipError(msg::damaged);
    local.take(22);  // repeated from the central directory, or left out
    const auto nameLength = local.get<std::uint16_t>();
    const auto extraLength = local.get<std::uint16_t>();
    const std::uint64_t offset = entry.headerOffset + localSize + nameLength + extraLength;
    if (offset > source.size() || entry.compressedSize > source.size() - offset) throw ZipError(msg::damaged);
    return offset;
}

}  // namespace zip
