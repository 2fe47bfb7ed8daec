#pragma once

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The made-up content of the bench workbooks: a function of row and column, the same for every program that writes
// it, so that their files and times can be compared.
namespace bench {

enum class Kind { none, number, text, boolean, date };

/// "numbers:ROWS" (10 columns of numbers), "mixed:ROWS" (4 numbers, 4 texts, a boolean, a date) or "sparse:ROWS"
/// (16,000 columns, one cell in twenty).
struct Content {
    char form;
    int rows, cols;

    explicit Content(const std::string& spec) : form(spec.at(0)), rows(0), cols(form == 's' ? 16000 : 10) {
        const auto colon = spec.find(':');
        if (colon == std::string::npos) throw std::invalid_argument("content is FORM:ROWS");
        rows = std::stoi(spec.substr(colon + 1));
    }

    std::uint64_t hash(int row, int col) const {
        return mix(static_cast<std::uint64_t>(row) * static_cast<std::uint64_t>(cols) +
                   static_cast<std::uint64_t>(col));
    }

    Kind kind(int col, std::uint64_t hash) const {
        if (form == 'n') return Kind::number;
        if (form == 's') return hash / 16 % 20 == 0 ? Kind::number : Kind::none;
        if (col < 4) return Kind::number;
        if (col < 8) return Kind::text;
        return col == 8 ? Kind::boolean : Kind::date;
    }

    static std::uint64_t mix(std::uint64_t i) {
        std::uint64_t h = (i + 1) * 0x9E3779B97F4A7C15U;
        h ^= h >> 32;
        h *= 0xD6E8FEB86659FD93U;
        return h ^ h >> 32;
    }

    /// Half integers, half reals of 15 digits.
    static double number(std::uint64_t hash) {
        constexpr double powers[] = {1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};
        if (hash & 1) return static_cast<double>(hash / 16 % 1000000);
        return static_cast<double>(100000000000000U + hash / 16 % 900000000000000U) / powers[hash / 2 % 8];
    }

    static bool boolean(std::uint64_t hash) { return hash / 2 % 2 != 0; }
    static double date(std::uint64_t hash) { return 40000 + static_cast<double>(hash % 6000); }

    /// One of 50,000, made when it is first asked for.
    static const std::string& text(std::uint64_t hash) {
        constexpr std::size_t poolSize = 50000;
        constexpr std::array heads = {
            "item ", "\xC3\x96l ", "customer ", "A&B ", "x", "north-west region, unit ", "label \"q\" ", "city "};
        constexpr std::array tails = {"",         "/a",       " <new>", " long tail of the label",
                                      "\xC3\xA9", ", second", "-2024",  "_z"};
        static std::vector<std::string> pool(poolSize);
        const std::size_t i = hash % poolSize;
        if (pool[i].empty()) pool[i] = heads[i % 8] + std::to_string(i) + tails[i / 8 % 8];
        return pool[i];
    }
};

/// The cells that an update changes: number k + 0.5 in column k % 4 of this row.
constexpr int changes = 1000;
inline int changedRow(int k, int rows) {
    return static_cast<int>(Content::mix(static_cast<std::uint64_t>(k)) % static_cast<std::uint64_t>(rows));
}

}  // namespace bench
