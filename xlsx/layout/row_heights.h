// Heights of rows, in points and in pixels.
#pragma once
#include "xlsx/features/worksheet.h"
#include "xlsx/layout/font_metrics.h"

namespace vellum::xlsx {

/// Hidden rows tell the height that they have when they are shown.
template <class Tag>
class RowHeights {
public:
    using Row = typename Sml<Tag>::c_CT_Row;

    RowHeights(Worksheet<Tag>& sheet, const FontMetrics& metrics) : _sheet(sheet), _metrics(metrics) {}

    /// Of a row that is not there: null.
    [[nodiscard]] double points(const Row* row) const;
    [[nodiscard]] int pixels(const Row* row) const;
    /// Of rows that say nothing themselves.
    [[nodiscard]] double defaultPoints() const;
    void setDefaultPoints(double points);
    static void check(double points);
    /// Heights that are not above 0 are left alone.
    void setPoints(Row& row, double points) const;

private:
    /// As a file has it: at the screen's resolution where its producer says so.
    struct Stored {
        double height;
        bool atScreen;
    };
    [[nodiscard]] bool findDefault(Stored& found) const;
    [[nodiscard]] double pointsOf(Stored stored) const;

    Worksheet<Tag>& _sheet;
    const FontMetrics& _metrics;
};

/// `sheetFormatPr`, complete when it has to be made.
template <class Tag>
typename Sml<Tag>::c_CT_SheetFormatPr& ensureSheetFormat(Worksheet<Tag>& sheet, const FontMetrics& metrics);

extern template class RowHeights<ooxml::excelNormal_tag>;
extern template class RowHeights<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
