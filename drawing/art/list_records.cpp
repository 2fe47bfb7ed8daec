#include "drawing/art/list_records.h"

#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

std::vector<std::byte> copied(std::span<const std::byte> bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace

void OfficeArtFDGGBlock::readBody(drawing::ArtInput& in, std::size_t size) {
    Cursor body(in.take(size));
    spidMax = body.get<std::uint32_t>(drawing::msg::fdggBlock);
    const auto cidcl = body.get<std::uint32_t>(drawing::msg::fdggBlock);  // one more than there are clusters
    cspSaved = body.get<std::uint32_t>(drawing::msg::fdggBlock);
    cdgSaved = body.get<std::uint32_t>(drawing::msg::fdggBlock);
    const std::size_t count = cidcl == 0 ? 0 : cidcl - 1;
    if (count > body.left() / sizeof(Cluster)) throw vlerror(drawing::msg::fdggBlock);
    clusters.resize(count);
    for (Cluster& cluster : clusters) {
        cluster.dgid = body.get<std::uint32_t>();
        cluster.cspidCur = body.get<std::uint32_t>();
    }
    rest = copied(body.rest());
}

void OfficeArtFDGGBlock::writeBody(drawing::ArtOutput& out) const {
    out.put(spidMax);
    out.put(static_cast<std::uint32_t>(clusters.size() + 1));
    out.put(cspSaved);
    out.put(cdgSaved);
    for (const Cluster& cluster : clusters) {
        out.put(cluster.dgid);
        out.put(cluster.cspidCur);
    }
    out.write(rest);
}

std::size_t OfficeArtFDGGBlock::bodySize() const {
    return 16 + clusters.size() * sizeof(Cluster) + rest.size();
}

void OfficeArtFRITContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    Cursor body(in.take(size));
    if (header.recInstance > size / sizeof(Pair)) throw vlerror(drawing::msg::fritContainer);
    pairs.resize(header.recInstance);
    for (Pair& pair : pairs) {
        pair.frit = body.get<std::uint16_t>();
        pair.fritOld = body.get<std::uint16_t>();
    }
    rest = copied(body.rest());
}

void OfficeArtFRITContainer::writeBody(drawing::ArtOutput& out) const {
    for (const Pair& pair : pairs) {
        out.put(pair.frit);
        out.put(pair.fritOld);
    }
    out.write(rest);
}

std::size_t OfficeArtFRITContainer::bodySize() const {
    return pairs.size() * sizeof(Pair) + rest.size();
}

namespace drawing {

void NumberList::read(std::span<const std::byte> body) {
    Cursor in(body);
    numbers.resize(body.size() / sizeof(std::uint32_t));
    for (std::uint32_t& number : numbers) number = in.get<std::uint32_t>();
    rest = copied(in.rest());
}

void NumberList::write(ArtOutput& out) const {
    out.write(std::as_bytes(std::span(numbers)));
    out.write(rest);
}

}  // namespace drawing
}  // namespace vellum
