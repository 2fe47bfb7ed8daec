#include "zip/zip_writer.h"

#include <minizip/zip.h>
#include <utf8.h>

#include <algorithm>
#include <ctime>
#include <new>

#include "zip/zip_memory_buffer.h"

namespace zip {
namespace {

// minizip's file calls over a ZipMemoryBuffer, which is both `opaque` and the stream.

ZipMemoryBuffer* bufferOf(voidpf stream) {
    return static_cast<ZipMemoryBuffer*>(stream);
}

voidpf openBuffer(voidpf opaque, const void*, int) {
    return opaque;
}

uLong readBuffer(voidpf, voidpf stream, void* to, uLong size) {
    return bufferOf(stream)->read(to, size);
}

uLong writeBuffer(voidpf, voidpf stream, const void* from, uLong size) {
    return bufferOf(stream)->write(from, size) ? size : 0;
}

ZPOS64_T tellBuffer(voidpf, voidpf stream) {
    return bufferOf(stream)->position();
}

long seekBuffer(voidpf, voidpf stream, ZPOS64_T offset, int origin) {
    ZipMemoryBuffer& buffer = *bufferOf(stream);
    switch (origin) {
        case ZLIB_FILEFUNC_SEEK_SET:
            buffer.seek(offset);
            return 0;
        case ZLIB_FILEFUNC_SEEK_CUR:
            buffer.seek(buffer.position() + offset);
            return 0;
        case ZLIB_FILEFUNC_SEEK_END:
            buffer.seek(buffer.size() + offset);
            return 0;
        default:
            return -1;
    }
}

int closeBuffer(voidpf, voidpf) {
    return 0;
}
int bufferError(voidpf, voidpf) {
    return 0;
}

zip_fileinfo entryInfo() {
    zip_fileinfo info = {};  // a DOS date of 0: the time stamp holds
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_r(&now, &local);
    // Signed or not, by the version of minizip.
    const auto put = []<class Field>(Field& field, int value) { field = static_cast<Field>(value); };
    put(info.tmz_date.tm_sec, local.tm_sec);
    put(info.tmz_date.tm_min, local.tm_min);
    put(info.tmz_date.tm_hour, local.tm_hour);
    put(info.tmz_date.tm_mday, local.tm_mday);
    put(info.tmz_date.tm_mon, local.tm_mon);
    put(info.tmz_date.tm_year, local.tm_year + 1900);
    info.external_fa = 32;  // an ordinary file to be archived
    return info;
}

/// General flag bit 11: the name is UTF-8. Set where it tells readers something; names in other codings are kept as
/// they came, and readers would refuse them as UTF-8.
uLong nameFlag(const std::string& name) {
    constexpr uLong utf8Name = 0x800;
    const bool isAscii = std::all_of(name.begin(), name.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    return !isAscii && utf8::is_valid(name.begin(), name.end()) ? utf8Name : 0;
}

/// Memory that is short is a failure like any other.
template <class Step>
bool succeeds(Step&& step) {
    try {
        return step();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

bool ZipWriter::createFile(const std::string& path) {
    close();
    _archive = zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
    return isOpen();
}

bool ZipWriter::createInBuffer(ZipMemoryBuffer& target) {
    close();
    zlib_filefunc64_def calls = {openBuffer, readBuffer,  writeBuffer, tellBuffer,
                                 seekBuffer, closeBuffer, bufferError, &target};
    _archive = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &calls);
    return isOpen();
}

bool ZipWriter::openEntry(const std::string& name) {
    if (!isOpen() || _entryOpen) return false;
    const zip_fileinfo info = entryInfo();
    constexpr int memoryLevel = 8;
    constexpr int raw = 1;  // compressed here
    constexpr int zip64 = 1;
    if (zipOpenNewFileInZip4_64(_archive, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                Z_DEFAULT_COMPRESSION, raw, -MAX_WBITS, memoryLevel, Z_DEFAULT_STRATEGY, nullptr, 0, 0,
                                nameFlag(name), zip64) != ZIP_OK) {
        return false;
    }
    _entryOpen = true;
    _entryFailed = !succeeds([this] {
        if (!_deflater) _deflater = std::make_unique<EntryDeflater>(static_cast<DeflatedSink&>(*this));
        _deflater->begin();
        return true;
    });
    return !_entryFailed;
}

bool ZipWriter::writeEntry(const void* bytes, std::size_t count) {
    if (!_entryOpen || _entryFailed) return false;
    _entryFailed = !succeeds([&] { return _deflater->write(bytes, count); });
    return !_entryFailed;
}

/// Blocks are small: their size is far from what minizip counts in 32 bits.
bool ZipWriter::take(std::span<const unsigned char> deflated) {
    return zipWriteInFileInZip(_archive, deflated.data(), static_cast<unsigned>(deflated.size())) == ZIP_OK;
}

bool ZipWriter::closeEntry() {
    if (!_entryOpen) return true;
    _entryOpen = false;
    const bool written = !_entryFailed && succeeds([this] { return _deflater->end(); });
    const std::uint64_t size = written ? _deflater->size() : 0;
    const std::uint32_t crc = written ? _deflater->crc() : 0;
    return zipCloseFileInZipRaw64(_archive, size, crc) == ZIP_OK && written;
}

bool ZipWriter::close() {
    if (!isOpen()) return true;
    const bool entryClosed = closeEntry();
    const bool archiveClosed = zipClose(_archive, nullptr) == ZIP_OK;
    _archive = nullptr;
    _deflater.reset();
    return entryClosed && archiveClosed;
}

}  // namespace zip
