// Any text as the options of a file name, for each kind of block.
#include <cstdlib>
#include <string>

#include "host/sources/options.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    quillet::SpecialValues special;
    quillet::CsvOptions csv;
    for (void* block : {static_cast<void*>(nullptr), static_cast<void*>(&special), static_cast<void*>(&csv)}) {
        const char* at = text.c_str();
        std::int32_t bufferSize = quillet::defaultBufferSize, autoBase = 0;
        std::uint32_t flags = quillet::parseOptions(0, &at, &bufferSize, &autoBase, block);
        if (at < text.c_str() || at > text.c_str() + text.size() || bufferSize < 1024) std::abort();
        if (block == &special) quillet::completeSpecialValues(&flags, &special);
    }
    return 0;
}
