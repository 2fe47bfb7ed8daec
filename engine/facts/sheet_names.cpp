#include "engine/facts/sheet_names.h"

#include <algorithm>
#include <cwctype>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

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

wchar_t fold(wchar_t c) {
    return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
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

}  // namespace

void checkSheetName(std::wstring_view name) {
    if (name.empty()) throw vlerror(msg::sheetNameEmpty);
    if (name.front() == L'\'' || name.back() == L'\'' || name.find_first_of(L"*/:?[\\]") != std::wstring_view::npos) {
        throw vlerror(msg::sheetNameInvalid);
    }
}

std::wstring foldedSheetName(std::wstring_view name) {
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), fold);
    return folded;
}

bool sameSheetName(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) { return fold(x) == fold(y); });
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

std::wstring withSheetRenamed(std::wstring_view formula, std::wstring_view from, std::wstring_view to) {
    std::wstring result;
    const auto put = [&](std::wstring_view word, std::wstring_view name, bool isSheet) {
        if (isSheet && name == from) {
            result += needsQuotes(to) ? quoted(to) : std::wstring(to);
        } else {
            result += word;
        }
    };
    std::size_t i = 0;
    while (i < formula.size()) {
        if (formula[i] == L'"') {  // a string: passed over, doubled quotes and all
            std::size_t end = formula.find(L'"', i + 1);
            end = end == std::wstring_view::npos ? formula.size() : end + 1;
            result += formula.substr(i, end - i);
            i = end;
            continue;
        }
        std::size_t length = 1;
        if (formula[i] == L'\'') {
            length = std::max<std::size_t>(1, quotedLength(formula.substr(i)));
        } else if (isNameCharacter(formula[i])) {
            while (i + length < formula.size() && isNameCharacter(formula[i + length])) ++length;
        }
        const std::wstring_view word = formula.substr(i, length);
        const bool isElsewhere = i > 0 && formula[i - 1] == L']';  // a sheet of another workbook
        const bool isSheet = !isElsewhere && i + length < formula.size() && formula[i + length] == L'!';
        put(word, formula[i] == L'\'' && length > 1 ? unquoted(word) : std::wstring(word), isSheet);
        i += length;
    }
    return result;
}

}  // namespace vellum
