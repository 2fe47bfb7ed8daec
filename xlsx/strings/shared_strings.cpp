#include "xlsx/strings/shared_strings.h"

#include "engine/failure/vlerror.h"
#include "xlsx/package/messages.h"
#include "xlsx/strings/rich_string.h"

namespace vellum {
namespace {

constexpr std::size_t longestString = 32767;  // wide characters, as in a cell

bool isHexDigit(wchar_t c) {
    return (c >= L'0' && c <= L'9') || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F');
}

/// "_xHHHH_" at this place.
bool looksEscaped(std::wstring_view rest) {
    return rest.size() >= 7 && rest[0] == L'_' && rest[1] == L'x' && isHexDigit(rest[2]) && isHexDigit(rest[3]) &&
           isHexDigit(rest[4]) && isHexDigit(rest[5]) && rest[6] == L'_';
}

bool isPlain(wchar_t c) {
    return (c >= 32 && c <= 55295) || (c >= 57344 && c <= 65533) || c == 9 || c == 10 || c == 13 ||
           (c >= 65536 && c <= 1114111);
}

void appendEscape(std::wstring& out, wchar_t c) {
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    const auto code = static_cast<unsigned>(c);
    out += L"_x";
    for (int shift = 12; shift >= 0; shift -= 4) out += digits[code >> shift & 15];
    out += L'_';
}

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

}  // namespace

std::wstring_view escapeSharedText(std::wstring_view text, std::wstring& scratch) {
    std::size_t i = 0;
    const auto staysAsIs = [&](std::size_t at) {
        return isPlain(text[at]) && !(text[at] == L'_' && looksEscaped(text.substr(at)));
    };
    while (i < text.size() && staysAsIs(i)) ++i;
    if (i == text.size()) return text;
    scratch.assign(text.substr(0, i));
    for (; i < text.size(); ++i) staysAsIs(i) ? scratch += text[i] : (appendEscape(scratch, text[i]), scratch);
    return scratch;
}

template <class TextElement>
void setPreservedText(TextElement& element, std::wstring_view text) {
    element.text(std::wstring(text));
    const bool keep = !text.empty() && (isBlank(text.front()) || isBlank(text.back()) ||
                                        text.find_first_of(L"\n\r") != std::wstring_view::npos);
    if (keep) {
        element.space("preserve");
    } else {
        element.unset_space();
    }
}

template void setPreservedText(::sheet::c_ST_Xstring_space&, std::wstring_view);
template void setPreservedText(::strict::c_ST_Xstring_space&, std::wstring_view);

template <class CharT, class Tag>
SharedStrings<CharT, Tag>::SharedStrings() = default;

template <class CharT, class Tag>
SharedStrings<CharT, Tag>::SharedStrings(const PartBytes& part)
    : XmlFile<typename ooxml::dialect<Tag>::c_sst>(part), _toIndex(size()) {}

template <class CharT, class Tag>
SharedStrings<CharT, Tag>::~SharedStrings() = default;

template <class CharT, class Tag>
auto SharedStrings<CharT, Tag>::at(std::size_t position) const -> const c_CT_Rst& {
    if (position >= size()) throw vlerror(xlsx::msg::noSharedString);
    return this->_root.si()[position];
}

template <class CharT, class Tag>
std::wstring_view SharedStrings<CharT, Tag>::textAt(std::size_t position) {
    const c_CT_Rst& si = at(position);
    const auto* const plain = si.find_t();
    if (plain && si.r().empty()) return plain->text();
    _joined = plain ? plain->text() : std::wstring();  // some producers put text in front of the runs
    for (const auto& run : si.r()) {
        if (const auto* t = run.find_t()) _joined += t->text();
    }
    return _joined;
}

template <class CharT, class Tag>
std::optional<std::string_view> SharedStrings<CharT, Tag>::givenUtf8(std::size_t position) const {
    if (position >= _given.size() || _given[position].sizeAndOne == 0) return {};
    return std::string_view(_givenBytes).substr(_given[position].from, _given[position].sizeAndOne - 1);
}

/// Texts with runs may change through the objects that were handed out for them.
template <class CharT, class Tag>
void SharedStrings<CharT, Tag>::keepGivenUtf8(std::size_t position, std::string_view text) {
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    if (!_richStrings.empty() || position >= size() || _givenBytes.size() + text.size() > mostBytes) return;
    if (_given.size() <= position) _given.resize(size());
    _given[position] = {static_cast<std::uint32_t>(_givenBytes.size()), static_cast<std::uint32_t>(text.size()) + 1};
    _givenBytes += text;
}

template <class CharT, class Tag>
bool SharedStrings<CharT, Tag>::isRich(std::size_t position) const {
    return at(position).isset_r();
}

/// A later equal text replaces the earlier one; rich texts of the file stand under their joined runs. Those that were
/// made since are not in the index: their runs may still grow.
template <class CharT, class Tag>
void SharedStrings<CharT, Tag>::buildIndex() {
    _index.reserve(_toIndex);
    for (std::size_t i = 0; i < _toIndex; ++i) _index.insert_or_assign(std::wstring(textAt(i)), i);
    _toIndex = 0;
}

/// Runs may have been added to a rich text since it was entered.
template <class CharT, class Tag>
bool SharedStrings<CharT, Tag>::isStill(std::size_t position, std::wstring_view text) {
    return !isRich(position) || textAt(position) == text;
}

template <class CharT, class Tag>
std::size_t SharedStrings<CharT, Tag>::addString(std::wstring_view text) {
    if (text.size() > longestString) throw vlerror(xlsx::msg::stringTooLong);
    if (_toIndex != 0) buildIndex();
    std::wstring scratch;
    const std::wstring_view escaped = escapeSharedText(text, scratch);
    countUse();
    const auto known = _index.find(escaped);
    if (known != _index.end() && isStill(known->second, escaped)) return known->second;
    const std::size_t position = size();
    setPreservedText(this->_root.si().append().t(), escaped);
    this->_root.uniqueCount(static_cast<unsigned>(size()));
    _index.insert_or_assign(std::wstring(escaped), position);
    return position;
}

template <class CharT, class Tag>
void SharedStrings<CharT, Tag>::countUse() {
    this->_root.count(this->_root.isset_count() ? this->_root.count() + 1 : 1);
}

template <class CharT, class Tag>
auto SharedStrings<CharT, Tag>::newRichString(BookContextT<CharT, Tag>& book) -> RichString* {
    const std::size_t position = size();
    this->_root.si().append();
    this->_root.uniqueCount(static_cast<unsigned>(size()));
    return richStringAt(position, book, nullptr);
}

template <class CharT, class Tag>
auto SharedStrings<CharT, Tag>::richStringAt(std::size_t position, BookContextT<CharT, Tag>& book,
                                             IFormatT<CharT>* format) -> RichString* {
    at(position);
    _given.clear();  // nor are any kept from now on
    _givenBytes.clear();
    _richStrings.push_back(std::make_unique<RichString>(book, this->_root.si()[position], position, format));
    return _richStrings.back().get();
}

/// A loaded table may claim another number of strings than it has.
template <class CharT, class Tag>
void SharedStrings<CharT, Tag>::beforeWrite() {
    if (this->_root.isset_uniqueCount()) this->_root.uniqueCount(static_cast<unsigned>(size()));
}

template class SharedStrings<char, excelNormal_tag>;
template class SharedStrings<char, excelStrict_tag>;
template class SharedStrings<wchar_t, excelNormal_tag>;
template class SharedStrings<wchar_t, excelStrict_tag>;

}  // namespace vellum
