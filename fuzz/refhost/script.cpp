// The script language: any text is understood or refused with a place inside of it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "refhost/script/script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view script(reinterpret_cast<const char*>(data), size);
    refhost::TypeRegistry types;
    try {
        refhost::parseScript(script, types);
    } catch (const refhost::ScriptError& e) {
        if (e.at.line < 1 || e.at.column < 1 || e.at.line > static_cast<int>(size) + 1) std::abort();
    }
    return 0;
}
