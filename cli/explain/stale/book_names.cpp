#include "cli/explain/stale/book_names.h"

#include <algorithm>

#include "engine/api/enums.h"
#include "engine/api/isheet.h"
#include "host/text/text_compare.h"

namespace cli::explain {
namespace {

constexpr int deepestName = 16;

std::string lower(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), quillet::lowerAscii);
    return out;
}

}  // namespace

BookNames::BookNames(vellum::IBookT<char>& book) : _isPackage(book.binaryVersion() == 0) {
    for (int i = 0; i < book.sheetCount(); ++i) {
        const char* const name = book.sheetNameAt(i);
        _sheets.push_back(lower(name != nullptr ? name : ""));
    }
    for (int i = 0; i < book.sheetCount(); ++i) {
        auto* const sheet = book.sheetKindAt(i) == vellum::sheetWorksheet ? book.getSheet(i) : nullptr;
        for (int t = 0; sheet != nullptr && t < sheet->tableTotal(); ++t) {
            Reference area;
            area.sheetFirst = area.sheetLast = i;
            const char* const name = sheet->tableAt(t, &area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast);
            if (name != nullptr) _tables[lower(name)] = area;
        }
    }
    auto* const all = dynamic_cast<vellum::IBookNames*>(&book);
    for (int i = 0, total = all != nullptr ? all->nameTotal() : 0; i < total; ++i) {
        vellum::IBookNames::Name name;
        if (all->nameAt(i, name)) _names[{lower(name.text), name.scope}] = name;
    }
}

int BookNames::sheetIndex(std::string_view name) const {
    const auto found = std::find(_sheets.begin(), _sheets.end(), lower(name));
    return found == _sheets.end() ? -1 : static_cast<int>(found - _sheets.begin());
}

void BookNames::resolve(std::string_view text, int sheet, References& out) const {
    const std::string wanted = lower(text);
    if (const auto table = _tables.find(wanted); table != _tables.end()) {
        out.areas.push_back(table->second);
        return;
    }
    auto found = _names.find({wanted, sheet});
    if (found == _names.end()) found = _names.find({wanted, vellum::scopeWorkbook});
    if (found == _names.end() || _depth >= deepestName) {
        out.cannotTell = true;
        return;
    }
    const vellum::IBookNames::Name& name = found->second;
    if (name.sheet >= 0) {
        Reference area;
        area.sheetFirst = area.sheetLast = name.sheet;
        area.rowFirst = std::max(name.rowFirst, 0);
        area.rowLast = name.rowFirst < 0 ? lastSheetRow : name.rowLast;
        area.colFirst = std::max(name.colFirst, 0);
        area.colLast = name.colFirst < 0 ? lastSheetColumn : name.colLast;
        out.areas.push_back(area);
        return;
    }
    if (!name.formula) return;  // a function of the workbook's program
    References inside;
    ++_depth;
    addReferences(*name.formula, sheet, *this, inside);
    --_depth;
    // What is relative in a name is counted from the cell that uses it, and its text does not tell how.
    for (const Reference& area : inside.areas) {
        inside.cannotTell =
            inside.cannotTell || area.rowFirstMoves || area.rowLastMoves || area.colFirstMoves || area.colLastMoves;
        out.areas.push_back(area);
    }
    out.cannotTell = out.cannotTell || inside.cannotTell;
}

}  // namespace cli::explain
