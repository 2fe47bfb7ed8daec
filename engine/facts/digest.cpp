#include "engine/facts/digest.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace vellum {
namespace {

constexpr std::size_t blockSize = 64;

using State = std::array<std::uint32_t, 4>;

// The integer part of 2^32 times the sine of each step's number, in radians.
const std::array<std::uint32_t, 64>& sines() {
    static const auto table = [] {
        std::array<std::uint32_t, 64> values{};
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = static_cast<std::uint32_t>(std::abs(std::sin(static_cast<double>(i + 1))) * 4294967296.0);
        }
        return values;
    }();
    return table;
}

constexpr int rotations[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

void addBlock(State& state, const std::byte* block) {
    std::uint32_t words[16];
    std::memcpy(words, block, blockSize);
    std::uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    const auto step = [&](std::uint32_t mixed, std::size_t i, std::size_t word) {
        const std::uint32_t sum = a + mixed + sines()[i] + words[word];
        a = d;
        d = c;
        c = b;
        b += std::rotl(sum, rotations[i / 16][i % 4]);
    };
    for (std::size_t i = 0; i < 16; ++i) step((b & c) | (~b & d), i, i);
    for (std::size_t i = 16; i < 32; ++i) step((d & b) | (~d & c), i, (5 * i + 1) % 16);
    for (std::size_t i = 32; i < 48; ++i) step(b ^ c ^ d, i, (3 * i + 5) % 16);
    for (std::size_t i = 48; i < 64; ++i) step(c ^ (b | ~d), i, 7 * i % 16);
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
}

}  // namespace

Digest md5(std::span<const std::byte> bytes) {
    State state{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    while (bytes.size() >= blockSize) {
        addBlock(state, bytes.data());
        bytes = bytes.subspan(blockSize);
    }
    // What is left, a bit that ends it, and the length in bits at the end of the last block.
    std::array<std::byte, 2 * blockSize> end{};
    if (!bytes.empty()) std::memcpy(end.data(), bytes.data(), bytes.size());
    end[bytes.size()] = std::byte{0x80};
    const std::size_t size = bytes.size() + 1 + sizeof bits <= blockSize ? blockSize : 2 * blockSize;
    std::memcpy(&end[size - sizeof bits], &bits, sizeof bits);
    for (std::size_t at = 0; at < size; at += blockSize) addBlock(state, &end[at]);
    Digest uid;
    std::memcpy(uid.data(), state.data(), uid.size());
    return uid;
}

}  // namespace vellum
