#include "xlsx/filters/filter_value.h"

#include <cmath>

#include "bindery/values/value_spec.h"
#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/cell_values.h"

namespace vellum::xlsx {
namespace {

using ooxml::CellType;

template <class Cell>
void readNumber(const Cell& cell, FilterValue& value) {
    value.kind = ValueKind::number;
    value.number = numberOf(cell.text());
    if (std::isnan(value.number)) value.number = 0;  // in no order with others
}

/// What is no date after all is a text.
template <class Cell>
void readIsoDate(const Cell& cell, FilterValue& value, bool dates1904) {
    const auto date = isoDateOf(cell.text(), dates1904);
    value.kind = date ? ValueKind::number : ValueKind::text;
    value.isIsoDate = date.has_value();
    value.number = date.value_or(0.0);
    value.raw = std::string_view(cell.text());
}

}  // namespace

template <class Cell>
FilterValue ValueReader<Cell>::read(const Cell* cell) {
    FilterValue value;
    if (!cell) return value;
    value.style = cell->style();
    if (cell->type() == CellType::inlineStr && cell->inlineString()) {
        value.kind = ValueKind::text;
        value.inlineString = cell->inlineString();
        return value;
    }
    if (cell->text().empty()) {
        if (cell->type() == CellType::str && cell->hasValue()) value.kind = ValueKind::text;
        return value;
    }
    switch (cell->type()) {
        case CellType::s:
            value.shared = positionOf(cell->text());
            if (value.shared < _book.sharedTotal()) value.kind = ValueKind::text;
            break;
        case CellType::b:
            value.kind = ValueKind::boolean;
            value.number = numberOf(cell->text()) != 0.0 ? 1 : 0;
            break;
        case CellType::e:
            value.kind = ValueKind::error;
            value.raw = std::string_view(cell->text());
            break;
        case CellType::d:
            readIsoDate(*cell, value, _book.dates1904());
            break;
        case CellType::str:
        case CellType::inlineStr:
            value.kind = ValueKind::text;
            value.raw = std::string_view(cell->text());
            break;
        default:
            readNumber(*cell, value);
    }
    return value;
}

template <class Cell>
std::wstring_view ValueReader<Cell>::textOf(const FilterValue& value) {
    if (value.inlineString) {
        const auto& string = *static_cast<const typename Cell::Rst*>(value.inlineString);
        _text.clear();
        if (const auto* const text = string.find_t()) _text = text->text();
        for (const auto& run : string.r()) _text += run.t().text();
        return _text;
    }
    if (value.kind == ValueKind::text && value.shared != FilterValue::notShared) return _book.sharedText(value.shared);
    switch (value.kind) {
        case ValueKind::number:
            _text = bindery::toWide(value.isIsoDate ? std::string(value.raw) : shortNumberText(value.number));
            break;
        case ValueKind::boolean:
            _text = value.number != 0 ? L"TRUE" : L"FALSE";
            break;
        default:
            _text = bindery::toWide(value.raw);
    }
    return _text;
}

template class ValueReader<sheet::c_CT_Cell>;
template class ValueReader<strict::c_CT_Cell>;

}  // namespace vellum::xlsx
