#include "drawing/art/containers.h"

#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

using Records = std::vector<std::unique_ptr<OfficeArtRecordBase>>;

std::vector<std::byte> takeRest(drawing::ArtInput& in, std::size_t remaining) {
    const auto bytes = in.take(remaining);
    return {bytes.begin(), bytes.end()};
}

std::size_t sizeOf(const Records& records) {
    std::size_t size = 0;
    for (const auto& record : records) size += record->size();
    return size;
}

Records clones(const Records& records) {
    Records copies;
    copies.reserve(records.size());
    for (const auto& record : records) copies.push_back(record->clone());
    return copies;
}

}  // namespace

template <class Self, class Visit>
void OfficeArtSpContainer::members(Self& self, Visit&& visit) {
    visit(self.fspgr);
    visit(self.fsp);
    visit(self.fpspl);
    visit(self.fopt);
    visit(self.secondary);
    visit(self.tertiary);
    visit(self.childAnchor);
    visit(self.anchor);
    visit(self.clientData);
    visit(self.textbox);
    visit(self.secondaryBehind);
    visit(self.tertiaryBehind);
}

void OfficeArtSpContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    position = in.position() - ArtHeader::wireSize;
    members(*this, [&](auto& member) { member.read(in, size); });
    rest = takeRest(in, size);
}

void OfficeArtSpContainer::writeBody(drawing::ArtOutput& out) const {
    members(*this, [&](const auto& member) { member.write(out); });
    out.write(rest);
}

std::size_t OfficeArtSpContainer::bodySize() const {
    std::size_t size = rest.size();
    members(*this, [&](const auto& member) { size += member.size(); });
    return size;
}

// A shape that is longer than what is around it makes the group longer than its record says.
const char* OfficeArtSpContainer::overrun(bool) const {
    return drawing::msg::spgrContainer;
}

OfficeArtSpgrContainer::OfficeArtSpgrContainer(const OfficeArtSpgrContainer& other)
    : OfficeArtRecord(other),
      shape(other.shape),
      children(clones(other.children)),
      rest(other.rest),
      position(other.position),
      depth(other.depth) {}

std::unique_ptr<OfficeArtRecordBase> OfficeArtSpgrContainer::readChild(drawing::ArtInput& in,
                                                                       std::size_t& remaining) const {
    if (auto found = drawing::ArtTypes<OfficeArtSpContainer>::readNext(in, remaining)) return found;
    if (depth + 1 >= drawing::maxGroupDepth) return nullptr;
    auto group = std::make_unique<OfficeArtSpgrContainer>();
    group->depth = depth + 1;
    if (group->read(in, remaining) == 0) return nullptr;
    return group;
}

void OfficeArtSpgrContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    position = in.position() - ArtHeader::wireSize;
    children.clear();
    shape.read(in, size);
    while (auto child = readChild(in, size)) children.push_back(std::move(child));
    rest = takeRest(in, size);
}

void OfficeArtSpgrContainer::writeBody(drawing::ArtOutput& out) const {
    shape.write(out);
    for (const auto& child : children) child->write(out);
    out.write(rest);
}

std::size_t OfficeArtSpgrContainer::bodySize() const {
    return shape.size() + sizeOf(children) + rest.size();
}

const char* OfficeArtSpgrContainer::overrun(bool) const {
    return drawing::msg::spgrContainer;
}

OfficeArtSolverContainer::OfficeArtSolverContainer(const OfficeArtSolverContainer& other)
    : OfficeArtRecord(other), rules(clones(other.rules)), rest(other.rest), position(other.position) {}

void OfficeArtSolverContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    position = in.position() - ArtHeader::wireSize;
    rules.clear();
    while (auto rule = drawing::RuleTypes::readNext(in, size)) rules.push_back(std::move(rule));
    rest = takeRest(in, size);
}

void OfficeArtSolverContainer::writeBody(drawing::ArtOutput& out) const {
    for (const auto& rule : rules) rule->write(out);
    out.write(rest);
}

std::size_t OfficeArtSolverContainer::bodySize() const {
    return sizeOf(rules) + rest.size();
}

template <class Self, class Visit>
void OfficeArtDgContainer::members(Self& self, Visit&& visit) {
    visit(self.fdg);
    visit(self.frit);
    visit(self.group);
    visit(self.background);
    visit(self.solver);
}

void OfficeArtDgContainer::readBody(drawing::ArtInput& in, std::size_t size) {
    members(*this, [&](auto& member) { member.read(in, size); });
    rest = takeRest(in, size);
}

void OfficeArtDgContainer::writeBody(drawing::ArtOutput& out) const {
    members(*this, [&](const auto& member) { member.write(out); });
    out.write(rest);
}

std::size_t OfficeArtDgContainer::bodySize() const {
    std::size_t size = rest.size();
    members(*this, [&](const auto& member) { size += member.size(); });
    return size;
}

const char* OfficeArtDgContainer::overrun(bool) const {
    return drawing::msg::dgContainer;
}

}  // namespace vellum
