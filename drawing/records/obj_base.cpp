#include "drawing/records/obj_base.h"

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/container/xls.h"
#include "biff/records/raw_record.h"

namespace vellum {

std::size_t ObjBase::write(Xls& out) const {
    out.writeBytes(_wire);
    return _wire.size();
}

std::span<const std::byte> ObjBase::keepRecord(Xls& in, RecordHeader header) {
    const auto body = in.take(header.size);
    const std::size_t at = _wire.size();
    _wire.resize(at + recordHeaderSize + body.size());
    storeLe(&_wire[at], header.id);
    storeLe(&_wire[at + sizeof header.id], header.size);
    std::ranges::copy(body, _wire.begin() + static_cast<std::ptrdiff_t>(at + recordHeaderSize));
    return body;
}

namespace drawing {

std::size_t StrayRecord::read(Xls& in, std::size_t recordSize) {
    const auto taken = takeRaw(in, {_id, static_cast<std::uint16_t>(recordSize)});
    _wire.assign(taken.begin(), taken.end());
    return _wire.size();
}

}  // namespace drawing
}  // namespace vellum
