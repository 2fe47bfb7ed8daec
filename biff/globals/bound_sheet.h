// The list of sheets in the globals.
#pragma once
#include <cstdint>

#include "biff/container/record_ids.h"
#include "biff/records/unicode_string.h"

namespace vellum {

class Cursor;
class StringPool;
class Xls;

/// One sheet: its state, kind and name, and where it begins in the stream.
struct BoundSheet8 {
    static constexpr std::uint16_t id = record_id::BoundSheet8;
    static constexpr const char* name = "BoundSheet8";
    enum Kind : std::uint8_t { worksheet = 0, macroSheet = 1, chart = 2, module = 6 };
    static constexpr std::uint8_t stateMask = 3;  // 0 visible, 1 hidden, 2 very hidden

    std::uint32_t lbPlyPos = 0;  // of the sheet's Bof; written true at the end of a save
    std::uint8_t hsState = 0;
    std::uint8_t dt = worksheet;
    ShortXLUnicodeString sheetName;

    [[nodiscard]] int state() const { return hsState & stateMask; }
    void setState(int state) { hsState = static_cast<std::uint8_t>((hsState & ~stateMask) | (state & stateMask)); }

    /// A body; `noFlags` for files before BIFF8.
    static BoundSheet8 read(Cursor body, bool noFlags, StringPool& pool);
    void write(Xls& out) const;
};

}  // namespace vellum
