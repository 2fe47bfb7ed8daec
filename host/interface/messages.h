// Texts of the statement level, as they go through the catalogue to hostError. Rows and columns in them count from 1.
// The wording is part of the interface, typing errors included.
#pragma once

namespace quillet::msg {

// Labels
inline constexpr const char* invalidRangeOrName = "SHEET: Invalid range or name not found.\n";  // after any of these
inline constexpr const char* sheetNotFound = "SHEET: Sheet not found.\n";
inline constexpr const char* sheetNotAdded = "SHEET: A new sheet cannot be added.\n";
inline constexpr const char* invalidRange = "SHEET: Invalid range.\n";
inline constexpr const char* rangeNameNotFound = "SHEET: Range name not found.\n";
inline constexpr const char* badColumnIdentifier = "SHEET: Invalid column identifier in selection (%s).\n";
inline constexpr const char* badColumnNumber = "SHEET: Invalid column number in selection (%ld).\n";
inline constexpr const char* missingHeaderRow = "SHEET: Missing header row.\n";

// Options that ask for a certain kind of item
inline constexpr const char* rangesizeNeedsIntegers =
    "SHEET: The option 'rangesize' can only be used with a list of integers.\n";
inline constexpr const char* dataframeNeedsArray =
    "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n";
inline constexpr const char* autondxNeedsRange =
    "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n";

// Items
inline constexpr const char* wrongColumnType = "SHEET: Wrong column type.\n";
inline constexpr const char* wrongDataType = "SHEET: Wrong data type.\n";
inline constexpr const char* wrongColumnCount = "SHEET: Wrong number of columns (req:%d found:%d).\n";
inline constexpr const char* wrongIndexType = "SHEET: Wrong index type.\n";
inline constexpr const char* uninitializedSet = "SHEET: Trying to access an uninitialized set.\n";
inline constexpr const char* uninitializedList = "SHEET: Trying to access an uninitialized list.\n";
inline constexpr const char* uninitializedArray = "SHEET: Trying to access an uninitialized array.\n";
inline constexpr const char* nonDynamicSet = "SHEET: Non dynamic set for a `write'.\n";  // comes on a read
inline constexpr const char* nonDynamicList = "SHEET: Non dynamic list for a `read'.\n";
inline constexpr const char* wrongListType = "SHEET: Wrong list type for a worksheet.\n";
inline constexpr const char* wrongArrayType = "SHEET: Wrong array type for a worksheet.\n";
inline constexpr const char* inconsistentArrays = "SHEET: Inconsistent array list.\n";
inline constexpr const char* objectNotCreated = "SHEET: Failed to create object.\n";
inline constexpr const char* noMemory = "SHEET: Out of memory error.\n";

// Cells
inline constexpr const char* wrongResult = "SHEET: Wrong result value at [R%dC%d].\n";
inline constexpr const char* wrongDataValue = "SHEET: Wrong data value for [R%dC%d].\n";
inline constexpr const char* wrongIndexValue = "SHEET: Wrong index value at [R%dC%d].\n";
inline constexpr const char* emptyIndex = "SHEET: An index cannot be an empty cell ([R%dC%d]).\n";
inline constexpr const char* overflowOrType = "SHEET: Buffer overflow or invalid type.\n";

// Header of a data frame
inline constexpr const char* nameNotInserted = "SHEET: Failed to insert `%s' into indexing set.\n";
inline constexpr const char* nameNotInSet = "SHEET: Wrong index value at [R%dC%d] (`%s' not part of the index set).\n";
inline constexpr const char* duplicateName = "SHEET: Duplicate index value `%s'.\n";
inline constexpr const char* missingNames = "SHEET: Missing %d column name(s) (expected:%d).\n";

}  // namespace quillet::msg
