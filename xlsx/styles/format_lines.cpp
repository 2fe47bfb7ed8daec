// Borders and fills of a format.
#include <utility>

#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/coded_text.h"
#include "xlsx/styles/colors.h"
#include "xlsx/styles/format.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

// In the order of the codes.
constexpr const char* borderStyles[] = {
    "none",         "thin",    "medium",        "dashed",     "dotted",           "thick",       "double", "hair",
    "mediumDashed", "dashDot", "mediumDashDot", "dashDotDot", "mediumDashDotDot", "slantDashDot"};
constexpr const char* patterns[] = {"none",           "solid",           "mediumGray",    "darkGray",  "lightGray",
                                    "darkHorizontal", "darkVertical",    "darkDown",      "darkUp",    "darkGrid",
                                    "darkTrellis",    "lightHorizontal", "lightVertical", "lightDown", "lightUp",
                                    "lightGrid",      "lightTrellis",    "gray125",       "gray0625"};

constexpr int diagonalDownBit = 1;
constexpr int diagonalUpBit = 2;

}  // namespace

template <class CharT, class Tag>
auto XMLFormatImplT<CharT, Tag>::border() const -> const c_CT_Border* {
    return _ownBorder ? _ownBorder : _styles->findBorder(_xf->borderId());
}

/// Many formats name one border of the list. The first that is changed gets a copy of its own behind the list, and
/// keeps it for all further changes; nobody looks for an equal one, since the next setter would make it differ.
template <class CharT, class Tag>
auto XMLFormatImplT<CharT, Tag>::ownBorder() -> c_CT_Border& {
    if (!_ownBorder) {
        unsigned index;
        _ownBorder = &_styles->copyOfBorder(_xf->borderId(), index);
        _xf->borderId(index);
        _xf->applyBorder(true);
    }
    return *_ownBorder;
}

template <class CharT, class Tag>
auto XMLFormatImplT<CharT, Tag>::fill() const -> const c_CT_Fill* {
    return _ownFill ? _ownFill : _styles->findFill(_xf->fillId());
}

template <class CharT, class Tag>
auto XMLFormatImplT<CharT, Tag>::ownFill() -> c_CT_Fill& {
    if (!_ownFill) {
        unsigned index;
        _ownFill = &_styles->copyOfFill(_xf->fillId(), index);
        _xf->fillId(index);
        _xf->applyFill(true);
    }
    return *_ownFill;
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::sideStyle(FindSide side, FindSide strictSide) const {
    const c_CT_Border* const lines = border();
    const c_CT_BorderPr* line = lines ? (lines->*side)() : nullptr;
    if (!line && lines && strictSide) line = (lines->*strictSide)();
    return line ? codeOf(borderStyles, line->style(), 0) : 0;
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::sideColor(FindSide side, FindSide strictSide) const {
    const c_CT_Border* const lines = border();
    const c_CT_BorderPr* line = lines ? (lines->*side)() : nullptr;
    if (!line && lines && strictSide) line = (lines->*strictSide)();
    const auto* const color = line ? line->find_color() : nullptr;
    return color ? _styles->colorOf(*color) : unknownColor;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setSideStyle(Side side, int style) {
    if (const char* const text = textOf(borderStyles, style)) (ownBorder().*side)().style(text);
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setSideColor(Side side, int color) {
    if (isColor(color)) writeColor((ownBorder().*side)().color(), color, _styles->usesRgbColors());
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderAll(int style) {
    setBorderLeft(style);
    setBorderRight(style);
    setBorderTop(style);
    setBorderBottom(style);
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderColorAll(int color) {
    setBorderLeftColor(color);
    setBorderRightColor(color);
    setBorderTopColor(color);
    setBorderBottomColor(color);
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderLeft() {
    return sideStyle(&c_CT_Border::find_left, &c_CT_Border::find_start);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderLeft(int style) {
    _styles->change([&] { setSideStyle(&c_CT_Border::left, style); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderRight() {
    return sideStyle(&c_CT_Border::find_right, &c_CT_Border::find_end);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderRight(int style) {
    _styles->change([&] { setSideStyle(&c_CT_Border::right, style); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderTop() {
    return sideStyle(&c_CT_Border::find_top);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderTop(int style) {
    _styles->change([&] { setSideStyle(&c_CT_Border::top, style); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderBottom() {
    return sideStyle(&c_CT_Border::find_bottom);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderBottom(int style) {
    _styles->change([&] { setSideStyle(&c_CT_Border::bottom, style); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderLeftColor() {
    return sideColor(&c_CT_Border::find_left, &c_CT_Border::find_start);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderLeftColor(int color) {
    _styles->change([&] { setSideColor(&c_CT_Border::left, color); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderRightColor() {
    return sideColor(&c_CT_Border::find_right, &c_CT_Border::find_end);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderRightColor(int color) {
    _styles->change([&] { setSideColor(&c_CT_Border::right, color); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderTopColor() {
    return sideColor(&c_CT_Border::find_top);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderTopColor(int color) {
    _styles->change([&] { setSideColor(&c_CT_Border::top, color); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderBottomColor() {
    return sideColor(&c_CT_Border::find_bottom);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderBottomColor(int color) {
    _styles->change([&] { setSideColor(&c_CT_Border::bottom, color); });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderDiagonal() {
    const c_CT_Border* const lines = border();
    if (!lines) return 0;
    return (lines->diagonalDown() ? diagonalDownBit : 0) | (lines->diagonalUp() ? diagonalUpBit : 0);
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderDiagonal(int diagonals) {
    _styles->change([&] {
        c_CT_Border& lines = ownBorder();
        lines.diagonalDown((diagonals & diagonalDownBit) != 0);
        lines.diagonalUp((diagonals & diagonalUpBit) != 0);
    });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderDiagonalStyle() {
    return sideStyle(&c_CT_Border::find_diagonal);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderDiagonalStyle(int style) {
    _styles->change([&] { setSideStyle(&c_CT_Border::diagonal, style); });
}
template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::borderDiagonalColor() {
    return sideColor(&c_CT_Border::find_diagonal);
}
template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setBorderDiagonalColor(int color) {
    _styles->change([&] { setSideColor(&c_CT_Border::diagonal, color); });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::fillPattern() {
    const c_CT_Fill* const area = fill();
    const auto* const pattern = area ? area->find_patternFill() : nullptr;
    return pattern ? codeOf(patterns, pattern->patternType(), 0) : 0;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setFillPattern(int pattern) {
    _styles->change([&] {
        if (const char* const text = textOf(patterns, pattern)) ownFill().patternFill().patternType(text);
    });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::patternForeColor() {
    const c_CT_Fill* const area = fill();
    const auto* const pattern = area ? area->find_patternFill() : nullptr;
    const auto* const color = pattern ? pattern->find_fgColor() : nullptr;
    return color ? _styles->colorOf(*color) : unknownColor;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setPatternForeColor(int color) {
    _styles->change([&] {
        if (isColor(color)) writeColor(ownFill().patternFill().fgColor(), color, _styles->usesRgbColors());
    });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::patternBackColor() {
    const c_CT_Fill* const area = fill();
    const auto* const pattern = area ? area->find_patternFill() : nullptr;
    const auto* const color = pattern ? pattern->find_bgColor() : nullptr;
    return color ? _styles->colorOf(*color) : unknownColor;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setPatternBackColor(int color) {
    _styles->change([&] {
        if (isColor(color)) writeColor(ownFill().patternFill().bgColor(), color, _styles->usesRgbColors());
    });
}

}  // namespace vellum
