// The sheet in its workbook: its name, whether it is shown, the defined names that it sees.
#include "engine/api/enums.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/vlerror.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {
namespace {

/// The workbook's element of a sheet; null when there is none at that index.
template <class Workbook>
auto* sheetElement(Workbook& workbook, int index) {
    auto* const sheets = workbook.find_sheets();
    const bool exists = sheets && index >= 0 && static_cast<std::size_t>(index) < sheets->sheet().size();
    return exists ? &sheets->sheet()[static_cast<std::size_t>(index)] : nullptr;
}

/// The address behind the sheet's name, which may be quoted and hold a "!" itself.
std::wstring_view withoutSheet(std::wstring_view reference) {
    const std::size_t mark = reference.rfind(L'!');
    return mark == std::wstring_view::npos ? reference : reference.substr(mark + 1);
}

/// The first of several areas; commas in quoted sheet names do not count.
std::wstring_view firstArea(std::wstring_view reference) {
    bool quoted = false;
    for (std::size_t i = 0; i < reference.size(); ++i) {
        if (reference[i] == L'\'') quoted = !quoted;
        if (reference[i] == L',' && !quoted) return reference.substr(0, i);
    }
    return reference;
}

}  // namespace

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::sheetName() {
    return guard<const CharT*>(nullptr, [&] {
        auto* const element = sheetElement(book().workbook(), _index);
        if (!element) throw vlerror(xlsx::msg::sheetWithoutBook);
        return _nameText.template give<CharT>(element->name(), book().isUtf8());
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::visibilityState() {
    return guard<int>(sheetVisible, [&]() -> int {
        const auto* const element = sheetElement(book().workbook(), _index);
        if (!element) throw vlerror(xlsx::msg::indexOutOfRange);
        if (element->state() == "hidden") return sheetHidden;
        return element->state() == "veryHidden" ? sheetVeryHidden : sheetVisible;
    });
}

/// Names of the whole workbook, and those of this sheet only. The list is kept until names change, since callers go
/// through it name by name.
template <class CharT, class Tag>
const std::vector<std::uint32_t>& XMLSheetImplT<CharT, Tag>::visibleNames() {
    const unsigned version = book().namesVersion();
    if (_visibleNamesVersion == version) return _visibleNames;
    _visibleNames.clear();
    if (const auto* const names = book().workbook().find_definedNames()) {
        for (std::uint32_t i = 0; i < names->definedName().size(); ++i) {
            const DefinedName& name = names->definedName()[i];
            if (name.isset_localSheetId() && static_cast<std::int64_t>(name.localSheetId()) != _index) continue;
            _visibleNames.push_back(i);
        }
    }
    _visibleNamesVersion = version;
    return _visibleNames;
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::namedRangeCount() {
    return guard(0, [&] { return static_cast<int>(visibleNames().size()); });
}

/// Fails for a name whose text is no area of this sheet.
template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::namedRange(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                                   int* scope, bool* hidden) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const auto& visible = visibleNames();
        const auto at = static_cast<std::size_t>(index);
        if (index < 0 || at >= visible.size()) throw vlerror(xlsx::msg::indexOutOfRange);
        const DefinedName* const found = &book().workbook().find_definedNames()->definedName()[visible[at]];
        const std::wstring_view whole = found->text();
        const std::wstring_view reference = firstArea(whole);
        auto* const element = sheetElement(book().workbook(), _index);
        const std::wstring sheet = sheetOfReference(reference);
        const auto range = readCellRange(withoutSheet(reference));
        if (!element || !range || (!sheet.empty() && !sameSheetName(sheet, element->name()))) {
            lastError().set(xlsx::msg::namedRangeNotFound);  // not thrown: most names belong to other sheets
            return nullptr;
        }
        if (rowFirst) *rowFirst = static_cast<int>(range->rowFirst);
        if (rowLast) *rowLast = static_cast<int>(range->rowLast);
        if (colFirst) *colFirst = static_cast<int>(range->colFirst);
        if (colLast) *colLast = static_cast<int>(range->colLast);
        if (scope) *scope = found->isset_localSheetId() ? static_cast<int>(found->localSheetId()) : scopeWorkbook;
        if (hidden) *hidden = found->hidden();
        if (reference.size() != whole.size()) lastError().set(xlsx::msg::partsSkipped);
        return _nameText.template give<CharT>(found->name(), book().isUtf8());
    });
}

template class XMLSheetImplT<char, excelNormal_tag>;
template class XMLSheetImplT<char, excelStrict_tag>;
template class XMLSheetImplT<wchar_t, excelNormal_tag>;
template class XMLSheetImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
