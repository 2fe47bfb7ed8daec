#include "ooxml/bound.h"

#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/values/error.h"

namespace ooxml {

int unmarshalElement(bindery::c_xml_reader& reader, std::string_view name, bindery::c_node& object,
                     const bindery::ClassInfo& info) {
    if (reader.elementLocal() != name) return reader.fail(bindery::element_not_found, name);
    return bindery::unmarshalObject(reader, object, info);
}

}  // namespace ooxml
