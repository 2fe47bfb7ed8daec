#include "biff/records/continue_writer.h"

#include <algorithm>

namespace vellum {

ContinueWriter::ContinueWriter(Xls& xls, std::uint16_t id, std::uint16_t continueId)
    : _xls(xls), _continueId(continueId) {
    begin(id);
}

void ContinueWriter::begin(std::uint16_t id) {
    _part = _xls.currentWritePosition();
    _xls.writeRecordHeader(id, 0);
    _size = 0;
}

void ContinueWriter::finish() {
    _xls.patchInt16(_part + static_cast<std::uint32_t>(sizeof _continueId), _size);
}

void ContinueWriter::startContinue() {
    finish();
    begin(_continueId);
}

void ContinueWriter::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        if (budget() == 0) startContinue();
        const std::size_t n = std::min(bytes.size(), budget());
        _xls.out().write(bytes.first(n));
        _size = static_cast<std::uint16_t>(_size + n);
        bytes = bytes.subspan(n);
    }
}

void ContinueWriter::text(std::wstring_view characters, bool wide) {
    const std::size_t width = wide ? 2 : 1;
    const bool fits = characters.size() * width <= budget();
    while (!characters.empty()) {
        // An odd byte of room stays unused, for narrow texts too.
        const std::size_t room = fits ? budget() : budget() & ~std::size_t{1};
        if (room == 0) {
            startContinue();
            put(static_cast<std::uint8_t>(wide ? 1 : 0));
            continue;
        }
        const std::size_t n = std::min(characters.size(), room / width);
        std::byte* to = _xls.out().room(n * width);
        for (const wchar_t c : characters.substr(0, n)) {
            *to++ = static_cast<std::byte>(c);
            if (wide) *to++ = static_cast<std::byte>(c >> 8);
        }
        _size = static_cast<std::uint16_t>(_size + n * width);
        characters.remove_prefix(n);
    }
}

void writeSplit(Xls& xls, std::uint16_t id, std::span<const std::byte> body, std::uint16_t continueId) {
    do {
        const auto part = body.first(std::min<std::size_t>(body.size(), maxRecordBody));
        xls.writeRecord(id, part);
        body = body.subspan(part.size());
        id = continueId;
    } while (!body.empty());
}

}  // namespace vellum
