#include "host/sources/csv_scan.h"

#include <bit>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace quillet {
namespace {

#ifdef __x86_64__

constexpr std::size_t stride = 64;  // bytes, one to each bit of a mask

/// The places of a mask's bits, behind those that are there already.
inline std::uint32_t* putPlaces(std::uint64_t mask, std::size_t base, std::uint32_t* to) {
    for (; mask; mask &= mask - 1)
        *to++ = static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(std::countr_zero(mask));
    return to;
}

inline std::uint64_t lowBits(std::size_t count) {
    return count >= stride ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

std::size_t scanSse2(const char* text, std::size_t size, char fieldSep, std::uint32_t* places) {
    const __m128i quote = _mm_set1_epi8('"'), newline = _mm_set1_epi8('\n'), separator = _mm_set1_epi8(fieldSep);
    std::uint32_t* to = places;
    for (std::size_t base = 0; base < size; base += stride) {
        std::uint64_t mask = 0;
        for (std::size_t part = 0; part < stride; part += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + base + part));
            const __m128i found = _mm_or_si128(
                _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, newline)),
                _mm_or_si128(_mm_cmpeq_epi8(bytes, separator), _mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
            mask |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(found))) << part;
        }
        to = putPlaces(mask & lowBits(size - base), base, to);
    }
    return static_cast<std::size_t>(to - places);
}

__attribute__((target("avx2,bmi"))) std::size_t scanAvx2(const char* text, std::size_t size, char fieldSep,
                                                         std::uint32_t* places) {
    const __m256i quote = _mm256_set1_epi8('"'), newline = _mm256_set1_epi8('\n');
    const __m256i separator = _mm256_set1_epi8(fieldSep), nul = _mm256_setzero_si256();
    std::uint32_t* to = places;
    for (std::size_t base = 0; base < size; base += stride) {
        std::uint64_t mask = 0;
        for (std::size_t part = 0; part < stride; part += 32) {
            const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + base + part));
            const __m256i found =
                _mm256_or_si256(_mm256_or_si256(_mm256_cmpeq_epi8(bytes, quote), _mm256_cmpeq_epi8(bytes, newline)),
                                _mm256_or_si256(_mm256_cmpeq_epi8(bytes, separator), _mm256_cmpeq_epi8(bytes, nul)));
            mask |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm256_movemask_epi8(found))) << part;
        }
        to = putPlaces(mask & lowBits(size - base), base, to);
    }
    return static_cast<std::size_t>(to - places);
}

bool hasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi");
}

#endif

}  // namespace

std::size_t scanPlainly(const char* text, std::size_t size, char fieldSep, std::uint32_t* places) {
    std::uint32_t* to = places;
    for (std::size_t i = 0; i < size; ++i) {
        const char c = text[i];
        if (c == '"' || c == '\n' || c == fieldSep || c == '\0') *to++ = static_cast<std::uint32_t>(i);
    }
    return static_cast<std::size_t>(to - places);
}

const CsvScan* usableScans() {
#ifdef __x86_64__
    static constexpr CsvScan withAvx2[] = {scanAvx2, scanSse2, scanPlainly, nullptr};
    return hasAvx2() ? withAvx2 : withAvx2 + 1;
#else
    static constexpr CsvScan plain[] = {scanPlainly, nullptr};
    return plain;
#endif
}

CsvScan fastestScan() {
    return usableScans()[0];
}

}  // namespace quillet
