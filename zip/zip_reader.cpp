#include "zip/zip_reader.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include "zip/decompress.h"
#include "zip/deflating/checksum.h"
#include "zip/entry_stream.h"
#include "zip/messages.h"
#include "zip/zip_error.h"
#include "zip/zip_source.h"
#include "zip/zip_writer.h"

namespace zip {
namespace {

constexpr std::size_t bufferSize = 65536;
constexpr std::uint64_t largeEntry = std::uint64_t{1} << 30;
constexpr std::uint64_t largeRatio = 1000;     // an entry beyond largeEntry must not expand more than this
constexpr std::uint64_t deflateRatio = 1032;   // deflate cannot expand more than this
constexpr std::uint64_t bzip2Ratio = 1 << 16;  // bzip2 can go far; beyond this it is a bomb

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Collects an entry in memory. Room grows with the data that have come, whatever size the entry claims.
class MemorySink final : public ByteSink {
public:
    MemorySink(const ZipEntry& entry) {
        const std::uint64_t plausible = std::max<std::uint64_t>(bufferSize, entry.compressedSize * 8);
        if (!_bytes.reserve(
                static_cast<std::size_t>(std::clamp<std::uint64_t>(entry.uncompressedSize, 1, plausible)))) {
            throw ZipError(msg::allocationFailure);
        }
    }

    void restart() override {
        _bytes.truncate();
        _crc = 0;
    }

    std::span<unsigned char> room(std::size_t wanted) override {
        // Doubling, but not beyond the recorded size: most entries end there exactly.
        const std::size_t part = std::min(wanted, std::max(bufferSize, _bytes.size()));
        char* const at = _bytes.spaceAtEnd(part);
        if (!at) throw ZipError(msg::allocationFailure);
        return {reinterpret_cast<unsigned char*>(at), part};
    }

    void filled(std::size_t count) override {
        const char* const at = _bytes.data() + _bytes.size();
        _crc = crcOf(_crc, at, count);
        _bytes.extend(count);
    }

    const std::uint32_t& crc() const { return _crc; }
    ZipMemoryBuffer&& bytes() { return std::move(_bytes); }

private:
    ZipMemoryBuffer _bytes;
    std::uint32_t _crc = 0;
};

class FileSink final : public ByteSink {
public:
    explicit FileSink(const std::string& path) : _file(std::fopen(path.c_str(), "wb")) {
        if (!_file) throwFileError(errno);
    }

    void restart() override {
        if (std::fflush(_file.get()) != 0 || ftruncate(fileno(_file.get()), 0) != 0) throwFileError(errno);
        std::rewind(_file.get());
        _crc = 0;
    }

    std::span<unsigned char> room(std::size_t) override { return _buffer; }

    void filled(std::size_t count) override {
        _crc = crcOf(_crc, _buffer.data(), count);
        if (std::fwrite(_buffer.data(), 1, count, _file.get()) != count) throwFileError(errno);
    }

    void close() {
        if (std::fclose(_file.release()) != 0) throwFileError(errno);
    }

    const std::uint32_t& crc() const { return _crc; }

private:
    File _file;
    std::array<unsigned char, bufferSize> _buffer;
    std::uint32_t _crc = 0;
};

/// Brings an entry to the sink and compares its checksum.
void unpackChecked(const ZipSource& source, const ZipEntry& entry, ByteSink& sink, const std::uint32_t& crc) {
    try {
        decompressEntry(source, entry, sink, Inflater::fast);
        if (crc == entry.crc) return;
    } catch (const ZipError&) {  // zlib says what is wrong, if anything
    }
    sink.restart();
    decompressEntry(source, entry, sink, Inflater::zlib);
    if (crc != entry.crc) throw ZipError(msg::crcMismatch);
}

}  // namespace

ZipReader::ZipReader() = default;
ZipReader::~ZipReader() = default;

void ZipReader::openForRead(const std::string& path) {
    close();
    _source = std::make_unique<ZipSource>(path);
    _entries = readCentralDirectory(*_source);
}

void ZipReader::openForRead(const void* data, std::size_t size) {
    close();
    _source = std::make_unique<ZipSource>(data, size);
    _entries = readCentralDirectory(*_source);
}

/// Refuses what cannot be extracted, or what no honest archive holds, before any memory is taken for it.
void ZipReader::checkUsable(const ZipEntry& entry) const {
    if (entry.uncompressedSize == unusableSize) throw ZipError(msg::incorrectSize);
    if (entry.flags & zipEncrypted) throw ZipError(msg::wrongPassword);
    if (entry.compressedSize > _source->size()) throw ZipError(msg::damaged);
    const std::uint64_t size = entry.uncompressedSize;
    if (size > largeEntry && size / largeRatio > entry.compressedSize) throw ZipError(msg::incorrectSize);
    const std::uint64_t ratio = entry.method == zipBzip2 ? bzip2Ratio : deflateRatio;
    if (size / ratio > entry.compressedSize) throw ZipError(msg::damaged);
}

ZipMemoryBuffer ZipReader::extract(std::size_t index) {
    if (index >= _entries.size()) return {};
    const ZipEntry& entry = _entries[index];
    checkUsable(entry);
    MemorySink sink(entry);
    unpackChecked(*_source, entry, sink, sink.crc());
    return sink.bytes();
}

void ZipReader::extractToMemory(std::size_t index, char** data, std::size_t* size) {
    *data = extract(index).release(size);
}

std::unique_ptr<EntryStream> ZipReader::stream(std::size_t index) const {
    constexpr std::uint64_t worthIt = 1 << 20;
    const ZipEntry& entry = _entries[index];
    if (entry.method != zipDeflated || entry.uncompressedSize < worthIt) return nullptr;
    try {
        checkUsable(entry);
        return std::make_unique<EntryStream>(*_source, entry);
    } catch (const std::exception&) {
        return nullptr;
    }
}

void ZipReader::extractToFile(std::size_t index, const std::string& path) {
    if (index >= _entries.size()) return;
    const ZipEntry& entry = _entries[index];
    checkUsable(entry);
    FileSink sink(path);
    unpackChecked(*_source, entry, sink, sink.crc());
    sink.close();
}

void ZipReader::close() {
    _writer.reset();
    _entries.clear();
    _source.reset();
}

void ZipReader::createInMemory() {
    close();
    _built = ZipMemoryBuffer();
    _writer = std::make_unique<ZipWriter>();
    if (!_writer->createInBuffer(_built)) throw ZipError(msg::internalError);
}

void ZipReader::addEntry(const std::string& name, const void* data, std::size_t size) {
    if (!_writer || !_writer->openEntry(name)) throw ZipError(msg::internalError);
    if (!_writer->writeEntry(data, size) || !_writer->closeEntry()) throw ZipError(msg::notEnoughMemory);
}

void ZipReader::addEntryFromFile(const std::string& name, const std::string& path) {
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) throwFileError(errno);
    if (!_writer || !_writer->openEntry(name)) throw ZipError(msg::internalError);
    std::array<unsigned char, bufferSize> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
        if (!_writer->writeEntry(buffer.data(), count)) throw ZipError(msg::notEnoughMemory);
    }
    if (std::ferror(file.get())) throwFileError(errno);
    if (!_writer->closeEntry()) throw ZipError(msg::notEnoughMemory);
}

void ZipReader::finish() {
    if (!_writer) throw ZipError(msg::internalError);
    if (!_writer->close()) throw ZipError(msg::notEnoughMemory);
    _writer.reset();
}

void ZipReader::takeBuffer(char** data, std::size_t* size) {
    *data = _built.release(size);
}

}  // namespace zip
