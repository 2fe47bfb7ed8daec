#include "xlsx/package/part_windows.h"

#include "zip/entry_stream.h"

namespace vellum {

PartWindows::PartWindows(zip::EntryStream& stream) : _stream(stream) {
    extend(_bytes.data());
}

std::string_view PartWindows::extend(const char* keep) {
    _bytes.erase(_bytes.begin(), _bytes.begin() + (keep - _bytes.data()));
    const auto piece = _stream.next();
    const char* const from = reinterpret_cast<const char*>(piece.data());
    _bytes.insert(_bytes.end(), from, from + piece.size());
    _ended = piece.empty();
    _window = {_bytes.data(), _bytes.size()};
    return _window;
}

void PartWindows::finish() {
    while (!_ended) _ended = _stream.next().empty();
}

}  // namespace vellum
