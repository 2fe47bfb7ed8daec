#include "xlsx/package/relationships.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace vellum {
namespace {

std::string withoutBlanks(std::string_view target) {
    std::string written;
    for (const char c : target) c == ' ' ? written += "%20" : written += c;
    return written;
}

/// What came last often goes first.
template <class Iterator, class Matches>
Iterator fromBothEnds(Iterator first, Iterator past, Matches&& matches) {
    for (Iterator back = past; first != back; ++first) {
        if (matches(*first)) return first;
        if (first == --back) break;
        if (matches(*back)) return back;
    }
    return past;
}

}  // namespace

Relationships::Relationships(const PartBytes& part) : XmlFile(part) {
    buildMaps();
}

void Relationships::buildMaps() {
    _byId.clear();
    _byType.clear();
    _lastId = 0;
    for (const auto& element : std::as_const(_root).Relationship()) {
        if (!element.isset_Id()) continue;
        if (element.isset_Target()) {
            _byId[element.Id()] = {element.Type(), element.Target()};
            _byType.emplace(element.Type(), element.Target());
        }
        if (element.Id().size() <= 3) continue;
        errno = 0;
        const unsigned long number = std::strtoul(element.Id().c_str() + 3, nullptr, 10);
        if (errno == 0 && number < 0x7fffffff) _lastId = std::max(_lastId, number);
    }
    _cursor = _byType.end();
}

std::string Relationships::add(std::string_view type, std::string_view target, bool external) {
    const std::string id = "rId" + std::to_string(++_lastId);
    auto& element = _root.Relationship().append();
    element.Id(id);
    element.Type(std::string(type));
    element.Target(withoutBlanks(target));
    if (external || type == std::string(rel::transitional) + "hyperlink") element.TargetMode("External");
    _byId[id] = {std::string(type), std::string(target)};
    _byType.emplace(type, target);
    return id;
}

std::string Relationships::addUnique(std::string_view type, std::string_view target) {
    for (const auto& [id, entry] : _byId) {
        if (entry.target == target) return id;
    }
    return add(type, target);
}

std::unique_ptr<Relationships> Relationships::copyIf(
    const std::function<bool(const relationships::c_CT_Relationship&)>& isIn) const {
    auto copy = std::make_unique<Relationships>();
    for (const auto& element : std::as_const(_root).Relationship()) {
        if (isIn(element)) copy->_root.Relationship().push_back(element);
    }
    if (copy->_root.Relationship().size() == 0) return nullptr;
    copy->buildMaps();
    return copy;
}

std::string Relationships::targetById(std::string_view id) const {
    const auto found = _byId.find(id);
    return found == _byId.end() ? std::string() : found->second.target;
}

std::string Relationships::firstTargetOfType(std::string_view type) {
    _cursor = _byType.lower_bound(type);  // the first of equals, in document order
    if (_cursor != _byType.end() && _cursor->first != type) _cursor = _byType.end();
    return _cursor == _byType.end() ? std::string() : _cursor->second;
}

std::string Relationships::nextTargetOfType() {
    if (_cursor == _byType.end()) return {};
    const std::string& type = _cursor->first;
    const auto next = std::next(_cursor);
    _cursor = next != _byType.end() && next->first == type ? next : _byType.cend();
    return _cursor == _byType.end() ? std::string() : _cursor->second;
}

std::size_t Relationships::countOfTarget(std::string_view target) const {
    return static_cast<std::size_t>(
        std::count_if(_byId.begin(), _byId.end(), [&](const auto& entry) { return entry.second.target == target; }));
}

std::string Relationships::nthTargetOfType(std::size_t index, std::string_view type) const {
    auto [at, end] = _byType.equal_range(type);
    for (; at != end && index > 0; --index) ++at;
    return at == end ? std::string() : at->second;
}

std::vector<std::string> Relationships::targetsOfEnding(std::string_view ending) const {
    std::vector<std::string> targets;
    for (const char* head : {rel::transitional, rel::strict}) {
        const auto [at, end] = _byType.equal_range(std::string(head) + std::string(ending));
        for (auto entry = at; entry != end; ++entry) targets.push_back(entry->second);
    }
    return targets;
}

template <class Predicate>
void Relationships::removeFirst(Predicate matches) {
    auto& elements = _root.Relationship();
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!matches(elements[i])) continue;
        elements.erase(i);
        return rebuildMaps();
    }
}

/// An Id that was handed out stays used.
void Relationships::rebuildMaps() {
    const unsigned long lastId = _lastId;
    buildMaps();
    _lastId = std::max(_lastId, lastId);
}

void Relationships::removeIf(const std::function<bool(const relationships::c_CT_Relationship&)>& isOut) {
    auto& elements = _root.Relationship();
    const auto kept = std::remove_if(elements.begin(), elements.end(), isOut);
    if (kept == elements.end()) return;
    elements.erase(static_cast<std::size_t>(kept - elements.begin()), elements.size());
    rebuildMaps();
}

/// Where each element has its own Id the look-ups lose one entry and need not be made anew.
bool Relationships::removeAlone(std::string_view id) {
    auto& elements = _root.Relationship();
    const auto known = _byId.find(id);
    if (known == _byId.end() || _byId.size() != elements.size()) return false;
    const auto ofType = _byType.equal_range(known->second.type);
    const auto type = fromBothEnds(ofType.first, ofType.second,
                                   [&](const auto& entry) { return entry.second == known->second.target; });
    if (type == ofType.second) return false;
    elements.erase(static_cast<std::size_t>(
        fromBothEnds(elements.begin(), elements.end(), [&](const auto& element) { return element.Id() == id; }) -
        elements.begin()));
    _byType.erase(type);
    _byId.erase(known);
    _cursor = _byType.end();
    return true;
}

void Relationships::removeById(std::string_view id) {
    if (removeAlone(id)) return;
    removeFirst([&](const auto& element) { return element.isset_Id() && element.Id() == id; });
}

void Relationships::removeByTarget(std::string_view target) {
    const std::string written = withoutBlanks(target);
    removeFirst([&](const auto& element) {
        return element.isset_Target() && (element.Target() == target || element.Target() == written);
    });
}

}  // namespace vellum
