// Streams of a loaded compound file: their chains, joined once into contiguous bytes. Writers lay a stream down in
// sectors that mostly follow each other, so a chain is walked once and becomes a few runs of the file: one run is used
// in place, several are copied together, and records are then read from plain memory with no thought of sectors. A
// short stream does the same one floor higher: its mini sectors lie in the root entry's stream, itself a chain of
// sectors.
#include <algorithm>
#include <cstring>

#include "biff/container/messages.h"
#include "biff/container/xls.h"
#include "engine/failure/vlerror.h"

namespace vellum {

/// What a chain of sectors delivers, as pieces of the file that lie in a row.
struct Xls::Chain {
    struct Run {
        std::uint64_t at;
        std::size_t size;
    };
    std::vector<Run> runs;
    std::size_t bytes = 0;
    bool broken = false;  // it goes on to a sector outside its table

    /// False when the file ends within the piece, behind which nothing can follow.
    bool append(std::uint64_t at, std::size_t size, std::size_t fileSize) {
        const std::size_t there = at < fileSize ? std::min<std::uint64_t>(size, fileSize - at) : 0;
        if (!runs.empty() && runs.back().at + runs.back().size == at) {
            runs.back().size += there;
        } else if (there > 0) {
            runs.push_back({at, there});
        }
        bytes += there;
        return there == size;
    }

    void copyTo(std::byte* to, std::size_t limit, const std::byte* file) const {
        for (const Run& run : runs) {
            const std::size_t n = std::min(run.size, limit);
            std::memcpy(to, file + run.at, n);
            to += n;
            limit -= n;
        }
    }
};

// A chain that comes back to itself ends where it has delivered more than the file holds.
Xls::Chain Xls::regularChain(std::uint32_t start, std::size_t atMost) const {
    Chain chain;
    const std::size_t limit = std::min<std::size_t>(atMost, _fileSize);
    for (std::uint32_t sector = start; sector != endOfChain && chain.bytes < limit; sector = _fat[sector]) {
        if (sector >= _fat.size()) {
            chain.broken = true;
            break;
        }
        if (!chain.append((std::uint64_t{sector} + 1) * _sectorSize, _sectorSize, _fileSize)) break;
    }
    return chain;
}

Xls::Chain Xls::miniChain(std::uint32_t start) const {
    if (_dir.empty()) throw vlerror(biff::msg::miniDirEmpty);
    std::vector<std::uint32_t> rootSectors;
    for (std::uint32_t sector = _dir.front().startingSectorLocation;
         sector < _fat.size() && rootSectors.size() < _fat.size(); sector = _fat[sector]) {
        rootSectors.push_back(sector);
    }
    const std::uint32_t perSector = _sectorSize / _miniSectorSize;
    Chain chain;
    std::size_t steps = 0;  // mini sectors may be as small as a byte, so their number is bounded too
    for (std::uint32_t mini = start; mini != endOfChain && chain.bytes < _fileSize; mini = _miniFat[mini]) {
        if (steps++ > _miniFat.size()) break;
        const std::size_t step = mini / perSector;
        if (mini >= _miniFat.size() || step >= rootSectors.size()) {
            chain.broken = true;
            break;
        }
        const std::uint64_t at =
            (std::uint64_t{rootSectors[step]} + 1) * _sectorSize + std::uint64_t{mini % perSector} * _miniSectorSize;
        if (!chain.append(at, _miniSectorSize, _fileSize)) break;
    }
    return chain;
}

void Xls::openChain(Chain&& chain) {
    if (chain.runs.size() == 1) {
        _open = {_file.get() + chain.runs.front().at, chain.bytes};
    } else {
        _joined = std::make_unique_for_overwrite<std::byte[]>(chain.bytes);
        chain.copyTo(_joined.get(), chain.bytes, _file.get());
        _open = {_joined.get(), chain.bytes};
    }
    _at = 0;
    _brokenChain = chain.broken;
}

// Some files name a free sector, or one of the FAT's own, as a stream's start; the stream then begins at the next one
// in use. A stream that fits one sector rightly has the chain's end there.
std::uint32_t Xls::tolerantStart(std::uint32_t start, std::uint32_t streamSize) const {
    if (start >= _fat.size()) throw vlerror(biff::msg::sectorOutOfFat);
    if (_fat[start] == endOfChain && streamSize <= _sectorSize) return start;
    while (_fat[start] >= fatSector) {
        if (++start >= _fat.size()) throw vlerror(biff::msg::sectorOutOfFat);
    }
    return start;
}

void Xls::openStream(const DirEntry& entry) {
    const std::uint32_t start = entry.startingSectorLocation;
    if (start == endOfChain) throw vlerror(biff::msg::streamEmpty);
    openChain(entry.streamSize >= miniStreamCutoff ? regularChain(tolerantStart(start, entry.streamSize), _fileSize)
                                                   : miniChain(start));
}

void Xls::openEntry(std::size_t entry) {
    openStream(_dir[entry]);
}

std::uint32_t Xls::openEncryptedPackage() {
    _encryptedPackage = findEntry(L"EncryptedPackage");
    if (_encryptedPackage == noEntry) throw vlerror(biff::msg::noEncryptedPackage);
    const DirEntry& entry = _dir[_encryptedPackage];
    if (entry.startingSectorLocation == endOfChain) throw vlerror(biff::msg::encryptedPackageEmpty);
    openStream(entry);
    return entry.streamSize;
}

// Streams below the cutoff need no copies of their own: they lie in the root's stream, which is kept, and the directory
// and the mini FAT stay as they are.
void Xls::extractKeptStreams() {
    _kept.clear();
    std::size_t total = 0;
    for (std::size_t id = 0; id < _dir.size(); ++id) {
        const DirEntry& entry = _dir[id];
        const std::uint32_t start = entry.startingSectorLocation;
        if (id == _mainEntry || start == endOfChain || start == freeSector || entry.type < DirEntry::stream) continue;
        const bool holdsMiniStream = entry.type == DirEntry::root || entry.isNamed(L"Root Entry");
        const bool regular = entry.streamSize >= _header.miniStreamCutoffSize;
        if (!regular && (entry.streamSize == 0 || !holdsMiniStream)) continue;

        const Chain chain = regularChain(start, entry.streamSize);
        if (chain.broken) throw vlerror(biff::msg::sectorOutOfFat);
        const std::size_t size = std::min<std::size_t>(chain.bytes, entry.streamSize);
        total += size;
        if (total > _fileSize) throw vlerror(biff::msg::keptStreamsCorrupt);
        KeptStream kept{id, std::vector<std::byte>(size)};
        chain.copyTo(kept.bytes.data(), size, _file.get());
        _kept.push_back(std::move(kept));
    }
    dropFile();
}

void Xls::dropFile() {
    _file.reset();
    _joined.reset();
    _open = {};
    _at = 0;
    _brokenChain = false;
}

}  // namespace vellum
