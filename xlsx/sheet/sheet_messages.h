// The texts of the cells of a worksheet.
#pragma once
#include "xlsx/features/messages.h"

namespace vellum::xlsx::msg {

inline constexpr const char* cellNotFound = "cell is not found";
inline constexpr const char* formatsNotFound = "formats are not found";

// reading
inline constexpr const char* noString = "this cell doesn't contain a string";
inline constexpr const char* noNumber = "this cell doesn't contain a number";
inline constexpr const char* noBool = "this cell doesn't contain a bool";
inline constexpr const char* notBlank = "cell is not blank";
inline constexpr const char* noRichString = "this cell doesn't contain a rich string";
inline constexpr const char* noError = "this cell doesn't contain an error";
inline constexpr const char* noFormula = "this cell doesn't contain a formula";
inline constexpr const char* unknownError = "unknown error value";
inline constexpr const char* badDateTime = "can't read date/time from the cell";
inline constexpr const char* sharedStringsNotFound = "sharedStrings not found";

// writing
inline constexpr const char* richStringNull = "richString is NULL";
inline constexpr const char* foreignRichString = "richString belongs to another workbook";

}  // namespace vellum::xlsx::msg
