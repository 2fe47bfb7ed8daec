#include "xlsx/features/print_names.h"

#include <string>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/features/messages.h"
#include "xlsx/features/name_text.h"

namespace vellum::xlsx {
namespace {

constexpr std::wstring_view printAreaName = L"_xlnm.Print_Area";
constexpr std::wstring_view printTitlesName = L"_xlnm.Print_Titles";

template <class Tag>
void removeLocal(DefinedNames<Tag>& names, std::wstring_view name, int sheetIndex) {
    if (const auto* const found = names.find(name, sheetIndex)) names.remove(*found);
}

AreaKind kindOf(int part) {
    return part == repeatedRows ? AreaKind::rows : AreaKind::columns;
}

}  // namespace

template <class Tag>
std::optional<FirstArea> printArea(DefinedNames<Tag>& names, const NamedSheet& sheet) {
    const auto* const name = names.find(printAreaName, sheet.index);
    if (!name) return {};
    const auto areas = areasOf(name->text());
    const auto range = rangeOnSheet(areas.front(), sheet.name);
    if (!range) return {};
    return FirstArea{*range, areas.size() > 1};
}

template <class Tag>
void setPrintArea(DefinedNames<Tag>& names, const NamedSheet& sheet, const CellRange& range) {
    names.make(printAreaName, sheet.index).text(absoluteArea(sheet.name, range));
}

template <class Tag>
void clearPrintArea(DefinedNames<Tag>& names, const NamedSheet& sheet) {
    removeLocal(names, printAreaName, sheet.index);
}

template <class Tag>
std::optional<Span> repeated(DefinedNames<Tag>& names, const NamedSheet& sheet, RepeatPart part) {
    const auto* const name = names.find(printTitlesName, sheet.index);
    if (!name) return {};
    for (const std::wstring_view area : areasOf(name->text())) {
        if (areaKind(area, sheet.name) != kindOf(part)) continue;
        const auto range = rangeOnSheet(area, sheet.name);
        return part == repeatedRows ? Span{range->rowFirst, range->rowLast} : Span{range->colFirst, range->colLast};
    }
    return {};
}

template <class Tag>
void setRepeat(DefinedNames<Tag>& names, const NamedSheet& sheet, int part, Span span) {
    if (part != repeatedColumns && part != repeatedRows) throw vlerror(msg::repeatIndexOutOfRange);
    auto& name = names.make(printTitlesName, sheet.index);
    std::wstring columns, rows, others;
    const std::wstring old = name.text();
    if (!old.empty()) {
        for (const std::wstring_view area : areasOf(old)) {
            const AreaKind kind = areaKind(area, sheet.name);
            auto& kept = kind == AreaKind::columns ? columns : kind == AreaKind::rows ? rows : others;
            if (!kept.empty()) kept += L',';
            kept += area;
        }
    }
    (part == repeatedRows ? rows : columns) = part == repeatedRows ? absoluteRows(sheet.name, span.first, span.last)
                                                                   : absoluteColumns(sheet.name, span.first, span.last);
    std::wstring text;
    for (const std::wstring* const piece : {&columns, &rows, &others}) {
        if (piece->empty()) continue;
        if (!text.empty()) text += L',';
        text += *piece;
    }
    name.text(std::move(text));
}

template <class Tag>
void clearRepeats(DefinedNames<Tag>& names, const NamedSheet& sheet) {
    removeLocal(names, printTitlesName, sheet.index);
}

#define VELLUM_PRINT_NAMES(Tag)                                                               \
    template std::optional<FirstArea> printArea(DefinedNames<Tag>&, const NamedSheet&);       \
    template void setPrintArea(DefinedNames<Tag>&, const NamedSheet&, const CellRange&);      \
    template void clearPrintArea(DefinedNames<Tag>&, const NamedSheet&);                      \
    template std::optional<Span> repeated(DefinedNames<Tag>&, const NamedSheet&, RepeatPart); \
    template void setRepeat(DefinedNames<Tag>&, const NamedSheet&, int, Span);                \
    template void clearRepeats(DefinedNames<Tag>&, const NamedSheet&);
VELLUM_PRINT_NAMES(ooxml::excelNormal_tag)
VELLUM_PRINT_NAMES(ooxml::excelStrict_tag)
#undef VELLUM_PRINT_NAMES

}  // namespace vellum::xlsx
