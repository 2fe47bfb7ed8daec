// The defined names of a book, in the order of the file, and what they refer to.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "biff/names/lbl.h"
#include "biff/names/links.h"
#include "biff/names/plain_range.h"
#include "engine/text/text_hash.h"

namespace vellum::biff {

/// Which names a search is for, by what they belong to: a sheet, the workbook (-1), or whatever (-2).
struct Scope {
    int value;

    [[nodiscard]] bool fits(const Lbl& name) const { return value == Lbl::noScope || value == name.scope(); }
};

class DefinedNames {
public:
    static constexpr std::size_t maxNames = 0xFFFF;

    Links links;

    [[nodiscard]] std::size_t size() const { return _list.size(); }
    [[nodiscard]] const Lbl& at(std::size_t index) const { return _list[index]; }
    /// For a change of anything but the text; what was gathered about sheets is forgotten.
    Lbl& change(std::size_t index) {
        _bySheet.made = false;
        return _list[index];
    }
    /// As a file has it, at the end of the list.
    void load(Lbl name) { _list.push_back(std::move(name)); }
    /// At the end of the list; a full list throws "too many names". The index.
    std::size_t add(Lbl name);
    /// Throws "too many names" when there is no room for so many more.
    void requireRoom(std::size_t more = 1) const;
    /// The place stays, see Lbl.
    void remove(std::size_t index);
    void write(Xls& out) const {
        for (const Lbl& name : _list) name.write(out);
    }
    [[nodiscard]] std::size_t keptBytes() const;

    /// The first living name of that text, whatever the case of its letters, that fits the scope.
    [[nodiscard]] std::optional<std::size_t> find(std::wstring_view text, Scope scope) const;
    /// All living names of that text, in their order.
    template <class Visit>
    void forEachCalled(std::wstring_view text, Visit&& visit) const;
    /// A name of that text that has been removed; `scope` is a sheet or the workbook.
    [[nodiscard]] std::optional<std::size_t> findGone(std::wstring_view text, int scope) const;
    /// The sheet's own name of that code.
    [[nodiscard]] std::optional<std::size_t> find(BuiltinName code, int sheet) const;

    /// The names that are a cell or an area of this sheet, in their order. Valid until the next change or call.
    [[nodiscard]] std::span<const std::uint32_t> seenBy(int sheet) const;
    /// The sheets that a name reaches with its first reference; null when it has none to this workbook.
    [[nodiscard]] std::optional<SheetSpan> reach(const Lbl& name) const;

    /// After sheets have moved or gone (-1): names of sheets follow them, those of removed sheets are removed.
    void renumber(std::span<const int> newIndex);

private:
    /// Names by the sheet that they are on: those of sheet s are `names[begin[s]]` to `names[begin[s + 1]]`.
    struct BySheet {
        bool made = false;
        std::vector<std::uint32_t> begin, names;
        std::vector<std::pair<SheetSpan, std::uint32_t>> onSeveral;
        int mergedFor = -1;
        std::vector<std::uint32_t> merged;
    };
    struct ByText {
        bool made = false;
        /// First and last name of a text, which is in small letters.
        std::unordered_map<std::wstring, std::pair<std::uint32_t, std::uint32_t>, TextHash> ends;
        std::vector<std::uint32_t> next;  // of the same text
    };

    void gatherBySheet() const;
    void gatherByText() const;
    void gatherText(std::uint32_t index) const;
    [[nodiscard]] std::uint32_t firstCalled(std::wstring_view text) const;

    static constexpr std::uint32_t none = 0xFFFFFFFF;
    std::vector<Lbl> _list;
    std::uint32_t _lastGone = 0;
    mutable BySheet _bySheet;
    mutable ByText _byText;
};

template <class Visit>
void DefinedNames::forEachCalled(std::wstring_view text, Visit&& visit) const {
    for (std::uint32_t i = firstCalled(text); i != none; i = _byText.next[i]) {
        if (_list[i].isAlive()) visit(std::size_t{i});
    }
}

}  // namespace vellum::biff
