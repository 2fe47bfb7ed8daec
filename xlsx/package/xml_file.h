// Parts that are bound: one object tree of the generated classes each.
#pragma once
#include <string>
#include <string_view>

#include "xlsx/package/xfile.h"

namespace bindery {
class c_xml_reader;
class c_xml_writer;
}  // namespace bindery

namespace vellum {

/// What XmlFile<T> does for every T. The readers forgive what real files get wrong and keep what the schemas do not
/// know; anything else is thrown with the binding's text.
class XmlFileBase : public XFile {
public:
    void writeToPath(std::string& path) override;
    void writeToStream(std::ostream& out) override;

protected:
    /// Throws "data is empty" for no bytes, and the text of the parser's code.
    void read(const PartBytes& part);

    virtual int unmarshalRoot(bindery::c_xml_reader& reader) = 0;
    virtual int marshalRoot(bindery::c_xml_writer& writer) const = 0;
    /// Puts right what must hold in a written part, such as counts. Called before each write.
    virtual void beforeWrite() {}
};

/// Owns one bound root object of class T.
template <class T>
class XmlFile : public XmlFileBase {
public:
    XmlFile() = default;
    explicit XmlFile(const PartBytes& part) { read(part); }

    T& root() { return _root; }
    const T& root() const { return _root; }

protected:
    int unmarshalRoot(bindery::c_xml_reader& reader) override { return _root.unmarshal(reader); }
    int marshalRoot(bindery::c_xml_writer& writer) const override { return _root.marshal(writer); }

    T _root;
};

}  // namespace vellum
