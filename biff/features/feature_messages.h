// Texts of failures of sheet features.
#pragma once

namespace vellum::biff::msg {

inline constexpr const char* pageBreakExists = "pagebreak already exists";
inline constexpr const char* pageBreakNotFound = "pagebreak not found";
inline constexpr const char* tooManyPageBreaks = "number of pagebreaks is exceed limit";
inline constexpr const char* notSplit = "worksheet is not splitted";
inline constexpr const char* rowFirstRange = "rowFirst must be in range 0-65535";
inline constexpr const char* rowLastRange = "rowLast must be in range 0-65535";
inline constexpr const char* colFirstRange = "colFirst must be in range 0-255";
inline constexpr const char* colLastRange = "colLast must be in range 0-255";
inline constexpr const char* groupRowOrder = "must be rowFirst <= rowLast";
inline constexpr const char* groupColOrder = "must be colFirst <= colLast";
inline constexpr const char* outlineOverlap = "detect overlap";
inline constexpr const char* outlineTooDeep = "exceeded outline level";
inline constexpr const char* ignoredErrorExists = "ignored error already exists";
inline constexpr const char* hyperlinkObject = "error in reading HyperlinkObj";
inline constexpr const char* hyperlinkRecord = "error reading HLink";

// Of our own wording.
inline constexpr const char* notWorksheet = "a chart or macro sheet is kept as it came and can't be changed";
inline constexpr const char* zoomRange = "zoom must be in range 1-65535";
inline constexpr const char* arrayCut = "an array formula or a data table can't be cut";
inline constexpr const char* settingRange = "value must be in range 0-65535";
inline constexpr const char* colorRange = "red, green and blue must be in range 0-255";

}  // namespace vellum::biff::msg
