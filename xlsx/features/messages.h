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
