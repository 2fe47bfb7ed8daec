// The relationships of one part.
#pragma once
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ooxml/generated/opc-relationships/opc-relationships.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

/// Type URIs that the engine adds or asks for.
namespace rel {
inline constexpr const char* transitional = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
inline constexpr const char* strict = "http://purl.oclc.org/ooxml/officeDocument/relationships/";
}  // namespace rel

/// A `.rels` part. Elements without Id or Target are kept, and stand in no look-up.
class Relationships final : public XmlFile<relationships::c_Relationships> {
public:
    Relationships() = default;
    explicit Relationships(const PartBytes& part);

    /// Adds an element under the next free Id, which is the result. Blanks in the target are written as "%20".
    /// `external` is implied by the Transitional hyperlink type.
    std::string add(std::string_view type, std::string_view target, bool external = false);
    /// The Id that already has this target, else that of a new element.
    std::string addUnique(std::string_view type, std::string_view target);

    /// "" when there is none.
    std::string targetById(std::string_view id) const;
    std::string firstTargetOfType(std::string_view type);
    std::string nextTargetOfType();
    std::size_t countOfTarget(std::string_view target) const;
    std::string nthTargetOfType(std::size_t index, std::string_view type) const;
    /// Targets of the Transitional type with this ending, then those of the Strict one, each in document order.
    std::vector<std::string> targetsOfEnding(std::string_view ending) const;

    void removeById(std::string_view id);
    void removeByTarget(std::string_view target);
    /// Removes every element that the predicate, which is asked for each in turn, picks out.
    void removeIf(const std::function<bool(const relationships::c_CT_Relationship&)>& isOut);
    /// The elements that the predicate picks, under their Ids; null when there are none.
    [[nodiscard]] std::unique_ptr<Relationships> copyIf(
        const std::function<bool(const relationships::c_CT_Relationship&)>& isIn) const;

private:
    struct Entry {
        std::string type;
        std::string target;
    };

    void buildMaps();
    void rebuildMaps();
    bool removeAlone(std::string_view id);
    template <class Predicate>
    void removeFirst(Predicate matches);

    std::map<std::string, Entry, std::less<>> _byId;
    std::multimap<std::string, std::string, std::less<>> _byType;
    std::multimap<std::string, std::string, std::less<>>::const_iterator _cursor = _byType.end();
    unsigned long _lastId = 0;
};

}  // namespace vellum
