// What the generated classes share.
#pragma once
#include <cstddef>
#include <memory>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/class_info.h"
#include "bindery/values/holders.h"
#include "bindery/values/node.h"
#include "bindery/writer/xml_writer.h"

/// What the bodies of generated classes share.
namespace ooxml {

/// Reads the element whose start tag the reader has just scanned; another name than the given gives code 16.
int unmarshalElement(bindery::c_xml_reader& reader, std::string_view name, bindery::c_node& object,
                     const bindery::ClassInfo& info);

/// The object, or an empty one that lives for ever.
template <class T>
const T& orEmpty(const T* object) {
    static const T none;
    return object != nullptr ? *object : none;
}

template <class T>
T* copyOf(const T& object) {
    return std::make_unique<T>(object).release();
}

/// First item of a list of choices with the option, null when there is none.
template <class Items>
auto* findProperty(Items& items, int option) {
    for (auto& item : items)
        if (item.option() == option) return &item;
    return decltype(&items[0])(nullptr);
}

/// The same; when there is none, a new item in front of the first whose option stands later in the schema.
template <class Items>
auto& propertyAt(Items& items, int option) {
    if (auto* found = findProperty(items, option)) return *found;
    std::size_t at = 0;
    while (at < items.size() && items[at].option() < option) ++at;
    return items.insert(at);
}

template <class Items>
void removeProperty(Items& items, int option) {
    for (std::size_t i = items.size(); i-- > 0;)
        if (items[i].option() == option) items.erase(i);
}

}  // namespace ooxml
