#include "biff/names/sup_book.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/container/xls.h"

namespace vellum {

namespace {

using globals::Xti;

constexpr std::uint16_t selfReference = 0x0401;
constexpr std::size_t selfSize = 4;

bool belongsToBlock(std::uint16_t id) {
    return id == record_id::ExternSheet || id == record_id::ExternName || id == record_id::Continue ||
           id == record_id::XCT || id == record_id::CRN;
}

// The bodies of a record and of its CONTINUE records.
std::vector<std::byte> wholeBody(Xls& in, RecordHeader header) {
    std::vector<std::byte> bytes;
    while (true) {
        const auto body = in.body(header.size).rest();
        bytes.insert(bytes.end(), body.begin(), body.end());
        if (in.peekRecordId() != record_id::Continue) return bytes;
        header = in.readHeader();
    }
}

bool parseTable(std::span<const std::byte> bytes, std::vector<Xti>& table) {
    Cursor in(bytes);
    if (in.left() < 2) return false;
    const std::size_t count = in.get<std::uint16_t>();
    if (in.left() != count * wireSize<Xti>() || table.size() + count > 0xFFFF) return false;
    for (std::size_t i = 0; i < count; ++i) readFields(in, table.emplace_back());
    return true;
}

void writeTable(Xls& out, std::span<const Xti> table) {
    constexpr std::size_t perRecord = (maxRecordBody - 2) / wireSize<Xti>();
    std::uint16_t id = record_id::ExternSheet;
    std::size_t at = 0;
    do {
        const auto part = table.subspan(at, std::min(perRecord, table.size() - at));
        Sink& sink = out.out();
        const std::size_t countSize = id == record_id::ExternSheet ? 2 : 0;
        sink.putAll(id, static_cast<std::uint16_t>(countSize + part.size() * wireSize<Xti>()));
        if (countSize > 0) sink.put(static_cast<std::uint16_t>(table.size()));
        for (const Xti& entry : part) writeFields(sink, entry);
        at += part.size();
        id = record_id::Continue;
    } while (at < table.size());
}

}  // namespace

void SupBookBlock::read(Xls& in, RecordHeader header) {
    head.take(in, header);
    while (belongsToBlock(in.peekRecordId())) {
        header = in.readHeader();
        if (header.id != record_id::ExternSheet) {
            (hasTable ? tail : head).take(in, header);
            continue;
        }
        const auto bytes = wholeBody(in, header);
        // Some writers make a table of its own for each reference; they count through all of them.
        if (parseTable(bytes, xti)) {
            hasTable = true;
        } else {
            // A table whose count is wrong: nobody may read it, nothing of it is lost.
            for (std::size_t at = 0; at < bytes.size(); at += maxRecordBody) {
                const auto part = std::span(bytes).subspan(at, std::min<std::size_t>(maxRecordBody, bytes.size() - at));
                tail.add(at == 0 ? record_id::ExternSheet : record_id::Continue, part);
            }
        }
    }
}

bool SupBookBlock::isSelf() const {
    const auto body = head.firstBody();
    return body.size() == selfSize && loadLe<std::uint16_t>(&body[2]) == selfReference;
}

void SupBookBlock::write(Xls& out, std::size_t sheetCount) {
    if (isSelf()) storeLe(head.firstBody().data(), static_cast<std::uint16_t>(sheetCount));
    head.write(out);
    if (hasTable) writeTable(out, xti);
    tail.write(out);
}

}  // namespace vellum
