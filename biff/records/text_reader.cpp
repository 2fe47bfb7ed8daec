#include "biff/records/text_reader.h"

#include <algorithm>

#include "biff/container/messages.h"

namespace vellum {

void widenText(wchar_t* to, std::span<const std::byte> bytes, bool wide) {
    if (!wide) {
        std::ranges::transform(bytes, to, [](std::byte b) { return static_cast<wchar_t>(b); });
        return;
    }
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) *to++ = loadLe<std::uint16_t>(bytes.data() + i);
}

const wchar_t* readText(Xls& xls, StringPool& pool, std::size_t cch, bool wide, bool hasFlags, std::uint16_t& budget) {
    // The bytes that must follow are at most a quarter of what is allocated here, so a false count costs little
    // before it throws.
    wchar_t* const text = pool.allocate(cch + 1);
    for (std::size_t done = 0; done < cch;) {
        while (budget == 0) {
            const RecordHeader header = xls.readHeader();
            if (header.id != record_id::Continue) throw vlerror(biff::msg::stringNotContinued);
            budget = header.size;
            if (budget == 0 || !hasFlags) continue;
            wide = (xls.readInt8() & wideText) != 0;
            --budget;
        }
        const std::size_t width = wide ? 2 : 1;
        const std::size_t n = std::min(cch - done, budget / width);
        if (n == 0) {  // half a character, which no sound writer leaves behind
            xls.skip(budget);
            budget = 0;
            continue;
        }
        widenText(text + done, xls.take(n * width), wide);
        done += n;
        budget = static_cast<std::uint16_t>(budget - n * width);
    }
    text[cch] = 0;
    return text;
}

}  // namespace vellum
