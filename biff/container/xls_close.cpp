// The layout of a saved compound file: main stream, kept streams, mini FAT, DIFAT, FAT, directory, in one run of
// sectors of 512 bytes, and last the header.
#include <iostream>

#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

constexpr std::uint32_t entriesPerSector = 128;
constexpr std::uint32_t dirEntriesPerSector = 4;
constexpr std::uint64_t maxContent = 0xF0000000;  // the tables take a hundredth more; sizes have 32 bits
constexpr std::uint32_t difatEntriesPerSector = entriesPerSector - 1;  // the last one links to the next

std::uint32_t sectorsFor(std::size_t count, std::uint32_t perSector) {
    return static_cast<std::uint32_t>((count + perSector - 1) / perSector);
}

// The FAT has to hold itself too. These sums leave slack, on purpose.
std::uint32_t fatSectorsFor(std::uint32_t sectors) {
    const std::uint32_t a = sectorsFor(sectors, entriesPerSector);
    const std::uint32_t b = sectorsFor(a, entriesPerSector);
    return a + b + sectorsFor(b, entriesPerSector) + (b >= 101 ? 3 : 0);
}

std::uint32_t difatSectorsFor(std::uint32_t fatSectors) {
    return fatSectors <= headerDifatEntries ? 0 : sectorsFor(fatSectors - headerDifatEntries, difatEntriesPerSector);
}

std::uint32_t& checked(std::vector<std::uint32_t>& table, std::uint32_t index, const char* outOfRange) {
    if (index >= table.size()) throw vlerror(outOfRange);
    return table[index];
}

}  // namespace

// Zeros up to the next sector's start behind `bytes` bytes; returns how many sectors that makes.
std::uint32_t Xls::padToSector(std::uint64_t bytes, std::byte fill) {
    const auto sectors = static_cast<std::uint32_t>((bytes + _sectorSize - 1) / _sectorSize);
    const std::vector<std::byte> padding(std::uint64_t{sectors} * _sectorSize - bytes, fill);
    _stream->write(reinterpret_cast<const char*>(padding.data()), static_cast<std::streamsize>(padding.size()));
    if (!*_stream) throw vlerror(biff::msg::blankSectorError);
    return sectors;
}

void Xls::close() {
    const std::uint64_t written = _flushed + _out.size();
    std::uint64_t content = written + _miniFat.size() * sizeof(std::uint32_t);
    for (const KeptStream& kept : _kept) content += kept.bytes.size();
    if (content > maxContent) throw vlerror(biff::msg::closeTooBig);
    // Below the cutoff readers would look for the stream among the mini sectors.
    if (written > 0 && written < miniStreamCutoff) _out.fill(miniStreamCutoff - written);
    flush();
    _dir[_mainEntry].startingSectorLocation = 0;
    _dir[_mainEntry].streamSize = static_cast<std::uint32_t>(_flushed);
    _dir[_mainEntry].streamSizeHigh = 0;

    std::uint32_t sectors = padToSector(_flushed);
    sectors = writeKeptStreams(sectors);
    sectors = writeMiniFat(sectors);
    const std::uint32_t dirSectors = sectorsFor(_dir.size(), dirEntriesPerSector);
    _header.numFatSectors = fatSectorsFor(sectors + dirSectors);
    _header.numDifatSectors = difatSectorsFor(_header.numFatSectors);
    buildFat(sectors, dirSectors);
    writeDifat(sectors);
    writeRaw(std::as_bytes(std::span(_fat)));
    _header.firstDirSector = sectors + _header.numDifatSectors + _header.numFatSectors;
    writeDirectory();
    _fileSize = static_cast<std::uint32_t>(_stream->tellp());
    writeHeader();
    _out.release();
}

std::uint32_t Xls::writeKeptStreams(std::uint32_t sectors) {
    for (const KeptStream& kept : _kept) {
        DirEntry& entry = _dir[kept.entry];
        entry.startingSectorLocation = kept.bytes.empty() ? endOfChain : sectors;
        entry.streamSize = static_cast<std::uint32_t>(kept.bytes.size());
        writeRaw(kept.bytes);
        sectors += padToSector(kept.bytes.size());
    }
    return sectors;
}

std::uint32_t Xls::writeMiniFat(std::uint32_t sectors) {
    if (_miniFat.empty()) return sectors;
    const auto bytes = std::as_bytes(std::span(_miniFat));
    writeRaw(bytes);
    _header.firstMiniFatSector = sectors;
    _header.numMiniFatSectors = padToSector(bytes.size());
    return sectors + _header.numMiniFatSectors;
}

void Xls::cutChainBefore(std::uint32_t sector, const char* outOfRange) {
    checked(_fat, sector - 1, outOfRange) = endOfChain;
}

// One chain over all streams first, then cut where they meet.
void Xls::buildFat(std::uint32_t sectors, std::uint32_t dirSectors) {
    _fat.assign(std::size_t{_header.numFatSectors} * entriesPerSector, freeSector);
    const auto entry = [this](std::uint32_t at) -> std::uint32_t& {
        return checked(_fat, at, biff::msg::closeSectorOutOfFat);
    };
    for (std::uint32_t sector = 0; sector < sectors; ++sector) {
        entry(sector) = sector + 1 < sectors ? sector + 1 : endOfChain;
    }
    std::uint32_t at = sectors;
    for (std::uint32_t i = 0; i < _header.numDifatSectors; ++i) entry(at++) = difatSector;
    for (std::uint32_t i = 0; i < _header.numFatSectors; ++i) entry(at++) = fatSector;
    for (std::uint32_t i = 0; i < dirSectors; ++i, ++at) entry(at) = i + 1 < dirSectors ? at + 1 : endOfChain;

    if (!_miniFat.empty()) cutChainBefore(_header.firstMiniFatSector, biff::msg::closeMiniFat);
    for (const KeptStream& kept : _kept) {
        const std::uint32_t start = _dir[kept.entry].startingSectorLocation;
        if (start != endOfChain) cutChainBefore(start, biff::msg::closeStartingSector);
    }
}

// A file without DIFAT sectors must name none as the first: readers follow any other value as a chain.
void Xls::writeDifat(std::uint32_t sectors) {
    const std::uint32_t firstFat = sectors + _header.numDifatSectors;
    std::vector<std::uint32_t> tail(std::size_t{_header.numDifatSectors} * difatEntriesPerSector, freeSector);
    for (std::uint32_t i = 0; i < _header.numFatSectors; ++i) {
        if (i < headerDifatEntries) {
            _header.difat[i] = firstFat + i;
        } else {
            checked(tail, i - static_cast<std::uint32_t>(headerDifatEntries), biff::msg::closeDifatIndex) =
                firstFat + i;
        }
    }
    _header.firstDifatSector = _header.numDifatSectors == 0 ? endOfChain : sectors;
    Sink sector;
    for (std::uint32_t i = 0; i < _header.numDifatSectors; ++i) {
        sector.clear();
        sector.write(std::as_bytes(std::span(tail).subspan(i * difatEntriesPerSector, difatEntriesPerSector)));
        sector.put(i + 1 < _header.numDifatSectors ? sectors + i + 1 : endOfChain);
        writeRaw(sector.bytes());
    }
    _difat.assign(_header.difat.begin(), _header.difat.end());
    _difat.insert(_difat.end(), tail.begin(), tail.end());
}

void Xls::writeDirectory() {
    Sink entries;
    for (const DirEntry& entry : _dir) writeFields(entries, entry);
    writeRaw(entries.bytes());
    padToSector(entries.size());
}

void Xls::writeHeader() {
    Sink header;
    writeFields(header, _header);
    _stream->seekp(0);
    writeRaw(header.bytes());
    _stream->flush();
    if (!*_stream) throw vlerror(biff::msg::streamError);
}

}  // namespace vellum
