// The shared strings of a package.
#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/text/text_hash.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

template <class CharT>
class IFormatT;
template <class CharT, class Tag>
class XMLRichStringImplT;

/// The string table: a bound list of `si` elements, and beside it an index from text to position, so that equal
/// strings are stored once. Texts stand in their escaped form, and readers get them so. Routines throw vlerror.
template <class CharT, class Tag>
class SharedStrings final : public XmlFile<typename ooxml::dialect<Tag>::c_sst> {
public:
    using c_CT_Rst = typename ooxml::dialect<Tag>::sml::c_CT_Rst;
    using RichString = XMLRichStringImplT<CharT, Tag>;

    SharedStrings();
    explicit SharedStrings(const PartBytes& part);
    ~SharedStrings() override;

    /// Text of a position, its runs joined; valid until the next call.
    std::wstring_view textAt(std::size_t position);
    /// The UTF-8 that was made of a text when it was last given out: whoever reads the table again and again finds it
    /// side by side with others. Nothing when it was not.
    std::optional<std::string_view> givenUtf8(std::size_t position) const;
    void keepGivenUtf8(std::size_t position, std::string_view text);
    /// Whether the text has runs.
    bool isRich(std::size_t position) const;
    std::size_t size() const { return this->_root.si().size(); }

    /// The position of the text, which is escaped first. Each call counts as one use.
    std::size_t addString(std::wstring_view text);

    /// Appends an empty element; the table owns the object.
    RichString* newRichString(BookContextT<CharT, Tag>& book);
    RichString* richStringAt(std::size_t position, BookContextT<CharT, Tag>& book, IFormatT<CharT>* format);
    /// One use more of a position, as by a cell that refers to it.
    void countUse();

protected:
    void beforeWrite() override;

private:
    const c_CT_Rst& at(std::size_t position) const;
    bool isStill(std::size_t position, std::wstring_view text);
    void buildIndex();

    std::unordered_map<std::wstring, std::size_t, TextHash, std::equal_to<>> _index;  // made by the first addString
    std::size_t _toIndex = 0;  // loaded strings that are not in the index yet
    std::vector<std::unique_ptr<RichString>> _richStrings;
    struct Given {
        std::uint32_t from = 0, sizeAndOne = 0;  // 0: not given out
    };
    std::vector<Given> _given;  // by position
    std::string _givenBytes;
    std::wstring _joined;
};

/// Writes a text so that any reader gives it back: characters that XML does not allow become "_xHHHH_", and so does
/// the underscore of such a sequence that stands in the text already. `text` when there is nothing to do.
std::wstring_view escapeSharedText(std::wstring_view text, std::wstring& scratch);

/// Sets a `t` element, with `xml:space` where outer white space or a newline would not survive.
template <class TextElement>
void setPreservedText(TextElement& element, std::wstring_view text);

extern template class SharedStrings<char, excelNormal_tag>;
extern template class SharedStrings<char, excelStrict_tag>;
extern template class SharedStrings<wchar_t, excelNormal_tag>;
extern template class SharedStrings<wchar_t, excelStrict_tag>;

}  // namespace vellum
