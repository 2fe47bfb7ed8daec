#include "engine/text/file_open.h"

#include "engine/text/conversions.h"

namespace vellum {

std::fstream openFile(const char* name, std::ios_base::openmode mode, StringPool&, bool) {
    return std::fstream(name, mode | std::ios_base::binary);
}

std::fstream openFile(const wchar_t* name, std::ios_base::openmode mode, StringPool& pool, bool utf8) {
    return openFile(wideToNarrow(name, pool, utf8), mode, pool, utf8);
}

std::string fileName(const char* name, StringPool&, bool) {
    return name;
}

std::string fileName(const wchar_t* name, StringPool& pool, bool utf8) {
    return wideToNarrow(name, pool, utf8);
}

}  // namespace vellum
