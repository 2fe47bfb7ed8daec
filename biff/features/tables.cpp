#include "biff/features/tables.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/features/shared_features.h"
#include "biff/records/unicode_string.h"

namespace vellum::biff {
namespace {

struct LeastSize {
    std::uint16_t id;
    std::uint16_t bytes;
    const char* name;
};

// Of the heads, which all writers agree on.
constexpr LeastSize leastSizes[] = {
    {record_id::FeatHdr11, 29, "FeatHdr11"}, {record_id::Feature11, 27, "Feature11"},
    {record_id::List12, 18, "List12"},       {record_id::Feature12, 27, "Feature12"},
    {record_id::SortData, 38, "SortData"},   {record_id::AutoFilter12, 58, "AutoFilter12"},
};

/// A Feature11 or Feature12 up to its ranges.
struct ListHead {
    std::array<std::uint8_t, 12> frtRefHeader{};
    std::uint16_t isf = 0;
    std::uint8_t reserved1 = 0;
    std::uint32_t reserved2 = 0;
    std::uint16_t cref = 0;
    std::uint32_t cbFeatData = 0;
    std::uint16_t reserved3 = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("frtRefHeader", r.frtRefHeader);
        visit("isf", r.isf);
        visit("reserved1", r.reserved1);
        visit("reserved2", r.reserved2);
        visit("cref", r.cref);
        visit("cbFeatData", r.cbFeatData);
        visit("reserved3", r.reserved3);
    }
};

/// What stands behind the ranges, up to the name.
struct TableHead {
    std::uint32_t lt = 0;  // 0: a range of the sheet
    std::uint32_t idList = 0;
    std::uint32_t crwHeader = 0, crwTotals = 0;
    std::uint32_t idFieldNext = 0;
    std::uint32_t cbFSData = 0;
    std::array<std::uint8_t, 40> state{};  // of a connection

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("lt", r.lt);
        visit("idList", r.idList);
        visit("crwHeader", r.crwHeader);
        visit("crwTotals", r.crwTotals);
        visit("idFieldNext", r.idFieldNext);
        visit("cbFSData", r.cbFSData);
        visit("state", r.state);
    }
};

std::span<const std::byte> bodyOf(std::span<const std::byte> wire) {
    return wire.subspan(recordHeaderSize, loadLe<std::uint16_t>(wire.data() + sizeof(std::uint16_t)));
}

bool isTable(std::span<const std::byte> wire) {
    const auto id = loadLe<std::uint16_t>(wire.data());
    if (id != record_id::Feature11 && id != record_id::Feature12) return false;
    const auto body = bodyOf(wire);
    if (body.size() < wireSize<ListHead>()) return false;
    Cursor in(body);
    ListHead head;
    readFields(in, head);
    return head.isf == static_cast<std::uint16_t>(FeatureType::list);
}

template <class Record>
Record take(Cursor& in) {
    if (in.left() < wireSize<Record>()) throwBadSize("Feature11");
    Record record;
    readFields(in, record);
    return record;
}

TableFacts factsOf(std::span<const std::byte> body) {
    Cursor in(body);
    const auto head = take<ListHead>(in);
    if (head.cref == 0 || in.left() < head.cref * sizeof(CellRange)) throwBadSize("Feature11");
    Cursor ranges(in.take(head.cref * sizeof(CellRange)));
    TableFacts facts;
    facts.area.rowFirst = ranges.get<std::uint16_t>();
    facts.area.rowLast = ranges.get<std::uint16_t>();
    facts.area.colFirst = ranges.get<std::uint16_t>();
    facts.area.colLast = ranges.get<std::uint16_t>();
    const auto table = take<TableHead>(in);
    facts.headerRows = table.crwHeader != 0 ? 1 : 0;
    facts.totalsRows = table.crwTotals != 0 ? 1 : 0;
    if (in.left() < 3) throwBadSize("Feature11");
    const std::size_t count = in.get<std::uint16_t>();
    const bool wide = (in.get<std::uint8_t>() & wideText) != 0;
    if (in.left() < count * (wide ? 2 : 1)) throwBadSize("Feature11");
    facts.name.resize(count);
    widenText(facts.name.data(), in.take(count * (wide ? 2 : 1)), wide);
    return facts;
}

}  // namespace

void checkListRecord(std::uint16_t id, std::size_t size) {
    const auto* const rule = std::ranges::find(leastSizes, id, &LeastSize::id);
    if (rule != std::end(leastSizes) && size < rule->bytes) throwBadSize(rule->name);
}

std::size_t tableTotal(const PlacedRecords& kept) {
    std::size_t total = 0;
    kept.forEach(Place::tables, [&](std::span<const std::byte> wire) { total += isTable(wire); });
    return total;
}

TableFacts tableAt(const PlacedRecords& kept, std::size_t index) {
    std::span<const std::byte> found;
    std::size_t number = 0;
    kept.forEach(Place::tables, [&](std::span<const std::byte> wire) {
        if (isTable(wire) && number++ == index) found = wire;
    });
    if (found.empty()) throw vlerror(msg::indexOutOfRange);
    return factsOf(bodyOf(found));
}

}  // namespace vellum::biff
