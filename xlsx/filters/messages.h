// The texts of filters and tables.
#pragma once
#include "xlsx/features/messages.h"

namespace vellum::xlsx::msg {

inline constexpr const char* filterRefNotFound = "ref is not found";
inline constexpr const char* refColumnsReversed = "ref.colLast < ref.colFirst";
inline constexpr const char* colIdOutOfRange = "colId is out of range";
inline constexpr const char* filterColumnNotMade = "can't create XMLFilterColumnT()";
inline constexpr const char* filterRefNotSpecified = "AutoFilter ref is not specified";
inline constexpr const char* columnIndexOutOfRange = "columnIndex is out of range";
inline constexpr const char* sortStateNotFound = "sort state is not found";
inline constexpr const char* sortConditionNotFound = "sort condition is not found";
inline constexpr const char* tooManySortConditions = "too many sort conditions";

inline constexpr const char* filterNotFound = "filter if not found";
inline constexpr const char* valueFilterNotFound = "value filter is not found";
inline constexpr const char* top10NotFound = "top10 filter is not found";
inline constexpr const char* top10OutOfRange = "setTop10: value is out of range";
inline constexpr const char* customFilterNotFound = "custom filter is not found";

inline constexpr const char* tableNotFound = "table is not found";

}  // namespace vellum::xlsx::msg
