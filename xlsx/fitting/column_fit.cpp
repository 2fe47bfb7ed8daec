#include "xlsx/fitting/column_fit.h"

#include <algorithm>

#include "bindery/values/value_spec.h"
#include "xlsx/cells/cell_values.h"
#include "xlsx/fitting/number_sample.h"

namespace vellum::xlsx {

template <class Tag>
auto ColumnFit<Tag>::measured(std::uint32_t xf) -> const Measured& {
    if (xf >= _source.formatTotal()) xf = 0;
    if (xf >= _byFormat.size()) _byFormat.resize(xf + 1);
    auto& slot = _byFormat[xf];
    if (slot) return *slot;
    slot = std::make_unique<Measured>();
    slot->look = _source.lookOf(xf);
    slot->measure = measureOf(slot->look.font);
    return *slot;
}

/// Many formats have one font: they share its measure.
template <class Tag>
const TextMeasure* ColumnFit<Tag>::measureOf(const MeasuredFont& font) {
    const auto known = std::find_if(_measures.begin(), _measures.end(), [&](const auto& m) { return m.first == font; });
    if (known != _measures.end()) return known->second.get();
    return _measures.emplace_back(font, std::make_unique<TextMeasure>(_metrics, font)).second.get();
}

template <class Tag>
double ColumnFit<Tag>::numberWidth(const Measured& as, double value) {
    if (as.look.numFmtId >= firstFormatWithText && !as.look.formatText.empty()) {
        return as.measure->width(customSample(as.look.formatText, as.look.isDate, value));
    }
    _sample.clear();
    appendBuiltInSample(_sample, as.look.numFmtId, value);
    return as.measure->width(std::string_view(_sample));
}

template <class Tag>
std::wstring ColumnFit<Tag>::inlineText(const Cell& cell) {
    std::wstring joined;
    if (!cell.inlineString()) return joined;
    if (const auto* const text = cell.inlineString()->find_t()) joined = text->text();
    for (const auto& run : cell.inlineString()->r()) joined += run.t().text();
    return joined;
}

template <class Tag>
double ColumnFit<Tag>::width(const Cell& cell) {
    using ooxml::CellType;
    constexpr double nothing = -1;
    if (cell.type() == CellType::inlineStr) {
        const std::wstring text = inlineText(cell);
        return text.empty() ? nothing : measured(cell.style()).measure->width(text);
    }
    if (cell.text().empty()) return nothing;
    const Measured& as = measured(cell.style());
    switch (cell.type()) {
        case CellType::s: {
            const std::wstring_view text = _source.sharedText(positionOf(cell.text()));
            return text.empty() ? nothing : as.measure->width(text);
        }
        case CellType::str:
            return as.measure->width(bindery::toWide(cell.text()));
        case CellType::b:
            return as.measure->width(std::string_view(numberOf(cell.text()) != 0 ? "TRUE" : "FALSE"));
        case CellType::e:
            return as.measure->width(bindery::toWide(cell.text()));
        case CellType::d: {
            const auto date = isoDateOf(cell.text(), _source.dates1904());
            return date ? numberWidth(as, *date) : nothing;
        }
        default:
            return numberWidth(as, numberOf(cell.text()));
    }
}

template <class Tag>
std::vector<double> ColumnFit<Tag>::widths(const ooxml::RowList<Row>& rows, const CellRange& area) {
    std::vector<double> widest(area.colLast - area.colFirst + 1, -1);
    for (auto row = rows.firstFrom(area.rowFirst); row != rows.end() && row->r() <= area.rowLast + 1; ++row) {
        const auto& cells = row->c();
        const bool hasMerges = _merges.touchesRow(row->r() - 1);
        auto cell =
            std::lower_bound(cells.begin(), cells.end(), area.colFirst,
                             [](const Cell& element, std::uint32_t wanted) { return element.column() < wanted; });
        for (; cell != cells.end() && cell->column() <= area.colLast; ++cell) {
            if (hasMerges && _merges.find(static_cast<int>(row->r() - 1), static_cast<int>(cell->column()))) continue;
            double& known = widest[cell->column() - area.colFirst];
            known = std::max(known, width(*cell));
        }
    }
    return widest;
}

template class ColumnFit<ooxml::excelNormal_tag>;
template class ColumnFit<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
