#include "drawing/pictures/dgg_container.h"

#include "drawing/art/messages.h"

namespace vellum {
namespace drawing {

OfficeArtBStoreContainer::OfficeArtBStoreContainer(const OfficeArtBStoreContainer& other)
    : OfficeArtRecord(other), rest(other.rest) {
    for (const auto& record : other.records) add(record->clone());
}

void OfficeArtBStoreContainer::add(std::unique_ptr<OfficeArtRecordBase> record) {
    if (auto* const entry = dynamic_cast<OfficeArtFBSE*>(record.get())) entries.push_back(entry);
    records.push_back(std::move(record));
}

void OfficeArtBStoreContainer::readBody(ArtInput& in, std::size_t size) {
    while (true) {
        auto record = ArtTypes<OfficeArtFBSE>::readNext(in, size);
        if (record == nullptr) record = BlipTypes::readNext(in, size);
        if (record == nullptr) break;
        add(std::move(record));
    }
    const auto bytes = in.take(size);
    rest.assign(bytes.begin(), bytes.end());
}

void OfficeArtBStoreContainer::writeBody(ArtOutput& out) const {
    for (const auto& record : records) record->write(out);
    out.write(rest);
}

std::size_t OfficeArtBStoreContainer::bodySize() const {
    std::size_t size = rest.size();
    for (const auto& record : records) size += record->size();
    return size;
}

const char* OfficeArtBStoreContainer::overrun(bool) const {
    return msg::pictureList;
}

}  // namespace drawing

template <class Self, class Visit>
void OfficeArtDggContainer::members(Self& self, Visit&& visit) {
    visit(self.fdgg);
    visit(self.pictures);
    visit(self.fopt);
    visit(self.tertiary);
    visit(self.colorMru);
    visit(self.splitMenuColors);
}

void OfficeArtDggContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    members(*this, [&](auto& member) { member.read(in, size); });
    const auto bytes = in.take(size);
    tail.assign(bytes.begin(), bytes.end());
}

void OfficeArtDggContainer::writeBody(drawing::ArtOutput& out) const {
    members(*this, [&](const auto& member) { member.write(out); });
    out.write(tail);
}

std::size_t OfficeArtDggContainer::bodySize() const {
    std::size_t size = tail.size();
    members(*this, [&](const auto& member) { size += member.size(); });
    return size;
}

}  // namespace vellum
