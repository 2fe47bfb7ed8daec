#include "biff/container/xls.h"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <utility>

#include "biff/container/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

Xls::Xls() {
    reset(true);
}

void Xls::reset(bool fresh) {
    dropFile();
    _marked = {};
    _out.clear();
    _flushed = 0;
    _writing = false;
    const CompoundHeader loaded = std::exchange(_header, {});
    if (!fresh) {
        // The kept mini stream was cut by these; they are 4096 and 6 in all sound files.
        _header.miniStreamCutoffSize = loaded.miniStreamCutoffSize;
        if (loaded.miniSectorShift <= _header.sectorShift) _header.miniSectorShift = loaded.miniSectorShift;
    }
    _sectorSize = std::uint32_t{1} << _header.sectorShift;
    _miniSectorSize = std::uint32_t{1} << _header.miniSectorShift;
    _encrypted = false;
    _encryptionInfo = _encryptedPackage = noEntry;
    if (!fresh) _mainEntry = findMainEntry();
    if (!fresh && _mainEntry != noEntry) return;
    _header = {};
    _difat.clear();
    _fat.clear();
    _miniFat.clear();
    _kept.clear();
    _dir.clear();
    _dir.emplace_back(L"Root Entry", DirEntry::root, 1);
    _dir.emplace_back(L"Workbook", DirEntry::stream, freeSector);
    _mainEntry = 1;
}

std::size_t Xls::readBytes(void* dest, std::size_t count) {
    const std::size_t n = std::min(count, _open.size() - _at);
    if (n < count && _brokenChain) throw vlerror(biff::msg::sectorOutOfFat);
    if (n > 0) std::memcpy(dest, _open.data() + _at, n);
    _at += n;
    return n;
}

std::span<const std::byte> Xls::take(std::size_t count) {
    if (count > _open.size() - _at) throw vlerror(_brokenChain ? biff::msg::sectorOutOfFat : biff::msg::streamEnds);
    const auto bytes = _open.subspan(_at, count);
    _at += count;
    return bytes;
}

std::optional<RecordHeader> Xls::peekHeader() const {
    const auto rest = _open.subspan(_at);
    if (rest.size() < sizeof(std::uint16_t)) {
        if (_brokenChain) throw vlerror(biff::msg::sectorOutOfFat);
        return std::nullopt;
    }
    RecordHeader header;
    header.id = loadLe<std::uint16_t>(rest.data());
    // Cut behind the identifier: whoever takes the header finds the end there.
    if (rest.size() >= recordHeaderSize) header.size = loadLe<std::uint16_t>(rest.data() + sizeof header.id);
    return header;
}

std::uint16_t Xls::peekRecordId() const {
    const auto header = peekHeader();
    return header ? header->id : std::uint16_t{0};
}

std::optional<RecordHeader> Xls::nextRecord() {
    const auto header = peekHeader();
    if (!header) {
        _at = _open.size();
        return std::nullopt;
    }
    if (header->id == 0) throw vlerror(biff::msg::recordIdZero);
    skip(recordHeaderSize);
    return header;
}

RecordHeader Xls::readHeader() {
    const auto bytes = take(recordHeaderSize);
    return {loadLe<std::uint16_t>(bytes.data()), loadLe<std::uint16_t>(bytes.data() + sizeof(std::uint16_t))};
}

void Xls::mark(std::uint32_t value) {
    _marked = {_at, value};
}

std::uint32_t Xls::rewind() {
    _at = std::min(_marked.at, _open.size());
    return _marked.value;
}

void Xls::needContinue(std::uint16_t& budget, const char* notFound) {
    while (budget == 0) {
        const RecordHeader header = readHeader();
        if (header.id != record_id::Continue) throw vlerror(notFound);
        budget = header.size;
    }
}

void Xls::readWithContinueRecords(void* dest, std::size_t count, std::uint16_t& budget) {
    auto* to = static_cast<std::byte*>(dest);
    while (count > 0) {
        needContinue(budget, biff::msg::continueNotFound);
        const std::size_t n = std::min<std::size_t>(count, budget);
        std::memcpy(to, take(n).data(), n);
        to += n;
        count -= n;
        budget = static_cast<std::uint16_t>(budget - n);
    }
}

std::uint16_t Xls::readInt16(std::uint16_t& budget) {
    std::uint16_t value = 0;
    for (unsigned shift = 0; shift < 16; shift += 8) {
        needContinue(budget, biff::msg::continueNotFoundInt16);
        value = static_cast<std::uint16_t>(value | (readInt8() << shift));
        --budget;
    }
    return value;
}

std::uint32_t Xls::readInt32(std::uint16_t& budget) {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        needContinue(budget, biff::msg::continueNotFoundInt32);
        value |= std::uint32_t{readInt8()} << shift;
        --budget;
    }
    return value;
}

bool Xls::acceptContinue(std::uint16_t& budget) {
    if (budget != 0 || peekRecordId() != record_id::Continue) return false;
    budget = readHeader().size;
    return true;
}

void Xls::readString(std::string* s, std::size_t maxLength, std::uint16_t& budget) {
    if (s == nullptr) throw vlerror(biff::msg::readStringNull);
    s->clear();
    while (s->size() < maxLength) {
        char c = 0;
        readWithContinueRecords(&c, 1, budget);
        if (c == 0) return;
        s->push_back(c);
    }
}

void Xls::readStringWithoutNull(std::string* s, std::size_t count, std::uint16_t& budget) {
    if (s == nullptr) throw vlerror(biff::msg::readStringWithoutNullNull);
    if (count > _open.size() - _at) throw vlerror(biff::msg::streamEnds);
    s->resize(count);
    readWithContinueRecords(s->data(), count, budget);
}

void Xls::writeBytes(std::span<const std::byte> bytes) {
    constexpr std::size_t worthNoCopy = 1 << 16;
    if (bytes.size() < worthNoCopy) return out().write(bytes);
    flush();
    writeRaw(bytes);
    _flushed += bytes.size();
}

void Xls::writeRecord(std::uint16_t id, std::span<const std::byte> body) {
    Sink& sink = out();
    sink.putAll(id, static_cast<std::uint16_t>(body.size()));
    sink.write(body);
}

void Xls::writeStringZ(const wchar_t* text) {
    Sink& sink = out();
    for (; *text != 0; ++text) sink.put(static_cast<std::uint8_t>(*text));
    sink.put(std::uint8_t{0});
}

void Xls::writeWideString(const wchar_t* text) {
    Sink& sink = out();
    for (; *text != 0; ++text) sink.put(static_cast<std::uint16_t>(*text));
}

void Xls::writeWideStringZ(const wchar_t* text) {
    writeWideString(text);
    writeInt16(0);
}

std::uint32_t Xls::currentWritePosition() {
    if (_stream == nullptr) throw vlerror(biff::msg::noWritePosition);
    if (!_writing) beginWriting();
    if (_stream->tellp() == std::iostream::pos_type(-1)) throw vlerror(biff::msg::noWritePosition);
    return static_cast<std::uint32_t>(_flushed + _out.size());
}

template <class T>
void Xls::patch(std::uint32_t position, T value) {
    if (position >= _flushed) return _out.patch(position - _flushed, value);
    flush();
    _stream->seekp(static_cast<std::streamoff>(position) + _sectorSize);
    writeRaw(std::as_bytes(std::span(&value, 1)));
    _stream->seekp(static_cast<std::streamoff>(_flushed) + _sectorSize);
}

void Xls::patchInt16(std::uint32_t position, std::uint16_t value) {
    patch(position, value);
}
void Xls::patchInt32(std::uint32_t position, std::uint32_t value) {
    patch(position, value);
}

// The slot of the header stays blank until `close`, so that an interrupted save leaves no valid file.
void Xls::beginWriting() {
    if (_stream == nullptr) throw vlerror(biff::msg::streamError);
    _stream->seekp(0);
    const std::vector<std::byte> blank(_sectorSize);
    writeRaw(blank);
    _writing = true;
}

void Xls::flush() {
    if (!_writing) beginWriting();
    writeRaw(_out.bytes());
    _flushed += _out.size();
    _out.clear();
}

void Xls::writeRaw(std::span<const std::byte> bytes) {
    _stream->write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!*_stream) throw vlerror(biff::msg::streamError);
}

namespace {

void dumpSectors(std::wostream& out, const wchar_t* title, const std::vector<std::uint32_t>& sectors) {
    constexpr std::size_t perLine = 8;
    out << title << L'\n';
    for (std::size_t i = 0; i < sectors.size(); ++i) {
        out << std::setw(9) << sectors[i];
        if ((i + 1) % perLine == 0 || i + 1 == sectors.size()) out << L'\n';
    }
}

void dumpEntry(std::wostream& out, const DirEntry& entry) {
    out << L"[DirEntry]\n"
        << L"name: " << entry.name() << L'\n' << L"length: " << entry.length << L'\n' << L"type: " << int{entry.type}
        << L'\n' << L"color: " << int{entry.color} << L'\n' << L"leftSiblingID: " << entry.leftSiblingID << L'\n'
        << L"rightSiblingID: " << entry.rightSiblingID << L'\n' << L"childID: " << entry.childID << L'\n' << L"clsid: ";
    for (const std::uint8_t byte : entry.clsid) out << int{byte} << L' ';
    out << L"\nstate: " << entry.state << L'\n' << L"creationTime: " << entry.creationTime << L'\n' << L"modifiedTime: "
        << entry.modifiedTime << L'\n' << L"startingSectorLocation: " << entry.startingSectorLocation << L'\n'
        << L"streamSize: " << entry.streamSize << L'\n';
}

}  // namespace

void Xls::dump() const {
    dumpSectors(std::wcout, L"[Difat]", _difat);
    dumpSectors(std::wcout, L"[Fat]", _fat);
    std::wcout << L"[Dir]\n";
    for (const DirEntry& entry : _dir) dumpEntry(std::wcout, entry);
}

}  // namespace vellum
