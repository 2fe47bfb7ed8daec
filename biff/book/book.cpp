#include "biff/book/book.h"

namespace vellum {

template <class CharT>
BookImplT<CharT>::BookImplT() : _strings(_pool) {
    fillNewBook();
}

template <class CharT>
BookImplT<CharT>::~BookImplT() = default;

template <class CharT>
void BookImplT<CharT>::release() {
    const std::unique_ptr<BookImplT> end(this);
}

// Leaves nothing, not even the formats of a new book: a file brings its own, and cells name them by position.
template <class CharT>
void BookImplT<CharT>::clear() {
    _sheets.clear();
    _richStrings.clear();
    _formats.clear();
    _lastIxfe = {};
    _fonts.clear();
    _globals = Globals();
    _strings.clear();
    _pool.clear();
    _xls.reset(true);
    _rgb = _r1c1 = false;
}

namespace {

struct NewXf {
    std::uint16_t ifnt, ifmt, protection;
    std::uint32_t alignment;
};

constexpr std::uint16_t styleXf = 0xFFF5, cellXf = 0x0001;
// Which parts of a format the style of that name does not state: number format apart in the one, all but the number
// format in the other.
constexpr std::uint32_t ownBits = 0x00000020, outlineBits = 0xF4000020, numberBits = 0xF8000020;

constexpr NewXf newXfs[] = {
    {0, 0, styleXf, ownBits},      // Normal
    {1, 0, styleXf, outlineBits},  // rows and columns of outline levels
    {1, 0, styleXf, outlineBits},  //
    {2, 0, styleXf, outlineBits},  //
    {2, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, styleXf, outlineBits},  //
    {0, 0, cellXf, ownBits},       // cells that nobody formatted
    {1, 44, styleXf, numberBits},  // Currency
    {1, 42, styleXf, numberBits},  // Currency without decimals
    {1, 9, styleXf, numberBits},   // Percent
    {1, 43, styleXf, numberBits},  // Comma
    {1, 41, styleXf, numberBits},  // Comma without decimals
};
static_assert(newXfs[defaultCellXf].protection == cellXf);

struct NewStyle {
    std::uint16_t ixfe;
    std::uint8_t istyBuiltIn;
};
constexpr NewStyle newStyles[] = {{0x8010, 4}, {0x8011, 7}, {0x8000, 0}, {0x8012, 5}, {0x8013, 3}, {0x8014, 6}};

}  // namespace

template <class CharT>
void BookImplT<CharT>::fillNewBook() {
    constexpr int newFonts = 5;
    for (int i = 0; i < newFonts; ++i) _fonts.emplace_back(*this, Font());
    for (const NewXf& row : newXfs) {
        Xf xf;
        xf.ifnt = row.ifnt;
        xf.ifmt = row.ifmt;
        xf.protection = row.protection;
        xf.alignment = row.alignment;
        _formats.emplace_back(*this, static_cast<std::uint16_t>(_formats.size()), xf);
    }
    for (const NewStyle& row : newStyles) {
        Style style;
        style.ixfe = row.ixfe;
        style.istyBuiltIn = row.istyBuiltIn;
        _globals.styles.push_back(style);
    }
}

}  // namespace vellum
