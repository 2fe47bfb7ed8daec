#include "bindery/values/binary.h"

#include <array>

namespace bindery {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";
constexpr char base64Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> inverse(std::string_view digits) {
    std::array<std::int8_t, 256> table{};
    for (auto& entry : table) entry = -1;
    for (std::size_t i = 0; i < digits.size(); ++i)
        table[static_cast<unsigned char>(digits[i])] = static_cast<std::int8_t>(i);
    return table;
}

constexpr auto base64Values = inverse({base64Digits, 64});
constexpr auto hexValues = [] {
    auto table = inverse({hexDigits, 16});
    for (unsigned char c = 'A'; c <= 'F'; ++c) table[c + 32u] = table[c];
    return table;
}();

}  // namespace

bool c_binary::fromHex(std::string_view text) {
    bytes.clear();
    unsigned pending = 0;
    bool half = text.size() % 2 != 0;  // an odd number of digits has a zero before it
    for (const char c : text) {
        const int digit = hexValues[static_cast<unsigned char>(c)];
        if (digit < 0) return false;
        pending = pending << 4 | static_cast<unsigned>(digit);
        if (half) {
            bytes.push_back(static_cast<std::uint8_t>(pending));
            pending = 0;
        }
        half = !half;
    }
    return true;
}

bool c_binary::fromBase64(std::string_view text) {
    bytes.clear();
    unsigned pending = 0, bits = 0;
    std::size_t digits = 0, padding = 0;
    for (const char c : text) {
        if (c == ' ') continue;
        if (c == '=') {
            ++padding;
            continue;
        }
        const int digit = base64Values[static_cast<unsigned char>(c)];
        if (digit < 0 || padding != 0) return false;
        ++digits;
        pending = (pending << 6 | static_cast<unsigned>(digit)) & 0xFFFFu;
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes.push_back(static_cast<std::uint8_t>(pending >> bits));
    }
    return (digits + padding) % 4 == 0 && padding <= 2;
}

std::string c_binary::hex() const {
    std::string out;
    for (const std::uint8_t byte : bytes) (out += hexDigits[byte >> 4]) += hexDigits[byte & 15];
    return out;
}

std::string c_binary::base64() const {
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        unsigned group = 0;
        for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < n ? bytes[i + k] : 0u);
        for (std::size_t k = 0; k < 4; ++k) out += k <= n ? base64Digits[group >> (18 - 6 * k) & 63] : '=';
    }
    return out;
}

}  // namespace bindery
