// Rows and columns in groups that can be folded.
#pragma once
#include <cstdint>

#include "xlsx/features/worksheet.h"
#include "xlsx/layout/font_metrics.h"

namespace vellum::xlsx {

/// Outline levels, 0 to 7. All rows have to be numbered.
template <class Tag>
class Outline {
public:
    Outline(Worksheet<Tag>& sheet, const FontMetrics& metrics) : _sheet(sheet), _metrics(metrics) {}

    /// Raises the level of each row by one, and makes rows that are missing. Throws at the first row whose level
    /// differs from the others'; the rows before it stay changed.
    void groupRows(std::uint32_t first, std::uint32_t last, bool collapsed);
    /// The same for columns, but for that all are looked at before the first one changes.
    void groupColumns(std::uint32_t first, std::uint32_t last, bool collapsed);

    [[nodiscard]] bool summaryBelow() const;
    void setSummaryBelow(bool below) { _sheet.sheetPr().outlinePr().summaryBelow(below); }
    [[nodiscard]] bool summaryRight() const;
    void setSummaryRight(bool right) { _sheet.sheetPr().outlinePr().summaryRight(right); }

private:
    using Row = typename Sml<Tag>::c_CT_Row;

    using RowPlace = typename ooxml::RowList<Row>::iterator;

    /// The row, made when it is not there. `at`: the first one that does not lie before it.
    RowPlace ensureRow(RowPlace at, std::uint32_t row);
    unsigned columnLevel(std::uint32_t first, std::uint32_t last) const;
    void raiseRowBar(unsigned level);
    void raiseColumnBar(unsigned level);

    Worksheet<Tag>& _sheet;
    const FontMetrics& _metrics;
};

extern template class Outline<ooxml::excelNormal_tag>;
extern template class Outline<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
