// The compound file's header and directory entries, field by field as they lie on disk.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum {

/// Sector numbers with a meaning of their own.
inline constexpr std::uint32_t freeSector = 0xFFFFFFFF;
inline constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
inline constexpr std::uint32_t fatSector = 0xFFFFFFFD;
inline constexpr std::uint32_t difatSector = 0xFFFFFFFC;

inline constexpr std::size_t headerDifatEntries = 109;
inline constexpr std::size_t dirEntrySize = 128;
/// Streams below this lie in the mini stream.
inline constexpr std::uint32_t miniStreamCutoff = 4096;

struct CompoundHeader {
    std::array<std::uint8_t, 8> magic{0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
    std::array<std::uint8_t, 16> clsid{};
    std::uint16_t minorVersion = 62, majorVersion = 3;
    std::uint16_t byteOrder = 0xFFFE;
    std::uint16_t sectorShift = 9, miniSectorShift = 6;
    std::array<std::uint8_t, 6> reserved{};
    std::uint32_t numDirSectors = 0;  // version 4 only
    std::uint32_t numFatSectors = 0;
    std::uint32_t firstDirSector = endOfChain;
    std::uint32_t transactionSignature = 0;
    std::uint32_t miniStreamCutoffSize = miniStreamCutoff;
    std::uint32_t firstMiniFatSector = endOfChain;
    std::uint32_t numMiniFatSectors = 0;
    std::uint32_t firstDifatSector = endOfChain;
    std::uint32_t numDifatSectors = 0;
    std::array<std::uint32_t, headerDifatEntries> difat = allFree();

    template <class Self, class Visit>
    static constexpr void fields(Self& h, Visit&& visit) {
        visit("magic", h.magic);
        visit("clsid", h.clsid);
        visit("minorVersion", h.minorVersion);
        visit("majorVersion", h.majorVersion);
        visit("byteOrder", h.byteOrder);
        visit("sectorShift", h.sectorShift);
        visit("miniSectorShift", h.miniSectorShift);
        visit("reserved", h.reserved);
        visit("numDirSectors", h.numDirSectors);
        visit("numFatSectors", h.numFatSectors);
        visit("firstDirSector", h.firstDirSector);
        visit("transactionSignature", h.transactionSignature);
        visit("miniStreamCutoffSize", h.miniStreamCutoffSize);
        visit("firstMiniFatSector", h.firstMiniFatSector);
        visit("numMiniFatSectors", h.numMiniFatSectors);
        visit("firstDifatSector", h.firstDifatSector);
        visit("numDifatSectors", h.numDifatSectors);
        visit("difat", h.difat);
    }

private:
    static constexpr std::array<std::uint32_t, headerDifatEntries> allFree() {
        std::array<std::uint32_t, headerDifatEntries> entries{};
        entries.fill(freeSector);
        return entries;
    }
};

/// A storage, a stream or the root, 128 bytes each.
struct DirEntry {
    enum Type : std::uint8_t { unused = 0, storage = 1, stream = 2, root = 5 };

    std::array<std::uint16_t, 32> nameUnits{};
    std::uint16_t length = 0;  // bytes of the name with its null
    std::uint8_t type = unused;
    std::uint8_t color = 1;
    std::uint32_t leftSiblingID = freeSector, rightSiblingID = freeSector, childID = freeSector;
    std::array<std::uint8_t, 16> clsid{};
    std::uint32_t state = 0;
    std::uint64_t creationTime = 0, modifiedTime = 0;
    std::uint32_t startingSectorLocation = endOfChain;
    std::uint32_t streamSize = 0;
    std::uint32_t streamSizeHigh = 0;  // has no meaning below 4 GB; cleared on reading

    DirEntry() = default;
    /// Throws when `name` is null or has 32 or more characters.
    DirEntry(const wchar_t* name, std::uint8_t entryType, std::uint32_t child);

    /// Up to the null or 32 units, one wide character each.
    [[nodiscard]] std::wstring name() const;
    /// Equal without regard to case.
    [[nodiscard]] bool isNamed(std::wstring_view other) const;

    template <class Self, class Visit>
    static constexpr void fields(Self& e, Visit&& visit) {
        visit("name", e.nameUnits);
        visit("length", e.length);
        visit("type", e.type);
        visit("color", e.color);
        visit("leftSiblingID", e.leftSiblingID);
        visit("rightSiblingID", e.rightSiblingID);
        visit("childID", e.childID);
        visit("clsid", e.clsid);
        visit("state", e.state);
        visit("creationTime", e.creationTime);
        visit("modifiedTime", e.modifiedTime);
        visit("startingSectorLocation", e.startingSectorLocation);
        visit("streamSize", e.streamSize);
        visit("streamSizeHigh", e.streamSizeHigh);
    }
};

}  // namespace vellum
