// Records that are kept as bytes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/container/record_ids.h"
#include "biff/container/xls.h"

namespace vellum {

/// Whether a record of identifier `next`, right behind one of `parent` and what already continues that, is a part of
/// it: any of the four CONTINUE records behind anything, and the followers of a few parents.
bool continuesRecord(std::uint16_t parent, std::uint16_t next);

/// A record and all that continues it, in their wire form: headers and bodies, one after the other. Moved away from
/// its parent a continuation would attach to a stranger, so they travel together.
struct RawRecord {
    std::uint16_t id = 0;  // 0: absent
    std::vector<std::byte> wire;

    [[nodiscard]] bool absent() const { return wire.empty(); }
    /// The first record's body. Empty when absent.
    [[nodiscard]] std::span<const std::byte> body() const;
    [[nodiscard]] std::span<std::byte> body();

    /// From behind a header that was just taken. Takes what continues the record too.
    static RawRecord read(Xls& xls, RecordHeader header);
    /// A record of the book's own making; `bytes` at most `maxRecordBody`.
    static RawRecord make(std::uint16_t id, std::span<const std::byte> bytes);
    void write(Xls& xls) const;
};

/// Takes the body behind a header that was just taken and what continues it, and answers all of it in wire form with
/// the header, in place.
std::span<const std::byte> takeRaw(Xls& xls, RecordHeader header);

}  // namespace vellum
