// One sheet reference of formulas.
#pragma once
#include <cstdint>

namespace vellum::globals {

/// Sheets `itabFirst` to `itabLast` of a supporting book.
struct Xti {
    static constexpr std::uint16_t noSheet = 0xFFFF;    // the sheet was removed
    static constexpr std::uint16_t wholeBook = 0xFFFE;  // the reference is to a name of the book

    std::uint16_t iSupBook = 0, itabFirst = 0, itabLast = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("iSupBook", r.iSupBook);
        visit("itabFirst", r.itabFirst);
        visit("itabLast", r.itabLast);
    }
};

}  // namespace vellum::globals
