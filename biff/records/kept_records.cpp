#include "biff/records/kept_records.h"

#include <algorithm>

#include "biff/container/xls.h"
#include "biff/records/raw_record.h"

namespace vellum {

void KeptRecords::take(Xls& in, RecordHeader header) {
    const auto bytes = takeRaw(in, header);
    _wire.insert(_wire.end(), bytes.begin(), bytes.end());
}

void KeptRecords::add(std::uint16_t id, std::span<const std::byte> body) {
    const std::size_t at = _wire.size();
    _wire.resize(at + recordHeaderSize + body.size());
    storeLe(&_wire[at], id);
    storeLe(&_wire[at + 2], static_cast<std::uint16_t>(body.size()));
    std::ranges::copy(body, _wire.begin() + static_cast<std::ptrdiff_t>(at + recordHeaderSize));
}

void KeptRecords::write(Xls& out) const {
    if (!_wire.empty()) out.writeBytes(_wire);
}

std::span<const std::byte> KeptRecords::firstBody() const {
    if (_wire.empty()) return {};
    return std::span(_wire).subspan(recordHeaderSize, loadLe<std::uint16_t>(&_wire[2]));
}

std::span<std::byte> KeptRecords::firstBody() {
    if (_wire.empty()) return {};
    return std::span(_wire).subspan(recordHeaderSize, loadLe<std::uint16_t>(&_wire[2]));
}

}  // namespace vellum
