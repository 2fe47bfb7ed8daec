// The filter of a sheet, and its tables.
#include <algorithm>
#include <unordered_set>

#include "engine/failure/vlerror.h"
#include "xlsx/features/block.h"
#include "xlsx/features/name_text.h"
#include "xlsx/filters/auto_filter.h"
#include "xlsx/filters/filter_ref.h"
#include "xlsx/filters/filter_run.h"
#include "xlsx/filters/messages.h"
#include "xlsx/filters/sort_run.h"
#include "xlsx/filters/tables.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/drawing_parts.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/sheet/sheet_walk.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

constexpr std::wstring_view filterName = L"_xlnm._FilterDatabase";

/// The workbook, as filters ask it.
template <class CharT, class Tag>
class BookOfFilter final : public xlsx::FilterBook {
public:
    explicit BookOfFilter(BookContextT<CharT, Tag>& book)
        : _strings(book.findSharedStrings()), _styles(book.findStyles()), _dates1904(book.dates1904()) {}

    std::wstring_view sharedText(std::size_t position) override { return _strings->textAt(position); }
    std::size_t sharedTotal() override { return _strings ? _strings->size() : 0; }
    bool isDateStyle(std::uint32_t style) override { return _styles && _styles->isDateFormat(style); }
    bool dates1904() override { return _dates1904; }

private:
    SharedStrings<CharT, Tag>* _strings;
    Styles<CharT, Tag>* _styles;
    bool _dates1904;
};

}  // namespace

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::hasFilter() {
    return guard(false, [&] { return this->_root.isset_autoFilter(); });
}

template <class CharT, class Tag>
IAutoFilterT<CharT>* XMLSheetImplT<CharT, Tag>::filterObject() {
    return guard<IAutoFilterT<CharT>*>(nullptr, [&] {
        if (!_filter) {
            _filter = std::make_unique<XMLAutoFilterT<CharT, Tag>>(this->_root, book().isUtf8(), book().lastError());
        }
        this->_root.autoFilter();
        this->_root.sheetPr().filterMode(true);
        return _filter.get();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeFilter() {
    return guard(false, [&] {
        dropFilter();
        return true;
    });
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::dropFilter() {
    dropFilterElement();
    _filter.reset();
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::dropFilterElement() {
    this->_root.unset_autoFilter();
    if (this->_root.isset_sheetPr()) this->_root.sheetPr().unset_filterMode();
}

/// One that was asked for and never filled: programs report a file that has it as damaged.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::dropEmptyFilter() {
    if (!_filter) return;
    const auto* const filter = this->_root.find_autoFilter();
    if (filter && !filter->isset_ref() && filter->filterColumn().empty()) dropFilterElement();
    _filter->dropColumnsOutside();
}

/// Every cell of a group that has one in the range gets a formula of its own.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::dissolveShared(const CellRange& range) {
    std::unordered_set<std::uint32_t> groups;
    for (RowPlace row = rowAt(range.rowFirst); row != _rows->end() && row->r() <= range.rowLast + 1; ++row) {
        for (const Cell& cell : row->c()) {
            const auto formula = cell.formula();
            const bool isInside = cell.column() >= range.colFirst && cell.column() <= range.colLast;
            if (isInside && formula && formula->t() == "shared" && formula->isset_si()) groups.insert(formula->si());
        }
    }
    if (groups.empty()) return;
    std::vector<std::pair<Cell*, std::wstring>> texts;
    eachCell([&](CellPlace at, Cell& cell) {
        const auto formula = cell.formula();
        if (!formula || formula->t() != "shared" || !groups.contains(formula->si())) return;
        texts.emplace_back(&cell, formulaText(at, cell, at));
    });
    for (auto& [cell, text] : texts) {
        cell->setFormula(text);
    }
    _mastersKnown = false;
    _heirs.clear();
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::applyFilter() {
    return guard(false, [&] {
        auto* const filter = this->_root.find_autoFilter();
        if (!filter || !filter->isset_ref()) throw vlerror(xlsx::msg::filterRefNotFound);
        CellRange range = xlsx::readFilterRef(filter->ref());
        if (range.rowFirst > range.rowLast) std::swap(range.rowFirst, range.rowLast);
        if (range.colFirst > range.colLast) std::swap(range.colFirst, range.colLast);
        const xlsx::NamedSheet sheet = namedSheet();
        numberAll();
        const auto endRow = static_cast<std::uint32_t>(used().rowEnd);
        BookOfFilter<CharT, Tag> values(book());

        // Cells are judged before they are sorted: their order in memory is the rows' then.
        const xlsx::Judgement judgement = xlsx::judgeRows<Tag>(*filter, range, *_rows, endRow, values);
        const auto order = sortData(*filter, range, endRow, values);
        DefinedName& name = book().names().make(filterName, _index);
        name.text(xlsx::absoluteArea(sheet.name, range));
        name.hidden(true);
        xlsx::showRows<Tag>(judgement, order, range, *_rows);
        forgetPlaces();
        return true;
    });
}

/// Which row's cells each row got; nothing when none moved.
template <class CharT, class Tag>
std::vector<std::uint32_t> XMLSheetImplT<CharT, Tag>::sortData(typename Sml::c_CT_AutoFilter& filter, CellRange range,
                                                               std::uint32_t endRow, xlsx::FilterBook& values) {
    const auto keys = xlsx::FilterSort<Tag>(filter).keys(range);
    if (keys.empty() || range.rowFirst >= range.rowLast) return {};
    ++range.rowFirst;  // the header stays
    dissolveShared(range);
    return xlsx::sortRows<Tag>(*_rows, range, endRow, keys, values);
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::tableTotal() {
    return guard(-1, [&] { return xlsx::tableTotal(this->_root); });
}

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::tableAt(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast,
                                                int* headerRows, int* totalsRows) {
    return guard<const CharT*>(nullptr, [&] {
        const std::string& id = xlsx::tableId(this->_root, index);
        const Relationships* const relationships = findRelationships();
        if (!relationships) throw vlerror(xlsx::msg::sheetRelationshipsNotFound);
        const std::string target = relationships->targetById(id);
        const std::string path =
            target.starts_with('/') ? target : absoluteTarget(folderOf(book().sheetPath(_index)), target);
        const auto* const table = dynamic_cast<const Table<Tag>*>(book().findPart(path));
        if (!table) throw vlerror(xlsx::msg::tableNotFound);
        const xlsx::TableFacts facts = xlsx::tableFacts(table->root());
        xlsx::giveBlock(facts.range, rowFirst, rowLast, colFirst, colLast);
        if (headerRows) *headerRows = facts.headerRows;
        if (totalsRows) *totalsRows = facts.totalsRows;
        return _tableText.template give<CharT>(facts.name, book().isUtf8());
    });
}

}  // namespace vellum
