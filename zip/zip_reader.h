// Archives that are read, and archives that are built in memory.
#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "zip/central_directory.h"
#include "zip/zip_memory_buffer.h"

namespace zip {

class EntryStream;
class ZipSource;
class ZipWriter;

/// One archive: opened for reading, or created for writing into a buffer. Operations throw ZipError with one of the
/// texts of zip/messages.h. Not to be used from two threads at once.
class ZipReader {
public:
    ZipReader();
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    void openForRead(const std::string& path);
    /// The caller keeps the bytes alive until close.
    void openForRead(const void* data, std::size_t size);
    std::size_t entryCount() const { return _entries.size(); }
    const std::string& entryName(std::size_t index) const { return _entries[index].name; }
    const ZipEntry& entry(std::size_t index) const { return _entries[index]; }

    /// The bytes of an entry, checked against its CRC, in memory from malloc that becomes the caller's. An index
    /// without entry leaves the result empty (null, 0); an entry of size 0 gives a pointer and size 0.
    void extractToMemory(std::size_t index, char** data, std::size_t* size);
    ZipMemoryBuffer extract(std::size_t index);
    void extractToFile(std::size_t index, const std::string& path);
    /// A way to read a large entry without having all of it in memory. Null for small ones, and for those that are
    /// stored in another way or cannot be extracted: `extract` tells why. The archive stays open.
    std::unique_ptr<EntryStream> stream(std::size_t index) const;
    void close();

    /// Starts a new archive in memory.
    void createInMemory();
    void addEntry(const std::string& name, const void* data, std::size_t size);
    void addEntryFromFile(const std::string& name, const std::string& path);
    void finish();
    /// The finished archive, in memory from malloc.
    void takeBuffer(char** data, std::size_t* size);

private:
    void checkUsable(const ZipEntry& entry) const;

    std::unique_ptr<ZipSource> _source;
    std::vector<ZipEntry> _entries;
    ZipMemoryBuffer _built;
    std::unique_ptr<ZipWriter> _writer;
};

}  // namespace zip
