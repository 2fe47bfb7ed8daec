#include "drawing/objects/chart_drawings.h"

#include <algorithm>
#include <type_traits>

#include "biff/container/wire_records.h"
#include "drawing/art/containers.h"
#include "drawing/objects/renumber.h"
#include "drawing/pictures/drawing_group.h"
#include "drawing/pictures/picture_uses.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

/// Tells the pieces of one drawing from other records, in their order. Behind the first 8,224 bytes of a drawing its
/// pieces are CONTINUE records, which follow a piece, an object with its chart, or a text; a text has CONTINUE records
/// of its own, as many as its lengths ask for. Those behind any other record go on with that.
template <class Byte>
class PieceFinder {
public:
    void add(std::uint16_t id, std::span<Byte> body) {
        if (isPiece(id, body)) _pieces.push_back(body);
    }
    std::vector<std::span<Byte>>& pieces() { return _pieces; }

private:
    bool isPiece(std::uint16_t id, std::span<const std::byte> body) {
        if (id == record_id::Continue) return _isOpen && !takenByText(body);
        _charsLeft = _runBytesLeft = 0;
        if (id == record_id::TxO) expectText(body);
        if (id == record_id::MsoDrawing) _isOpen = true;
        if (id != record_id::MsoDrawing && id != record_id::Obj && id != record_id::TxO) _isOpen = false;
        return id == record_id::MsoDrawing;
    }

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

    std::vector<std::span<Byte>> _pieces;
    bool _isOpen = false;
    std::size_t _charsLeft = 0, _runBytesLeft = 0;
};

/// Calls `visit(bytes, drawing)` for each drawing, and puts the bytes back where they may be changed. What is no
/// drawing after all is passed by: nothing of a chart has to be what it looks like.
template <class Byte, class Visit>
void forEachDrawing(std::span<Byte> wire, Visit&& visit) {
    const auto read = [&visit](const std::vector<std::span<Byte>>& pieces) {
        std::vector<std::byte> bytes;
        for (const auto piece : pieces) bytes.insert(bytes.end(), piece.begin(), piece.end());
        OfficeArtDgContainer drawing;
        try {
            ArtInput in(bytes);
            std::size_t remaining = bytes.size();
            if (drawing.read(in, remaining) == 0 || drawing.fdg.absent) return;
        } catch (const vlerror&) {
            return;
        }
        visit(bytes, drawing);
        if constexpr (!std::is_const_v<Byte>) {
            auto rest = std::span<const std::byte>(bytes);
            for (const auto piece : pieces) {
                std::ranges::copy(rest.first(piece.size()), piece.begin());
                rest = rest.subspan(piece.size());
            }
        }
    };
    std::vector<PieceFinder<Byte>> open;  // one for each sheet inside another
    biff::forEachWireRecord(wire, [&](std::uint16_t id, std::span<Byte> body, int) {
        if (id == record_id::Bof) {
            open.emplace_back();
        } else if (open.empty()) {
            return;
        } else if (id == record_id::Eof) {
            read(open.back().pieces());
            open.pop_back();
        } else {
            open.back().add(id, body);
        }
    });
    for (auto& cut : open) read(cut.pieces());
}

}  // namespace

void joinGroup(std::span<std::byte> wire, DrawingGroup& group, std::uint32_t usedDgid) {
    forEachDrawing(wire, [&](std::span<std::byte> bytes, const OfficeArtDgContainer& drawing) {
        renumberDrawing(bytes, drawing, group, usedDgid);
        forEachShape(drawing.group, [&group](const OfficeArtSpContainer& shape) { addUses(group, shape); });
    });
}

void leaveGroup(std::span<const std::byte> wire, DrawingGroup& group) {
    forEachDrawing(wire, [&](std::span<const std::byte>, const OfficeArtDgContainer& drawing) {
        forEachShape(drawing.group, [&group](const OfficeArtSpContainer& shape) { dropUses(group, shape); });
        group.removeDrawing(drawing.fdg.header.recInstance, drawing.fdg.csp);
    });
}

std::vector<std::byte> withoutDrawings(std::span<const std::byte> wire) {
    constexpr std::uint16_t partIds[] = {record_id::MsoDrawing, record_id::Obj, record_id::TxO, record_id::Note,
                                         record_id::MsoDrawingSelection};
    std::vector<std::byte> kept;
    bool isPart = false;
    const std::byte* at = wire.data();
    biff::forEachWireRecord(wire, [&](std::uint16_t id, std::span<const std::byte> body, int depth) {
        const std::byte* const end = body.data() + body.size();
        const bool isInner = depth > 1 || (depth == 1 && id == record_id::Eof);  // a chart of the drawing
        if (id != record_id::Continue) isPart = isInner || std::ranges::count(partIds, id) != 0;
        if (!isPart) kept.insert(kept.end(), at, end);
        at = end;
    });
    return kept;
}

}  // namespace vellum::drawing
