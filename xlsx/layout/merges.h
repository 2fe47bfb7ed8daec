// Merged blocks of a worksheet.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "xlsx/features/moved_range.h"
#include "xlsx/features/worksheet.h"
#include "xlsx/layout/range_index.h"

namespace vellum::xlsx {

/// The `mergeCell` elements, in the file's order. Blocks may overlap; a search answers with the first one. The element
/// around them goes with the last block.
template <class Tag>
class Merges {
public:
    explicit Merges(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    [[nodiscard]] std::size_t total() const;
    /// Throws for a place that is not in the list, and for a block that is no range.
    [[nodiscard]] CellRange at(int index) const;
    [[nodiscard]] std::optional<CellRange> find(int row, int col);
    [[nodiscard]] bool touchesRow(std::uint32_t row) { return index().touchesRow(row); }
    void add(const CellRange& range);
    /// All blocks that hold the cell; false when there is none.
    bool removeAt(int row, int col);
    void remove(int index);
    /// Rows or columns came or went. A block that is left with one cell goes, too.
    void move(const CellMove& move);

private:
    const RangeIndex& index();
    template <class IsGone>
    bool removeIf(IsGone&& isGone);
    std::size_t checked(int index) const;
    void changed();
    void setCount();

    Worksheet<Tag>& _sheet;
    std::optional<RangeIndex> _index;                                // made when first asked for, dropped on change
    std::vector<const typename Sml<Tag>::c_CT_MergeCell*> _indexed;  // its places
};

extern template class Merges<ooxml::excelNormal_tag>;
extern template class Merges<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
