// The list of sheets.
#include <algorithm>
#include <numeric>

#include "biff/book/book.h"
#include "biff/names/name_copy.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/guarded.h"
#include "engine/text/letter_case.h"

namespace vellum {

namespace {

std::uint8_t boundKindOf(std::uint16_t dt) {
    switch (dt) {
        case Bof::chart:
            return BoundSheet8::chart;
        case Bof::macroSheet:
            return BoundSheet8::macroSheet;
        case Bof::module:
            return BoundSheet8::module;
        default:
            return BoundSheet8::worksheet;
    }
}

template <class Entry>
void makeRoomForOne(std::vector<Entry>& list) {
    if (list.size() == list.capacity()) list.reserve(2 * list.size() + 1);
}

}  // namespace

template <class CharT>
const wchar_t* BookImplT<CharT>::checkedSheetName(const CharT* name, const SheetImplT<CharT>* renamed, bool& cut) {
    if (name == nullptr) throw vlerror(biff::msg::sheetNameNull);
    std::wstring_view wide = widen(name);
    checkSheetName(wide);
    cut = wide.size() > longestSheetName;
    wide = wide.substr(0, longestSheetName);
    const int own = renamed == nullptr ? -1 : indexOfSheet(*renamed);
    for (std::size_t i = 0; i < _globals.boundSheets.size(); ++i) {
        if (static_cast<int>(i) != own && equalIgnoringCase(_globals.boundSheets[i].sheetName.view(), wide))
            throw vlerror(biff::msg::sheetNameTaken);
    }
    return _pool.copy(wide);
}

template <class CharT>
SheetImplT<CharT>& BookImplT<CharT>::makeSheet(std::size_t index, const CharT* name, ISheetT<CharT>* source) {
    bool cut = false;
    BoundSheet8 entry;
    entry.sheetName.set(checkedSheetName(name, nullptr, cut), _pool, utf8());
    auto sheet = std::make_unique<SheetImplT<CharT>>(*this);
    sheet->setName(entry.sheetName.text);
    const SheetImplT<CharT>* own = nullptr;
    if (source != nullptr) {
        own = dynamic_cast<SheetImplT<CharT>*>(source);
        if (own == nullptr) throw vlerror(biff::msg::foreignSheet);
        if (&own->book() == this) biff::checkCopy(_globals.names, indexOfSheet(*own), formulas());
        sheet->cloneFrom(*own);
        entry.dt = boundKindOf(sheet->dt());
        sheet->setSelected(_sheets.empty());  // two selected sheets would be edited together
    }
    sheet->setUsesR1C1(usesR1C1());  // a loaded book has it in its sheets

    // From here on no memory is asked for until the lists have grown together.
    std::vector<int> newIndex(_sheets.size());
    for (std::size_t i = 0; i < newIndex.size(); ++i) newIndex[i] = static_cast<int>(i < index ? i : i + 1);
    auto& tabIds = _globals.rrTabId;
    makeRoomForOne(tabIds);
    makeRoomForOne(_sheets);
    makeRoomForOne(_globals.boundSheets);
    if (!_sheets.empty()) {
        const auto highest = tabIds.empty() ? 0 : *std::ranges::max_element(tabIds);
        const std::size_t at = tabIds.size() == _sheets.size() ? index : tabIds.size();
        tabIds.insert(tabIds.begin() + static_cast<std::ptrdiff_t>(at), static_cast<std::uint16_t>(highest + 1));
    } else if (tabIds.size() != 1) {
        tabIds.assign(1, 1);
    }
    SheetImplT<CharT>& made = *sheet;
    _sheets.insert(_sheets.begin() + static_cast<std::ptrdiff_t>(index), std::move(sheet));
    _globals.boundSheets.insert(_globals.boundSheets.begin() + static_cast<std::ptrdiff_t>(index), entry);
    renumber(newIndex);
    if (own != nullptr) copyNames(*own, made);
    if (cut) this->_lastError.set(biff::msg::sheetNameCut);
    return made;
}

// References by number follow the sheets, and so does the place of the one that is shown.
template <class CharT>
void BookImplT<CharT>::renumber(std::span<const int> newIndex) {
    _globals.names.renumber(newIndex);
    for (std::uint16_t* tab : {&_globals.window1.itabCur, &_globals.window1.itabFirst}) {
        if (*tab < newIndex.size() && newIndex[*tab] >= 0) *tab = static_cast<std::uint16_t>(newIndex[*tab]);
    }
}

template <class CharT>
ISheetT<CharT>* BookImplT<CharT>::addSheet(const CharT* name, ISheetT<CharT>* source) {
    return guarded<ISheetT<CharT>*>(this->_lastError, nullptr, [&] {
        requireEqualSheetLists();
        return &makeSheet(_sheets.size(), name, source);
    });
}

template <class CharT>
ISheetT<CharT>* BookImplT<CharT>::insertSheet(int index, const CharT* name, ISheetT<CharT>* source) {
    return guarded<ISheetT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) > _sheets.size()) throw vlerror(biff::msg::indexOutOfRange);
        requireEqualSheetLists();
        return &makeSheet(static_cast<std::size_t>(index), name, source);
    });
}

template <class CharT>
ISheetT<CharT>* BookImplT<CharT>::getSheet(int index) {
    return guarded<ISheetT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _sheets.size()) throw vlerror(biff::msg::indexOutOfRange);
        return _sheets[static_cast<std::size_t>(index)].get();
    });
}

template <class CharT>
const CharT* BookImplT<CharT>::sheetNameAt(int index) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        if (index < 0 || index >= sheetCount()) throw vlerror(biff::msg::indexOutOfRange);
        const auto& entry = _globals.boundSheets[static_cast<std::size_t>(index)];
        return this->_conversion.template give<CharT>(entry.sheetName.view(), utf8());
    });
}

template <class CharT>
int BookImplT<CharT>::sheetKindAt(int index) {
    return guarded<int>(this->_lastError, sheetOther, [&] {
        if (index < 0 || index >= sheetCount()) throw vlerror(biff::msg::indexOutOfRange);
        const auto i = static_cast<std::size_t>(index);
        // A book loaded as outline has no sheets to ask.
        const auto kind = i < _sheets.size() ? boundKindOf(_sheets[i]->dt()) : _globals.boundSheets[i].dt;
        const bool isWorksheet =
            i < _sheets.size() ? _sheets[i]->dt() == Bof::worksheet : kind == BoundSheet8::worksheet;
        if (isWorksheet) return int{sheetWorksheet};
        return kind == BoundSheet8::chart ? int{sheetChart} : int{sheetOther};
    });
}

template <class CharT>
bool BookImplT<CharT>::moveSheet(int srcIndex, int dstIndex) {
    return guarded(this->_lastError, false, [&] {
        const int count = static_cast<int>(_sheets.size());
        if (srcIndex < 0 || srcIndex >= count) throw vlerror(biff::msg::srcIndexOutOfRange);
        if (dstIndex < 0 || dstIndex > count) throw vlerror(biff::msg::dstIndexOutOfRange);
        if (srcIndex == dstIndex) throw vlerror(biff::msg::moveToItself);
        if (srcIndex == dstIndex - 1) throw vlerror(biff::msg::moveBehindItself);

        const auto move = [&](auto& list) {
            const auto at = [&](int i) { return list.begin() + i; };
            if (srcIndex < dstIndex)
                std::rotate(at(srcIndex), at(srcIndex + 1), at(dstIndex));
            else
                std::rotate(at(dstIndex), at(srcIndex), at(srcIndex + 1));
        };
        std::vector<int> oldIndex(_sheets.size());
        std::iota(oldIndex.begin(), oldIndex.end(), 0);
        move(oldIndex);
        move(_sheets);
        move(_globals.boundSheets);
        if (_globals.rrTabId.size() == _sheets.size()) move(_globals.rrTabId);

        std::vector<int> newIndex(oldIndex.size());
        for (std::size_t i = 0; i < oldIndex.size(); ++i)
            newIndex[static_cast<std::size_t>(oldIndex[i])] = static_cast<int>(i);
        renumber(newIndex);
        return true;
    });
}

template <class CharT>
bool BookImplT<CharT>::removeSheet(int index) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _sheets.size()) throw vlerror(biff::msg::indexOutOfRange);
        if (_sheets.size() == 1) throw vlerror(biff::msg::cantRemoveLastSheet);
        const auto gone = static_cast<std::size_t>(index);
        std::vector<int> newIndex(_sheets.size());
        for (std::size_t i = 0; i < newIndex.size(); ++i) newIndex[i] = static_cast<int>(i < gone ? i : i - 1);
        newIndex[gone] = -1;

        _sheets[gone]->releaseStrings();
        _sheets[gone]->releaseDrawing();
        _sheets.erase(_sheets.begin() + index);
        _globals.boundSheets.erase(_globals.boundSheets.begin() + index);
        _globals.rrTabId.resize(_sheets.size());
        std::iota(_globals.rrTabId.begin(), _globals.rrTabId.end(), std::uint16_t{1});

        auto& shown = _globals.window1;
        const bool wasShown = shown.itabCur == gone;
        renumber(newIndex);
        const auto last = static_cast<std::uint16_t>(_sheets.size() - 1);
        shown.itabCur = std::min(shown.itabCur, last);
        shown.itabFirst = std::min(shown.itabFirst, last);
        if (!wasShown) return true;
        // A hidden sheet cannot be shown.
        const auto isVisible = [](const BoundSheet8& sheet) { return sheet.state() == sheetVisible; };
        const auto& sheets = _globals.boundSheets;
        const auto first = std::ranges::find_if(sheets, isVisible);
        const bool hidden = !isVisible(sheets[shown.itabCur]) && first != sheets.end();
        activate(hidden ? static_cast<std::size_t>(first - sheets.begin()) : shown.itabCur);
        return true;
    });
}

template <class CharT>
int BookImplT<CharT>::sheetCount() {
    return static_cast<int>(_globals.boundSheets.size());
}

template <class CharT>
int BookImplT<CharT>::activeSheetIndex() {
    return _globals.window1.itabCur;
}

template <class CharT>
bool BookImplT<CharT>::setActiveSheetIndex(int index) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _sheets.size()) throw vlerror(biff::msg::indexOutOfRange);
        activate(static_cast<std::size_t>(index));
        return true;
    });
}

template <class CharT>
void BookImplT<CharT>::activate(std::size_t index) {
    _globals.window1.itabCur = static_cast<std::uint16_t>(index);
    _globals.window1.ctabSel = 1;
    for (std::size_t i = 0; i < _sheets.size(); ++i) _sheets[i]->setSelected(i == index);
}

template <class CharT>
SheetImplT<CharT>* BookImplT<CharT>::sheetByIndex(std::size_t index) const {
    return index < _sheets.size() ? _sheets[index].get() : nullptr;
}

template <class CharT>
int BookImplT<CharT>::indexOfSheet(const SheetImplT<CharT>& sheet) const {
    const auto found = std::ranges::find(_sheets, &sheet, [](const auto& owned) { return owned.get(); });
    return found == _sheets.end() ? -1 : static_cast<int>(found - _sheets.begin());
}

template <class CharT>
const BoundSheet8* BookImplT<CharT>::findBoundSheet(const SheetImplT<CharT>& sheet) const {
    const int index = indexOfSheet(sheet);
    return index < 0 ? nullptr : &_globals.boundSheets.at(static_cast<std::size_t>(index));
}

template <class CharT>
void BookImplT<CharT>::renameSheet(SheetImplT<CharT>& sheet, const CharT* name) {
    bool cut = false;
    const wchar_t* const checked = checkedSheetName(name, &sheet, cut);
    const int index = indexOfSheet(sheet);
    if (index >= 0) _globals.boundSheets[static_cast<std::size_t>(index)].sheetName.set(checked, _pool, utf8());
    sheet.setName(checked);
    if (cut) this->_lastError.set(biff::msg::sheetNameCut);
}

template <class CharT>
int BookImplT<CharT>::sheetState(const SheetImplT<CharT>& sheet) const {
    const BoundSheet8* const entry = findBoundSheet(sheet);
    return entry == nullptr ? int{sheetVisible} : entry->state();
}

template <class CharT>
void BookImplT<CharT>::setSheetState(SheetImplT<CharT>& sheet, int state) {
    const int index = indexOfSheet(sheet);
    if (index < 0) return;
    auto& sheets = _globals.boundSheets;
    BoundSheet8& entry = sheets[static_cast<std::size_t>(index)];
    const auto isVisible = [](const BoundSheet8& other) { return other.state() == sheetVisible; };
    const bool hides = isVisible(entry) && state != sheetVisible;
    if (hides && std::ranges::count_if(sheets, isVisible) == 1) throw vlerror(biff::msg::needsVisibleSheet);
    entry.setState(state);
    if (hides && _globals.window1.itabCur == index)
        activate(static_cast<std::size_t>(std::ranges::find_if(sheets, isVisible) - sheets.begin()));
}

}  // namespace vellum
