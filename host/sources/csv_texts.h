// The texts of a loaded csv file, in blocks.
#pragma once
#include <cstddef>
#include <cstdint>

#include "host/sources/zeroed_arena.h"

namespace quillet {

/// Keeps texts until it goes. Columns of a table often repeat a few texts: as long as at least a quarter of them were
/// seen before, equal ones are kept once.
class CsvTexts {
public:
    CsvTexts() = default;
    ~CsvTexts();
    CsvTexts(const CsvTexts&) = delete;
    CsvTexts& operator=(const CsvTexts&) = delete;

    /// A text that is on its way into the table, and where the table wants it.
    struct Arriving {
        const char* text;
        std::uint32_t length;  // at least 8
        std::uint32_t hash;
        char** kept;
    };

    /// Notes a text and asks for the memory that `keep` will look at, which takes its time: several notes come before
    /// they are kept.
    Arriving note(const char* text, std::size_t length, char** kept) const;

    /// Puts texts with a NUL behind them where they are wanted, to be left as they are. False when memory is short.
    bool keep(const Arriving* texts, int count);

    /// Forgets which texts there are, so that the memory of that is free: no more come.
    void finish();

private:
    // A kept text's address over 8 bits of its hash and 8 of its length; 0 is free. Addresses of programs have 47 bits.
    using Entry = std::uint64_t;

    char* keep(const Arriving& arriving);
    char* copy(const Arriving& arriving);
    Entry* place(const Arriving& arriving) const;
    bool grow();
    void judge();

    ZeroedArena _memory;
    Entry* _entries = nullptr;
    std::size_t _capacity = 0;  // a power of two
    std::size_t _used = 0;
    std::uint32_t _asked = 0, _seen = 0;  // since the last judgement
    bool _finished = false;
};

}  // namespace quillet
