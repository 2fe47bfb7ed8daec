// Any bytes as an archive: every entry is extracted.
#include <cstddef>
#include <cstdint>

#include "zip/zip_error.h"
#include "zip/zip_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zip::ZipReader reader;
    try {
        reader.openForRead(data, size);
    } catch (const zip::ZipError&) {
        return 0;
    }
    for (std::size_t i = 0; i < reader.entryCount(); ++i) {
        try {
            reader.extract(i);
        } catch (const zip::ZipError&) {
        }
    }
    return 0;
}
