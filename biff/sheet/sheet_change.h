// What the setters of a sheet's features have in common; for the sources of the sheet class alone.
#pragma once
#include "biff/features/feature_messages.h"
#include "biff/sheet/sheet.h"
#include "engine/failure/vlerror.h"

namespace vellum {

template <class CharT>
template <class Body>
bool SheetImplT<CharT>::change(Body&& body) {
    return guard(false, [&] {
        if (!parts().isWorksheet()) throwNoWorksheet();
        body();
        return true;
    });
}

namespace biff {

inline constexpr int lastRowOfSheet = SheetIndex::rowLimit - 1, lastColOfSheet = SheetIndex::colLimit - 1;

/// A caller's number from 0 up to `last`, else the text.
inline std::uint16_t checkedUpTo(int value, int last, const char* outOfRange) {
    if (value < 0 || value > last) throw vlerror(outOfRange);
    return static_cast<std::uint16_t>(value);
}

/// The same for a field of 16 bits.
inline std::uint16_t checkedSetting(int value) {
    return checkedUpTo(value, 0xFFFF, msg::settingRange);
}

inline void give(int* to, int value) {
    if (to != nullptr) *to = value;
}

inline void giveRange(const CellRange& range, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    give(rowFirst, range.rowFirst);
    give(rowLast, range.rowLast);
    give(colFirst, range.colFirst);
    give(colLast, range.colLast);
}

}  // namespace biff
}  // namespace vellum
