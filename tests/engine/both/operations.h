// All operations of the interfaces by name, and how a test calls them.
#pragma once
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "engine/api/iautofilter.h"
#include "engine/api/ibook.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "engine/api/isheet.h"

namespace vellum {

/// What an operation gets for its integers and sizes, in turn; the first again behind the last.
using Numbers = std::vector<int>;

template <class T>
T argument(const Numbers& numbers, const char* text, std::size_t& used) {
    if constexpr (std::is_same_v<T, int> || std::is_same_v<T, double>) {
        return static_cast<T>(numbers[used++ % numbers.size()]);
    } else if constexpr (std::is_same_v<T, const char*>) {
        return text;
    } else {
        return T{};
    }
}

/// Calls an operation with these numbers, this text and nothing else in hand: false, null pointers. The result as text.
template <class Object, class Result, class... Args>
std::string answer(Object& object, const Numbers& numbers, [[maybe_unused]] const char* given,
                   Result (Object::*operation)(Args...)) {
    std::ostringstream text;
    [[maybe_unused]] std::size_t used = 0;
    const std::tuple<Args...> arguments{argument<Args>(numbers, given, used)...};
    const auto call = [&] { return std::apply([&](auto... each) { return (object.*operation)(each...); }, arguments); };
    if constexpr (std::is_void_v<Result>) {
        call();
    } else if constexpr (std::is_pointer_v<Result>) {
        text << (call() == nullptr ? "null" : "an object");
    } else {
        text << std::boolalpha << call();
    }
    return text.str();
}

template <class Object>
struct Operation {
    const char* name;
    std::string (*callWith)(Object&, const Numbers&, const char*);

    std::string call(Object& object, const Numbers& numbers = {0}, const char* text = nullptr) const {
        return callWith(object, numbers, text);
    }
};

template <class Object>
const std::vector<Operation<Object>>& operationsOf();

// clang-format off
#define OP(name)                                                          \
    {#name, [](Object& object, const Numbers& numbers, const char* text) { \
         return answer(object, numbers, text, &Object::name);              \
     }}

template <>
inline const std::vector<Operation<IBookT<char>>>& operationsOf() {
    using Object = IBookT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(loadFile), OP(loadFileSheet), OP(loadFileRows), OP(loadWithoutEmptyCells), OP(loadFileOutline),
        OP(saveFile), OP(loadMemory), OP(saveMemory), OP(addSheet), OP(insertSheet), OP(getSheet), OP(sheetNameAt),
        OP(sheetKindAt), OP(moveSheet), OP(removeSheet), OP(sheetCount), OP(newFormat), OP(newFont),
        OP(newRichString), OP(newCustomNumFormat), OP(customNumFormatText), OP(formatAt), OP(formatTotal), OP(fontAt),
        OP(fontTotal), OP(datePack), OP(dateUnpack), OP(packColor), OP(unpackColor), OP(activeSheetIndex),
        OP(setActiveSheetIndex), OP(pictureTotal), OP(pictureAt), OP(addPictureFile), OP(addPictureData),
        OP(addPictureLink), OP(defaultFontName), OP(setDefaultFontSpec), OP(usesR1C1), OP(setUsesR1C1),
        OP(usesRgbColors), OP(setUsesRgbColors), OP(calculationMode), OP(setCalculationMode), OP(engineVersion),
        OP(binaryVersion), OP(isDate1904), OP(setDate1904), OP(isTemplateFile), OP(setTemplateFile),
        OP(isWriteProtected), OP(setLocale), OP(errorMessage)};
    return all;
}

template <>
inline const std::vector<Operation<ISheetT<char>>>& operationsOf() {
    using Object = ISheetT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(cellType), OP(isFormulaCell), OP(cellFormatAt), OP(setCellFormatAt), OP(readString), OP(writeString),
        OP(readRichText), OP(writeRichText), OP(readNumber), OP(writeNumber), OP(readBool), OP(writeBool),
        OP(readBlank), OP(writeBlank), OP(readFormula), OP(writeFormula), OP(writeFormulaNumber),
        OP(writeFormulaText), OP(writeFormulaBoolean), OP(readComment), OP(writeComment), OP(removeComment),
        OP(isDate), OP(isRichTextCell), OP(readError), OP(writeError), OP(columnWidth), OP(rowHeight),
        OP(columnWidthPixels), OP(rowHeightPixels), OP(setColumn), OP(setRow), OP(isRowHidden), OP(setRowHidden),
        OP(isColumnHidden), OP(setColumnHidden), OP(defaultRowHeightValue), OP(setDefaultRowHeightValue), OP(mergeAt),
        OP(addMerge), OP(removeMergeAt), OP(mergeTotal), OP(mergeByIndex), OP(removeMergeByIndex),
        OP(pictureTotalOnSheet), OP(sheetPictureAt), OP(removePictureAt), OP(placePicture), OP(placePictureSized),
        OP(removePictureByIndex), OP(rowBreakAt), OP(rowBreakTotal), OP(columnBreakAt), OP(columnBreakTotal),
        OP(setRowBreak), OP(setColumnBreak), OP(splitAt), OP(splitPosition), OP(groupRowRange), OP(groupColumnRange),
        OP(summaryBelow), OP(setSummaryBelow), OP(summaryRight), OP(setSummaryRight), OP(clearRange),
        OP(insertColumns), OP(insertRows), OP(removeColumns), OP(removeRows), OP(copyCell), OP(firstRow), OP(lastRow),
        OP(firstCol), OP(lastCol), OP(firstFilledRow), OP(lastFilledRow), OP(firstFilledColumn), OP(lastFilledColumn),
        OP(showsGridlines), OP(setShowsGridlines), OP(printsGridlines), OP(setPrintsGridlines), OP(zoomPercent),
        OP(setZoomPercent), OP(printZoomPercent), OP(setPrintZoomPercent), OP(printFitPages), OP(setPrintFitPages),
        OP(isLandscape), OP(setLandscape), OP(paperCode), OP(setPaperCode), OP(headerText), OP(setHeaderText),
        OP(headerMargin), OP(footerText), OP(setFooterText), OP(footerMargin), OP(centersHorizontally),
        OP(setCentersHorizontally), OP(centersVertically), OP(setCentersVertically), OP(marginLeft),
        OP(setMarginLeft), OP(marginRight), OP(setMarginRight), OP(marginTop), OP(setMarginTop), OP(marginBottom),
        OP(setMarginBottom), OP(printsRowColHeadings), OP(setPrintsRowColHeadings), OP(repeatRows), OP(setRepeatRows),
        OP(repeatColumns), OP(setRepeatColumns), OP(printAreaRange), OP(setPrintAreaRange), OP(clearRepeats),
        OP(clearPrintAreaRange), OP(namedRangeByName), OP(setNamedRangeByName), OP(removeNamedRange),
        OP(namedRangeCount), OP(namedRange), OP(tableTotal), OP(tableAt), OP(hyperlinkTotal), OP(hyperlinkAt),
        OP(removeHyperlinkAt), OP(addHyperlink), OP(hasFilter), OP(filterObject), OP(applyFilter), OP(removeFilter),
        OP(sheetName), OP(setSheetName), OP(isProtected), OP(setProtected), OP(visibilityState),
        OP(setVisibilityState), OP(topLeftCell), OP(setTopLeftCell), OP(isRightToLeft), OP(setRightToLeft),
        OP(autoFitColumns), OP(parseCellAddress), OP(formatCellAddress), OP(setTabPaletteColor), OP(setTabRgbColor),
        OP(addIgnoredErrorRange), OP(addValidationRule), OP(addValidationRuleNumeric), OP(removeValidationRules),
        OP(formControlTotal), OP(formControlAt)};
    return all;
}

template <>
inline const std::vector<Operation<IFormatT<char>>>& operationsOf() {
    using Object = IFormatT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(font), OP(setFont), OP(numFormat), OP(setNumFormat), OP(alignHorizontal), OP(setAlignHorizontal),
        OP(alignVertical), OP(setAlignVertical), OP(wrapsText), OP(setWrapsText), OP(rotation), OP(setRotation),
        OP(indent), OP(setIndent), OP(shrinksToFit), OP(setShrinksToFit), OP(setBorderAll), OP(setBorderColorAll),
        OP(borderLeft), OP(setBorderLeft), OP(borderRight), OP(setBorderRight), OP(borderTop), OP(setBorderTop),
        OP(borderBottom), OP(setBorderBottom), OP(borderLeftColor), OP(setBorderLeftColor), OP(borderRightColor),
        OP(setBorderRightColor), OP(borderTopColor), OP(setBorderTopColor), OP(borderBottomColor),
        OP(setBorderBottomColor), OP(borderDiagonal), OP(setBorderDiagonal), OP(borderDiagonalStyle),
        OP(setBorderDiagonalStyle), OP(borderDiagonalColor), OP(setBorderDiagonalColor), OP(fillPattern),
        OP(setFillPattern), OP(patternForeColor), OP(setPatternForeColor), OP(patternBackColor),
        OP(setPatternBackColor), OP(isLocked), OP(setLocked), OP(isFormulaHidden), OP(setFormulaHidden)};
    return all;
}

template <>
inline const std::vector<Operation<IFontT<char>>>& operationsOf() {
    using Object = IFontT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(size), OP(setSize), OP(isItalic), OP(setItalic), OP(isStrikeOut), OP(setStrikeOut), OP(color),
        OP(setColor), OP(isBold), OP(setBold), OP(script), OP(setScript), OP(underline), OP(setUnderline), OP(name),
        OP(setName)};
    return all;
}

template <>
inline const std::vector<Operation<IRichStringT<char>>>& operationsOf() {
    using Object = IRichStringT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(addFont), OP(addRun), OP(runAt), OP(runTotal)};
    return all;
}

template <>
inline const std::vector<Operation<IAutoFilterT<char>>>& operationsOf() {
    using Object = IAutoFilterT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(filterRange), OP(setFilterRange), OP(filterColumn), OP(filterColumnTotal), OP(filterColumnAt),
        OP(sortRange), OP(sortOrder), OP(setSort), OP(addSort)};
    return all;
}

template <>
inline const std::vector<Operation<IFilterColumnT<char>>>& operationsOf() {
    using Object = IFilterColumnT<char>;
    static const std::vector<Operation<Object>> all = {
        OP(columnId), OP(filterKind), OP(valueFilterTotal), OP(valueFilterAt), OP(addValueFilter), OP(top10),
        OP(setTop10), OP(customFilter), OP(setCustomFilter), OP(clearFilter)};
    return all;
}

// clang-format on
#undef OP

}  // namespace vellum
