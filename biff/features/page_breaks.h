// Page breaks that were set by hand.
#pragma once
#include <cstdint>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// Where a page ends.
struct PageBreak {
    std::uint16_t position = 0;        // the first row or column behind the break
    std::uint16_t start = 0, end = 0;  // how far it reaches: columns of a row break, rows of a column break

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("position", r.position);
        visit("start", r.start);
        visit("end", r.end);
    }
};

namespace biff {

/// The two lists of a sheet. They are in the order in which breaks were set until a save sorts them.
class PageBreaks {
public:
    static constexpr std::size_t maxBreaks = 1026;  // of a list

    /// Takes the record if it is one of the two. Throws "HorizontalPageBreaks size is incorrect" and its like.
    bool read(RecordHeader header, Xls& in, bool biff5);
    void write(Xls& out);

    using List = std::vector<PageBreak>;
    [[nodiscard]] const List& rows() const { return _rows; }
    [[nodiscard]] const List& columns() const { return _columns; }
    void setRow(std::uint16_t row, bool enable) { set(_rows, {row, 0, 255}, enable); }
    void setColumn(std::uint16_t col, bool enable) { set(_columns, {col, 0, 65535}, enable); }

private:
    static void set(List& breaks, const PageBreak& wanted, bool enable);

    List _rows, _columns;
};

}  // namespace biff
}  // namespace vellum
