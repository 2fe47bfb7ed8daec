#include "engine/facts/password_hash.h"

namespace vellum {
namespace {

constexpr std::uint32_t hashConstant = 0xCE4B;

std::uint32_t rotated15(std::uint32_t value) {
    return ((value >> 14) & 1) | ((value << 1) & 0x7FFF);
}

std::uint32_t byteOf(wchar_t c) {
    const auto code = static_cast<std::uint32_t>(c);
    return (code & 0xFF) != 0 ? code & 0xFF : (code >> 8) & 0xFF;
}

}  // namespace

std::uint16_t passwordHash(std::wstring_view password) {
    std::uint32_t hash = 0;
    for (auto c = password.rbegin(); c != password.rend(); ++c) hash = rotated15(hash) ^ byteOf(*c);
    return static_cast<std::uint16_t>(rotated15(hash) ^ static_cast<std::uint32_t>(password.size()) ^ hashConstant);
}

}  // namespace vellum
