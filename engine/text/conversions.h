// Conversions of characters.
#pragma once
#include <string>
#include <string_view>

#include "engine/text/string_pool.h"

// From the caller's characters to the engine's wide ones and back. `utf8` tells how a narrow text is
// coded: UTF-8, or as the C locale says. Bad input throws "Invalid UTF-8", "Invalid code point",
// "Not enough space", "Invalid UTF-16", or a text of the locale forms.
namespace vellum {

/// Into pool memory that lives as long as the book; a null gives a null. Surrogates are refused.
const wchar_t* narrowToWide(const char* text, StringPool& pool, bool utf8);
const char* wideToNarrow(const wchar_t* text, StringPool& pool, bool utf8);

/// The same for an operation's argument of either character type: a wide one is copied.
const wchar_t* toPool(const char* text, StringPool& pool, bool utf8);
const wchar_t* toPool(const wchar_t* text, StringPool& pool, bool utf8);

/// Into a string of the caller's, for texts that do not stay.
std::wstring toWide(std::string_view text, bool utf8);
std::wstring toWide(std::wstring_view text, bool utf8);
/// Surrogate pairs, as 16-bit files hold them, become one character.
std::string toNarrow(std::wstring_view text, bool utf8);

/// As `toWide` and `toNarrow` into a buffer that is reused. In locale mode a character without a
/// counterpart becomes '?' and the result is false.
bool widen(std::string_view text, std::wstring& wide, bool utf8);
bool narrow(std::wstring_view text, std::string& narrow, bool utf8);

}  // namespace vellum
