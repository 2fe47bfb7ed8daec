// The texts of failures in the binary workbook's container and record stream. Texts with figures
// in them are functions.
#pragma once
#include <cstdint>
#include <string>

#include "engine/failure/messages.h"

namespace vellum::biff::msg {

using namespace vellum::msg;  // what both engines say

// Compound file, header and tables.
inline constexpr const char* fileTooSmall = "readHeader: file is corrupt (size < 512 bytes)";
inline constexpr const char* notCompoundFile = "It is not a xls file. Use the vlCreateXMLBook() for a xlsx file.";
inline constexpr const char* sectorSizeZero = "Xls::readHeader(): _sectorSize can't be 0";
inline constexpr const char* miniSectorSizeZero = "Xls::readHeader(): _miniSectorSize can't be 0";
inline constexpr const char* sectorSizeUnusable =
    "Xls::readHeader(): file is corrupt (_sectorSize must be 128 or more and hold a mini sector)";
inline constexpr const char* fileTooBig = "Xls::measure(): a xls file can't be 4 GB or more";
inline constexpr const char* difatCorruptEntries = "loadDifat: file is corrupt [1]";
inline constexpr const char* difatCorruptLink = "loadDifat: file is corrupt [2]";
inline constexpr const char* fatCorrupt = "loadFat: file is corrupt";
inline constexpr const char* miniFatSelfLink = "loadMiniFat: error in fat";
inline constexpr const char* miniFatTooLong = "error in loading minifat";
inline constexpr const char* miniFatCorrupt = "loadMiniFat: file is corrupt";
inline constexpr const char* miniFatEndless = "Xls::loadMiniFat(): file is corrupt";
inline constexpr const char* dirCorruptCount = "loadDir: file is corrupt [1]";
inline constexpr const char* dirCorruptRead = "loadDir: file is corrupt [2]";
inline constexpr const char* dirSelfLinkCount = "loadDir: error in fat [1]";
inline constexpr const char* dirEntryName = "DirEntry::DirEntry(): incorrect name";
inline constexpr const char* dirEntryNameTooBig = "DirEntry::DirEntry(): newName is too big (length must be less 32)";

std::string difatTooLong(std::uint32_t numDifatSectors);
std::string difatTooShort(std::uint32_t found, std::uint32_t numDifatSectors);
std::string fatCount(std::uint32_t found, std::uint32_t numFatSectors);
std::string dirSectorNotInFat(std::uint32_t sector);

// Compound file, streams.
inline constexpr const char* noEncryptionInfo = "Xls::read(): EncryptionInfo section is not found";
inline constexpr const char* noEncryptedPackage = "Xls::read(): EncryptedPackage section is not found";
inline constexpr const char* encryptedPackageEmpty = "Xls::read(): encryptedPackage stream is empty";
inline constexpr const char* streamEmpty = "Xls::read(): stream is empty";
inline constexpr const char* sectorOutOfFat = "Xls::read(): sector is out of fat";
inline constexpr const char* miniDirEmpty = "Xls::goMiniSector(): _dir is empty";
inline constexpr const char* keptStreamsCorrupt = "Xls::extractKeptStreams(): file is corrupt";

// Compound file, writing.
inline constexpr const char* noWritePosition = "can't get the current write position";
inline constexpr const char* streamError = "stream error, perhaps it's too small writing buffer";
inline constexpr const char* blankSectorError = "stream error";
inline constexpr const char* closeTooBig = "Xls::close(): a xls file can't be 4 GB or more";
inline constexpr const char* closeSectorOutOfFat = "Xls::close(): sector is out of fat";
inline constexpr const char* closeDifatIndex = "Xls::close(): difat index is out of range";
inline constexpr const char* closeMiniFat = "miniFatSectorLocation is out of range";
inline constexpr const char* closeStartingSector = "startingSectorLocation is out of range";

// Record stream.
inline constexpr const char* recordIdZero = "read error: record id can't be 0";
inline constexpr const char* streamEnds = "read error: unexpected end of the workbook stream";
inline constexpr const char* continueNotFound = "readWithContinueRecords: CONTINUE record not found";
inline constexpr const char* continueNotFoundInt16 = "readInt16: CONTINUE record not found";
inline constexpr const char* continueNotFoundInt32 = "readInt32: CONTINUE record not found";
inline constexpr const char* readStringNull = "Xls::readString(): s == 0";
inline constexpr const char* readStringWithoutNullNull = "Xls::readStringWithoutNull(): s == 0";
std::string badSize(const char* record);           // "Blank size is incorrect"
std::string unexpectedRecord(const char* record);  // "Blank: unexpected record"

// Strings.
inline constexpr const char* shortStringTooLong = "ShortXLUnicodeString: string is too long";
inline constexpr const char* stringNotContinued = "error in XLUnicodeString record #1";
inline constexpr const char* extStringSize = "can't read ExtString: size is incorrect";

// Cells and sheets.
inline constexpr const char* sheetIndexColumn = "SheetIndex: col can't be more than 255";
inline constexpr const char* tooManyCells = "too many cells";
inline constexpr const char* formulaBlockError = "error in record FormulaBlock";
inline constexpr const char* formulaBlockCorrupt = "FormulaBlock: file is corrupt";
inline constexpr const char* rowRange = "row must be in range 0-65535";
inline constexpr const char* colRange = "col must be in range 0-255";
inline constexpr const char* formatNull = "format is NULL";
inline constexpr const char* formatOutNull = "format mustn't be NULL";
inline constexpr const char* notString = "this cell doesn't contain a string";
inline constexpr const char* notNumber = "this cell doesn't contain a number";
inline constexpr const char* notBool = "this cell doesn't contain a bool";
inline constexpr const char* notBlank = "this cell doesn't contain a blank";
inline constexpr const char* notError = "this cell doesn't contain an error";
inline constexpr const char* notFormula = "cell doesn't contain a formula";
inline constexpr const char* unknownCell = "unknown type of cell";
inline constexpr const char* emptyCell = "empty cell";
inline constexpr const char* heightTooBig = "height is too big";
inline constexpr const char* rowOrder = "rowLast must be greater than or equal to rowFirst";
inline constexpr const char* colOrder = "colLast must be greater than or equal to colFirst";
inline constexpr const char* notMerged = "this cell isn't in merging block";
inline constexpr const char* sheetNameIncorrect = "incorrect sheet name";

}  // namespace vellum::biff::msg
