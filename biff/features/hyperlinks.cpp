#include "biff/features/hyperlinks.h"

#include <array>

#include "biff/container/record_codec.h"
#include "biff/features/feature_messages.h"
#include "biff/features/hyperlink_object.h"

namespace vellum::biff {
namespace {

constexpr std::array<std::uint8_t, 16> standardLink{0xD0, 0xC9, 0xEA, 0x79, 0xF9, 0xBA, 0xCE, 0x11,
                                                    0x8C, 0x82, 0x00, 0xAA, 0x00, 0x4B, 0xA9, 0x0B};
constexpr std::size_t headSize = sizeof(CellRange) + sizeof standardLink;

// An object that is longer than a record goes on in CONTINUE records, cut anywhere.
std::vector<std::byte> wholeBody(std::span<const std::byte> wire) {
    std::vector<std::byte> body;
    while (wire.size() >= recordHeaderSize) {
        const auto id = loadLe<std::uint16_t>(wire.data());
        const std::size_t size = loadLe<std::uint16_t>(wire.data() + sizeof id);
        if (id == record_id::HLinkTooltip) break;
        const auto part = wire.subspan(recordHeaderSize, size);
        body.insert(body.end(), part.begin(), part.end());
        wire = wire.subspan(recordHeaderSize + size);
    }
    return body;
}

LinkTarget targetOf(const KeptRecords& record) {
    const auto body = wholeBody(record.wire());
    return readHyperlinkObject(std::span(body).subspan(headSize));
}

}  // namespace

bool Hyperlinks::read(RecordHeader header, Xls& in) {
    if (header.id != record_id::HLink) return false;
    if (header.size < headSize) throw vlerror(msg::hyperlinkRecord);
    Link link;
    link.record.take(in, header);
    Cursor body(std::as_const(link.record).firstBody());
    link.range.rowFirst = body.get<std::uint16_t>();
    link.range.rowLast = body.get<std::uint16_t>();
    link.range.colFirst = body.get<std::uint16_t>();
    link.range.colLast = body.get<std::uint16_t>();
    targetOf(link.record);  // throws now what a reader would meet later
    _links.push_back(std::move(link));
    return true;
}

void Hyperlinks::write(Xls& out) const {
    for (const Link& link : _links) link.record.write(out);
}

std::wstring Hyperlinks::target(std::size_t index) const {
    return targetOf(_links[index].record).text();
}

void Hyperlinks::add(const CellRange& range, std::wstring_view target) {
    if (target.size() > maxRecordBody) throw vlerror(msg::stringTooLong);
    Sink body;
    body.putAll(range.rowFirst, range.rowLast, range.colFirst, range.colLast);
    body.write(std::as_bytes(std::span(standardLink)));
    writeHyperlinkObject(body, LinkTarget::of(target));
    if (body.size() > maxRecordBody) throw vlerror(msg::stringTooLong);
    Link link{range, {}};
    link.record.add(record_id::HLink, body.bytes());
    _links.push_back(std::move(link));
}

}  // namespace vellum::biff
