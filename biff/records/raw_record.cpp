#include "biff/records/raw_record.h"

#include <algorithm>

namespace vellum {
namespace {

struct Follower {
    std::uint16_t parent, follower;
};

constexpr Follower followers[] = {
    {record_id::AutoFilterInfo, record_id::AutoFilter},
    {record_id::AutoFilterInfo, record_id::AutoFilter12},
    {record_id::AutoFilterInfo, record_id::SortData},  // right behind the criteria; elsewhere it is a table's
    {record_id::HLink, record_id::HLinkTooltip},
    {record_id::TableStyles, record_id::TableStyle},
    {record_id::TableStyles, record_id::TableStyleElement},
};

}  // namespace

bool continuesRecord(std::uint16_t parent, std::uint16_t next) {
    switch (next) {
        case record_id::Continue:
        case record_id::ContinueFrt:
        case record_id::ContinueFrt11:
        case record_id::ContinueFrt12:
            return true;
        default:
            return std::ranges::any_of(followers,
                                       [=](const Follower& f) { return f.parent == parent && f.follower == next; });
    }
}

std::span<const std::byte> takeRaw(Xls& xls, RecordHeader header) {
    const std::span<const std::byte> first = xls.take(header.size);
    std::size_t size = recordHeaderSize + first.size();
    while (const auto next = xls.peekHeader()) {
        if (!continuesRecord(header.id, next->id)) break;
        xls.skip(recordHeaderSize);
        xls.skip(next->size);
        size += recordHeaderSize + next->size;
    }
    // The stream is one piece of memory, and the header lies right before the body.
    return {first.data() - recordHeaderSize, size};
}

}  // namespace vellum
