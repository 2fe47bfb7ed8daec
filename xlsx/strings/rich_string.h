// Texts of runs, each with its font.
#pragma once
#include <memory>
#include <vector>

#include "engine/api/irichstring.h"
#include "engine/text/text_holder.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/package/book_context.h"

namespace vellum {

template <class CharT>
class IFormatT;
template <class CharT, class Tag>
class XMLFontImplT;

/// A live view of one entry of the string table. Owned by the table, as the entry is; owns its fonts.
template <class CharT, class Tag>
class XMLRichStringImplT final : public IRichStringT<CharT> {
public:
    using sml = typename ooxml::dialect<Tag>::sml;
    using c_CT_Rst = typename sml::c_CT_Rst;

    /// `format` is that of the cell that the text was read for, or null.
    XMLRichStringImplT(BookContextT<CharT, Tag>& book, c_CT_Rst& si, std::size_t position, IFormatT<CharT>* format);
    ~XMLRichStringImplT() override;

    IFontT<CharT>* addFont(IFontT<CharT>* source) override;
    bool addRun(const CharT* text, IFontT<CharT>* font) override;
    const CharT* runAt(int index, IFontT<CharT>** font) override;
    int runTotal() override;

    /// The format of the cell that shows the text, or null: runs without a font have its font.
    void setFormat(IFormatT<CharT>* format) { _format = format; }
    /// An index means another text in another book's table.
    bool isOf(const BookContextT<CharT, Tag>& book) const { return &_book == &book; }
    /// Index in the string table.
    std::size_t position() const { return _position; }

private:
    using Font = XMLFontImplT<CharT, Tag>;

    Font& newFont();

    BookContextT<CharT, Tag>& _book;
    c_CT_Rst* _si;
    std::size_t _position;
    IFormatT<CharT>* _format;
    std::vector<std::unique_ptr<Font>> _fonts;
    TextHolder _conversion;
};

extern template class XMLRichStringImplT<char, excelNormal_tag>;
extern template class XMLRichStringImplT<char, excelStrict_tag>;
extern template class XMLRichStringImplT<wchar_t, excelNormal_tag>;
extern template class XMLRichStringImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
