// Manual page breaks of a worksheet.
#pragma once
#include <cstddef>
#include <cstdint>

#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

enum class BreakKind { above, leftOf };  // a row, a column

/// The `brk` elements of one kind. A change puts them in order; their element goes with the last one.
template <class Tag>
class PageBreaks {
public:
    PageBreaks(Worksheet<Tag>& sheet, BreakKind kind) : _sheet(sheet), _kind(kind) {}

    [[nodiscard]] std::size_t total() const;
    /// The row or column behind a break. Throws for a place that is not in the list, and for a break that says nothing.
    [[nodiscard]] std::uint32_t at(int index) const;
    /// Throws when there is a break already.
    void add(std::uint32_t position);
    /// Throws when there is none.
    void remove(std::uint32_t position);

private:
    using List = typename Sml<Tag>::c_CT_PageBreak;

    [[nodiscard]] const List* find() const;
    List& make();
    void putInOrder(List& list);
    static std::size_t placeOf(const List& list, std::uint32_t position);
    void setCounts(List& list) const;

    Worksheet<Tag>& _sheet;
    BreakKind _kind;
    bool _inOrder = false;
    unsigned _manual = 0;  // once they are in order
};

extern template class PageBreaks<ooxml::excelNormal_tag>;
extern template class PageBreaks<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
