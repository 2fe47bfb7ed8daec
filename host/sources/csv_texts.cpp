#include "host/sources/csv_texts.h"

#include <cstdlib>
#include <cstring>

namespace quillet {
namespace {

constexpr std::size_t firstCapacity = 1024;
constexpr std::size_t largestCapacity = std::size_t{1} << 18;  // entries; a processor's cache holds what is in use
constexpr std::size_t shortestShared = 8;                      // shorter ones stand in their slots
constexpr std::size_t longestShared = 263;                     // longer texts seldom repeat, and cost more to hash
constexpr int probes = 8;                                      // so that texts made to collide cost no more than others
constexpr std::uint32_t judgedAfter = 1 << 16;                 // texts

std::uint64_t word(const char* at) {
    std::uint64_t value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

/// Of a text of at least 8 bytes; the last ones are taken twice when their number is no multiple of 8.
std::uint32_t hashOf(const char* text, std::size_t length) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = length * factor;
    for (std::size_t i = 0; i + 8 < length; i += 8) {
        hash = (hash ^ word(text + i)) * factor;
        hash ^= hash >> 32;
    }
    hash = (hash ^ word(text + length - 8)) * factor;
    return static_cast<std::uint32_t>(hash >> 32);
}

constexpr std::uint64_t tagMask = 0xFFFF;
static_assert(longestShared - shortestShared <= 0xFF);

std::uint64_t tagOf(std::uint32_t hash, std::size_t length) {
    return (hash >> 24) << 8 | (length - shortestShared);
}

char* textOf(std::uint64_t entry) {
    return reinterpret_cast<char*>(entry >> 16);
}

std::size_t lengthOf(std::uint64_t entry) {
    return (entry & 0xFF) + shortestShared;
}

std::uint64_t entryOf(const char* text, std::uint64_t tag) {
    return reinterpret_cast<std::uint64_t>(text) << 16 | tag;
}

/// Of two texts of at least 8 bytes, whose last words are compared first.
bool areEqual(const char* a, const char* b, std::size_t length) {
    const std::size_t last = length - 8;
    if (word(a + last) != word(b + last)) return false;
    for (std::size_t i = 0; i < last; i += 8) {
        if (word(a + i) != word(b + i)) return false;
    }
    return true;
}

}  // namespace

CsvTexts::~CsvTexts() {
    std::free(_entries);
}

void CsvTexts::finish() {
    std::free(_entries);
    _entries = nullptr;
    _capacity = 0;
    _finished = true;
}

CsvTexts::Arriving CsvTexts::note(const char* text, std::size_t length, char** kept) const {
    Arriving arriving{text, static_cast<std::uint32_t>(length), 0, kept};
    if (_capacity > 0 && length <= longestShared) {
        arriving.hash = hashOf(text, length);
        __builtin_prefetch(_entries + (arriving.hash & (_capacity - 1)));
    }
    return arriving;
}

char* CsvTexts::copy(const Arriving& arriving) {
    auto* const kept = static_cast<char*>(_memory.take(std::size_t{arriving.length} + 1, 1));
    if (kept) std::memcpy(kept, arriving.text, arriving.length);
    return kept;
}

/// Where the text is or would be; null when all probed places hold others.
CsvTexts::Entry* CsvTexts::place(const Arriving& arriving) const {
    const std::uint64_t tag = tagOf(arriving.hash, arriving.length);
    for (std::size_t i = 0; i < probes; ++i) {
        Entry& entry = _entries[(arriving.hash + i) & (_capacity - 1)];
        if (entry == 0) return &entry;
        if ((entry & tagMask) == tag && areEqual(textOf(entry), arriving.text, arriving.length)) return &entry;
    }
    return nullptr;
}

/// Room for twice as many entries; those that find no place among the probed ones are left out.
bool CsvTexts::grow() {
    const std::size_t before = _capacity;
    const std::size_t capacity = before ? before * 2 : firstCapacity;
    if (capacity > largestCapacity) return false;
    auto* const entries = static_cast<Entry*>(std::calloc(capacity, sizeof(Entry)));
    if (!entries) return false;
    Entry* const old = _entries;
    _entries = entries;
    _capacity = capacity;
    _used = 0;
    for (std::size_t i = 0; i < before; ++i) {
        if (old[i] == 0) continue;
        const char* const text = textOf(old[i]);
        const std::size_t length = lengthOf(old[i]);
        if (Entry* const to = place({text, static_cast<std::uint32_t>(length), hashOf(text, length), nullptr})) {
            *to = old[i];
            ++_used;
        }
    }
    std::free(old);
    return true;
}

void CsvTexts::judge() {
    if (_seen < _asked / 4) finish();
    _asked = 0;
    _seen = 0;
}

char* CsvTexts::keep(const Arriving& arriving) {
    if (_capacity == 0 || arriving.length > longestShared) return copy(arriving);
    Entry* const entry = place(arriving);
    char* kept;
    if (entry && *entry) {
        ++_seen;
        kept = textOf(*entry);
    } else {
        kept = copy(arriving);
        if (entry && kept && _used < _capacity / 2) {
            *entry = entryOf(kept, tagOf(arriving.hash, arriving.length));
            ++_used;
        }
    }
    if (++_asked == judgedAfter) judge();
    return kept;
}

bool CsvTexts::keep(const Arriving* texts, int count) {
    if (_capacity > 0) {
        for (int i = 0; i < count; ++i) {
            const Entry entry = _entries[texts[i].hash & (_capacity - 1)];
            if (entry) __builtin_prefetch(textOf(entry));
        }
    }
    for (int i = 0; i < count; ++i) {
        *texts[i].kept = keep(texts[i]);
        if (!*texts[i].kept) return false;
    }
    // Notes that were taken before the first entries existed, or before they moved, are behind us here.
    if (!_finished && _used >= _capacity / 2) grow();
    return true;
}

}  // namespace quillet
