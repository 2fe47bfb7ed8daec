// The functions of the binary format, macro functions included.
#pragma once
#include <cstdint>
#include <string_view>

namespace vellum::formula {

struct Function {
    std::wstring_view name;
    std::uint16_t id;
    std::uint8_t count;  // arguments of a function that always has as many; 0 where the number varies or is 0
    std::uint32_t mask;  // bit i: argument i takes a reference
};

/// The id under which a call of a function that the format lacks is stored: its first operand names it.
inline constexpr std::uint16_t userDefinedId = 255;
inline constexpr std::wstring_view userDefinedName = L"USERDEFINED";

/// Names are compared exactly. Null when there is none.
const Function* functionByName(std::wstring_view name);
const Function* functionById(std::uint16_t id);

/// `userDefinedId` for a name that is not in the table.
std::uint16_t functionIdByName(std::wstring_view name);
/// "?" with a count of 0 for an id that no function has.
std::wstring_view functionNameById(std::uint16_t id, std::uint8_t& count);
/// Whether a word of a formula's text is a function, by itself or in the form of a function word (`SUM2F`). `mask` is
/// 0 when it is none.
bool isFunctionName(std::wstring_view word, std::uint32_t& mask);

}  // namespace vellum::formula
