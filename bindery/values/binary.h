// Bytes in hexadecimal digits or base 64.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bindery {

/// Value of a hexadecimal or base 64 type.
struct c_binary {
    std::vector<std::uint8_t> bytes;

    /// Hexadecimal digits of any case; an odd number of them is read with a leading zero.
    bool fromHex(std::string_view text);
    bool fromBase64(std::string_view text);
    std::string hex() const;  // upper case
    std::string base64() const;

    friend bool operator==(const c_binary&, const c_binary&) = default;
};

/// Value of an empty type.
struct c_empty {
    friend bool operator==(const c_empty&, const c_empty&) = default;
};

}  // namespace bindery
