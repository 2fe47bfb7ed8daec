// Texts of the driver level: what goes to hostDriverError, and the two statement-level texts of the csv store and
// loader, which alone of all texts do not pass through the catalogue.
#pragma once

namespace quillet::msg {

inline constexpr const char* accessDenied = "access denied";                             // code 1
inline constexpr const char* operationNotSupported = "operation not supported";          // code 1
inline constexpr const char* cannotCreateBook = "cannot create book";                    // codes 2 and 4
inline constexpr const char* openForReadingOnly = "file already open for reading only";  // code 2
inline constexpr const char* outOfMemory = "out of memory";                              // code 3
inline constexpr const char* failedToLoad = "failed to load data";                       // code 5

inline constexpr const char* storeOutOfMemory = "SHEET: Out of memory error.\n";           // untranslated
inline constexpr const char* loadBufferOverflow = "SHEET: Buffer overflow at line %d.\n";  // untranslated

}  // namespace quillet::msg

namespace quillet {

/// Codes of hostDriverError.
enum DriverErrorCode : int {
    errAccess = 1,
    errNotSupported = 1,
    errEngine = 2,
    errOpenForReading = 2,
    errNoMemory = 3,
    errNoTable = 4,
    errCsvLoad = 5,
    errLoadForUpdate = 6,
    errLoad = 7,
    errSave = 8,
};

}  // namespace quillet
