// View and print flags of a sheet, its name and state, and operations that binary sheets have not.
#include <span>

#include "biff/container/messages.h"
#include "biff/sheet/sheet_change.h"
#include "engine/failure/messages.h"

namespace vellum {
namespace {

void setFlag(std::uint16_t& flags, std::uint16_t mask, bool on) {
    flags = static_cast<std::uint16_t>(on ? flags | mask : flags & ~mask);
}

// Where a chart or macro sheet, kept as bytes, has the flags of its first Window2; null when it has none. Others are of
// further windows.
std::byte* flagsOfForeign(std::span<std::byte> wire) {
    std::byte* flags = nullptr;
    biff::forEachWireRecord(wire, [&](std::uint16_t id, std::span<std::byte> body, int depth) {
        if (flags != nullptr || id != record_id::Window2 || depth != 1) return;
        if (body.size() >= sizeof(std::uint16_t)) flags = body.data();
    });
    return flags;
}

}  // namespace

template <class CharT>
void SheetImplT<CharT>::setSelected(bool selected) {
    constexpr std::uint16_t mask = Window2::selected | Window2::active;
    std::uint16_t flags = _content.viewFlags();
    setFlag(flags, mask, selected);
    if (_content.isParked() && flags == _content.viewFlags()) return;
    SheetParts& content = _content.edit();
    content.window2.flags = flags;
    if (std::byte* const at = flagsOfForeign(content.foreign)) {
        flags = loadLe<std::uint16_t>(at);
        setFlag(flags, mask, selected);
        storeLe(at, flags);
    }
}

template <class CharT>
bool SheetImplT<CharT>::showsGridlines() {
    return ask(false, [](const SheetParts& p) { return (p.window2.flags & Window2::showGrid) != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setShowsGridlines(bool show) {
    return change([&] { setFlag(edit().window2.flags, Window2::showGrid, show); });
}

template <class CharT>
bool SheetImplT<CharT>::isRightToLeft() {
    return ask(false, [](const SheetParts& p) { return (p.window2.flags & Window2::rightToLeft) != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setRightToLeft(bool rightToLeft) {
    return change([&] { setFlag(edit().window2.flags, Window2::rightToLeft, rightToLeft); });
}

template <class CharT>
bool SheetImplT<CharT>::topLeftCell(int* row, int* col) {
    return ask(false, [&](const SheetParts& p) {
        biff::give(row, p.window2.rwTop);
        biff::give(col, p.window2.colLeft);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setTopLeftCell(int row, int col) {
    return change([&] {
        const CellPlace at = place(row, col);
        edit().window2.rwTop = at.row;
        edit().window2.colLeft = at.col;
    });
}

template <class CharT>
bool SheetImplT<CharT>::printsGridlines() {
    return ask(false, [](const SheetParts& p) { return p.settings.printGrid != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setPrintsGridlines(bool print) {
    return change([&] { edit().settings.printGrid = print ? 1 : 0; });
}

template <class CharT>
bool SheetImplT<CharT>::printsRowColHeadings() {
    return ask(false, [](const SheetParts& p) { return p.settings.printRowCol != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setPrintsRowColHeadings(bool print) {
    return change([&] { edit().settings.printRowCol = print ? 1 : 0; });
}

template <class CharT>
bool SheetImplT<CharT>::summaryBelow() {
    return ask(false, [](const SheetParts& p) { return (p.settings.wsBool & SheetSettings::summaryBelow) != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setSummaryBelow(bool below) {
    return change([&] { setFlag(edit().settings.wsBool, SheetSettings::summaryBelow, below); });
}

template <class CharT>
bool SheetImplT<CharT>::summaryRight() {
    return ask(false, [](const SheetParts& p) { return (p.settings.wsBool & SheetSettings::summaryRight) != 0; });
}

template <class CharT>
bool SheetImplT<CharT>::setSummaryRight(bool right) {
    return change([&] { setFlag(edit().settings.wsBool, SheetSettings::summaryRight, right); });
}

template <class CharT>
const CharT* SheetImplT<CharT>::sheetName() {
    return guard<const CharT*>(nullptr, [&] { return made(_texts).name.template give<CharT>(_name, _book.utf8()); });
}

template <class CharT>
bool SheetImplT<CharT>::setSheetName(const CharT* name) {
    return guard(false, [&] {
        if (name == nullptr) throw vlerror(biff::msg::sheetNameIncorrect);
        _book.renameSheet(*this, name);
        return true;
    });
}

template <class CharT>
int SheetImplT<CharT>::visibilityState() {
    return _book.sheetState(*this);
}

template <class CharT>
bool SheetImplT<CharT>::setVisibilityState(int state) {
    return guard(false, [&] {
        _book.setSheetState(*this, state);
        return true;
    });
}

// What the format cannot hold.

template <class CharT>
bool SheetImplT<CharT>::hasFilter() {
    return guard(false, []() -> bool { throw vlerror(biff::msg::noFilterInXls); });
}

template <class CharT>
IAutoFilterT<CharT>* SheetImplT<CharT>::filterObject() {
    return guard<IAutoFilterT<CharT>*>(nullptr,
                                       []() -> IAutoFilterT<CharT>* { throw vlerror(biff::msg::noFilterInXls); });
}

template <class CharT>
bool SheetImplT<CharT>::applyFilter() {
    return hasFilter();
}

template <class CharT>
bool SheetImplT<CharT>::removeFilter() {
    return hasFilter();
}

template <class CharT>
bool SheetImplT<CharT>::removeValidationRules() {
    return guard(false, []() -> bool { throw vlerror(biff::msg::notForXls); });
}

template <class CharT>
bool SheetImplT<CharT>::addValidationRule(int, int, int, int, int, int, const CharT*, const CharT*, bool, bool, bool,
                                          bool, const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return removeValidationRules();
}

template <class CharT>
bool SheetImplT<CharT>::addValidationRuleNumeric(int, int, int, int, int, int, double, double, bool, bool, bool, bool,
                                                 const CharT*, const CharT*, const CharT*, const CharT*, int) {
    return removeValidationRules();
}

}  // namespace vellum
