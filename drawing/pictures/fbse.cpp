#include "drawing/pictures/fbse.h"

#include "biff/container/record_codec.h"
#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

constexpr std::size_t fixedSize = wireSize<drawing::FbseFields>();

std::vector<std::byte> copied(std::span<const std::byte> bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace

OfficeArtFBSE::OfficeArtFBSE(const OfficeArtFBSE& other)
    : OfficeArtRecord(other),
      entry(other.entry),
      name(other.name),
      blip(other.blip ? other.blip->clone() : nullptr),
      rest(other.rest) {}

void OfficeArtFBSE::readBody(drawing::ArtInput& in, std::size_t size) {
    if (size < fixedSize) throw vlerror(drawing::msg::pictureList);
    Cursor fields(in.take(fixedSize));
    readFields(fields, entry);
    size -= fixedSize;
    const std::size_t nameSize = std::min<std::size_t>(entry.cbName, size);
    name = copied(in.take(nameSize));
    size -= nameSize;
    blip = drawing::BlipTypes::readNext(in, size);
    rest = copied(in.take(size));
}

void OfficeArtFBSE::writeBody(drawing::ArtOutput& out) const {
    Sink fields;
    writeFields(fields, entry);
    out.write(fields.bytes());
    out.write(name);
    if (blip) blip->write(out);
    out.write(rest);
}

std::size_t OfficeArtFBSE::bodySize() const {
    return fixedSize + name.size() + (blip ? blip->size() : 0) + rest.size();
}

const char* OfficeArtFBSE::overrun(bool) const {
    return drawing::msg::pictureList;
}

}  // namespace vellum
