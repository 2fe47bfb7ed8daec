#include "drawing/objects/chart_sheet.h"

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/container/xls.h"
#include "drawing/objects/renumber.h"

namespace vellum {

std::size_t ChartSheet::read(Xls& in, std::size_t recordSize) {
    keepRecord(in, {id, static_cast<std::uint16_t>(recordSize)});
    for (int depth = 1; depth > 0;) {
        const auto header = in.nextRecord();
        if (!header) break;
        keepRecord(in, *header);
        if (header->id == record_id::Bof) ++depth;
        if (header->id == record_id::Eof) --depth;
    }
    return _wire.size();
}

// A chart that holds a drawing longer than a record, of which the pieces could not be told from the parts of texts
// without reading these, keeps its identifiers.
void ChartSheet::renumber(drawing::DrawingGroup& group, std::uint32_t usedDgid) {
    std::vector<std::byte> bytes;
    const auto forEachPiece = [this](auto&& use) {
        for (std::size_t at = 0; at + recordHeaderSize <= _wire.size();) {
            const auto size = loadLe<std::uint16_t>(&_wire[at + 2]);
            const std::size_t body = at + recordHeaderSize;
            if (loadLe<std::uint16_t>(&_wire[at]) == record_id::MsoDrawing) use(std::span(_wire).subspan(body, size));
            at = body + size;
        }
    };
    forEachPiece([&](std::span<std::byte> piece) { bytes.insert(bytes.end(), piece.begin(), piece.end()); });
    if (bytes.empty() || bytes.size() > maxRecordBody) return;
    drawing::renumberDrawing(bytes, group, usedDgid);
    auto rest = std::span<const std::byte>(bytes);
    forEachPiece([&](std::span<std::byte> piece) {
        std::ranges::copy(rest.first(piece.size()), piece.begin());
        rest = rest.subspan(piece.size());
    });
}

}  // namespace vellum
