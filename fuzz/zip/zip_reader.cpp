// Any bytes as an archive: every entry is extracted, and read piece by piece, which gives the same bytes if any.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "zip/entry_stream.h"
#include "zip/zip_error.h"
#include "zip/zip_reader.h"
#include "zip/zip_source.h"

namespace {

std::optional<std::string> extracted(zip::ZipReader& reader, std::size_t index) {
    try {
        const zip::ZipMemoryBuffer bytes = reader.extract(index);
        return std::string(bytes.data(), bytes.size());
    } catch (const zip::ZipError&) {
        return {};
    }
}

std::optional<std::string> streamed(const zip::ZipSource& source, const zip::ZipEntry& entry) {
    std::string bytes;
    try {
        zip::EntryStream stream(source, entry, 1);
        for (auto piece = stream.next(); !piece.empty(); piece = stream.next())
            bytes.append(piece.begin(), piece.end());
        return bytes;
    } catch (const zip::ZipError&) {
        return {};
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zip::ZipReader reader;
    try {
        reader.openForRead(data, size);
    } catch (const zip::ZipError&) {
        return 0;
    }
    const zip::ZipSource source(data, size);
    for (std::size_t i = 0; i < reader.entryCount(); ++i) {
        const std::optional<std::string> whole = extracted(reader, i);
        const zip::ZipEntry& entry = reader.entry(i);
        if (whole && entry.method == zip::zipDeflated && entry.compressedSize > 0 && streamed(source, entry) != whole) {
            std::abort();
        }
    }
    return 0;
}
