#include "engine/text/text_hash.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <exception>
#include <random>

namespace vellum {
namespace {

struct Key {
    std::uint64_t low, high;
};

Key drawnKey() {
    try {
        std::random_device random;
        const auto word = [&] { return std::uint64_t{random()} << 32 | random(); };
        return {word(), word()};
    } catch (const std::exception&) {  // no source of chance: a fixed key is still a hash
        return {0x0706050403020100, 0x0F0E0D0C0B0A0908};
    }
}

/// SipHash with one round for each word and three at the end: a published hash for tables that strangers fill.
class SipHash {
public:
    explicit SipHash(const Key& key)
        : _a(key.low ^ 0x736F6D6570736575),
          _b(key.high ^ 0x646F72616E646F6D),
          _c(key.low ^ 0x6C7967656E657261),
          _d(key.high ^ 0x7465646279746573) {}

    void word(std::uint64_t word) {
        _d ^= word;
        round();
        _a ^= word;
    }

    std::uint64_t result() {
        _c ^= 0xFF;
        for (int i = 0; i < 3; ++i) round();
        return _a ^ _b ^ _c ^ _d;
    }

private:
    void round() {
        _a += _b;
        _b = std::rotl(_b, 13) ^ _a;
        _a = std::rotl(_a, 32);
        _c += _d;
        _d = std::rotl(_d, 16) ^ _c;
        _a += _d;
        _d = std::rotl(_d, 21) ^ _a;
        _c += _b;
        _b = std::rotl(_b, 17) ^ _c;
        _c = std::rotl(_c, 32);
    }

    std::uint64_t _a, _b, _c, _d;
};

std::size_t hashOfBytes(const void* bytes, std::size_t size) {
    static const Key key = drawnKey();
    SipHash hash(key);
    const char* at = static_cast<const char*>(bytes);
    std::uint64_t word = 0;
    for (std::size_t left = size; left >= sizeof word; left -= sizeof word, at += sizeof word) {
        std::memcpy(&word, at, sizeof word);
        hash.word(word);
    }
    word = std::uint64_t{size} << 56;  // the rest, and the size
    std::memcpy(&word, at, size % sizeof word);
    hash.word(word);
    return static_cast<std::size_t>(hash.result());
}

}  // namespace

std::size_t textHash(std::wstring_view text) {
    return hashOfBytes(text.data(), text.size() * sizeof(wchar_t));
}

std::size_t textHash(std::string_view text) {
    return hashOfBytes(text.data(), text.size());
}

}  // namespace vellum
