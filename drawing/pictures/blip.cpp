#include "drawing/pictures/blip.h"

#include <zlib.h>

#include <algorithm>

#include "biff/container/cursor.h"
#include "biff/container/record_codec.h"
#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr std::size_t metafileHeaderSize = wireSize<MetafileHeader>();
// Deflated data grow to at most this many times their bytes.
constexpr std::size_t maxInflation = 1032;

PictureUid readUid(Cursor& in) {
    PictureUid uid;
    std::ranges::transform(in.take(uid.size(), msg::blipCorrupt), uid.begin(),
                           [](std::byte b) { return std::to_integer<std::uint8_t>(b); });
    return uid;
}

// As much as `cb` says. Data that end before are given as they are; more of them, or broken ones, are a failure.
std::vector<std::byte> inflate(std::span<const std::byte> deflated, std::uint32_t cb) {
    if (cb / maxInflation > deflated.size()) throw vlerror(msg::compressedData);
    std::vector<std::byte> out(cb);
    auto size = static_cast<uLongf>(cb);
    const int result = uncompress(reinterpret_cast<Bytef*>(out.data()), &size,
                                  reinterpret_cast<const Bytef*>(deflated.data()), deflated.size());
    if (result != Z_OK) throw vlerror(msg::compressedData);
    out.resize(size);
    return out;
}

}  // namespace

void BlipContent::read(std::span<const std::byte> body, bool hasSecondUid, bool isMetafile) {
    Cursor in(body);
    uid = readUid(in);
    if (hasSecondUid) secondUid = readUid(in);
    if (isMetafile) {
        if (in.left() < metafileHeaderSize) throw vlerror(msg::blipCorrupt);
        readFields(in, metafile);
    } else {
        tag = in.get<std::uint8_t>(msg::blipCorrupt);
    }
    stored = in.rest();
    own.clear();
    inflated.clear();
}

void BlipContent::write(ArtOutput& out, bool hasSecondUid, bool isMetafile) const {
    out.write(std::as_bytes(std::span(uid)));
    if (hasSecondUid) out.write(std::as_bytes(std::span(secondUid)));
    if (isMetafile) {
        Sink sink;
        writeFields(sink, metafile);
        out.write(sink.bytes());
    } else {
        out.put(tag);
    }
    out.write(bytes());
}

std::size_t BlipContent::size(bool hasSecondUid, bool isMetafile) const {
    return uid.size() * (hasSecondUid ? 2 : 1) + (isMetafile ? metafileHeaderSize : sizeof tag) + bytes().size();
}

std::span<const std::byte> BlipContent::data(bool isMetafile) {
    if (!isMetafile || metafile.compression != MetafileHeader::deflated) return bytes();
    if (inflated.empty()) inflated = inflate(bytes(), metafile.cb);
    return inflated;
}

void BlipContent::assign(std::span<const std::byte> bytes) {
    own.assign(bytes.begin(), bytes.end());
    uid = md5(own);
    metafile.cb = metafile.cbSave = static_cast<std::uint32_t>(own.size());
    metafile.rcBounds = {0, 0, 960, 720};
    metafile.compression = MetafileHeader::stored;
    metafile.filter = MetafileHeader::noFilter;
}

}  // namespace vellum::drawing
