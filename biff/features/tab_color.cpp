#include "biff/features/tab_color.h"

#include "biff/container/record_codec.h"

namespace vellum::biff {
namespace {

void setBits(std::uint32_t& word, int index) {
    word = (word & ~SheetExt::indexMask) | (static_cast<std::uint32_t>(index) & SheetExt::indexMask);
}

}  // namespace

bool TabColor::read(RecordHeader header, Xls& in) {
    if (header.id != SheetExt::id) return false;
    if (header.size != shortSize && header.size != fullSize) throwBadSize(SheetExt::name);
    Cursor body = in.body(header.size);
    _ext = readPrefix<SheetExt>(body, header.size);
    _size = static_cast<std::uint8_t>(header.size);
    return true;
}

void TabColor::write(Xls& out) const {
    if (_size == 0) return;
    static_assert(wireSize<SheetExt>() == fullSize);
    Sink body;
    writeFields(body, _ext);
    out.writeRecord(SheetExt::id, body.bytes().first(_size));
}

void TabColor::resize(std::size_t size) {
    if (_size >= size) return;
    _size = static_cast<std::uint8_t>(size);
    _ext.cb = static_cast<std::uint32_t>(size);
}

void TabColor::setIndex(int index) {
    resize(shortSize);
    setBits(_ext.flags, index);
    if (_size < fullSize) return;
    setBits(_ext.flags2, index);
    _ext.xclrType = SheetExt::byIndex;
    _ext.xclrValue = static_cast<std::uint32_t>(index) & SheetExt::indexMask;
    _ext.numTint = 0;
}

void TabColor::setRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue, int nearest) {
    constexpr std::uint32_t opaque = 0xFF000000;
    resize(fullSize);
    setBits(_ext.flags, nearest);
    setBits(_ext.flags2, nearest);
    _ext.xclrType = SheetExt::rgb;
    _ext.xclrValue = opaque | static_cast<std::uint32_t>(blue) << 16 | static_cast<std::uint32_t>(green) << 8 | red;
    _ext.numTint = 0;
}

}  // namespace vellum::biff
