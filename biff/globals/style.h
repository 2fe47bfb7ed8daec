// Named styles.
#pragma once
#include <cstdint>

#include "biff/container/record_ids.h"
#include "biff/records/kept_records.h"
#include "biff/records/unicode_string.h"

namespace vellum {

class StringPool;
class Xls;

/// A name for a style format: one of the built-in styles, or the user's.
struct Style {
    static constexpr std::uint16_t id = record_id::Style;
    static constexpr const char* name = "Style";
    static constexpr std::uint16_t builtIn = 0x8000;
    static constexpr std::uint16_t xfMask = 0x0FFF;

    std::uint16_t ixfe = builtIn;  // bit 15 built-in, low 12 bits the format
    std::uint8_t istyBuiltIn = 0;  // 0 Normal, 3 Comma, 4 Currency, 5 Percent, 6 and 7 without decimals
    std::uint8_t iLevel = 0xFF;    // of row and column outline styles
    XLUnicodeString userName;      // of a style that is not built-in
    KeptRecords ext;               // StyleExt and what goes on with it

    [[nodiscard]] bool isBuiltIn() const { return (ixfe & builtIn) != 0; }
    /// From behind the header on; `noFlags` for files before BIFF8.
    static Style read(Xls& in, std::uint16_t size, bool noFlags, StringPool& pool);
    void write(Xls& out, bool withExt) const;
};

}  // namespace vellum
