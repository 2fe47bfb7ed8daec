#include "biff/records/ext_string.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <new>

#include "biff/container/messages.h"
#include "biff/records/continue_writer.h"

namespace vellum {
namespace {

/// `count` values in the pool, which aligns to 4 bytes only. They are never destroyed.
template <class T>
T* inPool(StringPool& pool, std::size_t count = 1) {
    static_assert(std::is_trivially_destructible_v<T>);
    std::size_t space = count * sizeof(T) + alignof(T);
    void* at = pool.allocateBytes(space);
    T* const values = static_cast<T*>(std::align(alignof(T), count * sizeof(T), at, space));
    std::uninitialized_value_construct_n(values, count);
    return values;
}

/// What stands in front of the characters, in pieces between which a record may end.
struct Head {
    std::uint16_t cch = 0, runs = 0;
    std::uint32_t phoneticSize = 0;
    std::uint8_t flags = 0;
};

void takeFromBudget(std::uint16_t& budget, std::size_t n) {
    if (budget < n) throw vlerror(biff::msg::extStringSize);
    budget = static_cast<std::uint16_t>(budget - n);
}

// A record that ends within the head goes on with a flags byte, as one that ends within the characters.
bool acceptContinueWithFlags(Xls& xls, std::uint16_t& budget, std::uint8_t& flags) {
    if (!xls.acceptContinue(budget) || budget == 0) return false;
    flags = static_cast<std::uint8_t>((flags & ~wideText) | (xls.readInt8() & wideText));
    --budget;
    return true;
}

const ExtStringRun* readRuns(Xls& xls, StringPool& pool, std::uint16_t count, std::uint16_t& budget) {
    ExtStringRun* const runs = inPool<ExtStringRun>(pool, count);
    for (std::uint16_t i = 0; i < count; ++i) {
        runs[i].ich = xls.readInt16(budget);
        runs[i].ifnt = xls.readInt16(budget);
    }
    return runs;
}

const ExtStringPhonetic* readPhonetic(Xls& xls, StringPool& pool, std::uint32_t size, std::uint16_t& budget) {
    if (size > xls.remaining()) throw vlerror(biff::msg::streamEnds);
    auto* const phonetic = inPool<ExtStringPhonetic>(pool);
    std::byte* const bytes = pool.allocateBytes(size);
    xls.readWithContinueRecords(bytes, size, budget);
    *phonetic = {size, bytes};
    return phonetic;
}

}  // namespace

ExtString ExtString::read(Xls& xls, StringPool& pool, std::uint16_t& budget) {
    while (budget == 0) budget = xls.readHeader().size;
    takeFromBudget(budget, 3);
    Head head;
    head.cch = xls.readInt16();
    head.flags = xls.readInt8();

    ExtString string;
    string.flags = head.flags;
    std::uint8_t width = head.flags;
    if (head.cch == 0 && budget == 0) {
        string.flags &= static_cast<std::uint8_t>(~(richText | phoneticText));
        return string;
    }
    acceptContinueWithFlags(xls, budget, width);
    if ((head.flags & richText) != 0) {
        takeFromBudget(budget, sizeof head.runs);
        head.runs = xls.readInt16();
    }
    if ((head.flags & phoneticText) != 0) {
        takeFromBudget(budget, sizeof head.phoneticSize);
        head.phoneticSize = xls.readInt32();
    }
    if (head.cch > 0) {
        acceptContinueWithFlags(xls, budget, width);
        string.text = readText(xls, pool, head.cch, (width & wideText) != 0, true, budget);
        string.length = head.cch;
    }
    if ((head.flags & (richText | phoneticText)) != 0) {
        auto* const format = inPool<ExtStringFormat>(pool);
        if (std::size_t{head.runs} * sizeof(ExtStringRun) > xls.remaining()) throw vlerror(biff::msg::streamEnds);
        if (head.runs > 0) format->runs = {readRuns(xls, pool, head.runs, budget), head.runs};
        if ((head.flags & phoneticText) != 0) {
            format->phonetic = readPhonetic(xls, pool, head.phoneticSize, budget);
        }
        string.format = format;
    }
    if ((string.flags & wideText) == 0 && std::ranges::any_of(string.view(), [](wchar_t c) { return c > 0xFF; })) {
        string.flags |= wideText;  // the width changed on the way; only two bytes a character hold all of it
    }
    return string;
}

void ExtString::write(ContinueWriter& out) const {
    constexpr std::size_t longestHead = 9;
    constexpr std::size_t phoneticRoom = 15;
    const bool rich = (flags & richText) != 0;
    const bool withPhonetic = (flags & phoneticText) != 0;
    if (out.budget() <= longestHead) out.startContinue();
    out.put(static_cast<std::uint16_t>(length));
    out.put(flags);
    if (rich) out.put(static_cast<std::uint16_t>(runs().size()));
    if (withPhonetic) out.put(hasPhonetic() ? format->phonetic->size : std::uint32_t{0});
    out.text(view().substr(0, length & 0xFFFF), (flags & wideText) != 0);
    if (rich) {
        for (const ExtStringRun& run : runs()) {
            out.keepTogether(sizeof run);
            out.put(run.ich);
            out.put(run.ifnt);
        }
    }
    if (withPhonetic && hasPhonetic()) {
        if (out.budget() <= phoneticRoom) out.startContinue();
        out.write({format->phonetic->bytes, format->phonetic->size});
    }
}

void ExtString::addRun(std::wstring_view more, std::uint16_t ifnt, StringPool& pool) {
    const auto before = runs();
    ExtStringRun* const all = inPool<ExtStringRun>(pool, before.size() + 1);
    std::ranges::copy(before, all);
    all[before.size()] = {static_cast<std::uint16_t>(length), ifnt};
    auto* const newFormat = inPool<ExtStringFormat>(pool);
    *newFormat = {{all, before.size() + 1}, hasPhonetic() ? format->phonetic : nullptr};

    wchar_t* const joined = pool.allocate(length + more.size() + 1);
    std::ranges::copy(view(), joined);
    std::ranges::copy(more, joined + length);
    length += static_cast<std::uint32_t>(more.size());
    joined[length] = 0;
    text = joined;
    format = newFormat;
    flags = wideText | richText;
}

bool sameString(const ExtString& a, const ExtString& b) {
    if (a.length == 0 && b.length == 0) return true;
    if (a.view() != b.view() || a.hasPhonetic() || b.hasPhonetic()) return false;
    return ((a.flags ^ b.flags) & (richText | phoneticText)) == 0 && std::ranges::equal(a.runs(), b.runs());
}

}  // namespace vellum
