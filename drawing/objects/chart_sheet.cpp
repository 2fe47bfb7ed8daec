#include "drawing/objects/chart_sheet.h"

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/container/xls.h"
#include "drawing/objects/renumber.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

/// Tells the pieces from other records, in their order. Behind the first 8,224 bytes of a drawing its pieces are
/// CONTINUE records, which follow a piece, an object or a text; a text has CONTINUE records of its own, as many as
/// its lengths ask for. Those behind any other record go on with that.
class PieceFinder {
public:
    bool isPiece(std::uint16_t id, std::span<const std::byte> body) {
        if (id == record_id::Continue) return _isOpen && !takenByText(body);
        _charsLeft = _runBytesLeft = 0;
        if (id == record_id::TxO) expectText(body);
        if (id == record_id::MsoDrawing) _isOpen = true;
        if (id != record_id::MsoDrawing && id != record_id::Obj && id != record_id::TxO) _isOpen = false;
        return id == record_id::MsoDrawing;
    }

private:
    void expectText(std::span<const std::byte> body) {
        constexpr std::size_t charsAt = 10, runBytesAt = 12;
        if (body.size() < runBytesAt + sizeof(std::uint16_t)) return;
        _charsLeft = loadLe<std::uint16_t>(&body[charsAt]);
        _runBytesLeft = _charsLeft == 0 ? 0 : loadLe<std::uint16_t>(&body[runBytesAt]);
    }

    bool takenByText(std::span<const std::byte> body) {
        if (_charsLeft > 0) {
            if (body.empty()) return true;
            const std::size_t charSize = (std::to_integer<unsigned>(body.front()) & 1) != 0 ? 2 : 1;
            _charsLeft -= std::min(_charsLeft, (body.size() - 1) / charSize);
            return true;
        }
        const bool isRuns = _runBytesLeft > 0;
        _runBytesLeft -= std::min(_runBytesLeft, body.size());
        return isRuns;
    }

    bool _isOpen = false;
    std::size_t _charsLeft = 0, _runBytesLeft = 0;
};

/// The bodies of the records that make up the drawing of a chart, in their order.
std::vector<std::span<std::byte>> chartPieces(std::span<std::byte> wire) {
    PieceFinder finder;
    std::vector<std::span<std::byte>> pieces;
    for (std::size_t at = 0; at + recordHeaderSize <= wire.size();) {
        const auto id = loadLe<std::uint16_t>(&wire[at]);
        const std::size_t size = loadLe<std::uint16_t>(&wire[at + 2]), begin = at + recordHeaderSize;
        const auto body = wire.subspan(begin, std::min(size, wire.size() - begin));
        if (finder.isPiece(id, body)) pieces.push_back(body);
        at = begin + size;
    }
    return pieces;
}

}  // namespace

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

void ChartSheet::renumber(drawing::DrawingGroup& group, std::uint32_t usedDgid) {
    const auto pieces = chartPieces(_wire);
    std::vector<std::byte> bytes;
    for (const auto piece : pieces) bytes.insert(bytes.end(), piece.begin(), piece.end());
    if (bytes.empty()) return;
    try {
        drawing::renumberDrawing(bytes, group, usedDgid);
    } catch (const vlerror&) {
        return;  // no drawing after all: nothing of a chart has to be what it looks like
    }
    auto rest = std::span<const std::byte>(bytes);
    for (const auto piece : pieces) {
        std::ranges::copy(rest.first(piece.size()), piece.begin());
        rest = rest.subspan(piece.size());
    }
}

}  // namespace vellum
