#include "drawing/art/record.h"

#include "biff/container/cursor.h"
#include "engine/failure/vlerror.h"

namespace vellum {

ArtHeader ArtHeader::read(std::span<const std::byte> bytes) {
    Cursor in(bytes);
    const auto verAndInstance = in.get<std::uint16_t>();
    ArtHeader header;
    header.recVer = verAndInstance & 15;
    header.recInstance = static_cast<std::uint16_t>(verAndInstance >> 4);
    header.recType = in.get<std::uint16_t>();
    header.recLen = in.get<std::uint32_t>();
    return header;
}

void ArtHeader::write(drawing::ArtOutput& out) const {
    out.put(static_cast<std::uint16_t>(recVer | recInstance << 4));
    out.put(recType);
    out.put(recLen);
}

std::size_t OfficeArtRecordBase::read(drawing::ArtInput& in, std::size_t& remaining) {
    absent = true;
    if (remaining < ArtHeader::wireSize) return 0;
    const std::size_t mark = in.position();
    const ArtHeader own = header;
    header = ArtHeader::read(in.take(ArtHeader::wireSize));
    const std::size_t left = remaining - ArtHeader::wireSize;
    const bool overlong = header.recLen > left;
    const char* const failure = overlong ? overrun(header.recLen > in.left()) : nullptr;
    if (!headerMatches() || (overlong && failure == nullptr && !readsAsFarAsItGoes())) {
        header = own;
        in.seek(mark);
        return 0;
    }
    if (overlong && !readsAsFarAsItGoes()) throw vlerror(failure);
    absent = sizeDirty = false;
    const std::size_t size = overlong ? left : header.recLen;
    readBody(in, size);
    if (failure != nullptr) throw vlerror(failure);
    in.seek(mark + ArtHeader::wireSize + size);
    remaining = left - size;
    return ArtHeader::wireSize + size;
}

std::size_t OfficeArtRecordBase::write(drawing::ArtOutput& out) const {
    if (absent) return 0;
    ArtHeader written = header;
    if (sizeDirty) written.recLen = static_cast<std::uint32_t>(bodySize());
    written.write(out);
    writeBody(out);
    return size();
}

std::size_t OfficeArtRecordBase::size() const {
    return absent ? 0 : ArtHeader::wireSize + bodySize();
}

}  // namespace vellum
