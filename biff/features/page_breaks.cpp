#include "biff/features/page_breaks.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/features/feature_messages.h"

namespace vellum::biff {
namespace {

// Older files hold positions alone.
PageBreaks::List readList(Cursor in, bool biff5, const char* record, std::uint16_t end) {
    const std::size_t entrySize = biff5 ? sizeof(std::uint16_t) : wireSize<PageBreak>();
    if (in.left() < sizeof(std::uint16_t)) throwBadSize(record);
    const std::size_t count = in.get<std::uint16_t>();
    if (in.left() != count * entrySize) throwBadSize(record);
    PageBreaks::List breaks(count);
    for (PageBreak& each : breaks) {
        if (biff5) {
            each = {in.get<std::uint16_t>(), 0, end};
        } else {
            readFields(in, each);
        }
    }
    return breaks;
}

void writeList(Xls& out, std::uint16_t id, PageBreaks::List& breaks) {
    if (breaks.empty()) return;
    std::ranges::stable_sort(breaks, {}, &PageBreak::position);
    const auto count = static_cast<std::uint16_t>(breaks.size());
    Sink& sink = out.out();
    sink.putAll(id, static_cast<std::uint16_t>(sizeof count + wireSize<PageBreak>() * count), count);
    for (const PageBreak& each : breaks) writeFields(sink, each);
}

}  // namespace

bool PageBreaks::read(RecordHeader header, Xls& in, bool biff5) {
    switch (header.id) {
        case record_id::HorizontalPageBreaks:
            _rows = readList(in.body(header.size), biff5, "HorizontalPageBreaks", 255);
            return true;
        case record_id::VerticalPageBreaks:
            _columns = readList(in.body(header.size), biff5, "VerticalPageBreaks", 65535);
            return true;
        default:
            return false;
    }
}

void PageBreaks::write(Xls& out) {
    writeList(out, record_id::HorizontalPageBreaks, _rows);
    writeList(out, record_id::VerticalPageBreaks, _columns);
}

void PageBreaks::set(List& breaks, const PageBreak& wanted, bool enable) {
    const auto found = std::ranges::find(breaks, wanted.position, &PageBreak::position);
    if (!enable) {
        if (found == breaks.end()) throw vlerror(msg::pageBreakNotFound);
        breaks.erase(found);
        return;
    }
    if (found != breaks.end()) throw vlerror(msg::pageBreakExists);
    if (breaks.size() >= maxBreaks) throw vlerror(msg::tooManyPageBreaks);
    breaks.push_back(wanted);
}

}  // namespace vellum::biff
