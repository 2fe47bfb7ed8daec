// Shared formulas: one cell of a group, its master, has the text and the group's range; the others have its number.
#include <algorithm>

#include "xlsx/cells/shifted_formula.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_walk.h"

namespace vellum {

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isMember(const Cell& cell, std::uint32_t si) {
    const auto formula = cell.formula();
    return formula && formula->t() == "shared" && formula->isset_si() && formula->si() == si;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isMaster(const Cell& cell) {
    const auto formula = cell.formula();
    return formula && formula->t() == "shared" && formula->isset_ref() && formula->isset_si();
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::hasGroupText(const Cell& cell) {
    const auto formula = cell.formula();
    return formula && formula->isset_si() && formula->isset_t() && formula->hasText();
}

/// The master of a group and its place; null when there is none.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::findMaster(std::uint32_t si, CellPlace& at) -> Cell* {
    if (!_mastersKnown) {
        _sharedMasters.clear();
        eachCell([&](CellPlace place, const Cell& cell) {
            if (hasGroupText(cell)) _sharedMasters[cell.formula()->si()].push_back(place);
        });
        _mastersKnown = true;
    }
    const auto group = _sharedMasters.find(si);
    if (group == _sharedMasters.end()) return nullptr;
    const auto masterAt = [&](CellPlace place) {
        Cell* const cell = findCell(place);
        return cell && hasGroupText(*cell) && cell->formula()->si() == si ? cell : nullptr;
    };
    auto& places = group->second;
    if (!places.empty() && !masterAt(places.front())) {  // overwritten since
        std::erase_if(places, [&](CellPlace place) { return !masterAt(place); });
    }
    if (places.empty()) return nullptr;
    at = places.front();
    return masterAt(at);
}

template <class CharT, class Tag>
std::wstring XMLSheetImplT<CharT, Tag>::formulaText(CellPlace at, const Cell& cell, CellPlace as) {
    const auto formula = cell.formula();
    const auto translated = [&](const std::wstring& text, CellPlace from) {
        return translateFormula(text, std::int64_t{as.row} - from.row, std::int64_t{as.col} - from.col);
    };
    if (formula->t() != "shared") return formula->text();
    if (formula->hasText())
        return at.row == as.row && at.col == as.col ? formula->text() : translated(formula->text(), at);
    CellPlace masterAt{};
    const Cell* const master = findMaster(formula->si(), masterAt);
    return master && master->formula() ? translated(master->formula()->text(), masterAt) : std::wstring();
}

template <class CharT, class Tag>
template <class Visit>
void XMLSheetImplT<CharT, Tag>::eachMember(const Formula& master, CellPlace from, Visit&& visit) {
    const auto range = readCellRange(std::string_view(master.ref()));
    if (!range) return;
    const std::uint32_t si = master.si();
    const std::uint32_t rowFirst = std::max(range->rowFirst, from.row);
    for (RowPlace place = rowAt(rowFirst); place != _rows->end() && place->r() <= range->rowLast + 1; ++place) {
        Cells& cells = place->c();
        const std::uint32_t row = place->r() - 1;
        const std::uint32_t colFirst = row == from.row ? std::max(range->colFirst, from.col) : range->colFirst;
        for (std::size_t k = cellAt(cells, colFirst); k < cells.size() && cells[k].column() <= range->colLast; ++k) {
            if (isMember(cells[k], si) && visit(CellPlace{row, cells[k].column()}, cells[k])) return;
        }
    }
}

/// The master is about to be overwritten: the next cell of the group takes its part. A column that is overwritten from
/// the top passes its group on at every cell, so the search goes on where the last one ended.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::handOverMaster(CellPlace at, Cell& master) {
    const Formula old = master.makeFormula();
    const auto last = _heirs.find(old.si());
    const bool isHeir = last != _heirs.end() && last->second == at;
    eachMember(old, isHeir ? at : CellPlace{}, [&](CellPlace heirAt, Cell& heir) {
        if (&heir == &master) return false;
        Formula& formula = heir.makeFormula();
        formula.text(
            translateFormula(old.text(), std::int64_t{heirAt.row} - at.row, std::int64_t{heirAt.col} - at.col));
        formula.ref(old.ref());
        _heirs.insert_or_assign(old.si(), heirAt);
        if (const auto group = _sharedMasters.find(old.si()); group != _sharedMasters.end()) {
            std::replace(group->second.begin(), group->second.end(), at, heirAt);
        }
        return true;
    });
}

/// Every cell of the group gets a formula of its own.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::removeShared(CellPlace at, Cell& master) {
    const Formula old = master.makeFormula();
    eachMember(old, {}, [&](CellPlace memberAt, Cell& member) {
        const std::wstring text =
            translateFormula(old.text(), std::int64_t{memberAt.row} - at.row, std::int64_t{memberAt.col} - at.col);
        member.setFormula(text);
        return false;
    });
}

}  // namespace vellum
