// The compound file's header, tables and directory. Every count and sector number is a claim: tables grow as
// sectors arrive, and the sum of all sectors taken may not pass the file's size.
#include <algorithm>
#include <iostream>

#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

constexpr std::size_t headerSize = 512;
constexpr std::uint64_t maxFileSize = 0xFFFFFFFF;
constexpr std::uint32_t minSectorSize = 128;  // one directory entry

void appendEntries(std::vector<std::uint32_t>& table, std::span<const std::byte> bytes) {
    const std::size_t before = table.size();
    table.resize(before + bytes.size() / sizeof(std::uint32_t));
    std::memcpy(table.data() + before, bytes.data(), (table.size() - before) * sizeof(std::uint32_t));
}

}  // namespace

void Xls::measure() {
    _stream->clear();
    _stream->seekg(0, std::ios::end);
    const std::streamoff size = _stream->tellg();
    _stream->seekg(0);
    if (size > 0 && static_cast<std::uint64_t>(size) > maxFileSize) throw vlerror(biff::msg::fileTooBig);
    _fileSize = size < 0 ? 0 : static_cast<std::uint32_t>(size);
}

void Xls::read(std::uint64_t& counter) {
    dropFile();
    if (_fileSize < headerSize) throw vlerror(biff::msg::fileTooSmall);
    _file = std::make_unique_for_overwrite<std::byte[]>(_fileSize);
    _stream->read(reinterpret_cast<char*>(_file.get()), static_cast<std::streamsize>(_fileSize));
    _fileSize = static_cast<std::uint32_t>(_stream->gcount());  // it may have shrunk since
    if (_fileSize < headerSize) throw vlerror(biff::msg::fileTooSmall);

    loadHeader(counter);
    loadDifat(counter);
    loadFat(counter);
    loadMiniFat(counter);
    loadDir(counter);

    _kept.clear();
    _encrypted = false;
    _mainEntry = findMainEntry();
    if (_mainEntry == noEntry) {
        _encryptionInfo = findEntry(L"EncryptionInfo");
        if (_encryptionInfo == noEntry) throw vlerror(biff::msg::noEncryptionInfo);
        _encrypted = true;
        return openEntry(_encryptionInfo);
    }
    openEntry(_mainEntry);
}

void Xls::loadHeader(std::uint64_t& counter) {
    Cursor in({_file.get(), headerSize});
    CompoundHeader header;
    if (!std::ranges::equal(in.rest().first(header.magic.size()), std::as_bytes(std::span(header.magic)))) {
        throw vlerror(biff::msg::notCompoundFile);
    }
    readFields(in, header);
    counter += headerSize;
    _header = header;
    constexpr unsigned bits = 32;
    _sectorSize = header.sectorShift < bits ? std::uint32_t{1} << header.sectorShift : 0;
    _miniSectorSize = header.miniSectorShift < bits ? std::uint32_t{1} << header.miniSectorShift : 0;
    if (_sectorSize == 0) throw vlerror(biff::msg::sectorSizeZero);
    if (_miniSectorSize == 0) throw vlerror(biff::msg::miniSectorSizeZero);
    if (_sectorSize < minSectorSize || _miniSectorSize > _sectorSize) throw vlerror(biff::msg::sectorSizeUnusable);
}

std::optional<std::span<const std::byte>> Xls::sectorBytes(std::uint32_t sector) const {
    const std::uint64_t at = (std::uint64_t{sector} + 1) * _sectorSize;
    if (at + _sectorSize > _fileSize) return std::nullopt;
    return std::span<const std::byte>(_file.get() + at, _sectorSize);
}

void Xls::loadDifat(std::uint64_t& counter) {
    _difat.assign(_header.difat.begin(), _header.difat.end());
    if (_header.firstDifatSector >= endOfChain || _header.numDifatSectors == 0) return;
    std::uint32_t found = 0;
    for (std::uint32_t sector = _header.firstDifatSector; sector < endOfChain; ++found) {
        if (found == _header.numDifatSectors) throw vlerror(biff::msg::difatTooLong(_header.numDifatSectors));
        const auto bytes = sectorBytes(sector);
        if (!bytes) {
            const std::uint64_t link = (std::uint64_t{sector} + 2) * _sectorSize - sizeof sector;
            throw vlerror(link > _fileSize ? biff::msg::difatCorruptEntries : biff::msg::difatCorruptLink);
        }
        counter += _sectorSize;
        if (counter > _fileSize) throw vlerror(biff::msg::difatCorruptEntries);
        appendEntries(_difat, bytes->first(_sectorSize - sizeof sector));
        sector = loadLe<std::uint32_t>(bytes->last(sizeof sector).data());
    }
    if (found != _header.numDifatSectors) throw vlerror(biff::msg::difatTooShort(found, _header.numDifatSectors));
}

void Xls::loadFat(std::uint64_t& counter) {
    const auto found = _difat.size() - static_cast<std::size_t>(std::ranges::count(_difat, freeSector));
    if (found != _header.numFatSectors) {
        throw vlerror(biff::msg::fatCount(static_cast<std::uint32_t>(found), _header.numFatSectors));
    }
    _fat.clear();
    for (const std::uint32_t sector : _difat) {
        if (sector == freeSector) continue;
        const auto bytes = sectorBytes(sector);
        counter += _sectorSize;
        if (!bytes || counter > _fileSize) throw vlerror(biff::msg::fatCorrupt);
        appendEntries(_fat, *bytes);
    }
}

void Xls::loadMiniFat(std::uint64_t& counter) {
    _miniFat.clear();
    if (_header.firstMiniFatSector == 0 || _header.firstMiniFatSector >= difatSector) return;
    std::uint32_t found = 0;
    for (std::uint32_t sector = _header.firstMiniFatSector; sector != endOfChain; ++found) {
        if (sector >= _fat.size()) throw vlerror(biff::msg::miniFatEndless);
        if (found == _header.numMiniFatSectors) throw vlerror(biff::msg::miniFatTooLong);
        const auto bytes = sectorBytes(sector);
        counter += _sectorSize;
        if (!bytes || counter > _fileSize) throw vlerror(biff::msg::miniFatCorrupt);
        appendEntries(_miniFat, *bytes);
        if (_fat[sector] == sector) throw vlerror(biff::msg::miniFatSelfLink);
        sector = _fat[sector];
    }
}

std::uint32_t Xls::countDirSectors() const {
    std::uint32_t count = 0;
    for (std::uint32_t sector = _header.firstDirSector; sector != endOfChain; ++count) {
        if (sector >= _fat.size()) throw vlerror(biff::msg::dirSectorNotInFat(sector));
        if (_fat[sector] == sector) throw vlerror(biff::msg::dirSelfLinkCount);
        if (std::uint64_t{count} * _sectorSize > _fileSize) throw vlerror(biff::msg::dirCorruptCount);
        sector = _fat[sector];
    }
    return count;
}

void Xls::loadDir(std::uint64_t& counter) {
    _dir.clear();
    if (_header.firstDirSector == endOfChain) return;
    const std::uint32_t sectors = countDirSectors();
    _dir.reserve(std::size_t{sectors} * (_sectorSize / dirEntrySize));
    for (std::uint32_t sector = _header.firstDirSector; sector != endOfChain; sector = _fat[sector]) {
        const auto bytes = sectorBytes(sector);
        counter += _sectorSize;
        if (!bytes || counter > _fileSize) throw vlerror(biff::msg::dirCorruptRead);
        Cursor in(*bytes);
        while (in.left() >= dirEntrySize) {
            readFields(in, _dir.emplace_back());
            _dir.back().streamSizeHigh = 0;
        }
    }
}

// The entries directly under the root: its child and that one's tree of siblings, in the order of the tree's walk.
std::vector<std::size_t> Xls::rootChildren() const {
    std::vector<std::size_t> children, open;
    std::vector<bool> seen(_dir.size());
    const auto visit = [&](std::uint32_t id) {
        if (id >= _dir.size() || seen[id]) return;
        seen[id] = true;
        open.push_back(id);
    };
    const auto root = std::ranges::find(_dir, std::uint8_t{DirEntry::root}, &DirEntry::type);
    if (root == _dir.end()) return children;
    visit(root->childID);
    while (!open.empty()) {
        const std::size_t id = open.back();
        open.pop_back();
        children.push_back(id);
        visit(_dir[id].rightSiblingID);
        visit(_dir[id].leftSiblingID);
    }
    return children;
}

std::size_t Xls::findEntry(std::wstring_view name) const {
    const auto at = std::ranges::find_if(
        _dir, [&](const DirEntry& entry) { return entry.type == DirEntry::stream && entry.isNamed(name); });
    return at == _dir.end() ? noEntry : static_cast<std::size_t>(at - _dir.begin());
}

// A workbook embedded in this one has a stream of the same name in a storage of its own, perhaps earlier in the list.
std::size_t Xls::findMainEntry() const {
    const auto children = rootChildren();
    for (const wchar_t* name : {L"Workbook", L"Book"}) {
        for (const std::size_t id : children) {
            if (_dir[id].type == DirEntry::stream && _dir[id].isNamed(name)) return id;
        }
    }
    const std::size_t workbook = findEntry(L"Workbook");
    return workbook != noEntry ? workbook : findEntry(L"Book");
}

const DirEntry* Xls::findMainStream() {
    _mainEntry = findMainEntry();
    return _mainEntry == noEntry ? nullptr : &_dir[_mainEntry];
}

}  // namespace vellum
