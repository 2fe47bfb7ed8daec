#include "biff/sheet/sheet.h"

#include <unordered_map>

#include "biff/cells/biff5_formulas.h"
#include "biff/features/feature_messages.h"
#include "biff/names/defined_names.h"
#include "biff/sheet/drawing_surroundings.h"
#include "biff/sheet/foreign_sheet.h"
#include "biff/strings/str_map.h"
#include "drawing/objects/chart_drawings.h"
#include "engine/text/string_pool.h"
#include "formula/formula_context.h"

namespace vellum {
namespace {

// What a copy leaves behind: tables bear numbers and names that are unique in a book, and a code name belongs to one
// sheet's macros. Drop-down lists name objects by numbers that only a copy within the book keeps.
constexpr Place uniquePlaces[] = {Place::codeName, Place::tables};
// What refers to fonts, names or formats of its book.
constexpr Place boundPlaces[] = {Place::dropDowns, Place::sorting,       Place::autoFilter, Place::formulaExtension,
                                 Place::phonetic,  Place::consolidation, Place::other};

/// Copies the content of a sheet, cell by cell in the order of the table, so that what lies dead in the vectors of the
/// source stays there.
template <class CharT>
class SheetCopier {
public:
    SheetCopier(SheetParts& to, BookContext<CharT>& book, const SheetParts& from, const BookContext<CharT>& fromBook)
        : _to(to), _book(book), _from(from), _fromBook(fromBook), _ixfe(book, fromBook) {}

    void copy() {
        _to.bof = _from.bof;
        _to.settings = _from.settings;
        _to.index = _from.index;
        _to.window2 = _from.window2;
        _to.window2.flags &= static_cast<std::uint16_t>(~(Window2::selected | Window2::active));
        _to.merges = _from.merges;
        _to.features = _from.features;
        if (!sameBook()) _to.features.shared.remove(FeatureType::smartTags);  // their kinds stand in the globals
        _to.foreign = sameBook() ? _from.foreign : drawing::withoutDrawings(_from.foreign);
        biff::forEachForeignString(_to.foreign, [this](std::uint32_t isst) { _book.strings().noteUse(isst); });
        copyKept();
        for (Row row : _from.rows.rows()) {
            if (!sameBook()) row.ixfe = static_cast<std::uint16_t>((row.ixfe & ~Row::formatMask) | formatOf(row));
            _to.rows.append(row);
        }
        for (ColInfo info : _from.columns.records()) {
            info.ixfe = _ixfe(info.ixfe);
            _to.columns.append(info);
        }
        _from.cells.index().forEach([this](std::uint32_t, std::uint32_t, CellSlot slot) {
            _from.cells.visit(slot, [this](const auto& cell) { this->add(cell); });
        });
        _to.recountBounds();
    }

private:
    [[nodiscard]] bool sameBook() const { return &_book == &_fromBook; }

    void copyKept() {
        _to.kept = _from.kept;
        for (const Place place : uniquePlaces) _to.kept.remove(place);
        _to.kept.removeRecords(record_id::UserSViewBegin);  // a view of the book has one part for each sheet
        if (sameBook()) return;
        for (const Place place : boundPlaces) _to.kept.remove(place);
    }

    // Of the format of a row that says it has none nothing is taken along.
    std::uint16_t formatOf(const Row& row) {
        if ((row.flags & Row::formatted) == 0) return defaultCellXf;
        const std::uint16_t ixfe = _ixfe(row.ixfe & Row::formatMask);
        return ixfe <= Row::formatMask ? ixfe : defaultCellXf;
    }

    template <class Cell>
    void put(Cell cell) {
        cell.ixfe = _ixfe(cell.ixfe);
        _to.cells.put(std::move(cell));
    }

    template <class Cell>
    void add(const Cell& cell) {
        put(cell);
    }
    void add(const LabelSstCell& cell) {
        LabelSstCell copy = cell;
        if (!sameBook() && cell.isst >= _fromBook.strings().size()) {
            put(BlankCell{cell.row, cell.col, cell.ixfe});  // of no string there, and of another one here
            return;
        }
        copy.isst = string(cell.isst);
        put(copy);
        _book.strings().noteUse(copy.isst);
    }
    void add(const LabelCell& cell) {
        LabelCell copy = cell;
        copy.text = text(cell.text);
        put(copy);
    }

    // Tokens name sheets, names and external books by their numbers in a book; in another one the value alone is true.
    void add(const FormulaCell& cell) {
        if (!sameBook()) {
            addResult(cell);
            return;
        }
        FormulaCell copy = cell.copyWithoutTail(_book.pool());
        if (const auto named = copy.anchor()) copy.setAnchor(_from.sharedTokens.resolve(*named));
        if (cell.tail != nullptr) copy.tail = std::make_unique<FormulaTail>(*cell.tail);
        put(std::move(copy));
    }
    void addResult(const FormulaCell& cell) {
        const CachedValue& value = cell.value;
        switch (value.kind()) {
            case cellNumber:
                put(NumberCell{cell.row, cell.col, cell.ixfe, value.number()});
                break;
            case cellString:
                put(LabelCell{cell.row, cell.col, cell.ixfe, text(cell.text)});
                break;
            case cellBoolean:
            case cellError: {
                const bool isError = value.kind() == cellError;
                const int code = isError ? value.error() : static_cast<int>(value.boolean());
                put(BoolErrCell{cell.row, cell.col, cell.ixfe, static_cast<std::uint8_t>(code),
                                static_cast<std::uint8_t>(isError)});
                break;
            }
            default:
                put(BlankCell{cell.row, cell.col, cell.ixfe});
                break;
        }
    }

    XLUnicodeString text(XLUnicodeString text) {
        if (!sameBook()) text.text = _book.pool().copy(text.view());
        return text;
    }
    std::uint32_t string(std::uint32_t isst) {
        if (sameBook()) return isst;
        const auto [known, isNew] = _strings.try_emplace(isst);
        if (isNew) known->second = _book.adoptString(_fromBook, isst);
        return known->second;
    }

    SheetParts& _to;
    BookContext<CharT>& _book;
    const SheetParts& _from;
    const BookContext<CharT>& _fromBook;
    XfAdoption<CharT> _ixfe;
    std::unordered_map<std::uint32_t, std::uint32_t> _strings;  // index in the source's table, index in ours
};

}  // namespace

template <class CharT>
SheetImplT<CharT>::SheetImplT(BookContext<CharT>& book) : _book(book), _content(book.openSheets()) {}

template <class CharT>
void SheetImplT<CharT>::load(Xls& in, const SheetLoad& what) {
    releaseStrings();
    const std::size_t from = in.position();
    SheetParts& loaded = _content.replace(std::make_unique<SheetParts>());
    loaded.features = biff::SheetFeatures::ofFile();
    std::vector<drawing::OlderNote> notes;
    loadSheet(loaded, {in, _book.pool(), _book.strings(), what, _book.isBiff5(), notes});
    if (!_book.isBiff5()) {
        _content.park(in.bytesSince(from), what);
        return;
    }
    DrawingSurroundings surroundings(*this);
    for (const auto& note : notes) drawing::addOlderNote(loaded.drawing, loaded.notes, surroundings, note);
    biff::convertBiff5Formulas(loaded.cells, _book.names().links, _book.formulas().sheetTotal(), _book.pool());
}

template <class CharT>
void SheetImplT<CharT>::save(Xls& out) {
    _content.use([&](SheetParts& content) { saveSheet(content, out); });
}

template <class CharT>
int SheetImplT<CharT>::lostFormulas() const {
    if (_content.isParked()) return 0;
    int lost = 0;
    parts().cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
        if (slot.kind() != SlotKind::formula) return;
        lost += parts().cells.template get<FormulaCell>(slot).generation == formula::Generation::biff5;
    });
    return lost;
}

template <class CharT>
void SheetImplT<CharT>::cloneFrom(const SheetImplT& source) {
    releaseStrings();
    SheetParts& copy = _content.replace(std::make_unique<SheetParts>());
    SheetCopier<CharT>(copy, _book, source.parts(), source._book).copy();
    copyDrawing(source);
}

template <class CharT>
void SheetImplT<CharT>::throwNoWorksheet() {
    throw vlerror(biff::msg::notWorksheet);
}

template <class CharT>
void SheetImplT<CharT>::releaseStrings() {
    for (const LabelSstCell& cell : parts().cells.template all<LabelSstCell>()) _book.strings().dropUse(cell.isst);
    biff::forEachForeignString(parts().foreign, [this](std::uint32_t isst) { _book.strings().dropUse(isst); });
}

}  // namespace vellum
