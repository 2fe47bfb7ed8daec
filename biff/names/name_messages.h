// The texts of failures around defined names and references to sheets.
#pragma once

namespace vellum::biff::msg {

inline constexpr const char* nameNotFound = "named range is not found";
inline constexpr const char* nameWithSpace = "space symbol isn't allowed";
inline constexpr const char* nameEmpty = "a name can't be empty";
inline constexpr const char* tooManyNames = "too many names";
inline constexpr const char* tooManyReferences = "too many references to sheets";
inline constexpr const char* notFound = "not found";

inline constexpr const char* firstRowRange = "firstRow must be in range 0-65535";
inline constexpr const char* lastRowRange = "lastRow must be in range 0-65535";
inline constexpr const char* firstColRange = "firstCol must be in range 0-255";
inline constexpr const char* lastColRange = "lastCol must be in range 0-255";

}  // namespace vellum::biff::msg
