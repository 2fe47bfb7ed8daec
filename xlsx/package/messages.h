// The texts of the Open XML engine.
#pragma once
#include "engine/failure/messages.h"

namespace vellum::xlsx::msg {

using namespace vellum::msg;  // what both engines say

// parts and packages
inline constexpr const char* dataEmpty = "data is empty";
inline constexpr const char* cannotReadTemporary = "can't open temporary file for reading";
inline constexpr const char* notXlsx = "It is not a xlsx file. Use the vlCreateBook() for a xls file.";
inline constexpr const char* contentTypesNotFoundOnLoad = "load error: workbook content types are not found";
inline constexpr const char* mainPartNotFound = "workbook main xml file is not found";
inline constexpr const char* relationshipsMissing = "workbook relationships not found";
inline constexpr const char* relationshipsNotFoundOnLoad = "load error: workbook relationships are not found";
inline constexpr const char* relationshipsNotFound = "workbook relationships are not found";
inline constexpr const char* contentTypesNotFound = "workbook content types are not found";
inline constexpr const char* cannotSaveOutline = "a workbook of which only the outline was loaded can't be saved";
inline constexpr const char* cannotWrite = "can't open file for writing";
inline constexpr const char* cannotOpenZipStream = "can't open zip stream for writing";
inline constexpr const char* cannotWriteZipStream = "can't write to zip stream";
inline constexpr const char* cannotCloseFile = "can't close file for writing";

// sheets
inline constexpr const char* sheetNotFound = "sheet not found";
inline constexpr const char* sheetIndexOutOfRange = "sheet index is out of range";
inline constexpr const char* makeSheetPath = "makeSheetPath error: workbook relationships are not found";

// shared strings
inline constexpr const char* noSharedString = "index is out of range or no value";

}  // namespace vellum::xlsx::msg
