// The texts of failures in the globals, the shared strings and the formats of a binary workbook.
#pragma once

#include "engine/failure/messages.h"

namespace vellum::biff::msg {

using namespace vellum::msg;  // what both engines say

// Loading.
inline constexpr const char* encrypted = "workbook is encrypted";
inline constexpr const char* unsupportedVers = "This file format isn't supported";
inline constexpr const char* sheetIndexRange = "sheetIndex is out of range";
inline constexpr const char* supBookCorrupt = "SupBookBlock: file is corrupt";
inline constexpr const char* fontOverrun = "error in Font record";
inline constexpr const char* styleExtUnexpected = "StyleExt: unexpected record";

// Saving.
inline constexpr const char* drawingGroup = "error in record MsoDrawingGroup";

// Sheets.
inline constexpr const char* sheetListsDiffer = "integrity error: _boundSheets.size() != _sheets.size()";
inline constexpr const char* foreignSheet = "can't copy a sheet of a workbook of another format";

// Shared strings.
inline constexpr const char* sstRange1 = "StrMap: sst is out of range (1)";
inline constexpr const char* sstRange2 = "StrMap: sst is out of range (2)";
inline constexpr const char* runFontNotFound = "specified font is not found";
inline constexpr const char* richStringNull = "richString is NULL";
inline constexpr const char* noRuns = "rich string format records are not found";

// Fonts, formats, colours.
inline constexpr const char* noFonts = "fonts is empty";
inline constexpr const char* incorrectFont = "incorrect font";
inline constexpr const char* fontNotFound = "specified font not found";
inline constexpr const char* formatNotFound = "specified format not found";
inline constexpr const char* badRotation = "rotation must be in range 0-180 or 255";
inline constexpr const char* noFreeColor = "no free color index, limit is reached for xls format";

}  // namespace vellum::biff::msg
