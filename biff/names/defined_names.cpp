#include "biff/names/defined_names.h"

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/names/name_messages.h"
#include "engine/failure/vlerror.h"
#include "engine/text/letter_case.h"
#include "formula/token_cut.h"

namespace vellum::biff {

namespace {

// PtgNameX to PtgAreaErr3d begin with the index of a sheet reference.
bool namesReference(std::uint8_t base) {
    return base >= formula::ptg::nameX && base <= formula::ptg::areaErr3d;
}

}  // namespace

void DefinedNames::requireRoom(std::size_t more) const {
    if (_list.size() + more > maxNames) throw vlerror(msg::tooManyNames);
}

std::size_t DefinedNames::add(Lbl name) {
    requireRoom();
    _bySheet.made = false;
    _list.push_back(std::move(name));
    if (_byText.made) gatherText(static_cast<std::uint32_t>(_list.size() - 1));
    return _list.size() - 1;
}

void DefinedNames::remove(std::size_t index) {
    _bySheet.made = false;
    // A file that was saved before may have such names.
    std::wstring text;
    do {
        text = L"_gone" + std::to_wstring(++_lastGone);
    } while (find(text, {Lbl::noScope}));
    _list[index].remove(std::move(text));
}

std::size_t DefinedNames::keptBytes() const {
    std::size_t bytes = 0;
    for (const Lbl& name : _list) bytes += name.keptBytes();
    return bytes;
}

void DefinedNames::gatherByText() const {
    _byText = {.made = true, .ends = {}, .next = {}};
    for (std::uint32_t i = 0; i < _list.size(); ++i) gatherText(i);
}

// At the end of the chain of its text. A text never changes, so that this holds through all other changes.
void DefinedNames::gatherText(std::uint32_t index) const {
    _byText.next.push_back(none);
    if (!_list[index].isSound()) return;
    const auto [place, isNew] = _byText.ends.try_emplace(smallLetters(_list[index].text()), std::pair(index, index));
    if (isNew) return;
    _byText.next[place->second.second] = index;
    place->second.second = index;
}

std::uint32_t DefinedNames::firstCalled(std::wstring_view text) const {
    if (!_byText.made) gatherByText();
    const auto found = _byText.ends.find(smallLetters(text));
    return found == _byText.ends.end() ? none : found->second.first;
}

std::optional<std::size_t> DefinedNames::find(std::wstring_view text, Scope scope) const {
    for (std::uint32_t i = firstCalled(text); i != none; i = _byText.next[i]) {
        if (_list[i].isAlive() && scope.fits(_list[i])) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> DefinedNames::findGone(std::wstring_view text, int scope) const {
    for (std::uint32_t i = firstCalled(text); i != none; i = _byText.next[i]) {
        if (_list[i].isGone() && _list[i].scope() == scope) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> DefinedNames::find(BuiltinName code, int sheet) const {
    const std::wstring_view text = builtinText(static_cast<wchar_t>(code));
    for (std::uint32_t i = firstCalled(text); i != none; i = _byText.next[i]) {
        if (_list[i].isAlive() && _list[i].builtin() == code && _list[i].scope() == sheet) return i;
    }
    return std::nullopt;
}

void DefinedNames::gatherBySheet() const {
    _bySheet = {.made = true, .begin = {}, .names = {}, .onSeveral = {}, .mergedFor = -1, .merged = {}};
    std::vector<std::pair<std::uint32_t, std::uint32_t>> found;  // sheet and name
    for (std::size_t i = 0; i < _list.size(); ++i) {
        if (!_list[i].isAlive()) continue;
        const auto range = PlainRange::of(_list[i].tokens());
        const auto sheets = range ? links.ownSheets(range->xti) : std::nullopt;
        if (!sheets || sheets->first < 0 || sheets->last < sheets->first) continue;
        const auto index = static_cast<std::uint32_t>(i);
        if (sheets->first == sheets->last) {
            found.emplace_back(static_cast<std::uint32_t>(sheets->first), index);
        } else {
            _bySheet.onSeveral.emplace_back(*sheets, index);
        }
    }
    std::ranges::sort(found);
    const std::size_t sheets = found.empty() ? 0 : found.back().first + std::size_t{1};
    _bySheet.begin.resize(sheets + 1);
    for (const auto& [sheet, index] : found) {
        ++_bySheet.begin[sheet + 1];
        _bySheet.names.push_back(index);
    }
    for (std::size_t s = 0; s < sheets; ++s) _bySheet.begin[s + 1] += _bySheet.begin[s];
}

std::span<const std::uint32_t> DefinedNames::seenBy(int sheet) const {
    if (!_bySheet.made) gatherBySheet();
    BySheet& all = _bySheet;
    const auto s = static_cast<std::size_t>(sheet);
    std::span<const std::uint32_t> own;
    if (sheet >= 0 && s + 1 < all.begin.size())
        own = std::span(all.names).subspan(all.begin[s], all.begin[s + 1] - all.begin[s]);
    if (all.onSeveral.empty()) return own;
    if (all.mergedFor == sheet) return all.merged;
    all.merged.assign(own.begin(), own.end());
    for (const auto& [sheets, index] : all.onSeveral) {
        if (sheets.holds(sheet)) all.merged.push_back(index);
    }
    std::ranges::sort(all.merged);
    all.mergedFor = sheet;
    return all.merged;
}

std::optional<SheetSpan> DefinedNames::reach(const Lbl& name) const {
    for (formula::TokenWalk token(name.tokens()); token.next();) {
        if (namesReference(token.base())) return links.ownSheets(loadLe<std::uint16_t>(token.operands().data()));
    }
    return std::nullopt;
}

void DefinedNames::renumber(std::span<const int> newIndex) {
    links.renumber(newIndex);
    _bySheet.made = false;
    for (std::size_t i = 0; i < _list.size(); ++i) {
        const int scope = _list[i].scope();
        if (scope < 0 || static_cast<std::size_t>(scope) >= newIndex.size()) continue;
        const int moved = newIndex[static_cast<std::size_t>(scope)];
        if (moved >= 0) {
            _list[i].setScope(moved);
        } else {
            if (!_list[i].isGone()) remove(i);
            _list[i].loseScope();
        }
    }
}

}  // namespace vellum::biff
