#include "xlsx/styles/styles.h"

#include <algorithm>

#include "engine/facts/number_format.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "xlsx/styles/colors.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/format.h"
#include "xlsx/styles/style_messages.h"

namespace vellum {
namespace {

constexpr std::size_t mostFormats = 65430;
constexpr std::size_t mostFonts = 65430;
constexpr unsigned firstCustomId = 166;
constexpr unsigned lastCustomId = 392;

}  // namespace

template <class CharT, class Tag>
Styles<CharT, Tag>::Styles() {
    auto& root = this->_root;
    auto& border = root.borders().border().append();
    border.left();
    border.right();
    border.top();
    border.bottom();
    border.diagonal();
    root.borders().count(1);

    root.fills().fill().append().patternFill().patternType("none");
    root.fills().fill().append().patternFill().patternType("gray125");
    root.fills().count(2);

    auto& xf = root.cellXfs().xf().append();
    xf.numFmtId(0);
    xf.fontId(0);
    xf.fillId(0);
    xf.borderId(0);
    xf.xfId(0);
    root.cellXfs().count(1);

    auto& font = root.fonts().font().append();
    font.sz().val(11);
    font.name().val(L"Calibri");
    root.fonts().count(1);

    auto& styleXf = root.cellStyleXfs().xf().append();
    styleXf.numFmtId(0);
    styleXf.fontId(0);
    styleXf.fillId(0);
    styleXf.borderId(0);
    root.cellStyleXfs().count(1);

    auto& style = root.cellStyles().cellStyle().append();
    style.name(L"Normal");
    style.xfId(0);
    style.builtinId(0);
    root.cellStyles().count(1);
    makeHandles();
}

template <class CharT, class Tag>
Styles<CharT, Tag>::Styles(const PartBytes& part) : XmlFile<typename ooxml::dialect<Tag>::c_styleSheet>(part) {
    makeHandles();
}

template <class CharT, class Tag>
Styles<CharT, Tag>::~Styles() = default;

template <class CharT, class Tag>
void Styles<CharT, Tag>::makeHandles() {
    if (auto* const cellXfs = this->_root.find_cellXfs()) {
        _formats.reserve(cellXfs->xf().size());
        for (auto& xf : cellXfs->xf()) addHandle(xf);
    }
    if (auto* const fonts = this->_root.find_fonts()) {
        _fonts.reserve(fonts->font().size());
        for (auto& font : fonts->font()) addHandle(font);
    }
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::formatAt(std::size_t index) const -> Format* {
    if (index >= _formats.size()) throw vlerror(xlsx::msg::indexOutOfRange);
    return _formats[index].get();
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::fontAt(std::size_t index) const -> Font* {
    if (index >= _fonts.size()) throw vlerror(xlsx::msg::indexOutOfRange);
    return _fonts[index].get();
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::addHandle(typename sml::c_CT_Xf& xf) -> Format* {
    _formats.push_back(std::make_unique<Format>(this, &xf, _formats.size()));
    Format* const format = _formats.back().get();
    _formatIndices[static_cast<const IFormatT<CharT>*>(format)] = _formats.size() - 1;
    return format;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::addHandle(typename sml::c_CT_Font& font) -> Font* {
    _fonts.push_back(std::make_unique<Font>(this, font));
    Font* const added = _fonts.back().get();
    _fontIndices[static_cast<const IFontT<CharT>*>(added)] = _fonts.size() - 1;
    return added;
}

template <class CharT, class Tag>
std::size_t Styles<CharT, Tag>::formatIndexOf(const IFormatT<CharT>* format) const {
    const auto found = _formatIndices.find(format);
    if (!format || found == _formatIndices.end()) throw vlerror(xlsx::msg::formatNotFound);
    return found->second;
}

template <class CharT, class Tag>
int Styles<CharT, Tag>::fontIndexOf(const IFontT<CharT>* font) const {
    const auto found = _fontIndices.find(font);
    return found == _fontIndices.end() ? -1 : static_cast<int>(found->second);
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::newFormat(IFormatT<CharT>* from) -> Format* {
    if (_formats.size() >= mostFormats) throw vlerror(xlsx::msg::tooManyFormats);
    auto& list = this->_root.cellXfs();
    auto& xf = list.xf().append();
    list.count(static_cast<unsigned>(list.xf().size()));
    Format* const format = addHandle(xf);
    if (from) format->copyFrom(*from);
    return format;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::newFont(IFontT<CharT>* from) -> Font* {
    if (_fonts.size() >= mostFonts) throw vlerror(xlsx::msg::tooManyFonts);
    auto& list = this->_root.fonts();
    auto& element = list.font().append();
    list.count(static_cast<unsigned>(list.font().size()));
    Font* const font = addHandle(element);
    if (from) font->copyFrom(*from);
    return font;
}

template <class CharT, class Tag>
unsigned Styles<CharT, Tag>::addCustomNumFormat(std::wstring_view text) {
    auto& list = this->_root.numFmts();
    for (const auto& numFmt : std::as_const(list).numFmt()) {
        if (numFmt.formatCode() == text) return numFmt.numFmtId();
    }
    const auto isTaken = [&](unsigned id) {
        return std::any_of(list.numFmt().begin(), list.numFmt().end(),
                           [id](const auto& numFmt) { return numFmt.numFmtId() == id; });
    };
    for (unsigned id = firstCustomId; id <= lastCustomId; ++id) {
        if (isTaken(id)) continue;
        auto& numFmt = list.numFmt().append();
        numFmt.numFmtId(id);
        numFmt.formatCode(std::wstring(text));
        list.count(static_cast<unsigned>(list.numFmt().size()));
        return id;
    }
    return 0;
}

template <class CharT, class Tag>
const std::wstring* Styles<CharT, Tag>::customNumFormatText(unsigned id) const {
    const auto* const list = this->_root.find_numFmts();
    if (!list) return nullptr;
    for (const auto& numFmt : list->numFmt()) {
        if (numFmt.numFmtId() == id) return &numFmt.formatCode();
    }
    return nullptr;
}

template <class CharT, class Tag>
bool Styles<CharT, Tag>::isDateFormat(std::size_t xf) const {
    const auto* const cellXfs = this->_root.find_cellXfs();
    if (!cellXfs || xf >= cellXfs->xf().size()) return false;
    const unsigned id = cellXfs->xf()[xf].numFmtId();
    if (const auto known = builtInShowsDate(id)) return *known;
    const std::wstring* const text = customNumFormatText(id);
    return text && showsDate(*text);
}

template <class CharT, class Tag>
int Styles<CharT, Tag>::defaultFontSize() const {
    const auto* const fonts = this->_root.find_fonts();
    const auto* const sz = fonts && fonts->font().size() > 0 ? fonts->font()[0].find_sz() : nullptr;
    return sz ? wholePoints(sz->val()) : 0;
}

template <class CharT, class Tag>
std::wstring_view Styles<CharT, Tag>::defaultFontFace() const {
    const auto* const fonts = this->_root.find_fonts();
    const auto* const name = fonts && fonts->font().size() > 0 ? fonts->font()[0].find_name() : nullptr;
    return name ? std::wstring_view(name->val()) : std::wstring_view();
}

template <class CharT, class Tag>
void Styles<CharT, Tag>::setDefaultFontSpec(std::wstring_view name, int size) {
    auto* const fonts = this->_root.find_fonts();
    if (!fonts || fonts->font().size() == 0) throw vlerror(xlsx::msg::fontsNotFound);
    fonts->font()[0].name().val(std::wstring(name));
    fonts->font()[0].sz().val(size);
}

template <class CharT, class Tag>
int Styles<CharT, Tag>::colorOf(const typename sml::c_CT_Color& element) noexcept {
    return guarded(lastError(), int{unknownColor}, [&] { return readColor(element); });
}

template <class CharT, class Tag>
int Styles<CharT, Tag>::readColor(const typename sml::c_CT_Color& element) const {
    if (element.isset_rgb()) return readRgbBytes(element.rgb().bytes, _rgb);
    if (element.isset_indexed()) {
        const unsigned index = element.indexed();
        if (!_rgb) return static_cast<int>(index);
        const auto* const colors = this->_root.find_colors();
        const auto* const own = colors ? colors->find_indexedColors() : nullptr;
        if (own && index < own->rgbColor().size() && own->rgbColor()[index].isset_rgb()) {
            return readRgbBytes(own->rgbColor()[index].rgb().bytes, true);
        }
        const auto fixed = paletteColor(index);
        return fixed ? packRgb(*fixed) : unknownColor;
    }
    if (element.isset_theme() && _theme) {
        const auto rgb = _theme->colorAt(element.theme());
        if (!rgb) return unknownColor;
        const Rgb shade = tinted(*rgb, element.tint());
        return readRgbBytes({shade[0], shade[1], shade[2]}, _rgb);
    }
    return unknownColor;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::findBorder(unsigned index) const -> const typename sml::c_CT_Border* {
    const auto* const borders = this->_root.find_borders();
    return borders && index < borders->border().size() ? &borders->border()[index] : nullptr;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::findFill(unsigned index) const -> const typename sml::c_CT_Fill* {
    const auto* const fills = this->_root.find_fills();
    return fills && index < fills->fill().size() ? &fills->fill()[index] : nullptr;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::copyOfBorder(unsigned index, unsigned& copyIndex) -> typename sml::c_CT_Border& {
    auto& list = this->_root.borders();
    copyIndex = static_cast<unsigned>(list.border().size());
    auto& copy = list.border().append();
    if (const auto* const border = index < copyIndex ? findBorder(index) : nullptr) copy = *border;
    list.count(copyIndex + 1);
    return copy;
}

template <class CharT, class Tag>
auto Styles<CharT, Tag>::copyOfFill(unsigned index, unsigned& copyIndex) -> typename sml::c_CT_Fill& {
    auto& list = this->_root.fills();
    copyIndex = static_cast<unsigned>(list.fill().size());
    auto& copy = list.fill().append();
    if (const auto* const fill = index < copyIndex ? findFill(index) : nullptr) copy = *fill;
    list.count(copyIndex + 1);
    return copy;
}

template class Styles<char, excelNormal_tag>;
template class Styles<char, excelStrict_tag>;
template class Styles<wchar_t, excelNormal_tag>;
template class Styles<wchar_t, excelStrict_tag>;

}  // namespace vellum
