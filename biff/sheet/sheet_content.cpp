#include "biff/sheet/sheet_content.h"

#include <algorithm>

#include "biff/container/xls.h"

namespace vellum::biff {

std::unique_ptr<SheetParts> OpenSheets::parse(std::span<const std::byte> wire, const SheetLoad& what) {
    Xls in;
    in.openBytes(wire);
    auto parts = std::make_unique<SheetParts>();
    parts->features = SheetFeatures::ofFile();
    std::vector<drawing::OlderNote> notes;
    loadSheet(*parts, {in, _pool, _strings, what, false, notes, false});
    return parts;
}

void OpenSheets::opened(const SheetContent& content) noexcept {
    const SheetContent*& place = _open[_next++ % _open.size()];
    if (place != nullptr) place->_parts.reset();
    place = &content;
}

void OpenSheets::forget(const SheetContent& content) noexcept {
    std::ranges::replace(_open, &content, nullptr);
}

void SheetContent::open() const {
    _parts = _open->parse(wire(), _what);
    _open->opened(*this);
}

void SheetContent::forgetWire() {
    _open->forget(*this);
    _wire.reset();
}

SheetParts& SheetContent::replace(std::unique_ptr<SheetParts> parts) {
    forgetWire();
    _parts = std::move(parts);
    return *_parts;
}

void SheetContent::park(std::span<const std::byte> wire, const SheetLoad& what) {
    const SheetParts& parts = *_parts;
    const bool isPlain = parts.isWorksheet() && parts.drawing.empty() && parts.notes.empty() &&
                         parts.cells.all<LabelCell>().empty() && parts.cells.all<FormulaCell>().empty();
    if (wire.size() > mostBytes || !isPlain) return;
    auto bytes = std::make_unique_for_overwrite<std::byte[]>(wire.size());
    std::ranges::copy(wire, bytes.get());
    _what = what;
    _size = static_cast<std::uint16_t>(wire.size());
    _keptBytes = static_cast<std::uint16_t>(parts.kept.byteCount());
    _calcMode = parts.settings.calcMode;
    _calcRefMode = parts.settings.calcRefMode;
    _viewFlags = parts.window2.flags;
    _wire = std::move(bytes);
    _parts.reset();
}

std::size_t SheetContent::keptBytes() const {
    if (isParked()) return _keptBytes;
    return _parts->kept.byteCount() + _parts->foreign.size() + _parts->drawing.unreadBytes();
}

}  // namespace vellum::biff
