// The book's names for those who list them.
#include "engine/api/enums.h"
#include "engine/facts/cell_address.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "xlsx/book/book.h"

namespace vellum {
namespace {

/// The sheet that a reference names, by its place in the list; -1 for none.
template <class Workbook>
int sheetIndex(Workbook& workbook, std::wstring_view name) {
    if (auto* const sheets = workbook.find_sheets()) {
        for (std::size_t i = 0; i < sheets->sheet().size(); ++i) {
            if (sameSheetName(sheets->sheet()[i].name(), name)) return static_cast<int>(i);
        }
    }
    return -1;
}

template <class Workbook>
void giveArea(Workbook& workbook, std::wstring_view reference, IBookNames::Name& name) {
    const std::size_t mark = reference.rfind(L'!');
    const auto range = readCellRange(mark == std::wstring_view::npos ? reference : reference.substr(mark + 1));
    if (!range) return;
    const std::wstring sheet = sheetOfReference(reference);
    name.sheet = sheet.empty() ? name.scope : sheetIndex(workbook, sheet);
    name.rowFirst = static_cast<int>(range->rowFirst);
    name.rowLast = static_cast<int>(range->rowLast);
    name.colFirst = static_cast<int>(range->colFirst);
    name.colLast = static_cast<int>(range->colLast);
}

}  // namespace

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::nameTotal() {
    const auto* const names = workbook().find_definedNames();
    return names ? static_cast<int>(names->definedName().size()) : 0;
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::nameAt(int index, IBookNames::Name& name) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || index >= nameTotal()) throw vlerror(msg::indexOutOfRange);
        const auto& found = workbook().find_definedNames()->definedName()[static_cast<std::size_t>(index)];
        name = {};
        name.text = toNarrow(found.name(), true);
        name.scope = found.isset_localSheetId() ? static_cast<int>(found.localSheetId()) : scopeWorkbook;
        name.hidden = found.hidden();
        name.builtIn = found.name().starts_with(L"_xlnm.");
        giveArea(workbook(), found.text(), name);
        name.formula = toNarrow(found.text(), true);
        return true;
    });
}

/// Each link has a part of its own, which is passed through; its first elements tell what it leads to.
template <class CharT, class Tag>
IBookNames::Outside XMLBookImplT<CharT, Tag>::outside() {
    constexpr std::size_t head = 4096;
    IBookNames::Outside found;
    for (const auto& [path, part] : _parts) {
        const auto* const kept = dynamic_cast<const BinaryFile*>(part.get());
        if (kept == nullptr) continue;
        const std::string_view bytes = kept->bytes().substr(0, head);
        if (bytes.find("externalLink") == std::string_view::npos) continue;
        found.otherBooks += bytes.find("externalBook ") != std::string_view::npos;
        found.ddeLinks += bytes.find("ddeLink ") != std::string_view::npos;
    }
    return found;
}

}  // namespace vellum
