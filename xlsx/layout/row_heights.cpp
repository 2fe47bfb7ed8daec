#include "xlsx/layout/row_heights.h"

#include <utility>

#include "bindery/classes/extras.h"
#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"
#include "xlsx/layout/pixels.h"

namespace vellum::xlsx {
namespace {

double untouchedPoints(const FontMetrics& metrics) {
    return metrics.defaultRowPixels * 72.0 / metrics.dpiY;
}

}  // namespace

template <class Tag>
bool RowHeights<Tag>::findDefault(Stored& found) const {
    const auto* const format = std::as_const(_sheet).find_sheetFormatPr();
    if (!format || !format->isset_defaultRowHeight()) return false;
    const auto* const extras = format->extras();
    found = {format->defaultRowHeight(), extras && !extras->attrs.empty() && extras->attrs[0].name == dyDescentName};
    return true;
}

template <class Tag>
double RowHeights<Tag>::pointsOf(Stored stored) const {
    return stored.atScreen ? stored.height : 96 * stored.height / _metrics.dpiY;
}

template <class Tag>
double RowHeights<Tag>::points(const Row* row) const {
    Stored stored;
    if (row && row->isset_ht()) return pointsOf({row->ht(), row->startsWithDyDescent()});
    if (findDefault(stored)) return pointsOf(stored);
    return untouchedPoints(_metrics);
}

template <class Tag>
int RowHeights<Tag>::pixels(const Row* row) const {
    Stored stored;
    if (row && row->isset_ht()) {
        stored = {row->ht(), row->startsWithDyDescent()};
    } else if (!findDefault(stored)) {
        return _metrics.defaultRowPixels;
    }
    const double pixels = _metrics.dpiY * stored.height / 72;
    return wholeNumber(stored.atScreen ? pixels : pixels * 96 / _metrics.dpiY);
}

template <class Tag>
double RowHeights<Tag>::defaultPoints() const {
    return points(nullptr);
}

template <class Tag>
void RowHeights<Tag>::setDefaultPoints(double points) {
    check(points);
    auto& format = _sheet.sheetFormatPr();
    format.defaultRowHeight(points);
    format.customHeight(true);
}

template <class Tag>
void RowHeights<Tag>::check(double points) {
    if (points - points != 0) throw vlerror(msg::heightNotFinite);
}

template <class Tag>
void RowHeights<Tag>::setPoints(Row& row, double points) const {
    if (points <= 0) return;
    row.ht(points);
    row.customHeight(true);
    if (!_metrics.descentText.empty()) row.setUnknownAttribute(dyDescentName, x14acUri, _metrics.descentText);
}

template <class Tag>
typename Sml<Tag>::c_CT_SheetFormatPr& ensureSheetFormat(Worksheet<Tag>& sheet, const FontMetrics& metrics) {
    const bool isNew = !sheet.isset_sheetFormatPr();
    auto& format = sheet.sheetFormatPr();
    if (isNew) format.defaultRowHeight(untouchedPoints(metrics));
    return format;
}

template class RowHeights<ooxml::excelNormal_tag>;
template class RowHeights<ooxml::excelStrict_tag>;
template auto ensureSheetFormat<ooxml::excelNormal_tag>(Worksheet<ooxml::excelNormal_tag>&, const FontMetrics&)
    -> Sml<ooxml::excelNormal_tag>::c_CT_SheetFormatPr&;
template auto ensureSheetFormat<ooxml::excelStrict_tag>(Worksheet<ooxml::excelStrict_tag>&, const FontMetrics&)
    -> Sml<ooxml::excelStrict_tag>::c_CT_SheetFormatPr&;

}  // namespace vellum::xlsx
