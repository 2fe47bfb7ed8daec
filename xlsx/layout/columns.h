// The columns of a worksheet.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>

#include "xlsx/features/moved_range.h"
#include "xlsx/features/worksheet.h"
#include "xlsx/layout/font_metrics.h"

namespace vellum::xlsx {

/// The `col` elements: runs of columns that share width, style, outline level. They stay sorted and disjoint; columns
/// without an element have the sheet's default width. Columns count from 0.
template <class Tag>
class Columns {
public:
    using Col = typename Sml<Tag>::c_CT_Col;
    using List = bindery::ct_non_pod_container<Col>;
    /// Elements from the first to one past the last.
    struct Run {
        std::size_t first, past;
    };

    explicit Columns(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    /// What readers of other files may rely on: one list, sorted, disjoint. Of elements that overlap the later one
    /// wins for its columns. A list in order is left alone.
    void putInOrder();

    /// The element that covers a column; null when there is none.
    [[nodiscard]] const Col* find(std::uint32_t col) const;
    [[nodiscard]] bool isHidden(std::uint32_t col) const;
    [[nodiscard]] int pixels(std::uint32_t col, const FontMetrics& metrics) const;
    /// The `width` that says what columns without an element have.
    [[nodiscard]] double defaultWidth(const FontMetrics& metrics) const;

    /// Splits elements at the edges of a range, so that a run of them covers it. Gaps get elements of the given width;
    /// without a width they stay. The run is empty when nothing covers the range then.
    Run cut(std::uint32_t first, std::uint32_t last, std::optional<double> gapWidth);
    Col& operator[](std::size_t i) { return _sheet.cols()[0].col()[i]; }

    void setHidden(std::uint32_t first, std::uint32_t last, bool hidden, const FontMetrics& metrics);
    /// Columns came or went: elements follow.
    void move(const CellMove& move);

private:
    [[nodiscard]] const List* findList() const;
    [[nodiscard]] bool inOrder() const;
    void split(List& list, std::size_t at, std::uint32_t min);

    Worksheet<Tag>& _sheet;
};

extern template class Columns<ooxml::excelNormal_tag>;
extern template class Columns<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
