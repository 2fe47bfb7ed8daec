// The texts of archive errors.
#pragma once

namespace zip::msg {

inline constexpr const char* damaged = "Damaged or not a zip file.";
inline constexpr const char* crcMismatch = "Crc is mismatched.";
inline constexpr const char* notEnoughMemory = "Not enough memory.";
inline constexpr const char* internalError = "An internal error.";
inline constexpr const char* fileError = "A file error occurred";
inline constexpr const char* noCentralDirectory =
    "The central directory was not found in the archive (or you were trying to open not the last volume of a segmented "
    "archive).";
inline constexpr const char* noZip64Directory =
    "The Zip64 central directory signature was not found in the archive where expected.";
inline constexpr const char* bytesBeforeZip64 =
    "The number of bytes before a zip archive must be zero in the Zip64 format.";
inline constexpr const char* wrongPassword = "An incorrect password set for the file being decrypted.";
inline constexpr const char* tooLarge = "The file size is too large to be supported.";
inline constexpr const char* incorrectSize = "incorrect file size in archive";
inline constexpr const char* allocationFailure = "Zip Memory Allocation Failure";

inline constexpr const char* zlibStreamEnd = "Zlib library error (end of stream).";
inline constexpr const char* zlibStream = "Zlib library error (stream error).";
inline constexpr const char* zlibData = "Zlib library error (data error).";
inline constexpr const char* zlibBuffer = "Zlib library error (buffer error).";
inline constexpr const char* zlibVersion = "Zlib library error (version error).";

inline constexpr const char* bzipSequence = "Bzlib library sequence error.";
inline constexpr const char* bzipParameters = "Bzlib library parameters error.";
inline constexpr const char* bzipMemory = "Bzlib library memory error.";
inline constexpr const char* bzipData = "Bzlib library data error.";
inline constexpr const char* bzipIo = "Bzlib library IO error.";
inline constexpr const char* bzipInternal = "Bzlib library internal error.";
inline constexpr const char* bzipMagic = "Bzlib library error (invalid magic value).";
inline constexpr const char* bzipEof = "Bzlib library error (unexpected EOF).";
inline constexpr const char* bzipFull = "Bzlib library error (buffer full).";
inline constexpr const char* bzipConfiguration = "Bzlib library configuration error.";

}  // namespace zip::msg
