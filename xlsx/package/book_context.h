// What the parts of a book see of it.
#pragma once
#include <string>
#include <string_view>

#include "engine/failure/last_error.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/package/package_context.h"

namespace vellum {

namespace xlsx {
struct FontMetrics;
}
template <class CharT, class Tag>
class SharedStrings;
template <class CharT, class Tag>
class Styles;
namespace xlsx {
template <class Tag>
class DefinedNames;
}

using ooxml::excelNormal_tag;
using ooxml::excelStrict_tag;

/// The book, as its sheets, styles and strings know it. XMLBookImplT implements it. Routines throw vlerror.
template <class CharT, class Tag>
class BookContextT : public PackageContext {
public:
    virtual LastError& lastError() noexcept = 0;
    /// Whether char strings are UTF-8.
    virtual bool isUtf8() const = 0;
    /// Separator of function arguments in formula text.
    virtual wchar_t listSeparator() const = 0;
    virtual xlsx::DefinedNames<Tag>& names() = 0;
    virtual bool isR1C1() const = 0;
    virtual bool dates1904() const = 0;
    virtual const xlsx::FontMetrics& fontMetrics() const = 0;

    /// Null when the book has no such part; the second form makes it.
    virtual Styles<CharT, Tag>* findStyles() = 0;
    virtual Styles<CharT, Tag>& ensureStyles() = 0;
    virtual SharedStrings<CharT, Tag>* findSharedStrings() = 0;
    virtual SharedStrings<CharT, Tag>& ensureSharedStrings() = 0;

    /// The workbook element: sheet list, names, settings.
    virtual typename ooxml::dialect<Tag>::c_workbook& workbook() = 0;
    /// Path of the part of a sheet, "" when it has none.
    virtual std::string sheetPath(int sheetIndex) = 0;
    /// The sheet that is shown.
    virtual int activeSheet() = 0;
    virtual void activate(int sheetIndex) = 0;

protected:
    ~BookContextT() = default;
};

// What the parts offer to the book:
//
//   Styles<CharT, Tag>          : XmlFile<dialect::c_styleSheet>; Styles() is the default list of a new book,
//                                 Styles(PartBytes); attach(BookContextT&), setTheme(XMLTheme<Tag>*)
//   SharedStrings<CharT, Tag>   : XmlFile<dialect::c_sst>; SharedStrings(), SharedStrings(PartBytes)
//   XMLSheetImplT<CharT, Tag>   : ISheetT<CharT>, XmlFile<dialect::c_worksheet>; XMLSheetImplT() is an empty sheet,
//                                 XMLSheetImplT(PartBytes, firstRow, lastRow) with -1 for all rows, a copy constructor
//                                 that clones the tree; bind(BookContextT&, sheetIndex)
//   XMLTheme<Tag>               : XmlFile<dialect::c_theme>

}  // namespace vellum
