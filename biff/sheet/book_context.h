// What a sheet of a binary workbook needs of its book, and what the book needs of its sheets.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "biff/records/bof.h"

namespace vellum {

namespace drawing {
class DrawingGroup;
}

class LastError;
class Palette;
class StringPool;
class StrMap;
class Xls;
namespace biff {
class DefinedNames;
class OpenSheets;
}  // namespace biff
namespace formula {
class FormulaContext;
}
template <class CharT>
class FontImplT;
template <class CharT>
class FormatImplT;
template <class CharT>
class IFormatT;
template <class CharT>
class IRichStringT;
template <class CharT>
class SheetImplT;

/// The format of a cell that nobody formatted, in a new book and by convention in files.
inline constexpr std::uint16_t defaultCellXf = 15;

/// Which part of a sheet a load keeps. Rows are filtered, all else of the sheet is always read.
struct SheetLoad {
    std::int32_t firstRow = -1;  // rows below it are dropped; -1: none
    std::int32_t endRow = -1;    // this row and those behind it are dropped; -1: none
    bool noBlanks = false;       // cells that hold a format only are dropped

    [[nodiscard]] bool accepts(std::int32_t row) const { return row >= firstRow && (endRow == -1 || row < endRow); }
};

/// The book as its sheets see it. Pointers that it hands out belong to the book.
///
/// A sheet gets its book at construction and never outlives it. In the other direction the book
/// uses of `SheetImplT` (biff/sheet.h):
///
///     explicit SheetImplT(BookContext<CharT>& book);
///     void load(Xls&, const SheetLoad&);          // from the stream's place to the sheet's EOF
///     void save(Xls&);                            // from Bof to EOF, always as BIFF8
///     void cloneFrom(const SheetImplT& source);   // source may belong to another book
///     void releaseStrings();                      // takes its uses out of StrMap, before it goes
///     const wchar_t* name() const;                // pool memory of the book, never null
///     void setName(const wchar_t* pooled);        // no checks; see renameSheet below
///     std::uint16_t dt() const;                   // of its Bof: 16 worksheet, 32 chart, ...
///     void setSelected(bool);                     // both bits 0x600 of Window2
///     int calcMode() const;                       // CalcMode
///     void setCalcMode(int);
///     bool usesR1C1() const;                      // CalcRefMode is 0
///     void setUsesR1C1(bool);
template <class CharT>
class BookContext {
public:
    virtual LastError& lastError() = 0;
    virtual StringPool& pool() = 0;

    /// Narrow texts at the interface are UTF-8, otherwise of the process's locale.
    [[nodiscard]] virtual bool utf8() const = 0;
    /// Between the arguments of a function in formula text: ',' or ';'.
    [[nodiscard]] virtual char listSeparator() const = 0;

    /// `vers` of the loaded file's first `Bof`; 0x0600 in a new book. While it is below
    /// `firstVersWithFlags` the file was BIFF5: tokens have another layout, so a save
    /// writes the cached values of formulas only, and no raw records.
    [[nodiscard]] virtual std::uint16_t vers() const = 0;
    [[nodiscard]] bool isBiff5() const { return vers() < firstVersWithFlags; }

    /// The shared strings (biff/str_map.h), with the table of uses per index.
    virtual StrMap& strings() = 0;
    [[nodiscard]] virtual const StrMap& strings() const = 0;
    /// A caller's text as wide characters, in a buffer that the next call reuses. Null gives an empty
    /// text. Throws what the conversion throws.
    virtual std::wstring_view widen(const CharT* text) = 0;
    /// The same text in the pool, for as long as the book lives.
    virtual const wchar_t* widenToPool(const CharT* text) = 0;
    /// The rich string object of a caller as an index in `strings()`, with a use of the shared text
    /// counted as `StrMap::add` does. A rich string of another book is copied.
    virtual std::uint32_t addRichString(IRichStringT<CharT>* text) = 0;
    /// The object for reading the runs of a string; made when first asked for.
    virtual IRichStringT<CharT>* richString(std::uint32_t isst) = 0;
    /// The index in `strings()` of a string of another book, copied with its fonts.
    virtual std::uint32_t adoptString(const BookContext& from, std::uint32_t isst) = 0;

    /// Format by `ixfe`, null when out of range.
    [[nodiscard]] virtual FormatImplT<CharT>* xf(std::uint16_t ixfe) const = 0;
    [[nodiscard]] virtual std::size_t xfCount() const = 0;
    /// The `ixfe` of a format object. Throws "specified format not found" unless it is one of
    /// this book; a null pointer must not come here.
    [[nodiscard]] virtual std::uint16_t ixfeOf(const IFormatT<CharT>* format) const = 0;
    /// The `ixfe` here of a format of another book, copied when first asked for. See XfAdoption.
    virtual std::uint16_t adoptFormat(const BookContext& from, std::uint16_t ixfe) = 0;
    /// Font by list position (position 4 is wire index 5), null when out of range.
    [[nodiscard]] virtual FontImplT<CharT>* fontAtPosition(std::size_t position) const = 0;
    /// Text of a number format by id, also below 164 when the file lists it; null when it has none.
    [[nodiscard]] virtual const wchar_t* numFormatText(std::uint16_t ifmt) const = 0;

    virtual Palette& palette() = 0;
    /// What the drawings of all sheets share.
    virtual drawing::DrawingGroup& drawingGroup() = 0;

    /// Defined names of the book and of its sheets, and the references to sheets.
    virtual biff::DefinedNames& names() = 0;
    [[nodiscard]] virtual const biff::DefinedNames& names() const = 0;
    /// The book as formulas see it, with the notation of this moment. Lives until the next call.
    virtual formula::FormulaContext& formulas() = 0;

    /// The small sheets that are open.
    virtual biff::OpenSheets& openSheets() = 0;
    /// Sheets in tab order. A book loaded as outline has none.
    [[nodiscard]] virtual std::size_t sheetTotal() const = 0;
    [[nodiscard]] virtual SheetImplT<CharT>* sheetByIndex(std::size_t index) const = 0;
    /// Position in tab order; -1 for a sheet that the book is only just making.
    [[nodiscard]] virtual int indexOfSheet(const SheetImplT<CharT>& sheet) const = 0;
    /// Checks the name as for a new sheet (duplicates of the sheet's own name are allowed), cuts it
    /// at 31 characters with the warning in the last error, and gives it to the sheet and its
    /// BoundSheet8 entry. `name` must not be null.
    virtual void renameSheet(SheetImplT<CharT>& sheet, const CharT* name) = 0;
    /// 0 visible, 1 hidden, 2 very hidden: the low bits of `hsState`.
    [[nodiscard]] virtual int sheetState(const SheetImplT<CharT>& sheet) const = 0;
    /// Throws "a workbook must contain at least one visible worksheet" when the last visible sheet
    /// would be hidden; the active sheet moves to the first visible one.
    virtual void setSheetState(SheetImplT<CharT>& sheet, int state) = 0;

protected:
    ~BookContext() = default;
};

/// Maps the `ixfe` values of a source book onto a destination book while a sheet is copied.
/// In the same book a format is itself.
template <class CharT>
class XfAdoption {
public:
    XfAdoption(BookContext<CharT>& to, const BookContext<CharT>& from) : _to(to), _from(from) {}

    std::uint16_t operator()(std::uint16_t ixfe) {
        if (&_from == &_to) return ixfe;
        if (ixfe >= _from.xfCount()) return defaultCellXf;
        if (_map.empty()) _map.assign(_from.xfCount(), notYet);
        auto& known = _map[ixfe];
        if (known == notYet) known = _to.adoptFormat(_from, ixfe);
        return static_cast<std::uint16_t>(known);
    }

private:
    static constexpr std::uint32_t notYet = 0xFFFFFFFF;
    BookContext<CharT>& _to;
    const BookContext<CharT>& _from;
    std::vector<std::uint32_t> _map;
};

}  // namespace vellum
