// The codes that the interfaces speak in. They are plain integers at the interfaces, because files
// hold values that no list foresees and such values are handed through.
#pragma once

namespace vellum {

enum CellKind : int {
    cellEmpty = 0,
    cellNumber = 1,
    cellString = 2,
    cellBoolean = 3,
    cellBlank = 4,  // no content, but a format
    cellError = 5,
    cellDate = 6,  // an ISO 8601 text in a Strict package; other files hold dates as formatted numbers
};

enum ErrorCode : int {
    errorNull = 0,
    errorDivisionByZero = 7,
    errorValue = 15,
    errorReference = 23,
    errorName = 29,
    errorNumber = 36,
    errorNotAvailable = 42,
    errorNone = 255,  // "a boolean, not an error" on writing, "no error here" on reading
};

enum SheetKind : int { sheetWorksheet = 0, sheetChart = 1, sheetOther = 2 };

enum SheetVisibility : int { sheetVisible = 0, sheetHidden = 1, sheetVeryHidden = 2 };

/// Second last argument of `writeString`: text, or a number that is already in text form.
enum StringKind : int { stringIsNumber = 0, stringIsText = 2 };

enum CalculationMode : int { calculateManual = 0, calculateAuto = 1, calculateAutoNoTables = 2 };

enum PictureKind : int {
    picturePng = 0,
    pictureJpeg = 1,
    pictureGif = 2,
    pictureWmf = 3,
    pictureBmp = 4,
    pictureEmf = 5,
    picturePict = 6,  // in binary workbooks only
    pictureTiff = 7,
    pictureUnknown = 255,
};

/// How a picture follows the cells beneath it.
enum PicturePlacement : int { moveAndSize = 0, moveOnly = 1, stayInPlace = 2 };

enum AlignHorizontal : int {
    alignGeneral,
    alignLeft,
    alignCenter,
    alignRight,
    alignFill,
    alignJustify,
    alignCenterContinuous,
    alignDistributed,
};

enum AlignVertical : int { alignTop, alignMiddle, alignBottom, alignVerticalJustify, alignVerticalDistributed };

enum FontScript : int { scriptNormal = 0, scriptSuper = 1, scriptSub = 2 };

enum Underline : int {
    underlineNone = 0,
    underlineSingle = 1,
    underlineDouble = 2,
    underlineSingleAccounting = 33,
    underlineDoubleAccounting = 34,
};

enum FilterKind : int {
    filterValues = 0,
    filterTop10 = 1,
    filterCustom = 2,
    filterDynamic = 3,
    filterColor = 4,
    filterIcon = 5,
    filterExtension = 6,
    filterNone = 7,
};

enum FilterOperator : int {
    filterEqual = 0,
    filterGreaterThan = 1,
    filterGreaterThanOrEqual = 2,
    filterLessThan = 3,
    filterLessThanOrEqual = 4,
    filterNotEqual = 5,
};

constexpr int noColor = 32767;          // what `packColor` answers when no place is left
constexpr int allSheets = -1;           // sheet index of the load operations
constexpr int allRows = -1;             // row limits of the load operations
constexpr int scopeWorkbook = -1;       // scope of a defined name: the whole workbook ...
constexpr int scopeAny = -2;            // ... or whatever matches; 0 and above are sheet indexes
constexpr int firstCustomFormat = 164;  // number formats from here on have their text in the workbook
constexpr int engineVersionNumber = 0x4000301;

}  // namespace vellum
