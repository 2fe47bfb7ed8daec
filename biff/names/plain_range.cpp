#include "biff/names/plain_range.h"

#include "biff/container/cursor.h"
#include "biff/container/sink.h"

namespace vellum::biff {

namespace {

constexpr std::uint16_t columnBits = 0x3FFF;  // of a column field; the two above mark relative rows and columns

template <class... Fields>
void putFields(std::vector<std::byte>& to, std::uint8_t code, Fields... fields) {
    Sink sink;
    sink.putAll(code, static_cast<std::uint16_t>(fields)...);
    to.insert(to.end(), sink.bytes().begin(), sink.bytes().end());
}

}  // namespace

std::optional<PlainRange> PlainRange::of(std::span<const std::byte> tokens) {
    const std::uint8_t code = tokens.empty() ? std::uint8_t{0} : tokenBase(tokens[0]);
    const bool isCell = code == ref3d && tokens.size() == cellSize;
    if (!isCell && !(code == area3d && tokens.size() == areaSize)) return std::nullopt;
    const auto field = [&](std::size_t i) { return loadLe<std::uint16_t>(&tokens[1 + 2 * i]); };
    const auto column = [&](std::size_t i) { return field(i) & columnBits; };
    PlainRange range;
    range.xti = field(0);
    range.area = isCell ? NameArea{field(1), field(1), column(2), column(2)}
                        : NameArea{field(1), field(2), column(3), column(4)};
    return range;
}

void PlainRange::writeArea(std::vector<std::byte>& to) const {
    putFields(to, area3d, xti, area.rowFirst, area.rowLast, area.colFirst, area.colLast);
}

std::vector<std::byte> PlainRange::tokens() const {
    std::vector<std::byte> made;
    if (area.isCell()) {
        putFields(made, ref3d, xti, area.rowFirst, area.colFirst);
    } else {
        writeArea(made);
    }
    return made;
}

void PlainRange::patchRows(std::span<std::byte> tokens) const {
    storeLe(&tokens[3], static_cast<std::uint16_t>(area.rowFirst));
    if (tokens.size() == areaSize) storeLe(&tokens[5], static_cast<std::uint16_t>(area.rowLast));
}

void PlainRange::patch(std::span<std::byte> tokens) const {
    const std::size_t columnsAt = tokens.size() == areaSize ? 7 : 5;
    storeLe(&tokens[1], xti);
    patchRows(tokens);
    storeLe(&tokens[columnsAt], static_cast<std::uint16_t>(area.colFirst));
    if (tokens.size() == areaSize) storeLe(&tokens[columnsAt + 2], static_cast<std::uint16_t>(area.colLast));
}

}  // namespace vellum::biff
