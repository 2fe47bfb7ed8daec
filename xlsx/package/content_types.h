// The content type of each part.
#pragma once
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "ooxml/generated/opc-contentTypes/opc-contentTypes.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

/// The map from part names and extensions to content types. Look-ups ignore case.
class ContentTypes final : public XmlFile<contentypes::c_Types> {
public:
    static constexpr std::string_view pathInPackage = "/[Content_Types].xml";  // in every package

    ContentTypes() = default;
    explicit ContentTypes(const PartBytes& part);

    /// By the part's name, else by its extension; "" when neither is known.
    std::string typeOf(std::string_view path) const;

    void setOverride(std::string_view path, std::string_view type);
    void setDefault(std::string_view extension, std::string_view type);
    void removeOverride(std::string_view path);
    /// Removes each override whose part the predicate does not know.
    void removeOverridesBut(const std::function<bool(const std::string& partName)>& isKnown);

private:
    void buildMaps();

    using Element = std::remove_reference_t<decltype(std::declval<contentypes::c_Types&>().choice()[0])>;

    // To elements of the root's list.
    std::map<std::string, Element*, LessIgnoringCase> _defaults;
    std::map<std::string, Element*, LessIgnoringCase> _overrides;
    std::size_t _overrideTotal = 0;  // those whose names stand twice counted twice
};

}  // namespace vellum
