// The styles of a package.
#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/failure/guarded.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/package/book_context.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

template <class CharT>
class IFontT;
template <class CharT>
class IFormatT;
template <class CharT, class Tag>
class XMLFontImplT;
template <class CharT, class Tag>
class XMLFormatImplT;
template <class Tag>
class XMLTheme;

/// The styles part: the bound tree, and one live object for each format of `cellXfs` and each font of `fonts`. No
/// format or font is ever shared or looked up by content. Routines throw vlerror.
template <class CharT, class Tag>
class Styles final : public XmlFile<typename ooxml::dialect<Tag>::c_styleSheet> {
public:
    using sml = typename ooxml::dialect<Tag>::sml;
    using Format = XMLFormatImplT<CharT, Tag>;
    using Font = XMLFontImplT<CharT, Tag>;

    /// The styles of a new book: one format, the font Calibri 11, the two fills that every book has.
    Styles();
    explicit Styles(const PartBytes& part);
    ~Styles() override;

    /// For what styles need of their book; to be called before anything else.
    void attach(BookContextT<CharT, Tag>& book) { _book = &book; }
    /// Not owned; null for none.
    void setTheme(const XMLTheme<Tag>* theme) { _theme = theme; }

    Format* formatAt(std::size_t index) const;
    Font* fontAt(std::size_t index) const;
    std::size_t formatTotal() const { return _formats.size(); }
    std::size_t fontTotal() const { return _fonts.size(); }
    /// Throws the text for a format of another book, or of the time before a load.
    std::size_t formatIndexOf(const IFormatT<CharT>* format) const;
    /// -1 for a font that is not of this list.
    int fontIndexOf(const IFontT<CharT>* font) const;
    /// A new one each time, a copy of `from` when that is not null.
    Format* newFormat(IFormatT<CharT>* from);
    Font* newFont(IFontT<CharT>* from);

    /// The id of a number format text, new or known; 0 when no id is left.
    unsigned addCustomNumFormat(std::wstring_view text);
    /// Null for an id without text.
    const std::wstring* customNumFormatText(unsigned id) const;
    /// Whether numbers in cells of format `xf` are dates or times.
    bool isDateFormat(std::size_t xf) const;

    int defaultFontSize() const;
    std::wstring_view defaultFontFace() const;
    void setDefaultFontSpec(std::wstring_view name, int size);

    bool usesRgbColors() const { return _rgb; }
    void setUsesRgbColors(bool rgb) { _rgb = rgb; }
    /// A colour element as the interface has it, -1 for none.
    int readColor(const typename sml::c_CT_Color& element) const;
    /// For operations of the interface: -1, and the book's last error, for an element that is wrong.
    int colorOf(const typename sml::c_CT_Color& element) noexcept;

    /// The border or fill that a format has for itself: a copy of the one with this index, appended to the list.
    typename sml::c_CT_Border& copyOfBorder(unsigned index, unsigned& copyIndex);
    typename sml::c_CT_Fill& copyOfFill(unsigned index, unsigned& copyIndex);
    /// Null when the list does not go so far.
    const typename sml::c_CT_Border* findBorder(unsigned index) const;
    const typename sml::c_CT_Fill* findFill(unsigned index) const;

    bool isUtf8() const { return _book && _book->isUtf8(); }
    LastError& lastError() noexcept { return _book ? _book->lastError() : _ownError; }

    /// The body of a setter without a result: what goes wrong shows in the last error alone. While a format or font
    /// takes over what another one states, that operation fails as a whole.
    template <class Body>
    void change(Body&& body) {
        if (_takingOver) {
            body();
            return;
        }
        static_cast<void>(guarded(lastError(), false, [&] {
            body();
            return true;
        }));
    }
    /// For as long as it lives, a format or font takes over another one's properties.
    class TakingOver {
    public:
        explicit TakingOver(Styles& styles) : _styles(styles), _before(std::exchange(styles._takingOver, true)) {}
        TakingOver(const TakingOver&) = delete;
        TakingOver& operator=(const TakingOver&) = delete;
        ~TakingOver() { _styles._takingOver = _before; }

    private:
        Styles& _styles;
        bool _before;
    };

private:
    void makeHandles();
    Format* addHandle(typename sml::c_CT_Xf& xf);
    Font* addHandle(typename sml::c_CT_Font& font);

    BookContextT<CharT, Tag>* _book = nullptr;
    LastError _ownError;
    const XMLTheme<Tag>* _theme = nullptr;
    bool _rgb = false;
    bool _takingOver = false;
    std::vector<std::unique_ptr<Format>> _formats;
    std::vector<std::unique_ptr<Font>> _fonts;
    // Positions by address: an object of another book, or of the time before a load, is never looked into.
    std::unordered_map<const void*, std::size_t> _formatIndices;
    std::unordered_map<const void*, std::size_t> _fontIndices;
};

extern template class Styles<char, excelNormal_tag>;
extern template class Styles<char, excelStrict_tag>;
extern template class Styles<wchar_t, excelNormal_tag>;
extern template class Styles<wchar_t, excelStrict_tag>;

}  // namespace vellum
