// Characters of 8 and 16 bits into pool memory, the part that all string forms share.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "biff/container/xls.h"
#include "engine/text/string_pool.h"

namespace vellum {

/// Flags byte of a text on the wire.
enum TextFlags : std::uint8_t { wideText = 1, phoneticText = 4, richText = 8 };

/// One wide character for each of the `bytes`, or for each pair when `wide`; no surrogate is joined.
void widenText(wchar_t* to, std::span<const std::byte> bytes, bool wide);

/// `cch` characters and a null. They go on in CONTINUE records, each of which begins with a flags byte of its own that
/// says the width from there on (`hasFlags` off: no flags bytes, 8 bits a character throughout). Another record where
/// a CONTINUE is due throws "error in XLUnicodeString record #1".
const wchar_t* readText(Xls& xls, StringPool& pool, std::size_t cch, bool wide, bool hasFlags, std::uint16_t& budget);

}  // namespace vellum
