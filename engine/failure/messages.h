// Texts of `errorMessage` that both engines use. What users see is compared here in one look.
#pragma once

namespace vellum::msg {

inline constexpr const char* ok = "ok";
inline constexpr const char* generalFailure = "general failure";

inline constexpr const char* colOutOfRange = "col must be in range 0-16383";
inline constexpr const char* rowOutOfRange = "row must be in range 0-1048575";
inline constexpr const char* indexOutOfRange = "index is out of range";
inline constexpr const char* stringTooLong = "string is too long";
inline constexpr const char* loadNameNull = "file name name can't be 0";
inline constexpr const char* saveNameNull = "file name can't be 0";
inline constexpr const char* cantOpenForReading = "can't open file for reading";
inline constexpr const char* cantOpenForWriting = "can't open file for writing";
inline constexpr const char* diskFull = "disk is full";

inline constexpr const char* poolExhausted = "Error allocating, not enough memory.";
inline constexpr const char* localeNull = "setlocale error (1)";
inline constexpr const char* localeUnknown = "setlocale error (2)";
inline constexpr const char* cantWiden = "can't convert multibyte to wide string, perhaps incorrect locale";
inline constexpr const char* cantMeasureNarrow = "can't convert wide to multibyte string, perhaps incorrect locale [1]";
inline constexpr const char* cantNarrow = "can't convert wide to multibyte string, perhaps incorrect locale [2]";
inline constexpr const char* lostCharacters = "warning: some characters have not been converted properly";

inline constexpr const char* sheetNameNull = "sheet name can't be 0";
inline constexpr const char* sheetNameEmpty = "sheet name can't be empty";
inline constexpr const char* sheetNameInvalid = "sheet name has an invalid character";
inline constexpr const char* sheetNameTaken = "book already contains such sheet name";
inline constexpr const char* sheetNameCut = "warning: sheet's name is cut to 31 characters";
inline constexpr const char* srcIndexOutOfRange = "srcIndex is out of range";
inline constexpr const char* dstIndexOutOfRange = "dstIndex is out of range";
inline constexpr const char* moveToItself = "there is no sense: srcIndex is equal to dstIndex";
inline constexpr const char* moveBehindItself = "there is no sense: srcIndex is equal to dstIndex - 1";
inline constexpr const char* cantRemoveLastSheet = "can't remove the last sheet in workbook";
inline constexpr const char* needsVisibleSheet = "a workbook must contain at least one visible worksheet";

inline constexpr const char* tooManyFormats = "too many different cell formats";
inline constexpr const char* tooManyFonts = "too many different fonts";
inline constexpr const char* tooManyCustomFormats = "maximum number of custom formats is exceeded";
inline constexpr const char* customFormatNotFound = "custom number format not found";

inline constexpr const char* notForXls = "function is not supported for xls files";
inline constexpr const char* noFilterInXls = "AutoFilter is not supported for xls format";
inline constexpr const char* noEmptyCellsLoadInXlsx = "Book::loadWithoutEmptyCells() is not supported for xlsx files";

}  // namespace vellum::msg
