// Archives that are written entry by entry, as streams.
#pragma once
#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "zip/deflating/entry_deflater.h"

namespace zip {

class ZipMemoryBuffer;

/// Deflates entries into a new archive, in a file (no side file is used) or in a buffer that outlives the writer.
/// Threads of its own help with large entries; the archive does not depend on their number. Operations answer false on
/// failure; what to say of it is the caller's. Closes itself at the end of its life.
class ZipWriter final : private DeflatedSink {
public:
    ZipWriter() = default;
    ~ZipWriter() { close(); }
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    bool createFile(const std::string& path);
    bool createInBuffer(ZipMemoryBuffer& target);
    bool isOpen() const { return _archive != nullptr; }

    /// False when the archive is not open or an entry is. The entry bears the present local time.
    bool openEntry(const std::string& name);
    bool writeEntry(const void* bytes, std::size_t count);
    /// Does nothing when no entry is open.
    bool closeEntry();

    /// Closes an open entry, writes the central directory; true when all was flushed.
    bool close();

private:
    bool take(std::span<const unsigned char> deflated) override;

    void* _archive = nullptr;  // minizip's handle
    std::unique_ptr<EntryDeflater> _deflater;
    bool _entryOpen = false;
    bool _entryFailed = false;
};

}  // namespace zip
