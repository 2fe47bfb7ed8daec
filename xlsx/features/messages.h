// The texts of what a sheet has beside its cells.
#pragma once
#include "xlsx/package/messages.h"

namespace vellum::xlsx::msg {

inline constexpr const char* colOutOfRange = "col must be in range 0-16383";
inline constexpr const char* rowOutOfRange = "row must be in range 0-1048575";
inline constexpr const char* colTooGreat = "col must be less than 16384";
inline constexpr const char* rowsReversed = "rowLast must be greater than or equal to rowFirst";
inline constexpr const char* colsReversed = "colLast must be greater than or equal to colFirst";
inline constexpr const char* textNull = "text is NULL";

// rows and columns
inline constexpr const char* widthNotFinite = "width must be a finite number";
inline constexpr const char* heightNotFinite = "height must be a finite number";
inline constexpr const char* rowGroupOrder = "must be rowFirst <= rowLast";
inline constexpr const char* colGroupOrder = "must be colFirst <= colLast";
inline constexpr const char* groupOverlap = "detect overlap";
inline constexpr const char* outlineTooDeep = "exceeded outline level";

// merges
inline constexpr const char* notMerged = "this cell isn't in merging block";

// page breaks
inline constexpr const char* breakExists = "pagebreak already exists";
inline constexpr const char* breakNotFound = "pagebreak not found";
inline constexpr const char* breakWithoutId = "c_CT_Break without id";

// view
inline constexpr const char* notSplit = "worksheet is not splitted";
inline constexpr const char* zoomNegative = "zoom can't be negative";
inline constexpr const char* colorIndexNegative = "color index can't be negative";
inline constexpr const char* colorPartOutOfRange = "red, green and blue must be in range 0-255";

// printing
inline constexpr const char* marginNotFinite = "margin must be a finite number";
inline constexpr const char* paperNegative = "paper code can't be negative";
inline constexpr const char* pagesNegative = "number of pages can't be negative";

// names
inline constexpr const char* namedRangeNotFound = "named range is not found";
inline constexpr const char* partsSkipped = "warning: some parts were skipped";
inline constexpr const char* spaceInName = "space symbol isn't allowed";
inline constexpr const char* namedRangeToRemoveNotFound = "named range not found";
inline constexpr const char* notFound = "not found";
inline constexpr const char* repeatColumnsNotFound = "print repeat columns are not found";
inline constexpr const char* repeatIndexOutOfRange = "XMLSheetImplT::setRepeat(): index is out of range";
inline constexpr const char* refUnrecognized = "ref has unrecognized format";

// links and rules
inline constexpr const char* sheetRelationshipsNotFound = "sheet relationships is not found";
inline constexpr const char* ignoredErrorExists = "ignored error already exists";
inline constexpr const char* ignoredFlagsOutOfRange = "flags must be in range 1-255";
inline constexpr const char* validationsNotFound = "data validations are not found";
inline constexpr const char* validationTypeOutOfRange = "type must be in range 0-7";
inline constexpr const char* validationOperatorOutOfRange = "operator must be in range 0-7";
inline constexpr const char* validationValueNotFinite = "value must be a finite number";

// the sheet
inline constexpr const char* sheetWithoutBook = "sheet doen't have relationship with book";
inline constexpr const char* hiddenOutOfRange = "hidden is out of range";

}  // namespace vellum::xlsx::msg
