#include "biff/features/header_footer.h"

#include "biff/container/record_codec.h"
#include "biff/records/unicode_string.h"

namespace vellum::biff {
namespace {

const char* nameOf(std::uint16_t id) {
    return id == record_id::Header ? "Header" : "Footer";
}

std::wstring widened(Cursor& in, std::size_t count, bool wide) {
    std::wstring text(count, L'\0');
    widenText(text.data(), in.take(count * (wide ? 2 : 1)), wide);
    return text;
}

// Where a text is longer than a record, what stands in the first one.
std::wstring textOf(Cursor in) {
    if (in.left() < 3) return {};
    const std::size_t count = in.get<std::uint16_t>();
    const bool wide = (in.get<std::uint8_t>() & wideText) != 0;
    return widened(in, std::min(count, in.left() / (wide ? 2 : 1)), wide);
}

// Two bytes, a count of 0, stand for an empty text in files of some writers.
void check(std::span<const std::byte> body, bool continued, const char* record) {
    Cursor in(body);
    if (in.empty()) return;
    if (in.left() < 2) throwBadSize(record);
    const std::size_t count = in.get<std::uint16_t>();
    if (count == 0) return;
    if (in.empty()) throwBadSize(record);
    const std::size_t width = (in.get<std::uint8_t>() & wideText) != 0 ? 2 : 1;
    if (!continued && in.left() < count * width) throwBadSize(record);
}

}  // namespace

void PageText::read(RecordHeader header, Xls& in, bool biff5) {
    _record.clear();
    if (biff5) {
        Cursor body = in.body(header.size);
        const std::size_t count = body.empty() ? 0 : body.get<std::uint8_t>();
        if (body.left() < count) throwBadSize(nameOf(header.id));
        make(header.id, widened(body, count, false), false);
        return;
    }
    _record.take(in, header);
    const auto body = std::as_const(_record).firstBody();
    check(body, _record.wire().size() > recordHeaderSize + body.size(), nameOf(header.id));
}

std::wstring PageText::text() const {
    return textOf(Cursor(_record.firstBody()));
}

void PageText::set(std::uint16_t id, std::wstring_view text) {
    if (text.size() > maxLength) throw vlerror(msg::stringTooLong);
    make(id, text, true);
}

void PageText::make(std::uint16_t id, std::wstring_view text, bool wide) {
    Sink body;
    if (!text.empty()) {
        body.putAll(static_cast<std::uint16_t>(text.size()), static_cast<std::uint8_t>(wide ? int{wideText} : 0));
        writeCharacters(body, text, wide);
    }
    _record.clear();
    _record.add(id, body.bytes());
}

}  // namespace vellum::biff
