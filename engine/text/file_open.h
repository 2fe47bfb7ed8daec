// Files by names of either character type.
#pragma once
#include <fstream>
#include <string>

#include "engine/text/string_pool.h"

namespace vellum {

/// The one way to open a file: a char name is used byte by byte as it stands, a wide one is narrowed
/// first. The stream is binary; whether it is open is for the caller to ask.
std::fstream openFile(const char* name, std::ios_base::openmode mode, StringPool& pool, bool utf8);
std::fstream openFile(const wchar_t* name, std::ios_base::openmode mode, StringPool& pool, bool utf8);

/// The name in the file system's bytes.
std::string fileName(const char* name, StringPool& pool, bool utf8);
std::string fileName(const wchar_t* name, StringPool& pool, bool utf8);

inline constexpr std::ios_base::openmode forReading = std::ios_base::in | std::ios_base::binary;

}  // namespace vellum
