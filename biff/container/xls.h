// The outer file of a binary workbook and the record stream in it.
#pragma once
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "biff/container/cursor.h"
#include "biff/container/dir_entry.h"
#include "biff/container/record_ids.h"
#include "biff/container/sink.h"

namespace vellum {

/// A compound file over a seekable stream, and the workbook stream in it as one flat sequence of bytes.
///
/// Loading: `setStream`, `measure`, `read`; then records are taken one after the other, and at the end
/// `extractKeptStreams` takes what the book does not model and drops all file bytes. What `take` and
/// `body` hand out lies in one contiguous buffer and lives until then.
///
///     while (auto header = xls.nextRecord()) {         // ends at the chain's end
///         Cursor body = xls.body(header->size);        // bounded by the record
///         ...
///     }
///
/// Saving: `reset(false)`, `setStream`, the records through `out()` in their order, then `close`.
///
/// Every failure is a thrown `vlerror` with its text from biff/messages.h.
class Xls {
public:
    /// As `reset(true)` leaves it.
    Xls();

    /// Clears counters and header. `fresh` also makes a directory of a root and an empty "Workbook" and drops the
    /// kept streams; otherwise both stay, and a save writes them back.
    void reset(bool fresh);
    /// Not owned; null takes it away. Needs both a read and a write position only as far as it is used.
    void setStream(std::iostream* stream) { _stream = stream; }
    /// Finds the file's size and goes to its start.
    void measure();
    /// Loads header, tables and directory and opens the main stream. `counter` is the sum of the bytes of all tables
    /// taken so far; since they cannot overlap in a sound file, no more than the file's size are believed.
    void read(std::uint64_t& counter);
    /// "Workbook", else "Book": a stream directly under the root, else the first such entry anywhere. Null when there
    /// is none. The pointer lives until the next `read` or `reset`.
    const DirEntry* findMainStream();
    /// Reads from the first byte of an entry's stream on.
    void openStream(const DirEntry& entry);
    /// Reads records that lie in memory, which must live as long.
    void openBytes(std::span<const std::byte> bytes) {
        _open = bytes;
        _at = 0;
        _brokenChain = false;
    }
    /// What was taken from the open stream since it stood at `position`.
    [[nodiscard]] std::span<const std::byte> bytesSince(std::size_t position) const {
        return _open.subspan(position, _at - position);
    }
    /// Opens the payload of an encrypted Open XML workbook and returns its size in bytes. Nothing decrypts it.
    std::uint32_t openEncryptedPackage();
    /// The directory holds an encrypted package and no workbook.
    [[nodiscard]] bool isEncryptedPackage() const { return _encrypted; }
    /// Takes the streams that a later save writes back, and drops the file's bytes.
    void extractKeptStreams();
    /// Pads the main stream, writes kept streams, tables and directory behind it and the header before it.
    void close();
    /// The tables and the directory, to the wide standard output.
    void dump() const;

    [[nodiscard]] const std::vector<DirEntry>& directory() const { return _dir; }

    // Reading the open stream.

    /// The last byte of the last sector has been taken.
    [[nodiscard]] bool atEnd() const { return _at == _open.size() && !_brokenChain; }
    /// Offset in the open stream, counted in its sectors' bytes.
    [[nodiscard]] std::size_t position() const { return _at; }
    /// Bytes that the open stream still has.
    [[nodiscard]] std::size_t remaining() const { return _open.size() - _at; }
    /// Up to `count` bytes; returns how many the stream still had.
    std::size_t readBytes(void* dest, std::size_t count);
    /// Exactly `count` bytes, in place.
    std::span<const std::byte> take(std::size_t count);
    /// A record's body; a stream that ends within it throws.
    Cursor body(std::size_t size) { return Cursor(take(size)); }
    void skip(std::size_t count) { take(count); }

    /// Identifier and size of the next record; nothing when the stream ends before an identifier. An identifier of 0
    /// throws.
    std::optional<RecordHeader> nextRecord();
    /// The same where a record must follow; 0 is let through.
    RecordHeader readHeader();
    /// The identifier that comes next, or 0 at the end; nothing moves.
    [[nodiscard]] std::uint16_t peekRecordId() const;
    /// The next header without taking it; nothing at the end.
    [[nodiscard]] std::optional<RecordHeader> peekHeader() const;

    std::uint8_t readInt8() { return readValue<std::uint8_t>(); }
    std::uint16_t readInt16() { return readValue<std::uint16_t>(); }
    std::uint32_t readInt32() { return readValue<std::uint32_t>(); }
    double readDouble() { return readValue<double>(); }

    /// Remembers the place and a value of the caller's, to which `rewind` goes back, answering the value.
    void mark(std::uint32_t value);
    std::uint32_t rewind();

    // Reading what may go on in CONTINUE records. `budget` is what remains of the current record's body. With none
    // left the next header is taken, which must be one of CONTINUE.

    void readWithContinueRecords(void* dest, std::size_t count, std::uint16_t& budget);
    std::uint16_t readInt16(std::uint16_t& budget);
    std::uint32_t readInt32(std::uint16_t& budget);
    /// Takes the header of a CONTINUE when the budget is used up and one comes next; true when it did.
    bool acceptContinue(std::uint16_t& budget);
    /// Bytes up to a null, which is taken too, at most `maxLength` of them. A null `s` throws.
    void readString(std::string* s, std::size_t maxLength, std::uint16_t& budget);
    /// Exactly `count` bytes.
    void readStringWithoutNull(std::string* s, std::size_t count, std::uint16_t& budget);

    // Writing the main stream.

    /// Where records are written to. Take it anew for each record: what has gathered goes to the file from time to
    /// time, so positions in the sink are no positions in the stream.
    Sink& out() {
        if (_out.size() >= flushAt) flush();
        return _out;
    }
    void writeBytes(std::span<const std::byte> bytes);
    void writeInt16(std::uint16_t value) { out().put(value); }
    void writeInt32(std::uint32_t value) { out().put(value); }
    void writeDouble(double value) { out().put(value); }
    void writeRecordHeader(std::uint16_t id, std::uint16_t size) { out().putAll(id, size); }
    /// Header and bytes; `body` holds at most `maxRecordBody` bytes (see ContinueWriter for longer ones).
    void writeRecord(std::uint16_t id, std::span<const std::byte> body);
    /// One byte a character and a null.
    void writeStringZ(const wchar_t* text);
    /// Two bytes a character and a null of two bytes.
    void writeWideStringZ(const wchar_t* text);
    void writeWideString(const wchar_t* text);

    /// Calls `visit(name, size)` for each stream that is kept for saving.
    template <class Visit>
    void forEachKeptStream(Visit&& visit) const {
        for (const KeptStream& stream : _kept) visit(_dir[stream.entry].name(), stream.bytes.size());
    }
    /// Offset in the main stream of what is written next.
    std::uint32_t currentWritePosition();
    /// Overwrites what was written at an offset of the main stream before.
    void patchInt16(std::uint32_t position, std::uint16_t value);
    void patchInt32(std::uint32_t position, std::uint32_t value);

private:
    struct KeptStream {
        std::size_t entry;  // index in _dir
        std::vector<std::byte> bytes;
    };
    struct Marked {
        std::size_t at = 0;
        std::uint32_t value = 0;
    };
    static constexpr std::size_t flushAt = std::size_t{1} << 20;
    static constexpr std::size_t noEntry = static_cast<std::size_t>(-1);

    // xls_load.cpp
    void loadHeader(std::uint64_t& counter);
    void loadDifat(std::uint64_t& counter);
    void loadFat(std::uint64_t& counter);
    void loadMiniFat(std::uint64_t& counter);
    void loadDir(std::uint64_t& counter);
    std::uint32_t countDirSectors() const;
    [[nodiscard]] std::optional<std::span<const std::byte>> sectorBytes(std::uint32_t sector) const;
    std::size_t findEntry(std::wstring_view name) const;
    std::size_t findMainEntry() const;
    std::vector<std::size_t> rootChildren() const;

    // xls_streams.cpp
    struct Chain;
    Chain regularChain(std::uint32_t start, std::size_t atMost) const;
    Chain miniChain(std::uint32_t start) const;
    void openEntry(std::size_t entry);
    void openChain(Chain&& chain);
    [[nodiscard]] std::uint32_t tolerantStart(std::uint32_t start, std::uint32_t streamSize) const;
    void dropFile();

    // xls_close.cpp
    std::uint32_t writeKeptStreams(std::uint32_t sectors);
    std::uint32_t writeMiniFat(std::uint32_t sectors);
    void buildFat(std::uint32_t sectors, std::uint32_t dirSectors);
    void writeDifat(std::uint32_t sectors);
    void writeDirectory();
    void writeHeader();
    void cutChainBefore(std::uint32_t sector, const char* outOfRange);
    void writeRaw(std::span<const std::byte> bytes);
    std::uint32_t padToSector(std::uint64_t bytes, std::byte fill = {});

    template <class T>
    T readValue() {
        return loadLe<T>(take(sizeof(T)).data());
    }
    void needContinue(std::uint16_t& budget, const char* notFound);
    void beginWriting();
    void flush();
    template <class T>
    void patch(std::uint32_t position, T value);

    std::iostream* _stream = nullptr;
    CompoundHeader _header;
    std::uint32_t _sectorSize = 512, _miniSectorSize = 64;
    std::vector<std::uint32_t> _difat, _fat, _miniFat;
    std::vector<DirEntry> _dir;
    std::size_t _mainEntry = noEntry, _encryptionInfo = noEntry, _encryptedPackage = noEntry;
    std::vector<KeptStream> _kept;  // by entry, ascending
    bool _encrypted = false;
    std::uint32_t _fileSize = 0;

    std::unique_ptr<std::byte[]> _file;    // the whole file while it is being read
    std::unique_ptr<std::byte[]> _joined;  // the open stream, when its sectors do not lie in a row in _file
    std::span<const std::byte> _open;
    std::size_t _at = 0;
    bool _brokenChain = false;  // the stream goes on to a sector that does not exist
    Marked _marked;

    Sink _out;                   // written last, not yet in the file
    std::uint64_t _flushed = 0;  // bytes of the main stream that are
    bool _writing = false;
};

}  // namespace vellum
