#include "engine/facts/sheet_names.h"

#include <algorithm>
#include <cwctype>
#include <optional>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "engine/text/letter_case.h"

namespace vellum {
namespace {

/// Length of the quoted name at the start of `text`, with its quotes; 0 when it is not closed.
std::size_t quotedLength(std::wstring_view text) {
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != L'\'') continue;
        if (i + 1 < text.size() && text[i + 1] == L'\'') {
            ++i;
        } else {
            return i + 1;
        }
    }
    return 0;
}

std::wstring unquoted(std::wstring_view quoted) {
    std::wstring name;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        name += quoted[i];
        if (quoted[i] == L'\'') ++i;
    }
    return name;
}

std::wstring quoted(std::wstring_view name) {
    std::wstring text = L"'";
    for (const wchar_t c : name) text.append(c == L'\'' ? 2 : 1, c);
    return text + L"'";
}

bool isNameCharacter(wchar_t c) {
    return c > 127 || std::iswalnum(static_cast<wint_t>(c)) || c == L'_' || c == L'.';
}

bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// "FY24" or "R1C1" of any size: without quotes it would read as a cell.
bool looksLikeAddress(std::wstring_view name) {
    const auto skip = [&](auto&& belongs) {
        const auto end = std::find_if_not(name.begin(), name.end(), belongs);
        const auto length = static_cast<std::size_t>(end - name.begin());
        name.remove_prefix(length);
        return length;
    };
    const auto isEither = [](wchar_t small) { return [small](wchar_t c) { return (c | 0x20) == small; }; };
    const std::wstring_view whole = name;
    const std::size_t letters = skip([](wchar_t c) { return (c | 0x20) >= L'a' && (c | 0x20) <= L'z'; });
    if (letters >= 1 && letters <= 3 && skip(isDigit) != 0 && name.empty()) return true;
    name = whole;
    if (skip(isEither(L'r')) <= 1) skip(isDigit);
    if (skip(isEither(L'c')) <= 1) skip(isDigit);
    return name.empty();
}

bool needsQuotes(std::wstring_view name) {
    return name.empty() || isDigit(name[0]) || !std::all_of(name.begin(), name.end(), isNameCharacter) ||
           looksLikeAddress(name);
}

std::size_t nameLength(std::wstring_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isNameCharacter) - text.begin());
}

/// A piece of a formula: the names of a sheet, or of the first and last one of a range of sheets, as they stand in
/// front of a "!", or anything else, without names.
struct SheetWord {
    std::size_t length = 1;
    std::wstring first, last;
};

/// What is quoted may be a range as a whole.
SheetWord quotedWord(std::wstring_view text) {
    SheetWord word{std::max<std::size_t>(1, quotedLength(text)), {}, {}};
    if (word.length >= text.size() || text[word.length] != L'!') return word;
    const std::wstring names = unquoted(text.substr(0, word.length));
    if (names.find(L'[') != std::wstring::npos) return word;  // another workbook
    const std::size_t colon = names.find(L':');
    word.first = names.substr(0, colon);
    if (colon != std::wstring::npos) word.last = names.substr(colon + 1);
    return word;
}

SheetWord plainWord(std::wstring_view text, bool mayBeRange) {
    SheetWord word{std::max<std::size_t>(1, nameLength(text)), {}, {}};
    if (!isNameCharacter(text[0]) || word.length >= text.size()) return word;
    const std::wstring_view name = text.substr(0, word.length);
    if (text[word.length] == L'!') {
        word.first = name;
    } else if (text[word.length] == L':' && mayBeRange && !needsQuotes(name)) {
        const std::wstring_view behind = text.substr(word.length + 1);
        const std::size_t length = nameLength(behind);
        if (length == 0 || length >= behind.size() || behind[length] != L'!') return word;
        word.first = name;
        word.last = behind.substr(0, length);
        word.length += 1 + length;
    }
    return word;
}

SheetWord sheetWordAt(std::wstring_view formula, std::size_t at) {
    const std::wstring_view text = formula.substr(at);
    // Behind a "!" stands a cell or a name, which may begin a range of cells.
    return text[0] == L'\'' ? quotedWord(text) : plainWord(text, at == 0 || formula[at - 1] != L'!');
}

/// What stands for the names once a sheet is renamed; nothing when it is not among them.
std::optional<std::wstring> renamedSheets(const SheetWord& word, std::wstring_view from, std::wstring_view to) {
    const bool isFirst = !word.first.empty() && sameSheetName(word.first, from);
    const bool isLast = !word.last.empty() && sameSheetName(word.last, from);
    if (!isFirst && !isLast) return {};
    const std::wstring first = isFirst ? std::wstring(to) : word.first;
    if (word.last.empty()) return quotedSheetName(first);
    const std::wstring last = isLast ? std::wstring(to) : word.last;
    const std::wstring range = first + L":" + last;
    return needsQuotes(first) || needsQuotes(last) ? quoted(range) : range;
}

}  // namespace

void checkSheetName(std::wstring_view name) {
    if (name.empty()) throw vlerror(msg::sheetNameEmpty);
    if (name.front() == L'\'' || name.back() == L'\'' || name.find_first_of(L"*/:?[\\]") != std::wstring_view::npos) {
        throw vlerror(msg::sheetNameInvalid);
    }
}

template <class CharT>
SheetNameText cutSheetName(const CharT* name, bool utf8) {
    if (!name) throw vlerror(msg::sheetNameNull);
    SheetNameText text;
    std::basic_string<CharT> units(name);
    if (!utf8 && units.size() > longestSheetName) {
        units.resize(longestSheetName);
        text.cut = true;
    }
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        text.name = std::move(units);
    } else {
        widen(units.c_str(), text.name, utf8);
    }
    if (text.name.size() > longestSheetName) {
        text.name.resize(longestSheetName);
        text.cut = true;
    }
    return text;
}
template SheetNameText cutSheetName(const char*, bool);
template SheetNameText cutSheetName(const wchar_t*, bool);

std::wstring foldedSheetName(std::wstring_view name) {
    return smallLetters(name);
}

bool sameSheetName(std::wstring_view a, std::wstring_view b) {
    return equalIgnoringCase(a, b);
}

std::wstring sheetOfReference(std::wstring_view reference) {
    if (reference.starts_with(L'\'')) {
        const std::size_t length = quotedLength(reference);
        if (length == 0 || length >= reference.size() || reference[length] != L'!') return {};
        return unquoted(reference.substr(0, length));
    }
    const std::size_t mark = reference.find(L'!');
    return mark == std::wstring_view::npos ? std::wstring() : std::wstring(reference.substr(0, mark));
}

std::wstring quotedSheetName(std::wstring_view name) {
    return needsQuotes(name) ? quoted(name) : std::wstring(name);
}

std::wstring withSheetRenamed(std::wstring_view formula, std::wstring_view from, std::wstring_view to) {
    std::wstring result;
    std::size_t i = 0;
    while (i < formula.size()) {
        if (formula[i] == L'"') {  // a string: passed over, doubled quotes and all
            std::size_t end = formula.find(L'"', i + 1);
            end = end == std::wstring_view::npos ? formula.size() : end + 1;
            result += formula.substr(i, end - i);
            i = end;
            continue;
        }
        const SheetWord word = sheetWordAt(formula, i);
        const bool isElsewhere = i > 0 && formula[i - 1] == L']';  // a sheet of another workbook
        const auto renamed = isElsewhere ? std::nullopt : renamedSheets(word, from, to);
        result += renamed ? *renamed : std::wstring(formula.substr(i, word.length));
        i += word.length;
    }
    return result;
}

}  // namespace vellum
